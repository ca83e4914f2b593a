// SPDX-License-Identifier: MIT
#include "bench/yardsticks.h"

#include <cstdint>
#include <tbb/parallel_for.h>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace yardstick {

void fusedPass(const float *a, const float *b, float k, float *r, std::size_t n)
{
#pragma GCC ivdep
    for (std::size_t i = 0; i < n; ++i)
        r[i] = a[i] + b[i] * k;
}

namespace {

void streamingPart(const float *a, const float *b, float k, float *r, std::size_t n)
{
    std::size_t i = 0;
#ifdef __SSE2__
    const __m128 factor = _mm_set1_ps(k);
    for (; i + 4 <= n; i += 4)
        _mm_stream_ps(r + i, _mm_add_ps(_mm_loadu_ps(a + i), _mm_mul_ps(_mm_loadu_ps(b + i), factor)));
    _mm_sfence();
#endif
    for (; i < n; ++i)
        r[i] = a[i] + b[i] * k;
}

} // namespace

void fusedPassTwoThreadsStreaming(const float *a, const float *b, float k, float *r, std::size_t n)
{
    tbb::parallel_for(
        0, 2,
        [&](int part) {
            const std::size_t begin = n / 2 / 16 * 16 * std::size_t(part);
            const std::size_t end = part == 1 ? n : n / 2 / 16 * 16;
            streamingPart(a + begin, b + begin, k, r + begin, end - begin);
        },
        tbb::static_partitioner()); // a half for each thread, never both for one
}

} // namespace yardstick
