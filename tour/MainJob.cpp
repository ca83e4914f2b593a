// SPDX-License-Identifier: MIT
#include "tour/MainJob.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/Formula.h"
#include "samples/SampleStudy.h"

#include <QFile>

#include <cmath>

namespace {

using namespace samplestudy;

CILImage counts(const CVXSSequenceDataset &sequence, const QString &click)
{
    CILImage image;
    if (const CVXSDataset *dataset = sequence.getDataset(click))
        dataset->getCalibratedLuminImage(EUNIT_COUNTS, &image, QStringLiteral("tour"));
    return image;
}

} // namespace

MainJob checkMainJob(const CVXSSequenceDataset &sequence)
{
    MainJob job;
    const QString folder = sequence.getSequenceInfoPath() + QStringLiteral("../");
    CPLClickInfo truth;
    CILImage reporter;
    QString k;
    QString variance;
    const CPLSection *recorded = truth.loadClickInfo(folder + TRUTH_FILE, false) == ESTATUS_SUCCESS
                                     ? truth[SECTION_MAIN_JOB]
                                     : nullptr;
    if (!recorded || recorded->getValue(KEY_TRUE_K, &k) != ESTATUS_SUCCESS ||
        recorded->getValue(KEY_MEAN_VARIANCE, &variance) != ESTATUS_SUCCESS ||
        reporter.loadTIFF(QFile::encodeName(folder + TRUTH_REPORTER).constData()) != EIL_SUCCESS) {
        job.lines << QStringLiteral("the truth of the sample study is not there");
        return job;
    }
    const CILImage a = counts(sequence, FLUORESCENCE_A);
    const CILImage b = counts(sequence, FLUORESCENCE_B);
    CILImage residual;
    imagemath::formulaAt(1)->evaluate({a, b, b, k.toFloat()}, residual);
    residual -= reporter;
    if (residual.isEmpty()) {
        job.lines << QStringLiteral("the images and the truth differ in size");
        return job;
    }

    const float *pixels = static_cast<const CILImage &>(residual).pixels<float>();
    const std::size_t n = residual.pixelCount();
    double sum = 0.0;
    double squares = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        sum += double(pixels[i]);
        squares += double(pixels[i]) * double(pixels[i]);
    }
    const double mean = sum / double(n);
    const double expected = variance.toDouble();
    const double found = squares / double(n);
    const double bound = 5.0 * std::sqrt(expected / double(n));
    job.holds = std::fabs(mean) < bound && std::fabs(found / expected - 1.0) < 0.03;
    job.lines << QStringLiteral("k = %1; A - B * k - true reporter over %2 pixels: mean %3 counts (bound %4)")
                     .arg(k, QString::number(n), QString::number(mean, 'f', 4),
                          QString::number(bound, 'f', 4))
              << QStringLiteral("variance %1 counts^2; camera noise alone gives %2")
                     .arg(QString::number(found, 'f', 2), QString::number(expected, 'f', 2));
    return job;
}
