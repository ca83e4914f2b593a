// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString CLICK = QStringLiteral("AB20260102030405");

} // namespace

class tst_Dataset : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindOfAcquisition_data();
    void kindOfAcquisition();
    void aPhotographAloneIsNoAcquisitionOfLight();
    void inMemoryThenOnDisk();
    void aResultIsRecognisedByItsKey();
    void theTypeFollowsTheFolder();

    void openedDatasetIsWhatWasSaved();
    void pixelsAreReadWhenAskedFor();
    void sectionAndFileMakeAnImagePresent_data();
    void sectionAndFileMakeAnImagePresent();
    void sectionNameIsTheFile();
    void folderNameIsTheClickNumberWhenTheRecordSaysNone();

    void fieldOfView_data();
    void fieldOfView();
    void bottomIlluminationPower_data();
    void bottomIlluminationPower();

    void unitComesFromTheRecord();
    void displaySettingsAreKept();
    void unitThatDoesNotExistIsIgnored();
    void registry();
};

void tst_Dataset::kindOfAcquisition_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isLuminescent");
    QTest::addColumn<bool>("isFluorescent");
    QTest::addColumn<bool>("isTransFluorescent");
    QTest::addColumn<bool>("isTransIllumination");
    QTest::newRow("luminescent") << "luminescent" << true << false << false << false;
    QTest::newRow("fluorescent") << "fluorescent" << false << true << false << false;
    row("transfluorescent counts as fluorescent", "transfluorescent", false, true, true, false);
    row("transillumination counts as fluorescent", "transillumination", false, true, false, true);
    QTest::newRow("in other letters") << "Fluorescent" << false << true << false << false;
    QTest::newRow("none said: luminescent") << QString() << true << false << false << false;
    QTest::newRow("an unknown kind is none of them") << "holographic" << false << false << false << false;
}

void tst_Dataset::kindOfAcquisition()
{
    QFETCH(QString, kind);
    CVXSDataset dataset(CLICK);
    CPLSection *section = clickinfo::ensureSection(dataset.getClickInfo(), clickinfo::SECTION_LUMINESCENT);
    if (!kind.isNull())
        section->setValue(clickinfo::KEY_KIND, kind);
    QTEST(dataset.isLuminescentDataset(), "isLuminescent");
    QTEST(dataset.isFluorescentDataset(), "isFluorescent");
    QTEST(dataset.isTransFluorescentDataset(), "isTransFluorescent");
    QTEST(dataset.isTransIlluminationDataset(), "isTransIllumination");
}

void tst_Dataset::aPhotographAloneIsNoAcquisitionOfLight()
{
    CVXSDataset dataset(CLICK);
    dataset.setCoreImage(EIMAGE_PHOTOGRAPH, TestStudy::image(4, 4, [](int x, int) { return float(x); }));
    QVERIFY(!dataset.isLuminescentDataset());
    QVERIFY(!dataset.isFluorescentDataset());
    QVERIFY(dataset.getImageList()->isPresent(EIMAGE_PHOTOGRAPH, true));
    QVERIFY(!dataset.getImageList()->isPresent(EIMAGE_LUMINESCENT, true));
    QVERIFY(!dataset.getCoreImage(EIMAGE_LUMINESCENT));
}

void tst_Dataset::inMemoryThenOnDisk()
{
    QTemporaryDir folder;
    CVXSDataset dataset(CLICK);
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(dataset.getFolderPath().isEmpty());
    QVERIFY(!dataset.isPartOfSequence());
    dataset.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(4, 4, [](int x, int) { return float(x); }));
    QVERIFY(dataset.isModified());
    QCOMPARE(dataset.saveDatasetAs(folder.filePath(CLICK)), ESTATUS_SUCCESS);
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_ACQUIRED));
    QVERIFY(!dataset.isModified());
    QCOMPARE(dataset.getFolderPath(), folder.filePath(CLICK) + "/");
}

void tst_Dataset::aResultIsRecognisedByItsKey()
{
    QTemporaryDir folder;
    CVXSDataset dataset(CLICK);
    clickinfo::ensureSection(dataset.getClickInfo(), clickinfo::SECTION_LUMINESCENT)
        ->setValue(clickinfo::KEY_MATH_OPERATION, "A - B * k");
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_IN_MEMORY)); // no files yet
    QCOMPARE(dataset.saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_RESULT));
    dataset.setImageMathToBeSaved(true);
    QVERIFY(dataset.isImageMathToBeSaved());
}

// A copy in a temporary folder, after which the dataset is in memory as before.
void tst_Dataset::theTypeFollowsTheFolder()
{
    QTemporaryDir folder;
    CVXSDataset dataset(CLICK);
    dataset.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(4, 4, [](int x, int) { return float(x); }));
    const QString remembered = dataset.getFolderPath();
    QCOMPARE(dataset.saveDatasetAs(folder.filePath("TempFolder/" + CLICK)), ESTATUS_SUCCESS);
    dataset.setFolderPath(remembered);
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(QDir(folder.filePath("TempFolder")).removeRecursively());
    QCOMPARE(dataset.getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(3, 0), 3.0);
    // It can still be saved, though the copy is gone.
    QCOMPARE(dataset.saveDatasetAs(folder.filePath("again")), ESTATUS_SUCCESS);
    QVERIFY(QFile::exists(folder.filePath("again/luminescent.tif")));
    // A folder without files does not make it a dataset on disk.
    dataset.setFolderPath(folder.filePath("nowhere"));
    QCOMPARE(dataset.getDatasetType(), int(EDATASET_IN_MEMORY));
}

void tst_Dataset::openedDatasetIsWhatWasSaved()
{
    QTemporaryDir folder;
    {
        CVXSDataset dataset(CLICK);
        CILImage image = TestStudy::image(7, 5, [](int x, int y) { return float(x) / 3.0f + float(10 * y); });
        image.setBinningFactor(8.0f);
        dataset.setCoreImage(EIMAGE_LUMINESCENT, image);
        clickinfo::ensureSection(dataset.getClickInfo(), clickinfo::SECTION_LUMINESCENT)
            ->setValue(clickinfo::KEY_FOV, "12.5");
        CILImage photograph = TestStudy::image(14, 10, [](int x, int y) { return float(x * y); });
        photograph.ChangeType(VXS_UINT16);
        dataset.setCoreImage(EIMAGE_PHOTOGRAPH, photograph);
        QCOMPARE(dataset.saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    }
    QCOMPARE(filesOf(folder.path()),
             QStringList({"AnalyzedClickInfo.txt", "ClickInfo.txt", "luminescent.tif", "photograph.tif"}));
    LogCatcher log;
    ESTATUS status = ESTATUS_FAILURE;
    QString error = "untouched";
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), &status, &error));
    QVERIFY2(dataset, qPrintable(error));
    QCOMPARE(status, ESTATUS_SUCCESS);
    QVERIFY(error.isEmpty());
    QCOMPARE(dataset->getClickNumber(), CLICK);
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_ACQUIRED));
    QCOMPARE(dataset->getFolderPath(), folder.path() + "/");
    const CILImage *image = dataset->getCoreImage(EIMAGE_LUMINESCENT);
    QVERIFY(image);
    QCOMPARE(image->binningFactor(), 8.0f);
    QCOMPARE(float(image->pixelAt(6, 4)), 6.0f / 3.0f + 40.0f);
    QCOMPARE(dataset->getCoreImage(EIMAGE_PHOTOGRAPH)->getType(), VXS_UINT16);
    QVERIFY(!dataset->getCoreImage(EIMAGE_XRAY));
    QVERIFY(!dataset->getCoreImage(tag_eimagetype(7)));
    QVERIFY(log.failures().isEmpty());
    QVERIFY(log.ofLevel(2).isEmpty());
}

void tst_Dataset::pixelsAreReadWhenAskedFor()
{
    QTemporaryDir folder;
    CVXSDataset(CLICK).saveDatasetAs(folder.path());
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                      "[ClickNumber]: " + CLICK.toUtf8() + "\n[luminescent image]\nBinning Factor = 4\n"));
    QVERIFY(writeFile(folder.filePath("luminescent.tif"), "not yet"));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset && dataset->getImageList()->isPresent(EIMAGE_LUMINESCENT));
    const CILImage image = TestStudy::image(3, 3, [](int, int) { return 5.0f; });
    QCOMPARE(image.saveAsTIFF(QFile::encodeName(folder.filePath("luminescent.tif")).constData()), 0L);
    QVERIFY(dataset->getCoreImage(EIMAGE_LUMINESCENT)); // what lies there now
}

void tst_Dataset::sectionAndFileMakeAnImagePresent_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QString>("file");
    QTest::newRow("photograph") << 0 << QByteArray("photographic image") << "photograph.tif";
    QTest::newRow("luminescent") << 1 << QByteArray("luminescent image") << "luminescent.tif";
    QTest::newRow("X-ray") << 2 << QByteArray("xray image") << "xray.tif";
    QTest::newRow("flat field") << 3 << QByteArray("flat field image") << "flatfield.tif";
    QTest::newRow("background") << 4 << QByteArray("background image") << "background.tif";
    QTest::newRow("excitation") << 5 << QByteArray("excitation image") << "excitation.tif";
}

void tst_Dataset::sectionAndFileMakeAnImagePresent()
{
    QFETCH(int, type);
    QFETCH(QByteArray, section);
    QFETCH(QString, file);
    const auto isPresent = [type](const QTemporaryDir &folder) {
        const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
        if (!dataset)
            return false;
        for (int other = 0; other < 6; ++other) {
            if (other != type && dataset->getImageList()->isPresent(tag_eimagetype(other)))
                return false;
        }
        return dataset->getImageList()->isPresent(tag_eimagetype(type));
    };
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"), "[" + section + "]\n"));
    QVERIFY(!isPresent(folder)); // no file
    QVERIFY(QDir(folder.path()).mkdir(file));
    QVERIFY(!isPresent(folder)); // a folder of that name is no image
    QVERIFY(QDir(folder.path()).rmdir(file));
    QVERIFY(writeFile(folder.filePath(file), "II*"));
    QVERIFY(isPresent(folder));
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"), "[ClickNumber]: AB1\n"));
    QVERIFY(!isPresent(folder)); // no section
}

void tst_Dataset::sectionNameIsTheFile()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                      "[luminescent image]: raw data.tif\nBinning Factor = 2\n"));
    QCOMPARE(TestStudy::image(6, 2, [](int, int) { return 1.0f; })
                 .saveAsTIFF(QFile::encodeName(folder.filePath("raw data.tif")).constData()),
             0L);
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    const CILImage *image = dataset->getCoreImage(EIMAGE_LUMINESCENT);
    QVERIFY(image);
    QCOMPARE(image->getWidth(), 6u);
}

void tst_Dataset::folderNameIsTheClickNumberWhenTheRecordSaysNone()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(CLICK));
    QVERIFY(writeFile(folder.filePath(CLICK + "/ClickInfo.txt"), "[User Input]\nStrain = any\n"));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath(CLICK), nullptr, nullptr));
    QVERIFY(dataset);
    QCOMPARE(dataset->getClickNumber(), CLICK);
}

void tst_Dataset::fieldOfView_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("width");
    const double none = std::nan("");
    QTest::newRow("centimetres") << "12.5" << 12.5;
    QTest::newRow("the last bit of the number counts") << "12.500000000000002" << std::nextafter(12.5, 13.0);
    QTest::newRow("missing") << QString() << none;
    QTest::newRow("zero") << "0" << none;
    QTest::newRow("negative") << "-4" << none;
    QTest::newRow("a word") << "wide" << none;
    QTest::newRow("a decimal comma") << "12,5" << none;
    QTest::newRow("infinite") << "inf" << none;
}

void tst_Dataset::fieldOfView()
{
    QFETCH(QString, text);
    QFETCH(double, width);
    CVXSDataset dataset(CLICK);
    for (const QLatin1String section : {clickinfo::SECTION_LUMINESCENT, clickinfo::SECTION_PHOTOGRAPH}) {
        CPLSection *keys = clickinfo::ensureSection(dataset.getClickInfo(), section);
        if (!text.isNull())
            keys->setValue(clickinfo::KEY_FOV, text);
    }
    for (tag_eimagetype type : {EIMAGE_LUMINESCENT, EIMAGE_PHOTOGRAPH}) {
        const double is = dataset.getFOVForImage(type);
        QVERIFY(std::isnan(width) ? std::isnan(is) : is == width);
    }
    QVERIFY(std::isnan(dataset.getFOVForImage(EIMAGE_XRAY)));
    QVERIFY(std::isnan(dataset.getFOVForImage(tag_eimagetype(7))));
}

void tst_Dataset::bottomIlluminationPower_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("power");
    QTest::newRow("milliwatts") << "3.25" << 3.25;
    QTest::newRow("missing") << QString() << 0.0;
    QTest::newRow("negative means none") << "-1" << 0.0;
    QTest::newRow("a word means none") << "full" << 0.0;
    QTest::newRow("nan means none") << "nan" << 0.0;
}

void tst_Dataset::bottomIlluminationPower()
{
    QFETCH(QString, text);
    CVXSDataset dataset(CLICK);
    CPLSection *keys = clickinfo::ensureSection(dataset.getClickInfo(), clickinfo::SECTION_LUMINESCENT);
    if (!text.isNull())
        keys->setValue(clickinfo::KEY_BOTTOM_POWER, text);
    QTEST(dataset.getBottomIlluminationPower(), "power");
}

void tst_Dataset::unitComesFromTheRecord()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                      "[Graph Controls]\nIntensity Calibration = radiant EFFICIENCY\n"));
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    QCOMPARE(dataset->getUnit(), EUNIT_RADIANT_EFFICIENCY);
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"), "[Graph Controls]\n"));
    dataset.reset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    QCOMPARE(dataset->getUnit(), EUNIT_COUNTS);
}

void tst_Dataset::displaySettingsAreKept()
{
    QTemporaryDir folder;
    {
        CVXSDataset dataset(CLICK);
        QSignalSpy changed(&dataset, &CVXSDataset::displayChanged);
        CVXSToolInfo info;
        info.reversed = true;
        info.logarithmic = true;
        info.brightness = -12;
        info.gamma = 1.2f;
        dataset.setToolInfo(info);
        dataset.setColorTable(VXS_CT_PLANETEARTH);
        QCOMPARE(changed.count(), 2);
        dataset.setColorTable(VXS_CT_COUNT); // there is no such table
        QCOMPARE(dataset.saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    }
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    QVERIFY(dataset->getToolInfo().reversed);
    QVERIFY(dataset->getToolInfo().logarithmic);
    QCOMPARE(dataset->getToolInfo().brightness, -12);
    QCOMPARE(dataset->getToolInfo().gamma, 1.2f);
    QCOMPARE(dataset->getColorTable(), VXS_CT_PLANETEARTH);
}

void tst_Dataset::unitThatDoesNotExistIsIgnored()
{
    CVXSDataset dataset(CLICK);
    QSignalSpy changed(&dataset, &CVXSDataset::unitChanged);
    dataset.setUnit(EUNIT_RADIANCE);
    dataset.setUnit(EUNIT_RADIANCE);
    dataset.setUnit(EUNIT_COUNT);
    QCOMPARE(dataset.getUnit(), EUNIT_RADIANCE);
    QCOMPARE(changed.count(), 1);
}

void tst_Dataset::registry()
{
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    {
        CVXSDataset dataset(CLICK);
        QVERIFY(!CVXSDataset::getDataset(CLICK)); // not before it is registered
        QVERIFY(dataset.registerDataset());
        QVERIFY(dataset.registerDataset());
        QCOMPARE(CVXSDataset::getDataset(CLICK), &dataset);
        {
            CVXSDataset other(CLICK);
            QVERIFY(!other.registerDataset());
        }
        QCOMPARE(CVXSDataset::getDataset(CLICK), &dataset); // the other one's end took nothing away
    }
    QVERIFY(!CVXSDataset::getDataset(CLICK));
}

QTEST_GUILESS_MAIN(tst_Dataset)
#include "tst_Dataset.moc"
