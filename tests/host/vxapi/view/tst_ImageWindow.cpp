// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/CVXSImageWindow.h"
#include "host/vxapi/view/CVXSMultiImageView.h"
#include "tests/host/vxapi/view/ViewFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QToolButton>
#include <QtTest>

namespace {

CVXSMultiImageView *viewOf(CVXSImageWindow &window)
{
    return window.findChild<CVXSMultiImageView *>(QStringLiteral("ImageView"));
}

QString text(CVXSImageWindow &window, const char *name)
{
    return window.findChild<QLabel *>(QLatin1String(name))->text();
}

} // namespace

class tst_ImageWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLuminescentImageIsShownInItsUnit()
    {
        CVXSDataset dataset(QStringLiteral("IW1"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(40, 30));
        CVXSImageWindow window(&dataset);
        QVERIFY(!window.isSequenceWindow());
        QCOMPARE(window.getDataset(), &dataset);
        QCOMPARE(window.getSequenceDataset(), nullptr);
        QCOMPARE(CVXSImageWindow::getImageWindow(&dataset), &window);
        QCOMPARE(window.windowTitle(), QStringLiteral("IW1"));
        QCOMPARE(text(window, "UnitLabel"), QStringLiteral("Counts"));
        const CILImage *shown = viewOf(window)->imageAt(0);
        QVERIFY(shown);
        QCOMPARE(shown->getWidth(), 40u);
        QVERIFY(shown->getPalette().getImageMax() > shown->getPalette().getImageMin());
        QVERIFY(!window.findChild<QToolButton *>(QStringLiteral("FlatFieldButton"))->isVisibleTo(&window));
    }

    void theFlatFieldIsSwitched()
    {
        CVXSDataset dataset(QStringLiteral("IW2"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, imageOf(20, 20, [](int, int) { return 100.0; }));
        dataset.setCoreImage(EIMAGE_FLATFIELD,
                             imageOf(20, 20, [](int x, int) { return x < 10 ? 1.0 : 0.5; }));
        dataset.doFlatFieldCorrection(false);
        CVXSImageWindow window(&dataset);
        auto *button = window.findChild<QToolButton *>(QStringLiteral("FlatFieldButton"));
        QVERIFY(button->isVisibleTo(&window));
        QVERIFY(!button->isChecked());
        const auto value = [&] { return viewOf(window)->imageAt(0)->pixelAt(15, 5); };
        QCOMPARE(value(), 100.0);
        window.switchFlatFieldCorrection(true);
        QVERIFY(dataset.isLuminFlatFieldCorrected());
        QVERIFY(button->isChecked());
        QTRY_COMPARE(value(), 200.0);
        QVERIFY(text(window, "CorrectionLabel").contains(QStringLiteral("flat-field corrected")));
        button->click();
        QVERIFY(!dataset.isLuminFlatFieldCorrected());
        QTRY_COMPARE(value(), 100.0);
        dataset.doFlatFieldCorrection(true); // by someone else
        QTRY_VERIFY(button->isChecked());
    }

    void theFlatFieldCannotBeSwitchedOnWithoutOne()
    {
        CVXSDataset dataset(QStringLiteral("IW3"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        CVXSImageWindow window(&dataset);
        window.switchFlatFieldCorrection(true);
        QVERIFY(!dataset.isLuminFlatFieldCorrected());
        QVERIFY(!window.findChild<QToolButton *>(QStringLiteral("FlatFieldButton"))->isChecked());
    }

    void thePhotographCanBeChosen()
    {
        CVXSDataset dataset(QStringLiteral("IW4"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        dataset.setCoreImage(EIMAGE_PHOTOGRAPH, spots(60, 60));
        CVXSImageWindow window(&dataset);
        auto *choice = window.findChild<QComboBox *>(QStringLiteral("ImageChoice"));
        QCOMPARE(choice->count(), 3);
        QCOMPARE(choice->currentText(), QStringLiteral("Luminescence over photograph"));
        QCOMPARE(viewOf(window)->imageAt(0)->getWidth(), 20u);
        choice->setCurrentIndex(2);
        QCOMPARE(viewOf(window)->imageAt(0)->getWidth(), 60u);
        QCOMPARE(viewOf(window)->imageAt(0)->getPalette().getColorTableType(), VXS_CT_GRAYS);
        choice->setCurrentIndex(1);
        QCOMPARE(choice->currentText(), QStringLiteral("Luminescence"));
        QCOMPARE(viewOf(window)->imageAt(0)->getWidth(), 20u);
    }

    void aUnitThatCannotBeComputedIsToldInTheView()
    {
        CVXSDataset dataset(QStringLiteral("IW5")); // no calibration constants
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        CVXSImageWindow window(&dataset);
        const QImage good = viewOf(window)->rasterImage();
        dataset.setUnit(EUNIT_RADIANCE);
        QTRY_COMPARE(viewOf(window)->imageAt(0), nullptr);
        QVERIFY(viewOf(window)->rasterImage() != good);
        dataset.setUnit(EUNIT_COUNTS);
        QTRY_VERIFY(viewOf(window)->imageAt(0) != nullptr);
        QTRY_COMPARE(viewOf(window)->rasterImage(), good);
    }

    void aDatasetWithoutImagesHasAWindowToo()
    {
        CVXSDataset dataset(QStringLiteral("IW6"));
        CVXSImageWindow window(&dataset);
        QCOMPARE(viewOf(window)->imageAt(0), nullptr);
        QVERIFY(!viewOf(window)->rasterImage().isNull());
    }

    void thePixelUnderTheMouseIsRead()
    {
        CVXSDataset dataset(QStringLiteral("IW7"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, imageOf(10, 10, [](int x, int y) { return 100 * y + x; }));
        CVXSImageWindow window(&dataset);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        CVXSMultiImageView *view = viewOf(window);
        int slot = -1;
        QPoint pixel;
        const QPoint place(view->width() * 2 / 5, view->height() / 3);
        QVERIFY(view->pixelAt(place, &slot, &pixel));
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &move);
        QCOMPARE(
            text(window, "PixelReadout"),
            QStringLiteral("x %1, y %2: %3").arg(pixel.x()).arg(pixel.y()).arg(100 * pixel.y() + pixel.x()));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(view, &leave);
        QCOMPARE(text(window, "PixelReadout"), QString());
    }

    void savingSavesTheSequenceOfTheDataset()
    {
        CVXSSequenceDataset sequence(QStringLiteral("IW8_SEQ"));
        auto *dataset = new CVXSDataset(QStringLiteral("IW8"));
        dataset->setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        QVERIFY(sequence.addDataset(dataset));
        CVXSImageWindow window(dataset);
        QCOMPARE(window.saveSequence(), ESTATUS_SUCCESS);
        QVERIFY(!sequence.getSequenceInfoPath().isEmpty());
    }
};

QTEST_MAIN(tst_ImageWindow)
#include "tst_ImageWindow.moc"
