// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/VXImageTypes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace il {

/// Where the new pixels of one axis come from: new pixel i is the sum over j < count(i) of weight(i)[j] times
/// old pixel first(i) + j. Weights are positive and add up to 1.
class ResamplingAxis
{
public:
    /// Sizes are at least 1; the mode is a known one.
    ResamplingAxis(std::uint32_t oldSize, std::uint32_t newSize, int mode);

    std::uint32_t size() const { return std::uint32_t(m_first.size()); }
    std::uint32_t first(std::uint32_t i) const { return m_first[i]; }
    std::uint32_t count(std::uint32_t i) const { return m_offset[i + 1] - m_offset[i]; }
    const double *weights(std::uint32_t i) const { return m_weights.data() + m_offset[i]; }
    const std::vector<std::uint32_t> &firsts() const { return m_first; }

    /// f when new pixel i is the plain mean of old pixels i f ... i f + f - 1; else 0.
    std::uint32_t box() const { return m_box; }
    /// Whether every new pixel is one old pixel.
    bool isPicked() const { return m_picked; }

private:
    void pick(std::uint32_t oldSize, std::uint32_t newSize);
    void average(std::uint32_t oldSize, std::uint32_t newSize);
    void boxes(std::uint32_t factor, std::uint32_t newSize);
    void begin(std::uint32_t first);
    void tap(double weight);
    void end();

    std::vector<std::uint32_t> m_first;
    std::vector<std::uint32_t> m_offset{0};
    std::vector<double> m_weights;
    std::uint32_t m_box = 0;
    bool m_picked = false;
};

} // namespace il
