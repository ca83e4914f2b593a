// SPDX-License-Identifier: MIT
#include "tour/SecondDay.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "samples/SampleStudy.h"
#include "tour/MeasuringTour.h"
#include "tour/Stage.h"

#include <QPushButton>
#include <QTextEdit>

#include <algorithm>

namespace {

bool tells(QWidget *panel, const QString &text)
{
    const QList<QTextEdit *> values = panel->findChildren<QTextEdit *>();
    return std::any_of(values.begin(), values.end(), [&text](const QTextEdit *value) {
        return value->isVisible() && value->toPlainText().contains(text);
    });
}

} // namespace

void secondDay(Stage &stage, const QString &studyFolder)
{
    stage.report.heading(QStringLiteral("Another day, in a new process:"));
    // The result of A, not that of the click from the side.
    const QString stamp = samplestudy::FLUORESCENCE_A.mid(2);
    const QStringList earlier = Stage::storedResults().filter(stamp);
    if (earlier.size() != 1)
        hand::giveUp(QStringLiteral("there is no single earlier result of %1").arg(stamp));
    const QString click = earlier.first();
    hand::chooseFromMenu(&stage.window, {QStringLiteral("File"), QStringLiteral("Open Earlier Result"),
                                         click + QLatin1Char('*')});
    const auto window = [&click] { return CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(click)); };
    if (!hand::waitFor([&window] { return window(); }))
        hand::giveUp(QStringLiteral("%1 did not open").arg(click));
    window()->parentWidget()->setGeometry(4, 4, 960, 860);
    hand::settle(window());
    stage.report.check(true, QStringLiteral("%1 is opened from the File menu").arg(click));
    measuringtour::compareWithTruth(stage, click, studyFolder);

    auto *panel = stage.find<QWidget>(&stage.window, "howMadePanel");
    for (const QString &text : {QStringLiteral("A - B * k"), QStringLiteral("1.25"),
                                QString(samplestudy::FLUORESCENCE_A), QString(samplestudy::FLUORESCENCE_B)})
        stage.report.check(tells(panel, text), QStringLiteral("the panel tells \"%1\"").arg(text));
    hand::click(stage.find<QPushButton>(panel, "howMadeCheck"));
    const QString outcome = stage.find<QTextEdit>(panel, "outcomeHeadline")->toPlainText();
    stage.report.check(outcome.contains(QLatin1String("the same to the last bit")),
                       QStringLiteral("Check says: \"%1\"").arg(outcome));
    stage.picture(QStringLiteral("90-second-day"),
                  QStringLiteral("an earlier result, how it was made, and the check"));
}
