// SPDX-License-Identifier: MIT
#include "tests/support/GuiDriver.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>
#include <QTest>

namespace {

constexpr int PATIENCE = 20000; // ms; sanitized builds are slow

}

bool GuiDriver::fail(const QString &why)
{
    m_why = why;
    return false;
}

bool GuiDriver::press(const char *button)
{
    return press(find<QAbstractButton>(button), button);
}

bool GuiDriver::press(QAbstractButton *button, const char *name)
{
    if (!button)
        return fail(QLatin1String(name) + QStringLiteral(" is not there"));
    if (!button->isEnabled())
        return fail(QLatin1String(name) + QStringLiteral(" is disabled"));
    // Check boxes and radio buttons take clicks on indicator and text only, not on the space beside them.
    const bool hasIndicator = qobject_cast<QCheckBox *>(button) || qobject_cast<QRadioButton *>(button);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier,
                      hasIndicator ? QPoint(8, button->height() / 2) : button->rect().center());
    return true;
}

bool GuiDriver::type(const char *field, const QString &text, int endKey)
{
    auto *edit = find<QLineEdit>(field);
    if (!edit || !edit->isEnabled())
        return fail(QLatin1String(field) + QStringLiteral(" takes no text"));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    if (endKey)
        QTest::keyClick(edit, Qt::Key(endKey));
    return true;
}

bool GuiDriver::pick(const char *list, const QString &text)
{
    return pick(find<QListWidget>(list), text);
}

bool GuiDriver::pick(QListWidget *list, const QString &text)
{
    const QList<QListWidgetItem *> items =
        list ? list->findItems(text, Qt::MatchExactly) : QList<QListWidgetItem *>();
    if (items.isEmpty())
        return fail(text + QStringLiteral(" is not in the list"));
    return pickRow(list, list->row(items.first()));
}

bool GuiDriver::pickRow(QAbstractItemView *view, int row)
{
    const QModelIndex cell = view->model()->index(row, 0);
    view->scrollTo(cell);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cell).center());
    return view->currentIndex().row() == row ||
           fail(QStringLiteral("row %1 did not take the click").arg(row));
}

bool GuiDriver::choose(const char *box, int index)
{
    return choose(find<QComboBox>(box), index);
}

bool GuiDriver::choose(QComboBox *box, int index)
{
    if (!box || !box->isEnabled())
        return fail(QStringLiteral("the choice is not there or disabled"));
    box->setFocus(Qt::TabFocusReason);
    for (int key = box->count(); box->currentIndex() != index && key > 0; --key)
        QTest::keyClick(box, box->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
    return box->currentIndex() == index || fail(QStringLiteral("choice %1 cannot be reached").arg(index));
}

bool GuiDriver::chooseFromMenu(const char *menu, const QString &entry)
{
    const auto *shown = find<QMenu>(menu);
    const QList<QAction *> entries = shown ? shown->actions() : QList<QAction *>();
    for (QAction *action : entries) {
        if (action->text() == entry && action->isEnabled()) {
            action->trigger();
            return true;
        }
    }
    return fail(entry + QStringLiteral(" is not in the menu or disabled"));
}

bool GuiDriver::trigger(const char *action)
{
    auto *found = find<QAction>(action);
    if (!found || !found->isEnabled())
        return fail(QLatin1String(action) + QStringLiteral(" is not there or disabled"));
    found->trigger();
    return true;
}

bool GuiDriver::waitFor(const std::function<bool()> &condition, const QString &what)
{
    return QTest::qWaitFor(condition, PATIENCE) || fail(what + QStringLiteral(" did not happen"));
}

void GuiDriver::settle()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}
