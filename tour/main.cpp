// SPDX-License-Identifier: MIT
// vexa-tour SEQUENCE_FOLDER OUT_FOLDER: drives the workspace as a person would, with mouse and keyboard on
// the real menus and widgets, and leaves pictures and a summary. It needs a display; ./run gives it a virtual
// one.
#include "app/ApplicationSetup.h"
#include "app/MainWindow.h"
#include "app/PluginManager.h"
#include "tour/Hand.h"
#include "tour/Tour.h"

#include <QApplication>
#include <QDir>
#include <QTest>

#include <cstdio>

int main(int argc, char **argv)
{
    ApplicationSetup::beforeApplication();
    QApplication application(argc, argv);
    ApplicationSetup::afterApplication();
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: vexa-tour SEQUENCE_FOLDER OUT_FOLDER\n", stderr);
        return 2;
    }
    if (!QDir().mkpath(arguments.at(2)))
        hand::giveUp(QStringLiteral("%1 cannot be created").arg(arguments.at(2)));

    MainWindow window;
    window.resize(1500, 1000);
    window.loadPlugins(PluginManager::defaultFolder());
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        hand::giveUp(QStringLiteral("the window did not appear"));
    CVXSSequenceDataset *sequence = window.openSequence(arguments.at(1));
    if (!sequence)
        hand::giveUp(QStringLiteral("%1 could not be opened").arg(arguments.at(1)));
    return Tour(window, *sequence, arguments.at(2)).run() ? 0 : 1;
}
