// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class Stage;

/// Another process, later: opens an earlier result from the File menu, sees its ROI and how it was made, and
/// has it computed again. `studyFolder` holds the truth of the sample study.
void secondDay(Stage &stage, const QString &studyFolder);
