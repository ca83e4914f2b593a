// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/KeepInSight.h"

#include <algorithm>

QPoint placeInSight(const QPoint &topLeft, const QSize &size, const QRect &area)
{
    const QPoint last(area.x() + area.width() - size.width(), area.y() + area.height() - size.height());
    return {std::max(area.x(), std::min(topLeft.x(), last.x())),
            std::max(area.y(), std::min(topLeft.y(), last.y()))};
}
