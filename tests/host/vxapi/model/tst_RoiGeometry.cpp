// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/CROIBase.h"

#include <cmath>
#include <limits>
#include <memory>
#include <QtTest>

using SharedRoi = std::shared_ptr<CROIBase>;
Q_DECLARE_METATYPE(SharedRoi)

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

CROIBase rectangle(const QRectF &box)
{
    return CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, box);
}

CROIBase polygon(const QPolygonF &outline)
{
    return CROIBase(EROI_POLYGON, EROI_MEASUREMENT, outline);
}

const QPolygonF TRIANGLE({{1.0, 1.0}, {5.0, 1.0}, {1.0, 5.0}});
const QPolygonF BOW({{0.0, 0.0}, {4.0, 4.0}, {4.0, 0.0}, {0.0, 4.0}});
// A star whose centre is wound around twice.
const QPolygonF STAR({{3.0, 0.0}, {4.8, 5.4}, {0.2, 2.1}, {5.8, 2.1}, {1.2, 5.4}});

bool isExactly(const QRectF &a, const QRectF &b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

} // namespace

class tst_RoiGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void places_data();
    void places();
    void complaints_data();
    void complaints();
    void boxesAreNormalised();
    void aRepeatedFirstCornerIsDropped();
    void movingAnOutline();
    void scalingAnOutline();
    void boxesThatChangeNothing_data();
    void boxesThatChangeNothing();
    void cells();
    void cellsShareNoPlaceAndLoseNone_data();
    void cellsShareNoPlaceAndLoseNone();
    void polygonsWithACommonEdgeShareNoPlaceAndLoseNone();
    void anEllipseIsSymmetric();
};

void tst_RoiGeometry::places_data()
{
    QTest::addColumn<SharedRoi>("roi");
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<bool>("isIn");
    const auto row = [](const char *name, const CROIBase &roi, QPointF place, bool isIn) {
        QTest::newRow(name) << std::make_shared<CROIBase>(roi) << place << isIn;
    };
    const CROIBase box = rectangle({1.0, 2.0, 3.0, 4.0});
    row("the middle of a rectangle belongs to it", box, {2.0, 3.0}, true);
    row("the left edge of a rectangle belongs to it", box, {1.0, 3.0}, true);
    row("the upper edge of a rectangle belongs to it", box, {2.0, 2.0}, true);
    row("the right edge of a rectangle does not", box, {4.0, 3.0}, false);
    row("the lower edge of a rectangle does not", box, {2.0, 6.0}, false);
    row("the upper left corner of a rectangle belongs to it", box, {1.0, 2.0}, true);
    row("a place that is not a number belongs to nothing", box, {NOT_A_NUMBER, 3.0}, false);

    const CROIBase circle(EROI_ELLIPSE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 4.0, 2.0));
    row("the middle of an ellipse belongs to it", circle, {3.0, 2.0}, true);
    row("the left end of an ellipse belongs to it", circle, {1.0, 2.0}, true);
    row("the right end of an ellipse belongs to it", circle, {5.0, 2.0}, true);
    row("the upper end of an ellipse belongs to it", circle, {3.0, 1.0}, true);
    row("the lower end of an ellipse belongs to it", circle, {3.0, 3.0}, true);
    row("the corner of an ellipse's box does not", circle, {1.0, 1.0}, false);
    row("just beyond the right end of an ellipse is outside", circle, {5.000001, 2.0}, false);

    const CROIBase triangle = polygon(TRIANGLE);
    row("the middle of a polygon belongs to it", triangle, {2.0, 2.0}, true);
    row("the left edge of a polygon belongs to it", triangle, {1.0, 2.0}, true);
    row("the upper edge of a polygon belongs to it", triangle, {2.0, 1.0}, true);
    row("the right, slanting edge of a polygon does not", triangle, {3.0, 3.0}, false);
    row("the lowest corner of a polygon does not", triangle, {1.0, 5.0}, false);
    row("a place beside a polygon is outside", triangle, {4.0, 4.0}, false);
    const CROIBase star = polygon(STAR);
    row("a tip of a star belongs to it", star, {3.0, 0.6}, true);
    row("the middle of a star is wound around twice and does not", star, {3.0, 3.0}, false);
    const CROIBase bow(EROI_FREEHAND, EROI_MEASUREMENT, BOW);
    row("either side of a crossing outline belongs to it, left", bow, {0.5, 2.0}, true);
    row("either side of a crossing outline belongs to it, right", bow, {3.5, 2.0}, true);
    row("above a crossing is outside", bow, {2.0, 0.5}, false);

    row("a grid is its whole box", CROIBase(EROI_MEASUREMENT, QRectF(1.0, 1.0, 4.0, 4.0), 2, 2), {3.0, 3.0},
        true);
}

void tst_RoiGeometry::places()
{
    QFETCH(SharedRoi, roi);
    QFETCH(QPointF, place);
    QFETCH(bool, isIn);
    QCOMPARE(roi->contains(place), isIn);
}

void tst_RoiGeometry::complaints_data()
{
    QTest::addColumn<SharedRoi>("roi");
    QTest::addColumn<QString>("complaint");
    const QString noArea = QStringLiteral("it has no area");
    const QString notFinite = QStringLiteral("a coordinate is not a finite number");
    const auto row = [](const char *name, const CROIBase &roi, const QString &complaint) {
        QTest::newRow(name) << std::make_shared<CROIBase>(roi) << complaint;
    };
    row("a rectangle is fine", rectangle({1, 1, 1, 1}), QString());
    row("a rectangle outside of every image is fine", rectangle({-9, 400, 1e-9, 1}), QString());
    row("a rectangle without width", rectangle({1, 1, 0, 1}), noArea);
    row("a rectangle without height", rectangle({1, 1, 1, 0}), noArea);
    row("a width that rounding swallows", rectangle({1e18, 1, 1, 1}), noArea);
    row("an edge that is not a number", rectangle({NOT_A_NUMBER, 1, 1, 1}), notFinite);
    row("a width that is infinite", rectangle({1, 1, INFINITE, 1}), notFinite);
    row("edges farther apart than a number can tell", rectangle({1e308, 1, 1.7e308, 1}), notFinite);
    row("a triangle is fine", polygon(TRIANGLE), QString());
    row("a crossing outline is fine", polygon(BOW), QString());
    row("two corners", polygon(QPolygonF(QVector<QPointF>({{0, 0}, {1, 1}}))), noArea);
    row("no corner", polygon(QPolygonF()), noArea);
    row("corners on a slanting line", polygon(QPolygonF({{0.1, 0.3}, {0.2, 0.6}, {0.3, 0.9}, {0.7, 2.1}})),
        noArea);
    row("a corner that is not a number", polygon(QPolygonF({{0, 0}, {1, NOT_A_NUMBER}, {1, 1}})), notFinite);
    row("a polygon that was given a box only", CROIBase(EROI_POLYGON, EROI_MEASUREMENT, QRectF(0, 0, 1, 1)),
        noArea);
    row("a grid of the most cells", CROIBase(EROI_MEASUREMENT, QRectF(0, 0, 1, 1), 100, 100), QString());
    row("a grid of more cells", CROIBase(EROI_MEASUREMENT, QRectF(0, 0, 1, 1), 2000000000, 2000000000),
        QStringLiteral("it has more than 10000 cells"));
    QPolygonF circle;
    for (int i = 0; i <= CROIBase::MAX_CORNERS; ++i)
        circle.append({std::cos(i * 6e-5), std::sin(i * 6e-5)});
    row("an outline of too many corners", polygon(circle), QStringLiteral("it has more than 100000 corners"));
}

void tst_RoiGeometry::complaints()
{
    QFETCH(SharedRoi, roi);
    QFETCH(QString, complaint);
    QCOMPARE(roi->complaint(), complaint);
}

void tst_RoiGeometry::boxesAreNormalised()
{
    QVERIFY(isExactly(rectangle({4.0, 6.0, -3.0, -4.0}).boundingBox(), {1.0, 2.0, 3.0, 4.0}));
    CROIBase roi = rectangle({0, 0, 1, 1});
    roi.setBoundingBox({4.0, 6.0, -3.0, -4.0});
    QVERIFY(isExactly(roi.boundingBox(), {1.0, 2.0, 3.0, 4.0}));
}

void tst_RoiGeometry::aRepeatedFirstCornerIsDropped()
{
    QCOMPARE(polygon(QPolygonF({{0, 0}, {1, 0}, {1, 1}, {0, 0}})).outline().size(), 3);
    QCOMPARE(polygon(QPolygonF({{0, 0}, {1, 0}, {1, 1}, {1e-15, 0}})).outline().size(), 4);
    QVERIFY(rectangle({0, 0, 1, 1}).outline().isEmpty());
}

void tst_RoiGeometry::movingAnOutline()
{
    CROIBase roi = polygon(TRIANGLE);
    roi.translate({0.5, -2.0});
    QVERIFY(isExactly(roi.boundingBox(), {1.5, -1.0, 4.0, 4.0}));
    QVERIFY(roi.contains({2.5, 0.0}));
    QVERIFY(!roi.contains({1.2, 2.0}));
}

void tst_RoiGeometry::scalingAnOutline()
{
    CROIBase roi = polygon(TRIANGLE);
    roi.setBoundingBox({0.0, 0.0, 8.0, 2.0});
    QVERIFY(isExactly(roi.boundingBox(), {0.0, 0.0, 8.0, 2.0}));
    QCOMPARE(roi.outline(), QPolygonF({{0.0, 0.0}, {8.0, 0.0}, {0.0, 2.0}}));
}

void tst_RoiGeometry::boxesThatChangeNothing_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::newRow("an empty box") << QRectF();
    QTest::newRow("a box without height") << QRectF(2, 2, 1, 0);
    QTest::newRow("a box that is not a number") << QRectF(2, 2, NOT_A_NUMBER, 1);
}

void tst_RoiGeometry::boxesThatChangeNothing()
{
    QFETCH(QRectF, box);
    for (CROIBase roi : {rectangle({1, 1, 4, 4}), polygon(TRIANGLE)}) {
        roi.setBoundingBox(box);
        QVERIFY(isExactly(roi.boundingBox(), {1, 1, 4, 4}));
    }
}

void tst_RoiGeometry::cells()
{
    CROIBase grid(EROI_BACKGROUND, QRectF(1.0, 2.0, 6.0, 4.0), 2, 3);
    grid.setName(QStringLiteral("Wells"));
    const CROIBase cell = grid.cell(1, 2);
    QCOMPARE(cell.name(), QStringLiteral("Wells [2, 3]"));
    QCOMPARE(cell.shape(), EROI_RECTANGLE);
    QCOMPARE(cell.kind(), EROI_BACKGROUND);
    QVERIFY(isExactly(cell.boundingBox(), {5.0, 4.0, 2.0, 2.0}));
    QCOMPARE(grid.cellNames(), QStringList({"Wells [1, 1]", "Wells [1, 2]", "Wells [1, 3]", "Wells [2, 1]",
                                            "Wells [2, 2]", "Wells [2, 3]"}));
    QVERIFY(cell.cellNames().isEmpty());
}

void tst_RoiGeometry::cellsShareNoPlaceAndLoseNone_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::newRow("edges that no binary number tells") << QRectF(0.1, 0.3, 0.7, 1.1) << 7 << 3;
    QTest::newRow("a box across the image's edge") << QRectF(-0.7, -3.3, 0.9, 4.1) << 9 << 13;
    QTest::newRow("a box that ends at the image's edge") << QRectF(-0.3, -0.1, 0.3, 0.1) << 11 << 10;
    QTest::newRow("a last cell that no length brings to the end")
        << QRectF(-0.735, -0.858, 8.461, 8.581) << 2 << 2;
    QTest::newRow("inner cells that no length brings to their end")
        << QRectF(-0.037, -0.079, 2.801, 6.112) << 3 << 11;
    QTest::newRow("a plate of 1536 wells") << QRectF(0.33, 0.21, 10.8, 7.2) << 32 << 48;
}

// Looks at the places where it could go wrong: every edge and its neighbours in double.
void tst_RoiGeometry::cellsShareNoPlaceAndLoseNone()
{
    QFETCH(QRectF, box);
    QFETCH(int, rows);
    QFETCH(int, columns);
    const CROIBase grid(EROI_MEASUREMENT, box, rows, columns);
    const auto check = [&](bool isDown, int count) {
        const auto begin = [&](const CROIBase &roi) {
            return isDown ? roi.boundingBox().top() : roi.boundingBox().left();
        };
        const auto end = [&](const CROIBase &roi) {
            return isDown ? roi.boundingBox().bottom() : roi.boundingBox().right();
        };
        const double part = (isDown ? box.height() : box.width()) / count;
        double before = begin(grid);
        for (int i = 0; i < count; ++i) {
            const CROIBase cell = isDown ? grid.cell(i, 0) : grid.cell(0, i);
            if (begin(cell) != before || std::abs(end(cell) - before - part) > 1e-12)
                return false;
            before = end(cell);
        }
        const auto place = [&](double along) {
            return isDown ? QPointF(box.left(), along) : QPointF(along, box.top());
        };
        return !grid.contains(place(before)) && grid.contains(place(std::nextafter(before, -1e9)));
    };
    QVERIFY(check(true, rows));
    QVERIFY(check(false, columns));
}

void tst_RoiGeometry::polygonsWithACommonEdgeShareNoPlaceAndLoseNone()
{
    const QPointF a(0.13, 0.07), b(3.71, 2.93), c(0.37, 3.11), e(3.31, 0.11);
    const CROIBase left = polygon(QPolygonF({a, b, c}));
    const CROIBase right = polygon(QPolygonF({b, a, e}));
    const CROIBase both = polygon(QPolygonF({a, e, b, c}));
    for (int i = 0; i <= 1000; ++i) {
        const double part = i / 1000.0;
        const double y = a.y() + part * (b.y() - a.y());
        const double x = a.x() + (y - a.y()) * ((b.x() - a.x()) / (b.y() - a.y()));
        for (const double near : {std::nextafter(x, -9.0), x, std::nextafter(x, 9.0)}) {
            const QPointF place(near, y);
            QCOMPARE(int(left.contains(place)) + int(right.contains(place)), int(both.contains(place)));
        }
    }
}

void tst_RoiGeometry::anEllipseIsSymmetric()
{
    // Centres at 0.05, 0.15, ... lie on the circle in four directions, in numbers that are rounded.
    const CROIBase circle(EROI_ELLIPSE, EROI_MEASUREMENT, QRectF(0.05, 0.05, 0.6, 0.6));
    const auto centre = [](int i) { return (i + 0.5) * 0.1; };
    int inside = 0;
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 7; ++x) {
            const bool isIn = circle.contains({centre(x), centre(y)});
            QCOMPARE(isIn, (x - 3) * (x - 3) + (y - 3) * (y - 3) <= 9);
            inside += isIn;
        }
    }
    QCOMPARE(inside, 29);
}

QTEST_GUILESS_MAIN(tst_RoiGeometry)
#include "tst_RoiGeometry.moc"
