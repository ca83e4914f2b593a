// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class CVXSSequenceDataset;

/// What A - B * k gives on the sample study, against what is true.
struct MainJob
{
    bool holds = false;
    QStringList lines; ///< the numbers, for the user
};

/// Computes A - B * k of the study's first pair with the true k, by the engine that the window calls, and
/// compares it with the truth that lies beside the sequence's folder. The residual's mean must be within 5
/// standard errors of zero, and its variance within 3 % of what the camera's noise alone gives.
MainJob checkMainJob(const CVXSSequenceDataset &sequence);
