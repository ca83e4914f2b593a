// SPDX-License-Identifier: MIT
#include "math/ResultComputation.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "math/Formula.h"
#include "math/OperandPreparation.h"
#include "math/ToolLog.h"

namespace {

using imagemath::OperandRecord;

const QString CALLER = QStringLiteral("Image Math");

const imagemath::Formula *formulaOf(const QString &text)
{
    for (const imagemath::Formula &formula : imagemath::formulas()) {
        if (text == QLatin1String(formula.text))
            return &formula;
    }
    return nullptr;
}

bool correctAsRecorded(CVXSDataset &dataset, const OperandRecord &record, QString *reason)
{
    dataset.doFlatFieldCorrection(record.flatFieldCorrected);
    dataset.doBackgroundSubtraction(record.backgroundSubtracted);
    if (dataset.isLuminFlatFieldCorrected() == record.flatFieldCorrected &&
        dataset.isLuminBackgroundSubtracted() == record.backgroundSubtracted)
        return true;
    *reason = QStringLiteral("%1 cannot be corrected as it was: %2")
                  .arg(record.clickNumber, dataset.lastError().isEmpty()
                                               ? QStringLiteral("its correction images are others now")
                                               : dataset.lastError());
    return false;
}

bool calibrate(const CVXSDataset &dataset, tag_edisplayunit unit, CILImage *image, QString *reason)
{
    if (dataset.getCalibratedLuminImage(unit, image, CALLER) == ESTATUS_SUCCESS)
        return true;
    *reason = dataset.lastError();
    return false;
}

} // namespace

QString imagemath::evaluateOn(const Formula &formula, CILImage &a, CILImage &b, CILImage &countsB, float k,
                              const CVXSDataset &datasetB, TissueMaskMemo &masks, CILImage &result)
{
    for (CILImage *image : {&a, &b, &countsB})
        image->ChangeType(VXS_FLOAT);
    Operands operands{a, b, countsB, k};
    QString maskedBy;
    if (formula.readsSceneOfB) {
        operands.ratioScale = fluorescenceLevelScale(datasetB.getClickInfo());
        if (const CILImage *photograph = datasetB.getCoreImage(EIMAGE_PHOTOGRAPH)) {
            operands.tissueMask = &masks.mask(*photograph, a.get_width(), a.get_height());
            maskedBy = datasetB.getClickNumber();
        } else if (datasetB.getImageList()->isPresent(EIMAGE_PHOTOGRAPH)) {
            logLine(QStringLiteral("The photograph of %1 cannot be read; the result has no tissue mask")
                        .arg(datasetB.getClickNumber()));
        }
    }
    formula.evaluate(operands, result);
    return maskedBy;
}

CILImage imagemath::computeAgain(const ResultRecord &record, CVXSDataset &a, CVXSDataset &b, QString *reason)
{
    const Formula *formula = formulaOf(record.operation);
    tag_edisplayunit unit = EUNIT_COUNTS;
    if (!formula || !unitOfKey(record.unit, &unit)) {
        *reason = formula ? QStringLiteral("\"%1\" is not a unit").arg(record.unit)
                          : QStringLiteral("\"%1\" is not a formula").arg(record.operation);
        return CILImage();
    }
    CILImage imageA;
    CILImage imageB;
    CILImage countsB;
    if (!correctAsRecorded(a, record.a, reason) || !correctAsRecorded(b, record.b, reason) ||
        !calibrate(a, unit, &imageA, reason) || !calibrate(b, unit, &imageB, reason))
        return CILImage();
    // Only the thresholded ratio reads B's counts, which an operand in efficiency may not have.
    const ESTATUS hasCounts = b.getCalibratedLuminImage(EUNIT_COUNTS, &countsB, CALLER);
    if (formula->readsSceneOfB && hasCounts != ESTATUS_SUCCESS) {
        *reason = b.lastError();
        return CILImage();
    }
    const Combination combination = compareOperands(a.getFOVForImage(EIMAGE_LUMINESCENT), imageA,
                                                    b.getFOVForImage(EIMAGE_LUMINESCENT), imageB);
    if (combination != Combination::Possible) {
        *reason = messageOf(combination).join(QLatin1Char(' '));
        return CILImage();
    }
    reconcileBinning(imageA, imageB, countsB);
    CILImage result;
    TissueMaskMemo masks;
    evaluateOn(*formula, imageA, imageB, countsB, record.k, b, masks, result);
    if (result.isEmpty())
        *reason = QStringLiteral("the formula gives no image");
    return result;
}
