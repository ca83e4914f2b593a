// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"
#include "host/vxutils/ESTATUS.h"

#include <QObject>
#include <QString>

// Forward declarations on purpose: the meta-object compiler must not learn that these are QObjects, or it
// would register them as meta-types for the arguments of every plug-in's slots.
class CVXSDataset;
class CVXSSequenceDataset;
class QAction;
class QIcon;
class QWidget;
struct downloaded_save_data;

/// The interface by which the host drives a tool plug-in. Everything is called on the user-interface thread.
///
/// The host loads the library, asks for the action and puts it into the Tools menu, calls the onSignal...
/// operations when the active dataset or sequence changes, launchTool() when the person chooses the action,
/// and after a successful launch showToolWindow() when the tool has a window to show.
class VXAPI_EXPORT CVXToolPluginBase : public QObject
{
    Q_OBJECT

public:
    explicit CVXToolPluginBase(QObject *parent = nullptr);
    ~CVXToolPluginBase() override;

    /// What kind of tool it is; a tool of kind 5 has no menu action.
    virtual int getToolKind() = 0;
    /// The menu action, created on first call and owned by the plug-in; null for kind 5.
    virtual QAction *getAction() = 0;
    virtual QIcon getIcon() = 0;
    virtual QString getToolName() = 0;
    /// The sub-menu of Tools that the action belongs to.
    virtual QString getToolGroupName() = 0;
    /// Forget the tool's window (the host has destroyed it).
    virtual void resetWindow() = 0;
    /// Show the tool's window. Called only while there is one.
    virtual void showToolWindow() = 0;
    /// The person chose the action. False when the tool did not start; the tool has told the person why.
    virtual bool launchTool() = 0;
    virtual bool isToolWindowShown() = 0;
    /// Hand a window to the host's workspace, which wraps it into a sub-window.
    virtual void signalAddWidgetToWorkspace(QWidget *pWidget) = 0;
    /// Set whether the action is enabled (first flag) and visible (second flag).
    virtual void updateValidity(QAction *action, bool enabled, bool visible) = 0;

    virtual QString getBaseModuleName();
    virtual bool isBaseModuleAvailable();
    virtual bool defaultVisibilityForPluggin();
    virtual bool hasPreferenceWidget();
    virtual QWidget *getPreferenceWidget();

    virtual void onSignalDatasetChanged(CVXSDataset *dataset) = 0;
    virtual void onSignalSequenceChanged(CVXSSequenceDataset *sequence) = 0;
    virtual void onSignalDatasetRemoved(CVXSDataset *dataset) = 0;
    virtual void onSignalSequenceAdded(CVXSSequenceDataset *sequence) = 0;
    virtual void onSignalSequenceRemoved(CVXSSequenceDataset *sequence) = 0;
    virtual void onSignalROIModified(QString name) = 0;
    virtual void onSignalROIDeleted() = 0;
    virtual void onSignalupdateROIList() = 0;
    virtual void onAdvancedOptionChanged(bool on);
    /// Copy the window of that object name to the clipboard, if it is the tool's.
    virtual void onSignalCopyToClipboard(QString strObjectName) = 0;
    virtual void onSignalGetPrintPixmap(bool on);
    virtual void onSignalUpdatePluginMenu(QString name);

Q_SIGNALS:
    /// Asks the host to load a file now. The host writes the outcome to `status` before the emission returns.
    void signalLoadFile(QString path, bool flag, ESTATUS *status, downloaded_save_data *downloadData);

protected:
    void addWidgetToWorkspace(QWidget *widget);
    void updateToolPluginValidity(QAction *action, bool enabled, bool visible);

    bool m_bToolWindowShown = false; ///< the tool's window was launched and not reset or hidden since
    QAction *m_pAction = nullptr;    ///< the menu action, once created
};

Q_DECLARE_INTERFACE(CVXToolPluginBase, "com.Tarrow.Vexa.CVXToolPluginBase/1.0")
