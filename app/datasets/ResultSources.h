// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The files that the operands of a result were imported from, as its AnalyzedClickInfo.txt tells; empty for
/// one that was not imported.
struct ResultSources
{
    QString a;
    QString b;

    /// Of the result in that folder, which ends in "/". Nothing when its record cannot be read.
    static ResultSources of(const QString &folder);
    /// "mouse-640.tif, mouse-605.tif"; empty when neither is known.
    QString text() const;
};
