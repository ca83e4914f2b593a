// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QMdiArea>

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

    /// The window of that sequence or dataset: the one there is, activated, or a new one; null for null.
    CVXSSequenceWindow *showSequence(CVXSSequenceDataset *sequence);
    CVXSImageWindow *showDataset(CVXSDataset *dataset);

Q_SIGNALS:
    /// The active child window became another one (null: none is left). Not emitted when a tool's window
    /// becomes active.
    void activeChildChanged(CVXSChildWindow *window);

private:
    void keepInSight(QMdiSubWindow *window) const;
    void onSubWindowActivated(QMdiSubWindow *window);
    void showAgain(CVXSChildWindow *window);
    void announceActiveChild();

    CVXSChildWindow *m_announced = nullptr; ///< only compared, never followed: it may be gone
};
