// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset_p.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/deleteFolderTree.h"

#include <QDir>
#include <QFileInfo>

using namespace clickinfo;

namespace {

constexpr char DEFAULT_PARENT[] = "/sequences"; // under the program-data path

QString infoFile(const QString &folder)
{
    return folder + FILE_SEQUENCE_INFO;
}

/// Reads SequenceInfo.txt and the ID in it. `error` receives "file: reason".
ESTATUS readSequenceInfo(const QString &folder, CPLClickInfo *info, QString *id, QString *error)
{
    const auto failed = [&](ESTATUS status, const QString &path, const QString &reason) {
        *error = path + QStringLiteral(": ") + reason;
        return status;
    };
    const QString file = infoFile(folder);
    if (!QFileInfo(folder).isDir())
        return failed(ESTATUS_FILE_NOT_FOUND, folder, CVXSSequenceDataset::tr("there is no such folder"));
    if (!QFileInfo(file).exists()) {
        return failed(ESTATUS_NOT_SEQUENCE, file,
                      CVXSSequenceDataset::tr("there is no such file, so the folder is not a sequence"));
    }
    const ESTATUS status = info->loadClickInfo(file, false);
    if (status != ESTATUS_SUCCESS) {
        *error = info->lastError();
        return status;
    }
    const CPLSection *section = (*info)[SECTION_SEQUENCE];
    if (!section) {
        return failed(ESTATUS_NOT_SEQUENCE, file,
                      CVXSSequenceDataset::tr("it has no section \"%1\", so the folder is not a sequence")
                          .arg(SECTION_SEQUENCE));
    }
    section->getSectionName(id, false);
    if (!CVXUtilityFns::isSafeFileName(*id)) {
        return failed(
            ESTATUS_BAD_NAME, file,
            CVXSSequenceDataset::tr("\"%1\" is refused as a sequence ID: it is not a plain file name")
                .arg(*id));
    }
    return ESTATUS_SUCCESS;
}

} // namespace

// It counts as loading for as long as this lives.
CVXSSequenceDataset::Private::Opening::Opening(const CVXSSequenceDataset *opened) : sequence(opened)
{
    CVXPreference::setSequenceLoading(sequence, true);
}

CVXSSequenceDataset::Private::Opening::~Opening()
{
    CVXPreference::setSequenceLoading(sequence, false);
}

CVXSSequenceDataset *CVXSSequenceDataset::open(const QString &folder, ESTATUS *status, QString *error,
                                               QStringList *warnings)
{
    CVXSSequenceDataset *sequence = beginOpening(folder, status, error);
    while (sequence && sequence->loadNext(warnings)) {
    }
    return sequence;
}

CVXSSequenceDataset *CVXSSequenceDataset::beginOpening(const QString &folder, ESTATUS *status, QString *error)
{
    const QString path =
        datasetfiles::folderPath(QFileInfo(folder).isFile() ? QFileInfo(folder).absolutePath() : folder);
    CPLClickInfo info;
    QString id;
    QString reason;
    ESTATUS result = readSequenceInfo(path, &info, &id, &reason);
    CVXSSequenceDataset *sequence = result == ESTATUS_SUCCESS ? getSequenceDataset(id) : nullptr;
    if (sequence && !datasetfiles::isSame(sequence->getSequenceInfoPath(), path)) {
        const QString where = sequence->getSequenceInfoPath();
        result = ESTATUS_FAILURE;
        reason = infoFile(path) + QStringLiteral(": ") +
                 (where.isEmpty() ? tr("a sequence \"%1\" that was not saved yet is open").arg(id)
                                  : tr("the sequence \"%1\" is open already, from %2").arg(id, where));
    }
    if (status)
        *status = result;
    if (error)
        *error = reason;
    if (result != ESTATUS_SUCCESS)
        return nullptr;
    if (sequence)
        return sequence;

    sequence = new CVXSSequenceDataset(id);
    sequence->d->folder = path;
    sequence->d->readInfo(info);
    sequence->d->listClicks(info);
    return sequence;
}

void CVXSSequenceDataset::Private::readInfo(const CPLClickInfo &info)
{
    const QString unit = textOf(info, SECTION_SEQUENCE, KEY_ACTIVE_UNIT);
    hasActiveUnit = unitOfKey(unit, &activeUnit);
    if (!hasActiveUnit && !unit.isNull()) {
        vxLog(ELOG_FAILURE, folder + FILE_SEQUENCE_INFO + QStringLiteral(": ") +
                                tr("\"%1\" is no unit; the unit of the first dataset is taken").arg(unit));
    }
    const QByteArray table = textOf(info, SECTION_SEQUENCE, KEY_COLOR_TABLE).toUtf8();
    adjust.colorTable = CILPalette::tableOfName(table.constData(), adjust.colorTable);
    adjust.reverse = toolInfo.reversed = flagOf(info, SECTION_SEQUENCE, KEY_REVERSED);
    adjust.logScale = toolInfo.logarithmic = flagOf(info, SECTION_SEQUENCE, KEY_COLOR_TABLE_LOG);
    toolInfo.brightness = textOf(info, SECTION_SEQUENCE, KEY_BRIGHTNESS).toInt();
    const double gamma = numberOf(info, SECTION_SEQUENCE, KEY_GAMMA);
    if (gamma > 0.0)
        toolInfo.gamma = float(gamma);
    isTransIllumOverview = flagOf(info, SECTION_SEQUENCE, KEY_TRANSILLUM_OVERVIEW);
    is3DSceneOnly = flagOf(info, SECTION_SEQUENCE, KEY_3D_SCENE_ONLY);
}

// What stands in SequenceInfo.txt; the datasets come one by one.
void CVXSSequenceDataset::Private::listClicks(const CPLClickInfo &info)
{
    opening = std::make_unique<Opening>(q);
    const CPLSection *section = info[SECTION_SEQUENCE_CLICKS];
    if (!section)
        return;
    QStringList keys;
    QStringList values;
    section->getKeyList(&keys);
    section->getValueList(&values);
    for (int i = 0; i < keys.size(); ++i) {
        if (keys.at(i) != KEY_CLICK)
            continue;
        if (indexOf(values.at(i)) < 0)
            entries.append({values.at(i), nullptr});
        else
            opening->listedTwice += values.at(i);
    }
}

bool CVXSSequenceDataset::isLoading() const
{
    return d->opening != nullptr;
}

bool CVXSSequenceDataset::loadNext(QStringList *warnings)
{
    if (!d->opening)
        return false;
    if (d->opening->next >= d->entries.size()) {
        for (const QString &clickNumber : qAsConst(d->opening->listedTwice))
            d->warn(clickNumber,
                    infoFile(d->folder) + QStringLiteral(": ") +
                        tr("it is listed twice; the second is left out"),
                    warnings);
        d->opening.reset();
        Q_EMIT loaded();
        return false;
    }
    Private::Entry &entry = d->entries[d->opening->next++];
    const QString clickNumber = entry.clickNumber;
    if (entry.dataset) // added meanwhile
        return true;
    QString reason;
    entry.dataset = d->openClick(clickNumber, &reason);
    if (entry.dataset)
        d->adopt(entry.dataset);
    else
        d->warn(clickNumber, reason, warnings);
    Q_EMIT datasetLoaded(clickNumber);
    return true;
}

void CVXSSequenceDataset::Private::warn(const QString &clickNumber, const QString &reason,
                                        QStringList *warnings) const
{
    const QString warning = clickNumber + QStringLiteral(": ") + reason;
    vxLog(ELOG_FAILURE, warning, id);
    if (warnings)
        *warnings += warning;
}

CVXSDataset *CVXSSequenceDataset::Private::openClick(const QString &clickNumber, QString *reason) const
{
    const QString path = plannedFolder(clickNumber);
    if (path.isEmpty()) {
        *reason = infoFile(folder) + QStringLiteral(": ") +
                  tr("\"%1\" is refused as a click number: it is not a plain file name").arg(clickNumber);
        return nullptr;
    }
    if (!QFileInfo(path).isDir()) {
        *reason = path + QStringLiteral(": ") + tr("the dataset's folder is gone");
        return nullptr;
    }
    ESTATUS status = ESTATUS_SUCCESS;
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(path, &status, reason));
    if (!dataset)
        return nullptr;
    if (dataset->getClickNumber() != clickNumber) {
        *reason = path + FILE_CLICK_INFO + QStringLiteral(": ") +
                  tr("it is that of another click number, \"%1\"").arg(dataset->getClickNumber());
        return nullptr;
    }
    if (!dataset->registerDataset()) {
        *reason = path + QStringLiteral(": ") +
                  tr("a dataset of this click number is open already, from %1")
                      .arg(CVXSDataset::getDataset(clickNumber)->getFolderPath());
        return nullptr;
    }
    return dataset.release();
}

// --- saving ---

ESTATUS CVXSSequenceDataset::save(const QString &parentFolder)
{
    while (loadNext()) { // what is not there yet is not lost either
    }
    QString target = d->folder;
    if (target.isEmpty()) {
        const QString parent = parentFolder.isEmpty()
                                   ? CVXPreference::getProgramDataPath() + QString::fromLatin1(DEFAULT_PARENT)
                                   : parentFolder;
        if (!CVXUtilityFns::isSafeFileName(d->id))
            return d->fail(ESTATUS_BAD_NAME, tr("%1: a sequence ID has to be a plain file name").arg(d->id));
        target = datasetfiles::folderPath(parent) + d->id + QLatin1Char('/');
        if (QFileInfo(infoFile(target)).exists()) {
            return d->fail(ESTATUS_FILE_NOT_WRITABLE,
                           infoFile(target) + QStringLiteral(": ") + tr("there is another sequence already"));
        }
    }
    QString error;
    ESTATUS status = datasetfiles::makeFolder(target, &error);
    if (status != ESTATUS_SUCCESS)
        return d->fail(status, error);
    status = d->saveDatasets(target);
    if (status != ESTATUS_SUCCESS)
        return status;
    CPLClickInfo info;
    d->writeInfo(&info);
    status = info.saveClickInfo(infoFile(target));
    if (status != ESTATUS_SUCCESS)
        return d->fail(status, info.lastError());
    d->folder = target;
    d->isModified = false;
    Q_EMIT saved(target);
    return ESTATUS_SUCCESS;
}

ESTATUS CVXSSequenceDataset::saveAs(const QString &parentFolder)
{
    while (loadNext()) {
    }
    if (!CVXUtilityFns::isSafeFileName(d->id))
        return d->fail(ESTATUS_BAD_NAME, tr("%1: a sequence ID has to be a plain file name").arg(d->id));
    const QString target = datasetfiles::folderPath(parentFolder) + d->id + QLatin1Char('/');
    if (datasetfiles::isSame(d->folder, target))
        return save();
    const QFileInfo there(target);
    const bool isThere = there.exists();
    if (isThere && (!there.isDir() || !QDir(target).isEmpty()))
        return d->fail(ESTATUS_FILE_NOT_WRITABLE,
                       target + QStringLiteral(": ") + tr("there are other files in this folder already"));
    QString error;
    const ESTATUS status = d->writeCopy(target, &error);
    if (status != ESTATUS_SUCCESS) {
        // What a full disk left half written would stand in the way of the next attempt.
        deleteFolderTree(QDir(target));
        if (isThere)
            QDir().mkdir(target);
        return d->fail(status, error);
    }
    d->settleIn(target);
    Q_EMIT saved(target);
    return ESTATUS_SUCCESS;
}

ESTATUS CVXSSequenceDataset::Private::writeCopy(const QString &target, QString *error)
{
    ESTATUS status = datasetfiles::makeFolder(target, error);
    if (status == ESTATUS_SUCCESS)
        status = copyOtherFiles(target, error);
    for (int i = 0; status == ESTATUS_SUCCESS && i < entries.size(); ++i) {
        const CVXSDataset *dataset = entries.at(i).dataset;
        if (!dataset)
            continue;
        noteMembership(i);
        status = dataset->d->saveTo(target + entries.at(i).clickNumber + QLatin1Char('/'), error);
    }
    if (status != ESTATUS_SUCCESS)
        return status;
    CPLClickInfo info;
    writeInfo(&info);
    status = info.saveClickInfo(infoFile(target));
    if (status != ESTATUS_SUCCESS)
        *error = info.lastError();
    return status;
}

// What lies in the sequence's folder and is none of its datasets, or one that could not be opened.
ESTATUS CVXSSequenceDataset::Private::copyOtherFiles(const QString &target, QString *error) const
{
    if (folder.isEmpty())
        return ESTATUS_SUCCESS;
    QStringList own = {FILE_SEQUENCE_INFO};
    for (const Entry &entry : entries) {
        if (entry.dataset)
            own += entry.clickNumber;
    }
    return datasetfiles::copyTree(folder, target, own, error);
}

void CVXSSequenceDataset::Private::noteMembership(int index) const
{
    const Entry &entry = entries.at(index);
    CPLSection *section = ensureSection(entry.dataset->getClickInfo(), SECTION_CLICK_NUMBER);
    section->setValue(KEY_SEQUENCE_ID, id);
    section->setValue(KEY_CLICK_INDEX, index);
}

void CVXSSequenceDataset::Private::settleIn(const QString &target)
{
    folder = target;
    isModified = false;
    for (const Entry &entry : qAsConst(entries)) {
        if (entry.dataset)
            entry.dataset->d->settleIn(target + entry.clickNumber + QLatin1Char('/'));
    }
}

ESTATUS CVXSSequenceDataset::Private::fail(ESTATUS status, const QString &error)
{
    lastError = error;
    vxLog(ELOG_FAILURE, tr("The sequence %1 is not saved: %2").arg(id, error), QString(), int(status));
    return status;
}

// Writes the datasets that have changed or do not lie in the sequence's folder.
ESTATUS CVXSSequenceDataset::Private::saveDatasets(const QString &target)
{
    for (int i = 0; i < entries.size(); ++i) {
        CVXSDataset *dataset = entries.at(i).dataset;
        if (!dataset)
            continue;
        const QString path = target + entries.at(i).clickNumber + QLatin1Char('/');
        const bool isThere = dataset->getDatasetType() != EDATASET_IN_MEMORY &&
                             datasetfiles::isSame(dataset->getFolderPath(), path);
        if (isThere && !dataset->isModified())
            continue;
        noteMembership(i);
        const ESTATUS status = dataset->saveDatasetAs(path);
        if (status != ESTATUS_SUCCESS)
            return fail(status, dataset->lastError());
    }
    return ESTATUS_SUCCESS;
}

void CVXSSequenceDataset::Private::writeInfo(CPLClickInfo *info) const
{
    CPLSection *section = ensureSection(info, SECTION_SEQUENCE);
    section->setSectionName(id);
    section->setValue(KEY_VERSION, CVXPreference::getAppVersion());
    if (hasActiveUnit)
        section->setValue(KEY_ACTIVE_UNIT, unitKey(activeUnit));
    section->setValue(KEY_COLOR_TABLE, QLatin1String(CILPalette::tableName(adjust.colorTable)));
    section->setValue(KEY_REVERSED, textOfFlag(toolInfo.reversed));
    section->setValue(KEY_COLOR_TABLE_LOG, textOfFlag(toolInfo.logarithmic));
    section->setValue(KEY_BRIGHTNESS, toolInfo.brightness);
    section->setValue(KEY_GAMMA, QString::number(double(toolInfo.gamma), 'g', 9));
    section->setValue(KEY_TRANSILLUM_OVERVIEW, textOfFlag(isTransIllumOverview));
    section->setValue(KEY_3D_SCENE_ONLY, textOfFlag(is3DSceneOnly));

    CPLSection *clicks = ensureSection(info, SECTION_SEQUENCE_CLICKS);
    for (const Entry &entry : entries)
        clicks->addKeyValue(KEY_CLICK, entry.clickNumber);
}
