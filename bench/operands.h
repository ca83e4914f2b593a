// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

#include <cstdint>

/// The constant k of every row.
constexpr float FACTOR = 1.7f;

/// What the formulas are computed from: float images of size x size pixels without a pattern that a processor
/// could learn.
struct Operands
{
    explicit Operands(std::uint32_t size);
    CILImage a, b, counts, tissue;
};

/// Those of that size, kept until another size is asked for.
const Operands &operands(std::uint32_t size);

/// Bright animal on a dark stage, 16 bits.
CILImage photograph(std::uint32_t size);

/// The result's memory is an image's, so that it lies on the same kind of pages.
float *target(CILImage &image, std::uint32_t size);
