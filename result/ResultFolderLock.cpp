// SPDX-License-Identifier: MIT
#include "result/ResultFolderLock.h"

bool ResultFolderLock::take(const QString &folder, int patience)
{
    m_file = std::make_unique<QLockFile>(folder + QStringLiteral("/.writing"));
    // However long it takes: only the end of its program ends it.
    m_file->setStaleLockTime(0);
    const auto isKeptOff = [this](int wait) {
        return !m_file->tryLock(wait) && m_file->error() == QLockFile::LockFailedError;
    };
    if (!isKeptOff(0))
        return true;
    // Who lives holds the open file as well, and it stays. Who was killed may not even have come to write who
    // he is.
    m_file->removeStaleLockFile();
    if (!isKeptOff(patience))
        return true;
    m_file.reset();
    return false;
}
