# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and the other scripts: installs the Debian packages that are missing, configures and builds.
# Needs root or sudo only when a package is missing.
. "$root/scripts/progress.sh"

# What is built with, what runs it, and what the tests read files with.
build_packages=(g++ cmake ninja-build qtbase5-dev libtiff-dev libtbb-dev libmd4c-dev libmd4c-html0-dev pkg-config
    libbenchmark-dev)
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
    say "Installing the Debian packages that are missing:$missing ..."
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
        say "Looking for the compiler and the libraries ..."
        (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 || { cat "$log" >&2; fail "Configuring failed."; }
    fi
    local what="${1:+the programs}"
    cmake --build "$folder" ${1:+--target "$@"} 2>&1 | tee "$log" |
        build_progress "Building ${what:-the programs and their tests} in ${folder#"$root"/}; the first time takes some minutes ..."
    if [ "${PIPESTATUS[0]}" -ne 0 ]; then
        tail -n 60 "$log" >&2
        fail "The build failed. All that the compiler said is in ${log#"$root"/}."
    fi
}

# skipped_tests LOG: each skipped test with its reason, from Qt Test's "SKIP   : tst_Topic::test(row) reason".
skipped_tests() {
    sed -n 's/^SKIP   : \(tst_[A-Za-z0-9_]*\)::\([A-Za-z0-9_]*\)(\([^)]*\)) \(.*\)$/\1, \2 \3: \4/p' "$1" | sort -u |
        sed 's/ : /: /; s/^/  skipped: /'
}

# run_tests PRESET: ctest, then every program's count against tests/expected-counts.txt. Prints what failed, what was
# skipped and why, and last "N passed, N failed, N skipped"; fails when a test failed, is missing, or ran fewer rows than
# expected.
run_tests() {
    local folder="$root/build/$1" log="$root/build/$1.tests.log" status=0
    rm -f "$folder/Testing/Temporary/LastTest.log"
    say "Running the tests, each with settings and a virtual display of its own; it takes a few minutes ..."
    (cd "$folder" && ctest -j"$(nproc)" --output-on-failure --no-tests=error 2>&1) | tee "$log" |
        test_progress "$root/tests/expected-counts.txt"
    if [ "${PIPESTATUS[0]}" -ne 0 ]; then status=1; fi
    grep -E 'FAIL!|XPASS|SUMMARY: |runtime error' "$log" || true
    skipped_tests "$folder/Testing/Temporary/LastTest.log"
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
