// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

class CVXSDataset;
struct StoredRecord;

/// One line of what a result tells of its making.
struct HowMadeRow
{
    enum class Kind { Heading, Pair, Remark };

    Kind kind = Kind::Pair;
    QString name;  ///< of a pair or heading
    QString value; ///< as it is shown; of a pair or remark
    QString full;  ///< the whole of a value that is shown shortened; else empty

    const QString &whole() const { return full.isEmpty() ? value : full; }
};

namespace howmade {

/// From the record when there is one, else what ClickInfo tells, after a remark that says so.
QVector<HowMadeRow> rowsOf(const CVXSDataset &result, const StoredRecord &stored);
/// The rows with nothing shortened, a line each.
QString plainText(const QVector<HowMadeRow> &rows);

} // namespace howmade
