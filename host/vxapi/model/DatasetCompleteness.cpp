// SPDX-License-Identifier: MIT
#include "host/vxapi/model/DatasetCompleteness.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxapi/model/DatasetImages.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

using namespace clickinfo;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Dataset)
};

ESTATUS incomplete(const QString &file, const QString &reason, QString *error)
{
    *error = file + QStringLiteral(": ") + reason;
    return ESTATUS_NOT_COMPLETE;
}

/// Reads a record without a word to the log.
ESTATUS readRecord(const QString &path, CPLClickInfo *info, QString *error)
{
    // A pipe of that name would keep the reader waiting for ever.
    if (!QFileInfo(path).isFile())
        return incomplete(path, Text::tr("the file is missing, the dataset is not complete"), error);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return incomplete(path, file.errorString(), error);
    if (file.size() > CPLClickInfo::MAX_FILE_BYTES)
        return incomplete(path, Text::tr("the file is too large to be a record of a dataset"), error);
    QString reason;
    if (info->fromText(file.readAll(), &reason) != ESTATUS_SUCCESS)
        return incomplete(path, reason, error);
    return ESTATUS_SUCCESS;
}

} // namespace

ESTATUS datasetfiles::checkFiles(const QString &folder, FolderContent *content, QString *error)
{
    CPLClickInfo info;
    CPLClickInfo analyzed;
    ESTATUS status = readRecord(folder + FILE_CLICK_INFO, &info, error);
    if (status == ESTATUS_SUCCESS)
        status = readRecord(folder + FILE_ANALYZED_CLICK_INFO, &analyzed, error);
    if (status != ESTATUS_SUCCESS)
        return status;

    DatasetImages images;
    QStringList refused;
    images.scan(info, folder, &refused);
    if (!refused.isEmpty())
        return incomplete(folder + FILE_CLICK_INFO,
                          refused.first() + Text::tr("; the dataset is not complete"), error);
    for (const ImageKind &kind : DatasetImages::kinds()) {
        if (images.isPresent(kind.type) &&
            CILImage::checkTIFF(QFile::encodeName(folder + images.fileName(kind.type)).constData()) !=
                EIL_SUCCESS) {
            *error = QString::fromStdString(CILImage::lastError());
            return ESTATUS_NOT_COMPLETE;
        }
    }
    if (!content)
        return ESTATUS_SUCCESS;
    if (const CPLSection *section = info[SECTION_CLICK_NUMBER])
        section->getSectionName(&content->clickNumber, false);
    if (content->clickNumber.isNull())
        content->clickNumber = folderName(folder);
    content->isResult = isMathResult(info);
    return ESTATUS_SUCCESS;
}

ESTATUS CVXSDataset::checkComplete(QString *error) const
{
    QString reason;
    ESTATUS status = ESTATUS_NOT_COMPLETE;
    if (d->folder.isEmpty())
        reason = tr("%1: the dataset lies in no folder").arg(d->clickNumber);
    else
        status = datasetfiles::checkFiles(d->folder, nullptr, &reason);
    for (const ImageKind &kind : DatasetImages::kinds()) {
        if (status == ESTATUS_SUCCESS && d->images.isPresent(kind.type) && !d->coreImage(kind.type)) {
            status = ESTATUS_NOT_COMPLETE;
            reason = d->images.error(kind.type);
        }
    }
    if (status == ESTATUS_SUCCESS)
        return status;
    d->lastError = reason;
    if (error)
        *error = reason;
    return status;
}
