// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/WindowPlacing.h"

#include <QTest>

using windowplacing::freePlace;
using windowplacing::tiles;
using windowplacing::Wish;

namespace {

const QRect AREA(0, 0, 1600, 980);
const Wish IMAGE{{840, 740}, {560, 480}};

} // namespace

class tst_WindowPlacing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFreePlaceTouchesNobody_data();
    void aFreePlaceTouchesNobody();
    void theFirstWindowStandsInTheCorner();
    void aSmallWindowLeavesTheLargeRoomToTheNext();
    void withoutRoomEveryTitleBarIsSeen();
    void itStaysInTheArea_data();
    void itStaysInTheArea();
    void manyWindowsArePlacedToo();
    void tilesFillTheArea_data();
    void tilesFillTheArea();
    void tilesThatDoNotFitAreNone();
};

void tst_WindowPlacing::aFreePlaceTouchesNobody_data()
{
    QTest::addColumn<QVector<QRect>>("occupied");
    QTest::addColumn<QSize>("got");
    QTest::newRow("beside a tool") << QVector<QRect>{{0, 0, 526, 591}} << QSize(840, 740);
    QTest::newRow("between two") << QVector<QRect>{{0, 0, 400, 980}, {1100, 0, 500, 980}} << QSize(700, 740);
    QTest::newRow("below a wide one") << QVector<QRect>{{0, 0, 1600, 480}} << QSize(840, 500);
    QTest::newRow("above one at the lower edge") << QVector<QRect>{{0, 700, 1600, 280}} << QSize(840, 700);
    QTest::newRow("one half outside") << QVector<QRect>{{-300, -200, 900, 600}} << QSize(840, 580);
}

void tst_WindowPlacing::aFreePlaceTouchesNobody()
{
    QFETCH(QVector<QRect>, occupied);
    QFETCH(QSize, got);
    const QRect place = freePlace(IMAGE, AREA, occupied);
    QCOMPARE(place.size(), got);
    QVERIFY(AREA.contains(place));
    for (const QRect &other : occupied)
        QVERIFY(!place.intersects(other));
}

void tst_WindowPlacing::theFirstWindowStandsInTheCorner()
{
    QCOMPARE(freePlace(IMAGE, AREA, {}), QRect(0, 0, 840, 740));
}

void tst_WindowPlacing::aSmallWindowLeavesTheLargeRoomToTheNext()
{
    const QRect tool(0, 0, 526, 591);
    const QRect thumbnails = freePlace({{588, 468}, {360, 280}}, AREA, {tool});
    QCOMPARE(thumbnails.topLeft(), QPoint(0, 591));
    QCOMPARE(freePlace(IMAGE, AREA, {tool, thumbnails}), QRect(588, 0, 840, 740));
}

void tst_WindowPlacing::withoutRoomEveryTitleBarIsSeen()
{
    const QVector<QRect> occupied{{0, 0, 526, 591}, {526, 0, 430, 468}};
    const QRect area(0, 0, 956, 778);
    const QRect place = freePlace(IMAGE, area, occupied);
    QCOMPARE(place.size(), IMAGE.enough);
    QVERIFY(area.contains(place));
    for (const QRect &other : occupied) {
        const QRect title(other.topLeft(), QSize(other.width(), 28));
        QVERIFY(title.width() - title.intersected(place).width() >= 120);
    }
}

void tst_WindowPlacing::itStaysInTheArea_data()
{
    QTest::addColumn<QRect>("area");
    QTest::newRow("as large as it wants") << QRect(0, 0, 840, 740);
    QTest::newRow("smaller than it wants") << QRect(0, 0, 600, 500);
    QTest::newRow("not at the origin") << QRect(50, 40, 900, 800);
}

void tst_WindowPlacing::itStaysInTheArea()
{
    QFETCH(QRect, area);
    for (const QVector<QRect> &occupied :
         {QVector<QRect>{}, QVector<QRect>{area}, QVector<QRect>{{70, 60, 300, 200}}})
        QVERIFY(area.contains(freePlace(IMAGE, area, occupied)));
}

void tst_WindowPlacing::manyWindowsArePlacedToo()
{
    QVector<QRect> occupied;
    for (int i = 0; i < 60; ++i) {
        const QRect place = freePlace(IMAGE, AREA, occupied);
        QVERIFY(AREA.contains(place));
        occupied.append(place);
    }
}

void tst_WindowPlacing::tilesFillTheArea_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QVector<QSize>>("least");
    QTest::newRow("one") << AREA << QVector<QSize>{{100, 100}};
    QTest::newRow("four alike") << AREA << QVector<QSize>(4, QSize(300, 200));
    QTest::newRow("five") << AREA << QVector<QSize>(5, QSize(300, 200));
    QTest::newRow("a tall one beside two")
        << QRect(0, 0, 956, 778) << QVector<QSize>{{320, 133}, {503, 591}, {448, 385}};
    QTest::newRow("just as large as they must be")
        << QRect(0, 0, 600, 400) << QVector<QSize>{{300, 400}, {300, 400}};
    QTest::newRow("one needs nearly all") << QRect(0, 0, 1000, 600) << QVector<QSize>{{100, 590}, {890, 100}};
}

void tst_WindowPlacing::tilesFillTheArea()
{
    QFETCH(QRect, area);
    QFETCH(QVector<QSize>, least);
    const QVector<QRect> rects = tiles(area, least);
    QCOMPARE(rects.size(), least.size());
    double sum = 0.0;
    for (int i = 0; i < rects.size(); ++i) {
        QVERIFY(area.contains(rects[i]));
        QVERIFY(rects[i].width() >= least[i].width() && rects[i].height() >= least[i].height());
        for (int other = 0; other < i; ++other)
            QVERIFY(!rects[i].intersects(rects[other]));
        sum += double(rects[i].width()) * rects[i].height();
    }
    QCOMPARE(sum, double(area.width()) * area.height());
}

void tst_WindowPlacing::tilesThatDoNotFitAreNone()
{
    QVERIFY(tiles(QRect(0, 0, 500, 400), {{400, 300}, {400, 300}}).isEmpty());
    QVERIFY(tiles(AREA, {}).isEmpty());
}

QTEST_GUILESS_MAIN(tst_WindowPlacing)
#include "tst_WindowPlacing.moc"
