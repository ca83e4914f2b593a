// SPDX-License-Identifier: MIT
#include "app/ToolRois.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"

namespace {

bool isSame(const CROIBase &a, const CROIBase &b)
{
    return a.kind() == b.kind() && a.shape() == b.shape() && a.rows() == b.rows() &&
           a.columns() == b.columns() && a.boundingBox() == b.boundingBox() && a.outline() == b.outline();
}

} // namespace

void ToolRois::follow(CVXSDataset *dataset)
{
    if (m_dataset == dataset)
        return;
    if (m_dataset)
        disconnect(m_dataset->roiManager(), nullptr, this, nullptr);
    m_dataset = dataset;
    m_known = present();
    if (dataset)
        connect(dataset->roiManager(), &CROIManager::roisChanged, this, &ToolRois::compare);
}

ToolRois::Known ToolRois::present() const
{
    Known rois;
    const QList<CROIBase *> all = m_dataset ? m_dataset->roiManager()->rois() : QList<CROIBase *>();
    for (const CROIBase *roi : all)
        rois.emplace(roi->name(), *roi);
    return rois;
}

void ToolRois::compare()
{
    const Known before = m_known;
    m_known = present();
    const Known now = m_known; // a tool may change ROIs when it hears of it
    bool areOthers = now.size() != before.size();
    for (const auto &[name, roi] : now) {
        const auto known = before.find(name);
        if (known == before.end())
            areOthers = true;
        else if (!isSame(known->second, roi))
            Q_EMIT modified(name);
    }
    if (now.size() < before.size())
        Q_EMIT deleted();
    if (areOthers)
        Q_EMIT listChanged();
}
