// SPDX-License-Identifier: MIT
#include "tests/support/Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// What a function of the scripts prints for that input: into a pipe, or on a terminal of its own.
QString printed(const QString &call, const QByteArray &input, bool onTerminal = false)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("input");
    if (!writeFile(file, input))
        return QStringLiteral("no input");
    const QString command = QStringLiteral("set -eu; root='%1'; . \"$root/scripts/setup.sh\"; %2 <'%3'")
                                .arg(QStringLiteral(VEXA_SOURCE_DIR), call, file);
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    if (onTerminal)
        shell.start("script", {"-qec",
                               "bash -c " + QStringLiteral("'%1'").arg(
                                                QString(command).replace("'", QStringLiteral("'\\''"))),
                               "/dev/null"});
    else
        shell.start("bash", {"-c", command});
    shell.waitForFinished(-1);
    return QString::fromUtf8(shell.readAll());
}

QByteArray ninjaLines(int total)
{
    QByteArray text = "[0/2] Re-checking globbed directories...\n";
    for (int i = 1; i <= total; ++i)
        text +=
            "[" + QByteArray::number(i) + "/" + QByteArray::number(total) + "] Building CXX object a.cpp.o\n";
    return text;
}

} // namespace

/// What ./run and ./test tell while they work, in a log as well as on a terminal.
class tst_Progress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBuildInALogIsALineForEveryTenth();
    void aBuildOnATerminalIsOneLine();
    void nothingToBuildSaysNothing();
    void theCompilersOwnLinesAreNotRepeated();
    void testsAreCounted();
    void aFailedProgramIsToldAtOnce();
    void skippedTestsSayWhy();
};

void tst_Progress::aBuildInALogIsALineForEveryTenth()
{
    const QStringList lines = printed("build_progress 'Building ...'", ninjaLines(877)).trimmed().split('\n');
    QCOMPARE(lines.size(), 11);
    QCOMPARE(lines.first(), QString("Building ..."));
    QCOMPARE(lines.at(1), QString("  88 of 877 steps"));
    QCOMPARE(lines.last(), QString("  877 of 877 steps"));
}

void tst_Progress::aBuildOnATerminalIsOneLine()
{
    if (QProcess::execute("sh", {"-c", "command -v script >/dev/null"}) != 0)
        QSKIP("The program \"script\", which gives a terminal, is not installed (package bsdutils).");
    const QString text = printed("build_progress Building", ninjaLines(30), true);
    QCOMPARE(text.count('\n'), 2); // the heading, and at the end
    QCOMPARE(text.count("\r\x1b[K"), 30);
    QVERIFY2(text.contains("\r\x1b[K  17 of 30 steps\r"), qPrintable(text));
}

void tst_Progress::nothingToBuildSaysNothing()
{
    QCOMPARE(printed("build_progress 'Building ...'",
                     "[0/2] Re-checking globbed directories...\nninja: no work to do.\n"),
             QString());
}

void tst_Progress::theCompilersOwnLinesAreNotRepeated()
{
    const QString text =
        printed("build_progress Building", "[1/2] Building a\na.cpp:3: warning: odd\n[2/2] Linking\n");
    QCOMPARE(text, QString("Building\n  1 of 2 steps\n  2 of 2 steps\n"));
}

void tst_Progress::testsAreCounted()
{
    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath("counts"), "# program  tests\ntst_One 12\ntst_Two 30\n"));
    const QString text = printed("test_progress " + dir.filePath("counts"),
                                 "Test project /x\n"
                                 "        Start  1: tst_One\n"
                                 "1/2 Test  #1: tst_One ..........................   Passed    0.41 sec\n"
                                 "2/2 Test  #2: tst_Two ..........................   Passed    1.20 sec\n");
    QCOMPARE(text, QString("  1 of 2 test programs, 12 of 42 tests, 0 programs failed\n"
                           "  2 of 2 test programs, 42 of 42 tests, 0 programs failed\n"));
}

void tst_Progress::aFailedProgramIsToldAtOnce()
{
    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath("counts"), "tst_One 12\ntst_Two 30\n"));
    const QString text = printed("test_progress " + dir.filePath("counts"),
                                 " 1/2 Test  #1: tst_One ....................***Failed    0.41 sec\n"
                                 " 2/2 Test  #2: tst_Two ....................   Passed    1.20 sec\n");
    QVERIFY2(text.startsWith("  tst_One: Failed 0.41 sec\n"), qPrintable(text));
    QVERIFY2(text.endsWith("2 of 2 test programs, 42 of 42 tests, 1 programs failed\n"), qPrintable(text));
}

void tst_Progress::skippedTestsSayWhy()
{
    const QByteArray log = "PASS   : tst_TiffFiles::reads(a row)\n"
                           "SKIP   : tst_TiffFiles::othersRead() tiffinfo is not installed\n"
                           "   Loc: [tst_TiffFiles.cpp(266)]\n"
                           "SKIP   : tst_TiffFiles::compressions(zstd) this compression is not built in\n";
    QCOMPARE(printed("skipped_tests /dev/stdin", log),
             QString("  skipped: tst_TiffFiles, compressions zstd: this compression is not built in\n"
                     "  skipped: tst_TiffFiles, othersRead: tiffinfo is not installed\n"));
}

QTEST_GUILESS_MAIN(tst_Progress)
#include "tst_Progress.moc"
