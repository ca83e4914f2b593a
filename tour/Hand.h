// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QAbstractButton;
class QComboBox;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPixmap;
class QWidget;

/// Mouse and keyboard of a person at the workspace: everything here goes through window-system events on the
/// real widgets. What cannot be found or does not react ends the program with a message.
namespace hand {

/// Opens a menu of the menu bar by its text (without "&") and clicks an entry of it.
void chooseFromMenu(QMainWindow *window, const QString &menu, const QString &entry);
/// Clicks the item with that text.
void chooseFromList(QListWidget *list, const QString &text);
/// Goes to the item of that index with the keyboard.
void chooseFromCombo(QComboBox *combo, int index);
/// Clicks a button, radio button or check box.
void click(QAbstractButton *button);
/// Replaces the text of a field and presses Return.
void type(QLineEdit *field, const QString &text);
/// Lets the window paint, then takes a picture of it as it stands on the screen.
QPixmap photograph(QWidget *window);

/// Ends the program with a message.
[[noreturn]] void giveUp(const QString &message);

} // namespace hand
