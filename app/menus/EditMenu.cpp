// SPDX-License-Identifier: MIT
#include "app/menus/EditMenu.h"

#include "app/menus/newAction.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"

#include <QApplication>
#include <QClipboard>
#include <QMdiSubWindow>

EditMenu::EditMenu(QMenu *menu, CVXSWorkspace *workspace, QObject *parent)
    : QObject(parent),
      m_workspace(workspace),
      m_copy(newAction(menu, tr("&Copy"), "actionCopy", QKeySequence::Copy)),
      m_copyPicture(newAction(menu, tr("Copy P&icture"), "actionCopyPicture",
                              QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_C))),
      m_paste(newAction(menu, tr("&Paste"), "actionPaste", QKeySequence::Paste))
{
    connect(m_copy, &QAction::triggered, this, &EditMenu::copy);
    connect(m_copyPicture, &QAction::triggered, this, &EditMenu::copyPicture);
    connect(m_paste, &QAction::triggered, this, &EditMenu::paste);
    connect(menu, &QMenu::aboutToShow, this, &EditMenu::showState);
    // Not at once: the window that is left may be in the middle of its own destruction.
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &EditMenu::follow);
    connect(workspace, &QMdiArea::subWindowActivated, this, [this] { m_later.start(); });
    connect(workspace, &CVXSWorkspace::activeChildChanged, this, [this] { m_later.start(); });
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &EditMenu::showState);
    follow();
}

QWidget *EditMenu::front() const
{
    const QMdiSubWindow *window = m_workspace->currentSubWindow();
    // A tool's window that it has put away is not in front; without any, what was active last.
    return window && !window->isHidden() ? window->widget() : CVXSChildWindow::getActiveChildWnd();
}

CVXSChildWindow *EditMenu::frontChild() const
{
    return qobject_cast<CVXSChildWindow *>(front());
}

void EditMenu::follow()
{
    CVXSChildWindow *child = frontChild();
    if (child != m_followed) {
        if (m_followed)
            disconnect(m_followed, nullptr, this, nullptr);
        m_followed = child;
        if (child)
            connect(child, &CVXSChildWindow::editStateChanged, this, &EditMenu::showState);
    }
    showState();
}

void EditMenu::showState()
{
    const CVXSChildWindow *child = frontChild();
    const bool isTool = front() && !child;
    m_copy->setEnabled(isTool || (child && child->canCopy()));
    m_copyPicture->setEnabled(isTool || (child && child->canCopyPicture()));
    m_paste->setEnabled(child && child->canPaste());
}

void EditMenu::copy()
{
    if (CVXSChildWindow *child = frontChild())
        child->copy();
    else if (const QWidget *tool = front())
        Q_EMIT toolCopyWanted(tool->objectName());
}

void EditMenu::copyPicture()
{
    if (CVXSChildWindow *child = frontChild())
        child->copyPicture();
    else
        copy();
}

void EditMenu::paste()
{
    if (CVXSChildWindow *child = frontChild())
        child->paste();
}
