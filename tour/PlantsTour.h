// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Stage;

/// Real camera images of a tray of plants, imported as a sequence: day 14 - day 7 through the Image Math
/// Window to result datasets in counts and in radiance, and the totals over each plant.
void plants(Stage &stage, const QString &imagesFolder);
