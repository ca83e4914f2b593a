// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <array>
#include <QString>

/// The unit's name in calibration calls and stored values, indexed by tag_edisplayunit. The labels that the
/// view shows are a table of their own (math/ViewAnnotations.h), and differ in case.
constexpr std::array<const char *, 4> DisplayUnitNames{"counts", "Radiance (Photons)", "Radiant Efficiency",
                                                       "efficiency"};

inline QString displayUnitName(tag_edisplayunit unit)
{
    return QString::fromLatin1(DisplayUnitNames.at(std::size_t(unit)));
}
