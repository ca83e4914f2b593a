// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"

#include <map>
#include <QObject>
#include <QPointer>
#include <QString>

class CVXSDataset;

/// Tells of the ROIs of one dataset what became of them, one by one, for the tools.
///
///     ToolRois rois;
///     connect(&rois, &ToolRois::modified, ...);
///     rois.follow(dataset); // from here on; null: nobody
class ToolRois : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    void follow(CVXSDataset *dataset);

Q_SIGNALS:
    /// The ROI of that name was moved, resized or changed its kind.
    void modified(const QString &name);
    /// One or more are gone.
    void deleted();
    /// Others are there than before: some came, went, or changed their names.
    void listChanged();

private:
    using Known = std::map<QString, CROIBase>;

    Known present() const;
    void compare();

    QPointer<CVXSDataset> m_dataset;
    Known m_known; ///< what was told last
};
