// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

class CPLClickInfo;

/// Factors between display units, from the constants of a ClickInfo record.
///
///     QString reason;
///     const double perCount = calibration::factor(info, {4.0}, EUNIT_COUNTS, EUNIT_RADIANCE, &reason);
///     if (std::isnan(perCount))
///         vxLog(ELOG_FAILURE, reason); // names each key, its section, and what is wrong with it
///
/// From first principles: in the time t [s] a sensor pixel of area A [cm^2] that is lit by E [photons/s/cm^2]
/// gives counts = E A t QE / g. From the sensor the lens is seen under the half-angle theta with
/// sin(theta) = 1 / (2 N (1 + m)), and a cone of that half-angle filled with the radiance L, of which lens
/// and filters let pass T, lights it with E = pi L T sin(theta)^2. Hence
///     L = counts * g / (QE T) * 4 N^2 (1 + m)^2 / (pi A t)   [photons/s/cm^2/sr],
/// N being the f-number, m the magnification, QE the quantum efficiency, g the electrons a count.
namespace calibration {

/// What a factor is made by beside the constants.
struct Basis
{
    double binning; ///< of the image; ClickInfo must have the key, but may keep it truncated
    ECALIBRATIONRULES rules = ECALIBRATION_NOW;
};

/// What pixels in the unit `from` are multiplied with to be in the unit `to`. 1 when the units are equal, or
/// when one is efficiency, which no factor leads to or from. NaN when a constant that the factor needs is
/// missing, no number or out of its range; `reason`, where it is empty, then names key and section of each of
/// them, the value of one that is there, and where constants are entered. Gain, quantum efficiency and
/// transmission that are all 1 in an import of version 1.0 count as missing: nobody had entered them. By the
/// rules of version 1.0 they count.
double factor(const CPLClickInfo &info, const Basis &basis, tag_edisplayunit from, tag_edisplayunit to,
              QString *reason);

} // namespace calibration
