// SPDX-License-Identifier: MIT
#include "window/DecimalCommaKey.h"

#include <QKeyEvent>
#include <QLineEdit>

DecimalCommaKey::DecimalCommaKey(QLineEdit *field) : QObject(field), m_field(field)
{
    field->installEventFilter(this);
}

bool DecimalCommaKey::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent *>(event)->text() != QStringLiteral(","))
        return QObject::eventFilter(watched, event);
    m_field->insert(QStringLiteral("."));
    return true;
}
