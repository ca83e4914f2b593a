// SPDX-License-Identifier: MIT
#pragma once

#include "app/datasets/OpenedItems.h"
#include "host/vxapi/model/CVXSDataset.h"

class CVXSWorkspace;

/// The open datasets that are in no sequence, such as results: it owns them, and one lives as long as its
/// window. One with changes that its files do not hold asks before it is closed; a result that lies in its
/// folder as it was made does not. Its files are never touched by closing: it can be opened again.
class LooseDatasets : public OpenedItems<CVXSDataset>
{
    Q_OBJECT

public:
    explicit LooseDatasets(CVXSWorkspace *workspace, QObject *parent = nullptr);
    /// Closes what is still open, without asking.
    ~LooseDatasets() override;

    /// Takes over a dataset and shows it; one that is here already comes to the front.
    void add(CVXSDataset *dataset);
    QList<CVXSDataset *> datasets() const { return items(); }
    /// The dataset of a window when it is one of these; else null.
    CVXSDataset *datasetOf(const CVXSChildWindow *window) const;

    /// Whether closing it would lose something.
    static bool needsSaving(const CVXSDataset *dataset);
    bool save(CVXSDataset *dataset) override;

Q_SIGNALS:
    /// Its window is gone, and it follows.
    void aboutToBeRemoved(CVXSDataset *dataset);

private:
    QString lossOf(CVXSDataset *dataset) const override;
    QString lineOf(CVXSDataset *dataset, const QString &loss) const override;
    bool askAbout(CVXSDataset *dataset, const QString &loss) override;
    void takeLeave(CVXSDataset *dataset) override;
    CVXSDataset *itemOf(const CVXSChildWindow *window) const override { return datasetOf(window); }

    CVXSWorkspace *m_workspace;
};
