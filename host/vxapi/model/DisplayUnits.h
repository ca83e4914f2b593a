// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <array>
#include <QString>

/// Unit in which a luminescent image is shown and measured.
enum tag_edisplayunit {
    EUNIT_COUNTS = 0,             ///< camera counts
    EUNIT_RADIANCE = 1,           ///< photons/s/cm^2/sr
    EUNIT_RADIANT_EFFICIENCY = 2, ///< (photons/s/cm^2/sr) / (uW/cm^2)
    EUNIT_EFFICIENCY = 3,         ///< image over excitation reference, no unit
    EUNIT_COUNT = 4,
    // What results of image math may hold instead: no unit, nothing to choose, and no file names them.
    EUNIT_PRODUCT = 5, ///< of two images
    EUNIT_RATIO = 6,   ///< of two images
};

/// What a unit is called. All that names units reads it here.
///
///     unitKey(EUNIT_RADIANCE)       // "Radiance (Photons)", in files
///     unitText(EUNIT_RADIANCE)      // "Radiance (Photons) [p/s/cm²/sr]", for the user
///     unitTotalText(EUNIT_RADIANCE) // "Total flux [p/s]"
///
/// Keys and labels are two sets of texts that differ in case: files keep the letters of the keys, the user
/// reads the labels. Symbols are those of the physical quantity, "p" for photons.
struct DisplayUnit
{
    const char *key;         ///< in files and calibration calls; read in any case
    const char *label;       ///< for the user; translated where it is shown
    const char *symbol;      ///< of a pixel's value, UTF-8; empty: a plain number
    const char *total;       ///< what the sum over an ROI is called; translated where it is shown
    const char *totalSymbol; ///< of that sum, UTF-8; empty: counts
};

/// The units to choose from, indexed by tag_edisplayunit.
constexpr std::array<DisplayUnit, EUNIT_COUNT> DISPLAY_UNITS{{
    {"counts", QT_TRANSLATE_NOOP("DisplayUnits", "Counts"), "counts",
     QT_TRANSLATE_NOOP("DisplayUnits", "Total counts"), ""},
    {"Radiance (Photons)", QT_TRANSLATE_NOOP("DisplayUnits", "Radiance (Photons)"), "p/s/cm²/sr",
     QT_TRANSLATE_NOOP("DisplayUnits", "Total flux"), "p/s"},
    {"Radiant Efficiency", QT_TRANSLATE_NOOP("DisplayUnits", "Radiant Efficiency"), "(p/s/cm²/sr)/(µW/cm²)",
     QT_TRANSLATE_NOOP("DisplayUnits", "Total radiant efficiency"), "(p/s)/(µW/cm²)"},
    {"efficiency", QT_TRANSLATE_NOOP("DisplayUnits", "Efficiency"), "",
     QT_TRANSLATE_NOOP("DisplayUnits", "Total efficiency"), "cm²"},
}};

/// The unit's key; empty for a number that is no unit, as of the other functions, and for products and ratios.
VXAPI_EXPORT QString unitKey(tag_edisplayunit unit);
/// The unit of such a key, in any case; false when there is none of that name.
VXAPI_EXPORT bool unitOfKey(const QString &key, tag_edisplayunit *unit);

/// "Radiance (Photons)".
VXAPI_EXPORT QString unitLabel(tag_edisplayunit unit);
/// " [p/s/cm²/sr]", " [ratio]", to stand behind a name; empty for a plain number.
VXAPI_EXPORT QString unitSuffix(tag_edisplayunit unit);
/// The label, with the symbol where it tells more: "Radiance (Photons) [p/s/cm²/sr]", "Counts", "Ratio".
VXAPI_EXPORT QString unitText(tag_edisplayunit unit);
/// "Total flux [p/s]", "Total counts"; empty for products and ratios, whose sum is of nothing.
VXAPI_EXPORT QString unitTotalText(tag_edisplayunit unit);
