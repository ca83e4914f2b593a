// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

#include <cmath>
#include <cstring>
#include <QString>
#include <vector>

/// Comparing images with plain vectors of floats, and making them.
namespace pixelcompare {

using Pixels = std::vector<float>;

inline CILImage imageOf(const Pixels &pixels, std::uint32_t width, std::uint32_t height, float binning = 1.0f)
{
    CILImage written;
    written.InitWithType(VXS_FLOAT, width, height);
    if (!pixels.empty())
        std::memcpy(written.get_data(), pixels.data(), pixels.size() * sizeof(float));
    written.setBinningFactor(binning);
    return CILImage(static_cast<const CILImage &>(written));
}

inline Pixels pixelsOf(const CILImage &image)
{
    if (image.isEmpty() || image.getType() != VXS_FLOAT)
        return {};
    const float *begin = image.pixels<float>();
    return Pixels(begin, begin + image.pixelCount());
}

/// The same number with the same bits; for a NaN being one is enough, because which of two NaNs an operation
/// hands on is the processor's choice.
inline bool sameFloat(float a, float b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Where a float image differs from what is expected; an empty text when it does not.
inline QString difference(const CILImage &image, const Pixels &expected, std::uint32_t width,
                          std::uint32_t height)
{
    if (image.getWidth() != width || image.getHeight() != height)
        return QString("%1 x %2 pixels").arg(image.getWidth()).arg(image.getHeight());
    if (image.getType() != VXS_FLOAT)
        return QString("pixel type %1").arg(int(image.getType()));
    const float *pixels = image.pixels<float>();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!sameFloat(pixels[i], expected[i]))
            return QString("pixel %1 is %2, expected %3")
                .arg(i)
                .arg(double(pixels[i]), 0, 'g', 9)
                .arg(double(expected[i]), 0, 'g', 9);
    }
    return QString();
}

inline QString difference(const CILImage &image, const CILImage &expected)
{
    return difference(image, pixelsOf(expected), expected.getWidth(), expected.getHeight());
}

/// The same with a tolerance on every pixel.
inline QString differenceAbove(double tolerance, const CILImage &image, const Pixels &expected,
                               std::uint32_t width, std::uint32_t height)
{
    if (image.getWidth() != width || image.getHeight() != height || image.getType() != VXS_FLOAT)
        return difference(image, expected, width, height);
    const float *pixels = image.pixels<float>();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!(std::abs(double(pixels[i]) - double(expected[i])) <= tolerance))
            return QString("pixel %1 is %2, expected %3")
                .arg(i)
                .arg(double(pixels[i]))
                .arg(double(expected[i]));
    }
    return QString();
}

} // namespace pixelcompare
