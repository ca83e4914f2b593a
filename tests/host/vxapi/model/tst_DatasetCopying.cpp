// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QtTest>

namespace {

const QString CLICK = QStringLiteral("AB_M20260102030405");

CILImage ramp()
{
    return TestStudy::image(8, 8, [](int x, int y) { return float(x + 8 * y); });
}

/// Every file under a folder, with its content.
QMap<QString, QByteArray> treeOf(const QString &folder)
{
    QMap<QString, QByteArray> tree;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        tree[QDir(folder).relativeFilePath(path)] = readFile(path);
    }
    return tree;
}

} // namespace

/// What lies with a dataset goes along with it.
class tst_DatasetCopying : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everythingGoesAlong();
    void aCopyInsideTheFolderDoesNotHoldItself();
    void linksToFoldersAreNotFollowed();
    void savingEndsBothMarks();
    void aCopyLeavesTheDatasetAsItWas();
    void aCopyWritesChangedPixelsAndKeepsThemToBeSaved();
    void aCopyThatFails();

private:
    std::unique_ptr<CVXSDataset> open() const
    {
        return std::unique_ptr<CVXSDataset>(CVXSDataset::open(m_folder, nullptr, nullptr));
    }

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_folder;
};

void tst_DatasetCopying::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    m_folder = m_root->filePath(CLICK) + "/";
    CVXSDataset dataset(CLICK);
    dataset.setCoreImage(EIMAGE_LUMINESCENT, ramp());
    QCOMPARE(dataset.saveDatasetAs(m_folder), ESTATUS_SUCCESS);
    QVERIFY(writeFile(m_folder + "luminescentA.TIF", "operand"));
    QVERIFY(QDir(m_folder).mkpath("notes/of today"));
    QVERIFY(QDir(m_folder).mkpath("empty"));
    QVERIFY(writeFile(m_folder + "notes/read me.txt", "mouse 3"));
    QVERIFY(writeFile(m_folder + "notes/of today/.hidden", "mouse 4"));
    // Names that mean something in the folder itself mean nothing below it.
    QVERIFY(writeFile(m_folder + "notes/ClickInfo.txt", "of another time"));
}

void tst_DatasetCopying::everythingGoesAlong()
{
    const auto dataset = open();
    QVERIFY(dataset);
    const QString target = m_root->filePath("elsewhere/deep");
    QCOMPARE(dataset->saveDatasetAs(target), ESTATUS_SUCCESS);
    QCOMPARE(treeOf(target), treeOf(m_folder));
    QVERIFY(QFileInfo(target + "/empty").isDir());
    QCOMPARE(dataset->getFolderPath(), target + "/");
    // Saving there again changes nothing.
    const auto before = treeOf(target);
    QCOMPARE(dataset->saveDatasetAs(target), ESTATUS_SUCCESS);
    QCOMPARE(treeOf(target), before);
}

void tst_DatasetCopying::aCopyInsideTheFolderDoesNotHoldItself()
{
    const auto dataset = open();
    QVERIFY(dataset);
    const QMap<QString, QByteArray> before = treeOf(m_folder);
    const QString target = m_folder + "TempFolder/" + CLICK;
    QCOMPARE(dataset->saveDatasetAs(target), ESTATUS_SUCCESS);
    QCOMPARE(treeOf(target), before);
}

void tst_DatasetCopying::linksToFoldersAreNotFollowed()
{
    QVERIFY(QFile::link(m_root->path(), m_folder + "up")); // a circle
    const auto dataset = open();
    QVERIFY(dataset);
    const QString target = m_root->filePath("copy");
    QCOMPARE(dataset->saveDatasetAs(target), ESTATUS_SUCCESS);
    QVERIFY(!QFileInfo::exists(target + "/up"));
    QCOMPARE(readFile(target + "/notes/read me.txt"), QByteArray("mouse 3"));
}

void tst_DatasetCopying::savingEndsBothMarks()
{
    const auto dataset = open();
    QVERIFY(dataset);
    dataset->setModified(true);
    dataset->setImageMathToBeSaved(true);
    QCOMPARE(dataset->saveDatasetAs(m_folder), ESTATUS_SUCCESS);
    QVERIFY(!dataset->isModified());
    QVERIFY(!dataset->isImageMathToBeSaved());
}

void tst_DatasetCopying::aCopyLeavesTheDatasetAsItWas()
{
    const auto dataset = open();
    QVERIFY(dataset);
    dataset->setColorTable(VXS_CT_RED);
    dataset->setImageMathToBeSaved(true);
    const QMap<QString, QByteArray> before = treeOf(m_folder);
    const QString target = m_root->filePath("copy");
    QCOMPARE(dataset->saveCopy(target), ESTATUS_SUCCESS);
    QVERIFY(readFile(target + "/ClickInfo.txt").contains(CILPalette::tableName(VXS_CT_RED)));
    QCOMPARE(treeOf(target).keys(), before.keys());
    QCOMPARE(treeOf(m_folder), before);
    QCOMPARE(dataset->getFolderPath(), m_folder);
    QVERIFY(dataset->isModified());
    QVERIFY(dataset->isImageMathToBeSaved());

    // One in memory stays there.
    CVXSDataset inMemory(CLICK);
    inMemory.setCoreImage(EIMAGE_LUMINESCENT, ramp());
    QCOMPARE(inMemory.saveCopy(m_root->filePath("other")), ESTATUS_SUCCESS);
    QCOMPARE(inMemory.getDatasetType(), int(EDATASET_IN_MEMORY));
    QString error;
    const std::unique_ptr<CVXSDataset> copy(CVXSDataset::open(m_root->filePath("other"), nullptr, nullptr));
    QVERIFY2(copy && copy->checkComplete(&error) == ESTATUS_SUCCESS, qPrintable(error));
}

void tst_DatasetCopying::aCopyWritesChangedPixelsAndKeepsThemToBeSaved()
{
    const auto dataset = open();
    QVERIFY(dataset);
    static_cast<float *>(dataset->getCoreImage(EIMAGE_LUMINESCENT)->get_data())[0] = 77.0f;
    QCOMPARE(dataset->saveCopy(m_root->filePath("copy")), ESTATUS_SUCCESS);
    const auto firstPixel = [](const QString &folder) {
        CILImage image;
        return image.loadTIFF(QFile::encodeName(folder + "/luminescent.tif").constData()) == EIL_SUCCESS
                   ? image.pixelAt(0, 0)
                   : -1.0;
    };
    QCOMPARE(firstPixel(m_root->filePath("copy")), 77.0);
    QCOMPARE(firstPixel(m_folder), 0.0);
    QCOMPARE(dataset->saveDatasetAs(m_folder), ESTATUS_SUCCESS);
    QCOMPARE(firstPixel(m_folder), 77.0);
}

void tst_DatasetCopying::aCopyThatFails()
{
    const auto dataset = open();
    QVERIFY(dataset);
    const LogCatcher log;
    QCOMPARE(dataset->saveCopy(QString()), ESTATUS_BAD_NAME);
    QVERIFY(writeFile(m_root->filePath("file"), "in the way"));
    QCOMPARE(dataset->saveCopy(m_root->filePath("file/below")), ESTATUS_FILE_NOT_WRITABLE);
    QVERIFY2(dataset->lastError().startsWith(m_root->filePath("file/below/: ")),
             qPrintable(dataset->lastError()));
    QCOMPARE(log.failures().size(), 2);
    QVERIFY(log.failures().last().contains(dataset->lastError()));
}

QTEST_GUILESS_MAIN(tst_DatasetCopying)
#include "tst_DatasetCopying.moc"
