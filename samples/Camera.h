// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "samples/Random.h"

#include <functional>

/// A cooled 16-bit camera above the stage, and what it makes of a scene.
struct Camera
{
    static constexpr double GAIN = 2.0;         ///< g [electrons a count]
    static constexpr double READ_NOISE = 4.0;   ///< standard deviation [electrons]
    static constexpr double OFFSET = 300.0;     ///< [counts]
    static constexpr double PIXEL_PITCH = 13.5; ///< of the unbinned sensor [um]
    static constexpr double QUANTUM_EFFICIENCY = 0.85;
    static constexpr int SENSOR = 2048; ///< pixels an edge, unbinned

    int width = 512;
    int height = 512;
    double binning = 4.0;
    double fieldOfView = 12.5; ///< width of the imaged field [cm]

    /// A scene: expected electrons in an unbinned pixel at (x, y) [cm], without vignetting.
    using Scene = std::function<double(double x, double y)>;

    /// The lens's fall-off towards the corners, 1 in the middle.
    double vignetting(int column, int row) const;
    /// The position [cm] of a pixel's middle.
    void position(int column, int row, double *x, double *y) const;

    /// Expected counts above the offset, vignetting included; 32-bit float.
    CILImage expectedCounts(const Scene &scene) const;
    /// One exposure of those expected counts: Poisson and read noise, offset, rounded to 16 bit.
    CILImage exposure(const CILImage &expected, Random &random) const;
    /// The flat-field reference: vignetting as 32-bit float.
    CILImage flatField() const;
    /// The average of many dark exposures: the offset alone, 16 bit.
    CILImage background() const;
    /// Variance of a pixel [counts^2] of that expected value: Poisson, read noise, rounding.
    static double variance(double expectedCounts);

private:
    CILImage made(VXSDataTypes type, const std::function<double(int column, int row)> &value) const;
};
