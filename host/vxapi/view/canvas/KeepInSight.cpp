// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/KeepInSight.h"

#include <algorithm>

QPointF placeInSight(const QPointF &topLeft, const QSizeF &size, const QRectF &area)
{
    const QPointF last(area.x() + area.width() - size.width(), area.y() + area.height() - size.height());
    return {std::max(area.x(), std::min(topLeft.x(), last.x())),
            std::max(area.y(), std::min(topLeft.y(), last.y()))};
}

QPoint placeInSight(const QPoint &topLeft, const QSize &size, const QRect &area)
{
    return placeInSight(QPointF(topLeft), QSizeF(size), QRectF(area)).toPoint();
}
