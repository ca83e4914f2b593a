// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vxapi/vxapi_global.h"

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSizeF>
#include <QVector>

/// Where everything of a multi-image view lies.
///
/// Object units: fixed by the layout code alone, y downwards, (0, 0) the left top corner of the image column.
/// Device pixels: what is painted. The whole picture is scaled evenly into the device rectangle and centred.
class VXAPI_EXPORT LayoutGeometry
{
public:
    EIMAGELAYOUT layout = ELAYOUT_SINGLE;
    int border = 10;
    bool sameSize = false;

    int cellCount() const;
    VXSRECT imageRect() const;    ///< the image column
    VXSRECT colorBarRect() const; ///< the strip at its right
    QSizeF pictureSize() const;   ///< column and strip together
    float thumbnailWidth() const;
    float thumbnailHeight() const;
    /// The place of a thumbnail, object units: the k-th starts at top + k (H + 2 D) + D.
    QRectF thumbnailRect(int cell) const;

    /// Device pixels for one object unit in a device rectangle of that size; above 0 for every size.
    double scaleFor(const QSizeF &deviceSize) const;
    QPointF offsetFor(const QSizeF &deviceSize) const;
    QRectF toDevice(const QRectF &objectRect, const QSizeF &deviceSize) const;

    /// What of each cell its image covers, object units. `physical` holds each image's width and height
    /// (pixels times binning factor; empty for an empty slot).
    QVector<QRectF> imageRects(const QVector<QSizeF> &physical) const;
    /// An object rectangle as whole device pixels, at least one wide and high.
    QRect toDevicePixels(const QRectF &objectRect, const QSizeF &deviceSize) const;
};
