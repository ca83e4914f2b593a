// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QMimeData;

/// The folders (or SequenceInfo.txt and ClickInfo.txt files) among what is dragged over the window; other
/// files do not count.
QStringList droppedSequences(const QMimeData *data);
