// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class GuideWindow;
class QMenu;
class QMainWindow;
class SampleStudy;
class SequenceManager;

/// The Help menu: the user's guide, the sample study to try things with, what a control means, and the About
/// box.
class HelpMenu : public QObject
{
    Q_OBJECT

public:
    /// Adds its actions to the menu. The sample study is opened by `sequences`, which outlives this.
    HelpMenu(QMenu *menu, SequenceManager *sequences, QMainWindow *window);

private:
    void showGuide(const QString &page);

    QMainWindow *m_window;
    QPointer<GuideWindow> m_guide;
    SampleStudy *m_sample;
};
