// SPDX-License-Identifier: MIT
#include "tests/support/PaintCounter.h"
#include "tests/support/ViewFixture.h"

#include <QApplication>
#include <QtTest>

namespace {

QRgb colourAt(const QImage &image, const QPointF &relative)
{
    return image.pixel(int(relative.x() * image.width()), int(relative.y() * image.height()));
}

} // namespace

class tst_MultiImageView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEngineIsTheExpectedOne() { QVERIFY(drawsWithExpectedEngine()); }

    void thePictureHasTheScreensPixels()
    {
        CVXSMultiImageView view;
        show(view, QSize(301, 203));
        QImage picture;
        view.getImage(picture);
        QCOMPARE(picture.size(), QSize(301, 203) * view.devicePixelRatioF());
        QCOMPARE(view.rasterImage().size(), picture.size());
#ifdef SCALE_FACTOR
        QCOMPARE(view.devicePixelRatioF(), QByteArray(SCALE_FACTOR).toDouble());
#endif
    }

    void slotsAreFilledReplacedAndEmptied()
    {
        CVXSMultiImageView view;
        CILImage image = spots(8, 8);
        QVERIFY(!view.setImageAt(&image, false, 0, QString(), 0));
        QVERIFY(view.addImage(nullptr, false, QString(), 0));
        QVERIFY(view.setImageAt(&image, false, 0, QString(), 0));
        QCOMPARE(view.imageAt(0), &image);
        QVERIFY(view.setImageAt(nullptr, false, 0, QString(), 0));
        QCOMPARE(view.imageAt(0), nullptr);
        QVERIFY(!view.setImageAt(&image, false, 1, QString(), 0));
        QVERIFY(!view.setImageAt(&image, false, -1, QString(), 0));
    }

    void pixelsAreUploadedOncePerChange()
    {
        ThreeImageView v;
        v.place();
        show(*v.view, QSize(300, 600));
        QImage picture;
        v.view->getImage(picture);
        QCOMPARE(v.view->uploadCount(), 3);
        colour(v.a, VXS_CT_GRAYS, 0.0, 500.0, true, true);
        v.place();
        v.view->resize(500, 800);
        v.view->getImage(picture);
        QCOMPARE(v.view->uploadCount(), 3);
        v.result *= 2.0;
        v.view->getImage(picture);
        v.view->getImage(picture);
        QCOMPARE(v.view->uploadCount(), 4);
        v.place(); // handing the same images over again changes nothing
        v.view->getImage(picture);
        QCOMPARE(v.view->uploadCount(), 4);
    }

    void updateRepaints()
    {
        ThreeImageView v;
        v.place();
        show(*v.view, QSize(300, 600));
        QTRY_COMPARE(v.view->uploadCount(), 3);
        v.a *= 0.5;
        QWidget *widget = v.view.get();
        widget->update();
        QTRY_COMPARE(v.view->uploadCount(), 4);
    }

    void aViewAtRestDoesNotPaint()
    {
        ThreeImageView v;
        // An image whose pixels may be written at any time is read at every painting: a counter of paintings.
        v.a.get_data();
        v.place();
        PaintCounter paints(v.view.get());
        show(*v.view, QSize(300, 600));
        QTRY_VERIFY(v.view->uploadCount() >= 3);
        QVERIFY(paints.comesToRest());
        const int before = v.view->uploadCount();
        for (int i = 0; i < 10; ++i)
            QVERIFY(paints.anotherWidgetPaints());
        QVERIFY(v.view->uploadCount() - before <= 1);
    }

    void bothEnginesPaintTheSame_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("three images") << 0;
        QTest::newRow("log scale") << 1;
        QTest::newRow("reversed") << 2;
        QTest::newRow("pixels that are not finite") << 3;
        QTest::newRow("an image of NaN") << 4;
        QTest::newRow("equal limits") << 5;
        QTest::newRow("limits in the wrong order") << 6;
        QTest::newRow("empty slots") << 7;
        QTest::newRow("an image of 0 x 0") << 8;
        QTest::newRow("limits that are not numbers") << 9;
        QTest::newRow("log scale with a lower limit of 0") << 10;
        QTest::newRow("large images, reduced") << 11;
        QTest::newRow("extreme limits") << 12;
        QTest::newRow("both limits 0") << 13;
        QTest::newRow("log scale with negative limits") << 14;
        QTest::newRow("log scale with equal limits") << 15;
        for (int table = 0; table < VXS_CT_COUNT; ++table)
            QTest::newRow(CILPalette::tableName(VXS_COLORTABLE_TYPES(table))) << 100 + table;
    }
    void bothEnginesPaintTheSame()
    {
        QFETCH(int, kind);
        const float nan = std::numeric_limits<float>::quiet_NaN();
        const float inf = std::numeric_limits<float>::infinity();
        ThreeImageView v;
        const auto colourAll = [&](VXS_COLORTABLE_TYPES table, double low, double high, bool reversed,
                                   bool log) {
            for (CILImage *image : {&v.a, &v.b, &v.result})
                colour(*image, table, low, high, reversed, log);
        };
        switch (kind) {
        case 1:
            colourAll(VXS_CT_RAINBOW, 10.0, 5.0e7, false, true);
            break;
        case 2:
            colourAll(VXS_CT_RAINBOW, 0.0, 1000.0, true, false);
            break;
        case 3:
            v.a = imageOf(40, 40, [=](int x, int y) {
                return x == y ? nan : x == 7 ? inf : y == 9 ? -inf : 10.0f * float(x);
            });
            colour(v.a, VXS_CT_RAINBOW, 0, 400);
            break;
        case 4:
            v.a = imageOf(30, 30, [=](int, int) { return nan; });
            break;
        case 5:
            colourAll(VXS_CT_RAINBOW, 300.0, 300.0, false, false);
            break;
        case 6:
            colourAll(VXS_CT_RAINBOW, 1000.0, 50.0, false, false);
            break;
        case 8:
            v.b = CILImage();
            break;
        case 9:
            colourAll(VXS_CT_RAINBOW, double(nan), 1000.0, false, false);
            break;
        case 10:
            colourAll(VXS_CT_RAINBOW, 0.0, 1000.0, false, true);
            break;
        case 11:
            v.a = spots(2050, 1500);
            v.b = spots(1025, 750);
            colour(v.a, VXS_CT_RAINBOW, 0, 1000);
            break;
        case 12:
            v.a = imageOf(50, 50, [](int x, int y) { return (x - 25) * 1.2e37 + y * 1e35; });
            colour(v.a, VXS_CT_RAINBOW, -3.4e38, 3.4e38);
            break;
        case 13:
            colourAll(VXS_CT_RAINBOW, 0.0, 0.0, false, false);
            break;
        case 14:
            colourAll(VXS_CT_RAINBOW, -1000.0, -10.0, false, true);
            break;
        case 15:
            colourAll(VXS_CT_RAINBOW, 300.0, 300.0, false, true);
            break;
        default:
            break;
        }
        if (kind >= 100)
            colourAll(VXS_COLORTABLE_TYPES(kind - 100), 20.0, 900.0, false, false);
        v.place();
        if (kind == 7) {
            v.view->setImageAt(nullptr, false, 0, QString(), 0);
            v.view->setImageAt(nullptr, false, 2, QString(), 0);
        }
        show(*v.view, QSize(320, 610));
        QImage drawn;
        v.view->getImage(drawn);
        const QImage raster = v.view->rasterImage();
        QCOMPARE(drawn.size(), raster.size());
        int different = 0;
        for (int y = 0; y < raster.height(); ++y) {
            for (int x = 0; x < raster.width(); ++x) {
                const QRgb p = drawn.pixel(x, y);
                const QRgb q = raster.pixel(x, y);
                // One entry of the table more or less by rounding.
                if (std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                        std::abs(qBlue(p) - qBlue(q)) >
                    24)
                    ++different;
            }
        }
        QVERIFY2(different <= 2, qPrintable(QString::number(different)));
    }

    void aGrabOfTheWindowHoldsEverything()
    {
        ThreeImageView v;
        v.place();
        QWidget window;
        v.view->setParent(&window);
        window.resize(300, 600);
        v.view->resize(300, 600);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QImage grabbed = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QImage raster = v.view->rasterImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(grabbed.size(), raster.size());
        int different = 0;
        for (int y = 0; y < raster.height(); ++y) {
            for (int x = 0; x < raster.width(); ++x)
                different += std::abs(qGreen(grabbed.pixel(x, y)) - qGreen(raster.pixel(x, y))) > 16 ? 1 : 0;
        }
        QVERIFY2(different <= 2, qPrintable(QString::number(different)));
        v.view->setParent(nullptr);
    }

    void aPixelHasItsPalettesColour()
    {
        CVXSMultiImageView view;
        CILImage image = imageOf(4, 4, [](int x, int y) { return 4 * y + x; });
        colour(image, VXS_CT_RAINBOW, 0.0, 15.0);
        view.addImage(&image, false, QString(), 0);
        show(view, QSize(500, 400));
        QImage picture;
        view.getImage(picture);
        int found = 0;
        for (int y = 2; y < 400; y += 5) {
            for (int x = 2; x < 500; x += 5) {
                int slot = -1;
                QPoint pixel;
                if (!view.pixelAt(QPoint(x, y), &slot, &pixel) ||
                    !view.pixelAt(QPoint(x + 1, y + 1), &slot, &pixel))
                    continue;
                QPoint neighbour;
                view.pixelAt(QPoint(x - 1, y - 1), &slot, &neighbour);
                if (neighbour != pixel)
                    continue;
                ++found;
                QCOMPARE(slot, 0);
                const double ratio = view.devicePixelRatioF();
                QCOMPARE(picture.pixel(int((x + 0.5) * ratio), int((y + 0.5) * ratio)) | 0xff000000u,
                         image.getPalette().color(
                             image.pixelAt(std::uint32_t(pixel.x()), std::uint32_t(pixel.y()))));
            }
        }
        QVERIFY(found > 1000);
    }

    void aPixelThatIsNotFiniteHasItsOwnColour()
    {
        CVXSMultiImageView view;
        CILImage image = imageOf(5, 5, [](int, int) { return std::numeric_limits<float>::quiet_NaN(); });
        view.addImage(&image, false, QString(), 0);
        show(view, QSize(400, 400));
        QImage picture;
        view.getImage(picture);
        QCOMPARE(colourAt(picture, QPointF(0.4, 0.5)) | 0xff000000u, CILPalette::notFiniteColor());
    }

    void anyOrderOfDestructionIsFine()
    {
        {
            CVXSTextTag outlives;
            outlives.setStringList({QStringLiteral("a")});
            {
                CVXSMultiImageView view;
                view.addTextTag(&outlives);
                view.resize(200, 200);
                view.rasterImage();
            }
            outlives.setPosition(1.0, 2.0);
            outlives.show(false);
        }
        CVXSMultiImageView view;
        view.addImage(nullptr, false, QString(), 0);
        {
            CVXSTextTag diesFirst;
            diesFirst.setStringList({QStringLiteral("b")});
            view.addTextTag(&diesFirst);
            SColorbar bar;
            view.addColorbar(&bar);
            view.removeColorbar(&bar);
        }
        QVERIFY(!view.rasterImage().isNull());
        CVXSMultiImageView other;
        CVXSTextTag moves;
        view.addTextTag(&moves);
        other.addTextTag(&moves);
        view.removeTextTag(&moves);
        moves.setStringList({QStringLiteral("c")});
        QVERIFY(!other.rasterImage().isNull());
    }

    void aViewIsMovedToAnotherWindow()
    {
        ThreeImageView v;
        v.place();
        QWidget first;
        QWidget second;
        first.resize(400, 700);
        second.resize(400, 700);
        v.view->setParent(&first);
        v.view->resize(400, 700);
        first.show();
        QVERIFY(QTest::qWaitForWindowExposed(&first));
        QCoreApplication::processEvents();
        v.view->setParent(&second);
        v.view->show();
        second.show();
        QVERIFY(QTest::qWaitForWindowExposed(&second));
        QCoreApplication::processEvents();
        QImage drawn;
        v.view->getImage(drawn);
        const QImage raster = v.view->rasterImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(drawn.size(), raster.size());
        QCOMPARE(colourAt(drawn, QPointF(0.35, 0.14)), colourAt(raster, QPointF(0.35, 0.14)));
        v.view->setParent(nullptr);
    }

    void aViewWithoutSizeIsFine()
    {
        ThreeImageView v;
        v.place();
        v.view->resize(0, 0);
        double w = 0.0;
        double h = 0.0;
        v.view->convertWindowToObjectSize(1, 1, w, h);
        QVERIFY(std::isfinite(w) && std::isfinite(h));
        QImage image;
        v.view->getImage(image);
        v.view->resize(1, 1);
        v.view->getImage(image);
        QCOMPARE(image.size(), QSize(1, 1) * v.view->devicePixelRatioF());
    }
};

int main(int argc, char *argv[])
{
    return runScaled<tst_MultiImageView>(argc, argv);
}
#include "tst_MultiImageView.moc"
