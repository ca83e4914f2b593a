// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>
#include <initializer_list>

/// Every row is measured alike: the median of nine repetitions of real time, in ms. The last argument is the
/// edge length of the images in pixels; before it stands the index of a formula, where there is one.
template <typename Function>
void row(const char *name, Function function, std::initializer_list<std::int64_t> arguments)
{
    benchmark::RegisterBenchmark(name, function)
        ->Args(arguments)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond)
        ->Repetitions(9)
        ->ReportAggregatesOnly(true)
        ->MinTime(0.05);
}

void registerEvaluation();
void registerRecomputation();
