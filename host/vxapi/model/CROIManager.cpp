// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"

class CROIManager::Private
{
};

CROIManager::CROIManager(CVXSDataset *) {}
CROIManager::~CROIManager() = default;
QList<CROIBase *> CROIManager::rois() const
{
    return {};
}
void CROIManager::getAllBkgROINames(QStringList *) const {}
void CROIManager::getAllMeasurementROINamesExceptGridROI(QStringList *) const {}
bool CROIManager::getROI(const QString &, CROIBase *&roi) const
{
    roi = nullptr;
    return false;
}
void CROIManager::selectROI(CROIBase *, bool) {}
QList<CROIBase *> CROIManager::selectedROIs() const
{
    return {};
}
CROIBase *CROIManager::selectedROI() const
{
    return nullptr;
}
bool CROIManager::getSelectedROIProps(tagROIInfo *) const
{
    return false;
}
void CROIManager::selectLastCreatedROI() {}
CROIBase *CROIManager::addROI(const CROIBase &)
{
    return nullptr;
}
bool CROIManager::renameROI(CROIBase *, const QString &)
{
    return false;
}
void CROIManager::setROIKind(CROIBase *, EROIKIND) {}
void CROIManager::moveROI(CROIBase *, const QPointF &) {}
void CROIManager::setROIBox(CROIBase *, const QRectF &) {}
bool CROIManager::removeROIObject()
{
    return false;
}
bool CROIManager::copyROIObject()
{
    return false;
}
bool CROIManager::pasteROIObject(bool)
{
    return false;
}
bool CROIManager::hasCopy()
{
    return false;
}
void CROIManager::setMeasurementInvalid(CROIBase *) {}
void CROIManager::setAllMeasurementsInvalid() {}
void CROIManager::readSection(const CPLSection *) {}
void CROIManager::writeSection(CPLSection *) const {}
bool CROIManager::isModified() const
{
    return false;
}
void CROIManager::markSaved() {}
