// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/CVXSLog.h"

#include <QStringList>

/// The messages of that level that the host's log got since this object was made.
class LogLines
{
public:
    LogLines() { getLogObject()->clear(); }

    QStringList ofLevel(long level) const
    {
        QStringList lines;
        for (const SLogEntry &entry : getLogObject()->entries()) {
            if (entry.level == level)
                lines += entry.message;
        }
        return lines;
    }
    QStringList failures() const { return ofLevel(3); }
};
