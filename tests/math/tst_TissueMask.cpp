// SPDX-License-Identifier: MIT
#include "host/vximage/CSLComposite.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/TissueMask.h"
#include "tests/support/PixelCompare.h"

#include <functional>
#include <QtTest>

using namespace imagemath;
using namespace pixelcompare;

namespace {

struct Bits
{
    int width = 0, height = 0;
    std::vector<int> set;
    int at(int x, int y) const
    {
        x = std::min(std::max(x, 0), width - 1);
        y = std::min(std::max(y, 0), height - 1);
        return set[std::size_t(y) * std::size_t(width) + std::size_t(x)];
    }
};

using Scene = std::function<float(int, int)>;

CILImage photographOf(int width, int height, const Scene &scene)
{
    Pixels pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.push_back(scene(x, y));
    return imageOf(pixels, std::uint32_t(width), std::uint32_t(height));
}

// Least (erosion) or greatest (dilation) of the 3 x 3 pixels around, edges replicated.
Bits swept(const Bits &bits, bool least)
{
    Bits out = bits;
    for (int y = 0; y < bits.height; ++y) {
        for (int x = 0; x < bits.width; ++x) {
            int value = bits.at(x, y);
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    value = least ? std::min(value, bits.at(x + dx, y + dy))
                                  : std::max(value, bits.at(x + dx, y + dy));
            out.set[std::size_t(y) * std::size_t(bits.width) + std::size_t(x)] = value;
        }
    }
    return out;
}

Bits openedMask(const CILImage &photograph)
{
    const float percentage = CSLComposite().AutomaticThresholdOtsu(&photograph);
    const float step = (photograph.getMax() - photograph.getMin()) / 100.0f;
    const float scaled = percentage * step;
    const float threshold = scaled + photograph.getMin();
    Bits bits{int(photograph.getWidth()), int(photograph.getHeight()), {}};
    const Pixels pixels = pixelsOf(photograph);
    for (float v : pixels)
        bits.set.push_back(v > threshold ? 1 : 0);
    return swept(swept(bits, true), false);
}

// How much of [from, to) lies in old pixel i.
double overlap(double from, double to, int i)
{
    return std::max(0.0, std::min(to, i + 1.0) - std::max(from, double(i)));
}

Pixels areaAverage(const Bits &bits, int width, int height)
{
    Pixels out;
    const double sx = double(bits.width) / width, sy = double(bits.height) / height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double sum = 0.0;
            for (int j = int(y * sy); j < bits.height && j < (y + 1) * sy; ++j)
                for (int i = int(x * sx); i < bits.width && i < (x + 1) * sx; ++i)
                    sum +=
                        overlap(y * sy, (y + 1) * sy, j) * overlap(x * sx, (x + 1) * sx, i) * bits.at(i, j);
            out.push_back(float(sum / (sx * sy)));
        }
    }
    return out;
}

Pixels nearest(const Bits &bits, int width, int height)
{
    Pixels out;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            out.push_back(
                float(bits.at(int((x + 0.5) * bits.width / width), int((y + 0.5) * bits.height / height))));
    return out;
}

// A bright disc on a dark table with a gentle slope and a dead pixel, all of it away from any threshold
// between.
float animal(int x, int y, int width, int height)
{
    const double dx = (x + 0.5) / width - 0.45, dy = (y + 0.5) / height - 0.55;
    const bool inside = dx * dx / 0.09 + dy * dy / 0.12 < 1.0;
    return (inside ? 30000.0f : 800.0f) + float((x * 7 + y * 13) % 11) * 20.0f;
}

CILImage animalOf(int width, int height)
{
    return photographOf(width, height, [=](int x, int y) { return animal(x, y, width, height); });
}

} // namespace

class tst_TissueMask : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void percentageIsTakenInSinglePrecision_data();
    void percentageIsTakenInSinglePrecision();
    void maskOfAPhotograph_data();
    void maskOfAPhotograph();
    void thresholdAndOpening_data();
    void thresholdAndOpening();
    void edgesMayBeFractions();
    void equalWidthHasNoFractions();
    void thePhotographStaysAsItIs();
    void integerPhotographs_data();
    void integerPhotographs();
    void memoAnswersTheSamePixels();
    void memoFollowsTheGrid_data();
    void memoFollowsTheGrid();
    void memoFollowsThePhotograph();
    void memoDoesNotTrustPixelsThatSomeoneMayWrite();
};

void tst_TissueMask::percentageIsTakenInSinglePrecision_data()
{
    QTest::addColumn<float>("percentage");
    QTest::addColumn<float>("minimum");
    QTest::addColumn<float>("maximum");
    QTest::addColumn<float>("expected");
    QTest::newRow("nothing of the range") << 0.0f << 10.0f << 20.0f << 10.0f;
    QTest::newRow("all of the range") << 100.0f << 10.0f << 20.0f << 20.0f;
    QTest::newRow("a quarter of the range") << 25.0f << -8.0f << 192.0f << 42.0f;
    QTest::newRow("the range is divided before it is multiplied: 5.00000095")
        << 50.0f << -10.0f << 20.0f << 5.00000095f;
    QTest::newRow("a range of one value") << 40.0f << 7.0f << 7.0f << 7.0f;
    // In double precision, or with the product taken before the division, these come out one or more steps
    // off.
    QTest::newRow("each step rounded: 31243.5625, in double 31243.5586")
        << 53.7f << 68.4f << 58122.7f << 31243.5625f;
    QTest::newRow("each step rounded: 1739.84961, in double 1739.84973")
        << 97.9f << 12.6f << 1776.9f << 1739.84961f;
    QTest::newRow("each step rounded: 1869.42395, in double 1869.42419")
        << 76.5f << 1.6f << 2443.2002f << 1869.42395f;
    QTest::newRow("a range beyond single precision is infinite")
        << 50.0f << -3.0e38f << 3.0e38f << std::numeric_limits<float>::infinity();
}

void tst_TissueMask::percentageIsTakenInSinglePrecision()
{
    QFETCH(float, percentage);
    QFETCH(float, minimum);
    QFETCH(float, maximum);
    QFETCH(float, expected);
    const float value = pixelValueOfPercentage(percentage, minimum, maximum);
    QVERIFY2(sameFloat(value, expected), qPrintable(QString::number(double(value), 'g', 9)));
}

void tst_TissueMask::maskOfAPhotograph_data()
{
    QTest::addColumn<QSize>("photograph");
    QTest::addColumn<QSize>("grid");
    QTest::addColumn<bool>("averaged");
    QTest::newRow("twice as wide") << QSize(64, 64) << QSize(32, 32) << true;
    QTest::newRow("four times as wide") << QSize(128, 128) << QSize(32, 32) << true;
    QTest::newRow("one and a half times as wide") << QSize(48, 48) << QSize(32, 32) << true;
    QTest::newRow("one pixel wider") << QSize(33, 33) << QSize(32, 32) << true;
    QTest::newRow("odd sizes, wider") << QSize(61, 47) << QSize(17, 23) << true;
    QTest::newRow("wider but less tall") << QSize(64, 16) << QSize(32, 32) << true;
    QTest::newRow("equally wide and tall") << QSize(32, 32) << QSize(32, 32) << false;
    QTest::newRow("equally wide but taller") << QSize(32, 64) << QSize(32, 32) << false;
    QTest::newRow("equally wide but less tall") << QSize(32, 15) << QSize(32, 32) << false;
    QTest::newRow("narrower") << QSize(16, 16) << QSize(32, 32) << false;
    QTest::newRow("one pixel narrower") << QSize(31, 31) << QSize(32, 32) << false;
    QTest::newRow("narrower but taller") << QSize(24, 80) << QSize(32, 32) << false;
    QTest::newRow("odd sizes, narrower") << QSize(13, 19) << QSize(29, 41) << false;
    QTest::newRow("to one pixel") << QSize(40, 40) << QSize(1, 1) << true;
    QTest::newRow("large") << QSize(1200, 900) << QSize(600, 450) << true;
}

void tst_TissueMask::maskOfAPhotograph()
{
    QFETCH(QSize, photograph);
    QFETCH(QSize, grid);
    QFETCH(bool, averaged);
    const CILImage picture = animalOf(photograph.width(), photograph.height());
    const Bits opened = openedMask(picture);
    QVERIFY(std::count(opened.set.begin(), opened.set.end(), 1) > 0);
    QVERIFY(std::count(opened.set.begin(), opened.set.end(), 0) > 0);
    const auto width = std::uint32_t(grid.width()), height = std::uint32_t(grid.height());
    const CILImage mask = tissueMaskOfPhotograph(picture, width, height);
    if (averaged)
        QCOMPARE(
            differenceAbove(2.0e-6, mask, areaAverage(opened, grid.width(), grid.height()), width, height),
            QString());
    else
        QCOMPARE(difference(mask, nearest(opened, grid.width(), grid.height()), width, height), QString());
}

void tst_TissueMask::thresholdAndOpening_data()
{
    QTest::addColumn<QStringList>("bright");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a 3 x 3 block stays")
        << QStringList{".......", "..###..", "..###..", "..###..", "......."}
        << QStringList{".......", "..###..", "..###..", "..###..", "......."};
    QTest::newRow("a single bright pixel goes") << QStringList{".......", "...#...", ".......", "......."}
                                                << QStringList{".......", ".......", ".......", "......."};
    QTest::newRow("a line of two goes") << QStringList{".......", "#######", "#######", ".......", "......."}
                                        << QStringList{".......", ".......", ".......", ".......", "......."};
    QTest::newRow("a spur goes, its block stays")
        << QStringList{"........", ".###....", ".######.", ".###....", "........"}
        << QStringList{"........", ".###....", ".###....", ".###....", "........"};
    QTest::newRow("a hole of one pixel with three around it stays")
        << QStringList{"#######.", "#######.", "#######.", "###.###.", "#######.", "#######.", "#######."}
        << QStringList{"#######.", "#######.", "#######.", "###.###.", "#######.", "#######.", "#######."};
    QTest::newRow("at the edge the edge pixels count again")
        << QStringList{"##.....", "##.....", ".......", "......."}
        << QStringList{"##.....", "##.....", ".......", "......."};
    QTest::newRow("a single line at the edge goes")
        << QStringList{"#......", "#......", "#......"} << QStringList{".......", ".......", "......."};
}

void tst_TissueMask::thresholdAndOpening()
{
    QFETCH(QStringList, bright);
    QFETCH(QStringList, expected);
    const int width = bright.first().size(), height = bright.size();
    const CILImage photograph =
        photographOf(width, height, [&bright](int x, int y) { return bright[y][x] == '#' ? 900.0f : 10.0f; });
    const CILImage mask = tissueMaskOfPhotograph(photograph, std::uint32_t(width), std::uint32_t(height));
    Pixels wanted;
    Bits naive = openedMask(photograph);
    for (const QString &line : expected)
        for (QChar c : line)
            wanted.push_back(c == '#' ? 1.0f : 0.0f);
    QCOMPARE(Pixels(naive.set.begin(), naive.set.end()), wanted);
    QCOMPARE(difference(mask, wanted, std::uint32_t(width), std::uint32_t(height)), QString());
}

void tst_TissueMask::edgesMayBeFractions()
{
    // Columns 3 and up are bright: the second column of the coarse grid is half in.
    const CILImage photograph = photographOf(8, 8, [](int x, int) { return x >= 3 ? 900.0f : 10.0f; });
    const CILImage mask = tissueMaskOfPhotograph(photograph, 4, 4);
    QCOMPARE(difference(mask, {0, 0.5f, 1, 1, 0, 0.5f, 1, 1, 0, 0.5f, 1, 1, 0, 0.5f, 1, 1}, 4, 4), QString());
}

void tst_TissueMask::equalWidthHasNoFractions()
{
    // Half as many rows are wanted, and averaging them would give halves.
    const CILImage photograph = photographOf(4, 8, [](int, int y) { return y >= 3 ? 900.0f : 10.0f; });
    const CILImage mask = tissueMaskOfPhotograph(photograph, 4, 4);
    for (float v : pixelsOf(mask))
        QVERIFY(v == 0.0f || v == 1.0f);
    QCOMPARE(mask.getHeight(), 4u);
}

void tst_TissueMask::thePhotographStaysAsItIs()
{
    const CILImage photograph = animalOf(50, 40);
    const Pixels before = pixelsOf(photograph);
    const std::uint64_t content = photograph.contentId();
    tissueMaskOfPhotograph(photograph, 25, 20);
    QCOMPARE(difference(photograph, before, 50, 40), QString());
    QCOMPARE(photograph.contentId(), content);
}

void tst_TissueMask::integerPhotographs_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("8-bit integer") << int(VXS_UINT8);
    QTest::newRow("16-bit integer") << int(VXS_UINT16);
    QTest::newRow("32-bit integer") << int(VXS_UINT32);
    QTest::newRow("double") << int(VXS_DOUBLE);
}

void tst_TissueMask::integerPhotographs()
{
    QFETCH(int, type);
    const Scene scene = [](int x, int y) { return x >= 4 && x < 20 && y >= 6 ? 200.0f : float(10 + x % 3); };
    const CILImage reference = photographOf(32, 32, scene);
    CILImage photograph = reference;
    QVERIFY(photograph.ChangeType(VXSDataTypes(type)));
    QCOMPARE(
        difference(tissueMaskOfPhotograph(photograph, 16, 16), tissueMaskOfPhotograph(reference, 16, 16)),
        QString());
    QCOMPARE(int(photograph.getType()), type);
}

void tst_TissueMask::memoAnswersTheSamePixels()
{
    TissueMaskMemo memo;
    const CILImage photograph = animalOf(64, 64);
    const std::uint64_t first = memo.mask(photograph, 32, 32).contentId();
    QVERIFY(first != 0);
    QCOMPARE(memo.mask(photograph, 32, 32).contentId(), first);
    const CILImage copy = photograph;
    QCOMPARE(memo.mask(copy, 32, 32).contentId(), first);
    QCOMPARE(difference(memo.mask(photograph, 32, 32), tissueMaskOfPhotograph(photograph, 32, 32)),
             QString());
}

void tst_TissueMask::memoFollowsTheGrid_data()
{
    QTest::addColumn<QSize>("grid");
    QTest::newRow("other width") << QSize(16, 32);
    QTest::newRow("other height") << QSize(24, 16);
    QTest::newRow("width and height exchanged") << QSize(32, 24);
    QTest::newRow("both others") << QSize(40, 50);
}

void tst_TissueMask::memoFollowsTheGrid()
{
    QFETCH(QSize, grid);
    TissueMaskMemo memo;
    const CILImage photograph = animalOf(64, 64);
    memo.mask(photograph, 24, 32);
    const auto width = std::uint32_t(grid.width()), height = std::uint32_t(grid.height());
    QCOMPARE(
        difference(memo.mask(photograph, width, height), tissueMaskOfPhotograph(photograph, width, height)),
        QString());
    QCOMPARE(difference(memo.mask(photograph, 24, 32), tissueMaskOfPhotograph(photograph, 24, 32)),
             QString());
}

void tst_TissueMask::memoFollowsThePhotograph()
{
    TissueMaskMemo memo;
    const CILImage photograph = animalOf(64, 64);
    const CILImage other = photographOf(64, 64, [](int x, int y) { return animal(63 - x, y, 64, 64); });
    const std::uint64_t first = memo.mask(photograph, 32, 32).contentId();
    QVERIFY(memo.mask(other, 32, 32).contentId() != first);
    QCOMPARE(difference(memo.mask(other, 32, 32), tissueMaskOfPhotograph(other, 32, 32)), QString());
    CILImage changed = other;
    static_cast<float *>(changed.get_data())[0] = 0.0f;
    const CILImage moved = photographOf(64, 64, [](int x, int y) { return animal(x, 63 - y, 64, 64); });
    changed = moved;
    QCOMPARE(difference(memo.mask(changed, 32, 32), tissueMaskOfPhotograph(moved, 32, 32)), QString());
}

void tst_TissueMask::memoDoesNotTrustPixelsThatSomeoneMayWrite()
{
    TissueMaskMemo memo;
    CILImage photograph = animalOf(64, 64);
    auto *pixels = static_cast<float *>(photograph.get_data());
    memo.mask(photograph, 32, 32);
    std::reverse(pixels, pixels + 64 * 64);
    const CILImage now = photographOf(64, 64, [](int x, int y) { return animal(63 - x, 63 - y, 64, 64); });
    QCOMPARE(difference(memo.mask(photograph, 32, 32), tissueMaskOfPhotograph(now, 32, 32)), QString());
}

QTEST_GUILESS_MAIN(tst_TissueMask)
#include "tst_TissueMask.moc"
