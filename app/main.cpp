// SPDX-License-Identifier: MIT
#include "app/ApplicationSetup.h"
#include "app/CommandLine.h"
#include "app/MainWindow.h"
#include "app/PluginManager.h"
#include "host/vxutils/CVXSLog.h"

#include <QApplication>

#include <cstdio>

namespace {

/// Help and version need no display.
bool asksForText(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--help" || argument == "-h" || argument == "--version" || argument == "-v")
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    ApplicationSetup::beforeApplication();
    std::unique_ptr<QCoreApplication> application;
    if (asksForText(argc, argv))
        application = std::make_unique<QCoreApplication>(argc, argv);
    else
        application = std::make_unique<QApplication>(argc, argv);
    ApplicationSetup::afterApplication();

    const CommandLine commandLine = readCommandLine(application->arguments());
    if (commandLine.outcome != CommandLine::RUN) {
        const bool failed = commandLine.outcome == CommandLine::MISTAKE;
        std::fputs(commandLine.text.toLocal8Bit().constData(), failed ? stderr : stdout);
        return failed ? 2 : 0;
    }
    if (!qobject_cast<QApplication *>(application.get()))
        return 0; // "-h" as the value of an option

    MainWindow window; // first, so that what goes wrong from here on is seen in its banner
    if (!commandLine.logFile.isEmpty())
        getLogObject()->setFile(commandLine.logFile);
    window.loadPlugins(commandLine.pluginFolder.isEmpty() ? PluginManager::defaultFolder()
                                                          : commandLine.pluginFolder);
    window.show();
    for (const QString &path : commandLine.sequences)
        window.openPath(path);
    return QApplication::exec();
}
