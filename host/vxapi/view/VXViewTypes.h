// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILPalette.h"

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

/// How a multi-image view arranges its images.
enum EIMAGELAYOUT {
    ELAYOUT_SINGLE = 0,
    ELAYOUT_THREE_ROWS = 4, ///< one column of three cells, one image after the other
};
