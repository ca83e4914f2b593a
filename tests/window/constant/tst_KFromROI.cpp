// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/DisplayUnits.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/window/constant/RoiStudy.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const QRectF BOX(2.0, 3.0, 5.0, 4.0);   // [cm]
const QRectF OTHER(9.0, 9.0, 4.0, 4.0); // [cm]
const QString NONE = QStringLiteral("_none_");

} // namespace

/// The constant k as the ratio of an ROI's values in A and in B.
class tst_KFromROI : public RoiStudy
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_bound.reset(); }

    void ratioInEachUnit_data();
    void ratioInEachUnit();
    void unitsDiffer_data();
    void unitsDiffer();
    void otherExposureAndBinning_data();
    void otherExposureAndBinning();
    void theKOfAnotherBinningMakesTheRoiVanish_data();
    void theKOfAnotherBinningMakesTheRoiVanish();
    void whicheverImageWindowsAreOpen_data();
    void whicheverImageWindowsAreOpen();
    void shapes_data();
    void shapes();
    void aPastedCopyOfTakenNameIsTheOneMeasured();
    void theTextIsInGeneralFormat_data();
    void theTextIsInGeneralFormat();
    void theResultFollows();
    void nothingIsLeftBehind_data();
    void nothingIsLeftBehind();

    void aValueOfZero_data();
    void aValueOfZero();
    void theSameClick_data();
    void theSameClick();
    void aMissingRecordStops_data();
    void aMissingRecordStops();
    void aTotalThatIsNotThereIsNoK();
    void resultsInEfficiencyAreComparedByTheirEfficiency();
    void aRatioAndCountsGiveNoK();
    void aNameThatIsNoROIStops();
    void textsOneInTheOther();
    void theSourceIsAWhereItsTextContainsTheDatasets_data();
    void theSourceIsAWhereItsTextContainsTheDatasets();
    void aCopyThatAnEarlierStopLeftIsNotRemoved();
    void theROIAloneIsSelected();
    void theSourceIsMeasuredBeforeTheTarget_data();
    void theSourceIsMeasuredBeforeTheTarget();
    void everyROIOfBothIsMeasured();
    void theRatioIsTakenInDoublePrecision_data();
    void theRatioIsTakenInDoublePrecision();
};

void tst_KFromROI::ratioInEachUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("source");
    const char *const units[] = {"counts", "radiance", "radiant efficiency", "efficiency"};
    for (int unit = 0; unit < 4; ++unit)
        for (const char *source : {"A1", "A2"})
            QTest::addRow("%s, ROI of %s", units[unit], *(source + 1) == '1' ? "A" : "B")
                << unit << QString::fromLatin1(source);
}

void tst_KFromROI::ratioInEachUnit()
{
    QFETCH(int, unit);
    QFETCH(QString, source);
    // The irradiances differ, so radiant efficiencies have another ratio than the counts.
    ClickSpec b = click("A2", countsOfB);
    b.luminescentKeys.insert("Excitation Irradiance", "5"); // A: 20
    b.luminescentKeys.insert("Exposure Time", "30");        // A: 60
    make({click("A1", countsOfA), b});
    // B was lit by twice as much: of equal counts, it has half the efficiency.
    const auto referenceOfA = [](int x, int) { return 10.0 + x; };
    const auto referenceOfB = [](int x, int) { return 2.0 * (10.0 + x); };
    dataset("A1")->setCoreImage(EIMAGE_EXCITATION, TestStudy::image(32, 32, referenceOfA));
    dataset("A2")->setCoreImage(EIMAGE_EXCITATION, TestStudy::image(32, 32, referenceOfB));
    m_bound->sequence()->setActiveUnit(tag_edisplayunit(unit));
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    window()->forgetCalls();
    choose(source, "Tumor");
    const double counts = sum(countsOfA, BOX) / sum(countsOfB, BOX);
    const double efficiency = sum([&](int x, int y) { return countsOfA(x, y) / referenceOfA(x, y); }, BOX) /
                              sum([&](int x, int y) { return countsOfB(x, y) / referenceOfB(x, y); }, BOX);
    const double expected[] = {counts, counts / 2.0, counts / 8.0, efficiency};
    QVERIFY2(isClose(window()->m_kValue, expected[unit]),
             qPrintable(QString("%1, not %2").arg(double(window()->m_kValue)).arg(expected[unit])));
    QCOMPARE(window()->computations, 1);
    QCOMPARE(int(dataset("A1")->getUnit()), unit);
    QCOMPARE(int(dataset("A2")->getUnit()), unit);
}

void tst_KFromROI::unitsDiffer_data()
{
    QTest::addColumn<int>("unitA");
    QTest::addColumn<int>("unitB");
    QTest::addColumn<QString>("source");
    QTest::addColumn<double>("factor"); // on the ratio of counts
    QTest::newRow("A in radiance, ROI of A: both are measured in radiance") << 1 << 0 << "A1" << 0.5;
    QTest::newRow("A in radiance, ROI of B: both are measured in counts") << 1 << 0 << "A2" << 1.0;
    QTest::newRow("B in radiance, ROI of A: both are measured in counts") << 0 << 1 << "A1" << 1.0;
    QTest::newRow("B in radiance, ROI of B: both are measured in radiance") << 0 << 1 << "A2" << 0.5;
    QTest::newRow("radiant efficiency against radiance, ROI of B") << 1 << 2 << "A2" << 0.125;
}

void tst_KFromROI::unitsDiffer()
{
    QFETCH(int, unitA);
    QFETCH(int, unitB);
    QFETCH(QString, source);
    QFETCH(double, factor);
    ClickSpec b = click("A2", countsOfB);
    b.luminescentKeys.insert("Excitation Irradiance", "5");
    b.luminescentKeys.insert("Exposure Time", "30");
    make({click("A1", countsOfA), b});
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    dataset("A1")->setUnit(tag_edisplayunit(unitA));
    dataset("A2")->setUnit(tag_edisplayunit(unitB));
    window()->computeKFromROI(source, "Tumor");
    QVERIFY(isClose(window()->m_kValue, factor * sum(countsOfA, BOX) / sum(countsOfB, BOX)));
    QCOMPARE(int(dataset("A1")->getUnit()), unitA);
    QCOMPARE(int(dataset("A2")->getUnit()), unitB);
}

void tst_KFromROI::otherExposureAndBinning_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("source");
    QTest::newRow("counts, ROI of A") << 0 << "A1";
    QTest::newRow("counts, ROI of B") << 0 << "A2";
    QTest::newRow("radiance, ROI of A") << 1 << "A1";
    QTest::newRow("radiance, ROI of B") << 1 << "A2";
}

void tst_KFromROI::otherExposureAndBinning()
{
    QFETCH(int, unit);
    QFETCH(QString, source);
    // B is binned by 8: a pixel covers four of A's, on the sensor and on the subject, so that the total flux
    // over the total counts depends on the exposure alone.
    ClickSpec b = click("A2", countsOfB);
    b.width = b.height = 16;
    b.binning = 8.0f;
    b.luminescentKeys.insert("Exposure Time", "15"); // A: 60
    make({click("A1", countsOfA), b});
    m_bound->sequence()->setActiveUnit(tag_edisplayunit(unit));
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    choose(source, "Tumor");
    const double counts = sum(countsOfA, BOX, 32) / sum(countsOfB, BOX, 16);
    QVERIFY(isClose(window()->m_kValue, unit == 1 ? counts / 4.0 : counts));
}

void tst_KFromROI::theKOfAnotherBinningMakesTheRoiVanish_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("isAFine");
    QTest::addColumn<bool>("isShown");
    for (const tag_edisplayunit unit : {EUNIT_COUNTS, EUNIT_RADIANCE})
        for (const bool isAFine : {true, false})
            for (const bool isShown : {true, false})
                QTest::addRow("%s, %s of binning 4, image windows %s", qPrintable(unitLabel(unit)),
                              isAFine ? "A" : "B", isShown ? "open" : "closed")
                    << int(unit) << isAFine << isShown;
}

// The camera adds up what it bins, its offset but once; each click has its background image and flat field.
void tst_KFromROI::theKOfAnotherBinningMakesTheRoiVanish()
{
    QFETCH(int, unit);
    QFETCH(bool, isAFine);
    QFETCH(bool, isShown);
    constexpr double OFFSET = 100.0;
    const auto lens = [](double x, double y) { return 1.0 - 0.01 * std::max(0.0, x + y - 4.0); }; // [cm]
    const auto camera = [&](const QString &number, int size, double photons) {
        ClickSpec spec = click(number, {});
        const double pixel = 16.0 / size;
        const auto lensAt = [lens, pixel](int x, int y) {
            return lens((x + 0.5) * pixel, (y + 0.5) * pixel);
        };
        spec.width = spec.height = size;
        spec.binning = 128.0f / float(size);
        spec.counts = [=](int x, int y) { return float(OFFSET + photons * pixel * pixel * lensAt(x, y)); };
        spec.flatField = [=](int x, int y) { return float(lensAt(x, y)); };
        return spec;
    };
    make({camera("A1", isAFine ? 32 : 16, 1500.0), camera("A2", isAFine ? 16 : 32, 1200.0)});
    for (const char *number : {"A1", "A2"}) {
        const int size = int(dataset(number)->getCoreImage(EIMAGE_LUMINESCENT)->getWidth());
        dataset(number)->setCoreImage(EIMAGE_BACKGROUND,
                                      TestStudy::image(size, size, [](int, int) { return float(OFFSET); }));
        if (isShown)
            m_bound->workspace()->showDataset(dataset(number));
    }
    m_bound->sequence()->setActiveUnit(tag_edisplayunit(unit));
    window()->calculateResultImage();
    QVERIFY(addBox("A1", "Tissue", BOX));
    choose("A1", "Tissue");
    QVERIFY2(std::abs(double(window()->m_kValue) - 1.25) < 1e-3, qPrintable(window()->m_pKLineEdit->text()));
    const CILImage &result = window()->m_resultImage;
    const CILImage &a = window()->m_imageA;
    QCOMPARE(result.getWidth(), 16u);
    const auto inBox = [](const CILImage &image) {
        return sum([&image](int x, int y) { return image.pixelAt(unsigned(x), unsigned(y)); }, BOX, 16);
    };
    QVERIFY2(std::abs(inBox(result)) < 1e-3 * inBox(a),
             qPrintable(QString("%1 of %2").arg(inBox(result)).arg(inBox(a))));
}

// Radiance is corrected for the computation alone: what the ROIs are measured in does not depend on it, nor
// on who shows the datasets.
void tst_KFromROI::whicheverImageWindowsAreOpen_data()
{
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<int>("unit");
    for (const tag_edisplayunit unit : {EUNIT_COUNTS, EUNIT_RADIANCE}) {
        const QString name = unitLabel(unit);
        row(qPrintable(name + ", no image window"), QStringList(), int(unit));
        row(qPrintable(name + ", A's image window alone"), QStringList{"A1"}, int(unit));
        row(qPrintable(name + ", B's image window alone"), QStringList{"A2"}, int(unit));
        row(qPrintable(name + ", both image windows"), QStringList{"A1", "A2"}, int(unit));
    }
}

void tst_KFromROI::whicheverImageWindowsAreOpen()
{
    QFETCH(QStringList, shown);
    QFETCH(int, unit);
    // The lens passes less light to the side; A is 1.25 of B everywhere.
    const auto lens = [](int x, int y) {
        return 1.0f - 0.02f * std::abs(float(x) - 12.0f) - 0.01f * float(y);
    };
    ClickSpec a = click("A1", [lens](int x, int y) { return 1000.0 * double(lens(x, y)); });
    ClickSpec b = click("A2", [lens](int x, int y) { return 800.0 * double(lens(x, y)); });
    a.flatField = lens;
    b.flatField = lens;
    make({a, b});
    for (const QString &number : qAsConst(shown))
        m_bound->workspace()->showDataset(dataset(number.toLatin1()));
    m_bound->sequence()->setActiveUnit(EUNIT_RADIANCE); // somebody has a look at radiance
    window()->calculateResultImage();
    m_bound->sequence()->setActiveUnit(tag_edisplayunit(unit));
    window()->calculateResultImage();
    QVERIFY(!dataset("A1")->isLuminFlatFieldCorrected());
    QVERIFY(!dataset("A2")->isLuminFlatFieldCorrected());
    QVERIFY(addBox("A1", "Tissue", BOX));
    choose("A1", "Tissue");
    QVERIFY2(isClose(window()->m_kValue, 1.25), qPrintable(window()->m_pKLineEdit->text()));
}

void tst_KFromROI::shapes_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<bool>("background");
    QTest::newRow("rectangle") << int(EROI_RECTANGLE) << false;
    QTest::newRow("ellipse") << int(EROI_ELLIPSE) << false;
    QTest::newRow("polygon") << int(EROI_POLYGON) << false;
    QTest::newRow("free-hand outline") << int(EROI_FREEHAND) << false;
    QTest::newRow("background rectangle") << int(EROI_RECTANGLE) << true;
    QTest::newRow("background grid") << int(EROI_GRID) << true;
}

void tst_KFromROI::shapes()
{
    QFETCH(int, shape);
    QFETCH(bool, background);
    makeDefault();
    const EROIKIND kind = background ? EROI_BACKGROUND : EROI_MEASUREMENT;
    const QPolygonF triangle({QPointF(2.1, 2.2), QPointF(12.3, 3.4), QPointF(4.5, 13.6)});
    CROIBase roi = shape == EROI_POLYGON || shape == EROI_FREEHAND
                       ? CROIBase(EROISHAPE(shape), kind, triangle)
                   : shape == EROI_GRID ? CROIBase(kind, BOX, 2, 3)
                                        : CROIBase(EROISHAPE(shape), kind, BOX);
    roi.setName("Tumor");
    QVERIFY(rois("A1")->addROI(roi));
    choose("A1", "Tumor");
    double a = 0.0;
    double b = 0.0;
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x) {
            if (roi.contains(QPointF((x + 0.5) * 0.5, (y + 0.5) * 0.5))) {
                a += countsOfA(x, y);
                b += countsOfB(x, y);
            }
        }
    QVERIFY(b > 1000.0);
    QVERIFY(isClose(window()->m_kValue, a / b));
}

void tst_KFromROI::aPastedCopyOfTakenNameIsTheOneMeasured()
{
    makeDefault();
    QVERIFY(addBox("A1", "Tumor", BOX));
    QVERIFY(addBox("A2", "Tumor", OTHER));
    QVERIFY(addBox("A2", "Tumor 2", OTHER));
    choose("A1", "Tumor");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
    QCOMPARE(names(rois("A2")), QStringList({"Tumor", "Tumor 2"}));
    choose("A2", "Tumor");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, OTHER) / sum(countsOfB, OTHER)));
    QCOMPARE(names(rois("A1")), QStringList{"Tumor"});
}

void tst_KFromROI::theTextIsInGeneralFormat_data()
{
    QTest::addColumn<double>("a"); // counts a pixel
    QTest::addColumn<double>("b");
    QTest::addColumn<QString>("text");
    QTest::newRow("a whole number has no decimals") << 80.0 << 40.0 << "2";
    QTest::newRow("a number below 1 has no exponent") << 10.0 << 40.0 << "0.25";
    QTest::newRow("six digits") << 20.0 << 30.0 << "0.666667";
    QTest::newRow("eleven stays plain") << 110.0 << 10.0 << "11";
    QTest::newRow("a million and more") << 5000000.0 << 4.0 << "1.25e+06";
    QTest::newRow("a small number") << 1.0 << 160000.0 << "6.25e-06";
    QTest::newRow("a negative number") << -30.0 << 40.0 << "-0.75";
    QTest::newRow("above the bound of a typed k") << 1.0e20 << 1.0 << "1e+20";
}

void tst_KFromROI::theTextIsInGeneralFormat()
{
    QFETCH(double, a);
    QFETCH(double, b);
    make({click("A1", [a](int, int) { return a; }), click("A2", [b](int, int) { return b; })});
    QVERIFY(addBox("A1", "Tumor", BOX));
    choose("A1", "Tumor");
    QTEST(window()->m_pKLineEdit->text(), "text");
    QVERIFY(isClose(window()->m_kValue, a / b));
    QCOMPARE(CVXUtilityFns::getkValue(), QString("7.00"));
    QCOMPARE(window()->calls.value("onChangeValueK"), 0);
}

void tst_KFromROI::theResultFollows()
{
    make({click("A1", countsOfA), click("A2", [](int, int) { return 10.0; })});
    QVERIFY(addBox("A1", "Pixel", QRectF(0.0, 0.0, 0.5, 0.5)));
    choose("A1", "Pixel");
    QCOMPARE(window()->m_kValue, 10.0f);
    QCOMPARE(window()->m_resultImage.pixelAt(0, 0), 0.0);
    QCOMPARE(window()->m_resultImage.pixelAt(3, 4), 11.0);
}

void tst_KFromROI::nothingIsLeftBehind_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("modifiedA");
    QTest::addColumn<bool>("modifiedB");
    QTest::newRow("neither was modified, ROI of A") << "A1" << false << false;
    QTest::newRow("neither was modified, ROI of B") << "A2" << false << false;
    QTest::newRow("A was modified") << "A1" << true << false;
    QTest::newRow("B was modified") << "A1" << false << true;
    QTest::newRow("both were modified, ROI of B") << "A2" << true << true;
}

void tst_KFromROI::nothingIsLeftBehind()
{
    QFETCH(QString, source);
    QFETCH(bool, modifiedA);
    QFETCH(bool, modifiedB);
    makeDefault();
    for (const char *number : {"A1", "A2"}) {
        QVERIFY(addBox(number, "Tumor", BOX));
        QVERIFY(addBox(number, "Bkg", OTHER, EROI_BACKGROUND));
    }
    dataset("A1")->setModified(modifiedA);
    dataset("A2")->setModified(modifiedB);
    choose(source, "Tumor");
    QVERIFY(window()->m_kValue != 7.0f);
    QCOMPARE(dataset("A1")->isModified(), modifiedA);
    QCOMPARE(dataset("A2")->isModified(), modifiedB);
    QVERIFY(!window()->m_bPastedROI);
    for (const char *number : {"A1", "A2"}) {
        QCOMPARE(names(rois(number)), QStringList({"Tumor", "Bkg"}));
        QCOMPARE(rois(number)->rois().first()->boundingBox(), BOX);
    }
    // A second time it gives the same.
    const float k = window()->m_kValue;
    choose(source, "Tumor");
    QCOMPARE(window()->m_kValue, k);
}

void tst_KFromROI::aValueOfZero_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<QString>("source");
    QTest::addColumn<float>("k");
    QTest::addColumn<QString>("text");
    const float inf = std::numeric_limits<float>::infinity();
    QTest::newRow("of the target B: k is 1") << 50.0 << 0.0 << "A1" << 1.0f << "1";
    QTest::newRow("of the target A: k is 1") << 0.0 << 50.0 << "A2" << 1.0f << "1";
    QTest::newRow("of both, ROI of A") << 0.0 << 0.0 << "A1" << 1.0f << "1";
    QTest::newRow("of both, ROI of B") << 0.0 << 0.0 << "A2" << 1.0f << "1";
    QTest::newRow("of the source A: k is 0") << 0.0 << 50.0 << "A1" << 0.0f << "0";
    QTest::newRow("of the source B the division is made all the same") << 50.0 << 0.0 << "A2" << inf << "inf";
    QTest::newRow("of the source B, with a negative A") << -50.0 << 0.0 << "A2" << -inf << "-inf";
}

void tst_KFromROI::aValueOfZero()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(QString, source);
    QFETCH(float, k);
    make({click("A1", [a](int, int) { return a; }), click("A2", [b](int, int) { return b; })});
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    choose(source, "Tumor");
    QVERIFY2(window()->m_kValue == k, qPrintable(QString::number(double(window()->m_kValue))));
    QTEST(window()->m_pKLineEdit->text(), "text");
    QCOMPARE(window()->computations, 1);
}

void tst_KFromROI::theSameClick_data()
{
    QTest::addColumn<bool>("measured");
    QTest::addColumn<double>("counts");
    QTest::addColumn<float>("k");
    QTest::newRow("measured before: k is 1") << true << 50.0 << 1.0f;
    QTest::newRow("measured before, nothing in it: k is 1") << true << 0.0 << 1.0f;
    QTest::newRow("never measured: nothing happens") << false << 50.0 << 7.0f;
}

void tst_KFromROI::theSameClick()
{
    QFETCH(bool, measured);
    QFETCH(double, counts);
    QFETCH(float, k);
    make({click("A1", [counts](int, int) { return counts; }), click("A2", countsOfB)});
    window()->m_pListBoxB->setCurrentRow(0);
    QVERIFY(addBox("A1", "Tumor", BOX));
    if (measured)
        QCOMPARE(dataset("A1")->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    dataset("A1")->setModified(false);
    window()->forgetCalls();
    choose("A1", "Tumor");
    QCOMPARE(window()->m_kValue, k);
    QCOMPARE(window()->m_pKLineEdit->text(), measured ? QString("1") : QString("7.00"));
    QCOMPARE(window()->computations, measured ? 1 : 0);
    QCOMPARE(names(rois("A1")), QStringList{"Tumor"});
    QVERIFY(!window()->m_bPastedROI);
    // It was not measured again.
    const auto records = CRoiMeasurementManager::getRoiMeasurementManager()->getRoiMeasInfoList();
    QCOMPARE(records.size(), measured ? 1 : 0);
    if (measured) {
        QVERIFY(!records.first()->isValid);
        QVERIFY(!dataset("A1")->isModified());
    }
}

void tst_KFromROI::aMissingRecordStops_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("without");
    row("of the target B", "A1", "A2");
    row("of the target A", "A2", "A1");
    row("of the source A", "A1", "A1");
    row("of the source B", "A2", "A2");
}

void tst_KFromROI::aMissingRecordStops()
{
    QFETCH(QString, source);
    QFETCH(QString, without);
    // Without a field of view a click cannot be measured.
    ClickSpec a = click("A1", countsOfA);
    ClickSpec b = click("A2", countsOfB);
    (without == "A1" ? a : b).luminescentKeys.insert("Field of View", QString());
    make({a, b});
    const QString target = source == "A1" ? "A2" : "A1";
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    QVERIFY(addBox(target.toLatin1(), "Old", OTHER));
    dataset(source.toLatin1())->setUnit(EUNIT_RADIANCE);
    dataset(target.toLatin1())->setUnit(EUNIT_COUNTS);
    dataset(target.toLatin1())->setModified(false);
    window()->forgetCalls();
    choose(source, "Tumor");
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->m_pKLineEdit->text(), QString("7.00"));
    QCOMPARE(window()->computations, 0);
    // What was prepared stays: the pasted ROI, the unit, the modified flag.
    QVERIFY(window()->m_bPastedROI);
    QCOMPARE(names(rois(target.toLatin1())), QStringList({"Old", "Tumor"}));
    QCOMPARE(dataset(target.toLatin1())->getUnit(), EUNIT_RADIANCE);
    QVERIFY(dataset(target.toLatin1())->isModified());
}

// The pixels of a result computed in efficiency have no counts.
// A dataset's own measuring gives every ROI a total in the unit that is compared; a record that somebody else
// stored may have none.
void tst_KFromROI::aTotalThatIsNotThereIsNoK()
{
    make({click("A1", countsOfA), click("A2", countsOfB)});
    window()->m_pListBoxB->setCurrentRow(0);
    QVERIFY(addBox("A1", "Tumor", BOX));
    QCOMPARE(dataset("A1")->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    auto *records = CRoiMeasurementManager::getRoiMeasurementManager();
    CRoiMeasInfo record = *records->getRoiMeasInfoList().first();
    record.counts.sum = std::numeric_limits<double>::quiet_NaN();
    records->store({record});
    window()->forgetCalls();
    const LogCatcher log;
    choose("A1", "Tumor");
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->m_pKLineEdit->text(), QString("7.00"));
    QCOMPARE(window()->computations, 0);
    QCOMPARE(log.toolEntries().size(), 1);
    QVERIFY2(log.toolEntries().first().message.contains("Tumor"),
             qPrintable(log.toolEntries().first().message));
}

void tst_KFromROI::resultsInEfficiencyAreComparedByTheirEfficiency()
{
    ClickSpec a = click("A1", countsOfA);
    ClickSpec b = click("A2", countsOfB);
    for (ClickSpec *spec : {&a, &b})
        spec->luminescentKeys.insert(clickinfo::KEY_MATH_OPERATION, "A / B * k");
    make({a, b});
    for (const char *number : {"A1", "A2"}) {
        CPLClickInfo *info = dataset(number)->getClickInfo();
        CPLSection *section = (*info)[clickinfo::SECTION_GRAPH_CONTROLS];
        if (!section) {
            section = new CPLSection;
            section->setSectionKey(clickinfo::SECTION_GRAPH_CONTROLS);
            info->addSection(section);
        }
        section->setValue(clickinfo::KEY_INTENSITY_CALIBRATION, QStringLiteral("efficiency"));
        dataset(number)->setUnit(EUNIT_EFFICIENCY);
    }
    QVERIFY(addBox("A1", "Tumor", BOX));
    LogCatcher log;
    choose("A1", "Tumor");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
    QCOMPARE(rois("A2")->rois().size(), 0);
    // In counts, the sequence's unit, such a pair has no pixels: that is told, and nothing about k.
    QCOMPARE(log.toolMessages().filter(QStringLiteral("k stays")), QStringList());
}

void tst_KFromROI::aRatioAndCountsGiveNoK()
{
    makeDefault();
    const auto becomeRatio = [](CVXSDataset *dataset) {
        clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT)
            ->setValue(clickinfo::KEY_MATH_OPERATION, QString("(A / B) * k"));
        clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_GRAPH_CONTROLS)
            ->setValue(clickinfo::KEY_INTENSITY_CALIBRATION, QString("counts"));
    };
    becomeRatio(dataset("A1"));
    QVERIFY(addBox("A1", "Tumor", BOX));
    LogCatcher log;
    choose("A1", "Tumor");
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(log.toolFailures(), QStringList("k stays as it is: \"Tumor\" has no total in A1 or A2"));
    QCOMPARE(names(rois("A2")), QStringList());
    becomeRatio(dataset("A2")); // two ratios can be compared
    choose("A1", "Tumor");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
}

void tst_KFromROI::aNameThatIsNoROIStops()
{
    makeDefault();
    QVERIFY(addBox("A1", "Tumor", BOX));
    QVERIFY(addBox("A2", "Old", OTHER));
    window()->computeKFromROI("A1", "Nothing of that name");
    window()->computeKFromROI("A1", QString());
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->computations, 0);
    QVERIFY(names(rois("A1")).contains("Tumor"));
    QVERIFY(names(rois("A2")).contains("Old"));
}

void tst_KFromROI::textsOneInTheOther()
{
    make({click("A1", countsOfA), click("A10", countsOfB)});
    QVERIFY(addBox("A1", "In A1", BOX));
    QVERIFY(addBox("A10", "In A10", OTHER));
    choose("A10", "In A10");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, OTHER) / sum(countsOfB, OTHER)));
    choose("A1", "In A1");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
}

void tst_KFromROI::theSourceIsAWhereItsTextContainsTheDatasets_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("dataset");
    QTest::addColumn<bool>("isSourceA");
    row("the whole text of A", "A10", "A10", true);
    row("a part of it, though B is called so", "A10", "A1", true);
    row("nothing is in every text", "A10", "", true);
    row("letters in another case are another text", "a1x", "A1", false);
    row("the text of B", "C3", "A1", false);
}

void tst_KFromROI::theSourceIsAWhereItsTextContainsTheDatasets()
{
    QFETCH(QString, a);
    QFETCH(QString, dataset);
    QFETCH(bool, isSourceA);
    make({click(a, countsOfA), click("A1", countsOfB)}); // B
    QVERIFY(addBox(a.toLatin1(), "Tumor", BOX));
    QVERIFY(addBox("A1", "Tumor", OTHER));
    window()->computeKFromROI(dataset, "Tumor");
    const QRectF box = isSourceA ? BOX : OTHER;
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, box) / sum(countsOfB, box)));
}

void tst_KFromROI::aCopyThatAnEarlierStopLeftIsNotRemoved()
{
    ClickSpec b = click("A2", countsOfB);
    b.luminescentKeys.insert("Field of View", QString()); // cannot be measured
    make({click("A1", countsOfA), b});
    QVERIFY(addBox("A1", "Tumor", BOX));
    QVERIFY(addBox("A1", "Made last", OTHER));
    choose("A1", "Tumor");
    QVERIFY(window()->m_bPastedROI);
    // The same click twice: nothing is pasted, so that nothing may be taken out.
    window()->m_pListBoxB->setCurrentRow(0);
    QCOMPARE(dataset("A1")->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    choose("A1", "Tumor");
    QCOMPARE(window()->m_kValue, 1.0f);
    QVERIFY(!window()->m_bPastedROI);
    QCOMPARE(names(rois("A1")), QStringList({"Tumor", "Made last"}));
}

void tst_KFromROI::theROIAloneIsSelected()
{
    makeDefault();
    CROIBase *tumor = addBox("A1", "Tumor", BOX);
    CROIBase *other = addBox("A1", "Other", OTHER);
    QVERIFY(tumor && other);
    rois("A1")->selectROI(other, false);
    choose("A1", "Tumor");
    QCOMPARE(rois("A1")->selectedROIs(), QList<CROIBase *>{tumor});
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
}

void tst_KFromROI::theSourceIsMeasuredBeforeTheTarget_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    row("ROI of A", "A1", "A2");
    row("ROI of B", "A2", "A1");
}

void tst_KFromROI::theSourceIsMeasuredBeforeTheTarget()
{
    QFETCH(QString, source);
    QFETCH(QString, target);
    makeDefault();
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    const QSignalSpy changed(CRoiMeasurementManager::getRoiMeasurementManager(),
                             &CRoiMeasurementManager::recordsChanged);
    choose(source, "Tumor");
    QVERIFY(changed.count() >= 2);
    QCOMPARE(changed.at(0).first().toString(), source);
    QCOMPARE(changed.at(1).first().toString(), target);
}

// The others' records look up to date, but somebody has stored what is not so.
void tst_KFromROI::everyROIOfBothIsMeasured()
{
    makeDefault();
    QVERIFY(addBox("A1", "Tumor", BOX));
    QVERIFY(addBox("A1", "Other of A", OTHER));
    QVERIFY(addBox("A2", "Other of B", OTHER));
    auto *records = CRoiMeasurementManager::getRoiMeasurementManager();
    const auto record = [records](const char *number, const char *name) {
        const RoiMeasDisplayEntry *entry = records->findMeasInfoForId(number, name);
        return entry ? *records->getRoiMeasInfoList().at(entry->index) : CRoiMeasInfo();
    };
    for (const char *number : {"A1", "A2"}) {
        QCOMPARE(dataset(number)->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
        CRoiMeasInfo wrong = record(number, *(number + 1) == '1' ? "Other of A" : "Other of B");
        QVERIFY(wrong.isValid);
        wrong.counts.sum = -1.0;
        records->store(wrong);
    }
    choose("A1", "Tumor");
    QVERIFY(isClose(float(record("A1", "Other of A").counts.sum), sum(countsOfA, OTHER)));
    QVERIFY(isClose(float(record("A2", "Other of B").counts.sum), sum(countsOfB, OTHER)));
}

void tst_KFromROI::theRatioIsTakenInDoublePrecision_data()
{
    QTest::addColumn<QString>("source");
    row("ROI of A", "A1");
    row("ROI of B", "A2");
}

// The total of A needs more digits than single precision has.
void tst_KFromROI::theRatioIsTakenInDoublePrecision()
{
    QFETCH(QString, source);
    make({click("A1", [](int, int) { return 16777201.0; }), click("A2", [](int, int) { return 32.0; })});
    QVERIFY(addBox(source.toLatin1(), "Tumor", BOX));
    const double a = 16777201.0 * 80;
    const double b = 32.0 * 80;
    QCOMPARE(sum([](int, int) { return 32.0; }, BOX), b);
    QVERIFY(float(a / b) != float(a) / float(b));
    choose(source, "Tumor");
    QVERIFY2(window()->m_kValue == float(a / b),
             qPrintable(QString::number(double(window()->m_kValue), 'g', 9)));
}

QTEST_MAIN(tst_KFromROI)
#include "tst_KFromROI.moc"
