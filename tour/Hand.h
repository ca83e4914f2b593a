// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QPixmap>
#include <QPoint>
#include <QString>
#include <QStringList>

class QAbstractButton;
class QComboBox;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QMenu;
class QPushButton;
class QWidget;

/// Mouse and keyboard of the user at the workspace: everything here goes through window-system events on the
/// real widgets. What cannot be found or does not react ends the program with a message.
namespace hand {

/// Opens a menu of the menu bar by its text (without "&") and clicks through the entries below it, the last
/// of which does something. In an entry "*" stands for any text.
void chooseFromMenu(QMainWindow *window, const QStringList &way);
/// Opens the pop-up menu of a button and clicks through it; `opened` is called while all of it is seen.
void chooseFromButtonMenu(QPushButton *button, const QStringList &way,
                          const std::function<void()> &opened = {});
/// The texts of the pop-up menu of a button, those of its sub-menus indented by a blank; closes it again.
QStringList textsOfButtonMenu(QPushButton *button);
/// Clicks the item with that text.
void chooseFromList(QListWidget *list, const QString &text);
/// Double-clicks the first item whose text has that in it.
void openFromList(QListWidget *list, const QString &text);
/// Goes to the item of that index with the keyboard.
void chooseFromCombo(QComboBox *combo, int index);
/// Clicks a button, radio button or check box.
void click(QAbstractButton *button);
/// Replaces the text of a field and presses Return.
void type(QLineEdit *field, const QString &text);
/// Presses the left button, moves in steps, lets go.
void drag(QWidget *widget, const QPoint &from, const QPoint &to);
/// Waits until that holds; false when it does not come.
bool waitFor(const std::function<bool()> &holds);
/// Waits until the widget's window has painted a few times, each asked for after the one before. What was put
/// off until the event loop comes to it (new images, measuring) happens in between.
void settle(QWidget *widget);
/// Waits until a menu or dialog is on the screen.
void waitUntilSeen(QWidget *window);

/// Answers the next message box, whenever it comes: notes its text, calls `seen` and presses the button of
/// that text (without "&").
class Answer
{
public:
    Answer() = default; ///< waits for nothing
    explicit Answer(const QString &button, const std::function<void()> &seen = {});
    bool wasAsked() const { return m_state->asked; }
    QString question() const { return m_state->text; }

private:
    struct State
    {
        bool asked = false;
        QString text;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

/// Uses the next dialog of that class, whenever it comes; `use` closes it in the end.
void useDialog(const char *className, const std::function<void(QWidget *)> &use);
/// Looks at the next dialog, whenever it comes, and closes it with Escape.
void lookAtDialog(const std::function<void()> &seen);
/// Chooses files by their paths in the file dialog that comes next.
void chooseFiles(const QStringList &paths);

/// Lets the window settle, then takes a picture of it as it stands on the screen, with what lies over it.
QPixmap photograph(QWidget *window);

/// Ends the program with a message.
[[noreturn]] void giveUp(const QString &message);

} // namespace hand
