// SPDX-License-Identifier: MIT
// The limits that image A, image B and their colour bar share.
#include "display/DisplayUnitNames.h"
#include "tests/support/WindowProbe.h"
#include "tests/window/scale/ScaleSlots.h"

#include <cmath>
#include <limits>
#include <QRadioButton>
#include <QtTest>

using colorscale::Limits;
using namespace scaleslots;

namespace {

// Rising to twice what the camera counts at that factor, with some pixels below 0: each way to find limits
// finds others.
CILImage picture(double factor, double lift)
{
    return TestStudy::image(
        64, 64, [=](int x, int y) { return float((lift + 32.0 * (x + 64 * y) - 2000.0) * factor); });
}

CILImage notFinite()
{
    return TestStudy::image(8, 8, [](int, int) { return std::numeric_limits<float>::quiet_NaN(); });
}

const CILPalette BEFORE_A = palette(VXS_CT_BLUEHOT, 11, 12, false, false),
                 BEFORE_B = palette(VXS_CT_GREEN, 13, 14, true, true),
                 BEFORE_BAR = palette(VXS_CT_RED, 15, 16, true, false);

} // namespace

class tst_ColorScaleSlots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        QVERIFY(m_study.save());
    }
    void cleanup();
    void full_data();
    void full();
    void automatic_data();
    void automatic();
    void aFailingRangeChangesNothing_data();
    void aFailingRangeChangesNothing();
    void aScanNeverFails();
    void neitherButtonChecked();
    void flagsAndTable_data();
    void flagsAndTable();
    void refresh_data();
    void refresh();
    void theResultIsNotTouched();

private:
    // A window with these images in the view and palettes that no slot would set.
    void prepare(WindowProbe &window, const QString &clickA, const QString &clickB, bool hasA,
                 bool hasB) const
    {
        window.select(m_study.sequence(), clickA, clickB);
        window.m_imageA.setPalette(BEFORE_A);
        window.m_imageB.setPalette(BEFORE_B);
        window.m_pColorbarAB->palette = BEFORE_BAR;
        window.setViewImage(0, hasA ? &window.m_imageA : nullptr);
        window.setViewImage(1, hasB ? &window.m_imageB : nullptr);
        window.setViewImage(2, nullptr);
        window.steps.clear();
    }

    TestStudy m_study;
};

void tst_ColorScaleSlots::cleanup()
{
    scaleslots::showAtFirst(m_study.sequence());
}

void tst_ColorScaleSlots::full_data()
{
    QTest::addColumn<bool>("hasA");
    QTest::addColumn<bool>("hasB");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::newRow("only A") << true << false << -3.0 << 20.0;
    QTest::newRow("only B") << false << true << 5.0 << 90.0;
    QTest::newRow("A and B") << true << true << -3.0 << 90.0;
    QTest::newRow("neither: the bar gets 0 to 0") << false << false << 0.0 << 0.0;
}

void tst_ColorScaleSlots::full()
{
    QFETCH(bool, hasA);
    QFETCH(bool, hasB);
    QFETCH(double, min);
    QFETCH(double, max);
    WindowProbe window;
    window.m_imageA = TestStudy::image(4, 1, [](int x, int) {
        return x == 0 ? -3.0f : x == 1 ? 20.0f : 7.0f;
    });
    window.m_imageB = TestStudy::image(4, 1, [](int x, int) {
        return x == 0 ? 90.0f : x == 1 ? 5.0f : 7.0f;
    });
    prepare(window, A, B, hasA, hasB);
    QVERIFY(window.m_pFullABRadioBtn->isChecked());
    window.onChangeColorRangeAB();
    const CILPalette wanted = palette(VXS_CT_RAINBOW, min, max, false, false);
    QCOMPARE(text(window.m_imageA.getPalette()), text(hasA ? wanted : BEFORE_A));
    QCOMPARE(text(window.m_imageB.getPalette()), text(hasB ? wanted : BEFORE_B));
    QCOMPARE(text(window.m_pColorbarAB->palette), text(wanted));
}

void tst_ColorScaleSlots::automatic_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<bool>("hasA");
    QTest::addColumn<bool>("hasB");
    QTest::addColumn<int>("unitA");
    QTest::addColumn<int>("unitB");
    const struct
    {
        const char *name;
        QString a, b;
    } pairs[] = {
        {"plain", A, B}, {"with bottom power", POWER_A, POWER_B}, {"transillumination", TRANS_A, TRANS_B}};
    for (const auto &pair : pairs) {
        for (int unit = 0; unit < 4; ++unit) {
            QTest::newRow(qPrintable(QString("%1, unit %2, only A").arg(pair.name).arg(unit)))
                << pair.a << pair.b << true << false << unit << unit;
            QTest::newRow(qPrintable(QString("%1, unit %2, only B").arg(pair.name).arg(unit)))
                << pair.a << pair.b << false << true << unit << unit;
            QTest::newRow(qPrintable(QString("%1, unit %2, A and B").arg(pair.name).arg(unit)))
                << pair.a << pair.b << true << true << unit << unit;
        }
    }
    QTest::newRow("neither") << A << B << false << false << 1 << 1;
    QTest::newRow("A in counts, B in radiance") << A << B << true << true << 0 << 1;
    QTest::newRow("A in radiance, B in counts") << A << B << true << true << 1 << 0;
    QTest::newRow("only A transillumination") << TRANS_A << B << true << true << 3 << 3;
    QTest::newRow("only B transillumination") << A << TRANS_B << true << true << 3 << 3;
}

void tst_ColorScaleSlots::automatic()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    QFETCH(bool, hasA);
    QFETCH(bool, hasB);
    QFETCH(int, unitA);
    QFETCH(int, unitB);
    WindowProbe window;
    CVXSDataset *a = m_study.sequence()->getDataset(clickA), *b = m_study.sequence()->getDataset(clickB);
    const auto radiance = [](CVXSDataset *dataset) {
        return VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset, "counts",
                                                    "Radiance (Photons)");
    };
    window.m_imageA = picture(radiance(a), 700.0);
    window.m_imageB = picture(radiance(b), 3000.0);
    prepare(window, clickA, clickB, hasA, hasB);
    // The sequence's unit is another one on purpose.
    m_study.sequence()->setActiveUnit(EUNIT_EFFICIENCY);
    a->setUnit(tag_edisplayunit(unitA));
    b->setUnit(tag_edisplayunit(unitB));
    window.m_pAutoABRadioBtn->setChecked(true);
    window.onChangeColorRangeAB();

    const bool both = hasA && hasB;
    const auto rangeOf = [&](CVXSDataset *dataset, const CILImage &image, int unit) {
        double factor = 1.0;
        if (unit == 1)
            factor = radiance(dataset);
        if (both && unit == 2) {
            factor = radiance(dataset);
            if (dataset->getBottomIlluminationPower() > 0.0)
                factor = factor / dataset->getBottomIlluminationPower();
        }
        if (both && unit == 3 && dataset->isTransIlluminationDataset())
            return colorscale::positiveRange(image);
        return hostRange(image, QString::fromLatin1(DisplayUnitNames.at(std::size_t(unit))), factor);
    };
    Limits limits;
    if (hasA)
        limits = rangeOf(a, window.m_imageA, unitA);
    if (hasB) {
        const Limits ofB = rangeOf(b, window.m_imageB, unitB);
        limits = hasA ? Limits{std::min(limits.min, ofB.min), std::max(limits.max, ofB.max)} : ofB;
    }
    const CILPalette wanted = palette(VXS_CT_RAINBOW, limits.min, limits.max, false, false);
    QCOMPARE(text(window.m_imageA.getPalette()), text(hasA ? wanted : BEFORE_A));
    QCOMPARE(text(window.m_imageB.getPalette()), text(hasB ? wanted : BEFORE_B));
    QCOMPARE(text(window.m_pColorbarAB->palette), text(wanted));
    // Without a conversion where there should be one (or the other way round) other limits would come out.
    if (hasA && unitA == 1)
        QVERIFY(hostRange(window.m_imageA, "counts", 1.0).max !=
                hostRange(window.m_imageA, "counts", radiance(a)).max);
}

void tst_ColorScaleSlots::aFailingRangeChangesNothing_data()
{
    QTest::addColumn<bool>("hasA");
    QTest::addColumn<bool>("hasB");
    QTest::addColumn<bool>("aFails");
    QTest::addColumn<bool>("bFails");
    QTest::newRow("only A, no finite pixel") << true << false << true << false;
    QTest::newRow("only B, no finite pixel") << false << true << false << true;
    QTest::newRow("A and B, A without a finite pixel") << true << true << true << false;
    QTest::newRow("A and B, B without a finite pixel") << true << true << false << true;
    QTest::newRow("A and B, neither with a finite pixel") << true << true << true << true;
}

void tst_ColorScaleSlots::aFailingRangeChangesNothing()
{
    QFETCH(bool, hasA);
    QFETCH(bool, hasB);
    QFETCH(bool, aFails);
    QFETCH(bool, bFails);
    for (int unit = 0; unit < 4; ++unit) {
        WindowProbe window;
        QVERIFY(window.bind(m_study));
        window.m_imageA = aFails ? notFinite() : picture(1.0, 700.0);
        window.m_imageB = bFails ? notFinite() : picture(1.0, 3000.0);
        prepare(window, A, B, hasA, hasB);
        m_study.sequence()->setActiveUnit(tag_edisplayunit(unit));
        window.m_pAutoABRadioBtn->setChecked(true);
        window.onChangeColorRangeAB();
        QCOMPARE(text(window.m_imageA.getPalette()), text(BEFORE_A));
        QCOMPARE(text(window.m_imageB.getPalette()), text(BEFORE_B));
        QCOMPARE(text(window.m_pColorbarAB->palette), text(BEFORE_BAR));
        QCOMPARE(window.steps, QStringList("range of A and B")); // and no redraw
        // Full has no failure: the finite pixels, or 0 to 0.
        window.m_pFullABRadioBtn->setChecked(true);
        window.onChangeColorRangeAB();
        QVERIFY(text(window.m_pColorbarAB->palette) != text(BEFORE_BAR));
    }
}

void tst_ColorScaleSlots::aScanNeverFails()
{
    WindowProbe window;
    window.m_imageA = notFinite();
    window.m_imageB = TestStudy::image(4, 1, [](int x, int) { return float(x) - 1.0f; });
    prepare(window, TRANS_A, TRANS_B, true, true);
    m_study.sequence()->setActiveUnit(EUNIT_EFFICIENCY);
    window.m_pAutoABRadioBtn->setChecked(true);
    window.onChangeColorRangeAB();
    QCOMPARE(text(window.m_pColorbarAB->palette), text(palette(VXS_CT_RAINBOW, 1.0, 2.0, false, false)));
    // Nothing positive in either: the limits stay in the wrong order, and are not exchanged here.
    window.m_imageB = TestStudy::image(4, 1, [](int, int) { return -1.0f; });
    window.onChangeColorRangeAB();
    QCOMPARE(text(window.m_imageA.getPalette()), text(palette(VXS_CT_RAINBOW, 1.0e10, 0.0, false, false)));
    QCOMPARE(text(window.m_pColorbarAB->palette), text(palette(VXS_CT_RAINBOW, 1.0e10, 0.0, false, false)));
}

void tst_ColorScaleSlots::neitherButtonChecked()
{
    WindowProbe window;
    window.m_imageA = picture(1.0, 700.0);
    window.m_imageB = picture(1.0, 3000.0);
    prepare(window, A, B, true, true);
    for (QRadioButton *button : {window.m_pFullABRadioBtn, window.m_pAutoABRadioBtn}) {
        button->setAutoExclusive(false);
        button->setChecked(false);
    }
    window.onChangeColorRangeAB();
    QCOMPARE(text(window.m_imageA.getPalette()), text(palette(VXS_CT_RAINBOW, 0.0, 0.0, false, false)));
    QCOMPARE(text(window.m_pColorbarAB->palette), text(palette(VXS_CT_RAINBOW, 0.0, 0.0, false, false)));
}

void tst_ColorScaleSlots::flagsAndTable_data()
{
    QTest::addColumn<bool>("reversed");
    QTest::addColumn<bool>("log");
    QTest::addColumn<int>("table");
    QTest::newRow("plain") << false << false << int(VXS_CT_RAINBOW);
    QTest::newRow("reversed") << true << false << int(VXS_CT_GRAYS);
    QTest::newRow("log scale") << false << true << int(VXS_CT_YELLOWHOT);
    QTest::newRow("reversed, log scale") << true << true << int(VXS_CT_TERRAIN);
}

void tst_ColorScaleSlots::flagsAndTable()
{
    QFETCH(bool, reversed);
    QFETCH(bool, log);
    QFETCH(int, table);
    scaleslots::show(m_study.sequence(), table, reversed, log);
    // A dataset's own flags are not used either.
    CVXSToolInfo other;
    other.reversed = !reversed;
    other.logarithmic = !log;
    m_study.sequence()->getDataset(A)->setToolInfo(other);
    WindowProbe window;
    window.m_imageA = picture(1.0, 700.0);
    window.m_imageB = picture(1.0, 3000.0);
    prepare(window, A, B, true, true);
    const Limits limits =
        colorscale::united(colorscale::fullRange(window.m_imageA), colorscale::fullRange(window.m_imageB));
    for (bool barLog : {false, true}) {
        window.m_pColorbarAB->palette.setLogScale(barLog);
        window.onChangeColorRangeAB();
        const CILPalette wanted = palette(VXS_COLORTABLE_TYPES(table), limits.min, limits.max, reversed, log);
        QCOMPARE(text(window.m_imageA.getPalette()), text(wanted));
        QCOMPARE(text(window.m_imageB.getPalette()), text(wanted));
        // The bar's log scale is not this slot's.
        QCOMPARE(text(window.m_pColorbarAB->palette),
                 text(palette(VXS_COLORTABLE_TYPES(table), limits.min, limits.max, reversed, barLog)));
    }
}

void tst_ColorScaleSlots::refresh_data()
{
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("with a view") << true << true << QStringList{"range of A and B", "settings", "refresh"};
    QTest::newRow("with a view, within a computation") << true << false << QStringList{"range of A and B"};
    QTest::newRow("without a view") << false << true << QStringList{"range of A and B"};
}

void tst_ColorScaleSlots::refresh()
{
    QFETCH(bool, bound);
    QFETCH(bool, enabled);
    QFETCH(QStringList, steps);
    for (bool hasImages : {true, false}) {
        WindowProbe window;
        if (bound)
            QVERIFY(window.bind(m_study));
        window.m_imageA = picture(1.0, 700.0);
        window.m_imageB = picture(1.0, 3000.0);
        prepare(window, A, B, hasImages, hasImages);
        window.m_bRefreshEnabled = enabled;
        window.onChangeColorRangeAB();
        QCOMPARE(window.steps, steps);
        QCOMPARE(window.m_bRefreshEnabled, enabled);
    }
}

void tst_ColorScaleSlots::theResultIsNotTouched()
{
    WindowProbe window;
    window.m_imageA = picture(1.0, 700.0);
    window.m_imageB = picture(1.0, 3000.0);
    window.m_resultImage = picture(1.0, 100.0);
    prepare(window, A, B, true, true);
    window.setViewImage(2, &window.m_resultImage);
    window.m_resultImage.setPalette(BEFORE_A);
    window.m_pColorbarResult->palette = BEFORE_BAR;
    window.onChangeColorRangeAB();
    QCOMPARE(text(window.m_resultImage.getPalette()), text(BEFORE_A));
    QCOMPARE(text(window.m_pColorbarResult->palette), text(BEFORE_BAR));
}

QTEST_MAIN(tst_ColorScaleSlots)
#include "tst_ColorScaleSlots.moc"
