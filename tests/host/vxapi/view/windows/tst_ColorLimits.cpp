// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <QComboBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QComboBox *modeOf(const CVXSImageWindow &window)
{
    return window.findChild<QComboBox *>(QStringLiteral("LimitsMode"));
}

/// As the user does: a signal comes.
void choose(QComboBox *mode, int wanted)
{
    mode->setCurrentIndex(mode->findData(wanted));
    Q_EMIT mode->activated(mode->currentIndex());
}

CILPalette paletteOf(const CVXSImageWindow &window)
{
    return window.findChild<CVXSMultiImageView *>(QStringLiteral("ImageView"))->imageAt(0)->getPalette();
}

CILImage ramp()
{
    return TestStudy::image(100, 10, [](int x, int) { return float(x); });
}

} // namespace

/// The limits of the colours as the user chooses them in an image window.
class tst_ColorLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void limitsThatAreNotTakenAreTold_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("told");
        row("a lower limit above the upper one", "LimitsMin", "500", "Min stays 0: 500 is above Max, 99.");
        row("an upper limit below the lower one", "LimitsMax", "-3", "Max stays 99: -3 is below Min, 0.");
        row("a comma", "LimitsMax", "1,5",
            "\"1,5\" is not taken as a color limit: it is no number (the decimal sign is a point).");
        row("a limit that is taken", "LimitsMax", "50", "");
    }
    void limitsThatAreNotTakenAreTold()
    {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QFETCH(QString, told);
        TestStudy study(QStringLiteral("IW27_SEQ"));
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("IW27");
        spec.width = 100;
        spec.counts = [](int x, int) { return float(x); };
        CVXSDataset *dataset = study.add(spec);
        dataset->setModified(false);
        CVXSImageWindow window(dataset);
        choose(modeOf(window), ELIMITS_FULL);
        dataset->setModified(false);
        QVERIFY(GuiDriver(&window).type(qPrintable(name), typed, Qt::Key_Return));
        QCOMPARE(window.findChild<QLabel *>(QStringLiteral("RoiStatus"))->text(), told);
        QCOMPARE(dataset->isModified(), told.isEmpty());
    }

    void theLimitsAreSavedWithTheDataset_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("typed");
        row("typed ones", int(ELIMITS_MANUAL), "12.3456789012");
        row("the full range", int(ELIMITS_FULL), "");
        row("automatic ones, of a result that has others in its record", int(ELIMITS_AUTO), "");
    }
    void theLimitsAreSavedWithTheDataset()
    {
        QFETCH(int, mode);
        QFETCH(QString, typed);
        QTemporaryDir folder;
        CILPalette before;
        {
            CVXSDataset dataset(QStringLiteral("IW28"));
            dataset.setCoreImage(EIMAGE_LUMINESCENT, ramp());
            if (mode == ELIMITS_AUTO) {
                using namespace clickinfo;
                ensureSection(dataset.getClickInfo(), SECTION_LUMINESCENT)
                    ->setValue(KEY_MATH_OPERATION, QStringLiteral("A-B*k"));
                CPLSection *graph = ensureSection(dataset.getClickInfo(), SECTION_GRAPH_CONTROLS);
                graph->setValue(KEY_INTENSITY_CALIBRATION, QStringLiteral("counts"));
                graph->setValue(KEY_COLOR_TABLE_MIN, QStringLiteral("20"));
                graph->setValue(KEY_COLOR_TABLE_MAX, QStringLiteral("30"));
            }
            CVXSImageWindow window(&dataset);
            if (typed.isEmpty())
                choose(modeOf(window), mode);
            else
                QVERIFY(GuiDriver(&window).type("LimitsMin", typed, Qt::Key_Return));
            QVERIFY(dataset.isModified());
            QCOMPARE(dataset.saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
            before = paletteOf(window);
        }
        const std::unique_ptr<CVXSDataset> opened(CVXSDataset::open(folder.path(), nullptr, nullptr));
        QVERIFY(opened);
        const CVXSImageWindow window(opened.get());
        QCOMPARE(modeOf(window)->currentData().toInt(), mode);
        QCOMPARE(paletteOf(window), before);
        if (!typed.isEmpty())
            QCOMPARE(before.getImageMin(), typed.toDouble());
        QVERIFY(!opened->isModified());
    }

    void damagedLimitsAreToldAndAutomatic_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("low");
        QTest::addColumn<QString>("high");
        QTest::addColumn<QString>("unit");
        row("an unknown mode", "handmade", "1", "2", "counts");
        row("no number", "manual", "1", "2x", "counts");
        row("the wrong way round", "manual", "3", "2", "counts");
        row("an unknown unit", "manual", "1", "2", "lux");
    }
    void damagedLimitsAreToldAndAutomatic()
    {
        using namespace clickinfo;
        QFETCH(QString, mode);
        QFETCH(QString, low);
        QFETCH(QString, high);
        QFETCH(QString, unit);
        QTemporaryDir folder;
        CVXSDataset dataset(QStringLiteral("IW29"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, ramp());
        CPLSection *section = ensureSection(dataset.getClickInfo(), SECTION_COLOR_LIMITS);
        section->setValue(KEY_LIMITS_MODE, mode);
        section->setValue(KEY_LIMITS_MIN, low);
        section->setValue(KEY_LIMITS_MAX, high);
        section->setValue(KEY_LIMITS_UNIT, unit);
        QCOMPARE(dataset.saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
        const LogCatcher log;
        const std::unique_ptr<CVXSDataset> opened(CVXSDataset::open(folder.path(), nullptr, nullptr));
        QVERIFY(opened);
        QVERIFY(!opened->getColorLimits());
        QCOMPARE(log.ofLevel(ELOG_WARNING).filter(QStringLiteral("\"Color Limits\"")).size(), 1);
    }

    void limitsByHandComeBackWithTheirUnit()
    {
        TestStudy study(QStringLiteral("IW30_SEQ"));
        CVXSDataset *dataset = study.add(ClickSpec::of(QStringLiteral("IW30")));
        CVXSImageWindow window(dataset);
        QVERIFY(GuiDriver(&window).type("LimitsMin", QStringLiteral("105.5"), Qt::Key_Return));
        dataset->setUnit(EUNIT_RADIANCE);
        QTRY_COMPARE(modeOf(window)->currentData().toInt(), int(ELIMITS_AUTO));
        dataset->setUnit(EUNIT_COUNTS);
        QTRY_COMPARE(modeOf(window)->currentData().toInt(), int(ELIMITS_MANUAL));
        QCOMPARE(paletteOf(window).getImageMin(), 105.5);
    }
};

QTEST_MAIN(tst_ColorLimits)
#include "tst_ColorLimits.moc"
