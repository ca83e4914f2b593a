// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/PictureContent.h"

#include <QImage>

/// The picture without OpenGL. The image has the content's size and pixel ratio 1.
QImage paintRasterPicture(const PictureContent &content);
/// A pyramid's level through a palette, in that many device pixels.
QImage paintPyramid(const ImagePyramid &pyramid, const CILPalette &palette, const QSize &size);
