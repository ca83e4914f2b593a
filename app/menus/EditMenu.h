// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class CVXSChildWindow;
class CVXSWorkspace;
class QAction;
class QMenu;
class QWidget;

/// Copying and pasting. It is about the window in front: a child window says itself what it has to copy and
/// whether it takes what lies on the clipboard; the picture of a tool's window is the tool's to copy.
class EditMenu : public QObject
{
    Q_OBJECT

public:
    /// Adds its actions to the menu.
    EditMenu(QMenu *menu, CVXSWorkspace *workspace, QObject *parent = nullptr);

Q_SIGNALS:
    /// The tool window of that object name is to be copied.
    void toolCopyWanted(const QString &objectName);

private:
    /// The widget of the window in front, or null.
    QWidget *front() const;
    CVXSChildWindow *frontChild() const;
    void follow();
    void showState();
    void copy();
    void copyPicture();
    void paste();

    CVXSWorkspace *m_workspace;
    QPointer<CVXSChildWindow> m_followed;
    QAction *m_copy;
    QAction *m_copyPicture;
    QAction *m_paste;
    QTimer m_later;
};
