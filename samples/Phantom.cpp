// SPDX-License-Identifier: MIT
#include "samples/Phantom.h"

#include <algorithm>
#include <cmath>

namespace phantom {

namespace {

// Below 1 inside an ellipse with half-axes a, b [cm] around (cx, cy).
double ellipse(double x, double y, double cx, double cy, double a, double b)
{
    const double dx = (x - cx) / a;
    const double dy = (y - cy) / b;
    return std::sqrt(dx * dx + dy * dy);
}

double smooth(double distance, double width)
{
    return 0.5 * (1.0 - std::tanh((distance - 1.0) / width));
}

// Light of a point source spreads with its depth: to the eye a Gaussian of about that width.
double spot(double x, double y, double cx, double cy, double sigma)
{
    const double dx = x - cx;
    const double dy = y - cy;
    return std::exp(-(dx * dx + dy * dy) / (2.0 * sigma * sigma));
}

double trunk(double x, double y)
{
    return ellipse(x, y, 0.0, 0.6, 1.45, 2.9);
}

double head(double x, double y)
{
    return ellipse(x, y, 0.0, -2.9, 0.85, 1.15);
}

} // namespace

double body(double x, double y)
{
    double inside = std::max(smooth(trunk(x, y), 0.03), smooth(head(x, y), 0.05));
    for (int side : {-1, 1}) {
        inside = std::max(inside, smooth(ellipse(x, y, side * 0.75, -3.1, 0.38, 0.38), 0.08)); // ears
        inside = std::max(inside, smooth(ellipse(x, y, side * 1.45, -1.3, 0.55, 0.28), 0.08)); // fore paws
        inside = std::max(inside, smooth(ellipse(x, y, side * 1.55, 2.6, 0.35, 0.75), 0.08));  // hind paws
    }
    const double tail = std::fabs(x - 0.35 * std::sin(1.6 * (y - 3.4))) / 0.11;
    if (y > 3.2 && y < 5.6)
        inside = std::max(inside, smooth(tail, 0.3));
    return inside;
}

double photograph(double x, double y)
{
    const double round = std::min(trunk(x, y), head(x, y));
    const double shade = 0.45 + 0.45 * std::sqrt(std::max(0.0, 1.0 - std::min(1.0, round * round)));
    const double fur = 0.03 * std::sin(23.0 * x + 3.0 * std::sin(9.0 * y)) * std::sin(17.0 * y);
    return 0.06 + body(x, y) * (shade + fur - 0.06);
}

double autofluorescence(double x, double y)
{
    const double gut = spot(x, y, 0.25, 1.5, 0.75) + 0.7 * spot(x, y, -0.45, 0.7, 0.55);
    return body(x, y) * (0.35 + 0.5 * gut);
}

double reporter(double x, double y)
{
    return body(x, y) * (spot(x, y, -0.55, -0.7, 0.28) + 0.6 * spot(x, y, 0.6, 1.9, 0.35));
}

double luminescence(double x, double y)
{
    return body(x, y) * (spot(x, y, 0.5, -0.2, 0.25) + 0.5 * spot(x, y, -0.6, 1.4, 0.45) +
                         0.25 * spot(x, y, 0.1, -2.8, 0.2));
}

double transmission(double x, double y)
{
    return 1.0 - body(x, y) * (0.97 - 0.1 * spot(x, y, 0.0, 0.2, 0.8));
}

double bandRatio(double x, double y)
{
    return 0.2 + 0.8 * (0.6 * spot(x, y, -0.4, 0.1, 0.7) + 0.4 * spot(x, y, 0.5, 1.6, 0.5));
}

} // namespace phantom
