// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <functional>
#include <memory>
#include <QtTest>

using namespace clickinfo;

using Change = std::function<void(CVXSDataset *)>;
Q_DECLARE_METATYPE(Change)

namespace {

const QString CLICK = QStringLiteral("AB20260102030405");
const QString OTHER_CLICK = QStringLiteral("AB20260102030406");
constexpr double FULL_SPHERE = 4.0 * 3.14159265358979323846;

CRoiMeasurementManager *records()
{
    return CRoiMeasurementManager::getRoiMeasurementManager();
}

/// The record as a tool finds it; null when there is none.
const CRoiMeasInfo *recordOf(const QString &clickNumber, const QString &roi)
{
    const RoiMeasDisplayEntry *entry = records()->findMeasInfoForId(clickNumber, roi);
    return entry ? records()->getRoiMeasInfoList().value(entry->index) : nullptr;
}

bool isValid(const QString &roi, const QString &clickNumber = CLICK)
{
    const CRoiMeasInfo *record = recordOf(clickNumber, roi);
    return record && record->isValid;
}

CROIBase named(const QString &name, const QRectF &box, EROISHAPE shape = EROI_RECTANGLE)
{
    CROIBase roi(shape, EROI_MEASUREMENT, box);
    roi.setName(name);
    return roi;
}

/// 32 x 32 pixels of 0.390625 cm in a field of 12.5 cm; counts 100 + x + 2 y.
ClickSpec spec(const QString &clickNumber = CLICK)
{
    ClickSpec spec;
    spec.clickNumber = clickNumber;
    return spec;
}

constexpr double PIXEL = 12.5 / 32;

/// Pixels 4 to 7 across, 2 to 4 down.
const QRectF BOX(4 * PIXEL, 2 * PIXEL, 4 * PIXEL, 3 * PIXEL);
constexpr double BOX_SUM = 12 * (100 + 5.5 + 2 * 3.0);

/// A dataset of 10 x 10 equal pixels that nobody registered, with an ROI of four of them, measured.
std::unique_ptr<CVXSDataset> measuredDataset(float counts)
{
    auto dataset = std::make_unique<CVXSDataset>(OTHER_CLICK);
    dataset->setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(10, 10, [=](int, int) { return counts; }));
    ensureSection(dataset->getClickInfo(), SECTION_LUMINESCENT)->setValue(KEY_FOV, QString("10"));
    dataset->roiManager()->addROI(named("Tumor", QRectF(0, 0, 2, 2)));
    dataset->MeasureROIAndMakeMeasRecords(true);
    return dataset;
}

bool isClose(double a, double b)
{
    return std::abs(a - b) <= 1e-6 * std::abs(b); // pixels are 32-bit float
}

} // namespace

class tst_RoiMeasurement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void totals_data();
    void totals();
    void correctionsAreInTheCounts();
    void saturatedPixelsAreCounted_data();
    void saturatedPixelsAreCounted();
    void saturatedPixelsAreThoseTheCameraGave();
    void aGridAndItsCells();
    void withoutRois();
    void onlyWhatIsOutOfDate();
    void pixelsChangedInPlaceAreNoticed();
    void changesMakeRecordsOutOfDate_data();
    void changesMakeRecordsOutOfDate();
    void recordsFollowTheirRoi();
    void recordsGoWithTheirDataset();
    void anUnregisteredTwinLeavesRecordsAlone();
    void anUnregisteredDatasetAlone();
    void registeringTakesTheRecordsOver();
    void whatCannotBeMeasured_data();
    void whatCannotBeMeasured();
    void aResultInEfficiencyHasNoCounts();
    void aRatioIsMeasuredAsARatio_data();
    void aRatioIsMeasuredAsARatio();
    void entriesStayValidSideBySide();
    void anRoiWithoutPixels();
    void theSameTissueInAnotherBinning();

private:
    std::unique_ptr<TestStudy> m_study;
    CVXSDataset *m_dataset = nullptr;
};

void tst_RoiMeasurement::init()
{
    m_study = std::make_unique<TestStudy>();
    m_dataset = m_study->add(spec());
    QVERIFY(m_dataset && CVXSDataset::getDataset(CLICK) == m_dataset);
    QVERIFY(records()->getRoiMeasInfoList().isEmpty());
}

void tst_RoiMeasurement::cleanup()
{
    m_study.reset();
    QVERIFY(records()->getRoiMeasInfoList().isEmpty());
}

void tst_RoiMeasurement::totals_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("total");
    // Radiance of a count, from the camera's constants; see VXCalibration.h.
    const double pitch = 13.5e-4 * 4;
    const double radiance = 2 / (0.8 * 0.5) * 4 * 1.2 * 1.2 / (FULL_SPHERE / 4 * pitch * pitch * 60);
    const double area = PIXEL * PIXEL;
    QTest::newRow("counts: the sum") << int(EUNIT_COUNTS) << BOX_SUM;
    QTest::newRow("radiance: the flux into the full sphere")
        << int(EUNIT_RADIANCE) << BOX_SUM * radiance * area * FULL_SPHERE;
    QTest::newRow("radiant efficiency: the same, over the excitation")
        << int(EUNIT_RADIANT_EFFICIENCY) << BOX_SUM * radiance / 20 * area * FULL_SPHERE;
    QTest::newRow("efficiency: the sum times the pixel's area")
        << int(EUNIT_EFFICIENCY) << BOX_SUM / 4 * area;
}

void tst_RoiMeasurement::totals()
{
    QFETCH(int, unit);
    QFETCH(double, total);
    m_dataset->setCoreImage(EIMAGE_EXCITATION, TestStudy::image(32, 32, [](int, int) { return 4.0f; }));
    m_dataset->setUnit(tag_edisplayunit(unit));
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    const CRoiMeasInfo *record = recordOf(CLICK, "Tumor");
    QVERIFY(record && record->isValid);
    QCOMPARE(int(record->unit), unit);
    QCOMPARE(record->counts.pixels, qint64(12));
    QCOMPARE(record->calibrated.pixels, qint64(12));
    QCOMPARE(record->counts.sum, BOX_SUM);
    QVERIFY(isClose(record->primaryROIStatistic(), unit == EUNIT_EFFICIENCY ? total : BOX_SUM));
    QVERIFY2(isClose(record->calibratedROIStatistic(), total),
             qPrintable(QStringLiteral("%1, expected %2").arg(record->calibratedROIStatistic()).arg(total)));
    QCOMPARE(record->area, 12 * PIXEL * PIXEL);
    QCOMPARE(record->clickNumber, CLICK);
    QCOMPARE(record->shape, EROI_RECTANGLE);
    QVERIFY(!recordOf(CLICK, "tumor"));
    QVERIFY(!recordOf(CLICK.toLower(), "Tumor"));
}

void tst_RoiMeasurement::correctionsAreInTheCounts()
{
    m_dataset->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(32, 32, [](int, int) { return 90.0f; }));
    m_dataset->setCoreImage(EIMAGE_FLATFIELD,
                            TestStudy::image(32, 32, [](int x, int) { return x < 16 ? 0.5f : 1.0f; }));
    m_dataset->doFlatFieldCorrection(true);
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QCOMPARE(recordOf(CLICK, "Tumor")->primaryROIStatistic(), (BOX_SUM - 12 * 90) * 2);
}

void tst_RoiMeasurement::saturatedPixelsAreCounted_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<float>("bright"); // the left two columns of the ROI's four, 6 pixels of 12
    QTest::addColumn<bool>("isResult");
    QTest::addColumn<int>("ofRoi");
    QTest::addColumn<int>("ofImage");
    row("16 bit, at the ceiling", int(VXS_UINT16), 65000.0f, false, 6, 192);
    row("16 bit, full scale", int(VXS_UINT16), 65535.0f, false, 6, 192);
    row("16 bit, one count below the ceiling", int(VXS_UINT16), 64999.0f, false, 0, 0);
    row("float", int(VXS_FLOAT), 65000.0f, false, 6, 192);
    row("8 bit, full scale", int(VXS_UINT8), 255.0f, false, 6, 192);
    row("8 bit, one count below", int(VXS_UINT8), 254.0f, false, 0, 0);
    row("a result has no ceiling", int(VXS_FLOAT), 1e9f, true, -1, -1);
}

void tst_RoiMeasurement::saturatedPixelsAreCounted()
{
    QFETCH(int, type);
    QFETCH(float, bright);
    QFETCH(bool, isResult);
    QFETCH(int, ofRoi);
    QFETCH(int, ofImage);
    CILImage image = TestStudy::image(32, 32, [bright](int x, int) { return x < 6 ? bright : 100.0f; });
    QVERIFY(image.ChangeType(VXSDataTypes(type)));
    m_dataset->setCoreImage(EIMAGE_LUMINESCENT, image);
    if (isResult) {
        ensureSection(m_dataset->getClickInfo(), SECTION_LUMINESCENT)
            ->addKeyValue(KEY_MATH_OPERATION, "A + B * k");
        ensureSection(m_dataset->getClickInfo(), SECTION_GRAPH_CONTROLS)
            ->addKeyValue(KEY_INTENSITY_CALIBRATION, unitKey(EUNIT_COUNTS));
    }
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QCOMPARE(recordOf(CLICK, "Tumor")->saturatedPixels, qint64(ofRoi));
    QCOMPARE(m_dataset->getSaturatedPixelCount(), qint64(ofImage));
    QCOMPARE(std::isnan(m_dataset->getSaturationCeiling()), isResult);
}

void tst_RoiMeasurement::saturatedPixelsAreThoseTheCameraGave()
{
    const auto leftColumns = [](int columns) {
        return TestStudy::image(32, 32, [columns](int x, int) { return x < columns ? 65535.0f : 1.0f; });
    };
    m_dataset->setCoreImage(EIMAGE_LUMINESCENT, leftColumns(6));
    m_dataset->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(32, 32, [](int, int) { return 900.0f; }));
    m_dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(32, 32, [](int, int) { return 0.5f; }));
    m_dataset->doFlatFieldCorrection(true);
    m_dataset->setUnit(EUNIT_RADIANCE);
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QCOMPARE(recordOf(CLICK, "Tumor")->saturatedPixels, qint64(6));
    QCOMPARE(m_dataset->getSaturatedPixelCount(), qint64(192));
    // Another image, and one that is written in place.
    m_dataset->setCoreImage(EIMAGE_LUMINESCENT, leftColumns(7));
    QCOMPARE(m_dataset->getSaturatedPixelCount(), qint64(224));
    static_cast<float *>(m_dataset->getCoreImage(EIMAGE_LUMINESCENT)->get_data())[31] = 65535.0f;
    QCOMPARE(m_dataset->getSaturatedPixelCount(), qint64(225));
    static_cast<float *>(m_dataset->getCoreImage(EIMAGE_LUMINESCENT)->get_data())[30] = 65535.0f;
    QCOMPARE(m_dataset->getSaturatedPixelCount(), qint64(226));
}

void tst_RoiMeasurement::aGridAndItsCells()
{
    CROIBase grid(EROI_BACKGROUND, BOX, 3, 2);
    grid.setName("Wells");
    m_dataset->roiManager()->addROI(grid);
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QCOMPARE(records()->getRoiMeasInfoList().size(), 7);
    const CRoiMeasInfo *whole = recordOf(CLICK, "Wells");
    QVERIFY(whole && whole->shape == EROI_GRID);
    QCOMPARE(whole->primaryROIStatistic(), BOX_SUM);
    const CRoiMeasInfo *cell = recordOf(CLICK, "Wells [3, 1]");
    QVERIFY(cell && cell->shape == EROI_RECTANGLE && cell->kind == EROI_BACKGROUND);
    QCOMPARE(cell->counts.pixels, qint64(2));
    QCOMPARE(cell->primaryROIStatistic(), 2 * (100 + 4.5 + 2 * 4));
}

void tst_RoiMeasurement::withoutRois()
{
    LogCatcher log;
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    CVXSDataset empty(OTHER_CLICK); // no image either
    QCOMPARE(empty.MeasureROIAndMakeMeasRecords(false), ESTATUS_SUCCESS);
    QVERIFY(records()->getRoiMeasInfoList().isEmpty());
    QVERIFY(log.failures().isEmpty());
}

void tst_RoiMeasurement::onlyWhatIsOutOfDate()
{
    CROIManager *manager = m_dataset->roiManager();
    CROIBase *a = manager->addROI(named("A", BOX));
    manager->addROI(named("B", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(false), ESTATUS_SUCCESS);
    QVERIFY(isValid("A") && isValid("B"));
    // A mark that measuring would wipe off.
    CRoiMeasInfo marked = *recordOf(CLICK, "B");
    marked.area = -1.0;
    records()->store(marked);
    manager->moveROI(a, {0.0, PIXEL});
    QVERIFY(!isValid("A"));
    QCOMPARE(recordOf(CLICK, "A")->primaryROIStatistic(), BOX_SUM); // out of date, and kept
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(false), ESTATUS_SUCCESS);
    QVERIFY(isValid("A"));
    QCOMPARE(recordOf(CLICK, "A")->primaryROIStatistic(), BOX_SUM + 12 * 2);
    QCOMPARE(recordOf(CLICK, "B")->area, -1.0);
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QCOMPARE(recordOf(CLICK, "B")->area, 12 * PIXEL * PIXEL);
}

void tst_RoiMeasurement::pixelsChangedInPlaceAreNoticed()
{
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(false), ESTATUS_SUCCESS);
    *m_dataset->getCoreImage(EIMAGE_LUMINESCENT) *= 2.0; // nobody is told
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(false), ESTATUS_SUCCESS);
    QCOMPARE(recordOf(CLICK, "Tumor")->primaryROIStatistic(), 2 * BOX_SUM);
}

void tst_RoiMeasurement::changesMakeRecordsOutOfDate_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isOther");
    const auto tumor = [](CVXSDataset *dataset) {
        CROIBase *roi = nullptr;
        dataset->roiManager()->getROI("Tumor", roi);
        return roi;
    };
    const auto row = [](const char *name, bool isOther, const Change &change) {
        QTest::newRow(name) << change << isOther;
    };
    row("another unit, for all ROIs", true, [](CVXSDataset *d) { d->setUnit(EUNIT_RADIANCE); });
    row("other pixels, for all ROIs", true, [](CVXSDataset *d) {
        d->setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int, int) { return 1.0f; }));
    });
    row("a background, for all ROIs", true, [](CVXSDataset *d) {
        d->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(32, 32, [](int, int) { return 1.0f; }));
    });
    row("a caller's word", false, [=](CVXSDataset *d) { d->roiManager()->setMeasurementInvalid(tumor(d)); });
    row("a caller's word for all", true,
        [](CVXSDataset *d) { d->roiManager()->setAllMeasurementsInvalid(); });
    row("moving", false, [=](CVXSDataset *d) { d->roiManager()->moveROI(tumor(d), {0.1, 0.1}); });
    row("another box", false, [=](CVXSDataset *d) { d->roiManager()->setROIBox(tumor(d), {1, 1, 1, 1}); });
    row("another kind", false,
        [=](CVXSDataset *d) { d->roiManager()->setROIKind(tumor(d), EROI_BACKGROUND); });
}

void tst_RoiMeasurement::changesMakeRecordsOutOfDate()
{
    QFETCH(Change, change);
    QFETCH(bool, isOther);
    CVXSDataset *neighbour = m_study->add(spec(OTHER_CLICK));
    for (CVXSDataset *dataset : {m_dataset, neighbour}) {
        dataset->roiManager()->addROI(named("Tumor", BOX));
        CROIBase grid(EROI_MEASUREMENT, BOX, 1, 2);
        grid.setName("Wells");
        dataset->roiManager()->addROI(grid);
        QCOMPARE(dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    }
    QVERIFY(isValid("Tumor") && isValid("Wells") && isValid("Wells [1, 2]"));
    QSignalSpy changes(records(), &CRoiMeasurementManager::recordsChanged);
    change(m_dataset);
    QVERIFY(!isValid("Tumor"));
    QVERIFY(recordOf(CLICK, "Tumor"));
    QCOMPARE(isValid("Wells"), !isOther);
    QCOMPARE(isValid("Wells [1, 2]"), !isOther);
    QVERIFY(isValid("Tumor", OTHER_CLICK) && isValid("Wells", OTHER_CLICK));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().first().toString(), CLICK);
}

void tst_RoiMeasurement::recordsFollowTheirRoi()
{
    CROIManager *manager = m_dataset->roiManager();
    CROIBase *tumor = manager->addROI(named("Tumor", BOX));
    CROIBase grid(EROI_MEASUREMENT, BOX, 1, 2);
    grid.setName("Wells");
    CROIBase *wells = manager->addROI(grid);
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QVERIFY(manager->renameROI(tumor, "Liver"));
    QVERIFY(manager->renameROI(wells, "WELLS"));
    QVERIFY(isValid("Liver") && isValid("WELLS") && isValid("WELLS [1, 2]"));
    QVERIFY(!recordOf(CLICK, "Tumor") && !recordOf(CLICK, "Wells") && !recordOf(CLICK, "Wells [1, 1]"));
    QCOMPARE(records()->getRoiMeasInfoList().size(), 4);
    manager->selectROI(wells, false);
    QVERIFY(manager->removeROIObject());
    QCOMPARE(records()->getRoiMeasInfoList().size(), 1);
    QCOMPARE(recordOf(CLICK, "Liver"), records()->getRoiMeasInfoList().first());
}

void tst_RoiMeasurement::recordsGoWithTheirDataset()
{
    CVXSDataset *neighbour = m_study->add(spec(OTHER_CLICK));
    for (CVXSDataset *dataset : {m_dataset, neighbour}) {
        dataset->roiManager()->addROI(named("Tumor", BOX));
        QCOMPARE(dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    }
    delete m_dataset;
    QVERIFY(!recordOf(CLICK, "Tumor"));
    QVERIFY(isValid("Tumor", OTHER_CLICK));
    QCOMPARE(records()->findMeasInfoForId(OTHER_CLICK, "Tumor")->index, 0);
}

void tst_RoiMeasurement::anUnregisteredTwinLeavesRecordsAlone()
{
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    {
        CVXSDataset twin(CLICK);
        CROIBase *roi = twin.roiManager()->addROI(named("Tumor", BOX));
        LogCatcher log;
        QCOMPARE(twin.MeasureROIAndMakeMeasRecords(true), ESTATUS_FAILURE);
        QCOMPARE(log.failures().size(), 1);
        QVERIFY(log.failures().first().contains(CLICK));
        twin.roiManager()->moveROI(roi, {1, 1});
        QVERIFY(twin.roiManager()->renameROI(roi, "Liver"));
        twin.roiManager()->selectROI(roi, false);
        QVERIFY(twin.roiManager()->removeROIObject());
    }
    QVERIFY(isValid("Tumor"));
    QCOMPARE(recordOf(CLICK, "Tumor")->primaryROIStatistic(), BOX_SUM);
}

void tst_RoiMeasurement::anUnregisteredDatasetAlone()
{
    {
        const auto dataset = measuredDataset(3.0f);
        QCOMPARE(recordOf(OTHER_CLICK, "Tumor")->primaryROIStatistic(), 12.0);
    }
    QVERIFY(!recordOf(OTHER_CLICK, "Tumor"));
}

void tst_RoiMeasurement::registeringTakesTheRecordsOver()
{
    {
        const auto own = measuredDataset(3.0f);
        QVERIFY(own->registerDataset() && own->registerDataset());
        QVERIFY(isValid("Tumor", OTHER_CLICK)); // its own
    }
    const auto before = measuredDataset(3.0f);
    CVXSDataset opened(OTHER_CLICK);
    QVERIFY(opened.registerDataset());
    QVERIFY(!recordOf(OTHER_CLICK, "Tumor"));
}

void tst_RoiMeasurement::whatCannotBeMeasured_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    QTest::newRow("no field of view")
        << QString(KEY_FOV) << int(EUNIT_COUNTS) << int(ESTATUS_BAD_VALUE) << QString(KEY_FOV);
    QTest::newRow("no luminescent image")
        << QString() << int(EUNIT_COUNTS) << int(ESTATUS_NO_IMAGE) << QString("no luminescent image");
    QTest::newRow("no exposure time for the unit")
        << QString(KEY_EXPOSURE) << int(EUNIT_RADIANCE) << int(ESTATUS_BAD_VALUE) << QString(KEY_EXPOSURE);
    QTest::newRow("no excitation reference")
        << QString("none") << int(EUNIT_EFFICIENCY) << int(ESTATUS_NO_IMAGE) << QString("excitation");
}

void tst_RoiMeasurement::whatCannotBeMeasured()
{
    QFETCH(QString, missing);
    QFETCH(int, unit);
    QFETCH(int, status);
    QFETCH(QString, told);
    ClickSpec broken = spec(OTHER_CLICK);
    if (missing.isEmpty())
        broken.counts = nullptr;
    else
        broken.luminescentKeys[missing] = QString();
    CVXSDataset *dataset = m_study->add(broken);
    // Records of before, when it could be measured, and those of another.
    for (CVXSDataset *each : {m_dataset, dataset}) {
        each->roiManager()->addROI(named("Tumor", BOX));
        CRoiMeasInfo before;
        before.clickNumber = each->getClickNumber();
        before.roiName = "Tumor";
        records()->store(before);
    }
    dataset->setUnit(tag_edisplayunit(unit));
    LogCatcher log;
    QCOMPARE(int(dataset->MeasureROIAndMakeMeasRecords(true)), status);
    QCOMPARE(log.failures().size(), 1);
    QVERIFY2(log.failures().first().contains(OTHER_CLICK) && log.failures().first().contains(told),
             qPrintable(log.failures().first()));
    QCOMPARE(dataset->lastError(), log.failures().first());
    QVERIFY(!recordOf(OTHER_CLICK, "Tumor"));
    QVERIFY(recordOf(CLICK, "Tumor"));
}

void tst_RoiMeasurement::aResultInEfficiencyHasNoCounts()
{
    CPLClickInfo *info = m_dataset->getClickInfo();
    ensureSection(info, SECTION_LUMINESCENT)->setValue(KEY_MATH_OPERATION, QString("A + B * k"));
    ensureSection(info, SECTION_GRAPH_CONTROLS)->setValue(KEY_INTENSITY_CALIBRATION, QString("efficiency"));
    m_dataset->setUnit(EUNIT_EFFICIENCY);
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    LogCatcher log;
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    const CRoiMeasInfo *record = recordOf(CLICK, "Tumor");
    QVERIFY(std::isnan(record->counts.sum) && std::isnan(record->counts.mean));
    QCOMPARE(record->primaryROIStatistic(), record->calibratedROIStatistic()); // by which it is compared
    QVERIFY(isClose(record->calibratedROIStatistic(), BOX_SUM * PIXEL * PIXEL));
    QCOMPARE(record->area, 12 * PIXEL * PIXEL);
    QVERIFY(log.failures().isEmpty() && log.ofLevel(2).isEmpty()); // nothing is wrong
}

void tst_RoiMeasurement::aRatioIsMeasuredAsARatio_data()
{
    QTest::addColumn<int>("unit");
    QTest::newRow("shown in counts") << int(EUNIT_COUNTS);
    QTest::newRow("shown in radiance") << int(EUNIT_RADIANCE);
    QTest::newRow("shown in efficiency") << int(EUNIT_EFFICIENCY);
}

void tst_RoiMeasurement::aRatioIsMeasuredAsARatio()
{
    QFETCH(int, unit);
    ensureSection(m_dataset->getClickInfo(), SECTION_LUMINESCENT)
        ->setValue(KEY_MATH_OPERATION, QString("(A / B) * k"));
    ensureSection(m_dataset->getClickInfo(), SECTION_GRAPH_CONTROLS)
        ->setValue(KEY_INTENSITY_CALIBRATION, unitKey(EUNIT_RADIANCE));
    m_dataset->setUnit(tag_edisplayunit(unit));
    m_dataset->roiManager()->addROI(named("Tumor", BOX));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    const CRoiMeasInfo *record = recordOf(CLICK, "Tumor");
    QVERIFY(record);
    QCOMPARE(int(record->unit), int(EUNIT_RATIO));
    QVERIFY(isClose(record->calibrated.mean, BOX_SUM / 12));
    QVERIFY(std::isnan(record->counts.sum));
    QVERIFY(isClose(record->primaryROIStatistic(), BOX_SUM * PIXEL * PIXEL));
}

void tst_RoiMeasurement::entriesStayValidSideBySide()
{
    CVXSDataset *neighbour = m_study->add(spec(OTHER_CLICK));
    for (CVXSDataset *dataset : {m_dataset, neighbour}) {
        dataset->roiManager()->addROI(named("Tumor", BOX));
        QCOMPARE(dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    }
    const RoiMeasDisplayEntry *a = records()->findMeasInfoForId(CLICK, "Tumor");
    const RoiMeasDisplayEntry *b = records()->findMeasInfoForId(OTHER_CLICK, "Tumor");
    QVERIFY(a && b && a != b);
    QCOMPARE(a->clickNumber, CLICK);
    QCOMPARE(b->clickNumber, OTHER_CLICK);
    QCOMPARE(records()->getRoiMeasInfoList().at(a->index)->clickNumber, CLICK);
    QCOMPARE(records()->getRoiMeasInfoList().at(b->index)->clickNumber, OTHER_CLICK);
}

void tst_RoiMeasurement::anRoiWithoutPixels()
{
    m_dataset->roiManager()->addROI(named("Tiny", QRectF(0.6 * PIXEL, 0.6 * PIXEL, 0.1, 0.1)));
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    const CRoiMeasInfo *record = recordOf(CLICK, "Tiny");
    QVERIFY(record && record->isValid);
    QCOMPARE(record->counts.pixels, qint64(0));
    QCOMPARE(record->primaryROIStatistic(), 0.0);
    QVERIFY(std::isnan(record->calibrated.mean));
    QCOMPARE(record->area, 0.0);
}

// What a tool does that wants the same ROI of two datasets.
void tst_RoiMeasurement::theSameTissueInAnotherBinning()
{
    ClickSpec fine = spec(OTHER_CLICK);
    fine.width = fine.height = 64;
    fine.binning = 2.0f;
    fine.counts = [](int x, int y) { return 0.25f * float(100 + x / 2 + 2 * (y / 2)); };
    CVXSDataset *target = m_study->add(fine);
    CROIManager *from = m_dataset->roiManager();
    CROIManager *to = target->roiManager();
    to->addROI(named("Tumor", QRectF(0, 0, 9, 9)));
    m_dataset->setUnit(EUNIT_RADIANCE);
    target->setModified(false);
    from->selectROI(from->addROI(named("Tumor", BOX, EROI_ELLIPSE)), false);
    QVERIFY(from->copyROIObject() && to->pasteROIObject(false));
    target->setUnit(m_dataset->getUnit());
    QCOMPARE(m_dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    QCOMPARE(target->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    to->selectLastCreatedROI();
    tagROIInfo info;
    QVERIFY(to->getSelectedROIProps(&info));
    QCOMPARE(info.name, QString("Tumor 2"));
    const CRoiMeasInfo *a = recordOf(CLICK, "Tumor");
    const CRoiMeasInfo *b = recordOf(OTHER_CLICK, info.name);
    QVERIFY(a && b);
    // Finer pixels follow the ellipse more closely, and each holds a quarter of the counts.
    QVERIFY(std::abs(a->area / b->area - 1.0) < 0.15);
    QVERIFY(isClose(a->calibrated.mean, b->calibrated.mean));
    QVERIFY(to->removeROIObject());
    target->setModified(false);
    target->setUnit(EUNIT_COUNTS);
    QVERIFY(!recordOf(OTHER_CLICK, "Tumor 2"));
    QVERIFY(recordOf(OTHER_CLICK, "Tumor") && !isValid("Tumor", OTHER_CLICK)); // measured in another unit
    QVERIFY(isValid("Tumor"));
    QVERIFY(!target->isModified());
}

QTEST_GUILESS_MAIN(tst_RoiMeasurement)
#include "tst_RoiMeasurement.moc"
