// SPDX-License-Identifier: MIT
#include "app/import/ImageDrop.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

QStringList droppedImages(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        const QFileInfo info(url.toLocalFile());
        const QString suffix = info.suffix().toLower();
        if (info.isFile() && (suffix == QLatin1String("tif") || suffix == QLatin1String("tiff")))
            paths.append(info.absoluteFilePath());
    }
    return paths;
}
