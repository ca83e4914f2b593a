// SPDX-License-Identifier: MIT
#include "tests/support/Files.h"

#include <QCryptographicHash>
#include <QDirIterator>

QMap<QString, QByteArray> hashesBelow(const QString &folder)
{
    QMap<QString, QByteArray> hashes;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    const QDir root(folder);
    while (all.hasNext()) {
        const QString path = all.next();
        QByteArray hash;
        QFile file(path);
        if (all.fileInfo().isFile()) {
            QCryptographicHash sum(QCryptographicHash::Sha256);
            hash = file.open(QIODevice::ReadOnly) && sum.addData(&file) ? sum.result().toHex()
                                                                        : QByteArray("unreadable");
        }
        hashes.insert(root.relativeFilePath(path), hash);
    }
    return hashes;
}
