// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

/// Thresholds that come from an image's histogram.
class VXIMAGE_EXPORT CSLComposite
{
public:
    /// The threshold of Otsu's method as a percentage, 0 to 100, of the range from the smallest to the
    /// largest finite pixel: the pixel value is min + percentage / 100 * (max - min).
    ///
    /// Of 256 classes of equal width in that range, it is the border that parts them into the two groups with
    /// the largest variance between them, n0 n1 (m0 - m1)^2 with n pixels of mean class m each (N. Otsu, "A
    /// threshold selection method from gray-level histograms", IEEE Trans. Syst. Man Cybern. 9, 62-66, 1979).
    /// Where several borders do equally well, because no pixel lies between them, it is the middle of them.
    ///
    /// 0 for an image without spread, without a finite pixel or without pixels, for null, and, with a
    /// message, without memory.
    float AutomaticThresholdOtsu(const CILImage *image) const;
};
