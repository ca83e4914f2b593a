// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

/// The automatic display range of an image.
///
/// Pixels at or above `ceiling` (saturated) and pixels that are not finite are left out. Of the rest: high is
/// the level below which 99.95 % of the pixels lie, found in a histogram of `count` bins between their
/// smallest and largest value; low is the larger of 5 % of the largest value and the smallest value, or just
/// the smallest where that 5 % is not below high (a few pixels far brighter than the rest; only negative
/// pixels). An image without spread gets (min, max) as they are. When no finite pixel lies below the ceiling,
/// all finite pixels are taken. False, with low and high untouched, when there is no finite pixel. Remembered
/// with the pixels for the last few (ceiling, count).
VXIMAGE_EXPORT bool ilAutoRange(const CILImage &image, double ceiling, int count, double *low, double *high);
