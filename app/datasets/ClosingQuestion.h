// SPDX-License-Identifier: MIT
#pragma once

class QWidget;
struct DatasetParts;

/// Whether everything may be closed: asks once about all that would be lost, and not at all when nothing
/// would. False when the user wants to go on, or something was to be saved and is not; nothing is closed yet.
bool isReadyToQuit(QWidget *parent, const DatasetParts &parts);
