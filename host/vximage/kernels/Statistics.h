// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/VXImageTypes.h"

#include <cstddef>

namespace il {

/// What is known of the finite pixels of an image.
struct Statistics
{
    float min = 0.0f;
    float max = 0.0f;
    bool hasFinite = false;
};

/// Gathers statistics over pieces that several threads have seen.
class StatisticsAccumulator
{
public:
    void add(float lo, float hi);
    Statistics result() const;

private:
    float m_lo = __builtin_inff();
    float m_hi = -__builtin_inff();
};

/// One pass over n pixels.
Statistics statisticsOf(const void *pixels, VXSDataTypes type, std::size_t n);

} // namespace il
