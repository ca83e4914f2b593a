// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QString>

namespace resultwriter {
struct Operand;
struct Request;
} // namespace resultwriter

/// The image files of a result dataset.
namespace resultimages {

/// "/data/click/ClickInfo.txt" gives "/data/click/".
QString folderOf(const QString &path);

/// An operand's luminescent image or photograph: the file of the usual name or, where there is none, of the
/// name that the operand gives it.
QString fileOf(const resultwriter::Operand &operand, tag_eimagetype type);

/// Writes the images into the folder (ending in "/"): byte copies of the operands' images, the result with
/// the record of its making, a byte copy of the photograph. What cannot be copied or written is told in the
/// log and missing then; the host sees that when it loads the dataset.
void write(const resultwriter::Request &request, const QString &folder);

/// Copies a file byte for byte, whole or not at all. A source that is not there is nobody's mistake; any
/// other failure is logged with file and reason.
void copyFile(const QString &from, const QString &to);

} // namespace resultimages
