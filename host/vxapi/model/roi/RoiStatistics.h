// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vximage/CILImage.h"

#include <limits>

/// Statistics of the pixels of an ROI. Only finite pixels count; NaN where there is no such pixel.
struct SRoiStatistics
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

/// Statistics of an image under an ROI, summed in double with the rounding errors carried along. `pixelSize`
/// [cm] is the field of view's width over the image's width; pixel (x, y) has its centre at ((x + 0.5)
/// pixelSize, (y + 0.5) pixelSize). What lies outside of the image has no pixels; a pixel size that is not
/// above 0 gives none at all.
VXAPI_EXPORT SRoiStatistics roiStatistics(const CILImage &image, const CROIBase &roi, double pixelSize);
