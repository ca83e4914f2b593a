#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# scripts/plants.sh [IMAGES_FOLDER]: imports real images of plants, subtracts day 7 from day 14 in the Image Math Window
# and prints the totals over each plant, on a virtual display. Pictures, tables and results lie in out/plants. Where
# Python has numpy and tifffile, everything is computed again with them and compared.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/setup.sh"
images=${1:-${VEXA_SHARED_DATA:-$root/../shared/data}/plants}
[ -f "$images/day14_luminescence.tif" ] || fail "The images are not in $images. Name their folder."
install_missing "${build_packages[@]}" "${run_packages[@]}"
build release vexa-tour vximagemath
out="$root/out/plants"
rm -rf "$out"
mkdir -p "$out"
"$root/tests/with-profile.sh" --keep "$out/profile" gui "$root/build/release/bin/vexa-tour" --plants "$images" "$out"
if /usr/bin/python3 -c 'import numpy, tifffile' 2>/dev/null; then
    /usr/bin/python3 "$root/tests/realdata/check_plants.py" "$out" >"$out/numpy.txt" || { cat "$out/numpy.txt"; exit 1; }
    say "numpy agrees: $(grep -c '^agrees' "$out/numpy.txt") comparisons, see ${out#"$root"/}/numpy.txt."
else
    say "Not compared with numpy: python3-numpy or python3-tifffile is not installed."
fi
