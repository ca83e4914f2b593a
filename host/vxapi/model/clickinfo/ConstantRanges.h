// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QString>

#include <limits>

/// The ranges of the numbers that a camera and an acquisition are described with: one table for reading a
/// record, importing images, and what the form says about them.
///
///     const ConstantRange range = constantRange(KEY_QUANTUM_EFFICIENCY);
///     if (!range.holds(value))
///         reason = range.requirement(); // "it has to be a number above 0, at most 1"
namespace clickinfo {

struct VXAPI_EXPORT ConstantRange
{
    double least = 0.0;
    bool isLeastIncluded = false;
    double most = std::numeric_limits<double>::infinity(); ///< included

    /// False for a NaN. An infinity lies in a range that has no upper end.
    bool holds(double value) const;
    /// "above 0", "above 0, at most 1", "of 1 or more", "from 0 to 1e+09".
    QString text() const;
    /// "it has to be a number " and the range.
    QString requirement() const;
};

/// The range of a key's number, in the unit that ClickInfoKeys.h gives: binning is 1 or more, an
/// offset from 0 to 1e9, quantum efficiency and transmission are above 0 and at most 1, every other constant is
/// above 0.
VXAPI_EXPORT ConstantRange constantRange(QLatin1String key);

} // namespace clickinfo
