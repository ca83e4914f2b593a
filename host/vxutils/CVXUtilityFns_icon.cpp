// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"

#include <QIcon>

QIcon CVXUtilityFns::appIcon()
{
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/vexa/vexa-%1.png").arg(size), QSize(size, size));
    return icon;
}
