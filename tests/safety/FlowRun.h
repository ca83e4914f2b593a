// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QList>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>

/// What a run of safety-flow said.
struct FlowRun
{
    bool isFinished = false; ///< ended by itself with 0
    bool isKilled = false;   ///< ended by SIGKILL
    QString output;
    QStringList clicks;           ///< of the sequence
    QMap<QString, QString> known; ///< folders of the stored datasets by click number
    QString resultClick;
    QString resultFolder;
};

/// A folder with a study and a profile, on which safety-flow works in a process of its own.
class FlowFolder
{
public:
    explicit FlowFolder(const QString &path) : m_path(path) {}

    QString study() const { return m_path + QStringLiteral("/study"); }
    QString sequence() const;
    QString data() const { return m_path + QStringLiteral("/profile/data"); }

    /// Writes the study and an empty program-data folder.
    bool make() const;
    bool copyTo(const FlowFolder &other) const;

    FlowRun look() const;
    FlowRun makeResult(const QStringList &arguments, const QMap<QString, QString> &environment = {}) const;

    /// In two or more workspaces that run at the same time.
    QList<FlowRun> makeResultsAtOnce(const QList<QStringList> &arguments) const;

private:
    std::unique_ptr<QProcess> start(const QStringList &arguments,
                                    const QMap<QString, QString> &environment) const;
    static FlowRun finish(QProcess *process);
    FlowRun run(const QStringList &arguments, const QMap<QString, QString> &environment) const;

    QString m_path;
};

/// What LD_PRELOAD has to be for that library: in a sanitized program its runtime comes first.
QString preloadOf(const QString &library);

/// Whether the pixels of an image file are those of a function; `why` says which one is not.
bool hasPixels(const QString &path, const std::function<float(int x, int y)> &wanted, QString *why);

/// A result's folder holds its files and no others, with the pixels of A - B of the safety study: an empty
/// text, else what is wrong. The operands' and the photograph's copies are compared with what the study was
/// made of.
/// A program that was killed may have left its lock.
QString firstFaultOfResult(const QString &folder, bool isWithPhotograph, bool wasKilled = false);
