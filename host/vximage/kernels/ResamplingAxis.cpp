// SPDX-License-Identifier: MIT
#include "host/vximage/kernels/ResamplingAxis.h"

#include <algorithm>

namespace il {

ResamplingAxis::ResamplingAxis(std::uint32_t oldSize, std::uint32_t newSize, int mode)
{
    m_first.reserve(newSize);
    m_offset.reserve(std::size_t(newSize) + 1);
    const bool grows = newSize > oldSize;
    if (mode == IL_RESAMPLE_NEAREST_MASK || grows) // a mean over less than a pixel is that pixel
        pick(oldSize, newSize);
    else if (mode == IL_RESAMPLE_BINNING || oldSize % newSize == 0)
        boxes(oldSize / newSize, newSize);
    else
        average(oldSize, newSize);
}

void ResamplingAxis::begin(std::uint32_t first)
{
    m_first.push_back(first);
}

void ResamplingAxis::tap(double weight)
{
    m_weights.push_back(weight);
}

void ResamplingAxis::end()
{
    m_offset.push_back(std::uint32_t(m_weights.size()));
}

void ResamplingAxis::pick(std::uint32_t oldSize, std::uint32_t newSize)
{
    m_picked = true;
    for (std::uint64_t i = 0; i < newSize; ++i) {
        begin(std::uint32_t((2 * i + 1) * oldSize /
                            (2 * std::uint64_t(newSize)))); // floor((i + 1/2) old / new)
        tap(1.0);
        end();
    }
}

void ResamplingAxis::boxes(std::uint32_t factor, std::uint32_t newSize)
{
    m_box = factor;
    m_picked = factor == 1;
    const double weight = 1.0 / factor;
    m_weights.assign(std::size_t(newSize) * factor, weight);
    for (std::uint32_t i = 0; i < newSize; ++i) {
        begin(i * factor);
        m_offset.push_back((i + 1) * factor);
    }
}

void ResamplingAxis::average(std::uint32_t oldSize, std::uint32_t newSize)
{
    // New pixel i covers old positions i old / new to (i + 1) old / new: in units of 1 / new, old pixel p is
    // from p new to (p + 1) new, and all ends are integers.
    for (std::uint64_t i = 0; i < newSize; ++i) {
        const std::uint64_t from = i * oldSize;
        const std::uint64_t to = from + oldSize;
        const std::uint64_t firstPixel = from / newSize;
        begin(std::uint32_t(firstPixel));
        for (std::uint64_t p = firstPixel; p * newSize < to; ++p) {
            const std::uint64_t covered = std::min(to, (p + 1) * newSize) - std::max(from, p * newSize);
            tap(double(covered) / oldSize);
        }
        end();
    }
}

} // namespace il
