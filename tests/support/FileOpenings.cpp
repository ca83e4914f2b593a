// SPDX-License-Identifier: MIT
#include "tests/support/FileOpenings.h"

#include <QFile>

#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

FileOpenings::FileOpenings() : m_events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

FileOpenings::~FileOpenings()
{
    if (m_events >= 0)
        close(m_events);
}

bool FileOpenings::watch(const QString &folder)
{
    const int handle = inotify_add_watch(m_events, QFile::encodeName(folder).constData(), IN_OPEN);
    if (handle >= 0)
        m_folders.insert(handle, folder);
    return handle >= 0;
}

QStringList FileOpenings::take()
{
    QStringList paths;
    char bytes[8192];
    for (ssize_t size = read(m_events, bytes, sizeof bytes); size > 0;
         size = read(m_events, bytes, sizeof bytes)) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event;
            std::memcpy(&event, bytes + at, sizeof event);
            const char *name = bytes + at + sizeof event;
            if (event.len > 0 && !(event.mask & IN_ISDIR))
                paths << m_folders.value(event.wd) + QLatin1Char('/') + QFile::decodeName(name);
            at += ssize_t(sizeof event + event.len);
        }
    }
    paths.removeDuplicates();
    paths.sort();
    return paths;
}
