// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

class CILPalette;
class QPainter;

/// Paints a colour bar: the table as a gradient, low at the bottom, ticks and numbers at its right.
class ColorbarPainter
{
public:
    /// `scale`: the painter's pixels for one object unit; `rect` in the painter's pixels.
    ColorbarPainter(QPainter &painter, double scale) : m_painter(painter), m_scale(scale) {}
    void paint(const QRectF &rect, const CILPalette &palette);

private:
    QPainter &m_painter;
    double m_scale;
};
