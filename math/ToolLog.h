// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/CVXSLog.h"

namespace imagemath {

/// Writes a line of the tool to the host's log: level 3 for what failed, 2 for what the person may want to
/// know.
inline void logLine(const QString &message, long level = 3)
{
    getLogObject()->log(message, QString(), 0, QStringLiteral("18:26:27"), level, false);
}

} // namespace imagemath
