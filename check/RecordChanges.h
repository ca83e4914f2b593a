// SPDX-License-Identifier: MIT
#pragma once

#include "math/ResultRecord.h"

#include <QStringList>

class CVXSDataset;

namespace recordchanges {

/// What is not as the record says, a sentence each: image files of the operands (by SHA-256), the calibration
/// constants in their ClickInfo, the result's photograph, and what the result's own ClickInfo says of its
/// making. Empty when all is as it was.
QStringList since(const imagemath::ResultRecord &record, const CVXSDataset &result,
                         const CVXSDataset &a, const CVXSDataset &b);

} // namespace recordchanges
