// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/TestStudy.h"

namespace storeddataset {

const QString CLICK = QStringLiteral("AB_M20260102030405");

inline CILImage ramp(int size = 16)
{
    return TestStudy::image(size, size, [](int x, int y) { return float(x + y); });
}

/// Writes a complete dataset of that click number into `root`/`folderName`/ and returns that folder.
inline QString writeDataset(const QString &root, const QString &clickNumber,
                            const QString &folderName = QString(), bool isResult = false)
{
    CVXSDataset dataset(clickNumber);
    dataset.setCoreImage(EIMAGE_LUMINESCENT, ramp());
    dataset.setCoreImage(EIMAGE_PHOTOGRAPH, ramp());
    if (isResult)
        (*dataset.getClickInfo())[clickinfo::SECTION_LUMINESCENT]->setValue(clickinfo::KEY_MATH_OPERATION,
                                                                            QStringLiteral("A - B * k"));
    const QString folder =
        root + QLatin1Char('/') + (folderName.isEmpty() ? clickNumber : folderName) + QLatin1Char('/');
    return dataset.saveDatasetAs(folder) == ESTATUS_SUCCESS ? folder : QString();
}

} // namespace storeddataset
