// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// What "About" tells: version, licence, and the libraries underneath with their versions (rich text).
QString aboutText();

/// Shows it in a modal box.
void showAboutBox(QWidget *parent);
