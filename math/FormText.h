// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

namespace imagemath {

/// A text that the user reads, translated with the context of the form's own texts.
inline QString formText(const char *text)
{
    return QCoreApplication::translate("CVXSImageMathWnd", text);
}

} // namespace imagemath
