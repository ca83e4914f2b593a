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

#include <QTimer>

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
    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    CVXSSequenceDataset *sequence = CVXSSequenceDataset::beginOpening(path, &status, &error);
    if (!sequence) {
        vxLog(ELOG_FAILURE, tr("The sequence could not be opened. %1").arg(error), QString(), int(status));
        return nullptr;
    }
    add(sequence);
    Q_EMIT opened(sequence->getSequenceInfoPath());
    return sequence;
}

CVXSSequenceDataset *SequenceManager::openCompletely(const QString &path)
{
    CVXSSequenceDataset *sequence = open(path);
    while (sequence && sequence->loadNext()) {
    }
    return sequence;
}

void SequenceManager::add(CVXSSequenceDataset *sequence)
{
    if (!contains(sequence)) {
        append(sequence);
        connect(sequence, &CVXSSequenceDataset::saved, this, &SequenceManager::opened);
        Q_EMIT added(sequence);
        const auto tell = [sequence] {
            vxLog(ELOG_INFORMATION, tr("Sequence opened: %1").arg(sequence->getSequenceID()),
                  sequence->getSequenceInfoPath());
        };
        if (sequence->isLoading()) {
            connect(sequence, &CVXSSequenceDataset::loaded, this, tell);
            loadNext(sequence);
        } else {
            tell();
        }
    }
    watch(m_workspace->showSequence(sequence));
}

// One dataset a turn of the event loop: the window answers meanwhile.
void SequenceManager::loadNext(CVXSSequenceDataset *sequence)
{
    QTimer::singleShot(0, sequence, [this, sequence] {
        if (sequence->loadNext())
            loadNext(sequence);
    });
}

QString SequenceManager::lossOf(CVXSSequenceDataset *sequence) const
{
    if (sequence->getSequenceInfoPath().isEmpty())
        return tr("all of it, for it was never saved");
    UnsavedContent unsaved;
    const QList<CVXSDataset *> datasets = sequence->getDatasets();
    for (const CVXSDataset *dataset : datasets)
        unsaved = unsaved + dataset->unsavedContent();
    const QString loss = saving::lossText(unsaved);
    if (!sequence->hasOwnChanges())
        return loss;
    const QString own = tr("its unit, its colors or its list of clicks");
    return loss.isEmpty() ? own : loss + QStringLiteral(", ") + own;
}

QString SequenceManager::lineOf(CVXSSequenceDataset *sequence, const QString &loss) const
{
    return tr("Sequence %1: %2").arg(sequence->getSequenceID(), loss);
}

bool SequenceManager::askAbout(CVXSSequenceDataset *sequence, const QString &loss)
{
    const bool hasPlace = !sequence->getSequenceInfoPath().isEmpty();
    enum { SAVE, SAVE_AS, DISCARD, CANCEL };
    const int answer = CVXSMessageBox::warning(
        m_workspace->window(), CVXUtilityFns::getAppName(),
        tr("The sequence %1 has changes that are not saved: %2.\nSave it before it is closed?")
            .arg(sequence->getSequenceID(), loss),
        QStringList{tr("&Save"), hasPlace ? tr("Save &As...") : QString(), tr("&Discard"), tr("Cancel")},
        SAVE, CANCEL);
    switch (answer) {
    case SAVE:
        return save(sequence);
    case SAVE_AS:
        return saveElsewhere(sequence);
    default:
        return answer == DISCARD;
    }
}

bool SequenceManager::save(CVXSSequenceDataset *sequence)
{
    return saving::saveSequence(m_workspace->window(), sequence);
}

bool SequenceManager::saveElsewhere(CVXSSequenceDataset *sequence)
{
    return saving::saveSequenceElsewhere(m_workspace->window(), sequence);
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
