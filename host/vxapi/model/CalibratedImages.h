// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "host/vximage/CILImage.h"

#include <cstdint>
#include <vector>

/// Everything that a calibrated image depends on. Pixels are named by CILImage::contentId(), 0 where an image
/// is not used; a change of ClickInfo shows in the factor.
struct CalibrationKey
{
    tag_edisplayunit unit = EUNIT_COUNTS;
    double factor = 1.0;
    std::uint64_t luminescent = 0;
    std::uint64_t background = 0;
    std::uint64_t flatField = 0;
    std::uint64_t excitation = 0;

    bool operator==(const CalibrationKey &other) const;
};

/// What a calibrated image is made of: (luminescent - background) / excitation / flat field * factor, where
/// null images are left out and the background is taken from the excitation too.
struct Ingredients
{
    const CILImage *luminescent = nullptr;
    const CILImage *background = nullptr;
    const CILImage *flatField = nullptr;
    const CILImage *excitation = nullptr;
    double factor = 1.0;

    CalibrationKey calibration(tag_edisplayunit unit) const;
    /// False when one of the images has no content ID, because someone may be writing its pixels: then
    /// nothing may be remembered that was made of it.
    bool areNamed() const;
};

/// The last few calibrated images of a dataset, so that asking again costs no pass over pixels.
class CalibratedImages
{
public:
    /// Counts and one other unit, each with and without flat field, and some more.
    static constexpr std::size_t CAPACITY = 6;

    /// The image of that calibration, or null.
    const CILImage *find(const CalibrationKey &calibration);
    /// Keeps the image, as the last of CAPACITY; what was made of other luminescent pixels is dropped.
    void remember(const CalibrationKey &calibration, const CILImage &image);
    void clear() { m_entries.clear(); }

private:
    struct Entry
    {
        CalibrationKey calibration;
        CILImage image;
    };
    std::vector<Entry> m_entries; // the one asked for last is at the end
};
