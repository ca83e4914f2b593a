// SPDX-License-Identifier: MIT
#include "app/import/DecimalPoint.h"

#include <QLineEdit>

QString withDecimalPoint(QString text)
{
    return text.replace(QLatin1Char(','), QLatin1Char('.'));
}

void takeCommaForPoint(QLineEdit *field)
{
    QObject::connect(field, &QLineEdit::textEdited, field, [field](const QString &text) {
        if (!text.contains(QLatin1Char(',')))
            return;
        const int cursor = field->cursorPosition();
        field->setText(withDecimalPoint(text));
        field->setCursorPosition(cursor);
    });
}
