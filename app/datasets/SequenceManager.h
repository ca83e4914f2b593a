// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

class CVXSChildWindow;
class CVXSSequenceDataset;
class CVXSWorkspace;
class PluginManager;

/// The open sequences: opens, shows and closes them with all that hangs on them. It owns them.
class SequenceManager : public QObject
{
    Q_OBJECT

public:
    SequenceManager(CVXSWorkspace *workspace, PluginManager *plugins, QObject *parent = nullptr);
    /// Closes what is still open, without asking.
    ~SequenceManager() override;

    /// Opens a sequence folder, or its SequenceInfo.txt, and shows it; one that is open comes to the front.
    /// Null, and told in the log (level 3: folder and reason), when it cannot be opened.
    CVXSSequenceDataset *open(const QString &path);
    /// Takes over a sequence in memory and shows it.
    void add(CVXSSequenceDataset *sequence);

    /// Closes a sequence with its windows. One with changes, or never saved, asks first: false when the
    /// person wants it to stay.
    bool close(CVXSSequenceDataset *sequence);
    /// Saves it; one that was never saved asks where. False when it is not saved.
    bool save(CVXSSequenceDataset *sequence);
    bool closeAll();

    QList<CVXSSequenceDataset *> sequences() const { return m_sequences; }
    /// The sequence of a window of it or of one of its datasets; null for others.
    static CVXSSequenceDataset *sequenceOf(const CVXSChildWindow *window);

Q_SIGNALS:
    void opened(const QString &folder);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// False when the person wants to go on with it.
    bool isReadyToClose(CVXSSequenceDataset *sequence);
    void remove(CVXSSequenceDataset *sequence);

    CVXSWorkspace *m_workspace;
    PluginManager *m_plugins;
    QList<CVXSSequenceDataset *> m_sequences;
};
