// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIBase.h"

CROIBase::CROIBase(EROISHAPE shape, EROIKIND kind, const QRectF &box)
    : m_shape(shape), m_kind(kind), m_box(box.normalized())
{
}

CROIBase::CROIBase(EROISHAPE shape, EROIKIND kind, const QPolygonF &outline)
    : m_shape(shape), m_kind(kind), m_box(outline.boundingRect()), m_outline(outline)
{
}

CROIBase::CROIBase(EROIKIND kind, const QRectF &box, int rows, int columns)
    : m_shape(EROI_GRID), m_kind(kind), m_box(box.normalized()), m_rows(rows), m_columns(columns)
{
}

bool CROIBase::contains(const QPointF &place) const
{
    return m_box.contains(place);
}

void CROIBase::translate(const QPointF &by)
{
    m_box.translate(by);
    m_outline.translate(by);
}

void CROIBase::setBoundingBox(const QRectF &box)
{
    m_box = box.normalized();
}

CROIBase CROIBase::cell(int, int) const
{
    return *this;
}
