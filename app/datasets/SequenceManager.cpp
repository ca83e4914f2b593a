// SPDX-License-Identifier: MIT
#include "app/datasets/SequenceManager.h"

#include "app/datasets/DatasetSaving.h"
#include "app/PluginManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>

namespace {

void destroyWindow(CVXSChildWindow *window)
{
    if (!window)
        return;
    if (CVXSMdiSubWindow *subWindow = window->subWindow())
        delete subWindow;
    else
        delete window;
}

} // namespace

SequenceManager::SequenceManager(CVXSWorkspace *workspace, PluginManager *plugins, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_plugins(plugins)
{
}

SequenceManager::~SequenceManager()
{
    while (!m_sequences.isEmpty())
        remove(m_sequences.last());
}

CVXSSequenceDataset *SequenceManager::sequenceOf(const CVXSChildWindow *window)
{
    if (!window)
        return nullptr;
    if (window->isSequenceWindow())
        return window->getSequenceDataset();
    const CVXSDataset *dataset = window->getDataset();
    return dataset ? dataset->getSequenceDataset() : nullptr;
}

CVXSSequenceDataset *SequenceManager::open(const QString &path)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    CVXSSequenceDataset *sequence = CVXSSequenceDataset::open(path, &status, &error);
    QApplication::restoreOverrideCursor();
    if (!sequence) {
        vxLog(ELOG_FAILURE, tr("The sequence could not be opened. %1").arg(error), QString(), int(status));
        return nullptr;
    }
    add(sequence);
    Q_EMIT opened(sequence->getSequenceInfoPath());
    return sequence;
}

void SequenceManager::add(CVXSSequenceDataset *sequence)
{
    if (!m_sequences.contains(sequence)) {
        m_sequences.append(sequence);
        // Before its window is shown: what the tools make of the new active window has the last word.
        m_plugins->sequenceAdded(sequence);
        vxLog(ELOG_INFORMATION, tr("Sequence opened: %1").arg(sequence->getSequenceID()),
              sequence->getSequenceInfoPath());
    }
    CVXSSequenceWindow *window = m_workspace->showSequence(sequence);
    if (CVXSMdiSubWindow *subWindow = window->subWindow())
        subWindow->installEventFilter(this);
}

bool SequenceManager::close(CVXSSequenceDataset *sequence)
{
    if (!isReadyToClose(sequence))
        return false;
    remove(sequence);
    return true;
}

bool SequenceManager::closeAll()
{
    // All are asked for before the first goes, so that "Cancel" leaves everything as it was.
    const QList<CVXSSequenceDataset *> all = m_sequences;
    for (CVXSSequenceDataset *sequence : all) {
        if (!isReadyToClose(sequence))
            return false;
    }
    for (CVXSSequenceDataset *sequence : all)
        remove(sequence);
    return true;
}

bool SequenceManager::isReadyToClose(CVXSSequenceDataset *sequence)
{
    if (!sequence->isModified())
        return true;
    enum { SAVE, DISCARD, CANCEL };
    const int answer = CVXSMessageBox::warning(
        m_workspace->window(), CVXUtilityFns::getAppName(),
        tr("The sequence %1 has changes that are not saved.\nSave it before it is closed?")
            .arg(sequence->getSequenceID()),
        tr("&Save"), tr("&Discard"), tr("Cancel"), SAVE, CANCEL);
    if (answer == DISCARD)
        return true;
    return answer == SAVE && save(sequence);
}

bool SequenceManager::save(CVXSSequenceDataset *sequence)
{
    const bool isFirst = sequence->getSequenceInfoPath().isEmpty();
    if (!saving::saveSequence(m_workspace->window(), sequence))
        return false;
    if (isFirst)
        Q_EMIT opened(sequence->getSequenceInfoPath()); // it can be opened again from here on
    return true;
}

void SequenceManager::remove(CVXSSequenceDataset *sequence)
{
    m_sequences.removeOne(sequence);
    // The tools and the windows hold plain pointers: they go before the sequence does.
    m_plugins->sequenceRemoved(sequence);
    const QList<CVXSDataset *> datasets = sequence->getDatasets();
    for (CVXSDataset *dataset : datasets)
        destroyWindow(CVXSImageWindow::getImageWindow(dataset));
    destroyWindow(CVXSSequenceWindow::getSequenceWindow(sequence));
    delete sequence;
}

bool SequenceManager::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    auto *subWindow = qobject_cast<QMdiSubWindow *>(watched);
    auto *window = subWindow ? qobject_cast<CVXSChildWindow *>(subWindow->widget()) : nullptr;
    CVXSSequenceDataset *sequence = sequenceOf(window);
    if (!sequence || !m_sequences.contains(sequence))
        return QObject::eventFilter(watched, event);
    // Later, because a window cannot be deleted while it is being closed.
    event->ignore();
    QMetaObject::invokeMethod(
        this,
        [this, guarded = QPointer<CVXSSequenceDataset>(sequence)] {
            if (guarded && m_sequences.contains(guarded))
                close(guarded);
        },
        Qt::QueuedConnection);
    return true;
}
