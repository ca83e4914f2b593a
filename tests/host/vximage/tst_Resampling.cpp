// SPDX-License-Identifier: MIT
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <QtTest>

namespace {

const VXSDataTypes TYPES[] = {VXS_UINT8, VXS_MASK, VXS_UINT16, VXS_UINT32, VXS_FLOAT, VXS_DOUBLE};

/// The weight of old pixel p in new pixel i of one axis, by definition and not by speed.
double weight(int mode, uint oldSize, uint newSize, uint i, uint p)
{
    const double ratio = double(oldSize) / newSize;
    const bool grows = newSize > oldSize;
    switch (mode) {
    case IL_RESAMPLE_AREA:
        if (!grows)
            return std::max(0.0, std::min((i + 1) * ratio, p + 1.0) - std::max(i * ratio, double(p))) / ratio;
        break;
    case IL_RESAMPLE_BINNING:
        if (!grows) {
            const uint f = oldSize / newSize;
            return p / f == i ? 1.0 / f : 0.0;
        }
        break;
    default:
        break;
    }
    return p == uint((2 * std::uint64_t(i) + 1) * oldSize / (2 * std::uint64_t(newSize))) ? 1.0 : 0.0;
}

std::vector<double> reference(const CILImage &image, uint width, uint height, int mode)
{
    std::vector<double> result;
    for (uint y = 0; y < height; ++y) {
        for (uint x = 0; x < width; ++x) {
            double sum = 0.0;
            for (uint q = 0; q < image.getHeight(); ++q) {
                const double wy = weight(mode, image.getHeight(), height, y, q);
                for (uint p = 0; wy > 1e-9 && p < image.getWidth(); ++p) {
                    const double w = wy * weight(mode, image.getWidth(), width, x, p);
                    if (w > 1e-12)
                        sum += w * image.pixelAt(p, q);
                }
            }
            result.push_back(sum);
        }
    }
    return result;
}

} // namespace

class tst_Resampling : public QObject
{
    Q_OBJECT

private slots:
    void equalsTheDefinition_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<uint>("width");
        QTest::addColumn<uint>("height");
        struct Size
        {
            const char *what;
            uint width, height;
        };
        const Size sizes[] = {
            {"halved", 12, 9},    {"a third and a half", 8, 9}, {"a fraction", 7, 5},
            {"one pixel", 1, 1},  {"wider but lower", 50, 6},   {"narrower but higher", 5, 40},
            {"doubled", 48, 36},  {"slightly smaller", 23, 17}, {"one row", 24, 1},
            {"only cut", 20, 15}, {"odd growth", 31, 19}};
        const std::pair<IL_RESAMPLEMODES, const char *> modes[] = {
            {IL_RESAMPLE_AREA, "area"},
            {IL_RESAMPLE_BINNING, "block mean"},
            {IL_RESAMPLE_NEAREST_MASK, "nearest at centres"}};
        for (const auto &mode : modes) {
            for (const Size &size : sizes)
                QTest::newRow(qPrintable(QString("%1, %2").arg(mode.second, size.what)))
                    << int(mode.first) << size.width << size.height;
        }
    }
    void equalsTheDefinition()
    {
        QFETCH(int, mode);
        QFETCH(uint, width);
        QFETCH(uint, height);
        for (const VXSDataTypes type : TYPES) {
            const CILImage source = maker::random(type, 24, 18, type == VXS_MASK ? 1 : 240, 5);
            const std::vector<double> expected = reference(source, width, height, mode);
            CILImage image = source;
            QCOMPARE(image.downSample(width, height, mode), EIL_SUCCESS);
            QCOMPARE(image.getWidth(), width);
            QCOMPARE(image.getHeight(), height);
            QCOMPARE(image.getType(), type);
            CILImage up = source;
            QCOMPARE(up.upSample(width, height, mode), EIL_SUCCESS);
            QCOMPARE(maker::values(up), maker::values(image));
            const std::vector<double> found = maker::values(image);
            const bool real = type == VXS_FLOAT || type == VXS_DOUBLE;
            for (size_t i = 0; i < found.size(); ++i) {
                // Integers: the nearest one; which of two equally near ones is settled below.
                const double allowed = real ? 1e-4 : 0.5 + 1e-9;
                QVERIFY2(std::abs(found[i] - expected[i]) <= allowed,
                         qPrintable(QString("type %1 pixel %2: %3, expected %4")
                                        .arg(type)
                                        .arg(i)
                                        .arg(found[i])
                                        .arg(expected[i])));
            }
        }
    }

    void aMaskThatBecameFloatHasFractionsAtItsEdge()
    {
        for (const uint size : {8u, 1400u}) {
            CILImage mask = maker::random(VXS_MASK, size, size, 1, 6);
            const CILImage bytes = mask;
            mask.ChangeType(VXS_FLOAT);
            QCOMPARE(mask.downSample(size / 2, size / 2, IL_RESAMPLE_AREA), EIL_SUCCESS);
            QCOMPARE(mask.getType(), VXS_FLOAT);
            for (uint y = 0; y<size / 2; y += size> 8 ? 97 : 1) {
                for (uint x = 0; x < size / 2; ++x) {
                    const double sum = bytes.pixelAt(2 * x, 2 * y) + bytes.pixelAt(2 * x + 1, 2 * y) +
                                       bytes.pixelAt(2 * x, 2 * y + 1) + bytes.pixelAt(2 * x + 1, 2 * y + 1);
                    QCOMPARE(mask.pixelAt(x, y), sum / 4);
                }
            }
        }
    }

    void aMeanOfIntegersHalfWayGoesToTheEvenOne()
    {
        CILImage image = maker::image<std::uint16_t>(VXS_UINT16, 4, 1, {1, 2, 2, 3});
        image.downSample(2, 1, IL_RESAMPLE_AREA);
        QCOMPARE(maker::values(image), (std::vector<double>{2, 2}));
    }

    void blockMeanDropsTheRemainder()
    {
        CILImage image = maker::floats(5, 1, {1, 3, 5, 7, 1000});
        image.downSample(2, 1, IL_RESAMPLE_BINNING);
        QCOMPARE(maker::values(image), (std::vector<double>{2, 6}));
        image = maker::floats(5, 1, {1, 3, 5, 7, 1000});
        image.downSample(4, 1, IL_RESAMPLE_BINNING); // a factor of 1 cuts
        QCOMPARE(maker::values(image), (std::vector<double>{1, 3, 5, 7}));
    }

    void aMeanWithANaNIsANaNAndOnlyThat()
    {
        const float nan = std::numeric_limits<float>::quiet_NaN();
        for (const int mode : {IL_RESAMPLE_AREA, IL_RESAMPLE_BINNING}) {
            CILImage image = maker::floats(6, 1, {nan, 1, 2, 2, 3, 3});
            image.downSample(3, 1, mode);
            QVERIFY(std::isnan(image.pixelAt(0, 0)));
            QCOMPARE(image.pixelAt(1, 0), 2.0);
            QCOMPARE(image.pixelAt(2, 0), 3.0);
        }
    }

    void aModeThatDoesNotExistIsRefused_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("0: nearest by the pixel's corner") << 0;
        QTest::newRow("2: between the four pixels around") << 2;
        QTest::newRow("the first one beyond the last") << 5;
        QTest::newRow("a negative one") << -1;
    }
    void aModeThatDoesNotExistIsRefused()
    {
        QFETCH(int, mode);
        std::vector<std::string> said;
        CILImage::setMessageHandler([&](int, const std::string &text) { said.push_back(text); });
        CILImage image = maker::floats(4, 2, {1, 2, 3, 4, 5, 6, 7, 8});
        const std::uint64_t id = image.contentId();
        const EILSTATUS down = image.downSample(2, 1, mode);
        const EILSTATUS up = image.upSample(8, 4, mode);
        const EILSTATUS same = image.downSample(4, 2, mode);
        CILImage::setMessageHandler(nullptr);
        QCOMPARE(down, EIL_BAD_TYPE);
        QCOMPARE(up, EIL_BAD_TYPE);
        QCOMPARE(same, EIL_BAD_TYPE);
        QCOMPARE(image.contentId(), id);
        QCOMPARE(maker::values(image), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8}));
        const std::string expected =
            "There is no resample mode " + std::to_string(mode) + "; the image is unchanged.";
        QCOMPARE(said, std::vector<std::string>(3, expected));
    }

    void sizesThatMakeNoSenseChangeNothing()
    {
        CILImage image = maker::floats(2, 1, {1, 2});
        const std::uint64_t id = image.contentId();
        QCOMPARE(image.downSample(0, 1, 1), EIL_BAD_SIZE);
        QCOMPARE(image.upSample(1, 0, 1), EIL_BAD_SIZE);
        QCOMPARE(image.downSample(2, 1, 3), EIL_SUCCESS);
        QCOMPARE(image.contentId(), id);
        CILImage empty;
        QCOMPARE(empty.downSample(2, 2, 1), EIL_BAD_SIZE);
    }

    void valuesThatAddUpAreBinnedToTheirSums_data()
    {
        QTest::addColumn<uint>("width");
        QTest::addColumn<uint>("height");
        QTest::addColumn<double>("added");
        QTest::newRow("2 x 2") << 12u << 9u << 4.0;
        QTest::newRow("3 x 2") << 8u << 9u << 6.0;
        QTest::newRow("the remainder is dropped: 3 x 3") << 7u << 5u << 9.0;
        QTest::newRow("all to one pixel") << 1u << 1u << 432.0;
        QTest::newRow("only cut") << 20u << 15u << 1.0;
        QTest::newRow("an axis that grows adds nothing up") << 50u << 6u << 3.0;
    }
    void valuesThatAddUpAreBinnedToTheirSums()
    {
        QFETCH(uint, width);
        QFETCH(uint, height);
        QFETCH(double, added);
        for (const VXSDataTypes type : TYPES) {
            CILImage source = maker::random(type, 24, 18, type == VXS_MASK ? 1 : 240, 5);
            std::vector<double> expected = reference(source, width, height, IL_RESAMPLE_BINNING);
            source.setValuesAddUp(true);
            CILImage image = source;
            QCOMPARE(image.downSample(width, height, IL_RESAMPLE_BINNING), EIL_SUCCESS);
            QCOMPARE(image.getType(), VXS_FLOAT); // 432 times 240 is beyond a byte
            QCOMPARE(image.pixelsAdded(), added);
            QVERIFY(image.valuesAddUp());
            const std::vector<double> found = maker::values(image);
            for (size_t i = 0; i < found.size(); ++i)
                QVERIFY2(std::abs(found[i] - expected[i] * added) <= 1e-6 * std::abs(expected[i] * added),
                         qPrintable(QString("type %1 pixel %2: %3, expected %4")
                                        .arg(type)
                                        .arg(i)
                                        .arg(found[i])
                                        .arg(expected[i] * added)));
            CILImage area = source;
            QCOMPARE(area.downSample(width, height, IL_RESAMPLE_AREA), EIL_SUCCESS);
            QCOMPARE(area.pixelsAdded(), 1.0); // no binning: a mean
        }
    }

    void sumsOfSumsCountAllPixels()
    {
        CILImage image = maker::random(VXS_FLOAT, 8, 8, 10, 3);
        image.setValuesAddUp(true);
        image.downSample(4, 4, IL_RESAMPLE_BINNING);
        const CILImage copy = image;
        image.downSample(2, 2, IL_RESAMPLE_BINNING);
        QCOMPARE(copy.pixelsAdded(), 4.0);
        QCOMPARE(image.pixelsAdded(), 16.0);
    }

    void arithmeticKeepsWhatTheLeftOperandIs()
    {
        CILImage counts = maker::random(VXS_FLOAT, 4, 4, 10, 3);
        CILImage radiance = counts;
        counts.setValuesAddUp(true);
        counts.downSample(2, 2, IL_RESAMPLE_BINNING);
        radiance.downSample(2, 2, IL_RESAMPLE_BINNING);
        QVERIFY((counts - radiance).valuesAddUp());
        QCOMPARE((counts * radiance).pixelsAdded(), 4.0);
        QVERIFY(!(radiance - counts).valuesAddUp());
        radiance += counts;
        QCOMPARE(radiance.pixelsAdded(), 1.0);
    }

    void meansAndSumsOfTheSamePixelsAreRememberedApart()
    {
        const CILImage source = maker::random(VXS_FLOAT, 8, 8, 10, 3);
        CILImage mean = source, sum = source;
        sum.setValuesAddUp(true);
        mean.downSample(4, 4, IL_RESAMPLE_BINNING);
        sum.downSample(4, 4, IL_RESAMPLE_BINNING);
        QCOMPARE(sum.pixelAt(1, 1), 4.0 * mean.pixelAt(1, 1));
    }

    void theSameRequestIsAnsweredFromMemory()
    {
        const CILImage source = maker::random(VXS_UINT16, 100, 80, 1000, 2);
        CILImage first = source, second = source, other = source;
        first.downSample(50, 40, 3);
        second.downSample(50, 40, 3);
        other.downSample(50, 40, 4);
        QCOMPARE(first.contentId(), second.contentId());
        QVERIFY(other.contentId() != first.contentId());
        first *= 2.0;
        QCOMPARE(second.pixelAt(3, 3) * 2, first.pixelAt(3, 3));
        CILImage third = source;
        third.downSample(50, 40, 3);
        QCOMPARE(maker::values(third), maker::values(second));
    }
};

QTEST_APPLESS_MAIN(tst_Resampling)
#include "tst_Resampling.moc"
