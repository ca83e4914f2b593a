// SPDX-License-Identifier: MIT
#include "host/vximage/base/Parallel.h"

#include <algorithm>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace il {
namespace {

// Waking a thread costs some microseconds; a piece must be worth several of them.
constexpr std::size_t MIN_BYTES_PER_PIECE = std::size_t(512) << 10;
// More pieces than threads, so that a thread held up by other work of the machine does not hold up the whole.
constexpr std::size_t PIECES_PER_THREAD = 4;

} // namespace

void parallelFor(std::size_t count, std::size_t grain, std::size_t costPerItem,
                 const std::function<void(std::size_t, std::size_t)> &body)
{
    if (count == 0)
        return;
    const std::size_t grains = (count + grain - 1) / grain;
    const std::size_t threads = std::size_t(std::max(1, tbb::this_task_arena::max_concurrency()));
    const std::size_t worthwhile = count * costPerItem / MIN_BYTES_PER_PIECE;
    const std::size_t pieces = std::min({grains, worthwhile, threads * PIECES_PER_THREAD});
    if (threads == 1 || pieces < 2) {
        body(0, count);
        return;
    }
    tbb::parallel_for(tbb::blocked_range<std::size_t>(0, pieces), [&](const auto &range) {
        const std::size_t begin = grains * range.begin() / pieces * grain;
        const std::size_t end = std::min(count, grains * range.end() / pieces * grain);
        if (begin < end)
            body(begin, end);
    });
}

} // namespace il
