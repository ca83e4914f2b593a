// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/PixelTypes.h"

#include <cstddef>
#include <cstdint>

namespace il {

/// n pixels of that type as floats, on the calling thread.
void toFloat(const void *in, VXSDataTypes type, float *out, std::size_t n);

/// n pixels from one type to another. To an integer: rounded to nearest, ties to even, clamped; NaN gives 0.
/// To a mask: 1 where the pixel is not 0.
void convert(const void *in, VXSDataTypes from, void *out, VXSDataTypes to, std::size_t n);

/// A double as a pixel of that integer or float type, by the rules of convert().
template <typename T>
T roundedTo(double value);

} // namespace il
