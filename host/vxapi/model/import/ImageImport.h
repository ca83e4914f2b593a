// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <memory>
#include <QString>

class CVXSDataset;

/// What has to be known about images that come without an instrument's record. The camera constants matter
/// only for calibrated units. ConstantRanges.h gives the range of each number.
struct ImportSettings
{
    QString kind;             ///< one of clickinfo::KIND_...; empty: luminescent
    double fieldOfView = 0.0; ///< width of the imaged field [cm]
    double binning = 1.0;     ///< sensor pixels a pixel, an axis
    double exposure = 1.0;    ///< [s]
    double fNumber = 1.0;     ///< focal length over aperture
    double pixelPitch = 13.0; ///< of the unbinned sensor [um]
    double electronsPerCount = 1.0;
    double quantumEfficiency = 1.0;
    double transmission = 1.0;         ///< of lens and filter
    double excitationIrradiance = 0.0; ///< [uW/cm^2]; 0: not recorded
    QString imagingAngle;              ///< empty: not recorded
    QString acquisitionDate;           ///< ISO 8601; empty: not recorded
};

/// Makes a dataset in memory (type 2) from TIFF files of any kind that CILImage reads: the luminescent image,
/// and a photograph unless that path is empty. The magnification follows from sensor width and field of view.
/// Null on failure, with status and "file: reason" or "setting: reason".
VXAPI_EXPORT std::unique_ptr<CVXSDataset>
importImages(const QString &clickNumber, const QString &luminescentPath, const QString &photographPath,
             const ImportSettings &settings, ESTATUS *status, QString *error);
