// SPDX-License-Identifier: MIT
#pragma once

/// What the whole application stands on: the log (here), status codes (ESTATUS.h), message boxes
/// (CVXSMessageBox.h), preferences (CVXPreference.h), file names and folders (CVXUtilityFns.h,
/// deleteFolderTree.h, writeWhole.h).
///
///     if (!CVXUtilityFns::isSafeFileName(clickNumber)) {        // it came from a file
///         vxLog(ELOG_FAILURE, "The dataset was not opened", clickNumber, int(ESTATUS_BAD_NAME));
///         return ESTATUS_BAD_NAME;
///     }
///     const QString folder = CVXPreference::getProgramDataPath() + "/" + clickNumber;
///
/// What holds for the whole room:
/// - Failures are an ESTATUS or a bool, never an exception, and every one leaves a log line that names
///   the file or object and the reason: where it happens, or where the caller says that it matters.
/// - What the user reads is translated; what programs read back (settings, numbers) is in the C locale.
/// - Everything is for the thread of the application object. The library vxutils_core (all but message
///   boxes and icons) works without a screen, and without an application object too.

#include "host/vxutils/vxutils_global.h"

#include <memory>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVector>

/// How much a line of the log matters to the user.
enum ELOGLEVEL {
    ELOG_DEBUG = 0,
    ELOG_INFORMATION = 1,
    ELOG_WARNING = 2, ///< worth knowing; nothing failed
    ELOG_FAILURE = 3, ///< the workspace shows it in its banner
};

/// One line of the host's log.
struct LogEntry
{
    QString message;
    QString detail; ///< second text: the file or object concerned, may be empty
    int number = 0; ///< a status code or 0
    QString stamp;  ///< the caller's stamp text, taken as it is
    long level = ELOG_DEBUG;
};

Q_DECLARE_TYPEINFO(LogEntry, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(LogEntry)

class QFile;

/// The host's log. Every line is kept in memory (the newest 10,000), announced with logged(), and appended
/// to the log file when one is set. Nothing is filtered by level; that is for those who show the lines.
class VXUTILS_EXPORT CVXSLog : public QObject
{
    Q_OBJECT

public:
    explicit CVXSLog(QObject *parent = nullptr);
    ~CVXSLog() override;

    /// Appends a line. The last argument is kept for the interface: every line goes to the file at once.
    void log(QString message, QString detail, int number, QString stamp, long level, bool flush);

    /// Appends a line of level 1 that the user has to see although nothing failed: the workspace shows it in its
    /// banner.
    void tell(const QString &message, const QString &stamp);

    /// The lines in memory, oldest first.
    const QVector<LogEntry> &entries() const { return m_entries; }
    /// Forgets the lines in memory; the file keeps them.
    void clear();

    /// Also append every line to this file (UTF-8, one line an entry). An empty path ends it. False, with a
    /// line of level 3 that names file and reason, when the file cannot be written.
    bool setFile(const QString &path);

Q_SIGNALS:
    /// After the line was kept and written.
    void logged(const LogEntry &entry);
    /// After a line of tell() was logged.
    void told(const QString &message);

private:
    QVector<LogEntry> m_entries;
    std::unique_ptr<QFile> m_file;
};

/// The one log of the process; never null.
VXUTILS_EXPORT CVXSLog *getLogObject();

/// A line of the host's own, with the present time as stamp: the file or object concerned as detail, a status
/// code or 0 as number.
VXUTILS_EXPORT void vxLog(ELOGLEVEL level, const QString &message, const QString &detail = QString(),
                          int number = 0);
