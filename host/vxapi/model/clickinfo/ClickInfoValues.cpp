// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxparser/CPLClickInfo.h"

#include <cmath>
#include <limits>
#include <QLocale>

CPLSection *clickinfo::ensureSection(CPLClickInfo *info, QLatin1String section)
{
    const QString key = section;
    CPLSection *found = (*info)[key];
    if (!found) {
        found = new CPLSection;
        found->setSectionKey(key);
        info->addSection(found);
    }
    return found;
}

QString clickinfo::textOf(const CPLClickInfo &info, QLatin1String section, QLatin1String key)
{
    QString value;
    if (const CPLSection *found = info[section])
        found->getValue(key, &value);
    return value;
}

bool clickinfo::flagOf(const CPLClickInfo &info, QLatin1String section, QLatin1String key)
{
    return textOf(info, section, key) == QLatin1String("1");
}

double clickinfo::numberOf(const CPLClickInfo &info, QLatin1String section, QLatin1String key)
{
    bool isNumber = false;
    const double value = textOf(info, section, key).toDouble(&isNumber); // C locale, whatever the system's
    return isNumber && std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN();
}

bool clickinfo::isMathResult(const CPLClickInfo &info)
{
    return !textOf(info, SECTION_LUMINESCENT, KEY_MATH_OPERATION).isNull();
}

clickinfo::ResultValues clickinfo::resultValuesOf(const CPLClickInfo &info)
{
    const CPLSection *section = info[SECTION_LUMINESCENT];
    if (!section)
        return ResultValues::InUnit;
    QStringList keys;
    QStringList values;
    section->getKeyList(&keys);
    section->getValueList(&values);
    for (int i = keys.size() - 1; i >= 0; --i) {
        if (keys.at(i).compare(KEY_MATH_OPERATION, Qt::CaseInsensitive) != 0)
            continue;
        const QString &operation = values.at(i);
        if (operation.contains(QLatin1Char('/')))
            return ResultValues::Ratio;
        if (operation.startsWith(QLatin1String("A * B")))
            return ResultValues::Product;
    }
    return ResultValues::InUnit;
}

QString clickinfo::sourceFileOf(const CPLClickInfo &info, QLatin1String section)
{
    const bool isComputed = !textOf(info, section, KEY_MATH_OPERATION).isNull();
    return isComputed ? QString() : textOf(info, section, KEY_IMPORTED_FROM);
}

QString clickinfo::textOfNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString clickinfo::textOfFlag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}
