// SPDX-License-Identifier: MIT
// All rows in one run, so that every ratio is between neighbours in time.
#include "bench/rows.h"

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char **argv)
{
    QTemporaryDir profile;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("VEXA_PROFILE_DIR", profile.path().toLocal8Bit());
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    registerEvaluation();
    registerRecomputation();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
