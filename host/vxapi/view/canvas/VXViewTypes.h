// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILPalette.h"

class CILImage;

/// A rectangle in the object units of a view; y runs downwards.
struct VXSRECT
{
    float left = 0.0f;
    float top = 0.0f;
    float right = 0.0f;
    float bottom = 0.0f;
    float width() const { return right - left; }
    float height() const { return bottom - top; }
};

/// A colour bar: where it stands (object units) and the palette that it shows while no image stands beside
/// it.
struct SColorbar
{
    VXSRECT rect;
    CILPalette palette;
};

/// How light a photograph is shown. A grey g from 0 to 1 between the image's limits is shown as
/// clamp(g + brightness / 100) ^ (1 / gamma): brightness in percent of the range, gamma above 1 lightens the
/// middle tones. A gamma that is not above 0 counts as 1.
struct PictureTone
{
    int brightness = 0;
    double gamma = 1.0;
};

/// An image beneath another one.
struct ImageUnderlay
{
    CILImage *image = nullptr; ///< the caller's, drawn through its own palette; null: nothing beneath
    PictureTone tone;
    double widthRatio = 1.0; ///< its width over that of the image above, both on the subject
    double opacity = 1.0;    ///< of the image above, 0 to 1
};

/// How a multi-image view arranges its images.
enum EIMAGELAYOUT {
    ELAYOUT_SINGLE = 0,
    ELAYOUT_THREE_ROWS = 4, ///< one column of three cells, one image after the other
};
