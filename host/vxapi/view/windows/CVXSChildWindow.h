// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"
#include "host/vxutils/ESTATUS.h"

#include <QWidget>

class CVXSDataset;
class CVXSMdiSubWindow;
class CVXSSequenceDataset;

/// A window of the workspace that shows a sequence or a dataset.
class VXAPI_EXPORT CVXSChildWindow : public QWidget
{
    Q_OBJECT

public:
    explicit CVXSChildWindow(QWidget *parent = nullptr);
    ~CVXSChildWindow() override;

    /// The child window that is active, or was last before a tool's window became active; null when there is
    /// none.
    static CVXSChildWindow *getActiveChildWnd();
    /// Called by the workspace (and by tests without one).
    static void setActiveChildWnd(CVXSChildWindow *window);

    virtual bool isSequenceWindow() const = 0;
    /// The sequence of a sequence window; null for others.
    virtual CVXSSequenceDataset *getSequenceDataset() const = 0;
    /// The dataset of an image window; null for others.
    virtual CVXSDataset *getDataset() const = 0;
    /// Saves the sequence that this window belongs to; 0 on success. A failure has been logged and, unless
    /// the user cancelled it, shown.
    virtual ESTATUS saveSequence() = 0;
    /// Brings the window up to date after a dataset was added.
    virtual void refreshAfterDatasetAdded() = 0;

    /// The sub-window around this window, or null.
    CVXSMdiSubWindow *subWindow() const;
};
