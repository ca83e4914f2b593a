// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

class QWidget;

/// Reports failures to the user.
class VXUTILS_EXPORT CVXSErrorHandler
{
public:
    /// Shows a modal box with the status's own sentence and the extra text (may be empty), and writes both to
    /// the log (level 3) before. Returns when the user has answered.
    static void errorMessage(QWidget *parent, tag_estatus status, const QString &text);
};
