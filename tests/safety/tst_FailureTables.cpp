// SPDX-License-Identifier: MIT
#include "tests/safety/FailureBench.h"
#include "tests/safety/SafetyStudy.h"
#include "tests/safety/UserSwitch.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/TestStudy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace failing;
using namespace safetystudy;

namespace {

using Step = std::function<bool(FailureBench &)>;

bool nothing(FailureBench &)
{
    return true;
}

/// What happens to the files, what comes of the next press, and how the files come back.
struct Failure
{
    Step harm = nothing;
    QString message;      ///< of the flow; null when a result is made all the same
    QStringList logged;   ///< words of one line that names file and reason
    Step check = nothing; ///< more that must hold after the press
    Step repair = nothing;
    bool asNobody = false; ///< pressed by a user who has to respect permissions
    QString next = M;      ///< the click number that the next result gets
    bool isNextWhole = true;
};

Step aside(const std::function<QString(const FailureBench &)> &pathOf)
{
    return [pathOf](FailureBench &bench) {
        return QFile::rename(pathOf(bench), bench.folder().study() + QStringLiteral("/aside"));
    };
}

Step back(const std::function<QString(const FailureBench &)> &pathOf)
{
    return [pathOf](FailureBench &bench) {
        return QFile::rename(bench.folder().study() + QStringLiteral("/aside"), pathOf(bench));
    };
}

/// The same, and a text in the file's place meanwhile.
Step replaced(const std::function<QString(const FailureBench &)> &pathOf, const QByteArray &text)
{
    return [pathOf, text](FailureBench &bench) {
        return aside(pathOf)(bench) && writeFile(pathOf(bench), text);
    };
}

Step unreplaced(const std::function<QString(const FailureBench &)> &pathOf)
{
    return [pathOf](FailureBench &bench) { return QFile::remove(pathOf(bench)) && back(pathOf)(bench); };
}

std::function<QString(const FailureBench &)> fileOf(const QString &click, const char *name)
{
    return [click, name](const FailureBench &bench) {
        return bench.clickFolder(click) + QString::fromLatin1(name);
    };
}

std::function<QString(const FailureBench &)> folderOf(const QString &click)
{
    return [click](const FailureBench &bench) {
        const QString folder = bench.clickFolder(click);
        return folder.left(folder.size() - 1);
    };
}

} // namespace

Q_DECLARE_METATYPE(Failure)

/// What can go wrong between the press of the button and the shown result, done for real: what is said, what
/// is left, and that the window goes on working.
class tst_FailureTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theFlowSaysWhatFailedAndGoesOn_data();
    void theFlowSaysWhatFailedAndGoesOn();

private:
    static void addFoldersAndPermissions();
    static void addOperandFiles();
    static void addWhatIsInTheWay();

    std::unique_ptr<QTemporaryDir> m_place;
};

void tst_FailureTables::init()
{
    m_place = std::make_unique<QTemporaryDir>();
    // Not only for whom it belongs to: the one who respects permissions has to get in.
    QVERIFY(QFile::setPermissions(m_place->path(), QFile::Permissions(0x7755)));
}

void tst_FailureTables::cleanup()
{
    m_place.reset();
}

void tst_FailureTables::addFoldersAndPermissions()
{
    Failure readOnly;
    readOnly.harm = [](FailureBench &bench) {
        return QFile::setPermissions(bench.folder().data(), QFile::Permissions(0x5555));
    };
    readOnly.message = CLICK_INFO_FAILED;
    readOnly.logged = QStringList{M + "/ClickInfo.txt"};
    readOnly.check = noResultFolder;
    readOnly.repair = [](FailureBench &bench) {
        return QFile::setPermissions(bench.folder().data(), QFile::Permissions(0x7777));
    };
    readOnly.asNobody = true;
    QTest::newRow("the program-data folder is read-only") << readOnly;

    Failure stuck;
    stuck.harm = [](FailureBench &bench) {
        const QString folder = bench.resultFolder(M);
        return QFile::setPermissions(bench.folder().data(), QFile::Permissions(0x7777)) &&
               QDir().mkpath(folder) && writeFile(folder + "a left-over.txt", "of an earlier run") &&
               QFile::setPermissions(folder, QFile::Permissions(0x5555));
    };
    stuck.message = CLICK_INFO_FAILED;
    stuck.logged = QStringList{M + "/a left-over.txt", "Permission denied"};
    stuck.check = [](FailureBench &bench) {
        return hashesBelow(bench.resultFolder(M)).keys() == QStringList{"a left-over.txt"};
    };
    stuck.repair = [](FailureBench &bench) {
        return QFile::setPermissions(bench.resultFolder(M), QFile::Permissions(0x7777));
    };
    stuck.asNobody = true;
    QTest::newRow("a file in the result folder cannot be removed") << stuck;

    Failure gone;
    gone.harm = [](FailureBench &bench) { return QDir(bench.folder().data()).removeRecursively(); };
    gone.next = N;
    QTest::newRow("the program-data folder was deleted while the program runs: it is made again") << gone;
}

void tst_FailureTables::addOperandFiles()
{
    for (const QString &click : {CLICK_A, CLICK_B}) {
        Failure folder;
        folder.harm = aside(folderOf(click));
        folder.message = CLICK_INFO_FAILED;
        folder.logged = QStringList{click + "/ClickInfo.txt", "there is no such file"};
        folder.check = noResultFolder;
        folder.repair = back(folderOf(click));
        QTest::newRow(click == CLICK_A ? "the folder of operand A vanished"
                                       : "the folder of operand B vanished")
            << folder;

        Failure damaged = folder;
        const auto clickInfo = fileOf(click, "ClickInfo.txt");
        damaged.harm = replaced(clickInfo, "\x01\x02 this is not\n[a ClickInfo\n");
        damaged.repair = unreplaced(clickInfo);
        damaged.logged = QStringList{click + "/ClickInfo.txt", "line "};
        QTest::newRow(click == CLICK_A ? "the ClickInfo of operand A is damaged"
                                       : "the ClickInfo of operand B is damaged")
            << damaged;

        Failure empty = damaged;
        empty.harm = replaced(clickInfo, "");
        empty.logged = QStringList{click + "/ClickInfo.txt", "it has no section \"luminescent image\""};
        QTest::newRow(click == CLICK_A ? "the ClickInfo of operand A has no section"
                                       : "the ClickInfo of operand B has no section")
            << empty;
    }

    Failure pixels;
    pixels.harm = aside(fileOf(CLICK_A, "luminescent.tif"));
    pixels.check = [](FailureBench &bench) {
        const QStringList files = hashesBelow(bench.resultFolder(M)).keys();
        return files == QStringList{"AnalyzedClickInfo.txt", "ClickInfo.txt", "luminescent.tif",
                                    "luminescentB.TIF", "photograph.tif"};
    };
    pixels.repair = back(fileOf(CLICK_A, "luminescent.tif"));
    pixels.next = N;
    QTest::newRow("the image file of operand A vanished: the result is made without the copy") << pixels;

    Failure photograph;
    photograph.harm = aside(fileOf(CLICK_B, "photograph.tif"));
    photograph.message = LOADING_FAILED;
    photograph.logged = QStringList{M + "/ClickInfo.txt", "photograph.tif", "not there"};
    photograph.repair = back(fileOf(CLICK_B, "photograph.tif"));
    QTest::newRow("the photograph was deleted in between") << photograph;

    Failure analyzed;
    analyzed.harm = replaced(fileOf(CLICK_A, "AnalyzedClickInfo.txt"), "\x01 damaged\n[");
    analyzed.logged = QStringList{CLICK_A + "/AnalyzedClickInfo.txt", "line "};
    analyzed.check = [](FailureBench &bench) {
        return firstFaultOfResult(bench.resultFolder(M), true).isEmpty();
    };
    analyzed.repair = unreplaced(fileOf(CLICK_A, "AnalyzedClickInfo.txt"));
    analyzed.next = N;
    QTest::newRow("the analyzed ClickInfo of operand A is damaged: the result is made without it")
        << analyzed;
}

void tst_FailureTables::addWhatIsInTheWay()
{
    Failure file;
    file.harm = [](FailureBench &bench) {
        return writeFile(bench.folder().data() + '/' + M, "somebody's notes");
    };
    file.message = CLICK_INFO_FAILED;
    file.logged = QStringList{M + "/ClickInfo.txt"};
    file.check = [](FailureBench &bench) {
        QFile notes(bench.folder().data() + '/' + M);
        return notes.open(QIODevice::ReadOnly) && notes.readAll() == "somebody's notes";
    };
    file.repair = [](FailureBench &bench) { return QFile::remove(bench.folder().data() + '/' + M); };
    QTest::newRow("a file has the name of the result folder: it is left alone") << file;

    Failure sub;
    sub.harm = [](FailureBench &bench) {
        return QDir().mkpath(bench.resultFolder(M) + "luminescent.tif/of the user") &&
               writeFile(bench.resultFolder(M) + "old.txt", "old");
    };
    sub.message = LOADING_FAILED;
    sub.logged = QStringList{M + "/luminescent.tif"};
    sub.check = [](FailureBench &bench) {
        const QStringList left = hashesBelow(bench.resultFolder(M)).keys();
        return left.contains("luminescent.tif/of the user") && !left.contains("old.txt") &&
               left.filter("part-").isEmpty();
    };
    sub.repair = [](FailureBench &bench) {
        return QDir(bench.resultFolder(M) + "luminescent.tif").removeRecursively();
    };
    QTest::newRow("a sub-folder of the result folder has the name of the image: it is left alone") << sub;

    Failure other;
    const auto made = std::make_shared<QMap<QString, QByteArray>>();
    other.harm = [made](FailureBench &bench) {
        const FlowRun theirs = bench.folder().makeResult({CLICK_A, CLICK_B});
        *made = hashesBelow(bench.resultFolder(M));
        return theirs.isFinished && theirs.resultClick == M && made->size() == 5;
    };
    other.check = [made](FailureBench &bench) {
        return bench.tool().result()->getClickNumber() == N && hashesBelow(bench.resultFolder(M)) == *made;
    };
    other.next = "AB_O20260102030406";
    QTest::newRow("another workspace made a result of that name meanwhile: it is left alone") << other;
}

void tst_FailureTables::theFlowSaysWhatFailedAndGoesOn_data()
{
    QTest::addColumn<Failure>("failure");
    addFoldersAndPermissions();
    addOperandFiles();
    addWhatIsInTheWay();
}

void tst_FailureTables::theFlowSaysWhatFailedAndGoesOn()
{
    QFETCH(Failure, failure);
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, "B"), qPrintable(bench.lastError()));
    const auto operands = hashesBelow(bench.folder().study());
    QVERIFY(failure.harm(bench));

    {
        std::unique_ptr<UserSwitch> nobody;
        if (failure.asNobody)
            nobody = std::make_unique<UserSwitch>();
        QVERIFY(!nobody || nobody->isOn());
        const bool isMade = bench.press();
        nobody.reset();
        QVERIFY2(isMade == failure.message.isNull(), qPrintable(bench.lastError()));
    }
    const QString said = bench.failures().join('\n');
    QVERIFY2(failure.message.isNull() || bench.failures().contains(failure.message), qPrintable(said));
    QVERIFY2(failure.logged.isEmpty() || bench.isLogged(failure.logged), qPrintable(said));
    QVERIFY2(failure.check(bench), qPrintable(said));
    if (!failure.message.isNull()) {
        QCOMPARE(knownResults(), QStringList());
        QVERIFY(!CVXSDataset::getDataset(M));
        // And so it is for whoever starts now.
        CVXSDataset::registerStoredDatasets(bench.folder().data());
        QCOMPARE(knownResults(), QStringList());
    }

    QVERIFY(failure.repair(bench));
    QCOMPARE(hashesBelow(bench.folder().study()), operands);
    QVERIFY2(bench.tool().select(CLICK_A, CLICK_B), qPrintable(bench.tool().why()));
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(bench.tool().result()->getClickNumber(), failure.next);
    QCOMPARE(firstFaultOfResult(bench.resultFolder(failure.next), true), QString());
    QCOMPARE(hashesBelow(bench.folder().study()), operands);
}

QTEST_MAIN(tst_FailureTables)
#include "tst_FailureTables.moc"
