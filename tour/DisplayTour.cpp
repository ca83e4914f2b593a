// SPDX-License-Identifier: MIT
#include "tour/DisplayTour.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "samples/SampleStudy.h"
#include "tour/MainJob.h"
#include "tour/Stage.h"

#include <QAbstractButton>
#include <QComboBox>

void displaytour::mainJob(Stage &stage)
{
    stage.picture(QStringLiteral("02-image-math-window"),
                  QStringLiteral("as it opens: A - B * k of the first two clicks"), stage.tool);
    stage.typeK(QStringLiteral("0.5"));
    stage.report.check(stage.shownK() == QLatin1String("5.00e-1"),
                       QStringLiteral("a typed k of 0.5 is shown as %1").arg(stage.shownK()));
    stage.picture(QStringLiteral("03-k-0.5"), QStringLiteral("A - B * k with k = 0.5: background is left"),
                  stage.tool);
    stage.typeK(QStringLiteral("1.25"));
    stage.picture(QStringLiteral("04-k-1.25"),
                  QStringLiteral("A - B * k with the true k = 1.25: the reporter alone"), stage.tool);
    const MainJob job = checkMainJob(*stage.sequence);
    for (const QString &line : job.lines)
        stage.report.note(line);
    stage.report.check(job.holds,
                       QStringLiteral("A - B * k with the true k is the reporter and camera noise alone"));
}

void displaytour::formulas(Stage &stage)
{
    const auto *operation = stage.find<QComboBox>(stage.tool, "m_pOperationCB");
    const char *const names[] = {"plus", "minus", "times", "ratio", "thresholded-ratio"};
    for (int index = 0; index < operation->count(); ++index) {
        if (index == 4) {
            stage.selectPair(samplestudy::RATIO_A, samplestudy::RATIO_B_HIGH);
            stage.typeK(QStringLiteral("600"));
        }
        stage.chooseFormula(index);
        stage.picture(QStringLiteral("1%1-%2").arg(index).arg(QString::fromLatin1(names[index])),
                      operation->currentText(), stage.tool);
    }
}

void displaytour::colorScales(Stage &stage)
{
    const auto button = [&stage](const char *name) { return stage.find<QAbstractButton>(stage.tool, name); };
    stage.chooseFormula(1);
    stage.selectPair(samplestudy::FLUORESCENCE_A, samplestudy::FLUORESCENCE_B);
    stage.typeK(QStringLiteral("1.2"));
    stage.picture(QStringLiteral("20-full"), QStringLiteral("Full limits for A and B and for the result"),
                  stage.tool);
    hand::click(button("m_pAutoABRadioBtn"));
    hand::click(button("m_pAutoResultRadioBtn"));
    stage.report.check(button("m_pAutoABRadioBtn")->isChecked() &&
                           button("m_pAutoResultRadioBtn")->isChecked(),
                       QStringLiteral("Auto is chosen by a click"));
    stage.picture(QStringLiteral("21-auto"), QStringLiteral("Auto limits"), stage.tool);
    hand::click(button("m_pMinChkBox"));
    stage.report.check(button("m_pMinChkBox")->isChecked(), QStringLiteral("Min = 0 is chosen by a click"));
    stage.picture(QStringLiteral("22-auto-min-0"), QStringLiteral("Auto limits, Min = 0"), stage.tool);
    hand::click(button("m_pMinChkBox"));
    hand::click(button("m_pFullABRadioBtn"));
    hand::click(button("m_pFullResultRadioBtn"));
}

void displaytour::pairsThatCannotBeCombined(Stage &stage)
{
    stage.selectPair(samplestudy::FLUORESCENCE_A, samplestudy::LUMINESCENCE_FIELD);
    stage.picture(QStringLiteral("30-different-field-of-view"),
                  QStringLiteral("a pair that cannot be combined, and why"), stage.tool);
    const auto *display = stage.find<QAbstractButton>(stage.tool, "m_pDisplayBtn");
    stage.report.check(!display->isEnabled(),
                       QStringLiteral("\"%1\" is disabled for it").arg(display->text()));
}
