// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"

#include "host/vxapi/model/ClickInfoKeys.h"
#include "host/vxapi/model/ClickInfoValues.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxutils/CVXSLog.h"

#include <cmath>
#include <limits>
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
        [](int level, const std::string &text) { vxLog(level, QString::fromStdString(text)); });
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
    d->isOnDisk =
        !d->folder.isEmpty() && QFileInfo(d->folder + QString::fromLatin1(FILE_CLICK_INFO)).isFile();
}

int CVXSDataset::getDatasetType() const
{
    if (!d->isOnDisk)
        return 2;
    return d->isResult() ? 1 : 0;
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
    return d->kind() == QLatin1String(KIND_LUMINESCENT);
}

bool CVXSDataset::isFluorescentDataset() const
{
    return d->kind() == QLatin1String(KIND_FLUORESCENT) || isTransFluorescentDataset() ||
           isTransIlluminationDataset();
}

bool CVXSDataset::isTransFluorescentDataset() const
{
    return d->kind() == QLatin1String(KIND_TRANSFLUORESCENT);
}

bool CVXSDataset::isTransIlluminationDataset() const
{
    return d->kind() == QLatin1String(KIND_TRANSILLUMINATION);
}

bool CVXSDataset::Private::hasSection(const char *section) const
{
    return clickInfo[QString::fromLatin1(section)] != nullptr;
}

QString CVXSDataset::Private::kind() const
{
    if (!hasSection(SECTION_LUMINESCENT))
        return QString();
    const QString kind = textOf(clickInfo, SECTION_LUMINESCENT, KEY_KIND);
    return kind.isNull() ? QString::fromLatin1(KIND_LUMINESCENT) : kind.toLower();
}

bool CVXSDataset::Private::isResult() const
{
    return !textOf(clickInfo, SECTION_LUMINESCENT, KEY_MATH_OPERATION).isNull();
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
    const bool before = isLuminFlatFieldCorrected();
    d->isFlatFieldOn = on;
    if (isLuminFlatFieldCorrected() != before)
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

// --- display ---

tag_edisplayunit CVXSDataset::getUnit() const
{
    return d->unit;
}

void CVXSDataset::setUnit(tag_edisplayunit unit)
{
    if (unit == d->unit || unit < EUNIT_COUNTS || unit >= EUNIT_COUNT)
        return;
    d->unit = unit;
    Q_EMIT unitChanged();
}

double CVXSDataset::getBottomIlluminationPower() const
{
    const double power = numberOf(d->clickInfo, SECTION_LUMINESCENT, KEY_BOTTOM_POWER);
    return power > 0.0 ? power : 0.0;
}

const CVXSToolInfo &CVXSDataset::getToolInfo() const
{
    return d->toolInfo;
}

void CVXSDataset::setToolInfo(const CVXSToolInfo &info)
{
    d->toolInfo = info;
    d->writeDisplay();
    Q_EMIT displayChanged();
}

tag_ecolortable CVXSDataset::getColorTable() const
{
    return d->colorTable;
}

void CVXSDataset::setColorTable(tag_ecolortable table)
{
    if (!CILPalette::tableName(table))
        return;
    d->colorTable = table;
    d->writeDisplay();
    Q_EMIT displayChanged();
}

void CVXSDataset::Private::readDisplay()
{
    tag_edisplayunit stored;
    if (unitOfKey(textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_INTENSITY_CALIBRATION), &stored))
        unit = stored;
    const QByteArray table = textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_COLOR_TABLE).toUtf8();
    colorTable = CILPalette::tableOfName(table.constData(), colorTable);
    toolInfo.reversed = flagOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_REVERSED);
    toolInfo.logarithmic = flagOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_COLOR_TABLE_LOG);
    toolInfo.brightness = textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_BRIGHTNESS).toInt();
    const double gamma = numberOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_GAMMA);
    if (gamma > 0.0)
        toolInfo.gamma = float(gamma);
}

void CVXSDataset::Private::writeDisplay()
{
    CPLSection *section = ensureSection(&clickInfo, SECTION_GRAPH_CONTROLS);
    section->setValue(QString::fromLatin1(KEY_COLOR_TABLE),
                      QString::fromLatin1(CILPalette::tableName(colorTable)));
    section->setValue(QString::fromLatin1(KEY_REVERSED), textOfFlag(toolInfo.reversed));
    section->setValue(QString::fromLatin1(KEY_COLOR_TABLE_LOG), textOfFlag(toolInfo.logarithmic));
    section->setValue(QString::fromLatin1(KEY_BRIGHTNESS), toolInfo.brightness);
    section->setValue(QString::fromLatin1(KEY_GAMMA), QString::number(double(toolInfo.gamma), 'g', 9));
    isModified = true;
}

CILPalette CVXSDataset::Private::palette() const
{
    CILPalette palette;
    palette.SetColorTable(colorTable, 0.0, 0.0, toolInfo.reversed, 0);
    palette.setLogScale(toolInfo.logarithmic);
    return palette;
}

// --- images ---

const CVXSImageList *CVXSDataset::getImageList() const
{
    return &d->images.list();
}

CILImage *CVXSDataset::getCoreImage(tag_eimagetype type) const
{
    if (!DatasetImages::isKind(type))
        return nullptr;
    const bool wasLoaded = d->images.isLoaded(type);
    CILImage *image = d->coreImage(type);
    const QString error = d->images.error(type);
    if (error.isEmpty())
        return image;
    d->lastError = error;
    if (!wasLoaded)
        vxLog(3, tr("%1: the %2 cannot be read: %3")
                     .arg(d->clickNumber, tr(DatasetImages::kind(type).name), error));
    return image;
}

CILImage *CVXSDataset::Private::coreImage(tag_eimagetype type)
{
    const bool wasLoaded = images.isLoaded(type);
    CILImage *image = images.image(type, folder);
    if (image && !wasLoaded && type == EIMAGE_LUMINESCENT)
        image->setBinningFactor(float(binningFactor()));
    return image;
}

QString CVXSDataset::getImageFileName(tag_eimagetype type) const
{
    return DatasetImages::isKind(type) ? d->images.fileName(type) : QString();
}

bool CVXSDataset::isImageFileAsRead(tag_eimagetype type) const
{
    return !DatasetImages::isKind(type) || d->images.isFileAsRead(type, d->folder);
}

void CVXSDataset::setCoreImage(tag_eimagetype type, const CILImage &image)
{
    if (!DatasetImages::isKind(type) || image.isEmpty()) {
        d->lastError = tr("%1: an empty image cannot be set").arg(d->clickNumber);
        vxLog(3, d->lastError);
        return;
    }
    d->images.set(type, image, &d->clickInfo);
    if (type == EIMAGE_LUMINESCENT) {
        ensureSection(&d->clickInfo, SECTION_LUMINESCENT)
            ->setValue(QString::fromLatin1(KEY_BINNING), textOfNumber(double(image.binningFactor())));
    }
    d->isModified = true;
    Q_EMIT calibrationChanged();
}

double CVXSDataset::Private::binningFactor() const
{
    const double binning = numberOf(clickInfo, SECTION_LUMINESCENT, KEY_BINNING);
    return binning >= 1.0 ? binning : 1.0;
}

double CVXSDataset::getFOVForImage(tag_eimagetype type) const
{
    const double width = DatasetImages::isKind(type)
                             ? numberOf(d->clickInfo, DatasetImages::kind(type).section, KEY_FOV)
                             : 0.0;
    return width > 0.0 ? width : std::numeric_limits<double>::quiet_NaN();
}
