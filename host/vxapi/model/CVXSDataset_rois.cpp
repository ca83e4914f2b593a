// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"

CROIManager *CVXSDataset::roiManager() const
{
    static CROIManager none(nullptr);
    return &none;
}

ESTATUS CVXSDataset::MeasureROIAndMakeMeasRecords(bool)
{
    return ESTATUS_SUCCESS;
}
