// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

#include <QString>

namespace datasetfiles {

/// What the files of a dataset's folder tell without its pixels.
struct FolderContent
{
    QString clickNumber; ///< that of the folder when ClickInfo.txt names none
    bool isResult = false;
};

/// Whether a dataset lies complete in that folder (its path ends in "/"): ClickInfo.txt and
/// AnalyzedClickInfo.txt can be read, and every image that the sections of ClickInfo call for is there with a
/// header that can be read; no pixel is. ESTATUS_NOT_COMPLETE with "file: reason" otherwise. Says nothing to
/// the log: what is incomplete need not be anybody's concern. `content` may be null.
ESTATUS checkFiles(const QString &folder, FolderContent *content, QString *error);

} // namespace datasetfiles
