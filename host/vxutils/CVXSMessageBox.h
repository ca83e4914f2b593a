// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <QString>
#include <QStringList>

class QWidget;

/// Modal message boxes: real QMessageBox windows that return after the user has answered.
///
/// The button-text forms return the index (from 0) of the pressed button; an empty text leaves that button
/// out without moving the index of the others, and with no text at all there is one "OK". `defaultButton` is
/// the index that Enter presses, `escapeButton` the one that Escape and closing the window stand for; where
/// that is no button, they are ignored among several. The standard-button forms return the standard button's
/// code (Yes 0x4000, No 0x10000, ...); 0 stands for no button, and three of them for one "OK".
class VXUTILS_EXPORT CVXSMessageBox
{
public:
    static int information(QWidget *parent, const QString &title, const QString &text,
                           const QString &button0Text, const QString &button1Text, const QString &button2Text,
                           int defaultButton, int escapeButton);
    static int warning(QWidget *parent, const QString &title, const QString &text, const QString &button0Text,
                       const QString &button1Text, const QString &button2Text, int defaultButton,
                       int escapeButton);
    /// With as many buttons as there are texts.
    static int warning(QWidget *parent, const QString &title, const QString &text,
                       const QStringList &buttonTexts, int defaultButton, int escapeButton);
    static int warning(QWidget *parent, const QString &title, const QString &text, int button0, int button1,
                       int button2);
    static int question(QWidget *parent, const QString &title, const QString &text, int button0, int button1,
                        int button2);
};
