// SPDX-License-Identifier: MIT
#include "host/vxapi/model/import/ImportedImages.h"

#include "host/vxapi/model/import/ImageImport.h"
#include "host/vximage/ImageShape.h"

#include <QCoreApplication>
#include <QFile>
#include <utility>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImageImport)
};

ESTATUS statusOf(EILSTATUS status)
{
    switch (status) {
    case EIL_FILE_NOT_FOUND:
        return ESTATUS_FILE_NOT_FOUND;
    case EIL_FILE_NOT_READABLE:
        return ESTATUS_FILE_NOT_READABLE;
    case EIL_FILE_TOO_LARGE:
        return ESTATUS_IMAGE_TOO_LARGE;
    case EIL_NO_MEMORY:
        return ESTATUS_FAILURE;
    default:
        return ESTATUS_BAD_IMAGE;
    }
}

ESTATUS read(const QString &path, CILImage *image, QString *error)
{
    const EILSTATUS status = image->loadTIFF(QFile::encodeName(path).constData());
    if (status == EIL_SUCCESS)
        return ESTATUS_SUCCESS;
    *error = QString::fromStdString(CILImage::lastError());
    return statusOf(status);
}

QString sizeOf(const CILImage &image)
{
    return QStringLiteral("%1 x %2").arg(image.getWidth()).arg(image.getHeight());
}

/// "file: reason" of a companion that does not fit the luminescent image; empty when all fit.
QString misfit(const ImportFiles &files, const ImportedImages &images)
{
    const CILImage &luminescent = images.luminescent;
    const auto other = [&](const QString &path, const QString &what, const CILImage &image,
                           const QString &need) {
        return path + QStringLiteral(": ") +
               Text::tr("the %1 has %2 pixels, the luminescent image %3; %4")
                   .arg(what, sizeOf(image), sizeOf(luminescent), need);
    };
    const QString sameSize = Text::tr("they have to be the same");
    if (!images.dark.isEmpty() && !haveSameSize(images.dark, luminescent))
        return other(files.dark, Text::tr("dark image"), images.dark, sameSize);
    if (!images.excitation.isEmpty() && !haveSameSize(images.excitation, luminescent))
        return other(files.excitation, Text::tr("excitation reference"), images.excitation, sameSize);
    if (!images.flatField.isEmpty() && !haveSameAspectRatio(images.flatField, luminescent))
        return other(files.flatField, Text::tr("flat field"), images.flatField,
                     Text::tr("width and height have to be in the same proportion"));
    return QString();
}

} // namespace

ESTATUS readImages(const ImportFiles &files, ImportedImages *images, QString *error)
{
    if (files.luminescent.isEmpty()) {
        *error = Text::tr("luminescent image: no file is named");
        return ESTATUS_FILE_NOT_FOUND;
    }
    const std::pair<QString, CILImage *> all[] = {{files.luminescent, &images->luminescent},
                                                  {files.photograph, &images->photograph},
                                                  {files.dark, &images->dark},
                                                  {files.flatField, &images->flatField},
                                                  {files.excitation, &images->excitation}};
    for (const auto &[path, image] : all) {
        const ESTATUS status = path.isEmpty() ? ESTATUS_SUCCESS : read(path, image, error);
        if (status != ESTATUS_SUCCESS)
            return status;
    }
    *error = misfit(files, *images);
    return error->isEmpty() ? ESTATUS_SUCCESS : ESTATUS_BAD_IMAGE;
}

QString notImported(const QString &path)
{
    unsigned pages = 1;
    CILImage::countPages(QFile::encodeName(path).constData(), &pages);
    return pages > 1 ? Text::tr("%1 pages, only the first is imported").arg(pages) : QString();
}
