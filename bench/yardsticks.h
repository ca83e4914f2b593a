// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What the image operations are measured against.
namespace yardstick {

/// r = a + b * k in one pass, one thread, as the compiler vectorises it for the base processor.
void fusedPass(const float *a, const float *b, float k, float *r, std::size_t n);
/// The same on two threads, written past the caches.
void fusedPassTwoThreadsStreaming(const float *a, const float *b, float k, float *r, std::size_t n);

} // namespace yardstick
