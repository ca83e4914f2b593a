// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QMdiArea>
#include <QPointer>
#include <QRect>
#include <QVector>

class CVXSChildWindow;
class CVXSDataset;
class CVXSMdiSubWindow;
class CVXSSequenceDataset;
class CVXSSequenceWindow;
class CVXSImageWindow;

/// The area in which all windows live: it wraps them into sub-windows and keeps track of the active child
/// window. The newest workspace of the process is the one that tool plug-ins reach.
///
///     CVXSWorkspace workspace;
///     workspace.showSequence(sequence);                       // its window: the one there is, or a new one
///     workspace.showDataset(sequence->getDatasets().first());
///     CVXSMdiSubWindow *frame = workspace.addToolWidget(toolWindow);
///     frame->showWindow();                                    // the active child window stays the dataset's
///
/// A new child window gets a place beside those that are there (WindowPlacing.h). Until the user moves or sizes
/// it, it makes room for a tool's window and stays inside when the area becomes smaller.
///
/// Sequences and datasets belong to others and outlive their windows; who closes one destroys its windows
/// first.
class VXAPI_EXPORT CVXSWorkspace : public QMdiArea
{
    Q_OBJECT

public:
    explicit CVXSWorkspace(QWidget *parent = nullptr);
    ~CVXSWorkspace() override;

    /// The newest workspace; null when there is none.
    static CVXSWorkspace *instance();

    /// Wraps a child window, shows and activates it. It is destroyed with its sub-window when that is closed.
    CVXSMdiSubWindow *addChildWindow(CVXSChildWindow *window);
    /// Wraps a tool's window; the sub-window becomes its parent and stays hidden until the tool shows it.
    CVXSMdiSubWindow *addToolWidget(QWidget *widget);

    /// Moves child windows from under a window that placed itself, such as a tool's when it is first shown;
    /// those that the user moved or sized stay.
    void makeRoomFor(QMdiSubWindow *window);
    /// All windows side by side, none half outside: where their least sizes do not fit, they overlap.
    void tileWindows();

    /// The window of that sequence or dataset: the one there is, activated, or a new one; null for null.
    CVXSSequenceWindow *showSequence(CVXSSequenceDataset *sequence);
    CVXSImageWindow *showDataset(CVXSDataset *dataset);

Q_SIGNALS:
    /// The active child window became another one (null: none is left). Not emitted when a tool's window
    /// becomes active.
    void activeChildChanged(CVXSChildWindow *window);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void place(QMdiSubWindow *window);
    bool isPlacedHere(const QMdiSubWindow *window) const;
    QVector<QRect> occupiedBut(const QList<QMdiSubWindow *> &left) const;
    void placeAnew(const QList<QMdiSubWindow *> &windows);
    QList<QMdiSubWindow *> shownWindows() const;
    void onSubWindowActivated(QMdiSubWindow *window);
    void showAgain(CVXSChildWindow *window);
    void announceActiveChild();

    /// Where a window was put, and how large it wants to be. As long as it is there, the user did not touch it.
    struct Placement
    {
        QPointer<QMdiSubWindow> window;
        QRect rect;
        QSize wanted;
    };
    QList<Placement> m_placements;
    CVXSChildWindow *m_announced = nullptr; ///< only compared, never followed: it may be gone
};
