// SPDX-License-Identifier: MIT
#include "samples/OtherKinds.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "math/Computation.h"
#include "math/Formula.h"
#include "result/ClickNumber.h"
#include "result/ResultWriter.h"
#include "samples/Phantom.h"
#include "samples/SampleStudy.h"
#include "samples/StudyBuilder.h"

#include <QDir>
#include <QFile>

#include <cmath>

using namespace clickinfo;

namespace samplestudy {

namespace {

/// Results in a folder of their own, where every name is free.
class SamplePlace : public ResultPlace
{
public:
    explicit SamplePlace(const QString &folder) : m_folder(folder) {}

    QString clickNumberFor(const QString &clickA) override
    {
        return clicknumber::forResult(clickA, [](const QString &) { return false; });
    }
    ESTATUS prepareFolder(const QString &clickNumber, QString *folder, QString *reason) override
    {
        *folder = folderOf(clickNumber) + QLatin1Char('/');
        if (QDir().mkpath(*folder))
            return ESTATUS_SUCCESS;
        *reason = *folder + QStringLiteral(": the folder cannot be created");
        return ESTATUS_RESULT_FOLDER;
    }
    QString folderOf(const QString &clickNumber) const override
    {
        return m_folder + QLatin1Char('/') + clickNumber;
    }

private:
    QString m_folder;
};

resultwriter::Operand operandOf(const CVXSSequenceDataset &sequence, const QString &click)
{
    return {click, sequence.getDatasetFolderPath(click) + FILE_CLICK_INFO, sequence.getDataset(click)};
}

/// The mean of exposures of that scene lit from below, the lamp at one place of the raster after the other.
CILImage rasterMean(const Camera &camera, const std::function<double(double x, double y)> &transmission,
                    Random &random)
{
    constexpr int STEPS = 3;      // an axis
    constexpr double PITCH = 3.0; // [cm]
    std::vector<double> sums(std::size_t(camera.width) * std::size_t(camera.height), 0.0);
    for (int place = 0; place < STEPS * STEPS; ++place) {
        const double lampX = PITCH * (place % STEPS - 1);
        const double lampY = PITCH * (place / STEPS - 1);
        const CILImage expected = camera.expectedCounts([&](double x, double y) {
            const double dx = x - lampX;
            const double dy = y - lampY;
            return 900.0 * std::exp(-(dx * dx + dy * dy) / 8.0) * transmission(x, y);
        });
        CILImage frame = camera.exposure(expected, random);
        frame.ChangeType(VXS_FLOAT);
        const float *pixels = static_cast<const CILImage &>(frame).pixels<float>();
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += double(pixels[i]);
    }
    CILImage mean;
    mean.InitWithType(VXS_FLOAT, std::uint32_t(camera.width), std::uint32_t(camera.height));
    auto *pixels = static_cast<float *>(mean.get_data());
    for (std::size_t i = 0; i < sums.size(); ++i)
        pixels[i] = float(sums[i] / (STEPS * STEPS));
    mean.setBinningFactor(float(camera.binning));
    return CILImage(static_cast<const CILImage &>(mean));
}

ESTATUS saveImage(const CILImage &image, const QString &path, QString *error)
{
    if (image.saveTIFF(QFile::encodeName(path).constData()) == EIL_SUCCESS)
        return ESTATUS_SUCCESS;
    *error = QString::fromStdString(CILImage::lastError());
    return ESTATUS_FILE_NOT_WRITABLE;
}

ESTATUS makeFolder(const QString &folder, QString *error)
{
    if (QDir().mkpath(folder))
        return ESTATUS_SUCCESS;
    *error = folder + QStringLiteral(": the folder cannot be created");
    return ESTATUS_FILE_NOT_WRITABLE;
}

} // namespace

ESTATUS makeOverview(const QString &folder, std::uint64_t seed, QString *error)
{
    struct Band
    {
        QLatin1String click;
        QString label;
        QString excitation; ///< [nm]
        double depth;       ///< how often light of this band is weakened as that of the other is
    };
    const Band bands[] = {
        {OVERVIEW_A, QStringLiteral("Overview of the raster, 745 nm"), QStringLiteral("745"), 1.0},
        {OVERVIEW_B, QStringLiteral("Overview of the raster, 675 nm"), QStringLiteral("675"), 1.6}};
    Camera camera;
    camera.width = camera.height = 256;
    camera.binning = 8.0;
    StudyBuilder study(OVERVIEW_ID, seed);
    study.sequence().setTransIllumOverviewResultSequence(true);
    for (const Band &band : bands) {
        CVXSDataset *dataset = study.click(band.click, band.label);
        QVector<Pair> lamp = fluorescence(band.excitation, QStringLiteral("Open"), QStringLiteral("Low"));
        lamp.append({KEY_BOTTOM_POWER, QStringLiteral("4.2")});
        const CILImage seen = rasterMean(
            camera, [&](double x, double y) { return std::pow(phantom::transmission(x, y), band.depth); },
            study.random());
        study.luminescentImage(dataset, camera, seen, KIND_TRANSILLUMINATION, 0.5, lamp);
        dataset->setCoreImage(EIMAGE_EXCITATION,
                              rasterMean(
                                  camera, [](double, double) { return 1.0; }, study.random()));
        set(section(dataset->getClickInfo(), SECTION_GRAPH_CONTROLS),
            {{KEY_INTENSITY_CALIBRATION, unitKey(EUNIT_EFFICIENCY)}});
        study.photograph(dataset, camera);
        study.add(dataset);
    }
    study.sequence().setActiveUnit(EUNIT_EFFICIENCY);
    const ESTATUS status = study.sequence().save(folder);
    *error = study.sequence().lastError();
    return status;
}

ESTATUS makeResult(const CVXSSequenceDataset &sequence, const QString &folder, QString *error)
{
    ESTATUS status = makeFolder(folder, error);
    if (status != ESTATUS_SUCCESS)
        return status;
    resultwriter::Request request;
    request.a = operandOf(sequence, FLUORESCENCE_A);
    request.b = operandOf(sequence, FLUORESCENCE_B);
    request.photograph = resultwriter::PhotographSource::A;
    request.operation = QStringLiteral("A - B * k");
    request.k = QString::number(TRUE_K, 'f', 2);

    imagemath::Request computation;
    CVXSDataset *const a = sequence.getDataset(FLUORESCENCE_A);
    CVXSDataset *const b = sequence.getDataset(FLUORESCENCE_B);
    computation.a = {a, imagemath::correctionsFor(*a)};
    computation.b = {b, imagemath::correctionsFor(*b)};
    computation.formula = imagemath::formulaNamed(request.operation);
    computation.k = float(TRUE_K);
    CILImage imageA;
    CILImage imageB;
    imagemath::TissueMaskMemo masks;
    request.record = imagemath::compute(computation, {imageA, imageB, request.image}, masks).record;
    request.record.computed = QStringLiteral("2024-05-11T10:30:00Z"); // the same bytes on any day

    CILPalette palette = request.image.getPalette();
    palette.SetColorTable(sequence.getImageAdjust().colorTable, double(request.image.getMin()),
                          double(request.image.getMax()), 0, 0);
    request.image.setPalette(palette);
    request.display = resultclickinfo::displayFactsOf(request.image, computation.unit,
                                                      sequence.getImageAdjust().colorTable, a, a);
    SamplePlace place(folder);
    const resultwriter::Written written = resultwriter::write(request, place);
    *error = written.reason;
    return written.status;
}

CILImage expectedCameraFile(QLatin1String name)
{
    const auto tissue = [](double x, double y) { return 400.0 * phantom::autofluorescence(x, y); };
    return Camera().expectedCounts([&](double x, double y) {
        return name == CAMERA_FILE_A   ? 700.0 * phantom::reporter(x, y) + CAMERA_FILES_K * tissue(x, y)
               : name == CAMERA_FILE_B ? tissue(x, y)
                                       : 0.0;
    });
}

ESTATUS makeCameraFiles(const QString &folder, std::uint64_t seed, QString *error)
{
    const ESTATUS status = makeFolder(folder, error);
    if (status != ESTATUS_SUCCESS)
        return status;
    const Camera camera;
    Random random(seed);
    for (const QLatin1String name : {CAMERA_FILE_A, CAMERA_FILE_B, CAMERA_FILE_DARK}) {
        const ESTATUS saved = saveImage(camera.exposure(expectedCameraFile(name), random),
                                        folder + QLatin1Char('/') + name, error);
        if (saved != ESTATUS_SUCCESS)
            return saved;
    }
    return ESTATUS_SUCCESS;
}

} // namespace samplestudy
