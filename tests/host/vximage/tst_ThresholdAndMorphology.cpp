// SPDX-License-Identifier: MIT
#include "host/vximage/CSLComposite.h"
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <QtTest>

namespace {

const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const float INF = std::numeric_limits<float>::infinity();
const VXSDataTypes TYPES[] = {VXS_UINT8, VXS_MASK, VXS_UINT16, VXS_UINT32, VXS_FLOAT, VXS_DOUBLE};

/// Otsu's method by trying every border of 256 classes on the pixels themselves.
double naiveOtsu(const CILImage &image)
{
    const double lo = double(image.getMin()), hi = double(image.getMax());
    std::vector<double> count(256, 0.0);
    for (const double v : maker::values(image)) {
        if (std::isfinite(v))
            ++count[size_t(std::min(255, int((float(v) - float(lo)) * float(256.0 / (hi - lo)))))];
    }
    double best = -1.0;
    int first = 0, last = 0;
    for (int border = 0; border < 255; ++border) {
        double n0 = 0, n1 = 0, s0 = 0, s1 = 0;
        for (int c = 0; c < 256; ++c) {
            (c <= border ? n0 : n1) += count[size_t(c)];
            (c <= border ? s0 : s1) += c * count[size_t(c)];
        }
        if (n0 == 0 || n1 == 0)
            continue;
        const double variance = n0 * n1 * (s0 / n0 - s1 / n1) * (s0 / n0 - s1 / n1);
        if (variance > best * (1 + 1e-12)) {
            best = variance;
            first = border;
        }
        if (variance >= best * (1 - 1e-12))
            last = border;
    }
    return ((first + last) / 2.0 + 1) * 100 / 256;
}

} // namespace

class tst_ThresholdAndMorphology : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhatIsAboveBecomesOne_data()
    {
        QTest::addColumn<float>("t");
        for (const float t : {-1.0f, 0.0f, 0.5f, 1.0f, 100.0f, 100.5f, 239.0f, 255.0f, 65535.0f, 1e9f, INF,
                              -INF, NOT_A_NUMBER})
            QTest::newRow(qPrintable(QString("threshold %1").arg(double(t)))) << t;
    }
    void onlyWhatIsAboveBecomesOne()
    {
        QFETCH(float, t);
        for (const VXSDataTypes type : TYPES) {
            const CILImage image = maker::random(type, 333, 217, type == VXS_MASK ? 1 : 239, 3);
            CILImage mask;
            image.Threshold(t, mask);
            QCOMPARE(mask.getType(), VXS_MASK);
            QCOMPARE(mask.getWidth(), 333u);
            const auto in = maker::values(image), out = maker::values(mask);
            for (size_t i = 0; i < in.size(); ++i)
                QVERIFY(out[i] == (float(in[i]) > t ? 1.0 : 0.0));
        }
    }

    void aPixelEqualToTheThresholdIsExcludedAndANaNToo()
    {
        const CILImage image = maker::floats(5, 1, {5, std::nextafter(5.0f, 6.0f), NOT_A_NUMBER, INF, -INF});
        CILImage mask;
        image.Threshold(5, mask);
        QCOMPARE(maker::values(mask), (std::vector<double>{0, 1, 0, 1, 0}));
    }

    void theTargetMayBeTheImageItselfAndAMaskCanBeThresholdedAgain()
    {
        CILImage image = maker::floats(3, 1, {1, 2, 3});
        image.Threshold(1.5f, image);
        QCOMPARE(image.getType(), VXS_MASK);
        CILImage again;
        image.Threshold(0.5f, again);
        QCOMPARE(maker::values(again), (std::vector<double>{0, 1, 1}));
        CILImage empty;
        empty.Threshold(1, again);
        QVERIFY(again.isEmpty());
    }

    void morphologyEqualsTheDefinition_data()
    {
        QTest::addColumn<uint>("width");
        QTest::addColumn<uint>("height");
        QTest::newRow("an odd size") << 37u << 23u;
        QTest::newRow("one pixel") << 1u << 1u;
        QTest::newRow("two by two pixels") << 2u << 2u;
        QTest::newRow("one row") << 40u << 1u;
        QTest::newRow("one column") << 1u << 40u;
        QTest::newRow("on several threads") << 1201u << 1903u;
    }
    void morphologyEqualsTheDefinition()
    {
        QFETCH(uint, width);
        QFETCH(uint, height);
        for (const VXSDataTypes type : {VXS_MASK, VXS_UINT8}) {
            const CILImage source = maker::random(type, width, height, type == VXS_MASK ? 1 : 255, 4);
            CILImage eroded = source, dilated = source;
            QCOMPARE(eroded.Erode(3, 3), EIL_SUCCESS);
            QCOMPARE(dilated.Dilate(3, 3), EIL_SUCCESS);
            QCOMPARE(eroded.getType(), type);
            QCOMPARE(dilated.getType(), type);
            const uint stride = width > 1000 ? 13 : 1;
            for (uint y = 0; y < height; y += stride) {
                for (uint x = 0; x < width; x += stride) {
                    double lo = 1e9, hi = -1e9;
                    for (int dy = -1; dy <= 1; ++dy) {
                        for (int dx = -1; dx <= 1; ++dx) {
                            const double v = source.pixelAt(uint(qBound(0, int(x) + dx, int(width) - 1)),
                                                            uint(qBound(0, int(y) + dy, int(height) - 1)));
                            lo = std::min(lo, v);
                            hi = std::max(hi, v);
                        }
                    }
                    QCOMPARE(eroded.pixelAt(x, y), lo);
                    QCOMPARE(dilated.pixelAt(x, y), hi);
                }
            }
        }
    }

    void anOpeningRemovesASpeckAndKeepsASquare()
    {
        std::vector<std::uint8_t> pixels(49, 0);
        pixels[0] = 1; // a corner is no help: the edge is replicated, but only outwards
        for (const int y : {2, 3, 4}) {
            for (const int x : {2, 3, 4})
                pixels[size_t(7 * y + x)] = 1;
        }
        pixels[size_t(7 * 6 + 3)] = 1;
        CILImage mask = maker::image(VXS_MASK, 7, 7, pixels);
        mask.Erode(3, 3);
        mask.Dilate(3, 3);
        for (uint y = 0; y < 7; ++y) {
            for (uint x = 0; x < 7; ++x)
                QCOMPARE(mask.pixelAt(x, y), x >= 2 && x <= 4 && y >= 2 && y <= 4 ? 1.0 : 0.0);
        }
    }

    void anotherSquareOrPixelTypeIsRefused_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("across");
        QTest::addColumn<int>("down");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("reason");
        const QString size = "Erosion and dilation are by 3 x 3 pixels, not by %1; the image is unchanged.";
        QTest::newRow("larger") << int(VXS_MASK) << 5 << 5 << int(EIL_BAD_SIZE) << size.arg("5 x 5");
        QTest::newRow("not square") << int(VXS_MASK) << 3 << 1 << int(EIL_BAD_SIZE) << size.arg("3 x 1");
        QTest::newRow("even") << int(VXS_MASK) << 2 << 3 << int(EIL_BAD_SIZE) << size.arg("2 x 3");
        QTest::newRow("a single pixel") << int(VXS_MASK) << 1 << 1 << int(EIL_BAD_SIZE) << size.arg("1 x 1");
        QTest::newRow("none") << int(VXS_MASK) << 3 << 0 << int(EIL_BAD_SIZE) << size.arg("3 x 0");
        QTest::newRow("negative") << int(VXS_MASK) << -3 << 3 << int(EIL_BAD_SIZE) << size.arg("-3 x 3");
        for (const VXSDataTypes type : {VXS_UINT16, VXS_UINT32, VXS_FLOAT, VXS_DOUBLE})
            QTest::newRow(qPrintable(QString("pixels of type %1").arg(type)))
                << int(type) << 3 << 3 << int(EIL_BAD_TYPE)
                << "Erosion and dilation are for masks and 8-bit images; the image is unchanged.";
    }
    void anotherSquareOrPixelTypeIsRefused()
    {
        QFETCH(int, type);
        QFETCH(int, across);
        QFETCH(int, down);
        QFETCH(int, status);
        QFETCH(QString, reason);
        const CILImage before = maker::random(VXSDataTypes(type), 9, 7, 1, 3);
        std::vector<std::string> said;
        CILImage::setMessageHandler([&](int, const std::string &text) { said.push_back(text); });
        CILImage image = before;
        const EILSTATUS eroded = image.Erode(across, down);
        const EILSTATUS dilated = image.Dilate(across, down);
        CILImage::setMessageHandler(nullptr);
        QCOMPARE(int(eroded), status);
        QCOMPARE(int(dilated), status);
        QCOMPARE(image.contentId(), before.contentId());
        QCOMPARE(int(image.getType()), type);
        QCOMPARE(maker::values(image), maker::values(before));
        QCOMPARE(said, std::vector<std::string>(2, reason.toStdString()));
    }

    void anImageWithoutPixelsHasNothingToErode()
    {
        CILImage image;
        QCOMPARE(image.Erode(3, 3), EIL_BAD_SIZE);
        QCOMPARE(image.Dilate(3, 3), EIL_BAD_SIZE);
        QVERIFY(image.isEmpty());
    }

    void otsuEqualsTheDefinition()
    {
        for (const VXSDataTypes type : {VXS_UINT8, VXS_UINT16, VXS_UINT32, VXS_FLOAT, VXS_DOUBLE}) {
            for (unsigned seed = 1; seed < 5; ++seed) {
                CILImage image = maker::random(type, 211, 173, 60 * seed, seed);
                QVERIFY(std::abs(double(CSLComposite().AutomaticThresholdOtsu(&image)) - naiveOtsu(image)) <
                        1e-4);
            }
        }
    }

    void otsuPartsTwoLevels_data()
    {
        QTest::addColumn<float>("dark");
        QTest::addColumn<float>("bright");
        QTest::newRow("0 and 1") << 0.0f << 1.0f;
        QTest::newRow("counts") << 900.0f << 21000.0f;
        QTest::newRow("negative") << -5.0f << -4.0f;
        QTest::newRow("over the whole range of float") << -3e38f << 3e38f;
        QTest::newRow("denormal") << 0.0f << 1e-40f;
    }
    void otsuPartsTwoLevels()
    {
        QFETCH(float, dark);
        QFETCH(float, bright);
        std::vector<float> pixels(1000, dark);
        std::fill(pixels.begin(), pixels.begin() + 130, bright);
        pixels[500] = NOT_A_NUMBER;
        pixels[501] = INF;
        const CILImage image = maker::floats(100, 10, pixels);
        const float share = CSLComposite().AutomaticThresholdOtsu(&image);
        QVERIFY2(share > 0.0f && share < 100.0f, qPrintable(QString::number(double(share))));
        QVERIFY(std::abs(share - 50.0f) < 1.0f); // nothing between them: the middle
    }

    void otsuOfAnImageWithoutSpreadIsZero()
    {
        const CILImage flat = maker::floats(2, 1, {3, 3}), none = maker::floats(2, 1, {NOT_A_NUMBER, INF}),
                       empty;
        QCOMPARE(CSLComposite().AutomaticThresholdOtsu(&flat), 0.0f);
        QCOMPARE(CSLComposite().AutomaticThresholdOtsu(&none), 0.0f);
        QCOMPARE(CSLComposite().AutomaticThresholdOtsu(&empty), 0.0f);
        QCOMPARE(CSLComposite().AutomaticThresholdOtsu(nullptr), 0.0f);
    }
};

QTEST_APPLESS_MAIN(tst_ThresholdAndMorphology)
#include "tst_ThresholdAndMorphology.moc"
