// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/DisplayUnits.h"

/// The units' keys as calibration calls and stored values have them, indexed by tag_edisplayunit; of the one
/// table of units, not its labels, which the view shows and which differ in case.
constexpr std::array<const char *, EUNIT_COUNT> DisplayUnitNames{
    DISPLAY_UNITS[EUNIT_COUNTS].key, DISPLAY_UNITS[EUNIT_RADIANCE].key,
    DISPLAY_UNITS[EUNIT_RADIANT_EFFICIENCY].key, DISPLAY_UNITS[EUNIT_EFFICIENCY].key};

static_assert(DisplayUnitNames.size() == 4, "a unit of the table is missing here");

inline QString displayUnitName(tag_edisplayunit unit)
{
    return unitKey(unit);
}
