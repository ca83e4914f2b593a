// SPDX-License-Identifier: MIT
#pragma once

/// Images of grey pixels: arithmetic, resampling, thresholds, statistics, automatic ranges, TIFF in and out.
///
///     CILImage a, b;
///     if (a.loadTIFF("reporter.tif") != EIL_SUCCESS || b.loadTIFF("autofluorescence.tif") != EIL_SUCCESS)
///         return CILImage::lastError();       // "reporter.tif: not a grey image: its pixels are colours"
///     b *= 1.7;                               // noted, not computed yet
///     CILImage difference = a - b;            // noted too: A - 1.7 * B
///     const float most = difference.getMax(); // both steps and the extremes, in one pass over memory
///     difference.saveTIFF("difference.tif");  // the whole file or none
///
/// What holds for the whole room:
/// - Pixels lie in row order from the upper left corner, width x height of them. What a value means
///   (counts, radiance, 0 or 1 of a mask) is for the caller to know: no operation here converts units. Only
///   whether values add up when pixels are binned is told to the image (CILImage::setValuesAddUp()).
/// - Nothing is thrown. An operation that cannot be done answers with an EILSTATUS and leaves its image
///   as it was (only InitWithType() leaves it empty); where there is no status to answer with, it leaves
///   the image empty (0 x 0) and says why through setMessageHandler(): an empty picture is seen, a
///   silently wrong number is not.
/// - Statistics (extremes, automatic range, Otsu's threshold) skip pixels that are not finite.
/// - The classes are for one thread. An operation may use several inside (base/Parallel.h) and returns when it
///   is done; results do not depend on how many.
///
/// The room knows nothing of Qt. A path is the file system's own bytes, and a name that is no valid text
/// would not come back from a QString as it went in, so QSaveFile could not write it; nor does QSaveFile
/// bring the new name to the disk (TiffWriter.cpp does).

#include "host/vximage/base/vximage_global.h"
#include "host/vximage/base/VXImageTypes.h"
#include "host/vximage/CILPalette.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace il {
class PixelStore;
}

/// What every image tells of itself.
class VXIMAGE_EXPORT CILImageBase
{
public:
    virtual ~CILImageBase();
    /// Largest and smallest finite pixel; 0 when there is none.
    virtual float getMax() const = 0;
    virtual float getMin() const = 0;
};

/// A rectangle of grey pixels: width, height, pixel type, binning factor, palette and a description; and
/// whether its values add up.
///
/// - Value semantics through implicit sharing: a copy costs a pointer, the first write detaches.
/// - A writable get_data() detaches, ends the remembering of statistics for that image and makes later
///   copies of it deep, because its caller may keep the pointer. Read through the const overload.
/// - Arithmetic is 32-bit float, each step rounded on its own; pixels of another type are converted
///   first, and the result is float. Division is IEEE 754: x/0 is an infinity, 0/0 a NaN. Results carry
///   the left operand's binning factor, palette, description, and whether its values add up.
/// - Arithmetic is evaluated when a pixel or a statistic is first asked for; several steps then run as
///   one pass over memory, with the numbers of the separate steps, bit for bit. Nobody can tell, except
///   by the clock.
/// - Operands of unequal size leave the target empty, with a message.
/// - Statistics are remembered until the pixels change.
class VXIMAGE_EXPORT CILImage : public CILImageBase
{
public:
    CILImage();
    CILImage(const CILImage &other);
    CILImage(CILImage &&other) noexcept;
    ~CILImage() override;
    CILImage &operator=(const CILImage &other);
    CILImage &operator=(CILImage &&other) noexcept;

    /// Allocates width x height pixels of that type, all 0. Binning factor, palette and description stay. A
    /// failure leaves the image empty: EIL_BAD_TYPE, EIL_BAD_SIZE (a side of 0), EIL_NO_MEMORY.
    EILSTATUS InitWithType(VXSDataTypes type, std::uint32_t width, std::uint32_t height);
    /// Converts in place: to an integer type rounded to nearest and clamped (NaN gives 0); to a mask 1 where
    /// the pixel is not 0. False (and unchanged) for an unknown type; without memory the image becomes empty.
    bool ChangeType(VXSDataTypes type);
    /// VXS_FLOAT for an image that never had pixels.
    VXSDataTypes getType() const;

    std::uint32_t getWidth() const;
    std::uint32_t getHeight() const;
    std::uint32_t get_width() const { return getWidth(); }
    std::uint32_t get_height() const { return getHeight(); }
    bool isEmpty() const { return getWidth() == 0 || getHeight() == 0; }
    std::size_t pixelCount() const { return std::size_t(getWidth()) * getHeight(); }

    /// The pixels in row order, width x height values of the current type; null when empty.
    void *get_data();
    const void *get_data() const;
    template <typename T>
    const T *pixels() const
    {
        return static_cast<const T *>(get_data());
    }
    /// One pixel as a double, whatever the type; x < width, y < height, and 0 outside. For single look-ups: a
    /// loop over an image reads pixels().
    double pixelAt(std::uint32_t x, std::uint32_t y) const;

    /// A number that names these pixels: equal for two images only when they share their pixels or one is a
    /// copy of the other, and new after every change of pixels, size or type. 0 for an image whose pixels
    /// someone may be writing through get_data(), and for an empty one: nothing may be remembered for it.
    std::uint64_t contentId() const;

    /// Camera pixels that one pixel stands for along an axis; 1 unless set. No operation here changes it.
    float binningFactor() const { return m_binning; }
    void setBinningFactor(float factor) { m_binning = factor; }

    /// Whether a value is of its pixel (counts of a camera, which adds up the charge of the pixels that it
    /// bins) or per area or of no extent (radiance, ratios): then, and unless set, false.
    bool valuesAddUp() const { return m_valuesAddUp; }
    /// Also says that no pixel is a sum yet.
    void setValuesAddUp(bool addUp)
    {
        m_valuesAddUp = addUp;
        m_pixelsAdded = 1.0;
    }
    /// Takes over whether values add up, and of how many pixels, from an image that is the left operand of an
    /// operation that was written the other way round.
    void takeValuesOf(const CILImage &other)
    {
        m_valuesAddUp = other.m_valuesAddUp;
        m_pixelsAdded = other.m_pixelsAdded;
    }
    /// Pixels that one pixel is the sum of, after binning of values that add up; 1 before. The camera's
    /// ceiling of such an image is that many times as high.
    double pixelsAdded() const { return m_pixelsAdded; }

    /// In the unit of the pixels. A finite double beyond the reach of float gives the largest float.
    float getMax() const override;
    float getMin() const override;
    /// Whether any pixel is finite.
    bool hasFinitePixels() const;

    CILPalette getPalette() const { return m_palette; }
    void setPalette(CILPalette palette) { m_palette = palette; }

    /// Text that travels with the image and goes into TIFF's ImageDescription (UTF-8).
    const std::string &description() const { return m_description; }
    void setDescription(std::string text) { m_description = std::move(text); }

    /// Pixel by pixel with an image of the same size, or with one number for all pixels (a number that is no
    /// float exactly is applied in double precision, and the outcome rounded to float).
    CILImage &operator+=(const CILImage &other);
    CILImage &operator-=(const CILImage &other);
    CILImage &operator*=(const CILImage &other);
    CILImage &operator/=(const CILImage &other);
    CILImage &operator*=(double factor);
    CILImage &operator-=(double value);
    CILImage operator-(const CILImage &other) const;
    CILImage operator*(const CILImage &other) const;

    /// Resample in place to width x height pixels with a mode of IL_RESAMPLEMODES, where its formula stands.
    /// The pixel type stays (a mean of integers is rounded to nearest, ties to even), but sums are 32-bit float,
    /// because they may be beyond the type; a mean or sum that a NaN takes part in is a NaN. The last few requests for the same pixels are answered with what was computed then.
    /// A failure leaves the image as it was: EIL_BAD_TYPE with a message for another mode, EIL_BAD_SIZE for a
    /// side of 0 or an empty image, EIL_NO_MEMORY. The two names differ in nothing: an axis may grow while
    /// the other shrinks.
    EILSTATUS downSample(std::uint32_t width, std::uint32_t height, int mode);
    EILSTATUS upSample(std::uint32_t width, std::uint32_t height, int mode);

    /// target becomes a mask (VXS_MASK) of this image's size: 1 where the pixel (as a float) is above t, else
    /// 0 (NaN gives 0). t is in the unit of the pixels. target may be the image itself.
    void Threshold(float t, CILImage &target) const;
    /// Erosion and dilation of a mask or an 8-bit image by the full 3 x 3 square, edges replicated: the
    /// smallest and the largest pixel of the nine. Another size (EIL_BAD_SIZE) and another pixel type
    /// (EIL_BAD_TYPE) are refused with a message and leave the image as it was, as EIL_NO_MEMORY does.
    EILSTATUS Erode(int width, int height);
    EILSTATUS Dilate(int width, int height);

    /// Writes a TIFF: 32-bit float for float and double, integers in their own width, masks as 8-bit; BigTIFF
    /// when it must. Written beside the target and renamed over it, so that there is the old file or the new
    /// one and never half of one. 0 on success, else EIL_BAD_SIZE (an empty image), EIL_FILE_NOT_WRITABLE or
    /// EIL_NO_MEMORY; lastError() tells why.
    ///
    /// The path is Latin-1, as the tools hand it over; saveTIFF() takes it in the file system's own bytes.
    long saveAsTIFF(const char *latin1Path) const;
    EILSTATUS saveTIFF(const char *path) const;
    /// Reads the first page of a TIFF: 8/16/32-bit integer, 32/64-bit float, strips or tiles, either byte
    /// order. Signed integers become float (8, 16 bit) or double (32 bit). Binning factor and palette stay;
    /// the description is the file's. A failure leaves the image as it was, and lastError() tells why:
    /// EIL_FILE_NOT_FOUND, EIL_FILE_NOT_READABLE (no permission; no plain file), EIL_FILE_DAMAGED,
    /// EIL_FILE_NOT_GREY, EIL_FILE_TOO_LARGE (before any memory is taken), EIL_BAD_TYPE (bits or compression
    /// that are not read here), EIL_NO_MEMORY.
    EILSTATUS loadTIFF(const char *path);
    /// What loadTIFF() would answer as far as the header of that file tells; no pixel is read.
    static EILSTATUS checkTIFF(const char *path);
    /// Reads the description of such a file without its pixels, which may be damaged; empty when it has none.
    /// A failure leaves `description` as it was.
    static EILSTATUS loadDescription(const char *path, std::string *description);
    /// How many images such a file holds, of which loadTIFF() reads the first; small copies and masks of an
    /// image do not count. A failure leaves `pages` as it was.
    static EILSTATUS countPages(const char *path, unsigned *pages);
    /// "file: reason" of the last reading or writing of a file by any image that failed.
    static const std::string &lastError();
    /// Largest number of pixels that loadTIFF() accepts; 2^30 unless set.
    static void setPixelLimit(std::uint64_t pixels);

    /// Where messages of image operations go (level as in the host's log: 3 is a failure). The host's
    /// libraries set it once; an empty handler drops them.
    static void setMessageHandler(std::function<void(int level, const std::string &)> handler);

private:
    friend class il::PixelStore;
    std::shared_ptr<il::PixelStore> m_pixels;
    CILPalette m_palette;
    float m_binning = 1.0f;
    bool m_valuesAddUp = false;
    double m_pixelsAdded = 1.0;
    std::string m_description;
};
