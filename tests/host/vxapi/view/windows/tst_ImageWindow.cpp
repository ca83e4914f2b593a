// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/DatasetPicture.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"
#include "tests/support/ViewFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

namespace {

CVXSMultiImageView *viewOf(CVXSImageWindow &window)
{
    return window.findChild<CVXSMultiImageView *>(QStringLiteral("ImageView"));
}

QString field(CVXSImageWindow &window, const char *name)
{
    return window.findChild<QLineEdit *>(QLatin1String(name))->text();
}

/// As the user does: a signal comes.
void choose(QComboBox *mode, ELIMITMODE wanted)
{
    mode->setCurrentIndex(mode->findData(wanted));
    Q_EMIT mode->activated(mode->currentIndex());
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

    void theTitleNamesTheFileOfAnImportedClick_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("section");
        QTest::addColumn<bool>("isResult");
        QTest::addColumn<QString>("title");
        const QString luminescent = clickinfo::SECTION_LUMINESCENT;
        const QString photograph = clickinfo::SECTION_PHOTOGRAPH;
        row("the luminescent image's", QString("mouse.tif"), luminescent, false, QString("IW20 - mouse.tif"));
        row("the photograph's where there is no other", QString("tray.tif"), photograph, false,
            QString("IW20 - tray.tif"));
        row("one with the mark of changes", QString("a[*].tif"), luminescent, false,
            QString("IW20 - a[*][*].tif"));
        row("a result's is that of its operand", QString("mouse.tif"), luminescent, true, QString("IW20"));
    }

    void theTitleNamesTheFileOfAnImportedClick()
    {
        QFETCH(QString, file);
        QFETCH(QString, section);
        QFETCH(bool, isResult);
        CVXSDataset dataset(QStringLiteral("IW20"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        const QByteArray key = section.toLatin1();
        CPLClickInfo *info = dataset.getClickInfo();
        clickinfo::ensureSection(info, QLatin1String(key))->setValue(clickinfo::KEY_IMPORTED_FROM, file);
        if (isResult)
            clickinfo::ensureSection(info, clickinfo::SECTION_LUMINESCENT)
                ->setValue(clickinfo::KEY_MATH_OPERATION, "A - B * k");
        const CVXSImageWindow window(&dataset);
        QTEST(window.windowTitle(), "title");
    }

    void itSaysWhatKeepsItFromRadiance()
    {
        CVXSDataset dataset(QStringLiteral("IW21"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        CVXSImageWindow window(&dataset);
        const auto *note = window.findChild<QLabel *>(QStringLiteral("UnitNote"));
        QVERIFY(note->isVisibleTo(&window));
        QCOMPARE(note->text(), QStringLiteral("no radiance: constants are missing"));
        QVERIFY2(note->toolTip().contains("Exposure Time") && note->toolTip().contains("ClickInfo.txt"),
                 qPrintable(note->toolTip()));

        TestStudy study;
        CVXSDataset *complete = study.add(ClickSpec::of(QStringLiteral("IW22")));
        CVXSImageWindow other(complete);
        QVERIFY(!other.findChild<QLabel *>(QStringLiteral("UnitNote"))->isVisibleTo(&other));
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

    void theXRayImageCanBeChosen_data()
    {
        QTest::addColumn<bool>("luminescent");
        QTest::addColumn<bool>("photograph");
        QTest::addColumn<QStringList>("choices");
        row("alone", false, false, QStringList{"X-ray"});
        row("behind a photograph", false, true, QStringList{"Photograph", "X-ray"});
        row("behind a luminescent image", true, false, QStringList{"Luminescence", "X-ray"});
        row("behind both", true, true,
            QStringList{"Luminescence over photograph", "Luminescence", "Photograph", "X-ray"});
    }
    void theXRayImageCanBeChosen()
    {
        QFETCH(bool, luminescent);
        QFETCH(bool, photograph);
        CVXSDataset dataset(QStringLiteral("IW4X"));
        if (luminescent)
            dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(20, 20));
        if (photograph)
            dataset.setCoreImage(EIMAGE_PHOTOGRAPH, spots(60, 60));
        const CILImage xray = imageOf(50, 30, [](int x, int y) { return 7 * x + y; });
        dataset.setCoreImage(EIMAGE_XRAY, xray);
        CVXSImageWindow window(&dataset);
        auto *choice = window.findChild<QComboBox *>(QStringLiteral("ImageChoice"));
        QStringList choices;
        for (int i = 0; i < choice->count(); ++i)
            choices << choice->itemText(i);
        QTEST(choices, "choices");
        choice->setCurrentIndex(choice->count() - 1);
        const CILImage *shown = viewOf(window)->imageAt(0);
        QVERIFY(shown);
        QCOMPARE(shown->getWidth(), 50u);
        QCOMPARE(shown->pixelAt(49, 29), xray.pixelAt(49, 29));
        QCOMPARE(shown->getPalette().getColorTableType(), VXS_CT_GRAYS);
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

    // --- colour limits ---

    void theLimitsAreAutomaticAtFirst()
    {
        CVXSDataset dataset(QStringLiteral("IW20"));
        // One pixel in ten thousand is far above the rest: no range of the others would show.
        dataset.setCoreImage(EIMAGE_LUMINESCENT, imageOf(100, 100, [](int x, int y) {
                                 return x == 50 && y == 50 ? 60000.0 : 100.0 + x;
                             }));
        CVXSImageWindow window(&dataset);
        auto *mode = window.findChild<QComboBox *>(QStringLiteral("LimitsMode"));
        QCOMPARE(mode->currentText(), QStringLiteral("Auto"));
        const CILPalette automatic = viewOf(window)->imageAt(0)->getPalette();
        QVERIFY(automatic.getImageMax() < 60000.0);
        choose(mode, ELIMITS_FULL);
        QCOMPARE(viewOf(window)->imageAt(0)->getPalette().getImageMin(), 100.0);
        QCOMPARE(viewOf(window)->imageAt(0)->getPalette().getImageMax(), 60000.0);
        QCOMPARE(field(window, "LimitsMin"), QStringLiteral("100"));
        QCOMPARE(field(window, "LimitsMax"), QStringLiteral("60000"));
        choose(mode, ELIMITS_AUTO);
        QCOMPARE(viewOf(window)->imageAt(0)->getPalette(), automatic);
    }

    void aResultHasNoCeilingOfACamera_data()
    {
        QTest::addColumn<bool>("isResult");
        QTest::newRow("a product of counts is shown up to its maximum") << true;
        QTest::newRow("an acquisition leaves saturated pixels out") << false;
    }
    void aResultHasNoCeilingOfACamera()
    {
        QFETCH(bool, isResult);
        TestStudy study(QStringLiteral("IW26_SEQ"));
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("IW26");
        spec.counts = [](int x, int) { return x < 16 ? 10000.0f : 1.0e8f + 1.0e6f * float(x); };
        CVXSDataset *dataset = study.add(spec);
        const auto set = [dataset](QLatin1String section, QLatin1String key, const QString &value) {
            clickinfo::ensureSection(dataset->getClickInfo(), section)->setValue(key, value);
        };
        if (isResult) {
            set(clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_MATH_OPERATION, "A * B * k");
            set(clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION, "counts");
        }
        CVXSImageWindow window(dataset);
        QVERIFY(viewOf(window)->imageAt(0));
        const CILPalette palette = viewOf(window)->imageAt(0)->getPalette();
        QCOMPARE(palette.getImageMax() > 1.0e8, isResult);
    }

    void limitsAreTyped_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<double>("low"); // the image runs from 0 to 99, shown in full
        QTest::addColumn<double>("high");
        QTest::addColumn<bool>("taken");
        row("an upper limit", "LimitsMax", "50", 0.0, 50.0, true);
        row("a lower limit", "LimitsMin", "2.5e1", 25.0, 99.0, true);
        row("a negative limit", "LimitsMin", "-7", -7.0, 99.0, true);
        row("a lower limit at the upper one", "LimitsMin", "99", 99.0, 99.0, true);
        row("a lower limit above the upper one", "LimitsMin", "500", 0.0, 99.0, false);
        row("an upper limit below the lower one", "LimitsMax", "-3", 0.0, 99.0, false);
        row("no number", "LimitsMax", "abc", 0.0, 99.0, false);
        row("nothing", "LimitsMax", "", 0.0, 99.0, false);
        row("a comma", "LimitsMax", "1,5", 0.0, 99.0, false);
        row("infinity", "LimitsMax", "inf", 0.0, 99.0, false);
        row("not a number", "LimitsMin", "nan", 0.0, 99.0, false);
    }
    void limitsAreTyped()
    {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QFETCH(double, low);
        QFETCH(double, high);
        QFETCH(bool, taken);
        CVXSDataset dataset(QStringLiteral("IW21"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, imageOf(100, 10, [](int x, int) { return x; }));
        CVXSImageWindow window(&dataset);
        auto *mode = window.findChild<QComboBox *>(QStringLiteral("LimitsMode"));
        choose(mode, ELIMITS_FULL);
        QVERIFY(GuiDriver(&window).type(qPrintable(name), typed, Qt::Key_Return));
        const CILPalette palette = viewOf(window)->imageAt(0)->getPalette();
        QCOMPARE(palette.getImageMin(), low);
        QCOMPARE(palette.getImageMax(), high);
        QCOMPARE(mode->currentData().toInt(), int(taken ? ELIMITS_MANUAL : ELIMITS_FULL));
        QCOMPARE(field(window, "LimitsMin"), QString::number(low, 'g', 6));
        QCOMPARE(field(window, "LimitsMax"), QString::number(high, 'g', 6));
        QCOMPARE(dataset.getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(99, 0), 99.0); // a display setting
        QVERIFY(!viewOf(window)->rasterImage().isNull());
    }

    void limitsByHandAreForTheirUnit()
    {
        TestStudy study(QStringLiteral("IW22_SEQ"));
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("IW22");
        CVXSDataset *dataset = study.add(spec);
        CVXSImageWindow window(dataset);
        auto *mode = window.findChild<QComboBox *>(QStringLiteral("LimitsMode"));
        choose(mode, ELIMITS_MANUAL);
        const auto palette = [&] { return viewOf(window)->imageAt(0)->getPalette(); };
        const CILPalette before = palette();
        dataset->setUnit(EUNIT_RADIANCE);
        dataset->setUnit(EUNIT_COUNTS); // forth and back at once
        QCoreApplication::processEvents();
        QCOMPARE(mode->currentData().toInt(), int(ELIMITS_MANUAL));
        QCOMPARE(palette(), before);
        dataset->setUnit(EUNIT_RADIANCE);
        QTRY_COMPARE(mode->currentData().toInt(), int(ELIMITS_AUTO));
        QVERIFY(palette().getImageMax() > 100.0 * before.getImageMax());
        QCOMPARE(text(window, "UnitLabel"), QStringLiteral("Radiance (Photons) [p/s/cm²/sr]"));
    }

    void aResultOpensInTheColoursInWhichItWasMade_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("low");
        QTest::addColumn<QString>("high");
        QTest::addColumn<bool>("taken");
        row("limits of the record", "A/B*k", "counts", "12.500000", "80.250000", true);
        row("below zero", "A-B*k", "counts", "-3.000000", "-1.000000", true);
        row("a range that six decimals tell", "A/B*k", "counts", "0.000100", "0.000300", true);
        row("a range that six decimals do not tell", "A/B*k", "counts", "0.000001", "0.000012", false);
        row("limits that six decimals round away", "A/B*k", "counts", "0.000000", "0.000000", false);
        row("limits the wrong way round", "A/B*k", "counts", "80.0", "12.0", false);
        row("no upper limit", "A/B*k", "counts", "12.5", "inf", false);
        row("an unknown unit", "A/B*k", "lux", "12.5", "80.25", false);
        row("an acquired dataset", QString(), "counts", "12.5", "80.25", false);
    }
    void aResultOpensInTheColoursInWhichItWasMade()
    {
        using namespace clickinfo;
        QFETCH(QString, operation);
        QFETCH(QString, unit);
        QFETCH(QString, low);
        QFETCH(QString, high);
        QFETCH(bool, taken);
        CVXSDataset dataset(QStringLiteral("IW26"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, imageOf(100, 10, [](int x, int) { return x; }));
        if (!operation.isNull())
            ensureSection(dataset.getClickInfo(), SECTION_LUMINESCENT)
                ->setValue(KEY_MATH_OPERATION, operation);
        CPLSection *graph = ensureSection(dataset.getClickInfo(), SECTION_GRAPH_CONTROLS);
        graph->setValue(KEY_INTENSITY_CALIBRATION, unit);
        graph->setValue(KEY_COLOR_TABLE_MIN, low);
        graph->setValue(KEY_COLOR_TABLE_MAX, high);
        CVXSImageWindow window(&dataset);
        auto *mode = window.findChild<QComboBox *>(QStringLiteral("LimitsMode"));
        QCOMPARE(mode->currentData().toInt(), int(taken ? ELIMITS_MANUAL : ELIMITS_AUTO));
        if (!taken)
            return;
        const CILPalette palette = viewOf(window)->imageAt(0)->getPalette();
        QCOMPARE(palette.getImageMin(), low.toDouble());
        QCOMPARE(palette.getImageMax(), high.toDouble());
    }

    void colourTableDirectionAndLogScaleAreTheDatasets()
    {
        CVXSDataset dataset(QStringLiteral("IW23"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(30, 30));
        CVXSImageWindow window(&dataset);
        dataset.setColorTable(VXS_CT_YELLOWHOT);
        CVXSToolInfo info = dataset.getToolInfo();
        info.reversed = true;
        info.logarithmic = true;
        dataset.setToolInfo(info);
        QTRY_VERIFY(viewOf(window)->imageAt(0)->getPalette().isLogScale());
        QVERIFY(viewOf(window)->imageAt(0)->getPalette().isReversed());
        QCOMPARE(viewOf(window)->imageAt(0)->getPalette().getColorTableType(), VXS_CT_YELLOWHOT);
    }

    // --- what may go wrong around it ---

    void theWindowGoesWithItsDataset()
    {
        TestStudy study(QStringLiteral("IW24_SEQ"));
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("IW24");
        spec.photograph = [](int x, int y) { return float(x + y); };
        CVXSDataset *dataset = study.add(spec);
        dataset->roiManager()->addROI(CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 3.0, 3.0)));
        QPointer<CVXSImageWindow> window = new CVXSImageWindow(dataset);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        // Everything is put off and finds nothing any more.
        dataset->setUnit(EUNIT_RADIANCE);
        dataset->roiManager()->selectROI(dataset->roiManager()->rois().first(), false);
        CVXSMultiImageView *view = viewOf(*window);
        study.close();
        QVERIFY(window);
        QVERIFY(!window->getDataset());
        view->rasterImage();
        for (QToolButton *button : window->findChildren<QToolButton *>())
            button->click();
        window->findChild<QComboBox *>(QStringLiteral("ImageChoice"))->setCurrentIndex(1);
        choose(window->findChild<QComboBox *>(QStringLiteral("LimitsMode")), ELIMITS_FULL);
        window->findChild<QPushButton *>(QStringLiteral("CopyTableButton"))->click();
        QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, view->rect().center());
        window->refreshAfterDatasetAdded();
        window->switchFlatFieldCorrection(true);
        QCoreApplication::processEvents();
        QTRY_VERIFY(!window);
    }

    void roisOfAnOpenedDatasetAreShownWithTheirNumbers()
    {
        TestStudy study(QStringLiteral("IW25_SEQ"));
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("IW25");
        CVXSDataset *dataset = study.add(spec);
        dataset->roiManager()->addROI(CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 3.0, 3.0)));
        CVXSImageWindow window(dataset);
        auto *table = window.findChild<QTableView *>(QStringLiteral("MeasurementTable"));
        QTRY_COMPARE(table->model()->rowCount(), 1);
        QVERIFY(table->isVisibleTo(&window));
    }
};

QTEST_MAIN(tst_ImageWindow)
#include "tst_ImageWindow.moc"
