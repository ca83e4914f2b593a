// SPDX-License-Identifier: MIT
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
    const QString luminescent = clickinfo::SECTION_LUMINESCENT;
    const CPLSection *sectionA = infoA[luminescent];
    const CPLSection *sectionB = infoB[luminescent];
    if (!sectionA || !sectionB) {
        tellWhyUnusable(infoA, pathA);
        tellWhyUnusable(infoB, pathB);
        return ESTATUS_IMAGING_ANGLES;
    }

    QString angleA;
    QString angleB;
    const QString key = clickinfo::KEY_IMAGING_ANGLE;
    const ESTATUS statusA = sectionA->getValue(key, &angleA);
    const ESTATUS statusB = sectionB->getValue(key, &angleB);
    if (statusA != ESTATUS_SUCCESS && statusB != ESTATUS_SUCCESS)
        return ESTATUS_SUCCESS;
    // An angle that only one of them records differs from none.
    if (angleA.toLower() == angleB.toLower())
        return ESTATUS_SUCCESS;
    const int answer = CVXSMessageBox::question(
        this, CVXUtilityFns::getAppName(),
        tr("The two datasets have different imaging angles. Do you want to continue?"), QMessageBox::Yes,
        QMessageBox::No, QMessageBox::NoButton);
    return answer == QMessageBox::No ? ESTATUS_IMAGING_ANGLES : ESTATUS_SUCCESS;
}
