// SPDX-License-Identifier: MIT
#include "host/vxutils/PlainToolTip.h"

QString plainToolTip(const QString &text)
{
    if (text.isEmpty())
        return QString();
    return QStringLiteral("<qt>%1</qt>")
        .arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}
