#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# with-profile.sh plain|gui PROGRAM [ARG...]: runs a program with a throw-away profile folder, so that the user's
# own settings are neither read nor written; "gui" gives it an X server of its own as well. With --keep FOLDER first,
# the profile lies in that folder and stays.
set -u
kept=
if [ "$1" = --keep ]; then
    kept=$2
    shift 2
    mkdir -p "$kept"
fi
mode=$1
shift
profile=$(mktemp -d)
export VEXA_PROFILE_DIR="${kept:-$profile}" XDG_RUNTIME_DIR="$profile"
chmod 700 "$profile"
export LC_ALL=C.UTF-8 QT_LOGGING_RULES="qt.qpa.*=false"
# What the graphics drivers and fontconfig keep until the end is not ours.
export LSAN_OPTIONS="suppressions=$(dirname "$(readlink -f "$0")")/lsan.supp:print_suppressions=0"
server=
cleanup() {
    [ -n "$server" ] && kill "$server" 2>/dev/null
    rm -rf "$profile"
}
trap cleanup EXIT
if [ "$mode" = gui ]; then
    # Read and written by this shell, so that it opens at once and the number waits for its reader.
    mkfifo "$profile/display"
    exec 7<>"$profile/display"
    Xvfb -displayfd 7 -screen 0 1600x1200x24 +extension GLX -nolisten tcp -noreset >/dev/null 2>&1 &
    server=$!
    read -r -t 30 -u 7 display || { echo "with-profile.sh: no X server came up" >&2; exit 97; }
    exec 7>&-
    export DISPLAY=":$display" QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1
    unset WAYLAND_DISPLAY
else
    export QT_QPA_PLATFORM=offscreen
fi
mkfifo "$profile/stderr"
run() {
    tee "$profile/errors" <"$profile/stderr" >&2 &
    local copier=$! status
    "$@" 2>"$profile/stderr"
    status=$?
    # Of a failure all must be written before it is looked at.
    [ "$status" -eq 0 ] || wait "$copier"
    return "$status"
}
run "$@"
status=$?
# Now and then the leak sanitizer itself crashes, after the program has ended, on a thread of the graphics driver that
# is just ending.
if [ "$status" -ne 0 ] && grep -q 'LeakSanitizer has encountered a fatal error' "$profile/errors"; then
    echo "with-profile.sh: the leak sanitizer crashed, once more" >&2
    run "$@"
    status=$?
fi
exit "$status"
