// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "math/RoiOfK.h"

#include <optional>
#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

class CVXSDataset;

namespace imagemath {

/// A file as it was when the result was saved.
struct FileRecord
{
    QString name;   ///< in the dataset's folder
    QString sha256; ///< lower-case hexadecimal
};

/// One operand as the computation found it.
struct OperandRecord
{
    QString clickNumber;
    QString sequenceId; ///< empty when it belonged to none
    bool flatFieldCorrected = false;
    bool backgroundSubtracted = false;
    bool fluorescenceBackgroundSubtracted = false;
    /// Stored pixels at which the camera was saturated, of how many, and from which counts on; -1: not known,
    /// as of a result, or of a record that does not tell.
    qint64 saturatedPixels = -1;
    qint64 pixels = -1;
    double saturationCeiling = -1.0;
    QVector<FileRecord> files; ///< image files that the computation may have read; noted when saved
    /// Values of ClickInfo that the calibrated image depends on, as "section/key"; a key that is not recorded
    /// is not there.
    QMap<QString, QString> constants;
};

/// A photograph that went into the result or lies under it.
struct PhotographRecord
{
    QString clickNumber; ///< empty: none
    FileRecord file;
};

/// How a result of image math was made: enough to compute it again. It travels as one JSON object in the
/// description of the result's TIFF.
struct ResultRecord
{
    QString operation;    ///< the formula's text
    float k = 0.0f;       ///< as it was used, not as it was shown
    QString unit;         ///< key of the unit of A, B and the result
    double binning = 0.0; ///< exact, of the result; 0 when it is not recorded
    OperandRecord a;
    OperandRecord b;
    PhotographRecord photograph;     ///< shown with the result
    PhotographRecord maskPhotograph; ///< whose tissue mask the thresholded ratio used
    std::optional<RoiOfK> roiOfK;    ///< that gave k; nothing for a k that was typed
    QStringList notes;               ///< what was said beside the result (Note)
    QString computed;                ///< ISO 8601, UTC
    QString version;                 ///< of the workspace, with the tool's build date

    bool isEmpty() const { return operation.isEmpty(); }
};

/// The shortest decimal that reads back as the same float, and its hexadecimal form; in the C locale.
QString decimalOf(float value);
QString hexadecimalOf(float value);

/// The record as a JSON object in UTF-8. k is there as the shortest decimal that reads back and in
/// hexadecimal; the latter counts when it is read.
QByteArray toJson(const ResultRecord &record);
/// False with a reason when the text is not such an object.
bool fromJson(const QByteArray &json, ResultRecord *record, QString *reason);

/// By which rules the version that made the result calibrated and binned its operands.
ECALIBRATIONRULES rulesOf(const ResultRecord &record);

/// What the dataset says of itself now; files are not noted yet.
OperandRecord recordOf(const CVXSDataset &dataset);
/// The image files that lie in that folder (ending in "/") and belong to the dataset, with their hashes.
/// What cannot be read is not noted.
QVector<FileRecord> imageFilesOf(const CVXSDataset &dataset, const QString &folder);
/// SHA-256 of a file in lower-case hexadecimal; empty when it cannot be read.
QString sha256OfFile(const QString &path);

} // namespace imagemath
