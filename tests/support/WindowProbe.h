// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h" // the guarded pointers below follow it
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "tests/support/TestStudy.h"
#include "window/CVXSImageMathWnd.h"

#include <functional>
#include <QMap>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// The Image Math Window with its protected members open to a test, its slots counted and its steps written
/// down in the order in which they happen. Nothing that it does is changed, unless a test asks for it:
/// `runSlots` cleared lets slots be counted only, and single answers can be refused or falsified.
///
///     WindowProbe window;
///     QVERIFY(window.bind(study));
///     QCOMPARE(window.computed(), (QStringList{"slot 0 takes A", "slot 1 takes B", ..., "refresh"}));
///     QCOMPARE(window.calls["refreshImages"], 1);
class WindowProbe : public CVXSImageMathWnd
{
public:
    explicit WindowProbe(QWidget *parent = nullptr) : CVXSImageMathWnd(parent) {}

    using CVXSImageMathWnd::languageChange;
    using CVXSImageMathWnd::m_bCannotCombine;
    using CVXSImageMathWnd::m_bHandleClose;
    using CVXSImageMathWnd::m_bPastedROI;
    using CVXSImageMathWnd::m_bRefreshEnabled;
    using CVXSImageMathWnd::m_bSavedForImageMath;
    using CVXSImageMathWnd::m_imageA;
    using CVXSImageMathWnd::m_imageB;
    using CVXSImageMathWnd::m_kMaximum;
    using CVXSImageMathWnd::m_kMinimum;
    using CVXSImageMathWnd::m_kValue;
    using CVXSImageMathWnd::m_messages;
    using CVXSImageMathWnd::m_pColorbarAB;
    using CVXSImageMathWnd::m_pColorbarResult;
    using CVXSImageMathWnd::m_pDatasetA;
    using CVXSImageMathWnd::m_pDatasetB;
    using CVXSImageMathWnd::m_photoImage;
    using CVXSImageMathWnd::m_pResultTag;
    using CVXSImageMathWnd::m_pROIMenu;
    using CVXSImageMathWnd::m_pSequence;
    using CVXSImageMathWnd::m_pTagA;
    using CVXSImageMathWnd::m_pTagB;
    using CVXSImageMathWnd::m_pView;
    using CVXSImageMathWnd::m_resultImage;

    bool runSlots = true;
    bool agreesToAngles = false;          ///< goes on without a look at the imaging angles
    std::function<void()> beforeAnalyzed; ///< called before the analyzed record is written
    int refusedSlot = -1;                 ///< this slot takes no image
    int misreadSlot = -1;                 ///< this slot answers with an image that nobody put there

    QMap<QByteArray, int> calls;         ///< slot name, times called
    QMap<QByteArray, QVariant> argument; ///< slot name, last argument
    int computations = 0;
    int computationsWithoutView = 0;
    int photographChoices = 0;
    QStringList steps;            ///< of a computation, as they came
    QVector<bool> refreshEnabled; ///< m_bRefreshEnabled at each colour-range slot
    QStringList slotsAtRangeAB;
    QStringList slotsAtRangeResult;
    int tagsShownAtFirstImage = -1;

    void forgetCalls();

    /// Selects two clicks of an open sequence without the slots of the lists; a null click leaves its list
    /// without a current row. On a window that was not bound there is then no view.
    void select(CVXSSequenceDataset *sequence, const QString &clickA, const QString &clickB);
    /// Makes that item of a list its current one without the list's slot, and adds it when it is not there; a
    /// null text leaves the list without a current row.
    static void selectQuietly(QListWidget *list, const QString &text);
    /// Saves the study and binds to it.
    bool bind(TestStudy &study);
    /// Computes and returns the steps that it took.
    QStringList computed();
    QStringList filledSlots() const;
    int shownTags() const;

    void calculateResultImage() override;
    void updatePhotographChoice() override;
    void setViewImage(int slot, CILImage *image) override;
    CILImage *viewImage(int slot) const override;
    ESTATUS checkImagingAngles(const QString &pathA, const QString &pathB) override;
    ESTATUS writeAnalyzedClickInfo(const QString &analyzedPathA, const QString &analyzedPathB) override;
    void onClickDisplayResultForMeasuring() override;
    void onChangeStatusOfWithPhotoFrom(int nState) override;
    void onChangeMathOperation(int nIndex) override;
    void onSelectClickNumberFromList() override;
    void onChangeValueK() override;
    void refreshImages() override;
    void onChangeColorRangeAB() override;
    void onChangeColorRangeResult() override;
    void onChangeMinZeroStatus(bool bMinStatus) override;
    void doSettings() override;
    void updateImageMathWindow() override;
    void onShowROIListPopupMenu() override;

private:
    /// Counts the call; whether the slot is to run.
    bool note(const char *slot, const QVariant &value = QVariant());
};
