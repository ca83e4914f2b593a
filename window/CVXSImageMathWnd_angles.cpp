// SPDX-License-Identifier: MIT
#include "display/ImagingAngles.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

#include <QFileInfo>
#include <QMessageBox>

namespace {

/// A damaged file has told so itself when it was read.
void tellWhyUnusable(const CPLClickInfo &info, const QString &path)
{
    const QString section = clickinfo::SECTION_LUMINESCENT;
    if (!QFileInfo::exists(path))
        imagemath::logLine(info.lastError());
    else if (!info[section] && info.lastError().isEmpty())
        imagemath::logLine(path + QStringLiteral(": it has no section \"%1\"").arg(section));
}

} // namespace

ESTATUS CVXSImageMathWnd::checkImagingAngles(const QString &pathA, const QString &pathB)
{
    CPLClickInfo infoA;
    CPLClickInfo infoB;
    infoA.loadClickInfo(pathA, false);
    infoB.loadClickInfo(pathB, false);
    const auto angles =
        imagingangles::compare(infoA[clickinfo::SECTION_LUMINESCENT], infoB[clickinfo::SECTION_LUMINESCENT]);
    if (angles == imagingangles::Comparison::Unknown) {
        tellWhyUnusable(infoA, pathA);
        tellWhyUnusable(infoB, pathB);
        return ESTATUS_IMAGING_ANGLES;
    }
    if (angles == imagingangles::Comparison::Same)
        return ESTATUS_SUCCESS;
    const int answer = CVXSMessageBox::question(
        this, CVXUtilityFns::getAppName(),
        tr("The two datasets have different imaging angles. Do you want to continue?"), QMessageBox::Yes,
        QMessageBox::No, QMessageBox::NoButton);
    return answer == QMessageBox::No ? ESTATUS_IMAGING_ANGLES : ESTATUS_SUCCESS;
}
