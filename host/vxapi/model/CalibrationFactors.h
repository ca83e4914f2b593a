// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

class CPLClickInfo;

/// Factors between display units, from the constants of a ClickInfo record; see VXCalibration.h for the
/// formula.
namespace calibration {

/// What pixels in the unit `from` are multiplied with to be in the unit `to`. 1 when the units are equal, or
/// when one is efficiency, which no factor leads to or from. NaN when a constant that the factor needs is
/// missing, no number or out of its range; `reason` then names key, section and value.
double factor(const CPLClickInfo &info, tag_edisplayunit from, tag_edisplayunit to, QString *reason);

} // namespace calibration
