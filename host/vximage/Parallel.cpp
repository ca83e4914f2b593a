// SPDX-License-Identifier: MIT
#include "host/vximage/Parallel.h"

#include <algorithm>
#include <opencv2/core/utility.hpp>

namespace il {
namespace {

// Waking a thread costs some microseconds; a piece must be worth several of them.
constexpr std::size_t kMinBytesPerPiece = std::size_t(512) << 10;
// More pieces than threads, so that a thread held up by other work of the machine does not hold up the whole.
constexpr std::size_t kPiecesPerThread = 4;

} // namespace

void parallelFor(std::size_t count, std::size_t grain, std::size_t costPerItem,
                 const std::function<void(std::size_t, std::size_t)> &body)
{
    if (count == 0)
        return;
    const std::size_t grains = (count + grain - 1) / grain;
    const std::size_t threads = std::size_t(std::max(1, cv::getNumThreads()));
    const std::size_t worthwhile = count * costPerItem / kMinBytesPerPiece;
    const std::size_t pieces = std::min({grains, worthwhile, threads * kPiecesPerThread});
    if (threads == 1 || pieces < 2) {
        body(0, count);
        return;
    }
    cv::parallel_for_(
        cv::Range(0, int(pieces)),
        [&](const cv::Range &range) {
            const std::size_t begin = grains * std::size_t(range.start) / pieces * grain;
            const std::size_t end = std::min(count, grains * std::size_t(range.end) / pieces * grain);
            if (begin < end)
                body(begin, end);
        },
        double(pieces));
}

} // namespace il
