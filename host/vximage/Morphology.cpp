// SPDX-License-Identifier: MIT
#include "host/vximage/Morphology.h"

#include "host/vximage/BlockKernels.h"
#include "host/vximage/Parallel.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <vector>

namespace il {
namespace {

template <typename T>
T better(Morphology operation, T a, T b)
{
    if constexpr (std::is_floating_point_v<T>) {
        if (a != a)
            return b;
        if (b != b)
            return a;
    }
    return operation == Morphology::Erode ? (b < a ? b : a) : (b > a ? b : a);
}

/// Row of that number, the first or last one outside.
template <typename T>
const T *rowAt(const T *in, std::size_t width, std::int64_t row, std::int64_t height)
{
    return in + std::size_t(std::clamp<std::int64_t>(row, 0, height - 1)) * width;
}

/// 3 x 3 on bytes: the best of three rows into a line with a replicated pixel at each end, then of three
/// neighbours.
void morph3x3Bytes(const std::uint8_t *in, std::uint8_t *out, std::size_t width, std::size_t height,
                   Morphology operation, std::vector<std::uint8_t> &lines, std::size_t lineLength,
                   std::size_t bands)
{
    const auto best = operation == Morphology::Erode ? blockKernels().minBytes : blockKernels().maxBytes;
    parallelFor(bands, 1, 2 * width * height / bands, [&](std::size_t begin, std::size_t end) {
        std::uint8_t *line = lines.data() + begin * lineLength;
        for (std::size_t y = height * begin / bands; y < height * end / bands; ++y) {
            const auto row = [&](std::int64_t dy) {
                return rowAt(in, width, std::int64_t(y) + dy, std::int64_t(height));
            };
            best(row(-1), row(0), row(1), line + 1, width);
            line[0] = line[1];
            line[width + 1] = line[width];
            best(line, line + 1, line + 2, out + y * width, width);
        }
    });
}

/// Any rectangle and type: down the columns, then along the rows.
template <typename T>
void morphAny(const T *in, T *out, std::int64_t width, std::int64_t height, Morphology operation,
              std::int64_t reachX, std::int64_t reachY, std::vector<T> &lines, std::size_t bands)
{
    parallelFor(bands, 1, sizeof(T) * std::size_t(width * height) / bands * std::size_t(reachX + reachY),
                [&](std::size_t begin, std::size_t end) {
                    T *line = lines.data() + begin * std::size_t(width);
                    const auto first = std::int64_t(std::size_t(height) * begin / bands);
                    const auto last = std::int64_t(std::size_t(height) * end / bands);
                    for (std::int64_t y = first; y < last; ++y) {
                        std::memcpy(line, rowAt(in, std::size_t(width), y, height),
                                    std::size_t(width) * sizeof(T));
                        const std::int64_t top = std::max<std::int64_t>(0, y - reachY);
                        const std::int64_t bottom = std::min(height - 1, y + reachY);
                        for (std::int64_t j = top; j <= bottom; ++j) {
                            const T *other = in + j * width;
                            for (std::int64_t x = 0; x < width; ++x)
                                line[x] = better(operation, line[x], other[x]);
                        }
                        T *target = out + y * width;
                        for (std::int64_t x = 0; x < width; ++x) {
                            const std::int64_t left = std::max<std::int64_t>(0, x - reachX);
                            const std::int64_t right = std::min(width - 1, x + reachX);
                            T value = line[x];
                            for (std::int64_t i = left; i <= right; ++i)
                                value = better(operation, value, line[i]);
                            target[x] = value;
                        }
                    }
                });
}

} // namespace

StorePtr morph(PixelStore &source, Morphology operation, std::uint32_t width, std::uint32_t height)
{
    const void *in = source.data();
    StorePtr result = PixelStore::allocate(source.type(), source.width(), source.height());
    void *out = result->data();
    const std::size_t bands = std::min<std::size_t>(source.height(), 16);
    withPixelType(source.type(), [&](auto tag) {
        using T = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        const std::size_t lineLength = std::size_t(source.width()) + 2;
        std::vector<T> lines(lineLength * bands); // here, because nothing may be thrown on the other threads
        if constexpr (std::is_same_v<T, std::uint8_t>) {
            if (width == 3 && height == 3) {
                morph3x3Bytes(static_cast<const T *>(in), static_cast<T *>(out), source.width(),
                              source.height(), operation, lines, lineLength, bands);
                return;
            }
        }
        morphAny(static_cast<const T *>(in), static_cast<T *>(out), source.width(), source.height(),
                 operation, width / 2, height / 2, lines, bands);
    });
    return result;
}

} // namespace il
