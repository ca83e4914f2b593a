// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ConstantRanges.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"

#include <cmath>
#include <QCoreApplication>

using namespace clickinfo;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Calibration)
};

} // namespace

bool ConstantRange::holds(double value) const
{
    return (isLeastIncluded ? value >= least : value > least) && value <= most;
}

QString ConstantRange::text() const
{
    if (isLeastIncluded)
        return std::isinf(most) ? Text::tr("of %1 or more").arg(least)
                                : Text::tr("from %1 to %2").arg(least).arg(most);
    return std::isinf(most) ? Text::tr("above %1").arg(least)
                            : Text::tr("above %1, at most %2").arg(least).arg(most);
}

QString ConstantRange::requirement() const
{
    return Text::tr("it has to be a number %1").arg(text());
}

ConstantRange clickinfo::constantRange(QLatin1String key)
{
    if (key == KEY_BINNING)
        return {1.0, true};
    if (key == KEY_OFFSET)
        return {0.0, true, 1e9}; // more than any camera counts
    if (key == KEY_QUANTUM_EFFICIENCY || key == KEY_TRANSMISSION)
        return {0.0, false, 1.0};
    return {};
}
