// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <cstdint>
#include <QRect>
#include <vector>

class CILImage;

/// An image as 32-bit floats in halving steps, so that a small picture shows the mean of the pixels under
/// each of its own and not one picked at random. A mean is that of the finite pixels; where there are none,
/// it is a NaN.
///
/// Level 0 is the image itself, or its block means when it is larger than the limit; both painters read the
/// same levels, which is why they paint the same picture.
class VXAPI_EXPORT ImagePyramid
{
public:
    struct Level
    {
        int width = 0;
        int height = 0;
        std::vector<float> pixels;
    };

    /// Reads the image anew unless it is still the one that was read last (see CILImage::contentId()).
    /// `limit` is the largest width and height of level 0. Returns whether it was read.
    bool load(const CILImage *image, int limit);
    bool isEmpty() const { return m_levels.empty(); }
    const std::vector<Level> &levels() const { return m_levels; }
    /// A number that changes with every reading.
    quint64 serial() const { return m_serial; }
    /// The level for a picture of that many device pixels: the smallest that still has a pixel for each of
    /// them.
    int levelFor(const QSize &device) const;

private:
    std::vector<Level> m_levels;
    std::uint64_t m_contentId = 0;
    int m_limit = 0;
    quint64 m_serial = 0;
};
