// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vxapi/vxapi_global.h"

#include <array>

/// The 256 colours of a palette with a tone laid over them (see PictureTone). Because it changes the colours
/// and not the pixels, no pixel is read again for it.
VXAPI_EXPORT std::array<CILPalette::Rgb, 256> tonedTable(const CILPalette &palette, const PictureTone &tone);
