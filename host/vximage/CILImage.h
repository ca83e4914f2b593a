// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILPalette.h"
#include "host/vximage/vximage_global.h"
#include "host/vximage/VXImageTypes.h"

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
    virtual float getMax() const = 0;
    virtual float getMin() const = 0;
};

/// A rectangle of grey pixels: width, height, pixel type, binning factor, palette and a description.
///
/// Rules that hold for all operations here:
/// - Value semantics through implicit sharing: a copy costs a pointer, the first write detaches.
/// - A writable get_data() detaches, ends the remembering of statistics for that image and makes later copies
///   of it deep, because its caller may keep the pointer. Read through the const overload.
/// - Arithmetic is 32-bit float, each step rounded on its own; an operand of another pixel type is converted
/// first.
///   Division is IEEE: x/0 is an infinity, 0/0 a NaN. Results carry the left operand's binning factor and
///   palette.
/// - Arithmetic is evaluated when a pixel or a statistic is first asked for; several steps then run as one
/// pass
///   over memory, with the numbers of the separate steps, bit for bit. Nobody can tell, except by the clock.
/// - Operands of unequal size leave the target empty (0 x 0), with a message (see setMessageHandler()).
/// - Statistics skip pixels that are not finite, and are remembered until the pixels change.
/// - The classes are for one thread; an operation may use threads inside and returns when it is done.
class VXIMAGE_EXPORT CILImage : public CILImageBase
{
public:
    CILImage();
    CILImage(const CILImage &other);
    CILImage(CILImage &&other) noexcept;
    ~CILImage() override;
    CILImage &operator=(const CILImage &other);
    CILImage &operator=(CILImage &&other) noexcept;

    /// Allocates width x height pixels of that type, all 0. Binning factor and palette stay. A failure leaves
    /// the image empty.
    EILSTATUS InitWithType(VXSDataTypes type, std::uint32_t width, std::uint32_t height);
    /// Converts in place: to an integer type rounded to nearest and clamped (NaN gives 0); to a mask 1 where
    /// the pixel is not 0. False (and unchanged) for an unknown type.
    bool ChangeType(VXSDataTypes type);
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
    /// One pixel as a double, whatever the type; x < width, y < height.
    double pixelAt(std::uint32_t x, std::uint32_t y) const;

    /// A number that names these pixels: equal for two images only when they share their pixels or one is a
    /// copy of the other, and new after every change of pixels, size or type. 0 for an image whose pixels
    /// someone may be writing through get_data(), and for an empty one: nothing may be remembered for it.
    std::uint64_t contentId() const;

    float binningFactor() const { return m_binning; }
    void setBinningFactor(float factor) { m_binning = factor; }

    /// Largest and smallest finite pixel; 0 when there is none.
    float getMax() const override;
    float getMin() const override;
    /// Whether any pixel is finite.
    bool hasFinitePixels() const;

    CILPalette getPalette() const { return m_palette; }
    void setPalette(CILPalette palette) { m_palette = palette; }

    /// Text that travels with the image and goes into TIFF's ImageDescription (UTF-8).
    const std::string &description() const { return m_description; }
    void setDescription(std::string text) { m_description = std::move(text); }

    CILImage &operator+=(const CILImage &other);
    CILImage &operator-=(const CILImage &other);
    CILImage &operator*=(const CILImage &other);
    CILImage &operator/=(const CILImage &other);
    CILImage &operator*=(double factor);
    CILImage &operator-=(double value);
    CILImage operator-(const CILImage &other) const;
    CILImage operator*(const CILImage &other) const;

    /// Resample in place; the pixel type stays (a mean of integers is rounded to nearest). downSample() to a
    /// grid and mode asked for before of the same pixels answers with what it computed then.
    EILSTATUS downSample(std::uint32_t width, std::uint32_t height, int mode);
    EILSTATUS upSample(std::uint32_t width, std::uint32_t height, int mode);

    /// target becomes a mask of this image's size: 1 where the pixel (as a float) is above t, else 0 (NaN
    /// gives 0).
    void Threshold(float t, CILImage &target) const;
    /// The full width x height rectangle as structuring element, edges replicated. Odd sizes only.
    EILSTATUS Erode(int width, int height);
    EILSTATUS Dilate(int width, int height);

    /// Writes a TIFF: 32-bit float for float and double, integers in their own width, masks as 8-bit; BigTIFF
    /// when it must. Written beside the target and renamed over it. 0 on success, else an EILSTATUS;
    /// lastError() tells why.
    ///
    /// The path is Latin-1, as the tools hand it over; saveTIFF() takes it in the file system's own bytes.
    long saveAsTIFF(const char *latin1Path) const;
    EILSTATUS saveTIFF(const char *path) const;
    /// Reads the first page of a TIFF: 8/16/32-bit integer, 32/64-bit float, strips or tiles, either byte
    /// order. Signed integers become float (8, 16 bit) or double (32 bit). A failure leaves the image as it
    /// was.
    EILSTATUS loadTIFF(const char *path);
    /// Whether loadTIFF() would accept the header of that file; no pixel is read.
    static EILSTATUS checkTIFF(const char *path);
    /// Reads the description of such a file without its pixels, which may be damaged; empty when it has none.
    /// A failure leaves `description` as it was.
    static EILSTATUS loadDescription(const char *path, std::string *description);
    /// "file: reason" of the last reading or writing of a file by any image that failed.
    static const std::string &lastError();
    /// Largest number of pixels that loadTIFF() accepts; 2^30 unless set.
    static void setPixelLimit(std::uint64_t pixels);

    /// Where messages of image operations go (level as in the host's log). The host's libraries set it once.
    static void setMessageHandler(std::function<void(int level, const std::string &)> handler);

private:
    friend class il::PixelStore;
    std::shared_ptr<il::PixelStore> m_pixels;
    CILPalette m_palette;
    float m_binning = 1.0f;
    std::string m_description;
};
