// SPDX-License-Identifier: MIT
#include "display/ImagingAngles.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxparser/CPLSection.h"

imagingangles::Comparison imagingangles::compare(const CPLSection *luminescentA,
                                                 const CPLSection *luminescentB)
{
    if (!luminescentA || !luminescentB)
        return Comparison::Unknown;
    QString angleA;
    QString angleB;
    const ESTATUS statusA = luminescentA->getValue(clickinfo::KEY_IMAGING_ANGLE, &angleA);
    const ESTATUS statusB = luminescentB->getValue(clickinfo::KEY_IMAGING_ANGLE, &angleB);
    const bool isRecorded = statusA == ESTATUS_SUCCESS || statusB == ESTATUS_SUCCESS;
    return !isRecorded || angleA.toLower() == angleB.toLower() ? Comparison::Same : Comparison::Different;
}
