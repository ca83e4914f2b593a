// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Which files in folders are opened, by anybody, so that a test can say that something is not read again.
///
///     FileOpenings openings;
///     QVERIFY(openings.watch(folder));
///     load();
///     QCOMPARE(openings.take(), QStringList{folder + "/ClickInfo.txt"});
class FileOpenings
{
public:
    FileOpenings();
    ~FileOpenings();
    FileOpenings(const FileOpenings &) = delete;
    FileOpenings &operator=(const FileOpenings &) = delete;

    bool watch(const QString &folder);
    /// The paths of the files that were opened since the last call, sorted, each once.
    QStringList take();

private:
    int m_events = -1;
    QMap<int, QString> m_folders;
};
