// SPDX-License-Identifier: MIT
// vexa-make-sample [--seed N] FOLDER
#include "samples/SampleStudy.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Makes the sample study: one sequence of simulated acquisitions."));
    parser.addHelpOption();
    const QCommandLineOption seed(QStringLiteral("seed"),
                                  QStringLiteral("Seed of the noise (1 unless given)."), QStringLiteral("N"),
                                  QStringLiteral("1"));
    parser.addOption(seed);
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("Where to make it."));
    parser.process(application);
    bool isNumber = false;
    const qulonglong value = parser.value(seed).toULongLong(&isNumber);
    if (parser.positionalArguments().size() != 1 || !isNumber) {
        std::fputs(qPrintable(parser.helpText()), stderr);
        return 2;
    }
    QString error;
    if (samplestudy::make(parser.positionalArguments().first(), value, &error) != ESTATUS_SUCCESS) {
        std::fprintf(stderr, "vexa-make-sample: %s\n", qPrintable(error));
        return 1;
    }
    return 0;
}
