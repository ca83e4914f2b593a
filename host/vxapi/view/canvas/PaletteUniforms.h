// SPDX-License-Identifier: MIT
#pragma once

class CILPalette;

/// A palette's mapping as the few single-precision numbers that a shader needs; see CILPalette for what it
/// is.
struct PaletteUniforms
{
    enum Mode {
        LINEAR = 0,
        LOGARITHMIC = 1,
        STEP = 2 ///< limits without a distance between them: below, between (or equal), above
    };

    explicit PaletteUniforms(const CILPalette &palette);

    Mode mode = LINEAR;
    float unit = 1.0f;   ///< linear: values are multiplied by it first, so that extreme limits stay in range
    float low = 0.0f;    ///< lower limit: in that unit, its logarithm to base 2, or as it is
    float span = 1.0f;   ///< from lower to upper limit
    float high = 0.0f;   ///< of a step: the upper limit
    float middle = 0.5f; ///< of a step: the position between the limits
};
