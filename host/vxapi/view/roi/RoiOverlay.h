// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/FieldMapping.h"
#include "host/vxapi/view/canvas/ViewDecoration.h"

#include <functional>
#include <QPainterPath>
#include <QPointer>

class CROIBase;
class CROIManager;
class CVXSMultiImageView;
class RoiEditor;

/// The outline of an ROI in a view; of a grid, that of the whole.
QPainterPath roiOutline(const CROIBase &roi, const FieldMapping &mapping);

/// Paints the ROIs of a dataset over a view: measurement ROIs with a full line, background ROIs with a broken
/// one, each with its name; what is selected in yellow with handles; and what is being drawn or dragged.
class RoiOverlay : public ViewDecoration
{
public:
    RoiOverlay(CVXSMultiImageView *view, CROIManager *manager, const RoiEditor *editor,
               std::function<FieldMapping()> mapping);
    ~RoiOverlay() override;
    void paintOver(QPainter &painter) override;

private:
    struct Look
    {
        bool isSelected = false;
        bool hasHandles = false;
    };
    void paintRoi(QPainter &painter, const CROIBase &roi, const Look &look) const;
    void paintName(QPainter &painter, const QString &name, const QRectF &box, bool isSelected) const;
    void paintDraft(QPainter &painter) const;

    QPointer<CVXSMultiImageView> m_view;
    QPointer<CROIManager> m_manager;
    QPointer<const RoiEditor> m_editor;
    std::function<FieldMapping()> m_askMapping;
    FieldMapping m_mapping; ///< while it paints
};
