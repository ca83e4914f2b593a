// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "math/ResultRecord.h"
#include "math/TissueMask.h"

class CVXSDataset;

namespace imagemath {

struct Formula;

/// Evaluates a formula on prepared operands of one size, which become 32-bit float. The thresholded ratio
/// reads its fluorescence level and its photograph from B's dataset. Returns the click number whose
/// photograph masked the result (empty: none).
QString evaluateOn(const Formula &formula, CILImage &a, CILImage &b, CILImage &countsB, float k,
                   const CVXSDataset &datasetB, TissueMaskMemo &masks, CILImage &result);

/// Computes a result again from its record and the datasets of its operands, the way the window does it:
/// calibrated in the record's unit with the recorded corrections, binning reconciled, the formula evaluated.
/// Flat-field and background corrections of the datasets are left as the record wants them, so hand over
/// datasets that nobody looks at. Empty on failure, with the reason.
CILImage computeAgain(const ResultRecord &record, CVXSDataset &a, CVXSDataset &b, QString *reason);

} // namespace imagemath
