// SPDX-License-Identifier: MIT
#include "host/vximage/kernels/Statistics.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/base/PixelTypes.h"
#include "host/vximage/kernels/BlockKernels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <mutex>

namespace il {
namespace {

constexpr std::size_t GRAIN = 16384;

struct Range
{
    float lo = std::numeric_limits<float>::infinity();
    float hi = -std::numeric_limits<float>::infinity();
};

Range rangeOf(const float *p, std::size_t n)
{
    Range r;
    blockKernels().minMax(p, n, &r.lo, &r.hi);
    return r;
}

Range rangeOf(const std::uint8_t *p, std::size_t n)
{
    std::uint8_t lo = 255, hi = 0;
    blockKernels().minMaxUint8(p, n, &lo, &hi);
    return {float(lo), float(hi)};
}

Range rangeOf(const std::uint16_t *p, std::size_t n)
{
    std::uint16_t lo = 65535, hi = 0;
    blockKernels().minMaxUint16(p, n, &lo, &hi);
    return {float(lo), float(hi)};
}

Range rangeOf(const std::uint32_t *p, std::size_t n)
{
    const auto ends = std::minmax_element(p, p + n);
    return {float(*ends.first), float(*ends.second)};
}

Range rangeOf(const double *p, std::size_t n)
{
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    for (std::size_t i = 0; i < n; ++i) {
        if (!std::isfinite(p[i]))
            continue;
        lo = std::min(lo, p[i]);
        hi = std::max(hi, p[i]);
    }
    if (lo > hi)
        return {};
    // A finite pixel beyond the reach of float stays finite.
    const double limit = double(std::numeric_limits<float>::max());
    return {float(std::clamp(lo, -limit, limit)), float(std::clamp(hi, -limit, limit))};
}

} // namespace

void StatisticsAccumulator::add(float lo, float hi)
{
    m_lo = std::min(m_lo, lo);
    m_hi = std::max(m_hi, hi);
}

Statistics StatisticsAccumulator::result() const
{
    if (m_lo > m_hi)
        return {};
    return {m_lo, m_hi, true};
}

Statistics statisticsOf(const void *pixels, VXSDataTypes type, std::size_t n)
{
    return withPixelType(type, [&](auto tag) {
        const auto *p = static_cast<decltype(tag)>(pixels);
        StatisticsAccumulator sum;
        std::mutex mutex;
        parallelFor(n, GRAIN, sizeof *p, [&](std::size_t begin, std::size_t end) {
            const Range r = rangeOf(p + begin, end - begin);
            std::lock_guard<std::mutex> lock(mutex);
            sum.add(r.lo, r.hi);
        });
        return sum.result();
    });
}

} // namespace il
