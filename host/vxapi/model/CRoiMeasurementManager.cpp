// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CRoiMeasurementManager.h"

#include <algorithm>
#include <QHash>
#include <set>

CRoiMeasurementManager::CRoiMeasurementManager() = default;

CRoiMeasurementManager *CRoiMeasurementManager::getRoiMeasurementManager()
{
    // Never destroyed: datasets may die after the objects of this file do.
    static auto *manager = new CRoiMeasurementManager;
    return manager;
}

const RoiMeasDisplayEntry *CRoiMeasurementManager::findMeasInfoForId(const QString &datasetText,
                                                                     const QString &roiName) const
{
    const auto found = m_entries.find({datasetText, roiName});
    return found == m_entries.end() ? nullptr : &found->second;
}

QList<const CRoiMeasInfo *> CRoiMeasurementManager::getRoiMeasInfoList() const
{
    QList<const CRoiMeasInfo *> list;
    list.reserve(int(m_records.size()));
    for (const auto &record : m_records)
        list += record.get();
    return list;
}

CRoiMeasInfo *CRoiMeasurementManager::recordOf(const QString &clickNumber, const QString &roiName)
{
    const RoiMeasDisplayEntry *entry = findMeasInfoForId(clickNumber, roiName);
    return entry ? m_records[std::size_t(entry->index)].get() : nullptr;
}

bool CRoiMeasurementManager::isUpToDate(const QString &clickNumber, const QString &roiName) const
{
    const RoiMeasDisplayEntry *entry = findMeasInfoForId(clickNumber, roiName);
    return entry && m_records[std::size_t(entry->index)]->isValid;
}

void CRoiMeasurementManager::enter(std::size_t index)
{
    const CRoiMeasInfo &record = *m_records[index];
    m_entries[{record.clickNumber, record.roiName}] = {record.clickNumber, record.roiName, int(index)};
}

void CRoiMeasurementManager::store(const CRoiMeasInfo &record)
{
    store(QVector<CRoiMeasInfo>{record});
}

void CRoiMeasurementManager::store(const QVector<CRoiMeasInfo> &records)
{
    QStringList touched;
    for (const CRoiMeasInfo &record : records) {
        if (CRoiMeasInfo *known = recordOf(record.clickNumber, record.roiName)) {
            *known = record;
        } else {
            m_records.push_back(std::make_unique<CRoiMeasInfo>(record));
            enter(m_records.size() - 1);
        }
        if (!touched.contains(record.clickNumber))
            touched += record.clickNumber;
    }
    for (const QString &clickNumber : qAsConst(touched))
        Q_EMIT recordsChanged(clickNumber);
}

void CRoiMeasurementManager::invalidate(const QString &clickNumber, const QString &roiName)
{
    invalidate(clickNumber, QStringList(roiName));
}

void CRoiMeasurementManager::invalidate(const QString &clickNumber, const QStringList &roiNames)
{
    bool isChanged = false;
    for (const QString &name : roiNames) {
        CRoiMeasInfo *record = recordOf(clickNumber, name);
        if (!record || !record->isValid)
            continue;
        record->isValid = false;
        isChanged = true;
    }
    if (isChanged)
        Q_EMIT recordsChanged(clickNumber);
}

void CRoiMeasurementManager::rename(const QString &clickNumber, const QString &from, const QString &to)
{
    rename(clickNumber, QStringList(from), QStringList(to));
}

void CRoiMeasurementManager::rename(const QString &clickNumber, const QStringList &from,
                                    const QStringList &to)
{
    // All of them at once: a name may pass from one to the other.
    QHash<QString, QString> names;
    for (int i = 0; i < std::min(from.size(), to.size()); ++i)
        names.insert(from[i], to[i]);
    QStringList freed; // what has a new name already is of an ROI that is gone
    for (const QString &name : to) {
        if (!names.contains(name))
            freed += name;
    }
    remove(clickNumber, freed);
    bool isChanged = false;
    for (const auto &record : m_records) {
        const auto name = names.constFind(record->roiName);
        if (record->clickNumber != clickNumber || name == names.constEnd() || *name == record->roiName)
            continue;
        record->roiName = *name;
        isChanged = true;
    }
    if (!isChanged)
        return;
    rebuildEntries();
    Q_EMIT recordsChanged(clickNumber);
}

void CRoiMeasurementManager::remove(const QString &clickNumber, const QString &roiName)
{
    remove(clickNumber, QStringList(roiName));
}

void CRoiMeasurementManager::remove(const QString &clickNumber, const QStringList &roiNames)
{
    const std::set<QString> names(roiNames.cbegin(), roiNames.cend());
    drop(clickNumber, [&](const CRoiMeasInfo &record) { return names.count(record.roiName) > 0; });
}

void CRoiMeasurementManager::removeDataset(const QString &clickNumber)
{
    drop(clickNumber, [](const CRoiMeasInfo &) { return true; });
}

void CRoiMeasurementManager::drop(const QString &clickNumber,
                                  const std::function<bool(const CRoiMeasInfo &)> &isGone)
{
    const auto end = std::remove_if(m_records.begin(), m_records.end(), [&](const auto &record) {
        return record->clickNumber == clickNumber && isGone(*record);
    });
    if (end == m_records.end())
        return;
    m_records.erase(end, m_records.end());
    rebuildEntries();
    Q_EMIT recordsChanged(clickNumber);
}

void CRoiMeasurementManager::rebuildEntries()
{
    m_entries.clear();
    for (std::size_t i = 0; i < m_records.size(); ++i)
        enter(i);
}
