// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CalibrationFactors.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxparser/CPLClickInfo.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <QCoreApplication>
#include <QPair>
#include <QStringList>
#include <QVector>

namespace {

using namespace clickinfo;

constexpr double PI = 3.14159265358979323846;
constexpr double CM_PER_UM = 1e-4;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Calibration)
};

QString quoted(const QString &text)
{
    return QStringLiteral("\"%1\"").arg(text);
}

bool isOneOf(QLatin1String key, std::initializer_list<QLatin1String> keys)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// Also of a result of such an import, which has the version of its operand before its own.
bool isImportOf10(const CPLClickInfo &info)
{
    const CPLSection *section = info[QString(SECTION_CLICK_NUMBER)];
    QStringList keys;
    QStringList values;
    if (section) {
        section->getKeyList(&keys);
        section->getValueList(&values);
    }
    for (int i = 0; i < keys.size(); ++i) {
        if (keys.at(i).compare(KEY_VERSION, Qt::CaseInsensitive) == 0 &&
            values.at(i).startsWith(QLatin1String("1.0")))
            return true;
    }
    return false;
}

/// The import of version 1.0 wrote 1 where nobody had entered anything. A camera with all three of these has
/// never been built.
bool isMadeUp(const CPLClickInfo &info, QLatin1String key)
{
    const auto isOne = [&info](QLatin1String section, QLatin1String name) {
        return textOf(info, section, name) == QLatin1String("1");
    };
    return isOneOf(key, {KEY_GAIN, KEY_QUANTUM_EFFICIENCY, KEY_TRANSMISSION}) && isImportOf10(info) &&
           !textOf(info, SECTION_LUMINESCENT, KEY_IMPORTED_FROM).isNull() &&
           isOne(SECTION_CAMERA, KEY_GAIN) && isOne(SECTION_CAMERA, KEY_QUANTUM_EFFICIENCY) &&
           isOne(SECTION_LUMINESCENT, KEY_TRANSMISSION);
}

/// The constants of one factor; all that are not usable are told.
class Constants
{
public:
    Constants(const CPLClickInfo &info, const calibration::Basis &basis) : m_info(info), m_basis(basis) {}

    /// The number of a key; NaN when it is missing or out of its range.
    double number(QLatin1String section, QLatin1String key)
    {
        const double value = numberOf(m_info, section, key);
        if (constantRange(key).holds(value) && !isUnknown(key))
            return value;
        m_refused.append({section, key});
        return std::numeric_limits<double>::quiet_NaN();
    }

    double binning()
    {
        return std::isnan(number(SECTION_LUMINESCENT, KEY_BINNING)) ? std::numeric_limits<double>::quiet_NaN()
                                                                    : m_basis.binning;
    }

    bool areUsable() const { return m_refused.isEmpty(); }

    /// Which are not usable, why, and where they are entered.
    QString refusal() const
    {
        QStringList reasons;
        QStringList missing; // a section's, one after the other
        for (int i = 0; i < m_refused.size(); ++i) {
            const auto &[section, key] = m_refused.at(i);
            const QString value = textOf(m_info, section, key);
            if (isUnknown(key))
                reasons +=
                    Text::tr("\"%1\" in section \"%2\" is the 1 that version 1.0 wrote when nothing was "
                             "entered")
                        .arg(key, section);
            else if (!value.isNull())
                reasons += Text::tr("\"%1\" in section \"%2\" is \"%3\"; %4")
                               .arg(key, section, value, constantRange(key).requirement());
            else
                missing += quoted(key);
            const bool isLastOfSection = i + 1 == m_refused.size() || m_refused.at(i + 1).first != section;
            if (isLastOfSection && !missing.isEmpty()) {
                reasons += (missing.size() == 1 ? Text::tr("%1 in section \"%2\" is missing")
                                                : Text::tr("%1 in section \"%2\" are missing"))
                               .arg(missing.join(QStringLiteral(", ")), section);
                missing.clear();
            }
        }
        return reasons.join(QStringLiteral("; ")) +
               Text::tr(". Calibration constants are entered at the import, or in ClickInfo.txt");
    }

private:
    bool isUnknown(QLatin1String key) const
    {
        return m_basis.rules == ECALIBRATION_NOW && isMadeUp(m_info, key);
    }

    const CPLClickInfo &m_info;
    const calibration::Basis m_basis;
    QVector<QPair<QLatin1String, QLatin1String>> m_refused; ///< section and key
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

double calibration::factor(const CPLClickInfo &info, const Basis &basis, tag_edisplayunit from,
                           tag_edisplayunit to, QString *reason)
{
    if (from == to || from == EUNIT_EFFICIENCY || to == EUNIT_EFFICIENCY)
        return 1.0;
    Constants constants(info, basis);
    double value = 0.0;
    // Between the two calibrated units only the irradiance counts.
    if (from == EUNIT_RADIANCE && to == EUNIT_RADIANT_EFFICIENCY)
        value = 1.0 / constants.number(SECTION_LUMINESCENT, KEY_EXCITATION_IRRADIANCE);
    else if (from == EUNIT_RADIANT_EFFICIENCY && to == EUNIT_RADIANCE)
        value = constants.number(SECTION_LUMINESCENT, KEY_EXCITATION_IRRADIANCE);
    else
        value = perCount(constants, to) / perCount(constants, from);
    if (constants.areUsable() && std::isfinite(value) && value > 0.0)
        return value;
    // Constants that are numbers may still be so far out that their product is none.
    if (reason && reason->isEmpty())
        *reason = constants.areUsable() ? Text::tr("the calibration constants give the factor %1").arg(value)
                                        : constants.refusal();
    return std::numeric_limits<double>::quiet_NaN();
}
