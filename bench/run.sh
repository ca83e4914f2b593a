#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# bench/run.sh BUILD_FOLDER [FILTER]: runs the benchmarks and prints medians in ms, and ratios to the yardsticks and to the
# formula's own evaluation of the same run and size.
set -euo pipefail
build=${1:?usage: bench/run.sh BUILD_FOLDER [FILTER]}
out=$(mktemp)
trap 'rm -f "$out"' EXIT
"$build/bin/bench_imagemath" --benchmark_out="$out" --benchmark_out_format=json --benchmark_filter="${2:-.}" > /dev/null
python3 - "$out" <<'PY'
import json, sys
rows = json.load(open(sys.argv[1]))["benchmarks"]
ms = {}
for row in rows:
    if row.get("aggregate_name") != "median":
        continue
    name, *args = row["run_name"].split("/")
    numbers = [int(a) for a in args if a.isdigit()]
    ms[name, numbers[-1], numbers[0] if len(numbers) > 1 else None] = row["real_time"]
print(f'{"size":>5} {"what":<42} {"ms":>9} {"/fused 1":>9} {"/fused 2":>9} {"/OpenCV":>9} {"/eval":>9}')
def ratio(value, key):
    return f"{value / ms[key]:9.2f}" if key in ms else " " * 9
for (name, size, formula), value in ms.items():
    label = name if formula is None else f"{name}, formula {formula}"
    opencv = ("yardstick_opencv_photograph_mask", size, None) if "photograph" in name else ("yardstick_opencv", size, formula)
    print(f'{size:>5} {label:<42} {value:9.3f} {ratio(value, ("yardstick_fused_one_thread", size, None))} '
          f'{ratio(value, ("yardstick_fused_two_threads_streaming", size, None))} {ratio(value, opencv)} {ratio(value, ("evaluation", size, formula))}')
PY
