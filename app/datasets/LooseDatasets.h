// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

class CVXSChildWindow;
class CVXSDataset;
class CVXSWorkspace;

/// The open datasets that are in no sequence, such as results: it owns them, and one lives as long as its
/// window. One that was changed, or is a result that the person has not saved yet, asks before it is closed.
/// Its files are never touched by closing: it can be opened again.
class LooseDatasets : public QObject
{
    Q_OBJECT

public:
    explicit LooseDatasets(CVXSWorkspace *workspace, QObject *parent = nullptr);
    /// Closes what is still open, without asking.
    ~LooseDatasets() override;

    /// Takes over a dataset and shows it; one that is here already comes to the front.
    void add(CVXSDataset *dataset);
    QList<CVXSDataset *> datasets() const { return m_datasets; }
    /// The dataset of a window when it is one of these; else null.
    CVXSDataset *datasetOf(const CVXSChildWindow *window) const;

    /// Closes a dataset with its window: false when the person wants it to stay.
    bool close(CVXSDataset *dataset);
    /// Asks for all that need it: false when the person wants to go on. Nothing is closed yet.
    bool areReadyToClose();
    void closeAllUnasked();

    /// Whether closing it would lose something, or leave unsaved what was computed to be saved.
    static bool needsSaving(const CVXSDataset *dataset);

Q_SIGNALS:
    /// Its window is gone, and it follows.
    void aboutToBeRemoved(CVXSDataset *dataset);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isReadyToClose(CVXSDataset *dataset);
    void remove(CVXSDataset *dataset);

    CVXSWorkspace *m_workspace;
    QList<CVXSDataset *> m_datasets;
};
