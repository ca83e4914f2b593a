// SPDX-License-Identifier: MIT
#include "host/vxapi/model/ClickInfoValues.h"

#include "host/vxparser/CPLClickInfo.h"

#include <cmath>
#include <limits>
#include <QLocale>

CPLSection *clickinfo::ensureSection(CPLClickInfo *info, const char *section)
{
    const QString key = QString::fromLatin1(section);
    CPLSection *found = (*info)[key];
    if (!found) {
        found = new CPLSection;
        found->setSectionKey(key);
        info->addSection(found);
    }
    return found;
}

QString clickinfo::textOf(const CPLClickInfo &info, const char *section, const char *key)
{
    QString value;
    if (const CPLSection *found = info[QString::fromLatin1(section)])
        found->getValue(QString::fromLatin1(key), &value);
    return value;
}

bool clickinfo::flagOf(const CPLClickInfo &info, const char *section, const char *key)
{
    return textOf(info, section, key) == QLatin1String("1");
}

double clickinfo::numberOf(const CPLClickInfo &info, const char *section, const char *key)
{
    bool isNumber = false;
    const double value = textOf(info, section, key).toDouble(&isNumber); // C locale, whatever the system's
    return isNumber && std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN();
}

QString clickinfo::textOfNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString clickinfo::textOfFlag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}
