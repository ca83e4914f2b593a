// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QString>

class CILImage;
class CVXSDataset;

/// The ceiling of automatic ranges: camera counts from which a pixel says no more than "bright".
constexpr double VX_SATURATED_COUNTS = 65000.0;
/// The bins of their histogram.
constexpr int VX_RANGE_BINS = 25000;

/// The automatic display range of a luminescent image in the named unit.
///
/// Pixels at or above ceiling * factor (saturated; that many times more in an image whose pixels are the sums of
/// several, CILImage::pixelsAdded()) and pixels that are not finite are left out; `count` is
/// the number of histogram bins (see ilAutoRange()). ESTATUS_NO_RANGE, with min and max untouched, when the
/// image has no finite pixel; ESTATUS_BAD_VALUE for a unit name that does not exist.
VXAPI_EXPORT ESTATUS VX_LuminImageMinMax(CILImage *image, double *min, double *max, const QString &unitName,
                                         double factor, double ceiling, int count);

/// The factor that converts the dataset's image of that type from one unit to another (unit keys, any case).
///
/// From first principles, for counts to radiance [photons/s/cm^2/sr]:
///   L = counts * g / (QE * T) * 4 N^2 (1 + m)^2 / (pi * A * t)
/// with g electrons a count, QE quantum efficiency, T transmission of lens and filters, N f-number, m
/// magnification, A = (pixel pitch * binning)^2 in cm^2 on the sensor, t exposure in s: a sensor behind a
/// lens sees E = pi L T / (4 N^2 (1 + m)^2). Radiant efficiency = radiance / excitation irradiance [uW/cm^2].
/// Efficiency is an image over a reference image, not a factor: converting to or from it gives 1. So does a
/// result that is a product or a ratio, which has no unit.
/// A constant that is missing, not above 0, out of the range that ConstantRanges.h gives, or not a finite
/// number gives NaN and a log line of level 3 that names dataset, key and value; so do an unknown unit and
/// another type than the luminescent image. Only the constants that the two units need are looked at.
VXAPI_EXPORT double VX_CalibrateIntensityWithFilterTrans(tag_eimagetype type, CVXSDataset *dataset,
                                                         const QString &fromUnit, const QString &toUnit);
