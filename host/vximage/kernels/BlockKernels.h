// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/vximage_global.h"

#include <cstddef>
#include <cstdint>

namespace il {

/// The inner loops over a block of pixels that fits the first-level cache, compiled once for the base
/// processor and once for AVX2. Every one rounds each operation to float on its own, in both forms, so that
/// their results are the same bits (but for sign and payload of a NaN, which IEEE 754 leaves open). `out` may
/// be one of the inputs (the same pixels, not shifted). n may be 0, and no pointer need be aligned but
/// stream()'s.
struct BlockKernels
{
    using Unary = void (*)(const float *in, float k, float *out, std::size_t n);
    using UnaryDouble = void (*)(const float *in, double k, float *out, std::size_t n);
    using Binary = void (*)(const float *a, const float *b, float *out, std::size_t n);
    using Ternary = void (*)(const float *in, float k, const float *b, float *out, std::size_t n);

    Unary scale;             ///< in * k
    UnaryDouble scaleDouble; ///< in * k in double precision, rounded
    Unary subtractValue;     ///< in - k
    UnaryDouble subtractValueDouble;
    Binary add, subtract, multiply, divide; ///< a op b
    Ternary scaleAdd;                       ///< in * k + b
    Ternary scaleSubtract;                  ///< in * k - b
    Ternary scaleSubtractFrom;              ///< b - in * k
    Ternary scaleMultiply;                  ///< in * k * b
    Ternary divideScale;                    ///< in / b * k

    /// Lowers lo[0] and raises hi[0] to the smallest and largest finite value; which of two zeros is left
    /// open.
    void (*minMax)(const float *in, std::size_t n, float *lo, float *hi);
    /// The same of values that are below `ceiling`.
    void (*minMaxBelow)(const float *in, std::size_t n, float ceiling, float *lo, float *hi);
    /// How many values are >= level and finite and < ceiling; n below 2^32.
    std::size_t (*countFrom)(const float *in, std::size_t n, float level, float ceiling);
    /// Class 0 to 255 of each value: the integer part of (in - lo) * scale, in single precision, at most 255.
    /// For finite values that are not below lo, and a product within the reach of int.
    void (*classify)(const float *in, float lo, float scale, std::uint8_t *out, std::size_t n);

    void (*fromUint8)(const std::uint8_t *in, float *out, std::size_t n);
    void (*fromUint16)(const std::uint16_t *in, float *out, std::size_t n);
    void (*above)(const float *in, float t, float *out, std::size_t n); ///< 1 where in > t, else 0
    void (*aboveBytes)(const float *in, float t, std::uint8_t *out, std::size_t n); ///< the same as a mask
    void (*aboveUint8)(const std::uint8_t *in, int t, std::uint8_t *out, std::size_t n);   ///< t 0 to 255
    void (*aboveUint16)(const std::uint16_t *in, int t, std::uint8_t *out, std::size_t n); ///< t 0 to 65535
    void (*minMaxUint16)(const std::uint16_t *in, std::size_t n, std::uint16_t *lo, std::uint16_t *hi);
    void (*minMaxUint8)(const std::uint8_t *in, std::size_t n, std::uint8_t *lo, std::uint8_t *hi);

    void (*minBytes)(const std::uint8_t *a, const std::uint8_t *b, const std::uint8_t *c, std::uint8_t *out,
                     std::size_t n); ///< smallest of three
    void (*maxBytes)(const std::uint8_t *a, const std::uint8_t *b, const std::uint8_t *c, std::uint8_t *out,
                     std::size_t n);
    /// out[i] = mean of the 2 x 2 bytes at 2 i of two rows, which have 2 n each.
    void (*mean2x2Bytes)(const std::uint8_t *row0, const std::uint8_t *row1, float *out, std::size_t n);

    /// Copies past the caches; dst on a 16-byte boundary. streamFence() after the last.
    void (*stream)(const float *src, float *dst, std::size_t n);
    void (*streamFence)();
};

/// The form for the processor that the program runs on.
const BlockKernels &blockKernels();

/// The forms themselves, for tests. The second is null where the processor cannot run it.
VXIMAGE_EXPORT const BlockKernels &baseBlockKernels();
VXIMAGE_EXPORT const BlockKernels *avx2BlockKernels();

} // namespace il
