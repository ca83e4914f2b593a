// SPDX-License-Identifier: MIT
#include "app/datasets/SequenceDrop.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

QStringList droppedSequences(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        const QFileInfo info(url.toLocalFile());
        if (info.isDir() || (info.isFile() && (info.fileName() == clickinfo::FILE_SEQUENCE_INFO ||
                                               info.fileName() == clickinfo::FILE_CLICK_INFO)))
            paths.append(info.absoluteFilePath());
    }
    return paths;
}
