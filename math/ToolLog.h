// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/CVXSLog.h"

namespace imagemath {

/// Writes a line of the tool to the host's log: a failure unless told otherwise.
inline void logLine(const QString &message, ELOGLEVEL level = ELOG_FAILURE)
{
    getLogObject()->log(message, QString(), 0, QStringLiteral("18:26:27"), level, false);
}

/// A line that is no failure and that the user has to see all the same.
inline void tellUser(const QString &message)
{
    getLogObject()->tell(message, QStringLiteral("18:26:27"));
}

} // namespace imagemath
