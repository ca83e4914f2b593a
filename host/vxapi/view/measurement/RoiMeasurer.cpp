// SPDX-License-Identifier: MIT
#include "host/vxapi/view/measurement/RoiMeasurer.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"

#include <algorithm>

RoiMeasurer::RoiMeasurer(CVXSDataset *dataset, QObject *parent) : QObject(parent), m_dataset(dataset)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, [this] { measure(); });
    if (!dataset)
        return;
    connect(dataset->roiManager(), &CROIManager::roisChanged, this, &RoiMeasurer::measureLater);
    connect(dataset, &CVXSDataset::unitChanged, this, &RoiMeasurer::measureLater);
    connect(dataset, &CVXSDataset::calibrationChanged, this, &RoiMeasurer::measureLater);
    connect(CRoiMeasurementManager::getRoiMeasurementManager(), &CRoiMeasurementManager::recordsChanged, this,
            &RoiMeasurer::recordsChanged);
}

// A tool may mark a record out of date and leave the ROI as it is.
void RoiMeasurer::recordsChanged(const QString &clickNumber)
{
    if (!m_dataset || m_dataset->getClickNumber() != clickNumber)
        return;
    const QList<const CRoiMeasInfo *> all =
        CRoiMeasurementManager::getRoiMeasurementManager()->getRoiMeasInfoList();
    if (std::any_of(all.begin(), all.end(), [&](const CRoiMeasInfo *record) {
            return !record->isValid && record->clickNumber == clickNumber;
        }))
        measureLater();
}

void RoiMeasurer::measureIfPending()
{
    if (m_timer.isActive())
        measure();
}

void RoiMeasurer::measure()
{
    m_timer.stop();
    if (!m_dataset)
        return;
    // Only what is out of date: the others' numbers would be the same.
    const ESTATUS status = m_dataset->MeasureROIAndMakeMeasRecords(false);
    QString problem;
    if (status != ESTATUS_SUCCESS)
        problem = tr("The ROIs cannot be measured: %1").arg(m_dataset->lastError());
    Q_EMIT measured(problem);
}
