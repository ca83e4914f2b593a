// SPDX-License-Identifier: MIT
#include "result/ResultFolderLock.h"

ResultFolderLock::ResultFolderLock(const QString &folder) : m_file(folder + QStringLiteral("/.writing"))
{
    // However long it takes: only the end of its program ends it.
    m_file.setStaleLockTime(0);
}

bool ResultFolderLock::take(int patience)
{
    const auto isKeptOff = [this](int wait) {
        return !m_file.tryLock(wait) && m_file.error() == QLockFile::LockFailedError;
    };
    if (!isKeptOff(0))
        return true;
    // Who lives holds the open file as well, and it stays. Who was killed may not even have come to write who
    // he is.
    m_file.removeStaleLockFile();
    return !isKeptOff(patience);
}
