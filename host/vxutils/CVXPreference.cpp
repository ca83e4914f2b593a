// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXPreference.h"

#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QSettings>
#include <QStandardPaths>

namespace {

constexpr char KEY_DATA_PATH[] = "ProgramDataPath";

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CVXPreference)
};

/// The folder of the environment variable VEXA_PROFILE_DIR, absolute; empty when it is not set.
QString profileDir()
{
    const QString dir = QFile::decodeName(qgetenv("VEXA_PROFILE_DIR"));
    return dir.isEmpty() ? QString() : QDir(dir).absolutePath();
}

/// Whether results can be written there; the folder is made when it is missing.
bool isUsableDataPath(const QString &path, QString *why)
{
    // Image paths are handed over as Latin-1 bytes.
    if (QString::fromLatin1(path.toLatin1()) != path || path.contains(QChar(0))) {
        *why = Text::tr(
                   "%1: the path has characters outside Latin-1, and image files could not be written there")
                   .arg(path);
        return false;
    }
    if (!QDir().mkpath(path)) {
        *why = Text::tr("%1: the folder cannot be created").arg(path);
        return false;
    }
    if (!QFileInfo(path).isWritable()) {
        *why = Text::tr("%1: the folder cannot be written").arg(path);
        return false;
    }
    return true;
}

QString defaultDataPath()
{
    const QString profile = profileDir();
    if (!profile.isEmpty())
        return profile + QStringLiteral("/data");
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1Char('/') +
           CVXUtilityFns::getAppName().toLower();
}

QSet<const CVXSSequenceDataset *> &loadingSequences()
{
    static QSet<const CVXSSequenceDataset *> sequences;
    return sequences;
}

} // namespace

QString CVXPreference::getAppVersion()
{
    return QStringLiteral(VEXA_VERSION);
}

QString CVXPreference::getProgramDataPath()
{
    const QString chosen = settings()->value(QLatin1String(KEY_DATA_PATH)).toString();
    const QString path = chosen.isEmpty() ? defaultDataPath() : chosen;
    // The tool asks often, and a failure is told once for each path.
    static QString reported;
    QString why;
    if (!isUsableDataPath(path, &why) && reported != path) {
        reported = path;
        vxLog(ELOG_FAILURE,
              Text::tr("Results cannot be stored in the program-data folder; choose another one"), why);
    }
    return path;
}

bool CVXPreference::setProgramDataPath(const QString &path, QString *why)
{
    QString reason = Text::tr("no folder was named");
    const QString absolute = path.isEmpty() ? QString() : QDir::cleanPath(QDir(path).absolutePath());
    if (absolute.isEmpty() || !isUsableDataPath(absolute, &reason)) {
        if (why)
            *why = reason;
        return false;
    }
    settings()->setValue(QLatin1String(KEY_DATA_PATH), absolute);
    return true;
}

bool CVXPreference::isSequenceLoading(const CVXSSequenceDataset *sequence)
{
    return loadingSequences().contains(sequence);
}

void CVXPreference::setSequenceLoading(const CVXSSequenceDataset *sequence, bool loading)
{
    if (loading)
        loadingSequences().insert(sequence);
    else
        loadingSequences().remove(sequence);
}

std::unique_ptr<QSettings> CVXPreference::settings()
{
    const QString profile = profileDir();
    if (!profile.isEmpty())
        return std::make_unique<QSettings>(profile + QStringLiteral("/settings.ini"), QSettings::IniFormat);
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       CVXUtilityFns::getAppName(), CVXUtilityFns::getAppName());
}
