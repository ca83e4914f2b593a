// SPDX-License-Identifier: MIT
#pragma once

class CILPalette;

/// The limits between which a palette's colours really run, the lower one first. A logarithm needs positive
/// limits: with an upper one a lower one that is not positive is replaced by a ten-thousandth of it; without
/// one the scale is linear.
struct PaletteLimits
{
    explicit PaletteLimits(const CILPalette &palette);

    double lower = 0.0;
    double upper = 0.0;
    bool isLogarithmic = false;
};
