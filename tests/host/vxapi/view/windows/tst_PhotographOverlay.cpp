// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/PictureTone.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/RoiWindowFixture.h"
#include "tests/support/ViewFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QSpinBox>
#include <QtTest>

namespace {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

/// A view with a luminescent image (columns 0 to 9, column 3 without numbers) over a grey photograph.
class OverlayView
{
public:
    OverlayView()
        : luminescent(imageOf(10, 10, [](int x, int) { return x == 3 ? NOT_A_NUMBER : float(x); })),
          photograph(imageOf(40, 40, [](int x, int y) { return x + y; }))
    {
        colour(luminescent, VXS_CT_RAINBOW, 2.0, 9.0);
        colour(photograph, VXS_CT_GRAYS, 0.0, 78.0);
        view.addImage(&luminescent, false, QString(), 0);
        underlay.image = &photograph;
        underlay.opacity = 0.7;
    }

    void show(const QSize &size = QSize(400, 330))
    {
        QVERIFY(view.setUnderlay(0, underlay));
        view.resize(size);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCoreApplication::processEvents();
    }

    /// The colour at a place of the luminescent image, both from 0 to 1.
    QRgb at(const QImage &picture, double u, double v) const
    {
        const QRectF place = view.imagePlace(0);
        const double ratio = view.devicePixelRatioF();
        return picture.pixel(int((place.left() + u * place.width()) * ratio),
                             int((place.top() + v * place.height()) * ratio)) |
               0xff000000u;
    }
    /// The same of column x, in its middle.
    QRgb column(const QImage &picture, int x, double v = 0.45) const
    {
        return at(picture, (x + 0.5) / 10.0, v);
    }

    CILImage luminescent;
    CILImage photograph;
    ImageUnderlay underlay;
    CVXSMultiImageView view;
};

int difference(QRgb p, QRgb q)
{
    return std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
}

int differentPixels(const CVXSMultiImageView &view)
{
    QImage drawn;
    view.getImage(drawn);
    const QImage raster = view.rasterImage();
    if (drawn.size() != raster.size())
        return -1;
    int different = 0;
    for (int y = 0; y < raster.height(); ++y) {
        for (int x = 0; x < raster.width(); ++x)
            different += difference(drawn.pixel(x, y), raster.pixel(x, y)) > 24 ? 1 : 0;
    }
    return different;
}

} // namespace

class tst_PhotographOverlay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEngineIsTheExpectedOne() { QVERIFY(drawsWithExpectedEngine()); }

    void darkPixelsLetThePhotographThrough_data()
    {
        QTest::addColumn<bool>("reversed");
        QTest::newRow("colours in order") << false;
        QTest::newRow("colours reversed") << true;
    }
    void darkPixelsLetThePhotographThrough()
    {
        QFETCH(bool, reversed);
        OverlayView v;
        colour(v.luminescent, VXS_CT_RAINBOW, 2.0, 9.0, reversed);
        v.show();
        QImage picture;
        v.view.getImage(picture);
        // Below and exactly at the lower limit; the photograph there is x + y = 4 column + 18 +- 3.
        for (const int column : {0, 1, 2}) {
            const QRgb seen = v.column(picture, column);
            QCOMPARE(qRed(seen), qGreen(seen));
            QCOMPARE(qGreen(seen), qBlue(seen));
            QVERIFY(std::abs(qRed(seen) - (4 * column + 20) * 255 / 78) <= 12);
        }
        // Above it: seven tenths of the colour and three of the photograph.
        const QRgb colourOf8 = v.luminescent.getPalette().color(8.0);
        const double grey = double(qRed(v.photograph.getPalette().color(4 * 8 + 20)));
        const QRgb seen = v.column(picture, 8);
        QVERIFY(std::abs(qRed(seen) - (0.7 * qRed(colourOf8) + 0.3 * grey)) <= 12.0);
        QVERIFY(std::abs(qGreen(seen) - (0.7 * qGreen(colourOf8) + 0.3 * grey)) <= 12.0);
        QVERIFY(std::abs(qBlue(seen) - (0.7 * qBlue(colourOf8) + 0.3 * grey)) <= 12.0);
    }

    void aPixelThatIsNotFiniteKeepsItsOwnColour()
    {
        OverlayView v;
        v.underlay.opacity = 0.2;
        v.show();
        QImage picture;
        v.view.getImage(picture);
        QCOMPARE(v.column(picture, 3), CILPalette::notFiniteColor());
    }

    void opacityGoesFromNothingToAll()
    {
        OverlayView v;
        v.underlay.opacity = 1.0;
        v.show();
        QImage picture;
        v.view.getImage(picture);
        QVERIFY(difference(v.column(picture, 8), v.luminescent.getPalette().color(8.0)) <= 3);
        v.underlay.opacity = 0.0;
        v.view.setUnderlay(0, v.underlay);
        QCoreApplication::processEvents();
        v.view.getImage(picture);
        QCOMPARE(qRed(v.column(picture, 8)), qBlue(v.column(picture, 8)));
    }

    void fieldsOfViewAreToScaleAndCentred_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::newRow("equal fields") << 1.0;
        QTest::newRow("the photograph shows twice as much") << 2.0;
        QTest::newRow("the photograph shows half") << 0.5;
    }
    void fieldsOfViewAreToScaleAndCentred()
    {
        QFETCH(double, ratio);
        OverlayView v;
        // White, on a view that is not: what is white is photograph.
        v.photograph = imageOf(40, 40, [](int, int) { return 1.0; });
        colour(v.photograph, VXS_CT_GRAYS, 0.0, 1.0);
        v.luminescent = imageOf(10, 10, [](int, int) { return 0.0; }); // all transparent
        colour(v.luminescent, VXS_CT_RAINBOW, 2.0, 9.0);
        v.underlay.widthRatio = ratio;
        v.show();
        QImage picture;
        v.view.getImage(picture);
        QRect white;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if ((picture.pixel(x, y) & 0xffffffu) == 0xffffffu)
                    white |= QRect(x, y, 1, 1);
            }
        }
        const QRectF place = v.view.imagePlace(0);
        const double device = v.view.devicePixelRatioF();
        QVERIFY(std::abs(white.width() - ratio * place.width() * device) <= 2.0);
        QVERIFY(std::abs(white.height() - ratio * place.height() * device) <= 2.0);
        QVERIFY(QLineF(QRectF(white).center(), place.center() * device).length() <= 2.0);
    }

    void pixelsAreReadOncePerChange()
    {
        OverlayView v;
        v.show();
        QImage picture;
        v.view.getImage(picture);
        QCOMPARE(v.view.uploadCount(), 2);
        v.underlay.opacity = 0.3;
        v.underlay.tone = {20, 1.8};
        v.underlay.widthRatio = 1.5;
        v.view.setUnderlay(0, v.underlay);
        colour(v.luminescent, VXS_CT_YELLOWHOT, 1.0, 5.0, true, true);
        v.view.resize(500, 450);
        v.view.getImage(picture);
        QCOMPARE(v.view.uploadCount(), 2);
        v.photograph *= 0.5;
        v.view.getImage(picture);
        QCOMPARE(v.view.uploadCount(), 3);
    }

    void bothEnginesPaintTheSame_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("luminescent over photograph") << 0;
        QTest::newRow("log scale") << 1;
        QTest::newRow("reversed") << 2;
        QTest::newRow("equal limits") << 3;
        QTest::newRow("a larger photograph") << 4;
        QTest::newRow("a smaller photograph") << 5;
        QTest::newRow("brightness and gamma") << 6;
        QTest::newRow("opaque") << 7;
        QTest::newRow("invisible") << 8;
        QTest::newRow("large images, reduced") << 9;
        QTest::newRow("a photograph without pixels") << 10;
        QTest::newRow("a photograph of NaN") << 11;
        QTest::newRow("a width ratio that is no number") << 12;
    }
    void bothEnginesPaintTheSame()
    {
        QFETCH(int, kind);
        OverlayView v;
        v.luminescent = spots(128, 100);
        v.photograph = spots(200, 150, 30.0);
        colour(v.photograph, VXS_CT_GRAYS, 0.0, 35.0);
        colour(v.luminescent, VXS_CT_RAINBOW, 180.0, 900.0, kind == 2, kind == 1);
        switch (kind) {
        case 3:
            colour(v.luminescent, VXS_CT_RAINBOW, 300.0, 300.0);
            break;
        case 4:
            v.underlay.widthRatio = 1.7;
            break;
        case 5:
            v.underlay.widthRatio = 0.6;
            break;
        case 6:
            v.underlay.tone = {-15, 2.2};
            break;
        case 7:
            v.underlay.opacity = 1.0;
            break;
        case 8:
            v.underlay.opacity = 0.0;
            break;
        case 9:
            v.luminescent = spots(2050, 1500);
            colour(v.luminescent, VXS_CT_RAINBOW, 180.0, 900.0);
            break;
        case 10:
            v.photograph = CILImage();
            break;
        case 11:
            v.photograph = imageOf(30, 30, [](int, int) { return NOT_A_NUMBER; });
            break;
        case 12:
            v.underlay.widthRatio = double(NOT_A_NUMBER);
            break;
        default:
            break;
        }
        v.show(QSize(520, 430));
        const int different = differentPixels(v.view);
        QVERIFY2(different >= 0 && different <= 4, qPrintable(QString::number(different)));
    }

    void withoutPhotographNothingChanges()
    {
        OverlayView v;
        v.underlay = ImageUnderlay();
        v.show();
        const QImage without = v.view.rasterImage();
        const QRectF place = v.view.imagePlace(0);
        v.underlay.image = &v.photograph;
        v.view.setUnderlay(0, v.underlay);
        QVERIFY(v.view.rasterImage() != without);
        QCOMPARE(v.view.imagePlace(0), place);
        v.view.setUnderlay(0, {});
        QCOMPARE(v.view.rasterImage(), without);
        QVERIFY(!v.view.setUnderlay(1, v.underlay));
        QVERIFY(!v.view.setUnderlay(-1, v.underlay));
        QVERIFY(!v.view.setImageTone(1, {}));
    }

    void brightnessAndGammaLightenThePhotograph_data()
    {
        QTest::addColumn<int>("brightness");
        QTest::addColumn<double>("gamma");
        QTest::addColumn<int>("shown"); // of a grey of 51 = 0.2
        QTest::newRow("as it is") << 0 << 1.0 << 51;
        QTest::newRow("brighter by 30 percent") << 30 << 1.0 << 128;
        QTest::newRow("darker by 30 percent") << -30 << 1.0 << 0;
        QTest::newRow("gamma 2: the square root") << 0 << 2.0 << 114;
        QTest::newRow("brightness first, then gamma") << 29 << 2.0 << 179;
        QTest::newRow("a gamma of 0 counts as 1") << 0 << 0.0 << 51;
        QTest::newRow("a gamma that is no number counts as 1") << 0 << double(NOT_A_NUMBER) << 51;
    }
    void brightnessAndGammaLightenThePhotograph()
    {
        QFETCH(int, brightness);
        QFETCH(double, gamma);
        QFETCH(int, shown);
        CILPalette palette;
        palette.SetColorTable(VXS_CT_GRAYS, 0.0, 1.0, 0, 0);
        const auto table = tonedTable(palette, {brightness, gamma});
        QVERIFY(std::abs(qRed(table[51]) - shown) <= 1);
    }

    // --- in the image window ---

    void theWindowOpensWithTheOverlay()
    {
        RoiWindowFixture f;
        auto *choice = f.child<QComboBox>("ImageChoice");
        QCOMPARE(choice->currentText(), QStringLiteral("Luminescence over photograph"));
        auto *opacity = f.child<QSpinBox>("OverlayOpacity");
        QVERIFY(opacity->isVisible());
        QCOMPARE(opacity->value(), 70);
        const QImage before = f.view->rasterImage();
        opacity->setValue(20);
        QVERIFY(f.view->rasterImage() != before);
        choice->setCurrentIndex(choice->findText(QStringLiteral("Luminescence")));
        QVERIFY(!opacity->isVisible());
        const int uploads = f.view->uploadCount();
        choice->setCurrentIndex(0);
        f.view->rasterImage();
        QCOMPARE(f.view->uploadCount(), uploads); // both images are there still
    }

    void theWindowTakesTheFieldsOfView_data()
    {
        QTest::addColumn<QString>("photographField");
        QTest::addColumn<double>("ratio");
        QTest::newRow("the photograph shows twice as much") << "32" << 2.0;
        QTest::newRow("not recorded") << QString() << 1.0;
        QTest::newRow("a slip in the file") << "16000" << 1.0;
    }
    void theWindowTakesTheFieldsOfView()
    {
        QFETCH(QString, photographField);
        QFETCH(double, ratio);
        RoiWindowFixture f;
        const double width = f.view->imagePlace(0).width();
        CPLSection *section = (*f.dataset->getClickInfo())[clickinfo::SECTION_PHOTOGRAPH];
        section->setValue(clickinfo::KEY_FOV, photographField);
        f.window->refreshAfterDatasetAdded();
        QVERIFY(std::abs(f.view->imagePlace(0).width() - width / ratio) <= 2.0);
    }

    void theWindowAppliesBrightnessAndGamma()
    {
        RoiWindowFixture f;
        for (const int choice : {0, 2}) { // over the photograph, and the photograph alone
            f.child<QComboBox>("ImageChoice")->setCurrentIndex(choice);
            const QImage before = f.view->rasterImage();
            CVXSToolInfo info = f.dataset->getToolInfo();
            info.brightness += 25;
            f.dataset->setToolInfo(info);
            f.settle();
            QVERIFY(f.view->rasterImage() != before);
        }
    }
};

int main(int argc, char *argv[])
{
    return runScaled<tst_PhotographOverlay>(argc, argv);
}
#include "tst_PhotographOverlay.moc"
