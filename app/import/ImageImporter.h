// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/import/ImageImport.h"

#include <memory>
#include <QDateTime>
#include <QVector>

class CVXSSequenceDataset;

/// What becomes one dataset.
struct ImportImage
{
    ImportFiles files = {};
    double exposure = NOT_KNOWN; ///< [s] of its own; else that of the settings
    double offset = NOT_KNOWN;   ///< [counts] of its own; else its dark image, else that of the settings
};

/// What is to be imported, and what has to be known about it.
struct ImportRequest
{
    QVector<ImportImage> images;
    QString initials; ///< of the user; ASCII letters
    ImportSettings settings;
};

/// Makes a sequence in memory of image files, in their order. Click numbers are initials and a date-time
/// stamp, from `now` on a second each, such as "ZB20261121153000"; the sequence has the first of them and
/// "_SEQ". Names that an open or stored dataset has, or one in a saved sequence, are left out. All or
/// nothing: null on failure, with status and "file: reason" or "setting: reason". A log line of level 2 tells
/// when the images can be had in counts only, and why.
///
///     ImportRequest request;
///     request.images = {{{"one.tif", "photograph.tif"}}, {{"two.tif"}}};
///     request.initials = "ZB";
///     request.settings.fieldOfView = 12.5; // [cm]
///     auto sequence = importSequence(request, QDateTime::currentDateTime(), &status, &error);
std::unique_ptr<CVXSSequenceDataset> importSequence(const ImportRequest &request, const QDateTime &now,
                                                    ESTATUS *status, QString *error);
