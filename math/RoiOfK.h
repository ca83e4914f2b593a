// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>

namespace imagemath {

/// The ROI whose totals gave k, as it was then: k = total in A / total in B.
struct RoiOfK
{
    /// What the ROI held in one of the two datasets.
    struct Total
    {
        QString clickNumber;
        double value = 0.0;          ///< of `unit`: total counts, total flux, ...
        qint64 saturatedPixels = -1; ///< -1: not known, as of a result
    };

    QString name;
    QString
        shape; ///< kind, shape and its measures [cm], as docs/clickinfo-format.md has them, or an outline's box
    QString clickNumber; ///< of the dataset that it was drawn in
    QString unit;        ///< key of the unit that both were measured in
    Total inA;
    Total inB;

    /// k as these totals give it.
    float k() const { return float(inA.value / inB.value); }
};

/// Both ways without a loss. Totals have to be finite.
QJsonObject toJson(const RoiOfK &roi);
/// False, with the name of the member, when one is missing or of another type.
bool fromJson(const QJsonObject &object, RoiOfK *roi, QString *member);

} // namespace imagemath
