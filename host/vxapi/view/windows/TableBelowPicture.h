// SPDX-License-Identifier: MIT
#pragma once

class CVXSChildWindow;
class QSplitter;
class QWidget;

/// Shows and hides what lies below the picture of a window so that the picture keeps its place under the
/// mouse: the window grows and shrinks at its lower edge, where there is room for that.
class TableBelowPicture
{
public:
    /// `splitter` holds the picture's widget above and the table below it, which is hidden at first.
    TableBelowPicture(CVXSChildWindow *window, QSplitter *splitter);

    /// Whether the window can grow by the table.
    bool hasRoom() const;
    /// Without room, the picture makes place for the table, or takes its place.
    void show(bool on);

private:
    /// The widget that grows: the sub-window, or the window when it is in none; null when it is a part of
    /// something else.
    QWidget *frame() const;
    int tableHeight() const;

    CVXSChildWindow *m_window;
    QSplitter *m_splitter;
    bool m_hasGrown = false; ///< for the table that is shown
};
