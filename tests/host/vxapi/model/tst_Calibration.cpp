// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <limits>
#include <QtTest>

namespace {

const QString COUNTS = QStringLiteral("counts");
const QString RADIANCE = QStringLiteral("Radiance (Photons)");
const QString RADIANT_EFFICIENCY = QStringLiteral("Radiant Efficiency");
const QString EFFICIENCY = QStringLiteral("efficiency");

/// Of the default click: 2 / (0.8 * 0.5) * 4 * 1^2 * 1.2^2 / (pi * (13.5e-4 * 4)^2 * 60), worked out by hand.
constexpr double DEFAULT_RADIANCE = 5239.6689;

double factorOf(CVXSDataset *dataset, const QString &from, const QString &to)
{
    return VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset, from, to);
}

bool isNear(double value, double expected, double relative = 1e-12)
{
    return std::abs(value - expected) <= relative * std::abs(expected);
}

} // namespace

class tst_Calibration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void radianceFromFirstPrinciples();
    void radianceOfAnotherCamera();
    void eachConstantHasItsPower_data();
    void eachConstantHasItsPower();
    void betweenUnits_data();
    void betweenUnits();
    void unusableConstant_data();
    void unusableConstant();
    void anUnusableConstantOfAFileNamesTheFile();
    void aConstantThatIsNotNeededMayBeMissing();
    void otherImageTypesHaveNoFactor_data();
    void otherImageTypesHaveNoFactor();
    void withoutDatasetThereIsNoFactor();
    void autoRange_data();
    void autoRange();
    void autoRangeWithoutFinitePixelSaysSo();
    void theCeilingOfAddedPixelsIsThatManyTimesHigher();
    void autoRangeOfAnUnknownUnitIsRefused();

private:
    TestStudy m_study;
    int m_next = 0;
    CVXSDataset *add(const QMap<QString, QString> &luminescent, const QMap<QString, QString> &camera,
                     float binning = 4.0f);
};

CVXSDataset *tst_Calibration::add(const QMap<QString, QString> &luminescent,
                                  const QMap<QString, QString> &camera, float binning)
{
    ClickSpec spec;
    spec.clickNumber = QStringLiteral("AB%1").arg(20260102030405 + m_next++);
    spec.binning = binning;
    spec.luminescentKeys = luminescent;
    spec.cameraKeys = camera;
    return m_study.add(spec);
}

void tst_Calibration::radianceFromFirstPrinciples()
{
    const double factor = factorOf(add({}, {}), COUNTS, RADIANCE);
    QVERIFY2(isNear(factor, DEFAULT_RADIANCE, 1e-8), qPrintable(QString::number(factor, 'g', 12)));
}

void tst_Calibration::radianceOfAnotherCamera()
{
    // g 1.3, QE 0.92, T 0.61, N 1.2, m 0.125, pitch 15 um, binning 8, t 2.5 s
    CVXSDataset *dataset =
        add({{"Exposure Time", "2.5"}, {"f Number", "1.2"}, {"Lens and Filter Transmission", "0.61"}},
            {{"Electrons Per Count", "1.3"},
             {"Quantum Efficiency", "0.92"},
             {"Pixel Pitch", "15"},
             {"Magnification", "0.125"}},
            8.0f);
    const double photonsPerCount = 1.3 / (0.92 * 0.61);                 // 2.316...
    const double lens = 4.0 * 1.44 * 1.265625;                          // 4 N^2 (1 + m)^2 = 7.29
    const double sensor = 3.14159265358979323846 * 0.012 * 0.012 * 2.5; // pi A t
    QVERIFY(isNear(lens, 7.29));
    QVERIFY(isNear(factorOf(dataset, COUNTS, RADIANCE), photonsPerCount * lens / sensor));
    QVERIFY(isNear(factorOf(dataset, COUNTS, RADIANCE), 14931.4108, 1e-8));
}

void tst_Calibration::eachConstantHasItsPower_data()
{
    QTest::addColumn<bool>("isOfCamera");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<double>("ratio"); // to the default's radiance
    row("twice the electrons a count, twice the radiance", true, "Electrons Per Count", "4", 2.0);
    row("half the quantum efficiency, twice the radiance", true, "Quantum Efficiency", "0.4", 2.0);
    row("twice the pixel pitch, a quarter", true, "Pixel Pitch", "27", 0.25);
    row("magnification 1.4 for 0.2, (2.4 / 1.2)^2", true, "Magnification", "1.4", 4.0);
    row("half the transmission, twice the radiance", false, "Lens and Filter Transmission", "0.25", 2.0);
    row("twice the f-number, four times", false, "f Number", "2", 4.0);
    row("twice the exposure, half", false, "Exposure Time", "120", 0.5);
    row("a number with exponent", false, "Exposure Time", "6e+1", 1.0);
    row("irradiance has no part in it", false, "Excitation Irradiance", "1", 1.0);
}

void tst_Calibration::eachConstantHasItsPower()
{
    QFETCH(bool, isOfCamera);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(double, ratio);
    const QMap<QString, QString> change = {{key, value}};
    CVXSDataset *changed = isOfCamera ? add({}, change) : add(change, {});
    QVERIFY(isNear(factorOf(changed, COUNTS, RADIANCE), ratio * factorOf(add({}, {}), COUNTS, RADIANCE)));
}

void tst_Calibration::betweenUnits_data()
{
    const double radiance = factorOf(add({}, {}), COUNTS, RADIANCE);
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<double>("factor");
    QTest::newRow("counts to counts") << COUNTS << COUNTS << 1.0;
    QTest::newRow("radiance to counts") << RADIANCE << COUNTS << 1.0 / radiance;
    QTest::newRow("counts to radiant efficiency: over 20 uW/cm^2")
        << COUNTS << RADIANT_EFFICIENCY << radiance / 20.0;
    QTest::newRow("radiance to radiant efficiency") << RADIANCE << RADIANT_EFFICIENCY << 1.0 / 20.0;
    QTest::newRow("radiant efficiency to radiance") << RADIANT_EFFICIENCY << RADIANCE << 20.0;
    QTest::newRow("radiant efficiency to counts") << RADIANT_EFFICIENCY << COUNTS << 20.0 / radiance;
    QTest::newRow("no factor leads to efficiency") << COUNTS << EFFICIENCY << 1.0;
    QTest::newRow("no factor leads from efficiency") << EFFICIENCY << RADIANCE << 1.0;
    row("the letters' case does not matter", "COUNTS", "radiance (photons)", radiance);
}

void tst_Calibration::betweenUnits()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(double, factor);
    QVERIFY(isNear(factorOf(add({}, {}), from, to), factor));
}

void tst_Calibration::unusableConstant_data()
{
    QTest::addColumn<bool>("isOfCamera");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const struct
    {
        bool isOfCamera;
        const char *key;
    } keys[] = {{true, "Electrons Per Count"},
                {true, "Quantum Efficiency"},
                {true, "Pixel Pitch"},
                {true, "Magnification"},
                {false, "Exposure Time"},
                {false, "f Number"},
                {false, "Lens and Filter Transmission"},
                {false, "Excitation Irradiance"}};
    for (const auto &key : keys) {
        const auto row = [&](const char *what, const QString &value) {
            QTest::addRow("%s %s", key.key, what) << key.isOfCamera << key.key << value;
        };
        row("is missing", QString());
        row("is zero", "0");
        row("is negative", "-3");
        row("is a word", "plenty");
        row("is nan", "nan");
        row("is infinite", "inf");
        row("is empty", "");
        row("has a decimal comma", "0,5");
    }
    row("a quantum efficiency in percent", true, "Quantum Efficiency", "80");
    row("a transmission in percent", false, "Lens and Filter Transmission", "50");
}

void tst_Calibration::unusableConstant()
{
    QFETCH(bool, isOfCamera);
    QFETCH(QString, key);
    QFETCH(QString, value);
    const QMap<QString, QString> change = {{key, value}};
    CVXSDataset *dataset = isOfCamera ? add({}, change) : add(change, {});
    LogCatcher log;
    QVERIFY(std::isnan(factorOf(dataset, COUNTS, RADIANT_EFFICIENCY)));
    QCOMPARE(log.failures().size(), 1);
    const QString line = log.failures().constFirst();
    QVERIFY2(line.contains(dataset->getClickNumber()) && line.contains(key), qPrintable(line));
    QVERIFY2(line.contains(value.isNull() ? "missing" : "\"" + value + "\""), qPrintable(line));

    CILImage target = TestStudy::image(3, 3, [](int, int) { return 1.0f; });
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANT_EFFICIENCY, &target, "test"), ESTATUS_BAD_VALUE);
    QVERIFY(target.isEmpty());
    QVERIFY2(log.failures().constLast().contains(key), qPrintable(log.failures().constLast()));
    QVERIFY(dataset->lastError().contains(key));
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_SUCCESS);
    QCOMPARE(target.getWidth(), 32u);
}

void tst_Calibration::anUnusableConstantOfAFileNamesTheFile()
{
    CVXSDataset *dataset = add({{"f Number", "0"}}, {});
    QTemporaryDir folder;
    QCOMPARE(dataset->saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    LogCatcher log;
    QVERIFY(std::isnan(factorOf(dataset, COUNTS, RADIANCE)));
    CILImage target;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &target, "test"), ESTATUS_BAD_VALUE);
    QCOMPARE(log.failures().size(), 2);
    for (const QString &line : log.failures())
        QVERIFY2(line.contains(folder.filePath("ClickInfo.txt")) && line.contains("f Number"),
                 qPrintable(line));
}

void tst_Calibration::aConstantThatIsNotNeededMayBeMissing()
{
    CVXSDataset *dataset = add({{"Excitation Irradiance", QString()}}, {});
    LogCatcher log;
    QVERIFY(isNear(factorOf(dataset, COUNTS, RADIANCE), DEFAULT_RADIANCE, 1e-8));
    CVXSDataset *bare = add({{"Exposure Time", QString()}}, {});
    QCOMPARE(factorOf(bare, COUNTS, COUNTS), 1.0);
    QVERIFY(log.failures().isEmpty());
}

void tst_Calibration::otherImageTypesHaveNoFactor_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("from");
    QTest::newRow("a photograph is not calibrated") << int(EIMAGE_PHOTOGRAPH) << COUNTS;
    QTest::newRow("an X-ray image is not calibrated") << int(EIMAGE_XRAY) << COUNTS;
    QTest::newRow("a unit that does not exist") << int(EIMAGE_LUMINESCENT) << "lux";
}

void tst_Calibration::otherImageTypesHaveNoFactor()
{
    QFETCH(int, type);
    QFETCH(QString, from);
    LogCatcher log;
    CVXSDataset *dataset = add({}, {});
    QVERIFY(std::isnan(VX_CalibrateIntensityWithFilterTrans(tag_eimagetype(type), dataset, from, RADIANCE)));
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().constFirst().contains(dataset->getClickNumber()));
}

void tst_Calibration::withoutDatasetThereIsNoFactor()
{
    QVERIFY(std::isnan(factorOf(nullptr, COUNTS, RADIANCE)));
}

void tst_Calibration::autoRange_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("max");
    // 1000 pixels: 0, 1, 2, ... 999; the last one is the saturated level of 65000 counts.
    QTest::newRow("in counts") << 1.0 << 998.0;
    QTest::newRow("the ceiling is in the image's unit") << 10.0 << 9980.0;
}

void tst_Calibration::autoRange()
{
    QFETCH(double, factor);
    QFETCH(double, max);
    CILImage image = TestStudy::image(100, 10, [&](int x, int y) {
        const int i = x + 100 * y;
        return i == 999 ? float(65000 * factor) : float(i * factor);
    });
    double low = -1.0;
    double high = -1.0;
    QCOMPARE(VX_LuminImageMinMax(&image, &low, &high, COUNTS, factor, 65000.0, 25000), ESTATUS_SUCCESS);
    QVERIFY2(isNear(high, max, 2e-3), qPrintable(QString::number(high)));
    QVERIFY2(isNear(low, 0.05 * max, 2e-2), qPrintable(QString::number(low)));
}

void tst_Calibration::autoRangeWithoutFinitePixelSaysSo()
{
    CILImage image = TestStudy::image(4, 4, [](int, int) { return std::numeric_limits<float>::quiet_NaN(); });
    double low = -7.0;
    double high = -8.0;
    QCOMPARE(VX_LuminImageMinMax(&image, &low, &high, COUNTS, 1.0, 65000.0, 25000), ESTATUS_NO_RANGE);
    QCOMPARE(low, -7.0);
    QCOMPARE(high, -8.0);
}

void tst_Calibration::theCeilingOfAddedPixelsIsThatManyTimesHigher()
{
    // Sums of 2 x 2: up to 200000 of 50000 each, below four times the ceiling; one pixel above it.
    CILImage image = TestStudy::image(200, 20, [](int x, int y) {
        return x / 2 == 99 && y / 2 == 9 ? 65000.0f : 500.0f * float(x / 2 + 1);
    });
    image.setValuesAddUp(true);
    QCOMPARE(image.downSample(100, 10, IL_RESAMPLE_BINNING), EIL_SUCCESS);
    double low = 0.0;
    double high = 0.0;
    QCOMPARE(VX_LuminImageMinMax(&image, &low, &high, COUNTS, 1.0, 65000.0, 25000), ESTATUS_SUCCESS);
    QVERIFY2(isNear(high, 200000.0, 1e-3), qPrintable(QString::number(high)));
}

void tst_Calibration::autoRangeOfAnUnknownUnitIsRefused()
{
    CILImage image = TestStudy::image(4, 4, [](int x, int) { return float(x); });
    double low = 0.0;
    double high = 0.0;
    QCOMPARE(VX_LuminImageMinMax(&image, &low, &high, "lux", 1.0, 65000.0, 25000), ESTATUS_BAD_VALUE);
    QCOMPARE(VX_LuminImageMinMax(nullptr, &low, &high, COUNTS, 1.0, 65000.0, 25000), ESTATUS_BAD_VALUE);
}

QTEST_GUILESS_MAIN(tst_Calibration)
#include "tst_Calibration.moc"
