// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "host/vximage/CILImage.h"
#include "math/EmptyBecause.h"
#include "math/Note.h"
#include "math/OperandPreparation.h"
#include "math/ResultRecord.h"
#include "math/TissueMask.h"

#include <functional>
#include <QStringList>

class CVXSDataset;

/// One computation of image math: two datasets, a unit, a formula and k go in; the result, what stands in its
/// way, and the record of its making come out. Whoever computes a result comes through here.
///
///     CILImage a, b, result;
///     imagemath::TissueMaskMemo masks;
///     const imagemath::Request request{{&datasetA, imagemath::correctionsFor(datasetA)},
///                                      {&datasetB, imagemath::correctionsFor(datasetB)},
///                                      EUNIT_RADIANCE, imagemath::formulaNamed("A - B * k"), 1.25f};
///     const imagemath::Outcome made = imagemath::compute(request, {a, b, result}, masks);
///
/// Nothing here asks, logs a decision or knows a window. The steps, in this order: correct, calibrate,
/// compare, reconcile the binning, note, evaluate.
namespace imagemath {

struct Formula;

/// Corrections of a luminescent image that can be switched.
struct Corrections
{
    bool flatField = false;
    bool background = false;
};

/// Those that a dataset has now.
Corrections correctionsOf(const CVXSDataset &dataset);
/// The same; in radiance with the flat field, because radiance is only comparable over
/// the field once the lens's fall-off is taken out.
Corrections correctionsFor(const CVXSDataset &dataset);

struct Operand
{
    CVXSDataset *dataset = nullptr; ///< null: there is no luminescent image to compute with
    Corrections corrections;        ///< switched on the dataset, and handed back to what they were before
};

struct Request
{
    Operand a;
    Operand b;
    tag_edisplayunit unit = EUNIT_COUNTS;
    const Formula *formula = nullptr; ///< null: the operands are prepared and nothing is evaluated
    float k = 1.0f;                   ///< factor, or the threshold in counts of the thresholded ratio
    std::optional<RoiOfK> roiOfK{};   ///< that gave this k
};

/// Where the images of a computation go. An operand without a dataset leaves its image as it is, one that
/// cannot be calibrated leaves it empty. `result` is written when a formula is evaluated, and then only.
struct Images
{
    CILImage &a; ///< in the request's unit, on the grid of the result; 32-bit float once evaluated
    CILImage &b;
    CILImage &result;
};

/// What a computation says beside its images.
struct Outcome
{
    Combination combination = Combination::MissingImage;
    /// Why a step went wrong, in the order of the steps: a correction that cannot be had, an operand that
    /// cannot be calibrated. The computation goes on with what there is.
    QStringList problems;
    EmptyBecause empty;
    /// What has to stand beside the result; empty when nothing was evaluated. The record has them too.
    Notes notes;
    /// How the result was made, without files and photograph; its operation is empty when nothing was
    /// evaluated.
    ResultRecord record;
};

/// What the caller does between the steps; either may be empty, and false ends the computation there.
struct Steps
{
    /// An operand is calibrated and not yet compared: `image` is that of the request's Images.
    std::function<bool(const Outcome &, const CILImage &image)> operandFetched;
    /// The operands are prepared, and their corrections not yet handed back. The request's formula and k are
    /// read after this.
    std::function<bool(const Outcome &)> operandsReady;
};

/// `masks` remembers the photograph's mask from one computation to the next.
Outcome compute(const Request &request, const Images &images, TissueMaskMemo &masks, const Steps &steps = {});

} // namespace imagemath
