// SPDX-License-Identifier: MIT
#include "bench/opencv.h"

#include "bench/operands.h"

#include <opencv2/imgproc.hpp>

namespace {

cv::Mat view(const CILImage &image)
{
    return cv::Mat(int(image.getHeight()), int(image.getWidth()), CV_32F,
                   const_cast<void *>(image.get_data()));
}

/// The photograph's mask by the library's calls: Otsu, threshold, opening, float, area average on a grid of
/// half the size.
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

} // namespace

void openCvFormula(benchmark::State &state)
{
    const auto size = std::uint32_t(state.range(1));
    const Operands &o = operands(size);
    const cv::Mat a = view(o.a), b = view(o.b), counts = view(o.counts), tissue = view(o.tissue);
    CILImage result;
    target(result, size);
    cv::Mat r = view(result), mask, scratch;
    for (auto _ : state) {
        switch (state.range(0)) {
        case 0:
            cv::scaleAdd(b, double(FACTOR), a, r);
            break;
        case 1:
            cv::scaleAdd(b, double(-FACTOR), a, r);
            break;
        case 2:
            cv::multiply(b, a, r, double(FACTOR));
            break;
        case 3:
            cv::divide(a, b, r, double(FACTOR));
            break;
        default:
            cv::threshold(counts, mask, double(FACTOR), 1.0, cv::THRESH_BINARY);
            cv::multiply(a, mask, scratch);
            cv::divide(scratch, b, scratch, 100.0);
            cv::multiply(scratch, tissue, r);
        }
        benchmark::ClobberMemory();
    }
}

void openCvPhotographMask(benchmark::State &state)
{
    const CILImage source = photograph(std::uint32_t(2 * state.range(0)));
    const cv::Mat photo(int(source.getHeight()), int(source.getWidth()), CV_16U,
                        const_cast<void *>(source.get_data()));
    for (auto _ : state)
        benchmark::DoNotOptimize(photographMask(photo).data);
}
