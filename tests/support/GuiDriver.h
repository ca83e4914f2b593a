// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QString>
#include <QWidget>

class QAbstractButton;
class QAbstractItemView;
class QComboBox;
class QListWidget;

/// The user's hand over a window: it finds widgets by their object names and works them with mouse and
/// keyboard. What cannot be done gives false, and why() says what.
///
///     GuiDriver user(&window);
///     QVERIFY2(user.pick("m_pListBoxA", click) && user.choose("m_pOperationCB", 1), qPrintable(user.why()));
///     QVERIFY(user.type("m_pKLineEdit", "0.37", Qt::Key_Return));
///     QVERIFY(user.press("m_pDisplayBtn"));
///
/// Nothing here waits for a time; waitFor() waits for a condition.
class GuiDriver
{
public:
    explicit GuiDriver(QWidget *window) : m_window(window) {}

    /// Clicks the button, where it takes a click.
    bool press(const char *button);
    bool press(QAbstractButton *button, const char *name = "the button");
    /// Replaces the text of the field; then the key, if there is one.
    bool type(const char *field, const QString &text, int endKey = 0);
    /// Clicks the item of that text, or of that row, in the list.
    bool pick(const char *list, const QString &text);
    bool pick(QListWidget *list, const QString &text);
    bool pickRow(QAbstractItemView *view, int row);
    /// Goes to the item of the combo box with the arrow keys: what an open list takes a click for depends on
    /// where the pointer happens to be.
    bool choose(const char *box, int index);
    bool choose(QComboBox *box, int index);
    /// Triggers the enabled entry of that text in the menu.
    bool chooseFromMenu(const char *menu, const QString &entry);
    /// Triggers the action of that object name.
    bool trigger(const char *action);
    /// False when the condition does not come true: that guards against hanging, it measures nothing.
    bool waitFor(const std::function<bool()> &condition, const QString &what);
    /// Lets everything that was put off happen.
    static void settle();

    QString why() const { return m_why; }

    template <typename T>
    T *find(const char *name) const
    {
        return m_window->findChild<T *>(QString::fromLatin1(name));
    }

private:
    bool fail(const QString &why);

    QWidget *m_window;
    QString m_why;
};
