// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"
#include "host/vxutils/ESTATUS.h"

#include <QImage>
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

    // --- what the Edit menu does; the system's clipboard is the one there is ---

    /// Whether there is something to copy; at first when there is a picture.
    virtual bool canCopy() const { return canCopyPicture(); }
    /// Copies what the user means: what is selected, else the picture.
    virtual void copy() { copyPicture(); }
    virtual bool canCopyPicture() const { return true; }
    /// What the window shows, for the clipboard and the printer; at first all of it.
    virtual QImage picture();
    /// Copies the picture.
    void copyPicture();
    /// Whether the clipboard holds something for this window; at first it never does.
    virtual bool canPaste() const { return false; }
    virtual void paste() {}

    /// The sub-window around this window, or null.
    CVXSMdiSubWindow *subWindow() const;

Q_SIGNALS:
    /// What can be copied or pasted may be something else now.
    void editStateChanged();
};
