// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/roi/RoiTypes.h"

#include <QIcon>

/// The picture of a tool, drawn in the colours of the palette.
QIcon roiToolIcon(EROITOOL tool);
