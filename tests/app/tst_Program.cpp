// SPDX-License-Identifier: MIT
#include "tests/support/Files.h"
#include "tests/support/WorkspaceFixture.h"

#include <QProcess>

namespace {

const QString PROGRAM = QStringLiteral(VEXA_BINARY_DIR "/bin/vexa");

/// Whether the program is up and its log says so; it is ended then.
bool logsBeforeItIsEnded(const QStringList &arguments, const QString &log, const QList<QByteArray> &lines)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(PROGRAM, arguments);
    const bool logged = QTest::qWaitFor(
        [&] {
            const QByteArray content = readFile(log);
            for (const QByteArray &line : lines) {
                if (!content.contains(line))
                    return false;
            }
            return true;
        },
        20000);
    const bool running = program.state() == QProcess::Running;
    program.terminate();
    if (!program.waitForFinished(10000))
        program.kill();
    return logged && running;
}

} // namespace

class tst_Program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensTheSequencesOfItsCommandLine();
    void opensADatasetOfItsCommandLine_data();
    void opensADatasetOfItsCommandLine();
    void tellsWhatCannotBeOpened();
    void helpNeedsNoDisplay();
    void mistakesEndIt();
};

void tst_Program::opensTheSequencesOfItsCommandLine()
{
    QTemporaryDir dir;
    const QString one = writeSequence(dir.path(), "AB20260102030405_SEQ", "AB");
    const QString other = writeSequence(dir.path(), "CD20260102030405_SEQ", "CD");
    const QString log = dir.filePath("log.txt");
    QVERIFY(logsBeforeItIsEnded(
        {"--plugins", dir.path(), "--log", log, one, other}, log,
        {"Sequence opened: AB20260102030405_SEQ", "Sequence opened: CD20260102030405_SEQ"}));
    QVERIFY2(!readFile(log).contains("[3]"), readFile(log));
}

void tst_Program::opensADatasetOfItsCommandLine_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("by its folder") << "";
    QTest::newRow("by its ClickInfo.txt") << "/ClickInfo.txt";
}

void tst_Program::opensADatasetOfItsCommandLine()
{
    QFETCH(QString, ending);
    QTemporaryDir dir;
    const QString sequence = writeSequence(dir.path(), "AB20260102030405_SEQ", "AB");
    const QString log = dir.filePath("log.txt");
    QVERIFY(
        logsBeforeItIsEnded({"--plugins", dir.path(), "--log", log, sequence + "AB20260102030406" + ending},
                            log, {"Dataset opened: AB20260102030406"}));
    QVERIFY2(!readFile(log).contains("[3]"), readFile(log));
}

void tst_Program::tellsWhatCannotBeOpened()
{
    QTemporaryDir dir;
    const QString log = dir.filePath("log.txt");
    QVERIFY(logsBeforeItIsEnded(
        {"--plugins", dir.filePath("none"), "--log", log, dir.path()}, log,
        {"could not be opened", QFile::encodeName(dir.path()), QFile::encodeName(dir.filePath("none"))}));
}

void tst_Program::helpNeedsNoDisplay()
{
    for (const char *option : {"--help", "--version"}) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("DISPLAY");
        environment.remove("QT_QPA_PLATFORM");
        program.setProcessEnvironment(environment);
        program.start(PROGRAM, {option});
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        const QByteArray text = program.readAllStandardOutput();
        QVERIFY2(text.contains(QByteArray(option) == "--help" ? "--plugins" : "Vexa 1.1.0\n"), text);
    }
}

void tst_Program::mistakesEndIt()
{
    QProcess program;
    program.start(PROGRAM, {"--frobnicate"});
    QVERIFY(program.waitForFinished(20000));
    QCOMPARE(program.exitCode(), 2);
    QVERIFY(program.readAllStandardError().contains("frobnicate"));
}

QTEST_MAIN(tst_Program)
#include "tst_Program.moc"
