// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiIcons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

constexpr int SIDE = 20;

QPainterPath pathOf(EROITOOL tool)
{
    QPainterPath path;
    const QRectF box(3.0, 4.5, 14.0, 11.0);
    switch (tool) {
    case EROITOOL_SELECT:
        path.addPolygon(
            QPolygonF({{5, 2}, {5, 16}, {8.5, 12.5}, {11, 18}, {13, 17}, {10.6, 11.8}, {15, 11.5}}));
        path.closeSubpath();
        break;
    case EROITOOL_RECTANGLE:
        path.addRect(box);
        break;
    case EROITOOL_ELLIPSE:
        path.addEllipse(box);
        break;
    case EROITOOL_GRID:
        path.addRect(QRectF(3.0, 3.0, 14.0, 14.0));
        for (const double at : {3.0 + 14.0 / 3.0, 3.0 + 28.0 / 3.0}) {
            path.moveTo(at, 3.0);
            path.lineTo(at, 17.0);
            path.moveTo(3.0, at);
            path.lineTo(17.0, at);
        }
        break;
    case EROITOOL_POLYGON:
        path.addPolygon(QPolygonF({{3, 8}, {10, 3}, {17, 7}, {14, 16}, {6, 16}}));
        path.closeSubpath();
        break;
    case EROITOOL_FREEHAND:
        path.moveTo(4.0, 12.0);
        path.cubicTo(1.0, 3.0, 9.0, 2.0, 11.0, 6.0);
        path.cubicTo(13.0, 8.0, 18.0, 5.0, 17.0, 11.0);
        path.cubicTo(16.0, 18.0, 6.0, 18.0, 4.0, 12.0);
        break;
    }
    return path;
}

QPixmap picture(EROITOOL tool, const QColor &colour, double ratio)
{
    QPixmap pixmap(int(SIDE * ratio), int(SIDE * ratio));
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(colour, tool == EROITOOL_GRID ? 1.2 : 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(pathOf(tool));
    return pixmap;
}

} // namespace

QIcon roiToolIcon(EROITOOL tool)
{
    const QPalette palette = QGuiApplication::palette();
    QIcon icon;
    for (const double ratio : {1.0, 2.0}) {
        icon.addPixmap(picture(tool, palette.color(QPalette::Active, QPalette::ButtonText), ratio));
        icon.addPixmap(picture(tool, palette.color(QPalette::Disabled, QPalette::ButtonText), ratio),
                       QIcon::Disabled);
    }
    return icon;
}
