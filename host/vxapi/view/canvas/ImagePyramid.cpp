// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/ImagePyramid.h"

#include "host/vximage/CILImage.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

/// 1 for a finite value, 0 else; by its bits, which the compiler turns into vector code.
inline std::uint32_t isFinite(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return (bits & 0x7f800000u) != 0x7f800000u ? 1u : 0u;
}

/// Means of the finite ones of factor x factor pixels, NaN where half of them or more are not finite; the
/// last block of a row or column takes what remains at the edge as well.
template <typename T>
ImagePyramid::Level blockMeans(const T *source, int width, int height, int factor)
{
    ImagePyramid::Level level;
    // Rounded down, as OpenGL wants the sizes of its levels.
    level.width = std::max(1, width / factor);
    level.height = std::max(1, height / factor);
    level.pixels.resize(std::size_t(level.width) * level.height);
    std::vector<double> sums(width);
    std::vector<std::uint32_t> counts(width);
    for (int y = 0; y < level.height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0);
        std::fill(counts.begin(), counts.end(), 0u);
        const int last = y + 1 == level.height ? height : (y + 1) * factor;
        for (int row = y * factor; row < last; ++row) {
            const T *line = source + std::size_t(row) * width;
            for (int x = 0; x < width; ++x) {
                const float value = float(line[x]);
                const std::uint32_t finite = isFinite(value);
                sums[x] += finite ? double(value) : 0.0;
                counts[x] += finite;
            }
        }
        float *target = level.pixels.data() + std::size_t(y) * level.width;
        for (int x = 0; x < level.width; ++x) {
            double sum = 0.0;
            std::uint32_t count = 0;
            const int end = x + 1 == level.width ? width : (x + 1) * factor;
            for (int i = x * factor; i < end; ++i) {
                sum += sums[i];
                count += counts[i];
            }
            // A block is shown as what most of it is.
            const int rows = last - y * factor;
            const bool isFiniteMostly = 2 * std::int64_t(count) > std::int64_t(rows) * (end - x * factor);
            target[x] = isFiniteMostly ? float(sum / count) : std::numeric_limits<float>::quiet_NaN();
        }
    }
    return level;
}

template <typename T>
ImagePyramid::Level firstLevel(const CILImage &image, int limit)
{
    const int width = int(image.getWidth());
    const int height = int(image.getHeight());
    const T *pixels = image.pixels<T>();
    const int factor = (std::max(width, height) + limit - 1) / limit;
    if (factor > 1)
        return blockMeans(pixels, width, height, factor);
    ImagePyramid::Level level{width, height, {}};
    level.pixels.resize(image.pixelCount());
    std::transform(pixels, pixels + image.pixelCount(), level.pixels.begin(),
                   [](T value) { return float(value); });
    return level;
}

ImagePyramid::Level firstLevel(const CILImage &image, int limit)
{
    switch (image.getType()) {
    case VXS_UINT8:
    case VXS_MASK:
        return firstLevel<std::uint8_t>(image, limit);
    case VXS_UINT16:
        return firstLevel<std::uint16_t>(image, limit);
    case VXS_UINT32:
        return firstLevel<std::uint32_t>(image, limit);
    case VXS_FLOAT:
        return firstLevel<float>(image, limit);
    case VXS_DOUBLE:
        return firstLevel<double>(image, limit);
    }
    return {};
}

} // namespace

bool ImagePyramid::load(const CILImage *image, int limit)
{
    if (!image || image->isEmpty()) {
        m_levels.clear();
        m_contentId = 0;
        return false;
    }
    const std::uint64_t id = image->contentId();
    if (id != 0 && id == m_contentId && limit == m_limit && !m_levels.empty())
        return false;
    m_contentId = id;
    m_limit = limit;
    ++m_serial;
    m_levels.clear();
    m_levels.push_back(firstLevel(*image, limit));
    constexpr int SMALLEST = 64;
    while (std::min(m_levels.back().width, m_levels.back().height) >= 2 * SMALLEST) {
        const Level &above = m_levels.back();
        m_levels.push_back(blockMeans(above.pixels.data(), above.width, above.height, 2));
    }
    return true;
}

int ImagePyramid::levelFor(const QSize &device) const
{
    int best = 0;
    for (int i = 1; i < int(m_levels.size()); ++i) {
        if (m_levels[i].width >= device.width() && m_levels[i].height >= device.height())
            best = i;
    }
    return best;
}
