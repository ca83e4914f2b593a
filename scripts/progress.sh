# SPDX-License-Identifier: MIT
# Sourced by setup.sh: how far a long step is. On a terminal one line that is written anew, in a log or pipe a line for
# every tenth of the way.

# show_progress DONE TOTAL TEXT: keeps the tenth that was told last in $tenth, which the caller sets to 0 before.
show_progress() {
    if [ -t 1 ]; then
        printf '\r\033[K  %s' "$3"
    elif [ $(($1 * 10 / $2)) -gt "$tenth" ]; then
        tenth=$(($1 * 10 / $2))
        printf '  %s\n' "$3"
    fi
}

end_progress() {
    if [ -t 1 ]; then printf '\n'; fi
}

# build_progress HEADING: from what ninja says; the heading only when there is something to build.
build_progress() {
    local line tenth=0 count=0
    while IFS= read -r line; do
        # Ninja looks for new files first, with a count of its own.
        if [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\  && $line != *'Re-checking globbed'* && $line != *'Re-running CMake'* ]]; then
            if [ "$count" -eq 0 ]; then printf '%s\n' "$1"; fi
            count=${BASH_REMATCH[1]}
            show_progress "$count" "${BASH_REMATCH[2]}" "$count of ${BASH_REMATCH[2]} steps"
        fi
    done
    if [ "$count" -gt 0 ]; then end_progress; fi
}

# test_progress EXPECTED_COUNTS: from what ctest says; the file tells how many tests each program has. A program that fails
# is told at once.
test_progress() {
    local line tenth=0 name count rows=0 all=0 failed=0
    local -A tests
    while read -r name count; do
        if [[ $name == \#* || -z $count ]]; then continue; fi
        tests[$name]=$count
        all=$((all + count))
    done <"$1"
    while IFS= read -r line; do
        [[ $line =~ ^\ *([0-9]+)/([0-9]+)\ Test\ +\#[0-9]+:\ ([^ ]+)\ [.]*\ *(.*)$ ]] || continue
        name=${BASH_REMATCH[3]}
        if [[ ${BASH_REMATCH[4]} != Passed* ]]; then
            failed=$((failed + 1))
            if [ -t 1 ]; then printf '\r\033[K'; fi
            printf '  %s: %s\n' "$name" "$(tr -s ' *' ' ' <<<"${BASH_REMATCH[4]}" | sed 's/^ //')"
        fi
        rows=$((rows + ${tests[$name]:-0}))
        show_progress "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" \
            "${BASH_REMATCH[1]} of ${BASH_REMATCH[2]} test programs, $rows of $all tests, $failed programs failed"
    done
    end_progress
}
