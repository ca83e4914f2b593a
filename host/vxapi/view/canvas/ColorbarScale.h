// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QString>
#include <QVector>

class CILPalette;

/// A number at a colour bar.
struct BarTick
{
    double value = 0.0;
    double position = 0.0; ///< 0 at the lower limit, 1 at the upper
    QString label;         ///< empty for a minor tick
};

/// The numbers of a colour bar: both limits, and round numbers between them (1, 2 or 5 times a power of ten;
/// on a log scale decades). All labels of a linear bar share one power of ten.
class VXAPI_EXPORT ColorbarScale
{
public:
    /// `length` is the bar's length and `lineHeight` a label's height, in the same unit; labels keep that
    /// apart.
    static ColorbarScale of(const CILPalette &palette, double length, double lineHeight);

    QVector<BarTick> ticks; ///< from the lower limit upwards
    QString header;         ///< "×10⁸" above the bar, or empty
};
