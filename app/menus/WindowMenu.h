// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class CVXSWorkspace;
class QMenu;

/// Arranges the windows of an area and lists them, for the menu that it fills.
class WindowMenu : public QObject
{
    Q_OBJECT

public:
    WindowMenu(QMenu *menu, CVXSWorkspace *area, QObject *parent = nullptr);

private:
    void fill();

    QMenu *m_menu;
    CVXSWorkspace *m_area;
};
