// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/RoiStatistics.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <QtTest>
#include <random>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using SharedRoi = std::shared_ptr<CROIBase>;
Q_DECLARE_METATYPE(SharedRoi)
Q_DECLARE_METATYPE(VXSDataTypes)

namespace {

const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
const double INFINITE = std::numeric_limits<double>::infinity();

/// Whether a place is in a polygon: how often a ray to the left meets the outline.
bool isInOutline(const QPolygonF &outline, long double x, long double y)
{
    bool isIn = false;
    for (int i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const long double xi = outline[i].x(), yi = outline[i].y();
        const long double xj = outline[j].x(), yj = outline[j].y();
        if ((yi > y) != (yj > y) && x >= (xj - xi) * (y - yi) / (yj - yi) + xi)
            isIn = !isIn;
    }
    return isIn;
}

/// The geometry again, from the definitions and in a wider number.
bool isIn(const CROIBase &roi, long double x, long double y)
{
    const QRectF box = roi.boundingBox();
    const long double left = box.x(), top = box.y(), width = box.width(), height = box.height();
    switch (roi.shape()) {
    case EROI_POLYGON:
    case EROI_FREEHAND:
        return isInOutline(roi.outline(), x, y);
    case EROI_ELLIPSE: {
        const long double dx = (x - left) / width * 2.0L - 1.0L;
        const long double dy = (y - top) / height * 2.0L - 1.0L;
        return dx * dx + dy * dy <= 1.0L + 1e-15L;
    }
    default:
        return x >= left && x < left + width && y >= top && y < top + height;
    }
}

/// The statistics again: every pixel of the image, sums in a wider number.
RoiStatistics bruteForce(const CILImage &image, const CROIBase &roi, double pixelSize)
{
    std::vector<long double> values;
    RoiStatistics result;
    for (std::uint32_t y = 0; y < image.getHeight(); ++y) {
        for (std::uint32_t x = 0; x < image.getWidth(); ++x) {
            if (!isIn(roi, (x + 0.5L) * pixelSize, (y + 0.5L) * pixelSize))
                continue;
            if (std::isfinite(image.pixelAt(x, y)))
                values.push_back(image.pixelAt(x, y));
            else
                ++result.notFinitePixels;
        }
    }
    result.pixels = qint64(values.size());
    long double sum = 0, squares = 0;
    for (const long double value : values)
        sum += value;
    result.sum = double(sum);
    if (values.empty())
        return result;
    const long double mean = sum / values.size();
    for (const long double value : values)
        squares += (value - mean) * (value - mean);
    result.mean = double(mean);
    result.minimum = double(*std::min_element(values.begin(), values.end()));
    result.maximum = double(*std::max_element(values.begin(), values.end()));
    if (values.size() > 1)
        result.standardDeviation = double(std::sqrt(squares / (values.size() - 1)));
    return result;
}

CILImage imageOf(VXSDataTypes type, int width, int height, const std::function<double(int, int)> &pixels)
{
    CILImage image;
    image.InitWithType(VXS_DOUBLE, std::uint32_t(width), std::uint32_t(height));
    auto *values = static_cast<double *>(image.get_data());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            *values++ = pixels(x, y);
    }
    image.ChangeType(type);
    return image;
}

CILImage noise(VXSDataTypes type, int width, int height)
{
    auto random = std::make_shared<std::mt19937>(unsigned(7 * width + height));
    const double scale = type == VXS_UINT8 ? 200.0 : 60000.0;
    return imageOf(type, width, height,
                   [=](int, int) { return scale * double((*random)()) / double(random->max()); });
}

bool isClose(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= 1e-14 * std::abs(b);
}

QString text(const RoiStatistics &s)
{
    return QStringLiteral("%1 pixels, %2 not finite, sum %3, mean %4, sd %5, %6 to %7")
        .arg(s.pixels)
        .arg(s.notFinitePixels)
        .arg(s.sum, 0, 'g', 17)
        .arg(s.mean, 0, 'g', 17)
        .arg(s.standardDeviation, 0, 'g', 17)
        .arg(s.minimum, 0, 'g', 17)
        .arg(s.maximum, 0, 'g', 17);
}

bool isSame(const RoiStatistics &a, const RoiStatistics &b)
{
    return a.pixels == b.pixels && a.notFinitePixels == b.notFinitePixels && isClose(a.sum, b.sum) &&
           isClose(a.mean, b.mean) && isClose(a.standardDeviation, b.standardDeviation) &&
           isClose(a.minimum, b.minimum) && isClose(a.maximum, b.maximum);
}

#define COMPARE_STATISTICS(actual, expected)                                                                 \
    QVERIFY2(isSame(actual, expected), qPrintable(text(actual) + "\n   expected: " + text(expected)))

CROIBase box(double x, double y, double width, double height)
{
    return CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(x, y, width, height));
}

CROIBase ellipse(double x, double y, double width, double height)
{
    return CROIBase(EROI_ELLIPSE, EROI_MEASUREMENT, QRectF(x, y, width, height));
}

/// A free-hand outline with crossings and spikes.
CROIBase scribble(double x, double y, double radius)
{
    QPolygonF outline;
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        const double r = radius * (0.2 + 0.8 * double(random()) / double(random.max()));
        outline.append({x + r * std::cos(i * 0.0942), y + r * std::sin(i * 0.0942)});
    }
    return CROIBase(EROI_FREEHAND, EROI_MEASUREMENT, outline);
}

QVector<QPair<QString, CROIBase>> shapes()
{
    const QPolygonF star({{5.0, 0.4}, {8.1, 9.3}, {0.6, 3.7}, {9.7, 3.2}, {2.1, 9.9}});
    return {
        {"a rectangle", box(1.3, 2.1, 4.4, 3.7)},
        {"a rectangle whose edges lie on pixel centres", box(0.5, 1.5, 4.0, 3.0)},
        {"a rectangle partly outside, upper left", box(-3.1, -2.2, 7.0, 7.7)},
        {"a rectangle partly outside, lower right", box(7.3, 6.1, 50.0, 1e9)},
        {"a rectangle around the image", box(-100.0, -1e300, 300.0, 2e300)},
        {"a rectangle beside the image", box(40.0, 1.0, 3.0, 3.0)},
        {"a rectangle above the image", box(1.0, -4.0, 3.0, 3.0)},
        {"a rectangle that touches the image from the left", box(-3.0, 1.0, 3.0, 3.0)},
        {"a tiny rectangle between the centres", box(2.6, 2.6, 0.3, 0.3)},
        {"a rectangle of one pixel", box(2.4, 2.4, 0.2, 0.2)},
        {"a row of pixels", box(1.0, 2.4, 6.0, 0.2)},
        {"an ellipse", ellipse(1.2, 0.7, 7.1, 5.3)},
        {"an ellipse with pixel centres on its edge", ellipse(0.5, 0.5, 6.0, 6.0)},
        {"an ellipse with pixel centres on its upper and lower end", ellipse(2.3, 1.5, 2.4, 3.0)},
        {"an ellipse partly outside", ellipse(-4.0, 3.0, 9.0, 30.0)},
        {"an ellipse beside the image", ellipse(4.0, 50.0, 9.0, 30.0)},
        {"a tiny ellipse between the centres", ellipse(2.6, 2.6, 0.3, 0.3)},
        {"a star, its middle wound around twice", CROIBase(EROI_POLYGON, EROI_MEASUREMENT, star)},
        {"a polygon whose edges lie on pixel centres",
         CROIBase(EROI_POLYGON, EROI_MEASUREMENT,
                  QPolygonF({{0.5, 0.5}, {6.5, 0.5}, {6.5, 4.5}, {0.5, 4.5}}))},
        {"a polygon partly outside",
         CROIBase(EROI_POLYGON, EROI_MEASUREMENT, QPolygonF({{-9.1, 2.0}, {6.2, -7.3}, {33.0, 40.0}}))},
        {"a scribble", scribble(5.0, 4.0, 4.5)},
        {"a grid", CROIBase(EROI_MEASUREMENT, QRectF(1.1, 1.2, 6.3, 5.4), 3, 4)},
    };
}

} // namespace

class tst_RoiStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyShapeOnEverySize_data();
    void everyShapeOnEverySize();
    void everyPixelType_data();
    void everyPixelType();
    void pixelsThatAreNotFinite_data();
    void pixelsThatAreNotFinite();
    void nothingToMeasure_data();
    void nothingToMeasure();
    void onePixelHasNoDeviation();
    void smallValuesBesideLargeOnesAreNotLost();
    void aSmallSpreadOnALargeLevel();
    void cellsAddUpToTheirGrid();
    void anEdgeOnAPixelCentre_data();
    void anEdgeOnAPixelCentre();
    void theImageIsNotChanged();
    void ofALargeImageOnlyTheRoisOwnRowsAreRead();
};

void tst_RoiStatistics::everyShapeOnEverySize_data()
{
    QTest::addColumn<SharedRoi>("roi");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("pixelSize");
    const auto shapesToMeasure = shapes();
    for (const auto &shape : shapesToMeasure) {
        for (const QSize size : {QSize(10, 10), QSize(13, 7), QSize(1, 9), QSize(9, 1), QSize(1, 1)}) {
            const auto roi = std::make_shared<CROIBase>(shape.second);
            QTest::newRow(qPrintable(
                QStringLiteral("%1 on %2 x %3 pixels").arg(shape.first).arg(size.width()).arg(size.height())))
                << roi << size << 1.0;
        }
        QTest::newRow(qPrintable(shape.first + QStringLiteral(" on pixels finer than it")))
            << std::make_shared<CROIBase>(shape.second) << QSize(101, 97) << 0.0977;
    }
}

void tst_RoiStatistics::everyShapeOnEverySize()
{
    QFETCH(SharedRoi, roi);
    QFETCH(QSize, size);
    QFETCH(double, pixelSize);
    const CILImage image = noise(VXS_FLOAT, size.width(), size.height());
    const RoiStatistics expected = bruteForce(image, *roi, pixelSize);
    COMPARE_STATISTICS(roiStatistics(image, *roi, pixelSize), expected);
}

void tst_RoiStatistics::everyPixelType_data()
{
    QTest::addColumn<VXSDataTypes>("type");
    QTest::newRow("8-bit integers") << VXS_UINT8;
    QTest::newRow("a mask") << VXS_MASK;
    QTest::newRow("16-bit integers") << VXS_UINT16;
    QTest::newRow("32-bit integers") << VXS_UINT32;
    QTest::newRow("32-bit float") << VXS_FLOAT;
    QTest::newRow("64-bit float") << VXS_DOUBLE;
}

void tst_RoiStatistics::everyPixelType()
{
    QFETCH(VXSDataTypes, type);
    const CILImage image = type == VXS_MASK ? imageOf(type, 31, 17, [](int x, int y) { return (x * y) % 3; })
                                            : noise(type, 31, 17);
    QCOMPARE(image.getType(), type);
    const auto shapesToMeasure = shapes();
    for (const auto &shape : shapesToMeasure) {
        const RoiStatistics expected = bruteForce(image, shape.second, 0.4);
        COMPARE_STATISTICS(roiStatistics(image, shape.second, 0.4), expected);
    }
}

void tst_RoiStatistics::pixelsThatAreNotFinite_data()
{
    QTest::addColumn<VXSDataTypes>("type");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("every");
    for (const VXSDataTypes type : {VXS_FLOAT, VXS_DOUBLE}) {
        const QByteArray name = type == VXS_FLOAT ? " in 32 bits" : " in 64 bits";
        QTest::newRow("some NaN" + name) << type << NOT_A_NUMBER << 3;
        QTest::newRow("some infinities" + name) << type << INFINITE << 4;
        QTest::newRow("some negative infinities" + name) << type << -INFINITE << 7;
        QTest::newRow("nothing but NaN" + name) << type << NOT_A_NUMBER << 1;
    }
}

void tst_RoiStatistics::pixelsThatAreNotFinite()
{
    QFETCH(VXSDataTypes, type);
    QFETCH(double, value);
    QFETCH(int, every);
    const CILImage image =
        imageOf(type, 20, 11, [&](int x, int y) { return (x + 3 * y) % every == 0 ? value : x - 3.0 * y; });
    const auto shapesToMeasure = shapes();
    for (const auto &shape : shapesToMeasure) {
        const RoiStatistics expected = bruteForce(image, shape.second, 0.7);
        COMPARE_STATISTICS(roiStatistics(image, shape.second, 0.7), expected);
    }
    const RoiStatistics all = roiStatistics(image, box(0, 0, 100, 100), 0.7);
    QCOMPARE(all.pixels + all.notFinitePixels, qint64(220));
    QCOMPARE(std::isnan(all.mean), every == 1);
}

void tst_RoiStatistics::nothingToMeasure_data()
{
    QTest::addColumn<SharedRoi>("roi");
    QTest::addColumn<double>("pixelSize");
    const auto row = [](const char *name, const CROIBase &roi, double pixelSize) {
        QTest::newRow(name) << std::make_shared<CROIBase>(roi) << pixelSize;
    };
    row("a tiny ROI between the centres", box(2.6, 2.6, 0.3, 0.3), 1.0);
    row("an ROI beside the image", box(20, 20, 5, 5), 1.0);
    row("a pixel size of 0", box(0, 0, 5, 5), 0.0);
    row("a negative pixel size", box(0, 0, 5, 5), -1.0);
    row("a pixel size that is not known", box(0, 0, 5, 5), NOT_A_NUMBER);
    row("an infinite pixel size", box(0, 0, 5, 5), INFINITE);
    row("an ROI without area", box(1, 1, 0, 0), 1.0);
    row("an ROI that is nowhere", box(NOT_A_NUMBER, NOT_A_NUMBER, 1, 1), 1.0);
    row("an ellipse without area", ellipse(1.5, 1.5, 0, 0), 1.0);
    row("an outline without corners", CROIBase(EROI_POLYGON, EROI_MEASUREMENT, QPolygonF()), 1.0);
}

void tst_RoiStatistics::nothingToMeasure()
{
    QFETCH(SharedRoi, roi);
    QFETCH(double, pixelSize);
    const RoiStatistics none = roiStatistics(noise(VXS_FLOAT, 10, 10), *roi, pixelSize);
    QCOMPARE(none.pixels, qint64(0));
    QCOMPARE(none.notFinitePixels, qint64(0));
    QCOMPARE(none.sum, 0.0);
    QVERIFY(std::isnan(none.mean) && std::isnan(none.standardDeviation));
    QVERIFY(std::isnan(none.minimum) && std::isnan(none.maximum));
    QCOMPARE(roiStatistics(CILImage(), *roi, pixelSize).pixels, qint64(0));
}

void tst_RoiStatistics::onePixelHasNoDeviation()
{
    const RoiStatistics one = roiStatistics(
        imageOf(VXS_UINT16, 5, 5, [](int x, int y) { return x + 10 * y; }), box(2, 1, 1, 1), 1.0);
    QCOMPARE(one.pixels, qint64(1));
    QCOMPARE(one.mean, 12.0);
    QCOMPARE(one.minimum, 12.0);
    QCOMPARE(one.maximum, 12.0);
    QVERIFY(std::isnan(one.standardDeviation));
}

void tst_RoiStatistics::smallValuesBesideLargeOnesAreNotLost()
{
    const CILImage image = imageOf(VXS_DOUBLE, 300, 1, [](int x, int) {
        return x == 0 ? 1e17 : x == 299 ? -1e17 : 1.0;
    });
    QCOMPARE(roiStatistics(image, box(0, 0, 300, 1), 1.0).sum, 298.0);
}

void tst_RoiStatistics::aSmallSpreadOnALargeLevel()
{
    const CILImage image =
        imageOf(VXS_DOUBLE, 100, 100, [](int x, int y) { return 1e9 + ((x + y) % 2 ? 1e-3 : -1e-3); });
    const RoiStatistics s = roiStatistics(image, box(0, 0, 100, 100), 1.0);
    QVERIFY(std::abs(s.standardDeviation / (1e-3 * std::sqrt(10000.0 / 9999.0)) - 1.0) < 1e-4);
}

void tst_RoiStatistics::cellsAddUpToTheirGrid()
{
    // Cell edges at 0.1, 0.2, ... meet pixel centres that are rounded otherwise.
    const CROIBase grid(EROI_MEASUREMENT, QRectF(0.1, 0.1, 1.1, 1.3), 13, 11);
    const CILImage image = noise(VXS_UINT16, 60, 60);
    for (const double pixelSize : {0.2, 0.2 / 3.0, 0.04, 0.0234}) {
        RoiStatistics sum;
        for (int row = 0; row < grid.rows(); ++row) {
            for (int column = 0; column < grid.columns(); ++column) {
                const RoiStatistics cell = roiStatistics(image, grid.cell(row, column), pixelSize);
                sum.pixels += cell.pixels;
                sum.sum += cell.sum;
            }
        }
        const RoiStatistics whole = roiStatistics(image, grid, pixelSize);
        QVERIFY(whole.pixels > 0);
        QCOMPARE(sum.pixels, whole.pixels);
        QCOMPARE(sum.sum, whole.sum);
    }
}

void tst_RoiStatistics::anEdgeOnAPixelCentre_data()
{
    QTest::addColumn<double>("pixelSize");
    QTest::newRow("0.1 cm a pixel") << 0.1;
    QTest::newRow("12.5 cm over 480 pixels") << 12.5 / 480;
    QTest::newRow("13.2 cm over 1024 pixels") << 13.2 / 1024;
}

// Dividing the edge by the pixel size would give a neighbour here and there.
void tst_RoiStatistics::anEdgeOnAPixelCentre()
{
    QFETCH(double, pixelSize);
    const CILImage image = imageOf(VXS_UINT16, 2000, 1, [](int x, int) { return x; });
    for (int x = 0; x < 1999; ++x) {
        const double edge = (x + 0.5) * pixelSize;
        const double behind = std::nextafter(edge, INFINITE);
        QCOMPARE(roiStatistics(image, box(edge, 0.0, 1e4, 1.0), pixelSize).minimum, double(x));
        QCOMPARE(roiStatistics(image, box(behind, 0.0, 1e4, 1.0), pixelSize).minimum, double(x + 1));
    }
}

void tst_RoiStatistics::theImageIsNotChanged()
{
    const CILImage image = noise(VXS_UINT16, 10, 10);
    const std::uint64_t before = image.contentId();
    QVERIFY(before != 0);
    roiStatistics(image, box(0, 0, 5, 5), 1.0);
    QCOMPARE(image.contentId(), before);
    QCOMPARE(image.getType(), VXS_UINT16);
}

// Memory that nobody has touched since it was given back is not resident: the pages that are tell what was
// read.
void tst_RoiStatistics::ofALargeImageOnlyTheRoisOwnRowsAreRead()
{
    CILImage image;
    QCOMPARE(image.InitWithType(VXS_UINT16, 4096, 4096), EIL_SUCCESS);
    const CILImage &constImage = image;
    const auto page = std::uintptr_t(sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(constImage.get_data());
    const std::uintptr_t first = (begin + page - 1) / page * page;
    const std::uintptr_t pages = (begin + 4096 * 4096 * sizeof(std::uint16_t)) / page - first / page;
    auto *memory = reinterpret_cast<void *>(first);
    std::vector<unsigned char> resident(pages);
    const auto touched = [&] {
        return mincore(memory, pages * page, resident.data()) == 0
                   ? std::count_if(resident.begin(), resident.end(), [](unsigned char p) { return p & 1; })
                   : -1;
    };
    QCOMPARE(roiStatistics(image, ellipse(2000, 2000, 9, 9), 1.0).notFinitePixels, 0);
    QCOMPARE(madvise(memory, pages * page, MADV_DONTNEED), 0);
    QCOMPARE(touched(), 0);
    QVERIFY(roiStatistics(image, ellipse(2000, 2000, 9, 9), 1.0).pixels > 0);
    // Nine rows of 8 KiB; memory may come in pieces of 2 MiB.
    const auto read = touched();
    QVERIFY2(read > 0 && read < std::ptrdiff_t(pages / 4), qPrintable(QString::number(read)));
}

QTEST_GUILESS_MAIN(tst_RoiStatistics)
#include "tst_RoiStatistics.moc"
