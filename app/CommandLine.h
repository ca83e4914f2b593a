// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct CommandLine
{
    enum EOutcome {
        RUN,     ///< start the workspace
        TELL,    ///< print the text (help or version) and end
        MISTAKE, ///< print the text and end with a failure
    };
    EOutcome outcome = RUN;
    QString text;
    QString pluginFolder;  ///< empty: the default one
    QString logFile;       ///< empty: none
    QStringList sequences; ///< and datasets, as they were written
};

/// Reads `vexa [--plugins DIR] [--log FILE] [FOLDER...]`; the first argument is the program. Needs
/// an application object, of which it takes name and version.
CommandLine readCommandLine(const QStringList &arguments);
