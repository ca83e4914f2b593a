// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

/// What the user saw of a box before answering it.
struct SSeen
{
    QString title;
    QString text;
    QStringList buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool modal = false;
    QString defaultButton;
    bool closed = false; ///< the answer closed the box
};

/// Answers the next box: presses the button of that text, or a key when the text is empty.
class CAnswer
{
public:
    CAnswer(const QString &button, int key = 0) : m_button(button), m_key(key)
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tryToAnswer(); });
        m_timer.start(10);
    }
    const SSeen &seen() const { return m_seen; }

private:
    void tryToAnswer()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        m_timer.stop();
        m_seen.title = box->windowTitle();
        m_seen.text = box->text();
        m_seen.icon = box->icon();
        m_seen.modal = box->isModal();
        QPushButton *wanted = nullptr;
        const QList<QPushButton *> buttons = box->findChildren<QPushButton *>();
        for (QAbstractButton *button : box->buttons()) {
            m_seen.buttons.append(button->text());
            if (button->text() == m_button)
                wanted = qobject_cast<QPushButton *>(button);
        }
        for (QPushButton *button : buttons) {
            if (button->isDefault())
                m_seen.defaultButton = button->text();
        }
        if (m_key)
            QTest::keyClick(box, Qt::Key(m_key));
        else if (wanted)
            QTest::mouseClick(wanted, Qt::LeftButton);
        m_seen.closed = !box->isVisible();
        if (!m_seen.closed) // so that the test goes on and fails by its own check
            box->done(-1);
    }

    QTimer m_timer;
    QString m_button;
    int m_key;
    SSeen m_seen;
};
