// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/FieldMapping.h"
#include "host/vxapi/view/roi/RoiDraft.h"
#include "host/vxapi/view/roi/RoiDrag.h"

#include <functional>
#include <QObject>
#include <QPointer>
#include <vector>

class CROIManager;
class CVXSMultiImageView;
class QKeyEvent;
class QMouseEvent;

/// Draws, selects, moves, resizes and removes the ROIs of a dataset with the mouse and the keys of a view.
///
///     const auto mapping = [picture] { return picture->mapping(); };   // view pixels to centimetres
///     auto *editor = new RoiEditor(view, dataset->roiManager(), mapping);
///     RoiOverlay overlay(view, dataset->roiManager(), editor, mapping); // paints what the editor changes
///     auto *toolBar = new RoiToolBar(dataset->roiManager(), editor);
///     editor->setTool(EROITOOL_ELLIPSE);                                // for the next ROI
///
/// ROIs are kept in centimetres of the field of view, so that they cover the same tissue at any zoom or
/// binning. The dataset's ROIs change once, when a drawing or a drag ends; Escape leaves them as they were.
///
/// Mouse: a click selects (with Ctrl or Shift beside what is selected), dragging an ROI moves what is
/// selected, dragging a handle resizes. Polygons are clicked corner by corner; a double click, Return or a
/// click on the first corner ends them. Shift makes boxes square. A tool draws one ROI, then selecting is on
/// again.
/// Keys: Del, arrows (one pixel of the luminescent image; with Shift ten), Ctrl+C, Ctrl+V, Ctrl+A, F2,
/// Escape; Backspace takes a polygon's last corner away.
class VXAPI_EXPORT RoiEditor : public QObject
{
    Q_OBJECT

public:
    /// `mapping` is asked at every event; while it is not valid, the editor does nothing.
    RoiEditor(CVXSMultiImageView *view, CROIManager *manager, std::function<FieldMapping()> mapping);

    const RoiDrawing &drawing() const { return m_drawing; }
    /// What the mouse does from now on; what was being drawn is given up.
    void setTool(EROITOOL tool);
    /// Of the ROIs that are drawn from now on.
    void setKind(EROIKIND kind) { m_drawing.kind = kind; }
    /// Of grids that are drawn from now on; 1 or more each.
    void setGridSize(int rows, int columns);

    const RoiDraft &draft() const { return m_draft; }
    const RoiDrag &drag() const { return m_drag; }

    /// Removes what is selected; nothing when nothing is.
    void removeSelected();
    /// Puts all that is selected on the system's clipboard; nothing when nothing is.
    void copySelected();
    /// Pastes the ROIs of the system's clipboard at the places of the originals, so that they cover the same
    /// tissue in another dataset; beside them where an ROI lies exactly there already. A message says why
    /// when there are none. What was pasted is selected.
    void paste();
    void selectAll();
    /// Moves what is selected by pixels of the luminescent image.
    void nudge(int x, int y);
    /// Moves the selected ROIs over to that kind.
    void setKindOfSelected(EROIKIND kind);

Q_SIGNALS:
    void toolChanged(EROITOOL tool);
    void renameRequested();
    /// What happens under the mouse, or what went wrong; empty when that is over.
    void messageChanged(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isUsable() const;
    bool mousePress(const QMouseEvent &event);
    void mouseMove(const QMouseEvent &event);
    bool mouseRelease();
    bool doubleClick(const QMouseEvent &event);
    bool keyPress(const QKeyEvent &event);
    bool isRoiKey(const QKeyEvent &event);
    /// What a key does now; empty for a key that is not the editor's.
    std::function<void()> commandOf(const QKeyEvent &event);
    void escape();
    void pressSelect(const QMouseEvent &event, const QPointF &place);
    void pressDraw(const QPointF &at, const QPointF &place);
    void finishDraft();
    void moveBesideOthers(std::vector<CROIBase> *copies) const;
    void cancel();
    CROIBase *roiAt(const QPointF &at, const FieldMapping &mapping) const;
    void updateCursor(const QPointF &at);
    void tellSize(const QRectF &box);
    void repaint();

    CVXSMultiImageView *m_view;
    QPointer<CROIManager> m_manager;
    std::function<FieldMapping()> m_mapping;
    RoiDrawing m_drawing;
    RoiDraft m_draft;
    RoiDrag m_drag;
};
