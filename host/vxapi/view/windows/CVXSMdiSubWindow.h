// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QMdiSubWindow>

/// The sub-window of the workspace that wraps a child window or a tool's window.
class VXAPI_EXPORT CVXSMdiSubWindow : public QMdiSubWindow
{
    Q_OBJECT

public:
    explicit CVXSMdiSubWindow(QWidget *parent = nullptr);

    /// Shows the sub-window with its widget, at least as large as the widget needs, restores it when
    /// minimised, and activates it.
    void showWindow();
    void hideWindow();
    /// Moves the left top corner, kept inside the workspace.
    void setWindowPosition(const QPoint &position);
};
