// SPDX-License-Identifier: MIT
#include "host/vxapi/view/measurement/MeasurementText.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"

#include <cmath>
#include <limits>
#include <QCoreApplication>
#include <QHash>
#include <QLocale>

namespace measurementtext {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(MeasurementText)
};

struct Column
{
    QString header;
    double (*number)(const CRoiMeasInfo &record);
    bool dependsOnUnit;
};

/// The columns of measured numbers, behind name, kind and the counts of pixels.
QVector<Column> columns(tag_edisplayunit unit)
{
    using Record = const CRoiMeasInfo &;
    QVector<Column> list = {{Text::tr("Area [cm²]"), [](Record r) { return r.area; }, false}};
    const QString total = unitTotalText(unit); // products and ratios have none, nor counts
    if (!total.isEmpty())
        list.append({unitTotalText(EUNIT_COUNTS), [](Record r) { return r.counts.sum; }, false});
    if (!total.isEmpty() && unit != EUNIT_COUNTS)
        list.append({total, [](Record r) { return r.calibratedROIStatistic(); }, true});
    const QString suffix = unitSuffix(unit);
    list.append({Text::tr("Mean") + suffix, [](Record r) { return r.calibrated.mean; }, true});
    list.append(
        {Text::tr("Std. dev.") + suffix, [](Record r) { return r.calibrated.standardDeviation; }, true});
    list.append({Text::tr("Min") + suffix, [](Record r) { return r.calibrated.minimum; }, true});
    list.append({Text::tr("Max") + suffix, [](Record r) { return r.calibrated.maximum; }, true});
    return list;
}

template <typename F>
QStringList values(const CRoiMeasInfo &record, tag_edisplayunit unit, F format)
{
    QStringList list = {record.roiName,
                        record.kind == EROI_BACKGROUND ? Text::tr("Background") : Text::tr("Measurement"),
                        QString::number(record.calibrated.pixels),
                        record.saturatedPixels < 0 ? format(std::numeric_limits<double>::quiet_NaN())
                                                   : QString::number(record.saturatedPixels)};
    const QVector<Column> all = columns(unit);
    for (const Column &column : all) {
        const bool isForeign = column.dependsOnUnit && record.unit != unit;
        list.append(format(isForeign ? std::numeric_limits<double>::quiet_NaN() : column.number(record)));
    }
    return list;
}

QString infinityText(double value)
{
    return value > 0.0 ? QStringLiteral("inf") : QStringLiteral("-inf");
}

QString cleaned(QString name)
{
    return name.replace(QLatin1Char('\t'), QLatin1Char(' '))
        .replace(QLatin1Char('\n'), QLatin1Char(' '))
        .replace(QLatin1Char('\r'), QLatin1Char(' '));
}

QString quoted(const QString &value)
{
    const bool isPlain = !value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) &&
                         !value.contains(QLatin1Char('\n')) && !value.contains(QLatin1Char('\r'));
    QString escaped = value;
    return isPlain ? value
                   : QLatin1Char('"') + escaped.replace(QLatin1String("\""), QLatin1String("\"\"")) +
                         QLatin1Char('"');
}

QString table(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit, const QString &headerLine,
              QChar separator, QString (*cell)(QString))
{
    QString result = headerLine + QLatin1Char('\n');
    for (const CRoiMeasInfo &record : records) {
        const QStringList exact = exactValues(record, unit);
        result += cell(record.clickNumber);
        for (const QString &value : exact)
            result += separator + cell(value);
        result += QLatin1Char('\n');
    }
    return result;
}

} // namespace

QVector<CRoiMeasInfo> recordsOf(const CVXSDataset &dataset, tag_edisplayunit *unit)
{
    const auto *manager = CRoiMeasurementManager::getRoiMeasurementManager();
    const QString clickNumber = dataset.getClickNumber();
    const QList<const CRoiMeasInfo *> all = manager->getRoiMeasInfoList();
    QVector<CRoiMeasInfo> found;
    const auto add = [&](const QString &name) {
        if (const RoiMeasDisplayEntry *entry = manager->findMeasInfoForId(clickNumber, name))
            found.append(*all[entry->index]);
    };
    const QList<CROIBase *> rois = dataset.roiManager()->rois();
    for (const CROIBase *roi : rois) {
        add(roi->name());
        const QStringList cells = roi->cellNames();
        for (const QString &cell : cells)
            add(cell);
    }
    *unit = dataset.getShownUnit();
    const auto isOfUnit = [unit](const CRoiMeasInfo &record) { return record.unit == *unit; };
    if (!found.isEmpty() && std::none_of(found.begin(), found.end(), isOfUnit))
        *unit = found.first().unit;
    return found;
}

QStringList headers(tag_edisplayunit unit)
{
    QStringList list = {Text::tr("ROI"), Text::tr("Kind"), Text::tr("Pixels"), Text::tr("Saturated")};
    const QVector<Column> all = columns(unit);
    for (const Column &column : all)
        list.append(column.header);
    return list;
}

QStringList shownValues(const CRoiMeasInfo &record, tag_edisplayunit unit)
{
    return values(record, unit, [](double value) {
        if (std::isnan(value))
            return QString(QChar(0x2013));
        return std::isinf(value) ? infinityText(value) : QString::number(value, 'g', 6);
    });
}

QStringList exactValues(const CRoiMeasInfo &record, tag_edisplayunit unit)
{
    return values(record, unit, [](double value) {
        if (std::isnan(value))
            return QStringLiteral("NaN");
        return std::isinf(value) ? infinityText(value)
                                 : QString::number(value, 'g', QLocale::FloatingPointShortest);
    });
}

QString asTabbed(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit)
{
    const QStringList header = QStringList(Text::tr("Dataset")) + headers(unit);
    return table(records, unit, header.join(QLatin1Char('\t')), QLatin1Char('\t'),
                 [](QString value) { return cleaned(value); });
}

QString asCsv(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit)
{
    QStringList header;
    const QStringList all = QStringList(Text::tr("Dataset")) + headers(unit);
    for (QString title : all) {
        // A spreadsheet that takes the file for another encoding reads the units all the same.
        title.replace(QStringLiteral("²"), QStringLiteral("^2"))
            .replace(QStringLiteral("µ"), QStringLiteral("u"));
        header.append(quoted(title));
    }
    return table(records, unit, header.join(QLatin1Char(',')), QLatin1Char(','),
                 [](QString value) { return quoted(value); });
}

} // namespace measurementtext
