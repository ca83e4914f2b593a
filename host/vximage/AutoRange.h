// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

/// The automatic display range of an image, in the unit of its pixels.
///
///     double low = 0.0, high = 0.0;
///     if (ilAutoRange(image, 65000.0, 25000, &low, &high))
///         palette.SetImageMinMax(low, high);
///
/// The pixels that count are the finite ones below `ceiling` (those at or above it are saturated), with
/// smallest and largest value min and max; all finite ones when none is below. Of them
///
///     high = min + (max - min) * (b + 1) / count     b: the first of `count` equal bins from min to max
///                                                       with 99.95 % of the pixels in it and below
///     low = the larger of 0.05 * max and min         min alone where 0.05 * max is not below high (a few
///                                                    pixels far brighter than the rest; only negative ones)
///
/// An image without spread gets (min, max). False, with low and high untouched, when there is no finite pixel
/// or (with a message) no memory. `count` is kept between 1 and 2^24. Remembered with the pixels for the last
/// few (ceiling, count).
VXIMAGE_EXPORT bool ilAutoRange(const CILImage &image, double ceiling, int count, double *low, double *high);
