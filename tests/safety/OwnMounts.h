// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <QFile>
#include <QString>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

/// File systems of a test's own, which no other process sees and which go when the program ends.
class OwnMounts
{
public:
    /// To be called first thing in main(): later there are threads, and a process with threads gets no name
    /// space of its own. why() says what the machine refused.
    bool enter()
    {
        const uid_t user = geteuid();
        const gid_t group = getegid();
        if (unshare(CLONE_NEWNS) != 0 && !enterAs(user, group))
            return false;
        if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            return refuse("mount / private");
        m_isEntered = true;
        return true;
    }
    bool isEntered() const { return m_isEntered; }
    QString why() const { return m_why; }

    /// Mounts an empty file system of that size [bytes] on a folder.
    bool mountSmall(const QString &folder, qint64 size)
    {
        const QByteArray options = "size=" + QByteArray::number(size) + ",mode=0755";
        return mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, options.constData()) == 0 ||
               refuse("mount tmpfs");
    }
    static bool unmount(const QString &folder)
    {
        return umount2(QFile::encodeName(folder).constData(), MNT_DETACH) == 0;
    }

private:
    bool enterAs(uid_t user, gid_t group)
    {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return refuse("unshare");
        const auto put = [](const char *path, const QByteArray &text) {
            const int file = ::open(path, O_WRONLY | O_CLOEXEC);
            const bool done = file >= 0 && ::write(file, text.constData(), text.size()) == text.size();
            if (file >= 0)
                ::close(file);
            return done;
        };
        put("/proc/self/setgroups", "deny");
        return (put("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1") &&
                put("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1")) ||
               refuse("map the user");
    }
    bool refuse(const char *what)
    {
        m_why =
            QStringLiteral("%1: %2").arg(QString::fromLatin1(what), QString::fromLocal8Bit(strerror(errno)));
        return false;
    }

    bool m_isEntered = false;
    QString m_why;
};
