// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"

#include <algorithm>

LogCatcher::LogCatcher()
    : m_connection(QObject::connect(getLogObject(), &CVXSLog::logged,
                                    [this](const LogEntry &entry) { m_entries << entry; }))
{
}

LogCatcher::~LogCatcher()
{
    QObject::disconnect(m_connection);
}

QVector<LogEntry> LogCatcher::toolEntries() const
{
    QVector<LogEntry> found;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(found),
                 [](const LogEntry &entry) { return entry.stamp == QLatin1String("18:26:27"); });
    return found;
}

QStringList LogCatcher::toolMessages() const
{
    QStringList found;
    for (const LogEntry &entry : toolEntries())
        found << entry.message;
    return found;
}

QStringList LogCatcher::toolFailures() const
{
    QStringList found;
    for (const LogEntry &entry : toolEntries()) {
        if (entry.level == ELOG_FAILURE)
            found << entry.message;
    }
    return found;
}

QStringList LogCatcher::ofLevel(long level) const
{
    QStringList lines;
    for (const LogEntry &entry : m_entries) {
        if (entry.level == level)
            lines << entry.message;
    }
    return lines;
}

QStringList LogCatcher::failuresInFull() const
{
    QStringList lines;
    for (const LogEntry &entry : m_entries) {
        if (entry.level >= ELOG_FAILURE)
            lines << (entry.message + QLatin1Char(' ') + entry.detail).trimmed();
    }
    return lines;
}

bool LogCatcher::hasFailure(const QStringList &words) const
{
    const QStringList lines = failuresInFull();
    return std::any_of(lines.begin(), lines.end(), [&words](const QString &line) {
        return std::all_of(words.begin(), words.end(),
                           [&line](const QString &word) { return line.contains(word); });
    });
}
