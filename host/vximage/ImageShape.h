// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

#include <cmath>

/// Whether images lie on one grid, or at least show one field.
inline bool haveSameSize(const CILImage &one, const CILImage &other)
{
    return one.getWidth() == other.getWidth() && one.getHeight() == other.getHeight();
}

/// Binning drops what is left over at the edge, so a height that is off by less than a pixel of `one` is the
/// same. Not for images without pixels.
inline bool haveSameAspectRatio(const CILImage &one, const CILImage &other)
{
    const double height = double(one.getWidth()) * other.getHeight() / other.getWidth();
    return std::abs(height - double(one.getHeight())) < 1.0;
}
