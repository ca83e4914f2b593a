// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h" // the guarded pointers below follow it
#include "window/CVXSImageMathWnd.h"

#include <functional>
#include <QMap>
#include <QVariant>

/// The window with every operation of interest counted, and its protected members open to a test. Nothing
/// that it does is changed, unless `runSlots` is cleared: then the slots are only counted.
class WatchedWnd : public CVXSImageMathWnd
{
public:
    explicit WatchedWnd(QWidget *parent = nullptr) : CVXSImageMathWnd(parent, "watched") {}

    bool runSlots = true;
    QMap<QByteArray, int> calls;         ///< slot name, times called
    QMap<QByteArray, QVariant> argument; ///< slot name, last argument
    int computations = 0;
    int computationsWithoutView = 0;
    int photographChoices = 0;
    bool agreesToAngles = false;          ///< goes on without a look at the imaging angles
    std::function<void()> beforeAnalyzed; ///< called before the analyzed record is written
    QStringList order;                    ///< computation, doSettings, refreshImages as they came

    void forgetCalls()
    {
        calls.clear();
        argument.clear();
        computations = computationsWithoutView = photographChoices = 0;
        order.clear();
    }

    using CVXSImageMathWnd::languageChange;
    using CVXSImageMathWnd::m_bCannotCombine;
    using CVXSImageMathWnd::m_bHandleClose;
    using CVXSImageMathWnd::m_bPastedROI;
    using CVXSImageMathWnd::m_bRefreshEnabled;
    using CVXSImageMathWnd::m_bSavedForImageMath;
    using CVXSImageMathWnd::m_kMaximum;
    using CVXSImageMathWnd::m_kMinimum;
    using CVXSImageMathWnd::m_kValue;
    using CVXSImageMathWnd::m_messages;
    using CVXSImageMathWnd::m_pColorbarAB;
    using CVXSImageMathWnd::m_pColorbarResult;
    using CVXSImageMathWnd::m_pDatasetA;
    using CVXSImageMathWnd::m_pDatasetB;
    using CVXSImageMathWnd::m_pResultTag;
    using CVXSImageMathWnd::m_pROIMenu;
    using CVXSImageMathWnd::m_pTagA;
    using CVXSImageMathWnd::m_pTagB;
    using CVXSImageMathWnd::m_pView;
    using CVXSImageMathWnd::m_resultImage;

    void calculateResultImage() override
    {
        ++computations;
        if (!m_pView)
            ++computationsWithoutView;
        order << QStringLiteral("computation");
        CVXSImageMathWnd::calculateResultImage();
    }
    void updatePhotographChoice() override
    {
        ++photographChoices;
        CVXSImageMathWnd::updatePhotographChoice();
    }

    ESTATUS checkImagingAngles(const QString &pathA, const QString &pathB) override
    {
        return agreesToAngles ? ESTATUS_SUCCESS : CVXSImageMathWnd::checkImagingAngles(pathA, pathB);
    }
    ESTATUS writeAnalyzedClickInfo(const QString &analyzedPathA, const QString &analyzedPathB) override
    {
        if (beforeAnalyzed)
            beforeAnalyzed();
        return CVXSImageMathWnd::writeAnalyzedClickInfo(analyzedPathA, analyzedPathB);
    }
    void onClickDisplayResultForMeasuring() override
    {
        if (note("onClickDisplayResultForMeasuring"))
            CVXSImageMathWnd::onClickDisplayResultForMeasuring();
    }
    void onChangeStatusOfWithPhotoFrom(int nState) override
    {
        if (note("onChangeStatusOfWithPhotoFrom", nState))
            CVXSImageMathWnd::onChangeStatusOfWithPhotoFrom(nState);
    }
    void onChangeMathOperation(int nIndex) override
    {
        if (note("onChangeMathOperation", nIndex))
            CVXSImageMathWnd::onChangeMathOperation(nIndex);
    }
    void onSelectClickNumberFromList() override
    {
        if (note("onSelectClickNumberFromList"))
            CVXSImageMathWnd::onSelectClickNumberFromList();
    }
    void onChangeValueK() override
    {
        if (note("onChangeValueK"))
            CVXSImageMathWnd::onChangeValueK();
    }
    void refreshImages() override
    {
        order << QStringLiteral("refreshImages");
        if (note("refreshImages"))
            CVXSImageMathWnd::refreshImages();
    }
    void onChangeColorRangeAB() override
    {
        if (note("onChangeColorRangeAB"))
            CVXSImageMathWnd::onChangeColorRangeAB();
    }
    void onChangeColorRangeResult() override
    {
        if (note("onChangeColorRangeResult"))
            CVXSImageMathWnd::onChangeColorRangeResult();
    }
    void onChangeMinZeroStatus(bool bMinStatus) override
    {
        if (note("onChangeMinZeroStatus", bMinStatus))
            CVXSImageMathWnd::onChangeMinZeroStatus(bMinStatus);
    }
    void doSettings() override
    {
        order << QStringLiteral("doSettings");
        if (note("doSettings"))
            CVXSImageMathWnd::doSettings();
    }
    void updateImageMathWindow() override
    {
        if (note("updateImageMathWindow"))
            CVXSImageMathWnd::updateImageMathWindow();
    }
    void onShowROIListPopupMenu() override
    {
        if (note("onShowROIListPopupMenu"))
            CVXSImageMathWnd::onShowROIListPopupMenu();
    }

private:
    bool note(const char *slot, const QVariant &value = QVariant())
    {
        ++calls[slot];
        argument[slot] = value;
        return runSlots;
    }
};
