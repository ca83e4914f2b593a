# SPDX-License-Identifier: MIT
"""check_plants.py FOLDER: compares what `vexa-tour --plants` left in that folder with the same computed by numpy.

Counts must agree in every bit, radiance within the rounding of 32-bit floats, the totals over each plant within the
rounding of 64-bit sums. Exit status 1, and a line for each, when something does not agree.
"""
import csv
import json
import math
import sys
from pathlib import Path

import numpy as np
import tifffile

problems = []


def check(holds, what):
    print(("agrees: " if holds else "DISAGREES: ") + what)
    if not holds:
        problems.append(what)


def cells(box, grid):
    """Rectangles (left, top, right, bottom) of the grid's 4 x 4 cells and of itself, by name."""
    left, top, right, bottom = box
    width, height = (right - left) / 4, (bottom - top) / 4
    yield grid, box
    for row in range(4):
        for column in range(4):
            yield f"{grid} [{row + 1}, {column + 1}]", (
                left + column * width, top + row * height,
                left + (column + 1) * width, top + (row + 1) * height)


def total(image, rectangle, pixel):
    """Sum of the pixels whose centre lies in the rectangle: left and upper edge belong to it."""
    left, top, right, bottom = rectangle
    x = (np.arange(image.shape[1]) + 0.5) * pixel
    y = (np.arange(image.shape[0]) + 0.5) * pixel
    part = image[np.ix_((y >= top) & (y < bottom), (x >= left) & (x < right))]
    return part.sum(dtype=np.float64), part.size


def table(path):
    with open(path, encoding="utf-8", newline="") as file:
        return {row["ROI"]: row for row in csv.DictReader(file)}


def close(measured, true, relative, scale):
    return math.isfinite(measured) and abs(measured - true) <= relative * max(abs(true), scale)


def main(folder):
    made = json.loads((folder / "plants.json").read_text())
    images = Path(made["images"])
    day7 = tifffile.imread(images / "day07_luminescence.tif").astype(np.float32)
    day14 = tifffile.imread(images / "day14_luminescence.tif").astype(np.float32)
    difference = day14 - np.float32(1.0) * day7
    pixel = made["fieldOfView"] / difference.shape[1]

    # radiance = counts g / (QE T) 4 N^2 (1 + m)^2 / (pi A t)
    pitch = made["pixelPitch"] * 1e-4
    magnification = difference.shape[1] * pitch / made["fieldOfView"]
    factor = (made["electronsPerCount"] / (made["quantumEfficiency"] * made["transmission"])
              * 4 * made["fNumber"] ** 2 * (1 + magnification) ** 2
              / (math.pi * pitch ** 2 * made["exposure"]))

    counts = tifffile.imread(Path(made["counts"]["folder"]) / "luminescent.tif")
    check(counts.dtype == np.float32 and counts.shape == difference.shape, "type and size of the result in counts")
    check(np.array_equal(counts, difference), f"all {difference.size} pixels in counts, to the last bit")

    radiance = tifffile.imread(Path(made["radiance"]["folder"]) / "luminescent.tif")
    expected = difference.astype(np.float64) * factor
    # Two operands rounded to 32 bit, and their difference: 2^-24 of each.
    bound = 2.0 ** -24 * (day14.astype(np.float64) + day7 + np.abs(difference)) * factor
    worst = np.max(np.abs(radiance - expected) / np.maximum(bound, 1e-300))
    check(radiance.dtype == np.float32 and worst <= 1.01,
          f"all pixels in radiance: at worst {worst:.2f} of the rounding of 32-bit floats; 1 count is {factor:.6g}")

    plants = 0
    for unit, image in (("counts", counts), ("radiance", radiance)):
        rows = table(made[unit]["table"])
        for name, rectangle in cells(made[unit]["box"], made[unit]["grid"]):
            row = rows.get(name, {})
            of_counts, pixels = total(difference, rectangle, pixel)
            measured = float(row.get("Total counts", "nan"))
            # The radiance result leads back to counts by a division of 32-bit floats.
            exact = 0.0 if unit == "counts" else 1e-6
            holds = int(row.get("Pixels", 0)) == pixels and close(measured, of_counts, exact, 100.0)
            if unit == "radiance":
                flux = 4 * math.pi * pixel ** 2 * total(image, rectangle, pixel)[0]
                told = float(row.get("Total flux [p/s]", "nan"))
                from_counts = 4 * math.pi * pixel ** 2 * factor * of_counts
                holds = holds and close(told, flux, 1e-12, 1.0) and close(told, from_counts, 1e-5, 1.0)
            check(holds, f"{unit}, {name}: {pixels} pixels, {of_counts:.0f} counts; the table says {measured:.8g}"
                  + (f", {told:.8g} photons/s" if unit == "radiance" else ""))
            plants += 1
    check(plants == 34, f"{plants} totals were compared")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1])))
