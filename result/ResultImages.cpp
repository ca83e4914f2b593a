// SPDX-License-Identifier: MIT
#include "result/ResultImages.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/writeWhole.h"
#include "math/ToolLog.h"
#include "result/ResultWriter.h"

#include <QFileInfo>
#include <QSaveFile>

using namespace clickinfo;
using resultwriter::Operand;
using resultwriter::Request;

namespace {

void copyFrom(const Operand &operand, tag_eimagetype type, const QString &to)
{
    if (!operand.clickInfoPath.isEmpty())
        resultimages::copyFile(resultimages::fileOf(operand, type), to);
}

QVector<imagemath::FileRecord> filesOf(const Operand &operand)
{
    return operand.dataset
               ? imagemath::imageFilesOf(*operand.dataset, resultimages::folderOf(operand.clickInfoPath))
               : QVector<imagemath::FileRecord>();
}

imagemath::PhotographRecord photographOf(const Request &request)
{
    const Operand *photographed = request.photographed();
    if (!photographed)
        return {};
    const QString path = resultimages::fileOf(*photographed, EIMAGE_PHOTOGRAPH);
    const auto &operand =
        request.photograph == resultwriter::PhotographSource::A ? request.record.a : request.record.b;
    return {operand.clickNumber, {QFileInfo(path).fileName(), imagemath::sha256OfFile(path)}};
}

/// The record with the files as they are now; empty when nothing was computed.
std::string description(const Request &request)
{
    if (request.record.isEmpty())
        return std::string();
    imagemath::ResultRecord record = request.record;
    record.version = resultclickinfo::versionText();
    record.a.files = filesOf(request.a);
    record.b.files = filesOf(request.b);
    record.photograph = photographOf(request);
    if (!record.maskPhotograph.clickNumber.isEmpty() && request.b.dataset) {
        const QString name = request.b.dataset->getImageFileName(EIMAGE_PHOTOGRAPH);
        for (const imagemath::FileRecord &file : qAsConst(record.b.files)) {
            if (file.name == name)
                record.maskPhotograph.file = file;
        }
    }
    return imagemath::toJson(record).toStdString();
}

} // namespace

QString resultimages::folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString resultimages::fileOf(const Operand &operand, tag_eimagetype type)
{
    const QString folder = folderOf(operand.clickInfoPath);
    const QString usual = folder + (type == EIMAGE_PHOTOGRAPH ? FILE_PHOTOGRAPH : FILE_LUMINESCENT);
    if (!operand.dataset || QFileInfo::exists(usual))
        return usual;
    return folder + operand.dataset->getImageFileName(type);
}

void resultimages::write(const Request &request, const QString &folder)
{
    copyFrom(request.a, EIMAGE_LUMINESCENT, folder + FILE_LUMINESCENT_A);
    copyFrom(request.b, EIMAGE_LUMINESCENT, folder + FILE_LUMINESCENT_B);

    CILImage image = request.image;
    image.setDescription(description(request));
    const QString path = folder + FILE_LUMINESCENT;
    if (image.saveAsTIFF(path.toLatin1().constData()) != 0)
        imagemath::logLine(QString::fromStdString(CILImage::lastError()));

    if (const Operand *photographed = request.photographed())
        copyFrom(*photographed, EIMAGE_PHOTOGRAPH, folder + FILE_PHOTOGRAPH);
}

void resultimages::copyFile(const QString &from, const QString &to)
{
    if (!QFileInfo(from).isFile())
        return;
    QFile source(from);
    QSaveFile target(to);
    const bool isRead = source.open(QIODevice::ReadOnly);
    const QByteArray bytes = isRead ? source.readAll() : QByteArray();
    if (!isRead || source.error() != QFileDevice::NoError) {
        vxLog(ELOG_FAILURE, from + QStringLiteral(": ") + source.errorString());
        return;
    }
    if (!target.open(QIODevice::WriteOnly) || !writeWhole(target, bytes) || !target.commit())
        vxLog(ELOG_FAILURE, to + QStringLiteral(": ") + target.errorString());
}
