// SPDX-License-Identifier: MIT
#include "app/datasets/LooseDatasets.h"

#include "app/datasets/DatasetSaving.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QDir>
#include <QEvent>
#include <QPointer>

LooseDatasets::LooseDatasets(CVXSWorkspace *workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace)
{
}

LooseDatasets::~LooseDatasets()
{
    closeAllUnasked();
}

void LooseDatasets::add(CVXSDataset *dataset)
{
    if (!m_datasets.contains(dataset)) {
        dataset->setParent(this);
        m_datasets.append(dataset);
    }
    if (CVXSMdiSubWindow *subWindow = m_workspace->showDataset(dataset)->subWindow())
        subWindow->installEventFilter(this);
}

CVXSDataset *LooseDatasets::datasetOf(const CVXSChildWindow *window) const
{
    CVXSDataset *dataset = window ? window->getDataset() : nullptr;
    return m_datasets.contains(dataset) ? dataset : nullptr;
}

bool LooseDatasets::needsSaving(const CVXSDataset *dataset)
{
    return dataset->isModified() || dataset->isImageMathToBeSaved() ||
           dataset->getDatasetType() == EDATASET_IN_MEMORY;
}

bool LooseDatasets::close(CVXSDataset *dataset)
{
    if (!isReadyToClose(dataset))
        return false;
    remove(dataset);
    return true;
}

bool LooseDatasets::areReadyToClose()
{
    const QList<CVXSDataset *> all = m_datasets;
    for (CVXSDataset *dataset : all) {
        if (!isReadyToClose(dataset))
            return false;
    }
    return true;
}

void LooseDatasets::closeAllUnasked()
{
    while (!m_datasets.isEmpty())
        remove(m_datasets.last());
}

bool LooseDatasets::isReadyToClose(CVXSDataset *dataset)
{
    if (!needsSaving(dataset))
        return true;
    m_workspace->showDataset(dataset); // so that the person sees what the question is about
    const QString what =
        dataset->isImageMathToBeSaved()
            ? tr("You have not saved the result %1 yet.").arg(dataset->getClickNumber())
            : tr("The dataset %1 has changes that are not saved.").arg(dataset->getClickNumber());
    const QString folder = QDir::toNativeSeparators(dataset->getFolderPath());
    const QString where =
        folder.isEmpty()
            ? QString()
            : tr("\n\nIts folder is\n%1\n\nSave writes your changes there. Discard drops them: the "
                 "files stay as they are, and can be opened again.")
                  .arg(folder);
    enum { SAVE, SAVE_AS, DISCARD, CANCEL };
    const int answer = CVXSMessageBox::warning(
        m_workspace->window(), CVXUtilityFns::getAppName(), what + where,
        QStringList{tr("&Save"), tr("Save &As..."), tr("&Discard"), tr("Cancel")}, SAVE, CANCEL);
    switch (answer) {
    case SAVE:
        return saving::saveDataset(m_workspace->window(), dataset);
    case SAVE_AS:
        return saving::saveDatasetElsewhere(m_workspace->window(), dataset);
    default:
        return answer == DISCARD;
    }
}

void LooseDatasets::remove(CVXSDataset *dataset)
{
    m_datasets.removeOne(dataset);
    // The window holds a plain pointer: it goes before the dataset does.
    if (CVXSImageWindow *window = CVXSImageWindow::getImageWindow(dataset)) {
        if (CVXSMdiSubWindow *subWindow = window->subWindow())
            delete subWindow;
        else
            delete window;
    }
    Q_EMIT aboutToBeRemoved(dataset);
    delete dataset;
}

bool LooseDatasets::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    auto *subWindow = qobject_cast<QMdiSubWindow *>(watched);
    CVXSDataset *dataset =
        datasetOf(subWindow ? qobject_cast<CVXSChildWindow *>(subWindow->widget()) : nullptr);
    if (!dataset)
        return QObject::eventFilter(watched, event);
    // Later, because a window cannot be deleted while it is being closed.
    event->ignore();
    QMetaObject::invokeMethod(
        this,
        [this, guarded = QPointer<CVXSDataset>(dataset)] {
            if (guarded && m_datasets.contains(guarded))
                close(guarded);
        },
        Qt::QueuedConnection);
    return true;
}
