#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# scripts/update-guide-pictures.sh [IMAGES_FOLDER]: drives the workspace again, makes the pictures that the user's guide shows
# smaller and puts them into docs/pictures. Needs ImageMagick's convert. Pictures of the real images of plants stay as
# they are unless the images are there.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/setup.sh"
limit=120000 # bytes
images=${1:-${VEXA_SHARED_DATA:-$root/../shared/data}/plants}
command -v convert >/dev/null || fail "ImageMagick's convert is not installed."
build release vexa vexa-make-sample vexa-tour vximagemath
bin="$root/build/release/bin"

# Not in this checkout: pictures show where files lie, and nobody's own folders belong there.
work=/tmp/vexa-guide
rm -rf "$work"
mkdir -p "$work"
"$bin/vexa-make-sample" "$work/study"
sequence=$(find "$work/study" -mindepth 2 -maxdepth 2 -name SequenceInfo.txt -printf '%h\n')
drive() { "$root/tests/with-profile.sh" --keep "$work/profile$1" gui "$bin/vexa-tour" "${@:2}" >"$work/tour$1.log" 2>&1 ||
    fail "The tour failed, see $work/tour$1.log."; }
drive 1 "$sequence" "$work"
drive 1 --second-day "$work/study" "$work"
[ ! -f "$images/day14_luminescence.tif" ] || drive 2 --plants "$images" "$work"

mkdir -p "$root/docs/pictures"
wanted=$(grep -oh 'pictures/[^)]*\.png' "$root"/docs/*.md | sort -u | sed 's,pictures/,,')
for name in $wanted; do
    made="$root/docs/pictures/$name"
    if [ ! -f "$work/$name" ]; then
        [ -f "$made" ] || fail "The tour makes no $name."
        continue
    fi
    for colours in 256 128 64 32; do
        convert "$work/$name" -resize '900x700>' -strip +dither -colors "$colours" -define png:exclude-chunk=date,time "PNG8:$made"
        [ "$(stat -c %s "$made")" -gt "$limit" ] || break
    done
    [ "$(stat -c %s "$made")" -le "$limit" ] || fail "$name is still larger than $limit bytes."
done
for made in "$root"/docs/pictures/*.png; do
    grep -qx "$(basename "$made")" <<<"$wanted" || rm "$made"
done
rm -rf "$work"
say "$(ls "$root/docs/pictures" | wc -l) pictures, $(du -sh "$root/docs/pictures" | cut -f1) together."
