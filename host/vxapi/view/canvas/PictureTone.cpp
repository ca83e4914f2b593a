// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/PictureTone.h"

#include <algorithm>
#include <cmath>

std::array<CILPalette::Rgb, 256> tonedTable(const CILPalette &palette, const PictureTone &tone)
{
    const std::array<CILPalette::Rgb, 256> plain = palette.table();
    const double gamma = std::isfinite(tone.gamma) && tone.gamma > 0.0 ? tone.gamma : 1.0;
    if (tone.brightness == 0 && gamma == 1.0)
        return plain;
    std::array<CILPalette::Rgb, 256> toned{};
    for (std::size_t i = 0; i < toned.size(); ++i) {
        const double grey = std::clamp(double(i) / 255.0 + tone.brightness / 100.0, 0.0, 1.0);
        toned[i] = plain[std::size_t(std::lround(255.0 * std::pow(grey, 1.0 / gamma)))];
    }
    return toned;
}
