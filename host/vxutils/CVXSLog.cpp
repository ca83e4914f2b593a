// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXSLog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

#include <utility>

namespace {

constexpr int MAX_ENTRIES = 10000;

/// An entry as one line of a file: what would break the line is written as an escape.
QByteArray fileLine(const LogEntry &entry)
{
    QString line = QStringLiteral("%1 [%2] %3 %4")
                       .arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs),
                            QString::number(entry.level), entry.stamp, entry.message);
    if (!entry.detail.isEmpty())
        line += QStringLiteral(" | ") + entry.detail;
    if (entry.number != 0)
        line += QStringLiteral(" | status %1").arg(entry.number);
    line.replace(QLatin1Char('\r'), QStringLiteral("\\r")).replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return line.toUtf8() + '\n';
}

} // namespace

CVXSLog::CVXSLog(QObject *parent) : QObject(parent) {}

CVXSLog::~CVXSLog() = default;

void CVXSLog::log(QString message, QString detail, int number, QString stamp, long level, bool flush)
{
    Q_UNUSED(flush)
    LogEntry entry;
    entry.message = std::move(message);
    entry.detail = std::move(detail);
    entry.number = number;
    entry.stamp = std::move(stamp);
    entry.level = level;
    if (m_entries.size() >= MAX_ENTRIES)
        m_entries.removeFirst();
    m_entries.append(entry);
    if (m_file)
        m_file->write(fileLine(entry));
    Q_EMIT logged(entry);
}

void CVXSLog::tell(const QString &message, const QString &stamp)
{
    log(message, QString(), 0, stamp, ELOG_INFORMATION, false);
    Q_EMIT told(message);
}

void CVXSLog::clear()
{
    m_entries.clear();
}

bool CVXSLog::setFile(const QString &path)
{
    m_file.reset();
    if (path.isEmpty())
        return true;
    auto file = std::make_unique<QFile>(path);
    // Unbuffered: every line must be on record even when the next thing is a crash.
    if (!file->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        vxLog(ELOG_FAILURE, CVXSLog::tr("The log file cannot be written: %1").arg(file->errorString()), path);
        return false;
    }
    m_file = std::move(file);
    return true;
}

CVXSLog *getLogObject()
{
    static CVXSLog log;
    return &log;
}

void vxLog(ELOGLEVEL level, const QString &message, const QString &detail, int number)
{
    getLogObject()->log(message, detail, number, QTime::currentTime().toString(QStringLiteral("HH:mm:ss")),
                        level, false);
}
