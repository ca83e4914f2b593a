// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/CVXSLog.h"

#include <QMetaObject>
#include <QStringList>
#include <QVector>

/// The lines that the host's log gets from the making of this object on. It listens, so it takes nothing away
/// from the log and two of them can live at a time.
///
///     const LogCatcher log;
///     QVERIFY(!dataset.load(path));
///     QCOMPARE(log.failures(), QStringList{path + ": there is no such file"});
///
/// The lines of the tool are told from the host's by their fixed stamp.
class LogCatcher
{
public:
    LogCatcher();
    ~LogCatcher();
    LogCatcher(const LogCatcher &) = delete;
    LogCatcher &operator=(const LogCatcher &) = delete;

    /// Forgets what came so far.
    void restart() { m_entries.clear(); }

    const QVector<LogEntry> &entries() const { return m_entries; }
    QVector<LogEntry> toolEntries() const;
    QStringList toolMessages() const;
    QStringList toolFailures() const;

    /// Messages of that level, of anybody.
    QStringList ofLevel(long level) const;
    QStringList failures() const { return ofLevel(ELOG_FAILURE); }
    /// The failures with their details: "message detail".
    QStringList failuresInFull() const;
    /// Whether one failure, its detail included, contains all these words.
    bool hasFailure(const QStringList &words) const;

private:
    QVector<LogEntry> m_entries;
    QMetaObject::Connection m_connection;
};
