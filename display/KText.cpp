// SPDX-License-Identifier: MIT
#include "display/KText.h"

#include <cmath>

namespace ktext {

float read(const QString &text)
{
    const float value = text.toFloat();
    // "nan" parses, but it is not a number.
    return std::isnan(value) ? 0.0f : value;
}

float clamped(float v, float minimum, float maximum)
{
    if (minimum > v)
        return minimum;
    return v > maximum ? maximum : v;
}

QString format(float v)
{
    if (v < -10.0f || v > 10.0f || (v > -1.0f && v < 1.0f)) {
        QString text = QString::asprintf("%.2e", double(v));
        compactExponent(text);
        return text;
    }
    return QString::asprintf("%.2f", double(v));
}

QString exact(float v)
{
    const QString text = format(v);
    return read(text) == v ? text : QString::number(double(v));
}

void compactExponent(QString &text)
{
    const int at = text.indexOf(QLatin1Char('e'), 0, Qt::CaseInsensitive);
    if (at < 0)
        return;
    const QString mantissa = text.left(at);
    QString exponent = text.mid(at + 1);
    QString sign;
    if (exponent.startsWith(QLatin1Char('+'))) {
        exponent.remove(0, 1);
    } else if (exponent.startsWith(QLatin1Char('-'))) {
        exponent.remove(0, 1);
        sign = QStringLiteral("-");
    }
    while (exponent.startsWith(QLatin1Char('0')))
        exponent.remove(0, 1);
    text = exponent.isEmpty() ? mantissa : mantissa + QLatin1Char('e') + sign + exponent;
}

} // namespace ktext
