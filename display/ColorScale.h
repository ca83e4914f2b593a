// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "host/vximage/CILImage.h"

#include <QString>

class CVXSDataset;

/// Colour-scale limits: which values the first and the last colour of a table stand for.
///
///     colorscale::Limits limits = colorscale::united(colorscale::fullRange(a), colorscale::fullRange(b));
///     const QString unit = unitKey(EUNIT_RADIANCE);
///     if (colorscale::extendedAutoRange(result, &datasetA, unit, &limits) == ESTATUS_SUCCESS)
///         palette.SetImageMinMax(limits.min, limits.max); // in the unit of the pixels
///     image.setPalette(palette);
///
/// Limits never change a pixel. Statistics skip what is not finite; an image without a finite pixel has the
/// limits 0 and 0. The automatic range is the host's (VX_LuminImageMinMax): saturated pixels are left out,
/// and it runs from the larger of 5 % of the maximum and the smallest value to the level below which 99.95 %
/// of the pixels lie.
namespace colorscale {

struct Limits
{
    double min = 0.0;
    double max = 0.0;
};

/// The image's own smallest and largest finite pixel; an image that was not asked before is read once.
Limits fullRange(const CILImage &image);

/// The limits that hold both.
Limits united(const Limits &a, const Limits &b);

/// The factor from counts to radiance [photons/s/cm^2/sr a count] of a dataset's luminescent image.
double radianceFactor(CVXSDataset *dataset);

/// The host's automatic range of an image in the named unit (any case). Counts at which the camera saturates
/// become radiance with the dataset's factor; no other unit is converted. On failure the limits are as the
/// host left them.
ESTATUS autoRange(CILImage &image, CVXSDataset *dataset, const QString &unitName, Limits *limits);

/// The same for two images or a result: radiant efficiency is converted as well, by the bottom illumination
/// power when there is one, and the efficiency of a transillumination dataset is scanned by positiveRange()
/// instead.
ESTATUS extendedAutoRange(CILImage &image, CVXSDataset *dataset, const QString &unitName, Limits *limits);

/// Smallest and largest finite pixel above 0; (1e10, 0) when there is none.
Limits positiveRange(const CILImage &image);

} // namespace colorscale
