// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <limits>
#include <memory>
#include <QStringList>

class CVXSDataset;

/// The number that stands for a constant that is not known.
constexpr double NOT_KNOWN = std::numeric_limits<double>::quiet_NaN();

/// The files of one acquisition, TIFF of any kind that CILImage reads. All but the first may be empty: there
/// is none.
struct VXAPI_EXPORT ImportFiles
{
    QString luminescent;
    QString photograph = {};
    QString dark = {};       ///< no light; of the luminescent image's size, exposure and binning
    QString flatField = {};  ///< of the luminescent image's aspect ratio
    QString excitation = {}; ///< reference for efficiency; of the luminescent image's size

    /// Those that are named, in this order.
    QStringList all() const;
};

/// What has to be known about images that come without an instrument's record. Field of view and binning are
/// needed. What is not known of the others is not recorded: without one of the camera's constants, exposure
/// or f-number there is no radiance, and counts only. ConstantRanges.h gives the range of each number.
struct ImportSettings
{
    QString kind;                   ///< one of clickinfo::KIND_...; empty: luminescent
    double fieldOfView = NOT_KNOWN; ///< width of the imaged field [cm]
    double binning = 1.0;           ///< sensor pixels a pixel, an axis
    double exposure = NOT_KNOWN;    ///< [s]
    double fNumber = NOT_KNOWN;     ///< focal length over aperture
    double pixelPitch = NOT_KNOWN;  ///< of the unbinned sensor [um]
    double electronsPerCount = NOT_KNOWN;
    double quantumEfficiency = NOT_KNOWN;
    double transmission = NOT_KNOWN;         ///< of lens and filter
    double excitationIrradiance = NOT_KNOWN; ///< [uW/cm^2]
    /// [counts] of a pixel without light, from 0 on. It becomes a background image of that value. Not for an
    /// acquisition with a dark image, which tells it for each pixel.
    double offset = NOT_KNOWN;
    QString imagingAngle;    ///< empty: not recorded
    QString acquisitionDate; ///< ISO 8601; empty: not recorded
};

/// Makes a dataset in memory (type 2) of TIFF files. Dark image or offset become its background image, which
/// is subtracted from the start. The magnification follows from sensor width and field of view, when the
/// pixel pitch is known. Null on failure, with status and "file: reason" or "setting: reason". A file of
/// several pages gives a log line of level 2.
///
///     ImportSettings settings;
///     settings.fieldOfView = 12.5; // [cm]
///     settings.offset = 500.0;     // [counts]
///     auto dataset = importImages("ZB20261121153000", {"one.tif", "photograph.tif"}, settings, &status,
///                                 &error);
VXAPI_EXPORT std::unique_ptr<CVXSDataset> importImages(const QString &clickNumber, const ImportFiles &files,
                                                       const ImportSettings &settings, ESTATUS *status,
                                                       QString *error);

/// What of a file is not imported: "3 pages, only the first is imported". Empty when all of it is, and for a
/// file that cannot be read, whose reason importImages() tells.
VXAPI_EXPORT QString notImported(const QString &path);
