// SPDX-License-Identifier: MIT
#include "display/DisplayUnitNames.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "math/ToolLog.h"
#include "result/ResultClickInfo.h"
#include "result/ResultFolderLock.h"
#include "window/CVXSImageMathWnd.h"

#include <memory>
#include <QFileInfo>

using namespace clickinfo;
using namespace resultclickinfo;

namespace {

bool isSection(const QString &key, QLatin1String wanted)
{
    return key == wanted;
}

/// "/data/click/ClickInfo.txt" gives "/data/click/".
QString folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString fileIn(const QString &folder, QLatin1String name)
{
    return folder + name;
}

/// A section without pairs; that of the click number is named by it, others as the source is.
std::unique_ptr<CPLSection> newSection(const QString &key, const CPLSection *source,
                                       const QString &clickNumber)
{
    auto section = std::make_unique<CPLSection>();
    section->setSectionKey(key);
    if (isSection(key, SECTION_CLICK_NUMBER))
        section->setSectionName(clickNumber);
    else
        copyName(*section, source);
    return section;
}

/// An operand's image file: of the usual name or, where there is none, of the name that the operand gives it.
QString operandFile(const QString &clickInfoPath, QLatin1String usualName, const CVXSDataset *dataset,
                    tag_eimagetype type)
{
    const QString usual = fileIn(folderOf(clickInfoPath), usualName);
    if (!dataset || QFileInfo::exists(usual))
        return usual;
    return folderOf(clickInfoPath) + dataset->getImageFileName(type);
}

/// Reads another ClickInfo into `info` and, when that succeeds, takes its section as the source.
ESTATUS sourceFrom(const QString &path, const QString &section, CPLClickInfo &info, const CPLSection *&source)
{
    const ESTATUS status = info.loadClickInfo(path, false);
    if (status == ESTATUS_SUCCESS)
        source = info[section];
    return status;
}

} // namespace

bool CVXSImageMathWnd::isPhotoEnabled() const
{
    return m_pPhotoFromCB->isEnabled() && m_pWithPhotoChkBox->isChecked();
}

CVXSDataset *CVXSImageMathWnd::photoDataset() const
{
    return m_pPhotoFromCB->currentText() == QLatin1String("A") ? m_pDatasetA : m_pDatasetB;
}

SResultFacts CVXSImageMathWnd::resultFacts() const
{
    SResultFacts facts;
    facts.versionText = versionText(CVXPreference::getAppVersion());
    facts.operation = m_pOperationCB->currentText();
    facts.k = m_pKLineEdit->text();
    facts.clickA = currentClickA();
    facts.clickB = currentClickB();
    if (isPhotoEnabled())
        facts.clickPhotograph =
            m_pPhotoFromCB->currentText() == QLatin1String("A") ? facts.clickA : facts.clickB;
    if (m_pDatasetA) {
        facts.isBackgroundSubtracted = m_pDatasetA->isLuminBackgroundSubtracted();
        facts.isFlatFieldCorrected = m_pDatasetA->isLuminFlatFieldCorrected();
        facts.isFluorescenceBackgroundSubtracted = m_pDatasetA->isLuminFLBkgSubtracted();
    }
    facts.binning = int(m_resultImage.binningFactor());
    return facts;
}

SDisplayFacts CVXSImageMathWnd::displayFacts()
{
    SDisplayFacts facts;
    facts.unitName = displayUnitName(m_pSequence->getActiveUnit());
    facts.colorTable = QString::fromLatin1(CILPalette::tableName(m_pSequence->getImageAdjust().colorTable));
    facts.hasOperandA = m_pDatasetA;
    if (m_pDatasetA) {
        facts.reversed = m_pDatasetA->getToolInfo().reversed;
        facts.logarithmic = m_pDatasetA->getToolInfo().logarithmic;
    }
    if (m_pFullResultRadioBtn->isChecked()) {
        double factor = 1.0;
        if (facts.unitName == displayUnitName(EUNIT_RADIANCE))
            factor = VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, m_pDatasetA,
                                                          displayUnitName(EUNIT_COUNTS),
                                                          displayUnitName(EUNIT_RADIANCE));
        // The range is asked for and not written: what is written is what the person sees.
        double minimum = 0.0;
        double maximum = 0.0;
        VX_LuminImageMinMax(&m_resultImage, &minimum, &maximum, facts.unitName, factor, VX_SATURATED_COUNTS,
                            VX_RANGE_BINS);
    }
    const CILPalette palette = m_resultImage.getPalette();
    facts.colorMin = palette.getImageMin();
    facts.colorMax = palette.getImageMax();
    facts.rawMin = double(m_resultImage.getMin());
    facts.rawMax = double(m_resultImage.getMax());
    const CVXSDataset *photographed = photoDataset();
    facts.hasPhotograph = isPhotoEnabled() && photographed;
    if (facts.hasPhotograph) {
        facts.brightness = photographed->getToolInfo().brightness;
        facts.gamma = double(photographed->getToolInfo().gamma);
    }
    return facts;
}

ESTATUS CVXSImageMathWnd::writeResultClickInfo(const QString &pathA, const QString &pathB)
{
    ESTATUS status = checkImagingAngles(pathA, pathB);
    if (status != ESTATUS_SUCCESS)
        return status;
    CPLClickInfo infoA;
    status = infoA.loadClickInfo(pathA, false);
    if (status != ESTATUS_SUCCESS)
        return status;
    const SResultFacts facts = resultFacts();
    const SDisplayFacts display = displayFacts();
    CPLClickInfo infoB;
    CPLClickInfo result;
    for (const QString &key : sectionKeys()) {
        if (isSection(key, SECTION_PHOTOGRAPH) && !isPhotoEnabled())
            continue;
        const CPLSection *source = infoA[key];
        m_resultClickNumber = makeResultClickNumber(facts.clickA);
        if (m_resultClickNumber.isNull())
            return ESTATUS_RESULT_FOLDER;
        if (m_resultLock && !m_resultLock->isTaken() && !reserveResultFolder(facts.clickA))
            return ESTATUS_RESULT_FOLDER;
        auto section = newSection(key, source, m_resultClickNumber);

        if (isSection(key, SECTION_CLICK_NUMBER)) {
            fillClickNumber(*section, source, facts);
        } else if (isSection(key, SECTION_LUMINESCENT)) {
            fillLuminescent(*section, source, facts);
        } else if (isSection(key, SECTION_PHOTOGRAPH)) {
            if (m_pPhotoFromCB->currentText() == QLatin1String("B"))
                sourceFrom(pathB, key, infoB, source);
            copyName(*section, source);
            fillPhotograph(*section, source);
        } else if (isSection(key, SECTION_GRAPH_CONTROLS)) {
            fillGraphControls(*section, source, display);
        } else {
            copyPairs(*section, source);
        }
        result.addSection(section.release());
    }
    if (prepareResultFolder() != ESTATUS_SUCCESS)
        return ESTATUS_RESULT_FOLDER;
    status = result.saveClickInfo(fileIn(m_resultFolderPath, FILE_CLICK_INFO));
    if (status == ESTATUS_SUCCESS)
        writeResultImages(pathA, pathB);
    return status;
}

// What cannot be copied or written is missing in the result folder; the host sees that when it loads it.
void CVXSImageMathWnd::writeResultImages(const QString &pathA, const QString &pathB)
{
    if (!pathA.isEmpty())
        copyImageFile(operandFile(pathA, FILE_LUMINESCENT, m_pDatasetA, EIMAGE_LUMINESCENT),
                      fileIn(m_resultFolderPath, FILE_LUMINESCENT_A));
    if (!pathB.isEmpty())
        copyImageFile(operandFile(pathB, FILE_LUMINESCENT, m_pDatasetB, EIMAGE_LUMINESCENT),
                      fileIn(m_resultFolderPath, FILE_LUMINESCENT_B));

    m_resultImage.setDescription(describeResult(folderOf(pathA), folderOf(pathB)));
    const QString path = fileIn(m_resultFolderPath, FILE_LUMINESCENT);
    if (m_resultImage.saveAsTIFF(path.toLatin1().constData()) != 0)
        imagemath::logLine(QString::fromStdString(CILImage::lastError()));

    if (!isPhotoEnabled())
        return;
    const QString photographed = m_pPhotoFromCB->currentText();
    const QString from = photographed == QLatin1String("A")   ? pathA
                         : photographed == QLatin1String("B") ? pathB
                                                              : QString();
    if (!from.isEmpty())
        copyImageFile(operandFile(from, FILE_PHOTOGRAPH, photoDataset(), EIMAGE_PHOTOGRAPH),
                      fileIn(m_resultFolderPath, FILE_PHOTOGRAPH));
}

std::string CVXSImageMathWnd::describeResult(const QString &folderA, const QString &folderB) const
{
    if (m_resultRecord.isEmpty())
        return std::string();
    imagemath::ResultRecord record = m_resultRecord;
    record.version = versionText(CVXPreference::getAppVersion());
    if (m_pDatasetA)
        record.a.files = imagemath::imageFilesOf(*m_pDatasetA, folderA);
    if (m_pDatasetB)
        record.b.files = imagemath::imageFilesOf(*m_pDatasetB, folderB);
    if (isPhotoEnabled()) {
        const bool isFromA = m_pPhotoFromCB->currentText() == QLatin1String("A");
        const QString path =
            operandFile(isFromA ? folderA : folderB, FILE_PHOTOGRAPH, photoDataset(), EIMAGE_PHOTOGRAPH);
        record.photograph = {isFromA ? record.a.clickNumber : record.b.clickNumber,
                             {QFileInfo(path).fileName(), imagemath::sha256OfFile(path)}};
    }
    if (!record.maskPhotograph.clickNumber.isEmpty() && m_pDatasetB) {
        const QString name = m_pDatasetB->getImageFileName(EIMAGE_PHOTOGRAPH);
        for (const imagemath::FileRecord &file : qAsConst(record.b.files)) {
            if (file.name == name)
                record.maskPhotograph.file = file;
        }
    }
    return imagemath::toJson(record).toStdString();
}

ESTATUS CVXSImageMathWnd::writeAnalyzedClickInfo(const QString &analyzedPathA, const QString &analyzedPathB)
{
    CPLClickInfo analyzedA;
    analyzedA.loadClickInfo(analyzedPathA, false);
    const SResultFacts facts = resultFacts();
    const QString ownClickInfo = fileIn(m_resultFolderPath, FILE_CLICK_INFO);
    // Both operands' sections name B's unit.
    const QString unitOfB = m_pDatasetB ? displayUnitName(m_pDatasetB->getUnit()) : QString();

    ESTATUS lastRead = ESTATUS_SUCCESS;
    CPLClickInfo result;
    for (const QString &key : analyzedSectionKeys()) {
        if (isSection(key, SECTION_PHOTOGRAPH) && !isPhotoEnabled())
            continue;
        const CPLSection *source = analyzedA[key];
        CPLClickInfo other; // outlives the source that points into it
        auto section = newSection(key, source, m_resultClickNumber);

        if (isSection(key, SECTION_CLICK_NUMBER)) {
            fillAnalyzedClickNumber(*section, source, facts);
        } else if (isSection(key, SECTION_PHOTOGRAPH) || isSection(key, SECTION_LUMINESCENT)) {
            lastRead = sourceFrom(ownClickInfo, key, other, source);
            copyName(*section, source);
            copyPairs(*section, source);
        } else if (isSection(key, SECTION_LUMINESCENT_A) || isSection(key, SECTION_LUMINESCENT_B)) {
            const bool isA = isSection(key, SECTION_LUMINESCENT_A);
            section->setSectionName(isA ? FILE_LUMINESCENT_A : FILE_LUMINESCENT_B);
            const QString folder = folderOf(isA ? analyzedPathA : analyzedPathB);
            lastRead = other.loadClickInfo(fileIn(folder, FILE_CLICK_INFO), false);
            const CPLSection *operand = other[SECTION_LUMINESCENT];
            copyPairs(*section, operand ? operand : source);
            section->addKeyValue(KEY_INTENSITY_CALIBRATION, unitOfB);
        } else if (isSection(key, SECTION_GRAPH_CONTROLS)) {
            lastRead = other.loadClickInfo(ownClickInfo, false);
            const CPLSection *own = other[key];
            copyPairs(*section, own ? own : source);
        } else if (!isSection(key, SECTION_ROIS)) {
            copyPairs(*section, source);
        }
        result.addSection(section.release());
    }
    // The host loads no dataset whose analyzed file is missing.
    result.saveClickInfo(fileIn(m_resultFolderPath, FILE_ANALYZED_CLICK_INFO));
    return lastRead;
}
