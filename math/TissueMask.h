// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

namespace imagemath {

/// The tissue in a photograph as a factor for a luminescent image: Otsu's threshold, a 3 x 3 opening, then
/// resampled to width x height (32-bit float, 0 to 1, fractions where the resampling averages over an edge).
/// A photograph that is wider than the grid is area-averaged, any other (equally wide ones too) takes the
/// nearest pixel; the width alone decides.
CILImage tissueMaskOfPhotograph(const CILImage &photograph, std::uint32_t width, std::uint32_t height);

/// The pixel value of a threshold that is given as a percentage of the image's range; all in single
/// precision.
float pixelValueOfPercentage(float percentage, float minimum, float maximum);

/// Remembers the last tissue mask, because neither k nor the operands' values change it.
class TissueMaskMemo
{
public:
    /// The mask of that photograph on that grid, computed only when the photograph's pixels or the grid are
    /// others than before.
    const CILImage &mask(const CILImage &photograph, std::uint32_t width, std::uint32_t height);

private:
    std::uint64_t m_photograph = 0;
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    CILImage m_mask;
};

} // namespace imagemath
