// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CROIManager_p.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/roi/RoiText.h"
#include "host/vxparser/CPLSection.h"
#include "host/vxutils/CVXSLog.h"

void CROIManager::readSection(const CPLSection *section)
{
    const bool wasSelected = !d->selected.isEmpty();
    if (CRoiMeasurementManager *records = d->records())
        records->remove(d->clickNumber(), d->allNames());
    d->clear();
    QStringList names;
    QStringList texts;
    if (section) {
        section->getKeyList(&names);
        section->getValueList(&texts);
    }
    for (int i = 0; i < names.size(); ++i) {
        QString reason;
        if (d->read(names[i], texts[i], &reason))
            continue;
        d->unreadable.append({names[i], texts[i]});
        vxLog(ELOG_FAILURE, tr("%1: ROI \"%2\" is left out: %3").arg(d->place(), names[i], reason));
    }
    markSaved();
    if (wasSelected)
        Q_EMIT selectionChanged();
    Q_EMIT roisChanged();
}

bool CROIManager::Private::read(const QString &name, const QString &text, QString *reason)
{
    std::optional<CROIBase> roi = roitext::read(text, reason);
    if (!roi)
        return false;
    roi->setName(name);
    if (name.trimmed().isEmpty()) {
        *reason = tr("it has no name");
        return false;
    }
    if (!isNameFree(*roi)) {
        *reason = tr("another ROI has that name, or a cell of it");
        return false;
    }
    append(*roi);
    return true;
}

CROIManager::Private::Pairs CROIManager::Private::pairs() const
{
    Pairs pairs;
    for (const auto &roi : rois)
        pairs.append({roi->name(), roitext::write(*roi)});
    return pairs + unreadable;
}

void CROIManager::writeSection(CPLSection *section) const
{
    for (const QPair<QString, QString> &pair : d->pairs())
        section->addKeyValue(pair.first, pair.second);
}

bool CROIManager::isModified() const
{
    return d->pairs() != d->saved;
}

void CROIManager::markSaved()
{
    d->saved = d->pairs();
}
