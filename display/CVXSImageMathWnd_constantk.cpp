// SPDX-License-Identifier: MIT
#include "display/KText.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "window/CVXSImageMathWnd.h"

// Return and the loss of focus after it both arrive here; the second finds k as it is and does nothing.
void CVXSImageMathWnd::onChangeValueK()
{
    const float typed = ktext::read(m_pKLineEdit->text());
    if (typed == m_kValue)
        return;
    const QString text = ktext::format(ktext::clamped(typed, m_kMinimum, m_kMaximum));
    m_pKLineEdit->setText(text);
    m_kValue = ktext::read(text);
    CVXUtilityFns::setkValue(text);
    calculateResultImage();
}

void CVXSImageMathWnd::compactExponent(QString &text)
{
    ktext::compactExponent(text);
}

void CVXSImageMathWnd::onShowROIListPopupMenu() {}

void CVXSImageMathWnd::onSelectROIFromMenu(QAction *) {}

void CVXSImageMathWnd::computeKFromROI(const QString &, const QString &) {}

ESTATUS CVXSImageMathWnd::checkImagingAngles(const QString &, const QString &)
{
    return ESTATUS_SUCCESS;
}
