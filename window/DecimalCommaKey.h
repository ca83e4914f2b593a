// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QLineEdit;

/// Writes a point where a comma is typed into a field for a number. Without it the field's validator drops
/// the comma alone, and 1,25 becomes 125.
class DecimalCommaKey : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the field, as its child.
    explicit DecimalCommaKey(QLineEdit *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_field;
};
