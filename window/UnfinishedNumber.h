// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QObject>

class QLineEdit;

/// Puts the value's text back into a field for a number that is left with half a number in it ("-", "1e",
/// nothing), of which the field tells nobody.
class UnfinishedNumber : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the field, as its child; `text` is that of the present value.
    UnfinishedNumber(QLineEdit *field, std::function<QString()> text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_field;
    std::function<QString()> m_text;
};
