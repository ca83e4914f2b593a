// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>

namespace il {

/// Runs body(begin, end) over [0, count) in pieces, on several threads when there is enough to do, and
/// returns when all is done. Every piece but the last is a multiple of `grain` long, and no piece is shorter
/// than that. `costPerItem` is about the bytes that an item moves. body must not throw, and what it takes
/// from other pieces it must guard itself. There are as many threads as the process may use processors: none
/// but the calling one where that is one, or where the work is too little to be worth waking another.
void parallelFor(std::size_t count, std::size_t grain, std::size_t costPerItem,
                 const std::function<void(std::size_t, std::size_t)> &body);

} // namespace il
