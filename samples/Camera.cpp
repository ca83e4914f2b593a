// SPDX-License-Identifier: MIT
#include "samples/Camera.h"

#include <algorithm>
#include <cmath>

double Camera::vignetting(int column, int row) const
{
    // cos^4 of the viewing angle, with the corner at 28 degrees.
    const double half = 0.5 * std::max(width, height);
    const double dx = (column + 0.5 - 0.5 * width) / half;
    const double dy = (row + 0.5 - 0.5 * height) / half;
    const double tangent2 = (dx * dx + dy * dy) / 2.0 * 0.2827;
    return 1.0 / ((1.0 + tangent2) * (1.0 + tangent2));
}

void Camera::position(int column, int row, double *x, double *y) const
{
    const double pixel = fieldOfView / width;
    *x = (column + 0.5 - 0.5 * width) * pixel;
    *y = (row + 0.5 - 0.5 * height) * pixel;
}

CILImage Camera::made(VXSDataTypes type, const std::function<double(int, int)> &value) const
{
    CILImage image;
    image.InitWithType(type, std::uint32_t(width), std::uint32_t(height));
    void *data = image.get_data();
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const std::size_t at = std::size_t(row) * std::size_t(width) + std::size_t(column);
            const double v = value(column, row);
            if (type == VXS_UINT16)
                static_cast<std::uint16_t *>(data)[at] =
                    std::uint16_t(std::clamp(std::floor(v + 0.5), 0.0, 65535.0));
            else
                static_cast<float *>(data)[at] = float(v);
        }
    }
    // A copy is an image of its own: nobody holds a pointer into its pixels.
    CILImage settled(static_cast<const CILImage &>(image));
    settled.setBinningFactor(float(binning));
    return settled;
}

CILImage Camera::expectedCounts(const Scene &scene) const
{
    const double sensorPixels = binning * binning;
    return made(VXS_FLOAT, [&](int column, int row) {
        double x = 0.0;
        double y = 0.0;
        position(column, row, &x, &y);
        return scene(x, y) * sensorPixels * vignetting(column, row) / GAIN;
    });
}

CILImage Camera::exposure(const CILImage &expected, Random &random) const
{
    return made(VXS_UINT16, [&](int column, int row) {
        const double electrons = expected.pixelAt(std::uint32_t(column), std::uint32_t(row)) * GAIN;
        return OFFSET + (random.poisson(electrons) + READ_NOISE * random.normal()) / GAIN;
    });
}

CILImage Camera::flatField() const
{
    return made(VXS_FLOAT, [this](int column, int row) { return vignetting(column, row); });
}

CILImage Camera::background() const
{
    return made(VXS_UINT16, [](int, int) { return OFFSET; });
}

double Camera::variance(double expectedCounts)
{
    return expectedCounts / GAIN + READ_NOISE * READ_NOISE / (GAIN * GAIN) + 1.0 / 12.0;
}
