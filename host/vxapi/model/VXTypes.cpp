// SPDX-License-Identifier: MIT
#include "host/vxapi/model/VXTypes.h"

#include <array>

namespace {

// In the order of tag_edisplayunit; the letters are those of the files.
constexpr std::array<QLatin1String, EUNIT_COUNT> UNIT_KEYS = {
    QLatin1String("counts"), QLatin1String("Radiance (Photons)"), QLatin1String("Radiant Efficiency"),
    QLatin1String("efficiency")};

} // namespace

QString unitKey(tag_edisplayunit unit)
{
    const auto index = std::size_t(unit);
    return index < UNIT_KEYS.size() ? QString(UNIT_KEYS[index]) : QString();
}

bool unitOfKey(const QString &key, tag_edisplayunit *unit)
{
    for (std::size_t i = 0; i < UNIT_KEYS.size(); ++i) {
        if (key.compare(QLatin1String(UNIT_KEYS[i]), Qt::CaseInsensitive) == 0) {
            *unit = tag_edisplayunit(i);
            return true;
        }
    }
    return false;
}
