// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

class QByteArray;
class QFileDevice;

/// Writes all of it through to the system; false when that failed, and then the file's errorString() says
/// why. QSaveFile::commit() does not notice that what waited in its buffer was refused, and would put half a
/// file in the old one's place; so this is the way to write one. A disk that gets full in the middle of a
/// block takes a part of it, and gives the reason only for what is left.
VXUTILS_EXPORT bool writeWhole(QFileDevice &file, const QByteArray &bytes);
