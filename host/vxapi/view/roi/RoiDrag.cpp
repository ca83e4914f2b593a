// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiDrag.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/view/roi/RoiHandles.h"

QRectF boxAround(const QVector<CROIBase> &rois)
{
    QRectF box;
    for (const CROIBase &roi : rois)
        box |= roi.boundingBox();
    return box;
}

void RoiDrag::startMove(const QList<CROIBase *> &rois, const QPointF &place)
{
    cancel();
    for (const CROIBase *roi : rois)
        m_originals.append(*roi);
    m_moved = m_originals;
    m_handle = -1;
    m_start = place;
}

void RoiDrag::startResize(const CROIBase &roi, int handle, const QPointF &place)
{
    cancel();
    m_originals.append(roi);
    m_moved = m_originals;
    m_handle = handle;
    m_start = place;
    m_grip = roihandles::place(roi.boundingBox(), handle) - place;
}

void RoiDrag::moveTo(const QPointF &place, const FieldMapping &mapping)
{
    m_moved = m_originals;
    if (!isActive() || place == m_start)
        return;
    if (isResize()) {
        const QRectF box = m_originals.first().boundingBox();
        const bool isInside = mapping.clamped(box.topLeft()) == box.topLeft() &&
                              mapping.clamped(box.bottomRight()) == box.bottomRight();
        const QPointF to = isInside ? mapping.clamped(place + m_grip) : place + m_grip;
        m_moved.first().setBoundingBox(roihandles::resized(box, m_handle, to, mapping.pixelSize()));
        return;
    }
    const QPointF by = mapping.clampedShift(boxAround(m_originals), place - m_start);
    for (CROIBase &roi : m_moved)
        roi.translate(by);
}

void RoiDrag::commit(CROIManager *manager)
{
    // The manager's announcements may come back here.
    const QVector<CROIBase> originals = m_originals;
    const QVector<CROIBase> moved = m_moved;
    const bool isResized = isResize();
    cancel();
    for (int i = 0; i < moved.size(); ++i) {
        const QRectF before = originals[i].boundingBox();
        const QRectF after = moved[i].boundingBox();
        CROIBase *roi = nullptr;
        if (before == after || !manager->getROI(moved[i].name(), roi))
            continue;
        if (isResized)
            manager->setROIBox(roi, after);
        else
            manager->moveROI(roi, after.topLeft() - before.topLeft());
    }
}

void RoiDrag::cancel()
{
    m_originals.clear();
    m_moved.clear();
    m_handle = -1;
}

void RoiDrag::dropMissing(const CROIManager &manager)
{
    for (int i = m_originals.size() - 1; i >= 0; --i) {
        CROIBase *roi = nullptr;
        if (manager.getROI(m_originals[i].name(), roi))
            continue;
        m_originals.removeAt(i);
        m_moved.removeAt(i);
    }
}
