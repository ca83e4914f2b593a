// SPDX-License-Identifier: MIT
#include "math/Computation.h"

#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "math/FormText.h"
#include "math/Formula.h"
#include "math/PairNotes.h"
#include "math/ToolLog.h"

#include <QDateTime>
#include <QPointer>

namespace imagemath {

namespace {

const QString CALLER = QStringLiteral("Image Math");

void switchCorrections(CVXSDataset &dataset, const Corrections &wanted)
{
    const Corrections before = correctionsOf(dataset);
    if (before.flatField != wanted.flatField)
        dataset.doFlatFieldCorrection(wanted.flatField);
    if (before.background != wanted.background)
        dataset.doBackgroundSubtraction(wanted.background);
}

/// Hands corrections that the computation switches back when it goes, on the dataset itself: no later number
/// depends on a computation. What others switch meanwhile is theirs.
class CorrectionsKept
{
public:
    explicit CorrectionsKept(const Operand &operand) : m_dataset(operand.dataset)
    {
        if (!operand.dataset)
            return;
        m_before = correctionsOf(*operand.dataset);
        m_isSwitched = m_before.flatField != operand.corrections.flatField ||
                       m_before.background != operand.corrections.background;
    }
    ~CorrectionsKept()
    {
        if (m_dataset && m_isSwitched)
            switchCorrections(*m_dataset, m_before);
    }
    CorrectionsKept(const CorrectionsKept &) = delete;
    CorrectionsKept &operator=(const CorrectionsKept &) = delete;

private:
    QPointer<CVXSDataset> m_dataset; // who is shown the operands may close it
    Corrections m_before;
    bool m_isSwitched = false;
};

void correct(CVXSDataset &dataset, const Corrections &wanted, QStringList *problems)
{
    switchCorrections(dataset, wanted);
    const Corrections is = correctionsOf(dataset);
    if (is.flatField == wanted.flatField && is.background == wanted.background)
        return;
    problems->append(QStringLiteral("%1 cannot be corrected as it has to be: %2")
                         .arg(dataset.getClickNumber(),
                              dataset.lastError().isEmpty()
                                  ? QStringLiteral("its correction images are not what that takes")
                                  : dataset.lastError()));
}

/// False, with the reason as a problem, when it cannot be had.
bool calibrate(const CVXSDataset &dataset, tag_edisplayunit unit, CILImage *image, QStringList *problems)
{
    if (dataset.getCalibratedLuminImage(unit, image, CALLER) == ESTATUS_SUCCESS)
        return true;
    problems->append(dataset.lastError());
    return false;
}

/// False when the caller wants no more.
bool fetch(const Operand &operand, tag_edisplayunit unit, CILImage *image, const Steps &steps,
           Outcome *outcome, QString *emptyBecause)
{
    if (!operand.dataset)
        return true;
    correct(*operand.dataset, operand.corrections, &outcome->problems);
    if (!calibrate(*operand.dataset, unit, image, &outcome->problems))
        *emptyBecause = outcome->problems.last();
    return !steps.operandFetched || steps.operandFetched(*outcome, *image);
}

// B's counts are fetched for every formula, though only the thresholded ratio reads them: the dataset
// remembers them. An operand in efficiency may have none.
void fetchCounts(const Request &request, CILImage *countsB, QStringList *problems)
{
    if (!request.b.dataset)
        return;
    QStringList ignored;
    const bool isNeeded = request.formula && request.formula->isThresholded;
    calibrate(*request.b.dataset, EUNIT_COUNTS, countsB, isNeeded ? problems : &ignored);
}

/// Which operand has no pixels; empty when none is without.
QString missingOperandText(const EmptyBecause &empty)
{
    if (!empty.a.isEmpty() && !empty.b.isEmpty())
        return formText("A and B have no pixels.");
    if (!empty.a.isEmpty())
        return formText("A has no pixels.");
    return empty.b.isEmpty() ? QString() : formText("B has no pixels.");
}

/// Why two operands with pixels gave none.
QString emptyResultText(const Images &images, const QStringList &problems)
{
    const auto size = [](const CILImage &image) {
        return QStringLiteral("%1 × %2").arg(image.getWidth()).arg(image.getHeight());
    };
    if (size(images.a) != size(images.b))
        return formText(
                   "One binning is no multiple of the other: A has %1 pixels, binned by %2, and B has %3, "
                   "binned by %4.")
            .arg(size(images.a))
            .arg(double(images.a.binningFactor()))
            .arg(size(images.b))
            .arg(double(images.b.binningFactor()));
    return problems.isEmpty() ? formText("The formula gave no pixels.") : problems.last();
}

Combination compared(const Request &request, const Images &images)
{
    if (!request.a.dataset || !request.b.dataset)
        return Combination::MissingImage;
    return compareOperands(request.a.dataset->getFOVForImage(EIMAGE_LUMINESCENT), images.a,
                           request.b.dataset->getFOVForImage(EIMAGE_LUMINESCENT), images.b);
}

OperandRecord recordWithSaturation(const CVXSDataset &dataset)
{
    OperandRecord record = recordOf(dataset);
    const CILImage *stored = dataset.getCoreImage(EIMAGE_LUMINESCENT);
    record.saturatedPixels = stored ? dataset.getSaturatedPixelCount() : -1;
    if (record.saturatedPixels < 0)
        return record;
    record.pixels = qint64(stored->pixelCount());
    record.saturationCeiling = dataset.getSaturationCeiling();
    return record;
}

bool prepare(const Request &request, const Images &images, CILImage &countsB, const Steps &steps,
             Outcome *outcome)
{
    if (!fetch(request.a, request.unit, &images.a, steps, outcome, &outcome->empty.a) ||
        !fetch(request.b, request.unit, &images.b, steps, outcome, &outcome->empty.b))
        return false;
    fetchCounts(request, &countsB, &outcome->problems);
    outcome->combination = compared(request, images);
    outcome->empty.result = missingOperandText(outcome->empty);
    if (outcome->combination == Combination::Possible) {
        reconcileBinning(images.a, images.b, countsB);
        // Before anybody switches the corrections back.
        outcome->record.unit = unitKey(request.unit);
        outcome->record.a = recordWithSaturation(*request.a.dataset);
        outcome->record.b = recordWithSaturation(*request.b.dataset);
    }
    return !steps.operandsReady || steps.operandsReady(*outcome);
}

/// What the thresholded ratio takes from B's dataset; the mask lives in `masks`. Gives the click number whose
/// photograph masks the result, empty without one.
QString takeSceneOf(const CVXSDataset &datasetB, TissueMaskMemo &masks, Operands *operands, Notes *notes)
{
    operands->ratioScale = ratioScaleOf(datasetB.getClickInfo());
    if (const CILImage *photograph = datasetB.getCoreImage(EIMAGE_PHOTOGRAPH)) {
        *notes += maskFieldNotes(datasetB, *photograph);
        operands->tissueMask = &masks.mask(*photograph, operands->a.get_width(), operands->a.get_height());
        return datasetB.getClickNumber();
    }
    if (datasetB.getImageList()->isPresent(EIMAGE_PHOTOGRAPH))
        logLine(QStringLiteral("The photograph of %1 cannot be read; the result has no tissue mask")
                    .arg(datasetB.getClickNumber()));
    return QString();
}

/// What the operands alone say beside the result. The record has the corrections with which they were computed.
Notes notesOn(const Request &request, const Images &images, const ResultRecord &record)
{
    const CVXSDataset &a = *request.a.dataset;
    const CVXSDataset &b = *request.b.dataset;
    Notes notes = valuesNotes(a, b, request.unit);
    notes += settingsNotes(a, b, request.unit) + correctionNotes(record.a, record.b, request.unit);
    // What is computed has no camera's offset of its own.
    if (!clickinfo::isMathResult(*a.getClickInfo()))
        notes += offsetNotes(QStringLiteral("A"), record.a, a.getBinningFactor(), images.a);
    if (!clickinfo::isMathResult(*b.getClickInfo()))
        notes += offsetNotes(QStringLiteral("B"), record.b, b.getBinningFactor(), images.b);
    notes += saturationNotes(a, b);
    if (request.roiOfK)
        notes += roiNotes(*request.roiOfK, record.a, record.b, request.unit);
    return notes;
}

void evaluate(const Request &request, const Images &images, CILImage &countsB, TissueMaskMemo &masks,
              Outcome *outcome)
{
    ResultRecord *record = &outcome->record;
    outcome->notes += notesOn(request, images, *record);
    for (CILImage *image : {&images.a, &images.b, &countsB})
        image->ChangeType(VXS_FLOAT);
    Operands operands{images.a, images.b, countsB, request.k};
    if (request.formula->isThresholded)
        record->maskPhotograph.clickNumber =
            takeSceneOf(*request.b.dataset, masks, &operands, &outcome->notes);
    request.formula->evaluate(operands, images.result);
    record->operation = QLatin1String(request.formula->text);
    record->k = request.k;
    record->binning = double(images.result.binningFactor());
    record->roiOfK = request.roiOfK;
    record->notes = textsOf(outcome->notes);
    record->computed = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

} // namespace

Corrections correctionsOf(const CVXSDataset &dataset)
{
    return {dataset.isLuminFlatFieldCorrected(), dataset.isLuminBackgroundSubtracted()};
}

Corrections correctionsFor(const CVXSDataset &dataset)
{
    Corrections corrections = correctionsOf(dataset);
    corrections.flatField = corrections.flatField || dataset.getUnit() == EUNIT_RADIANCE;
    return corrections;
}

Outcome compute(const Request &request, const Images &images, TissueMaskMemo &masks, const Steps &steps)
{
    CILImage countsB;
    Outcome outcome;
    bool isWanted = true;
    {
        const CorrectionsKept ofA(request.a);
        const CorrectionsKept ofB(request.b);
        isWanted = prepare(request, images, countsB, steps, &outcome);
    }
    if (isWanted && request.formula && outcome.combination == Combination::Possible)
        evaluate(request, images, countsB, masks, &outcome);
    if (!outcome.record.operation.isEmpty() && images.result.isEmpty() && outcome.empty.result.isEmpty())
        outcome.empty.result = emptyResultText(images, outcome.problems);
    return outcome;
}

} // namespace imagemath
