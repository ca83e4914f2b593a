// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <QFile>
#include <random>
#include <vector>

/// Images for tests, and what is expected of them, from plain vectors.
namespace maker {

template <typename T>
CILImage image(VXSDataTypes type, std::uint32_t width, std::uint32_t height, const std::vector<T> &values)
{
    CILImage filled;
    filled.InitWithType(type, width, height);
    std::copy(values.begin(), values.end(), static_cast<T *>(filled.get_data()));
    return CILImage(filled); // a copy, into which nobody has a pointer
}

inline CILImage floats(std::uint32_t width, std::uint32_t height, const std::vector<float> &values)
{
    return image(VXS_FLOAT, width, height, values);
}

inline std::vector<double> values(const CILImage &image)
{
    std::vector<double> all;
    for (std::uint32_t y = 0; y < image.getHeight(); ++y) {
        for (std::uint32_t x = 0; x < image.getWidth(); ++x)
            all.push_back(image.pixelAt(x, y));
    }
    return all;
}

/// Random values 0 to `most` in an image of any type.
inline CILImage random(VXSDataTypes type, std::uint32_t width, std::uint32_t height, std::uint32_t most,
                       unsigned seed)
{
    std::mt19937 engine(seed);
    std::uniform_int_distribution<std::uint32_t> number(0, most);
    std::vector<double> all(std::size_t(width) * height);
    for (double &v : all)
        v = double(number(engine));
    CILImage result = image(VXS_DOUBLE, width, height, all);
    result.ChangeType(type);
    return result;
}

/// Every kind of float: ordinary ones, denormals, zeros of both signs, infinities, at most every 16th a NaN.
inline std::vector<float> awkward(std::size_t n, unsigned seed)
{
    const float inf = std::numeric_limits<float>::infinity();
    const float special[] = {0.0f,
                             -0.0f,
                             inf,
                             -inf,
                             std::numeric_limits<float>::denorm_min(),
                             -1e-40f,
                             3e-39f,
                             std::numeric_limits<float>::max(),
                             -std::numeric_limits<float>::max(),
                             std::numeric_limits<float>::min(),
                             std::numeric_limits<float>::quiet_NaN()};
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> number(-1e4f, 1e4f);
    std::vector<float> all(n);
    for (float &v : all)
        v = engine() % 4 == 0 ? special[engine() % (sizeof special / sizeof *special)] : number(engine);
    return all;
}

/// The bytes of a file; empty when it cannot be read.
inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace maker
