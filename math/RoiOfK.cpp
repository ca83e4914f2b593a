// SPDX-License-Identifier: MIT
#include "math/RoiOfK.h"

namespace {

// Names of the members.
const QString NAME = QStringLiteral("name");
const QString SHAPE = QStringLiteral("shape");
const QString CLICK = QStringLiteral("click number");
const QString UNIT = QStringLiteral("unit");
const QString IN_A = QStringLiteral("A");
const QString IN_B = QStringLiteral("B");
const QString TOTAL = QStringLiteral("total");
const QString SATURATED = QStringLiteral("saturated pixels");

QJsonObject totalToJson(const imagemath::RoiOfK::Total &total)
{
    QJsonObject object{{CLICK, total.clickNumber}, {TOTAL, total.value}};
    if (total.saturatedPixels >= 0)
        object.insert(SATURATED, total.saturatedPixels);
    return object;
}

/// The first of these members that is not of that type; empty when all are.
QString firstOther(const QJsonObject &object, const QStringList &names, QJsonValue::Type type)
{
    for (const QString &name : names) {
        if (object.value(name).type() != type)
            return name;
    }
    return QString();
}

bool totalFromJson(const QJsonObject &object, imagemath::RoiOfK::Total *total, QString *member)
{
    *member = firstOther(object, {CLICK}, QJsonValue::String);
    if (member->isEmpty())
        *member = firstOther(object, {TOTAL}, QJsonValue::Double);
    if (member->isEmpty() && object.contains(SATURATED))
        *member = firstOther(object, {SATURATED}, QJsonValue::Double);
    total->clickNumber = object.value(CLICK).toString();
    total->value = object.value(TOTAL).toDouble();
    total->saturatedPixels = object.contains(SATURATED) ? qint64(object.value(SATURATED).toDouble()) : -1;
    return member->isEmpty();
}

} // namespace

QJsonObject imagemath::toJson(const RoiOfK &roi)
{
    return {{NAME, roi.name}, {SHAPE, roi.shape},           {CLICK, roi.clickNumber},
            {UNIT, roi.unit}, {IN_A, totalToJson(roi.inA)}, {IN_B, totalToJson(roi.inB)}};
}

bool imagemath::fromJson(const QJsonObject &object, RoiOfK *roi, QString *member)
{
    *member = firstOther(object, {NAME, SHAPE, CLICK, UNIT}, QJsonValue::String);
    if (!member->isEmpty())
        return false;
    roi->name = object.value(NAME).toString();
    roi->shape = object.value(SHAPE).toString();
    roi->clickNumber = object.value(CLICK).toString();
    roi->unit = object.value(UNIT).toString();
    for (const auto &[name, total] : {std::pair{IN_A, &roi->inA}, std::pair{IN_B, &roi->inB}}) {
        if (!totalFromJson(object.value(name).toObject(), total, member)) {
            member->prepend(name + QLatin1Char('/'));
            return false;
        }
    }
    return true;
}
