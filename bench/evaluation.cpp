// SPDX-License-Identifier: MIT
// The formulas on float images, evaluation alone, beside the yardsticks, in one run.
#include "bench/opencv.h"
#include "bench/operands.h"
#include "bench/rows.h"
#include "bench/yardsticks.h"
#include "host/vximage/AutoRange.h"
#include "host/vximage/CILImage.h"
#include "math/Formula.h"
#include "math/TissueMask.h"

#include <benchmark/benchmark.h>
#include <cstdint>

namespace {

void evaluate(int index, const Operands &o, CILImage &result)
{
    imagemath::Operands operands{o.a, o.b, o.counts, FACTOR};
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

void fusedPass(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(0)));
    CILImage result;
    float *r = target(result, std::uint32_t(state.range(0)));
    for (auto _ : state) {
        yardstick::fusedPass(o.a.pixels<float>(), o.b.pixels<float>(), FACTOR, r, o.a.pixelCount());
        benchmark::ClobberMemory();
    }
}

void fusedPassTwoThreadsStreaming(benchmark::State &state)
{
    const Operands &o = operands(std::uint32_t(state.range(0)));
    CILImage result;
    float *r = target(result, std::uint32_t(state.range(0)));
    for (auto _ : state) {
        yardstick::fusedPassTwoThreadsStreaming(o.a.pixels<float>(), o.b.pixels<float>(), FACTOR, r,
                                                o.a.pixelCount());
        benchmark::ClobberMemory();
    }
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
#ifdef BENCH_OPENCV
            add("yardstick_opencv", openCvFormula, {index, size});
#endif
            add("evaluation", evaluation, {index, size});
            add("evaluation_with_min_max", evaluationWithLimits, {index, size});
        }
        add("auto_limits", autoLimits, {size});
        if (size <= 2048) {
#ifdef BENCH_OPENCV
            add("yardstick_opencv_photograph_mask", openCvPhotographMask, {size});
#endif
            add("photograph_mask", photographMask, {size});
        }
    }
}
