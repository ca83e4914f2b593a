// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "tour/ImageTool.h"

#include <functional>
#include <QString>

/// Sums over an ROI that owe nothing to the host's own measuring: pixel by pixel, by the rule that a pixel
/// belongs to an ROI when its centre does.
namespace truth {

/// Reads an image as 32-bit float; ends the program when it cannot be read.
CILImage read(const QString &path);
/// Sum of value(pixel) over the pixels whose centre lies in the rectangle or ellipse; `width` of the field
/// of view [cm].
double sum(const CILImage &image, const imagetool::DrawnRoi &roi, double width,
           const std::function<double(double)> &value);
double sum(const CILImage &image, const imagetool::DrawnRoi &roi, double width);
/// How many pixels those are.
double count(const CILImage &image, const imagetool::DrawnRoi &roi, double width);

} // namespace truth
