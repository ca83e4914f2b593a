// SPDX-License-Identifier: MIT
#include "host/vximage/CILPalette.h"

#include "host/vximage/ColorTables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double LOG_SPAN_SHARE =
    1e-4; // lower limit of a log scale as a share of the upper, where it has none

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

bool sameName(const char *a, const char *b)
{
    while (*a && lowered(*a) == lowered(*b)) {
        ++a;
        ++b;
    }
    return *a == *b;
}

} // namespace

CILPalette::CILPalette() = default;

void CILPalette::SetColorTable(VXS_COLORTABLE_TYPES type, double min, double max, int reversed, int)
{
    m_type = type;
    m_reversed = reversed != 0;
    SetImageMinMax(min, max);
}

void CILPalette::setColorTableType(VXS_COLORTABLE_TYPES type, float min, float max)
{
    m_type = type;
    SetImageMinMax(double(min), double(max));
}

void CILPalette::SetImageMinMax(double min, double max)
{
    m_min = min;
    m_max = max;
}

void CILPalette::setLogScale(int on)
{
    m_log = on != 0;
}

void CILPalette::setReversed(int on)
{
    m_reversed = on != 0;
}

CILPalette::ShownLimits CILPalette::shownLimits() const
{
    ShownLimits limits;
    limits.lower = std::min(m_min, m_max);
    limits.upper = std::max(m_min, m_max);
    limits.isLogarithmic =
        m_log && limits.upper > 0.0; // nothing is positive else: there is no logarithm to take
    if (limits.isLogarithmic && limits.lower <= 0.0)
        limits.lower = limits.upper * LOG_SPAN_SHARE;
    return limits;
}

double CILPalette::position(double value) const
{
    if (!std::isfinite(value))
        return std::numeric_limits<double>::quiet_NaN();
    const auto [low, high, logarithmic] = shownLimits();
    if (low == high)
        return value < low ? 0.0 : value > high ? 1.0 : 0.5;
    if (value <= low)
        return 0.0;
    if (value >= high)
        return 1.0;
    if (logarithmic)
        return (std::log(value) - std::log(low)) / (std::log(high) - std::log(low));
    // Halves, so that limits at both ends of double do not overflow.
    const double share = (value / 2 - low / 2) / (high / 2 - low / 2);
    return std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0.5;
}

CILPalette::Rgb CILPalette::color(double value) const
{
    const double at = position(value);
    if (std::isnan(at))
        return notFiniteColor();
    const il::ColorTable &colors = il::colorTable(m_type);
    const auto index = std::size_t(std::lround(at * double(colors.size() - 1)));
    return colors[m_reversed ? colors.size() - 1 - index : index];
}

std::array<CILPalette::Rgb, 256> CILPalette::table() const
{
    std::array<Rgb, 256> colors = il::colorTable(m_type);
    if (m_reversed)
        std::reverse(colors.begin(), colors.end());
    return colors;
}

CILPalette::Rgb CILPalette::notFiniteColor()
{
    return 0xffc060c0u; // mauve: no table comes near it
}

const char *CILPalette::tableName(VXS_COLORTABLE_TYPES type)
{
    return il::colorTableName(type);
}

VXS_COLORTABLE_TYPES CILPalette::tableOfName(const char *name, VXS_COLORTABLE_TYPES fallback)
{
    for (int code = 0; name && code < VXS_CT_COUNT; ++code) {
        if (sameName(name, il::colorTableName(VXS_COLORTABLE_TYPES(code))))
            return VXS_COLORTABLE_TYPES(code);
    }
    return fallback;
}

bool CILPalette::operator==(const CILPalette &other) const
{
    return m_type == other.m_type && m_min == other.m_min && m_max == other.m_max && m_log == other.m_log &&
           m_reversed == other.m_reversed;
}
