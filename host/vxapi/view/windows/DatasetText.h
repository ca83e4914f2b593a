// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QString>

class CVXSDataset;

/// What kind of acquisition a dataset is, for the user: "Fluorescence", "Photograph", ...
QString datasetKindText(const CVXSDataset &dataset);
/// The file that the dataset was imported from: of its luminescent image, else of its photograph. Empty when
/// it was not imported, or is a result of image math.
QString sourceFileText(const CVXSDataset &dataset);
/// The click number, and beside it the file: "ZB20261121153000 - mouse.tif".
VXAPI_EXPORT QString clickAndSourceText(const CVXSDataset &dataset);
/// What was corrected in its luminescent image: "background subtracted, flat-field corrected", or empty.
QString correctionText(const CVXSDataset &dataset);
