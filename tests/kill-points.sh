#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# kill-points.sh [BUILD_FOLDER [POINTS]]: kills the workspace with SIGKILL at 200 places while it makes a result, and
# checks after each that nothing is lost. Needs the target tst_KillPoints. Ends with a line of figures, and 0
# when every point holds.
set -u
here=$(dirname "$(readlink -f "$0")")
build=${1:-$here/../build/release}
points=${2:-200}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
started=$SECONDS
VEXA_KILL_POINTS=$points timeout --kill-after=30 $((300 + 15 * points)) \
    "$here/with-profile.sh" plain "$build/tests/tst_KillPoints" -maxwarnings 0 > "$log" 2>&1
code=$?
grep -E '^(QINFO|FAIL!|QFATAL)|^   ' "$log"
held=$(grep -c '^PASS   : tst_KillPoints::nothingIsLostWhenKilled(' "$log")
distinct=$(grep -E '^(PASS   |FAIL!  ): tst_KillPoints::nothingIsLostWhenKilled\(' "$log" |
    sed -E 's/^[A-Z! ]*: //; s/\) .*$/)/' | sort -u | wc -l)
[ "$code" = 124 ] && echo "kill-points.sh: not done in time"
[ "$code" = 0 ] && [ "$held" != "$points" ] && code=1
verdict=$([ "$code" = 0 ] && echo "every point holds" || echo "NOT EVERY POINT HOLDS")
echo "kill points: $points asked, $distinct different, $held held, in $((SECONDS - started)) s: $verdict"
exit "$code"
