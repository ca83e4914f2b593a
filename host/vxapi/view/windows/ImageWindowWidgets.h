// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/windows/DatasetPicture.h"

class ColorLimitsPanel;
class CVXSMultiImageView;
class MeasurementPane;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;
class QSplitter;
class QToolButton;
class QWidget;
class RoiToolBar;

/// The widgets of an image window and their places. View, tool bar and table are made by the window, with
/// what they work on; the others here.
struct ImageWindowWidgets
{
    void build(QWidget *window);
    /// Fills the choice of pictures and shows what the dataset can have.
    void setDataset(const CVXSDataset &dataset, const QVector<EDATASETPICTURE> &choices);

    CVXSMultiImageView *view = nullptr;
    RoiToolBar *toolBar = nullptr;
    MeasurementPane *table = nullptr;

    QComboBox *imageChoice = nullptr;
    QLabel *opacityLabel = nullptr;
    QSpinBox *opacity = nullptr;
    QLabel *unit = nullptr;
    QLabel *unitNote = nullptr; ///< that there are counts only; why stands in its tooltip
    QToolButton *flatField = nullptr;
    QToolButton *tableButton = nullptr;
    ColorLimitsPanel *limits = nullptr;
    QLabel *corrections = nullptr;
    QLabel *roiStatus = nullptr;
    QLabel *readout = nullptr;
    QSplitter *splitter = nullptr; ///< the picture above, the table below

private:
    QHBoxLayout *topRow(QWidget *window);
    void makeBody(QWidget *window);
    QHBoxLayout *bottomRow(QWidget *window);
};
