// SPDX-License-Identifier: MIT
#pragma once

class Stage;

/// What the Image Math Window shows, before anything is measured.
namespace displaytour {

/// k typed, and A - B * k with the true k against the truth of the sample study.
void mainJob(Stage &stage);
/// Every formula.
void formulas(Stage &stage);
/// "Full", "Auto" and "Min = 0".
void colorScales(Stage &stage);
/// A pair of other fields of view: the reason is told, and nothing can be made of it.
void pairsThatCannotBeCombined(Stage &stage);

} // namespace displaytour
