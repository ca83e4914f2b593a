// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/PaletteLimits.h"

#include "host/vximage/CILPalette.h"

#include <algorithm>

PaletteLimits::PaletteLimits(const CILPalette &palette)
    : lower(std::min(palette.getImageMin(), palette.getImageMax())),
      upper(std::max(palette.getImageMin(), palette.getImageMax())),
      isLogarithmic(palette.isLogScale() && upper > 0.0)
{
    if (isLogarithmic && lower <= 0.0)
        lower = upper / 10000.0;
}
