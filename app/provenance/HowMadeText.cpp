// SPDX-License-Identifier: MIT
#include "app/provenance/HowMadeText.h"

#include "app/datasets/ResultSources.h"
#include "check/StoredRecord.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"

#include <cmath>
#include <QCoreApplication>
#include <QDateTime>
#include <QRegularExpression>

using namespace clickinfo;
using imagemath::FileRecord;
using imagemath::OperandRecord;
using imagemath::ResultRecord;

namespace {

constexpr int SHORT_HASH = 12; // digits
constexpr int MAX_SHOWN = 300; // characters; longer ones are no text of ours
constexpr int MAX_FILES = 12;  // of an operand; it has six images

using Rows = QVector<HowMadeRow>;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(HowMade)
};

void heading(Rows *rows, const QString &name)
{
    rows->append({HowMadeRow::Kind::Heading, name, QString(), QString()});
}

void remark(Rows *rows, const QString &text)
{
    rows->append({HowMadeRow::Kind::Remark, QString(), text, QString()});
}

void pair(Rows *rows, const QString &name, const QString &value, const QString &full = QString())
{
    HowMadeRow row{HowMadeRow::Kind::Pair, name, value, full};
    if (value.isEmpty())
        row.value = Text::tr("not recorded");
    if (row.value.size() > MAX_SHOWN) {
        if (full.isEmpty())
            row.full = value;
        row.value = value.left(MAX_SHOWN) + QChar(0x2026);
    }
    rows->append(row);
}

/// What a file names by a key; a key that is none is shown as it stands.
QString unitOf(const QString &key)
{
    tag_edisplayunit unit = EUNIT_COUNTS;
    return unitOfKey(key, &unit) ? unitText(unit) : key;
}

QString dateText(const QString &iso)
{
    const QDateTime date = QDateTime::fromString(iso, Qt::ISODate);
    return date.isValid()
               ? date.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" UTC")
               : iso;
}

QString correctionsText(bool flatField, bool background, bool fluorescenceBackground)
{
    QStringList all;
    if (background)
        all += Text::tr("background");
    if (flatField)
        all += Text::tr("flat field");
    if (fluorescenceBackground)
        all += Text::tr("fluorescence background");
    return all.isEmpty() ? Text::tr("none") : all.join(QStringLiteral(", "));
}

void addFile(Rows *rows, const FileRecord &file)
{
    if (file.sha256.isEmpty())
        pair(rows, file.name, QString());
    else
        pair(rows, file.name, QStringLiteral("SHA-256 ") + file.sha256.left(SHORT_HASH) + QChar(0x2026),
             QStringLiteral("SHA-256 ") + file.sha256);
}

/// They fill a page: the panel only counts them.
void addConstants(Rows *rows, const QMap<QString, QString> &constants)
{
    QStringList lines;
    for (auto it = constants.begin(); it != constants.end(); ++it)
        lines += it.key() + QStringLiteral(" = ") + it.value();
    pair(rows, Text::tr("Calibration"),
         lines.isEmpty() ? QString() : Text::tr("%1 values of ClickInfo").arg(lines.size()),
         lines.join(QStringLiteral("; ")));
}

/// Nothing for an image that was not imported.
void addSource(Rows *rows, const QString &file)
{
    if (!file.isEmpty())
        pair(rows, Text::tr("Imported from"), file);
}

QString saturationText(const OperandRecord &operand)
{
    if (operand.saturatedPixels < 0)
        return QString();
    return Text::tr("%1 of %2 (%3 counts or more)")
        .arg(operand.saturatedPixels)
        .arg(operand.pixels)
        .arg(textOfNumber(operand.saturationCeiling));
}

QString saturationText(const imagemath::RoiOfK::Total &total)
{
    return total.saturatedPixels < 0 ? QString() : QString::number(total.saturatedPixels);
}

/// The record has all digits of a measure; the user reads it to a thousandth of a pixel at least.
QString withFewDigits(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("\\d+\\.\\d{5,}"));
    QString shortened;
    int done = 0;
    for (auto matches = number.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        shortened += text.midRef(done, match.capturedStart() - done);
        shortened += QString::number(match.captured().toDouble(), 'f', 4);
        done = match.capturedEnd();
    }
    return shortened + text.mid(done);
}

void addRoiOfK(Rows *rows, const imagemath::RoiOfK &roi)
{
    tag_edisplayunit unit = EUNIT_COUNTS;
    unitOfKey(roi.unit, &unit);
    heading(rows, Text::tr("k from an ROI"));
    pair(rows, Text::tr("ROI"), roi.name);
    pair(rows, Text::tr("Drawn in"), roi.clickNumber);
    pair(rows, Text::tr("Shape [cm]"), withFewDigits(roi.shape));
    const auto total = [&](const QString &role, const imagemath::RoiOfK::Total &of) {
        pair(rows, Text::tr("%1 in %2").arg(unitTotalText(unit), role),
             QStringLiteral("%1 (%2)").arg(textOfNumber(of.value), of.clickNumber));
        pair(rows, Text::tr("Saturated pixels in %1").arg(role), saturationText(of));
    };
    total(QStringLiteral("A"), roi.inA);
    total(QStringLiteral("B"), roi.inB);
}

void addOperand(Rows *rows, const QString &role, const OperandRecord &operand, const QString &source)
{
    heading(rows, role);
    pair(rows, Text::tr("Click number"), operand.clickNumber);
    addSource(rows, source);
    pair(rows, Text::tr("Sequence"), operand.sequenceId.isEmpty() ? Text::tr("none") : operand.sequenceId);
    pair(rows, Text::tr("Corrected for"),
         correctionsText(operand.flatFieldCorrected, operand.backgroundSubtracted,
                         operand.fluorescenceBackgroundSubtracted));
    pair(rows, Text::tr("Saturated pixels"), saturationText(operand));
    addConstants(rows, operand.constants);
    for (int i = 0; i < operand.files.size() && i < MAX_FILES; ++i)
        addFile(rows, operand.files.at(i));
    if (operand.files.isEmpty())
        pair(rows, Text::tr("Files"), QString());
}

void addPhotograph(Rows *rows, const QString &role, const imagemath::PhotographRecord &photograph)
{
    heading(rows, role);
    if (photograph.clickNumber.isEmpty()) {
        pair(rows, Text::tr("From"), Text::tr("none"));
        return;
    }
    pair(rows, Text::tr("From"), photograph.clickNumber);
    addFile(rows, photograph.file);
}

/// Whether the text that ClickInfo keeps reads as another number than the one that was used.
bool showsOtherNumber(const QString &text, float k)
{
    bool isNumber = false;
    const auto shown = float(text.toDouble(&isNumber));
    return !isNumber || !(shown == k || (std::isnan(shown) && std::isnan(k))) ||
           std::signbit(shown) != std::signbit(k);
}

Rows rowsOfRecord(const ResultRecord &record, const CPLClickInfo &info, const ResultSources &sources)
{
    Rows rows;
    for (const QString &note : record.notes)
        remark(&rows, note + QLatin1Char('.'));
    pair(&rows, Text::tr("Operation"), record.operation);
    pair(&rows, Text::tr("k, exactly"),
         QStringLiteral("%1  =  %2").arg(imagemath::decimalOf(record.k), imagemath::hexadecimalOf(record.k)));
    const QString shown = textOf(info, SECTION_LUMINESCENT, KEY_MATH_K);
    if (showsOtherNumber(shown, record.k))
        pair(&rows, Text::tr("k in ClickInfo"), shown);
    pair(&rows, Text::tr("Unit"), unitOf(record.unit));
    pair(&rows, Text::tr("Computed"), dateText(record.computed));
    pair(&rows, Text::tr("Version"), record.version);
    if (record.roiOfK)
        addRoiOfK(&rows, *record.roiOfK);
    addOperand(&rows, QStringLiteral("A"), record.a, sources.a);
    addOperand(&rows, QStringLiteral("B"), record.b, sources.b);
    addPhotograph(&rows, Text::tr("Photograph under the result"), record.photograph);
    if (!record.maskPhotograph.clickNumber.isEmpty())
        addPhotograph(&rows, Text::tr("Photograph of the tissue mask"), record.maskPhotograph);
    return rows;
}

Rows rowsOfClickInfo(const CPLClickInfo &info, const QString &problem, const ResultSources &sources)
{
    const auto told = [&info](QLatin1String key) { return textOf(info, SECTION_LUMINESCENT, key); };
    Rows rows;
    remark(&rows, problem);
    remark(&rows, Text::tr("This is what its ClickInfo.txt tells; it cannot be checked:"));
    pair(&rows, Text::tr("Operation"), told(KEY_MATH_OPERATION));
    pair(&rows, Text::tr("k, as typed"), told(KEY_MATH_K));
    pair(&rows, QStringLiteral("A"), told(KEY_MATH_A));
    addSource(&rows, sources.a);
    pair(&rows, QStringLiteral("B"), told(KEY_MATH_B));
    addSource(&rows, sources.b);
    const QString photograph = told(KEY_MATH_PHOTOGRAPH);
    pair(&rows, Text::tr("Photograph"), photograph.isEmpty() ? Text::tr("none") : photograph);
    pair(&rows, Text::tr("Unit"), unitOf(textOf(info, SECTION_GRAPH_CONTROLS, KEY_INTENSITY_CALIBRATION)));
    const auto isSet = [&info](QLatin1String key) { return flagOf(info, SECTION_LUMINESCENT, key); };
    pair(&rows, Text::tr("A corrected for"),
         correctionsText(isSet(KEY_FLATFIELD_CORRECTED), isSet(KEY_BACKGROUND_CORRECTED),
                         isSet(KEY_FL_BACKGROUND_CORRECTED)));
    pair(&rows, Text::tr("Version"), textOf(info, SECTION_CLICK_NUMBER, KEY_VERSION));
    return rows;
}

} // namespace

QVector<HowMadeRow> howmade::rowsOf(const CVXSDataset &result, const StoredRecord &stored)
{
    const CPLClickInfo &info = *result.getClickInfo();
    const ResultSources sources = ResultSources::of(result.getFolderPath());
    return stored.isThere() ? rowsOfRecord(stored.record, info, sources)
                            : rowsOfClickInfo(info, stored.problem, sources);
}

QString howmade::plainText(const QVector<HowMadeRow> &rows)
{
    QStringList lines;
    for (const HowMadeRow &row : rows) {
        if (row.kind == HowMadeRow::Kind::Heading)
            lines += QStringList{QString(), row.name};
        else if (row.kind == HowMadeRow::Kind::Remark)
            lines += row.whole();
        else
            lines += row.name + QStringLiteral(": ") + row.whole();
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
