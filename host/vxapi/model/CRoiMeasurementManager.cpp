// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CRoiMeasurementManager.h"

CRoiMeasurementManager::CRoiMeasurementManager() = default;
CRoiMeasurementManager *CRoiMeasurementManager::getRoiMeasurementManager()
{
    static auto *manager = new CRoiMeasurementManager;
    return manager;
}
const SRoiMeasDisplayEntry *CRoiMeasurementManager::findMeasInfoForId(const QString &, const QString &) const
{
    return nullptr;
}
QList<const CRoiMeasInfo *> CRoiMeasurementManager::getRoiMeasInfoList() const
{
    return {};
}
void CRoiMeasurementManager::store(const CRoiMeasInfo &) {}
void CRoiMeasurementManager::invalidate(const QString &, const QString &) {}
void CRoiMeasurementManager::rename(const QString &, const QString &, const QString &) {}
void CRoiMeasurementManager::remove(const QString &, const QString &) {}
void CRoiMeasurementManager::removeDataset(const QString &) {}
