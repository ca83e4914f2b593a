// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Stage;

/// Real camera images of a tray of 16 plants, imported as a sequence: day 14 - 1.0 * day 7 goes through the
/// Image Math Window to result datasets in counts and in radiance, and a grid of 4 x 4 measures each plant.
/// Leaves plants-counts.csv and plants-radiance.csv as the workspace saves its table, and plants.json, which
/// names what an independent computation needs.
void plants(Stage &stage, const QString &imagesFolder);
