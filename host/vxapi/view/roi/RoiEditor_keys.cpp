// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/roi/RoiMimeData.h"
#include "host/vxapi/view/roi/RoiEditor.h"

#include <algorithm>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>

namespace {

constexpr int LARGE_STEP = 10; ///< pixels that an arrow with Shift moves
constexpr int PASTE_STEP = 10; ///< pixels between an ROI and its copy in the same dataset

bool isSamePlace(const CROIBase &a, const CROIBase &b, double tolerance)
{
    const QRectF p = a.boundingBox();
    const QRectF q = b.boundingBox();
    return qAbs(p.left() - q.left()) < tolerance && qAbs(p.top() - q.top()) < tolerance &&
           qAbs(p.right() - q.right()) < tolerance && qAbs(p.bottom() - q.bottom()) < tolerance;
}

} // namespace

bool RoiEditor::keyPress(const QKeyEvent &event)
{
    const auto command = commandOf(event);
    if (!command || !isUsable())
        return false;
    command();
    return true;
}

bool RoiEditor::isRoiKey(const QKeyEvent &event)
{
    return isUsable() && commandOf(event);
}

std::function<void()> RoiEditor::commandOf(const QKeyEvent &event)
{
    // With nothing selected the key means what it means elsewhere: the picture.
    if (event.matches(QKeySequence::Copy))
        return m_manager && m_manager->selectedROI() ? std::function<void()>([this] { copySelected(); })
                                                     : nullptr;
    if (event.matches(QKeySequence::Paste))
        return [this] { paste(); };
    if (event.matches(QKeySequence::SelectAll))
        return [this] { selectAll(); };
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return nullptr;
    const int step = event.modifiers() & Qt::ShiftModifier ? LARGE_STEP : 1;
    switch (event.key()) {
    case Qt::Key_Left:
        return [this, step] { nudge(-step, 0); };
    case Qt::Key_Right:
        return [this, step] { nudge(step, 0); };
    case Qt::Key_Up:
        return [this, step] { nudge(0, -step); };
    case Qt::Key_Down:
        return [this, step] { nudge(0, step); };
    case Qt::Key_Delete:
        return [this] { removeSelected(); };
    case Qt::Key_F2:
        return [this] { Q_EMIT renameRequested(); };
    case Qt::Key_Escape:
        return [this] { escape(); };
    default:
        break;
    }
    if (!m_draft.isActive() || m_draft.tool() != EROITOOL_POLYGON)
        return nullptr;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return [this] { finishDraft(); };
    case Qt::Key_Backspace:
        return [this] {
            m_draft.removeCorner();
            repaint();
        };
    default:
        return nullptr;
    }
}

void RoiEditor::escape()
{
    // What is under way first; without it, the tool.
    const bool isBusy = m_draft.isActive() || m_drag.isActive();
    cancel();
    if (!isBusy)
        setTool(EROITOOL_SELECT);
}

void RoiEditor::removeSelected()
{
    cancel();
    if (m_manager)
        m_manager->removeROIObject();
}

void RoiEditor::copySelected()
{
    std::vector<CROIBase> copies;
    const QList<CROIBase *> rois = m_manager ? m_manager->rois() : QList<CROIBase *>();
    for (CROIBase *roi : rois) {
        if (m_manager->selectedROIs().contains(roi))
            copies.push_back(*roi);
    }
    // Nothing selected: what was copied before stays to be pasted.
    if (copies.empty())
        return;
    auto *data = new QMimeData;
    roimime::write(copies, data);
    QGuiApplication::clipboard()->setMimeData(data);
}

void RoiEditor::paste()
{
    if (!isUsable())
        return;
    QString reason;
    std::vector<CROIBase> copies = roimime::read(QGuiApplication::clipboard()->mimeData(), &reason);
    if (copies.empty()) {
        Q_EMIT messageChanged(reason);
        return;
    }
    moveBesideOthers(&copies);
    m_manager->selectROI(nullptr, false);
    for (const CROIBase &copy : copies)
        m_manager->selectROI(m_manager->addROI(copy), true);
}

// All by the same shift, so that what was copied together stays as it lies.
void RoiEditor::moveBesideOthers(std::vector<CROIBase> *copies) const
{
    const FieldMapping mapping = m_mapping();
    const double pixel = mapping.pixelSize();
    const QList<CROIBase *> rois = m_manager->rois();
    const auto isTaken = [&](const CROIBase &copy) {
        return std::any_of(rois.begin(), rois.end(),
                           [&](const CROIBase *roi) { return isSamePlace(*roi, copy, 0.01 * pixel); });
    };
    const QPointF by(PASTE_STEP * pixel, PASTE_STEP * pixel);
    for (int tries = 0; tries < 1000 && std::any_of(copies->begin(), copies->end(), isTaken); ++tries) {
        QRectF box;
        for (const CROIBase &copy : *copies)
            box = box.united(copy.boundingBox());
        const QPointF allowed = mapping.clampedShift(box, by);
        // At the lower right edge there is no beside any more: on top, then.
        if (allowed.isNull())
            return;
        for (CROIBase &copy : *copies)
            copy.translate(allowed);
    }
}

void RoiEditor::selectAll()
{
    if (!m_manager)
        return;
    m_manager->selectROI(nullptr, false);
    const QList<CROIBase *> rois = m_manager->rois();
    for (CROIBase *roi : rois)
        m_manager->selectROI(roi, true);
}

void RoiEditor::nudge(int x, int y)
{
    if (!isUsable() || m_drag.isActive())
        return;
    const FieldMapping mapping = m_mapping();
    const QPointF by = QPointF(x, y) * mapping.pixelSize();
    RoiDrag drag;
    drag.startMove(m_manager->selectedROIs(), QPointF());
    drag.moveTo(by, mapping);
    drag.commit(m_manager);
}

void RoiEditor::setKindOfSelected(EROIKIND kind)
{
    if (!m_manager)
        return;
    const QList<CROIBase *> selected = m_manager->selectedROIs();
    for (CROIBase *roi : selected)
        m_manager->setROIKind(roi, kind);
}
