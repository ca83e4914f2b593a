// SPDX-License-Identifier: MIT
#include "math/Formula.h"
#include "tests/support/PixelCompare.h"

#include <cfloat>
#include <limits>
#include <QtTest>

using namespace imagemath;
using namespace pixelcompare;

namespace {

constexpr float INF = std::numeric_limits<float>::infinity();
const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float SMALLEST = std::numeric_limits<float>::denorm_min();
constexpr int RATIO = 4;

struct Scene
{
    Pixels a, b, counts;
    float k = 1.0f;
    double scale = 10.0;
    Pixels mask; ///< empty: no tissue mask
};

Pixels times(Pixels x, float factor)
{
    for (float &v : x)
        v *= factor;
    return x;
}

Pixels times(Pixels x, const Pixels &y)
{
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] *= y[i];
    return x;
}

Pixels over(Pixels x, const Pixels &y)
{
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] /= y[i];
    return x;
}

Pixels plus(Pixels x, const Pixels &y)
{
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] += y[i];
    return x;
}

Pixels minus(Pixels x, const Pixels &y)
{
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] -= y[i];
    return x;
}

// One loop a step, each leaving a rounded float: what the formulas mean.
Pixels expectedOf(int index, const Scene &s)
{
    switch (index) {
    case 0:
        return plus(times(s.b, s.k), s.a);
    case 1:
        return minus(s.a, times(s.b, s.k));
    case 2:
        return times(times(s.b, s.k), s.a);
    case 3:
        return times(over(s.a, s.b), s.k);
    default:
        break;
    }
    Pixels inside(s.counts.size());
    for (std::size_t i = 0; i < inside.size(); ++i)
        inside[i] = s.counts[i] > s.k ? 1.0f : 0.0f;
    Pixels result = times(over(times(s.a, inside), s.b), float(s.scale));
    return s.mask.empty() ? result : times(result, s.mask);
}

CILImage evaluated(int index, const Scene &s, std::uint32_t width, std::uint32_t height)
{
    const CILImage a = imageOf(s.a, width, height), b = imageOf(s.b, width, height);
    const CILImage counts = imageOf(s.counts, width, height),
                   mask = imageOf(s.mask, s.mask.empty() ? 0 : width, s.mask.empty() ? 0 : height);
    CILImage result;
    formulaAt(index)->evaluate({a, b, counts, s.k, s.scale, s.mask.empty() ? nullptr : &mask}, result);
    return result;
}

// Mostly ordinary values, every eighth any bit pattern at all.
Pixels noise(std::size_t count, std::uint32_t seed)
{
    Pixels pixels(count);
    std::uint32_t state = seed;
    const auto next = [&state] {
        state ^= state << 13;
        state ^= state >> 17;
        return state ^= state << 5;
    };
    for (float &v : pixels) {
        const std::uint32_t bits = next();
        if (bits % 8 == 0) {
            const std::uint32_t any = next();
            std::memcpy(&v, &any, sizeof v);
        } else {
            v = float(bits) / 65536.0f - 1000.0f;
        }
    }
    return pixels;
}

const Pixels &specials()
{
    static const Pixels values{0.0f,         -0.0f,    1.0f,      -1.0f,   INF,     -INF,
                               NOT_A_NUMBER, SMALLEST, -SMALLEST, FLT_MIN, FLT_MAX, -FLT_MAX,
                               1.0e-20f,     1.0e20f,  0.1f,      3.0f};
    return values;
}

} // namespace

class tst_Formula : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTable_data();
    void theTable();
    void anIndexOutsideTheTableIsNoFormula_data();
    void anIndexOutsideTheTableIsNoFormula();
    void separatelyRoundedSteps_data();
    void separatelyRoundedSteps();
    void everyPairOfSpecialValues_data();
    void everyPairOfSpecialValues();
    void onePixel_data();
    void onePixel();
    void operandsStayAsTheyAre_data();
    void operandsStayAsTheyAre();
    void aLaterChangeOfAnOperandDoesNotReachTheResult_data();
    void aLaterChangeOfAnOperandDoesNotReachTheResult();
    void aCopyOfTheEarlierResultStays();
    void theResultCarriesTheBinningFactor_data();
    void theResultCarriesTheBinningFactor();
    void unequalSizesLeaveTheResultEmpty_data();
    void unequalSizesLeaveTheResultEmpty();
    void aMaskOfBitsServesAsTissueMask();
    void onlyTheRatioReadsCountsScaleAndMask();
};

void tst_Formula::theTable_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isThresholded");
    QTest::newRow("sum") << 0 << "A + B * k" << false;
    QTest::newRow("difference") << 1 << "A - B * k" << false;
    QTest::newRow("product") << 2 << "A * B * k" << false;
    QTest::newRow("quotient") << 3 << "(A / B) * k" << false;
    QTest::newRow("thresholded ratio") << 4 << "A/B if Counts(B)>k" << true;
}

void tst_Formula::theTable()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(bool, isThresholded);
    QCOMPARE(int(formulas().size()), 5);
    QCOMPARE(QString::fromLatin1(formulas().at(std::size_t(index)).text), text);
    QCOMPARE(formulas().at(std::size_t(index)).isThresholded, isThresholded);
    QCOMPARE(formulaAt(index), &formulas().at(std::size_t(index)));
    QCOMPARE(formulaNamed(text), formulaAt(index));
    QVERIFY(!formulaNamed(text + QLatin1Char(' ')));
}

void tst_Formula::anIndexOutsideTheTableIsNoFormula_data()
{
    QTest::addColumn<int>("index");
    for (int index : {-1, 5, 6, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        QTest::newRow(qPrintable(QString::number(index))) << index;
}

void tst_Formula::anIndexOutsideTheTableIsNoFormula()
{
    QFETCH(int, index);
    QVERIFY(!formulaAt(index));
}

void tst_Formula::separatelyRoundedSteps_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    const QVector<QSize> sizes{{1, 1}, {1, 257}, {257, 1}, {3, 5}, {127, 63}, {300, 300}, {2049, 1031}};
    for (int index = 0; index < 5; ++index) {
        for (const QSize &size : sizes) {
            QTest::newRow(qPrintable(QString("%1, %2 x %3")
                                         .arg(formulas().at(std::size_t(index)).text)
                                         .arg(size.width())
                                         .arg(size.height())))
                << index << size.width() << size.height();
        }
    }
}

void tst_Formula::separatelyRoundedSteps()
{
    QFETCH(int, index);
    QFETCH(int, width);
    QFETCH(int, height);
    const std::size_t count = std::size_t(width) * std::size_t(height);
    const bool large = count > 200000;
    Scene scene{noise(count, 1), noise(count, 2), noise(count, 3), 1.0f, 100.0, noise(count, 4)};
    for (float k :
         large ? Pixels{1.7f}
               : Pixels{1.7f, 0.0f, -0.0f, -2.5f, 1.0e-38f, 3.0e38f, 0.1f, SMALLEST, INF, NOT_A_NUMBER}) {
        scene.k = k;
        const QString wrong =
            difference(evaluated(index, scene, std::uint32_t(width), std::uint32_t(height)),
                       expectedOf(index, scene), std::uint32_t(width), std::uint32_t(height));
        QVERIFY2(wrong.isEmpty(), qPrintable(QString("k = %1: %2").arg(double(k)).arg(wrong)));
    }
}

void tst_Formula::everyPairOfSpecialValues_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < 5; ++index)
        QTest::newRow(formulas().at(std::size_t(index)).text) << index;
}

void tst_Formula::everyPairOfSpecialValues()
{
    QFETCH(int, index);
    const Pixels &values = specials();
    const std::size_t n = values.size();
    Scene scene;
    scene.a.resize(n * n);
    scene.b.resize(n * n);
    scene.counts.resize(n * n);
    for (std::size_t i = 0; i < n * n; ++i) {
        scene.a[i] = values[i / n];
        scene.b[i] = values[i % n];
        scene.counts[i] = values[(i / n + 3 * i) % n];
    }
    const auto side = std::uint32_t(n);
    for (float k : values) {
        scene.k = k;
        for (bool masked : {false, true}) {
            scene.mask = masked ? times(scene.counts, 1.0f) : Pixels();
            const QString wrong =
                difference(evaluated(index, scene, side, side), expectedOf(index, scene), side, side);
            QVERIFY2(wrong.isEmpty(), qPrintable(QString("k = %1: %2").arg(double(k)).arg(wrong)));
        }
    }
}

void tst_Formula::onePixel_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<float>("a");
    QTest::addColumn<float>("b");
    QTest::addColumn<float>("counts");
    QTest::addColumn<float>("k");
    QTest::addColumn<double>("scale");
    QTest::addColumn<float>("mask"); // negative: none
    QTest::addColumn<float>("expected");

    const float none = -1.0f;
    QTest::newRow("k of 0 leaves A of a sum") << 0 << 7.5f << 3.0f << 1.0f << 0.0f << 10.0 << none << 7.5f;
    QTest::newRow("k of 0 leaves A of a difference")
        << 1 << 7.5f << 3.0f << 1.0f << 0.0f << 10.0 << none << 7.5f;
    QTest::newRow("k of 0 makes a product 0") << 2 << 7.5f << 3.0f << 1.0f << 0.0f << 10.0 << none << 0.0f;
    QTest::newRow("k of 0 makes a quotient 0") << 3 << 7.5f << 3.0f << 1.0f << 0.0f << 10.0 << none << 0.0f;
    QTest::newRow("k of 0 does not hide an infinity of B in a sum")
        << 0 << 7.5f << INF << 1.0f << 0.0f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("sum") << 0 << 1.0f << 2.0f << 1.0f << 3.0f << 10.0 << none << 7.0f;
    QTest::newRow("difference takes B from A") << 1 << 1.0f << 2.0f << 1.0f << 3.0f << 10.0 << none << -5.0f;
    QTest::newRow("product") << 2 << 5.0f << 2.0f << 1.0f << 3.0f << 10.0 << none << 30.0f;
    QTest::newRow("quotient") << 3 << 6.0f << 4.0f << 1.0f << 3.0f << 10.0 << none << 4.5f;
    // 0.1f * 3 rounds up to 0.3f + 1 ulp before A comes in; a fused step would keep what rounding drops.
    QTest::newRow("the product is rounded before the sum")
        << 0 << -0.3f << 0.1f << 1.0f << 3.0f << 10.0 << none << (0.1f * 3.0f + -0.3f);
    QTest::newRow("a product takes k and B first: overflow times 0 is not a number")
        << 2 << 0.0f << 1.0e30f << 1.0f << 1.0e20f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("a product takes k and B first: underflow stays 0")
        << 2 << 1.0e30f << 1.0e-30f << 1.0f << 1.0e-20f << 10.0 << none << 0.0f;
    QTest::newRow("a quotient is taken before k: no overflow")
        << 3 << 1.0e30f << 1.0e30f << 1.0f << 1.0e20f << 10.0 << none << 1.0e20f;
    QTest::newRow("a positive pixel over zero is infinite")
        << 3 << 1.0f << 0.0f << 1.0f << 2.0f << 10.0 << none << INF;
    QTest::newRow("a negative pixel over zero is minus infinite")
        << 3 << -1.0f << 0.0f << 1.0f << 2.0f << 10.0 << none << -INF;
    QTest::newRow("a positive pixel over minus zero is minus infinite")
        << 3 << 1.0f << -0.0f << 1.0f << 2.0f << 10.0 << none << -INF;
    QTest::newRow("zero over zero is not a number")
        << 3 << 0.0f << 0.0f << 1.0f << 2.0f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("an infinite quotient times k of 0 is not a number")
        << 3 << 1.0f << 0.0f << 1.0f << 0.0f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("a denormal result is kept")
        << 1 << 3.0f * SMALLEST << SMALLEST << 1.0f << 1.0f << 10.0 << none << 2.0f * SMALLEST;
    QTest::newRow("minus zero stays minus zero")
        << 2 << 1.0f << -0.0f << 1.0f << 1.0f << 10.0 << none << -0.0f;

    QTest::newRow("ratio above the threshold")
        << RATIO << 6.0f << 4.0f << 101.0f << 100.0f << 10.0 << none << 15.0f;
    QTest::newRow("ratio scaled by 100")
        << RATIO << 6.0f << 4.0f << 101.0f << 100.0f << 100.0 << none << 150.0f;
    QTest::newRow("a counts pixel exactly equal to k is excluded")
        << RATIO << 6.0f << 4.0f << 100.0f << 100.0f << 10.0 << none << 0.0f;
    QTest::newRow("a counts pixel one step above k is included")
        << RATIO << 6.0f << 4.0f << std::nextafter(100.1f, 200.0f) << 100.1f << 10.0 << none << 15.0f;
    QTest::newRow("a counts pixel one step below k is excluded")
        << RATIO << 6.0f << 4.0f << std::nextafter(100.1f, 0.0f) << 100.1f << 10.0 << none << 0.0f;
    QTest::newRow("k with decimals equals the same counts")
        << RATIO << 6.0f << 4.0f << 0.1f << 0.1f << 10.0 << none << 0.0f;
    QTest::newRow("a counts pixel below k is excluded")
        << RATIO << 6.0f << 4.0f << 99.0f << 100.0f << 10.0 << none << 0.0f;
    QTest::newRow("a counts pixel that is not a number is excluded")
        << RATIO << 6.0f << 4.0f << NOT_A_NUMBER << 100.0f << 10.0 << none << 0.0f;
    QTest::newRow("an infinite counts pixel is included")
        << RATIO << 6.0f << 4.0f << INF << 100.0f << 10.0 << none << 15.0f;
    QTest::newRow("k that is not a number excludes all")
        << RATIO << 6.0f << 4.0f << 101.0f << NOT_A_NUMBER << 10.0 << none << 0.0f;
    QTest::newRow("a negative k is a threshold like any other")
        << RATIO << 6.0f << 4.0f << 0.0f << -1.0f << 10.0 << none << 15.0f;
    QTest::newRow("zero counts are above k of minus denormal")
        << RATIO << 6.0f << 4.0f << 0.0f << -SMALLEST << 10.0 << none << 15.0f;
    QTest::newRow("zero and minus zero are equal counts")
        << RATIO << 6.0f << 4.0f << 0.0f << -0.0f << 10.0 << none << 0.0f;
    QTest::newRow("k is no factor of the ratio")
        << RATIO << 6.0f << 4.0f << 1000.0f << 500.0f << 10.0 << none << 15.0f;
    QTest::newRow("A that is not a number stays so outside the counts")
        << RATIO << NOT_A_NUMBER << 4.0f << 1.0f << 100.0f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("an infinite A outside the counts is not a number")
        << RATIO << INF << 4.0f << 1.0f << 100.0f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("B of zero outside the counts is not a number")
        << RATIO << 6.0f << 0.0f << 1.0f << 100.0f << 10.0 << none << NOT_A_NUMBER;
    QTest::newRow("B of zero inside the counts is infinite")
        << RATIO << 6.0f << 0.0f << 101.0f << 100.0f << 10.0 << none << INF;
    QTest::newRow("a negative A outside the counts is minus zero")
        << RATIO << -6.0f << 4.0f << 1.0f << 100.0f << 10.0 << none << -0.0f;
    QTest::newRow("tissue keeps the ratio")
        << RATIO << 6.0f << 4.0f << 101.0f << 100.0f << 10.0 << 1.0f << 15.0f;
    QTest::newRow("outside the tissue the ratio is 0")
        << RATIO << 6.0f << 4.0f << 101.0f << 100.0f << 10.0 << 0.0f << 0.0f;
    QTest::newRow("the edge of the tissue takes a fraction")
        << RATIO << 6.0f << 4.0f << 101.0f << 100.0f << 10.0 << 0.25f << 3.75f;
    QTest::newRow("A that is not a number stays so outside the tissue")
        << RATIO << NOT_A_NUMBER << 4.0f << 101.0f << 100.0f << 10.0 << 0.0f << NOT_A_NUMBER;
    QTest::newRow("an infinite ratio outside the tissue is not a number")
        << RATIO << 6.0f << 0.0f << 101.0f << 100.0f << 10.0 << 0.0f << NOT_A_NUMBER;
    QTest::newRow("the scale comes before the tissue: overflow times 0 is not a number")
        << RATIO << 1.0e38f << 1.0f << 101.0f << 100.0f << 100.0 << 0.0f << NOT_A_NUMBER;
    QTest::newRow("the division comes before the scale: no overflow")
        << RATIO << 1.0e38f << 1.0e38f << 101.0f << 100.0f << 100.0 << none << 100.0f;
}

void tst_Formula::onePixel()
{
    QFETCH(int, index);
    QFETCH(float, a);
    QFETCH(float, b);
    QFETCH(float, counts);
    QFETCH(float, k);
    QFETCH(double, scale);
    QFETCH(float, mask);
    QFETCH(float, expected);
    const Scene scene{{a}, {b}, {counts}, k, scale, mask < 0.0f ? Pixels() : Pixels{mask}};
    QCOMPARE(difference(evaluated(index, scene, 1, 1), {expected}, 1, 1), QString());
}

void tst_Formula::operandsStayAsTheyAre_data()
{
    everyPairOfSpecialValues_data();
}

void tst_Formula::operandsStayAsTheyAre()
{
    QFETCH(int, index);
    const std::size_t count = 64 * 48;
    const Scene scene{noise(count, 5), noise(count, 6), noise(count, 7), 2.0f, 10.0, noise(count, 8)};
    const CILImage a = imageOf(scene.a, 64, 48), b = imageOf(scene.b, 64, 48),
                   counts = imageOf(scene.counts, 64, 48);
    const CILImage mask = imageOf(scene.mask, 64, 48);
    CILImage result;
    formulaAt(index)->evaluate({a, b, counts, scene.k, scene.scale, &mask}, result);
    QVERIFY(!result.isEmpty());
    result *= 3.0;
    QCOMPARE(difference(a, scene.a, 64, 48), QString());
    QCOMPARE(difference(b, scene.b, 64, 48), QString());
    QCOMPARE(difference(counts, scene.counts, 64, 48), QString());
    QCOMPARE(difference(mask, scene.mask, 64, 48), QString());
}

void tst_Formula::aLaterChangeOfAnOperandDoesNotReachTheResult_data()
{
    everyPairOfSpecialValues_data();
}

void tst_Formula::aLaterChangeOfAnOperandDoesNotReachTheResult()
{
    QFETCH(int, index);
    const std::size_t count = 64 * 48;
    const Scene scene{noise(count, 5), noise(count, 6), noise(count, 7), 2.0f, 10.0, noise(count, 8)};
    CILImage a = imageOf(scene.a, 64, 48), b = imageOf(scene.b, 64, 48),
             counts = imageOf(scene.counts, 64, 48);
    CILImage mask = imageOf(scene.mask, 64, 48);
    CILImage result;
    formulaAt(index)->evaluate({a, b, counts, scene.k, scene.scale, &mask}, result);
    // Written through the pixels' own pointer and through an operation, before anybody has read the result.
    for (CILImage *image : {&a, &b, &counts})
        std::fill_n(static_cast<float *>(image->get_data()), count, 1.0f);
    mask *= 0.0;
    QCOMPARE(difference(result, expectedOf(index, scene), 64, 48), QString());
}

void tst_Formula::aCopyOfTheEarlierResultStays()
{
    const Scene scene{noise(100, 5), noise(100, 6), noise(100, 7), 2.0f, 10.0, {}};
    const CILImage a = imageOf(scene.a, 10, 10), b = imageOf(scene.b, 10, 10),
                   counts = imageOf(scene.counts, 10, 10);
    CILImage result;
    formulaAt(0)->evaluate({a, b, counts, 2.0f}, result);
    const CILImage earlier = result;
    formulaAt(1)->evaluate({a, b, counts, 2.0f}, result);
    QCOMPARE(difference(earlier, expectedOf(0, scene), 10, 10), QString());
    QCOMPARE(difference(result, expectedOf(1, scene), 10, 10), QString());
}

void tst_Formula::theResultCarriesTheBinningFactor_data()
{
    everyPairOfSpecialValues_data();
}

void tst_Formula::theResultCarriesTheBinningFactor()
{
    QFETCH(int, index);
    const CILImage a = imageOf({1, 2, 3, 4}, 2, 2, 8.0f), b = imageOf({4, 3, 2, 1}, 2, 2, 8.0f),
                   counts = imageOf({4, 3, 2, 1}, 2, 2, 8.0f);
    CILImage result;
    result.setBinningFactor(3.0f);
    formulaAt(index)->evaluate({a, b, counts, 2.0f}, result);
    QCOMPARE(result.binningFactor(), 8.0f);
    QCOMPARE(int(result.getType()), int(VXS_FLOAT));
}

void tst_Formula::unequalSizesLeaveTheResultEmpty_data()
{
    everyPairOfSpecialValues_data();
}

void tst_Formula::unequalSizesLeaveTheResultEmpty()
{
    QFETCH(int, index);
    QString message;
    CILImage::setMessageHandler(
        [&message](int, const std::string &text) { message = QString::fromStdString(text); });
    const CILImage a = imageOf(noise(12, 1), 4, 3), b = imageOf(noise(12, 2), 3, 4);
    CILImage result = imageOf({1.0f}, 1, 1);
    formulaAt(index)->evaluate({a, b, b, 2.0f}, result);
    QCOMPARE(result.getWidth(), 0u);
    QCOMPARE(result.getHeight(), 0u);
    QVERIFY(!message.isEmpty());
    CILImage::setMessageHandler({});
}

void tst_Formula::aMaskOfBitsServesAsTissueMask()
{
    const Scene scene{{6, 6, 6, 6}, {4, 4, 4, 4}, {101, 101, 1, 1}, 100.0f, 10.0, {1, 0, 1, 0}};
    CILImage mask = imageOf(scene.mask, 2, 2);
    QVERIFY(mask.ChangeType(VXS_MASK));
    const CILImage a = imageOf(scene.a, 2, 2), b = imageOf(scene.b, 2, 2),
                   counts = imageOf(scene.counts, 2, 2);
    CILImage result;
    formulaAt(RATIO)->evaluate({a, b, counts, scene.k, scene.scale, &mask}, result);
    QCOMPARE(difference(result, {15.0f, 0.0f, 0.0f, 0.0f}, 2, 2), QString());
}

void tst_Formula::onlyTheRatioReadsCountsScaleAndMask()
{
    const CILImage a = imageOf({6, 8}, 2, 1), b = imageOf({4, 2}, 2, 1);
    for (int index = 0; index < 5; ++index) {
        CILImage plain, other;
        const CILImage mask = imageOf({0.5f, 0.5f}, 2, 1);
        formulaAt(index)->evaluate({a, b, imageOf({5, 5}, 2, 1), 2.0f, 10.0, nullptr}, plain);
        formulaAt(index)->evaluate({a, b, imageOf({7, 0}, 2, 1), 2.0f, 100.0, &mask}, other);
        QCOMPARE(difference(other, plain).isEmpty(), index != RATIO);
    }
}

QTEST_GUILESS_MAIN(tst_Formula)
#include "tst_Formula.moc"
