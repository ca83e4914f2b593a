// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vximage/CILImage.h"

#include <limits>

/// Statistics of the pixels of an ROI. Only finite pixels count; NaN where there is no such pixel.
struct RoiStatistics
{
    qint64 pixels = 0;          ///< pixels whose centre belongs to the ROI and whose value is finite
    qint64 notFinitePixels = 0; ///< of the ROI, left out
    double sum = 0.0;
    double mean = std::numeric_limits<double>::quiet_NaN();
    double standardDeviation =
        std::numeric_limits<double>::quiet_NaN(); ///< of the sample (n - 1); NaN for fewer than two pixels
    double minimum = std::numeric_limits<double>::quiet_NaN();
    double maximum = std::numeric_limits<double>::quiet_NaN();
};

/// Statistics of an image under an ROI.
///
///     const double pixelSize = dataset.getFOVForImage(EIMAGE_LUMINESCENT) / image.getWidth(); // [cm]
///     const RoiStatistics statistics = roiStatistics(image, *roi, pixelSize);
///
/// The sum carries the rounding error of every step (Knuth, The Art of Computer Programming, volume 2,
/// section 4.2.2, theorem B); mean = sum / n; the standard deviation sqrt(sum (x - mean)^2 / (n - 1)) takes a
/// second pass about the mean, corrected for its rounding (Chan, Golub and LeVeque, The American Statistician
/// 37, 1983), as the difference of large sums would tell nothing of a small spread. `pixelSize`
/// [cm] is the field of view's width over the image's width; pixel (x, y) has its centre at ((x + 0.5)
/// pixelSize, (y + 0.5) pixelSize). What lies outside of the image has no pixels; a pixel size that is not
/// above 0 gives none at all.
VXAPI_EXPORT RoiStatistics roiStatistics(const CILImage &image, const CROIBase &roi, double pixelSize);

/// How many finite pixels of the ROI are at or above a level, in the unit of the pixels.
VXAPI_EXPORT qint64 roiPixelsAtOrAbove(const CILImage &image, const CROIBase &roi, double pixelSize,
                                       double level);
