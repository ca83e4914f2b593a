#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# tests/update-expected-counts.sh BUILD_FOLDER: writes down how many tests each program ran in the last ./test, which
# from then on is the least that must run.
set -eu
log=$(readlink -f "${1:?usage: tests/update-expected-counts.sh BUILD_FOLDER}/Testing/Temporary/LastTest.log")
cd "$(dirname "$0")"
{
    echo "# The least number of tests that each program runs (passed, failed or skipped); see update-expected-counts.sh."
    awk '/ Testing: / { name = $3 } /^Totals: / { count[name] += $2 + $4 + $6 } END { for (n in count) print n, count[n] }' "$log" | sort
} > expected-counts.txt
