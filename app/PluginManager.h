// SPDX-License-Identifier: MIT
#pragma once

#include "app/ToolRois.h"

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
    /// Tells the tools that a picture of a tool window is about to be taken for the printer, or was.
    void preparePrinting(bool on);
    /// Tells the tools that the menu of that object name is about to be shown.
    void menuAboutToShow(const QString &objectName);

    /// The user's choice, which outlives the program; the tools hear of it when they are loaded, and of
    /// changes.
    static bool areAdvancedOptionsOn();
    void setAdvancedOptions(bool on);

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

    static QAction *actionOf(CVXToolPluginBase *plugin);
    void addAction(CVXToolPluginBase *plugin);
    void tellOfRois();
    void launch(CVXToolPluginBase *plugin);
    static void discardHiddenWindows(Tool *tool, const CVXSSequenceDataset *gone);

    CVXSWorkspace *m_workspace;
    DatasetLoader *m_loader;
    QList<Tool> m_tools;
    ToolRois m_rois; ///< of the active dataset
};
