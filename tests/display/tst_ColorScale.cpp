// SPDX-License-Identifier: MIT
#include "display/ColorScale.h"
#include "display/DisplayUnitNames.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <limits>
#include <QtTest>

using namespace colorscale;

namespace {

const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const float INFINITE = std::numeric_limits<float>::infinity();
const QString RADIANCE = "Radiance (Photons)", RADIANT_EFFICIENCY = "Radiant Efficiency";

CILImage row(const QVector<float> &values)
{
    return TestStudy::image(values.size(), 1, [&values](int x, int) { return values[x]; });
}

// Rising from 100 to beyond what the camera can count, in any unit whose factor is given.
CILImage saturated(double factor)
{
    return TestStudy::image(64, 64,
                            [factor](int x, int y) { return float((100.0 + 17.0 * (x + 64 * y)) * factor); });
}

Limits hostRange(CILImage image, const QString &unit, double factor)
{
    Limits limits{-1.0, -1.0};
    if (VX_LuminImageMinMax(&image, &limits.min, &limits.max, unit, factor, 65000.0, 25000) !=
        ESTATUS_SUCCESS)
        qWarning("the host found no range");
    return limits;
}

QString text(const Limits &limits)
{
    return QString("%1 to %2").arg(limits.min, 0, 'g', 17).arg(limits.max, 0, 'g', 17);
}

} // namespace

class tst_ColorScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unitNames();
    void fullRangeOfAnImage_data();
    void fullRangeOfAnImage();
    void unitedLimits_data();
    void unitedLimits();
    void radianceFactorOfADataset();
    void factors_data();
    void factors();
    void unitNamesInAnyCase_data();
    void unitNamesInAnyCase();
    void transilluminationIsScanned_data();
    void transilluminationIsScanned();
    void failureLeavesTheLimits_data();
    void failureLeavesTheLimits();
    void positive_data();
    void positive();
    void positiveOfOtherPixelTypes_data();
    void positiveOfOtherPixelTypes();
    void theImageStaysAsItIs();
};

void tst_ColorScale::unitNames()
{
    QCOMPARE(int(DisplayUnitNames.size()), 4);
    QCOMPARE(displayUnitName(EUNIT_COUNTS), QString("counts"));
    QCOMPARE(displayUnitName(EUNIT_RADIANCE), QString("Radiance (Photons)"));
    QCOMPARE(displayUnitName(EUNIT_RADIANT_EFFICIENCY), QString("Radiant Efficiency"));
    QCOMPARE(displayUnitName(EUNIT_EFFICIENCY), QString("efficiency"));
}

void tst_ColorScale::fullRangeOfAnImage_data()
{
    QTest::addColumn<QVector<float>>("pixels");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::newRow("smallest and largest") << QVector<float>{3, -2, 7, 0} << -2.0 << 7.0;
    QTest::newRow("one pixel") << QVector<float>{4.5f} << 4.5 << 4.5;
    QTest::newRow("all negative") << QVector<float>{-3, -2} << -3.0 << -2.0;
    QTest::newRow("pixels that are not finite do not count")
        << QVector<float>{NOT_A_NUMBER, INFINITE, 5, -INFINITE, 6} << 5.0 << 6.0;
    QTest::newRow("single precision, widened") << QVector<float>{0.1f, 0.2f} << double(0.1f) << double(0.2f);
    QTest::newRow("no finite pixel") << QVector<float>{NOT_A_NUMBER, INFINITE} << 0.0 << 0.0;
}

void tst_ColorScale::fullRangeOfAnImage()
{
    QFETCH(QVector<float>, pixels);
    QFETCH(double, min);
    QFETCH(double, max);
    QCOMPARE(text(fullRange(row(pixels))), text({min, max}));
}

void tst_ColorScale::unitedLimits_data()
{
    QTest::addColumn<double>("minA");
    QTest::addColumn<double>("maxA");
    QTest::addColumn<double>("minB");
    QTest::addColumn<double>("maxB");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::newRow("apart") << 1.0 << 2.0 << 5.0 << 6.0 << 1.0 << 6.0;
    QTest::newRow("the other way round") << 5.0 << 6.0 << 1.0 << 2.0 << 1.0 << 6.0;
    QTest::newRow("one within the other") << 1.0 << 9.0 << 4.0 << 5.0 << 1.0 << 9.0;
    QTest::newRow("overlapping") << -1.0 << 5.0 << 4.0 << 8.0 << -1.0 << 8.0;
    QTest::newRow("equal") << 2.0 << 3.0 << 2.0 << 3.0 << 2.0 << 3.0;
    QTest::newRow("one without a positive pixel") << 1.0e10 << 0.0 << 4.0 << 8.0 << 4.0 << 8.0;
}

void tst_ColorScale::unitedLimits()
{
    QFETCH(double, minA);
    QFETCH(double, maxA);
    QFETCH(double, minB);
    QFETCH(double, maxB);
    QFETCH(double, min);
    QFETCH(double, max);
    QCOMPARE(text(united({minA, maxA}, {minB, maxB})), text({min, max}));
}

void tst_ColorScale::radianceFactorOfADataset()
{
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030405";
    CVXSDataset *dataset = study.add(spec);
    const double factor = radianceFactor(dataset);
    QVERIFY(factor > 0.0 && factor != 1.0);
    QCOMPARE(factor, VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset, "counts", RADIANCE));
    // A tenth of the exposure makes a count worth ten times as much.
    spec.clickNumber = "AB20260102030406";
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "6"}};
    QVERIFY(std::abs(radianceFactor(study.add(spec)) / factor - 10.0) < 1.0e-9);
}

void tst_ColorScale::factors_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("power"); // null: not recorded
    QTest::addColumn<double>(
        "plain"); // share of the radiance factor in the automatic range; 0: no conversion
    QTest::addColumn<double>("extended"); // the same in the extended one
    const QString none;
    QTest::newRow("counts") << "counts" << none << 0.0 << 0.0;
    row("counts, with power", "counts", "4", 0.0, 0.0);
    QTest::newRow("radiance") << RADIANCE << none << 1.0 << 1.0;
    QTest::newRow("radiance, power does not matter") << RADIANCE << "4" << 1.0 << 1.0;
    QTest::newRow("radiant efficiency, no power") << RADIANT_EFFICIENCY << none << 0.0 << 1.0;
    QTest::newRow("radiant efficiency, power above 0") << RADIANT_EFFICIENCY << "4" << 0.0 << 0.25;
    QTest::newRow("radiant efficiency, power between 0 and 1") << RADIANT_EFFICIENCY << "0.5" << 0.0 << 2.0;
    QTest::newRow("radiant efficiency, power 0") << RADIANT_EFFICIENCY << "0" << 0.0 << 1.0;
    QTest::newRow("radiant efficiency, power below 0") << RADIANT_EFFICIENCY << "-4" << 0.0 << 1.0;
    QTest::newRow("efficiency") << "efficiency" << none << 0.0 << 0.0;
    row("efficiency, with power", "efficiency", "4", 0.0, 0.0);
}

void tst_ColorScale::factors()
{
    QFETCH(QString, unit);
    QFETCH(QString, power);
    QFETCH(double, plain);
    QFETCH(double, extended);
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030405";
    if (!power.isNull())
        spec.luminescentKeys = {{clickinfo::KEY_BOTTOM_POWER, power}};
    CVXSDataset *dataset = study.add(spec);
    const double radiance = radianceFactor(dataset);
    const auto factorOf = [radiance](double share) { return share > 0.0 ? radiance * share : 1.0; };
    // Each image saturates half-way for its factor, so that a wrong factor finds another range.
    for (double share : {0.0, 0.25, 1.0, 2.0}) {
        CILImage image = saturated(factorOf(share) * 2.0);
        Limits found{-1.0, -1.0};
        QCOMPARE(autoRange(image, dataset, unit, &found), ESTATUS_SUCCESS);
        QCOMPARE(text(found), text(hostRange(image, unit, factorOf(plain))));
        found = {-1.0, -1.0};
        QCOMPARE(extendedAutoRange(image, dataset, unit, &found), ESTATUS_SUCCESS);
        const double factor = extended == 0.25  ? radiance / 4.0
                              : extended == 2.0 ? radiance / 0.5
                                                : factorOf(extended);
        QCOMPARE(text(found), text(hostRange(image, unit, factor)));
    }
    CILImage image = saturated(radiance * 2.0);
    QVERIFY(text(hostRange(image, unit, 1.0)) != text(hostRange(image, unit, radiance)));
    QVERIFY(text(hostRange(image, unit, radiance)) != text(hostRange(image, unit, radiance / 2.0)));
}

void tst_ColorScale::unitNamesInAnyCase_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<double>("share"); // of the radiance factor; 0: no conversion
    QTest::newRow("RADIANCE (PHOTONS)") << "RADIANCE (PHOTONS)" << 1.0;
    QTest::newRow("radiance (photons)") << "radiance (photons)" << 1.0;
    QTest::newRow("rAdIaNt eFfIcIeNcY") << "rAdIaNt eFfIcIeNcY" << 0.25;
    QTest::newRow("COUNTS") << "COUNTS" << 0.0;
    QTest::newRow("Efficiency") << "Efficiency" << 0.0;
}

void tst_ColorScale::unitNamesInAnyCase()
{
    QFETCH(QString, unit);
    QFETCH(double, share);
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030405";
    spec.luminescentKeys = {{clickinfo::KEY_BOTTOM_POWER, "4"}};
    CVXSDataset *dataset = study.add(spec);
    const double radiance = radianceFactor(dataset);
    CILImage image = saturated(radiance * 2.0);
    Limits found;
    QCOMPARE(extendedAutoRange(image, dataset, unit, &found), ESTATUS_SUCCESS);
    QCOMPARE(text(found), text(hostRange(image, unit,
                                         share == 1.0  ? radiance
                                         : share > 0.0 ? radiance / 4.0
                                                       : 1.0)));
    QCOMPARE(autoRange(image, dataset, unit, &found), ESTATUS_SUCCESS);
    QCOMPARE(text(found), text(hostRange(image, unit, share == 1.0 ? radiance : 1.0)));
}

void tst_ColorScale::transilluminationIsScanned_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<bool>("scanned");
    QTest::newRow("transillumination in efficiency")
        << QString(clickinfo::KIND_TRANSILLUMINATION) << "efficiency" << true;
    QTest::newRow("transillumination in Efficiency")
        << QString(clickinfo::KIND_TRANSILLUMINATION) << "EFFICIENCY" << true;
    QTest::newRow("transillumination in counts")
        << QString(clickinfo::KIND_TRANSILLUMINATION) << "counts" << false;
    QTest::newRow("transillumination in radiance")
        << QString(clickinfo::KIND_TRANSILLUMINATION) << RADIANCE << false;
    QTest::newRow("transillumination in radiant efficiency")
        << QString(clickinfo::KIND_TRANSILLUMINATION) << RADIANT_EFFICIENCY << false;
    QTest::newRow("transfluorescence in efficiency")
        << QString(clickinfo::KIND_TRANSFLUORESCENT) << "efficiency" << false;
    QTest::newRow("fluorescence in efficiency")
        << QString(clickinfo::KIND_FLUORESCENT) << "efficiency" << false;
    QTest::newRow("luminescence in efficiency")
        << QString(clickinfo::KIND_LUMINESCENT) << "efficiency" << false;
}

void tst_ColorScale::transilluminationIsScanned()
{
    QFETCH(QString, kind);
    QFETCH(QString, unit);
    QFETCH(bool, scanned);
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030405";
    spec.kind = kind;
    CVXSDataset *dataset = study.add(spec);
    CILImage image = row({-4.0f, 0.0f, 0.25f, 800.0f, 3.0f, 2.0f});
    Limits found;
    QCOMPARE(extendedAutoRange(image, dataset, unit, &found), ESTATUS_SUCCESS);
    QCOMPARE(text(found) == text({0.25, 800.0}), scanned);
    // The plain automatic range never scans.
    QCOMPARE(autoRange(image, dataset, unit, &found), ESTATUS_SUCCESS);
    QVERIFY(text(found) != text({0.25, 800.0}));
    // A scan has no failure, whatever it finds.
    CILImage dark = row({-1.0f, 0.0f, NOT_A_NUMBER});
    if (scanned) {
        QCOMPARE(extendedAutoRange(dark, dataset, unit, &found), ESTATUS_SUCCESS);
        QCOMPARE(text(found), text({1.0e10, 0.0}));
    }
}

void tst_ColorScale::failureLeavesTheLimits_data()
{
    QTest::addColumn<QVector<float>>("pixels");
    QTest::addColumn<QString>("unit");
    for (const QString &unit : {QString("counts"), RADIANCE, RADIANT_EFFICIENCY, QString("efficiency")})
        QTest::newRow(qPrintable("no finite pixel, " + unit))
            << QVector<float>{NOT_A_NUMBER, INFINITE, -INFINITE} << unit;
    QTest::newRow("a unit that does not exist") << QVector<float>{1, 2, 3} << "lumens";
}

void tst_ColorScale::failureLeavesTheLimits()
{
    QFETCH(QVector<float>, pixels);
    QFETCH(QString, unit);
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030405";
    CVXSDataset *dataset = study.add(spec);
    CILImage image = row(pixels);
    Limits limits{3.0, 8.0};
    QVERIFY(autoRange(image, dataset, unit, &limits) != ESTATUS_SUCCESS);
    QCOMPARE(text(limits), text({3.0, 8.0}));
    QVERIFY(extendedAutoRange(image, dataset, unit, &limits) != ESTATUS_SUCCESS);
    QCOMPARE(text(limits), text({3.0, 8.0}));
}

void tst_ColorScale::positive_data()
{
    QTest::addColumn<QVector<float>>("pixels");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    const float smallest = std::numeric_limits<float>::denorm_min();
    QTest::newRow("zero and below do not count") << QVector<float>{-5, 0, -0.0f, 2, 9, 4} << 2.0 << 9.0;
    QTest::newRow("one positive pixel") << QVector<float>{0, 3, 0} << 3.0 << 3.0;
    QTest::newRow("all zero") << QVector<float>{0, 0} << 1.0e10 << 0.0;
    QTest::newRow("all negative") << QVector<float>{-1, -2} << 1.0e10 << 0.0;
    QTest::newRow("not a number") << QVector<float>{NOT_A_NUMBER} << 1.0e10 << 0.0;
    QTest::newRow("infinity does not count") << QVector<float>{INFINITE, 7, -INFINITE} << 7.0 << 7.0;
    QTest::newRow("the smallest denormal is positive")
        << QVector<float>{smallest, 1} << double(smallest) << 1.0;
    QTest::newRow("the lower limit starts at 1e10")
        << QVector<float>{2.0e10f, 5.0e10f} << 1.0e10 << double(5.0e10f);
    QTest::newRow("single precision, widened") << QVector<float>{0.1f, 0.2f} << double(0.1f) << double(0.2f);
    QTest::newRow("no pixel") << QVector<float>() << 1.0e10 << 0.0;
}

void tst_ColorScale::positive()
{
    QFETCH(QVector<float>, pixels);
    QFETCH(double, min);
    QFETCH(double, max);
    QCOMPARE(text(positiveRange(pixels.isEmpty() ? CILImage() : row(pixels))), text({min, max}));
}

void tst_ColorScale::positiveOfOtherPixelTypes_data()
{
    QTest::addColumn<int>("type");
    for (VXSDataTypes type : {VXS_UINT8, VXS_UINT16, VXS_UINT32, VXS_DOUBLE})
        QTest::newRow(qPrintable(QString("pixel type %1").arg(int(type)))) << int(type);
}

void tst_ColorScale::positiveOfOtherPixelTypes()
{
    QFETCH(int, type);
    CILImage image = row({0, 200, 7, 0, 31});
    QVERIFY(image.ChangeType(VXSDataTypes(type)));
    QCOMPARE(text(positiveRange(image)), text({7.0, 200.0}));
    QCOMPARE(int(image.getType()), type);
}

void tst_ColorScale::theImageStaysAsItIs()
{
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030405";
    spec.kind = clickinfo::KIND_TRANSILLUMINATION;
    CVXSDataset *dataset = study.add(spec);
    CILImage image = row({1, 2, 3, 4});
    const std::uint64_t content = image.contentId();
    Limits limits;
    for (int unit = 0; unit < 4; ++unit) {
        autoRange(image, dataset, displayUnitName(tag_edisplayunit(unit)), &limits);
        extendedAutoRange(image, dataset, displayUnitName(tag_edisplayunit(unit)), &limits);
    }
    fullRange(image);
    positiveRange(image);
    QCOMPARE(image.contentId(), content);
    QCOMPARE(int(image.getType()), int(VXS_FLOAT));
}

QTEST_GUILESS_MAIN(tst_ColorScale)
#include "tst_ColorScale.moc"
