// SPDX-License-Identifier: MIT
#include "tests/support/BoxAnswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>

BoxAnswerer::BoxAnswerer(const QList<int> &answers) : m_answers(answers)
{
    QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
    m_timer.start(5);
}

void BoxAnswerer::look()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal)
        return;
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        answer(box);
        return;
    }
    Shown other;
    other.title = modal->windowTitle();
    other.text = QString::fromLatin1(modal->metaObject()->className());
    m_shown << other;
    modal->close();
}

void BoxAnswerer::answer(QMessageBox *box)
{
    Shown seen;
    seen.title = box->windowTitle();
    seen.text = box->text();
    seen.icon = box->icon();
    seen.hasParent = box->parentWidget() != nullptr;
    const QList<QAbstractButton *> buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        seen.buttons << button->text();
        seen.standardButtons << int(box->standardButton(button));
    }
    m_shown << seen;

    const int wanted = m_answers.isEmpty() ? ESCAPE_KEY : m_answers.takeFirst();
    QAbstractButton *button = nullptr;
    if (wanted == FIRST_BUTTON)
        button = buttons.value(0);
    else if (wanted != ESCAPE_KEY)
        button = box->button(QMessageBox::StandardButton(wanted));
    if (button) {
        button->click();
        return;
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(box, &press);
    // A box without an escape button ignores the key.
    if (box->isVisible() && !buttons.isEmpty())
        buttons.first()->click();
}
