// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/roi/RoiText.h"
#include "math/ToolLog.h"
#include "window/CVXSImageMathWnd.h"

#include <cmath>

namespace {

constexpr int MAX_CORNERS = 5000;

/// The record of that dataset's ROI, or null.
const CRoiMeasInfo *recordOf(const QString &clickNumber, const QString &roiName)
{
    const auto *manager = CRoiMeasurementManager::getRoiMeasurementManager();
    const RoiMeasDisplayEntry *entry = manager->findMeasInfoForId(clickNumber, roiName);
    return entry ? manager->getRoiMeasInfoList().value(entry->index) : nullptr;
}

double valueOf(const CRoiMeasInfo &record, tag_edisplayunit unit)
{
    const bool isCalibrated = unit == EUNIT_RADIANCE || unit == EUNIT_RADIANT_EFFICIENCY;
    return isCalibrated ? record.calibratedROIStatistic() : record.primaryROIStatistic();
}

/// An outline of very many corners would make a record that no reader takes for one: its box is told then.
QString shapeOf(const CVXSDataset &dataset, const QString &roiName)
{
    CROIBase *roi = nullptr;
    if (!dataset.roiManager()->getROI(roiName, roi))
        return QString();
    if (roi->outline().size() <= MAX_CORNERS)
        return roitext::write(*roi);
    return QStringLiteral("outline of %1 corners in a %2")
        .arg(roi->outline().size())
        .arg(roitext::write(CROIBase(EROI_RECTANGLE, roi->kind(), roi->boundingBox())));
}

} // namespace

void CVXSImageMathWnd::computeKFromROI(const QString &datasetText, const QString &roiName)
{
    if (!m_pListBoxA->item(m_pListBoxA->currentRow()) || !m_pListBoxB->item(m_pListBoxB->currentRow()))
        return;
    if (roiName == QLatin1String("_none_")) {
        setKFromROI(1.0f);
        return;
    }
    const bool isSourceA = currentClickA().contains(datasetText);
    const QString sourceText = isSourceA ? currentClickA() : currentClickB();
    const QString targetText = isSourceA ? currentClickB() : currentClickA();
    CVXSDataset *source = CVXSDataset::getDataset(sourceText);
    CVXSDataset *target = CVXSDataset::getDataset(targetText);
    if (!source || !target)
        return;
    const bool wasSourceModified = source->isModified();
    const bool wasTargetModified = target->isModified();
    const tag_edisplayunit unit = source->getUnit();
    const tag_edisplayunit targetUnit = target->getUnit();

    const QString targetROI = measureInBoth(*source, *target, roiName);
    const CRoiMeasInfo *sourceRecord = recordOf(sourceText, roiName);
    const CRoiMeasInfo *targetRecord = recordOf(targetText, targetROI);
    if (!sourceRecord || !targetRecord)
        return; // what was pasted and changed stays, to be looked at
    const double sourceValue = valueOf(*sourceRecord, unit);
    const double targetValue = valueOf(*targetRecord, unit);
    const imagemath::RoiOfK::Total sourceTotal{sourceText, sourceValue, sourceRecord->saturatedPixels};
    const imagemath::RoiOfK::Total targetTotal{targetText, targetValue, targetRecord->saturatedPixels};
    // A ratio has no total, but two of them can be compared.
    const bool areAlike = sourceRecord->unit == targetRecord->unit;
    const bool areMeasured = areAlike && !std::isnan(sourceValue) && !std::isnan(targetValue);

    if (m_bPastedROI) {
        target->roiManager()->selectLastCreatedROI();
        target->roiManager()->removeROIObject();
        m_bPastedROI = false;
    }
    source->setModified(wasSourceModified);
    source->setUnit(unit);
    target->setModified(wasTargetModified);
    target->setUnit(targetUnit);

    if (!areMeasured) {
        imagemath::logLine(QStringLiteral("k stays as it is: \"%1\" has no total in %2 or %3")
                               .arg(roiName, sourceText, targetText));
        return;
    }
    // Value in A over value in B either way; only the target's is looked at.
    if (targetValue == 0.0) {
        setKFromROI(1.0f);
        return;
    }
    imagemath::RoiOfK roi;
    roi.name = roiName;
    roi.shape = shapeOf(*source, roiName);
    roi.clickNumber = sourceText;
    roi.unit = unitKey(unit);
    roi.inA = isSourceA ? sourceTotal : targetTotal;
    roi.inB = isSourceA ? targetTotal : sourceTotal;
    setKFromROI(roi.k(), roi);
}

// Copies the source's ROI into the target and measures both in the source's unit; one dataset's ROI is taken
// as it was measured last. Returns the name that the ROI has in the target.
QString CVXSImageMathWnd::measureInBoth(CVXSDataset &source, CVXSDataset &target, const QString &roiName)
{
    CROIManager *rois = source.roiManager();
    CROIBase *roi = nullptr;
    rois->getROI(roiName, roi);
    m_bPastedROI = false;
    rois->selectROI(roi, false);
    tagROIInfo info;
    rois->getSelectedROIProps(&info);
    rois->setMeasurementInvalid(roi);
    if (&source == &target)
        return roiName;

    m_bPastedROI = true;
    rois->copyROIObject();
    target.roiManager()->pasteROIObject(false);
    const tag_edisplayunit unit = source.getUnit();
    source.setUnit(unit);
    target.setUnit(unit);
    source.MeasureROIAndMakeMeasRecords(true);
    target.MeasureROIAndMakeMeasRecords(true);
    target.roiManager()->selectLastCreatedROI();
    tagROIInfo pasted; // the copy may have another name
    target.roiManager()->getSelectedROIProps(&pasted);
    return pasted.name;
}

void CVXSImageMathWnd::setKFromROI(float k, const std::optional<imagemath::RoiOfK> &roi)
{
    m_kValue = k;
    m_roiOfK = roi;
    m_pKLineEdit->setText(QString::number(double(m_kValue)));
    calculateResultImage();
}
