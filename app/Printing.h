// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QObject>

class CVXSWorkspace;
class PluginManager;
class QPrinter;
class QWidget;

/// File > Print: the picture of the window in front on one page.
class Printing : public QObject
{
    Q_OBJECT

public:
    /// `window` is the one that the dialog stands above.
    Printing(CVXSWorkspace *workspace, PluginManager *plugins, QWidget *window);

    /// Asks for a printer and prints; nothing without a window in front.
    void print();
    /// As large as the page allows, in its proportions, in the middle; false, and a log line with the reason,
    /// when the printer takes nothing.
    static bool printImage(QPrinter *printer, const QImage &image);

private:
    QImage pictureOf(QWidget *front);

    CVXSWorkspace *m_workspace;
    PluginManager *m_plugins;
    QWidget *m_window;
};
