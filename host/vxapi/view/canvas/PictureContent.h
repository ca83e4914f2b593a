// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/ImagePyramid.h"
#include "host/vximage/CILPalette.h"

#include <array>
#include <QRect>
#include <QRgb>
#include <QSize>
#include <QVector>

/// One image of the picture, ready to be painted.
struct PictureItem
{
    int slot = 0;
    const ImagePyramid *pyramid = nullptr;
    CILPalette palette;                       ///< maps a value to its position in the table
    std::array<CILPalette::Rgb, 256> table{}; ///< the colours, from lower to upper limit
    QRect target;                             ///< device pixels
    int alpha = 255;               ///< of finite pixels, 0 to 255; what is not finite is always opaque
    bool isLowTransparent = false; ///< pixels at or below the lower limit are not drawn
    bool isOpaque() const { return alpha >= 255 && !isLowTransparent; }
};

/// What both painters paint under the overlay. Every device pixel of a target shows the level's pixel at its
/// centre: pixel ((2 x + 1) * level width) / (2 * target width), in whole numbers, and so for y. Hence both paint the same.
struct PictureContent
{
    QSize size; ///< device pixels
    QRgb background = 0;
    QVector<PictureItem> items; ///< the lowest first
};
