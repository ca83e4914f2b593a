// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Stage;

/// From an ROI to k, to the result as a dataset, and to its numbers, on the sample study.
namespace measuringtour {

/// Draws a background ROI in the image window of A and takes k from it.
void kFromRoi(Stage &stage);
/// Makes the result of A - 1.25 * B a dataset; its click number.
QString displayResult(Stage &stage);
/// A pair of other imaging angles: "No" makes nothing, "Yes" a result.
void otherAngle(Stage &stage);
/// Draws an ellipse over a reporter in the result, compares the table with the truth, and saves.
void measureResult(Stage &stage, const QString &click);
/// Closes the workspace; the questions are answered with "Discard".
void closeEverything(Stage &stage);

/// The numbers of the last ellipse of that result, against the truth of the study.
void compareWithTruth(Stage &stage, const QString &click, const QString &studyFolder);

} // namespace measuringtour
