// SPDX-License-Identifier: MIT
#include "host/vximage/CILImage.h"

#include "host/vximage/base/Messages.h"
#include "host/vximage/kernels/Conversion.h"
#include "host/vximage/Morphology.h"
#include "host/vximage/PixelStore.h"
#include "host/vximage/Resampling.h"

#include <new>
#include <string>

using il::PixelStore;
using il::StorePtr;

namespace {

constexpr const char *NO_MEMORY = "There is not enough memory for an image; it is left empty.";

/// What an image gets for `store` when it is copied: the store itself, or pixels of its own when someone may
/// write into it.
StorePtr forCopy(const StorePtr &store)
{
    if (!store || !store->isExposed())
        return store;
    try {
        return PixelStore::copyOf(store);
    } catch (const std::bad_alloc &) {
        il::message(il::MESSAGE_ERROR, NO_MEMORY);
        return PixelStore::empty(store->type());
    }
}

/// The pixels of a store, or null when they cannot be had; the store is then empty.
void *pixelsOf(const StorePtr &store)
{
    if (!store || store->count() == 0)
        return nullptr;
    try {
        return store->data();
    } catch (const std::bad_alloc &) {
        store->becomeEmpty();
        il::message(il::MESSAGE_ERROR, NO_MEMORY);
        return nullptr;
    }
}

il::Statistics statisticsOf(const StorePtr &store)
{
    if (!store)
        return {};
    try {
        return store->statistics();
    } catch (const std::bad_alloc &) {
        store->becomeEmpty();
        il::message(il::MESSAGE_ERROR, NO_MEMORY);
        return {};
    }
}

/// The status of an operation that is refused and leaves the image as it was. The message is for the log:
/// callers that only clean up a picture look at no status.
EILSTATUS refused(EILSTATUS status, const std::string &reason)
{
    il::message(il::MESSAGE_ERROR, reason + "; the image is unchanged.");
    return status;
}

EILSTATUS resampleInPlace(StorePtr &pixels, std::uint32_t width, std::uint32_t height, int mode, bool addsUp)
{
    if (!il::isKnownResampleMode(mode))
        return refused(EIL_BAD_TYPE, "There is no resample mode " + std::to_string(mode));
    if (!pixels || pixels->count() == 0 || width == 0 || height == 0)
        return EIL_BAD_SIZE;
    if (width == pixels->width() && height == pixels->height())
        return EIL_SUCCESS;
    try {
        // A mask that is a float image only by declaration is read as the bytes that it is.
        const StorePtr source = PixelStore::readable(pixels);
        const il::Resampling wanted{width, height, mode, addsUp ? VXS_FLOAT : pixels->type(), addsUp};
        StorePtr result = source->rememberedResampled(wanted);
        if (!result) {
            result = il::resample(*source, wanted);
            source->rememberResampled(wanted, result);
        }
        pixels = std::move(result);
        return EIL_SUCCESS;
    } catch (const std::bad_alloc &) {
        return refused(EIL_NO_MEMORY, "There is not enough memory to resample an image");
    }
}

EILSTATUS morphInPlace(StorePtr &pixels, il::Morphology operation, int width, int height)
{
    if (width != 3 || height != 3)
        return refused(EIL_BAD_SIZE, "Erosion and dilation are by 3 x 3 pixels, not by " +
                                         std::to_string(width) + " x " + std::to_string(height));
    if (!pixels || pixels->count() == 0)
        return EIL_BAD_SIZE;
    if (!il::isByte(pixels->type()))
        return refused(EIL_BAD_TYPE, "Erosion and dilation are for masks and 8-bit images");
    try {
        pixels = il::morph3x3(*pixels, operation);
        return EIL_SUCCESS;
    } catch (const std::bad_alloc &) {
        return refused(EIL_NO_MEMORY, "There is not enough memory for a morphological operation");
    }
}

} // namespace

CILImageBase::~CILImageBase() = default;

CILImage::CILImage() = default;
CILImage::~CILImage() = default;
CILImage::CILImage(CILImage &&other) noexcept = default;
CILImage &CILImage::operator=(CILImage &&other) noexcept = default;

CILImage::CILImage(const CILImage &other)
    : CILImageBase(other),
      m_pixels(forCopy(other.m_pixels)),
      m_palette(other.m_palette),
      m_binning(other.m_binning),
      m_valuesAddUp(other.m_valuesAddUp),
      m_pixelsAdded(other.m_pixelsAdded),
      m_description(other.m_description)
{
}

CILImage &CILImage::operator=(const CILImage &other)
{
    if (this != &other)
        *this = CILImage(other);
    return *this;
}

EILSTATUS CILImage::InitWithType(VXSDataTypes type, std::uint32_t width, std::uint32_t height)
{
    m_pixels.reset(); // first, so that its memory can be used again
    if (!il::isKnownType(type))
        return EIL_BAD_TYPE;
    if (width == 0 || height == 0) {
        m_pixels = PixelStore::empty(type);
        return EIL_BAD_SIZE;
    }
    try {
        m_pixels = PixelStore::zeros(type, width, height);
        return EIL_SUCCESS;
    } catch (const std::bad_alloc &) {
        il::message(il::MESSAGE_ERROR, NO_MEMORY);
        return EIL_NO_MEMORY;
    }
}

bool CILImage::ChangeType(VXSDataTypes type)
{
    if (!il::isKnownType(type))
        return false;
    if (type == getType() && m_pixels)
        return true;
    if (isEmpty()) {
        m_pixels = PixelStore::empty(type);
        return true;
    }
    try {
        // To float it waits: most often arithmetic follows, which reads the pixels as they are.
        if (type == VXS_FLOAT && !m_pixels->isExposed()) {
            m_pixels =
                PixelStore::deferred(type, getWidth(), getHeight(), {PixelStore::sourceOf(m_pixels), {}});
            return true;
        }
        const void *from = m_pixels->data();
        StorePtr converted = PixelStore::allocate(type, getWidth(), getHeight());
        il::convert(from, m_pixels->type(), converted->data(), type, m_pixels->count());
        m_pixels = std::move(converted);
    } catch (const std::bad_alloc &) {
        m_pixels = PixelStore::empty(type);
        il::message(il::MESSAGE_ERROR, NO_MEMORY);
    }
    return true;
}

VXSDataTypes CILImage::getType() const
{
    return m_pixels ? m_pixels->type() : VXS_FLOAT;
}

std::uint32_t CILImage::getWidth() const
{
    return m_pixels ? m_pixels->width() : 0;
}

std::uint32_t CILImage::getHeight() const
{
    return m_pixels ? m_pixels->height() : 0;
}

void *CILImage::get_data()
{
    if (isEmpty() || !pixelsOf(m_pixels))
        return nullptr;
    if (m_pixels.use_count() > 1) {
        try {
            m_pixels = PixelStore::copyOf(m_pixels);
        } catch (const std::bad_alloc &) {
            il::message(il::MESSAGE_ERROR, NO_MEMORY);
            m_pixels = PixelStore::empty(getType());
            return nullptr;
        }
    }
    m_pixels->setExposed();
    return m_pixels->data();
}

const void *CILImage::get_data() const
{
    return pixelsOf(m_pixels);
}

double CILImage::pixelAt(std::uint32_t x, std::uint32_t y) const
{
    const void *data = get_data();
    if (!data || x >= getWidth() || y >= getHeight())
        return 0.0;
    const std::size_t i = std::size_t(y) * getWidth() + x;
    return il::withPixelType(getType(),
                             [&](auto tag) { return double(static_cast<decltype(tag)>(data)[i]); });
}

std::uint64_t CILImage::contentId() const
{
    return m_pixels ? m_pixels->id() : 0;
}

float CILImage::getMax() const
{
    return statisticsOf(m_pixels).max;
}

float CILImage::getMin() const
{
    return statisticsOf(m_pixels).min;
}

bool CILImage::hasFinitePixels() const
{
    return statisticsOf(m_pixels).hasFinite;
}

EILSTATUS CILImage::downSample(std::uint32_t width, std::uint32_t height, int mode)
{
    const bool addsUp = m_valuesAddUp && mode == IL_RESAMPLE_BINNING;
    const double added = il::pixelsAddedUp(getWidth(), width) * il::pixelsAddedUp(getHeight(), height);
    const EILSTATUS status = resampleInPlace(m_pixels, width, height, mode, addsUp);
    if (addsUp && status == EIL_SUCCESS)
        m_pixelsAdded *= added;
    return status;
}

EILSTATUS CILImage::upSample(std::uint32_t width, std::uint32_t height, int mode)
{
    return downSample(width, height, mode);
}

EILSTATUS CILImage::Erode(int width, int height)
{
    return morphInPlace(m_pixels, il::Morphology::Erode, width, height);
}

EILSTATUS CILImage::Dilate(int width, int height)
{
    return morphInPlace(m_pixels, il::Morphology::Dilate, width, height);
}

void CILImage::Threshold(float t, CILImage &target) const
{
    if (isEmpty()) {
        target.m_pixels = PixelStore::empty(VXS_MASK);
        return;
    }
    try {
        // The bytes are written when they are first read: arithmetic that follows compares as it goes.
        il::Source source = PixelStore::sourceOf(m_pixels);
        if (source.isThresholded) { // of a threshold that waits itself
            m_pixels->data();
            source = {m_pixels, false, 0.0f};
        }
        source.isThresholded = true;
        source.t = t;
        const bool exposed = m_pixels->isExposed();
        target.m_pixels = PixelStore::deferred(VXS_MASK, getWidth(), getHeight(), {std::move(source), {}});
        if (exposed)
            target.m_pixels->data();
    } catch (const std::bad_alloc &) {
        target.m_pixels = PixelStore::empty(VXS_MASK);
        il::message(il::MESSAGE_ERROR, NO_MEMORY);
    }
}

void CILImage::setMessageHandler(std::function<void(int, const std::string &)> handler)
{
    il::setMessageHandler(std::move(handler));
}
