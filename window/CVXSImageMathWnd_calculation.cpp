// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "math/Computation.h"
#include "math/Formula.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

void CVXSImageMathWnd::calculateResultImage()
{
    m_messages.clear();
    m_emptyBecause = {};
    m_notes.clear();
    for (CVXSTextTag *tag : {m_pResultTag.get(), m_pTagA.get(), m_pTagB.get()})
        tag->show(false);
    for (int slot = 0; slot < SLOT_COUNT; ++slot)
        setViewImage(slot, nullptr);

    QString clickA;
    QString clickB;
    if (m_pListBoxA->item(m_pListBoxA->currentRow()) && m_pListBoxB->item(m_pListBoxB->currentRow())) {
        clickA = currentClickA();
        clickB = currentClickB();
    }
    if (!bothAssociated(clickA, clickB)) {
        showInvalidSelection();
        return;
    }
    m_pDisplayBtn->setEnabled(true);

    const bool flatFieldA = m_pDatasetA && m_pDatasetA->isLuminFlatFieldCorrected();
    const bool flatFieldB = m_pDatasetB && m_pDatasetB->isLuminFlatFieldCorrected();
    imagemath::Request request;
    request.a = operandOf(clickA, m_pDatasetA);
    request.b = operandOf(clickB, m_pDatasetB);
    request.unit = m_pSequence->getActiveUnit();
    imagemath::Steps steps;
    steps.operandFetched = [this](const imagemath::Outcome &, const CILImage &image) {
        showOperand(image);
        return true;
    };
    steps.operandsReady = [&](const imagemath::Outcome &prepared) {
        showOperands(prepared);
        restoreFlatField(m_pDatasetA, flatFieldA);
        restoreFlatField(m_pDatasetB, flatFieldB);
        request.formula = imagemath::formulaAt(m_pOperationCB->currentIndex());
        request.k = m_kValue;
        request.roiOfK = m_roiOfK;
        return viewImage(SLOT_A) && viewImage(SLOT_B);
    };
    const imagemath::Outcome outcome =
        imagemath::compute(request, {m_imageA, m_imageB, m_resultImage}, m_tissueMask, steps);
    m_resultRecord = outcome.record;
    m_emptyBecause = outcome.empty;
    takeNotes(outcome, clickA, clickB);

    if (m_bCannotCombine) {
        m_pColorbarResult->palette.SetImageMinMax(0.0, 0.0);
        if (m_pView)
            showWhatIsSet();
        return;
    }
    if (!m_emptyBecause.result.isEmpty())
        imagemath::logLine(noPixelsText());
    showResult();
}

// With what the operands say themselves: the line may be the last that the user sees.
QString CVXSImageMathWnd::noPixelsText() const
{
    QStringList reasons = {m_emptyBecause.result, m_emptyBecause.a, m_emptyBecause.b};
    reasons.removeAll(QString());
    reasons.removeDuplicates();
    return QStringLiteral("The result has no pixels: %1").arg(reasons.join(QLatin1Char(' ')));
}

bool CVXSImageMathWnd::bothAssociated(const QString &clickA, const QString &clickB) const
{
    if (!m_pSequence)
        return false;
    bool associatedA = true;
    if (!m_pSequence->isAssociatedClick(clickA, &associatedA))
        return false;
    bool associatedB = true;
    return m_pSequence->isAssociatedClick(clickB, &associatedB);
}

void CVXSImageMathWnd::showInvalidSelection()
{
    for (int slot = 0; slot < SLOT_COUNT; ++slot)
        setViewImage(slot, nullptr);
    m_notes.clear();
    m_pDisplayBtn->setEnabled(false);
    imagemath::logLine(QStringLiteral("One or more dataset(s) is/are invalid..."));
    m_messages = imagemath::messageOf(imagemath::Combination::MissingImage);
    m_pResultTag->setStringList(m_messages);
    showWhatIsSet();
}

// A click without a luminescent image takes part as no dataset. Whose flat field goes with radiance is for
// the window's own dataset to say, which is that of the click.
imagemath::Operand CVXSImageMathWnd::operandOf(const QString &click, const CVXSDataset *own) const
{
    if (!clickHasImage(click, EIMAGE_LUMINESCENT))
        return {};
    CVXSDataset *dataset = m_pSequence->getDataset(click);
    return {dataset,
            own == dataset ? imagemath::correctionsFor(*dataset) : imagemath::correctionsOf(*dataset)};
}

void CVXSImageMathWnd::showOperand(const CILImage &image)
{
    if (&image == &m_imageA) {
        if (!takesImage(SLOT_A, &m_imageA))
            imagemath::logLine(QStringLiteral("Image A could not be replaced."));
    } else if (!takesImage(SLOT_B, &m_imageB)) {
        imagemath::logLine(QStringLiteral("Image B could not be replaced."));
    }
}

void CVXSImageMathWnd::showOperands(const imagemath::Outcome &prepared)
{
    m_bCannotCombine = prepared.combination != imagemath::Combination::Possible;
    m_messages += imagemath::messageOf(prepared.combination);
    m_pDisplayBtn->setEnabled(!m_bCannotCombine);
    announceColorRange(&CVXSImageMathWnd::colorRangeABChanged);
}

// The log tells each of them once for the same clicks, not at every change of k.
void CVXSImageMathWnd::takeNotes(const imagemath::Outcome &outcome, const QString &clickA,
                                 const QString &clickB)
{
    m_notes = imagemath::textsOf(outcome.notes);
    QStringList lines;
    for (const QString &note : qAsConst(m_notes))
        lines += QStringLiteral("A %1, B %2: %3").arg(clickA, clickB, note);
    for (const QString &line : qAsConst(lines)) {
        if (!m_notesLogged.contains(line))
            imagemath::logLine(line, ELOG_WARNING);
    }
    m_notesLogged = lines;
}

void CVXSImageMathWnd::showResult()
{
    if (!takesImage(SLOT_RESULT, &m_resultImage))
        imagemath::logLine(QStringLiteral("Result Image could not be replaced"));
    announceColorRange(&CVXSImageMathWnd::colorRangeResultChanged);
    showWhatIsSet();
}

// The correction that the computation switched on goes back, through the image window where there is one,
// which shows it.
void CVXSImageMathWnd::restoreFlatField(CVXSDataset *dataset, bool remembered)
{
    if (!dataset || dataset->getUnit() != EUNIT_RADIANCE ||
        dataset->isLuminFlatFieldCorrected() == remembered)
        return;
    if (auto *imageWindow = CVXSImageWindow::getImageWindow(dataset))
        imageWindow->switchFlatFieldCorrection(remembered);
    else
        dataset->doFlatFieldCorrection(remembered);
}

void CVXSImageMathWnd::announceColorRange(void (CVXSImageMathWnd::*signal)())
{
    m_bRefreshEnabled = false;
    Q_EMIT(this->*signal)();
    m_bRefreshEnabled = true;
}

void CVXSImageMathWnd::setViewImage(int slot, CILImage *image)
{
    if (slot >= 0 && slot < SLOT_COUNT)
        m_viewImages[std::size_t(slot)] = image;
}

bool CVXSImageMathWnd::takesImage(int slot, CILImage *image)
{
    setViewImage(slot, image);
    return viewImage(slot) == image;
}

CILImage *CVXSImageMathWnd::viewImage(int slot) const
{
    return slot >= 0 && slot < SLOT_COUNT ? m_viewImages[std::size_t(slot)] : nullptr;
}
