// SPDX-License-Identifier: MIT
#include "app/help/AboutBox.h"
#include "app/ApplicationSetup.h"
#include "app/CommandLine.h"
#include "tests/support/Rows.h"

#include <QDoubleValidator>
#include <QTest>

class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ApplicationSetup::afterApplication(); }
    void reads_data();
    void reads();
    void helpNamesEveryOption();
    void versionIsTheProgramsOwn();
    void mistakesAreNamed();
    void aboutTellsVersionsAndLicence();
    void numbersAreInTheCLocale();
};

void tst_CommandLine::reads_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("plugins");
    QTest::addColumn<QString>("log");
    QTest::addColumn<QStringList>("sequences");
    row("nothing", QStringList(), "", "", QStringList());
    row("one sequence", QStringList{"a_SEQ"}, "", "", QStringList{"a_SEQ"});
    row("several sequences", QStringList{"a", "b"}, "", "", QStringList{"a", "b"});
    row("options with values", QStringList{"--plugins", "p", "--log", "l", "a"}, "p", "l", QStringList{"a"});
    row("values after equals signs", QStringList{"--plugins=p", "a", "--log=l"}, "p", "l", QStringList{"a"});
    row("a folder that looks like an option", QStringList{"--", "--plugins"}, "", "",
        QStringList{"--plugins"});
}

void tst_CommandLine::reads()
{
    QFETCH(QStringList, arguments);
    const CommandLine line = readCommandLine(QStringList{"vexa"} + arguments);
    QCOMPARE(line.outcome, CommandLine::RUN);
    QTEST(line.pluginFolder, "plugins");
    QTEST(line.logFile, "log");
    QTEST(line.sequences, "sequences");
}

void tst_CommandLine::helpNamesEveryOption()
{
    for (const char *option : {"--help", "-h"}) {
        const CommandLine line = readCommandLine({"vexa", option});
        QCOMPARE(line.outcome, CommandLine::TELL);
        for (const char *word : {"--plugins <DIR>", "--log <FILE>", "--help", "--version", "[FOLDER...]"})
            QVERIFY2(line.text.contains(word), qPrintable(line.text));
    }
}

void tst_CommandLine::versionIsTheProgramsOwn()
{
    const CommandLine line = readCommandLine({"vexa", "--version"});
    QCOMPARE(line.outcome, CommandLine::TELL);
    QCOMPARE(line.text, QString("Vexa 1.1.0\n"));
}

void tst_CommandLine::mistakesAreNamed()
{
    const CommandLine unknown = readCommandLine({"vexa", "--frobnicate"});
    QCOMPARE(unknown.outcome, CommandLine::MISTAKE);
    QVERIFY2(unknown.text.contains("frobnicate"), qPrintable(unknown.text));
    const CommandLine missing = readCommandLine({"vexa", "--log"});
    QCOMPARE(missing.outcome, CommandLine::MISTAKE);
    QVERIFY2(missing.text.contains("log"), qPrintable(missing.text));
}

void tst_CommandLine::aboutTellsVersionsAndLicence()
{
    const QString text = aboutText();
    for (const QString &word : {QString("Vexa 1.1.0"), QString("MIT"), QString("Qt ") + qVersion(),
                                QString("LibTIFF "), QString("oneTBB ")})
        QVERIFY2(text.contains(word), qPrintable(text));
    QVERIFY2(!text.contains("%"), qPrintable(text));
}

void tst_CommandLine::numbersAreInTheCLocale()
{
    QDoubleValidator validator;
    QString number("1.5");
    int position = 0;
    QCOMPARE(validator.validate(number, position), QValidator::Acceptable);
    QCOMPARE(QString::asprintf("%.2e", 1.5), QString("1.50e+00"));
    QCOMPARE(QLocale().toDouble("1.5"), 1.5);
}

QTEST_MAIN(tst_CommandLine)
#include "tst_CommandLine.moc"
