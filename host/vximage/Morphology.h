// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/PixelStore.h"

namespace il {

enum class Morphology { Erode, Dilate };

/// Smallest or largest pixel of the width x height rectangle around each pixel (odd sizes), edges replicated.
/// A NaN takes part only where there is nothing else. Throws std::bad_alloc.
StorePtr morph(PixelStore &source, Morphology operation, std::uint32_t width, std::uint32_t height);

} // namespace il
