// SPDX-License-Identifier: MIT
#include "result/ResultFolderLock.h"
#include "tests/support/Files.h"

#include <QTemporaryDir>
#include <QtTest>

/// One folder, several who want to write a result there.
class tst_ResultFolderLock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTakenAndFreeWithTheObject();
    void anotherIsKeptOff();
    void takingAnotherFolderFreesTheFirst();
    void theFileOfAKilledProgramCountsForNothing();
    void whereNothingCanBeWrittenNobodyIsKeptOff();
};

void tst_ResultFolderLock::isTakenAndFreeWithTheObject()
{
    const QTemporaryDir folder;
    {
        ResultFolderLock lock;
        QVERIFY(!lock.isTaken());
        QVERIFY(lock.take(folder.path(), 0));
        QVERIFY(lock.isTaken());
        QVERIFY(QFile::exists(folder.filePath(".writing")));
    }
    QVERIFY(!QFile::exists(folder.filePath(".writing")));
    ResultFolderLock next;
    QVERIFY(next.take(folder.path(), 0));
}

void tst_ResultFolderLock::anotherIsKeptOff()
{
    const QTemporaryDir folder;
    ResultFolderLock first;
    QVERIFY(first.take(folder.path(), 0));
    ResultFolderLock second;
    QVERIFY(!second.take(folder.path(), 0));
    QVERIFY(!second.isTaken());
    QVERIFY2(first.isTaken() && QFile::exists(folder.filePath(".writing")), "who has it keeps it");
}

void tst_ResultFolderLock::takingAnotherFolderFreesTheFirst()
{
    const QTemporaryDir folder, other;
    ResultFolderLock lock;
    QVERIFY(lock.take(folder.path(), 0));
    QVERIFY(lock.take(other.path(), 0));
    ResultFolderLock next;
    QVERIFY(next.take(folder.path(), 0));
}

void tst_ResultFolderLock::theFileOfAKilledProgramCountsForNothing()
{
    const QTemporaryDir folder;
    // No process has that id; the second is what is left of one that died before it wrote who it is.
    for (const QByteArray &leftOver : {QByteArray("999999999\nvexa\nhere\n"), QByteArray()}) {
        QVERIFY(writeFile(folder.filePath(".writing"), leftOver));
        ResultFolderLock lock;
        QVERIFY(lock.take(folder.path(), 0));
        QVERIFY(lock.isTaken());
    }
}

void tst_ResultFolderLock::whereNothingCanBeWrittenNobodyIsKeptOff()
{
    const QTemporaryDir folder;
    ResultFolderLock lock;
    QVERIFY(lock.take(folder.filePath("missing"), 0));
}

QTEST_APPLESS_MAIN(tst_ResultFolderLock)
#include "tst_ResultFolderLock.moc"
