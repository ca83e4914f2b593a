// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxparser/CPLClickInfo.h"

#include <QFileInfo>

using namespace clickinfo;

CROIManager *CVXSDataset::roiManager() const
{
    if (!d->rois)
        d->rois = std::make_unique<CROIManager>(const_cast<CVXSDataset *>(this));
    // A folder that it got later has ROIs too; those made before are not given up for them.
    const bool isUntouched = d->rois->rois().isEmpty() && !d->rois->isModified();
    if (isUntouched && d->roisOf != d->roiFile())
        d->readRois();
    return d->rois.get();
}

QString CVXSDataset::Private::roiFile() const
{
    return folder.isEmpty() ? QString() : folder + FILE_ANALYZED_CLICK_INFO;
}

void CVXSDataset::Private::readRois()
{
    roisOf = roiFile();
    CPLClickInfo analyzed;
    // A damaged file is told in the log, and saveAnalyzed() leaves it alone.
    const bool isRead =
        QFileInfo(roisOf).isFile() && analyzed.loadClickInfo(roisOf, false) == ESTATUS_SUCCESS;
    rois->readSection(isRead ? analyzed[SECTION_ROIS] : nullptr);
}

bool CVXSDataset::Private::areRoisToBeWritten() const
{
    if (!rois)
        return false;
    return rois->isModified() || (roisOf != roiFile() && !rois->rois().isEmpty());
}

ESTATUS CVXSDataset::Private::analyzedWithRois(const QString &file, CPLClickInfo *analyzed,
                                               QString *error) const
{
    CPLClickInfo before;
    const ESTATUS status = file.isEmpty() ? ESTATUS_SUCCESS : before.loadClickInfo(file, false);
    if (status != ESTATUS_SUCCESS) {
        *error = tr("%1; the ROIs cannot be written into it").arg(before.lastError());
        return status;
    }
    if (file.isEmpty())
        ensureSection(&before, SECTION_CLICK_NUMBER)->setSectionName(clickNumber);
    const CPLSection *old = ensureSection(&before, SECTION_ROIS);
    int count = 0;
    before.getSectionCount(&count);
    for (int i = 0; i < count; ++i) {
        if (before.sectionAt(i) != old) {
            analyzed->addSection(new CPLSection(*before.sectionAt(i)));
            continue;
        }
        auto *section = new CPLSection;
        QString name;
        old->getSectionName(&name, false);
        section->setSectionKey(old->getSectionKey());
        section->setSectionName(name);
        if (rois)
            rois->writeSection(section);
        analyzed->addSection(section);
    }
    return ESTATUS_SUCCESS;
}

void CVXSDataset::Private::markRoisSaved()
{
    if (!rois)
        return;
    rois->markSaved();
    roisOf = roiFile();
}
