// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/PixelStore.h"

namespace il {

/// Whether resample() knows the mode.
bool isKnownResampleMode(int mode);

/// How many old pixels of an axis binning adds up to a new one: old / new truncated, 1 for an axis that grows.
std::uint32_t pixelsAddedUp(std::uint32_t oldSize, std::uint32_t newSize);

/// The pixels of `source` on the wanted grid, at least 1 x 1, as pixels of the wanted type: its own or float.
/// Means and sums are taken in double precision (of small integers exactly) and rounded once, to integers to
/// nearest with ties to even; one that a NaN takes part in is a NaN. Throws std::bad_alloc.
StorePtr resample(PixelStore &source, const Resampling &wanted);

} // namespace il
