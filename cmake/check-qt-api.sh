#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# check-qt-api.sh SOURCE_FOLDER [BINARY...]: fails when sources or binaries use something of Qt that came after 5.10, and
# names it with the version in which it came. The build runs it.
#
# Binaries: Debian lists every symbol of Qt's libraries with the version in which it appeared, so what is linked is
# compared exactly. Where these lists are not (another system), binaries are not looked at, and it says so.
# Sources: what is inline, a value or a macro is not linked; cmake/qt-after-5.10.txt has patterns for it.
set -u
folder=$1
shift
here=$(dirname "$(readlink -f "$0")")
symbols=${VEXA_QT_SYMBOLS:-/var/lib/dpkg/info}
status=0

# Comments are not looked at, and not tests/architecture, which tries this check on what it has to
# find.
found=$(find "$folder" -mindepth 1 \( -path '*/tests/architecture' -o -name build -o -name out -o -name '.?*' \) -prune -o \( -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 -r awk -v list="$here/qt-after-5.10.txt" '
        BEGIN {
            while ((getline line < list) > 0)
                if (line !~ /^#/ && split(line, field, "\t") == 2) { pattern[++count] = field[2]; since[count] = field[1] }
            if (!count) { print list ": no patterns"; exit }
        }
        {
            code = $0
            sub(/\/\/.*/, "", code)
            for (i = 1; i <= count; ++i)
                if (match(code, "(^|[^A-Za-z0-9_])(" pattern[i] ")([^A-Za-z0-9_]|$)"))
                    printf "%s:%d: came with Qt %s: %s\n", FILENAME, FNR, since[i], substr(code, RSTART, RLENGTH)
        }')
if [ -n "$found" ]; then
    printf '%s\n' "$found" >&2
    status=1
fi

lists=$(ls "$symbols"/libqt5{core,gui,widgets,test}*.symbols 2>/dev/null)
if [ $# -gt 0 ] && { [ -z "$lists" ] || ! command -v nm >/dev/null; }; then
    echo "check-qt-api.sh: there are no lists of Qt's symbols here; only the sources were checked" >&2
    exit "$status"
fi
for binary in "$@"; do
    # shellcheck disable=SC2086
    nm -D --undefined-only "$binary" | awk -v binary="$binary" -v allowed="$here/qt-inline-before.txt" '
        BEGIN { while ((getline line < allowed) > 0) if (line !~ /^#/ && split(line, field, " ")) inline[field[1]] = 1 }
        FILENAME != "-" {
            if (split($1, name, "@") < 2 || name[2] !~ /^Qt_5/) next
            split($2, version, ".")
            if (version[1] > 5 || (version[1] == 5 && version[2] + 0 > 10)) since[name[1]] = $2
            next
        }
        {
            split($NF, name, "@")
            if (name[1] in since && !(name[1] in inline)) {
                printf "%s: links what came with Qt %s: %s\n", binary, since[name[1]], name[1]
                bad = 1
            }
        }
        END { exit bad }' $lists - >&2 || status=1
done
exit "$status"
