// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Stage;

/// What a new user does in the first hour with two files of a camera: imports them with the offset, takes k
/// from a background ROI, makes the result, copies ROIs from click to click, reads the table, and ends with one
/// question. `filesFolder` holds the camera files of the sample study.
void firstHour(Stage &stage, const QString &filesFolder);
