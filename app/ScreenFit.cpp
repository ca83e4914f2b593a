// SPDX-License-Identifier: MIT
#include "app/ScreenFit.h"

#include "host/vxapi/view/canvas/KeepInSight.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>

void keepOnScreen(QWidget *window)
{
    const QScreen *screen = QGuiApplication::screenAt(window->geometry().center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QRect room = screen->availableGeometry();
    room.setTop(room.top() + window->style()->pixelMetric(QStyle::PM_TitleBarHeight));
    window->resize(window->size().boundedTo(room.size()));
    // A window that has no place of its own yet gets one from the window manager.
    if (window->testAttribute(Qt::WA_Moved) &&
        placeInSight(window->geometry().topLeft(), window->size(), room) != window->geometry().topLeft())
        window->move(screen->availableGeometry().topLeft());
}
