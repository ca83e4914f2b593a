// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/ColorbarScale.h"

#include "host/vximage/CILPalette.h"

#include <algorithm>
#include <cmath>

namespace {

QString superscript(int number)
{
    static const QChar digits[] = {QChar(0x2070), QChar(0x00b9), QChar(0x00b2), QChar(0x00b3), QChar(0x2074),
                                   QChar(0x2075), QChar(0x2076), QChar(0x2077), QChar(0x2078), QChar(0x2079)};
    QString text;
    for (const QChar c : QString::number(number))
        text += c == QLatin1Char('-') ? QChar(0x207b) : digits[c.digitValue()];
    return text;
}

/// The next round number of the form 1, 2 or 5 times a power of ten that is not below x > 0.
double roundStep(double x)
{
    const double power = std::pow(10.0, std::floor(std::log10(x)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= x * (1.0 - 1e-9))
            return factor * power;
    }
    return 10.0 * power;
}

/// One number of a log scale: plain where it is short, else with its power of ten.
QString logLabel(double value)
{
    const double size = std::abs(value);
    const bool decade = std::abs(std::log10(size) - std::round(std::log10(size))) < 1e-9;
    if (size >= 0.01 && size < 99999.5)
        return QString::number(value, 'g', size >= 1000.0 ? 4 : 3);
    if (decade)
        return QStringLiteral("10") + superscript(int(std::lround(std::log10(size))));
    const int exponent = int(std::floor(std::log10(size)));
    return QString::number(value / std::pow(10.0, exponent), 'f', 1) + QStringLiteral("·10") +
           superscript(exponent);
}

/// Keeps of the labels those that stand at least `gap` (in positions) apart; the first of the list wins. The
/// rest stay as minor ticks.
void thinOut(QVector<BarTick> &byImportance, double gap)
{
    QVector<double> taken;
    for (BarTick &tick : byImportance) {
        if (tick.label.isEmpty())
            continue;
        const bool free = std::none_of(taken.cbegin(), taken.cend(),
                                       [&](double other) { return std::abs(other - tick.position) < gap; });
        if (free)
            taken.append(tick.position);
        else
            tick.label.clear();
    }
}

void addLinear(ColorbarScale &scale, double low, double high, int room)
{
    const double range = high - low;
    const double largest = std::max(std::abs(low), std::abs(high));
    int exponent = int(std::floor(std::log10(largest)));
    if (exponent >= -2 && exponent <= 4)
        exponent = 0; // short enough as they are
    else
        scale.header = QStringLiteral("×10") + superscript(exponent);
    const double unit = std::pow(10.0, exponent);

    const double step = roundStep(range / std::max(1, room));
    const int stepDecimals = std::clamp(int(-std::floor(std::log10(step / unit) + 1e-9)), 0, 12);
    const auto label = [&](double value, int decimals) {
        QString text = QString::number(value / unit, 'f', decimals);
        return text.toDouble() == 0.0 && text.startsWith(QLatin1Char('-')) ? text.mid(1) : text;
    };
    // The limits need one decimal more than the round numbers when rounding would move them visibly.
    const auto limitLabel = [&](double value) {
        const QString coarse = label(value, stepDecimals);
        const bool exact = std::abs(coarse.toDouble() * unit - value) <= range * 0.01;
        return exact ? coarse : label(value, stepDecimals + 1);
    };
    scale.ticks = {{low, 0.0, limitLabel(low)}, {high, 1.0, limitLabel(high)}};
    const double first = std::ceil(low / step - 1e-9);
    for (int i = 0; i <= room + 1; ++i) {
        const double value = (first + i) * step;
        if (value > high + range * 1e-9)
            break;
        scale.ticks.append({value, std::clamp((value - low) / range, 0.0, 1.0), label(value, stepDecimals)});
    }
}

void addLogarithmic(ColorbarScale &scale, double low, double high)
{
    const double bottom = std::log10(low);
    const double range = std::log10(high) - bottom;
    const auto position = [&](double value) {
        return std::clamp((std::log10(value) - bottom) / range, 0.0, 1.0);
    };
    scale.ticks = {{low, 0.0, logLabel(low)}, {high, 1.0, logLabel(high)}};
    // Decades first, then 2 and 5, then ticks without a number: thinning keeps the first that fit.
    for (int decade = int(std::ceil(bottom - 1e-9)); decade <= std::log10(high) + 1e-9; ++decade) {
        const double value = std::pow(10.0, decade);
        scale.ticks.append({value, position(value), logLabel(value)});
    }
    if (range > 12.0)
        return;
    for (const int factor : {2, 5, 3, 4, 6, 7, 8, 9}) {
        for (int decade = int(std::floor(bottom)); decade <= std::log10(high); ++decade) {
            const double value = factor * std::pow(10.0, decade);
            if (value <= low || value >= high)
                continue;
            const bool numbered = range <= 2.0 && (factor == 2 || factor == 5);
            scale.ticks.append({value, position(value), numbered ? logLabel(value) : QString()});
        }
    }
}

} // namespace

ColorbarScale ColorbarScale::of(const CILPalette &palette, double length, double lineHeight)
{
    ColorbarScale scale;
    const CILPalette::ShownLimits limits = palette.shownLimits();
    const double low = limits.lower;
    const double high = limits.upper;
    if (!std::isfinite(low) || !std::isfinite(high)) {
        scale.ticks.append({0.0, 0.5, QStringLiteral("n/a")});
        return scale;
    }
    const double gap = lineHeight / std::max(1.0, length);
    if (!std::isfinite(high - low)) {
        scale.ticks = {{low, 0.0, QString::number(low, 'g', 3)}, {high, 1.0, QString::number(high, 'g', 3)}};
        thinOut(scale.ticks, gap);
        return scale;
    }
    // Limits nearer to each other than any float tells apart are one number.
    if (!(high - low > std::max(1e-300, 1e-10 * std::max(std::abs(low), std::abs(high))))) {
        scale.ticks.append({low, 0.5, QString::number(low, 'g', 5)});
        return scale;
    }
    const int room = std::clamp(int(length / (1.6 * std::max(1.0, lineHeight))), 1, 10);
    if (limits.isLogarithmic)
        addLogarithmic(scale, low, high);
    else
        addLinear(scale, low, high, room);
    thinOut(scale.ticks, gap);
    std::stable_sort(scale.ticks.begin(), scale.ticks.end(),
                     [](const BarTick &a, const BarTick &b) { return a.position < b.position; });
    return scale;
}
