// SPDX-License-Identifier: MIT
#include "tests/safety/FlowRun.h"
#include "tests/safety/SafetyStudy.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace safetystudy;

namespace {

const QString KILL_AT = QStringLiteral(VEXA_BINARY_DIR "/tests/libkillat.so");
const QString LEFTOVER = QStringLiteral("AB_M20260102030406");
constexpr int POINTS = 20; // of ctest; VEXA_KILL_POINTS asks for others

/// A way to make a result, and what lies in the program-data folder before.
struct Operation
{
    QString name;
    QStringList arguments;
    bool isWithPhotograph = false;
    bool hasEarlierResult = false;
    bool hasLeftover = false;
};

const QList<Operation> &operations()
{
    static const QList<Operation> all = {
        {QStringLiteral("the first result"), {CLICK_A, CLICK_B}, false, false, false},
        {QStringLiteral("a second result, with photograph"),
         {CLICK_A, CLICK_B, QStringLiteral("--photograph"), QStringLiteral("B")},
         true,
         true,
         false},
        {QStringLiteral("a result with B in memory only"), {CLICK_A, MEMORY_B}, false, true, false},
        {QStringLiteral("a result of two in memory only, with photograph"),
         {MEMORY_A, MEMORY_B, QStringLiteral("--photograph"), QStringLiteral("A")},
         true,
         false,
         false},
        {QStringLiteral("a result over a left-over"), {CLICK_A, CLICK_B}, false, false, true},
    };
    return all;
}

/// A place in a run where it can be killed.
struct Point
{
    int operation = 0;
    int number = 0;
    QString when;
    QString name;
};

bool writeLeftover(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return false;
    for (const char *name : {"ClickInfo.txt", "luminescent.tif", "luminescent.tif.QxYzAb"}) {
        QFile file(folder + QLatin1Char('/') + QString::fromLatin1(name));
        if (!file.open(QIODevice::WriteOnly) || file.write("half of") != 7)
            return false;
    }
    return true;
}

/// "#8123 (deleted)" (a file that has no name yet), "x.tif.QxYzAb" and "x.tif.part-712-0" differ in each run.
QString withoutChance(QString path)
{
    path.replace(QRegularExpression(QStringLiteral("#[0-9]+ \\(deleted\\)$")), QStringLiteral("(unnamed)"));
    path.replace(QRegularExpression(QStringLiteral("(\\.txt|\\.tif|\\.TIF)\\.[A-Za-z]{6}$")),
                 QStringLiteral("\\1.XXXXXX"));
    path.replace(QRegularExpression(QStringLiteral("part-[0-9]+-")), QStringLiteral("part-PID-"));
    return path;
}

} // namespace

Q_DECLARE_METATYPE(Point)

/// The program is killed with SIGKILL while it makes a result, at places spread over everything that it does
/// to files. Whatever the place: no operand and no earlier result is harmed, nothing half-made is known, and
/// the same result can be made afterwards.
class tst_KillPoints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nothingIsLostWhenKilled_data();
    void nothingIsLostWhenKilled();

private:
    FlowFolder templateOf(int operation) const;
    QMap<QString, QString> killing(const FlowFolder &folder, const QString &trace, const Point &point) const;
    void collectPoints(int operation);

    QTemporaryDir m_folder;
    QList<Point> m_points;
};

FlowFolder tst_KillPoints::templateOf(int operation) const
{
    return FlowFolder(m_folder.path() + QStringLiteral("/template-%1").arg(operation));
}

QMap<QString, QString> tst_KillPoints::killing(const FlowFolder &folder, const QString &trace,
                                               const Point &point) const
{
    return {{QStringLiteral("LD_PRELOAD"), preloadOf(KILL_AT)},
            {QStringLiteral("KILL_AT_FOLDERS"), folder.study() + QLatin1Char(':') + folder.data()},
            {QStringLiteral("KILL_AT_TRACE"), trace},
            {QStringLiteral("KILL_AT"), QString::number(point.number)},
            {QStringLiteral("KILL_AT_WHEN"), point.when}};
}

void tst_KillPoints::initTestCase()
{
    for (int i = 0; i < operations().size(); ++i) {
        const FlowFolder start = templateOf(i);
        QVERIFY(start.make());
        if (operations().at(i).hasEarlierResult) {
            const FlowRun earlier = start.makeResult({CLICK_A, CLICK_B});
            QVERIFY2(earlier.isFinished, qPrintable(earlier.output));
        }
        if (operations().at(i).hasLeftover)
            QVERIFY(writeLeftover(start.data() + QLatin1Char('/') + LEFTOVER));
        collectPoints(i);
        if (QTest::currentTestFailed())
            return;
    }
}

/// Counts the calls of an undisturbed run.
void tst_KillPoints::collectPoints(int operation)
{
    const FlowFolder counted(m_folder.path() + QStringLiteral("/counted-%1").arg(operation));
    QVERIFY(templateOf(operation).copyTo(counted));
    const QString trace = m_folder.path() + QStringLiteral("/trace-%1").arg(operation);
    const FlowRun run = counted.makeResult(operations().at(operation).arguments,
                                           killing(counted, trace, {operation, 0, QString(), QString()}));
    QVERIFY2(run.isFinished, qPrintable(run.output));
    QFile file(trace);
    QVERIFY2(file.open(QIODevice::ReadOnly), "nothing was counted: the library was not loaded");
    const QStringList lines = QString::fromLocal8Bit(file.readAll().trimmed()).split('\n');
    QVERIFY2(lines.size() > 20, qPrintable(QString::number(lines.size())));
    for (int number = 1; number <= lines.size(); ++number) {
        const QString line = lines.at(number - 1);
        const QString call = line.section(' ', 1, 1);
        const QString path = withoutChance(line.section(' ', 2));
        for (const char *when : {"before", "half", "after"}) {
            if (qstrcmp(when, "half") == 0 && call != "write")
                continue;
            const QString name = QStringLiteral("%1: killed %2 call %3 of %4, %5 %6")
                                     .arg(operations().at(operation).name,
                                          qstrcmp(when, "half") == 0 ? "in the middle of" : when)
                                     .arg(number)
                                     .arg(lines.size())
                                     .arg(call, path.section('/', -1));
            m_points += {operation, number, QString::fromLatin1(when), name};
        }
    }
    qInfo("%s: %d calls that change files", qPrintable(operations().at(operation).name), lines.size());
}

void tst_KillPoints::nothingIsLostWhenKilled_data()
{
    QTest::addColumn<Point>("point");
    bool isNumber = false;
    const int asked = qEnvironmentVariableIntValue("VEXA_KILL_POINTS", &isNumber);
    const int wanted = isNumber && asked > 0 ? asked : POINTS;
    QVERIFY2(m_points.size() >= wanted,
             qPrintable(QStringLiteral("there are %1 points").arg(m_points.size())));
    for (int i = 0; i < wanted; ++i) {
        const Point &point = m_points.at(int(qint64(i) * (m_points.size() - 1) / qMax(1, wanted - 1)));
        QTest::newRow(qPrintable(point.name)) << point;
    }
}

void tst_KillPoints::nothingIsLostWhenKilled()
{
    QFETCH(Point, point);
    const Operation &operation = operations().at(point.operation);
    QTemporaryDir place;
    const FlowFolder folder(place.path());
    QVERIFY(templateOf(point.operation).copyTo(folder));
    const auto operands = hashesBelow(folder.study());
    auto earlier = hashesBelow(folder.data());
    if (operation.hasLeftover)
        earlier.clear();

    const QString trace = place.path() + QStringLiteral("/trace");
    const FlowRun killed = folder.makeResult(operation.arguments, killing(folder, trace, point));
    QVERIFY2(killed.isKilled, qPrintable(killed.output));
    QFile reached(trace);
    QVERIFY(reached.open(QIODevice::ReadOnly));
    QCOMPARE(int(reached.readAll().count('\n')), point.number);
    QCOMPARE(firstHarm(operands, hashesBelow(folder.study())), QString());
    QCOMPARE(firstHarm(earlier, hashesBelow(folder.data())), QString());

    const FlowRun looked = folder.look();
    QVERIFY2(looked.isFinished, qPrintable(looked.output));
    QCOMPARE(looked.clicks, (QStringList{CLICK_A, CLICK_B}));
    QVERIFY(looked.known.size() <= (operation.hasEarlierResult ? 2 : 1));
    QVERIFY(!operation.hasEarlierResult || looked.known.contains("AB_M20260102030406"));
    for (auto it = looked.known.begin(); it != looked.known.end(); ++it) {
        const bool isEarlier = operation.hasEarlierResult && it.key() == "AB_M20260102030406";
        QCOMPARE(firstFaultOfResult(it.value(), !isEarlier && operation.isWithPhotograph, !isEarlier),
                 QString());
    }

    QMap<QString, QMap<QString, QByteArray>> complete;
    for (const QString &path : looked.known)
        complete.insert(path, hashesBelow(path));
    const FlowRun again = folder.makeResult(operation.arguments);
    QVERIFY2(again.isFinished, qPrintable(again.output));
    QVERIFY(!looked.known.contains(again.resultClick));
    QCOMPARE(firstFaultOfResult(again.resultFolder, operation.isWithPhotograph), QString());
    QCOMPARE(firstHarm(operands, hashesBelow(folder.study())), QString());
    QCOMPARE(firstHarm(earlier, hashesBelow(folder.data())), QString());
    // A killed run's result that was complete is a result as any other.
    for (auto it = complete.begin(); it != complete.end(); ++it)
        QCOMPARE(firstHarm(it.value(), hashesBelow(it.key())), QString());
    const QStringList left = hashesBelow(folder.study()).keys();
    QVERIFY2(left.filter("TempFolder").isEmpty(), qPrintable(left.filter("TempFolder").join(' ')));
}

QTEST_GUILESS_MAIN(tst_KillPoints)
#include "tst_KillPoints.moc"
