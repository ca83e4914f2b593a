// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/PixelStore.h"

#include <string>

namespace il {

/// Writes grey pixels as TIFF: float for float and double, integers as they are. The file appears whole or
/// not at all: it is written beside the target, brought to the disk, and renamed. On failure the reason is
/// kept as the last file error.
EILSTATUS writeTiff(const char *path, PixelStore &pixels, const std::string &description);

} // namespace il
