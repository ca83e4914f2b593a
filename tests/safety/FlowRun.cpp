// SPDX-License-Identifier: MIT
#include "tests/safety/FlowRun.h"

#include "host/vximage/CILImage.h"
#include "tests/safety/SafetyStudy.h"

#include <csignal>
#include <functional>
#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

constexpr int MOST_TIME = 120000; // ms a run, of a sanitized build on a busy machine

} // namespace

bool hasPixels(const QString &path, const std::function<float(int, int)> &wanted, QString *why)
{
    CILImage image;
    if (image.loadTIFF(QFile::encodeName(path).constData()) != EIL_SUCCESS) {
        *why = QString::fromStdString(CILImage::lastError());
        return false;
    }
    const CILImage &read = image;
    const auto *pixels = static_cast<const float *>(read.get_data());
    for (int y = 0; y < int(image.getHeight()); ++y) {
        for (int x = 0; x < int(image.getWidth()); ++x) {
            if (pixels[y * int(image.getWidth()) + x] != wanted(x, y)) {
                *why = QStringLiteral("%1: pixel (%2, %3) is wrong").arg(path).arg(x).arg(y);
                return false;
            }
        }
    }
    return true;
}

QString FlowFolder::sequence() const
{
    return study() + QStringLiteral("/AB20260102030405_SEQ");
}

bool FlowFolder::make() const
{
    return QDir().mkpath(data()) && QDir().mkpath(study()) && !safetystudy::write(study()).isEmpty();
}

bool FlowFolder::copyTo(const FlowFolder &other) const
{
    return copyTree(m_path, other.m_path);
}

FlowRun FlowFolder::look() const
{
    return run({QStringLiteral("look"), sequence()}, {});
}

FlowRun FlowFolder::makeResult(const QStringList &arguments, const QMap<QString, QString> &environment) const
{
    return run(QStringList{QStringLiteral("result"), sequence()} + arguments, environment);
}

QList<FlowRun> FlowFolder::makeResultsAtOnce(const QList<QStringList> &arguments) const
{
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QStringList &one : arguments)
        processes.push_back(start(QStringList{QStringLiteral("result"), sequence()} + one, {}));
    QList<FlowRun> runs;
    for (const auto &process : processes)
        runs += finish(process.get());
    return runs;
}

FlowRun FlowFolder::run(const QStringList &arguments, const QMap<QString, QString> &environment) const
{
    return finish(start(arguments, environment).get());
}

std::unique_ptr<QProcess> FlowFolder::start(const QStringList &arguments,
                                            const QMap<QString, QString> &environment) const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("VEXA_PROFILE_DIR"), m_path + QStringLiteral("/profile"));
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    // Qt's own threads may still be starting when so short a run ends. Leaks are looked for in this program.
    const QString options = variables.value(QStringLiteral("ASAN_OPTIONS"));
    variables.insert(QStringLiteral("ASAN_OPTIONS"), options + QStringLiteral(":detect_leaks=0"));
    for (auto it = environment.begin(); it != environment.end(); ++it)
        variables.insert(it.key(), it.value());

    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(variables);
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->start(QStringLiteral(VEXA_BINARY_DIR "/tests/safety-flow"), arguments);
    return process;
}

FlowRun FlowFolder::finish(QProcess *process)
{
    FlowRun run;
    // It may have ended while another one was waited for.
    if (process->state() != QProcess::NotRunning && !process->waitForFinished(MOST_TIME)) {
        process->kill();
        process->waitForFinished();
        run.output = QStringLiteral("no end in time: ") + process->errorString();
        return run;
    }
    run.output = QString::fromUtf8(process->readAll());
    // After a crash Qt gives the signal as the exit code.
    run.isKilled = process->exitStatus() == QProcess::CrashExit && process->exitCode() == SIGKILL;
    run.isFinished = process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
    const QStringList lines = run.output.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QStringList words = line.split(QLatin1Char(' '));
        if (words.size() != 4)
            continue;
        if (words.at(0) == QLatin1String("click"))
            run.clicks += words.at(1);
        else if (words.at(0) == QLatin1String("known"))
            run.known.insert(words.at(1), words.at(2));
        else if (words.at(0) == QLatin1String("result")) {
            run.resultClick = words.at(1);
            run.resultFolder = words.at(2);
        }
    }
    return run;
}

QString preloadOf(const QString &library)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return library;
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.contains("/libasan.so"))
            return QString::fromLocal8Bit(line.mid(line.indexOf('/'))) + QLatin1Char(':') + library;
    }
    return library;
}

QString firstFaultOfResult(const QString &folder, bool isWithPhotograph, bool wasKilled)
{
    QStringList wanted = {QStringLiteral("AnalyzedClickInfo.txt"), QStringLiteral("ClickInfo.txt"),
                          QStringLiteral("luminescent.tif"), QStringLiteral("luminescentA.TIF"),
                          QStringLiteral("luminescentB.TIF")};
    if (isWithPhotograph)
        wanted += QStringLiteral("photograph.tif");
    QStringList files = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    if (wasKilled)
        files.removeOne(QStringLiteral(".writing"));
    files.sort();
    wanted.sort();
    if (files != wanted)
        return QStringLiteral("%1 holds %2").arg(folder, files.join(QLatin1Char(' ')));
    QString why;
    const auto difference = [](int x, int y) {
        return safetystudy::countsA(x, y) - safetystudy::countsB(x, y);
    };
    if (!hasPixels(folder + QStringLiteral("luminescent.tif"), difference, &why) ||
        !hasPixels(folder + QStringLiteral("luminescentA.TIF"), safetystudy::countsA, &why) ||
        !hasPixels(folder + QStringLiteral("luminescentB.TIF"), safetystudy::countsB, &why))
        return why;
    if (isWithPhotograph)
        hasPixels(folder + QStringLiteral("photograph.tif"), safetystudy::photograph, &why);
    return why;
}
