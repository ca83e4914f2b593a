// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/CVXSLog.h"

#include <QString>
#include <QStringList>

class CVXSDataset;

/// What came of computing a result of image math again from its record and its operands' files.
///
///     const ResultCheck check = ResultCheck::of(*result, {folderOfSequence});
///     if (check.verdict != ResultCheck::Verdict::Same)
///         vxLog(check.level(), check.headline, check.lines.join(QLatin1Char(' ')));
///
/// The steps, each with a header of its own: StoredRecord reads the record, ReopenedOperand opens the
/// operands a second time, RecordChanges compares them with the record, PixelDifference compares the pixels.
/// Nothing here needs a screen, and nothing that is open or on disk is changed. Texts are sentences for the
/// user.
struct ResultCheck
{
    enum class Verdict {
        Same,               ///< to the last bit, and nothing that was recorded changed
        SameThoughChanged,  ///< to the last bit, but something that was recorded changed
        DifferentAsChanged, ///< the operands changed since, and give another result now
        Different,          ///< other pixels although nothing that was recorded changed
        NotFound,           ///< the record or an operand is missing
        Failed,             ///< something is there but cannot be read or computed
    };

    Verdict verdict = Verdict::Failed;
    QString headline;  ///< one sentence
    QStringList lines; ///< what differs or is missing, one fact a line; what was compared

    /// Level of the log line that tells it.
    ELOGLEVEL level() const;

    /// Computes the result again on datasets that are opened for this: nothing that is open is touched. Each
    /// operand is looked for among the open datasets, then in the folders of these sequences, then under
    /// the program-data path. Hashes and calibration constants are compared with the record first, then the
    /// pixels on disk with the computed ones, bit by bit (a NaN equals a NaN). What cannot be found, read or
    /// computed is a verdict like the others, never an exception.
    static ResultCheck of(const CVXSDataset &result, const QStringList &sequenceFolders);
};
