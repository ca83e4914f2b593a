// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/RoiStatistics.h"
#include "host/vxapi/model/VXTypes.h"

#include <functional>
#include <map>
#include <memory>
#include <QObject>
#include <QStringList>
#include <QVector>
#include <vector>

/// One measurement of one ROI (of a grid: of the whole; its cells have records of their own, named as the
/// cells are).
class VXAPI_EXPORT CRoiMeasInfo
{
public:
    /// The total that two ROIs are compared by: total counts, the sum over the ROI of the image in camera counts,
    /// corrected as the dataset is (NaN when the image cannot be had in counts); measured in efficiency, the
    /// total efficiency, because counts of other references cannot be compared; of a product or ratio its sum
    /// times the pixel's area.
    double primaryROIStatistic() const
    {
        const bool hasCounts = unit < EUNIT_EFFICIENCY;
        return hasCounts ? counts.sum : calibratedTotal;
    }
    /// The total of the calibrated unit: for radiance the total flux [photons/s], the sum of radiance times
    /// the pixel's area on the subject [cm^2] times 4 pi [sr] (the field's convention for a source that
    /// shines into all directions); for radiant efficiency the same [(photons/s) / (uW/cm^2)]; for efficiency
    /// the sum times the pixel's area [cm^2], for products and ratios likewise; for counts the total counts.
    double calibratedROIStatistic() const { return calibratedTotal; }

    QString clickNumber;
    QString roiName;
    EROISHAPE shape = EROI_RECTANGLE;
    EROIKIND kind = EROI_MEASUREMENT;
    tag_edisplayunit unit = EUNIT_COUNTS; ///< CVXSDataset::getShownUnit() when it was measured
    RoiStatistics counts;                 ///< of the image in camera counts
    RoiStatistics calibrated;             ///< of the image in `unit`
    double calibratedTotal = 0.0;
    double area = 0.0; ///< pixels of the ROI, finite or not, times a pixel's area [cm^2]
    /// Pixels of the ROI, finite or not once calibrated, at which the camera was saturated
    /// (CVXSDataset::getSaturationCeiling()): the totals are then too low. -1: no camera took the image.
    qint64 saturatedPixels = -1;
    bool isValid = false; ///< false: out of date (the ROI, the unit or the pixels changed since)
};

/// Where a dataset's ROI stands in the record list.
struct RoiMeasDisplayEntry
{
    QString clickNumber;
    QString roiName;
    int index = -1; ///< into getRoiMeasInfoList()
};

/// The measurement records of all datasets of this process. Records of a dataset go when it is closed or
/// their ROI is removed.
class VXAPI_EXPORT CRoiMeasurementManager : public QObject
{
    Q_OBJECT

public:
    static CRoiMeasurementManager *getRoiMeasurementManager();

    /// The display entry of that dataset and ROI (both exact), or null. It stays valid until records change.
    const RoiMeasDisplayEntry *findMeasInfoForId(const QString &datasetText, const QString &roiName) const;
    QList<const CRoiMeasInfo *> getRoiMeasInfoList() const;

    // For the host: datasets and their ROI managers. Those with lists do it at once and announce it once.

    /// Whether there is a record of that ROI and nothing changed since it was measured.
    bool isUpToDate(const QString &clickNumber, const QString &roiName) const;
    /// Puts the record in the place of the one of the same dataset and ROI, or appends it.
    void store(const CRoiMeasInfo &record);
    void store(const QVector<CRoiMeasInfo> &records);
    void invalidate(const QString &clickNumber, const QString &roiName);
    void invalidate(const QString &clickNumber, const QStringList &roiNames);
    /// A record that has the new name already is of an ROI that is gone, and goes.
    void rename(const QString &clickNumber, const QString &from, const QString &to);
    void rename(const QString &clickNumber, const QStringList &from, const QStringList &to);
    void remove(const QString &clickNumber, const QString &roiName);
    void remove(const QString &clickNumber, const QStringList &roiNames);
    void removeDataset(const QString &clickNumber);

Q_SIGNALS:
    /// Records of that dataset were stored, marked or removed.
    void recordsChanged(const QString &clickNumber);

private:
    CRoiMeasurementManager();

    CRoiMeasInfo *recordOf(const QString &clickNumber, const QString &roiName);
    /// Removes records of a dataset.
    void drop(const QString &clickNumber, const std::function<bool(const CRoiMeasInfo &)> &isGone);
    void enter(std::size_t index);
    void rebuildEntries();

    // Both stay where they are while others come: callers hold several of them at a time.
    std::vector<std::unique_ptr<CRoiMeasInfo>> m_records;
    std::map<std::pair<QString, QString>, RoiMeasDisplayEntry> m_entries; ///< by click number and ROI
};
