// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <QDir>

/// Removes a folder with everything in it; links are removed, never followed. True when nothing is left
/// (also when there was nothing); false when something stays, and then as much as possible is gone. The root,
/// and the current folder with those above it, are refused: an empty path, which Qt takes for the current
/// folder, must never empty it.
VXUTILS_EXPORT bool deleteFolderTree(const QDir &folder);
