// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <QString>

class QWidget;

/// Modal message boxes: real QMessageBox windows that return after the user has answered.
///
/// The button-text forms return the index (0 to 2) of the pressed button; an empty text leaves that button
/// out, and with three empty texts there is one "OK". The standard-button forms return the standard button's
/// code (Yes 0x4000, No 0x10000, ...); 0 stands for no button.
class VXUTILS_EXPORT CVXSMessageBox
{
public:
    static int information(QWidget *parent, const QString &title, const QString &text,
                           const QString &button0Text, const QString &button1Text, const QString &button2Text,
                           int defaultButton, int escapeButton);
    static int warning(QWidget *parent, const QString &title, const QString &text, const QString &button0Text,
                       const QString &button1Text, const QString &button2Text, int defaultButton,
                       int escapeButton);
    static int warning(QWidget *parent, const QString &title, const QString &text, int button0, int button1,
                       int button2);
    static int question(QWidget *parent, const QString &title, const QString &text, int button0, int button1,
                        int button2);
};
