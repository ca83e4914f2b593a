// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxutils/CVXSLog.h"

#include <cmath>

using namespace clickinfo;

namespace {

constexpr double FULL_SPHERE = 12.566370614359172; ///< 4 pi [sr]

/// What the sum over an ROI becomes to be the total of that unit.
double totalFactor(tag_edisplayunit unit, double pixelArea)
{
    switch (unit) {
    case EUNIT_RADIANCE:
    case EUNIT_RADIANT_EFFICIENCY:
        return pixelArea * FULL_SPHERE;
    case EUNIT_EFFICIENCY:
    case EUNIT_PRODUCT:
    case EUNIT_RATIO:
        return pixelArea;
    default:
        return 1.0;
    }
}

/// Everything of the ROI that has a record.
QVector<CROIBase> partsOf(const CROIBase &roi)
{
    QVector<CROIBase> parts = {roi};
    if (roi.shape() != EROI_GRID)
        return parts;
    for (int row = 0; row < roi.rows(); ++row) {
        for (int column = 0; column < roi.columns(); ++column)
            parts += roi.cell(row, column);
    }
    return parts;
}

} // namespace

ESTATUS CVXSDataset::MeasureROIAndMakeMeasRecords(bool all)
{
    const QList<CROIBase *> rois = roiManager()->rois();
    if (rois.isEmpty())
        return ESTATUS_SUCCESS;
    auto *manager = CRoiMeasurementManager::getRoiMeasurementManager();
    Private::MeasuredImages images;
    QString error;
    const ESTATUS status = d->imagesToMeasure(*this, &images, &error);
    if (status != ESTATUS_SUCCESS) {
        if (!error.isEmpty()) {
            d->lastError = error;
            vxLog(ELOG_FAILURE, error, QString(), int(status));
        }
        if (ownsRecords())
            manager->removeDataset(d->clickNumber);
        return status;
    }
    const bool areOutdated = all || !d->measured.matches(images.content());
    QVector<CRoiMeasInfo> records;
    for (const CROIBase *roi : rois) {
        for (const CROIBase &part : partsOf(*roi)) {
            if (areOutdated || !manager->isUpToDate(d->clickNumber, part.name()))
                records += d->measure(images, part);
        }
    }
    d->measured = images.content();
    d->hasRecords = true;
    manager->store(records);
    return ESTATUS_SUCCESS;
}

// An error that getCalibratedLuminImage() has told leaves the text empty.
ESTATUS CVXSDataset::Private::imagesToMeasure(const CVXSDataset &dataset, MeasuredImages *measured,
                                              QString *error)
{
    const QString name = datasetfiles::nameFor(clickNumber, folder);
    if (!dataset.ownsRecords()) {
        *error =
            tr("%1: its ROIs cannot be measured: another dataset of that click number is open").arg(name);
        return ESTATUS_FAILURE;
    }
    const QString caller = QStringLiteral("ROI measurement");
    ESTATUS status = dataset.getCalibratedLuminImage(unit, &measured->calibrated, caller);
    if (status != ESTATUS_SUCCESS)
        return status;
    measured->pixelSize = dataset.getFOVForImage(EIMAGE_LUMINESCENT) / measured->calibrated.getWidth();
    if (!(measured->pixelSize > 0.0)) {
        *error = tr("%1: its ROIs cannot be measured: \"%2\" of the luminescent image is missing or not a "
                    "number %3")
                     .arg(name, KEY_FOV, constantRange(KEY_FOV).text());
        return ESTATUS_BAD_VALUE;
    }
    measured->ceiling = dataset.getSaturationCeiling();
    if (!std::isnan(measured->ceiling))
        measured->stored = *dataset.getCoreImage(EIMAGE_LUMINESCENT);
    if (dataset.getShownUnit() == EUNIT_COUNTS) {
        measured->counts = measured->calibrated;
        return ESTATUS_SUCCESS;
    }
    // No way leads from there to counts.
    if (dataset.getShownUnit() >= EUNIT_COUNT || (unit == EUNIT_EFFICIENCY && isResult()))
        return ESTATUS_SUCCESS;
    QString reason;
    status = calibrated(EUNIT_COUNTS, &measured->counts, &reason);
    if (status != ESTATUS_SUCCESS) {
        measured->counts = CILImage();
        vxLog(ELOG_WARNING, tr("%1: its ROIs have no total counts: %2").arg(name, reason), caller,
              int(status));
    }
    return ESTATUS_SUCCESS;
}

CRoiMeasInfo CVXSDataset::Private::measure(const MeasuredImages &measured, const CROIBase &roi) const
{
    CRoiMeasInfo record;
    record.clickNumber = clickNumber;
    record.roiName = roi.name();
    record.shape = roi.shape();
    record.kind = roi.kind();
    const tag_edisplayunit unitless = unitlessValues();
    record.unit = unitless == EUNIT_COUNT ? unit : unitless;
    record.calibrated = roiStatistics(measured.calibrated, roi, measured.pixelSize);
    if (record.unit == EUNIT_COUNTS)
        record.counts = record.calibrated;
    else if (!measured.counts.isEmpty())
        record.counts = roiStatistics(measured.counts, roi, measured.pixelSize);
    else
        record.counts.sum = std::numeric_limits<double>::quiet_NaN();
    if (!measured.stored.isEmpty())
        record.saturatedPixels =
            roiPixelsAtOrAbove(measured.stored, roi, measured.pixelSize, measured.ceiling);
    const double pixelArea = measured.pixelSize * measured.pixelSize;
    record.calibratedTotal = record.calibrated.sum * totalFactor(record.unit, pixelArea);
    record.area = double(record.calibrated.pixels + record.calibrated.notFinitePixels) * pixelArea;
    record.isValid = true;
    return record;
}

bool MeasuredContent::matches(const MeasuredContent &now) const
{
    // 0 names pixels that someone may be writing.
    return calibrated != 0 && calibrated == now.calibrated && counts == now.counts &&
           pixelSize == now.pixelSize;
}
