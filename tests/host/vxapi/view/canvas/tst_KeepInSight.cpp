// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/KeepInSight.h"
#include "tests/support/Rows.h"

#include <QtTest>

class tst_KeepInSight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNearestPlaceInSight_data();
    void theNearestPlaceInSight();
};

void tst_KeepInSight::theNearestPlaceInSight_data()
{
    QTest::addColumn<QPoint>("wanted");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("place");
    const QSize small(30, 20);
    // The area begins at (10, 20) and is 100 x 50.
    row("inside, it stays", QPoint(40, 30), small, QPoint(40, 30));
    row("at the upper left corner, it stays", QPoint(10, 20), small, QPoint(10, 20));
    row("touching the right and lower edge, it stays", QPoint(80, 50), small, QPoint(80, 50));
    row("a pixel over the right edge, it comes back by one", QPoint(81, 30), small, QPoint(80, 30));
    row("a pixel over the lower edge, it comes back by one", QPoint(40, 51), small, QPoint(40, 50));
    row("far away to the upper left", QPoint(-500, -500), small, QPoint(10, 20));
    row("far away to the lower right", QPoint(5000, 5000), small, QPoint(80, 50));
    row("wider than the area, it begins at the left edge", QPoint(40, 30), QSize(300, 20), QPoint(10, 30));
    row("higher than the area, it begins at the upper edge", QPoint(40, 30), QSize(30, 200), QPoint(40, 20));
}

void tst_KeepInSight::theNearestPlaceInSight()
{
    QFETCH(QPoint, wanted);
    QFETCH(QSize, size);
    QTEST(placeInSight(wanted, size, QRect(10, 20, 100, 50)), "place");
}

QTEST_APPLESS_MAIN(tst_KeepInSight)
#include "tst_KeepInSight.moc"
