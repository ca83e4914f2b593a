// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiDraft.h"

#include <algorithm>
#include <cmath>
#include <QLineF>

void RoiDraft::start(const RoiDrawing &drawing, const QPointF &place)
{
    m_isActive = drawing.tool != EROITOOL_SELECT;
    m_drawing = drawing;
    m_start = place;
    m_mouse = place;
    m_corners = isOutline() ? QPolygonF({place}) : QPolygonF();
}

void RoiDraft::cancel()
{
    m_isActive = false;
    m_corners.clear();
}

bool RoiDraft::isOutline() const
{
    return m_drawing.tool == EROITOOL_POLYGON || m_drawing.tool == EROITOOL_FREEHAND;
}

void RoiDraft::moveTo(const QPointF &place, bool even, double step)
{
    m_mouse = place;
    if (m_drawing.tool == EROITOOL_FREEHAND) {
        if (QLineF(m_corners.last(), place).length() > step && m_corners.size() < CROIBase::MAX_CORNERS)
            m_corners.append(place);
    } else if (even && !isOutline()) {
        // The shorter side, so that it stays where the mouse could go.
        const QPointF by = place - m_start;
        const double side = std::min(std::abs(by.x()), std::abs(by.y()));
        m_mouse = m_start + QPointF(std::copysign(side, by.x()), std::copysign(side, by.y()));
    }
}

void RoiDraft::addCorner(const QPointF &place)
{
    m_mouse = place;
    if (m_corners.isEmpty() || m_corners.last() != place)
        m_corners.append(place);
}

void RoiDraft::removeCorner()
{
    if (!m_corners.isEmpty())
        m_corners.removeLast();
    if (m_corners.isEmpty())
        cancel();
}

QPolygonF RoiDraft::corners() const
{
    QPolygonF all = m_corners;
    if (m_drawing.tool == EROITOOL_POLYGON && !all.isEmpty() && all.last() != m_mouse)
        all.append(m_mouse);
    return all;
}

std::optional<CROIBase> RoiDraft::roi(double least, bool closing) const
{
    if (!m_isActive)
        return std::nullopt;
    if (isOutline()) {
        const QPolygonF outline = closing ? m_corners : corners();
        const QRectF box = outline.boundingRect();
        if (outline.size() < 3 || box.width() < least || box.height() < least)
            return std::nullopt;
        return CROIBase(m_drawing.tool == EROITOOL_POLYGON ? EROI_POLYGON : EROI_FREEHAND, m_drawing.kind,
                        outline);
    }
    const QRectF box = QRectF(m_start, m_mouse).normalized();
    if (box.width() < least || box.height() < least)
        return std::nullopt;
    if (m_drawing.tool == EROITOOL_GRID)
        return CROIBase(m_drawing.kind, box, m_drawing.rows, m_drawing.columns);
    return CROIBase(m_drawing.tool == EROITOOL_ELLIPSE ? EROI_ELLIPSE : EROI_RECTANGLE, m_drawing.kind, box);
}
