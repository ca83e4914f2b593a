// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

/// The place nearest to `topLeft` at which a rectangle of that size lies in the area; one that is larger than
/// the area begins at its left or upper edge. Windows that need only a part in sight, such as the title bar,
/// give the size of that part.
///
///     const QRect area = viewport()->rect();
///     window->resize(window->size().boundedTo(area.size()));
///     window->move(placeInSight(window->pos(), window->size(), area));
VXAPI_EXPORT QPoint placeInSight(const QPoint &topLeft, const QSize &size, const QRect &area);
VXAPI_EXPORT QPointF placeInSight(const QPointF &topLeft, const QSizeF &size, const QRectF &area);
