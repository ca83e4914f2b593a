// SPDX-License-Identifier: MIT
// The window's computation by its numbers: the right images, in the right unit, through the right formula.
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/Formula.h"
#include "math/TissueMask.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/WindowProbe.h"
#include "tests/window/calculation/PixelStudy.h"

#include <limits>
#include <QComboBox>
#include <QtTest>

using namespace pixelstudy;

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
    WindowProbe window;
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
    WindowProbe window;
    window.select(m_study.sequence(), aIsFine ? FINE : A, aIsFine ? A : FINE);
    window.m_pOperationCB->setCurrentIndex(index);
    window.m_kValue = 511.0f;
    window.calculateResultImage();
    const Pixels fine = countsBinnedByTwo(calibrated(m_study, FINE, EUNIT_COUNTS)),
                 coarse = calibrated(m_study, A, EUNIT_COUNTS);
    const Pixels &a = aIsFine ? fine : coarse, &b = aIsFine ? coarse : fine;
    QCOMPARE(difference(window.m_imageA, a, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_imageB, b, SIZE, SIZE), QString());
    QCOMPARE(difference(window.m_resultImage, expected(index, a, b, b, 511.0f), SIZE, SIZE), QString());
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
    WindowProbe window;
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
    WindowProbe window;
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
    WindowProbe window;
    window.select(m_study.sequence(), A, FINE);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = 512.0f;
    window.calculateResultImage();
    const Pixels counts = countsBinnedByTwo(calibrated(m_study, FINE, EUNIT_COUNTS)),
                 result = pixelsOf(window.m_resultImage);
    QCOMPARE(result.size(), counts.size());
    for (std::size_t i = 0; i < counts.size(); ++i)
        QCOMPARE(result[i] > 0.0f, counts[i] > 512.0f);
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
    WindowProbe window;
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
    WindowProbe window;
    window.select(m_study.sequence(), A, clickB);
    window.m_pOperationCB->setCurrentIndex(RATIO);
    window.m_kValue = k;
    window.calculateResultImage();
    QCOMPARE(difference(window.m_resultImage, Pixels(SIZE * SIZE, 0.0f), SIZE, SIZE), QString());
}

void tst_CalculatedPixels::aNewKDoesNotTouchTheOperands()
{
    WindowProbe window;
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
    WindowProbe window;
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
    WindowProbe window;
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
    WindowProbe window;
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
    WindowProbe window;
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
    WindowProbe window;
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
    WindowProbe window;
    window.select(study.sequence(), "CD20260102030405", "CD20260102030406");
    LogCatcher log;
    window.calculateResultImage();
    QVERIFY(!log.failures().isEmpty());
    QVERIFY(window.m_imageB.isEmpty());
    QCOMPARE(window.m_messages, (QStringList{"Can't combine images", "of different sizes."}));
    study.sequence()->setActiveUnit(EUNIT_COUNTS);
    window.calculateResultImage();
    QCOMPARE(window.m_messages, QStringList());
    QCOMPARE(window.m_resultImage.getWidth(), 32u);
}

QTEST_MAIN(tst_CalculatedPixels)
#include "tst_CalculatedPixels.moc"
