// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/plugin/CVXToolPluginBase.h"

#include <QPointer>

class CVXSImageMathWnd;

/// The tool "Image Math" as the host drives it: the menu action and when it is enabled, the one Image Math
/// Window, and the relay of its load requests. It holds no image data of its own.
///
///     QPluginLoader loader(path); // the host's part
///     auto *tool = qobject_cast<CVXToolPluginBase *>(loader.instance());
///     menu->addAction(tool->getAction());
///     tool->onSignalSequenceChanged(sequence); // the action is enabled for a sequence with two images
///     tool->launchTool();                      // false when the window could not be made or bound
///
/// The library exports exactly the two functions that Qt's loader looks for. The constructor does nothing
/// that can fail; the window is made at the first launch. Host classes are only forward-declared here, on
/// purpose: no argument of a slot is a meta-type of its own.
class CVXImageMathPlugin : public CVXToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qdx.vexa.vximagemath")
    Q_INTERFACES(CVXToolPluginBase)

public:
    CVXImageMathPlugin();
    ~CVXImageMathPlugin() override;

    int getToolKind() override;
    QAction *getAction() override;
    QIcon getIcon() override;
    QString getToolName() override;
    QString getToolGroupName() override;
    void resetWindow() override;
    void showToolWindow() override;
    bool launchTool() override;
    bool isToolWindowShown() override;

public Q_SLOTS:
    void onSignalDatasetChanged(CVXSDataset *) override;
    void onSignalSequenceChanged(CVXSSequenceDataset *) override;
    void onSignalDatasetRemoved(CVXSDataset *) override;
    void onSignalSequenceAdded(CVXSSequenceDataset *) override;
    void onSignalSequenceRemoved(CVXSSequenceDataset *) override;
    void onSignalROIModified(QString) override;
    void onSignalROIDeleted() override;
    void onSignalupdateROIList() override;
    void signalAddWidgetToWorkspace(QWidget *pWidget) override;
    void onSignalCopyToClipboard(QString strObjectName) override;

protected Q_SLOTS:
    void onSignalLoadImageMathResult(QString, bool, ESTATUS *, downloaded_save_data *pDownloadData = nullptr);

public:
    void updateValidity(QAction *action, bool enabled, bool visible) override;

private:
    bool runLauncher();
    bool isReady(CVXSSequenceDataset *sequence) const;
    void createWindow();

    QPointer<CVXSImageMathWnd> m_pWindow;
};
