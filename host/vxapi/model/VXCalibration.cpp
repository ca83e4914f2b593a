// SPDX-License-Identifier: MIT
#include "host/vxapi/model/VXCalibration.h"

#include "host/vxapi/model/CalibrationFactors.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vximage/AutoRange.h"
#include "host/vximage/CILImage.h"
#include "host/vxutils/CVXSLog.h"

#include <cmath>
#include <limits>
#include <QCoreApplication>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Calibration)
};

double noFactor(const CVXSDataset *dataset, const QString &reason)
{
    const QString who = dataset ? datasetfiles::nameFor(dataset->getClickNumber(), dataset->getFolderPath())
                                : Text::tr("no dataset");
    vxLog(ELOG_FAILURE, Text::tr("%1 cannot be calibrated: %2").arg(who, reason));
    return std::numeric_limits<double>::quiet_NaN();
}

} // namespace

ESTATUS VX_LuminImageMinMax(CILImage *image, double *min, double *max, const QString &unitName, double factor,
                            double ceiling, int count)
{
    tag_edisplayunit unit;
    if (!image || !min || !max || !unitOfKey(unitName, &unit) || count < 1)
        return ESTATUS_BAD_VALUE;
    return ilAutoRange(*image, ceiling * factor * image->pixelsAdded(), count, min, max) ? ESTATUS_SUCCESS
                                                                                         : ESTATUS_NO_RANGE;
}

double VX_CalibrateIntensityWithFilterTrans(tag_eimagetype type, CVXSDataset *dataset,
                                            const QString &fromUnit, const QString &toUnit)
{
    tag_edisplayunit from;
    tag_edisplayunit to;
    if (!dataset)
        return noFactor(dataset, Text::tr("there is none"));
    if (type != EIMAGE_LUMINESCENT)
        return noFactor(dataset, Text::tr("only luminescent images have calibration constants"));
    if (!unitOfKey(fromUnit, &from))
        return noFactor(dataset, Text::tr("there is no unit \"%1\"").arg(fromUnit));
    if (!unitOfKey(toUnit, &to))
        return noFactor(dataset, Text::tr("there is no unit \"%1\"").arg(toUnit));
    if (dataset->getShownUnit() >= EUNIT_COUNT) // nothing is converted
        return 1.0;
    QString reason;
    const double value =
        calibration::factor(*dataset->getClickInfo(), {dataset->getBinningFactor()}, from, to, &reason);
    return std::isnan(value) ? noFactor(dataset, reason) : value;
}
