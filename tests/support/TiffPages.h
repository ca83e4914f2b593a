// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Writes a TIFF of so many pages, 16-bit, each of 8 x 6 pixels that hold the page's number, from 1 on.
bool writePages(const QString &path, int pages);
