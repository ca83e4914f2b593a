// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSImageWindow.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/roi/RoiMimeData.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/measurement/MeasurementPane.h"
#include "host/vxapi/view/measurement/RoiMeasurer.h"
#include "host/vxapi/view/roi/RoiEditor.h"
#include "host/vxapi/view/roi/RoiOverlay.h"
#include "host/vxapi/view/roi/RoiToolBar.h"
#include "host/vxapi/view/windows/ColorLimitsPanel.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/DatasetPicture.h"
#include "host/vxapi/view/windows/DatasetText.h"
#include "host/vxapi/view/windows/ImageWindowWidgets.h"
#include "host/vxapi/view/windows/PixelReadout.h"
#include "host/vxapi/view/windows/SequenceSaving.h"
#include "host/vxapi/view/windows/TableBelowPicture.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/PlainToolTip.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

namespace {

QList<CVXSImageWindow *> &imageWindows()
{
    static QList<CVXSImageWindow *> windows;
    return windows;
}

} // namespace

class CVXSImageWindow::Private
{
public:
    Private(CVXSImageWindow *window, CVXSDataset *shown) : q(window), dataset(shown) {}

    void build();
    void connectWidgets();
    void chooseFlatField(bool on);
    void refresh();
    void refreshLater() { refreshTimer.start(); }
    void showMeasured(const QString &problem);
    void showStatus(const QString &message);

    CVXSImageWindow *q;
    QPointer<CVXSDataset> dataset;
    ImageWindowWidgets w;
    RoiEditor *editor = nullptr;
    RoiMeasurer *measurer = nullptr;
    QString measuringProblem;
    QString correctionProblem; ///< why the correction that was asked for cannot be had
    bool hadRois = false;
    QTimer refreshTimer;
    std::unique_ptr<TableBelowPicture> table;
    std::unique_ptr<DatasetPicture> picture;
    std::unique_ptr<RoiOverlay> overlay;
};

void CVXSImageWindow::Private::build()
{
    w.view = new CVXSMultiImageView(q, "ImageView");
    picture = std::make_unique<DatasetPicture>(dataset, w.view);
    CROIManager *manager = dataset ? dataset->roiManager() : nullptr;
    const auto mapping = [this] { return picture->mapping(); };
    editor = new RoiEditor(w.view, manager, mapping);
    overlay = std::make_unique<RoiOverlay>(w.view, manager, editor, mapping);
    measurer = new RoiMeasurer(dataset, q);
    w.toolBar = new RoiToolBar(manager, editor, q);
    w.table = new MeasurementPane(dataset, measurer, q);
    w.build(q);
    table = std::make_unique<TableBelowPicture>(q, w.splitter);
    if (dataset)
        w.setDataset(*dataset, picture->choices());
    picture->setOpacity(w.opacity->value() / 100.0);
    refreshTimer.setSingleShot(true);
    refreshTimer.setInterval(0);
    connectWidgets();
}

void CVXSImageWindow::Private::connectWidgets()
{
    connect(&refreshTimer, &QTimer::timeout, q, [this] { refresh(); });
    connect(w.imageChoice, QOverload<int>::of(&QComboBox::currentIndexChanged), q, [this] {
        picture->setChoice(EDATASETPICTURE(w.imageChoice->currentData().toInt()));
        refresh();
    });
    connect(w.opacity, QOverload<int>::of(&QSpinBox::valueChanged), q, [this](int percent) {
        picture->setOpacity(percent / 100.0);
        refresh();
    });
    connect(w.limits, &ColorLimitsPanel::limitsChosen, q, [this](const ColorLimits &chosen) {
        picture->setLimits(chosen);
        refresh();
    });
    connect(w.flatField, &QToolButton::clicked, q, [this](bool on) { chooseFlatField(on); });
    connect(w.tableButton, &QToolButton::toggled, q, [this](bool on) { table->show(on); });
    connect(new PixelReadout(w.view), &PixelReadout::textChanged, w.readout, &QLabel::setText);
    connect(measurer, &RoiMeasurer::measured, q, [this](const QString &problem) { showMeasured(problem); });
    if (dataset)
        connect(dataset->roiManager(), &CROIManager::selectionChanged, q, &CVXSChildWindow::editStateChanged);
    const auto tell = [this](const QString &text) { showStatus(text); };
    connect(editor, &RoiEditor::messageChanged, q, tell);
    connect(w.toolBar, &RoiToolBar::messageChanged, q, tell);
    connect(w.limits, &ColorLimitsPanel::refused, q, tell);
    connect(w.table, &MeasurementPane::deleteRequested, editor, &RoiEditor::removeSelected);
    connect(w.table, &MeasurementPane::renameRequested, w.toolBar, &RoiToolBar::rename);
}

// Tools switch the correction as well, for a computation and back; only the user's choice is news.
void CVXSImageWindow::Private::chooseFlatField(bool on)
{
    if (!dataset)
        return;
    const bool before = dataset->isLuminFlatFieldCorrected();
    q->switchFlatFieldCorrection(on);
    if (CVXSSequenceDataset *sequence = dataset->getSequenceDataset();
        sequence && dataset->isLuminFlatFieldCorrected() != before) {
        sequence->announceCorrections();
    } else if (on && !dataset->isLuminFlatFieldCorrected()) {
        refreshTimer.stop(); // nothing changed, and it would take the reason away
        correctionProblem = dataset->lastError();
        showStatus(QString());
    }
}

void CVXSImageWindow::Private::refresh()
{
    if (!dataset)
        return;
    picture->refresh();
    const bool isLuminescent = picture->isLuminescentShown() && w.imageChoice->count() > 0;
    const bool isOverlay = isLuminescent && w.imageChoice->currentData().toInt() == EPICTURE_OVERLAY;
    w.opacityLabel->setVisible(isOverlay);
    w.opacity->setVisible(isOverlay);
    w.limits->setVisible(isLuminescent);
    w.limits->setEnabled(w.view->imageAt(0));
    w.limits->setLimits(picture->limits());
    w.flatField->setChecked(dataset->isLuminFlatFieldCorrected());
    w.unit->setText(isLuminescent ? unitText(dataset->getShownUnit()) : QString());
    const bool isInCountsOnly = isLuminescent && dataset->getShownUnit() == EUNIT_COUNTS;
    const QString obstacle = isInCountsOnly ? dataset->obstacleToUnit(EUNIT_RADIANCE) : QString();
    w.unitNote->setVisible(!obstacle.isEmpty());
    w.unitNote->setToolTip(plainToolTip(obstacle));
    QStringList notes;
    for (const QString &note : {isLuminescent ? correctionText(*dataset) : QString(), picture->note()}) {
        if (!note.isEmpty())
            notes.append(note);
    }
    w.corrections->setText(notes.join(QStringLiteral(", ")));
    w.toolBar->setObstacle(picture->obstacleToRois());
    correctionProblem.clear();
    showStatus(QString());
    Q_EMIT q->editStateChanged();
}

void CVXSImageWindow::Private::showMeasured(const QString &problem)
{
    const int count = dataset ? dataset->roiManager()->rois().size() : 0;
    // The first ROI brings its numbers along; whether they stay is the user's choice. Not where the picture
    // would have to make place for them: the next ROI is being drawn in it.
    const bool isFirst = count > 0 && !hadRois;
    if (isFirst && table->hasRoom())
        w.tableButton->setChecked(true);
    hadRois = count > 0;
    measuringProblem = problem;
    showStatus(isFirst && !w.tableButton->isChecked() && problem.isEmpty()
                   ? tr("Measured: \"%1\" shows the numbers.").arg(w.tableButton->text())
                   : QString());
}

/// What the mouse has to say, else what stands in the way of ROIs.
void CVXSImageWindow::Private::showStatus(const QString &message)
{
    QStringList standing = {measuringProblem, correctionProblem, picture->obstacleToRois()};
    standing.removeAll(QString());
    w.roiStatus->setText(message.isEmpty() ? standing.value(0) : message);
}

CVXSImageWindow::CVXSImageWindow(CVXSDataset *dataset, QWidget *parent)
    : CVXSChildWindow(parent), d(std::make_unique<Private>(this, dataset))
{
    imageWindows().append(this);
    setWindowIcon(CVXUtilityFns::appIcon());
    d->build();
    resize(840, 720);
    if (!dataset)
        return;
    // In a title "[*]" is the mark of changes; doubled it stands for itself.
    setWindowTitle(clickAndSourceText(*dataset).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    d->refresh();
    // Nobody is drawing yet: the numbers of ROIs that are there come at once.
    d->hadRois = !dataset->roiManager()->rois().isEmpty();
    d->w.tableButton->setChecked(d->hadRois);
    d->measurer->measureLater();
    // Corrections that are switched on for a computation and back at once are shown once, afterwards.
    const auto later = [this] { d->refreshLater(); };
    connect(dataset, &CVXSDataset::calibrationChanged, this, later);
    connect(dataset, &CVXSDataset::unitChanged, this, later);
    connect(dataset, &CVXSDataset::displayChanged, this, later);
    connect(dataset, &QObject::destroyed, this, [this] {
        QWidget *window = subWindow() ? static_cast<QWidget *>(subWindow()) : this;
        window->deleteLater();
    });
}

CVXSImageWindow::~CVXSImageWindow()
{
    imageWindows().removeAll(this);
    // While the view is still there.
    d->overlay.reset();
    d->picture.reset();
}

CVXSImageWindow *CVXSImageWindow::getImageWindow(const CVXSDataset *dataset)
{
    for (CVXSImageWindow *window : qAsConst(imageWindows())) {
        if (dataset && window->getDataset() == dataset)
            return window;
    }
    return nullptr;
}

CVXSDataset *CVXSImageWindow::getDataset() const
{
    return d->dataset;
}

ESTATUS CVXSImageWindow::saveSequence()
{
    CVXSSequenceDataset *sequence = d->dataset ? d->dataset->getSequenceDataset() : nullptr;
    if (CVXSSequenceWindow *window = CVXSSequenceWindow::getSequenceWindow(sequence))
        return window->saveSequence();
    return saveSequenceWithMessage(this, sequence);
}

void CVXSImageWindow::refreshAfterDatasetAdded()
{
    d->refresh();
}

bool CVXSImageWindow::canCopy() const
{
    return canCopyPicture() || (d->dataset && d->dataset->roiManager()->selectedROI());
}

void CVXSImageWindow::copy()
{
    if (focusWidget() && d->w.table->isAncestorOf(focusWidget()))
        d->w.table->copySelected();
    else if (d->dataset && d->dataset->roiManager()->selectedROI())
        d->editor->copySelected();
    else
        copyPicture();
}

bool CVXSImageWindow::canCopyPicture() const
{
    return d->w.view->imageAt(0);
}

QImage CVXSImageWindow::picture()
{
    QImage picture;
    d->w.view->getImage(picture);
    return picture;
}

bool CVXSImageWindow::canPaste() const
{
    return d->picture->obstacleToRois().isEmpty() &&
           roimime::isPresent(QGuiApplication::clipboard()->mimeData());
}

void CVXSImageWindow::paste()
{
    d->editor->paste();
}

void CVXSImageWindow::switchFlatFieldCorrection(bool on)
{
    if (!d->dataset)
        return;
    d->dataset->doFlatFieldCorrection(on);
    d->w.flatField->setChecked(d->dataset->isLuminFlatFieldCorrected());
    d->refreshLater();
}
