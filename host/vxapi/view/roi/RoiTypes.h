// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"

/// What the mouse does in a view with ROIs.
enum EROITOOL {
    EROITOOL_SELECT, ///< select, move, resize
    EROITOOL_RECTANGLE,
    EROITOOL_ELLIPSE,
    EROITOOL_GRID,
    EROITOOL_POLYGON,
    EROITOOL_FREEHAND
};

/// What the next ROI is drawn as.
struct RoiDrawing
{
    EROITOOL tool = EROITOOL_SELECT;
    EROIKIND kind = EROI_MEASUREMENT;
    int rows = 3;
    int columns = 3;
};
