// SPDX-License-Identifier: MIT
#include "host/vxutils/deleteFolderTree.h"

#include "host/vxutils/CVXSLog.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(deleteFolderTree)
};

/// A link counts as there even when what it points to is not.
bool isThere(const QFileInfo &info)
{
    return info.exists() || info.isSymLink();
}

/// Goes on after a failure, so that as much as possible is gone.
bool removeTree(const QString &path)
{
    const QFileInfo info(path);
    if (!isThere(info))
        return true;
    if (info.isSymLink() || !info.isDir())
        return QFile::remove(path);

    bool done = true;
    const QDir folder(path);
    const QStringList names =
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
    for (const QString &name : names)
        done = removeTree(folder.absoluteFilePath(name)) && done;
    return QDir().rmdir(path) && done;
}

} // namespace

bool deleteFolderTree(const QDir &folder)
{
    // Without a slash at the end, so that a link to a folder is seen as the link.
    const QString path = QDir::cleanPath(folder.absolutePath());
    const QString current = QDir::cleanPath(QDir::currentPath());
    if (QDir(path).isRoot() || path == current || current.startsWith(path + QLatin1Char('/'))) {
        vxLog(ELOG_FAILURE, Text::tr("Refused to remove the folder that the program runs in"), path);
        return false;
    }
    return removeTree(path);
}
