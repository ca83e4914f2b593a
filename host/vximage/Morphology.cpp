// SPDX-License-Identifier: MIT
#include "host/vximage/Morphology.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/kernels/BlockKernels.h"

#include <algorithm>
#include <vector>

namespace il {
namespace {

constexpr std::size_t MOST_BANDS = 16;

} // namespace

/// The best of three rows goes into a line with a replicated pixel at each end, then the best of three
/// neighbours in that line into the result.
StorePtr morph3x3(PixelStore &source, Morphology operation)
{
    const auto *in = static_cast<const std::uint8_t *>(source.data());
    StorePtr result = PixelStore::allocate(source.type(), source.width(), source.height());
    auto *out = static_cast<std::uint8_t *>(result->data());
    const std::size_t width = source.width();
    const std::size_t height = source.height();
    const std::size_t bands = std::min(height, MOST_BANDS);
    const std::size_t lineLength = width + 2;
    std::vector<std::uint8_t> lines(lineLength * bands); // here: nothing may be thrown on the other threads
    const auto best = operation == Morphology::Erode ? blockKernels().minBytes : blockKernels().maxBytes;
    parallelFor(bands, 1, 2 * width * height / bands, [&](std::size_t begin, std::size_t end) {
        std::uint8_t *line = lines.data() + begin * lineLength;
        for (std::size_t y = height * begin / bands; y < height * end / bands; ++y) {
            const std::uint8_t *row = in + y * width;
            const std::uint8_t *above = y > 0 ? row - width : row;
            const std::uint8_t *below = y + 1 < height ? row + width : row;
            best(above, row, below, line + 1, width);
            line[0] = line[1];
            line[width + 1] = line[width];
            best(line, line + 1, line + 2, out + y * width, width);
        }
    });
    return result;
}

} // namespace il
