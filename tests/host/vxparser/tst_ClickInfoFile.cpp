// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXSLog.h"
#include "tests/host/vxutils/UnprivilegedUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace {

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not readable");
}

int sectionCount(const CPLClickInfo &record)
{
    int count = -1;
    record.getSectionCount(&count);
    return count;
}

/// A record that holds something, to see that a failed load leaves nothing of it.
void fill(CPLClickInfo *record)
{
    auto *section = new CPLSection;
    section->setSectionKey("old");
    record->addSection(section);
}

} // namespace

class tst_ClickInfoFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void savesAndLoads();
    void savingReplacesTheFile();
    void brokenLineIsLoggedWithFileAndLine();
    void missingFile();
    void folderInsteadOfFile();
    void pipeInsteadOfFile();
    void unreadableFile();
    void absurdlyBigFile();
    void absurdlyBigRecord();
    void readOnlyFolderKeepsTheOldFile();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

void tst_ClickInfoFile::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QCOMPARE(chmod(QFile::encodeName(m_dir->path()).constData(), 0755), 0);
    getLogObject()->clear();
}

void tst_ClickInfoFile::savesAndLoads()
{
    const QString path = m_dir->filePath(QString::fromUtf8("Click Info ü.txt"));
    CPLClickInfo record;
    auto *section = new CPLSection;
    section->setSectionKey("key");
    section->addKeyValue("a", QString::fromUtf8("Mäuse"));
    record.addSection(section);
    QCOMPARE(record.saveClickInfo(path), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path), record.toText());

    CPLClickInfo back;
    fill(&back);
    QCOMPARE(back.loadClickInfo(path, false), ESTATUS_SUCCESS);
    QVERIFY(!back["old"]);
    QCOMPARE(back.toText(), record.toText());
    QVERIFY(getLogObject()->entries().isEmpty());
}

void tst_ClickInfoFile::savingReplacesTheFile()
{
    const QString path = m_dir->filePath("ClickInfo.txt");
    QVERIFY(writeFile(path, QByteArray(100000, 'x')));
    CPLClickInfo record;
    fill(&record);
    QCOMPARE(record.saveClickInfo(path), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path), QByteArray("[old]\n"));
    // Nothing is left beside it.
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"ClickInfo.txt"});
}

void tst_ClickInfoFile::brokenLineIsLoggedWithFileAndLine()
{
    const QString path = m_dir->filePath("ClickInfo.txt");
    QVERIFY(writeFile(path, "[s]\na = b\nnonsense\n"));
    CPLClickInfo record;
    fill(&record);
    QCOMPARE(record.loadClickInfo(path, false), ESTATUS_BAD_SYNTAX);
    QCOMPARE(sectionCount(record), 0);
    QVERIFY2(record.lastError().startsWith(path + ": line 3: "), qPrintable(record.lastError()));
    QCOMPARE(getLogObject()->entries().size(), 1);
    const LogEntry entry = getLogObject()->entries().first();
    QCOMPARE(entry.level, long(ELOG_FAILURE));
    QCOMPARE(entry.number, int(ESTATUS_BAD_SYNTAX));
    QCOMPARE(entry.message, record.lastError());
}

void tst_ClickInfoFile::missingFile()
{
    CPLClickInfo record;
    fill(&record);
    const QString path = m_dir->filePath("none.txt");
    QCOMPARE(record.loadClickInfo(path, false), ESTATUS_FILE_NOT_FOUND);
    QVERIFY(record.lastError().contains(path));
    QCOMPARE(sectionCount(record), 0);
    QVERIFY(getLogObject()->entries().isEmpty());
}

void tst_ClickInfoFile::folderInsteadOfFile()
{
    CPLClickInfo record;
    fill(&record);
    QCOMPARE(record.loadClickInfo(m_dir->path(), false), ESTATUS_FILE_NOT_READABLE);
    QCOMPARE(sectionCount(record), 0);
    QCOMPARE(record.saveClickInfo(m_dir->path()), ESTATUS_FILE_NOT_WRITABLE);
}

void tst_ClickInfoFile::pipeInsteadOfFile()
{
    const QString path = m_dir->filePath("pipe");
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    CPLClickInfo record;
    QCOMPARE(record.loadClickInfo(path, false), ESTATUS_FILE_NOT_READABLE);
}

void tst_ClickInfoFile::unreadableFile()
{
    const QString path = m_dir->filePath("ClickInfo.txt");
    QVERIFY(writeFile(path, "[s]\n"));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0200), 0);
    QVERIFY(holdsForUnprivilegedUser([path] {
        // Even its owner may not read it.
        CPLClickInfo record;
        fill(&record);
        return record.loadClickInfo(path, false) == ESTATUS_FILE_NOT_READABLE && sectionCount(record) == 0 &&
               record.lastError().contains(path) && getLogObject()->entries().size() == 1;
    }));
}

void tst_ClickInfoFile::absurdlyBigFile()
{
    const QString path = m_dir->filePath("ClickInfo.txt");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(CPLClickInfo::MAX_FILE_BYTES + 1)); // sparse: takes no room on the disk
    file.close();
    CPLClickInfo record;
    fill(&record);
    QCOMPARE(record.loadClickInfo(path, false), ESTATUS_FAILURE);
    QCOMPARE(sectionCount(record), 0);
    QVERIFY2(record.lastError().contains(path) && record.lastError().contains("64 MB"),
             qPrintable(record.lastError()));
    QCOMPARE(getLogObject()->entries().last().message, record.lastError());
}

void tst_ClickInfoFile::absurdlyBigRecord()
{
    const QString path = m_dir->filePath("ClickInfo.txt");
    QVERIFY(writeFile(path, "[s]\n"));
    CPLClickInfo record;
    auto *section = new CPLSection;
    section->addKeyValue("big", QString(int(CPLClickInfo::MAX_FILE_BYTES), QLatin1Char('x')));
    record.addSection(section);
    // What could not be read back is not written either.
    QCOMPARE(record.saveClickInfo(path), ESTATUS_FAILURE);
    QCOMPARE(readFile(path), QByteArray("[s]\n"));
}

void tst_ClickInfoFile::readOnlyFolderKeepsTheOldFile()
{
    const QString folder = m_dir->filePath("locked");
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + "/ClickInfo.txt";
    QVERIFY(writeFile(path, "[s]\n"));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0644), 0);
    QCOMPARE(chmod(QFile::encodeName(folder).constData(), 0555), 0);
    QVERIFY(holdsForUnprivilegedUser([path, folder] {
        CPLClickInfo record;
        fill(&record);
        const bool oldIsKept = record.saveClickInfo(path) == ESTATUS_FILE_NOT_WRITABLE;
        const bool newIsRefused = record.saveClickInfo(folder + "/new.txt") == ESTATUS_FILE_NOT_WRITABLE;
        return oldIsKept && newIsRefused && record.lastError().contains(folder + "/new.txt: ") &&
               getLogObject()->entries().size() == 2;
    }));
    QCOMPARE(readFile(path), QByteArray("[s]\n"));
    QVERIFY(!QFile::exists(folder + "/new.txt"));
}

QTEST_GUILESS_MAIN(tst_ClickInfoFile)
#include "tst_ClickInfoFile.moc"
