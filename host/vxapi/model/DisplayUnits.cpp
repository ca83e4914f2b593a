// SPDX-License-Identifier: MIT
#include "host/vxapi/model/DisplayUnits.h"

#include <QCoreApplication>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(DisplayUnits)
};

constexpr DisplayUnit NO_UNIT{"", "", "", "", ""};
constexpr DisplayUnit PRODUCT{"", QT_TRANSLATE_NOOP("DisplayUnits", "Product"), "product", "", ""};
constexpr DisplayUnit RATIO{"", QT_TRANSLATE_NOOP("DisplayUnits", "Ratio"), "ratio", "", ""};

const DisplayUnit &of(tag_edisplayunit unit)
{
    if (unit == EUNIT_PRODUCT || unit == EUNIT_RATIO)
        return unit == EUNIT_PRODUCT ? PRODUCT : RATIO;
    const auto index = std::size_t(unit);
    return index < DISPLAY_UNITS.size() ? DISPLAY_UNITS[index] : NO_UNIT;
}

QString translated(const char *text)
{
    return *text ? Texts::tr(text) : QString();
}

QString inBrackets(const char *symbol)
{
    return *symbol ? QStringLiteral(" [%1]").arg(QString::fromUtf8(symbol)) : QString();
}

} // namespace

QString unitKey(tag_edisplayunit unit)
{
    return QLatin1String(of(unit).key);
}

bool unitOfKey(const QString &key, tag_edisplayunit *unit)
{
    for (std::size_t i = 0; i < DISPLAY_UNITS.size(); ++i) {
        if (key.compare(QLatin1String(DISPLAY_UNITS[i].key), Qt::CaseInsensitive) == 0) {
            *unit = tag_edisplayunit(i);
            return true;
        }
    }
    return false;
}

QString unitLabel(tag_edisplayunit unit)
{
    return translated(of(unit).label);
}

QString unitSuffix(tag_edisplayunit unit)
{
    return inBrackets(of(unit).symbol);
}

QString unitText(tag_edisplayunit unit)
{
    const bool isSymbolLabel = unit == EUNIT_COUNTS || unit == EUNIT_PRODUCT || unit == EUNIT_RATIO;
    return isSymbolLabel ? unitLabel(unit) : unitLabel(unit) + unitSuffix(unit);
}

QString unitTotalText(tag_edisplayunit unit)
{
    return *of(unit).total ? translated(of(unit).total) + inBrackets(of(unit).totalSymbol) : QString();
}
