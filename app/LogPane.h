// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class CVXSLog;
class QPlainTextEdit;
struct LogEntry;

/// The pane that shows the log, one line an entry, failures and warnings coloured.
class LogPane : public QDockWidget
{
    Q_OBJECT

public:
    /// Shows what the log holds and what comes to it.
    explicit LogPane(CVXSLog *log, QWidget *parent = nullptr);

    QString text() const;

    /// An entry as one text: stamp, kind, message, and what it is about.
    static QString lineOf(const LogEntry &entry);

private:
    void append(const LogEntry &entry);

    QPlainTextEdit *m_edit;
};
