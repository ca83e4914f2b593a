// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

#include <cstdint>
#include <QString>

class CVXSSequenceDataset;

/// The parts of the sample study that are no acquisitions of its sequence. Each makes its folder in the
/// study's; on failure a status, and `error` names file and reason.
namespace samplestudy {

/// The overview of a transillumination raster, as a sequence of its own.
ESTATUS makeOverview(const QString &folder, std::uint64_t seed, QString *error);

/// A - k B of the fluorescence pair with the true k, in counts, as the tool writes it. The sequence is saved.
ESTATUS makeResult(const CVXSSequenceDataset &sequence, const QString &folder, QString *error);

/// Image files as a camera's own program leaves them: 16 bit, the offset left in, no record.
ESTATUS makeCameraFiles(const QString &folder, std::uint64_t seed, QString *error);

} // namespace samplestudy
