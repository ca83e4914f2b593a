// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/host/vxapi/model/CalibrationFixture.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <limits>
#include <QSignalSpy>
#include <QtTest>

using namespace calibration;

/// Pixels of a dataset in every unit, with and without corrections.
class tst_CalibratedImages : public CalibrationFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void pixels_data();
    void pixels();
    void binningFactorAndPaletteComeAlong();
    void integerPixelsBecomeFloat();
    void aFlatFieldOfAnotherSizeIsBroughtOntoTheGrid();
    void zeroAndNanOfTheFlatFieldFollowIeeeDivision();
    void theScaleOfTheFlatFieldDoesNotMatter();
    void aFlatFieldThatDoesNotFitIsRefused_data();
    void aFlatFieldThatDoesNotFitIsRefused();
    void aFlatFieldMayLackLessThanAPixel();
    void theRulesOf10TakeAFlatFieldAsItIs();
    void onlyCountsAddUp_data();
    void onlyCountsAddUp();
    void nanAndInfinitePixelsStay();
    void efficiencyTakesTheOffsetFromBothImages();
    void flatFieldCancelsOutOfEfficiency();
    void efficiencyWithoutReferenceIsRefused();
    void aBackgroundOfAnotherSizeIsRefused();

    void correctionFlags_data();
    void correctionFlags();
    void storedCorrectionsAreNotMadeAgain();
    void flatFieldNeedsAFlatField();
    void switchingACorrectionIsAnnouncedOnce();

    void resultStaysInItsUnit_data();
    void resultStaysInItsUnit();
    void resultInEfficiencyIsNotConverted();
    void resultWithoutUnitIsRefused();
    void productsAndRatiosAreNotConverted_data();
    void productsAndRatiosAreNotConverted();
    void theRulesOf10ConvertRatios();
    void theExactBinningOfAResultIsThatOfItsRecord_data();
    void theExactBinningOfAResultIsThatOfItsRecord();

    void noLuminescentImage();
    void unknownUnit();
    void noTarget();
};

void tst_CalibratedImages::pixels_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("isFlatFieldOn");
    QTest::addColumn<bool>("isBackgroundOn");
    QTest::newRow("counts as stored") << int(EUNIT_COUNTS) << false << false;
    QTest::newRow("counts less background") << int(EUNIT_COUNTS) << false << true;
    QTest::newRow("counts over flat field") << int(EUNIT_COUNTS) << true << false;
    QTest::newRow("background first, then flat field") << int(EUNIT_COUNTS) << true << true;
    QTest::newRow("radiance") << int(EUNIT_RADIANCE) << false << false;
    QTest::newRow("radiance with both corrections") << int(EUNIT_RADIANCE) << true << true;
    QTest::newRow("radiant efficiency") << int(EUNIT_RADIANT_EFFICIENCY) << false << false;
    QTest::newRow("radiant efficiency with both corrections")
        << int(EUNIT_RADIANT_EFFICIENCY) << true << true;
}

void tst_CalibratedImages::pixels()
{
    QFETCH(int, unit);
    QFETCH(bool, isFlatFieldOn);
    QFETCH(bool, isBackgroundOn);
    CVXSDataset *dataset = addWithCorrections();
    dataset->doFlatFieldCorrection(isFlatFieldOn);
    dataset->doBackgroundSubtraction(isBackgroundOn);
    const CILImage image = calibrated(dataset, tag_edisplayunit(unit));
    QCOMPARE(image.getType(), VXS_FLOAT);
    QCOMPARE(image.getWidth(), 32u);
    const double perCount =
        unit == EUNIT_COUNTS ? 1.0 : radianceFactor(dataset) / (unit == EUNIT_RADIANCE ? 1.0 : 20.0);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            double expected = double(counts(x, y));
            if (isBackgroundOn)
                expected -= double(background(x, y));
            if (isFlatFieldOn)
                expected /= double(flatField(x, y));
            expected *= perCount;
            const double is = image.pixelAt(unsigned(x), unsigned(y));
            QVERIFY2(std::abs(is - expected) <= 4e-7 * expected,
                     qPrintable(QStringLiteral("(%1, %2): %3, not %4").arg(x).arg(y).arg(is).arg(expected)));
        }
    }
}

void tst_CalibratedImages::binningFactorAndPaletteComeAlong()
{
    ClickSpec spec;
    spec.binning = 8.0f;
    CVXSDataset *dataset = add(spec);
    dataset->setColorTable(VXS_CT_YELLOWHOT);
    CVXSToolInfo info;
    info.reversed = true;
    info.logarithmic = true;
    dataset->setToolInfo(info);
    const CILImage image = calibrated(dataset, EUNIT_RADIANCE);
    QCOMPARE(image.binningFactor(), 8.0f);
    QCOMPARE(image.getPalette().getColorTableType(), VXS_CT_YELLOWHOT);
    QVERIFY(image.getPalette().isReversed());
    QVERIFY(image.getPalette().isLogScale());
}

void tst_CalibratedImages::integerPixelsBecomeFloat()
{
    CVXSDataset *dataset = add();
    CILImage stored = TestStudy::image(5, 3, [](int x, int y) { return float(1000 * x + y); });
    stored.ChangeType(VXS_UINT16);
    stored.setBinningFactor(4.0f);
    dataset->setCoreImage(EIMAGE_LUMINESCENT, stored);
    const CILImage image = calibrated(dataset, EUNIT_COUNTS);
    QCOMPARE(image.getType(), VXS_FLOAT);
    QCOMPARE(image.pixelAt(4, 2), 4002.0);
    QCOMPARE(dataset->getCoreImage(EIMAGE_LUMINESCENT)->getType(), VXS_UINT16);
}

void tst_CalibratedImages::aFlatFieldOfAnotherSizeIsBroughtOntoTheGrid()
{
    ClickSpec spec;
    spec.counts = [](int, int) { return 200.0f; };
    CVXSDataset *dataset = add(spec);
    // Twice the grid, so that a pixel of the grid is the mean of 2 x 2: 0.5 and 1.5 give 1.
    dataset->setCoreImage(EIMAGE_FLATFIELD,
                          TestStudy::image(64, 64, [](int x, int) { return x % 2 == 0 ? 0.5f : 1.5f; }));
    dataset->doFlatFieldCorrection(true);
    CILImage image = calibrated(dataset, EUNIT_COUNTS);
    QCOMPARE(image.getWidth(), 32u);
    QCOMPARE(image.getMin(), 300.0f); // times the maximum, 1.5
    QCOMPARE(image.getMax(), 300.0f);
    dataset->setCoreImage(EIMAGE_FLATFIELD,
                          TestStudy::image(8, 8, [](int x, int) { return x < 4 ? 0.5f : 1.0f; }));
    image = calibrated(dataset, EUNIT_COUNTS);
    QCOMPARE(image.getWidth(), 32u);
    QCOMPARE(image.getMin(), 200.0f);
    QCOMPARE(image.getMax(), 400.0f);
}

void tst_CalibratedImages::zeroAndNanOfTheFlatFieldFollowIeeeDivision()
{
    ClickSpec spec;
    spec.counts = [](int x, int) { return x == 3 ? 0.0f : 200.0f; };
    spec.flatField = [](int x, int) {
        return x == 0 || x == 3 ? 0.0f
               : x == 1         ? std::numeric_limits<float>::quiet_NaN()
               : x == 2         ? -1.0f
                                : 1.0f;
    };
    CVXSDataset *dataset = add(spec);
    dataset->doFlatFieldCorrection(true);
    CILImage image = calibrated(dataset, EUNIT_COUNTS);
    QCOMPARE(image.pixelAt(0, 5), std::numeric_limits<double>::infinity());
    QVERIFY(std::isnan(image.pixelAt(1, 5)));
    QCOMPARE(image.pixelAt(2, 5), -200.0);
    QVERIFY(std::isnan(image.pixelAt(3, 5)));
    QCOMPARE(image.getMax(), 200.0f); // statistics see finite pixels alone
}

void tst_CalibratedImages::theScaleOfTheFlatFieldDoesNotMatter()
{
    ClickSpec spec;
    spec.counts = [](int, int) { return 200.0f; };
    spec.flatField = [](int x, int) { return x < 16 ? 15000.0f : 30000.0f; };
    CVXSDataset *dataset = add(spec);
    dataset->doFlatFieldCorrection(true);
    const CILImage image = calibrated(dataset, EUNIT_COUNTS);
    QCOMPARE(image.getMax(), 400.0f);
    QCOMPARE(image.getMin(), 200.0f);
}

void tst_CalibratedImages::aFlatFieldThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("reason");
    QTest::newRow("wider") << QSize(32, 16) << 1.0f << "32 x 16 pixels";
    QTest::newRow("higher") << QSize(16, 32) << 1.0f << "16 x 32 pixels";
    QTest::newRow("a row too many") << QSize(32, 33) << 1.0f << "32 x 33 pixels";
    QTest::newRow("all zero") << QSize(32, 32) << 0.0f << "no pixel above 0";
}

void tst_CalibratedImages::aFlatFieldThatDoesNotFitIsRefused()
{
    QFETCH(QSize, size);
    QFETCH(float, value);
    QFETCH(QString, reason);
    CVXSDataset *dataset = add();
    const auto flat = [value](int, int) { return value; };
    dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(size.width(), size.height(), flat));
    LogCatcher log;
    dataset->doFlatFieldCorrection(true);
    QVERIFY(!dataset->isLuminFlatFieldCorrected());
    QCOMPARE(log.failures().size(), 1);
    QVERIFY2(log.failures().first().contains("flatfield.tif") && log.failures().first().contains(reason),
             qPrintable(log.failures().first()));
    QVERIFY(dataset->lastError().contains(reason));

    // One that fitted and was exchanged.
    dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(32, 32, [](int, int) { return 1.0f; }));
    dataset->doFlatFieldCorrection(true);
    dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(size.width(), size.height(), flat));
    CILImage image;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &image, "test"), ESTATUS_BAD_IMAGE);
    QVERIFY(image.isEmpty());
    QVERIFY2(dataset->lastError().contains(reason), qPrintable(dataset->lastError()));
}

void tst_CalibratedImages::aFlatFieldMayLackLessThanAPixel()
{
    ClickSpec spec;
    spec.width = 33; // binned by two: 16 and a remainder
    CVXSDataset *dataset = add(spec);
    dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(16, 16, [](int, int) { return 1.0f; }));
    dataset->doFlatFieldCorrection(true);
    QVERIFY(dataset->isLuminFlatFieldCorrected());
}

void tst_CalibratedImages::theRulesOf10TakeAFlatFieldAsItIs()
{
    ClickSpec spec;
    spec.counts = [](int, int) { return 200.0f; };
    CVXSDataset *dataset = add(spec);
    dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(16, 8, [](int, int) { return 4.0f; }));
    dataset->doFlatFieldCorrection(true);
    QVERIFY(!dataset->isLuminFlatFieldCorrected());
    dataset->setCalibrationRules(ECALIBRATION_1_0);
    dataset->doFlatFieldCorrection(true);
    QVERIFY(dataset->isLuminFlatFieldCorrected());
    QCOMPARE(calibrated(dataset, EUNIT_COUNTS).getMax(), 50.0f);
}

void tst_CalibratedImages::onlyCountsAddUp_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("addUp");
    for (const tag_edisplayunit unit :
         {EUNIT_COUNTS, EUNIT_RADIANCE, EUNIT_RADIANT_EFFICIENCY, EUNIT_EFFICIENCY})
        QTest::newRow(qPrintable(unitKey(unit))) << int(unit) << (unit == EUNIT_COUNTS);
}

void tst_CalibratedImages::onlyCountsAddUp()
{
    QFETCH(int, unit);
    QFETCH(bool, addUp);
    CVXSDataset *dataset = add();
    dataset->setCoreImage(EIMAGE_EXCITATION, TestStudy::image(32, 32, [](int, int) { return 9.0f; }));
    const CILImage image = calibrated(dataset, tag_edisplayunit(unit));
    QCOMPARE(image.getWidth(), 32u);
    QCOMPARE(image.valuesAddUp(), addUp);
    QCOMPARE(calibrated(dataset, tag_edisplayunit(unit)).valuesAddUp(), addUp); // remembered
}

void tst_CalibratedImages::nanAndInfinitePixelsStay()
{
    ClickSpec spec;
    spec.counts = [](int x, int) {
        return x == 0   ? std::numeric_limits<float>::quiet_NaN()
               : x == 1 ? std::numeric_limits<float>::infinity()
                        : 10.0f;
    };
    CVXSDataset *dataset = add(spec);
    CILImage image = calibrated(dataset, EUNIT_RADIANCE);
    QVERIFY(std::isnan(image.pixelAt(0, 0)));
    QVERIFY(std::isinf(image.pixelAt(1, 0)));
    QCOMPARE(image.getMin(), image.getMax());
    QVERIFY(image.getMin() > 0.0f);
}

void tst_CalibratedImages::efficiencyTakesTheOffsetFromBothImages()
{
    ClickSpec spec;
    spec.counts = [](int, int) { return OFFSET + 30.0f; };
    CVXSDataset *dataset = add(spec);
    dataset->setCoreImage(EIMAGE_EXCITATION,
                          TestStudy::image(32, 32, [](int, int) { return OFFSET + 300.0f; }));
    QCOMPARE(float(calibrated(dataset, EUNIT_EFFICIENCY).pixelAt(7, 7)), 130.0f / 400.0f);
    dataset->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(32, 32, [](int, int) { return OFFSET; }));
    QCOMPARE(float(calibrated(dataset, EUNIT_EFFICIENCY).pixelAt(7, 7)), 0.1f);
    dataset->doBackgroundSubtraction(false);
    QCOMPARE(float(calibrated(dataset, EUNIT_EFFICIENCY).pixelAt(7, 7)), 130.0f / 400.0f);
}

void tst_CalibratedImages::flatFieldCancelsOutOfEfficiency()
{
    CVXSDataset *dataset = addWithCorrections();
    dataset->doBackgroundSubtraction(false);
    dataset->setCoreImage(EIMAGE_EXCITATION, TestStudy::image(32, 32, [](int, int) { return 1000.0f; }));
    dataset->doFlatFieldCorrection(true);
    QCOMPARE(float(calibrated(dataset, EUNIT_EFFICIENCY).pixelAt(2, 2)), counts(2, 2) / 1000.0f);
}

void tst_CalibratedImages::efficiencyWithoutReferenceIsRefused()
{
    CVXSDataset *dataset = add();
    LogCatcher log;
    CILImage target = TestStudy::image(2, 2, [](int, int) { return 1.0f; });
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_EFFICIENCY, &target, "test"), ESTATUS_NO_IMAGE);
    QVERIFY(target.isEmpty());
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().constFirst().contains(dataset->getClickNumber()));
    QVERIFY(log.failures().constFirst().contains("excitation reference"));
}

void tst_CalibratedImages::aBackgroundOfAnotherSizeIsRefused()
{
    CVXSDataset *dataset = add();
    dataset->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(16, 16, background));
    LogCatcher log;
    CILImage target;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_BAD_IMAGE);
    QVERIFY(target.isEmpty());
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().constFirst().contains("background.tif"));
    QVERIFY(log.failures().constFirst().contains("16 x 16"));
}

void tst_CalibratedImages::correctionFlags_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isSet");
    for (const char *key : {"Flat Field Corrected", "Background Corrected", "FL Background Corrected"}) {
        QTest::addRow("%s is 1", key) << key << "1" << true;
        QTest::addRow("%s is 0", key) << key << "0" << false;
        QTest::addRow("%s is missing", key) << key << QString() << false;
        QTest::addRow("%s is another text", key) << key << "yes" << false;
    }
}

void tst_CalibratedImages::correctionFlags()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, isSet);
    ClickSpec spec;
    spec.luminescentKeys = {{key, value}};
    const CVXSDataset *dataset = add(spec);
    QCOMPARE(dataset->isLuminFlatFieldCorrected(), isSet && key == "Flat Field Corrected");
    QCOMPARE(dataset->isLuminBackgroundSubtracted(), isSet && key == "Background Corrected");
    QCOMPARE(dataset->isLuminFLBkgSubtracted(), isSet && key == "FL Background Corrected");
}

void tst_CalibratedImages::storedCorrectionsAreNotMadeAgain()
{
    CVXSDataset *dataset = addWithCorrections();
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_BACKGROUND_CORRECTED, "1");
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_FLATFIELD_CORRECTED, "1");
    dataset->doFlatFieldCorrection(true);
    QCOMPARE(float(calibrated(dataset, EUNIT_COUNTS).pixelAt(3, 4)), counts(3, 4));
    dataset->doFlatFieldCorrection(false);
    dataset->doBackgroundSubtraction(false);
    QVERIFY(dataset->isLuminFlatFieldCorrected()); // it is in the pixels
    QVERIFY(dataset->isLuminBackgroundSubtracted());
}

void tst_CalibratedImages::flatFieldNeedsAFlatField()
{
    CVXSDataset *dataset = add();
    QSignalSpy changed(dataset, &CVXSDataset::calibrationChanged);
    dataset->doFlatFieldCorrection(true);
    QVERIFY(!dataset->isLuminFlatFieldCorrected());
    QCOMPARE(changed.count(), 0);
}

void tst_CalibratedImages::switchingACorrectionIsAnnouncedOnce()
{
    CVXSDataset *dataset = addWithCorrections();
    QVERIFY(!dataset->isLuminFlatFieldCorrected());
    QVERIFY(dataset->isLuminBackgroundSubtracted());
    QSignalSpy changed(dataset, &CVXSDataset::calibrationChanged);
    dataset->doFlatFieldCorrection(true);
    dataset->doFlatFieldCorrection(true);
    QVERIFY(dataset->isLuminFlatFieldCorrected());
    QCOMPARE(changed.count(), 1);
    dataset->doBackgroundSubtraction(false);
    dataset->doBackgroundSubtraction(false);
    QVERIFY(!dataset->isLuminBackgroundSubtracted());
    QCOMPARE(changed.count(), 2);
}

void tst_CalibratedImages::resultStaysInItsUnit_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("powerOfRadiance"); // of the radiance factor
    QTest::addColumn<double>("powerOfIrradiance");
    QTest::newRow("counts as they are") << "counts" << int(EUNIT_COUNTS) << 0.0 << 0.0;
    QTest::newRow("radiance as it is") << "Radiance (Photons)" << int(EUNIT_RADIANCE) << 0.0 << 0.0;
    row("radiant efficiency as it is", "Radiant Efficiency", int(EUNIT_RADIANT_EFFICIENCY), 0.0, 0.0);
    QTest::newRow("efficiency as it is") << "efficiency" << int(EUNIT_EFFICIENCY) << 0.0 << 0.0;
    QTest::newRow("radiance back to counts") << "Radiance (Photons)" << int(EUNIT_COUNTS) << -1.0 << 0.0;
    QTest::newRow("counts on to radiance") << "counts" << int(EUNIT_RADIANCE) << 1.0 << 0.0;
    row("radiance over irradiance", "Radiance (Photons)", int(EUNIT_RADIANT_EFFICIENCY), 0.0, -1.0);
}

void tst_CalibratedImages::resultStaysInItsUnit()
{
    QFETCH(QString, stored);
    QFETCH(int, unit);
    QFETCH(double, powerOfRadiance);
    QFETCH(double, powerOfIrradiance);
    // With a background and a flat field lying there, which are not for it.
    CVXSDataset *dataset = addWithCorrections();
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_MATH_OPERATION, "A - B * k");
    setKey(dataset, clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION, stored);
    dataset->doFlatFieldCorrection(true);
    QVERIFY(!dataset->isLuminFlatFieldCorrected());
    QVERIFY(!dataset->isLuminBackgroundSubtracted());
    const double factor =
        std::pow(radianceFactor(dataset), powerOfRadiance) * std::pow(20.0, powerOfIrradiance);
    const CILImage image = calibrated(dataset, tag_edisplayunit(unit));
    for (unsigned i : {0u, 9u, 31u}) {
        const double expected = factor * double(counts(int(i), 5));
        QVERIFY(std::abs(image.pixelAt(i, 5) - expected) <= 2e-7 * expected);
    }
}

void tst_CalibratedImages::resultInEfficiencyIsNotConverted()
{
    CVXSDataset *dataset = addWithCorrections();
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_MATH_OPERATION, "A - B * k");
    setKey(dataset, clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION, "efficiency");
    LogCatcher log;
    CILImage target;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_BAD_VALUE);
    QVERIFY(target.isEmpty());
    QVERIFY(log.failures().constFirst().contains("efficiency"));
}

void tst_CalibratedImages::resultWithoutUnitIsRefused()
{
    CVXSDataset *dataset = addWithCorrections();
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_MATH_OPERATION, "A - B * k");
    LogCatcher log;
    CILImage target;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_BAD_VALUE);
    QVERIFY(log.failures().constFirst().contains("Intensity Calibration"));
}

void tst_CalibratedImages::productsAndRatiosAreNotConverted_data()
{
    QTest::addColumn<QStringList>("operations"); // in the order of the record; the last is its own
    QTest::addColumn<int>("shown");
    const int product = EUNIT_PRODUCT, ratio = EUNIT_RATIO, unit = EUNIT_RADIANCE;
    row("a product", QStringList{"A * B * k"}, product);
    row("a ratio", QStringList{"(A / B) * k"}, ratio);
    row("a thresholded ratio", QStringList{"A/B if Counts(B)>k"}, ratio);
    row("a sum", QStringList{"A + B * k"}, unit);
    row("a difference", QStringList{"A - B * k"}, unit);
    row("a difference from a ratio", QStringList{"(A / B) * k", "A - B * k"}, ratio);
    row("a sum with a product", QStringList{"A * B * k", "A + B * k"}, product);
    row("a ratio of a product", QStringList{"A * B * k", "(A / B) * k"}, ratio);
    row("a ratio of a difference", QStringList{"A - B * k", "(A / B) * k"}, ratio);
}

void tst_CalibratedImages::productsAndRatiosAreNotConverted()
{
    QFETCH(QStringList, operations);
    QFETCH(int, shown);
    CVXSDataset *dataset = addWithCorrections();
    const QString key = clickinfo::KEY_MATH_OPERATION;
    for (const QString &operation : operations)
        clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT)
            ->addKeyValue(key, operation);
    setKey(dataset, clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION,
           unitKey(EUNIT_COUNTS));
    dataset->setUnit(EUNIT_RADIANCE);
    QCOMPARE(int(dataset->getShownUnit()), shown);
    QCOMPARE(dataset->getUnit(), EUNIT_RADIANCE);
    const bool isConverted = shown == EUNIT_RADIANCE;
    QCOMPARE(radianceFactor(dataset) == 1.0, !isConverted);
    for (const tag_edisplayunit unit : {EUNIT_RADIANCE, EUNIT_COUNTS}) {
        const CILImage image = calibrated(dataset, unit);
        const double factor = unit == EUNIT_RADIANCE ? radianceFactor(dataset) : 1.0;
        const double expected = double(counts(3, 5)) * factor;
        QVERIFY(std::abs(image.pixelAt(3, 5) - expected) <= 2e-7 * expected);
        QCOMPARE(image.valuesAddUp(), isConverted && unit == EUNIT_COUNTS);
    }
}

void tst_CalibratedImages::theRulesOf10ConvertRatios()
{
    CVXSDataset *dataset = add();
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_MATH_OPERATION, "(A / B) * k");
    setKey(dataset, clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION, "counts");
    const float unconverted = calibrated(dataset, EUNIT_RADIANCE).getMax();
    dataset->setCalibrationRules(ECALIBRATION_1_0);
    QCOMPARE(calibrated(dataset, EUNIT_RADIANCE).getMax(),
             float(double(unconverted) * radianceFactor(dataset)));
}

// ClickInfo keeps the binning of a result as a whole number.
void tst_CalibratedImages::theExactBinningOfAResultIsThatOfItsRecord_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("clickInfo");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<double>("binning");
    const QByteArray exact = R"({"image math": {"binning": 2.5}})";
    row("truncated in ClickInfo", "A - B * k", "2", exact, 2.5);
    row("edited in ClickInfo since", "A - B * k", "4", exact, 4.0);
    row("a record that does not tell it", "A - B * k", "2", QByteArray(R"({"image math": {}})"), 2.0);
    row("no record", "A - B * k", "2", QByteArray("a scanner"), 2.0);
    row("a binning that is none", "A - B * k", "2", QByteArray(R"({"image math": {"binning": -2.5}})"), 2.0);
    row("no result", "", "2", exact, 2.0);
}

void tst_CalibratedImages::theExactBinningOfAResultIsThatOfItsRecord()
{
    QFETCH(QString, operation);
    QFETCH(QString, clickInfo);
    QFETCH(QByteArray, record);
    QFETCH(double, binning);
    CVXSDataset *dataset = add();
    CILImage pixels = TestStudy::image(8, 8, [](int, int) { return 100.0f; });
    pixels.setDescription(record.toStdString());
    dataset->setCoreImage(EIMAGE_LUMINESCENT, pixels);
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_BINNING, "2.5");
    const double of25 = radianceFactor(dataset) * 6.25;
    setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_BINNING, clickInfo);
    setKey(dataset, clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION, "counts");
    if (!operation.isEmpty())
        setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_MATH_OPERATION, operation);
    const auto check = [&](CVXSDataset *of) {
        QCOMPARE(of->getBinningFactor(), binning);
        const double expected = of25 / (binning * binning);
        QVERIFY(std::abs(radianceFactor(of) - expected) <= 1e-12 * expected);
        QCOMPARE(calibrated(of, EUNIT_RADIANCE).binningFactor(), float(binning));
        QCOMPARE(calibrated(of, EUNIT_RADIANCE).getMax(), float(100.0 * radianceFactor(of)));
    };
    check(dataset);
    QTemporaryDir folder;
    QCOMPARE(dataset->saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    const std::unique_ptr<CVXSDataset> read(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(read);
    check(read.get());
}

void tst_CalibratedImages::noLuminescentImage()
{
    ClickSpec spec;
    spec.counts = nullptr;
    spec.photograph = [](int x, int) { return float(x); };
    const CVXSDataset *dataset = add(spec);
    LogCatcher log;
    CILImage target = TestStudy::image(2, 2, [](int, int) { return 1.0f; });
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_NO_IMAGE);
    QVERIFY(target.isEmpty());
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().constFirst().contains(dataset->getClickNumber()));
}

void tst_CalibratedImages::unknownUnit()
{
    CILImage target = TestStudy::image(2, 2, [](int, int) { return 1.0f; });
    QCOMPARE(add()->getCalibratedLuminImage(EUNIT_COUNT, &target, "test"), ESTATUS_BAD_VALUE);
    QVERIFY(target.isEmpty());
}

void tst_CalibratedImages::noTarget()
{
    QCOMPARE(add()->getCalibratedLuminImage(EUNIT_COUNTS, nullptr, "test"), ESTATUS_BAD_VALUE);
}

QTEST_GUILESS_MAIN(tst_CalibratedImages)
#include "tst_CalibratedImages.moc"
