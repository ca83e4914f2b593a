// SPDX-License-Identifier: MIT
#include "host/vximage/TiffReader.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/TiffInput.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace il {
namespace {

/// The most that a byte in the file can stand for after decompression; a header that promises more is a lie.
std::uint64_t largestExpansion(std::uint16_t compression)
{
    switch (compression) {
    case COMPRESSION_NONE:
        return 1;
    case COMPRESSION_PACKBITS:
        return 128;
    case COMPRESSION_DEFLATE:
    case COMPRESSION_ADOBE_DEFLATE:
        return 1100;
    case COMPRESSION_LZW:
        return 4096;
    default:
        return 65536;
    }
}

/// Where counting ends: a damaged file may lead round for ever.
constexpr unsigned MOST_PAGES = 1u << 20;

/// What the header declares.
struct Layout
{
    std::uint32_t width = 0, height = 0;
    std::uint16_t bits = 1, samples = 1, format = SAMPLEFORMAT_UINT, photometric = PHOTOMETRIC_MINISBLACK;
    std::uint16_t compression = COMPRESSION_NONE;

    std::size_t pixelBytes() const { return bits / 8u; }
    std::uint64_t pixels() const { return std::uint64_t(width) * height; }
    bool isSigned() const { return format == SAMPLEFORMAT_INT; }
    bool isFloat() const { return format == SAMPLEFORMAT_IEEEFP; }
};

/// Fails by throwing TiffFailure.
class Reader
{
public:
    Reader(TiffHandle &tiff, std::uint64_t fileSize) : m_tiff(tiff), m_fileSize(fileSize) {}

    void readHeader(std::uint64_t pixelLimit)
    {
        readLayout();
        check(pixelLimit);
    }

    StorePtr read(std::uint64_t pixelLimit)
    {
        readHeader(pixelLimit);
        StorePtr raw = PixelStore::allocate(rawType(), m_layout.width, m_layout.height);
        auto *out = static_cast<char *>(raw->data());
        if (TIFFIsTiled(m_tiff.get()))
            readTiles(out);
        else
            readStrips(out);
        return finished(std::move(raw));
    }

private:
    [[noreturn]] void damaged(const char *otherwise) const
    {
        throw TiffFailure{EIL_FILE_DAMAGED, "the file is damaged or truncated: " + m_tiff.error(otherwise)};
    }

    void readLayout()
    {
        TIFF *tiff = m_tiff.get();
        if (!TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &m_layout.width) ||
            !TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &m_layout.height))
            damaged("it declares no size");
        TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &m_layout.bits);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &m_layout.samples);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &m_layout.format);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &m_layout.compression);
        if (!TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &m_layout.photometric))
            m_layout.photometric = PHOTOMETRIC_MINISBLACK;
        if (m_layout.format == SAMPLEFORMAT_VOID)
            m_layout.format = SAMPLEFORMAT_UINT;
    }

    void check(std::uint64_t pixelLimit) const
    {
        const Layout &l = m_layout;
        const std::string size = std::to_string(l.width) + " x " + std::to_string(l.height);
        if (l.width == 0 || l.height == 0)
            throw TiffFailure{EIL_FILE_DAMAGED, "the image in it has no pixels (" + size + ")"};
        if (l.samples != 1)
            throw TiffFailure{EIL_FILE_NOT_GREY,
                              "not a grey image: it has " + std::to_string(l.samples) + " samples a pixel"};
        if (l.photometric != PHOTOMETRIC_MINISBLACK && l.photometric != PHOTOMETRIC_MINISWHITE)
            throw TiffFailure{EIL_FILE_NOT_GREY, "not a grey image: its pixels are colours"};
        if (l.pixels() > pixelLimit)
            throw TiffFailure{EIL_FILE_TOO_LARGE, "it declares " + size + " pixels, more than the limit of " +
                                                      std::to_string(pixelLimit)};
        const bool integer = l.format == SAMPLEFORMAT_UINT || l.format == SAMPLEFORMAT_INT;
        const bool known = (integer && (l.bits == 8 || l.bits == 16 || l.bits == 32)) ||
                           (l.isFloat() && (l.bits == 32 || l.bits == 64));
        if (!known)
            throw TiffFailure{EIL_BAD_TYPE, "pixels of " + std::to_string(l.bits) +
                                                " bits and sample format " + std::to_string(l.format) +
                                                " cannot be read"};
        if (!TIFFIsCODECConfigured(l.compression))
            throw TiffFailure{EIL_BAD_TYPE,
                              "its compression (code " + std::to_string(l.compression) + ") cannot be read"};
        if (l.pixels() * l.pixelBytes() / largestExpansion(l.compression) > m_fileSize)
            throw TiffFailure{EIL_FILE_DAMAGED, "the file is damaged or truncated: it declares " + size +
                                                    " pixels but has only " + std::to_string(m_fileSize) +
                                                    " bytes"};
    }

    VXSDataTypes rawType() const
    {
        switch (m_layout.bits) {
        case 8:
            return VXS_UINT8;
        case 16:
            return VXS_UINT16;
        case 64:
            return VXS_DOUBLE;
        default:
            return m_layout.isFloat() ? VXS_FLOAT : VXS_UINT32;
        }
    }

    void readStrips(char *out) const
    {
        TIFF *tiff = m_tiff.get();
        std::uint32_t rowsPerStrip = 0;
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &rowsPerStrip);
        rowsPerStrip = std::clamp<std::uint32_t>(rowsPerStrip, 1, m_layout.height);
        const std::size_t rowBytes = m_layout.width * m_layout.pixelBytes();
        std::uint32_t strip = 0;
        for (std::uint64_t row = 0; row < m_layout.height; row += rowsPerStrip, ++strip) {
            const std::size_t rows = std::min<std::size_t>(rowsPerStrip, m_layout.height - row);
            const auto bytes = tmsize_t(rows * rowBytes);
            if (TIFFReadEncodedStrip(tiff, strip, out + row * rowBytes, bytes) != bytes)
                damaged("a strip of pixels is missing");
        }
    }

    void readTiles(char *out) const
    {
        TIFF *tiff = m_tiff.get();
        std::uint32_t tileWidth = 0, tileHeight = 0;
        if (!TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &tileWidth) ||
            !TIFFGetField(tiff, TIFFTAG_TILELENGTH, &tileHeight) || tileWidth == 0 || tileHeight == 0)
            damaged("it declares no tile size");
        const std::size_t pixel = m_layout.pixelBytes();
        const std::uint64_t tileBytes = std::uint64_t(tileWidth) * tileHeight * pixel;
        // A tile may reach over the edge, but not by a multiple of the image.
        const std::uint64_t sensible =
            std::max<std::uint64_t>(4 * m_layout.pixels() * pixel, std::uint64_t(64) << 20);
        if (tileBytes > sensible || TIFFTileSize64(tiff) != tileBytes)
            damaged("its tiles have no sensible size");
        std::vector<char> tile(tileBytes);
        for (std::uint64_t y = 0; y < m_layout.height; y += tileHeight) {
            for (std::uint64_t x = 0; x < m_layout.width; x += tileWidth) {
                const std::uint32_t number = TIFFComputeTile(tiff, std::uint32_t(x), std::uint32_t(y), 0, 0);
                if (TIFFReadEncodedTile(tiff, number, tile.data(), tmsize_t(tileBytes)) !=
                    tmsize_t(tileBytes))
                    damaged("a tile of pixels is missing");
                const std::size_t columns = std::min<std::uint64_t>(tileWidth, m_layout.width - x);
                const std::size_t rows = std::min<std::uint64_t>(tileHeight, m_layout.height - y);
                for (std::size_t row = 0; row < rows; ++row)
                    std::memcpy(out + ((y + row) * m_layout.width + x) * pixel,
                                tile.data() + row * tileWidth * pixel, columns * pixel);
            }
        }
    }

    template <typename S, typename D>
    StorePtr asSigned(const StorePtr &raw, VXSDataTypes type) const
    {
        StorePtr result = PixelStore::allocate(type, m_layout.width, m_layout.height);
        const auto *in = static_cast<const S *>(raw->data());
        auto *out = static_cast<D *>(result->data());
        const bool invert = m_layout.photometric == PHOTOMETRIC_MINISWHITE;
        parallelFor(raw->count(), 4096, sizeof(S) + sizeof(D), [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                out[i] = D(invert ? S(~in[i]) : in[i]);
        });
        return result;
    }

    /// Pixels with the sign that the file means, bright for large. Of white-is-zero floats nobody knows the
    /// white, so they stay.
    StorePtr finished(StorePtr raw) const
    {
        if (m_layout.isSigned()) {
            switch (m_layout.bits) {
            case 8:
                return asSigned<std::int8_t, float>(raw, VXS_FLOAT);
            case 16:
                return asSigned<std::int16_t, float>(raw, VXS_FLOAT);
            default:
                return asSigned<std::int32_t, double>(raw, VXS_DOUBLE);
            }
        }
        if (m_layout.photometric == PHOTOMETRIC_MINISWHITE && !m_layout.isFloat()) {
            auto *bytes = static_cast<unsigned char *>(raw->data());
            for (std::size_t i = 0; i < raw->count() * m_layout.pixelBytes(); ++i)
                bytes[i] = static_cast<unsigned char>(~bytes[i]);
        }
        return raw;
    }

    TiffHandle &m_tiff;
    std::uint64_t m_fileSize;
    Layout m_layout;
};

std::string descriptionOf(const TiffHandle &tiff)
{
    const char *text = nullptr;
    const bool isDescribed = TIFFGetField(tiff.get(), TIFFTAG_IMAGEDESCRIPTION, &text) && text;
    return isDescribed ? text : "";
}

/// Stacks of more than 4 GB are written with the directory of their first image alone, the others behind it;
/// a line of the description tells how many there are. 1 for a file that is no such stack.
unsigned stackSize(const TiffHandle &tiff, std::uint64_t fileSize)
{
    const std::string description = descriptionOf(tiff);
    const std::size_t line = description.find("images=");
    if (description.compare(0, 7, "ImageJ=") != 0 || line == std::string::npos)
        return 1;
    const unsigned long long images = std::strtoull(description.c_str() + line + 7, nullptr, 10);
    std::uint32_t height = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    const std::uint64_t bytes = TIFFScanlineSize64(tiff.get()) * height;
    const bool isThere = images > 1 && images < MOST_PAGES && bytes > 0 && images <= fileSize / bytes;
    return isThere ? unsigned(images) : 1;
}

} // namespace

EILSTATUS readTiff(const char *path, std::uint64_t pixelLimit, StorePtr &pixels, std::string &description)
{
    return withTiffFile(path, [&](TiffHandle &tiff, std::uint64_t size) {
        StorePtr read = Reader(tiff, size).read(pixelLimit);
        description = descriptionOf(tiff);
        pixels = std::move(read);
    });
}

EILSTATUS checkTiff(const char *path, std::uint64_t pixelLimit)
{
    return withTiffFile(
        path, [&](TiffHandle &tiff, std::uint64_t size) { Reader(tiff, size).readHeader(pixelLimit); });
}

EILSTATUS readTiffDescription(const char *path, std::string &description)
{
    return withTiffFile(path, [&](TiffHandle &tiff, std::uint64_t) { description = descriptionOf(tiff); });
}

EILSTATUS countTiffPages(const char *path, unsigned &pages)
{
    return withTiffFile(path, [&](TiffHandle &tiff, std::uint64_t size) {
        unsigned images = 0;
        do {
            std::uint32_t kind = 0;
            const bool isMarked = TIFFGetField(tiff.get(), TIFFTAG_SUBFILETYPE, &kind) != 0;
            // A small copy of a page, or its mask, is no page of its own.
            if (!isMarked || (kind & (FILETYPE_REDUCEDIMAGE | FILETYPE_MASK)) == 0)
                ++images;
        } while (images < MOST_PAGES && TIFFReadDirectory(tiff.get()));
        if (images == 1)
            images = stackSize(tiff, size);
        pages = std::max(1u, images);
    });
}

} // namespace il
