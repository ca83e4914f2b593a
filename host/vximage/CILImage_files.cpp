// SPDX-License-Identifier: MIT
#include "host/vximage/base/Messages.h"
#include "host/vximage/CILImage.h"
#include "host/vximage/PixelStore.h"
#include "host/vximage/TiffReader.h"
#include "host/vximage/TiffWriter.h"

#include <cstdint>

namespace {

std::uint64_t s_pixelLimit = std::uint64_t(1) << 30;

} // namespace

long CILImage::saveAsTIFF(const char *latin1Path) const
{
    std::string path;
    for (const char *c = latin1Path ? latin1Path : ""; *c; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        if (byte < 0x80) {
            path += char(byte);
        } else {
            path += char(0xc0 | (byte >> 6));
            path += char(0x80 | (byte & 0x3f));
        }
    }
    return saveTIFF(path.c_str());
}

EILSTATUS CILImage::saveTIFF(const char *path) const
{
    if (!m_pixels)
        return il::fileError(EIL_BAD_SIZE, path ? path : "", "the image is empty");
    return il::writeTiff(path, *m_pixels, m_description);
}

EILSTATUS CILImage::loadTIFF(const char *path)
{
    return il::readTiff(path, s_pixelLimit, m_pixels, m_description);
}

EILSTATUS CILImage::checkTIFF(const char *path)
{
    return il::checkTiff(path, s_pixelLimit);
}

EILSTATUS CILImage::loadDescription(const char *path, std::string *description)
{
    return il::readTiffDescription(path, *description);
}

EILSTATUS CILImage::countPages(const char *path, unsigned *pages)
{
    return il::countTiffPages(path, *pages);
}

const std::string &CILImage::lastError()
{
    return il::lastFileError();
}

void CILImage::setPixelLimit(std::uint64_t pixels)
{
    s_pixelLimit = pixels;
}
