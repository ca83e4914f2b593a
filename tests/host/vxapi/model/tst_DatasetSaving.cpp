// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

const QString CLICK = QStringLiteral("AB20260102030405");

CILImage ramp()
{
    return TestStudy::image(8, 8, [](int x, int y) { return float(x + 8 * y); });
}

/// A saved dataset; `folder` is its own.
std::unique_ptr<CVXSDataset> savedDataset(const QString &folder)
{
    auto dataset = std::make_unique<CVXSDataset>(CLICK);
    CILImage image = ramp();
    image.setBinningFactor(4.0f);
    dataset->setCoreImage(EIMAGE_LUMINESCENT, image);
    dataset->setCoreImage(EIMAGE_PHOTOGRAPH, ramp());
    return dataset->saveDatasetAs(folder) == ESTATUS_SUCCESS ? std::move(dataset) : nullptr;
}

/// What the files of a folder hold.
QMap<QString, QByteArray> contentOf(const QString &folder)
{
    QMap<QString, QByteArray> content;
    for (const QString &file : filesOf(folder))
        content[file] = readFile(folder + "/" + file);
    return content;
}

} // namespace

class tst_DatasetSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unchangedImagesAreCopiedByteForByte();
    void brokenImagesAreCopiedToo();
    void changedPixelsAreWritten();
    void savingInItsOwnFolderKeepsUnchangedFiles();
    void aChangedKeyIsWritten();
    void aMissingFileIsTold();
    void aReadOnlyFolderKeepsTheOldFiles();
    void aFolderThatCannotBeMade();
    void aFailedSaveIsMadeGoodByTheNext();
    void namesBeyondLatin1();
    void noFolder();
};

void tst_DatasetSaving::unchangedImagesAreCopiedByteForByte()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.filePath("a")));
    // Not as our own writer would write it.
    QVERIFY(writeFile(folder.filePath("a/photograph.tif"),
                      readFile(folder.filePath("a/photograph.tif")) + "tail"));
    QVERIFY(writeFile(folder.filePath("a/luminescentA.TIF"), "operand"));
    QVERIFY(writeFile(folder.filePath("a/AnalyzedClickInfo.txt"), "# mine\n[ROIs]\n"));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath("a"), nullptr, nullptr));
    QVERIFY(dataset);
    QVERIFY(dataset->getCoreImage(EIMAGE_PHOTOGRAPH)); // reading is not changing
    const QMap<QString, QByteArray> before = contentOf(folder.filePath("a"));
    QCOMPARE(dataset->saveDatasetAs(folder.filePath("b")), ESTATUS_SUCCESS);
    QCOMPARE(contentOf(folder.filePath("b")), before);
    QCOMPARE(contentOf(folder.filePath("a")), before);
    QCOMPARE(dataset->getFolderPath(), folder.filePath("b") + "/");
    QCOMPARE(before.size(), 5);
}

void tst_DatasetSaving::brokenImagesAreCopiedToo()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.filePath("a")));
    QVERIFY(writeFile(folder.filePath("a/luminescent.tif"), "broken"));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath("a"), nullptr, nullptr));
    QVERIFY(dataset && !dataset->getCoreImage(EIMAGE_LUMINESCENT));
    QCOMPARE(dataset->saveDatasetAs(folder.filePath("b")), ESTATUS_SUCCESS);
    QCOMPARE(readFile(folder.filePath("b/luminescent.tif")), QByteArray("broken"));
}

void tst_DatasetSaving::changedPixelsAreWritten()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.filePath("a")));
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath("a"), nullptr, nullptr));
    QVERIFY(dataset && dataset->getCoreImage(EIMAGE_LUMINESCENT));
    *dataset->getCoreImage(EIMAGE_LUMINESCENT) *= 2.0;
    static_cast<float *>(dataset->getCoreImage(EIMAGE_PHOTOGRAPH)->get_data())[0] = 77.0f;
    QCOMPARE(dataset->saveDatasetAs(folder.filePath("a")), ESTATUS_SUCCESS);
    dataset.reset(CVXSDataset::open(folder.filePath("a"), nullptr, nullptr));
    QVERIFY(dataset);
    QCOMPARE(dataset->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(7, 7), 126.0);
    QCOMPARE(dataset->getCoreImage(EIMAGE_PHOTOGRAPH)->pixelAt(0, 0), 77.0);
}

void tst_DatasetSaving::savingInItsOwnFolderKeepsUnchangedFiles()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.path()));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    const QMap<QString, QByteArray> before = contentOf(folder.path());
    QCOMPARE(dataset->saveDatasetAs(folder.path() + "/."), ESTATUS_SUCCESS);
    QCOMPARE(contentOf(folder.path()), before);
}

void tst_DatasetSaving::aChangedKeyIsWritten()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.path()));
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_USER_INPUT)
        ->addKeyValue("Strain", "nude");
    QCOMPARE(dataset->saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    dataset.reset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    QCOMPARE(
        clickinfo::textOf(*dataset->getClickInfo(), clickinfo::SECTION_USER_INPUT, QLatin1String("Strain")),
        QString("nude"));
}

void tst_DatasetSaving::aMissingFileIsTold()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.filePath("a")));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath("a"), nullptr, nullptr));
    QVERIFY(dataset);
    QVERIFY(QFile::remove(folder.filePath("a/luminescent.tif"))); // before its pixels were read
    QCOMPARE(dataset->saveDatasetAs(folder.filePath("b")), ESTATUS_FILE_NOT_FOUND);
    QVERIFY(dataset->lastError().startsWith(folder.filePath("a/luminescent.tif") + ": "));
    QVERIFY(!QFile::exists(folder.filePath("b/AnalyzedClickInfo.txt"))); // so nobody takes it for complete
    QCOMPARE(dataset->getFolderPath(), folder.filePath("a") + "/");
}

void tst_DatasetSaving::aReadOnlyFolderKeepsTheOldFiles()
{
    QTemporaryDir folder;
    const QString own = folder.filePath("a");
    QVERIFY(savedDataset(own));
    const QMap<QString, QByteArray> before = contentOf(own);
    QCOMPARE(chmod(qPrintable(folder.path()), 0755), 0);
    for (const QString &file : filesOf(own))
        QCOMPARE(chmod(qPrintable(own + "/" + file), 0644), 0);
    QCOMPARE(chmod(qPrintable(own), 0555), 0);
    QVERIFY(holdsForUnprivilegedUser([&] {
        const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(own, nullptr, nullptr));
        if (!dataset || !dataset->getCoreImage(EIMAGE_LUMINESCENT))
            return false;
        *dataset->getCoreImage(EIMAGE_LUMINESCENT) *= 2.0;
        dataset->setColorTable(VXS_CT_GRAYS);
        LogCatcher log;
        return dataset->saveDatasetAs(own) == ESTATUS_FILE_NOT_WRITABLE &&
               dataset->lastError().startsWith(own + "/luminescent.tif: ") && dataset->isModified() &&
               log.failures().join('\n').contains(CLICK);
    }));
    QCOMPARE(contentOf(own), before);
    QCOMPARE(chmod(qPrintable(own), 0755), 0);
}

void tst_DatasetSaving::aFolderThatCannotBeMade()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("file"), "in the way"));
    CVXSDataset dataset(CLICK);
    dataset.setCoreImage(EIMAGE_LUMINESCENT, ramp());
    QCOMPARE(dataset.saveDatasetAs(folder.filePath("file/a")), ESTATUS_FILE_NOT_WRITABLE);
    QVERIFY(dataset.lastError().startsWith(folder.filePath("file/a")));
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(dataset.isModified());
    QCOMPARE(readFile(folder.filePath("file")), QByteArray("in the way"));
}

void tst_DatasetSaving::aFailedSaveIsMadeGoodByTheNext()
{
    QTemporaryDir folder;
    QVERIFY(savedDataset(folder.filePath("a")));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath("a"), nullptr, nullptr));
    QVERIFY(dataset && dataset->getCoreImage(EIMAGE_LUMINESCENT));
    *dataset->getCoreImage(EIMAGE_LUMINESCENT) *= 2.0;
    QVERIFY(QDir(folder.path()).mkpath("b/AnalyzedClickInfo.txt")); // a folder in the way of the last file
    QVERIFY(dataset->saveDatasetAs(folder.filePath("b")) != ESTATUS_SUCCESS);
    QCOMPARE(dataset->saveDatasetAs(folder.filePath("c")), ESTATUS_SUCCESS);
    CILImage written;
    QCOMPARE(written.loadTIFF(QFile::encodeName(folder.filePath("c/luminescent.tif")).constData()),
             EIL_SUCCESS);
    QCOMPARE(written.pixelAt(7, 7), 126.0); // the changed pixels, not those of the old file
}

void tst_DatasetSaving::namesBeyondLatin1()
{
    QTemporaryDir folder;
    const QString name = QString::fromUtf8("M\xc3\xa4use \xe9\xbc\xa0");
    QVERIFY(savedDataset(folder.filePath(name)));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath(name), nullptr, nullptr));
    QVERIFY(dataset);
    QVERIFY(dataset->getCoreImage(EIMAGE_LUMINESCENT));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList(name));
}

void tst_DatasetSaving::noFolder()
{
    CVXSDataset dataset(CLICK);
    QVERIFY(dataset.saveDatasetAs(QString()) != ESTATUS_SUCCESS);
    QVERIFY(dataset.lastError().contains(CLICK));
}

QTEST_GUILESS_MAIN(tst_DatasetSaving)
#include "tst_DatasetSaving.moc"
