// SPDX-License-Identifier: MIT
#include "app/DatasetLoader.h"

#include "host/vxapi/model/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXSLog.h"

#include <QDir>
#include <QFileInfo>

#include <memory>

namespace {

struct SImageSection
{
    tag_eimagetype type;
    const char *section;
};

/// The sections that call for an image file.
const SImageSection IMAGE_SECTIONS[] = {
    {EIMAGE_PHOTOGRAPH, clickinfo::SECTION_PHOTOGRAPH},
    {EIMAGE_LUMINESCENT, clickinfo::SECTION_LUMINESCENT},
    {EIMAGE_XRAY, clickinfo::SECTION_XRAY},
    {EIMAGE_FLATFIELD, clickinfo::SECTION_FLATFIELD},
    {EIMAGE_BACKGROUND, clickinfo::SECTION_BACKGROUND},
    {EIMAGE_EXCITATION, clickinfo::SECTION_EXCITATION},
};

ESTATUS fail(ESTATUS status, const QString &reason)
{
    vxLog(3, DatasetLoader::tr("The dataset could not be loaded. %1").arg(reason), QString(), int(status));
    return status;
}

QString canonicalFolder(const CVXSDataset *dataset)
{
    const QString folder = dataset->getFolderPath();
    return folder.isEmpty() ? QString() : QDir(folder).canonicalPath();
}

} // namespace

DatasetLoader::DatasetLoader(CVXSWorkspace *workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace)
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

ESTATUS DatasetLoader::load(const QString &path)
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

    if (CVXSDataset *known = CVXSDataset::getDataset(dataset->getClickNumber())) {
        if (canonicalFolder(known) != folder)
            return fail(ESTATUS_FAILURE, tr("%1: the click number %2 is open already, from %3")
                                             .arg(folder, dataset->getClickNumber(), known->getFolderPath()));
        m_workspace->showDataset(known);
        return ESTATUS_SUCCESS;
    }
    status = loadNew(dataset.get());
    if (status == ESTATUS_SUCCESS)
        dataset.release()->setParent(this);
    return status;
}

ESTATUS DatasetLoader::loadNew(CVXSDataset *dataset)
{
    // Written last: where it is missing, somebody's writing did not come to its end.
    const QString last = dataset->getFolderPath() + QLatin1String(clickinfo::FILE_ANALYZED_CLICK_INFO);
    if (!QFileInfo::exists(last))
        return fail(ESTATUS_NOT_COMPLETE,
                    tr("%1: the file is missing, the dataset is not complete").arg(last));
    for (const SImageSection &image : IMAGE_SECTIONS) {
        const CPLSection *section = (*dataset->getClickInfo())[QString::fromLatin1(image.section)];
        if (!section)
            continue;
        if (!dataset->getImageList()->isPresent(image.type, false)) {
            QString file;
            section->getSectionName(&file, false);
            return fail(ESTATUS_NOT_COMPLETE,
                        tr("%1%2: the file of the \"%3\" is missing, the dataset is not complete")
                            .arg(dataset->getFolderPath(), file, QString::fromLatin1(image.section)));
        }
        if (!dataset->getCoreImage(image.type))
            return fail(ESTATUS_NOT_COMPLETE, dataset->lastError());
    }
    if (!dataset->registerDataset())
        return fail(ESTATUS_FAILURE, tr("%1: its click number is taken").arg(dataset->getFolderPath()));
    m_workspace->showDataset(dataset);
    return ESTATUS_SUCCESS;
}
