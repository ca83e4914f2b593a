// SPDX-License-Identifier: MIT
#include "display/KText.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

#include <QMenu>

namespace {

const QString NO_ROI = QStringLiteral("_none_");

QStringList roiNamesOf(const CVXSDataset *dataset)
{
    if (!dataset || !(dataset->isLuminescentDataset() || dataset->isFluorescentDataset()))
        return {};
    QStringList background;
    QStringList measurement;
    dataset->roiManager()->getAllBkgROINames(&background);
    dataset->roiManager()->getAllMeasurementROINamesExceptGridROI(&measurement);
    return background + measurement;
}

bool isClickOf(const CVXSDataset *dataset, const QString &title)
{
    return dataset && title.toLower() == dataset->getClickNumber().toLower();
}

QString offeredText(const QAction &action)
{
    return action.data().isValid() ? action.data().toString() : action.text();
}

} // namespace

// Return and the loss of focus after it both arrive here; the second finds k as it is and does nothing.
void CVXSImageMathWnd::onChangeValueK()
{
    const float typed = ktext::read(m_pKLineEdit->text());
    if (typed == m_kValue)
        return;
    const QString text = ktext::format(ktext::clamped(typed, m_kMinimum, m_kMaximum));
    m_pKLineEdit->setText(text);
    m_kValue = ktext::read(text);
    m_roiOfK.reset();
    CVXUtilityFns::setkValue(text);
    CVXUtilityFns::setkOrigin(m_sequenceID);
    calculateResultImage();
}

void CVXSImageMathWnd::compactExponent(QString &text)
{
    ktext::compactExponent(text);
}

void CVXSImageMathWnd::onShowROIListPopupMenu()
{
    if (!m_pListBoxA->currentItem() || !m_pListBoxB->currentItem())
        return;
    // The submenus of the last time are the menu's children and would stay.
    qDeleteAll(m_pROIMenu->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly));
    m_pROIMenu->clear();
    const QString textA = currentClickA();
    const QString textB = currentClickB();
    if (!textA.isEmpty())
        addROISubmenu(textA);
    if (!textA.contains(textB))
        addROISubmenu(textB);
}

void CVXSImageMathWnd::addROISubmenu(const QString &clickNumber)
{
    QStringList names = roiNamesOf(CVXSDataset::getDataset(clickNumber));
    if (names.isEmpty())
        names.append(NO_ROI);
    QMenu *submenu = m_pROIMenu->addMenu(clickNumber);
    // Read back from here: a desktop's theme may put an "&" into the texts.
    submenu->menuAction()->setData(clickNumber);
    for (const QString &name : qAsConst(names))
        submenu->addAction(name)->setData(name);
    connect(submenu, SIGNAL(triggered(QAction *)), this, SLOT(onSelectROIFromMenu(QAction *)));
}

void CVXSImageMathWnd::onSelectROIFromMenu(QAction *pAction)
{
    const QString roiName = offeredText(*pAction);
    if (roiName.toLower() == NO_ROI) {
        // Only the field says 1: the computation goes on with the k it has.
        m_pKLineEdit->setText(QString::number(1.0));
        calculateResultImage();
        imagemath::logLine(QStringLiteral("There was no ROI selected to compute 'k' - setting 'k' to '1.0'"),
                           ELOG_WARNING);
        return;
    }
    const auto *submenu = qobject_cast<const QMenu *>(pAction->parentWidget());
    const QString title = submenu ? offeredText(*submenu->menuAction()) : QString();
    QString datasetText;
    QString roiArgument;
    if (isClickOf(m_pDatasetA, title)) {
        datasetText = currentClickA();
        roiArgument = roiName;
    }
    if (isClickOf(m_pDatasetB, title)) {
        datasetText = currentClickB();
        roiArgument = roiName;
    }
    computeKFromROI(datasetText, roiArgument);
}
