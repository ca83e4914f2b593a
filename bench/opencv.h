// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

/// Rows that do the same with OpenCV's own functions. Compiled only where OpenCV is there (BENCH_OPENCV).
void openCvFormula(benchmark::State &state);
void openCvPhotographMask(benchmark::State &state);
