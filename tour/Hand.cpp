// SPDX-License-Identifier: MIT
#include "tour/Hand.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace hand {

namespace {

constexpr int PATIENCE = 5000; // ms

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QAction *entryOf(const QList<QAction *> &actions, const QString &text)
{
    for (QAction *action : actions) {
        if (plain(action->text()) == text && action->isVisible())
            return action;
    }
    return nullptr;
}

} // namespace

void giveUp(const QString &message)
{
    std::fprintf(stderr, "vexa-tour: %s\n", qPrintable(message));
    std::fflush(nullptr);
    std::_Exit(1); // from the middle of an event: nothing can be unwound
}

void chooseFromMenu(QMainWindow *window, const QString &menu, const QString &entry)
{
    QMenuBar *bar = window->menuBar();
    QAction *head = entryOf(bar->actions(), menu);
    if (!head || !head->menu())
        giveUp(QStringLiteral("no menu \"%1\"").arg(menu));
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(head).center());
    if (!QTest::qWaitFor([head] { return head->menu()->isVisible(); }, PATIENCE))
        giveUp(QStringLiteral("menu \"%1\" did not open").arg(menu));
    QAction *action = entryOf(head->menu()->actions(), entry);
    if (!action || !action->isEnabled())
        giveUp(QStringLiteral("no enabled entry \"%1\" in menu \"%2\"").arg(entry, menu));
    QTest::mouseClick(head->menu(), Qt::LeftButton, Qt::NoModifier,
                      head->menu()->actionGeometry(action).center());
}

void chooseFromList(QListWidget *list, const QString &text)
{
    const QList<QListWidgetItem *> items = list->findItems(text, Qt::MatchExactly);
    if (items.isEmpty())
        giveUp(QStringLiteral("no item \"%1\" in %2").arg(text, list->objectName()));
    list->scrollToItem(items.first());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(items.first()).center());
    if (list->currentItem() != items.first())
        giveUp(QStringLiteral("item \"%1\" of %2 did not take the click").arg(text, list->objectName()));
}

// With the arrow keys: what an open list takes a click for depends on where the pointer of the display
// happens to be.
void chooseFromCombo(QComboBox *combo, int index)
{
    combo->setFocus(Qt::TabFocusReason);
    while (combo->currentIndex() != index) {
        const int before = combo->currentIndex();
        QTest::keyClick(combo, before < index ? Qt::Key_Down : Qt::Key_Up);
        if (combo->currentIndex() == before)
            giveUp(QStringLiteral("%1 did not take the key").arg(combo->objectName()));
    }
}

void click(QAbstractButton *button)
{
    if (!button->isEnabled() || !button->isVisible())
        giveUp(QStringLiteral("%1 cannot be clicked").arg(button->objectName()));
    // Radio buttons and check boxes take clicks on indicator and text only, not on the space beside them.
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void type(QLineEdit *field, const QString &text)
{
    QTest::mouseDClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
}

QPixmap photograph(QWidget *window)
{
    QTest::qWait(150);
    QApplication::processEvents();
    return window->screen()->grabWindow(window->winId());
}

} // namespace hand
