// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CRoiMeasurementManager.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>

/// Measurement records of one dataset, a row a record. What is out of date is grey and says so.
class VXAPI_EXPORT MeasurementTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit MeasurementTableModel(QObject *parent = nullptr);

    /// Keeps rows and selection where only values changed.
    void setRecords(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit);
    const QVector<CRoiMeasInfo> &records() const { return m_records; }
    tag_edisplayunit unit() const { return m_unit; }
    /// The row of that ROI or cell, or -1.
    int rowOf(const QString &roiName) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    static QVariant toolTipOf(const CRoiMeasInfo &record);

    tag_edisplayunit m_unit = EUNIT_COUNTS;
    QStringList m_headers;
    QVector<CRoiMeasInfo> m_records;
    QVector<QStringList> m_texts; ///< as shown, a list a record
};
