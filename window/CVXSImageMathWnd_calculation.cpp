// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "math/Formula.h"
#include "math/OperandPreparation.h"
#include "math/ResultComputation.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

#include <QDateTime>

namespace {

const QString CALLER = QStringLiteral("Image Math");

} // namespace

void CVXSImageMathWnd::calculateResultImage()
{
    m_messages.clear();
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
    CILImage calibratedA;
    CILImage calibratedB;
    CILImage countsB;
    prepareOperands(clickA, clickB, calibratedA, calibratedB, countsB);
    noteOperands(clickA, clickB);
    announceColorRange(&CVXSImageMathWnd::colorRangeABChanged);
    restoreFlatField(m_pDatasetA, flatFieldA);
    restoreFlatField(m_pDatasetB, flatFieldB);

    if (m_bCannotCombine) {
        m_pColorbarResult->palette.SetImageMinMax(0.0, 0.0);
        if (m_pView)
            showWhatIsSet();
        return;
    }
    evaluateFormula(clickB, countsB);
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
    m_pDisplayBtn->setEnabled(false);
    imagemath::logLine(QStringLiteral("One or more dataset(s) is/are invalid..."));
    m_messages = QStringList{tr("Need two images.")};
    m_pResultTag->setStringList(m_messages);
    showWhatIsSet();
}

void CVXSImageMathWnd::prepareOperands(const QString &clickA, const QString &clickB, CILImage &calibratedA,
                                       CILImage &calibratedB, CILImage &countsB)
{
    const bool luminescentA = clickHasImage(clickA, EIMAGE_LUMINESCENT);
    const bool luminescentB = clickHasImage(clickB, EIMAGE_LUMINESCENT);
    if (luminescentA)
        fetchOperandA(clickA, calibratedA);
    if (luminescentB)
        fetchOperandB(clickB, calibratedB, countsB);

    if (luminescentA && luminescentB) {
        const auto combination = imagemath::compareOperands(
            m_pSequence->getDataset(clickA)->getFOVForImage(EIMAGE_LUMINESCENT), m_imageA,
            m_pSequence->getDataset(clickB)->getFOVForImage(EIMAGE_LUMINESCENT), m_imageB);
        m_bCannotCombine = combination != imagemath::Combination::Possible;
        m_messages += imagemath::messageOf(combination);
        if (!m_bCannotCombine)
            imagemath::reconcileBinning(m_imageA, m_imageB, countsB);
    } else {
        m_bCannotCombine = true;
        m_messages += tr("Need two images.");
    }
    m_pDisplayBtn->setEnabled(!m_bCannotCombine);
}

// Before the flat-field correction goes back to what it was.
void CVXSImageMathWnd::noteOperands(const QString &clickA, const QString &clickB)
{
    m_resultRecord = imagemath::ResultRecord();
    if (m_bCannotCombine)
        return;
    m_resultRecord.unit = unitKey(m_pSequence->getActiveUnit());
    m_resultRecord.a = imagemath::recordOf(*m_pSequence->getDataset(clickA));
    m_resultRecord.b = imagemath::recordOf(*m_pSequence->getDataset(clickB));
}

void CVXSImageMathWnd::noteFormula(const imagemath::Formula &formula)
{
    m_resultRecord.operation = QString::fromLatin1(formula.text);
    m_resultRecord.k = m_kValue;
    m_resultRecord.computed = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

void CVXSImageMathWnd::fetchOperandA(const QString &clickA, CILImage &calibratedA)
{
    if (m_pDatasetA)
        imagemath::correctFlatFieldForRadiance(*m_pDatasetA);
    m_pSequence->getDataset(clickA)->getCalibratedLuminImage(m_pSequence->getActiveUnit(), &calibratedA,
                                                             CALLER);
    m_imageA = calibratedA;
    setViewImage(SLOT_A, &m_imageA);
    if (viewImage(SLOT_A) != &m_imageA)
        imagemath::logLine(QStringLiteral("Image A could not be replaced."));
}

void CVXSImageMathWnd::fetchOperandB(const QString &clickB, CILImage &calibratedB, CILImage &countsB)
{
    if (m_pDatasetB)
        imagemath::correctFlatFieldForRadiance(*m_pDatasetB);
    const CVXSDataset *dataset = m_pSequence->getDataset(clickB);
    dataset->getCalibratedLuminImage(m_pSequence->getActiveUnit(), &calibratedB, CALLER);
    // Every formula fetches the counts, though only the thresholded ratio reads them: the dataset remembers
    // them.
    dataset->getCalibratedLuminImage(EUNIT_COUNTS, &countsB, CALLER);
    m_imageB = calibratedB;
    setViewImage(SLOT_B, &m_imageB);
    if (viewImage(SLOT_B) != &m_imageB)
        imagemath::logLine(QStringLiteral("Image B could not be replaced."));
}

// The correction that the computation switched on goes back through the image window, which shows it.
void CVXSImageMathWnd::restoreFlatField(CVXSDataset *dataset, bool remembered)
{
    if (!dataset || dataset->getUnit() != EUNIT_RADIANCE ||
        dataset->isLuminFlatFieldCorrected() == remembered)
        return;
    if (auto *imageWindow = CVXSImageWindow::getImageWindow(dataset))
        imageWindow->switchFlatFieldCorrection(remembered);
}

void CVXSImageMathWnd::announceColorRange(void (CVXSImageMathWnd::*signal)())
{
    m_bRefreshEnabled = false;
    Q_EMIT(this->*signal)();
    m_bRefreshEnabled = true;
}

void CVXSImageMathWnd::evaluateFormula(const QString &clickB, CILImage &countsB)
{
    const imagemath::Formula *formula = imagemath::formulaAt(m_pOperationCB->currentIndex());
    if (formula && viewImage(SLOT_A) && viewImage(SLOT_B)) {
        noteFormula(*formula);
        m_resultRecord.maskPhotograph.clickNumber =
            imagemath::evaluateOn(*formula, m_imageA, m_imageB, countsB, m_kValue,
                                  *m_pSequence->getDataset(clickB), m_tissueMask, m_resultImage);
    }

    setViewImage(SLOT_RESULT, &m_resultImage);
    if (viewImage(SLOT_RESULT) != &m_resultImage)
        imagemath::logLine(QStringLiteral("Result Image could not be replaced"));
    announceColorRange(&CVXSImageMathWnd::colorRangeResultChanged);
    showWhatIsSet();
}

void CVXSImageMathWnd::setViewImage(int slot, CILImage *image)
{
    if (slot >= 0 && slot < SLOT_COUNT)
        m_viewImages[std::size_t(slot)] = image;
}

CILImage *CVXSImageMathWnd::viewImage(int slot) const
{
    return slot >= 0 && slot < SLOT_COUNT ? m_viewImages[std::size_t(slot)] : nullptr;
}
