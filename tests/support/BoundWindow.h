// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/TestStudy.h"
#include "tests/support/WindowProbe.h"

#include <memory>
#include <QString>
#include <QVector>

class CVXSMdiSubWindow;
class CVXSWorkspace;

/// The window in a workspace of its own, with a sequence to bind it to: what the plug-in sets up, without the
/// plug-in.
class BoundWindow
{
public:
    explicit BoundWindow(const QString &sequenceID = QStringLiteral("AB20260102030405_SEQ"));
    ~BoundWindow();

    /// Adds a luminescent click whose pixel (x, y) holds first + x + 2 y counts; `photograph` gives it one.
    CVXSDataset *addClick(const QString &number, bool photograph = false, float first = 100.0f);
    /// Adds a click that holds only a photograph.
    CVXSDataset *addPhotographOnly(const QString &number);
    /// Adds clicks A1, A2, ... with these values in their first pixels, saves the sequence and binds the
    /// window to it; showClicks() shows it as well.
    bool bindClicks(const QVector<float> &firsts);
    bool showClicks(const QVector<float> &firsts);
    /// Saves the sequence and binds the window to it.
    bool saveAndBind();
    bool bind();
    /// Shows the window, with its tags and images laid out as after a launch.
    void show();

    WindowProbe *window() const { return m_window; }
    CVXSMdiSubWindow *subWindow() const;
    TestStudy &study() { return *m_study; }
    CVXSSequenceDataset *sequence() const { return m_study->sequence(); }
    CVXSWorkspace *workspace() const { return m_workspace.get(); }
    QStringList listA() const { return textsOf(m_window->m_pListBoxA); }
    QStringList listB() const { return textsOf(m_window->m_pListBoxB); }

    static QStringList textsOf(const QListWidget *list);
    static QStringList itemsOf(const QComboBox *box);

private:
    std::unique_ptr<TestStudy> m_study;
    std::unique_ptr<CVXSWorkspace> m_workspace;
    WindowProbe *m_window = nullptr; ///< owned by its sub-window
};
