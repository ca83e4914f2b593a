// SPDX-License-Identifier: MIT
#include "check/ReopenedOperand.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <algorithm>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using imagemath::FileRecord;
using imagemath::OperandRecord;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ResultCheck)
};

/// The folder's path with a "/" at its end.
QString withSlash(const QString &folder)
{
    return folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
}

QStringList foldersIn(const QString &parent)
{
    QStringList paths;
    const QStringList names = QDir(parent).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names)
        paths += withSlash(parent) + name + QLatin1Char('/');
    return paths;
}

/// The folders in which datasets may lie, in the order in which they are asked.
QStringList datasetParents(const QStringList &sequenceFolders)
{
    QStringList parents;
    for (const QString &folder : sequenceFolders)
        parents += withSlash(folder);
    const QString data = CVXPreference::getProgramDataPath();
    parents += withSlash(data);
    parents += foldersIn(data);
    parents += foldersIn(data + QStringLiteral("/sequences"));
    return parents;
}

bool holdsDataset(const QString &folder)
{
    return QFileInfo(folder + clickinfo::FILE_CLICK_INFO).isFile();
}

/// Opens the dataset of that folder; null, and the reason in `problem`, when that is not possible.
std::unique_ptr<CVXSDataset> opened(const QString &folder, QString *problem)
{
    QString reason;
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder, nullptr, &reason));
    if (!dataset)
        *problem = reason;
    return dataset;
}

/// Files of a dataset that has none, as its saving would make them, in a folder of their own.
void copyFromMemory(const CVXSDataset &open, ReopenedOperand *operand)
{
    operand->copy = std::make_unique<QTemporaryDir>();
    if (!operand->copy->isValid()) {
        operand->problem = operand->copy->errorString();
        return;
    }
    CVXSDataset twin(open.getClickNumber());
    twin.getClickInfo()->fromText(open.getClickInfo()->toText(), nullptr);
    for (int type = EIMAGE_PHOTOGRAPH; type <= EIMAGE_EXCITATION; ++type) {
        if (const CILImage *image = open.getCoreImage(tag_eimagetype(type)))
            twin.setCoreImage(tag_eimagetype(type), *image);
    }
    const QString folder = withSlash(operand->copy->path()) + open.getClickNumber();
    if (twin.saveDatasetAs(folder) != ESTATUS_SUCCESS) {
        operand->problem = twin.lastError();
        return;
    }
    operand->dataset = opened(folder, &operand->problem);
}

void takeOpen(const CVXSDataset &open, ReopenedOperand *operand)
{
    if (open.getDatasetType() == EDATASET_IN_MEMORY) {
        copyFromMemory(open, operand);
        return;
    }
    operand->dataset = opened(open.getFolderPath(), &operand->problem);
    if (operand->dataset && open.isModified())
        operand->remark = Text::tr("%1 has changes that are not saved; its files on disk were taken")
                              .arg(open.getClickNumber());
}

void takeByClickNumber(const QString &clickNumber, const QStringList &parents, ReopenedOperand *operand)
{
    for (const QString &parent : parents) {
        const QString folder = parent + clickNumber + QLatin1Char('/');
        if (!holdsDataset(folder))
            continue;
        auto dataset = opened(folder, &operand->problem);
        if (dataset && dataset->getClickNumber() == clickNumber) {
            operand->dataset = std::move(dataset);
            return;
        }
    }
}

bool holdsAllFiles(const QString &folder, const QVector<FileRecord> &files)
{
    return !files.isEmpty() && std::all_of(files.begin(), files.end(), [&folder](const FileRecord &file) {
        return CVXUtilityFns::isSafeFileName(file.name) && !file.sha256.isEmpty() &&
               imagemath::sha256OfFile(folder + file.name) == file.sha256;
    });
}

void takeByContent(const OperandRecord &record, const QStringList &parents, ReopenedOperand *operand)
{
    if (record.sequenceId.isEmpty())
        return;
    for (const QString &parent : parents) {
        // Only in the operand's own sequence: every file that is compared is read whole.
        if (QDir(parent).dirName() != record.sequenceId)
            continue;
        for (const QString &folder : foldersIn(parent)) {
            if (!holdsDataset(folder) || !holdsAllFiles(folder, record.files))
                continue;
            operand->dataset = opened(folder, &operand->problem);
            if (!operand->dataset)
                continue;
            operand->remark = Text::tr("%1 was renamed: its images are those of %2 in %3")
                                  .arg(record.clickNumber, operand->dataset->getClickNumber(), folder);
            return;
        }
    }
}

QStringList openSequenceFolders()
{
    QStringList folders;
    const QList<CVXSSequenceDataset *> sequences = CVXSSequenceDataset::openSequences();
    for (const CVXSSequenceDataset *sequence : sequences) {
        if (!sequence->getSequenceInfoPath().isEmpty())
            folders += sequence->getSequenceInfoPath();
    }
    return folders;
}

QString notFound(const OperandRecord &record)
{
    const QString text =
        Text::tr("%1 is not open and not among the recent sequences").arg(record.clickNumber);
    return record.sequenceId.isEmpty()
               ? Text::tr("%1: open it and check again").arg(text)
               : Text::tr("%1: open the sequence %2 and check again").arg(text, record.sequenceId);
}

} // namespace

ReopenedOperand ReopenedOperand::find(const OperandRecord &record, const QStringList &sequenceFolders)
{
    ReopenedOperand operand;
    if (!CVXUtilityFns::isSafeFileName(record.clickNumber)) {
        operand.problem = Text::tr("\"%1\" is not a click number").arg(record.clickNumber);
        return operand;
    }
    // The host also answers with one whose folder has the name.
    const CVXSDataset *open = CVXSDataset::getDataset(record.clickNumber);
    if (open && open->getClickNumber() == record.clickNumber)
        takeOpen(*open, &operand);
    const QStringList parents = datasetParents(sequenceFolders);
    if (!operand.dataset)
        takeByClickNumber(record.clickNumber, parents, &operand);
    if (!operand.dataset)
        takeByContent(record, openSequenceFolders() + parents, &operand);
    if (!operand.dataset)
        operand.problem = operand.problem.isEmpty()
                              ? notFound(record)
                              : Text::tr("%1 cannot be opened: %2").arg(record.clickNumber, operand.problem);
    return operand;
}
