// SPDX-License-Identifier: MIT
// The formulas on float images, evaluation alone, beside the yardsticks, in one run.
#include "bench/rows.h"
#include "bench/yardsticks.h"
#include "host/vximage/AutoRange.h"
#include "host/vximage/CILImage.h"
#include "math/Formula.h"
#include "math/TissueMask.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>
#include <opencv2/imgproc.hpp>

namespace {

constexpr float kFactor = 1.7f;

/// Values without a pattern that a processor could learn, from `low` on, `span` wide.
CILImage noise(std::uint32_t size, float low, float span, std::uint32_t seed)
{
    CILImage filled;
    filled.InitWithType(VXS_FLOAT, size, size);
    auto *p = static_cast<float *>(filled.get_data());
    for (std::size_t i = 0; i < filled.pixelCount(); ++i) {
        seed = seed * 1664525u + 1013904223u;
        p[i] = low + span * float(seed >> 8) / 16777216.0f;
    }
    return CILImage(filled); // a copy has no pointer into it
}

/// Bright animal on a dark stage, 16 bits.
CILImage photograph(std::uint32_t size)
{
    CILImage filled;
    filled.InitWithType(VXS_UINT16, size, size);
    auto *p = static_cast<std::uint16_t *>(filled.get_data());
    std::uint32_t seed = 7;
    for (std::uint32_t y = 0; y < size; ++y) {
        for (std::uint32_t x = 0; x < size; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const double dx = double(x) / size - 0.5, dy = double(y) / size - 0.5;
            const std::uint32_t level = dx * dx * 6 + dy * dy < 0.16 ? 22000 : 3000;
            *p++ = std::uint16_t(level + (seed >> 20));
        }
    }
    return CILImage(filled);
}

struct Operands
{
    explicit Operands(std::uint32_t size)
        : a(noise(size, 100.0f, 60000.0f, 1)),
          b(noise(size, 50.0f, 9000.0f, 2)),
          counts(noise(size, 0.0f, 3.4f, 3)),
          tissue(noise(size, 0.0f, 1.0f, 4))
    {
    }
    CILImage a, b, counts, tissue;
};

const Operands &operands(std::uint32_t size)
{
    static std::unique_ptr<Operands> kept;
    if (!kept || kept->a.getWidth() != size) {
        kept.reset();
        kept = std::make_unique<Operands>(size);
    }
    return *kept;
}

void evaluate(int index, const Operands &o, CILImage &result)
{
    imagemath::Operands operands{o.a, o.b, o.counts, kFactor};
    operands.ratioScale = 100.0;
    operands.tissueMask = &o.tissue;
    imagemath::formulaAt(index)->evaluate(operands, result);
}

void evaluation(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(1)));
    CILImage result;
    for (auto _ : state) {
        evaluate(int(state.range(0)), o, result);
        benchmark::DoNotOptimize(static_cast<const CILImage &>(result).get_data());
    }
}

void evaluationWithLimits(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(1)));
    CILImage result;
    for (auto _ : state) {
        evaluate(int(state.range(0)), o, result);
        benchmark::DoNotOptimize(result.getMin() + result.getMax());
    }
}

void autoLimits(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(0)));
    CILImage result;
    for (auto _ : state) {
        state.PauseTiming();
        evaluate(1, o, result);
        benchmark::DoNotOptimize(static_cast<const CILImage &>(result).get_data());
        state.ResumeTiming();
        double low = 0.0, high = 0.0;
        benchmark::DoNotOptimize(ilAutoRange(result, 65000.0, 25000, &low, &high));
    }
}

void photographMask(benchmark::State &state)
{
    const auto size = std::uint32_t(state.range(0));
    const CILImage source = photograph(2 * size);
    for (auto _ : state) {
        state.PauseTiming();
        CILImage fresh = source;
        fresh.get_data(); // pixels of its own, of which nothing is remembered
        const CILImage photo(fresh);
        state.ResumeTiming();
        const CILImage mask = imagemath::tissueMaskOfPhotograph(photo, size, size);
        benchmark::DoNotOptimize(mask.get_data());
    }
}

/// The result's memory is an image's, so that it lies on the same kind of pages.
float *target(CILImage &image, std::uint32_t size)
{
    image.InitWithType(VXS_FLOAT, size, size);
    return static_cast<float *>(image.get_data());
}

void fusedPass(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(0)));
    CILImage result;
    float *r = target(result, std::uint32_t(state.range(0)));
    for (auto _ : state) {
        yardstick::fusedPass(o.a.pixels<float>(), o.b.pixels<float>(), kFactor, r, o.a.pixelCount());
        benchmark::ClobberMemory();
    }
}

void fusedPassTwoThreadsStreaming(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(0)));
    CILImage result;
    float *r = target(result, std::uint32_t(state.range(0)));
    for (auto _ : state) {
        yardstick::fusedPassTwoThreadsStreaming(o.a.pixels<float>(), o.b.pixels<float>(), kFactor, r,
                                                o.a.pixelCount());
        benchmark::ClobberMemory();
    }
}

cv::Mat view(const CILImage &image)
{
    return cv::Mat(int(image.getHeight()), int(image.getWidth()), CV_32F,
                   const_cast<void *>(image.get_data()));
}

void openCv(benchmark::State &state)
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
            cv::scaleAdd(b, double(kFactor), a, r);
            break;
        case 1:
            cv::scaleAdd(b, double(-kFactor), a, r);
            break;
        case 2:
            cv::multiply(b, a, r, double(kFactor));
            break;
        case 3:
            cv::divide(a, b, r, double(kFactor));
            break;
        default:
            cv::threshold(counts, mask, double(kFactor), 1.0, cv::THRESH_BINARY);
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
        benchmark::DoNotOptimize(yardstick::photographMask(photo).data);
}

} // namespace

void registerEvaluation()
{
    for (const std::int64_t size : {512, 1024, 2048, 4096}) {
        const auto add = [&](const char *name, auto function, std::initializer_list<std::int64_t> arguments) {
            row(name, function, arguments);
        };
        add("yardstick_fused_one_thread", fusedPass, {size});
        add("yardstick_fused_two_threads_streaming", fusedPassTwoThreadsStreaming, {size});
        for (std::int64_t index = 0; index < 5; ++index) {
            add("yardstick_opencv", openCv, {index, size});
            add("evaluation", evaluation, {index, size});
            add("evaluation_with_min_max", evaluationWithLimits, {index, size});
        }
        add("auto_limits", autoLimits, {size});
        if (size <= 2048) {
            add("yardstick_opencv_photograph_mask", openCvPhotographMask, {size});
            add("photograph_mask", photographMask, {size});
        }
    }
}
