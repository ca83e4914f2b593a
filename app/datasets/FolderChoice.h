// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// What the next dialog for the same purpose starts in.
enum EFolderMemory {
    REMEMBER_FOLDER, ///< the chosen folder
    REMEMBER_PARENT, ///< the folder above it, in which the next one of its kind is to be expected
};

/// Asks the user for a folder; an empty text when the user thought better of it. The dialog starts in the
/// folder remembered for this purpose (`settingsKey`; null: none is), else in `usual`.
QString chooseFolder(QWidget *parent, const QString &title, const char *settingsKey, const QString &usual,
                     EFolderMemory memory = REMEMBER_FOLDER);
