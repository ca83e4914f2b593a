// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CalibrationFactors.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"

#include <cmath>
#include <limits>
#include <QCoreApplication>

namespace {

using namespace clickinfo;

constexpr double PI = 3.14159265358979323846;
constexpr double CM_PER_UM = 1e-4;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Calibration)
};

/// The constants of one factor; the first that is not usable is told.
class Constants
{
public:
    Constants(const CPLClickInfo &info, double binning, QString *reason)
        : m_info(info), m_binning(binning), m_reason(reason)
    {
    }

    /// The number of a key; NaN when it is missing or out of its range.
    double number(QLatin1String section, QLatin1String key)
    {
        const double value = numberOf(m_info, section, key);
        return constantRange(key).holds(value) ? value : refused(section, key);
    }
    double binning()
    {
        return std::isnan(number(SECTION_LUMINESCENT, KEY_BINNING)) ? std::numeric_limits<double>::quiet_NaN()
                                                                    : m_binning;
    }

private:
    double refused(QLatin1String section, QLatin1String key)
    {
        if (m_reason && m_reason->isEmpty()) {
            const QString value = textOf(m_info, section, key);
            const QString is = value.isNull() ? Text::tr("is missing") : Text::tr("is \"%1\"").arg(value);
            *m_reason = Text::tr("\"%1\" in section \"%2\" %3; %4")
                            .arg(key, section, is, constantRange(key).requirement());
        }
        return std::numeric_limits<double>::quiet_NaN();
    }

    const CPLClickInfo &m_info;
    double m_binning;
    QString *m_reason;
};

/// Radiance of one count: a sensor behind a lens sees the irradiance E = pi L T / (4 N^2 (1 + m)^2).
double radiancePerCount(Constants &constants)
{
    const double gain = constants.number(SECTION_CAMERA, KEY_GAIN);
    const double quantumEfficiency = constants.number(SECTION_CAMERA, KEY_QUANTUM_EFFICIENCY);
    const double pitch = constants.number(SECTION_CAMERA, KEY_PIXEL_PITCH);
    const double magnification = constants.number(SECTION_CAMERA, KEY_MAGNIFICATION);
    const double transmission = constants.number(SECTION_LUMINESCENT, KEY_TRANSMISSION);
    const double fNumber = constants.number(SECTION_LUMINESCENT, KEY_FNUMBER);
    const double exposure = constants.number(SECTION_LUMINESCENT, KEY_EXPOSURE);
    const double binning = constants.binning();

    const double side = pitch * CM_PER_UM * binning;
    const double photons = gain / (quantumEfficiency * transmission);
    const double lens = 4.0 * fNumber * fNumber * (1.0 + magnification) * (1.0 + magnification);
    return photons * lens / (PI * side * side * exposure);
}

double perCount(Constants &constants, tag_edisplayunit unit)
{
    switch (unit) {
    case EUNIT_RADIANCE:
        return radiancePerCount(constants);
    case EUNIT_RADIANT_EFFICIENCY:
        return radiancePerCount(constants) / constants.number(SECTION_LUMINESCENT, KEY_EXCITATION_IRRADIANCE);
    default:
        return 1.0;
    }
}

} // namespace

double calibration::factor(const CPLClickInfo &info, double binning, tag_edisplayunit from,
                           tag_edisplayunit to, QString *reason)
{
    if (from == to || from == EUNIT_EFFICIENCY || to == EUNIT_EFFICIENCY)
        return 1.0;
    Constants constants(info, binning, reason);
    // Between the two calibrated units only the irradiance counts.
    if (from == EUNIT_RADIANCE && to == EUNIT_RADIANT_EFFICIENCY)
        return 1.0 / constants.number(SECTION_LUMINESCENT, KEY_EXCITATION_IRRADIANCE);
    if (from == EUNIT_RADIANT_EFFICIENCY && to == EUNIT_RADIANCE)
        return constants.number(SECTION_LUMINESCENT, KEY_EXCITATION_IRRADIANCE);
    const double value = perCount(constants, to) / perCount(constants, from);
    // Constants that are numbers may still be so far out that their product is none.
    if (std::isnan(value) || (std::isfinite(value) && value > 0.0))
        return value;
    if (reason && reason->isEmpty())
        *reason = Text::tr("the calibration constants give the factor %1").arg(value);
    return std::numeric_limits<double>::quiet_NaN();
}
