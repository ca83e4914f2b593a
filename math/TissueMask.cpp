// SPDX-License-Identifier: MIT
#include "math/TissueMask.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vximage/CSLComposite.h"
#include "host/vxparser/CPLClickInfo.h"

namespace imagemath {

float pixelValueOfPercentage(float percentage, float minimum, float maximum)
{
    const float scaled = percentage * ((maximum - minimum) / 100.0f);
    return scaled + minimum;
}

CILImage tissueMaskOfPhotograph(const CILImage &photograph, std::uint32_t width, std::uint32_t height)
{
    const float percentage = CSLComposite().AutomaticThresholdOtsu(&photograph);
    const float threshold = pixelValueOfPercentage(percentage, photograph.getMin(), photograph.getMax());

    CILImage mask;
    mask.InitWithType(VXS_MASK, photograph.getWidth(), photograph.getHeight());
    photograph.Threshold(threshold, mask);
    mask.Erode(3, 3);
    mask.Dilate(3, 3);
    // Float before it is resampled: a pixel that the edge crosses gets its share of tissue.
    mask.ChangeType(VXS_FLOAT);
    if (mask.get_width() > width)
        mask.downSample(width, height, IL_RESAMPLE_AREA);
    else
        mask.upSample(width, height, IL_RESAMPLE_NEAREST_MASK);
    return mask;
}

const CILImage &TissueMaskMemo::mask(const CILImage &photograph, std::uint32_t width, std::uint32_t height)
{
    const std::uint64_t id = photograph.contentId();
    if (id == 0 || id != m_photograph || width != m_width || height != m_height) {
        m_mask = tissueMaskOfPhotograph(photograph, width, height);
        m_photograph = id;
        m_width = width;
        m_height = height;
    }
    return m_mask;
}

double fluorescenceLevelScale(const CPLClickInfo *clickInfo)
{
    QString level;
    if (clickInfo) {
        if (const CPLSection *section = (*clickInfo)[clickinfo::SECTION_LUMINESCENT])
            section->getValue(clickinfo::KEY_FLUORESCENCE_LEVEL, &level);
    }
    return level.toLower() == QLatin1String("high") ? 100.0 : 10.0;
}

} // namespace imagemath
