// SPDX-License-Identifier: MIT
#include "host/vximage/CILImage.h"
#include "tests/safety/FailureBench.h"
#include "tests/safety/SafetyStudy.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/TestStudy.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

using namespace safetystudy;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool IS_SANITIZED = true; // freed memory is kept back, so only errors are looked for
constexpr int STEPS = 75;
#else
constexpr bool IS_SANITIZED = false;
constexpr int STEPS = 500;
#endif
constexpr int RESULT_EVERY = 25; // steps
constexpr int WARM_UP = 100;     // steps, with four results among them
constexpr int SIDE = 512;        // pixels; an image of them is 1 MiB
constexpr int STEPS_TO_SEE_A_LEAK = 200;

/// What the steps after the warm-up may add [bytes]: a tenth of an image a step.
qint64 boundOf(int steps)
{
    return qint64(steps - WARM_UP) * SIDE * SIDE * 4 / 10;
}

struct Memory
{
    qint64 heap = 0;     ///< bytes that are allocated and not freed
    qint64 resident = 0; ///< bytes in memory
};

Memory memoryNow()
{
    Memory now;
    const struct mallinfo2 info = mallinfo2();
    now.heap = qint64(info.uordblks + info.hblkhd);
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (statm.open(QIODevice::ReadOnly))
        now.resident = statm.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
    return now;
}

double mebibytes(qint64 bytes)
{
    return double(bytes) / (1 << 20);
}

QStringList manyClicks()
{
    return {CLICK_A, CLICK_B, QStringLiteral("AB20260102040506")};
}

/// The user who tries one thing after the other, always the same for the same step.
class RestlessUser
{
public:
    explicit RestlessUser(ShownTool *tool) : m_tool(*tool) {}

    bool change(int step)
    {
        switch (step % 4) {
        case 0:
            return select(step / 4);
        case 1:
            return chooseFormula(step / 4 % 5);
        case 2:
            return typeK(step % 3 ? QStringLiteral("0.75") : QStringLiteral("1250"));
        default:
            return chooseLimits(step / 4);
        }
    }
    bool makeAndCloseResult()
    {
        if (!m_tool.pressDisplayResult())
            return false;
        QCoreApplication::processEvents();
        return m_tool.closeResult();
    }

private:
    bool select(int turn)
    {
        const QStringList clicks = manyClicks();
        return m_tool.select(clicks.at(turn % 3), clicks.at((turn / 3 + turn + 1) % 3));
    }
    bool chooseFormula(int index) { return GuiDriver(m_tool.tool()).choose("m_pOperationCB", index); }
    bool typeK(const QString &text)
    {
        return GuiDriver(m_tool.tool()).type("m_pKLineEdit", text, Qt::Key_Return);
    }
    bool chooseLimits(int turn)
    {
        const char *const names[] = {"m_pAutoABRadioBtn", "m_pAutoResultRadioBtn", "m_pMinChkBox",
                                     "m_pFullABRadioBtn", "m_pFullResultRadioBtn"};
        return GuiDriver(m_tool.tool()).press(names[turn % 5]);
    }

    ShownTool &m_tool;
};

} // namespace

/// Hours of work in a minute: the window stays whole, and the memory does not grow.
class tst_Soak : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void manyChangesAndResults_data();
    void manyChangesAndResults();
};

void tst_Soak::manyChangesAndResults_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<bool>("isLeaking");
    QTest::newRow("memory is flat after the warm-up") << STEPS << false;
    QTest::newRow("one image lost a step is noticed") << STEPS_TO_SEE_A_LEAK << true;
}

void tst_Soak::manyChangesAndResults()
{
    QFETCH(int, steps);
    QFETCH(bool, isLeaking);
    if (IS_SANITIZED && isLeaking)
        QSKIP("freed memory is kept back, so how much is used says nothing");
    QTemporaryDir place;
    QList<ClickSpec> clicks;
    for (const QString &click : manyClicks()) {
        ClickSpec spec = specOf(click);
        spec.width = spec.height = SIDE;
        clicks += spec;
    }
    FailureBench bench(place.path());
    QVERIFY2(bench.start(clicks, "A"), qPrintable(bench.lastError()));
    RestlessUser user(&bench.tool());

    std::vector<std::unique_ptr<CILImage>> lost;
    Memory warm;
    int results = 0;
    for (int step = 1; step <= steps; ++step) {
        QVERIFY2(user.change(step), qPrintable(bench.tool().why()));
        QCoreApplication::processEvents();
        if (step % RESULT_EVERY == 0) {
            QVERIFY2(user.makeAndCloseResult(),
                     qPrintable(bench.tool().why() + '\n' + bench.failures().join('\n')));
            ++results;
        }
        if (isLeaking)
            lost.push_back(std::make_unique<CILImage>(
                TestStudy::image(SIDE, SIDE, [step](int x, int) { return float(x + step); })));
        if (step == WARM_UP)
            warm = memoryNow();
    }
    const Memory end = memoryNow();
    QCOMPARE(results, steps / RESULT_EVERY);
    QCOMPARE(QDir(bench.folder().data()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), results);
    QCOMPARE(knownResults().size(), results);
    QVERIFY2(bench.failures().isEmpty(), qPrintable(bench.failures().join('\n')));
    qInfo("%d changes and %d results; after the warm-up: heap %.1f MiB, resident %.1f MiB", steps, results,
          mebibytes(warm.heap), mebibytes(warm.resident));
    if (IS_SANITIZED)
        return;
    const qint64 bound = boundOf(steps);
    const qint64 heap = end.heap - warm.heap;
    const qint64 resident = end.resident - warm.resident;
    qInfo("the %d changes after it add: heap %.2f MiB, resident %.2f MiB; the bound is %.1f MiB",
          steps - WARM_UP, mebibytes(heap), mebibytes(resident), mebibytes(bound));
    QCOMPARE(heap > bound, isLeaking);
    QCOMPARE(resident > bound, isLeaking);
}

QTEST_MAIN(tst_Soak)
#include "tst_Soak.moc"
