// SPDX-License-Identifier: MIT
// What the user waits for in the Image Math Window, without painting: the first computation after a sequence
// was opened (reading, calibrating, formula, limits), and the whole recomputation after a change of k. The
// photograph is twice as wide as the images.
#include "bench/rows.h"
#include "display/KText.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/support/TestStudy.h"
#include "window/CVXSImageMathWnd.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <map>
#include <memory>
#include <QFile>
#include <QLineEdit>

namespace {

class BenchWindow : public CVXSImageMathWnd
{
public:
    void choose(int formula, bool automatic)
    {
        m_pOperationCB->setCurrentIndex(formula);
        (automatic ? m_pAutoResultRadioBtn : m_pFullResultRadioBtn)->setChecked(true);
        (automatic ? m_pAutoABRadioBtn : m_pFullABRadioBtn)->setChecked(true);
        calculateResultImage();
    }
    void changeK(double k)
    {
        m_pKLineEdit->setText(ktext::format(float(k)));
        onChangeValueK();
    }
    const CILImage &result() const { return m_resultImage; }
};

float blob(int x, int y, int edge, double peak)
{
    const double dx = (x - 0.5 * edge) / (0.2 * edge);
    const double dy = (y - 0.5 * edge) / (0.2 * edge);
    return float(std::floor(400.0 + peak * std::exp(-dx * dx - dy * dy) + ((x * 7 + y * 13) & 31)));
}

// One saved sequence a size, made when first asked for: 16-bit images and a photograph, as a camera writes
// them. The folder is what is kept, so that every row opens it anew.
QString studyFolder(int edge)
{
    struct Saved
    {
        std::unique_ptr<TestStudy> study;
        QString folder;
    };
    static std::map<int, Saved> made;
    Saved &saved = made[edge];
    if (!saved.study) {
        saved.study = std::make_unique<TestStudy>(QStringLiteral("BM%1_SEQ").arg(20260101000000LL + edge));
        for (int i = 0; i < 2; ++i) {
            ClickSpec spec;
            spec.clickNumber = QStringLiteral("BM%1").arg(20260101000000LL + 10 * edge + i);
            spec.width = spec.height = edge;
            spec.counts = [edge, i](int x, int y) { return blob(x, y, edge, i ? 9000.0 : 30000.0); };
            spec.photographWidth = spec.photographHeight = 2 * edge;
            spec.photograph = [edge](int x, int y) { return blob(x, y, 2 * edge, 40000.0); };
            CVXSDataset *dataset = saved.study->add(spec);
            for (tag_eimagetype type : {EIMAGE_LUMINESCENT, EIMAGE_PHOTOGRAPH}) {
                CILImage image = *dataset->getCoreImage(type);
                image.ChangeType(VXS_UINT16);
                dataset->setCoreImage(type, image);
            }
        }
        if (!saved.study->save())
            qFatal("the benchmark's sequence could not be saved");
        saved.folder = saved.study->sequence()->getSequenceInfoPath();
        saved.study->close();
    }
    return saved.folder;
}

std::unique_ptr<CVXSSequenceDataset> openStudy(const QString &folder)
{
    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    std::unique_ptr<CVXSSequenceDataset> sequence(CVXSSequenceDataset::open(folder, &status, &error));
    if (!sequence)
        qFatal("%s", qPrintable(error));
    return sequence;
}

void recompute(benchmark::State &state, bool automatic)
{
    const auto sequence = openStudy(studyFolder(int(state.range(1))));
    BenchWindow window;
    window.bindToSequence(sequence->getSequenceID());
    window.choose(int(state.range(0)), automatic);
    int step = 0;
    for (auto _ : state) {
        window.changeK(++step % 2 ? 1.7 : 1.8);
        benchmark::DoNotOptimize(window.result().get_data());
    }
    if (window.result().isEmpty())
        state.SkipWithError("the computation gave no result");
}

// The largest resident size since forgetPeak() [bytes]; 0 where the kernel does not tell.
double peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                return 1024.0 * line.mid(6).trimmed().split(' ').first().toDouble();
        }
    }
    return 0.0;
}

void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

void firstComputation(benchmark::State &state)
{
    const QString folder = studyFolder(int(state.range(1)));
    forgetPeak();
    for (auto _ : state) {
        const auto sequence = openStudy(folder);
        BenchWindow window;
        window.bindToSequence(sequence->getSequenceID());
        window.choose(int(state.range(0)), false);
        benchmark::DoNotOptimize(window.result().get_data());
    }
    // Of the whole process, so only a run of this row alone tells of it.
    state.counters["peak_bytes_a_pixel"] = peakMemory() / double(state.range(1) * state.range(1));
}

void recomputeFull(benchmark::State &state)
{
    recompute(state, false);
}

void recomputeAuto(benchmark::State &state)
{
    recompute(state, true);
}

} // namespace

void registerRecomputation()
{
    for (const std::int64_t size : {512, 1024, 2048, 4096}) {
        for (std::int64_t formula = 0; formula < 5; ++formula) {
            row("recomputation_full", recomputeFull, {formula, size});
            row("recomputation_auto", recomputeAuto, {formula, size});
            row("first_computation", firstComputation, {formula, size});
        }
    }
}
