// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

#include <QString>
#include <QStringList>

/// Files and folders of datasets and sequences.
namespace datasetfiles {

/// An absolute, clean path that ends in "/"; an empty text stays empty.
QString folderPath(const QString &path);
/// The name of the last folder of such a path.
QString folderName(const QString &path);
/// Whether both name the same existing file or folder.
bool isSame(const QString &a, const QString &b);
/// How a message names a dataset: its click number and, when it has a folder, its ClickInfo.txt.
QString nameFor(const QString &clickNumber, const QString &folder);
/// Makes a folder with those above it. `error` receives "folder: reason".
ESTATUS makeFolder(const QString &folder, QString *error);
/// Copies a file byte for byte, whole or not at all. `error` receives "file: reason".
ESTATUS copyFile(const QString &from, const QString &to, QString *error);
/// Copies the files of a folder into another one that exists, and its sub-folders with everything in them,
/// except those of the names in `without`. Links to folders are left out, as is a sub-folder in which the target
/// lies.
ESTATUS copyTree(const QString &from, const QString &to, const QStringList &without, QString *error);

} // namespace datasetfiles
