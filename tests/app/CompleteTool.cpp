// SPDX-License-Identifier: MIT
#include "tests/app/CompleteTool.h"

#include <QAction>
#include <QIcon>
#include <QLabel>
#include <QPixmap>

int CompleteTool::getToolKind()
{
    return qEnvironmentVariableIntValue("VEXA_TEST_TOOL_KIND");
}

QAction *CompleteTool::getAction()
{
    ++m_actionsAskedFor;
    if (!m_pAction)
        m_pAction = new QAction(QStringLiteral("Complete"), this);
    return m_pAction;
}

QIcon CompleteTool::getIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

bool CompleteTool::launchTool()
{
    m_calls += QStringLiteral("launch");
    return true;
}

void CompleteTool::updateValidity(QAction *action, bool enabled, bool visible)
{
    updateToolPluginValidity(action, enabled, visible);
}

QString CompleteTool::getBaseModuleName()
{
    return qEnvironmentVariable("VEXA_TEST_TOOL_MODULE");
}

bool CompleteTool::isBaseModuleAvailable()
{
    return getBaseModuleName().isEmpty();
}

bool CompleteTool::defaultVisibilityForPluggin()
{
    return !qEnvironmentVariableIsSet("VEXA_TEST_TOOL_HIDDEN");
}

QWidget *CompleteTool::getPreferenceWidget()
{
    if (qEnvironmentVariableIsSet("VEXA_TEST_TOOL_NO_PAGE"))
        return nullptr;
    auto *page = new QLabel(QStringLiteral("settings of this tool"));
    page->setObjectName(QStringLiteral("CompletePage"));
    return page;
}

void CompleteTool::onAdvancedOptionChanged(bool on)
{
    m_calls += on ? QStringLiteral("advanced on") : QStringLiteral("advanced off");
}

void CompleteTool::onSignalCopyToClipboard(QString strObjectName)
{
    m_calls += QStringLiteral("copy ") + strObjectName;
}

void CompleteTool::onSignalGetPrintPixmap(bool on)
{
    m_calls += on ? QStringLiteral("printing") : QStringLiteral("printed");
}
