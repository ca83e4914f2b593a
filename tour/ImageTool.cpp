// SPDX-License-Identifier: MIT
#include "tour/ImageTool.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "tour/Stage.h"

#include <QAbstractItemModel>
#include <QTableView>
#include <QToolButton>

#include <limits>

void imagetool::draw(Stage &stage, CVXSImageWindow *window, const char *tool, const QRectF &box)
{
    hand::click(stage.find<QToolButton>(window, tool));
    auto *view = stage.find<CVXSMultiImageView>(window, "ImageView");
    const QRectF place = view->imagePlace(0);
    const double scale = place.width() / window->getDataset()->getFOVForImage(EIMAGE_LUMINESCENT);
    const auto toView = [&](const QPointF &at) { return (place.topLeft() + at * scale).toPoint(); };
    const int before = window->getDataset()->roiManager()->rois().size();
    hand::drag(view, toView(box.topLeft()), toView(box.bottomRight()));
    if (window->getDataset()->roiManager()->rois().size() != before + 1)
        hand::giveUp(QStringLiteral("dragging with %1 made no ROI").arg(QString::fromLatin1(tool)));
    waitUntilMeasured(*window->getDataset());
}

void imagetool::showTable(Stage &stage, CVXSImageWindow *window)
{
    auto *button = stage.find<QToolButton>(window, "MeasurementTableButton");
    if (!button->isChecked())
        hand::click(button);
    hand::settle(window);
}

void imagetool::waitUntilMeasured(const CVXSDataset &dataset)
{
    const QString roi = lastRoi(dataset).name;
    const auto *records = CRoiMeasurementManager::getRoiMeasurementManager();
    if (!hand::waitFor([&] { return records->isUpToDate(dataset.getClickNumber(), roi); }))
        hand::giveUp(QStringLiteral("\"%1\" of %2 is not measured").arg(roi, dataset.getClickNumber()));
}

QString imagetool::tableValue(Stage &stage, CVXSImageWindow *window, const QString &roi,
                              const QString &header)
{
    const QAbstractItemModel *table = stage.find<QTableView>(window, "MeasurementTable")->model();
    const auto text = [table](int row, int column) { return table->index(row, column).data().toString(); };
    for (int column = 0; column < table->columnCount(); ++column) {
        if (!table->headerData(column, Qt::Horizontal).toString().startsWith(header))
            continue;
        for (int row = 0; row < table->rowCount(); ++row) {
            if (text(row, 0) == roi)
                return text(row, column);
        }
    }
    return QString();
}

double imagetool::tableNumber(Stage &stage, CVXSImageWindow *window, const QString &roi,
                              const QString &header)
{
    bool isNumber = false;
    const double number = tableValue(stage, window, roi, header).toDouble(&isNumber);
    return isNumber ? number : std::numeric_limits<double>::quiet_NaN();
}

imagetool::DrawnRoi imagetool::lastRoi(const CVXSDataset &dataset)
{
    const QList<CROIBase *> all = dataset.roiManager()->rois();
    if (all.isEmpty())
        hand::giveUp(QStringLiteral("%1 has no ROI").arg(dataset.getClickNumber()));
    const CROIBase *last = all.last();
    return {last->name(), last->boundingBox(), last->shape() == EROI_ELLIPSE};
}
