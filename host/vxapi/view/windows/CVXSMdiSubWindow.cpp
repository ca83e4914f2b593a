// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include <algorithm>
#include <QAction>
#include <QMdiArea>
#include <QMenu>

CVXSMdiSubWindow::CVXSMdiSubWindow(QWidget *parent) : QMdiSubWindow(parent)
{
    // The main window's menu has the same key. With both of them the key would be ambiguous and do nothing.
    for (QAction *action : systemMenu()->actions()) {
        if (!action->shortcut().isEmpty() &&
            action->shortcut().matches(QKeySequence(QKeySequence::Close)) == QKeySequence::ExactMatch)
            action->setShortcut(QKeySequence());
    }
}

void CVXSMdiSubWindow::showWindow()
{
    if (isMinimized() || isShaded())
        showNormal();
    if (widget())
        widget()->show();
    // A tool sizes its window for the fonts that it was made with; where they are larger nothing is to be cut
    // off.
    if (!isMaximized())
        resize(size().expandedTo(minimumSizeHint()));
    show();
    raise();
    if (QMdiArea *area = mdiArea())
        area->setActiveSubWindow(this);
}

void CVXSMdiSubWindow::hideWindow()
{
    hide();
}

void CVXSMdiSubWindow::setWindowPosition(const QPoint &position)
{
    int right = QWIDGETSIZE_MAX;
    int bottom = QWIDGETSIZE_MAX;
    // Before the workspace is laid out its size says nothing.
    if (const QMdiArea *area = mdiArea(); area && area->isVisible()) {
        // So much stays in sight that the title bar can be taken by the mouse.
        right = std::max(0, area->viewport()->width() - 80);
        bottom = std::max(0, area->viewport()->height() - 30);
    }
    move(std::clamp(position.x(), 0, right), std::clamp(position.y(), 0, bottom));
}
