// SPDX-License-Identifier: MIT
#include "tests/support/WindowProbe.h"

#include <QListWidget>
#include <QSignalBlocker>

namespace {

// Outlives every view that may be handed it.
CILImage &somethingElse()
{
    static CILImage image;
    return image;
}

void fillQuietly(QListWidget *list, const QStringList &clicks)
{
    const QSignalBlocker quiet(list);
    list->clear();
    list->addItems(clicks);
}

} // namespace

void WindowProbe::forgetCalls()
{
    calls.clear();
    argument.clear();
    computations = computationsWithoutView = photographChoices = 0;
    steps.clear();
}

void WindowProbe::select(CVXSSequenceDataset *sequence, const QString &clickA, const QString &clickB)
{
    m_pSequence = sequence;
    fillQuietly(m_pListBoxA, sequence->getClickNumbers());
    fillQuietly(m_pListBoxB, sequence->getClickNumbers());
    selectQuietly(m_pListBoxA, clickA);
    selectQuietly(m_pListBoxB, clickB);
    m_pDatasetA = sequence->getDataset(clickA);
    m_pDatasetB = sequence->getDataset(clickB);
}

void WindowProbe::selectQuietly(QListWidget *list, const QString &text)
{
    const QSignalBlocker quiet(list);
    list->setCurrentRow(-1);
    if (text.isNull())
        return;
    if (list->findItems(text, Qt::MatchExactly).isEmpty())
        list->addItem(text);
    list->setCurrentItem(list->findItems(text, Qt::MatchExactly).first());
}

bool WindowProbe::bind(TestStudy &study)
{
    const bool bound = study.save() && bindToSequence(study.sequence()->getSequenceID());
    steps.clear();
    return bound;
}

QStringList WindowProbe::computed()
{
    steps.clear();
    refreshEnabled.clear();
    tagsShownAtFirstImage = -1;
    calculateResultImage();
    return steps;
}

QStringList WindowProbe::filledSlots() const
{
    QStringList filled;
    for (int slot = 0; slot < SLOT_COUNT; ++slot) {
        if (viewImage(slot))
            filled << QString("%1").arg(QStringLiteral("ABR")[slot]);
    }
    return filled;
}

int WindowProbe::shownTags() const
{
    return int(m_pResultTag->isShown()) + int(m_pTagA->isShown()) + int(m_pTagB->isShown());
}

void WindowProbe::calculateResultImage()
{
    ++computations;
    if (!m_pView)
        ++computationsWithoutView;
    CVXSImageMathWnd::calculateResultImage();
}

void WindowProbe::updatePhotographChoice()
{
    ++photographChoices;
    CVXSImageMathWnd::updatePhotographChoice();
}

void WindowProbe::setViewImage(int slot, CILImage *image)
{
    if (image) {
        if (tagsShownAtFirstImage < 0)
            tagsShownAtFirstImage = shownTags();
        const char *name = image == &m_imageA        ? "A"
                           : image == &m_imageB      ? "B"
                           : image == &m_resultImage ? "result"
                                                     : "other";
        steps << QString("slot %1 takes %2").arg(slot).arg(QLatin1String(name));
        if (slot == refusedSlot)
            return;
    }
    CVXSImageMathWnd::setViewImage(slot, image);
}

CILImage *WindowProbe::viewImage(int slot) const
{
    return slot == misreadSlot ? &somethingElse() : CVXSImageMathWnd::viewImage(slot);
}

ESTATUS WindowProbe::checkImagingAngles(const QString &pathA, const QString &pathB)
{
    return agreesToAngles ? ESTATUS_SUCCESS : CVXSImageMathWnd::checkImagingAngles(pathA, pathB);
}

ESTATUS WindowProbe::writeAnalyzedClickInfo(const QString &analyzedPathA, const QString &analyzedPathB)
{
    if (beforeAnalyzed)
        beforeAnalyzed();
    return CVXSImageMathWnd::writeAnalyzedClickInfo(analyzedPathA, analyzedPathB);
}

void WindowProbe::onClickDisplayResultForMeasuring()
{
    if (note("onClickDisplayResultForMeasuring"))
        CVXSImageMathWnd::onClickDisplayResultForMeasuring();
}

void WindowProbe::onChangeStatusOfWithPhotoFrom(int nState)
{
    if (note("onChangeStatusOfWithPhotoFrom", nState))
        CVXSImageMathWnd::onChangeStatusOfWithPhotoFrom(nState);
}

void WindowProbe::onChangeMathOperation(int nIndex)
{
    if (note("onChangeMathOperation", nIndex))
        CVXSImageMathWnd::onChangeMathOperation(nIndex);
}

void WindowProbe::onSelectClickNumberFromList()
{
    if (note("onSelectClickNumberFromList"))
        CVXSImageMathWnd::onSelectClickNumberFromList();
}

void WindowProbe::onChangeValueK()
{
    if (note("onChangeValueK"))
        CVXSImageMathWnd::onChangeValueK();
}

void WindowProbe::refreshImages()
{
    steps << "refresh";
    if (note("refreshImages"))
        CVXSImageMathWnd::refreshImages();
}

void WindowProbe::onChangeColorRangeAB()
{
    steps << "range of A and B";
    refreshEnabled << m_bRefreshEnabled;
    slotsAtRangeAB = filledSlots();
    if (note("onChangeColorRangeAB"))
        CVXSImageMathWnd::onChangeColorRangeAB();
}

void WindowProbe::onChangeColorRangeResult()
{
    steps << "range of result";
    refreshEnabled << m_bRefreshEnabled;
    slotsAtRangeResult = filledSlots();
    if (note("onChangeColorRangeResult"))
        CVXSImageMathWnd::onChangeColorRangeResult();
}

void WindowProbe::onChangeMinZeroStatus(bool bMinStatus)
{
    if (note("onChangeMinZeroStatus", bMinStatus))
        CVXSImageMathWnd::onChangeMinZeroStatus(bMinStatus);
}

void WindowProbe::doSettings()
{
    steps << "settings";
    if (note("doSettings"))
        CVXSImageMathWnd::doSettings();
}

void WindowProbe::updateImageMathWindow()
{
    if (note("updateImageMathWindow"))
        CVXSImageMathWnd::updateImageMathWindow();
}

void WindowProbe::onShowROIListPopupMenu()
{
    if (note("onShowROIListPopupMenu"))
        CVXSImageMathWnd::onShowROIListPopupMenu();
}

bool WindowProbe::note(const char *slot, const QVariant &value)
{
    ++calls[slot];
    argument[slot] = value;
    return runSlots;
}
