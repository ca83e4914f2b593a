// SPDX-License-Identifier: MIT
#include "bench/yardsticks.h"

#include <cstdint>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

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
    cv::parallel_for_(
        cv::Range(0, 2),
        [&](const cv::Range &range) {
            for (int part = range.start; part < range.end; ++part) {
                const std::size_t begin = n / 2 / 16 * 16 * std::size_t(part);
                const std::size_t end = part == 1 ? n : n / 2 / 16 * 16;
                streamingPart(a + begin, b + begin, k, r + begin, end - begin);
            }
        },
        2);
}

cv::Mat photographMask(const cv::Mat &photograph)
{
    cv::Mat mask, opened, asFloat, half;
    cv::threshold(photograph, mask, 0, 65535, cv::THRESH_BINARY | cv::THRESH_OTSU);
    mask.convertTo(mask, CV_8U, 1.0 / 65535);
    const cv::Mat square = cv::getStructuringElement(cv::MORPH_RECT, {3, 3});
    cv::erode(mask, opened, square);
    cv::dilate(opened, opened, square);
    opened.convertTo(asFloat, CV_32F);
    cv::resize(asFloat, half, {photograph.cols / 2, photograph.rows / 2}, 0, 0, cv::INTER_AREA);
    return half;
}

} // namespace yardstick
