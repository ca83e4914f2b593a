// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <string>

namespace clickinfo {

/// The binning factor that the record of a result's making tells, which its ClickInfo keeps truncated to a
/// whole number. `description` is that of the result's image file (UTF-8, one JSON object); NaN when it tells
/// none above 0.
VXAPI_EXPORT double recordedBinning(const std::string &description);

} // namespace clickinfo
