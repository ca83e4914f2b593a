// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/Messages.h"
#include "host/vximage/base/VXImageTypes.h"
#include "host/vximage/TiffHandle.h"

#include <cstdint>
#include <new>
#include <string>

namespace il {

/// Why a file cannot be used. Thrown inside this folder only; withTiffFile() makes a status of it.
struct TiffFailure
{
    EILSTATUS status;
    std::string reason;
};

/// Opens a file for reading and returns its size; fails by throwing TiffFailure. A picture in another format
/// is called by its name.
std::uint64_t openTiffFile(TiffHandle &tiff, const char *path);

/// Opens the file and hands it to `use(tiff, size of the file)`; what that throws becomes the status, and
/// "file: reason" the last file error.
template <typename Use>
EILSTATUS withTiffFile(const char *path, const Use &use)
{
    const std::string name = path ? path : "";
    TiffHandle tiff;
    try {
        const std::uint64_t size = openTiffFile(tiff, path);
        use(tiff, size);
        return EIL_SUCCESS;
    } catch (const TiffFailure &failure) {
        return fileError(failure.status, name, failure.reason);
    } catch (const std::bad_alloc &) {
        return fileError(EIL_NO_MEMORY, name, "there is not enough memory for it");
    }
}

} // namespace il
