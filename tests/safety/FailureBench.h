// SPDX-License-Identifier: MIT
#pragma once

#include "tests/safety/FlowRun.h"
#include "tests/safety/ShownTool.h"
#include "tests/support/LogCatcher.h"

#include <memory>
#include <QString>
#include <QStringList>

struct ClickSpec;

/// A shown workspace with the tool open on a study of its own, below a folder: what a failing result is
/// tried on.
class FailureBench
{
public:
    explicit FailureBench(const QString &path) : m_folder(path) {}
    ~FailureBench();

    /// Writes a study of these clicks, starts the workspace and selects the first two.
    bool start(const QList<ClickSpec> &clicks, const QString &photographFrom);
    /// Presses the button with an empty log.
    bool press();
    /// The text of failures since the last press: message and detail a line.
    QStringList failures() const { return m_log.failuresInFull(); }
    bool isLogged(const QStringList &words) const { return m_log.hasFailure(words); }

    const FlowFolder &folder() const { return m_folder; }
    ShownTool &tool() { return *m_tool; }
    QString clickFolder(const QString &click) const;
    /// Where the result of that click number lies or would lie; ends in "/".
    QString resultFolder(const QString &click) const;
    QString lastError() const { return m_error; }

private:
    FlowFolder m_folder;
    LogCatcher m_log;
    std::unique_ptr<ShownTool> m_tool;
    QString m_error;
};

/// What the two tests of failing results speak of.
namespace failing {

inline const QString M = QStringLiteral("AB_M20260102030406");
inline const QString N = QStringLiteral("AB_N20260102030406");
inline const QString CLICK_INFO_FAILED = QStringLiteral("ClickInfo creation failed");
inline const QString LOADING_FAILED = QStringLiteral("Loading Failed");

QString clickInfoOf(const FailureBench &bench, const QString &click);
/// Writes a pair into a section of the luminescent image in a click's file.
bool setLuminescent(const FailureBench &bench, const QString &click, const QString &key,
                    const QString &value);
bool noResultFolder(const FailureBench &bench);

} // namespace failing
