// SPDX-License-Identifier: MIT
#include "host/vximage/TiffInput.h"

#include "host/vximage/ForeignFormat.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace il {

namespace {

std::string reasonNotOpened(const TiffHandle &tiff, const char *path)
{
    switch (fileFormat(path)) {
    case EFileFormat::Tiff:
        return "the file is damaged: " + tiff.error("it cannot be opened");
    case EFileFormat::Unknown:
        return "not a TIFF file; only grey TIFF images can be read";
    default:
        return std::string("not a TIFF file but ") + formatName(fileFormat(path)) +
               "; only grey TIFF images can be read";
    }
}

} // namespace

std::uint64_t openTiffFile(TiffHandle &tiff, const char *path)
{
    const bool isNamed = path && *path;
    struct stat info;
    if (!isNamed || stat(path, &info) != 0) {
        const int error = isNamed ? errno : ENOENT;
        throw TiffFailure{error == EACCES ? EIL_FILE_NOT_READABLE : EIL_FILE_NOT_FOUND, std::strerror(error)};
    }
    if (!S_ISREG(info.st_mode)) // opening a pipe would wait for ever
        throw TiffFailure{EIL_FILE_NOT_READABLE, "not a file"};
    if (access(path, R_OK) != 0)
        throw TiffFailure{EIL_FILE_NOT_READABLE, std::strerror(errno)};
    if (!tiff.open(path, "r"))
        throw TiffFailure{EIL_FILE_DAMAGED, reasonNotOpened(tiff, path)};
    return std::uint64_t(info.st_size);
}

} // namespace il
