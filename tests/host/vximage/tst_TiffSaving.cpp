// SPDX-License-Identifier: MIT
#include "tests/host/vximage/ImageMaker.h"

#include <csignal>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// A file is written whole or not at all, and under the very bytes of its name.
class tst_TiffSaving : public QObject
{
    Q_OBJECT
    QTemporaryDir m_folder;
    QString path(const char *name) const { return m_folder.filePath(name); }

private slots:
    void aFailedWriteLeavesTheOldFile()
    {
        // In a process of its own: root ignores permissions, so it steps down first.
        const QByteArray folder = QFile::encodeName(path("readonly"));
        QVERIFY(QDir().mkdir(path("readonly")));
        const QByteArray file = folder + "/old.tif";
        QCOMPARE(maker::floats(2, 1, {1, 2}).saveAsTIFF(file), 0L);
        const QByteArray before = maker::contents(QFile::decodeName(file));
        QCOMPARE(chmod(QFile::encodeName(m_folder.path()), 0755), 0);
        QCOMPARE(chmod(folder, 0555), 0);
        const CILImage image = maker::floats(3, 1, {1, 2, 3});
        const pid_t child = fork();
        if (child == 0) {
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
                _exit(9);
            _exit(int(image.saveAsTIFF(file)));
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(chmod(folder, 0755), 0);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), int(EIL_FILE_NOT_WRITABLE));
        QCOMPARE(maker::contents(QFile::decodeName(file)), before);
        QCOMPARE(QDir(path("readonly")).entryList(QDir::Files | QDir::Hidden), QStringList{"old.tif"});
    }

    void aFullDiskLeavesNoHalfFile()
    {
        // A limit on the size of files fails as a full disk does, in the middle of writing.
        CILImage image;
        image.InitWithType(VXS_FLOAT, 1000, 1000);
        QVERIFY(static_cast<const CILImage &>(image).get_data()); // here: a child has no threads to help it
        const QByteArray file = QFile::encodeName(path("full.tif"));
        const pid_t child = fork();
        if (child == 0) {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{100000, 100000};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
                _exit(9);
            const long result = image.saveAsTIFF(file);
            _exit(int(result));
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), int(EIL_FILE_NOT_WRITABLE));
        QVERIFY(!QFile::exists(path("full.tif")));
        QCOMPARE(QDir(m_folder.path()).entryList({"*part-*"}, QDir::Files | QDir::Hidden).size(), 0);
    }

    void pathsOfToolsAreLatin1()
    {
        const QString name = QString::fromUtf8("/M\u00e4us.tif");
        const QByteArray native = (m_folder.path() + name).toUtf8();
        QCOMPARE(maker::floats(1, 1, {3}).saveAsTIFF((m_folder.path() + name).toLatin1()), 0L);
        CILImage image;
        QCOMPARE(image.loadTIFF(native), EIL_SUCCESS);
        QCOMPARE(image.getMax(), 3.0f);
        QCOMPARE(maker::floats(1, 1, {4}).saveTIFF(native), EIL_SUCCESS);
        QCOMPARE(image.loadTIFF(native), EIL_SUCCESS);
        QCOMPARE(image.getMax(), 4.0f);
        QCOMPARE(unlink(native), 0);
    }

    /// A QString cannot hold them: they would come back as other bytes.
    void bytesThatAreNoTextAreAFileNameToo()
    {
        const QByteArray folder = QFile::encodeName(m_folder.path()) + "/\xc3\x28 \x80\xff";
        const QByteArray file = folder + "/\xfe.tif";
        QVERIFY(QFile::encodeName(QFile::decodeName(file)) != file);
        QCOMPARE(mkdir(folder, 0755), 0);
        QCOMPARE(maker::floats(1, 1, {5}).saveTIFF(file), EIL_SUCCESS);
        struct stat info;
        QCOMPARE(stat(file, &info), 0);
        CILImage image;
        QCOMPARE(CILImage::checkTIFF(file), EIL_SUCCESS);
        QCOMPARE(image.loadTIFF(file), EIL_SUCCESS);
        QCOMPARE(image.getMax(), 5.0f);
        QCOMPARE(image.loadTIFF(folder + "/absent\xfe.tif"), EIL_FILE_NOT_FOUND);
        QCOMPARE(QByteArray::fromStdString(CILImage::lastError()).left(folder.size()), folder);
        QCOMPARE(unlink(file), 0);
        QCOMPARE(rmdir(folder), 0); // nothing else was left in it
    }
};

QTEST_APPLESS_MAIN(tst_TiffSaving)
#include "tst_TiffSaving.moc"
