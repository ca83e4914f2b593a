// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QImage>

class CVXSDataset;

/// A square picture of a dataset: its luminescent image in colours over its photograph in grey, each where it
/// is there and with its proportions kept; a plain dark square where there is none. `side` in device pixels.
VXAPI_EXPORT QImage datasetThumbnail(const CVXSDataset &dataset, int side);
