# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and .ci/run: installs the Debian packages that are missing, configures and builds.
# Needs root or sudo only when a package is missing.

# What is built with, what runs it, and what the tests read files with.
build_packages=(g++ cmake ninja-build qtbase5-dev libtiff-dev libtbb-dev libbenchmark-dev)
run_packages=(libgl1-mesa-dri xvfb xauth fonts-dejavu-core)
test_packages=(libtiff-tools python3-tifffile python3-numpy binutils)

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "These packages are missing and neither root nor sudo is at hand to install them: $missing"
    fi
}

install_missing() {
    command -v dpkg-query >/dev/null || fail "This script installs Debian packages; see README.md for the list."
    local package
    missing=
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
    done
    [ -z "$missing" ] && return
    say "Installing:$missing"
    as_root apt-get update -qq || fail "apt-get update failed"
    # shellcheck disable=SC2086
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null ||
        fail "apt-get could not install:$missing"
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    local folder="$root/build/$preset" log="$root/build/$preset.log"
    mkdir -p "$root/build"
    if [ ! -f "$folder/build.ninja" ]; then
        (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 || { cat "$log" >&2; fail "Configuring failed."; }
    fi
    say "Building ($preset) ..."
    cmake --build "$folder" ${1:+--target "$@"} >"$log" 2>&1 || { tail -n 60 "$log" >&2; fail "The build failed."; }
}

# run_tests PRESET: ctest, then every program's count against tests/expected-counts.txt. Prints
# "N passed, N failed, N skipped" and fails when a test failed, is missing, or ran fewer rows than expected.
run_tests() {
    local folder="$root/build/$1" log="$root/build/$1.tests.log" status=0
    rm -f "$folder/Testing/Temporary/LastTest.log"
    (cd "$folder" && ctest -j"$(nproc)" --output-on-failure --no-tests=error) >"$log" 2>&1 || status=1
    grep -E '^ *[0-9]+/[0-9]+ Test|tests passed|FAIL!|XPASS|SUMMARY: |runtime error' "$log" || true
    awk -v expected="$root/tests/expected-counts.txt" '
        BEGIN {
            while ((getline line < expected) > 0)
                if (line !~ /^#/ && split(line, field, " ") == 2) want[field[1]] = field[2]
        }
        / Testing: / { name = $3 }
        /^Totals: / { passed[name] += $2; failed[name] += $4; skipped[name] += $6 }
        END {
            for (n in want) {
                ran = passed[n] + failed[n] + skipped[n]
                if (ran < want[n]) { printf "%s: %d tests ran, %d are expected\n", n, ran, want[n]; bad = 1 }
            }
            for (n in passed) {
                if (!(n in want)) { printf "%s: not listed in tests/expected-counts.txt\n", n; bad = 1 }
                p += passed[n]; f += failed[n]; s += skipped[n]
            }
            printf "%d passed, %d failed, %d skipped\n", p, f, s
            exit bad || f > 0 || p == 0
        }' "$folder/Testing/Temporary/LastTest.log" || status=1
    if [ "$status" -ne 0 ]; then
        say "The tests' output is in ${log#"$root"/}."
    fi
    return "$status"
}
