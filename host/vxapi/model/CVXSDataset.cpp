// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxutils/CVXSLog.h"

#include <QFileInfo>
#include <QHash>

using namespace clickinfo;

namespace {

// Never destroyed: datasets may die after the objects of this file do.
QHash<QString, CVXSDataset *> &registry()
{
    static auto *datasets = new QHash<QString, CVXSDataset *>;
    return *datasets;
}

/// What image operations have to say goes to the host's log.
bool connectImageMessages()
{
    CILImage::setMessageHandler(
        [](int level, const std::string &text) { vxLog(ELOGLEVEL(level), QString::fromStdString(text)); });
    return true;
}

const bool s_imageMessagesConnected = connectImageMessages();

} // namespace

CVXSDataset::CVXSDataset(const QString &clickNumber, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>(clickNumber))
{
    Q_UNUSED(s_imageMessagesConnected)
    ensureSection(&d->clickInfo, SECTION_CLICK_NUMBER)->setSectionName(clickNumber);
}

CVXSDataset::~CVXSDataset()
{
    const bool isRegistered = registry().value(d->clickNumber) == this;
    const bool leavesRecords = isRegistered || (d->hasRecords && ownsRecords());
    if (isRegistered)
        registry().remove(d->clickNumber);
    if (leavesRecords)
        CRoiMeasurementManager::getRoiMeasurementManager()->removeDataset(d->clickNumber);
}

bool CVXSDataset::ownsRecords() const
{
    const CVXSDataset *registered = registry().value(d->clickNumber);
    return !registered || registered == this;
}

// --- the open datasets ---

CVXSDataset *CVXSDataset::getDataset(const QString &clickNumber)
{
    CVXSDataset *dataset = getOpenDataset(clickNumber);
    return dataset ? dataset : StoredDatasets::instance().find(clickNumber);
}

CVXSDataset *CVXSDataset::getOpenDataset(const QString &clickNumber)
{
    return registry().value(clickNumber);
}

bool CVXSDataset::registerDataset()
{
    CVXSDataset *&entry = registry()[d->clickNumber];
    if (entry)
        return entry == this;
    entry = this;
    StoredDatasets::instance().giveWayTo(this);
    // Records that another object of this click number left are of its ROIs.
    if (!d->hasRecords)
        CRoiMeasurementManager::getRoiMeasurementManager()->removeDataset(d->clickNumber);
    return true;
}

// --- identity ---

QString CVXSDataset::getClickNumber() const
{
    return d->clickNumber;
}

QString CVXSDataset::getFolderPath() const
{
    return d->folder;
}

void CVXSDataset::setFolderPath(const QString &path)
{
    d->folder = datasetfiles::folderPath(path);
    d->isOnDisk = !d->folder.isEmpty() && QFileInfo(d->folder + FILE_CLICK_INFO).isFile();
}

int CVXSDataset::getDatasetType() const
{
    if (!d->isOnDisk)
        return EDATASET_IN_MEMORY;
    return d->isResult() ? EDATASET_RESULT : EDATASET_ACQUIRED;
}

bool CVXSDataset::isPartOfSequence() const
{
    return d->sequence;
}

CVXSSequenceDataset *CVXSDataset::getSequenceDataset() const
{
    return d->sequence;
}

CPLClickInfo *CVXSDataset::getClickInfo() const
{
    return &d->clickInfo;
}

bool CVXSDataset::isModified() const
{
    return d->isModified;
}

void CVXSDataset::setModified(bool modified)
{
    d->isModified = modified;
}

void CVXSDataset::setImageMathToBeSaved(bool toBeSaved)
{
    d->isImageMathToBeSaved = toBeSaved;
}

bool CVXSDataset::isImageMathToBeSaved() const
{
    return d->isImageMathToBeSaved;
}

QString CVXSDataset::lastError() const
{
    return d->lastError;
}

// --- kind of acquisition ---

bool CVXSDataset::isLuminescentDataset() const
{
    return d->kind() == KIND_LUMINESCENT;
}

bool CVXSDataset::isFluorescentDataset() const
{
    return d->kind() == KIND_FLUORESCENT || isTransFluorescentDataset() || isTransIlluminationDataset();
}

bool CVXSDataset::isTransFluorescentDataset() const
{
    return d->kind() == KIND_TRANSFLUORESCENT;
}

bool CVXSDataset::isTransIlluminationDataset() const
{
    return d->kind() == KIND_TRANSILLUMINATION;
}

bool CVXSDataset::Private::hasSection(QLatin1String section) const
{
    return clickInfo[section] != nullptr;
}

tag_edisplayunit CVXSDataset::Private::unitlessValues() const
{
    if (rules == ECALIBRATION_1_0)
        return EUNIT_COUNT;
    switch (resultValuesOf(clickInfo)) {
    case ResultValues::Product:
        return EUNIT_PRODUCT;
    case ResultValues::Ratio:
        return EUNIT_RATIO;
    case ResultValues::InUnit:
        break;
    }
    return EUNIT_COUNT;
}

QString CVXSDataset::Private::kind() const
{
    if (!hasSection(SECTION_LUMINESCENT))
        return QString();
    const QString kind = textOf(clickInfo, SECTION_LUMINESCENT, KEY_KIND);
    return kind.isNull() ? KIND_LUMINESCENT : kind.toLower();
}

bool CVXSDataset::Private::isResult() const
{
    return isMathResult(clickInfo);
}

// --- corrections ---

bool CVXSDataset::Private::isStoredFlatFieldCorrected() const
{
    return flagOf(clickInfo, SECTION_LUMINESCENT, KEY_FLATFIELD_CORRECTED);
}

bool CVXSDataset::Private::isStoredBackgroundSubtracted() const
{
    return flagOf(clickInfo, SECTION_LUMINESCENT, KEY_BACKGROUND_CORRECTED);
}

bool CVXSDataset::isLuminFlatFieldCorrected() const
{
    return d->isStoredFlatFieldCorrected() || d->isFlatFieldOn;
}

void CVXSDataset::doFlatFieldCorrection(bool on)
{
    // A result is corrected as its operands were. A file that cannot be read is told by getCoreImage().
    const bool isPossible = !d->isResult() && d->images.isPresent(EIMAGE_FLATFIELD);
    if (on && (!isPossible || !getCoreImage(EIMAGE_FLATFIELD)))
        return;
    const QString obstacle = on ? d->obstacleToFlatField() : QString();
    if (!obstacle.isEmpty()) {
        d->lastError = tr("%1 cannot be corrected for the flat field: %2").arg(d->clickNumber, obstacle);
        vxLog(ELOG_FAILURE, d->lastError);
        return;
    }
    const bool before = isLuminFlatFieldCorrected();
    d->isFlatFieldOn = on;
    if (isLuminFlatFieldCorrected() != before)
        Q_EMIT calibrationChanged();
}

void CVXSDataset::setCalibrationRules(ECALIBRATIONRULES rules)
{
    if (rules == d->rules)
        return;
    d->rules = rules;
    d->remembered.clear();
    Q_EMIT calibrationChanged();
}

bool CVXSDataset::isLuminBackgroundSubtracted() const
{
    if (d->isStoredBackgroundSubtracted())
        return true;
    return d->isBackgroundOn && !d->isResult() && d->images.isPresent(EIMAGE_BACKGROUND);
}

void CVXSDataset::doBackgroundSubtraction(bool on)
{
    const bool before = isLuminBackgroundSubtracted();
    d->isBackgroundOn = on;
    if (isLuminBackgroundSubtracted() != before)
        Q_EMIT calibrationChanged();
}

bool CVXSDataset::isLuminFLBkgSubtracted() const
{
    return flagOf(d->clickInfo, SECTION_LUMINESCENT, KEY_FL_BACKGROUND_CORRECTED);
}
