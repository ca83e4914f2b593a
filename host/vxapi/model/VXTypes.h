// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/DisplayUnits.h"
#include "host/vxapi/vxapi_global.h"
#include "host/vximage/base/VXImageTypes.h"
#include "host/vxutils/ESTATUS.h"

#include <QString>

/// What kind of dataset the host has; tools compare the numbers.
enum EDATASETTYPE {
    EDATASET_ACQUIRED = 0,  ///< acquired or imported, and on disk
    EDATASET_RESULT = 1,    ///< a result of image math, on disk
    EDATASET_IN_MEMORY = 2, ///< computed or imported and never saved: no files yet
};

/// By which rules luminescent images are calibrated.
enum ECALIBRATIONRULES {
    ECALIBRATION_NOW = 0,
    /// Those of version 1.0, by which its results are computed again: a flat field divides as it is, whatever
    /// its scale and shape; binning takes the mean of counts too; products and ratios are converted as if
    /// they were in the unit of their operands.
    ECALIBRATION_1_0 = 1,
};

/// Colour table of a dataset; the same codes as VXS_COLORTABLE_TYPES.
using tag_ecolortable = VXS_COLORTABLE_TYPES;

/// How the images of a sequence are shown.
struct tag_simageadjust
{
    VXS_COLORTABLE_TYPES colorTable = VXS_CT_RAINBOW;
    bool reverse = false;
    bool logScale = false;
};

/// Display flags of a dataset or a sequence.
struct CVXSToolInfo
{
    bool reversed = false;
    bool logarithmic = false;
    int brightness = 0;
    float gamma = 1.0f;
};

/// Where the limits of the colours come from.
enum ELIMITMODE {
    ELIMITS_AUTO, ///< the automatic range, without saturated pixels and outliers
    ELIMITS_FULL, ///< smallest to largest finite pixel
    ELIMITS_MANUAL
};

/// Limits of the colours: the values that the first and the last colour stand for.
struct ColorLimits
{
    ELIMITMODE mode = ELIMITS_AUTO;
    double low = 0.0;
    double high = 0.0;
    tag_edisplayunit unit = EUNIT_COUNTS; ///< of low and high
};

/// Opaque record of the load signal.
struct downloaded_save_data;
