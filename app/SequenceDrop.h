// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QMimeData;

/// The sequence folders (or SequenceInfo.txt files) among what is dragged over the window; other files do not
/// count.
QStringList droppedSequences(const QMimeData *data);
