// SPDX-License-Identifier: MIT
#include "host/vxapi/model/import/ImageImport.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/import/ImportedImages.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QStringList>
#include <utility>

using namespace clickinfo;

namespace {

constexpr double CM_PER_UM = 1e-4;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImageImport)
};

QString refused(QLatin1String key, const QString &reason)
{
    return key + QStringLiteral(": ") + reason;
}

/// "setting: reason" of the first number that is not usable; empty when all are.
QString refusedNumber(const ImportSettings &settings)
{
    struct Number
    {
        QLatin1String key;
        double value;
        bool isNeeded;
    };
    const Number numbers[] = {
        {KEY_FOV, settings.fieldOfView, true},
        {KEY_BINNING, settings.binning, true},
        {KEY_EXPOSURE, settings.exposure, false},
        {KEY_FNUMBER, settings.fNumber, false},
        {KEY_PIXEL_PITCH, settings.pixelPitch, false},
        {KEY_GAIN, settings.electronsPerCount, false},
        {KEY_QUANTUM_EFFICIENCY, settings.quantumEfficiency, false},
        {KEY_TRANSMISSION, settings.transmission, false},
        {KEY_EXCITATION_IRRADIANCE, settings.excitationIrradiance, false},
        {KEY_OFFSET, settings.offset, false},
    };
    for (const Number &number : numbers) {
        if (std::isnan(number.value) && !number.isNeeded)
            continue;
        if (!std::isfinite(number.value) || !constantRange(number.key).holds(number.value))
            return refused(number.key, constantRange(number.key).requirement());
    }
    return QString();
}

/// "setting: reason" of the first setting that is not usable; empty when all are.
QString refusal(const ImportFiles &files, const ImportSettings &settings)
{
    const QStringList kinds = {KIND_LUMINESCENT, KIND_FLUORESCENT, KIND_TRANSFLUORESCENT,
                               KIND_TRANSILLUMINATION};
    if (!settings.kind.isEmpty() && !kinds.contains(settings.kind))
        return refused(KEY_KIND, Text::tr("\"%1\" is no kind of acquisition").arg(settings.kind));
    const QString number = refusedNumber(settings);
    if (!number.isEmpty())
        return number;
    if (!std::isnan(settings.offset) && !files.dark.isEmpty())
        return refused(KEY_OFFSET, Text::tr("there is a dark image as well, \"%1\"; only one of them can be "
                                            "subtracted")
                                       .arg(QFileInfo(files.dark).fileName()));
    if (!settings.acquisitionDate.isEmpty() &&
        !QDateTime::fromString(settings.acquisitionDate, Qt::ISODate).isValid())
        return refused(
            KEY_ACQUISITION_DATE,
            Text::tr("\"%1\" is no date of the form 2026-11-21T15:30:00").arg(settings.acquisitionDate));
    return QString();
}

/// Nothing for a number that is not known.
void setNumber(CPLSection *section, QLatin1String key, double value)
{
    if (!std::isnan(value))
        section->setValue(key, textOfNumber(value));
}

/// What luminescent image and photograph have in common.
void describe(CPLSection *section, const QString &path, const ImportSettings &settings, double binning)
{
    section->setValue(KEY_IMPORTED_FROM, QFileInfo(path).fileName());
    if (!settings.acquisitionDate.isEmpty())
        section->setValue(KEY_ACQUISITION_DATE, settings.acquisitionDate);
    setNumber(section, KEY_BINNING, binning);
    setNumber(section, KEY_FOV, settings.fieldOfView);
}

/// The note is the last pair of its section: what a tool adds is found before it.
void addNote(CPLSection *section, double binning)
{
    section->addKeyValue(KEY_NOTE, QStringLiteral("Binning Factor=%1;").arg(textOfNumber(binning)));
}

void addLuminescent(CVXSDataset *dataset, CILImage image, const QString &path, const ImportSettings &settings)
{
    image.setBinningFactor(float(settings.binning));
    dataset->setCoreImage(EIMAGE_LUMINESCENT, image);
    CPLSection *section = ensureSection(dataset->getClickInfo(), SECTION_LUMINESCENT);
    describe(section, path, settings, settings.binning);
    section->setValue(KEY_KIND, settings.kind.isEmpty() ? KIND_LUMINESCENT : settings.kind);
    setNumber(section, KEY_EXPOSURE, settings.exposure);
    setNumber(section, KEY_FNUMBER, settings.fNumber);
    setNumber(section, KEY_TRANSMISSION, settings.transmission);
    setNumber(section, KEY_EXCITATION_IRRADIANCE, settings.excitationIrradiance);
    if (!settings.imagingAngle.isEmpty())
        section->setValue(KEY_IMAGING_ANGLE, settings.imagingAngle);
    addNote(section, settings.binning);

    const double sensorWidth =
        double(image.getWidth()) * settings.binning * settings.pixelPitch * CM_PER_UM; // [cm]
    CPLSection *camera = ensureSection(dataset->getClickInfo(), SECTION_CAMERA);
    setNumber(camera, KEY_GAIN, settings.electronsPerCount);
    setNumber(camera, KEY_QUANTUM_EFFICIENCY, settings.quantumEfficiency);
    setNumber(camera, KEY_PIXEL_PITCH, settings.pixelPitch);
    setNumber(camera, KEY_MAGNIFICATION, sensorWidth / settings.fieldOfView);
}

/// It shows the same field, so its binning follows from its size.
void addPhotograph(CVXSDataset *dataset, const CILImage &image, const QString &path,
                   const ImportSettings &settings, double sensorPixels)
{
    dataset->setCoreImage(EIMAGE_PHOTOGRAPH, image);
    CPLSection *section = ensureSection(dataset->getClickInfo(), SECTION_PHOTOGRAPH);
    const double binning = std::max(1.0, sensorPixels / double(image.getWidth()));
    describe(section, path, settings, binning);
    addNote(section, binning);
}

/// An image of the same grid that is taken with it.
void addCompanion(CVXSDataset *dataset, tag_eimagetype type, QLatin1String section, const CILImage &image,
                  const QString &path)
{
    if (image.isEmpty())
        return;
    dataset->setCoreImage(type, image);
    ensureSection(dataset->getClickInfo(), section)->setValue(KEY_IMPORTED_FROM, QFileInfo(path).fileName());
}

/// A background image that is the offset everywhere.
void addOffset(CVXSDataset *dataset, const CILImage &luminescent, double offset)
{
    CILImage image;
    image.InitWithType(VXS_FLOAT, luminescent.getWidth(), luminescent.getHeight());
    auto *pixels = static_cast<float *>(image.get_data());
    std::fill(pixels, pixels + image.pixelCount(), float(offset));
    // A copy is an image of its own, of which nobody holds the pixels: what is computed with it may be
    // remembered.
    dataset->setCoreImage(EIMAGE_BACKGROUND, CILImage(static_cast<const CILImage &>(image)));
    setNumber(ensureSection(dataset->getClickInfo(), SECTION_BACKGROUND), KEY_OFFSET, offset);
}

void addImages(CVXSDataset *dataset, const ImportFiles &files, const ImportedImages &images,
               const ImportSettings &settings)
{
    addLuminescent(dataset, images.luminescent, files.luminescent, settings);
    if (!images.photograph.isEmpty())
        addPhotograph(dataset, images.photograph, files.photograph, settings,
                      double(images.luminescent.getWidth()) * settings.binning);
    addCompanion(dataset, EIMAGE_BACKGROUND, SECTION_BACKGROUND, images.dark, files.dark);
    addCompanion(dataset, EIMAGE_FLATFIELD, SECTION_FLATFIELD, images.flatField, files.flatField);
    addCompanion(dataset, EIMAGE_EXCITATION, SECTION_EXCITATION, images.excitation, files.excitation);
    if (!std::isnan(settings.offset))
        addOffset(dataset, images.luminescent, settings.offset);
}

} // namespace

QStringList ImportFiles::all() const
{
    QStringList paths = {luminescent, photograph, dark, flatField, excitation};
    paths.removeAll(QString());
    return paths;
}

std::unique_ptr<CVXSDataset> importImages(const QString &clickNumber, const ImportFiles &files,
                                          const ImportSettings &settings, ESTATUS *status, QString *error)
{
    const auto tell = [status, error](ESTATUS code, const QString &reason) {
        if (status)
            *status = code;
        if (error)
            *error = reason;
        return nullptr;
    };
    if (!CVXUtilityFns::isSafeFileName(clickNumber))
        return tell(ESTATUS_BAD_NAME,
                    Text::tr("click number: \"%1\" is not a plain file name").arg(clickNumber));
    const QString setting = refusal(files, settings);
    if (!setting.isEmpty())
        return tell(ESTATUS_BAD_VALUE, setting);
    ImportedImages images;
    QString reason;
    const ESTATUS code = readImages(files, &images, &reason);
    if (code != ESTATUS_SUCCESS)
        return tell(code, reason);

    auto dataset = std::make_unique<CVXSDataset>(clickNumber);
    ensureSection(dataset->getClickInfo(), SECTION_CLICK_NUMBER)
        ->setValue(KEY_VERSION, CVXPreference::getAppVersion());
    addImages(dataset.get(), files, images, settings);
    for (const QString &path : files.all()) {
        const QString left = notImported(path);
        if (!left.isEmpty())
            vxLog(ELOG_WARNING, path + QStringLiteral(": ") + left);
    }
    tell(ESTATUS_SUCCESS, QString());
    return dataset;
}
