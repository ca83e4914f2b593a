// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"

#include <optional>

/// An ROI as the value of its pair in AnalyzedClickInfo.txt, see docs/clickinfo-format.md.
namespace roitext {

/// Everything but the name; read() gives the same numbers back, to the last bit.
VXAPI_EXPORT QString write(const CROIBase &roi);
/// Nothing, with a reason for the user, when the text is damaged or the ROI cannot be kept
/// (CROIBase::complaint()).
VXAPI_EXPORT std::optional<CROIBase> read(const QString &text, QString *reason);

} // namespace roitext
