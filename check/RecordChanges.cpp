// SPDX-License-Identifier: MIT
#include "check/RecordChanges.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QCoreApplication>

using namespace clickinfo;
using imagemath::FileRecord;
using imagemath::OperandRecord;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ResultCheck)
};

const FileRecord *fileOf(const QVector<FileRecord> &files, const QString &name)
{
    for (const FileRecord &file : files) {
        if (file.name == name)
            return &file;
    }
    return nullptr;
}

QStringList changedFiles(const OperandRecord &record, const CVXSDataset &operand, const QString &who)
{
    if (record.files.isEmpty())
        return {Text::tr("No image file of %1 is recorded: whether it changed cannot be told.").arg(who)};
    QStringList lines;
    const QVector<FileRecord> now = imagemath::imageFilesOf(operand, operand.getFolderPath());
    for (const FileRecord &file : record.files) {
        const FileRecord *present = fileOf(now, file.name);
        if (!present)
            lines += Text::tr("%1 of %2 is missing or cannot be read.").arg(file.name, who);
        else if (present->sha256 != file.sha256)
            lines += Text::tr("%1 of %2 changed since.").arg(file.name, who);
    }
    for (const FileRecord &file : now) {
        if (!fileOf(record.files, file.name))
            lines += Text::tr("%1 of %2 was not there then.").arg(file.name, who);
    }
    return lines;
}

/// `key` is "section/key"; a null text stands for a key that is not there.
QString changedConstant(const QString &key, const QString &then, const QString &now, const QString &who)
{
    const int slash = key.indexOf(QLatin1Char('/'));
    const QString name = Text::tr("\"%1\" (%2) of %3").arg(key.mid(slash + 1), key.left(slash), who);
    if (then.isNull())
        return Text::tr("%1 is %2 now; then it was not there.").arg(name, now);
    if (now.isNull())
        return Text::tr("%1 is not there any more; then it was %2.").arg(name, then);
    return Text::tr("%1 is %2 now; then it was %3.").arg(name, now, then);
}

/// The value of a key; null when it is not there, and never null otherwise.
QString constantOf(const QMap<QString, QString> &constants, const QString &key)
{
    if (!constants.contains(key))
        return QString();
    const QString value = constants.value(key);
    return value.isNull() ? QStringLiteral("") : value;
}

QStringList changedConstants(const OperandRecord &record, const CVXSDataset &operand, const QString &who)
{
    const QMap<QString, QString> now = imagemath::recordOf(operand).constants;
    QStringList keys = record.constants.keys();
    for (const QString &key : now.keys()) {
        if (!keys.contains(key))
            keys += key;
    }
    QStringList lines;
    for (const QString &key : qAsConst(keys)) {
        const QString before = constantOf(record.constants, key);
        const QString after = constantOf(now, key);
        if (before.isNull() != after.isNull() || before != after)
            lines += changedConstant(key, before, after, who);
    }
    return lines;
}

QStringList changedOperand(const OperandRecord &record, const CVXSDataset &operand, const QString &role)
{
    const QString who = QStringLiteral("%1 (%2)").arg(role, record.clickNumber);
    return changedFiles(record, operand, who) + changedConstants(record, operand, who);
}

/// The photograph that lies with the result is a byte copy of the recorded one.
QStringList changedPhotograph(const imagemath::PhotographRecord &record, const CVXSDataset &result)
{
    const QString name = result.getImageFileName(EIMAGE_PHOTOGRAPH);
    if (record.clickNumber.isEmpty() || !CVXUtilityFns::isSafeFileName(name) ||
        imagemath::sha256OfFile(result.getFolderPath() + name) == record.file.sha256)
        return {};
    return {Text::tr("%1 of the result is not the recorded photograph of %2.").arg(name, record.clickNumber)};
}

/// ClickInfo and the record have to tell the same story: it is ClickInfo that the workspace shows and
/// measures by.
QStringList contradictions(const imagemath::ResultRecord &record, const CVXSDataset &result)
{
    const CPLClickInfo &info = *result.getClickInfo();
    const struct
    {
        QLatin1String section;
        QLatin1String key;
        const QString &recorded;
    } claims[] = {
        {SECTION_LUMINESCENT, KEY_MATH_OPERATION, record.operation},
        {SECTION_LUMINESCENT, KEY_MATH_A, record.a.clickNumber},
        {SECTION_LUMINESCENT, KEY_MATH_B, record.b.clickNumber},
        {SECTION_GRAPH_CONTROLS, KEY_INTENSITY_CALIBRATION, record.unit},
    };
    QStringList lines;
    for (const auto &claim : claims) {
        const QString said = textOf(info, claim.section, claim.key);
        if (said != claim.recorded)
            lines += Text::tr("ClickInfo.txt of the result says \"%1\" = %2; the record says %3.")
                         .arg(claim.key, said.isNull() ? Text::tr("nothing") : said, claim.recorded);
    }
    return lines;
}

/// The ROI that a record names gives its k, to the last bit.
QStringList roiOfAnotherK(const imagemath::ResultRecord &record)
{
    if (!record.roiOfK || record.roiOfK->k() == record.k)
        return {};
    return {
        Text::tr("k is recorded as %1, but the totals of the ROI \"%2\" that it is said to be of give %3.")
            .arg(imagemath::decimalOf(record.k), record.roiOfK->name,
                 imagemath::decimalOf(record.roiOfK->k()))};
}

} // namespace

QStringList recordchanges::since(const imagemath::ResultRecord &record, const CVXSDataset &result,
                                 const CVXSDataset &a, const CVXSDataset &b)
{
    return changedOperand(record.a, a, QStringLiteral("A")) +
           changedOperand(record.b, b, QStringLiteral("B")) + changedPhotograph(record.photograph, result) +
           contradictions(record, result) + roiOfAnotherK(record);
}
