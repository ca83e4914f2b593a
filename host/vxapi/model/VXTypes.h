// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"
#include "host/vximage/VXImageTypes.h"
#include "host/vxutils/ESTATUS.h"

#include <QString>

/// Unit in which a luminescent image is shown and measured.
enum tag_edisplayunit {
    EUNIT_COUNTS = 0,             ///< camera counts
    EUNIT_RADIANCE = 1,           ///< photons/s/cm^2/sr
    EUNIT_RADIANT_EFFICIENCY = 2, ///< (photons/s/cm^2/sr) / (uW/cm^2)
    EUNIT_EFFICIENCY = 3,         ///< image over excitation reference, no unit
    EUNIT_COUNT = 4
};

/// The unit's key in files and calibration calls: "counts", "Radiance (Photons)", "Radiant Efficiency",
/// "efficiency".
VXAPI_EXPORT QString unitKey(tag_edisplayunit unit);
/// The unit of such a key, in any case; false when there is none of that name.
VXAPI_EXPORT bool unitOfKey(const QString &key, tag_edisplayunit *unit);

/// What kind of dataset the host has; tools compare the numbers.
enum EDATASETTYPE {
    EDATASET_ACQUIRED = 0,  ///< acquired or imported, and on disk
    EDATASET_RESULT = 1,    ///< a result of image math, on disk
    EDATASET_IN_MEMORY = 2, ///< computed or imported and never saved: no files yet
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

/// Opaque record of the load signal.
struct downloaded_save_data;
