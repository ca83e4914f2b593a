// SPDX-License-Identifier: MIT
#include "result/ResultPlace.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "result/ClickNumber.h"

#include <QDir>
#include <QFile>

QString ProgramDataPlace::clickNumberFor(const QString &clickA)
{
    return freeClickNumber(clickA);
}

ESTATUS ProgramDataPlace::prepareFolder(const QString &clickNumber, QString *folder, QString *reason)
{
    const ESTATUS status = empty(clickNumber, reason);
    if (status == ESTATUS_SUCCESS)
        *folder = folderNamed(clickNumber) + QLatin1Char('/');
    return status;
}

QString ProgramDataPlace::freeClickNumber(const QString &clickA)
{
    return clicknumber::forResult(
        clickA, [](const QString &candidate) { return CVXSDataset::getDataset(candidate) != nullptr; });
}

QString ProgramDataPlace::folderOf(const QString &clickNumber) const
{
    return folderNamed(clickNumber);
}

QString ProgramDataPlace::folderNamed(const QString &clickNumber)
{
    return CVXPreference::getProgramDataPath() + QLatin1Char('/') + clickNumber;
}

ESTATUS ProgramDataPlace::empty(const QString &clickNumber, QString *reason)
{
    const QString folder = folderNamed(clickNumber);
    if (!QDir(folder).exists())
        QDir().mkdir(folder);
    if (clickNumber.isEmpty())
        return ESTATUS_SUCCESS;
    const QStringList files = QDir(folder).entryList(QDir::Files, QDir::Name);
    for (const QString &name : files) {
        QFile file(folder + QLatin1Char('/') + name);
        if (!file.remove()) {
            *reason = file.fileName() + QStringLiteral(": ") + file.errorString();
            return ESTATUS_RESULT_FOLDER;
        }
    }
    return ESTATUS_SUCCESS;
}
