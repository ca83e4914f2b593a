// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QTextBrowser;

/// A window that shows the user's guide, with its pictures, beside the workspace.
///
///     auto *guide = new GuideWindow(mainWindow);
///     if (!guide->showPage("image-math"))   // told in the log: the page is not there
///         return;
class GuideWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GuideWindow(QWidget *parent);

    /// Shows a page ("image-math", "workspace") in the window. False, and told in the log (level 3), when there
    /// is none.
    bool showPage(const QString &name);

private:
    QTextBrowser *m_browser;
};
