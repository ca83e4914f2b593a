// SPDX-License-Identifier: MIT
#include "app/datasets/SequenceManager.h"

#include "app/datasets/DatasetSaving.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QApplication>

SequenceManager::SequenceManager(CVXSWorkspace *workspace, QObject *parent)
    : OpenedItems(parent), m_workspace(workspace)
{
}

SequenceManager::~SequenceManager()
{
    closeAllUnasked();
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
    if (!contains(sequence)) {
        append(sequence);
        Q_EMIT added(sequence);
        vxLog(ELOG_INFORMATION, tr("Sequence opened: %1").arg(sequence->getSequenceID()),
              sequence->getSequenceInfoPath());
    }
    watch(m_workspace->showSequence(sequence));
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

void SequenceManager::takeLeave(CVXSSequenceDataset *sequence)
{
    // The tools and the windows hold plain pointers: they go before the sequence does.
    Q_EMIT aboutToBeRemoved(sequence);
    const QList<CVXSDataset *> datasets = sequence->getDatasets();
    for (CVXSDataset *dataset : datasets)
        destroyWindow(CVXSImageWindow::getImageWindow(dataset));
    destroyWindow(CVXSSequenceWindow::getSequenceWindow(sequence));
}

CVXSSequenceDataset *SequenceManager::itemOf(const CVXSChildWindow *window) const
{
    CVXSSequenceDataset *sequence = sequenceOf(window);
    return contains(sequence) ? sequence : nullptr;
}
