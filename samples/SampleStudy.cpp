// SPDX-License-Identifier: MIT
#include "samples/SampleStudy.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "samples/Camera.h"
#include "samples/OtherKinds.h"
#include "samples/Phantom.h"
#include "samples/StudyBuilder.h"

#include <QDir>
#include <QFile>

#include <cmath>
#include <memory>
#include <QVector>

namespace samplestudy {

namespace {

using namespace clickinfo;

// Electrons in an unbinned pixel at the brightest place.
constexpr double AUTOFLUORESCENCE = 520.0;
constexpr double REPORTER = 700.0;

struct Truth
{
    CILImage a, b, reporter;
};

Truth fluorescencePair(StudyBuilder &study)
{
    const Camera camera;
    const auto background = [](double x, double y) {
        return AUTOFLUORESCENCE * phantom::autofluorescence(x, y);
    };
    Truth truth;
    truth.reporter =
        camera.expectedCounts([](double x, double y) { return REPORTER * phantom::reporter(x, y); });
    truth.b = camera.expectedCounts(background);
    truth.a = camera.expectedCounts([&background](double x, double y) {
        return REPORTER * phantom::reporter(x, y) + TRUE_K * background(x, y);
    });

    CVXSDataset *a = study.click(FLUORESCENCE_A, QStringLiteral("Reporter and autofluorescence"));
    study.luminescent(a, camera, truth.a, KIND_FLUORESCENT, 2.0,
                      fluorescence(QStringLiteral("640"), QStringLiteral("690"), QStringLiteral("Medium")));
    study.photograph(a, camera);
    study.add(a);
    CVXSDataset *b = study.click(FLUORESCENCE_B, QStringLiteral("Autofluorescence alone"));
    study.luminescent(b, camera, truth.b, KIND_FLUORESCENT, 2.0,
                      fluorescence(QStringLiteral("605"), QStringLiteral("690"), QStringLiteral("Medium")));
    study.photograph(b, camera);
    study.add(b);
    return truth;
}

void luminescence(StudyBuilder &study)
{
    struct Row
    {
        QString click;
        QString label;
        Camera camera;
    };
    const Row rows[] = {
        {LUMINESCENCE_BIN4, QStringLiteral("Luminescence, binning 4"), {512, 512, 4.0, 12.5}},
        {LUMINESCENCE_BIN8, QStringLiteral("Luminescence, binning 8"), {256, 256, 8.0, 12.5}},
        {LUMINESCENCE_FIELD, QStringLiteral("Luminescence, smaller field of view"), {512, 512, 4.0, 6.6}},
        {LUMINESCENCE_SIZE, QStringLiteral("Luminescence, cut to the animal"), {512, 384, 4.0, 12.5}},
    };
    for (const Row &row : rows) {
        CVXSDataset *dataset = study.click(row.click, row.label);
        const CILImage expected =
            row.camera.expectedCounts([](double x, double y) { return 300.0 * phantom::luminescence(x, y); });
        study.luminescent(dataset, row.camera, expected, KIND_LUMINESCENT, 60.0, {});
        study.photograph(dataset, row.camera);
        study.add(dataset);
    }
}

void ratios(StudyBuilder &study)
{
    struct Row
    {
        QString click;
        QString label;
        QString level;
        bool photograph;
        bool numerator;
    };
    const Row rows[] = {
        {RATIO_A, QStringLiteral("Ratio: band 1"), QStringLiteral("Medium"), true, true},
        {RATIO_B_HIGH, QStringLiteral("Ratio: band 2, level High"), QStringLiteral("High"), true, false},
        {RATIO_B_LOW, QStringLiteral("Ratio: band 2, level Low"), QStringLiteral("Low"), true, false},
        {RATIO_B_NO_PHOTO, QStringLiteral("Ratio: band 2, no photograph"), QStringLiteral("Low"), false,
         false},
    };
    const Camera camera;
    for (const Row &row : rows) {
        CVXSDataset *dataset = study.click(row.click, row.label);
        const CILImage expected = camera.expectedCounts([&row](double x, double y) {
            const double dye = 600.0 * phantom::body(x, y);
            return row.numerator ? dye * phantom::bandRatio(x, y) : dye;
        });
        study.luminescent(dataset, camera, expected, KIND_FLUORESCENT, 1.0,
                          fluorescence(QStringLiteral("570"),
                                       row.numerator ? QStringLiteral("620") : QStringLiteral("660"),
                                       row.level));
        if (row.photograph)
            study.photograph(dataset, camera);
        study.add(dataset);
    }
}

void others(StudyBuilder &study)
{
    const Camera camera;
    CVXSDataset *photograph = study.click(PHOTOGRAPH_ONLY, QStringLiteral("Photograph only"));
    study.photograph(photograph, camera);
    study.add(photograph);

    CVXSDataset *through = study.click(TRANSILLUMINATION, QStringLiteral("Transillumination"));
    const Camera::Scene lamp = [](double x, double y) { return 900.0 * std::exp(-(x * x + y * y) / 50.0); };
    const CILImage seen = camera.expectedCounts(
        [&lamp](double x, double y) { return lamp(x, y) * phantom::transmission(x, y); });
    QVector<Pair> lampKeys =
        fluorescence(QStringLiteral("745"), QStringLiteral("Open"), QStringLiteral("Low"));
    lampKeys.append({KEY_BOTTOM_POWER, QStringLiteral("4.2")});
    study.luminescent(through, camera, seen, KIND_TRANSILLUMINATION, 0.5, lampKeys);
    through->setCoreImage(EIMAGE_EXCITATION, camera.exposure(camera.expectedCounts(lamp), study.random()));
    set(section(through->getClickInfo(), SECTION_GRAPH_CONTROLS),
        {{KEY_INTENSITY_CALIBRATION, unitKey(EUNIT_EFFICIENCY)}});
    study.photograph(through, camera);
    study.add(through);

    CVXSDataset *side =
        study.click(OTHER_ANGLE, QStringLiteral("Reporter and autofluorescence, from the side"));
    const CILImage expected = camera.expectedCounts([](double x, double y) {
        // Seen from the side the animal is half as wide.
        return REPORTER * phantom::reporter(2.0 * x, y) +
               TRUE_K * AUTOFLUORESCENCE * phantom::autofluorescence(2.0 * x, y);
    });
    study.luminescent(side, camera, expected, KIND_FLUORESCENT, 2.0,
                      fluorescence(QStringLiteral("640"), QStringLiteral("690"), QStringLiteral("Medium")));
    set(section(side->getClickInfo(), SECTION_LUMINESCENT), {{KEY_IMAGING_ANGLE, QStringLiteral("90")}});
    study.photograph(side, camera);
    study.add(side);
}

double meanVariance(const Truth &truth)
{
    const float *a = truth.a.pixels<float>();
    const float *b = truth.b.pixels<float>();
    double sum = 0.0;
    for (std::size_t i = 0; i < truth.a.pixelCount(); ++i)
        sum += Camera::variance(double(a[i])) + TRUE_K * TRUE_K * Camera::variance(double(b[i]));
    return sum / double(truth.a.pixelCount());
}

ESTATUS saveTruth(const QString &folder, const Truth &truth, QString *error)
{
    const struct
    {
        QLatin1String file;
        const CILImage &image;
    } images[] = {{TRUTH_REPORTER, truth.reporter}, {TRUTH_A, truth.a}, {TRUTH_B, truth.b}};
    for (const auto &row : images) {
        const QString path = folder + QLatin1Char('/') + row.file;
        if (row.image.saveTIFF(QFile::encodeName(path).constData()) != EIL_SUCCESS) {
            *error = QString::fromStdString(CILImage::lastError());
            return ESTATUS_FILE_NOT_WRITABLE;
        }
    }
    CPLClickInfo info;
    set(section(&info, SECTION_MAIN_JOB), {{QLatin1String("A"), FLUORESCENCE_A},
                                           {QLatin1String("B"), FLUORESCENCE_B},
                                           {QLatin1String("Unit"), unitKey(EUNIT_COUNTS)},
                                           {KEY_TRUE_K, number(TRUE_K)},
                                           {KEY_MEAN_VARIANCE, number(meanVariance(truth))}});
    const QString path = folder + QLatin1Char('/') + TRUTH_FILE;
    const ESTATUS status = info.saveClickInfo(path);
    if (status != ESTATUS_SUCCESS)
        *error = path + QStringLiteral(": ") + statusText(status);
    return status;
}

} // namespace

ESTATUS make(const QString &folder, std::uint64_t seed, QString *error)
{
    if (!QDir().mkpath(folder)) {
        *error = folder + QStringLiteral(": the folder cannot be created");
        return ESTATUS_FILE_NOT_WRITABLE;
    }
    StudyBuilder study(SEQUENCE_ID, seed);
    const Truth truth = fluorescencePair(study);
    luminescence(study);
    ratios(study);
    others(study);
    study.sequence().setActiveUnit(EUNIT_COUNTS);
    // The sequence comes last but for the result, which is made of its files: where that is there, all of the
    // study is.
    const QString inFolder = folder + QLatin1Char('/');
    ESTATUS status = saveTruth(folder, truth, error);
    if (status == ESTATUS_SUCCESS)
        status = makeOverview(inFolder + OVERVIEW_FOLDER, seed + 1, error);
    if (status == ESTATUS_SUCCESS)
        status = makeCameraFiles(inFolder + CAMERA_FILES_FOLDER, seed + 2, error);
    if (status == ESTATUS_SUCCESS) {
        status = study.sequence().save(folder);
        *error = study.sequence().lastError();
    }
    if (status == ESTATUS_SUCCESS)
        status = makeResult(study.sequence(), inFolder + RESULT_FOLDER, error);
    return status;
}

std::unique_ptr<CVXSDataset> unsavedClick(std::uint64_t seed)
{
    StudyBuilder study(SEQUENCE_ID, seed); // whose own sequence is never made
    const Camera camera;
    std::unique_ptr<CVXSDataset> dataset(study.click(UNSAVED, QStringLiteral("Reporter, not saved yet")));
    const CILImage expected =
        camera.expectedCounts([](double x, double y) { return REPORTER * phantom::reporter(x, y); });
    study.luminescent(dataset.get(), camera, expected, KIND_FLUORESCENT, 2.0,
                      fluorescence(QStringLiteral("640"), QStringLiteral("690"), QStringLiteral("Medium")));
    study.photograph(dataset.get(), camera);
    return dataset;
}

} // namespace samplestudy
