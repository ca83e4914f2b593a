// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QAction;
class QMdiArea;
class QVBoxLayout;
class RecentSequences;

/// What an area of windows shows while it is empty: what can be done, and the sequences that were open before.
///
///     auto *page = new WelcomePage(workspace, recentSequences);
///     page->addChoice(openAction, tr("Open a sequence"), tr("A folder ..."));
class WelcomePage : public QWidget
{
    Q_OBJECT

public:
    static constexpr int MAX_RECENT = 5;

    /// Covers the area, which owns it, as long as no window is to be seen there.
    WelcomePage(QMdiArea *area, RecentSequences *recent);

    /// Adds a button that triggers the action and is enabled like it.
    void addChoice(QAction *action, const QString &title, const QString &description);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
    void fillRecent();

    QMdiArea *m_area;
    RecentSequences *m_recent;
    QVBoxLayout *m_choices;
    QWidget *m_recentPlace;
};
