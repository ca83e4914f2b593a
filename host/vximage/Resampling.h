// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/PixelStore.h"

namespace il {

/// Whether resample() knows the mode.
bool isKnownResampleMode(int mode);

/// The pixels of `source` on a grid of width x height, at least 1 x 1, as pixels of `type`: its own or float.
/// Means are taken in double precision (of small integers exactly) and rounded once, to integers to nearest
/// with ties to even; a mean that a NaN takes part in is a NaN. Throws std::bad_alloc.
StorePtr resample(PixelStore &source, std::uint32_t width, std::uint32_t height, int mode, VXSDataTypes type);

} // namespace il
