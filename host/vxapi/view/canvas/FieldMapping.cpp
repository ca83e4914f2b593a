// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/FieldMapping.h"

#include <algorithm>
#include <cmath>

FieldMapping::FieldMapping(const QRectF &place, double width, const QSize &pixels)
{
    if (place.isEmpty() || pixels.isEmpty() || !std::isfinite(width) || !(width > 0.0))
        return;
    m_place = place;
    m_pixelSize = width / pixels.width();
    m_field = QRectF(0.0, 0.0, width, m_pixelSize * pixels.height());
}

QPointF FieldMapping::toField(const QPointF &place) const
{
    if (!isValid())
        return QPointF();
    return {(place.x() - m_place.left()) / m_place.width() * m_field.width(),
            (place.y() - m_place.top()) / m_place.height() * m_field.height()};
}

QPointF FieldMapping::toView(const QPointF &field) const
{
    if (!isValid())
        return QPointF();
    return {m_place.left() + field.x() / m_field.width() * m_place.width(),
            m_place.top() + field.y() / m_field.height() * m_place.height()};
}

QRectF FieldMapping::toView(const QRectF &field) const
{
    return {toView(field.topLeft()), toView(field.bottomRight())};
}

double FieldMapping::lengthInField(double length) const
{
    return isValid() ? length / m_place.width() * m_field.width() : 0.0;
}

QPointF FieldMapping::clamped(const QPointF &field) const
{
    return {std::clamp(field.x(), m_field.left(), m_field.right()),
            std::clamp(field.y(), m_field.top(), m_field.bottom())};
}

QPointF FieldMapping::clampedShift(const QRectF &box, const QPointF &by) const
{
    // Edges that were computed may lie beside the field's by a rounding.
    const double slack = 1e-6 * m_pixelSize;
    if (!m_field.adjusted(-slack, -slack, slack, slack).contains(box))
        return by;
    const auto within = [](double shift, double least, double most) {
        return std::max(std::min(0.0, least), std::min(shift, std::max(0.0, most)));
    };
    return {within(by.x(), m_field.left() - box.left(), m_field.right() - box.right()),
            within(by.y(), m_field.top() - box.top(), m_field.bottom() - box.bottom())};
}
