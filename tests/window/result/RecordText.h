// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// Records on disk, read and changed as text.
namespace recordtext {

/// The records of the two clicks as they lie on disk.
QByteArray clickInfoA();
QByteArray clickInfoB();
QByteArray analyzedA();
QByteArray analyzedB();

/// Takes a section away, with the empty line before it.
bool removeSection(const QString &path, const QByteArray &key);
/// The lines of a record. The version that this build writes reads "Vexa Version = (this build)".
QStringList lines(const QString &path);
/// The lines of the section of that key, heading included, without the empty line behind it; nothing when
/// there is none.
QStringList section(const QString &path, const QString &key);
/// The headings without names, in order.
QStringList headings(const QString &path);
/// The value of the last pair of that key; null when there is none.
QString value(const QString &path, const QString &sectionKey, const QString &key);

/// Fails the test when the lines are not the same, with the first one that is not and its number.
void compare(const QStringList &found, const QStringList &expected);

/// Relative path and SHA-256 of every file under a folder.
QMap<QString, QByteArray> hashes(const QString &folder);

} // namespace recordtext
