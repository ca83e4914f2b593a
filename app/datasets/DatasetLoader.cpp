// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetLoader.h"

#include "app/datasets/LooseDatasets.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"

#include <QDir>
#include <QFileInfo>

#include <memory>

namespace {

ESTATUS fail(ESTATUS status, const QString &reason)
{
    vxLog(ELOG_FAILURE, DatasetLoader::tr("The dataset could not be loaded. %1").arg(reason), QString(),
          int(status));
    return status;
}

QString canonicalFolder(const CVXSDataset *dataset)
{
    const QString folder = dataset->getFolderPath();
    return folder.isEmpty() ? QString() : QDir(folder).canonicalPath();
}

} // namespace

DatasetLoader::DatasetLoader(CVXSWorkspace *workspace, LooseDatasets *loose, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_loose(loose)
{
}

void DatasetLoader::onLoadFile(const QString &path, bool flag, ESTATUS *status,
                               downloaded_save_data *downloadData)
{
    Q_UNUSED(flag)
    Q_UNUSED(downloadData)
    const ESTATUS outcome = load(path);
    if (status)
        *status = outcome;
}

ESTATUS DatasetLoader::load(const QString &path, CVXSDataset **loaded)
{
    CVXSDataset *dataset = nullptr;
    const ESTATUS status = open(path, &dataset);
    // What was loaded may have been made just now, and its name is taken from here on.
    CVXSDataset::registerStoredDatasets(CVXPreference::getProgramDataPath());
    if (loaded)
        *loaded = dataset;
    return status;
}

ESTATUS DatasetLoader::open(const QString &path, CVXSDataset **opened)
{
    const QFileInfo info(path);
    const QString folder = QDir(info.isDir() ? path : info.absolutePath()).canonicalPath();
    if (folder.isEmpty() || !info.exists())
        return fail(ESTATUS_FILE_NOT_FOUND, tr("%1: there is no such file").arg(path));

    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder, &status, &error));
    if (!dataset)
        return fail(status == ESTATUS_SUCCESS ? ESTATUS_FAILURE : status, error);

    // One that is just coming in with its sequence belongs there.
    const QList<CVXSSequenceDataset *> sequences = CVXSSequenceDataset::openSequences();
    for (CVXSSequenceDataset *sequence : sequences) {
        const bool isItsClick = sequence->getClickNumbers().contains(dataset->getClickNumber());
        while (isItsClick && sequence->loadNext()) {
        }
    }
    if (CVXSDataset *known = CVXSDataset::getOpenDataset(dataset->getClickNumber())) {
        if (canonicalFolder(known) != folder)
            return fail(ESTATUS_FAILURE, tr("%1: the click number %2 is open already, from %3")
                                             .arg(folder, dataset->getClickNumber(), known->getFolderPath()));
        m_workspace->showDataset(known);
        *opened = known;
        return ESTATUS_SUCCESS;
    }
    status = dataset->checkComplete(&error);
    if (status != ESTATUS_SUCCESS)
        return fail(status, error);
    if (!dataset->registerDataset())
        return fail(ESTATUS_FAILURE, tr("%1: its click number is taken").arg(folder));
    *opened = dataset.release();
    m_loose->add(*opened);
    vxLog(ELOG_INFORMATION, tr("Dataset opened: %1").arg((*opened)->getClickNumber()),
          (*opened)->getFolderPath());
    return ESTATUS_SUCCESS;
}
