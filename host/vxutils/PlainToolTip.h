// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <QString>

/// A tooltip that shows the text as it stands, wrapped: what comes from a file is no markup, and a long line
/// would be as wide as the screen. Empty for an empty text.
VXUTILS_EXPORT QString plainToolTip(const QString &text);
