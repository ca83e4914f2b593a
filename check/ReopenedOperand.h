// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h"
#include "math/ResultRecord.h"

#include <memory>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// An operand of a result, opened a second time: what is done to it touches nothing that the user has open.
struct ReopenedOperand
{
    std::unique_ptr<QTemporaryDir> copy;  ///< holds the files of an operand that was never saved
    std::unique_ptr<CVXSDataset> dataset; ///< null when it was not found; not registered
    QString remark;                       ///< what the user has to know of this find; may be empty
    QString problem;                      ///< why it was not found, and what to do

    /// Looks among the open datasets, then in these folders of sequences, then under the program-data path.
    /// One whose click number is found nowhere is looked for in its sequence by the hashes of its files.
    static ReopenedOperand find(const imagemath::OperandRecord &record, const QStringList &sequenceFolders);
};
