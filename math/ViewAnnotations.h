// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QString>

/// What stands under and between the images of the view, and where.
///
///     const int border = imagemath::ColumnLayout::borderFor(200.0f);
///     const imagemath::ColumnLayout layout{0.0f, 0.0f, 300.0f, 200.0f, border};
///     tag.setPosition(layout.tagLeft(tagWidth), layout.belowFirst()); // under image A, centred
///
/// Everything is in the object units of the view, y downwards, and nothing depends on its pixels on the
/// screen.
namespace imagemath {

/// The unit as the view names it: "Counts", "Radiance (Photons)", "Radiant Efficiency", "Efficiency".
QString displayLabel(tag_edisplayunit unit);

/// The line under an operand's image. `isTransFluorescent` and `ownUnit` are the operand's own; `labelUnit`
/// is the unit that names both operands.
QString operandLabel(bool isTransFluorescent, tag_edisplayunit ownUnit, tag_edisplayunit labelUnit);

/// The line under an operand that has no image.
QString noImageLabel();

/// Places in the object units of the view: an image column whose left top corner is (left, top), thumbnails
/// of width x height, each with a border around it.
struct ColumnLayout
{
    float left = 0.0f;
    float top = 0.0f;
    float width = 0.0f;
    float height = 0.0f;
    int border = 0;

    /// The border for thumbnails of that height: a tenth of it, truncated.
    static int borderFor(float height);

    /// Left edge of a tag of that width, centred in the column.
    double tagLeft(double tagWidth) const;
    /// Top edge of the tag under the first and under the second thumbnail.
    float belowFirst() const;
    float belowSecond() const;
    /// Top edge of a tag of that height, centred on the third thumbnail.
    double centredOnThird(double tagHeight) const;
};

} // namespace imagemath
