// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

/// Thresholds that come from an image's histogram.
class VXIMAGE_EXPORT CSLComposite
{
public:
    /// The threshold of Otsu's method (N. Otsu, IEEE Trans. Syst. Man Cybern. 9, 62-66, 1979; 256 classes
    /// between the smallest and the largest finite pixel) as a percentage, 0 to 100, of that range. 0 for an
    /// image without spread or without a finite pixel. Null is taken as an empty image.
    float AutomaticThresholdOtsu(const CILImage *image) const;
};
