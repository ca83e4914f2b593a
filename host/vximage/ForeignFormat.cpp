// SPDX-License-Identifier: MIT
#include "host/vximage/ForeignFormat.h"

#include <cstring>
#include <fstream>
#include <string>

using namespace std::string_literals;

namespace il {

namespace {

struct Signature
{
    EFileFormat format;
    std::size_t offset;
    std::string bytes;
};

const Signature SIGNATURES[] = {
    {EFileFormat::Tiff, 0, "II*\0"s},        {EFileFormat::Tiff, 0, "MM\0*"s},
    {EFileFormat::Tiff, 0, "II+\0"s}, // more than 4 GB
    {EFileFormat::Tiff, 0, "MM\0+"s},        {EFileFormat::Png, 0, "\x89PNG\r\n"s},
    {EFileFormat::Jpeg, 0, "\xff\xd8\xff"s}, {EFileFormat::Jpeg2000, 4, "jP  \r\n"s},
    {EFileFormat::Gif, 0, "GIF8"s},          {EFileFormat::Bmp, 0, "BM"s},
    {EFileFormat::WebP, 8, "WEBP"s},         {EFileFormat::Dicom, 128, "DICM"s},
    {EFileFormat::Fits, 0, "SIMPLE  ="s},    {EFileFormat::Hdf5, 0, "\x89HDF\r\n"s},
    {EFileFormat::Pdf, 0, "%PDF-"s},         {EFileFormat::Zip, 0, "PK\x03\x04"s},
};

} // namespace

EFileFormat fileFormat(const char *path)
{
    char start[132] = {};
    std::ifstream file(path, std::ios::binary);
    file.read(start, sizeof start);
    const auto length = std::size_t(file.gcount());
    for (const Signature &signature : SIGNATURES) {
        const std::size_t size = signature.bytes.size();
        if (signature.offset + size <= length &&
            std::memcmp(start + signature.offset, signature.bytes.data(), size) == 0)
            return signature.format;
    }
    return EFileFormat::Unknown;
}

const char *formatName(EFileFormat format)
{
    switch (format) {
    case EFileFormat::Tiff:
        return "a TIFF image";
    case EFileFormat::Png:
        return "a PNG picture";
    case EFileFormat::Jpeg:
        return "a JPEG picture";
    case EFileFormat::Jpeg2000:
        return "a JPEG 2000 picture";
    case EFileFormat::Gif:
        return "a GIF picture";
    case EFileFormat::Bmp:
        return "a BMP picture";
    case EFileFormat::WebP:
        return "a WebP picture";
    case EFileFormat::Dicom:
        return "a DICOM image";
    case EFileFormat::Fits:
        return "a FITS image";
    case EFileFormat::Hdf5:
        return "an HDF5 file";
    case EFileFormat::Pdf:
        return "a PDF document";
    case EFileFormat::Zip:
        return "a ZIP archive";
    case EFileFormat::Unknown:
        break;
    }
    return "a file of another format";
}

} // namespace il
