// SPDX-License-Identifier: MIT
#include "tour/MeasuringTour.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "samples/Camera.h"
#include "samples/SampleStudy.h"
#include "tour/ImageTool.h"
#include "tour/Stage.h"
#include "tour/Truth.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QPushButton>

#include <cmath>

using namespace samplestudy;

namespace {

constexpr double FIELD = 12.5; // cm, of the study's first pair
// The flank beside the gut: autofluorescence, and both reporters more than three of their widths away.
const QRectF BACKGROUND(QPointF(6.80, 5.65), QPointF(7.40, 6.65));
// Around the brighter reporter, 0.28 cm wide at (5.70, 5.55).
const QRectF REPORTER(QPointF(4.90, 4.75), QPointF(6.50, 6.35));

QString truthPath(const Stage &stage, QLatin1String file = QLatin1String(""))
{
    return stage.sequence->getSequenceInfoPath() + QStringLiteral("../") + file;
}

double varianceSum(const CILImage &expected, const imagetool::DrawnRoi &roi)
{
    return truth::sum(expected, roi, FIELD, &Camera::variance);
}

} // namespace

void measuringtour::kFromRoi(Stage &stage)
{
    stage.report.heading(QStringLiteral("k from a background ROI:"));
    CVXSImageWindow *window = stage.openImage(FLUORESCENCE_A);
    window->parentWidget()->setGeometry(300, 20, 860, 820);
    imagetool::showTable(stage, window);
    stage.picture(QStringLiteral("40-image-window"), QStringLiteral("the image window of A"), window);
    imagetool::draw(stage, window, "RoiRectangleToolButton", BACKGROUND);
    stage.picture(QStringLiteral("41-background-roi"),
                  QStringLiteral("a rectangle over autofluorescence alone, measured"), window);
    const imagetool::DrawnRoi roi = imagetool::lastRoi(*window->getDataset());

    stage.activate(QStringLiteral("Image Math"));
    stage.selectPair(FLUORESCENCE_A, FLUORESCENCE_B);
    stage.chooseFormula(1);
    auto *button = stage.find<QPushButton>(stage.tool, "m_pROIListButton");
    hand::chooseFromButtonMenu(button, {FLUORESCENCE_A, roi.name}, [&stage] {
        stage.picture(QStringLiteral("42-k-from-roi-menu"),
                      QStringLiteral("\"Compute 'k' from ROI\" with the ROI of A"), stage.tool);
    });
    stage.picture(QStringLiteral("43-k-from-roi"), QStringLiteral("k from the ROI, and the result"),
                  stage.tool);

    // k is a ratio of two sums: its relative variance is that of A's sum plus that of B's. Where the
    // reporters' tails reach into the ROI, A has more than 1.25 B; the truth says how much.
    const CILImage a = truth::read(truthPath(stage, TRUTH_A));
    const CILImage b = truth::read(truthPath(stage, TRUTH_B));
    const double sumA = truth::sum(a, roi, FIELD);
    const double sumB = truth::sum(b, roi, FIELD);
    const double error =
        sumA / sumB * std::sqrt(varianceSum(a, roi) / (sumA * sumA) + varianceSum(b, roi) / (sumB * sumB));
    const double tail = sumA / sumB - TRUE_K;
    stage.report.note(QStringLiteral("bound: 5 standard errors of a ratio of two sums over %1 pixels (%2), "
                                     "and the reporters' tails in the ROI (%3)")
                          .arg(truth::count(a, roi, FIELD))
                          .arg(5.0 * error)
                          .arg(tail));
    stage.report.checkNear(stage.shownK().toDouble(), TRUE_K, 5.0 * error + std::fabs(tail),
                           QStringLiteral("k from the ROI"));
    const CILImage *result = stage.shownResult();
    if (!result)
        hand::giveUp(QStringLiteral("no result is shown"));
    // With this very k the ROI's sum vanishes; what is left is the rounding of float pixels.
    const double left = truth::sum(*result, roi, FIELD) / truth::count(a, roi, FIELD);
    stage.report.checkNear(left, 0.0, 1e-3, QStringLiteral("mean of the shown result over the ROI [counts]"));
}

QString measuringtour::displayResult(Stage &stage)
{
    stage.report.heading(QStringLiteral("The result as a dataset:"));
    stage.typeK(QStringLiteral("1.25"));
    auto *withPhoto = stage.find<QCheckBox>(stage.tool, "m_pWithPhotoChkBox");
    if (!withPhoto->isChecked())
        hand::click(withPhoto);
    hand::chooseFromCombo(stage.find<QComboBox>(stage.tool, "m_pPhotoFromCB"), 0);
    stage.picture(QStringLiteral("50-before-display"),
                  QStringLiteral("k typed again, with the photograph of A"), stage.tool);
    const QStringList before = Stage::storedResults();
    stage.pressDisplay();
    QStringList made = Stage::storedResults();
    for (const QString &click : before)
        made.removeAll(click);
    stage.report.check(
        made.size() == 1,
        QStringLiteral("one result dataset was made: %1").arg(made.join(QStringLiteral(", "))));
    if (made.isEmpty())
        hand::giveUp(QStringLiteral("there is no result to go on with"));
    const QString click = made.first();
    for (QLatin1String file :
         {clickinfo::FILE_CLICK_INFO, clickinfo::FILE_ANALYZED_CLICK_INFO, clickinfo::FILE_LUMINESCENT,
          clickinfo::FILE_LUMINESCENT_A, clickinfo::FILE_LUMINESCENT_B, clickinfo::FILE_PHOTOGRAPH})
        stage.report.check(QFileInfo(Stage::resultFolder(click) + file).size() > 0,
                           QStringLiteral("its folder holds %1").arg(file));
    const bool isShown =
        hand::waitFor([&click] { return CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(click)); });
    stage.report.check(isShown, QStringLiteral("it is shown in an image window of its own"));
    if (!isShown)
        hand::giveUp(QStringLiteral("there is no window to measure in"));
    stage.picture(QStringLiteral("51-result"),
                  QStringLiteral("the workspace with the result, and how it was made"));
    return click;
}

void measuringtour::otherAngle(Stage &stage)
{
    stage.report.heading(QStringLiteral("A pair of other imaging angles:"));
    stage.activate(QStringLiteral("Image Math"));
    stage.selectPair(OTHER_ANGLE, FLUORESCENCE_B);
    const QStringList before = Stage::storedResults();
    const hand::Answer no(QStringLiteral("No"), [&stage] {
        stage.picture(QStringLiteral("60-imaging-angles"),
                      QStringLiteral("the question about imaging angles"));
    });
    stage.pressDisplay();
    stage.report.check(no.wasAsked(), QStringLiteral("it asks: \"%1\"").arg(no.question()));
    stage.report.check(Stage::storedResults() == before, QStringLiteral("\"No\" makes nothing"));

    const hand::Answer yes(QStringLiteral("Yes"));
    stage.pressDisplay();
    const QStringList after = Stage::storedResults();
    stage.report.check(yes.wasAsked() && after.size() == before.size() + 1,
                       QStringLiteral("asked again, \"Yes\" makes a result"));
}

void measuringtour::measureResult(Stage &stage, const QString &click)
{
    stage.report.heading(QStringLiteral("The result measured:"));
    CVXSImageWindow *window = CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(click));
    stage.activate(click);
    window->parentWidget()->setGeometry(4, 4, 960, 860);
    imagetool::showTable(stage, window);
    imagetool::draw(stage, window, "RoiEllipseToolButton", REPORTER);
    stage.picture(QStringLiteral("70-ellipse"), QStringLiteral("an ellipse over the reporter, in counts"),
                  window);
    stage.chooseUnit(QStringLiteral("Radiance (Photons)"));
    imagetool::waitUntilMeasured(*window->getDataset());
    stage.picture(QStringLiteral("71-radiance"), QStringLiteral("the same in radiance: total flux"), window);
    compareWithTruth(stage, click, truthPath(stage));
    stage.chooseUnit(QStringLiteral("Counts"));

    hand::chooseFromMenu(&stage.window, {QStringLiteral("File"), QStringLiteral("Save")});
    stage.report.check(hand::waitFor([window] { return !window->getDataset()->isModified(); }),
                       QStringLiteral("the result is saved"));
}

void measuringtour::closeEverything(Stage &stage)
{
    stage.report.heading(QStringLiteral("Closing:"));
    const hand::Answer answer(QStringLiteral("Discard"), [&stage] {
        stage.picture(QStringLiteral("80-closing"), QStringLiteral("what would be lost"));
    });
    hand::chooseFromMenu(&stage.window, {QStringLiteral("File"), QStringLiteral("Quit")});
    stage.report.check(answer.wasAsked() && answer.question().contains(SEQUENCE_ID),
                       QStringLiteral("it asks about the sequence, whose click A has a new ROI"));
    stage.report.check(!answer.question().contains(QString(OTHER_ANGLE).mid(2)),
                       QStringLiteral("and not about the result from the side, which lies on disk"));
    stage.report.check(!stage.window.isVisible(), QStringLiteral("the workspace is closed"));
}

void measuringtour::compareWithTruth(Stage &stage, const QString &click, const QString &studyFolder)
{
    CVXSDataset *dataset = CVXSDataset::getDataset(click);
    CVXSImageWindow *window = CVXSImageWindow::getImageWindow(dataset);
    const imagetool::DrawnRoi roi = imagetool::lastRoi(*dataset);
    const CILImage reporter = truth::read(studyFolder + TRUTH_REPORTER);
    const double expected = truth::sum(reporter, roi, FIELD);
    const double variance = varianceSum(truth::read(studyFolder + TRUTH_A), roi) +
                            TRUE_K * TRUE_K * varianceSum(truth::read(studyFolder + TRUTH_B), roi);
    const double bound = 5.0 * std::sqrt(variance);
    stage.report.note(QStringLiteral("bound: 5 standard errors of a sum of %1 pixels of A - 1.25 B, from the "
                                     "camera's noise alone")
                          .arg(truth::count(reporter, roi, FIELD)));
    const double counts = imagetool::tableNumber(stage, window, roi.name, QStringLiteral("Total counts"));
    stage.report.checkNear(counts, expected, bound, QStringLiteral("total counts of the reporter"));
    const CILImage stored = truth::read(Stage::resultFolder(click) + clickinfo::FILE_LUMINESCENT);
    const double added = truth::sum(stored, roi, FIELD);
    stage.report.checkNear(counts, added, 1e-5 * std::fabs(added), // the table shows six digits
                           QStringLiteral("total counts of the table and of luminescent.tif added up"));
    if (dataset->getUnit() != EUNIT_RADIANCE)
        return;

    // counts g / (QE T) 4 N^2 (1 + m)^2 / (pi A t), with the study's own camera and lens.
    const double pitch = Camera::PIXEL_PITCH * 1e-4; // cm
    const double magnification = Camera::SENSOR * pitch / FIELD;
    const double fNumber = 1.2;
    const double transmission = 0.7;
    const double exposure = 2.0;
    const double sensorArea = std::pow(pitch * 4.0, 2.0);
    const double radiance = Camera::GAIN / (Camera::QUANTUM_EFFICIENCY * transmission) * 4.0 * fNumber *
                            fNumber * std::pow(1.0 + magnification, 2.0) / (M_PI * sensorArea * exposure);
    const double pixelArea = std::pow(FIELD / reporter.getWidth(), 2.0);
    const double flux = 4.0 * M_PI * pixelArea * radiance;
    stage.report.checkNear(imagetool::tableNumber(stage, window, roi.name, QStringLiteral("Total flux")),
                           expected * flux, bound * flux,
                           QStringLiteral("total flux of the reporter [photons/s]"));
}
