// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

class CVXSSequenceDataset;
class QWidget;

/// Saves a sequence where it belongs; a failure (a null sequence is one) is logged and shown.
ESTATUS saveSequenceWithMessage(QWidget *parent, CVXSSequenceDataset *sequence);
