// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "math/OperandPreparation.h"
#include "tests/support/PixelCompare.h"
#include "tests/support/TestStudy.h"

#include <limits>
#include <QtTest>

using namespace imagemath;
using namespace pixelcompare;

namespace {

// Whole numbers, so that a block's sum is exact.
float numbered(int x, int y)
{
    return float((x * 37 + y * 101) % 1009);
}

CILImage binned(int width, int height, float binning)
{
    CILImage image = TestStudy::image(width, height, numbered);
    image.setBinningFactor(binning);
    return image;
}

// Means of block x block pixels; what remains at the right and bottom edge is dropped.
Pixels blockMeans(const CILImage &fine, int block, int width, int height)
{
    Pixels means;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double sum = 0.0;
            for (int j = 0; j < block; ++j)
                for (int i = 0; i < block; ++i)
                    sum += fine.pixelAt(std::uint32_t(x * block + i), std::uint32_t(y * block + j));
            means.push_back(float(sum / (block * block)));
        }
    }
    return means;
}

// One step of the last bit, relative: a mean may be taken as sum times 1 / n.
QString meansDiffer(const CILImage &image, const Pixels &expected, int width, int height)
{
    return differenceAbove(1.3e-4, image, expected, std::uint32_t(width), std::uint32_t(height));
}

const double NOT_RECORDED = std::numeric_limits<double>::quiet_NaN();
const double INFINITE = std::numeric_limits<double>::infinity();

} // namespace

Q_DECLARE_METATYPE(imagemath::Combination)

class tst_OperandPreparation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comparing_data();
    void comparing();
    void messages_data();
    void messages();
    void reconciling_data();
    void reconciling();
    void equalBinningTouchesNothing();
    void onlyTheFinerImageBecomesFloat();
    void meansOfIntegersKeepTheirFractions();
    void aRefusedDownSampleKeepsTheBinningFactor_data();
    void aRefusedDownSampleKeepsTheBinningFactor();
    void countsThatCannotFollowKeepTheirFactor();
    void blocksFollowTheSizesNotTheFactor();
    void aMeanHoldsWhatIsNotANumber();
    void countsAddUpWhateverTheUnitOfB();
};

void tst_OperandPreparation::comparing_data()
{
    QTest::addColumn<double>("fovA");
    QTest::addColumn<QSize>("sizeA");
    QTest::addColumn<float>("binningA");
    QTest::addColumn<double>("fovB");
    QTest::addColumn<QSize>("sizeB");
    QTest::addColumn<float>("binningB");
    QTest::addColumn<Combination>("expected");
    const QSize s32(32, 32), s16(16, 16), s33(33, 32), s32x33(32, 33);
    const auto possible = Combination::Possible, fov = Combination::DifferentFieldOfView,
               size = Combination::DifferentSize;
    QTest::newRow("all equal") << 12.5 << s32 << 4.0f << 12.5 << s32 << 4.0f << possible;
    QTest::newRow("half the pixels at twice the binning")
        << 12.5 << s32 << 4.0f << 12.5 << s16 << 8.0f << possible;
    QTest::newRow("twice the pixels at half the binning")
        << 12.5 << s16 << 8.0f << 12.5 << s32 << 4.0f << possible;
    QTest::newRow("1024 at 1 against 256 at 4")
        << 12.5 << QSize(1024, 1024) << 1.0f << 12.5 << QSize(256, 256) << 4.0f << possible;
    QTest::newRow("96 at 4 against 64 at 6")
        << 12.5 << QSize(96, 96) << 4.0f << 12.5 << QSize(64, 64) << 6.0f << possible;
    QTest::newRow("fields of view differ in the last bit upwards")
        << 12.5 << s32 << 4.0f << std::nextafter(12.5, 13.0) << s32 << 4.0f << fov;
    QTest::newRow("fields of view differ in the last bit downwards")
        << 12.5 << s32 << 4.0f << std::nextafter(12.5, 12.0) << s32 << 4.0f << fov;
    QTest::newRow("fields of view that single precision cannot tell apart")
        << 12.5 << s32 << 4.0f << 12.5 + 1.0e-9 << s32 << 4.0f << fov;
    QTest::newRow("0.1 + 0.2 is not 0.3") << 0.1 + 0.2 << s32 << 4.0f << 0.3 << s32 << 4.0f << fov;
    QTest::newRow("A's field of view is not recorded")
        << NOT_RECORDED << s32 << 4.0f << 12.5 << s32 << 4.0f << fov;
    QTest::newRow("B's field of view is not recorded")
        << 12.5 << s32 << 4.0f << NOT_RECORDED << s32 << 4.0f << fov;
    QTest::newRow("neither field of view is recorded")
        << NOT_RECORDED << s32 << 4.0f << NOT_RECORDED << s32 << 4.0f << fov;
    QTest::newRow("both fields of view infinite")
        << INFINITE << s32 << 4.0f << INFINITE << s32 << 4.0f << possible;
    QTest::newRow("zero and minus zero are equal fields of view")
        << 0.0 << s32 << 4.0f << -0.0 << s32 << 4.0f << possible;
    QTest::newRow("widths differ by a pixel") << 12.5 << s32 << 4.0f << 12.5 << s33 << 4.0f << size;
    QTest::newRow("heights differ by a pixel") << 12.5 << s32 << 4.0f << 12.5 << s32x33 << 4.0f << size;
    QTest::newRow("equal pixels at other binning") << 12.5 << s32 << 4.0f << 12.5 << s32 << 8.0f << size;
    QTest::newRow("width and height exchanged")
        << 12.5 << QSize(32, 16) << 4.0f << 12.5 << QSize(16, 32) << 4.0f << size;
    QTest::newRow("binning differs in the last bit")
        << 12.5 << s32 << 4.0f << 12.5 << s32 << std::nextafter(4.0f, 5.0f) << size;
    // 1000 * 0.1f is 100.00000149..., which single precision rounds to 100.
    QTest::newRow("products are equal in single precision only")
        << 12.5 << QSize(1000, 1000) << 0.1f << 12.5 << QSize(100, 100) << 1.0f << possible;
    QTest::newRow("only the widths' products are equal")
        << 12.5 << QSize(1000, 999) << 0.1f << 12.5 << QSize(100, 100) << 1.0f << size;
    QTest::newRow("a binning factor that is not a number equals none")
        << 12.5 << s32 << std::numeric_limits<float>::quiet_NaN() << 12.5 << s32
        << std::numeric_limits<float>::quiet_NaN() << size;
    QTest::newRow("the field of view is judged before the size")
        << 12.5 << s32 << 4.0f << 13.0 << s33 << 4.0f << fov;
    QTest::newRow("an empty image against a full one")
        << 12.5 << QSize(0, 0) << 4.0f << 12.5 << s32 << 4.0f << size;
    QTest::newRow("two empty images")
        << 12.5 << QSize(0, 0) << 4.0f << 12.5 << QSize(0, 0) << 4.0f << possible;
}

void tst_OperandPreparation::comparing()
{
    QFETCH(double, fovA);
    QFETCH(QSize, sizeA);
    QFETCH(float, binningA);
    QFETCH(double, fovB);
    QFETCH(QSize, sizeB);
    QFETCH(float, binningB);
    QFETCH(Combination, expected);
    const auto blank = [](const QSize &size, float binning) {
        CILImage image;
        if (!size.isEmpty())
            image.InitWithType(VXS_FLOAT, std::uint32_t(size.width()), std::uint32_t(size.height()));
        image.setBinningFactor(binning);
        return image;
    };
    QCOMPARE(int(compareOperands(fovA, blank(sizeA, binningA), fovB, blank(sizeB, binningB))), int(expected));
}

void tst_OperandPreparation::messages_data()
{
    QTest::addColumn<Combination>("combination");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("possible") << Combination::Possible << QStringList();
    QTest::newRow("field of view") << Combination::DifferentFieldOfView
                                   << QStringList{"Can't combine images", "having different FOV."};
    QTest::newRow("size") << Combination::DifferentSize
                          << QStringList{"Can't combine images", "of different sizes."};
}

void tst_OperandPreparation::messages()
{
    QFETCH(Combination, combination);
    QFETCH(QStringList, lines);
    QCOMPARE(messageOf(combination), lines);
}

void tst_OperandPreparation::reconciling_data()
{
    QTest::addColumn<QSize>("sizeA");
    QTest::addColumn<float>("binningA");
    QTest::addColumn<QSize>("sizeB");
    QTest::addColumn<float>("binningB");
    QTest::addColumn<QSize>("afterA");
    QTest::addColumn<float>("factorA");
    QTest::addColumn<QSize>("afterB");
    QTest::addColumn<float>("factorB");
    QTest::newRow("4 and 8 halve A") << QSize(64, 48) << 4.0f << QSize(32, 24) << 8.0f << QSize(32, 24)
                                     << 8.0f << QSize(32, 24) << 8.0f;
    QTest::newRow("8 and 4 halve B and its counts")
        << QSize(32, 24) << 8.0f << QSize(64, 48) << 4.0f << QSize(32, 24) << 8.0f << QSize(32, 24) << 8.0f;
    QTest::newRow("1024 at 1 and 256 at 4") << QSize(1024, 1024) << 1.0f << QSize(256, 256) << 4.0f
                                            << QSize(256, 256) << 4.0f << QSize(256, 256) << 4.0f;
    QTest::newRow("256 at 4 and 1024 at 1") << QSize(256, 256) << 4.0f << QSize(1024, 1024) << 1.0f
                                            << QSize(256, 256) << 4.0f << QSize(256, 256) << 4.0f;
    QTest::newRow("4 and 6 leave unequal grids")
        << QSize(96, 96) << 4.0f << QSize(64, 64) << 6.0f << QSize(96, 96) << 4.0f << QSize(64, 64) << 6.0f;
    QTest::newRow("6 and 4 leave unequal grids")
        << QSize(64, 64) << 6.0f << QSize(96, 96) << 4.0f << QSize(64, 64) << 6.0f << QSize(96, 96) << 4.0f;
    QTest::newRow("4 and 10 halve A")
        << QSize(50, 50) << 4.0f << QSize(20, 20) << 10.0f << QSize(25, 25) << 8.0f << QSize(20, 20) << 10.0f;
    QTest::newRow("3 and 8 halve A and leave 6")
        << QSize(64, 64) << 3.0f << QSize(24, 24) << 8.0f << QSize(32, 32) << 6.0f << QSize(24, 24) << 8.0f;
    QTest::newRow("an odd width of 1023 becomes 511") << QSize(1023, 1023) << 1.0f << QSize(511, 511) << 2.0f
                                                      << QSize(511, 511) << 2.0f << QSize(511, 511) << 2.0f;
    QTest::newRow("an odd B of 1023 becomes 511") << QSize(511, 511) << 2.0f << QSize(1023, 1023) << 1.0f
                                                  << QSize(511, 511) << 2.0f << QSize(511, 511) << 2.0f;
    QTest::newRow("an odd height alone")
        << QSize(32, 31) << 4.0f << QSize(16, 15) << 8.0f << QSize(16, 15) << 8.0f << QSize(16, 15) << 8.0f;
    // 1 / 0.1f is 9.99999985... in double precision, which would truncate to 9.
    QTest::newRow("the factor is a single-precision quotient")
        << QSize(100, 100) << 0.1f << QSize(10, 10) << 1.0f << QSize(10, 10) << 10.0f * 0.1f << QSize(10, 10)
        << 1.0f;
    QTest::newRow("one column") << QSize(2, 64) << 4.0f << QSize(1, 32) << 8.0f << QSize(1, 32) << 8.0f
                                << QSize(1, 32) << 8.0f;
}

void tst_OperandPreparation::reconciling()
{
    QFETCH(QSize, sizeA);
    QFETCH(float, binningA);
    QFETCH(QSize, sizeB);
    QFETCH(float, binningB);
    QFETCH(QSize, afterA);
    QFETCH(float, factorA);
    QFETCH(QSize, afterB);
    QFETCH(float, factorB);
    const CILImage fineA = binned(sizeA.width(), sizeA.height(), binningA);
    const CILImage fineB = binned(sizeB.width(), sizeB.height(), binningB);
    CILImage fineCounts = fineB;
    fineCounts *= 2.0;
    CILImage a = fineA, b = fineB, counts = fineCounts;
    reconcileBinning(a, b, counts);

    const auto check = [](const CILImage &image, const CILImage &before, const QSize &after, float factor) {
        const int block = int(before.getWidth()) / after.width();
        QString wrong = meansDiffer(image, blockMeans(before, block, after.width(), after.height()),
                                    after.width(), after.height());
        if (wrong.isEmpty() && image.binningFactor() != factor)
            wrong = QString("binning factor %1").arg(double(image.binningFactor()));
        return wrong;
    };
    QCOMPARE(check(a, fineA, afterA, factorA), QString());
    QCOMPARE(check(b, fineB, afterB, factorB), QString());
    QCOMPARE(check(counts, fineCounts, afterB, factorB), QString());
}

void tst_OperandPreparation::equalBinningTouchesNothing()
{
    CILImage a = binned(33, 21, 4.0f), b = binned(33, 21, 4.0f), counts = binned(33, 21, 4.0f);
    QVERIFY(a.ChangeType(VXS_UINT16));
    const std::uint64_t contentA = a.contentId(), contentB = b.contentId(),
                        contentCounts = counts.contentId();
    reconcileBinning(a, b, counts);
    QCOMPARE(a.contentId(), contentA);
    QCOMPARE(b.contentId(), contentB);
    QCOMPARE(counts.contentId(), contentCounts);
    QCOMPARE(int(a.getType()), int(VXS_UINT16));
    QCOMPARE(a.binningFactor(), 4.0f);
}

void tst_OperandPreparation::onlyTheFinerImageBecomesFloat()
{
    CILImage a = binned(32, 32, 4.0f), b = binned(16, 16, 8.0f), counts = binned(16, 16, 8.0f);
    for (CILImage *image : {&a, &b, &counts})
        QVERIFY(image->ChangeType(VXS_UINT16));
    const std::uint64_t contentB = b.contentId(), contentCounts = counts.contentId();
    reconcileBinning(a, b, counts);
    QCOMPARE(int(a.getType()), int(VXS_FLOAT));
    QCOMPARE(b.contentId(), contentB);
    QCOMPARE(counts.contentId(), contentCounts);
}

void tst_OperandPreparation::meansOfIntegersKeepTheirFractions()
{
    CILImage a = binned(1, 1, 8.0f);
    CILImage b = imageOf({1, 2, 2, 2}, 2, 2, 4.0f), counts = imageOf({1, 1, 1, 2}, 2, 2, 4.0f);
    QVERIFY(b.ChangeType(VXS_UINT16));
    QVERIFY(counts.ChangeType(VXS_UINT16));
    reconcileBinning(a, b, counts);
    QCOMPARE(difference(b, {1.75f}, 1, 1), QString());
    QCOMPARE(difference(counts, {1.25f}, 1, 1), QString());
}

void tst_OperandPreparation::aRefusedDownSampleKeepsTheBinningFactor_data()
{
    QTest::addColumn<QSize>("fine");
    QTest::newRow("the new width would be 0") << QSize(3, 32);
    QTest::newRow("the new height would be 0") << QSize(32, 3);
    QTest::newRow("an empty image") << QSize(0, 0);
}

void tst_OperandPreparation::aRefusedDownSampleKeepsTheBinningFactor()
{
    QFETCH(QSize, fine);
    for (bool aIsFine : {true, false}) {
        CILImage finer;
        if (!fine.isEmpty())
            finer = binned(fine.width(), fine.height(), 2.0f);
        finer.setBinningFactor(2.0f);
        CILImage counts = finer, coarse = binned(4, 4, 8.0f);
        if (aIsFine)
            reconcileBinning(finer, coarse, counts);
        else
            reconcileBinning(coarse, finer, counts);
        QCOMPARE(finer.binningFactor(), 2.0f);
        QCOMPARE(counts.binningFactor(), 2.0f);
        QCOMPARE(coarse.binningFactor(), 8.0f);
        QCOMPARE(QSize(int(finer.getWidth()), int(finer.getHeight())), fine);
    }
}

void tst_OperandPreparation::countsThatCannotFollowKeepTheirFactor()
{
    CILImage a = binned(16, 16, 8.0f), b = binned(32, 32, 4.0f), counts;
    counts.setBinningFactor(4.0f);
    reconcileBinning(a, b, counts);
    QCOMPARE(b.getWidth(), 16u);
    QCOMPARE(b.binningFactor(), 8.0f);
    QVERIFY(counts.isEmpty());
    QCOMPARE(counts.binningFactor(), 4.0f);
}

void tst_OperandPreparation::countsAddUpWhateverTheUnitOfB()
{
    // B is in radiance, its counts are counts.
    CILImage a = binned(1, 1, 8.0f);
    CILImage b = imageOf({1, 2, 2, 2}, 2, 2, 4.0f), counts = imageOf({1, 1, 1, 2}, 2, 2, 4.0f);
    counts.setValuesAddUp(true);
    reconcileBinning(a, b, counts);
    QCOMPARE(difference(b, {1.75f}, 1, 1), QString());
    QCOMPARE(difference(counts, {5.0f}, 1, 1), QString());
    QCOMPARE(counts.pixelsAdded(), 4.0);
}

void tst_OperandPreparation::blocksFollowTheSizesNotTheFactor()
{
    // A factor of 3 makes one pixel of five; that pixel is then the mean of all 5 x 5.
    const CILImage fine = binned(5, 5, 1.0f);
    CILImage a = fine, b = binned(1, 1, 3.0f), counts = binned(1, 1, 3.0f);
    reconcileBinning(a, b, counts);
    QCOMPARE(meansDiffer(a, blockMeans(fine, 5, 1, 1), 1, 1), QString());
    QCOMPARE(a.binningFactor(), 3.0f);
}

void tst_OperandPreparation::aMeanHoldsWhatIsNotANumber()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    CILImage a = imageOf({nan, 1, 2, 3, 1, 1, 2, 3}, 4, 2, 4.0f), b = binned(2, 1, 8.0f), counts = b;
    reconcileBinning(a, b, counts);
    QCOMPARE(difference(a, {nan, 2.5f}, 2, 1), QString());
}

QTEST_GUILESS_MAIN(tst_OperandPreparation)
#include "tst_OperandPreparation.moc"
