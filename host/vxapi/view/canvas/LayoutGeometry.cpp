// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/LayoutGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

/// Object units of a layout.
struct Units
{
    int cells;
    float thumbnail; ///< width and height
    float columnWidth;
    float columnHeight;
    float stripWidth;
    float margin; ///< at the right of the strip, so that no number touches the window's edge
};

// Three rows: the column's height is 3.6 thumbnails, so that three cells with a border of a tenth fill it.
constexpr Units THREE_ROWS{3, 300.0f, 360.0f, 1080.0f, 200.0f, 12.0f};
constexpr Units SINGLE{1, 1000.0f, 1040.0f, 1040.0f, 170.0f, 16.0f};

const Units &unitsOf(EIMAGELAYOUT layout)
{
    return layout == ELAYOUT_THREE_ROWS ? THREE_ROWS : SINGLE;
}

} // namespace

int LayoutGeometry::cellCount() const
{
    return unitsOf(layout).cells;
}

VXSRECT LayoutGeometry::imageRect() const
{
    const Units &u = unitsOf(layout);
    return {0.0f, 0.0f, u.columnWidth, u.columnHeight};
}

VXSRECT LayoutGeometry::colorBarRect() const
{
    const Units &u = unitsOf(layout);
    return {u.columnWidth, 0.0f, u.columnWidth + u.stripWidth, u.columnHeight};
}

QSizeF LayoutGeometry::pictureSize() const
{
    const Units &u = unitsOf(layout);
    return {double(u.columnWidth + u.stripWidth + u.margin), double(u.columnHeight)};
}

float LayoutGeometry::thumbnailWidth() const
{
    return unitsOf(layout).thumbnail;
}

float LayoutGeometry::thumbnailHeight() const
{
    return unitsOf(layout).thumbnail;
}

QRectF LayoutGeometry::thumbnailRect(int cell) const
{
    const double w = thumbnailWidth();
    const double h = thumbnailHeight();
    return {double(border), cell * (h + 2.0 * border) + border, w, h};
}

double LayoutGeometry::scaleFor(const QSizeF &deviceSize) const
{
    const QSizeF picture = pictureSize();
    const double width = std::max(1.0, deviceSize.width());
    const double height = std::max(1.0, deviceSize.height());
    return std::min(width / picture.width(), height / picture.height());
}

QPointF LayoutGeometry::offsetFor(const QSizeF &deviceSize) const
{
    const QSizeF used = pictureSize() * scaleFor(deviceSize);
    return {(deviceSize.width() - used.width()) / 2.0, (deviceSize.height() - used.height()) / 2.0};
}

QRectF LayoutGeometry::toDevice(const QRectF &objectRect, const QSizeF &deviceSize) const
{
    const double scale = scaleFor(deviceSize);
    return {objectRect.topLeft() * scale + offsetFor(deviceSize), objectRect.size() * scale};
}

QVector<QRectF> LayoutGeometry::imageRects(const QVector<QSizeF> &physical) const
{
    QSizeF largest(0.0, 0.0);
    for (const QSizeF &size : physical)
        largest = largest.expandedTo(size);

    QVector<QRectF> rects;
    for (int i = 0; i < physical.size(); ++i) {
        const QSizeF &own = physical[i];
        const QRectF place = thumbnailRect(i);
        if (own.isEmpty()) {
            rects.append(QRectF());
            continue;
        }
        const QSizeF &fitted = sameSize ? own : largest;
        const double scale = std::min(place.width() / fitted.width(), place.height() / fitted.height());
        QRectF rect(QPointF(), own * scale);
        rect.moveCenter(place.center());
        rects.append(rect);
    }
    return rects;
}

QRect LayoutGeometry::toDevicePixels(const QRectF &objectRect, const QSizeF &deviceSize) const
{
    const QRectF device = toDevice(objectRect, deviceSize);
    const int left = int(std::lround(device.left()));
    const int top = int(std::lround(device.top()));
    const int right = std::max(left + 1, int(std::lround(device.right())));
    const int bottom = std::max(top + 1, int(std::lround(device.bottom())));
    return {left, top, right - left, bottom - top};
}
