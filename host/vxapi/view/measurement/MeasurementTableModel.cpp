// SPDX-License-Identifier: MIT
#include "host/vxapi/view/measurement/MeasurementTableModel.h"

#include "host/vxapi/view/measurement/MeasurementText.h"

#include <algorithm>
#include <QColor>

namespace {

constexpr int TEXT_COLUMNS = 2; ///< name and kind; numbers follow
constexpr int SATURATED_COLUMN = 3;
const QRgb WARNING = 0xb03a1e; ///< legible on light and dark tables

bool areOfSameRois(const QVector<CRoiMeasInfo> &a, const QVector<CRoiMeasInfo> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const CRoiMeasInfo &x, const CRoiMeasInfo &y) { return x.roiName == y.roiName; });
}

} // namespace

MeasurementTableModel::MeasurementTableModel(QObject *parent)
    : QAbstractTableModel(parent), m_headers(measurementtext::headers(m_unit))
{
}

void MeasurementTableModel::setRecords(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit)
{
    const bool isReset = unit != m_unit || !areOfSameRois(records, m_records);
    if (isReset)
        beginResetModel();
    m_records = records;
    m_unit = unit;
    m_headers = measurementtext::headers(unit);
    m_texts.clear();
    for (const CRoiMeasInfo &record : records)
        m_texts.append(measurementtext::shownValues(record, unit));
    if (isReset)
        endResetModel();
    else if (!records.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int MeasurementTableModel::rowOf(const QString &roiName) const
{
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [&](const CRoiMeasInfo &record) { return record.roiName == roiName; });
    return found == m_records.end() ? -1 : int(found - m_records.begin());
}

int MeasurementTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_records.size();
}

int MeasurementTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_headers.size();
}

QVariant MeasurementTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const CRoiMeasInfo &record = m_records[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return m_texts[index.row()].value(index.column());
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (index.column() < TEXT_COLUMNS ? Qt::AlignLeft : Qt::AlignRight));
    case Qt::ForegroundRole:
        if (!record.isValid)
            return QColor(Qt::gray);
        return index.column() == SATURATED_COLUMN && record.saturatedPixels > 0 ? QVariant(QColor(WARNING))
                                                                                : QVariant();
    case Qt::ToolTipRole:
        return toolTipOf(record);
    default:
        return QVariant();
    }
}

QVariant MeasurementTableModel::toolTipOf(const CRoiMeasInfo &record)
{
    if (!record.isValid)
        return tr("out of date");
    QStringList lines;
    if (record.calibrated.notFinitePixels > 0)
        lines += tr("%1 pixels that are not finite are left out").arg(record.calibrated.notFinitePixels);
    if (record.saturatedPixels > 0)
        lines += tr("%1 pixels are saturated: the totals are too low").arg(record.saturatedPixels);
    return lines.isEmpty() ? QVariant() : lines.join(QLatin1Char('\n'));
}

QVariant MeasurementTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return QVariant();
    const QString header = m_headers.value(section);
    if (role == Qt::ToolTipRole)
        return header;
    // The unit below the name: the columns become as narrow as their numbers.
    if (role == Qt::DisplayRole)
        return QString(header).replace(QLatin1String(" ["), QLatin1String("\n["));
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (section < TEXT_COLUMNS ? Qt::AlignLeft : Qt::AlignRight));
    return QVariant();
}
