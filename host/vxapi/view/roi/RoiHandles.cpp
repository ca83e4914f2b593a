// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiHandles.h"

#include <algorithm>
#include <cmath>

namespace roihandles {

namespace {

bool isLeft(int handle)
{
    return handle == 0 || handle == 6 || handle == 7;
}

bool isRight(int handle)
{
    return handle >= 2 && handle <= 4;
}

bool isTop(int handle)
{
    return handle <= 2;
}

bool isBottom(int handle)
{
    return handle >= 4 && handle <= 6;
}

} // namespace

QPointF place(const QRectF &box, int handle)
{
    const double x = isLeft(handle) ? box.left() : isRight(handle) ? box.right() : box.center().x();
    const double y = isTop(handle) ? box.top() : isBottom(handle) ? box.bottom() : box.center().y();
    return {x, y};
}

int at(const QRectF &box, const QPointF &where)
{
    int nearest = -1;
    double least = GRIP;
    for (int handle = 0; handle < COUNT; ++handle) {
        const QPointF away = place(box, handle) - where;
        const double distance = std::max(std::abs(away.x()), std::abs(away.y()));
        if (distance > least || (nearest >= 0 && distance == least))
            continue;
        nearest = handle;
        least = distance;
    }
    return nearest;
}

QRectF resized(const QRectF &box, int handle, const QPointF &to, double least)
{
    QRectF result = box;
    if (isLeft(handle))
        result.setLeft(std::min(to.x(), box.right() - least));
    if (isRight(handle))
        result.setRight(std::max(to.x(), box.left() + least));
    if (isTop(handle))
        result.setTop(std::min(to.y(), box.bottom() - least));
    if (isBottom(handle))
        result.setBottom(std::max(to.y(), box.top() + least));
    return result;
}

Qt::CursorShape cursor(int handle)
{
    switch (handle % 4) {
    case 0:
        return Qt::SizeFDiagCursor;
    case 1:
        return Qt::SizeVerCursor;
    case 2:
        return Qt::SizeBDiagCursor;
    default:
        return Qt::SizeHorCursor;
    }
}

} // namespace roihandles
