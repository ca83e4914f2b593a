// SPDX-License-Identifier: MIT
// Drives the workspace as the user would, with mouse and keyboard on the real menus and widgets, and leaves
// pictures and a report. It needs a display; ./run gives it a virtual one.
//
//   vexa-tour SEQUENCE_FOLDER OUT_FOLDER
//
//     the sample study, from the menu to the measured result
//
//   vexa-tour --second-day STUDY_FOLDER OUT_FOLDER
//
//     afterwards: the earlier result opened and checked
//
//   vexa-tour --first-hour FILES_FOLDER OUT_FOLDER
//
//     what a new user does with two files of a camera, from the import to one question at the end
//
//   vexa-tour --plants IMAGES_FOLDER OUT_FOLDER
//
//     real images of plants, imported, subtracted, measured
#include "app/ApplicationSetup.h"
#include "app/MainWindow.h"
#include "app/PluginManager.h"
#include "tour/DisplayTour.h"
#include "tour/FirstHour.h"
#include "tour/Hand.h"
#include "tour/MeasuringTour.h"
#include "tour/PlantsTour.h"
#include "tour/SecondDay.h"
#include "tour/Stage.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QTest>

#include <cstdio>

namespace {

/// An item without a picture yet shows a plain square.
bool haveAllPictures(const QListWidget &thumbnails)
{
    for (int i = 0; i < thumbnails.count(); ++i) {
        const QImage icon = thumbnails.item(i)->icon().pixmap(thumbnails.iconSize()).toImage();
        QImage plain = icon;
        plain.fill(icon.pixelColor(0, 0));
        if (icon == plain)
            return false;
    }
    return thumbnails.count() > 0;
}

void sampleStudy(Stage &stage)
{
    // The sequence window makes them one after the other.
    const auto *thumbnails = stage.find<QListWidget>(&stage.window, "SequenceThumbnails");
    if (!hand::waitFor([thumbnails] { return haveAllPictures(*thumbnails); }))
        hand::giveUp(QStringLiteral("the thumbnails are not made"));
    stage.report.heading(QStringLiteral("What the tool shows:"));
    stage.picture(QStringLiteral("01-workspace"), QStringLiteral("the workspace with the sequence"));
    bool wasSeen = false;
    hand::lookAtDialog([&] {
        QWidget *dialog = QApplication::activeModalWidget();
        hand::waitUntilSeen(dialog);
        stage.picture(QStringLiteral("05-import"), QStringLiteral("importing images without a record"),
                      dialog);
        wasSeen = true;
    });
    hand::chooseFromMenu(&stage.window, {QStringLiteral("File"), QStringLiteral("Import Images...")});
    stage.report.check(hand::waitFor([&] { return wasSeen; }), QStringLiteral("images can be imported"));
    stage.openImageMath();
    displaytour::mainJob(stage);
    displaytour::formulas(stage);
    displaytour::colorScales(stage);
    displaytour::pairsThatCannotBeCombined(stage);
    measuringtour::kFromRoi(stage);
    const QString click = measuringtour::displayResult(stage);
    measuringtour::otherAngle(stage);
    measuringtour::measureResult(stage, click);
    stage.report.note(QStringLiteral("the result dataset lies in %1").arg(Stage::resultFolder(click)));
    measuringtour::closeEverything(stage);
}

CVXSSequenceDataset *opened(MainWindow &window, const QString &folder)
{
    CVXSSequenceDataset *sequence = window.openSequence(folder);
    if (!sequence)
        hand::giveUp(QStringLiteral("%1 could not be opened").arg(folder));
    return sequence;
}

} // namespace

int main(int argc, char **argv)
{
    ApplicationSetup::beforeApplication();
    QApplication application(argc, argv);
    ApplicationSetup::afterApplication();
    QStringList arguments = QApplication::arguments().mid(1);
    const QString mode =
        arguments.value(0).startsWith(QLatin1String("--")) ? arguments.takeFirst() : QString();
    const QStringList modes = {QString(), QStringLiteral("--second-day"), QStringLiteral("--first-hour"),
                               QStringLiteral("--plants")};
    const bool isKnown = modes.contains(mode);
    if (!isKnown || arguments.size() != 2) {
        std::fputs("usage: vexa-tour [--second-day | --first-hour | --plants] FOLDER OUT_FOLDER\n", stderr);
        return 2;
    }
    if (!QDir().mkpath(arguments.at(1)))
        hand::giveUp(QStringLiteral("%1 cannot be created").arg(arguments.at(1)));

    MainWindow window;
    window.resize(1500, 1000);
    window.loadPlugins(PluginManager::defaultFolder());
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        hand::giveUp(QStringLiteral("the window did not appear"));
    Report report(arguments.at(1));
    Stage stage(window, nullptr, report);
    if (mode == QLatin1String("--second-day")) {
        secondDay(stage, arguments.at(0) + QLatin1Char('/'));
        report.write(QStringLiteral("second-day.txt"));
    } else if (mode == QLatin1String("--first-hour")) {
        firstHour(stage, arguments.at(0));
        report.write(QStringLiteral("first-hour.txt"));
    } else if (mode == QLatin1String("--plants")) {
        plants(stage, arguments.at(0));
        report.write(QStringLiteral("plants.txt"));
    } else {
        stage.sequence = opened(window, arguments.at(0));
        report.heading(QStringLiteral("Vexa %1, sequence %2")
                           .arg(CVXPreference::getAppVersion(), stage.sequence->getSequenceID()));
        sampleStudy(stage);
        report.write(QStringLiteral("first-day.txt"));
    }
    return report.allHolds() ? 0 : 1;
}
