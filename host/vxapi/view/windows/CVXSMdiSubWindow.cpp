// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include "host/vxapi/view/canvas/KeepInSight.h"

#include <QAction>
#include <QMdiArea>
#include <QMenu>

namespace {

/// So much stays in sight that the title bar can be taken by the mouse.
constexpr QSize GRIP(80, 30);

} // namespace

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
    const QMdiArea *area = mdiArea();
    // Before the workspace is laid out its size says nothing.
    const bool isLaidOut = area && area->isVisible();
    const QSize room = isLaidOut ? area->viewport()->size() : QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    move(placeInSight(position, GRIP, QRect(QPoint(), room)));
}
