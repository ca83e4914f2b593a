// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiOverlay.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/roi/RoiEditor.h"
#include "host/vxapi/view/roi/RoiHandles.h"

#include <algorithm>
#include <QPainter>

namespace {

const QColor RIM(0, 0, 0, 0xa0); ///< so that a line is seen on a bright picture too
const QColor MEASUREMENT(0xff, 0xff, 0xff);
const QColor BACKGROUND(0x7f, 0xe3, 0xff);
const QColor SELECTED(0xff, 0xd9, 0x3b);

QColor colourOf(EROIKIND kind, bool isSelected)
{
    return isSelected ? SELECTED : kind == EROI_BACKGROUND ? BACKGROUND : MEASUREMENT;
}

void strokeTwice(QPainter &painter, const QPainterPath &path, QPen pen)
{
    painter.strokePath(path, QPen(RIM, pen.widthF() + 2.0, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    pen.setJoinStyle(Qt::RoundJoin);
    painter.strokePath(path, pen);
}

/// The lines between a grid's cells.
QPainterPath gridLines(const CROIBase &grid, const QRectF &box)
{
    QPainterPath path;
    for (int row = 1; row < grid.rows(); ++row) {
        const double y = box.top() + box.height() * row / grid.rows();
        path.moveTo(box.left(), y);
        path.lineTo(box.right(), y);
    }
    for (int column = 1; column < grid.columns(); ++column) {
        const double x = box.left() + box.width() * column / grid.columns();
        path.moveTo(x, box.top());
        path.lineTo(x, box.bottom());
    }
    return path;
}

} // namespace

QPainterPath roiOutline(const CROIBase &roi, const FieldMapping &mapping)
{
    QPainterPath path;
    const QPolygonF outline = roi.outline();
    if (outline.isEmpty()) {
        const QRectF box = mapping.toView(roi.boundingBox());
        if (roi.shape() == EROI_ELLIPSE)
            path.addEllipse(box);
        else
            path.addRect(box);
        return path;
    }
    QPolygonF corners;
    for (const QPointF &corner : outline)
        corners.append(mapping.toView(corner));
    path.addPolygon(corners);
    path.closeSubpath();
    return path;
}

RoiOverlay::RoiOverlay(CVXSMultiImageView *view, CROIManager *manager, const RoiEditor *editor,
                       std::function<FieldMapping()> mapping)
    : m_view(view), m_manager(manager), m_editor(editor), m_askMapping(std::move(mapping))
{
    view->addDecoration(this);
}

RoiOverlay::~RoiOverlay()
{
    if (m_view)
        m_view->removeDecoration(this);
}

void RoiOverlay::paintOver(QPainter &painter)
{
    m_mapping = m_askMapping();
    if (!m_manager || !m_mapping.isValid())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const QList<CROIBase *> selected = m_manager->selectedROIs();
    const QVector<CROIBase> dragged = m_editor ? m_editor->drag().moved() : QVector<CROIBase>();
    const bool hasHandles = selected.size() == 1;
    const QList<CROIBase *> rois = m_manager->rois();
    // What is selected lies over the rest.
    for (const bool isSelectedTurn : {false, true}) {
        for (CROIBase *roi : rois) {
            if (selected.contains(roi) != isSelectedTurn)
                continue;
            const auto copy = std::find_if(dragged.begin(), dragged.end(), [roi](const CROIBase &moved) {
                return moved.name() == roi->name();
            });
            paintRoi(painter, copy != dragged.end() ? *copy : *roi,
                     {isSelectedTurn, isSelectedTurn && hasHandles});
        }
    }
    paintDraft(painter);
}

void RoiOverlay::paintRoi(QPainter &painter, const CROIBase &roi, const Look &look) const
{
    const QColor colour = colourOf(roi.kind(), look.isSelected);
    const QRectF box = m_mapping.toView(roi.boundingBox());
    if (roi.shape() == EROI_GRID)
        strokeTwice(painter, gridLines(roi, box), QPen(colour, 0.8));
    QPen pen(colour, look.isSelected ? 2.0 : 1.6);
    if (roi.kind() == EROI_BACKGROUND)
        pen.setDashPattern({4.0, 3.0});
    strokeTwice(painter, roiOutline(roi, m_mapping), pen);
    paintName(painter, roi.name(), box, look.isSelected);
    if (!look.hasHandles)
        return;
    painter.setPen(QPen(Qt::black, 1.0));
    painter.setBrush(SELECTED);
    for (int handle = 0; handle < roihandles::COUNT; ++handle) {
        QRectF square(0.0, 0.0, roihandles::SIDE, roihandles::SIDE);
        square.moveCenter(roihandles::place(box, handle));
        painter.drawRect(square);
    }
    painter.setBrush(Qt::NoBrush);
}

void RoiOverlay::paintName(QPainter &painter, const QString &name, const QRectF &box, bool isSelected) const
{
    QFont font = m_view->font();
    font.setBold(isSelected);
    const QFontMetricsF metrics(font);
    QRectF label(box.left() - 1.0, box.top() - metrics.height() - 5.0,
                 metrics.boundingRect(name).width() + 8.0, metrics.height());
    // At an edge of the view it moves in.
    label.moveLeft(std::max(0.0, std::min(label.left(), m_view->width() - label.width())));
    label.moveTop(std::max(0.0, std::min(label.top(), m_view->height() - label.height())));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 0x90));
    painter.drawRoundedRect(label, 3.0, 3.0);
    painter.setBrush(Qt::NoBrush);
    painter.setFont(font);
    painter.setPen(isSelected ? SELECTED : MEASUREMENT);
    painter.drawText(label, Qt::AlignCenter | Qt::TextSingleLine, name);
}

void RoiOverlay::paintDraft(QPainter &painter) const
{
    if (!m_editor || !m_editor->draft().isActive())
        return;
    const RoiDraft &draft = m_editor->draft();
    QPainterPath path;
    const QPolygonF corners = draft.corners();
    if (corners.isEmpty()) {
        const auto roi = draft.roi(0.0, false);
        if (!roi)
            return;
        if (roi->shape() == EROI_GRID)
            strokeTwice(painter, gridLines(*roi, m_mapping.toView(roi->boundingBox())), QPen(SELECTED, 0.8));
        path = roiOutline(*roi, m_mapping);
    } else {
        path.moveTo(m_mapping.toView(corners.first()));
        for (int i = 1; i < corners.size(); ++i)
            path.lineTo(m_mapping.toView(corners[i]));
    }
    strokeTwice(painter, path, QPen(SELECTED, 1.6));
    if (draft.tool() != EROITOOL_POLYGON)
        return;
    painter.setPen(QPen(Qt::black, 1.0));
    painter.setBrush(SELECTED);
    for (const QPointF &corner : corners)
        painter.drawEllipse(m_mapping.toView(corner), 3.0, 3.0);
    painter.setBrush(Qt::NoBrush);
}
