// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/import/ImageImport.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"
#include "tests/support/TiffPages.h"

#include <QtTest>

#include <clocale>
#include <cmath>
#include <functional>
#include <limits>
#include <sys/stat.h>

using namespace clickinfo;

using Edit = std::function<void(ImportSettings *)>;
Q_DECLARE_METATYPE(Edit)

namespace {

const QString CLICK = QStringLiteral("ZB20261121153000");
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

/// A fluorescence image in every setting of its own.
ImportSettings allSettings()
{
    ImportSettings settings;
    settings.kind = KIND_FLUORESCENT;
    settings.fieldOfView = 12.5;
    settings.binning = 4.0;
    settings.exposure = 0.5;
    settings.fNumber = 1.4;
    settings.pixelPitch = 13.5;
    settings.electronsPerCount = 2.0;
    settings.quantumEfficiency = 0.8;
    settings.transmission = 0.25;
    settings.excitationIrradiance = 20.0;
    settings.imagingAngle = QStringLiteral("Left");
    settings.acquisitionDate = QStringLiteral("2026-11-21T15:30:00");
    return settings;
}

QString value(const CVXSDataset &dataset, QLatin1String section, const QString &key)
{
    const CPLSection *found = (*dataset.getClickInfo())[section];
    QString value;
    if (found)
        found->getValue(key, &value);
    return value;
}

} // namespace

class tst_ImageImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void makesADatasetInMemory();
    void writesEverySettingDown();
    void radianceIsThatOfTheFormula();
    void leavesOutWhatIsNotKnown();
    void withoutConstantsThereAreCountsAlone();
    void oneConstantThatIsMissingIsNamedAlone_data();
    void oneConstantThatIsMissingIsNamedAlone();
    void constantsThatVersion1MadeUpAreNone_data();
    void constantsThatVersion1MadeUpAreNone();
    void anOffsetIsSubtractedEverywhere();
    void companionsAreTakenAndSurviveSaving();
    void companionsThatDoNotFit_data();
    void companionsThatDoNotFit();
    void theRatioOfBackgroundsIsThatOfTheLight_data();
    void theRatioOfBackgroundsIsThatOfTheLight();
    void pagesThatAreLeftOutAreLogged();
    void everyPixelTypeIsTaken_data();
    void everyPixelTypeIsTaken();
    void survivesSavingAndOpening();
    void numbersAreThoseOfTheCLocale();
    void badSettings_data();
    void badSettings();
    void badFiles_data();
    void badFiles();
    void aFileThatMayNotBeRead();
    void realImages();

private:
    QString write(const QString &name, const CILImage &image) const
    {
        const QString path = m_folder->filePath(name);
        return image.saveTIFF(QFile::encodeName(path).constData()) == EIL_SUCCESS ? path : QString();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_luminescent;
    QString m_photograph;
};

void tst_ImageImport::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_luminescent =
        write("bright.tif", TestStudy::image(32, 24, [](int x, int y) { return float(x + 100 * y); }));
    m_photograph = write("photo.tif", TestStudy::image(64, 48, [](int x, int) { return float(x); }));
    QVERIFY(!m_luminescent.isEmpty() && !m_photograph.isEmpty());
}

void tst_ImageImport::makesADatasetInMemory()
{
    const LogCatcher log;
    ESTATUS status = ESTATUS_FAILURE;
    QString error = "something";
    const auto dataset = importImages(CLICK, {m_luminescent, m_photograph}, allSettings(), &status, &error);
    QVERIFY2(dataset, qPrintable(error));
    QCOMPARE(status, ESTATUS_SUCCESS);
    QVERIFY(error.isEmpty());
    QCOMPARE(dataset->getClickNumber(), CLICK);
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(dataset->getFolderPath().isEmpty());
    QVERIFY(dataset->isModified());
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    CILImage *image = dataset->getCoreImage(EIMAGE_LUMINESCENT);
    QVERIFY(image);
    QCOMPARE(image->getWidth(), 32u);
    QCOMPARE(image->pixelAt(5, 7), 705.0);
    QCOMPARE(image->binningFactor(), 4.0f);
    QCOMPARE(dataset->getCoreImage(EIMAGE_PHOTOGRAPH)->pixelAt(63, 47), 63.0);
    QCOMPARE(dataset->getUnit(), EUNIT_COUNTS);
    QVERIFY(log.failures().isEmpty());
}

void tst_ImageImport::writesEverySettingDown()
{
    const auto dataset = importImages(CLICK, {m_luminescent, m_photograph}, allSettings(), nullptr, nullptr);
    QVERIFY(dataset);
    QVERIFY(dataset->isFluorescentDataset());
    QCOMPARE(dataset->getFOVForImage(EIMAGE_LUMINESCENT), 12.5);
    QCOMPARE(dataset->getFOVForImage(EIMAGE_PHOTOGRAPH), 12.5);
    const QMap<QString, QString> expected = {{KEY_KIND, "fluorescent"},
                                             {KEY_FOV, "12.5"},
                                             {KEY_BINNING, "4"},
                                             {KEY_EXPOSURE, "0.5"},
                                             {KEY_FNUMBER, "1.4"},
                                             {KEY_TRANSMISSION, "0.25"},
                                             {KEY_EXCITATION_IRRADIANCE, "20"},
                                             {KEY_IMAGING_ANGLE, "Left"},
                                             {KEY_IMPORTED_FROM, QFileInfo(m_luminescent).fileName()},
                                             {KEY_ACQUISITION_DATE, "2026-11-21T15:30:00"}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        QCOMPARE(value(*dataset, SECTION_LUMINESCENT, it.key()), it.value());
    QCOMPARE(value(*dataset, SECTION_CAMERA, KEY_GAIN), QString("2"));
    QCOMPARE(value(*dataset, SECTION_CAMERA, KEY_QUANTUM_EFFICIENCY), QString("0.8"));
    QCOMPARE(value(*dataset, SECTION_CAMERA, KEY_PIXEL_PITCH), QString("13.5"));
    // 32 pixels of 4 x 13.5 um on 12.5 cm.
    QCOMPARE(numberOf(*dataset->getClickInfo(), SECTION_CAMERA, KEY_MAGNIFICATION), 32 * 4 * 13.5e-4 / 12.5);
    QCOMPARE(value(*dataset, SECTION_PHOTOGRAPH, KEY_BINNING), QString("2"));
    QCOMPARE(value(*dataset, SECTION_PHOTOGRAPH, KEY_IMPORTED_FROM), QFileInfo(m_photograph).fileName());
    QStringList keys;
    (*dataset->getClickInfo())[SECTION_LUMINESCENT]->getKeyList(&keys);
    QCOMPARE(keys.last(), KEY_NOTE);
}

void tst_ImageImport::radianceIsThatOfTheFormula()
{
    const auto dataset = importImages(CLICK, {m_luminescent}, allSettings(), nullptr, nullptr);
    QVERIFY(dataset);
    CILImage radiance;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &radiance, "test"), ESTATUS_SUCCESS);
    const double m = 32 * 4 * 13.5e-4 / 12.5;
    const double side = 13.5e-4 * 4;
    const double factor = 2.0 / (0.8 * 0.25) * 4 * 1.4 * 1.4 * (1 + m) * (1 + m) / (M_PI * side * side * 0.5);
    QVERIFY(std::abs(radiance.pixelAt(5, 7) / (705.0 * factor) - 1.0) < 1e-6);
    CILImage efficiency;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANT_EFFICIENCY, &efficiency, "test"),
             ESTATUS_SUCCESS);
    QVERIFY(std::abs(efficiency.pixelAt(5, 7) / (705.0 * factor / 20.0) - 1.0) < 1e-6);
}

void tst_ImageImport::leavesOutWhatIsNotKnown()
{
    ImportSettings settings;
    settings.fieldOfView = 20.0;
    const auto dataset = importImages(CLICK, {m_luminescent}, settings, nullptr, nullptr);
    QVERIFY(dataset);
    QVERIFY(dataset->isLuminescentDataset());
    QVERIFY(!dataset->getImageList()->isPresent(EIMAGE_PHOTOGRAPH));
    for (const QLatin1String key : {KEY_EXPOSURE, KEY_FNUMBER, KEY_TRANSMISSION, KEY_EXCITATION_IRRADIANCE,
                                    KEY_IMAGING_ANGLE, KEY_ACQUISITION_DATE})
        QVERIFY2(value(*dataset, SECTION_LUMINESCENT, key).isNull(), key.data());
    for (const QLatin1String key : {KEY_GAIN, KEY_QUANTUM_EFFICIENCY, KEY_PIXEL_PITCH, KEY_MAGNIFICATION})
        QVERIFY2(value(*dataset, SECTION_CAMERA, key).isNull(), key.data());
    for (const tag_eimagetype type : {EIMAGE_BACKGROUND, EIMAGE_FLATFIELD, EIMAGE_EXCITATION})
        QVERIFY(!dataset->getImageList()->isPresent(type));
}

void tst_ImageImport::withoutConstantsThereAreCountsAlone()
{
    ImportSettings settings;
    settings.fieldOfView = 20.0;
    const auto dataset = importImages(CLICK, {m_luminescent}, settings, nullptr, nullptr);
    QVERIFY(dataset);
    QVERIFY(dataset->obstacleToUnit(EUNIT_COUNTS).isEmpty());
    CILImage image;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &image, "test"), ESTATUS_SUCCESS);
    const LogCatcher log;
    for (const tag_edisplayunit unit : {EUNIT_RADIANCE, EUNIT_RADIANT_EFFICIENCY}) {
        QCOMPARE(dataset->getCalibratedLuminImage(unit, &image, "test"), ESTATUS_BAD_VALUE);
        QVERIFY(image.isEmpty());
        const QString obstacle = dataset->obstacleToUnit(unit);
        for (const QLatin1String key : {KEY_EXPOSURE, KEY_FNUMBER, KEY_TRANSMISSION, KEY_GAIN,
                                        KEY_QUANTUM_EFFICIENCY, KEY_PIXEL_PITCH, KEY_MAGNIFICATION}) {
            QVERIFY2(obstacle.contains("\"" + key + "\""), qPrintable(obstacle));
            QVERIFY2(log.failures().last().contains(key), qPrintable(log.failures().last()));
        }
        QVERIFY2(obstacle.contains("entered at the import, or in ClickInfo.txt"), qPrintable(obstacle));
    }
    QVERIFY(dataset->obstacleToUnit(EUNIT_EFFICIENCY).contains("excitation reference"));
}

void tst_ImageImport::oneConstantThatIsMissingIsNamedAlone_data()
{
    QTest::addColumn<Edit>("forget");
    QTest::addColumn<QStringList>("missing");
    const auto row = [](const char *name, const Edit &forget, const QStringList &missing) {
        QTest::newRow(name) << forget << missing;
    };
    row("exposure", [](ImportSettings *s) { s->exposure = NOT_KNOWN; }, {KEY_EXPOSURE});
    row("f-number", [](ImportSettings *s) { s->fNumber = NOT_KNOWN; }, {KEY_FNUMBER});
    row("pixel pitch, from which the magnification follows",
        [](ImportSettings *s) { s->pixelPitch = NOT_KNOWN; }, {KEY_PIXEL_PITCH, KEY_MAGNIFICATION});
    row("gain", [](ImportSettings *s) { s->electronsPerCount = NOT_KNOWN; }, {KEY_GAIN});
    row("quantum efficiency", [](ImportSettings *s) { s->quantumEfficiency = NOT_KNOWN; },
        {KEY_QUANTUM_EFFICIENCY});
    row("transmission", [](ImportSettings *s) { s->transmission = NOT_KNOWN; }, {KEY_TRANSMISSION});
    row("nothing", [](ImportSettings *) {}, {});
}

void tst_ImageImport::oneConstantThatIsMissingIsNamedAlone()
{
    QFETCH(Edit, forget);
    QFETCH(QStringList, missing);
    ImportSettings settings = allSettings();
    forget(&settings);
    const auto dataset = importImages(CLICK, {m_luminescent}, settings, nullptr, nullptr);
    QVERIFY(dataset);
    const QString obstacle = dataset->obstacleToUnit(EUNIT_RADIANCE);
    QCOMPARE(obstacle.isEmpty(), missing.isEmpty());
    for (const QLatin1String key : {KEY_EXPOSURE, KEY_FNUMBER, KEY_TRANSMISSION, KEY_GAIN,
                                    KEY_QUANTUM_EFFICIENCY, KEY_PIXEL_PITCH, KEY_MAGNIFICATION})
        QVERIFY2(obstacle.contains("\"" + key + "\"") == missing.contains(key), qPrintable(obstacle));
    CILImage image;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &image, "test"),
             missing.isEmpty() ? ESTATUS_SUCCESS : ESTATUS_BAD_VALUE);
}

void tst_ImageImport::constantsThatVersion1MadeUpAreNone_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("gain");
    QTest::addColumn<bool>("isImported");
    QTest::addColumn<bool>("isUsable");
    row("an import of version 1.0", QString("1.0.0"), QString("1"), true, false);
    row("with a gain that was entered", QString("1.0.0"), QString("2"), true, true);
    row("a later version, where 1 was entered", QString("1.1.0"), QString("1"), true, true);
    row("what was not imported", QString("1.0.0"), QString("1"), false, true);
    row("a result of such an import", QString("1.0.0|1.1.0"), QString("1"), true, false);
}

void tst_ImageImport::constantsThatVersion1MadeUpAreNone()
{
    QFETCH(QString, version);
    QFETCH(QString, gain);
    QFETCH(bool, isImported);
    QFETCH(bool, isUsable);
    TestStudy study;
    ClickSpec spec = ClickSpec::of(CLICK);
    spec.cameraKeys = {{KEY_GAIN, gain}, {KEY_QUANTUM_EFFICIENCY, "1"}};
    spec.luminescentKeys = {{KEY_TRANSMISSION, "1"}};
    if (isImported)
        spec.luminescentKeys.insert(KEY_IMPORTED_FROM, "mouse.tif");
    CVXSDataset *dataset = study.add(spec);
    const QStringList versions = version.split('|'); // a result has its own behind that of its operand
    for (const QString &each : versions)
        ensureSection(dataset->getClickInfo(), SECTION_CLICK_NUMBER)->addKeyValue(KEY_VERSION, each);
    CILImage image;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &image, "test"),
             isUsable ? ESTATUS_SUCCESS : ESTATUS_BAD_VALUE);
    const QString obstacle = dataset->obstacleToUnit(EUNIT_RADIANCE);
    QCOMPARE(obstacle.isEmpty(), isUsable);
    if (!isUsable)
        QVERIFY2(obstacle.contains(
                     "\"Quantum Efficiency\" in section \"Camera System Info\" is the 1 that version "
                     "1.0 wrote"),
                 qPrintable(obstacle));
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &image, "test"), ESTATUS_SUCCESS);
}

void tst_ImageImport::anOffsetIsSubtractedEverywhere()
{
    ImportSettings settings = allSettings();
    settings.offset = 500.5;
    const auto dataset = importImages(CLICK, {m_luminescent}, settings, nullptr, nullptr);
    QVERIFY(dataset);
    QVERIFY(dataset->isLuminBackgroundSubtracted());
    CILImage counts;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(5, 7), 705.0 - 500.5);
    QCOMPARE(counts.pixelAt(31, 23), 2331.0 - 500.5);
    QCOMPARE(dataset->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(5, 7), 705.0); // the file's
    QCOMPARE(value(*dataset, SECTION_BACKGROUND, KEY_OFFSET), QString("500.5"));
    dataset->doBackgroundSubtraction(false);
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(5, 7), 705.0);
}

void tst_ImageImport::companionsAreTakenAndSurviveSaving()
{
    const QString dark = write("dark.tif", TestStudy::image(32, 24, [](int x, int) { return float(x); }));
    // A quarter of the pixels: a flat field is brought onto the image's grid.
    const QString flat =
        write("flat.tif", TestStudy::image(16, 12, [](int x, int) { return x < 8 ? 1.f : .5f; }));
    const QString excitation =
        write("lamp.tif", TestStudy::image(32, 24, [](int x, int) { return float(x + 50); }));
    auto imported = importImages(CLICK, {m_luminescent, QString(), dark, flat, excitation}, allSettings(),
                                 nullptr, nullptr);
    QVERIFY(imported);
    QCOMPARE(imported->saveDatasetAs(m_folder->filePath("saved")), ESTATUS_SUCCESS);
    for (const QString &file : {dark, flat, excitation})
        QVERIFY(QFile::remove(file));
    imported.reset();
    const std::unique_ptr<CVXSDataset> dataset(
        CVXSDataset::open(m_folder->filePath("saved"), nullptr, nullptr));
    QVERIFY(dataset);
    CILImage image;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &image, "test"), ESTATUS_SUCCESS);
    QVERIFY(dataset->isLuminBackgroundSubtracted());
    QCOMPARE(image.pixelAt(30, 7), 730.0 - 30.0);
    dataset->doFlatFieldCorrection(true);
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &image, "test"), ESTATUS_SUCCESS);
    QCOMPARE(image.pixelAt(30, 7), (730.0 - 30.0) / 0.5);
    QVERIFY(dataset->obstacleToUnit(EUNIT_EFFICIENCY).isEmpty());
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_EFFICIENCY, &image, "test"), ESTATUS_SUCCESS);
    QCOMPARE(image.pixelAt(30, 7), (730.0 - 30.0) / 50.0);
    QCOMPARE(value(*dataset, SECTION_BACKGROUND, KEY_IMPORTED_FROM), QString("dark.tif"));
    QCOMPARE(value(*dataset, SECTION_FLATFIELD, KEY_IMPORTED_FROM), QString("flat.tif"));
    QCOMPARE(value(*dataset, SECTION_EXCITATION, KEY_IMPORTED_FROM), QString("lamp.tif"));
}

void tst_ImageImport::companionsThatDoNotFit_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("fitsAsFlatField");
    row("of half the size", 16, 12, true);
    row("of half the size, a line lost", 16, 11, false);
    row("a column lost", 31, 24, true);
    row("of another width", 28, 24, false);
    row("standing", 24, 32, false);
    row("finer", 64, 48, true);
}

void tst_ImageImport::companionsThatDoNotFit()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, fitsAsFlatField);
    const QString file = write("other.tif", TestStudy::image(width, height, [](int, int) { return 1.0f; }));
    const auto isTaken = [&](const ImportFiles &files) {
        ESTATUS status = ESTATUS_SUCCESS;
        QString error;
        const auto dataset = importImages(CLICK, files, allSettings(), &status, &error);
        const QString sizes = QString("%1 x %2 pixels, the luminescent image 32 x 24").arg(width).arg(height);
        if (!dataset &&
            (status != ESTATUS_BAD_IMAGE || !error.startsWith(file + ": ") || !error.contains(sizes)))
            QTest::qFail(qPrintable("not told well: " + error), __FILE__, __LINE__);
        return dataset != nullptr;
    };
    QVERIFY(!isTaken({m_luminescent, QString(), file}));
    QVERIFY(!isTaken({m_luminescent, QString(), QString(), QString(), file}));
    QCOMPARE(isTaken({m_luminescent, QString(), QString(), file}), fitsAsFlatField);
}

// Two images of a camera with an offset of 500 counts; the light in A is 1.6 times that in B, everywhere.
void tst_ImageImport::theRatioOfBackgroundsIsThatOfTheLight_data()
{
    QTest::addColumn<QString>("dark");
    QTest::addColumn<double>("offset");
    QTest::addColumn<double>("ratio");
    row("nothing is known", QString(), NOT_KNOWN, 1.43);
    row("an offset in counts", QString(), 500.0, 1.6);
    row("a dark image", QString("dark.tif"), NOT_KNOWN, 1.6);
}

void tst_ImageImport::theRatioOfBackgroundsIsThatOfTheLight()
{
    QFETCH(QString, dark);
    QFETCH(double, offset);
    QFETCH(double, ratio);
    const auto light = [](int x, int y) { return 1245.0f + float((x + y) % 41); };
    const QString a =
        write("a.tif", TestStudy::image(32, 24, [&](int x, int y) { return 500 + 1.6f * light(x, y); }));
    const QString b =
        write("b.tif", TestStudy::image(32, 24, [&](int x, int y) { return 500 + light(x, y); }));
    write("dark.tif", TestStudy::image(32, 24, [](int, int) { return 500.0f; }));
    ImportSettings settings;
    settings.fieldOfView = 12.5;
    settings.offset = offset;
    const auto total = [&](const QString &click, const QString &file) {
        const auto dataset =
            importImages(click, {file, QString(), dark.isEmpty() ? dark : m_folder->filePath(dark)}, settings,
                         nullptr, nullptr);
        CROIBase roi(EROI_RECTANGLE, EROI_BACKGROUND, QRectF(1.0, 1.0, 8.0, 6.0));
        roi.setName("Bkg 1");
        dataset->roiManager()->addROI(roi);
        dataset->MeasureROIAndMakeMeasRecords(true);
        const auto *manager = CRoiMeasurementManager::getRoiMeasurementManager();
        const RoiMeasDisplayEntry *entry = manager->findMeasInfoForId(click, "Bkg 1");
        return entry ? manager->getRoiMeasInfoList().value(entry->index)->primaryROIStatistic() : 0.0;
    };
    const double k = total("ZB1", a) / total("ZB2", b);
    QVERIFY2(std::abs(k - ratio) < 0.002, qPrintable(QString::number(k)));
}

void tst_ImageImport::pagesThatAreLeftOutAreLogged()
{
    QVERIFY(writePages(m_folder->filePath("stack.tif"), 3));
    QVERIFY(writePages(m_folder->filePath("photos.tif"), 2));
    const LogCatcher log;
    const auto dataset =
        importImages(CLICK, {m_folder->filePath("stack.tif"), m_folder->filePath("photos.tif")},
                     allSettings(), nullptr, nullptr);
    QVERIFY(dataset);
    QCOMPARE(log.ofLevel(ELOG_WARNING),
             (QStringList{m_folder->filePath("stack.tif") + ": 3 pages, only the first is imported",
                          m_folder->filePath("photos.tif") + ": 2 pages, only the first is imported"}));
    QCOMPARE(dataset->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(0, 0), 1.0);
    QVERIFY(notImported(m_luminescent).isEmpty());
    QVERIFY(notImported(m_folder->filePath("gone.tif")).isEmpty());
}

void tst_ImageImport::everyPixelTypeIsTaken_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("8-bit") << int(VXS_UINT8);
    QTest::newRow("16-bit") << int(VXS_UINT16);
    QTest::newRow("32-bit") << int(VXS_UINT32);
    QTest::newRow("float") << int(VXS_FLOAT);
}

void tst_ImageImport::everyPixelTypeIsTaken()
{
    QFETCH(int, type);
    CILImage image = TestStudy::image(5, 3, [](int x, int y) { return float(x + 7 * y); });
    QVERIFY(image.ChangeType(VXSDataTypes(type)));
    ImportSettings settings;
    settings.fieldOfView = 1.0;
    const auto dataset = importImages(CLICK, {write("typed.tif", image)}, settings, nullptr, nullptr);
    QVERIFY(dataset);
    QCOMPARE(int(dataset->getCoreImage(EIMAGE_LUMINESCENT)->getType()), type);
    CILImage counts;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(4, 2), 18.0);
}

void tst_ImageImport::survivesSavingAndOpening()
{
    auto dataset = importImages(CLICK, {m_luminescent, m_photograph}, allSettings(), nullptr, nullptr);
    QVERIFY(dataset);
    CVXSSequenceDataset sequence("ZB20261121153000_SEQ");
    QVERIFY(sequence.addDataset(dataset.get()));
    dataset.release();
    // The files that it came from are not needed any more.
    QVERIFY(QFile::remove(m_luminescent));
    QCOMPARE(sequence.save(m_folder->path()), ESTATUS_SUCCESS);
    const std::unique_ptr<CVXSDataset> again(
        CVXSDataset::open(sequence.getDatasetFolderPath(CLICK), nullptr, nullptr));
    QVERIFY(again);
    QString error;
    QCOMPARE(again->checkComplete(&error), ESTATUS_SUCCESS);
    QCOMPARE(again->getDatasetType(), int(EDATASET_ACQUIRED));
    QCOMPARE(again->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(5, 7), 705.0);
    QCOMPARE(value(*again, SECTION_LUMINESCENT, KEY_FNUMBER), QString("1.4"));
}

void tst_ImageImport::numbersAreThoseOfTheCLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8"); // where it is not installed, Qt's alone has to do
    const auto dataset = importImages(CLICK, {m_luminescent}, allSettings(), nullptr, nullptr);
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(before);
    QVERIFY(dataset);
    QCOMPARE(value(*dataset, SECTION_LUMINESCENT, KEY_FNUMBER), QString("1.4"));
}

void tst_ImageImport::badSettings_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("setting");
    const auto row = [](const char *name, const Edit &edit, const QString &setting) {
        QTest::newRow(name) << edit << setting;
    };
    row(
        "an unknown kind", [](ImportSettings *s) { s->kind = "x-ray"; }, KEY_KIND);
    row(
        "no field of view", [](ImportSettings *s) { s->fieldOfView = 0.0; }, KEY_FOV);
    row(
        "a field of view below 0", [](ImportSettings *s) { s->fieldOfView = -1.0; }, KEY_FOV);
    row(
        "a field of view that is no number", [](ImportSettings *s) { s->fieldOfView = NOT_A_NUMBER; },
        KEY_FOV);
    row(
        "a field of view without end", [](ImportSettings *s) { s->fieldOfView = INFINITY; }, KEY_FOV);
    row(
        "binning below 1", [](ImportSettings *s) { s->binning = 0.5; }, KEY_BINNING);
    row(
        "binning that is no number", [](ImportSettings *s) { s->binning = NOT_A_NUMBER; }, KEY_BINNING);
    row(
        "no exposure", [](ImportSettings *s) { s->exposure = 0.0; }, KEY_EXPOSURE);
    row(
        "no f-number", [](ImportSettings *s) { s->fNumber = 0.0; }, KEY_FNUMBER);
    row(
        "no pixel pitch", [](ImportSettings *s) { s->pixelPitch = 0.0; }, KEY_PIXEL_PITCH);
    row(
        "no gain", [](ImportSettings *s) { s->electronsPerCount = 0.0; }, KEY_GAIN);
    row(
        "no quantum efficiency", [](ImportSettings *s) { s->quantumEfficiency = 0.0; },
        KEY_QUANTUM_EFFICIENCY);
    row(
        "a quantum efficiency in percent", [](ImportSettings *s) { s->quantumEfficiency = 80.0; },
        KEY_QUANTUM_EFFICIENCY);
    row(
        "a transmission above 1", [](ImportSettings *s) { s->transmission = 1.01; }, KEY_TRANSMISSION);
    row(
        "an irradiance below 0", [](ImportSettings *s) { s->excitationIrradiance = -1.0; },
        KEY_EXCITATION_IRRADIANCE);
    row(
        "an offset below 0", [](ImportSettings *s) { s->offset = -1.0; }, KEY_OFFSET);
    row(
        "an offset that is no pixel's value", [](ImportSettings *s) { s->offset = 1e300; }, KEY_OFFSET);
    row(
        "a date of another form", [](ImportSettings *s) { s->acquisitionDate = "21.11.2026"; },
        KEY_ACQUISITION_DATE);
}

void tst_ImageImport::badSettings()
{
    QFETCH(Edit, edit);
    QFETCH(QString, setting);
    ImportSettings settings = allSettings();
    edit(&settings);
    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    QVERIFY(!importImages(CLICK, {m_luminescent, m_photograph}, settings, &status, &error));
    QCOMPARE(status, ESTATUS_BAD_VALUE);
    QVERIFY2(error.startsWith(setting + ": ") && error.size() > setting.size() + 12, qPrintable(error));
}

void tst_ImageImport::badFiles_data()
{
    QTest::addColumn<QString>("luminescent");
    QTest::addColumn<QString>("photograph");
    QTest::addColumn<QString>("clickNumber");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("named");
    const QString good = "bright.tif";
    row("no file named", "", "", CLICK, int(ESTATUS_FILE_NOT_FOUND), "luminescent image");
    row("no such file", "gone.tif", "", CLICK, int(ESTATUS_FILE_NOT_FOUND), "gone.tif");
    row("a text file", "text.tif", "", CLICK, int(ESTATUS_BAD_IMAGE), "text.tif");
    row("a cut file", "cut.tif", "", CLICK, int(ESTATUS_BAD_IMAGE), "cut.tif");
    row("a folder", ".", "", CLICK, int(ESTATUS_FILE_NOT_READABLE), "");
    QTest::newRow("a photograph that is gone")
        << good << "gone.tif" << CLICK << int(ESTATUS_FILE_NOT_FOUND) << "gone.tif";
    QTest::newRow("a photograph that is damaged")
        << good << "cut.tif" << CLICK << int(ESTATUS_BAD_IMAGE) << "cut.tif";
    row("a click number that leaves its folder", good, "", "../ZB1", int(ESTATUS_BAD_NAME), "../ZB1");
    row("no click number", good, "", "", int(ESTATUS_BAD_NAME), "click number");
}

void tst_ImageImport::badFiles()
{
    QFETCH(QString, luminescent);
    QFETCH(QString, photograph);
    QFETCH(QString, clickNumber);
    QFETCH(QString, named);
    QVERIFY(writeFile(m_folder->filePath("text.tif"), "no pixels"));
    const QByteArray whole = readFile(m_luminescent);
    QVERIFY(writeFile(m_folder->filePath("cut.tif"), whole.left(whole.size() / 2)));
    const auto path = [this](const QString &name) {
        return name.isEmpty() ? QString() : m_folder->filePath(name);
    };
    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    QVERIFY(
        !importImages(clickNumber, {path(luminescent), path(photograph)}, allSettings(), &status, &error));
    QTEST(int(status), "status");
    QVERIFY2(error.contains(named) && error.contains(": "), qPrintable(error));
    QVERIFY(
        !importImages(clickNumber, {path(luminescent), path(photograph)}, allSettings(), nullptr, nullptr));
}

void tst_ImageImport::aFileThatMayNotBeRead()
{
    QCOMPARE(chmod(QFile::encodeName(m_folder->path()).constData(), 0755), 0);
    QCOMPARE(chmod(QFile::encodeName(m_luminescent).constData(), 0000), 0);
    const QString path = m_luminescent;
    QVERIFY(holdsForUnprivilegedUser([path] {
        ESTATUS status = ESTATUS_SUCCESS;
        QString error;
        return !importImages(CLICK, {path}, allSettings(), &status, &error) &&
               status == ESTATUS_FILE_NOT_READABLE && error.startsWith(path + ": ");
    }));
}

void tst_ImageImport::realImages()
{
    const QByteArray shared = qgetenv("VEXA_SHARED_DATA");
    const QString folder =
        (shared.isEmpty() ? QStringLiteral(VEXA_SOURCE_DIR "/../shared/data") : QFile::decodeName(shared)) +
        "/plants/";
    if (!QFileInfo::exists(folder + "day07_luminescence.tif"))
        QSKIP("the real images of plants, which are not part of this package, are not in the folder of "
              "shared data");
    ImportSettings settings;
    settings.fieldOfView = 30.0; // not recorded with the images
    for (const char *day : {"day07", "day10", "day14"}) {
        QString error;
        const auto dataset =
            importImages(CLICK, {folder + day + "_luminescence.tif", folder + day + "_photograph.tif"},
                         settings, nullptr, &error);
        QVERIFY2(dataset, qPrintable(error));
        CILImage counts;
        QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
        QCOMPARE(counts.getWidth(), 2048u);
        QCOMPARE(double(counts.getMin()), 2.0); // the camera's offset
        QVERIFY(counts.getMax() > 10.0f);
        QCOMPARE(dataset->getCoreImage(EIMAGE_PHOTOGRAPH)->getWidth(), 750u);
    }
}

QTEST_GUILESS_MAIN(tst_ImageImport)
#include "tst_ImageImport.moc"
