// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/DisplayUnits.h"

#include <QList>

class CVXSDataset;

/// Whether datasets that are shown in one unit can be shown in that one.
struct UnitOffer
{
    /// At least one of them can.
    bool isPossible = false;
    /// Which of them cannot, and why; of one dataset the reason alone. Empty when all can.
    QString remark;

    /// Datasets without a luminescent image have no unit, and do not count.
    static UnitOffer of(const QList<CVXSDataset *> &datasets, tag_edisplayunit unit);
};
