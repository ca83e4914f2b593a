// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class CVXSChildWindow;
class CVXSDataset;
class CVXSSequenceDataset;
class CVXSWorkspace;
class CVXToolPluginBase;
class DatasetLoader;
class QAction;
class QMdiSubWindow;

/// The tool plug-ins: finds and loads them, tells them what becomes active, opens and closes, and launches
/// them.
class PluginManager : public QObject
{
    Q_OBJECT

public:
    PluginManager(CVXSWorkspace *workspace, DatasetLoader *loader, QObject *parent = nullptr);
    /// Destroys the plug-in objects, and with them their actions and windows.
    ~PluginManager() override;

    /// ../lib/vexa/plugins, seen from the program.
    static QString defaultFolder();

    /// Loads every library in the folder. One that cannot be loaded is told in the log (level 3: file and
    /// reason) and left out.
    void loadFolder(const QString &folder);
    /// Loads one plug-in; false, and told, when it cannot be loaded.
    bool load(const QString &file);

    QList<CVXToolPluginBase *> plugins() const;
    /// The tools' actions, those of one group together, with null between groups.
    QList<QAction *> menuActions() const;

    void activeChildChanged(CVXSChildWindow *window);
    void sequenceAdded(CVXSSequenceDataset *sequence);
    /// To be called while the sequence and its datasets are still there. Afterwards no tool window holds on
    /// to them.
    void sequenceRemoved(CVXSSequenceDataset *sequence);
    /// The same for a dataset that is in no sequence.
    void datasetRemoved(CVXSDataset *dataset);
    /// Asks the tools to copy the tool window of that object name to the clipboard.
    void copyToClipboard(const QString &objectName);

Q_SIGNALS:
    void pluginsChanged();

private:
    struct ToolWindow
    {
        QPointer<QMdiSubWindow> frame;
        QList<const CVXSSequenceDataset *> sequences; ///< on which it was launched: it may point to them
    };
    struct Tool
    {
        QPointer<QObject> object;
        CVXToolPluginBase *plugin = nullptr;
        QList<ToolWindow> windows; ///< those that appeared while it was launched
    };

    void launch(CVXToolPluginBase *plugin);
    static void discardHiddenWindows(Tool *tool, const CVXSSequenceDataset *gone);

    CVXSWorkspace *m_workspace;
    DatasetLoader *m_loader;
    QList<Tool> m_tools;
};
