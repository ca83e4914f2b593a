// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CROIManager.h"

#include <optional>
#include <QPair>
#include <QSet>
#include <QVector>
#include <vector>

class CRoiMeasurementManager;

/// The inside of an ROI manager.
class CROIManager::Private
{
public:
    using Pairs = QVector<QPair<QString, QString>>;

    explicit Private(CVXSDataset *owner) : dataset(owner) {}

    /// The ROI that was copied last, in whichever dataset; it outlives that.
    static std::optional<CROIBase> &clipboard();
    /// The name of an ROI and those of its cells: everything that has a record.
    static QStringList namesOf(const CROIBase &roi);
    static bool isSameShape(const CROIBase &a, const CROIBase &b);

    QString clickNumber() const;
    /// How a message names the dataset's ROIs: their file, or the click number of a dataset without folder.
    QString place() const;
    /// Where the records of this dataset are; null when they are not its own to touch.
    CRoiMeasurementManager *records() const;

    bool owns(const CROIBase *roi) const;
    bool isNameFree(const CROIBase &roi) const;
    void claim(const CROIBase &roi);
    void release(const CROIBase &roi);
    void giveFreeName(CROIBase *roi) const;
    CROIBase *append(const CROIBase &roi);
    void removeSelected();
    void clear();
    QStringList allNames() const;
    /// Appends the ROI of an entry; false, with a reason for the user, when it is damaged.
    bool read(const QString &name, const QString &text, QString *reason);

    /// Moves it a little to the lower right, until no ROI of the dataset lies exactly there.
    void shift(CROIBase *roi) const;

    /// The ROIs as pairs of the section.
    Pairs pairs() const;

    CVXSDataset *const dataset;
    std::vector<std::unique_ptr<CROIBase>> rois;
    QSet<QString> taken; ///< names of ROIs and cells, case folded
    QList<CROIBase *> selected;
    CROIBase *lastCreated = nullptr;
    Pairs unreadable; ///< entries of the file that were left out
    Pairs saved;      ///< what pairs() gave when the ROIs were read or saved last
};
