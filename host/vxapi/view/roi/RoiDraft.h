// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/roi/RoiTypes.h"

#include <optional>
#include <QPointF>
#include <QPolygonF>

/// An ROI that is being drawn. Places in centimetres of the field of view.
class VXAPI_EXPORT RoiDraft
{
public:
    void start(const RoiDrawing &drawing, const QPointF &place);
    bool isActive() const { return m_isActive; }
    EROITOOL tool() const { return m_drawing.tool; }
    void cancel();

    /// The mouse is at that place; `even` makes box shapes as wide as high. A free-hand line takes places
    /// that are further than `step` from its last.
    void moveTo(const QPointF &place, bool even, double step);
    /// A further corner of a polygon; one that is where the last one is adds nothing.
    void addCorner(const QPointF &place);
    /// Takes the last corner of a polygon away; the first one ends the draft.
    void removeCorner();

    /// The outline so far, the mouse's place included.
    QPolygonF corners() const;
    /// The ROI so far; nothing while it has no area to speak of: a box with a side below `least`, a line with
    /// fewer than three corners. With `closing`, a polygon ends with its last corner and not at the mouse.
    std::optional<CROIBase> roi(double least, bool closing) const;

private:
    bool isOutline() const;

    bool m_isActive = false;
    RoiDrawing m_drawing;
    QPolygonF m_corners;
    QPointF m_start;
    QPointF m_mouse;
};
