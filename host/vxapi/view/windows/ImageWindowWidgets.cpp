// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/ImageWindowWidgets.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/measurement/MeasurementPane.h"
#include "host/vxapi/view/roi/RoiToolBar.h"
#include "host/vxapi/view/windows/ColorLimitsPanel.h"
#include "host/vxapi/view/windows/DatasetText.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int OPACITY = 70; ///< of the luminescent image over the photograph at first [%]

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CVXSImageWindow)
};

QString pictureText(EDATASETPICTURE picture, const CVXSDataset &dataset)
{
    switch (picture) {
    case EPICTURE_OVERLAY:
        return Text::tr("%1 over photograph").arg(datasetKindText(dataset));
    case EPICTURE_LUMINESCENT:
        return datasetKindText(dataset);
    case EPICTURE_PHOTOGRAPH:
        return Text::tr("Photograph");
    case EPICTURE_XRAY:
        return Text::tr("X-ray");
    }
    return QString();
}

template <typename T>
T *make(QWidget *window, const char *name)
{
    auto *widget = new T(window);
    widget->setObjectName(QLatin1String(name));
    return widget;
}

} // namespace

void ImageWindowWidgets::build(QWidget *window)
{
    auto *layout = new QVBoxLayout(window);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(topRow(window));
    layout->addWidget(toolBar);
    makeBody(window);
    layout->addWidget(splitter, 1);
    layout->addLayout(bottomRow(window));
}

void ImageWindowWidgets::setDataset(const CVXSDataset &dataset, const QVector<EDATASETPICTURE> &choices)
{
    for (const EDATASETPICTURE choice : choices)
        imageChoice->addItem(pictureText(choice, dataset), choice);
    imageChoice->setEnabled(imageChoice->count() > 1);
    flatField->setVisible(dataset.getImageList()->isPresent(EIMAGE_FLATFIELD));
}

QHBoxLayout *ImageWindowWidgets::topRow(QWidget *window)
{
    imageChoice = make<QComboBox>(window, "ImageChoice");
    unit = make<QLabel>(window, "UnitLabel");
    unit->setWordWrap(true);
    unitNote = make<QLabel>(window, "UnitNote");
    unitNote->setText(Text::tr("no radiance: constants are missing"));
    unitNote->hide();
    flatField = make<QToolButton>(window, "FlatFieldButton");
    flatField->setText(Text::tr("Flat field"));
    flatField->setToolTip(Text::tr("Corrects the luminescent image with the dataset's flat-field image"));
    flatField->setCheckable(true);
    flatField->hide();
    tableButton = make<QToolButton>(window, "MeasurementTableButton");
    tableButton->setText(Text::tr("Measurements"));
    tableButton->setToolTip(Text::tr("Shows the table of measurements below the picture"));
    tableButton->setCheckable(true);
    auto *row = new QHBoxLayout;
    row->addWidget(imageChoice);
    row->addWidget(unit, 1);
    row->addWidget(unitNote);
    row->addWidget(flatField);
    row->addWidget(tableButton);
    return row;
}

void ImageWindowWidgets::makeBody(QWidget *window)
{
    auto *upper = new QWidget(window);
    auto *row = new QHBoxLayout(upper);
    row->setContentsMargins(0, 0, 0, 0);
    limits = make<ColorLimitsPanel>(window, "ColorLimits");
    opacityLabel = make<QLabel>(window, "OpacityLabel");
    opacityLabel->setText(Text::tr("Opacity"));
    opacity = make<QSpinBox>(window, "OverlayOpacity");
    opacity->setRange(0, 100);
    opacity->setSingleStep(5);
    opacity->setValue(OPACITY);
    opacity->setSuffix(QStringLiteral(" %"));
    opacity->setToolTip(Text::tr("How much the luminescent image covers the photograph"));
    limits->addToMiddle(opacityLabel);
    limits->addToMiddle(opacity);
    row->addWidget(view, 1);
    row->addWidget(limits);
    // Pictures of a dataset are compared: each stays where the others are.
    QSizePolicy policy = limits->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    limits->setSizePolicy(policy);
    table->hide();
    splitter = make<QSplitter>(window, "ImageSplitter");
    splitter->setOrientation(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(upper);
    splitter->addWidget(table);
    splitter->setSizes({480, 170});
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
}

QHBoxLayout *ImageWindowWidgets::bottomRow(QWidget *window)
{
    corrections = make<QLabel>(window, "CorrectionLabel");
    roiStatus = make<QLabel>(window, "RoiStatus");
    roiStatus->setWordWrap(true);
    roiStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    readout = make<QLabel>(window, "PixelReadout");
    // Signs such as "×" come from another font and are a little higher: the picture must not move for them.
    roiStatus->setMinimumHeight(window->fontMetrics().height() + 4);
    auto *row = new QHBoxLayout;
    row->addWidget(corrections);
    row->addWidget(roiStatus, 1);
    row->addWidget(readout);
    return row;
}
