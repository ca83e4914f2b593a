// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxapi/view/canvas/FieldMapping.h"

#include <QList>
#include <QVector>

class CROIManager;

/// ROIs that are being moved, or one that is being resized, by the mouse. It works on copies; the dataset's
/// ROIs change once, at the end, and only those that are still there.
class VXAPI_EXPORT RoiDrag
{
public:
    void startMove(const QList<CROIBase *> &rois, const QPointF &place);
    void startResize(const CROIBase &roi, int handle, const QPointF &place);
    bool isActive() const { return !m_originals.isEmpty(); }
    bool isResize() const { return m_handle >= 0; }
    /// The mouse is at that place [cm]. ROIs inside of the field stay inside; a resized one keeps sides of a
    /// pixel at least.
    void moveTo(const QPointF &place, const FieldMapping &mapping);
    /// The ROIs as they would become.
    const QVector<CROIBase> &moved() const { return m_moved; }
    void commit(CROIManager *manager);
    void cancel();
    /// Forgets the ROIs that the dataset has no more.
    void dropMissing(const CROIManager &manager);

private:
    QVector<CROIBase> m_originals;
    QVector<CROIBase> m_moved;
    int m_handle = -1; ///< -1: moved as a whole
    QPointF m_start;
    QPointF m_grip; ///< from where the mouse took the handle to the handle
};

/// The box around all of them.
QRectF boxAround(const QVector<CROIBase> &rois);
