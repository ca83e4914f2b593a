// SPDX-License-Identifier: MIT
#include "math/ResultRecord.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "math/ToolLog.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace clickinfo;

namespace {

struct Constant
{
    QLatin1String section;
    QLatin1String key;
};

// Everything of ClickInfo that decides about a calibrated image or a formula.
constexpr Constant CONSTANTS[] = {
    {SECTION_CAMERA, KEY_GAIN},
    {SECTION_CAMERA, KEY_QUANTUM_EFFICIENCY},
    {SECTION_CAMERA, KEY_PIXEL_PITCH},
    {SECTION_CAMERA, KEY_MAGNIFICATION},
    {SECTION_LUMINESCENT, KEY_KIND},
    {SECTION_LUMINESCENT, KEY_EXPOSURE},
    {SECTION_LUMINESCENT, KEY_FNUMBER},
    {SECTION_LUMINESCENT, KEY_TRANSMISSION},
    {SECTION_LUMINESCENT, KEY_EXCITATION_IRRADIANCE},
    {SECTION_LUMINESCENT, KEY_BINNING},
    {SECTION_LUMINESCENT, KEY_FOV},
    {SECTION_LUMINESCENT, KEY_FLUORESCENCE_LEVEL},
    {SECTION_LUMINESCENT, KEY_BACKGROUND_CORRECTED},
    {SECTION_LUMINESCENT, KEY_FLATFIELD_CORRECTED},
    {SECTION_LUMINESCENT, KEY_MATH_OPERATION},
    {SECTION_GRAPH_CONTROLS, KEY_INTENSITY_CALIBRATION},
};

/// The constants of one section as texts.
struct SectionConstants
{
    QString section;
    QVector<QPair<QString, QString>> keys; ///< key, and "section/key"
};

QString pathOf(QLatin1String section, QLatin1String key)
{
    return section + QLatin1Char('/') + key;
}

SectionConstants constantsOf(QLatin1String section)
{
    SectionConstants found;
    found.section = section;
    for (const Constant &constant : CONSTANTS) {
        if (found.section == QLatin1String(constant.section))
            found.keys.append({constant.key, pathOf(section, constant.key)});
    }
    return found;
}

constexpr tag_eimagetype IMAGES[] = {EIMAGE_LUMINESCENT, EIMAGE_PHOTOGRAPH, EIMAGE_FLATFIELD,
                                     EIMAGE_BACKGROUND, EIMAGE_EXCITATION};

} // namespace

imagemath::OperandRecord imagemath::recordOf(const CVXSDataset &dataset)
{
    OperandRecord record;
    record.clickNumber = dataset.getClickNumber();
    if (const CVXSSequenceDataset *sequence = dataset.getSequenceDataset())
        record.sequenceId = sequence->getSequenceID();
    record.flatFieldCorrected = dataset.isLuminFlatFieldCorrected();
    record.backgroundSubtracted = dataset.isLuminBackgroundSubtracted();
    record.fluorescenceBackgroundSubtracted = dataset.isLuminFLBkgSubtracted();

    // This runs at every computation: each section is looked up once, and no text is made.
    const auto note = [&](const SectionConstants &wanted) {
        const CPLSection *section = (*dataset.getClickInfo())[wanted.section];
        for (const auto &[key, path] : wanted.keys) {
            QString value;
            if (section && section->getValue(key, &value) == ESTATUS_SUCCESS)
                record.constants.insert(path, value);
        }
    };
    static const SectionConstants camera = constantsOf(SECTION_CAMERA);
    static const SectionConstants luminescent = constantsOf(SECTION_LUMINESCENT);
    static const SectionConstants graph = constantsOf(SECTION_GRAPH_CONTROLS);
    static const QString isResult = pathOf(SECTION_LUMINESCENT, KEY_MATH_OPERATION);
    note(camera);
    note(luminescent);
    // Of a result it is the unit of its pixels; of others only what they are shown in.
    if (record.constants.contains(isResult))
        note(graph);
    return record;
}

ECALIBRATIONRULES imagemath::rulesOf(const ResultRecord &record)
{
    return record.version.startsWith(QLatin1String("1.0.")) ? ECALIBRATION_1_0 : ECALIBRATION_NOW;
}

QVector<imagemath::FileRecord> imagemath::imageFilesOf(const CVXSDataset &dataset, const QString &folder)
{
    QVector<FileRecord> files;
    const bool isOwnFolder = QDir(folder) == QDir(dataset.getFolderPath());
    for (const tag_eimagetype type : IMAGES) {
        const QString name = dataset.getImageFileName(type);
        if (!dataset.getImageList()->isPresent(type) || !CVXUtilityFns::isSafeFileName(name))
            continue;
        const QString hash = sha256OfFile(folder + name);
        if (hash.isEmpty())
            continue;
        if (isOwnFolder && !dataset.isImageFileAsRead(type)) {
            logLine(QStringLiteral(
                        "%1%2: the file was changed after it had been read; the result is of the image as it "
                        "was read, and does not say which file that is")
                        .arg(folder, name));
            continue;
        }
        files.append({name, hash});
    }
    return files;
}

QString imagemath::sha256OfFile(const QString &path)
{
    // A pipe of that name would keep the reader waiting for ever.
    if (!QFileInfo(path).isFile())
        return QString();
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return QString();
    return QString::fromLatin1(hash.result().toHex());
}
