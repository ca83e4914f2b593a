// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "math/Note.h"

class CILImage;
class CVXSDataset;

/// What has to be known of a pair of datasets beside the number that they give.
namespace imagemath {

struct RoiOfK;

/// Pixels of either operand at which the camera was saturated: they are too low by nobody knows how much, in
/// every unit.
Notes saturationNotes(const CVXSDataset &a, const CVXSDataset &b);

/// Exposure, f-number, gain, transmission and filters of a pair that is combined in counts, which know
/// nothing of them. What is recorded of one operand alone is no difference; in other units there is none to
/// tell.
Notes settingsNotes(const CVXSDataset &a, const CVXSDataset &b, tag_edisplayunit unit);

/// A photograph whose field of view (width or height) is not that of the luminescent image of its dataset: the
/// mask lies elsewhere than the tissue. A field that is not recorded is not known to differ.
Notes maskFieldNotes(const CVXSDataset &datasetB, const CILImage &photograph);

/// Saturated pixels in the ROI that gave k.
Notes roiNotes(const RoiOfK &roi);

} // namespace imagemath
