// SPDX-License-Identifier: MIT
#include "display/ColorScale.h"

#include "display/DisplayUnitNames.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/VXCalibration.h"

#include <algorithm>
#include <cmath>

namespace colorscale {

namespace {

bool isUnit(const QString &name, tag_edisplayunit unit)
{
    return name.toLower() == displayUnitName(unit).toLower();
}

ESTATUS hostRange(CILImage &image, const QString &unitName, double factor, Limits *limits)
{
    return VX_LuminImageMinMax(&image, &limits->min, &limits->max, unitName, factor, VX_SATURATED_COUNTS,
                               VX_RANGE_BINS);
}

} // namespace

Limits fullRange(const CILImage &image)
{
    return {double(image.getMin()), double(image.getMax())};
}

Limits united(const Limits &a, const Limits &b)
{
    return {std::min(a.min, b.min), std::max(a.max, b.max)};
}

double radianceFactor(CVXSDataset *dataset)
{
    return VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset, displayUnitName(EUNIT_COUNTS),
                                                displayUnitName(EUNIT_RADIANCE));
}

ESTATUS autoRange(CILImage &image, CVXSDataset *dataset, const QString &unitName, Limits *limits)
{
    const double factor = isUnit(unitName, EUNIT_RADIANCE) ? radianceFactor(dataset) : 1.0;
    return hostRange(image, unitName, factor, limits);
}

ESTATUS extendedAutoRange(CILImage &image, CVXSDataset *dataset, const QString &unitName, Limits *limits)
{
    double factor = 1.0;
    if (isUnit(unitName, EUNIT_RADIANCE)) {
        factor = radianceFactor(dataset);
    } else if (isUnit(unitName, EUNIT_RADIANT_EFFICIENCY)) {
        factor = radianceFactor(dataset);
        const double power = dataset->getBottomIlluminationPower();
        if (power > 0.0)
            factor /= power;
    }
    if (isUnit(unitName, EUNIT_EFFICIENCY) && dataset->isTransIlluminationDataset()) {
        *limits = positiveRange(image);
        return ESTATUS_SUCCESS;
    }
    return hostRange(image, unitName, factor, limits);
}

Limits positiveRange(const CILImage &image)
{
    CILImage copy = image;
    copy.ChangeType(VXS_DOUBLE);
    Limits limits{1e10, 0.0};
    const double *pixels = static_cast<const CILImage &>(copy).pixels<double>();
    const std::size_t count = copy.pixelCount();
    for (std::size_t i = 0; i < count; ++i) {
        const double value = pixels[i];
        if (value > 0.0 && std::isfinite(value)) {
            limits.min = value < limits.min ? value : limits.min;
            limits.max = value > limits.max ? value : limits.max;
        }
    }
    return limits;
}

} // namespace colorscale
