// SPDX-License-Identifier: MIT
// The window's computation by its numbers: the right images, in the right unit, through the right formula.
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/Formula.h"
#include "math/TissueMask.h"
#include "tests/math/ImageMathProbe.h"
#include "tests/math/PixelCompare.h"

#include <limits>
#include <QComboBox>
#include <QtTest>

using namespace pixelcompare;

namespace {

const QString A = "AB20260102030405", B = "AB20260102030406", FINE = "AB20260102030407",
              HIGH = "AB20260102030408", PHOTO = "AB20260102030409", SMALL_PHOTO = "AB20260102030410",
              EQUAL_PHOTO = "AB20260102030411", SPECIAL = "AB20260102030412", TALL_PHOTO = "AB20260102030413";
constexpr int SIZE = 32;
constexpr int RATIO = 4;

float countsA(int x, int y)
{
    return 500.0f + 3.25f * float(x) + 0.7f * float(y);
}
float countsB(int x, int y)
{
    return 90.0f + float((x * 5 + y * 3) % 40);
}
float countsFine(int x, int y)
{
    return float((x * 7 + y * 11) % 256);
}
float bright(int x, int y, int size)
{
    return x > size / 3 && y > size / 5 ? 5000.0f + float(x) : 100.0f + float(y % 3);
}

void fill(TestStudy &study)
{
    ClickSpec spec;
    spec.clickNumber = A;
    spec.counts = countsA;
    study.add(spec);
    spec.clickNumber = B;
    spec.counts = countsB;
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "7"}};
    study.add(spec);
    spec.clickNumber = HIGH;
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "7"}, {clickinfo::KEY_FLUORESCENCE_LEVEL, "hIGH"}};
    study.add(spec);
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "7"}, {clickinfo::KEY_FLUORESCENCE_LEVEL, "High "}};
    const auto withPhotograph = [&](const QString &number, int width, int height) {
        spec.clickNumber = number;
        spec.photographWidth = width;
        spec.photographHeight = height;
        spec.photograph = [width](int x, int y) { return bright(x, y, width); };
        study.add(spec);
    };
    withPhotograph(PHOTO, 75, 75);
    withPhotograph(SMALL_PHOTO, 20, 20);
    withPhotograph(EQUAL_PHOTO, SIZE, SIZE);
    withPhotograph(TALL_PHOTO, SIZE, 2 * SIZE);
    ClickSpec fine;
    fine.clickNumber = FINE;
    fine.width = fine.height = 2 * SIZE;
    fine.binning = 2.0f;
    fine.counts = countsFine;
    study.add(fine);
    ClickSpec special;
    special.clickNumber = SPECIAL;
    special.counts = [](int x, int y) {
        const float values[] = {0.0f,
                                -0.0f,
                                std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity(),
                                -5.0f,
                                1.0e-42f,
                                3.0e38f,
                                100.0f};
        return values[(x + 3 * y) % 8];
    };
    study.add(special);
}

Pixels calibrated(const TestStudy &study, const QString &click, tag_edisplayunit unit)
{
    CILImage image;
    study.sequence()->getDataset(click)->getCalibratedLuminImage(unit, &image, "test");
    return pixelsOf(image);
}

Pixels halved(const Pixels &fine)
{
    Pixels coarse;
    for (int y = 0; y < SIZE; ++y) {
        for (int x = 0; x < SIZE; ++x) {
            const auto at = [&](int dx, int dy) {
                return double(fine[std::size_t(2 * y + dy) * 2 * SIZE + std::size_t(2 * x + dx)]);
            };
            coarse.push_back(float((at(0, 0) + at(1, 0) + at(0, 1) + at(1, 1)) / 4.0));
        }
    }
    return coarse;
}

float apply(int index, float a, float b, float counts, float k, float scale, float mask)
{
    const float kb = b * k;
    switch (index) {
    case 0:
        return kb + a;
    case 1:
        return a - kb;
    case 2:
        return kb * a;
    case 3: {
        const float quotient = a / b;
        return quotient * k;
    }
    default: {
        const float kept = a * (counts > k ? 1.0f : 0.0f);
        const float ratio = kept / b;
        const float scaled = ratio * scale;
        return scaled * mask;
    }
    }
}

Pixels expected(int index, const Pixels &a, const Pixels &b, const Pixels &counts, float k,
                float scale = 10.0f, const Pixels &mask = {})
{
    Pixels result;
    for (std::size_t i = 0; i < a.size(); ++i)
        result.push_back(apply(index, a[i], b[i], counts[i], k, scale, mask.empty() ? 1.0f : mask[i]));
    return result;
}

} // namespace

class tst_CalculatedPixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        QVERIFY(m_study.save());
    }
    void cleanup() { m_study.sequence()->setActiveUnit(EUNIT_COUNTS); }
    void formulas_data();
    void formulas();
    void theFinerImageIsBinnedFirst_data();
    void theFinerImageIsBinnedFirst();
    void theSequencesUnitDecides_data();
    void theSequencesUnitDecides();
    void theRatioComparesCounts_data();
    void theRatioComparesCounts();
    void theRatioOfBinnedCounts();
    void theRatiosScaleAndTissue_data();
    void theRatiosScaleAndTissue();
    void kAtOrAboveAllCountsGivesZeros_data();
    void kAtOrAboveAllCountsGivesZeros();
    void aNewKDoesNotTouchTheOperands();
    void theTissueMaskFollowsB();
    void theLevelIsReadFromBEachTime();
    void theSameClickTwice();
    void thePixelsOfTheDatasetsStay();
    void theResultSurvivesFailedRuns();
    void anUncalibratedOperandIsEmpty();

private:
    TestStudy m_study;
};

void tst_CalculatedPixels::formulas_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<float>("k");
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    for (int index = 0; index < 5; ++index) {
        for (float k : {1.7f, 0.0f, -3.0f, 100.0f, std::numeric_limits<float>::infinity()}) {
            for (const auto &pair : {qMakePair(A, B), qMakePair(SPECIAL, B), qMakePair(A, SPECIAL),
                                     qMakePair(SPECIAL, SPECIAL)}) {
                QTest::newRow(qPrintable(QString("%1, k = %2, %3 and %4")
                                             .arg(imagemath::formulas().at(std::size_t(index)).text)
                                             .arg(double(k))
                                             .arg(pair.first == SPECIAL ? "special values" : "A",
                                                  pair.second == SPECIAL ? "special values" : "B")))
                    << index << k << pair.first << pair.second;
            }
        }
    }
}

void tst_CalculatedPixels::formulas()
{
    QFETCH(int, index);
    QFETCH(float, k);
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    ImageMathProbe window;
    window.select(m_study.sequence(), clickA, clickB);
    window.m_pOperationCB->setCurrentIndex(index);
    window.m_kValue = k;
    window.calculateResultImage();
    const Pixels a = calibrated(m_study, clickA, EUNIT_COUNTS), b = calibrated(m_study, clickB, EUNIT_COUNTS);
    QCOMPARE(a.size(), std::size_t(SIZE * SIZE));
    QCOMPARE(difference(window.m_resultImage, expected(index, a, b, b, k), SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_imageA, a, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_imageB, b, SIZE, SIZE), QString());
    QCOMPARE(window.m_resultImage.binningFactor(), 4.0f);
    QCOMPARE(int(window.m_resultImage.getType()), int(VXS_FLOAT));
}

void tst_CalculatedPixels::theFinerImageIsBinnedFirst_data()
{
    QTest::addColumn<bool>("aIsFine");
    QTest::addColumn<int>("index");
    for (int index = 0; index < 5; ++index) {
        QTest::newRow(qPrintable(QString("A is finer, formula %1").arg(index))) << true << index;
        QTest::newRow(qPrintable(QString("B is finer, formula %1").arg(index))) << false << index;
    }
}

void tst_CalculatedPixels::theFinerImageIsBinnedFirst()
{
    QFETCH(bool, aIsFine);
    QFETCH(int, index);
    ImageMathProbe window;
    window.select(m_study.sequence(), aIsFine ? FINE : A, aIsFine ? A : FINE);
    window.m_pOperationCB->setCurrentIndex(index);
    window.m_kValue = 127.75f;
    window.calculateResultImage();
    const Pixels fine = halved(calibrated(m_study, FINE, EUNIT_COUNTS)),
                 coarse = calibrated(m_study, A, EUNIT_COUNTS);
    const Pixels &a = aIsFine ? fine : coarse, &b = aIsFine ? coarse : fine;
    QCOMPARE(difference(window.m_imageA, a, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_imageB, b, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_resultImage, expected(index, a, b, b, 127.75f), SIZE, SIZE), QString());
    QCOMPARE(window.m_imageA.binningFactor(), 4.0f);
    QCOMPARE(window.m_imageB.binningFactor(), 4.0f);
    QCOMPARE(window.m_resultImage.binningFactor(), 4.0f);
}

void tst_CalculatedPixels::theSequencesUnitDecides_data()
{
    QTest::addColumn<int>("active");
    QTest::addColumn<int>("own");
    for (int active : {0, 1, 2}) {
        for (int own : {0, 1, 2})
            QTest::newRow(
                qPrintable(QString("sequence in unit %1, datasets in unit %2").arg(active).arg(own)))
                << active << own;
    }
}

void tst_CalculatedPixels::theSequencesUnitDecides()
{
    QFETCH(int, active);
    QFETCH(int, own);
    m_study.sequence()->setActiveUnit(tag_edisplayunit(active));
    for (const QString &click : {A, B})
        m_study.sequence()->getDataset(click)->setUnit(tag_edisplayunit(own));
    ImageMathProbe window;
    window.select(m_study.sequence(), A, B);
    window.m_kValue = 2.0f;
    window.calculateResultImage();
    const Pixels a = calibrated(m_study, A, tag_edisplayunit(active)),
                 b = calibrated(m_study, B, tag_edisplayunit(active));
    QCOMPARE(difference(window.m_imageA, a, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_imageB, b, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_resultImage, expected(1, a, b, b, 2.0f), SIZE, SIZE), QString());
    if (active == 1) {
        // The two exposures differ, so the units are told apart by more than one common factor.
        const double factor = VX_CalibrateIntensityWithFilterTrans(
            EIMAGE_LUMINESCENT, m_study.sequence()->getDataset(A), "counts", "Radiance (Photons)");
        QVERIFY(std::abs(double(a[0]) / (500.0 * factor) - 1.0) < 1.0e-6);
    }
}

void tst_CalculatedPixels::theRatioComparesCounts_data()
{
    QTest::addColumn<int>("unit");
    QTest::newRow("in counts") << 0;
    QTest::newRow("in radiance") << 1;
    QTest::newRow("in radiant efficiency") << 2;
}

void tst_CalculatedPixels::theRatioComparesCounts()
{
    QFETCH(int, unit);
    m_study.sequence()->setActiveUnit(tag_edisplayunit(unit));
    ImageMathProbe window;
    window.select(m_study.sequence(), A, B);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = 110.0f; // some of B's counts are exactly this
    window.calculateResultImage();
    const Pixels a = calibrated(m_study, A, tag_edisplayunit(unit)),
                 b = calibrated(m_study, B, tag_edisplayunit(unit));
    const Pixels counts = calibrated(m_study, B, EUNIT_COUNTS);
    QVERIFY(std::count(counts.begin(), counts.end(), 110.0f) > 0);
    QCOMPARE(difference(window.m_resultImage, expected(RATIO, a, b, counts, 110.0f), SIZE, SIZE), QString());
    const Pixels result = pixelsOf(window.m_resultImage);
    for (std::size_t i = 0; i < counts.size(); ++i)
        QCOMPARE(result[i] > 0.0f, counts[i] > 110.0f);
}

void tst_CalculatedPixels::theRatioOfBinnedCounts()
{
    m_study.sequence()->setActiveUnit(EUNIT_RADIANCE);
    ImageMathProbe window;
    window.select(m_study.sequence(), A, FINE);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = 128.0f;
    window.calculateResultImage();
    const Pixels counts = halved(calibrated(m_study, FINE, EUNIT_COUNTS)),
                 result = pixelsOf(window.m_resultImage);
    QCOMPARE(result.size(), counts.size());
    for (std::size_t i = 0; i < counts.size(); ++i)
        QCOMPARE(result[i] > 0.0f, counts[i] > 128.0f);
}

void tst_CalculatedPixels::theRatiosScaleAndTissue_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<float>("scale");
    QTest::addColumn<bool>("tissue");
    QTest::newRow("no level, no photograph") << A << B << 10.0f << false;
    QTest::newRow("level High in mixed case") << A << HIGH << 100.0f << false;
    QTest::newRow("only B's level counts") << HIGH << B << 10.0f << false;
    QTest::newRow("level High with a blank, photograph wider than A") << A << PHOTO << 10.0f << true;
    QTest::newRow("photograph narrower than A") << A << SMALL_PHOTO << 10.0f << true;
    QTest::newRow("photograph as wide as A") << A << EQUAL_PHOTO << 10.0f << true;
    QTest::newRow("photograph as wide as A but taller") << A << TALL_PHOTO << 10.0f << true;
    QTest::newRow("only B's photograph counts") << PHOTO << B << 10.0f << false;
    QTest::newRow("A is not a number somewhere outside the tissue") << SPECIAL << PHOTO << 10.0f << true;
}

void tst_CalculatedPixels::theRatiosScaleAndTissue()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    QFETCH(float, scale);
    QFETCH(bool, tissue);
    ImageMathProbe window;
    window.select(m_study.sequence(), clickA, clickB);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = 100.0f;
    window.calculateResultImage();
    Pixels mask;
    if (tissue) {
        const CILImage *photograph = m_study.sequence()->getDataset(clickB)->getCoreImage(EIMAGE_PHOTOGRAPH);
        QVERIFY(photograph);
        mask = pixelsOf(imagemath::tissueMaskOfPhotograph(*photograph, SIZE, SIZE));
        QVERIFY(std::count(mask.begin(), mask.end(), 0.0f) > 0);
        QVERIFY(std::count(mask.begin(), mask.end(), 1.0f) > 0);
    }
    const Pixels a = calibrated(m_study, clickA, EUNIT_COUNTS), b = calibrated(m_study, clickB, EUNIT_COUNTS);
    const Pixels wanted = expected(RATIO, a, b, b, 100.0f, scale, mask);
    QCOMPARE(difference(window.m_resultImage, wanted, SIZE, SIZE), QString());
    // The same again, from what was remembered.
    window.calculateResultImage();
    QCOMPARE(difference(window.m_resultImage, wanted, SIZE, SIZE), QString());
}

void tst_CalculatedPixels::kAtOrAboveAllCountsGivesZeros_data()
{
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<float>("k");
    QTest::newRow("k is the largest count") << B << 129.0f;
    QTest::newRow("k is above all counts") << B << 1.0e6f;
    QTest::newRow("k is above all counts, with tissue") << PHOTO << 1.0e6f;
}

void tst_CalculatedPixels::kAtOrAboveAllCountsGivesZeros()
{
    QFETCH(QString, clickB);
    QFETCH(float, k);
    ImageMathProbe window;
    window.select(m_study.sequence(), A, clickB);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = k;
    window.calculateResultImage();
    QCOMPARE(difference(window.m_resultImage, Pixels(SIZE * SIZE, 0.0f), SIZE, SIZE), QString());
}

void tst_CalculatedPixels::aNewKDoesNotTouchTheOperands()
{
    ImageMathProbe window;
    window.select(m_study.sequence(), A, PHOTO);
    const Pixels a = calibrated(m_study, A, EUNIT_COUNTS), b = calibrated(m_study, PHOTO, EUNIT_COUNTS);
    const CILImage *photograph = m_study.sequence()->getDataset(PHOTO)->getCoreImage(EIMAGE_PHOTOGRAPH);
    const Pixels mask = pixelsOf(imagemath::tissueMaskOfPhotograph(*photograph, SIZE, SIZE));
    for (int round = 0; round < 3; ++round) {
        for (int index = 0; index < 5; ++index) {
            for (float k : {95.0f, 110.0f, 120.5f}) {
                window.m_pOperationCB->setCurrentIndex(index);
                window.m_kValue = k;
                window.calculateResultImage();
                QCOMPARE(difference(window.m_resultImage,
                                    expected(index, a, b, b, k, 10.0f, index == RATIO ? mask : Pixels()),
                                    SIZE, SIZE),
                         QString());
                QCOMPARE(difference(window.m_imageA, a, SIZE, SIZE), QString());
                QCOMPARE(difference(window.m_imageB, b, SIZE, SIZE), QString());
            }
        }
    }
}

void tst_CalculatedPixels::theTissueMaskFollowsB()
{
    ImageMathProbe window;
    window.m_pOperationCB->setCurrentIndex(RATIO);
    const Pixels a = calibrated(m_study, A, EUNIT_COUNTS);
    for (const QString &click : {PHOTO, EQUAL_PHOTO, PHOTO, SMALL_PHOTO, B, TALL_PHOTO}) {
        window.select(m_study.sequence(), A, click);
        window.m_kValue = 100.0f;
        window.calculateResultImage();
        const CILImage *photograph = m_study.sequence()->getDataset(click)->getCoreImage(EIMAGE_PHOTOGRAPH);
        const Pixels mask =
            photograph ? pixelsOf(imagemath::tissueMaskOfPhotograph(*photograph, SIZE, SIZE)) : Pixels();
        const Pixels b = calibrated(m_study, click, EUNIT_COUNTS);
        QCOMPARE(difference(window.m_resultImage, expected(RATIO, a, b, b, 100.0f, 10.0f, mask), SIZE, SIZE),
                 QString());
    }
}

void tst_CalculatedPixels::theLevelIsReadFromBEachTime()
{
    TestStudy study("CD20260102030405_SEQ");
    ClickSpec spec;
    spec.clickNumber = "CD20260102030405";
    spec.counts = [](int, int) { return 50.0f; };
    CVXSDataset *dataset = study.add(spec);
    CPLSection *section = (*dataset->getClickInfo())[clickinfo::SECTION_LUMINESCENT];
    ImageMathProbe window;
    window.select(study.sequence(), spec.clickNumber, spec.clickNumber);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = 1.0f;
    for (const char *level : {"Low", "High", "", "HIGH"}) {
        section->setValue(clickinfo::KEY_FLUORESCENCE_LEVEL, QString(level));
        window.calculateResultImage();
        QCOMPARE(window.m_resultImage.pixelAt(3, 3),
                 QString(level).compare("high", Qt::CaseInsensitive) == 0 ? 100.0 : 10.0);
    }
}

void tst_CalculatedPixels::theSameClickTwice()
{
    ImageMathProbe window;
    window.select(m_study.sequence(), FINE, FINE);
    window.m_kValue = 1.0f;
    window.calculateResultImage();
    QCOMPARE(difference(window.m_resultImage, Pixels(4 * SIZE * SIZE, 0.0f), 2 * SIZE, 2 * SIZE), QString());
    QCOMPARE(window.m_imageA.binningFactor(), 2.0f);
    QCOMPARE(difference(window.m_imageA, window.m_imageB), QString());
}

void tst_CalculatedPixels::thePixelsOfTheDatasetsStay()
{
    const Pixels fine = calibrated(m_study, FINE, EUNIT_COUNTS), a = calibrated(m_study, A, EUNIT_COUNTS);
    ImageMathProbe window;
    for (int index = 0; index < 5; ++index) {
        window.select(m_study.sequence(), A, FINE);
        window.m_pOperationCB->setCurrentIndex(index);
        window.m_kValue = 3.0f;
        window.calculateResultImage();
    }
    QVERIFY(calibrated(m_study, FINE, EUNIT_COUNTS) == fine);
    QVERIFY(calibrated(m_study, A, EUNIT_COUNTS) == a);
    QCOMPARE(m_study.sequence()->getDataset(FINE)->getCoreImage(EIMAGE_LUMINESCENT)->getWidth(),
             std::uint32_t(2 * SIZE));
    QCOMPARE(m_study.sequence()->getDataset(FINE)->getCoreImage(EIMAGE_LUMINESCENT)->binningFactor(), 2.0f);
}

void tst_CalculatedPixels::theResultSurvivesFailedRuns()
{
    ImageMathProbe window;
    window.select(m_study.sequence(), A, B);
    window.m_kValue = 2.0f;
    window.calculateResultImage();
    const Pixels good = pixelsOf(window.m_resultImage);
    QCOMPARE(good.size(), std::size_t(SIZE * SIZE));
    for (const QString &click : {QString("AB20260102039999"), QString()}) {
        window.select(m_study.sequence(), A, click);
        window.calculateResultImage();
        QCOMPARE(difference(window.m_resultImage, good, SIZE, SIZE), QString());
    }
}

void tst_CalculatedPixels::anUncalibratedOperandIsEmpty()
{
    TestStudy study("CD20260102030405_SEQ");
    ClickSpec spec;
    spec.clickNumber = "CD20260102030405";
    study.add(spec);
    spec.clickNumber = "CD20260102030406";
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "0"}};
    study.add(spec);
    study.sequence()->setActiveUnit(EUNIT_RADIANCE);
    ImageMathProbe window;
    window.select(study.sequence(), "CD20260102030405", "CD20260102030406");
    ToolLog log;
    window.calculateResultImage();
    QVERIFY(log.failures() > 0);
    QVERIFY(window.m_imageB.isEmpty());
    QCOMPARE(window.m_messages, (QStringList{"Can't combine images", "of different sizes."}));
    study.sequence()->setActiveUnit(EUNIT_COUNTS);
    window.calculateResultImage();
    QCOMPARE(window.m_messages, QStringList());
    QCOMPARE(window.m_resultImage.getWidth(), 32u);
}

QTEST_MAIN(tst_CalculatedPixels)
#include "tst_CalculatedPixels.moc"
