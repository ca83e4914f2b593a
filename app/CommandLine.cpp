// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

} // namespace

CommandLine readCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        Text::tr("Opens sequences of optical in-vivo images, shows them, and computes with them."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption plugins(
        QStringLiteral("plugins"),
        Text::tr("Load tool plug-ins from this folder instead of ../lib/vexa/plugins."),
        QStringLiteral("DIR"));
    const QCommandLineOption log(QStringLiteral("log"), Text::tr("Append the log to this file."),
                                 QStringLiteral("FILE"));
    parser.addOption(plugins);
    parser.addOption(log);
    parser.addPositionalArgument(QStringLiteral("FOLDER"),
                                 Text::tr("Folders of sequences or datasets (or their SequenceInfo.txt or "
                                          "ClickInfo.txt) to open."),
                                 QStringLiteral("[FOLDER...]"));

    CommandLine result;
    if (!parser.parse(arguments)) {
        result.outcome = CommandLine::MISTAKE;
        result.text = parser.errorText() + QLatin1Char('\n');
    } else if (parser.isSet(version)) {
        result.outcome = CommandLine::TELL;
        result.text = QCoreApplication::applicationName() + QLatin1Char(' ') +
                      QCoreApplication::applicationVersion() + QLatin1Char('\n');
    } else if (parser.isSet(help)) {
        result.outcome = CommandLine::TELL;
        result.text = parser.helpText();
    }
    result.pluginFolder = parser.value(plugins);
    result.logFile = parser.value(log);
    result.sequences = parser.positionalArguments();
    return result;
}
