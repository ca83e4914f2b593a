// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

/// How many finite pixels of an image are at or above a level, in the unit of the pixels.
///
///     const std::size_t saturated = ilCountAtOrAbove(raw, 65000.0);
///
/// A level that is not a number counts nothing.
VXIMAGE_EXPORT std::size_t ilCountAtOrAbove(const CILImage &image, double level);
