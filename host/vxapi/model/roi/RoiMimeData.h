// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"

#include <vector>

class QMimeData;

/// Copied ROIs, as they lie on a clipboard: whoever knows them takes ROIs, a text editor takes their text.
///
///     auto *data = new QMimeData;
///     roimime::write(rois, data);
///     QGuiApplication::clipboard()->setMimeData(data);
///     ...
///     QString reason;
///     for (const CROIBase &roi : roimime::read(QGuiApplication::clipboard()->mimeData(), &reason))
///         manager->addROI(roi);
///
/// What was copied last, by whichever program, is what there is to be pasted.
namespace roimime {

/// Adds the ROIs, with their names; and as plain text, if the data holds none yet, the lines that
/// AnalyzedClickInfo.txt would have of them.
VXAPI_EXPORT void write(const std::vector<CROIBase> &rois, QMimeData *data);
/// Whether there are ROIs to be read; false for null.
VXAPI_EXPORT bool isPresent(const QMimeData *data);
/// The ROIs in the order in which they were written, place and shape to the last bit. Empty, with a reason
/// for the user, when there are none or they are damaged.
VXAPI_EXPORT std::vector<CROIBase> read(const QMimeData *data, QString *reason);

} // namespace roimime
