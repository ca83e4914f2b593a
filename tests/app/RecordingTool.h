// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/plugin/CVXToolPluginBase.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

/// A tool that writes down what the workspace asks of it (property "calls"). Its window is handed to the
/// workspace at the first launch. The property "launchFails" makes launches fail, "load" a path that it asks
/// the workspace to load when it is set, with the outcome in "loadStatus".
class RecordingTool : public CVXToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "vexa.test.RecordingTool")
    Q_INTERFACES(CVXToolPluginBase)
    Q_PROPERTY(QStringList calls MEMBER m_calls)
    Q_PROPERTY(bool launchFails MEMBER m_launchFails)
    Q_PROPERTY(QString load MEMBER m_load WRITE setLoad)
    Q_PROPERTY(int loadStatus MEMBER m_loadStatus)

public:
    ~RecordingTool() override;

    int getToolKind() override { return 0; }
    QAction *getAction() override;
    QIcon getIcon() override;
    QString getToolName() override { return QStringLiteral("Recorder"); }
    QString getToolGroupName() override { return QStringLiteral("Tests"); }
    void resetWindow() override;
    void showToolWindow() override;
    bool launchTool() override;
    bool isToolWindowShown() override { return m_bToolWindowShown; }
    void signalAddWidgetToWorkspace(QWidget *pWidget) override { addWidgetToWorkspace(pWidget); }
    void updateValidity(QAction *action, bool enabled, bool visible) override;
    void onSignalDatasetChanged(CVXSDataset *dataset) override;
    void onSignalSequenceChanged(CVXSSequenceDataset *sequence) override;
    void onSignalDatasetRemoved(CVXSDataset *dataset) override;
    void onSignalSequenceAdded(CVXSSequenceDataset *sequence) override;
    void onSignalSequenceRemoved(CVXSSequenceDataset *sequence) override;
    void onSignalROIModified(QString) override {}
    void onSignalROIDeleted() override {}
    void onSignalupdateROIList() override {}
    void onSignalCopyToClipboard(QString strObjectName) override;

private:
    void setLoad(const QString &path);

    QStringList m_calls;
    QPointer<QWidget> m_window;
    QString m_load;
    int m_loadStatus = -1;
    bool m_launchFails = false;
};
