// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/vximage_global.h"
#include "host/vximage/base/VXImageTypes.h"

#include <array>
#include <cstdint>

/// How an image is coloured: a colour table, the limits that it spans, log scale, reversed. A value type.
///
///     CILPalette palette;
///     palette.SetColorTable(VXS_CT_YELLOWHOT, image.getMin(), image.getMax(), 0, 0);
///     palette.setLogScale(1);
///     const CILPalette::Rgb color = palette.color(image.pixelAt(x, y));
///
/// The mapping, the same for every painter: a value v gets the colour at the place (v - min) / (max - min) of
/// the table, 0 the first and 1 the last, kept within these; on a log scale
/// (log v - log min) / (log max - log min), where a min that is not positive is replaced by max / 10000, and
/// a max that is not positive makes the scale linear. Limits in the wrong order are taken in the right order;
/// with equal limits values below are first, above last, equal ones the middle. A reversed table runs
/// backwards. A pixel that is not finite gets notFiniteColor(), which no table holds. Limits are in the unit
/// of the pixels, and a palette never changes one.
class VXIMAGE_EXPORT CILPalette
{
public:
    using Rgb = std::uint32_t; ///< 0xffRRGGBB

    CILPalette();

    /// Sets table, limits and direction (0 or 1); log scale stays. The last argument is not used and kept for
    /// the interface. An unknown table is painted as VXS_CT_GRAYS.
    void SetColorTable(VXS_COLORTABLE_TYPES type, double min, double max, int reversed, int unused);
    /// Table and limits only, as colour bars use it.
    void setColorTableType(VXS_COLORTABLE_TYPES type, float min, float max);
    /// Changes only the limits.
    void SetImageMinMax(double min, double max);
    void setLogScale(int on);
    void setReversed(int on);

    double getImageMin() const { return m_min; }
    double getImageMax() const { return m_max; }
    VXS_COLORTABLE_TYPES getColorTableType() const { return m_type; }
    bool isLogScale() const { return m_log; }
    bool isReversed() const { return m_reversed; }

    /// The limits between which the colours really run, the lower one first, after the rules above for log
    /// scales and limits in the wrong order.
    struct ShownLimits
    {
        double lower = 0.0;
        double upper = 0.0;
        bool isLogarithmic = false;
    };
    ShownLimits shownLimits() const;

    /// Position of a value in the table, 0 to 1, by the mapping above but without reversing; NaN for a value
    /// that is not finite.
    double position(double value) const;
    /// Colour of a value.
    Rgb color(double value) const;
    /// The 256 colours from lower to upper limit, reversed when the palette is.
    std::array<Rgb, 256> table() const;
    static Rgb notFiniteColor();
    /// "Grays", "Rainbow", ...: the stored names; null for an unknown code.
    static const char *tableName(VXS_COLORTABLE_TYPES type);
    /// The code of a stored name (any case), or `fallback`.
    static VXS_COLORTABLE_TYPES tableOfName(const char *name, VXS_COLORTABLE_TYPES fallback);

    bool operator==(const CILPalette &other) const;
    bool operator!=(const CILPalette &other) const { return !(*this == other); }

private:
    VXS_COLORTABLE_TYPES m_type = VXS_CT_RAINBOW;
    double m_min = 0.0;
    double m_max = 0.0;
    bool m_log = false;
    bool m_reversed = false;
};
