// SPDX-License-Identifier: MIT
// Clicks on the colour-scale widgets of a bound window on the screen, from the mouse to the palette.
#include "display/ColorScale.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/WindowProbe.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QtTest>

using colorscale::Limits;

namespace {

void fill(TestStudy &study)
{
    ClickSpec spec;
    spec.width = spec.height = 64;
    spec.clickNumber = "AB20260102030405";
    spec.counts = [](int x, int y) { return float(2 * (x + 64 * y)); };
    study.add(spec);
    spec.clickNumber = "AB20260102030406";
    spec.counts = [](int x, int y) { return float(3 * (x + 64 * y) + 50); };
    study.add(spec);
}

QString limitsOf(const CILPalette &p)
{
    return QString("%1 to %2").arg(p.getImageMin(), 0, 'g', 17).arg(p.getImageMax(), 0, 'g', 17);
}

QString text(const Limits &limits)
{
    return QString("%1 to %2").arg(limits.min, 0, 'g', 17).arg(limits.max, 0, 'g', 17);
}

void press(QAbstractButton *button)
{
    QVERIFY(GuiDriver(button->window()).press(button));
}

} // namespace

class tst_ColorScaleWidgets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void atFirstFullAndNotZero();
    void fullAndAutoOfAB();
    void fullAndAutoOfTheResult();
    void thePairsAreIndependent();
    void minZero();
    void minZeroStaysThroughTheNextComputation();

private:
    Limits automatic(CILImage &image, CVXSDataset *dataset) const
    {
        Limits limits;
        colorscale::extendedAutoRange(image, dataset, "counts", &limits);
        return limits;
    }

    std::unique_ptr<TestStudy> m_study;
    std::unique_ptr<WindowProbe> m_window;
};

void tst_ColorScaleWidgets::init()
{
    m_study = std::make_unique<TestStudy>();
    fill(*m_study);
    m_window = std::make_unique<WindowProbe>();
    QVERIFY(m_window->bind(*m_study));
    m_window->resize(1000, 800);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QCOMPARE(m_window->m_resultImage.getWidth(), 64u);
}

void tst_ColorScaleWidgets::cleanup()
{
    m_window.reset();
    m_study.reset();
}

void tst_ColorScaleWidgets::atFirstFullAndNotZero()
{
    QVERIFY(m_window->m_pFullABRadioBtn->isChecked());
    QVERIFY(m_window->m_pFullResultRadioBtn->isChecked());
    QVERIFY(!m_window->m_pMinChkBox->isChecked());
    QCOMPARE(limitsOf(m_window->m_imageA.getPalette()), text({0.0, 3.0 * 4095 + 50}));
    QCOMPARE(limitsOf(m_window->m_resultImage.getPalette()), text({-4095.0 - 50, -50.0}));
}

void tst_ColorScaleWidgets::fullAndAutoOfAB()
{
    WindowProbe &w = *m_window;
    const Limits full{0.0, 3.0 * 4095 + 50};
    const Limits automaticLimits =
        colorscale::united(automatic(w.m_imageA, w.m_pDatasetA), automatic(w.m_imageB, w.m_pDatasetB));
    QVERIFY(text(full) != text(automaticLimits));
    for (int round = 0; round < 2; ++round) {
        w.steps.clear();
        press(w.m_pAutoABRadioBtn);
        QCOMPARE(w.steps, (QStringList{"range of A and B", "settings", "refresh"}));
        for (const CILPalette &p :
             {w.m_imageA.getPalette(), w.m_imageB.getPalette(), w.m_pColorbarAB->palette})
            QCOMPARE(limitsOf(p), text(automaticLimits));
        w.steps.clear();
        press(w.m_pFullABRadioBtn);
        QCOMPARE(w.steps, (QStringList{"range of A and B", "settings", "refresh"}));
        for (const CILPalette &p :
             {w.m_imageA.getPalette(), w.m_imageB.getPalette(), w.m_pColorbarAB->palette})
            QCOMPARE(limitsOf(p), text(full));
    }
}

void tst_ColorScaleWidgets::fullAndAutoOfTheResult()
{
    WindowProbe &w = *m_window;
    const Limits full = colorscale::fullRange(w.m_resultImage);
    Limits automaticLimits = automatic(w.m_resultImage, w.m_pDatasetA);
    if (automaticLimits.min > automaticLimits.max)
        std::swap(automaticLimits.min, automaticLimits.max);
    QVERIFY(text(full) != text(automaticLimits));
    w.steps.clear();
    press(w.m_pAutoResultRadioBtn);
    QCOMPARE(w.steps, (QStringList{"range of result", "settings", "refresh"}));
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text(automaticLimits));
    QCOMPARE(limitsOf(w.m_pColorbarResult->palette), text(automaticLimits));
    w.steps.clear();
    press(w.m_pFullResultRadioBtn);
    QCOMPARE(w.steps, (QStringList{"range of result", "settings", "refresh"}));
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text(full));
    QCOMPARE(limitsOf(w.m_pColorbarResult->palette), text(full));
}

void tst_ColorScaleWidgets::thePairsAreIndependent()
{
    WindowProbe &w = *m_window;
    press(w.m_pAutoABRadioBtn);
    QVERIFY(w.m_pFullResultRadioBtn->isChecked());
    QVERIFY(!w.m_pAutoResultRadioBtn->isChecked());
    QVERIFY(!w.m_pFullABRadioBtn->isChecked());
    press(w.m_pAutoResultRadioBtn);
    QVERIFY(w.m_pAutoABRadioBtn->isChecked());
    QVERIFY(!w.m_pFullResultRadioBtn->isChecked());
}

void tst_ColorScaleWidgets::minZero()
{
    WindowProbe &w = *m_window;
    w.steps.clear();
    press(w.m_pMinChkBox);
    QVERIFY(w.m_pMinChkBox->isChecked());
    QCOMPARE(w.steps, (QStringList{"settings", "refresh"}));
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text({0.0, -50.0}));
    QCOMPARE(limitsOf(w.m_pColorbarResult->palette), text({0.0, -50.0}));
    // The other slot exchanges them.
    press(w.m_pFullResultRadioBtn);
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text({-50.0, 0.0}));
    press(w.m_pMinChkBox);
    QVERIFY(!w.m_pMinChkBox->isChecked());
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text({-4145.0, -50.0}));
}

void tst_ColorScaleWidgets::minZeroStaysThroughTheNextComputation()
{
    WindowProbe &w = *m_window;
    press(w.m_pMinChkBox);
    w.m_pOperationCB->setCurrentIndex(0);
    w.onChangeMathOperation(0);
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text({0.0, 5.0 * 4095 + 50}));
    press(w.m_pMinChkBox);
    QCOMPARE(limitsOf(w.m_resultImage.getPalette()), text({50.0, 5.0 * 4095 + 50}));
}

QTEST_MAIN(tst_ColorScaleWidgets)
#include "tst_ColorScaleWidgets.moc"
