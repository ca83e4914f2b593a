// SPDX-License-Identifier: MIT
#include "host/vximage/PixelCount.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/base/PixelTypes.h"

#include <atomic>
#include <limits>

namespace {

template <typename T>
std::size_t countOf(const T *pixels, std::size_t begin, std::size_t end, double level)
{
    std::size_t count = 0;
    for (std::size_t i = begin; i < end; ++i) {
        const auto value = double(pixels[i]);
        count += std::size_t(value >= level && value <= std::numeric_limits<double>::max());
    }
    return count;
}

} // namespace

std::size_t ilCountAtOrAbove(const CILImage &image, double level)
{
    constexpr std::size_t GRAIN = 4096;
    std::atomic<std::size_t> count{0};
    il::withPixelType(image.getType(), [&](auto tag) {
        const auto *pixels = static_cast<decltype(tag)>(image.get_data());
        il::parallelFor(
            image.pixelCount(), GRAIN, il::bytesPerPixel(image.getType()),
            [&](std::size_t begin, std::size_t end) { count += countOf(pixels, begin, end, level); });
    });
    return count;
}
