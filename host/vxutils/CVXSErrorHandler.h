// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

class QWidget;

/// Reports failures to the user.
class VXUTILS_EXPORT CVXSErrorHandler
{
public:
    /// Shows a modal box with the status's own sentence and the extra text, and writes both to the log (level
    /// 3).
    static void errorMessage(QWidget *parent, tag_estatus status, const QString &text);
};
