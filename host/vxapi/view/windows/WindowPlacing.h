// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QRect>
#include <QSize>
#include <QVector>

/// Where windows go in an area, computed from rectangles alone.
namespace windowplacing {

/// A window that looks for a place. `enough`: it can be worked in from that size on.
struct Wish
{
    QSize wanted;
    QSize enough;
};

/// A place in the area for a new window, beside those that are there: where it gets nearly its wanted size and
/// leaves the largest room for the next. Where there is no room of even `enough`, it covers as little as it
/// can of the others, and none of their title bars wholly. It never reaches out of the area, unless `enough`
/// is larger than that.
VXAPI_EXPORT QRect freePlace(const Wish &wish, const QRect &area, const QVector<QRect> &occupied);

/// The whole area in tiles, one for each window, none smaller than that window's least size; empty when there
/// are no such tiles.
VXAPI_EXPORT QVector<QRect> tiles(const QRect &area, const QVector<QSize> &least);

} // namespace windowplacing
