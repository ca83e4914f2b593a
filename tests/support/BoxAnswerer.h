// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <QTimer>

/// Answers modal message boxes as a person would, and notes what each of them showed. A box for which no
/// answer is planned is closed with Escape or its first button, so that a test never hangs; any other modal
/// widget is closed and noted with its class name as the text.
class BoxAnswerer
{
public:
    struct Shown
    {
        QString title;
        QString text;
        QStringList buttons;        ///< texts, in the box's order
        QList<int> standardButtons; ///< their codes, 0 for a button that is not a standard one
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        bool hasParent = false;
    };

    static constexpr int FIRST_BUTTON = 0; ///< press the first button
    static constexpr int ESCAPE_KEY = -1;  ///< press Escape on the keyboard

    /// Each answer is FIRST_BUTTON, ESCAPE_KEY or the code of a standard button.
    explicit BoxAnswerer(const QList<int> &answers = {});

    const QList<Shown> &shown() const { return m_shown; }
    int count() const { return m_shown.size(); }

private:
    void look();
    void answer(QMessageBox *box);

    QTimer m_timer;
    QList<int> m_answers;
    QList<Shown> m_shown;
};
