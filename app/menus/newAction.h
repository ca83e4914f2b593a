// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenu>

/// Appends an action to a menu; tests find it by the object name.
inline QAction *newAction(QMenu *menu, const QString &text, const char *objectName,
                          const QKeySequence &shortcut = QKeySequence())
{
    QAction *action = menu->addAction(text);
    action->setObjectName(QString::fromLatin1(objectName));
    action->setShortcut(shortcut);
    return action;
}
