// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/VXImageTypes.h"

#include <array>
#include <cstdint>

namespace il {

/// Colours of low to high values, 0xffRRGGBB.
using ColorTable = std::array<std::uint32_t, 256>;

/// The table of that code; that of the greys for an unknown code.
const ColorTable &colorTable(VXS_COLORTABLE_TYPES type);
/// Null for an unknown code.
const char *colorTableName(VXS_COLORTABLE_TYPES type);

} // namespace il
