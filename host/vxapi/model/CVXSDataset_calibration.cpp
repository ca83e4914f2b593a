// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CalibrationFactors.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vximage/ImageShape.h"
#include "host/vxutils/CVXSLog.h"

#include <cmath>

using namespace clickinfo;

namespace {

QString sizeOf(const CILImage &image)
{
    return QStringLiteral("%1 x %2").arg(image.getWidth()).arg(image.getHeight());
}

/// The image in 32-bit float on the grid of `like`.
CILImage onGridOf(const CILImage &like, const CILImage &image)
{
    CILImage grid(image);
    grid.ChangeType(VXS_FLOAT);
    if (grid.getWidth() >= like.getWidth())
        grid.downSample(like.getWidth(), like.getHeight(), IL_RESAMPLE_AREA);
    else
        grid.upSample(like.getWidth(), like.getHeight(), IL_RESAMPLE_AREA);
    return grid;
}

} // namespace

ESTATUS CVXSDataset::getCalibratedLuminImage(tag_edisplayunit unit, CILImage *target,
                                             const QString &caller) const
{
    if (!target)
        return ESTATUS_BAD_VALUE;
    QString reason;
    const ESTATUS status = d->calibrated(unit, target, &reason);
    if (status == ESTATUS_SUCCESS)
        return status;
    *target = CILImage();
    const QString unitName = unitKey(unit);
    d->lastError = tr("%1: the luminescent image cannot be given in %2: %3")
                       .arg(datasetfiles::nameFor(d->clickNumber, d->folder),
                            unitName.isEmpty() ? tr("an unknown unit") : unitName, reason);
    vxLog(ELOG_FAILURE, d->lastError, tr("asked for by %1").arg(caller), int(status));
    return status;
}

ESTATUS CVXSDataset::Private::calibrated(tag_edisplayunit unit, CILImage *target, QString *reason)
{
    Ingredients ingredients;
    ESTATUS status = prepare(unit, &ingredients, reason);
    if (status != ESTATUS_SUCCESS)
        return status;
    const CalibrationKey calibration = ingredients.calibration(unit);
    const bool mayRemember = ingredients.areNamed();
    if (const CILImage *known = mayRemember ? remembered.find(calibration) : nullptr) {
        *target = *known;
    } else {
        compute(ingredients, target);
        if (target->isEmpty()) {
            *reason = tr("there is not enough memory");
            return ESTATUS_FAILURE;
        }
        if (mayRemember)
            remembered.remember(calibration, *target);
    }
    target->setBinningFactor(float(binningFactor()));
    target->setPalette(palette());
    target->setValuesAddUp(unit == EUNIT_COUNTS && unitlessValues() == EUNIT_COUNT &&
                           rules == ECALIBRATION_NOW);
    return ESTATUS_SUCCESS;
}

// Finds everything that the calibrated image is made of, without touching a pixel that is loaded already.
ESTATUS CVXSDataset::Private::prepare(tag_edisplayunit unit, Ingredients *ingredients, QString *reason)
{
    if (unitKey(unit).isEmpty()) {
        *reason = tr("there is no unit of number %1").arg(int(unit));
        return ESTATUS_BAD_VALUE;
    }
    ingredients->luminescent = coreImage(EIMAGE_LUMINESCENT);
    if (!ingredients->luminescent) {
        const bool isPresent = images.isPresent(EIMAGE_LUMINESCENT);
        *reason = isPresent ? images.error(EIMAGE_LUMINESCENT) : tr("it holds no luminescent image");
        return isPresent ? ESTATUS_BAD_IMAGE : ESTATUS_NO_IMAGE;
    }
    tag_edisplayunit storedUnit = EUNIT_COUNTS;
    const ESTATUS status =
        isResult() ? unitOfResult(unit, &storedUnit, reason) : addCompanions(unit, ingredients, reason);
    if (status != ESTATUS_SUCCESS)
        return status;
    if (unitlessValues() != EUNIT_COUNT)
        return ESTATUS_SUCCESS;
    ingredients->factor = calibration::factor(clickInfo, {binningFactor(), rules}, storedUnit, unit, reason);
    return std::isnan(ingredients->factor) ? ESTATUS_BAD_VALUE : ESTATUS_SUCCESS;
}

QString CVXSDataset::obstacleToUnit(tag_edisplayunit unit) const
{
    if (!d->images.isPresent(EIMAGE_LUMINESCENT))
        return tr("it holds no luminescent image");
    QString reason;
    tag_edisplayunit storedUnit = EUNIT_COUNTS;
    if (d->isResult()) {
        if (d->unitlessValues() != EUNIT_COUNT ||
            d->unitOfResult(unit, &storedUnit, &reason) != ESTATUS_SUCCESS)
            return reason;
    } else if (unit == EUNIT_EFFICIENCY && !d->images.isPresent(EIMAGE_EXCITATION)) {
        return tr("there is no %1").arg(tr(DatasetImages::kind(EIMAGE_EXCITATION).name));
    }
    calibration::factor(d->clickInfo, {d->binningFactor(), d->rules}, storedUnit, unit, &reason);
    return reason;
}

// The pixels of a result are in a unit already, with all corrections of its operands in them.
ESTATUS CVXSDataset::Private::unitOfResult(tag_edisplayunit wanted, tag_edisplayunit *stored,
                                           QString *reason) const
{
    if (unitlessValues() != EUNIT_COUNT)
        return ESTATUS_SUCCESS;
    const QString key = textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_INTENSITY_CALIBRATION);
    if (!unitOfKey(key, stored)) {
        *reason = tr("\"%1\" in section \"%2\" is \"%3\", which is no unit")
                      .arg(KEY_INTENSITY_CALIBRATION, SECTION_GRAPH_CONTROLS, key);
        return ESTATUS_BAD_VALUE;
    }
    if (*stored != wanted && (*stored == EUNIT_EFFICIENCY || wanted == EUNIT_EFFICIENCY)) {
        *reason = tr("it is a result in %1, and no factor leads to or from efficiency").arg(unitKey(*stored));
        return ESTATUS_BAD_VALUE;
    }
    return ESTATUS_SUCCESS;
}

ESTATUS CVXSDataset::Private::addCompanions(tag_edisplayunit unit, Ingredients *ingredients, QString *reason)
{
    const bool isRatio = unit == EUNIT_EFFICIENCY;
    const bool hasOffset =
        isBackgroundOn && images.isPresent(EIMAGE_BACKGROUND) && !isStoredBackgroundSubtracted();
    // Image and excitation reference are seen through the same lens: its shading cancels out.
    const bool hasShading = isFlatFieldOn && !isStoredFlatFieldCorrected() && !isRatio;
    ESTATUS status = ESTATUS_SUCCESS;
    const auto add = [&](bool isNeeded, tag_eimagetype type, const CILImage **image) {
        if (isNeeded && status == ESTATUS_SUCCESS)
            status = companion(type, *ingredients->luminescent, image, reason);
    };
    add(hasOffset, EIMAGE_BACKGROUND, &ingredients->background);
    add(hasShading, EIMAGE_FLATFIELD, &ingredients->flatField);
    add(isRatio, EIMAGE_EXCITATION, &ingredients->excitation);
    return status;
}

ESTATUS CVXSDataset::Private::companion(tag_eimagetype type, const CILImage &stored, const CILImage **image,
                                        QString *reason)
{
    const QString name = tr(DatasetImages::kind(type).name);
    *image = coreImage(type);
    if (!*image) {
        const bool isPresent = images.isPresent(type);
        *reason = isPresent ? tr("the %1 cannot be read: %2").arg(name, images.error(type))
                            : tr("there is no %1").arg(name);
        return isPresent ? ESTATUS_BAD_IMAGE : ESTATUS_NO_IMAGE;
    }
    if (type == EIMAGE_FLATFIELD) {
        *reason = obstacleToFlatField();
        return reason->isEmpty() ? ESTATUS_SUCCESS : ESTATUS_BAD_IMAGE;
    }
    if (!haveSameSize(**image, stored)) { // counts of another binning mean something else
        *reason = tr("%1: the %2 has %3 pixels, the luminescent image %4")
                      .arg(folder + images.fileName(type), name, sizeOf(**image), sizeOf(stored));
        return ESTATUS_BAD_IMAGE;
    }
    return ESTATUS_SUCCESS;
}

// A flat field tells the shading alone: neither its size nor its scale matter, but its shape does.
QString CVXSDataset::Private::obstacleToFlatField()
{
    const CILImage *flatField = coreImage(EIMAGE_FLATFIELD);
    const CILImage *image = coreImage(EIMAGE_LUMINESCENT);
    if (!flatField || !image || rules == ECALIBRATION_1_0)
        return QString();
    const QString file = folder + images.fileName(EIMAGE_FLATFIELD);
    if (!haveSameAspectRatio(*flatField, *image))
        return tr("%1: the flat-field image has %2 pixels, which is not the shape of the luminescent image "
                  "of %3")
            .arg(file, sizeOf(*flatField), sizeOf(*image));
    if (!(flatField->getMax() > 0.0f))
        return tr("%1: the flat-field image has no pixel above 0").arg(file);
    return QString();
}

// Image arithmetic waits until a pixel is asked for, so all of this is one pass over the pixels.
void CVXSDataset::Private::compute(const Ingredients &ingredients, CILImage *target) const
{
    CILImage image(*ingredients.luminescent);
    image.setDescription(std::string()); // it told of the stored pixels
    image.ChangeType(VXS_FLOAT);
    if (ingredients.background)
        image -= *ingredients.background;
    if (ingredients.excitation) {
        CILImage reference(*ingredients.excitation);
        reference.ChangeType(VXS_FLOAT);
        if (ingredients.background)
            reference -= *ingredients.background;
        image /= reference;
    }
    if (ingredients.flatField) {
        CILImage flatField = onGridOf(image, *ingredients.flatField);
        const double most = double(ingredients.flatField->getMax());
        if (most != 1.0 && rules == ECALIBRATION_NOW)
            flatField *= 1.0 / most;
        image /= flatField;
    }
    if (ingredients.factor != 1.0)
        image *= ingredients.factor;
    *target = image;
}
