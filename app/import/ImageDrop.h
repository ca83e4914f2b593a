// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QMimeData;

/// The TIFF files among what is dragged over a window, by the endings of their names.
QStringList droppedImages(const QMimeData *data);
