// SPDX-License-Identifier: MIT
#include "math/ViewAnnotations.h"

#include "math/FormText.h"

namespace imagemath {

QString displayLabel(tag_edisplayunit unit)
{
    const auto index = std::size_t(unit);
    return index < DISPLAY_UNITS.size() ? formText(DISPLAY_UNITS[index].label) : QString();
}

QString operandLabel(bool isTransFluorescent, tag_edisplayunit ownUnit, tag_edisplayunit labelUnit)
{
    if (ownUnit == EUNIT_EFFICIENCY && isTransFluorescent)
        return formText("NTF Efficiency");
    return displayLabel(labelUnit);
}

QString noImageLabel()
{
    return formText("(No luminescent image)");
}

int ColumnLayout::borderFor(float height)
{
    return int(double(height) * 0.1);
}

double ColumnLayout::tagLeft(double tagWidth) const
{
    return double(left) + ((double(width) + 2.0 * border) - tagWidth) / 2.0;
}

float ColumnLayout::belowFirst() const
{
    return top + height + float(border) + 1.0f;
}

float ColumnLayout::belowSecond() const
{
    return top + 2.0f * height + 3.0f * float(border) + 1.0f;
}

double ColumnLayout::centredOnThird(double tagHeight) const
{
    const float thirdTop = top + 2.0f * height + 5.0f * float(border);
    return double(thirdTop) + (double(height) - tagHeight) / 2.0;
}

} // namespace imagemath
