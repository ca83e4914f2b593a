// SPDX-License-Identifier: MIT
#include "tour/PlantsTour.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/import/ImageImport.h"
#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxapi/view/measurement/MeasurementPane.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "tour/ImageTool.h"
#include "tour/Stage.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSpinBox>

namespace {

constexpr int PLANTS = 4; ///< a row, and a column
const QString SEQUENCE = QStringLiteral("AT20240108100000_SEQ");

struct Day
{
    QLatin1String click;
    QLatin1String name; ///< of its files
    QLatin1String date;
};
constexpr Day DAY_7 = {QLatin1String("AT20240108100000"), QLatin1String("day07"),
                       QLatin1String("2024-01-08T10:00:00")};
constexpr Day DAY_10 = {QLatin1String("AT20240111100000"), QLatin1String("day10"),
                        QLatin1String("2024-01-11T10:00:00")};
constexpr Day DAY_14 = {QLatin1String("AT20240115100000"), QLatin1String("day14"),
                        QLatin1String("2024-01-15T10:00:00")};

// Neither exposure, f-number nor field of view is recorded with the images, nor the camera's constants. These
// are chosen here; radiance and flux are right for them alone, counts do not depend on them.
ImportSettings chosenSettings()
{
    ImportSettings settings;
    settings.fieldOfView = 30.0; // a tray of that size
    settings.exposure = 300.0;
    settings.fNumber = 1.4;
    settings.pixelPitch = 13.0;
    settings.electronsPerCount = 1.5;
    settings.quantumEfficiency = 0.9;
    settings.transmission = 0.8;
    settings.imagingAngle = QStringLiteral("0");
    return settings;
}

QString saveImported(const QString &imagesFolder, const QString &folder)
{
    CVXSSequenceDataset sequence(SEQUENCE);
    for (const Day &day : {DAY_7, DAY_10, DAY_14}) {
        ImportSettings settings = chosenSettings();
        settings.acquisitionDate = day.date;
        const QString path = imagesFolder + QLatin1Char('/') + day.name;
        ESTATUS status = ESTATUS_SUCCESS;
        QString error;
        std::unique_ptr<CVXSDataset> dataset = importImages(
            day.click, {path + QStringLiteral("_luminescence.tif"), path + QStringLiteral("_photograph.tif")},
            settings, &status, &error);
        if (!dataset)
            hand::giveUp(error);
        sequence.addDataset(dataset.release());
    }
    if (!QDir().mkpath(folder) || sequence.save(folder) != ESTATUS_SUCCESS)
        hand::giveUp(sequence.lastError());
    return sequence.getSequenceInfoPath();
}

QString displayDifference(Stage &stage)
{
    stage.activate(QStringLiteral("Image Math"));
    // By way of another B, so that the result is computed in the unit that was just chosen.
    stage.selectPair(DAY_14.click, DAY_10.click);
    stage.selectPair(DAY_14.click, DAY_7.click);
    stage.typeK(QStringLiteral("1"));
    stage.picture(QStringLiteral("a-plants-window"), QStringLiteral("the tool on real images"), stage.tool);
    QStringList made = Stage::storedResults();
    stage.pressDisplay();
    const QStringList after = Stage::storedResults();
    if (after.size() != made.size() + 1)
        hand::giveUp(QStringLiteral("no result was made"));
    for (const QString &click : after) {
        if (!made.contains(click))
            return click;
    }
    return QString();
}

CVXSImageWindow *windowOf(Stage &stage, const QString &click)
{
    const auto find = [&click] { return CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(click)); };
    if (!hand::waitFor([&find] { return find(); }))
        hand::giveUp(QStringLiteral("%1 is not shown").arg(click));
    stage.activate(click);
    find()->parentWidget()->setGeometry(4, 4, 1000, 900);
    imagetool::showTable(stage, find());
    return find();
}

/// Draws the grid over the whole field: the plants stand so that each has a cell of its own.
CROIBase measuredGrid(Stage &stage, CVXSImageWindow *window)
{
    hand::click(stage.find<QAbstractButton>(window, "RoiGridToolButton"));
    stage.find<QSpinBox>(window, "RoiGridRows")->setValue(PLANTS);
    stage.find<QSpinBox>(window, "RoiGridColumns")->setValue(PLANTS);
    const double field = chosenSettings().fieldOfView;
    imagetool::draw(stage, window, "RoiGridToolButton",
                    QRectF(0.01 * field, 0.005 * field, 0.98 * field, 0.99 * field));
    return *window->getDataset()->roiManager()->rois().last();
}

QJsonObject recorded(const QString &click, const CROIBase &grid, const QString &table)
{
    const QRectF box = grid.boundingBox();
    return {{QStringLiteral("folder"), Stage::resultFolder(click)},
            {QStringLiteral("table"), table},
            {QStringLiteral("grid"), grid.name()},
            {QStringLiteral("box"), QJsonArray{box.left(), box.top(), box.right(), box.bottom()}}};
}

QJsonObject measured(Stage &stage, const QString &name)
{
    const QString click = displayDifference(stage);
    CVXSImageWindow *window = windowOf(stage, click);
    const CROIBase grid = measuredGrid(stage, window);
    stage.picture(QStringLiteral("a-plants-") + name,
                  QStringLiteral("day 14 - day 7, a grid cell a plant, in ") + name, window);
    const QString table = stage.report.outFolder() + QStringLiteral("/plants-%1.csv").arg(name);
    QString error;
    if (!stage.find<MeasurementPane>(window, "MeasurementPane")->saveTable(table, &error))
        hand::giveUp(error);
    stage.report.note(QStringLiteral("the result in %1 lies in %2").arg(name, Stage::resultFolder(click)));
    return recorded(click, grid, table);
}

void printTotals(Stage &stage, const QString &grid)
{
    CVXSImageWindow *window =
        CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(Stage::storedResults().last()));
    stage.report.note(QStringLiteral("%1%2%3")
                          .arg(QStringLiteral("plant"), -16)
                          .arg(QStringLiteral("total counts"), 14)
                          .arg(QStringLiteral("total flux [p/s]"), 18));
    for (int row = 1; row <= PLANTS; ++row) {
        for (int column = 1; column <= PLANTS; ++column) {
            const QString cell = QStringLiteral("%1 [%2, %3]").arg(grid).arg(row).arg(column);
            stage.report.note(
                QStringLiteral("%1%2%3")
                    .arg(cell, -16)
                    .arg(imagetool::tableValue(stage, window, cell, QStringLiteral("Total counts")), 14)
                    .arg(imagetool::tableValue(stage, window, cell, QStringLiteral("Total flux")), 18));
        }
    }
}

} // namespace

void plants(Stage &stage, const QString &imagesFolder)
{
    const ImportSettings settings = chosenSettings();
    stage.report.heading(QStringLiteral("Real images of 16 plants, day 14 - 1.0 * day 7:"));
    stage.report.note(QStringLiteral("chosen, because not recorded: field of view %1 cm, exposure %2 s, "
                                     "f/%3, %4 um pixels, %5 electrons a count, QE %6, transmission %7")
                          .arg(settings.fieldOfView)
                          .arg(settings.exposure)
                          .arg(settings.fNumber)
                          .arg(settings.pixelPitch)
                          .arg(settings.electronsPerCount)
                          .arg(settings.quantumEfficiency)
                          .arg(settings.transmission));
    const QString folder = saveImported(imagesFolder, stage.report.outFolder() + QStringLiteral("/plants"));
    stage.sequence = stage.window.openSequence(folder);
    if (!stage.sequence)
        hand::giveUp(QStringLiteral("%1 could not be opened").arg(folder));
    hand::settle(&stage.window);
    stage.openImageMath();
    QJsonObject all{{QStringLiteral("images"), QDir(imagesFolder).absolutePath()},
                    {QStringLiteral("fieldOfView"), settings.fieldOfView},
                    {QStringLiteral("exposure"), settings.exposure},
                    {QStringLiteral("fNumber"), settings.fNumber},
                    {QStringLiteral("pixelPitch"), settings.pixelPitch},
                    {QStringLiteral("electronsPerCount"), settings.electronsPerCount},
                    {QStringLiteral("quantumEfficiency"), settings.quantumEfficiency},
                    {QStringLiteral("transmission"), settings.transmission}};
    const QJsonObject counts = measured(stage, QStringLiteral("counts"));
    stage.activate(SEQUENCE);
    stage.chooseUnit(QStringLiteral("Radiance (Photons)"));
    const QJsonObject radiance = measured(stage, QStringLiteral("radiance"));
    printTotals(stage, radiance.value(QStringLiteral("grid")).toString());
    all.insert(QStringLiteral("counts"), counts);
    all.insert(QStringLiteral("radiance"), radiance);
    QFile file(stage.report.outFolder() + QStringLiteral("/plants.json"));
    const QByteArray json = QJsonDocument(all).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size())
        hand::giveUp(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
}
