// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QPointF>
#include <QRectF>

/// The eight handles of a box, clockwise from the upper left corner: corners are even, sides odd.
namespace roihandles {

constexpr int COUNT = 8;
constexpr double SIDE = 7.0; ///< drawn [device-independent pixels]
constexpr double GRIP = 6.0; ///< how far from its centre a handle is taken, in x and in y

VXAPI_EXPORT QPointF place(const QRectF &box, int handle);
/// The nearest handle of the box within reach, or -1.
VXAPI_EXPORT int at(const QRectF &box, const QPointF &place);
/// The box with that handle taken to `to`; the opposite corner or side stays, and no side becomes shorter
/// than `least`.
VXAPI_EXPORT QRectF resized(const QRectF &box, int handle, const QPointF &to, double least);
VXAPI_EXPORT Qt::CursorShape cursor(int handle);

} // namespace roihandles
