// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/PixelStore.h"

#include <cstdint>
#include <string>

namespace il {

/// Reads the first page of a grey TIFF. On success `pixels` and `description` are set (the second when the
/// file has one); on failure they are left alone and the reason is kept as the last file error.
EILSTATUS readTiff(const char *path, std::uint64_t pixelLimit, StorePtr &pixels, std::string &description);
/// Whether readTiff() would go as far as the pixels: it reads the header alone.
EILSTATUS checkTiff(const char *path, std::uint64_t pixelLimit);
/// Reads the description of the first page alone, without its pixels; empty when the file has none.
EILSTATUS readTiffDescription(const char *path, std::string &description);

/// How many images the file holds one after the other, small copies and masks of them left out; 1 or more.
EILSTATUS countTiffPages(const char *path, unsigned &pages);

} // namespace il
