// SPDX-License-Identifier: MIT
#include "display/ColorScale.h"
#include "display/DisplayUnitNames.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "window/CVXSImageMathWnd.h"

#include <utility>

using colorscale::Limits;

namespace {

// How the sequence wants its images shown.
struct DisplayFlags
{
    VXS_COLORTABLE_TYPES table = VXS_CT_RAINBOW;
    int reversed = 0;
    int log = 0;
};

DisplayFlags flagsOf(const CVXSSequenceDataset *sequence)
{
    DisplayFlags flags;
    if (sequence) {
        flags.table = sequence->getImageAdjust().colorTable;
        flags.reversed = sequence->getToolInfo().reversed ? 1 : 0;
        flags.log = sequence->getToolInfo().logarithmic ? 1 : 0;
    }
    return flags;
}

QString unitNameOf(const CVXSDataset &dataset)
{
    return displayUnitName(dataset.getUnit());
}

} // namespace

void CVXSImageMathWnd::onChangeColorRangeAB()
{
    CILImage *a = viewImage(SLOT_A);
    CILImage *b = viewImage(SLOT_B);
    Limits limits;
    if (m_pFullABRadioBtn->isChecked()) {
        if (a && b)
            limits = colorscale::united(colorscale::fullRange(*a), colorscale::fullRange(*b));
        else if (a || b)
            limits = colorscale::fullRange(a ? *a : *b);
    }
    if (m_pAutoABRadioBtn->isChecked() && (a || b)) {
        if ((a && !m_pDatasetA) || (b && !m_pDatasetB))
            return;
        ESTATUS status = ESTATUS_SUCCESS;
        if (a && b) {
            Limits limitsB;
            status = colorscale::extendedAutoRange(*a, m_pDatasetA, unitNameOf(*m_pDatasetA), &limits);
            if (status == ESTATUS_SUCCESS)
                status = colorscale::extendedAutoRange(*b, m_pDatasetB, unitNameOf(*m_pDatasetB), &limitsB);
            limits = colorscale::united(limits, limitsB);
        } else if (a) {
            status = colorscale::autoRange(*a, m_pDatasetA, unitNameOf(*m_pDatasetA), &limits);
        } else {
            status = colorscale::autoRange(*b, m_pDatasetB, unitNameOf(*m_pDatasetB), &limits);
        }
        if (status != ESTATUS_SUCCESS)
            return;
    }

    const DisplayFlags flags = flagsOf(m_pSequence);
    if (a) {
        CILPalette palette = a->getPalette();
        palette.SetColorTable(flags.table, limits.min, limits.max, flags.reversed, 0);
        palette.setLogScale(flags.log);
        a->setPalette(palette);
    }
    if (b) {
        CILPalette palette = b->getPalette();
        palette.SetColorTable(flags.table, limits.min, limits.max, flags.reversed, 0);
        palette.setLogScale(flags.log);
        palette.setReversed(flags.reversed);
        b->setPalette(palette);
    }
    m_pColorbarAB->palette.SetColorTable(flags.table, limits.min, limits.max, flags.reversed, 0);
    if (m_pView && m_bRefreshEnabled)
        showWhatIsSet();
}

void CVXSImageMathWnd::onChangeColorRangeResult()
{
    CILImage *result = viewImage(SLOT_RESULT);
    Limits limits;
    if (m_pFullResultRadioBtn->isChecked() && result)
        limits = colorscale::fullRange(*result);
    // The status is not looked at: limits that could not be found stay as they are.
    if (m_pAutoResultRadioBtn->isChecked() && result && m_pDatasetA)
        colorscale::extendedAutoRange(*result, m_pDatasetA, displayUnitName(m_pSequence->getActiveUnit()),
                                      &limits);
    if (m_pMinChkBox->isChecked())
        limits.min = 0.0;

    if (result) {
        const DisplayFlags flags = flagsOf(m_pSequence);
        if (limits.min > limits.max)
            std::swap(limits.min, limits.max);
        CILPalette palette = result->getPalette();
        palette.SetColorTable(flags.table, limits.min, limits.max, flags.reversed, 0);
        palette.setLogScale(flags.log);
        result->setPalette(palette);
        // The bar's reversed place gets 1 whatever the flag says.
        m_pColorbarResult->palette.SetColorTable(flags.table, limits.min, limits.max, 1, 0);
    }
    if (m_pView && m_bRefreshEnabled)
        showWhatIsSet();
}

void CVXSImageMathWnd::onChangeMinZeroStatus(bool bMinStatus)
{
    if (CILImage *result = viewImage(SLOT_RESULT)) {
        const bool full = m_pFullResultRadioBtn->isChecked();
        const bool automatic = m_pAutoResultRadioBtn->isChecked();
        // Switched on, A calibrates the automatic range; switched off, B does.
        CVXSDataset *calibrating = bMinStatus ? m_pDatasetA : m_pDatasetB;
        Limits limits;
        if (full)
            limits = colorscale::fullRange(*result);
        if (automatic && calibrating)
            colorscale::autoRange(*result, calibrating, displayUnitName(m_pSequence->getActiveUnit()),
                                  &limits);
        if (bMinStatus)
            limits.min = 0.0;

        CILPalette palette = result->getPalette();
        palette.SetImageMinMax(limits.min, limits.max);
        result->setPalette(palette);
        m_pColorbarResult->palette.SetImageMinMax(limits.min, limits.max);
    }
    if (m_pView)
        showWhatIsSet();
}
