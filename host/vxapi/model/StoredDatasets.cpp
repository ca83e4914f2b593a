// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"

void CVXSDataset::registerStoredDatasets(const QString &) {}

ESTATUS CVXSDataset::checkComplete(QString *) const
{
    return ESTATUS_SUCCESS;
}
