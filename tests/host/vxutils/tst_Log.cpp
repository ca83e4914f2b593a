// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/ESTATUS.h"

#include <QFile>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll().split('\n');
}

} // namespace

class tst_Log : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsAndAnnouncesALine();
    void keepsTheNewestTenThousand();
    void writesOneLineAnEntryToTheFile();
    void appendsToTheFile();
    void aFileThatCannotBeWrittenIsTold();
    void thereIsOneLogOfTheProcess();
    void everyStatusHasASentenceOfItsOwn();
};

void tst_Log::keepsAndAnnouncesALine()
{
    CVXSLog log;
    QSignalSpy spy(&log, &CVXSLog::logged);
    log.log("message", "detail", 7, "18:26:27", ELOG_FAILURE, false);
    QCOMPARE(log.entries().size(), 1);
    QCOMPARE(spy.size(), 1);
    for (const LogEntry &entry : {log.entries().first(), spy.first().first().value<LogEntry>()}) {
        QCOMPARE(entry.message, QString("message"));
        QCOMPARE(entry.detail, QString("detail"));
        QCOMPARE(entry.number, 7);
        QCOMPARE(entry.stamp, QString("18:26:27"));
        QCOMPARE(entry.level, long(ELOG_FAILURE));
    }
    log.clear();
    QVERIFY(log.entries().isEmpty());
}

void tst_Log::keepsTheNewestTenThousand()
{
    CVXSLog log;
    for (int i = 0; i < 10003; ++i)
        log.log(QString::number(i), QString(), 0, QString(), ELOG_INFORMATION, false);
    QCOMPARE(log.entries().size(), 10000);
    QCOMPARE(log.entries().first().message, QString("3"));
    QCOMPARE(log.entries().last().message, QString("10002"));
}

void tst_Log::writesOneLineAnEntryToTheFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("log.txt");
    CVXSLog log;
    log.log("before", QString(), 0, QString(), ELOG_INFORMATION, false);
    QVERIFY(log.setFile(path));
    log.log(QString::fromUtf8("two\nlines ü"), "file.txt", 5, "stamp", ELOG_FAILURE, false);
    log.log("flushed", QString(), 0, QString(), ELOG_DEBUG, true);
    const QList<QByteArray> lines = linesOf(path);
    QCOMPARE(lines.size(), 3); // the last one is what follows the last line break: nothing
    QVERIFY(lines[0].contains("[3] stamp two\\nlines \xc3\xbc | file.txt | status 5"));
    QVERIFY(lines[1].contains("flushed"));
    QVERIFY(lines[2].isEmpty());
    QVERIFY(log.setFile(QString()));
    log.log("after", QString(), 0, QString(), ELOG_FAILURE, true);
    QCOMPARE(linesOf(path), lines);
}

void tst_Log::appendsToTheFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("log.txt");
    for (int i = 0; i < 2; ++i) {
        CVXSLog log;
        QVERIFY(log.setFile(path));
        log.log("line", QString(), 0, QString(), ELOG_INFORMATION, false);
    }
    QCOMPARE(linesOf(path).size(), 3);
}

void tst_Log::aFileThatCannotBeWrittenIsTold()
{
    QTemporaryDir dir;
    CVXSLog *log = getLogObject();
    const int before = log->entries().size();
    QVERIFY(!log->setFile(dir.filePath("missing/log.txt")));
    QCOMPARE(log->entries().size(), before + 1);
    QCOMPARE(log->entries().last().level, long(ELOG_FAILURE));
    QCOMPARE(log->entries().last().detail, dir.filePath("missing/log.txt"));
}

void tst_Log::thereIsOneLogOfTheProcess()
{
    QSignalSpy spy(getLogObject(), &CVXSLog::logged);
    vxLog(ELOG_WARNING, "message", "detail", 9);
    QCOMPARE(spy.size(), 1);
    const LogEntry entry = getLogObject()->entries().last();
    QCOMPARE(entry.message, QString("message"));
    QCOMPARE(entry.detail, QString("detail"));
    QCOMPARE(entry.number, 9);
    QCOMPARE(entry.level, long(ELOG_WARNING));
    QVERIFY(QTime::fromString(entry.stamp, "HH:mm:ss").isValid());
}

void tst_Log::everyStatusHasASentenceOfItsOwn()
{
    QSet<QString> sentences;
    const int known[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 31, 34, 46};
    for (int status : known) {
        const QString sentence = statusText(ESTATUS(status));
        QVERIFY2(!sentence.contains(QString::number(status)), qPrintable(sentence));
        sentences.insert(sentence);
    }
    QCOMPARE(sentences.size(), int(std::size(known)));
    const int unknown = 50; // within what the type can hold
    QVERIFY(statusText(ESTATUS(unknown)).contains("50"));
}

QTEST_GUILESS_MAIN(tst_Log)
#include "tst_Log.moc"
