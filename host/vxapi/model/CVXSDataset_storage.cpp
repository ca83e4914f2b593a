// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <cmath>
#include <QFile>
#include <QFileInfo>

using namespace clickinfo;

namespace {

/// The record as text, the section "Graph Controls" in `display` and all others in `rest`.
void splitText(const CPLClickInfo &info, QByteArray *display, QByteArray *rest)
{
    CPLClickInfo shown;
    CPLClickInfo others;
    int count = 0;
    info.getSectionCount(&count);
    for (int i = 0; i < count; ++i) {
        const CPLSection &section = *info.sectionAt(i);
        const bool isDisplay = section.getSectionKey() == SECTION_GRAPH_CONTROLS;
        (isDisplay ? shown : others).addSection(new CPLSection(section));
    }
    *display = shown.toText();
    *rest = others.toText();
}

} // namespace

CVXSDataset *CVXSDataset::open(const QString &folder, ESTATUS *status, QString *error, QObject *parent)
{
    auto dataset = std::make_unique<CVXSDataset>(QString(), nullptr);
    QString reason;
    const ESTATUS result = dataset->d->load(datasetfiles::folderPath(folder), &reason);
    if (status)
        *status = result;
    if (error)
        *error = reason;
    if (result != ESTATUS_SUCCESS)
        return nullptr;
    dataset->setParent(parent);
    return dataset.release();
}

ESTATUS CVXSDataset::Private::load(const QString &path, QString *error)
{
    const QString file = path + FILE_CLICK_INFO;
    const ESTATUS status = clickInfo.loadClickInfo(file, false);
    if (status != ESTATUS_SUCCESS) {
        *error = clickInfo.lastError();
        return status;
    }
    // A record that does not say its click number is that of its folder.
    CPLSection *section = ensureSection(&clickInfo, SECTION_CLICK_NUMBER);
    section->getSectionName(&clickNumber, false);
    if (clickNumber.isNull()) {
        clickNumber = datasetfiles::folderName(path);
        section->setSectionName(clickNumber);
    }
    if (!CVXUtilityFns::isSafeFileName(clickNumber)) {
        *error = file + QStringLiteral(": ") +
                 tr("\"%1\" is refused as a click number: it is not a plain file name").arg(clickNumber);
        return ESTATUS_BAD_NAME;
    }
    folder = path;
    isOnDisk = true;

    QStringList refused;
    images.scan(clickInfo, folder, &refused);
    for (const QString &reason : qAsConst(refused))
        vxLog(ELOG_FAILURE, file + QStringLiteral(": ") + reason);
    if (images.isPresent(EIMAGE_LUMINESCENT) &&
        !constantRange(KEY_BINNING).holds(numberOf(clickInfo, SECTION_LUMINESCENT, KEY_BINNING))) {
        vxLog(ELOG_FAILURE,
              file + QStringLiteral(": ") +
                  tr("\"%1\" of the luminescent image is missing or not a number %2; it is taken as 1")
                      .arg(KEY_BINNING, constantRange(KEY_BINNING).text()));
    }
    if (images.isPresent(EIMAGE_LUMINESCENT) &&
        !constantRange(KEY_FOV).holds(numberOf(clickInfo, SECTION_LUMINESCENT, KEY_FOV))) {
        vxLog(ELOG_WARNING,
              file + QStringLiteral(": ") +
                  tr("\"%1\" of the luminescent image is missing or not a number %2; the image cannot be "
                     "combined with others")
                      .arg(KEY_FOV, constantRange(KEY_FOV).text()));
    }
    readDisplay();
    return ESTATUS_SUCCESS;
}

ESTATUS CVXSDataset::saveDatasetAs(const QString &folder)
{
    const QString target = datasetfiles::folderPath(folder);
    QString error;
    const ESTATUS status = target.isEmpty() ? ESTATUS_BAD_NAME : d->saveTo(target, &error);
    if (status != ESTATUS_SUCCESS) {
        d->lastError =
            target.isEmpty() ? tr("%1: no folder to save it in is named").arg(d->clickNumber) : error;
        vxLog(ELOG_FAILURE, tr("%1 is not saved: %2").arg(d->clickNumber, d->lastError), QString(),
              int(status));
        return status;
    }
    d->settleIn(target);
    return ESTATUS_SUCCESS;
}

void CVXSDataset::Private::settleIn(const QString &target)
{
    folder = target;
    isOnDisk = true;
    isModified = false;
    isImageMathToBeSaved = false;
    images.markSaved(target);
    markRoisSaved();
}

ESTATUS CVXSDataset::saveCopy(const QString &folder) const
{
    const QString target = datasetfiles::folderPath(folder);
    QString error = tr("%1: no folder to save it in is named").arg(d->clickNumber);
    const ESTATUS status = target.isEmpty() ? ESTATUS_BAD_NAME : d->saveTo(target, &error);
    if (status != ESTATUS_SUCCESS) {
        d->lastError = error;
        vxLog(ELOG_FAILURE, tr("No copy of %1 is saved: %2").arg(d->clickNumber, error), QString(),
              int(status));
    }
    return status;
}

ESTATUS CVXSDataset::Private::saveTo(const QString &target, QString *error)
{
    ESTATUS status = datasetfiles::makeFolder(target, error);
    if (status != ESTATUS_SUCCESS)
        return status;
    // The images first: they are what a full disk refuses, and new keys must not come to describe old pixels.
    status = images.save(folder, target, error);
    if (status == ESTATUS_SUCCESS)
        status = copyOtherFiles(target, error);
    if (status != ESTATUS_SUCCESS)
        return status;
    status = clickInfo.saveClickInfo(target + FILE_CLICK_INFO);
    if (status != ESTATUS_SUCCESS) {
        *error = clickInfo.lastError();
        return status;
    }
    return saveAnalyzed(target, error);
}

// What else lies with the dataset goes along, such as a result's copies of its operands.
ESTATUS CVXSDataset::Private::copyOtherFiles(const QString &target, QString *error) const
{
    if (folder.isEmpty() || datasetfiles::isSame(folder, target))
        return ESTATUS_SUCCESS;
    QStringList own = {FILE_CLICK_INFO, FILE_ANALYZED_CLICK_INFO};
    for (const ImageKind &kind : DatasetImages::kinds()) {
        if (images.isPresent(kind.type))
            own += images.fileName(kind.type);
    }
    return datasetfiles::copyTree(folder, target, own, error);
}

// Written last: a folder that has it is complete.
ESTATUS CVXSDataset::Private::saveAnalyzed(const QString &target, QString *error) const
{
    const QString name = FILE_ANALYZED_CLICK_INFO;
    const bool isThere = !folder.isEmpty() && QFileInfo(folder + name).isFile();
    if (isThere && !areRoisToBeWritten()) {
        return datasetfiles::isSame(folder, target)
                   ? ESTATUS_SUCCESS
                   : datasetfiles::copyFile(folder + name, target + name, error);
    }
    CPLClickInfo analyzed;
    ESTATUS status = analyzedWithRois(isThere ? folder + name : QString(), &analyzed, error);
    if (status != ESTATUS_SUCCESS)
        return status;
    status = analyzed.saveClickInfo(target + name);
    if (status != ESTATUS_SUCCESS)
        *error = analyzed.lastError();
    return status;
}

// --- what is not saved ---

UnsavedContent CVXSDataset::unsavedContent() const
{
    UnsavedContent unsaved;
    // Both records get the keys of how they are shown: what one of them does not say is the same default.
    Private stored(d->clickNumber);
    QFile file(d->folder + FILE_CLICK_INFO);
    // A result without its last file counts for nothing.
    const bool isWhole = !d->isResult() || QFileInfo(d->folder + FILE_ANALYZED_CLICK_INFO).isFile();
    unsaved.files = !d->isOnDisk || !isWhole || !file.open(QIODevice::ReadOnly) ||
                    stored.clickInfo.fromText(file.readAll(), nullptr) != ESTATUS_SUCCESS;
    if (unsaved.files)
        return unsaved;
    ensureSection(&stored.clickInfo, SECTION_CLICK_NUMBER)->setSectionName(d->clickNumber); // as load() does
    stored.readDisplay();
    stored.writeDisplay();
    Private here(d->clickNumber);
    here.clickInfo.fromText(d->clickInfo.toText(), nullptr);
    here.readDisplay();
    here.writeDisplay();

    QByteArray displayThere;
    QByteArray restThere;
    QByteArray displayHere;
    QByteArray restHere;
    splitText(stored.clickInfo, &displayThere, &restThere);
    splitText(here.clickInfo, &displayHere, &restHere);
    unsaved.display = displayHere != displayThere;
    unsaved.record = restHere != restThere;
    unsaved.pixels = d->images.holdsUnsaved(d->folder);
    unsaved.rois = d->areRoisToBeWritten();
    return unsaved;
}
