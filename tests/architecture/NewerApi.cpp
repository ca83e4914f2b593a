// SPDX-License-Identifier: MIT
// What the check of Qt's API has to find: a function of 5.14, reached by a pointer so that the check of the
// sources does not see it.
#include <QWidget>

QScreen *screenOf(const QWidget &shown)
{
    return (shown.*(&QWidget::screen))();
}
