// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "math/ViewAnnotations.h"
#include "window/CVXSImageMathWnd.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QSizeF>

namespace {

QSizeF sizeInObjectUnits(const CVXSMultiImageView &view, const CVXSTextTag &tag)
{
    const QSize pixels = tag.getSize();
    double width = 0.0;
    double height = 0.0;
    view.convertWindowToObjectSize(pixels.width(), pixels.height(), width, height);
    return {width, height};
}

} // namespace

void CVXSImageMathWnd::doSettings()
{
    if (!m_pView)
        return;
    m_pView->setShowTextTag(true);

    // B is named in A's unit: both operands are in the sequence's one active unit.
    const tag_edisplayunit activeUnit = m_pSequence ? m_pSequence->getActiveUnit() : EUNIT_COUNTS;
    const tag_edisplayunit unitOfA = m_pDatasetA ? m_pDatasetA->getUnit() : activeUnit;
    const auto label = [this, activeUnit, unitOfA](int slot, const CVXSDataset *dataset) {
        if (!viewImage(slot))
            return imagemath::noImageLabel();
        return imagemath::operandLabel(dataset && dataset->isTransFluorescentDataset(),
                                       dataset ? dataset->getUnit() : activeUnit, unitOfA);
    };
    m_pTagA->setStringList({label(SLOT_A, m_pDatasetA)});
    m_pTagB->setStringList({label(SLOT_B, m_pDatasetB)});

    const VXSRECT column = m_pView->getImageLayoutRect();
    imagemath::ColumnLayout layout;
    layout.left = column.left;
    layout.top = column.top;
    layout.width = m_pView->getThumbnailImageWidth();
    layout.height = m_pView->getThumbnailImageHeight();
    m_pView->setImageBorder(imagemath::ColumnLayout::borderFor(layout.height));
    layout.border = m_pView->getImageBorder();

    const auto placeUnder = [&](CVXSTextTag &tag, float top) {
        const QSizeF size = sizeInObjectUnits(*m_pView, tag);
        tag.showBorder(false);
        tag.show(true);
        tag.setPosition(layout.tagLeft(size.width()), double(top));
    };
    placeUnder(*m_pTagA, layout.belowFirst());
    placeUnder(*m_pTagB, layout.belowSecond());

    if (m_bCannotCombine || !m_messages.isEmpty()) {
        m_pResultTag->setStringList(m_messages);
        const QSizeF size = sizeInObjectUnits(*m_pView, *m_pResultTag);
        m_pResultTag->show(true);
        m_pResultTag->setPosition(layout.tagLeft(size.width()), layout.centredOnThird(size.height()));
    }

    for (int slot = 0; slot < SLOT_COUNT; ++slot)
        m_pView->setImageAt(viewImage(slot), false, slot, QString(), 0);
    m_pView->setEmptyText(SLOT_A, m_emptyBecause.a);
    m_pView->setEmptyText(SLOT_B, m_emptyBecause.b);
    m_pView->setEmptyText(SLOT_RESULT, m_emptyBecause.result);
    m_pView->setNotes(m_notes);
}

void CVXSImageMathWnd::copyToClipboard()
{
    QImage picture;
    if (m_pView)
        m_pView->getImage(picture);
    QApplication::clipboard()->setImage(picture, QClipboard::Clipboard);
}
