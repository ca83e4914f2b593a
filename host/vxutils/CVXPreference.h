// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <memory>
#include <QString>

class CVXSSequenceDataset;
class QSettings;

/// Preferences of the application and of this user.
///
/// With the environment variable VEXA_PROFILE_DIR set, settings and program data lie in that folder
/// ("settings.ini", "data/") and nothing of the user's own is read or written.
class VXUTILS_EXPORT CVXPreference
{
public:
    /// "1.0.0"
    static QString getAppVersion();

    /// The folder under which result datasets are made, without a "/" at the end; created when it is
    /// missing. Where it cannot be created or written, the path is given all the same, with a log line of
    /// level 3 once for each path.
    static QString getProgramDataPath();

    /// Chooses another program-data folder and remembers it for this user. False, and the old one stays, for
    /// an empty path, one that Latin-1 cannot hold (image paths are handed over as Latin-1 bytes), and one
    /// that cannot be created or written; `why` (may be null) then says so in a sentence with the path.
    static bool setProgramDataPath(const QString &path, QString *why);

    /// Whether a sequence is still being loaded. The host marks it with setSequenceLoading().
    static bool isSequenceLoading(const CVXSSequenceDataset *sequence);
    static void setSequenceLoading(const CVXSSequenceDataset *sequence, bool loading);

    /// The persistent settings of this user (or of VEXA_PROFILE_DIR); never null. They are written when the
    /// object is destroyed, and its QSettings::status() tells whether that can be done.
    static std::unique_ptr<QSettings> settings();
};
