// SPDX-License-Identifier: MIT
// The limits of the result and its colour bar, and the lower limit forced to 0.
#include "display/DisplayUnitNames.h"
#include "tests/support/WindowProbe.h"
#include "tests/window/scale/ScaleSlots.h"

#include <cmath>
#include <limits>
#include <QCheckBox>
#include <QRadioButton>
#include <QtTest>

using colorscale::Limits;
using namespace scaleslots;

namespace {

const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

CILImage row(const QVector<float> &values)
{
    return TestStudy::image(values.size(), 1, [&values](int x, int) { return values[x]; });
}

// Rising to far beyond what the camera counts at either dataset's factor, with some pixels below 0.
CILImage picture(double factor)
{
    return TestStudy::image(
        64, 64, [factor](int x, int y) { return float((400.0 * (x + 64 * y) - 20000.0) * factor); });
}

const CILPalette BEFORE = palette(VXS_CT_BLUEHOT, 11, 12, false, true),
                 BEFORE_BAR = palette(VXS_CT_RED, 15, 16, false, false);

double radiance(CVXSDataset *dataset)
{
    return VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset, "counts", "Radiance (Photons)");
}

enum Mode { Full, Auto };

} // namespace

class tst_ResultScaleSlots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        QVERIFY(m_study.save());
    }
    void cleanup();
    void givenPixels_data();
    void givenPixels();
    void automatic_data();
    void automatic();
    void flagsAndTable_data();
    void flagsAndTable();
    void withoutAResult_data();
    void withoutAResult();
    void refresh_data();
    void refresh();
    void minZeroOfGivenPixels_data();
    void minZeroOfGivenPixels();
    void minZeroAutomatic_data();
    void minZeroAutomatic();
    void minZeroTakesItsArgument();
    void minZeroWithoutAResult_data();
    void minZeroWithoutAResult();
    void minZeroRefresh_data();
    void minZeroRefresh();

private:
    void prepare(WindowProbe &window, Mode mode, bool minZero, bool present = true, const QString &clickA = A,
                 const QString &clickB = B) const
    {
        window.select(m_study.sequence(), clickA, clickB);
        for (int slot = 0; slot < 3; ++slot)
            window.setViewImage(slot, nullptr);
        (mode == Auto ? window.m_pAutoResultRadioBtn : window.m_pFullResultRadioBtn)->setChecked(true);
        {
            const QSignalBlocker quiet(window.m_pMinChkBox);
            window.m_pMinChkBox->setChecked(minZero);
        }
        if (present)
            window.setViewImage(2, &window.m_resultImage);
        window.m_resultImage.setPalette(BEFORE);
        window.m_pColorbarResult->palette = BEFORE_BAR;
        window.steps.clear();
    }

    TestStudy m_study;
};

void tst_ResultScaleSlots::cleanup()
{
    scaleslots::showAtFirst(m_study.sequence());
}

void tst_ResultScaleSlots::givenPixels_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("minZero");
    QTest::addColumn<QVector<float>>("pixels");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    const QVector<float> mixed{-3, 20, 7}, negative{-9, -5}, dark{-4, 0, -1}, invisible{NOT_A_NUMBER};
    QTest::newRow("full") << A << 0 << int(Full) << false << mixed << -3.0 << 20.0;
    QTest::newRow("full, lower limit 0") << A << 0 << int(Full) << true << mixed << 0.0 << 20.0;
    QTest::newRow("full, all negative") << A << 0 << int(Full) << false << negative << -9.0 << -5.0;
    QTest::newRow("full, all negative, lower limit 0: exchanged")
        << A << 0 << int(Full) << true << negative << -5.0 << 0.0;
    QTest::newRow("full, all positive, lower limit 0")
        << A << 0 << int(Full) << true << QVector<float>{4, 6} << 0.0 << 6.0;
    QTest::newRow("full, no finite pixel") << A << 0 << int(Full) << false << invisible << 0.0 << 0.0;
    QTest::newRow("full does not scan transillumination")
        << TRANS_A << 3 << int(Full) << false << mixed << -3.0 << 20.0;
    QTest::newRow("auto of transillumination in efficiency scans the positive pixels")
        << TRANS_A << 3 << int(Auto) << false << mixed << 7.0 << 20.0;
    QTest::newRow("auto of transillumination in efficiency, lower limit 0")
        << TRANS_A << 3 << int(Auto) << true << mixed << 0.0 << 20.0;
    QTest::newRow("auto of transillumination without a positive pixel: exchanged")
        << TRANS_A << 3 << int(Auto) << false << dark << 0.0 << 1.0e10;
    QTest::newRow("auto of transillumination without a positive pixel, lower limit 0")
        << TRANS_A << 3 << int(Auto) << true << dark << 0.0 << 0.0;
    for (int unit = 0; unit < 4; ++unit) {
        QTest::newRow(
            qPrintable(QString("auto without a finite pixel in unit %1: what the host left").arg(unit)))
            << A << unit << int(Auto) << false << invisible << 0.0 << 0.0;
    }
}

void tst_ResultScaleSlots::givenPixels()
{
    QFETCH(QString, clickA);
    QFETCH(int, unit);
    QFETCH(int, mode);
    QFETCH(bool, minZero);
    QFETCH(QVector<float>, pixels);
    QFETCH(double, min);
    QFETCH(double, max);
    WindowProbe window;
    window.m_resultImage = row(pixels);
    m_study.sequence()->setActiveUnit(tag_edisplayunit(unit));
    prepare(window, Mode(mode), minZero, true, clickA);
    window.onChangeColorRangeResult();
    QCOMPARE(text(window.m_resultImage.getPalette()), text(palette(VXS_CT_RAINBOW, min, max, false, false)));
    QCOMPARE(text(window.m_pColorbarResult->palette), text(palette(VXS_CT_RAINBOW, min, max, true, false)));
}

void tst_ResultScaleSlots::automatic_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<int>("active");
    QTest::addColumn<int>("own");
    QTest::addColumn<bool>("minZero");
    for (bool minZero : {false, true}) {
        for (int active = 0; active < 4; ++active) {
            const QString how =
                QString(", sequence in unit %1%2").arg(active).arg(minZero ? ", lower limit 0" : "");
            QTest::newRow(qPrintable("plain" + how)) << A << B << active << active << minZero;
            QTest::newRow(qPrintable("with bottom power" + how))
                << POWER_A << POWER_B << active << active << minZero;
            QTest::newRow(qPrintable("datasets in another unit" + how))
                << POWER_A << POWER_B << active << (active + 1) % 4 << minZero;
            QTest::newRow(qPrintable("only A with bottom power" + how))
                << POWER_A << B << active << active << minZero;
            QTest::newRow(qPrintable("only B transillumination" + how))
                << A << TRANS_B << active << active << minZero;
        }
    }
}

void tst_ResultScaleSlots::automatic()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    QFETCH(int, active);
    QFETCH(int, own);
    QFETCH(bool, minZero);
    CVXSDataset *a = m_study.sequence()->getDataset(clickA), *b = m_study.sequence()->getDataset(clickB);
    WindowProbe window;
    window.m_resultImage = picture(radiance(a));
    m_study.sequence()->setActiveUnit(tag_edisplayunit(active));
    a->setUnit(tag_edisplayunit(own));
    b->setUnit(tag_edisplayunit(own));
    prepare(window, Auto, minZero, true, clickA, clickB);
    window.onChangeColorRangeResult();
    double factor = active == 1 || active == 2 ? radiance(a) : 1.0;
    if (active == 2 && a->getBottomIlluminationPower() > 0.0)
        factor /= a->getBottomIlluminationPower();
    Limits limits = hostRange(window.m_resultImage,
                              QString::fromLatin1(DisplayUnitNames.at(std::size_t(active))), factor);
    if (active == 1) // dataset B's factor would find others
        QVERIFY(limits.max != hostRange(window.m_resultImage, "Radiance (Photons)", radiance(b)).max);
    if (minZero)
        limits.min = 0.0;
    QCOMPARE(text(window.m_resultImage.getPalette()),
             text(palette(VXS_CT_RAINBOW, limits.min, limits.max, false, false)));
    QCOMPARE(text(window.m_pColorbarResult->palette),
             text(palette(VXS_CT_RAINBOW, limits.min, limits.max, true, false)));
}

void tst_ResultScaleSlots::flagsAndTable_data()
{
    QTest::addColumn<bool>("reversed");
    QTest::addColumn<bool>("log");
    QTest::addColumn<int>("table");
    QTest::newRow("plain: the bar is reversed all the same") << false << false << int(VXS_CT_RAINBOW);
    QTest::newRow("reversed") << true << false << int(VXS_CT_GRAYS);
    QTest::newRow("log scale") << false << true << int(VXS_CT_YELLOWHOT);
    QTest::newRow("reversed, log scale") << true << true << int(VXS_CT_TERRAIN);
}

void tst_ResultScaleSlots::flagsAndTable()
{
    QFETCH(bool, reversed);
    QFETCH(bool, log);
    QFETCH(int, table);
    scaleslots::show(m_study.sequence(), table, reversed, log);
    WindowProbe window;
    window.m_resultImage = row({2, 5});
    prepare(window, Full, false);
    for (bool barLog : {false, true}) {
        window.m_pColorbarResult->palette.setLogScale(barLog);
        window.onChangeColorRangeResult();
        QCOMPARE(text(window.m_resultImage.getPalette()),
                 text(palette(VXS_COLORTABLE_TYPES(table), 2, 5, reversed, log)));
        QCOMPARE(text(window.m_pColorbarResult->palette),
                 text(palette(VXS_COLORTABLE_TYPES(table), 2, 5, true, barLog)));
    }
}

void tst_ResultScaleSlots::withoutAResult_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("minZero");
    for (Mode mode : {Full, Auto}) {
        for (bool minZero : {false, true})
            QTest::newRow(qPrintable(
                QString("%1%2").arg(mode == Full ? "full" : "auto", minZero ? ", lower limit 0" : "")))
                << int(mode) << minZero;
    }
}

void tst_ResultScaleSlots::withoutAResult()
{
    QFETCH(int, mode);
    QFETCH(bool, minZero);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.m_resultImage = row({2, 5}); // an earlier one, kept but not in the view
    prepare(window, Mode(mode), minZero, false);
    window.onChangeColorRangeResult();
    QCOMPARE(text(window.m_resultImage.getPalette()), text(BEFORE));
    QCOMPARE(text(window.m_pColorbarResult->palette), text(BEFORE_BAR));
    QCOMPARE(window.steps, (QStringList{"range of result", "settings", "refresh"}));
}

void tst_ResultScaleSlots::refresh_data()
{
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("with a view") << true << true << QStringList{"range of result", "settings", "refresh"};
    QTest::newRow("with a view, within a computation") << true << false << QStringList{"range of result"};
    QTest::newRow("without a view") << false << true << QStringList{"range of result"};
}

void tst_ResultScaleSlots::refresh()
{
    QFETCH(bool, bound);
    QFETCH(bool, enabled);
    QFETCH(QStringList, steps);
    WindowProbe window;
    if (bound)
        QVERIFY(window.bind(m_study));
    window.m_resultImage = row({2, 5});
    prepare(window, Full, false);
    window.m_bRefreshEnabled = enabled;
    window.onChangeColorRangeResult();
    QCOMPARE(window.steps, steps);
    QCOMPARE(text(window.m_resultImage.getPalette()), text(palette(VXS_CT_RAINBOW, 2, 5, false, false)));
}

void tst_ResultScaleSlots::minZeroOfGivenPixels_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QVector<float>>("pixels");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    const QVector<float> mixed{-3, 20, 7}, negative{-9, -5}, invisible{NOT_A_NUMBER};
    QTest::newRow("on, full") << A << 0 << int(Full) << true << mixed << 0.0 << 20.0;
    QTest::newRow("off, full") << A << 0 << int(Full) << false << mixed << -3.0 << 20.0;
    QTest::newRow("on, full, all negative: not exchanged")
        << A << 0 << int(Full) << true << negative << 0.0 << -5.0;
    QTest::newRow("off, full, all negative") << A << 0 << int(Full) << false << negative << -9.0 << -5.0;
    QTest::newRow("on, auto, no finite pixel: what the host left")
        << A << 1 << int(Auto) << true << invisible << 0.0 << 0.0;
    QTest::newRow("off, auto, no finite pixel: what the host left")
        << A << 1 << int(Auto) << false << invisible << 0.0 << 0.0;
}

void tst_ResultScaleSlots::minZeroOfGivenPixels()
{
    QFETCH(QString, clickA);
    QFETCH(int, unit);
    QFETCH(int, mode);
    QFETCH(bool, on);
    QFETCH(QVector<float>, pixels);
    QFETCH(double, min);
    QFETCH(double, max);
    CVXSToolInfo info; // none of it matters to this slot
    info.reversed = true;
    m_study.sequence()->setToolInfo(info);
    WindowProbe window;
    window.m_resultImage = row(pixels);
    m_study.sequence()->setActiveUnit(tag_edisplayunit(unit));
    prepare(window, Mode(mode), !on, true, clickA);
    window.onChangeMinZeroStatus(on);
    // Table, direction and log scale of both palettes stay.
    QCOMPARE(text(window.m_resultImage.getPalette()), text(palette(VXS_CT_BLUEHOT, min, max, false, true)));
    QCOMPARE(text(window.m_pColorbarResult->palette), text(palette(VXS_CT_RED, min, max, false, false)));
}

void tst_ResultScaleSlots::minZeroAutomatic_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<int>("active");
    QTest::addColumn<bool>("on");
    const struct
    {
        const char *name;
        QString a, b;
    } pairs[] = {
        {"plain", A, B}, {"with bottom power", POWER_A, POWER_B}, {"transillumination", TRANS_A, TRANS_B}};
    for (const auto &pair : pairs) {
        for (int active = 0; active < 4; ++active) {
            QTest::newRow(qPrintable(QString("on, %1, unit %2").arg(pair.name).arg(active)))
                << pair.a << pair.b << active << true;
            QTest::newRow(qPrintable(QString("off, %1, unit %2").arg(pair.name).arg(active)))
                << pair.a << pair.b << active << false;
        }
    }
}

void tst_ResultScaleSlots::minZeroAutomatic()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    QFETCH(int, active);
    QFETCH(bool, on);
    CVXSDataset *a = m_study.sequence()->getDataset(clickA), *b = m_study.sequence()->getDataset(clickB);
    WindowProbe window;
    window.m_resultImage = picture(radiance(a));
    m_study.sequence()->setActiveUnit(tag_edisplayunit(active));
    a->setUnit(EUNIT_EFFICIENCY);
    b->setUnit(EUNIT_EFFICIENCY);
    prepare(window, Auto, on, true, clickA, clickB);
    window.onChangeMinZeroStatus(on);
    // Only radiance is converted: with A's factor when 0 is forced, with B's when it is no longer.
    const double factor = active != 1 ? 1.0 : radiance(on ? a : b);
    Limits limits = hostRange(window.m_resultImage,
                              QString::fromLatin1(DisplayUnitNames.at(std::size_t(active))), factor);
    if (active == 1)
        QVERIFY(limits.max !=
                hostRange(window.m_resultImage, "Radiance (Photons)", radiance(on ? b : a)).max);
    if (on)
        limits.min = 0.0;
    QCOMPARE(text(window.m_resultImage.getPalette()),
             text(palette(VXS_CT_BLUEHOT, limits.min, limits.max, false, true)));
    QCOMPARE(text(window.m_pColorbarResult->palette),
             text(palette(VXS_CT_RED, limits.min, limits.max, false, false)));
}

void tst_ResultScaleSlots::minZeroTakesItsArgument()
{
    WindowProbe window;
    window.m_resultImage = row({3, 8});
    for (bool box : {false, true}) {
        prepare(window, Full, box);
        window.onChangeMinZeroStatus(true);
        QCOMPARE(window.m_resultImage.getPalette().getImageMin(), 0.0);
        window.onChangeMinZeroStatus(false);
        QCOMPARE(window.m_resultImage.getPalette().getImageMin(), 3.0);
        QCOMPARE(window.m_pMinChkBox->isChecked(), box);
    }
}

void tst_ResultScaleSlots::minZeroWithoutAResult_data()
{
    QTest::addColumn<bool>("on");
    QTest::newRow("on") << true;
    QTest::newRow("off") << false;
}

void tst_ResultScaleSlots::minZeroWithoutAResult()
{
    QFETCH(bool, on);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.m_resultImage = row({3, 8});
    prepare(window, Full, on, false);
    window.onChangeMinZeroStatus(on);
    QCOMPARE(text(window.m_resultImage.getPalette()), text(BEFORE));
    QCOMPARE(text(window.m_pColorbarResult->palette), text(BEFORE_BAR));
    QCOMPARE(window.steps, (QStringList{"settings", "refresh"}));
}

void tst_ResultScaleSlots::minZeroRefresh_data()
{
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("with a view") << true << true << QStringList{"settings", "refresh"};
    QTest::newRow("with a view, within a computation: all the same")
        << true << false << QStringList{"settings", "refresh"};
    QTest::newRow("without a view") << false << true << QStringList();
}

void tst_ResultScaleSlots::minZeroRefresh()
{
    QFETCH(bool, bound);
    QFETCH(bool, enabled);
    QFETCH(QStringList, steps);
    for (bool on : {true, false}) {
        WindowProbe window;
        if (bound)
            QVERIFY(window.bind(m_study));
        window.m_resultImage = row({3, 8});
        prepare(window, Full, on);
        window.m_bRefreshEnabled = enabled;
        window.onChangeMinZeroStatus(on);
        QCOMPARE(window.steps, steps);
        QCOMPARE(window.m_bRefreshEnabled, enabled);
    }
}

QTEST_MAIN(tst_ResultScaleSlots)
#include "tst_ResultScaleSlots.moc"
