// SPDX-License-Identifier: MIT
#include "app/datasets/ResultSources.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxparser/CPLClickInfo.h"

#include <QFileInfo>
#include <QStringList>

using namespace clickinfo;

ResultSources ResultSources::of(const QString &folder)
{
    const QString file = folder + FILE_ANALYZED_CLICK_INFO;
    CPLClickInfo info;
    if (folder.isEmpty() || !QFileInfo(file).isFile() || info.loadClickInfo(file, false) != ESTATUS_SUCCESS)
        return {};
    return {sourceFileOf(info, SECTION_LUMINESCENT_A), sourceFileOf(info, SECTION_LUMINESCENT_B)};
}

QString ResultSources::text() const
{
    QStringList files = {a, b};
    files.removeAll(QString());
    return files.join(QStringLiteral(", "));
}
