// SPDX-License-Identifier: MIT
#include "tests/support/TiffPages.h"

#include <QFile>

#include <array>
#include <cstdint>
#include <tiffio.h>

bool writePages(const QString &path, int pages)
{
    constexpr std::uint32_t WIDTH = 8;
    constexpr std::uint32_t HEIGHT = 6;
    TIFF *tiff = TIFFOpen(QFile::encodeName(path).constData(), "w");
    bool isWritten = tiff;
    for (int page = 1; isWritten && page <= pages; ++page) {
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, WIDTH);
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, HEIGHT);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 16);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, HEIGHT);
        std::array<std::uint16_t, WIDTH> row;
        row.fill(std::uint16_t(page));
        for (std::uint32_t y = 0; y < HEIGHT; ++y)
            isWritten = isWritten && TIFFWriteScanline(tiff, row.data(), y, 0) > 0;
        isWritten = isWritten && TIFFWriteDirectory(tiff) == 1;
    }
    if (tiff)
        TIFFClose(tiff);
    return isWritten;
}
