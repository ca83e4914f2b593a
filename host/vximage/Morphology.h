// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/PixelStore.h"

namespace il {

enum class Morphology { Erode, Dilate };

/// Smallest or largest pixel of the 3 x 3 square around each pixel, edges replicated. For pixels of one byte
/// (isByte()) alone: what is cleaned up this way are masks. Throws std::bad_alloc.
StorePtr morph3x3(PixelStore &source, Morphology operation);

} // namespace il
