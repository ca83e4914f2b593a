// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "math/ResultRecord.h"

#include <charconv>
#include <cmath>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using imagemath::FileRecord;
using imagemath::OperandRecord;
using imagemath::PhotographRecord;
using imagemath::ResultRecord;

// Names of the members.
const QString MADE_BY = clickinfo::RECORD_MADE_BY;
const QString OPERATION = QStringLiteral("operation");
const QString K = QStringLiteral("k");
const QString K_HEX = QStringLiteral("k hexadecimal");
const QString UNIT = QStringLiteral("unit");
const QString BINNING = clickinfo::RECORD_BINNING;
const QString OPERAND_A = QStringLiteral("A");
const QString OPERAND_B = QStringLiteral("B");
const QString PHOTOGRAPH = QStringLiteral("photograph");
const QString MASK = QStringLiteral("mask photograph");
const QString COMPUTED = QStringLiteral("computed");
const QString VERSION = QStringLiteral("version");
const QString CLICK = QStringLiteral("click number");
const QString SEQUENCE = QStringLiteral("sequence");
const QString FLAT_FIELD = QStringLiteral("flat field corrected");
const QString BACKGROUND = QStringLiteral("background subtracted");
const QString FL_BACKGROUND = QStringLiteral("fluorescence background subtracted");
const QString CONSTANTS = QStringLiteral("constants");
const QString FILES = QStringLiteral("files");
const QString SATURATED = QStringLiteral("saturated pixels");
const QString PIXELS = QStringLiteral("pixels");
const QString CEILING = QStringLiteral("saturation ceiling");
const QString ROI_OF_K = QStringLiteral("k from ROI");
const QString NOTES = QStringLiteral("notes");
const QString NAME = QStringLiteral("name");
const QString SHA256 = QStringLiteral("sha256");

bool readHexadecimal(const QString &text, float *value)
{
    QByteArray digits = text.toLatin1();
    const bool isNegative = digits.startsWith('-');
    if (isNegative)
        digits.remove(0, 1);
    const bool isHex = digits.startsWith("0x");
    if (isHex)
        digits.remove(0, 2);
    float magnitude = 0.0f;
    const char *last = digits.constData() + digits.size();
    const auto read = std::from_chars(digits.constData(), last, magnitude,
                                      isHex ? std::chars_format::hex : std::chars_format::general);
    if (digits.isEmpty() || digits.startsWith('-') || read.ec != std::errc() || read.ptr != last)
        return false;
    *value = isNegative ? -magnitude : magnitude;
    return true;
}

QJsonObject fileToJson(const FileRecord &file)
{
    return {{NAME, file.name}, {SHA256, file.sha256}};
}

QJsonObject operandToJson(const OperandRecord &operand)
{
    QJsonArray files;
    for (const FileRecord &file : operand.files)
        files.append(fileToJson(file));
    QJsonObject constants;
    for (auto it = operand.constants.begin(); it != operand.constants.end(); ++it)
        constants.insert(it.key(), it.value());
    QJsonObject object{{CLICK, operand.clickNumber},
                       {SEQUENCE, operand.sequenceId},
                       {FLAT_FIELD, operand.flatFieldCorrected},
                       {BACKGROUND, operand.backgroundSubtracted},
                       {FL_BACKGROUND, operand.fluorescenceBackgroundSubtracted},
                       {CONSTANTS, constants},
                       {FILES, files}};
    if (operand.saturatedPixels >= 0) {
        object.insert(SATURATED, operand.saturatedPixels);
        object.insert(PIXELS, operand.pixels);
        object.insert(CEILING, operand.saturationCeiling);
    }
    return object;
}

QJsonObject photographToJson(const PhotographRecord &photograph)
{
    QJsonObject object = fileToJson(photograph.file);
    object.insert(CLICK, photograph.clickNumber);
    return object;
}

/// Reads members and remembers the first one that is missing or of another type.
class Reader
{
public:
    Reader(const QJsonObject &object, const QString &path, QString *reason)
        : m_object(object), m_path(path), m_reason(reason)
    {
    }

    QString text(const QString &name) { return value(name, QJsonValue::String).toString(); }
    bool flag(const QString &name) { return value(name, QJsonValue::Bool).toBool(); }
    double positive(const QString &name)
    {
        const double number = value(name, QJsonValue::Double).toDouble();
        if (!(number > 0.0))
            fail(name);
        return number;
    }
    QJsonObject object(const QString &name) { return value(name, QJsonValue::Object).toObject(); }
    QJsonArray array(const QString &name) { return value(name, QJsonValue::Array).toArray(); }
    double number(const QString &name) { return value(name, QJsonValue::Double).toDouble(); }
    bool has(const QString &name) const { return m_object.contains(name); }

    void fail(const QString &name)
    {
        if (m_reason->isEmpty())
            *m_reason = QStringLiteral("\"%1\" is missing or of another type").arg(m_path + name);
    }

private:
    QJsonValue value(const QString &name, QJsonValue::Type type)
    {
        const QJsonValue found = m_object.value(name);
        if (found.type() != type)
            fail(name);
        return found;
    }

    QJsonObject m_object;
    QString m_path;
    QString *m_reason;
};

FileRecord fileFromJson(const QJsonObject &object, const QString &path, QString *reason)
{
    Reader reader(object, path, reason);
    return {reader.text(NAME), reader.text(SHA256)};
}

OperandRecord operandFromJson(const QJsonObject &object, const QString &path, QString *reason)
{
    Reader reader(object, path, reason);
    OperandRecord operand;
    operand.clickNumber = reader.text(CLICK);
    operand.sequenceId = reader.text(SEQUENCE);
    operand.flatFieldCorrected = reader.flag(FLAT_FIELD);
    operand.backgroundSubtracted = reader.flag(BACKGROUND);
    operand.fluorescenceBackgroundSubtracted = reader.flag(FL_BACKGROUND);
    const QJsonObject constants = reader.object(CONSTANTS);
    for (auto it = constants.begin(); it != constants.end(); ++it) {
        if (!it.value().isString())
            reader.fail(CONSTANTS + QLatin1Char('/') + it.key());
        operand.constants.insert(it.key(), it.value().toString());
    }
    if (reader.has(SATURATED)) {
        operand.saturatedPixels = qint64(reader.number(SATURATED));
        operand.pixels = qint64(reader.number(PIXELS));
        operand.saturationCeiling = reader.number(CEILING);
    }
    const QJsonArray files = reader.array(FILES);
    for (const QJsonValue &file : files)
        operand.files.append(fileFromJson(file.toObject(), path + FILES + QLatin1Char('/'), reason));
    return operand;
}

PhotographRecord photographFromJson(const QJsonObject &object, const QString &path, QString *reason)
{
    return {Reader(object, path, reason).text(CLICK), fileFromJson(object, path, reason)};
}

/// What a record may have or not.
void readRoiOfK(const QJsonObject &made, ResultRecord *record, Reader *reader)
{
    if (!made.contains(ROI_OF_K))
        return;
    imagemath::RoiOfK roi;
    QString member;
    if (imagemath::fromJson(reader->object(ROI_OF_K), &roi, &member))
        record->roiOfK = roi;
    else
        reader->fail(ROI_OF_K + QLatin1Char('/') + member);
}

void readNotes(const QJsonObject &made, ResultRecord *record, Reader *reader)
{
    if (!made.contains(NOTES))
        return;
    const QJsonArray notes = reader->array(NOTES);
    for (const QJsonValue &note : notes) {
        if (!note.isString())
            reader->fail(NOTES);
        record->notes += note.toString();
    }
}

} // namespace

QString imagemath::decimalOf(float value)
{
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return QString::fromLatin1(text, int(end - text));
}

QString imagemath::hexadecimalOf(float value)
{
    if (!std::isfinite(value))
        return decimalOf(value);
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::hex).ptr;
    return (std::signbit(value) ? QStringLiteral("-0x") : QStringLiteral("0x")) +
           QString::fromLatin1(text, int(end - text));
}

QByteArray imagemath::toJson(const ResultRecord &record)
{
    QJsonObject made{{OPERATION, record.operation},        {K, decimalOf(record.k)},
                     {K_HEX, hexadecimalOf(record.k)},     {UNIT, record.unit},
                     {OPERAND_A, operandToJson(record.a)}, {OPERAND_B, operandToJson(record.b)},
                     {COMPUTED, record.computed},          {VERSION, record.version}};
    if (record.binning > 0.0)
        made.insert(BINNING, record.binning);
    if (!record.photograph.clickNumber.isEmpty())
        made.insert(PHOTOGRAPH, photographToJson(record.photograph));
    if (!record.maskPhotograph.clickNumber.isEmpty())
        made.insert(MASK, photographToJson(record.maskPhotograph));
    if (record.roiOfK)
        made.insert(ROI_OF_K, toJson(*record.roiOfK));
    if (!record.notes.isEmpty())
        made.insert(NOTES, QJsonArray::fromStringList(record.notes));
    return QJsonDocument(QJsonObject{{MADE_BY, made}}).toJson(QJsonDocument::Indented);
}

bool imagemath::fromJson(const QByteArray &json, ResultRecord *record, QString *reason)
{
    reason->clear();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        *reason = error.errorString();
        return false;
    }
    const QJsonObject made = Reader(document.object(), QString(), reason).object(MADE_BY);
    if (!reason->isEmpty())
        return false;

    Reader reader(made, QString(), reason);
    ResultRecord read;
    read.operation = reader.text(OPERATION);
    if (!readHexadecimal(reader.text(K_HEX), &read.k))
        reader.fail(K_HEX);
    read.unit = reader.text(UNIT);
    read.a = operandFromJson(reader.object(OPERAND_A), QStringLiteral("A/"), reason);
    read.b = operandFromJson(reader.object(OPERAND_B), QStringLiteral("B/"), reason);
    read.computed = reader.text(COMPUTED);
    read.version = reader.text(VERSION);
    if (made.contains(BINNING))
        read.binning = reader.positive(BINNING);
    if (made.contains(PHOTOGRAPH))
        read.photograph =
            photographFromJson(reader.object(PHOTOGRAPH), PHOTOGRAPH + QLatin1Char('/'), reason);
    if (made.contains(MASK))
        read.maskPhotograph = photographFromJson(reader.object(MASK), MASK + QLatin1Char('/'), reason);
    readRoiOfK(made, &read, &reader);
    readNotes(made, &read, &reader);
    if (!reason->isEmpty())
        return false;
    *record = read;
    return true;
}
