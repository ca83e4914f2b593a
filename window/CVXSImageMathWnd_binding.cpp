// SPDX-License-Identifier: MIT
#include "display/KText.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/PlainToolTip.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

#include <QMessageBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int IMAGE_BORDER = 10;

// What an item of the photograph choice stands for, whatever it is called.
const QString PHOTOGRAPH_OF_A = QStringLiteral("A");
const QString PHOTOGRAPH_OF_B = QStringLiteral("B");

// Makes the item with that text current, or the one in that row, or the last one.
void reselect(QListWidget *list, int row, const QString &text)
{
    const QList<QListWidgetItem *> found = list->findItems(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty())
        list->setCurrentItem(found.first());
    else
        list->setCurrentRow(qMin(row, list->count() - 1));
}

QString currentText(const QListWidget *list)
{
    const QListWidgetItem *item = list->item(list->currentRow());
    return item ? item->text() : QString();
}

// The texts are click numbers alone; which file was imported as which is in the tooltips.
void showSourceFiles(QListWidget *list, const CVXSSequenceDataset &sequence)
{
    for (int row = 0; row < list->count(); ++row) {
        QListWidgetItem *item = list->item(row);
        const CVXSDataset *dataset = sequence.getDataset(item->text());
        const QString file =
            dataset ? clickinfo::sourceFileOf(*dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT)
                    : QString();
        item->setToolTip(plainToolTip(file));
    }
}

} // namespace

bool CVXSImageMathWnd::bindToSequence(const QString &sequenceID)
{
    m_sequenceID = sequenceID;
    m_pSeqTitle->setText(QStringLiteral("<b>") + tr("Sequence: ") + sequenceID + QStringLiteral("</b>"));
    m_pSeqTitle->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    m_pSequence = CVXSSequenceDataset::getSequenceDataset(sequenceID);
    if (m_pSequence && m_pSequence->getSequenceInfoPath().isEmpty() && !askToSaveSequence())
        return false;

    if (m_pSequence) {
        connect(m_pSequence, SIGNAL(updateOnChangeSequence()), this, SLOT(updateImageMathWindow()));
        if (auto *sequenceWindow = CVXSSequenceWindow::getSequenceWindow(m_pSequence))
            connect(sequenceWindow, SIGNAL(signalUpdateMeasurmentsCombobox(QString)), this,
                    SLOT(updateImageMathWindow()));
    }

    const QString k = CVXUtilityFns::getkValue();
    m_pKLineEdit->setText(k);
    m_kValue = ktext::read(k);
    m_roiOfK.reset();
    tellOriginOfK(k);

    fillListsAtBinding();
    connect(m_pListBoxA, SIGNAL(itemSelectionChanged()), this, SLOT(onSelectClickNumberFromList()));
    connect(m_pListBoxB, SIGNAL(itemSelectionChanged()), this, SLOT(onSelectClickNumberFromList()));
    // Selecting rows runs the first computation, before there is a view. What it finds is shown later.
    m_pListBoxA->setCurrentRow(0);
    m_pListBoxB->setCurrentRow(1);
    m_pOperationCB->setCurrentIndex(1);
    m_pWithPhotoChkBox->setChecked(true);
    updatePhotographChoice();

    createView();
    placeColorbars();
    m_pView->addTextTag(m_pResultTag.get());
    m_pView->addTextTag(m_pTagA.get());
    m_pView->addTextTag(m_pTagB.get());
    return true;
}

// A k of another study is easily taken for this one's.
void CVXSImageMathWnd::tellOriginOfK(const QString &k) const
{
    const QString origin = CVXUtilityFns::getkOrigin();
    if (!origin.isEmpty() && origin != m_sequenceID)
        imagemath::tellUser(tr("k = %1 was typed in the sequence %2 and stands here now. Type another one if "
                               "it does not fit.")
                                .arg(k, origin));
}

bool CVXSImageMathWnd::askToSaveSequence()
{
    const int answer = CVXSMessageBox::warning(
        nullptr, CVXUtilityFns::getAppName(),
        tr("This sequence need to be saved to the disk before using 'Image Math Tool' on it.\n"
           "Do you want to save and continue?"),
        QMessageBox::Yes, QMessageBox::No, 0);
    if (answer == QMessageBox::No)
        return false;
    if (auto *sequenceWindow = CVXSSequenceWindow::getSequenceWindow(m_pSequence)) {
        if (sequenceWindow->saveSequence() != ESTATUS_SUCCESS)
            return false;
        m_bSavedForImageMath = true;
    }
    return true;
}

void CVXSImageMathWnd::fillListsAtBinding()
{
    m_pListBoxA->clear();
    m_pListBoxB->clear();
    if (!m_pSequence)
        return;
    const QStringList clickNumbers = m_pSequence->getClickNumbers();
    for (int i = 0; i < clickNumbers.size(); ++i) {
        const CVXSDataset *dataset = (*m_pSequence)[unsigned(i)];
        if (dataset && (dataset->isLuminescentDataset() || dataset->isFluorescentDataset())) {
            m_pListBoxA->addItem(clickNumbers.at(i));
            m_pListBoxB->addItem(clickNumbers.at(i));
        }
    }
    for (QListWidget *list : {m_pListBoxA, m_pListBoxB})
        showSourceFiles(list, *m_pSequence);
}

void CVXSImageMathWnd::createView()
{
    m_pView = new CVXSMultiImageView(m_pGLFrame, "Image Math View");
    m_pView->setImagesSameSize(false);
    m_pView->setImageBorder(IMAGE_BORDER);
    for (int slot = 0; slot < SLOT_COUNT; ++slot)
        m_pView->addImage(nullptr, false, QString(), 0);

    auto *layout = new QVBoxLayout(m_pGLFrame);
    layout->setObjectName(QStringLiteral("ImageLayout"));
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(m_pView, 1);

    m_pView->setLayout(ELAYOUT_THREE_ROWS);
}

void CVXSImageMathWnd::placeColorbars()
{
    const VXSRECT strip = m_pView->getColorBarRect();
    const auto place = [&strip](SColorbar &bar, float from, float height) {
        bar.rect.left = strip.left;
        bar.rect.right = strip.right;
        bar.rect.top = strip.top + from * strip.height();
        bar.rect.bottom = bar.rect.top + height * strip.height();
    };
    const tag_simageadjust adjust = m_pSequence ? m_pSequence->getImageAdjust() : tag_simageadjust();

    place(*m_pColorbarAB, 0.05f, 0.567f);
    m_pColorbarAB->palette.setColorTableType(adjust.colorTable, 0.0f, 1.0f);
    m_pColorbarAB->palette.setReversed(adjust.reverse ? 1 : 0);
    m_pColorbarAB->palette.setLogScale(adjust.logScale ? 1 : 0);
    m_pView->addColorbar(m_pColorbarAB.get());

    // The result's table and scale come from its own limits, not from here.
    place(*m_pColorbarResult, 0.717f, 0.233f);
    m_pColorbarAB->palette.setColorTableType(adjust.colorTable, 0.0f, 1.0f);
    m_pColorbarResult->palette.setReversed(adjust.reverse ? 1 : 0);
    m_pView->addColorbar(m_pColorbarResult.get());
}

bool CVXSImageMathWnd::clickHasImage(const QString &clickNumber, tag_eimagetype type) const
{
    const CVXSDataset *dataset = m_pSequence ? m_pSequence->getDataset(clickNumber) : nullptr;
    return dataset && dataset->getImageList() && dataset->getImageList()->isPresent(type, false);
}

void CVXSImageMathWnd::updatePhotographChoice()
{
    if (!m_pListBoxA->currentItem() || !m_pListBoxB->currentItem())
        return;
    const bool inA = clickHasImage(currentClickA(), EIMAGE_PHOTOGRAPH);
    const bool inB = clickHasImage(currentClickB(), EIMAGE_PHOTOGRAPH);
    m_pWithPhotoChkBox->setEnabled(inA || inB);
    m_pPhotoFromCB->setEnabled(inA || inB);
    if (!inA && !inB)
        return;
    const QString chosen = m_pPhotoFromCB->currentText();
    m_pPhotoFromCB->clear();
    if (inA)
        m_pPhotoFromCB->addItem(tr("A"), PHOTOGRAPH_OF_A);
    if (inB)
        m_pPhotoFromCB->addItem(tr("B"), PHOTOGRAPH_OF_B);
    // What the user chose stays as long as it is offered; otherwise the first is taken.
    m_pPhotoFromCB->setCurrentIndex(std::max(0, m_pPhotoFromCB->findText(chosen)));
}

bool CVXSImageMathWnd::isPhotoFromA() const
{
    const QVariant which = m_pPhotoFromCB->currentData();
    return (which.isValid() ? which.toString() : m_pPhotoFromCB->currentText()) == PHOTOGRAPH_OF_A;
}

void CVXSImageMathWnd::retranslatePhotographChoice()
{
    for (int i = 0; i < m_pPhotoFromCB->count(); ++i)
        m_pPhotoFromCB->setItemText(i, m_pPhotoFromCB->itemData(i) == PHOTOGRAPH_OF_A ? tr("A") : tr("B"));
}

void CVXSImageMathWnd::onSelectClickNumberFromList()
{
    if (m_pListBoxA->currentRow() < 0 || m_pListBoxB->currentRow() < 0)
        return;
    const QString clickA = currentClickA();
    const QString clickB = currentClickB();
    if (!bothAssociated(clickA, clickB)) {
        showInvalidSelection();
        return;
    }
    m_pDisplayBtn->setEnabled(true);
    m_pDatasetA = m_pSequence->getDataset(clickA);
    m_pDatasetB = m_pSequence->getDataset(clickB);
    if (m_pDatasetA && m_pDatasetB) {
        updatePhotographChoice();
        calculateResultImage();
    }
}

void CVXSImageMathWnd::updateImageMathWindow()
{
    m_bMissedUpdate = !isVisible();
    if (!isVisible() || m_pListBoxA->count() == 0 || m_pListBoxB->count() == 0 || !m_pSequence)
        return;
    struct Remembered
    {
        QListWidget *list;
        int row;
        QString text;
    };
    const Remembered remembered[] = {{m_pListBoxA, m_pListBoxA->currentRow(), currentText(m_pListBoxA)},
                                     {m_pListBoxB, m_pListBoxB->currentRow(), currentText(m_pListBoxB)}};
    QStringList clickNumbers;
    const QList<CVXSDataset *> datasets = m_pSequence->getDatasets();
    for (const CVXSDataset *dataset : datasets)
        clickNumbers.append(dataset->getClickNumber());

    {
        // What the lists tell while they are filled is of a selection that is just being cleared.
        const QSignalBlocker quietA(m_pListBoxA);
        const QSignalBlocker quietB(m_pListBoxB);
        for (const Remembered &r : remembered)
            r.list->clear();
        for (const Remembered &r : remembered)
            r.list->addItems(clickNumbers);
        for (const Remembered &r : remembered)
            showSourceFiles(r.list, *m_pSequence);
        for (const Remembered &r : remembered)
            reselect(r.list, r.row, r.text);
    }
    onSelectClickNumberFromList();
}

QString CVXSImageMathWnd::currentClickA() const
{
    return currentText(m_pListBoxA);
}

QString CVXSImageMathWnd::currentClickB() const
{
    return currentText(m_pListBoxB);
}
