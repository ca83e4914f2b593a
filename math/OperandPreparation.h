// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

#include <QStringList>

/// Makes two images comparable pixel by pixel, or tells why that cannot be.
namespace imagemath {

/// Why two operands can or cannot be combined.
enum class Combination {
    Possible,
    MissingImage, ///< one of them is not there
    DifferentFieldOfView,
    DifferentSize,
};

/// Compares the fields of view [cm] and the physical sizes (pixels times binning factor, in single
/// precision), both for exact equality; a field of view that is not recorded (NaN) equals none.
Combination compareOperands(double fieldOfViewA, const CILImage &a, double fieldOfViewB, const CILImage &b);

/// What the view says about it, line by line; nothing when the operands can be combined.
QStringList messageOf(Combination combination);

/// Bins the finer of two images down to the coarser one's binning: f x f pixels become one, f = coarser /
/// finer truncated to a whole number; counts add up, as in the camera, and of other units it is the mean
/// (CILImage::valuesAddUp()); a remainder at the edge is dropped. B's counts go the same way as B.
/// The coarser image is never interpolated up. Images that were binned are 32-bit float.
void reconcileBinning(CILImage &a, CILImage &b, CILImage &countsB);

} // namespace imagemath
