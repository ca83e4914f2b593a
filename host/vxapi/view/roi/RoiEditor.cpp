// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiEditor.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/roi/RoiHandles.h"

#include <limits>
#include <QLineF>
#include <QMouseEvent>

namespace {

constexpr double LEAST_SIDE = 3.0;    ///< below this a drag is a click [device-independent pixels]
constexpr double FREEHAND_STEP = 1.5; ///< between corners of a free-hand line [the same]
constexpr double OUTSIDE = 24.0;      ///< so far beside the picture a drawing may start [the same]

/// Where the mouse is: the middle of its pixel, as CVXSMultiImageView::pixelAt() takes it.
QPointF placeOf(const QMouseEvent &event)
{
    return QPointF(event.pos()) + QPointF(0.5, 0.5);
}

} // namespace

RoiEditor::RoiEditor(CVXSMultiImageView *view, CROIManager *manager, std::function<FieldMapping()> mapping)
    : QObject(view), m_view(view), m_manager(manager), m_mapping(std::move(mapping))
{
    view->setMouseTracking(true);
    view->setFocusPolicy(Qt::StrongFocus);
    view->installEventFilter(this);
    if (!manager)
        return;
    connect(manager, &CROIManager::roisChanged, this, [this] {
        m_drag.dropMissing(*m_manager);
        repaint();
    });
    connect(manager, &CROIManager::selectionChanged, this, [this] { repaint(); });
}

bool RoiEditor::isUsable() const
{
    return m_manager && m_mapping().isValid();
}

void RoiEditor::repaint()
{
    static_cast<QWidget *>(m_view)->update();
}

void RoiEditor::setTool(EROITOOL tool)
{
    cancel();
    if (tool == m_drawing.tool)
        return;
    m_drawing.tool = tool;
    m_view->setCursor(tool == EROITOOL_SELECT ? Qt::ArrowCursor : Qt::CrossCursor);
    Q_EMIT toolChanged(tool);
}

void RoiEditor::setGridSize(int rows, int columns)
{
    m_drawing.rows = rows;
    m_drawing.columns = columns;
}

void RoiEditor::cancel()
{
    m_draft.cancel();
    m_drag.cancel();
    Q_EMIT messageChanged(QString());
    repaint();
}

CROIBase *RoiEditor::roiAt(const QPointF &at, const FieldMapping &mapping) const
{
    // A thin line is hit beside it too, and of several the smallest: a large one can be taken elsewhere.
    const QPointF reach[] = {{0, 0}, {-3, 0}, {3, 0}, {0, -3}, {0, 3}, {-2, -2}, {2, -2}, {-2, 2}, {2, 2}};
    CROIBase *found = nullptr;
    double least = std::numeric_limits<double>::infinity();
    const QList<CROIBase *> rois = m_manager->rois();
    for (CROIBase *roi : rois) {
        const double area = roi->boundingBox().width() * roi->boundingBox().height();
        if (area > least)
            continue;
        for (const QPointF &by : reach) {
            if (!roi->contains(mapping.toField(at + by)))
                continue;
            found = roi;
            least = area;
            break;
        }
    }
    return found;
}

void RoiEditor::pressSelect(const QMouseEvent &event, const QPointF &place)
{
    const FieldMapping mapping = m_mapping();
    const QPointF at = placeOf(event);
    const CROIBase *selected = m_manager->selectedROI();
    if (selected && m_manager->selectedROIs().size() == 1) {
        const int handle = roihandles::at(mapping.toView(selected->boundingBox()), at);
        if (handle >= 0) {
            m_drag.startResize(*selected, handle, place);
            return;
        }
    }
    CROIBase *roi = roiAt(at, mapping);
    const bool isAdded = event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    if (!roi && !isAdded)
        m_manager->selectROI(nullptr, false);
    if (!roi)
        return;
    if (isAdded || !m_manager->selectedROIs().contains(roi))
        m_manager->selectROI(roi, isAdded);
    m_drag.startMove(m_manager->selectedROIs(), place);
}

void RoiEditor::pressDraw(const QPointF &at, const QPointF &place)
{
    const FieldMapping mapping = m_mapping();
    const QPointF inside = mapping.clamped(place);
    // A box whose end was never seen (another window took the mouse) starts anew.
    if (!m_draft.isActive() || m_draft.tool() != EROITOOL_POLYGON) {
        if (QLineF(mapping.toView(inside), at).length() <= OUTSIDE)
            m_draft.start(m_drawing, inside);
        return;
    }
    const QPolygonF corners = m_draft.corners();
    const bool isFirst = QLineF(mapping.toView(corners.first()), at).length() <= roihandles::GRIP;
    if (isFirst && corners.size() > 3)
        finishDraft();
    else
        m_draft.addCorner(inside);
}

bool RoiEditor::mousePress(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || !isUsable())
        return false;
    const QPointF place = m_mapping().toField(placeOf(event));
    if (m_drawing.tool == EROITOOL_SELECT)
        pressSelect(event, place);
    else
        pressDraw(placeOf(event), place);
    repaint();
    return true;
}

void RoiEditor::mouseMove(const QMouseEvent &event)
{
    if (!isUsable())
        return;
    const FieldMapping mapping = m_mapping();
    const QPointF place = mapping.toField(placeOf(event));
    if (m_draft.isActive()) {
        m_draft.moveTo(mapping.clamped(place), event.modifiers() & Qt::ShiftModifier,
                       mapping.lengthInField(FREEHAND_STEP));
        if (const auto roi = m_draft.roi(0.0, false))
            tellSize(roi->boundingBox());
        repaint();
    } else if (m_drag.isActive()) {
        m_drag.moveTo(place, mapping);
        tellSize(boxAround(m_drag.moved()));
        repaint();
    } else if (m_drawing.tool == EROITOOL_SELECT) {
        updateCursor(placeOf(event));
    }
}

void RoiEditor::updateCursor(const QPointF &at)
{
    const FieldMapping mapping = m_mapping();
    const CROIBase *selected = m_manager->selectedROI();
    const bool hasHandles = selected && m_manager->selectedROIs().size() == 1;
    const int handle = hasHandles ? roihandles::at(mapping.toView(selected->boundingBox()), at) : -1;
    if (handle >= 0)
        m_view->setCursor(roihandles::cursor(handle));
    else
        m_view->setCursor(roiAt(at, mapping) ? Qt::SizeAllCursor : Qt::ArrowCursor);
}

void RoiEditor::tellSize(const QRectF &box)
{
    Q_EMIT messageChanged(tr("%1 × %2 cm").arg(box.width(), 0, 'f', 2).arg(box.height(), 0, 'f', 2));
}

bool RoiEditor::mouseRelease()
{
    if (m_drag.isActive() && m_manager) {
        m_drag.commit(m_manager);
        Q_EMIT messageChanged(QString());
    } else if (m_draft.isActive() && m_draft.tool() != EROITOOL_POLYGON) {
        finishDraft();
    }
    repaint();
    return true;
}

bool RoiEditor::doubleClick(const QMouseEvent &event)
{
    if (!m_draft.isActive() || m_draft.tool() != EROITOOL_POLYGON)
        return mousePress(event);
    finishDraft();
    return true;
}

void RoiEditor::finishDraft()
{
    const auto roi = isUsable() ? m_draft.roi(m_mapping().lengthInField(LEAST_SIDE), true) : std::nullopt;
    cancel();
    if (!roi)
        return; // a click, or a line that encloses nothing
    CROIBase *added = m_manager->addROI(*roi);
    if (!added) {
        Q_EMIT messageChanged(tr("This ROI has no area and was not kept."));
        return;
    }
    m_manager->selectROI(added, false);
    setTool(EROITOOL_SELECT);
}

bool RoiEditor::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return mousePress(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonDblClick:
        return doubleClick(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        // The read-out of pixels wants it too.
        mouseMove(*static_cast<QMouseEvent *>(event));
        return false;
    case QEvent::MouseButtonRelease:
        return static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton && mouseRelease();
    case QEvent::ShortcutOverride:
        // The keys mean ROIs here, whatever they mean in the application's menus.
        if (isRoiKey(*static_cast<QKeyEvent *>(event)))
            event->accept();
        return false;
    case QEvent::KeyPress:
        return keyPress(*static_cast<QKeyEvent *>(event));
    default:
        return QObject::eventFilter(watched, event);
    }
}
