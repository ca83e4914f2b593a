// SPDX-License-Identifier: MIT
#include "tests/app/RecordingTool.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"

#include <QAction>
#include <QIcon>

namespace {

QString nameOf(const CVXSDataset *dataset)
{
    return dataset ? dataset->getClickNumber() : QStringLiteral("none");
}

} // namespace

RecordingTool::~RecordingTool()
{
    if (m_window)
        delete m_window->parentWidget();
}

QAction *RecordingTool::getAction()
{
    if (!m_pAction)
        m_pAction = new QAction(QStringLiteral("Recorder"), this);
    return m_pAction;
}

QIcon RecordingTool::getIcon()
{
    return QIcon();
}

void RecordingTool::resetWindow()
{
    m_calls.append(QStringLiteral("reset"));
    m_window = nullptr;
    m_bToolWindowShown = false;
}

void RecordingTool::showToolWindow()
{
    m_calls.append(QStringLiteral("show window"));
    m_window->show();
    m_window->parentWidget()->show();
}

bool RecordingTool::launchTool()
{
    m_calls.append(QStringLiteral("launch"));
    if (m_launchFails)
        return false;
    if (!m_window) {
        m_window = new QWidget;
        m_window->setObjectName(QStringLiteral("Recorder Window"));
        m_window->setWindowTitle(QStringLiteral("Recorder Window"));
        signalAddWidgetToWorkspace(m_window);
    }
    m_bToolWindowShown = true;
    return true;
}

void RecordingTool::updateValidity(QAction *action, bool enabled, bool visible)
{
    updateToolPluginValidity(action, enabled, visible);
}

void RecordingTool::onSignalDatasetChanged(CVXSDataset *dataset)
{
    m_calls.append(QStringLiteral("dataset ") + nameOf(dataset));
    updateValidity(getAction(), dataset, dataset);
}

void RecordingTool::onSignalSequenceChanged(CVXSSequenceDataset *sequence)
{
    m_calls.append(QStringLiteral("sequence ") + sequence->getSequenceID());
    updateValidity(getAction(), true, true);
}

void RecordingTool::onSignalDatasetRemoved(CVXSDataset *dataset)
{
    m_calls.append(QStringLiteral("dataset removed ") + nameOf(dataset));
}

void RecordingTool::onSignalSequenceAdded(CVXSSequenceDataset *sequence)
{
    m_calls.append(QStringLiteral("added ") + sequence->getSequenceID());
}

void RecordingTool::onSignalSequenceRemoved(CVXSSequenceDataset *sequence)
{
    m_calls.append(QStringLiteral("removed ") + sequence->getSequenceID());
    if (m_window && property("hidesOnRemoval").toBool()) {
        m_window->parentWidget()->hide();
        m_bToolWindowShown = false;
    }
}

void RecordingTool::onSignalCopyToClipboard(QString strObjectName)
{
    m_calls.append(QStringLiteral("copy ") + strObjectName);
}

void RecordingTool::setLoad(const QString &path)
{
    m_load = path;
    ESTATUS status = ESTATUS_FAILURE;
    Q_EMIT signalLoadFile(path, true, &status, nullptr);
    m_loadStatus = int(status);
}
