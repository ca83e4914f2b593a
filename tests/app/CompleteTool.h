// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/plugin/CVXToolPluginBase.h"

#include <QStringList>

/// A tool that overrides everything that a tool can, and writes down what it is told (property "calls"). What
/// it is asked while it is being loaded comes from the environment: VEXA_TEST_TOOL_KIND, its kind;
/// VEXA_TEST_TOOL_MODULE, a base module that is missing; VEXA_TEST_TOOL_HIDDEN, its action starts hidden;
/// VEXA_TEST_TOOL_NO_PAGE, it promises a page and has none.
class CompleteTool : public CVXToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "vexa.test.CompleteTool")
    Q_INTERFACES(CVXToolPluginBase)
    Q_PROPERTY(QStringList calls MEMBER m_calls)
    Q_PROPERTY(int actionsAskedFor MEMBER m_actionsAskedFor)

public:
    int getToolKind() override;
    QAction *getAction() override;
    QIcon getIcon() override;
    QString getToolName() override { return QStringLiteral("Complete"); }
    QString getToolGroupName() override { return QStringLiteral("Tests"); }
    void resetWindow() override {}
    void showToolWindow() override {}
    bool launchTool() override;
    bool isToolWindowShown() override { return false; }
    void signalAddWidgetToWorkspace(QWidget *pWidget) override { addWidgetToWorkspace(pWidget); }
    void updateValidity(QAction *action, bool enabled, bool visible) override;
    QString getBaseModuleName() override;
    bool isBaseModuleAvailable() override;
    bool defaultVisibilityForPluggin() override;
    bool hasPreferenceWidget() override { return true; }
    QWidget *getPreferenceWidget() override;
    void onSignalDatasetChanged(CVXSDataset *) override {}
    void onSignalSequenceChanged(CVXSSequenceDataset *) override {}
    void onSignalDatasetRemoved(CVXSDataset *) override {}
    void onSignalSequenceAdded(CVXSSequenceDataset *) override {}
    void onSignalSequenceRemoved(CVXSSequenceDataset *) override {}
    void onSignalROIModified(QString name) override { m_calls += QStringLiteral("modified ") + name; }
    void onSignalROIDeleted() override { m_calls += QStringLiteral("deleted"); }
    void onSignalupdateROIList() override { m_calls += QStringLiteral("list"); }
    void onAdvancedOptionChanged(bool on) override;
    void onSignalCopyToClipboard(QString strObjectName) override;
    void onSignalGetPrintPixmap(bool on) override;
    void onSignalUpdatePluginMenu(QString name) override { m_calls += QStringLiteral("menu ") + name; }

private:
    QStringList m_calls;
    int m_actionsAskedFor = 0;
};
