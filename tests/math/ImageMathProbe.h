// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vxutils/CVXSLog.h"
#include "tests/support/TestStudy.h"
#include "window/CVXSImageMathWnd.h"

#include <QListWidget>
#include <QSignalBlocker>
#include <QStringList>
#include <QVector>

/// The Image Math Window with its state laid open and its steps written down in the order in which they
/// happen.
class ImageMathProbe : public CVXSImageMathWnd
{
public:
    ImageMathProbe() : CVXSImageMathWnd(nullptr) {}

    using CVXSImageMathWnd::m_bCannotCombine;
    using CVXSImageMathWnd::m_bRefreshEnabled;
    using CVXSImageMathWnd::m_imageA;
    using CVXSImageMathWnd::m_imageB;
    using CVXSImageMathWnd::m_kValue;
    using CVXSImageMathWnd::m_messages;
    using CVXSImageMathWnd::m_pColorbarAB;
    using CVXSImageMathWnd::m_pColorbarResult;
    using CVXSImageMathWnd::m_pDatasetA;
    using CVXSImageMathWnd::m_pDatasetB;
    using CVXSImageMathWnd::m_pResultTag;
    using CVXSImageMathWnd::m_pSequence;
    using CVXSImageMathWnd::m_pTagA;
    using CVXSImageMathWnd::m_pTagB;
    using CVXSImageMathWnd::m_pView;
    using CVXSImageMathWnd::m_resultImage;

    /// Selects two clicks of an open sequence without the slots of the lists; a null click leaves its list
    /// without a current row. On a window that was not bound there is then no view.
    void select(CVXSSequenceDataset *sequence, const QString &clickA, const QString &clickB)
    {
        m_pSequence = sequence;
        selectIn(m_pListBoxA, sequence, clickA);
        selectIn(m_pListBoxB, sequence, clickB);
        m_pDatasetA = sequence->getDataset(clickA);
        m_pDatasetB = sequence->getDataset(clickB);
    }

    /// Saves the study and binds to it.
    bool bind(TestStudy &study)
    {
        const bool bound = study.save() && bindToSequence(study.sequence()->getSequenceID());
        steps.clear();
        return bound;
    }

    /// Computes and returns the steps that it took.
    QStringList computed()
    {
        steps.clear();
        refreshEnabled.clear();
        tagsShownAtFirstImage = -1;
        calculateResultImage();
        return steps;
    }

    QStringList filledSlots() const
    {
        QStringList filled;
        for (int slot = 0; slot < SLOT_COUNT; ++slot) {
            if (viewImage(slot))
                filled << QString("%1").arg(QStringLiteral("ABR")[slot]);
        }
        return filled;
    }

    int shownTags() const
    {
        return int(m_pResultTag->isShown()) + int(m_pTagA->isShown()) + int(m_pTagB->isShown());
    }

    void setViewImage(int slot, CILImage *image) override
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

    CILImage *viewImage(int slot) const override
    {
        return slot == misreadSlot ? &somethingElse() : CVXSImageMathWnd::viewImage(slot);
    }

    void onChangeColorRangeAB() override
    {
        steps << "range of A and B";
        refreshEnabled << m_bRefreshEnabled;
        slotsAtRangeAB = filledSlots();
        CVXSImageMathWnd::onChangeColorRangeAB();
    }

    void onChangeColorRangeResult() override
    {
        steps << "range of result";
        refreshEnabled << m_bRefreshEnabled;
        slotsAtRangeResult = filledSlots();
        CVXSImageMathWnd::onChangeColorRangeResult();
    }

    void doSettings() override
    {
        steps << "settings";
        CVXSImageMathWnd::doSettings();
    }

    void refreshImages() override
    {
        steps << "refresh";
        CVXSImageMathWnd::refreshImages();
    }

    QStringList steps;
    QVector<bool> refreshEnabled; ///< m_bRefreshEnabled at each colour-range slot
    QStringList slotsAtRangeAB;
    QStringList slotsAtRangeResult;
    int tagsShownAtFirstImage = -1;
    int refusedSlot = -1; ///< this slot takes no image
    int misreadSlot = -1; ///< this slot answers with an image that nobody put there

private:
    static void selectIn(QListWidget *list, CVXSSequenceDataset *sequence, const QString &click)
    {
        const QSignalBlocker quiet(list);
        list->clear();
        list->addItems(sequence->getClickNumbers());
        if (!click.isNull() && list->findItems(click, Qt::MatchExactly).isEmpty())
            list->addItem(click);
        list->setCurrentRow(-1);
        for (int row = 0; !click.isNull() && row < list->count(); ++row) {
            if (list->item(row)->text() == click)
                list->setCurrentRow(row);
        }
    }

    // Outlives every view that may be handed it.
    static CILImage &somethingElse()
    {
        static CILImage image;
        return image;
    }
};

/// The tool's lines in the host's log since this object was made; they bear the tool's fixed stamp.
class ToolLog
{
public:
    ToolLog() : m_from(getLogObject()->entries().size()) {}
    QVector<SLogEntry> entries() const { return getLogObject()->entries().mid(m_from); }
    QStringList messages() const
    {
        QStringList found;
        const auto lines = entries();
        for (const SLogEntry &line : lines) {
            if (line.stamp == "18:26:27")
                found << line.message;
        }
        return found;
    }
    /// Lines of level 3 of anybody.
    int failures() const
    {
        int count = 0;
        const auto lines = entries();
        for (const SLogEntry &line : lines)
            count += line.level == 3;
        return count;
    }

private:
    int m_from;
};
