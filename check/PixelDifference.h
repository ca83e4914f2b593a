// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/DisplayUnits.h"
#include "host/vximage/CILImage.h"

#include <cstddef>
#include <QString>

/// How two images differ, bit by bit: NaN equals NaN whatever its payload, 0 and -0 differ.
struct PixelDifference
{
    QString shape;             ///< how size or pixel type differ; then nothing else was compared
    std::size_t count = 0;     ///< pixels
    std::size_t different = 0; ///< of them
    std::size_t oneFinite = 0; ///< of the different: finite in one image only, or unlike infinities
    double largest = 0.0;      ///< difference of two finite pixels

    bool areSame() const { return shape.isEmpty() && different == 0; }
    /// "3 of 1024 pixels differ, by at most 2.5 [counts]."
    QString text(tag_edisplayunit unit) const;

    /// Both have to be 32-bit float.
    static PixelDifference compare(const CILImage &stored, const CILImage &computed);
};
