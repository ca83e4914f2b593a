// SPDX-License-Identifier: MIT
#include "app/datasets/LooseDatasets.h"

#include "app/datasets/DatasetSaving.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QDir>

LooseDatasets::LooseDatasets(CVXSWorkspace *workspace, QObject *parent)
    : OpenedItems(parent), m_workspace(workspace)
{
}

LooseDatasets::~LooseDatasets()
{
    closeAllUnasked();
}

void LooseDatasets::add(CVXSDataset *dataset)
{
    if (!contains(dataset)) {
        dataset->setParent(this);
        append(dataset);
    }
    watch(m_workspace->showDataset(dataset));
}

CVXSDataset *LooseDatasets::datasetOf(const CVXSChildWindow *window) const
{
    CVXSDataset *dataset = window ? window->getDataset() : nullptr;
    return contains(dataset) ? dataset : nullptr;
}

bool LooseDatasets::needsSaving(const CVXSDataset *dataset)
{
    return dataset->unsavedContent().any();
}

QString LooseDatasets::lossOf(CVXSDataset *dataset) const
{
    return saving::lossText(dataset->unsavedContent());
}

QString LooseDatasets::lineOf(CVXSDataset *dataset, const QString &loss) const
{
    return (dataset->getDatasetType() == EDATASET_RESULT ? tr("Result %1: %2") : tr("Dataset %1: %2"))
        .arg(dataset->getClickNumber(), loss);
}

bool LooseDatasets::save(CVXSDataset *dataset)
{
    return saving::saveDataset(m_workspace->window(), dataset);
}

bool LooseDatasets::askAbout(CVXSDataset *dataset, const QString &loss)
{
    m_workspace->showDataset(dataset); // so that the user sees what the question is about
    const QString what = (dataset->getDatasetType() == EDATASET_RESULT
                              ? tr("The result %1 has changes that are not saved: %2.")
                              : tr("The dataset %1 has changes that are not saved: %2."))
                             .arg(dataset->getClickNumber(), loss);
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
        return save(dataset);
    case SAVE_AS:
        return saving::saveDatasetElsewhere(m_workspace->window(), dataset);
    default:
        return answer == DISCARD;
    }
}

void LooseDatasets::takeLeave(CVXSDataset *dataset)
{
    // The window holds a plain pointer: it goes before the dataset does.
    destroyWindow(CVXSImageWindow::getImageWindow(dataset));
    Q_EMIT aboutToBeRemoved(dataset);
}
