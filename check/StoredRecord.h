// SPDX-License-Identifier: MIT
#pragma once

#include "math/ResultRecord.h"

#include <QString>

class CVXSDataset;

/// What the image file of a result tells of its making: a record, or why there is none.
struct StoredRecord
{
    imagemath::ResultRecord record; ///< empty when there is none
    QString problem;                ///< a sentence for the user when there is none
    QString file;                   ///< path of the image file

    bool isThere() const { return !record.isEmpty(); }

    /// A description of more bytes is no record of a making and is not looked at.
    static constexpr std::size_t MAX_BYTES = 1024 * 1024;

    /// Reads the record from the result's image file on disk, without its pixels.
    static StoredRecord of(const CVXSDataset &result);
};
