// SPDX-License-Identifier: MIT
#include "host/vxapi/model/import/ImageImport.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
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

/// "setting: reason" of the first setting that is not usable; empty when all are.
QString refusal(const ImportSettings &settings)
{
    const auto refused = [](QLatin1String key, const QString &reason) {
        return key + QStringLiteral(": ") + reason;
    };
    const QStringList kinds = {KIND_LUMINESCENT, KIND_FLUORESCENT, KIND_TRANSFLUORESCENT,
                               KIND_TRANSILLUMINATION};
    if (!settings.kind.isEmpty() && !kinds.contains(settings.kind))
        return refused(KEY_KIND, Text::tr("\"%1\" is no kind of acquisition").arg(settings.kind));
    const std::pair<QLatin1String, double> numbers[] = {
        {KEY_FOV, settings.fieldOfView},           {KEY_EXPOSURE, settings.exposure},
        {KEY_FNUMBER, settings.fNumber},           {KEY_PIXEL_PITCH, settings.pixelPitch},
        {KEY_GAIN, settings.electronsPerCount},    {KEY_QUANTUM_EFFICIENCY, settings.quantumEfficiency},
        {KEY_TRANSMISSION, settings.transmission}, {KEY_BINNING, settings.binning},
    };
    for (const auto &[key, value] : numbers) {
        if (!std::isfinite(value) || !constantRange(key).holds(value))
            return refused(key, constantRange(key).requirement());
    }
    if (!std::isfinite(settings.excitationIrradiance) || settings.excitationIrradiance < 0.0)
        return refused(KEY_EXCITATION_IRRADIANCE,
                       Text::tr("it has to be a number above 0, or 0 when it is not known"));
    if (!settings.acquisitionDate.isEmpty() &&
        !QDateTime::fromString(settings.acquisitionDate, Qt::ISODate).isValid())
        return refused(
            KEY_ACQUISITION_DATE,
            Text::tr("\"%1\" is no date of the form 2026-11-21T15:30:00").arg(settings.acquisitionDate));
    return QString();
}

ESTATUS statusOf(EILSTATUS status)
{
    switch (status) {
    case EIL_FILE_NOT_FOUND:
        return ESTATUS_FILE_NOT_FOUND;
    case EIL_FILE_NOT_READABLE:
        return ESTATUS_FILE_NOT_READABLE;
    case EIL_FILE_TOO_LARGE:
        return ESTATUS_IMAGE_TOO_LARGE;
    case EIL_NO_MEMORY:
        return ESTATUS_FAILURE;
    default:
        return ESTATUS_BAD_IMAGE;
    }
}

ESTATUS read(const QString &path, CILImage *image, QString *error)
{
    const EILSTATUS status = image->loadTIFF(QFile::encodeName(path).constData());
    if (status == EIL_SUCCESS)
        return ESTATUS_SUCCESS;
    *error = QString::fromStdString(CILImage::lastError());
    return statusOf(status);
}

void setNumber(CPLSection *section, QLatin1String key, double value)
{
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
    if (settings.excitationIrradiance > 0.0)
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

} // namespace

std::unique_ptr<CVXSDataset> importImages(const QString &clickNumber, const QString &luminescentPath,
                                          const QString &photographPath, const ImportSettings &settings,
                                          ESTATUS *status, QString *error)
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
    const QString setting = refusal(settings);
    if (!setting.isEmpty())
        return tell(ESTATUS_BAD_VALUE, setting);
    if (luminescentPath.isEmpty())
        return tell(ESTATUS_FILE_NOT_FOUND, Text::tr("luminescent image: no file is named"));
    CILImage luminescent;
    CILImage photograph;
    QString reason;
    ESTATUS code = read(luminescentPath, &luminescent, &reason);
    if (code == ESTATUS_SUCCESS && !photographPath.isEmpty())
        code = read(photographPath, &photograph, &reason);
    if (code != ESTATUS_SUCCESS)
        return tell(code, reason);

    auto dataset = std::make_unique<CVXSDataset>(clickNumber);
    ensureSection(dataset->getClickInfo(), SECTION_CLICK_NUMBER)
        ->setValue(KEY_VERSION, CVXPreference::getAppVersion());
    addLuminescent(dataset.get(), luminescent, luminescentPath, settings);
    if (!photograph.isEmpty())
        addPhotograph(dataset.get(), photograph, photographPath, settings,
                      double(luminescent.getWidth()) * settings.binning);
    tell(ESTATUS_SUCCESS, QString());
    return dataset;
}
