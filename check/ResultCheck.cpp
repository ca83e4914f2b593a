// SPDX-License-Identifier: MIT
#include "check/ResultCheck.h"

#include "check/PixelDifference.h"
#include "check/RecordChanges.h"
#include "check/ReopenedOperand.h"
#include "check/StoredRecord.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "math/Computation.h"
#include "math/Formula.h"

#include <QCoreApplication>
#include <QDir>

#include <memory>

using imagemath::ResultRecord;

namespace {

constexpr int MAX_LINES = 40;
constexpr int MAX_LINE = 400; // characters

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ResultCheck)
};

/// A damaged record may give any number of lines of any length.
QStringList shortened(const QStringList &lines)
{
    QStringList few;
    for (const QString &line : lines.mid(0, MAX_LINES))
        few += line.size() > MAX_LINE ? line.left(MAX_LINE) + QChar(0x2026) : line;
    if (lines.size() > MAX_LINES)
        few += Text::tr("And %1 more.").arg(lines.size() - MAX_LINES);
    return few;
}

ResultCheck ended(ResultCheck::Verdict verdict, const QString &headline, const QStringList &lines)
{
    ResultCheck check;
    check.verdict = verdict;
    check.headline = headline;
    check.lines = shortened(lines);
    return check;
}

QString whereFrom(const QString &role, const ReopenedOperand &operand)
{
    const QString click = operand.dataset->getClickNumber();
    return operand.copy ? Text::tr("%1 is %2, as it is in memory.").arg(role, click)
                        : Text::tr("%1 is in %2")
                              .arg(role, QDir::toNativeSeparators(operand.dataset->getFolderPath()));
}

ResultCheck compared(tag_edisplayunit unit, const CILImage &stored, const CILImage &computed,
                     QStringList changes, QStringList remarks)
{
    using Verdict = ResultCheck::Verdict;
    const PixelDifference difference = PixelDifference::compare(stored, computed);
    const bool isChanged = !changes.isEmpty();
    if (difference.areSame())
        return isChanged
                   ? ended(Verdict::SameThoughChanged,
                           Text::tr("The same to the last bit, although not all is as recorded."),
                           changes + remarks)
                   : ended(Verdict::Same, Text::tr("Computed again: the same to the last bit."), remarks);
    const QString sentence = difference.text(unit);
    return isChanged
               ? ended(Verdict::DifferentAsChanged,
                       Text::tr("The operands are not what they were: %1").arg(sentence), changes + remarks)
               : ended(Verdict::Different,
                       Text::tr("The result is not what its record gives: %1").arg(sentence),
                       QStringList{Text::tr("The operands are as recorded: the result's pixels or its "
                                            "record were changed.")} +
                           remarks);
}

imagemath::Corrections correctionsOf(const imagemath::OperandRecord &record)
{
    return {record.flatFieldCorrected, record.backgroundSubtracted};
}

/// The result that the record's formula gives of these datasets, whose corrections become the recorded ones;
/// empty with a reason when there is none.
CILImage computedAgain(const ResultRecord &record, CVXSDataset &a, CVXSDataset &b, QString *reason)
{
    imagemath::Request request{{&a, correctionsOf(record.a)}, {&b, correctionsOf(record.b)}};
    request.formula = imagemath::formulaNamed(record.operation);
    request.k = record.k;
    if (!request.formula || !unitOfKey(record.unit, &request.unit)) {
        *reason = request.formula ? QStringLiteral("\"%1\" is not a unit").arg(record.unit)
                                  : QStringLiteral("\"%1\" is not a formula").arg(record.operation);
        return CILImage();
    }
    CILImage imageA;
    CILImage imageB;
    CILImage result;
    imagemath::TissueMaskMemo masks;
    // The first thing that goes wrong ends it: a result of other operands proves nothing.
    imagemath::Steps steps;
    steps.operandsReady = [](const imagemath::Outcome &prepared) { return prepared.problems.isEmpty(); };
    steps.operandFetched = [](const imagemath::Outcome &so, const CILImage &) {
        return so.problems.isEmpty();
    };
    const auto outcome = imagemath::compute(request, {imageA, imageB, result}, masks, steps);
    if (!outcome.problems.isEmpty())
        *reason = outcome.problems.first();
    else if (outcome.combination != imagemath::Combination::Possible)
        *reason = imagemath::messageOf(outcome.combination).join(QLatin1Char(' '));
    else if (result.isEmpty())
        *reason = QStringLiteral("the formula gives no image");
    return result;
}

} // namespace

ELOGLEVEL ResultCheck::level() const
{
    switch (verdict) {
    case Verdict::Same:
        return ELOG_INFORMATION;
    case Verdict::Failed:
        return ELOG_FAILURE;
    default:
        return ELOG_WARNING;
    }
}

ResultCheck ResultCheck::of(const CVXSDataset &result, const QStringList &sequenceFolders)
{
    const QString notChecked = Text::tr("The result could not be checked.");
    QString reason;
    const std::unique_ptr<CVXSDataset> stored(CVXSDataset::open(result.getFolderPath(), nullptr, &reason));
    if (!stored)
        return ended(Verdict::Failed, notChecked, {reason});
    const StoredRecord found = StoredRecord::of(*stored);
    if (!found.isThere())
        return ended(Verdict::NotFound, notChecked, {found.problem});
    const ResultRecord &record = found.record;

    const ReopenedOperand a = ReopenedOperand::find(record.a, sequenceFolders);
    const ReopenedOperand b = ReopenedOperand::find(record.b, sequenceFolders);
    QStringList missing;
    if (!a.dataset)
        missing += Text::tr("Operand A: %1.").arg(a.problem);
    if (!b.dataset)
        missing += Text::tr("Operand B: %1.").arg(b.problem);
    if (!missing.isEmpty())
        return ended(Verdict::NotFound, Text::tr("An operand is missing; nothing was checked."), missing);

    const ECALIBRATIONRULES rules = imagemath::rulesOf(record);
    a.dataset->setCalibrationRules(rules);
    b.dataset->setCalibrationRules(rules);
    const QStringList changes = recordchanges::since(record, *stored, *a.dataset, *b.dataset);
    QStringList remarks;
    for (const QString &remark : {a.remark, b.remark == a.remark ? QString() : b.remark}) {
        if (!remark.isEmpty())
            remarks += remark + QLatin1Char('.');
    }
    if (rules != ECALIBRATION_NOW)
        remarks +=
            Text::tr("It was made by version %1 and computed again by the rules of that version: counts "
                     "of binned pixels are their mean, not their sum; a flat field divides as it is, "
                     "whatever its scale; an operand that is a product or a ratio is converted like "
                     "its unit.")
                .arg(record.version);
    remarks += whereFrom(QStringLiteral("A"), a);
    remarks += whereFrom(QStringLiteral("B"), b);

    const CILImage *pixels = stored->getCoreImage(EIMAGE_LUMINESCENT);
    if (!pixels)
        return ended(Verdict::Failed, notChecked, QStringList{stored->lastError()} + changes + remarks);
    const CILImage computed = computedAgain(record, *a.dataset, *b.dataset, &reason);
    if (computed.isEmpty())
        return ended(Verdict::Failed, Text::tr("The result could not be computed again."),
                     QStringList{reason} + changes + remarks);
    return compared(stored->getShownUnit(), *pixels, computed, changes, remarks);
}
