// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/PaletteUniforms.h"

#include "host/vximage/CILPalette.h"

#include <algorithm>
#include <cmath>

PaletteUniforms::PaletteUniforms(const CILPalette &palette)
{
    const CILPalette::ShownLimits limits = palette.shownLimits();
    const double lower = limits.lower;
    const double upper = limits.upper;
    if (!std::isfinite(lower) || !std::isfinite(upper) || !(upper > lower)) {
        mode = STEP;
        low = float(lower);
        high = float(upper);
        // The palette itself says what it makes of a number between such limits.
        middle = float(palette.position(std::isfinite(lower) && upper > lower   ? lower + 1.0
                                        : std::isfinite(upper) && upper > lower ? upper - 1.0
                                        : std::isfinite(lower)                  ? lower
                                                                                : 0.0));
        return;
    }
    if (limits.isLogarithmic) {
        mode = LOGARITHMIC;
        low = float(std::log2(lower));
        span = float(std::log2(upper) - std::log2(lower));
        return;
    }
    const double largest = std::max(std::abs(lower), std::abs(upper));
    if (largest > 1e37)
        unit = 1e-10f;
    else if (largest < 1e-25)
        unit = 1e20f;
    low = float(lower * double(unit));
    span = float(upper * double(unit) - lower * double(unit));
}
