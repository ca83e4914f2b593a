// SPDX-License-Identifier: MIT
#include "app/menus/WindowMenu.h"

#include "host/vxapi/view/windows/CVXSWorkspace.h"

#include <QAction>
#include <QActionGroup>
#include <QMdiSubWindow>
#include <QMenu>

WindowMenu::WindowMenu(QMenu *menu, CVXSWorkspace *area, QObject *parent)
    : QObject(parent), m_menu(menu), m_area(area)
{
    connect(menu, &QMenu::aboutToShow, this, &WindowMenu::fill);
    fill();
}

void WindowMenu::fill()
{
    m_menu->clear();
    QAction *cascade = m_menu->addAction(tr("&Cascade"));
    connect(cascade, &QAction::triggered, m_area, &QMdiArea::cascadeSubWindows);
    QAction *tile = m_menu->addAction(tr("&Tile"));
    connect(tile, &QAction::triggered, m_area, &CVXSWorkspace::tileWindows);
    m_menu->addSeparator();

    // A tool's hidden window is not for the user to choose.
    auto *group = new QActionGroup(m_menu);
    int number = 0;
    const QList<QMdiSubWindow *> windows = m_area->subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow *window : windows) {
        if (window->isHidden())
            continue;
        QString title = window->windowTitle();
        title.replace(QLatin1Char('&'), QLatin1String("&&"));
        ++number;
        QAction *action =
            m_menu->addAction(number < 10 ? QStringLiteral("&%1 %2").arg(number).arg(title) : title);
        action->setCheckable(true);
        action->setChecked(window == m_area->currentSubWindow());
        group->addAction(action);
        connect(action, &QAction::triggered, window, [this, window] {
            if (window->isMinimized())
                window->showNormal();
            m_area->setActiveSubWindow(window);
        });
    }
    cascade->setEnabled(number > 0);
    tile->setEnabled(number > 0);
}
