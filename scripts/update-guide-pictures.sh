#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# scripts/update-guide-pictures.sh: takes the pictures that the user's guide shows from out/, where ./run leaves them, makes
# them smaller and puts them into docs/pictures. Needs ImageMagick's convert.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/setup.sh"
limit=120000 # bytes
command -v convert >/dev/null || fail "ImageMagick's convert is not installed."
mkdir -p "$root/docs/pictures"
rm -f "$root"/docs/pictures/*.png
for name in $(grep -oh 'pictures/[^)]*\.png' "$root"/docs/*.md | sort -u); do
    name=${name#pictures/}
    [ -f "$root/out/$name" ] || fail "out/$name is missing: start ./run --tour first."
    made="$root/docs/pictures/$name"
    for colours in 256 128 64 32; do
        convert "$root/out/$name" -resize '900x700>' -strip +dither -colors "$colours" -define png:exclude-chunk=date,time "PNG8:$made"
        [ "$(stat -c %s "$made")" -gt "$limit" ] || break
    done
    [ "$(stat -c %s "$made")" -le "$limit" ] || fail "$name is still larger than $limit bytes."
done
say "$(ls "$root/docs/pictures" | wc -l) pictures, $(du -sh "$root/docs/pictures" | cut -f1) together."
