// SPDX-License-Identifier: MIT
#include "host/vxapi/model/ClickInfoKeys.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

#include <QMessageBox>

namespace {

/// The section with the imaging angle; null, and told in the log, when the file or the section is not there.
const CPLSection *luminescentSection(CPLClickInfo &info, const QString &path)
{
    const QString key = QString::fromLatin1(clickinfo::SECTION_LUMINESCENT);
    const ESTATUS status = info.loadClickInfo(path, false);
    const CPLSection *section = info[key];
    if (!section)
        imagemath::logLine(status != ESTATUS_SUCCESS
                               ? info.lastError()
                               : QStringLiteral("%1: there is no section \"%2\"").arg(path, key));
    return section;
}

} // namespace

ESTATUS CVXSImageMathWnd::checkImagingAngles(const QString &pathA, const QString &pathB)
{
    CPLClickInfo infoA;
    CPLClickInfo infoB;
    const CPLSection *sectionA = luminescentSection(infoA, pathA);
    const CPLSection *sectionB = luminescentSection(infoB, pathB);
    if (!sectionA || !sectionB)
        return ESTATUS_IMAGING_ANGLES;

    QString angleA;
    QString angleB;
    const QString key = QString::fromLatin1(clickinfo::KEY_IMAGING_ANGLE);
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
