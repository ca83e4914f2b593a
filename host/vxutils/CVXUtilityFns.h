// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <QString>

class QIcon;

/// Small services of the application.
class VXUTILS_EXPORT CVXUtilityFns
{
public:
    /// "Vexa": the title of every message box.
    static QString getAppName();
    /// Of the library vxutils; everything else here is of vxutils_core.
    static QIcon appIcon();

    /// The persistent text of the image-math constant k; "1.00" until one is stored.
    static QString getkValue();
    /// Keeps it letter for letter. getkValue() answers with it at once; the disk is not waited for while an
    /// application object lives, so a process that is killed may lose the last one.
    static void setkValue(const QString &text);
    /// The ID of the sequence in which it was stored; empty when that is not known. To be set after the k, which
    /// forgets the one before.
    static QString getkOrigin();
    static void setkOrigin(const QString &sequenceID);

    /// Whether a click number or file name that came from a file may become a path component: not empty, no
    /// separator or drive colon, no "..", not ".", no blank at either end, no NUL or control character,
    /// nothing that has no UTF-8 form, and at most 255 bytes of it.
    static bool isSafeFileName(const QString &name);
};
