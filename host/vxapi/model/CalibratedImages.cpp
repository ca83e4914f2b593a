// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CalibratedImages.h"

#include <algorithm>

bool CalibrationKey::operator==(const CalibrationKey &other) const
{
    return unit == other.unit && factor == other.factor && luminescent == other.luminescent &&
           background == other.background && flatField == other.flatField && excitation == other.excitation;
}

CalibrationKey Ingredients::calibration(tag_edisplayunit unit) const
{
    const auto id = [](const CILImage *image) { return image ? image->contentId() : 0; };
    CalibrationKey result;
    result.unit = unit;
    result.factor = factor;
    result.luminescent = id(luminescent);
    result.background = id(background);
    result.flatField = id(flatField);
    result.excitation = id(excitation);
    return result;
}

bool Ingredients::areNamed() const
{
    for (const CILImage *image : {luminescent, background, flatField, excitation}) {
        if (image && image->contentId() == 0)
            return false;
    }
    return true;
}

const CILImage *CalibratedImages::find(const CalibrationKey &calibration)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry &entry) { return entry.calibration == calibration; });
    if (found == m_entries.end())
        return nullptr;
    std::rotate(found, found + 1, m_entries.end());
    return &m_entries.back().image;
}

void CalibratedImages::remember(const CalibrationKey &calibration, const CILImage &image)
{
    // Nobody can ask again for an image of pixels that are gone; of other constants only by editing them
    // back.
    const auto isStale = [&](const Entry &entry) {
        const CalibrationKey &old = entry.calibration;
        return old.luminescent != calibration.luminescent ||
               (old.unit == calibration.unit && old.factor != calibration.factor);
    };
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), isStale), m_entries.end());
    if (m_entries.size() >= CAPACITY)
        m_entries.erase(m_entries.begin());
    m_entries.push_back({calibration, image});
}
