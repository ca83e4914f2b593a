// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/ColorbarPainter.h"

#include "host/vxapi/view/canvas/ColorbarScale.h"
#include "host/vximage/CILPalette.h"

#include <algorithm>
#include <cmath>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

namespace {

constexpr QRgb TEXT_COLOR = qRgb(0xe2, 0xe4, 0xe8);
constexpr QRgb FRAME_COLOR = qRgb(0x8a, 0x8e, 0x96);

QImage gradientOf(const CILPalette &palette)
{
    const auto table = palette.table();
    QImage gradient(1, 256, QImage::Format_RGB32);
    for (int i = 0; i < 256; ++i)
        gradient.setPixel(0, 255 - i, table[std::size_t(i)]);
    return gradient;
}

double widestLabel(const ColorbarScale &scale, const QFontMetricsF &metrics)
{
    double widest = 0.0;
    for (const BarTick &tick : scale.ticks)
        widest = std::max(widest, metrics.size(Qt::TextSingleLine, tick.label).width());
    return widest;
}

} // namespace

void ColorbarPainter::paint(const QRectF &rect, const CILPalette &palette)
{
    if (rect.width() < 4.0 || rect.height() < 4.0)
        return;
    const double barWidth = std::round(rect.width() * 0.26);
    const QRectF bar(std::round(rect.left()), std::round(rect.top()), barWidth, std::round(rect.height()));
    const double tickLength = std::max(3.0, 7.0 * m_scale);
    const double numbersLeft = bar.right() + tickLength + 3.0;
    const double room = rect.right() - numbersLeft;

    QFont font = QGuiApplication::font();
    double pixels = std::clamp(25.0 * m_scale, 9.0, 15.0);
    ColorbarScale scale;
    // Other numbers may fit where these are too wide: the smaller the font, the more of them.
    for (;; pixels -= 1.0) {
        font.setPixelSize(int(pixels));
        scale = ColorbarScale::of(palette, bar.height(), QFontMetricsF(font).height());
        if (pixels <= 8.0 || widestLabel(scale, QFontMetricsF(font)) <= room)
            break;
    }
    const QFontMetricsF metrics(font);

    m_painter.save();
    m_painter.setFont(font);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    m_painter.drawImage(bar, gradientOf(palette));
    m_painter.setRenderHint(QPainter::Antialiasing, false);
    m_painter.setPen(QColor(FRAME_COLOR));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(bar.adjusted(0, 0, -1, -1));
    for (const BarTick &tick : scale.ticks) {
        const double y = bar.bottom() - 1.0 - tick.position * (bar.height() - 1.0);
        const bool numbered = !tick.label.isEmpty();
        m_painter.setPen(QColor(FRAME_COLOR));
        m_painter.drawLine(QPointF(bar.right(), y),
                           QPointF(bar.right() + (numbered ? tickLength : tickLength / 2.0), y));
        if (!numbered)
            continue;
        m_painter.setPen(QColor(TEXT_COLOR));
        m_painter.drawText(QPointF(numbersLeft, y + (metrics.ascent() - metrics.descent()) / 2.0),
                           tick.label);
    }
    if (!scale.header.isEmpty()) {
        // Above the highest number.
        m_painter.setPen(QColor(TEXT_COLOR));
        m_painter.drawText(QPointF(bar.left(), bar.top() - metrics.height() / 2.0 - metrics.descent()),
                           scale.header);
    }
    m_painter.restore();
}
