// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The constant k as a text: what is typed becomes a short text, and what is stored is that text read back.
///
///     const float typed = ktext::clamped(ktext::read("0.123456"), ktext::MINIMUM, ktext::MAXIMUM);
///     const QString shown = ktext::format(typed); // "1.23e-1"
///     const float k = ktext::read(shown);         // 0.123f: what the user sees is what is computed with
///
/// Numbers are in the C locale, and formatted by Qt, so the text is the same on every platform.
namespace ktext {

/// Bounds of a typed k: the single-precision values nearest to -1e12 and 1e12.
constexpr float MINIMUM = -1.0e12f;
constexpr float MAXIMUM = 1.0e12f;

/// The text read as a float in the C locale; 0 when it is not a number.
float read(const QString &text);

/// v itself, or the bound that it passes.
float clamped(float v, float minimum, float maximum);

/// "%.2f" for 1 to 10 and -10 to -1, bounds included; "%.2e" with a compact exponent for everything else. The
/// value chooses the form, not its rounded text: 9.999 gives "10.00".
QString format(float v);

/// format(v) where that reads back as v, which a typed k does; else six digits, as a k from an ROI has.
QString exact(float v);

/// Shortens the exponent of a number in e-notation: no "+", no leading zeros, no exponent of zero.
/// "1.23e+05" becomes "1.23e5", "5.00e-01" "5.00e-1", "0.00e+00" "0.00".
void compactExponent(QString &text);

} // namespace ktext
