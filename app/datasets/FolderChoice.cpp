// SPDX-License-Identifier: MIT
#include "app/datasets/FolderChoice.h"

#include "host/vxutils/CVXPreference.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

QString chooseFolder(QWidget *parent, const QString &title, const char *settingsKey, const QString &usual,
                     EFolderMemory memory)
{
    const auto settings = CVXPreference::settings();
    const QString last = settingsKey ? settings->value(QLatin1String(settingsKey)).toString() : QString();
    const QString start = !last.isEmpty() && QDir(last).exists() ? last : usual;
    const QString folder = QFileDialog::getExistingDirectory(parent, title, start);
    if (folder.isEmpty())
        return QString();
    if (settingsKey)
        settings->setValue(QLatin1String(settingsKey),
                           memory == REMEMBER_PARENT ? QFileInfo(folder).absolutePath() : folder);
    return QDir::cleanPath(folder);
}
