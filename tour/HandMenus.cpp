// SPDX-License-Identifier: MIT
#include "tour/Hand.h"

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QRegExp>
#include <QTest>
#include <QTimer>

namespace hand {

namespace {

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QAction *entryOf(const QList<QAction *> &actions, const QString &text)
{
    const QRegExp wanted(text, Qt::CaseSensitive, QRegExp::Wildcard);
    for (QAction *action : actions) {
        const QString shown = plain(action->text());
        if (action->isVisible() && (shown == text || wanted.exactMatch(shown)))
            return action;
    }
    return nullptr;
}

/// Clicks through an open menu; `opened` is called before the last click.
void walk(QMenu *menu, QStringList way, const std::function<void()> &opened)
{
    const QString text = way.takeFirst();
    QAction *action = entryOf(menu->actions(), text);
    if (!action || !action->isEnabled())
        giveUp(QStringLiteral("no enabled entry \"%1\" in menu \"%2\"").arg(text, plain(menu->title())));
    if (way.isEmpty()) {
        if (opened)
            opened();
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
        return;
    }
    QMenu *below = action->menu();
    if (!below)
        giveUp(QStringLiteral("\"%1\" has no sub-menu").arg(text));
    // With the keys: whether a sub-menu opens under the mouse depends on where the display's pointer is.
    for (int step = 0; menu->activeAction() != action && step <= menu->actions().size(); ++step)
        QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Right);
    if (!waitFor([below] { return below->isVisible(); }))
        giveUp(QStringLiteral("sub-menu \"%1\" did not open").arg(text));
    waitUntilSeen(below);
    walk(below, way, opened);
}

/// Opens the menu of a button, which blocks until it is closed again, and calls `use` while it is open.
void whileOpen(QPushButton *button, const std::function<void(QMenu *)> &use)
{
    QPointer<QMenu> menu = button->menu();
    if (!menu || !button->isEnabled())
        giveUp(QStringLiteral("%1 has no menu to open").arg(button->objectName()));
    bool isUsed = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (!menu || !menu->isVisible())
            return;
        timer.stop();
        isUsed = true;
        use(menu);
    });
    timer.start(20);
    QTest::mouseClick(button, Qt::LeftButton);
    if (!isUsed)
        giveUp(QStringLiteral("the menu of %1 did not open").arg(button->objectName()));
}

} // namespace

void chooseFromMenu(QMainWindow *window, const QStringList &way)
{
    QMenuBar *bar = window->menuBar();
    QAction *head = entryOf(bar->actions(), way.first());
    if (!head || !head->menu())
        giveUp(QStringLiteral("no menu \"%1\"").arg(way.first()));
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(head).center());
    if (!waitFor([head] { return head->menu()->isVisible(); }))
        giveUp(QStringLiteral("menu \"%1\" did not open").arg(way.first()));
    walk(head->menu(), way.mid(1), {});
}

void chooseFromButtonMenu(QPushButton *button, const QStringList &way, const std::function<void()> &opened)
{
    whileOpen(button, [&](QMenu *menu) { walk(menu, way, opened); });
}

QStringList textsOfButtonMenu(QPushButton *button)
{
    QStringList texts;
    whileOpen(button, [&](QMenu *menu) {
        const QList<QAction *> actions = menu->actions();
        for (const QAction *action : actions) {
            texts += plain(action->text());
            const QList<QAction *> below = action->menu() ? action->menu()->actions() : QList<QAction *>();
            for (const QAction *entry : below)
                texts += QLatin1Char(' ') + plain(entry->text());
        }
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    return texts;
}

} // namespace hand
