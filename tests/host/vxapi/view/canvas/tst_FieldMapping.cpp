// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/FieldMapping.h"

#include "host/vxapi/view/roi/RoiHandles.h"
#include "tests/support/ViewFixture.h"

#include <QApplication>
#include <QtTest>

Q_DECLARE_METATYPE(FieldMapping)

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_FieldMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePlaceUnderTheMouseIsThatOfThePixelThere_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QSize>("pixels");
        QTest::newRow("square image, small window") << QSize(220, 200) << QSize(64, 64);
        QTest::newRow("square image, odd window") << QSize(501, 433) << QSize(64, 64);
        QTest::newRow("square image, large window") << QSize(1200, 900) << QSize(64, 64);
        QTest::newRow("wide image") << QSize(640, 480) << QSize(96, 40);
        QTest::newRow("high image of odd size") << QSize(640, 481) << QSize(33, 97);
        QTest::newRow("more pixels than the window has") << QSize(300, 260) << QSize(1000, 1000);
    }
    void thePlaceUnderTheMouseIsThatOfThePixelThere()
    {
        QFETCH(QSize, window);
        QFETCH(QSize, pixels);
        CVXSMultiImageView view;
        CILImage image = spots(pixels.width(), pixels.height());
        view.addImage(&image, false, QString(), 0);
        show(view, window);
        const FieldMapping mapping(view.imagePlace(0), 12.5, pixels);
        QVERIFY(mapping.isValid());
        QCOMPARE(mapping.pixelSize(), 12.5 / pixels.width());
        int found = 0;
        for (int y = 0; y < window.height(); y += 7) {
            for (int x = 0; x < window.width(); x += 7) {
                int slot = -1;
                QPoint pixel;
                const QPointF field = mapping.toField(QPointF(x + 0.5, y + 0.5));
                const bool isPixel = view.pixelAt(QPoint(x, y), &slot, &pixel);
                QCOMPARE(mapping.field().contains(field), isPixel);
                if (!isPixel)
                    continue;
                ++found;
                QCOMPARE(int(std::floor(field.x() / mapping.pixelSize() + 1e-9)), pixel.x());
                QCOMPARE(int(std::floor(field.y() / mapping.pixelSize() + 1e-9)), pixel.y());
            }
        }
        QVERIFY(found > 50);
    }

    void thePlaceIsWhereThePictureIsPainted()
    {
        // The image's edge pixels stand out; the place must hold them exactly.
        CVXSMultiImageView view;
        CILImage image = imageOf(50, 30, [](int, int) { return 1.0; });
        colour(image, VXS_CT_GRAYS, 0.0, 1.0);
        view.addImage(&image, false, QString(), 0);
        show(view, QSize(517, 403));
        const QImage picture = view.rasterImage();
        const double ratio = view.devicePixelRatioF();
        const QRectF place = view.imagePlace(0);
        const QRect device(qRound(place.left() * ratio), qRound(place.top() * ratio),
                           qRound(place.width() * ratio), qRound(place.height() * ratio));
        const auto isWhite = [&](int x, int y) { return qRed(picture.pixel(x, y)) == 255; };
        QVERIFY(isWhite(device.left(), device.top()));
        QVERIFY(isWhite(device.right(), device.bottom()));
        QVERIFY(!isWhite(device.left() - 1, device.top()));
        QVERIFY(!isWhite(device.right() + 1, device.bottom()));
        QVERIFY(!isWhite(device.left(), device.top() - 1));
        QVERIFY(!isWhite(device.right(), device.bottom() + 1));
    }

    void thereAndBackIsTheSamePlace()
    {
        const FieldMapping mapping(QRectF(13.5, 7.0, 401.5, 300.0), 9.7, QSize(400, 299));
        for (const QPointF &place : {QPointF(0.0, 0.0), QPointF(4.85, 1.25), QPointF(-3.0, 11.0)}) {
            const QPointF back = mapping.toField(mapping.toView(place));
            QVERIFY(QLineF(back, place).length() < 1e-9);
        }
        QCOMPARE(mapping.toView(mapping.field()), QRectF(13.5, 7.0, 401.5, 300.0));
        QCOMPARE(mapping.lengthInField(401.5), 9.7);
    }

    void nothingIsMappedWithout_data()
    {
        QTest::addColumn<FieldMapping>("mapping");
        const QRectF place(0.0, 0.0, 100.0, 100.0);
        const QSize pixels(10, 10);
        QTest::newRow("anything") << FieldMapping();
        QTest::newRow("a place") << FieldMapping(QRectF(), 10.0, pixels);
        QTest::newRow("a field of view that is a number") << FieldMapping(place, NOT_A_NUMBER, pixels);
        QTest::newRow("a field of view above 0") << FieldMapping(place, 0.0, pixels);
        QTest::newRow("pixels") << FieldMapping(place, 10.0, QSize(0, 10));
    }
    void nothingIsMappedWithout()
    {
        QFETCH(FieldMapping, mapping);
        QVERIFY(!mapping.isValid());
        QCOMPARE(mapping.toField(QPointF(50.0, 50.0)), QPointF());
        QCOMPARE(mapping.toView(QPointF(5.0, 5.0)), QPointF());
        QCOMPARE(mapping.lengthInField(5.0), 0.0);
    }

    void aShiftStopsAtTheFieldsEdge_data()
    {
        QTest::addColumn<QRectF>("box");
        QTest::addColumn<QPointF>("by");
        QTest::addColumn<QPointF>("allowed");
        const QRectF inside(2.0, 3.0, 4.0, 4.0);
        QTest::newRow("room on all sides") << inside << QPointF(1.0, -1.0) << QPointF(1.0, -1.0);
        QTest::newRow("too far to the right") << inside << QPointF(9.0, 0.0) << QPointF(4.0, 0.0);
        QTest::newRow("too far up and left") << inside << QPointF(-9.0, -9.0) << QPointF(-2.0, -3.0);
        QTest::newRow("a box across the edge goes anywhere")
            << QRectF(-1.0, 0.0, 4.0, 4.0) << QPointF(-5.0, 2.0) << QPointF(-5.0, 2.0);
    }
    void aShiftStopsAtTheFieldsEdge()
    {
        QFETCH(QRectF, box);
        QFETCH(QPointF, by);
        QFETCH(QPointF, allowed);
        const FieldMapping mapping(QRectF(0.0, 0.0, 100.0, 100.0), 10.0, QSize(10, 10));
        QVERIFY(QLineF(mapping.clampedShift(box, by), allowed).length() < 1e-9);
    }

    void eachHandleMovesItsSides_data()
    {
        QTest::addColumn<QRectF>("resized");
        QTest::newRow("0 upper left") << QRectF(QPointF(6, 7), QPointF(30, 40));
        QTest::newRow("1 upper") << QRectF(QPointF(10, 7), QPointF(30, 40));
        QTest::newRow("2 upper right") << QRectF(QPointF(10, 7), QPointF(11, 40));
        QTest::newRow("3 right") << QRectF(QPointF(10, 20), QPointF(11, 40));
        QTest::newRow("4 lower right") << QRectF(QPointF(10, 20), QPointF(11, 21));
        QTest::newRow("5 lower") << QRectF(QPointF(10, 20), QPointF(30, 21));
        QTest::newRow("6 lower left") << QRectF(QPointF(6, 20), QPointF(30, 21));
        QTest::newRow("7 left") << QRectF(QPointF(6, 20), QPointF(30, 40));
    }
    void eachHandleMovesItsSides()
    {
        QFETCH(QRectF, resized);
        const int handle = QTest::currentDataTag()[0] - '0';
        const QRectF box(QPointF(10, 20), QPointF(30, 40));
        QCOMPARE(roihandles::at(box, roihandles::place(box, handle)), handle);
        // Beyond the opposite side the least length holds.
        QCOMPARE(roihandles::resized(box, handle, QPointF(6, 7), 1.0), resized);
        QCOMPARE(roihandles::at(box, box.center()), -1);
    }
};

int main(int argc, char *argv[])
{
    return runScaled<tst_FieldMapping>(argc, argv);
}

#include "tst_FieldMapping.moc"
