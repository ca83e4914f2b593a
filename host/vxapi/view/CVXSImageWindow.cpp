// SPDX-License-Identifier: MIT
#include "host/vxapi/view/CVXSImageWindow.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxapi/view/CVXSMdiSubWindow.h"
#include "host/vxapi/view/CVXSMultiImageView.h"
#include "host/vxapi/view/CVXSSequenceWindow.h"
#include "host/vxapi/view/CVXSTextTag.h"
#include "host/vxapi/view/DatasetText.h"
#include "host/vxapi/view/PixelReadout.h"
#include "host/vxapi/view/SequenceSaving.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <cmath>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr double SATURATED = 65000.0; ///< camera counts from which a pixel says no more than "bright"
constexpr int HISTOGRAM_BINS = 25000;

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
    void refresh();
    void showLuminescent();
    void showStored(tag_eimagetype type);
    void showMessage(const QString &text);

    CVXSImageWindow *q;
    QPointer<CVXSDataset> dataset;
    CVXSMultiImageView *view = nullptr;
    QComboBox *imageChoice = nullptr;
    QToolButton *flatField = nullptr;
    QLabel *unit = nullptr;
    QLabel *corrections = nullptr;
    QLabel *readout = nullptr;
    QTimer refreshTimer;
    CILImage image;
    SColorbar bar;
    CVXSTextTag message;
};

void CVXSImageWindow::Private::build()
{
    imageChoice = new QComboBox(q);
    imageChoice->setObjectName(QStringLiteral("ImageChoice"));
    flatField = new QToolButton(q);
    flatField->setObjectName(QStringLiteral("FlatFieldButton"));
    flatField->setText(tr("Flat field"));
    flatField->setToolTip(tr("Corrects the luminescent image with the dataset's flat-field image"));
    flatField->setCheckable(true);
    unit = new QLabel(q);
    unit->setObjectName(QStringLiteral("UnitLabel"));
    corrections = new QLabel(q);
    corrections->setObjectName(QStringLiteral("CorrectionLabel"));
    readout = new QLabel(q);
    readout->setObjectName(QStringLiteral("PixelReadout"));
    view = new CVXSMultiImageView(q, "ImageView");
    view->setLayout(ELAYOUT_SINGLE);
    view->setImageBorder(20);
    view->addImage(nullptr, false, QString(), 0);
    message.show(false);
    view->addTextTag(&message);
    const VXSRECT strip = view->getColorBarRect();
    bar.rect = {strip.left, strip.top + 0.08f * strip.height(), strip.right,
                strip.top + 0.92f * strip.height()};

    auto *top = new QHBoxLayout;
    top->addWidget(imageChoice);
    top->addWidget(unit, 1);
    top->addWidget(flatField);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(corrections, 1);
    bottom->addWidget(readout);
    auto *layout = new QVBoxLayout(q);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(top);
    layout->addWidget(view, 1);
    layout->addLayout(bottom);

    if (dataset) {
        const CVXSImageList *images = dataset->getImageList();
        if (images->isPresent(EIMAGE_LUMINESCENT))
            imageChoice->addItem(datasetKindText(*dataset), EIMAGE_LUMINESCENT);
        if (images->isPresent(EIMAGE_PHOTOGRAPH))
            imageChoice->addItem(tr("Photograph"), EIMAGE_PHOTOGRAPH);
        if (images->isPresent(EIMAGE_XRAY))
            imageChoice->addItem(tr("X-ray"), EIMAGE_XRAY);
        flatField->setVisible(images->isPresent(EIMAGE_FLATFIELD));
    }
    imageChoice->setEnabled(imageChoice->count() > 1);
    refreshTimer.setSingleShot(true);
    refreshTimer.setInterval(0);
    connect(&refreshTimer, &QTimer::timeout, q, [this] { refresh(); });
    connect(imageChoice, QOverload<int>::of(&QComboBox::currentIndexChanged), q, [this] { refresh(); });
    connect(flatField, &QToolButton::clicked, q, [this](bool on) { q->switchFlatFieldCorrection(on); });
    connect(new PixelReadout(view), &PixelReadout::textChanged, readout, &QLabel::setText);
}

void CVXSImageWindow::Private::refresh()
{
    if (!dataset)
        return;
    message.show(false);
    flatField->setChecked(dataset->isLuminFlatFieldCorrected());
    if (imageChoice->count() == 0)
        showMessage(tr("This dataset holds no image."));
    else if (imageChoice->currentData().toInt() == EIMAGE_LUMINESCENT)
        showLuminescent();
    else
        showStored(tag_eimagetype(imageChoice->currentData().toInt()));
    view->setImageAt(image.isEmpty() ? nullptr : &image, false, 0, QString(), 0);
}

void CVXSImageWindow::Private::showLuminescent()
{
    const tag_edisplayunit shown = dataset->getUnit();
    unit->setText(unitText(shown));
    corrections->setText(correctionText(*dataset));
    if (dataset->getCalibratedLuminImage(shown, &image, QStringLiteral("Image Window")) != ESTATUS_SUCCESS) {
        showMessage(tr("The image cannot be shown:") + QLatin1Char('\n') + dataset->lastError());
        return;
    }
    double low = double(image.getMin());
    double high = double(image.getMax());
    const double factor = VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset,
                                                               unitKey(EUNIT_COUNTS), unitKey(shown));
    VX_LuminImageMinMax(&image, &low, &high, unitKey(shown), std::isfinite(factor) ? factor : 1.0, SATURATED,
                        HISTOGRAM_BINS);
    const CVXSToolInfo &info = dataset->getToolInfo();
    CILPalette palette;
    palette.SetColorTable(dataset->getColorTable(), low, high, info.reversed ? 1 : 0, 0);
    palette.setLogScale(info.logarithmic ? 1 : 0);
    image.setPalette(palette);
    bar.palette = palette;
    view->addColorbar(&bar);
}

void CVXSImageWindow::Private::showStored(tag_eimagetype type)
{
    unit->setText(QString());
    corrections->setText(QString());
    view->removeColorbar(&bar);
    const CILImage *stored = dataset->getCoreImage(type);
    if (!stored || stored->isEmpty()) {
        image = CILImage();
        showMessage(tr("The image cannot be shown:") + QLatin1Char('\n') + dataset->lastError());
        return;
    }
    image = *stored;
    CILPalette palette;
    palette.SetColorTable(VXS_CT_GRAYS, double(image.getMin()), double(image.getMax()), 0, 0);
    image.setPalette(palette);
}

void CVXSImageWindow::Private::showMessage(const QString &text)
{
    view->removeColorbar(&bar);
    QStringList lines = text.split(QLatin1Char('\n'));
    lines.removeAll(QString());
    message.setStringList(lines);
    const QSize size = message.getSize();
    double width = 0.0;
    double height = 0.0;
    view->convertWindowToObjectSize(size.width(), size.height(), width, height);
    const VXSRECT column = view->getImageLayoutRect();
    message.setPosition(double(column.left) + (double(column.width()) - width) / 2.0,
                        double(column.top) + (double(column.height()) - height) / 2.0);
    message.show(true);
}

CVXSImageWindow::CVXSImageWindow(CVXSDataset *dataset, QWidget *parent)
    : CVXSChildWindow(parent), d(std::make_unique<Private>(this, dataset))
{
    imageWindows().append(this);
    setWindowIcon(CVXUtilityFns::appIcon());
    d->build();
    resize(640, 560);
    if (!dataset)
        return;
    setWindowTitle(dataset->getClickNumber());
    d->refresh();
    // Corrections that are switched on for a computation and back at once are shown once, afterwards.
    const auto later = [this] { d->refreshTimer.start(); };
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

void CVXSImageWindow::switchFlatFieldCorrection(bool on)
{
    if (!d->dataset)
        return;
    d->dataset->doFlatFieldCorrection(on);
    d->flatField->setChecked(d->dataset->isLuminFlatFieldCorrected());
    d->refreshTimer.start();
}
