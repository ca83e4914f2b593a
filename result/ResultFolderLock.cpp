// SPDX-License-Identifier: MIT
#include "result/ResultFolderLock.h"

namespace {

constexpr int SETTLING = 1000; // ms, far longer than it takes to write a line

bool saysWhose(const QLockFile &file)
{
    qint64 process = 0;
    QString host;
    QString program;
    return file.getLockInfo(&process, &host, &program);
}

} // namespace

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
    // Who makes the file writes into it at once whose it is, and has it open from then on, so that nobody
    // else removes it. A file that goes on saying nothing is of a program that was killed before it came to
    // that; until then it may be of one that lives.
    if (!saysWhose(*m_file) && !isKeptOff(SETTLING))
        return true;
    m_file->removeStaleLockFile();
    if (!isKeptOff(patience))
        return true;
    m_file.reset();
    return false;
}
