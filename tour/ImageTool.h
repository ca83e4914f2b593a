// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QString>

class CVXSDataset;
class CVXSImageWindow;
class Stage;

/// What the user does in an image window.
namespace imagetool {

/// Chooses a drawing tool of the tool bar by its object name and drags a box [cm of the field of view].
void draw(Stage &stage, CVXSImageWindow *window, const char *tool, const QRectF &box);
/// Waits until the ROI made last is measured as the dataset is shown now: that comes with the event loop.
void waitUntilMeasured(const CVXSDataset &dataset);
/// Shows the measurement table, which in a window without room for it comes only when it is asked for.
void showTable(Stage &stage, CVXSImageWindow *window);
/// A value of the measurement table as it is shown, by ROI and beginning of the header; empty when there is
/// none.
QString tableValue(Stage &stage, CVXSImageWindow *window, const QString &roi, const QString &header);
/// The same as a number; NaN when it is none.
double tableNumber(Stage &stage, CVXSImageWindow *window, const QString &roi, const QString &header);
/// The name of the ROI of a dataset that was made last, with its box and whether it is an ellipse.
struct DrawnRoi
{
    QString name;
    QRectF box; ///< [cm]
    bool isEllipse = false;
};
DrawnRoi lastRoi(const CVXSDataset &dataset);

} // namespace imagetool
