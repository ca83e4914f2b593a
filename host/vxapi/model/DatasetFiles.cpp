// SPDX-License-Identifier: MIT
#include "host/vxapi/model/DatasetFiles.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxutils/writeWhole.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Dataset)
};

constexpr qint64 CHUNK = 1 << 20;

ESTATUS failed(ESTATUS status, const QString &path, const QString &reason, QString *error)
{
    *error = path + QStringLiteral(": ") + reason;
    return status;
}

} // namespace

QString datasetfiles::folderPath(const QString &path)
{
    if (path.isEmpty())
        return QString();
    const QString clean = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return clean.endsWith(QLatin1Char('/')) ? clean : clean + QLatin1Char('/');
}

QString datasetfiles::folderName(const QString &path)
{
    return QDir(path).dirName();
}

QString datasetfiles::nameFor(const QString &clickNumber, const QString &folder)
{
    if (folder.isEmpty())
        return clickNumber;
    return QStringLiteral("%1 (%2%3)").arg(clickNumber, folder, clickinfo::FILE_CLICK_INFO);
}

bool datasetfiles::isSame(const QString &a, const QString &b)
{
    const QString canonicalA = QFileInfo(a).canonicalFilePath();
    return !canonicalA.isEmpty() && canonicalA == QFileInfo(b).canonicalFilePath();
}

ESTATUS datasetfiles::makeFolder(const QString &folder, QString *error)
{
    if (QDir().mkpath(folder))
        return ESTATUS_SUCCESS;
    return failed(ESTATUS_FILE_NOT_WRITABLE, folder, Text::tr("the folder cannot be made"), error);
}

ESTATUS datasetfiles::copyFile(const QString &from, const QString &to, QString *error)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return failed(ESTATUS_FILE_NOT_READABLE, from, source.errorString(), error);
    QSaveFile target(to);
    if (!target.open(QIODevice::WriteOnly))
        return failed(ESTATUS_FILE_NOT_WRITABLE, to, target.errorString(), error);
    while (!source.atEnd()) {
        const QByteArray bytes = source.read(CHUNK);
        if (bytes.isEmpty())
            return failed(ESTATUS_FILE_NOT_READABLE, from, source.errorString(), error);
        if (!writeWhole(target, bytes))
            return failed(ESTATUS_FILE_NOT_WRITABLE, to, target.errorString(), error);
    }
    if (!target.commit())
        return failed(ESTATUS_FILE_NOT_WRITABLE, to, target.errorString(), error);
    return ESTATUS_SUCCESS;
}

ESTATUS datasetfiles::copyTree(const QString &from, const QString &to, const QStringList &without,
                               QString *error)
{
    const QDir source(from);
    const QStringList files = source.entryList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString &file : files) {
        const ESTATUS status = without.contains(file)
                                   ? ESTATUS_SUCCESS
                                   : copyFile(source.filePath(file), QDir(to).filePath(file), error);
        if (status != ESTATUS_SUCCESS)
            return status;
    }
    const QString target = QFileInfo(to).canonicalFilePath() + QLatin1Char('/');
    const QStringList folders =
        source.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks, QDir::Name);
    for (const QString &folder : folders) {
        if (without.contains(folder) ||
            target.startsWith(QFileInfo(source.filePath(folder)).canonicalFilePath() + QLatin1Char('/')))
            continue;
        const QString below = QDir(to).filePath(folder);
        ESTATUS status = makeFolder(below, error);
        if (status == ESTATUS_SUCCESS)
            status = copyTree(source.filePath(folder), below, {}, error);
        if (status != ESTATUS_SUCCESS)
            return status;
    }
    return ESTATUS_SUCCESS;
}
