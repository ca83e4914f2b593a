// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"

#include "host/vxapi/model/CROIManager_p.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxutils/CVXSLog.h"

#include <algorithm>

CROIManager::CROIManager(CVXSDataset *dataset) : d(std::make_unique<Private>(dataset))
{
    if (!dataset)
        return;
    connect(dataset, &CVXSDataset::unitChanged, this, &CROIManager::setAllMeasurementsInvalid);
    connect(dataset, &CVXSDataset::calibrationChanged, this, &CROIManager::setAllMeasurementsInvalid);
}

CROIManager::~CROIManager() = default;

// --- look up ---

QList<CROIBase *> CROIManager::rois() const
{
    QList<CROIBase *> list;
    for (const auto &roi : d->rois)
        list += roi.get();
    return list;
}

void CROIManager::getAllBkgROINames(QStringList *names) const
{
    names->clear();
    for (const auto &roi : d->rois) {
        if (roi->kind() == EROI_BACKGROUND)
            *names += roi->name();
    }
}

void CROIManager::getAllMeasurementROINamesExceptGridROI(QStringList *names) const
{
    names->clear();
    for (const auto &roi : d->rois) {
        if (roi->kind() == EROI_MEASUREMENT && roi->shape() != EROI_GRID)
            *names += roi->name();
    }
}

bool CROIManager::getROI(const QString &name, CROIBase *&roi) const
{
    roi = nullptr;
    for (const auto &candidate : d->rois) {
        if (candidate->name() == name)
            roi = candidate.get();
    }
    return roi;
}

// --- selection ---

void CROIManager::selectROI(CROIBase *roi, bool add)
{
    QList<CROIBase *> selected = add ? d->selected : QList<CROIBase *>();
    if (d->owns(roi)) {
        selected.removeAll(roi);
        selected += roi;
    }
    if (selected == d->selected)
        return;
    d->selected = selected;
    Q_EMIT selectionChanged();
}

QList<CROIBase *> CROIManager::selectedROIs() const
{
    return d->selected;
}

CROIBase *CROIManager::selectedROI() const
{
    return d->selected.isEmpty() ? nullptr : d->selected.last();
}

bool CROIManager::getSelectedROIProps(tagROIInfo *info) const
{
    const CROIBase *roi = selectedROI();
    if (!roi || !info)
        return false;
    info->name = roi->name();
    info->shape = roi->shape();
    info->kind = roi->kind();
    info->boundingBox = roi->boundingBox();
    return true;
}

void CROIManager::selectLastCreatedROI()
{
    selectROI(d->lastCreated, false);
}

// --- change ---

CROIBase *CROIManager::addROI(const CROIBase &roi)
{
    d->lastCreated = nullptr;
    const QString complaint = roi.complaint();
    if (!complaint.isNull()) {
        vxLog(ELOG_WARNING, tr("%1: the ROI is not added: %2").arg(d->place(), complaint));
        return nullptr;
    }
    CROIBase named(roi);
    d->giveFreeName(&named);
    d->lastCreated = d->append(named);
    changed();
    return d->lastCreated;
}

bool CROIManager::renameROI(CROIBase *roi, const QString &name)
{
    if (!d->owns(roi) || name.trimmed().isEmpty())
        return false;
    if (roi->name() == name)
        return true;
    const QStringList before = Private::namesOf(*roi);
    CROIBase renamed(*roi);
    renamed.setName(name);
    d->release(*roi); // its own name is free for it in other letters
    const bool isNameFree = d->isNameFree(renamed);
    if (isNameFree)
        roi->setName(name);
    d->claim(*roi);
    if (!isNameFree)
        return false;
    if (CRoiMeasurementManager *records = d->records())
        records->rename(d->clickNumber(), before, Private::namesOf(*roi));
    changed();
    return true;
}

void CROIManager::setROIKind(CROIBase *roi, EROIKIND kind)
{
    if (!d->owns(roi) || roi->kind() == kind)
        return;
    roi->setKind(kind);
    setMeasurementInvalid(roi);
    changed();
}

void CROIManager::moveROI(CROIBase *roi, const QPointF &by)
{
    if (!d->owns(roi))
        return;
    CROIBase moved(*roi);
    moved.translate(by);
    reshape(roi, moved);
}

void CROIManager::setROIBox(CROIBase *roi, const QRectF &box)
{
    if (!d->owns(roi))
        return;
    CROIBase moved(*roi);
    moved.setBoundingBox(box);
    reshape(roi, moved);
}

void CROIManager::reshape(CROIBase *roi, const CROIBase &reshaped)
{
    const QString complaint = reshaped.complaint();
    if (!complaint.isNull()) {
        vxLog(ELOG_WARNING, tr("%1: ROI \"%2\" stays as it is: %3").arg(d->place(), roi->name(), complaint));
        return;
    }
    if (Private::isSameShape(*roi, reshaped))
        return;
    *roi = reshaped;
    setMeasurementInvalid(roi);
    changed();
}

bool CROIManager::removeROIObject()
{
    if (d->selected.isEmpty())
        return false;
    QStringList names;
    for (const CROIBase *roi : qAsConst(d->selected))
        names += Private::namesOf(*roi);
    d->removeSelected();
    if (CRoiMeasurementManager *records = d->records())
        records->remove(d->clickNumber(), names);
    Q_EMIT selectionChanged();
    changed();
    return true;
}

void CROIManager::changed()
{
    if (d->dataset)
        d->dataset->setModified(true);
    Q_EMIT roisChanged();
}

// --- the host's ROI clipboard ---

bool CROIManager::copyROIObject()
{
    const CROIBase *roi = selectedROI();
    Private::clipboard() = roi ? std::optional<CROIBase>(*roi) : std::nullopt;
    return roi;
}

bool CROIManager::pasteROIObject(bool shifted)
{
    d->lastCreated = nullptr;
    if (!hasCopy())
        return false;
    CROIBase roi(*Private::clipboard());
    if (shifted)
        d->shift(&roi);
    return addROI(roi);
}

bool CROIManager::hasCopy()
{
    return Private::clipboard().has_value();
}

// --- measurement ---

void CROIManager::setMeasurementInvalid(CROIBase *roi)
{
    CRoiMeasurementManager *records = d->records();
    if (records && d->owns(roi))
        records->invalidate(d->clickNumber(), Private::namesOf(*roi));
}

void CROIManager::setAllMeasurementsInvalid()
{
    if (CRoiMeasurementManager *records = d->records())
        records->invalidate(d->clickNumber(), d->allNames());
}
