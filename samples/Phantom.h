// SPDX-License-Identifier: MIT
#pragma once

/// A small animal lying on its belly, seen from above: x to the right, y to the tail, both in cm, (0, 0) in
/// its middle.
namespace phantom {

/// 1 inside the animal, 0 outside, with an edge about a millimetre wide.
double body(double x, double y);
/// Brightness of the photograph, 0 to 1: shaded fur on a dark stage.
double photograph(double x, double y);
/// Autofluorescence of skin and gut, relative to 1 at its brightest.
double autofluorescence(double x, double y);
/// Fluorescent reporter in two organs, as it reaches the surface, relative to 1.
double reporter(double x, double y);
/// Luminescent cells in three places of different depth, as their light reaches the surface, relative to 1.
double luminescence(double x, double y);
/// Transmission of light from below, relative to 1 outside of the animal.
double transmission(double x, double y);
/// A dye that is taken up unevenly: the ratio of two emission bands, 0.2 to 1.
double bandRatio(double x, double y);

} // namespace phantom
