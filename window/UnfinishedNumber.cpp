// SPDX-License-Identifier: MIT
#include "window/UnfinishedNumber.h"

#include <QFocusEvent>
#include <QLineEdit>

UnfinishedNumber::UnfinishedNumber(QLineEdit *field, std::function<QString()> text)
    : QObject(field), m_field(field), m_text(std::move(text))
{
    field->installEventFilter(this);
}

bool UnfinishedNumber::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::FocusOut && !m_field->hasAcceptableInput()) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // As the field itself sees it: who looks into another window or a menu comes back to what was typed.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            m_field->setText(m_text());
    }
    return QObject::eventFilter(watched, event);
}
