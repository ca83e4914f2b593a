// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXSErrorHandler.h"

#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

void CVXSErrorHandler::errorMessage(QWidget *parent, tag_estatus status, const QString &text)
{
    const QString sentence = statusText(status);
    vxLog(ELOG_FAILURE, sentence, text, int(status));
    CVXSMessageBox::warning(parent, CVXUtilityFns::getAppName(),
                            text.isEmpty() ? sentence : sentence + QLatin1Char('\n') + text, QString(),
                            QString(), QString(), 0, 0);
}
