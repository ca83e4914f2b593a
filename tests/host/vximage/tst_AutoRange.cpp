// SPDX-License-Identifier: MIT
#include "host/vximage/AutoRange.h"
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <QtTest>

Q_DECLARE_METATYPE(CILImage)

namespace {

const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const float INF = std::numeric_limits<float>::infinity();

/// The documented range, from a sorted list of all pixels and a histogram of all of them.
std::pair<double, double> naive(const CILImage &image, double ceiling, int bins)
{
    std::vector<double> kept, finite;
    for (const double v : maker::values(image)) {
        if (std::isfinite(v)) {
            finite.push_back(v);
            if (v < ceiling)
                kept.push_back(v);
        }
    }
    if (kept.empty())
        kept = finite;
    const double lo = *std::min_element(kept.begin(), kept.end()),
                 hi = *std::max_element(kept.begin(), kept.end());
    if (lo == hi)
        return {lo, hi};
    std::vector<std::size_t> count(size_t(bins), 0);
    for (const double v : kept)
        ++count[size_t(std::min(bins - 1, int((v - lo) / (hi - lo) * bins)))];
    std::size_t below = 0;
    int bin = 0;
    while (double(below + count[size_t(bin)]) < std::ceil(double(kept.size()) * 0.9995))
        below += count[size_t(bin++)];
    const double high = bin + 1 == bins ? hi : lo + (hi - lo) * (bin + 1) / bins;
    const double low = std::max(0.05 * hi, lo);
    return {low < high ? low : lo, high};
}

} // namespace

class tst_AutoRange : public QObject
{
    Q_OBJECT

private slots:
    void equalsTheDefinition_data()
    {
        QTest::addColumn<CILImage>("image");
        QTest::addColumn<double>("ceiling");
        QTest::addColumn<int>("bins");
        QTest::newRow("uniform floats") << maker::random(VXS_FLOAT, 501, 407, 50000, 1) << 65000.0 << 25000;
        QTest::newRow("16-bit with saturated pixels")
            << maker::random(VXS_UINT16, 501, 407, 65535, 2) << 60000.0 << 25000;
        QTest::newRow("8-bit: few levels, many pixels a bin")
            << maker::random(VXS_UINT8, 701, 607, 3, 3) << 65000.0 << 25000;
        QTest::newRow("everything above the ceiling")
            << maker::random(VXS_FLOAT, 51, 47, 500, 4) << -1.0 << 25000;
        QTest::newRow("one bin") << maker::random(VXS_FLOAT, 51, 47, 500, 5) << 65000.0 << 1;
        QTest::newRow("doubles") << maker::random(VXS_DOUBLE, 151, 47, 500, 6) << 400.0 << 100;
        QTest::newRow("a few pixels") << maker::floats(3, 1, {1, 2, 10}) << 65000.0 << 25000;
        QTest::newRow("no spread") << maker::floats(3, 1, {4, 4, 4}) << 65000.0 << 25000;
        QTest::newRow("all negative") << maker::floats(3, 1, {-4, -3, -9}) << 65000.0 << 25000;
        QTest::newRow("NaN and infinities among them")
            << maker::floats(6, 1, {NOT_A_NUMBER, 1, INF, 2, -INF, 7}) << 65000.0 << 50;
        std::vector<float> spot(300000, 1.0f);
        for (size_t i = 0; i < spot.size(); ++i)
            spot[i] = float(i % 97);
        spot[1234] = 60000;
        QTest::newRow("one pixel far brighter than the rest")
            << maker::floats(600, 500, spot) << 65000.0 << 25000;
        for (size_t i = 0; i < 3000; ++i)
            spot[i] = 50000 + float(i);
        QTest::newRow("one per cent far brighter than the rest")
            << maker::floats(600, 500, spot) << 65000.0 << 25000;
    }
    void equalsTheDefinition()
    {
        QFETCH(CILImage, image);
        QFETCH(double, ceiling);
        QFETCH(int, bins);
        double low = -1, high = -1;
        QVERIFY(ilAutoRange(image, ceiling, bins, &low, &high));
        const auto expected = naive(image, ceiling, bins);
        QCOMPARE(low, expected.first);
        QCOMPARE(high, expected.second);
        double again = 0, andHigh = 0;
        QVERIFY(ilAutoRange(image, ceiling, bins, &again, &andHigh));
        QCOMPARE(again, low);
        QCOMPARE(andHigh, high);
    }

    void aPixelAtTheCeilingIsLeftOut()
    {
        double low = 0, high = 0;
        QVERIFY(ilAutoRange(maker::floats(3, 1, {10, 20, 65000}), 65000.0, 25000, &low, &high));
        QCOMPARE(high, 20.0);
        QVERIFY(ilAutoRange(maker::floats(3, 1, {10, 20, 64999}), 65000.0, 25000, &low, &high));
        QCOMPARE(high, 64999.0);
    }

    void withoutAFinitePixelNothingIsTouched()
    {
        double low = 3, high = 4;
        QVERIFY(!ilAutoRange(maker::floats(2, 1, {NOT_A_NUMBER, INF}), 65000.0, 25000, &low, &high));
        QVERIFY(!ilAutoRange(CILImage(), 65000.0, 25000, &low, &high));
        QCOMPARE(low, 3.0);
        QCOMPARE(high, 4.0);
    }

    void aRememberedRangeEndsWithAChangeOfPixels()
    {
        CILImage image = maker::floats(2, 1, {10, 20});
        double low = 0, high = 0;
        QVERIFY(ilAutoRange(image, 65000.0, 25000, &low, &high));
        image *= 2.0;
        QVERIFY(ilAutoRange(image, 65000.0, 25000, &low, &high));
        QCOMPARE(low, 20.0);
        QCOMPARE(high, 40.0);
        static_cast<float *>(image.get_data())[0] = 30;
        QVERIFY(ilAutoRange(image, 65000.0, 25000, &low, &high));
        QCOMPARE(low, 30.0);
        static_cast<float *>(image.get_data())[0] = 35;
        QVERIFY(ilAutoRange(image, 65000.0, 25000, &low, &high));
        QCOMPARE(low, 35.0);
    }
};

QTEST_APPLESS_MAIN(tst_AutoRange)
#include "tst_AutoRange.moc"
