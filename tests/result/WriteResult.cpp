// SPDX-License-Identifier: MIT
// write-result SEQUENCE A B FORMULA K UNIT PHOTOGRAPH: computes A and B of a saved sequence and writes the
// result as a dataset, without a window: it links no widget. PHOTOGRAPH is A, B or none. Prints the libraries
// of a user interface that are loaded, a line each, and last the result's folder. The exit status is that of
// the writing.
#include "display/ColorScale.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "math/Computation.h"
#include "math/Formula.h"
#include "result/ResultWriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <memory>

namespace {

void printLoadedInterfaces(QTextStream &out)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        out << "/proc/self/maps cannot be read\n";
    for (const QByteArray &line : maps.readAll().split('\n')) {
        if (line.contains("libQt5Widgets") || line.contains("libQt5Gui") || line.contains("libX11"))
            out << line << '\n';
    }
}

// As the window shows it with "Full" limits.
void colour(CILImage &image, const CVXSSequenceDataset &sequence)
{
    const colorscale::Limits limits = colorscale::fullRange(image);
    CILPalette palette = image.getPalette();
    palette.SetColorTable(sequence.getImageAdjust().colorTable, limits.min, limits.max,
                          sequence.getToolInfo().reversed ? 1 : 0, 0);
    palette.setLogScale(sequence.getToolInfo().logarithmic ? 1 : 0);
    image.setPalette(palette);
}

resultwriter::PhotographSource sourceOf(const QString &text)
{
    using resultwriter::PhotographSource;
    return text == QLatin1String("A")   ? PhotographSource::A
           : text == QLatin1String("B") ? PhotographSource::B
                                        : PhotographSource::None;
}

resultwriter::Written writeResult(CVXSSequenceDataset &sequence, const QStringList &arguments)
{
    const auto operand = [&sequence](const QString &click) {
        return resultwriter::Operand{click,
                                     sequence.getDatasetFolderPath(click) + QLatin1String("ClickInfo.txt"),
                                     sequence.getDataset(click)};
    };
    CVXSDataset *a = sequence.getDataset(arguments.at(2));
    CVXSDataset *b = sequence.getDataset(arguments.at(3));
    imagemath::Request computation{{a, imagemath::correctionsFor(*a)}, {b, imagemath::correctionsFor(*b)}};
    computation.unit = sequence.getActiveUnit();
    computation.formula = imagemath::formulaNamed(arguments.at(4));
    computation.k = arguments.at(5).toFloat();
    CILImage imageA;
    CILImage imageB;
    resultwriter::Request request;
    imagemath::TissueMaskMemo masks;
    request.record = imagemath::compute(computation, {imageA, imageB, request.image}, masks).record;
    colour(request.image, sequence);

    request.a = operand(arguments.at(2));
    request.b = operand(arguments.at(3));
    request.operation = arguments.at(4);
    request.k = arguments.at(5);
    request.photograph = sourceOf(arguments.at(7));
    const resultwriter::Operand *photographed = request.photographed();
    request.display =
        resultclickinfo::displayFactsOf(request.image, computation.unit, sequence.getImageAdjust().colorTable,
                                        a, photographed ? photographed->dataset : nullptr);
    ProgramDataPlace place;
    return resultwriter::write(request, place);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stdout);
    if (arguments.size() != 8) {
        out << "usage: write-result SEQUENCE A B FORMULA K UNIT PHOTOGRAPH\n";
        return 2;
    }
    CVXSDataset::registerStoredDatasets(CVXPreference::getProgramDataPath());
    QString error;
    const std::unique_ptr<CVXSSequenceDataset> sequence(
        CVXSSequenceDataset::open(arguments.at(1), nullptr, &error));
    tag_edisplayunit unit = EUNIT_COUNTS;
    if (!sequence || !unitOfKey(arguments.at(6), &unit)) {
        out << error << '\n';
        return 1;
    }
    sequence->setActiveUnit(unit);
    const resultwriter::Written written = writeResult(*sequence, arguments);
    printLoadedInterfaces(out);
    out << (written.status == ESTATUS_SUCCESS ? written.folder : written.reason) << '\n';
    return int(written.status);
}
