// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "math/Note.h"

class CILImage;
class CVXSDataset;

/// What has to be known of a pair of datasets beside the number that they give.
namespace imagemath {

struct OperandRecord;
struct RoiOfK;

/// Pixels of either operand at which the camera was saturated: they are too low by nobody knows how much, in
/// every unit.
Notes saturationNotes(const CVXSDataset &a, const CVXSDataset &b);

/// Exposure, f-number, gain, transmission and filters of a pair that is combined in counts, which know
/// nothing of them. What is recorded of one operand alone is no difference; in other units there is none to
/// tell.
Notes settingsNotes(const CVXSDataset &a, const CVXSDataset &b, tag_edisplayunit unit);

/// A pair of which one alone is corrected for the flat field or has its background subtracted. In efficiency the
/// flat field cancels out.
Notes correctionNotes(const OperandRecord &a, const OperandRecord &b, tag_edisplayunit unit);

/// Counts of an operand that were added up when it was binned, its offset with them, because no background was
/// subtracted: a camera that bins adds its offset once. `role` is A or B, `binning` that of the operand before, and
/// `image` what it became.
Notes offsetNotes(const QString &role, const OperandRecord &operand, double binning, const CILImage &image);

/// A photograph whose field of view (width or height) is not that of the luminescent image of its dataset: the
/// mask lies elsewhere than the tissue. A field that is not recorded is not known to differ.
Notes maskFieldNotes(const CVXSDataset &datasetB, const CILImage &photograph);

/// A product or ratio together with something else: no sum or difference of them means anything.
Notes valuesNotes(const CVXSDataset &a, const CVXSDataset &b, tag_edisplayunit unit);

/// Saturated pixels in the ROI that gave k; an ROI of another pair or unit.
Notes roiNotes(const RoiOfK &roi, const OperandRecord &a, const OperandRecord &b, tag_edisplayunit unit);

} // namespace imagemath
