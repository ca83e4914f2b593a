// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Makes a top-level window no larger than its screen, which may be another one than last time, and moves it
/// in there.
void keepOnScreen(QWidget *window);
