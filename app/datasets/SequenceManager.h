// SPDX-License-Identifier: MIT
#pragma once

#include "app/datasets/OpenedItems.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"

class CVXSWorkspace;

/// The open sequences: opens, shows and closes them with all that hangs on them. It owns them. One with
/// changes, or never saved, asks before it is closed.
class SequenceManager : public OpenedItems<CVXSSequenceDataset>
{
    Q_OBJECT

public:
    explicit SequenceManager(CVXSWorkspace *workspace, QObject *parent = nullptr);
    /// Closes what is still open, without asking.
    ~SequenceManager() override;

    /// Opens a sequence folder, or its SequenceInfo.txt, and shows it at once; its datasets come one by one in
    /// the event loop, and until the last of them it counts as loading. One that is open comes to the front.
    /// Null, and told in the log (level 3: folder and reason), when it cannot be opened.
    CVXSSequenceDataset *open(const QString &path);
    /// The same, and it is there completely.
    CVXSSequenceDataset *openCompletely(const QString &path);
    /// Takes over a sequence in memory and shows it.
    void add(CVXSSequenceDataset *sequence);

    /// Saves it; one that was never saved asks where. False when it is not saved.
    bool save(CVXSSequenceDataset *sequence) override;
    /// Asks for a place and puts all of the sequence there. False when it is not saved.
    bool saveElsewhere(CVXSSequenceDataset *sequence);

    QList<CVXSSequenceDataset *> sequences() const { return items(); }
    /// The sequence of a window of it or of one of its datasets; null for others.
    static CVXSSequenceDataset *sequenceOf(const CVXSChildWindow *window);

Q_SIGNALS:
    /// A sequence lies in that folder and can be opened again from there.
    void opened(const QString &folder);
    /// Before its window is shown: what the tools make of the new active window has the last word.
    void added(CVXSSequenceDataset *sequence);
    /// The sequence, its datasets and their windows are all still there.
    void aboutToBeRemoved(CVXSSequenceDataset *sequence);

private:
    void loadNext(CVXSSequenceDataset *sequence);
    QString lossOf(CVXSSequenceDataset *sequence) const override;
    QString lineOf(CVXSSequenceDataset *sequence, const QString &loss) const override;
    bool askAbout(CVXSSequenceDataset *sequence, const QString &loss) override;
    void takeLeave(CVXSSequenceDataset *sequence) override;
    CVXSSequenceDataset *itemOf(const CVXSChildWindow *window) const override;

    CVXSWorkspace *m_workspace;
};
