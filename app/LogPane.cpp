// SPDX-License-Identifier: MIT
#include "app/LogPane.h"

#include "host/vxutils/CVXSLog.h"

#include <QPlainTextEdit>

namespace {

constexpr int MAX_LINES = 10000; // as many as the log keeps

QString kindOf(long level)
{
    switch (level) {
    case ELOG_DEBUG:
        return LogPane::tr("Debug");
    case ELOG_INFORMATION:
        return LogPane::tr("Info");
    case ELOG_WARNING:
        return LogPane::tr("Warning");
    default:
        return LogPane::tr("Failure");
    }
}

} // namespace

LogPane::LogPane(CVXSLog *log, QWidget *parent)
    : QDockWidget(tr("Log"), parent), m_edit(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("logPane")); // by which the window's state is restored
    setAllowedAreas(Qt::BottomDockWidgetArea | Qt::RightDockWidgetArea);
    m_edit->setReadOnly(true);
    m_edit->setMaximumBlockCount(MAX_LINES);
    m_edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_edit->setAccessibleName(tr("Log"));
    setWidget(m_edit);
    for (const LogEntry &entry : log->entries())
        append(entry);
    connect(log, &CVXSLog::logged, this, &LogPane::append);
}

QString LogPane::text() const
{
    return m_edit->toPlainText();
}

QString LogPane::lineOf(const LogEntry &entry)
{
    QString line = QStringLiteral("%1  %2  %3").arg(entry.stamp, kindOf(entry.level), entry.message);
    if (!entry.detail.isEmpty())
        line += QStringLiteral(" \u2013 ") + entry.detail;
    if (entry.number != 0)
        line += tr(" (status %1)").arg(entry.number);
    return line.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

void LogPane::append(const LogEntry &entry)
{
    QTextCharFormat format;
    if (entry.level >= ELOG_FAILURE)
        format.setForeground(QColor(0xc0, 0x2b, 0x1d));
    else if (entry.level == ELOG_WARNING)
        format.setForeground(QColor(0xa8, 0x6a, 0x00));
    m_edit->setCurrentCharFormat(format);
    m_edit->appendPlainText(lineOf(entry));
}
