// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/LayoutGeometry.h"

#include <QtTest>

class tst_LayoutGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threeCellsWithABorderOfATenthFillTheColumn()
    {
        LayoutGeometry geometry;
        geometry.layout = ELAYOUT_THREE_ROWS;
        const float h = geometry.thumbnailHeight();
        QCOMPARE(geometry.imageRect().height() / 3.6f, h);
        geometry.border = int(h * 0.1f);
        QCOMPARE(geometry.thumbnailRect(0).top(), double(geometry.border));
        QCOMPARE(geometry.thumbnailRect(2).bottom() + geometry.border, double(geometry.imageRect().bottom));
        QCOMPARE(geometry.thumbnailRect(1).top() - geometry.thumbnailRect(0).bottom(), 2.0 * geometry.border);
    }

    void aThumbnailsSizeDependsOnTheLayoutAlone()
    {
        for (const EIMAGELAYOUT layout : {ELAYOUT_SINGLE, ELAYOUT_THREE_ROWS}) {
            LayoutGeometry geometry;
            geometry.layout = layout;
            const float w = geometry.thumbnailWidth();
            const float h = geometry.thumbnailHeight();
            for (const int border : {0, 10, 30, 200}) {
                geometry.border = border;
                QCOMPARE(geometry.thumbnailWidth(), w);
                QCOMPARE(geometry.thumbnailHeight(), h);
            }
        }
    }

    void theStripStandsAtTheColumnsRight()
    {
        for (const EIMAGELAYOUT layout : {ELAYOUT_SINGLE, ELAYOUT_THREE_ROWS}) {
            LayoutGeometry geometry;
            geometry.layout = layout;
            QCOMPARE(geometry.colorBarRect().left, geometry.imageRect().right);
            QVERIFY(geometry.colorBarRect().width() > 0.0f);
            QVERIFY(double(geometry.colorBarRect().right) <= geometry.pictureSize().width());
        }
    }

    void thePictureIsScaledEvenlyAndCentred_data()
    {
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("a wide window") << QSizeF(2000, 500);
        QTest::newRow("a high window") << QSizeF(200, 1500);
        QTest::newRow("a small window") << QSizeF(30, 20);
    }
    void thePictureIsScaledEvenlyAndCentred()
    {
        QFETCH(QSizeF, size);
        LayoutGeometry geometry;
        geometry.layout = ELAYOUT_THREE_ROWS;
        const QRectF all = geometry.toDevice(QRectF(QPointF(), geometry.pictureSize()), size);
        QVERIFY(std::abs(all.center().x() - size.width() / 2.0) < 1e-6);
        QVERIFY(std::abs(all.center().y() - size.height() / 2.0) < 1e-6);
        QVERIFY(all.width() <= size.width() + 1e-6 && all.height() <= size.height() + 1e-6);
        QVERIFY(std::abs(all.width() - size.width()) < 1e-6 || std::abs(all.height() - size.height()) < 1e-6);
    }

    void aWindowWithoutSizeHasAScaleAllTheSame()
    {
        LayoutGeometry geometry;
        QVERIFY(geometry.scaleFor(QSizeF(0, 0)) > 0.0);
    }

    void imagesKeepTheirPhysicalProportions()
    {
        LayoutGeometry geometry;
        geometry.layout = ELAYOUT_THREE_ROWS;
        const QVector<QRectF> rects = geometry.imageRects({{1000, 1000}, {500, 500}, {0, 0}});
        QCOMPARE(rects[0].size(),
                 QSizeF(double(geometry.thumbnailWidth()), double(geometry.thumbnailHeight())));
        QCOMPARE(rects[1].size(), rects[0].size() / 2.0);
        QCOMPARE(rects[1].center(), geometry.thumbnailRect(1).center());
        QVERIFY(rects[2].isEmpty());
    }

    void imagesOfTheSameSizeFillTheirCells()
    {
        LayoutGeometry geometry;
        geometry.layout = ELAYOUT_THREE_ROWS;
        geometry.sameSize = true;
        const double side = double(geometry.thumbnailWidth());
        const QVector<QRectF> rects = geometry.imageRects({{1000, 1000}, {50, 50}, {100, 50}});
        QCOMPARE(rects[0].size(), QSizeF(side, side));
        QCOMPARE(rects[1].size(), QSizeF(side, side));
        QCOMPARE(rects[2].size(), QSizeF(side, side / 2.0));
    }
};

QTEST_APPLESS_MAIN(tst_LayoutGeometry)
#include "tst_LayoutGeometry.moc"
