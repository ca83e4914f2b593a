// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QString>

class CVXSDataset;

/// What kind of acquisition a dataset is, for the user: "Fluorescence", "Photograph", ...
QString datasetKindText(const CVXSDataset &dataset);
/// What was corrected in its luminescent image: "background subtracted, flat-field corrected", or empty.
QString correctionText(const CVXSDataset &dataset);
