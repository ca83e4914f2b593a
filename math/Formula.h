// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"

#include <array>
#include <QString>

class CPLClickInfo;

/// The five formulas of image math, pixel by pixel on images of equal size.
///
///     A + B * k             r = A + k B
///     A - B * k             r = A - k B, for example a reporter minus its scaled autofluorescence
///     A * B * k             r = k B A
///     (A / B) * k           r = (A / B) k
///     A/B if Counts(B)>k    r = A [C_B > k] / B * s * M
///
/// In the last one, C_B are B's camera counts, [.] is 1 where it holds and 0 elsewhere, s is 100 or 10 after
/// B's fluorescence level, and M is the tissue mask of B's photograph, 1 without one.
///
///     const imagemath::Formula *formula = imagemath::formulaNamed("A - B * k");
///     CILImage result;
///     formula->evaluate({a, b, countsOfB, 1.25f}, result);
///
/// Every step is a 32-bit float operation rounded on its own. Division is IEEE: a zero pixel in B gives an
/// infinity or a NaN, nothing is clamped. The result carries A's or B's binning factor, which are equal by
/// then.
namespace imagemath {

/// What a formula is evaluated on. Images of one size, 32-bit float (masks may stay masks).
struct Operands
{
    const CILImage &a;       ///< image A in the display unit
    const CILImage &b;       ///< image B in the display unit
    const CILImage &countsB; ///< B in camera counts, on the same grid; only the thresholded ratio reads it
    float k;                 ///< factor, or the threshold in counts of the thresholded ratio

    double ratioScale = 10.0;             ///< thresholded ratio: ratioScaleOf() B
    const CILImage *tissueMask = nullptr; ///< thresholded ratio: opened photograph mask, or null for none
};

/// One formula: the text that the user chooses, what it reads, and how it is evaluated.
struct Formula
{
    const char *text;
    bool isThresholded; ///< the thresholded ratio, to which countsB, ratioScale and tissueMask matter
    void (*evaluate)(const Operands &operands, CILImage &result);
};

/// The formulas in the order in which they are offered; the index selects, not the text.
const std::array<Formula, 5> &formulas();

/// The formula of that index, or null for an index that is none.
const Formula *formulaAt(int index);
/// The formula of that text, or null.
const Formula *formulaNamed(const QString &text);

/// The factor of the thresholded ratio for a dataset's fluorescence level: 100 for "High" (any case, nothing
/// around it), 10 for everything else, also when nothing is recorded or there is no record.
double ratioScaleOf(const CPLClickInfo *clickInfo);

} // namespace imagemath
