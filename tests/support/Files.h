// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QString>

/// Small files of tests.
inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not readable");
}

/// Replaces the only occurrence of a text in a file.
inline bool replaceInFile(const QString &path, const QByteArray &before, const QByteArray &after)
{
    QByteArray bytes = readFile(path);
    return bytes.count(before) == 1 && writeFile(path, bytes.replace(before, after));
}

/// Replaces every occurrence of a text in a file; false when there is none.
inline bool replaceEverywhereInFile(const QString &path, const QByteArray &before, const QByteArray &after)
{
    QByteArray bytes = readFile(path);
    return bytes.contains(before) && writeFile(path, bytes.replace(before, after));
}

inline QStringList filesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

/// SHA-256 of every file below a folder, hidden ones too, by path relative to it; folders count with an empty
/// hash.
QMap<QString, QByteArray> hashesBelow(const QString &folder);
