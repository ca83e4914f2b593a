// SPDX-License-Identifier: MIT
#include "host/vxapi/plugin/CVXToolPluginBase.h"

#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXSLog.h"

#include <QAction>
#include <QWidget>

CVXToolPluginBase::CVXToolPluginBase(QObject *parent) : QObject(parent) {}

CVXToolPluginBase::~CVXToolPluginBase() = default;

QString CVXToolPluginBase::getBaseModuleName()
{
    return QString();
}

bool CVXToolPluginBase::isBaseModuleAvailable()
{
    return true;
}

bool CVXToolPluginBase::defaultVisibilityForPluggin()
{
    return true;
}

bool CVXToolPluginBase::hasPreferenceWidget()
{
    return false;
}

QWidget *CVXToolPluginBase::getPreferenceWidget()
{
    return nullptr;
}

void CVXToolPluginBase::onAdvancedOptionChanged(bool) {}

void CVXToolPluginBase::onSignalGetPrintPixmap(bool) {}

void CVXToolPluginBase::onSignalUpdatePluginMenu(QString) {}

void CVXToolPluginBase::addWidgetToWorkspace(QWidget *widget)
{
    if (!widget)
        return;
    if (CVXSWorkspace *workspace = CVXSWorkspace::instance())
        workspace->addToolWidget(widget);
    else
        vxLog(ELOG_FAILURE, QStringLiteral("There is no workspace that could show the tool's window."),
              widget->windowTitle());
}

void CVXToolPluginBase::updateToolPluginValidity(QAction *action, bool enabled, bool visible)
{
    if (!action)
        return;
    action->setEnabled(enabled);
    action->setVisible(visible);
}
