// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QLineEdit;

/// Numbers are written with a point. Where a comma is typed or pasted instead, a point takes its place at
/// once, so that the user sees which number it is: 12,5 becomes 12.5.
void takeCommaForPoint(QLineEdit *field);
/// The text with a point for each comma; two of them make it no number.
QString withDecimalPoint(QString text);
