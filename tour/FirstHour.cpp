// SPDX-License-Identifier: MIT
#include "tour/FirstHour.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxparser/CPLClickInfo.h"
#include "samples/Camera.h"
#include "samples/SampleStudy.h"
#include "tour/ImageTool.h"
#include "tour/Stage.h"
#include "tour/Truth.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <cmath>

using namespace samplestudy;

namespace {

// The flank beside the gut: autofluorescence, and both reporters more than three of their widths away.
const QRectF BACKGROUND(QPointF(6.80, 5.65), QPointF(7.40, 6.65));
const QRectF REPORTER(QPointF(4.90, 4.75), QPointF(6.50, 6.35));
const QRectF HEAD(QPointF(5.60, 2.40), QPointF(6.60, 3.20));

struct Pair
{
    QString a;
    QString b;
};

void fillIn(Stage &stage, QWidget *dialog, const QString &filesFolder)
{
    hand::chooseFiles(
        {filesFolder + QLatin1Char('/') + CAMERA_FILE_A, filesFolder + QLatin1Char('/') + CAMERA_FILE_B});
    hand::click(stage.find<QPushButton>(dialog, "addImages"));
    const auto fill = [&](const char *field, const QString &text) {
        auto *edit = stage.find<QLineEdit>(dialog, field);
        QTest::mouseDClick(edit, Qt::LeftButton);
        QTest::keyClicks(edit, text);
    };
    fill("initials", QStringLiteral("ZB"));
    hand::chooseFromCombo(stage.find<QComboBox>(dialog, "kind"), 1);
    fill("fieldOfView", QStringLiteral("12.5"));
    fill("binning", QStringLiteral("4"));
    auto *cost = stage.find<QLabel>(dialog, "importCost");
    stage.report.check(cost->text().contains(QLatin1String("offset stays in the counts")),
                       QStringLiteral("without an offset it says what that costs"));
    stage.picture(QStringLiteral("h1-import-without-offset"),
                  QStringLiteral("two camera files, and what an empty offset costs"), dialog);
    fill("offset", QString::number(Camera::OFFSET));
    stage.report.check(!cost->text().contains(QLatin1String("offset stays in the counts")),
                       QStringLiteral("with the offset of %1 counts it does not").arg(Camera::OFFSET));
    fill("exposure", QStringLiteral("2"));
    stage.picture(QStringLiteral("h2-import"), QStringLiteral("the same with the offset"), dialog);
    hand::click(stage.find<QPushButton>(dialog, "import"));
}

/// Of the imported clicks, by the names of their files.
Pair importedPair(const CVXSSequenceDataset &sequence)
{
    Pair pair;
    const QList<CVXSDataset *> datasets = sequence.getDatasets();
    for (const CVXSDataset *dataset : datasets) {
        const QString file =
            clickinfo::sourceFileOf(*dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT);
        (file == CAMERA_FILE_A ? pair.a : pair.b) = dataset->getClickNumber();
    }
    return pair;
}

Pair importFiles(Stage &stage, const QString &filesFolder)
{
    stage.report.heading(QStringLiteral("The first hour: two files of a camera are imported"));
    stage.picture(QStringLiteral("h0-empty"), QStringLiteral("the workspace at its first start"));
    hand::useDialog("ImportDialog", [&](QWidget *dialog) { fillIn(stage, dialog, filesFolder); });
    hand::chooseFromMenu(&stage.window, {QStringLiteral("File"), QStringLiteral("Import Images...")});
    if (!hand::waitFor([] { return CVXSSequenceDataset::openSequences().size() == 1; }))
        hand::giveUp(QStringLiteral("nothing was imported"));
    stage.sequence = CVXSSequenceDataset::openSequences().first();
    const Pair pair = importedPair(*stage.sequence);
    stage.report.check(stage.sequence->getClickNumbers().size() == 2 && !pair.a.isEmpty() &&
                           !pair.b.isEmpty(),
                       QStringLiteral("a sequence of two clicks, which know the names of their files"));
    hand::settle(&stage.window);
    stage.picture(QStringLiteral("h3-imported"), QStringLiteral("the imported sequence"));
    return pair;
}

void openTheTool(Stage &stage)
{
    const hand::Answer save(QStringLiteral("Yes"));
    stage.showImageMath();
    stage.report.check(save.wasAsked(), QStringLiteral("the tool has the new sequence saved first"));
}

void kFromBackground(Stage &stage, const Pair &pair)
{
    stage.report.heading(QStringLiteral("k from a background ROI:"));
    CVXSImageWindow *window = stage.openImage(pair.a);
    imagetool::draw(stage, window, "RoiRectangleToolButton", BACKGROUND);
    const imagetool::DrawnRoi roi = imagetool::lastRoi(*window->getDataset());
    stage.picture(QStringLiteral("h4-background-roi"), QStringLiteral("a background ROI"));
    stage.activate(QStringLiteral("Image Math"));
    stage.selectPair(pair.a, pair.b);
    stage.chooseFormula(1);
    hand::chooseFromButtonMenu(stage.find<QPushButton>(stage.tool, "m_pROIListButton"), {pair.a, roi.name});
    hand::settle(stage.tool);
    stage.picture(QStringLiteral("h5-k"), QStringLiteral("k from the ROI, and the result"), stage.tool);

    // The relative variance of a ratio of two sums is that of both sums together; the tails of the reporters in
    // the ROI are what A has more than k B.
    const CILImage a = expectedCameraFile(CAMERA_FILE_A);
    const CILImage b = expectedCameraFile(CAMERA_FILE_B);
    const double field = Camera().fieldOfView;
    const double sumA = truth::sum(a, roi, field);
    const double sumB = truth::sum(b, roi, field);
    const auto relative = [&](const CILImage &image, double sum) {
        return truth::sum(image, roi, field, &Camera::variance) / (sum * sum);
    };
    const double error = sumA / sumB * std::sqrt(relative(a, sumA) + relative(b, sumB));
    const double tail = sumA / sumB - CAMERA_FILES_K;
    stage.report.note(QStringLiteral("bound: 5 standard errors (%1) and the reporters' tails (%2)")
                          .arg(5.0 * error)
                          .arg(tail));
    stage.report.checkNear(stage.shownK().toDouble(), CAMERA_FILES_K, 5.0 * error + std::fabs(tail),
                           QStringLiteral("k from the ROI"));
    const double pixels = truth::count(a, roi, field) * Camera::OFFSET;
    stage.report.note(QStringLiteral("with the offset left in it would have been %1")
                          .arg((sumA + pixels) / (sumB + pixels)));
}

QString makeResult(Stage &stage)
{
    stage.report.heading(QStringLiteral("The result, and ROIs from click to click:"));
    stage.pressDisplay();
    const QStringList made = Stage::storedResults();
    const auto shown = [&made] {
        return made.size() == 1 && CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(made.first()));
    };
    if (!hand::waitFor(shown))
        hand::giveUp(QStringLiteral("the result is not shown"));
    hand::settle(&stage.window);
    stage.picture(QStringLiteral("h6-result"), QStringLiteral("the result beside what it was made of"));
    return made.first();
}

void press(Stage &stage, CVXSImageWindow *window, Qt::Key key)
{
    stage.activate(window->windowTitle());
    auto *view = stage.find<CVXSMultiImageView>(window, "ImageView");
    view->setFocus();
    QTest::keyClick(view, key, Qt::ControlModifier);
}

bool haveSamePlace(const CVXSDataset &a, const CVXSDataset &b)
{
    const QList<CROIBase *> roisA = a.roiManager()->rois();
    const QList<CROIBase *> roisB = b.roiManager()->rois();
    if (roisA.size() != roisB.size())
        return false;
    for (int i = 0; i < roisA.size(); ++i) {
        if (roisA.at(i)->boundingBox() != roisB.at(i)->boundingBox())
            return false;
    }
    return true;
}

void copyRois(Stage &stage, const Pair &pair, const QString &result)
{
    CVXSImageWindow *source = CVXSImageWindow::getImageWindow(stage.sequence->getDataset(pair.a));
    stage.activate(source->windowTitle());
    imagetool::draw(stage, source, "RoiEllipseToolButton", REPORTER);
    imagetool::draw(stage, source, "RoiEllipseToolButton", HEAD);
    press(stage, source, Qt::Key_A);
    press(stage, source, Qt::Key_C);
    CVXSImageWindow *ofB = stage.openImage(pair.b);
    CVXSImageWindow *ofResult = CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(result));
    for (CVXSImageWindow *target : {ofB, ofResult}) {
        press(stage, target, Qt::Key_V);
        imagetool::waitUntilMeasured(*target->getDataset());
        stage.report.check(
            haveSamePlace(*source->getDataset(), *target->getDataset()),
            QStringLiteral("%1 has the three ROIs at the same places").arg(target->windowTitle()));
    }
    stage.activate(ofResult->windowTitle());
    imagetool::showTable(stage, ofResult);
    const QAbstractItemModel *table = stage.find<QTableView>(ofResult, "MeasurementTable")->model();
    stage.report.check(hand::waitFor([table] { return table->rowCount() == 3; }),
                       QStringLiteral("the result's table has a row for each"));
    const QString background = ofResult->getDataset()->roiManager()->rois().first()->name();
    const double left = imagetool::tableNumber(stage, ofResult, background, QStringLiteral("Mean"));
    // Of this very k; what is left is the rounding of float pixels and of k to six digits.
    stage.report.checkNear(left, 0.0, 0.01,
                           QStringLiteral("mean of the result over the background ROI [counts]"));
    hand::settle(&stage.window);
    stage.picture(QStringLiteral("h7-table"), QStringLiteral("three ROIs, copied and measured"));
}

void close(Stage &stage, const QString &result)
{
    stage.report.heading(QStringLiteral("Closing:"));
    hand::Answer second;
    const hand::Answer first(QStringLiteral("Save All"), [&] {
        stage.picture(QStringLiteral("h8-closing"), QStringLiteral("one question about what would be lost"));
        second = hand::Answer(QStringLiteral("Cancel"));
    });
    const QString sequenceId = stage.sequence->getSequenceID();
    const QString folder = Stage::resultFolder(result);
    hand::chooseFromMenu(&stage.window, {QStringLiteral("File"), QStringLiteral("Quit")});
    stage.report.check(first.wasAsked() && !second.wasAsked(), QStringLiteral("it asks once"));
    stage.report.check(
        first.question().contains(sequenceId) && first.question().contains(result),
        QStringLiteral("about the sequence and the result: \"%1\"").arg(first.question().simplified()));
    stage.report.check(!stage.window.isVisible(), QStringLiteral("the workspace is closed"));
    CPLClickInfo analyzed;
    analyzed.loadClickInfo(folder + clickinfo::FILE_ANALYZED_CLICK_INFO, false);
    QStringList rois;
    if (const CPLSection *section = analyzed[clickinfo::SECTION_ROIS])
        section->getKeyList(&rois);
    stage.report.check(rois.size() == 3, QStringLiteral("the result's ROIs are on disk"));
}

} // namespace

void firstHour(Stage &stage, const QString &filesFolder)
{
    const Pair pair = importFiles(stage, filesFolder);
    openTheTool(stage);
    kFromBackground(stage, pair);
    const QString result = makeResult(stage);
    copyRois(stage, pair, result);
    close(stage, result);
}
