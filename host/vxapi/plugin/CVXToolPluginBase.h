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
/// operations when the active dataset or sequence changes, launchTool() when the user chooses the action,
/// and after a successful launch showToolWindow() when the tool has a window to show.
///
///     class MyTool : public CVXToolPluginBase
///     {
///         Q_OBJECT
///         Q_PLUGIN_METADATA(IID "com.example.mytool")
///         Q_INTERFACES(CVXToolPluginBase)
///     };
///
/// The library goes into lib/vexa/plugins. A plug-in object lives until the application quits; no sequence or
/// dataset may be used after the onSignal...Removed() call that names it.
class VXAPI_EXPORT CVXToolPluginBase : public QObject
{
    Q_OBJECT

public:
    explicit CVXToolPluginBase(QObject *parent = nullptr);
    ~CVXToolPluginBase() override;

    /// What kind of tool it is; a tool of kind 5 has no menu action and is never launched.
    virtual int getToolKind() = 0;
    /// The menu action, created on first call and owned by the plug-in; null for kind 5.
    virtual QAction *getAction() = 0;
    /// The icon of the tool in menus, for an action that has none of its own, and in the preferences; may be
    /// null.
    virtual QIcon getIcon() = 0;
    /// The tool's name for the user, in menus and the log.
    virtual QString getToolName() = 0;
    /// The sub-menu of Tools that the action belongs to.
    virtual QString getToolGroupName() = 0;
    /// Forget the tool's window (the host has destroyed it).
    virtual void resetWindow() = 0;
    /// Show the tool's window. Called only while there is one.
    virtual void showToolWindow() = 0;
    /// The user chose the action. False when the tool did not start; the tool has told the user why.
    virtual bool launchTool() = 0;
    /// Whether the tool's window was launched and not reset or hidden since.
    virtual bool isToolWindowShown() = 0;
    /// Hand a window to the host's workspace, which wraps it into a sub-window.
    virtual void signalAddWidgetToWorkspace(QWidget *pWidget) = 0;
    /// Set whether the action is enabled (first flag) and visible (second flag).
    virtual void updateValidity(QAction *action, bool enabled, bool visible) = 0;

    /// The module that the tool cannot do without, for the user; empty for a tool that needs none.
    virtual QString getBaseModuleName();
    /// Asked once, when the tool is loaded: without its module it is not offered, and the log says why.
    virtual bool isBaseModuleAvailable();
    /// Whether the action is visible before the first updateValidity().
    virtual bool defaultVisibilityForPluggin();
    /// Whether the tool has a page in the preferences. The page is made anew for each showing of the
    /// preferences, which take it over; what the user changes in it holds at once.
    virtual bool hasPreferenceWidget();
    virtual QWidget *getPreferenceWidget();

    /// A dataset's window became active; null when no window is.
    virtual void onSignalDatasetChanged(CVXSDataset *dataset) = 0;
    /// A sequence's window became active.
    virtual void onSignalSequenceChanged(CVXSSequenceDataset *sequence) = 0;
    /// The dataset is about to go. Those of a sequence are told before the sequence itself.
    virtual void onSignalDatasetRemoved(CVXSDataset *dataset) = 0;
    /// A sequence was opened; its window is not shown yet.
    virtual void onSignalSequenceAdded(CVXSSequenceDataset *sequence) = 0;
    /// The sequence is about to go; it and its datasets are still there.
    virtual void onSignalSequenceRemoved(CVXSSequenceDataset *sequence) = 0;
    // These three are about the ROIs of the dataset whose window is active.
    /// The ROI of that name was moved, resized or changed its kind.
    virtual void onSignalROIModified(QString name) = 0;
    /// One or more are gone.
    virtual void onSignalROIDeleted() = 0;
    /// Others are there than before: some came, went, or changed their names.
    virtual void onSignalupdateROIList() = 0;
    /// Whether the user wants the further settings of tools; told when the tool is loaded, and at changes.
    virtual void onAdvancedOptionChanged(bool on);
    /// Copy the window of that object name to the clipboard, if it is the tool's.
    virtual void onSignalCopyToClipboard(QString strObjectName) = 0;
    /// The host is about to take the picture of a tool window for the printer (true), or has taken it (false):
    /// the tool may show its window as it is to look on paper.
    virtual void onSignalGetPrintPixmap(bool on);
    /// The menu of that object name ("menuTools") is about to be shown: bring the action up to date.
    virtual void onSignalUpdatePluginMenu(QString name);

Q_SIGNALS:
    /// Asks the host to load a file now. The host writes the outcome to `status` before the emission returns.
    void signalLoadFile(QString path, bool flag, ESTATUS *status, downloaded_save_data *downloadData);

protected:
    /// What signalAddWidgetToWorkspace() does for a tool; without a workspace a log line of level 3 and
    /// nothing else.
    void addWidgetToWorkspace(QWidget *widget);
    /// What updateValidity() does for a tool; a null action changes nothing.
    void updateToolPluginValidity(QAction *action, bool enabled, bool visible);

    bool m_bToolWindowShown = false; ///< the tool's window was launched and not reset or hidden since
    QAction *m_pAction = nullptr;    ///< the menu action, once created
};

Q_DECLARE_INTERFACE(CVXToolPluginBase, "com.Tarrow.Vexa.CVXToolPluginBase/1.0")
