// SPDX-License-Identifier: MIT
// The C library's calls that change something in the file system, each handed on to the next library that
// has it (the C library, or a sanitizer's).
#include "tests/safety/KillAtCalls.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

using namespace killat;

namespace {

bool changes(int flags)
{
    return flags & (O_CREAT | O_TRUNC | O_WRONLY | O_RDWR);
}

/// An open file as the numbers' owner sees it: nothing was written to it yet.
int opened(int file)
{
    noteWritten(file, false);
    return file;
}

template <typename Write>
ssize_t countedWrite(const char *name, int file, std::size_t size, const Write &write)
{
    const std::string path = pathOf(file);
    const long number = numberOf(name, path);
    if (isTheEnd(number, When::BEFORE))
        die();
    if (isTheEnd(number, When::HALF)) {
        (void)write(size / 2);
        die();
    }
    const ssize_t written = write(size);
    const int error = errno;
    if (number > 0)
        noteWritten(file, true);
    if (isTheEnd(number, When::AFTER))
        die();
    errno = error;
    return written;
}

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))
/// The next definition of that name after this library, of the type of `name` itself.
#define NEXT(name) static const auto next = reinterpret_cast<decltype(&::name)>(dlsym(RTLD_NEXT, #name))

#define REPLACE_OPEN(name)                                                                                   \
    EXPORTED int name(const char *path, int flags, ...)                                                      \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(rest, mode_t) : mode_t(0);                \
        va_end(rest);                                                                                        \
        if (!changes(flags))                                                                                 \
            return opened(next(path, flags, mode));                                                          \
        return counted("open", pathOf(AT_FDCWD, path), [&] { return opened(next(path, flags, mode)); });     \
    }
REPLACE_OPEN(open)
REPLACE_OPEN(open64)

#define REPLACE_OPENAT(name)                                                                                 \
    EXPORTED int name(int folder, const char *path, int flags, ...)                                          \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(rest, mode_t) : mode_t(0);                \
        va_end(rest);                                                                                        \
        if (!changes(flags))                                                                                 \
            return opened(next(folder, path, flags, mode));                                                  \
        return counted("openat", pathOf(folder, path),                                                       \
                       [&] { return opened(next(folder, path, flags, mode)); });                             \
    }
REPLACE_OPENAT(openat)
REPLACE_OPENAT(openat64)

#define REPLACE_CREAT(name)                                                                                  \
    EXPORTED int name(const char *path, mode_t mode)                                                         \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return counted("creat", pathOf(AT_FDCWD, path), [&] { return opened(next(path, mode)); });           \
    }
REPLACE_CREAT(creat)
REPLACE_CREAT(creat64)

#define REPLACE_FOPEN(name)                                                                                  \
    EXPORTED FILE *name(const char *path, const char *mode)                                                  \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        if (!std::strpbrk(mode, "wa+"))                                                                      \
            return next(path, mode);                                                                         \
        return counted("fopen", pathOf(AT_FDCWD, path), [&] { return next(path, mode); });                   \
    }
REPLACE_FOPEN(fopen)
REPLACE_FOPEN(fopen64)

EXPORTED ssize_t write(int file, const void *data, size_t size)
{
    NEXT(write);
    return countedWrite("write", file, size, [&](size_t count) { return next(file, data, count); });
}

#define REPLACE_PWRITE(name, offset_type)                                                                    \
    EXPORTED ssize_t name(int file, const void *data, size_t size, offset_type offset)                       \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return countedWrite("pwrite", file, size,                                                            \
                            [&](size_t count) { return next(file, data, count, offset); });                  \
    }
REPLACE_PWRITE(pwrite, off_t)
REPLACE_PWRITE(pwrite64, off64_t)

EXPORTED ssize_t writev(int file, const struct iovec *parts, int count)
{
    NEXT(writev);
    return countedWrite("writev", file, std::size_t(count),
                        [&](size_t some) { return next(file, parts, int(some)); });
}

#define REPLACE_TRUNCATE(name, offset_type)                                                                  \
    EXPORTED int name(const char *path, offset_type size)                                                    \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return counted("truncate", pathOf(AT_FDCWD, path), [&] { return next(path, size); });                \
    }
REPLACE_TRUNCATE(truncate, off_t)
REPLACE_TRUNCATE(truncate64, off64_t)

#define REPLACE_FTRUNCATE(name, offset_type)                                                                 \
    EXPORTED int name(int file, offset_type size)                                                            \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return counted("ftruncate", pathOf(file), [&] { return next(file, size); });                         \
    }
REPLACE_FTRUNCATE(ftruncate, off_t)
REPLACE_FTRUNCATE(ftruncate64, off64_t)

#define REPLACE_SYNC(name)                                                                                   \
    EXPORTED int name(int file)                                                                              \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return counted(#name, pathOf(file), [&] { return next(file); });                                     \
    }
REPLACE_SYNC(fsync)
REPLACE_SYNC(fdatasync)

EXPORTED int close(int file)
{
    NEXT(close);
    if (!isWritten(file))
        return next(file);
    noteWritten(file, false);
    return counted("close", pathOf(file), [&] { return next(file); });
}

EXPORTED int fchmod(int file, mode_t mode)
{
    NEXT(fchmod);
    return counted("fchmod", pathOf(file), [&] { return next(file, mode); });
}

#define REPLACE_ON_PATH(name, ...)                                                                           \
    NEXT(name);                                                                                              \
    return counted(#name, pathOf(AT_FDCWD, path), [&] { return next(__VA_ARGS__); })

EXPORTED int chmod(const char *path, mode_t mode)
{
    REPLACE_ON_PATH(chmod, path, mode);
}

EXPORTED int mkdir(const char *path, mode_t mode)
{
    REPLACE_ON_PATH(mkdir, path, mode);
}

EXPORTED int rmdir(const char *path)
{
    REPLACE_ON_PATH(rmdir, path);
}

EXPORTED int unlink(const char *path)
{
    REPLACE_ON_PATH(unlink, path);
}

EXPORTED int remove(const char *path)
{
    REPLACE_ON_PATH(remove, path);
}

EXPORTED int mkdirat(int folder, const char *path, mode_t mode)
{
    NEXT(mkdirat);
    return counted("mkdirat", pathOf(folder, path), [&] { return next(folder, path, mode); });
}

EXPORTED int unlinkat(int folder, const char *path, int flags)
{
    NEXT(unlinkat);
    return counted("unlinkat", pathOf(folder, path), [&] { return next(folder, path, flags); });
}

EXPORTED int symlink(const char *target, const char *path)
{
    REPLACE_ON_PATH(symlink, target, path);
}

// Of two names the new one counts: that is where something changes that the user sees.
EXPORTED int rename(const char *from, const char *path)
{
    REPLACE_ON_PATH(rename, from, path);
}

EXPORTED int link(const char *from, const char *path)
{
    REPLACE_ON_PATH(link, from, path);
}

EXPORTED int renameat(int fromFolder, const char *from, int folder, const char *path)
{
    NEXT(renameat);
    return counted("renameat", pathOf(folder, path), [&] { return next(fromFolder, from, folder, path); });
}

EXPORTED int renameat2(int fromFolder, const char *from, int folder, const char *path, unsigned flags)
{
    NEXT(renameat2);
    return counted("renameat2", pathOf(folder, path),
                   [&] { return next(fromFolder, from, folder, path, flags); });
}

EXPORTED int linkat(int fromFolder, const char *from, int folder, const char *path, int flags)
{
    NEXT(linkat);
    return counted("linkat", pathOf(folder, path),
                   [&] { return next(fromFolder, from, folder, path, flags); });
}

/// System calls that are made without the C library's functions.
EXPORTED long syscall(long number, ...)
{
    NEXT(syscall);
    va_list rest;
    va_start(rest, number);
    long a[6];
    for (long &argument : a)
        argument = va_arg(rest, long);
    va_end(rest);
    const auto call = [&] { return next(number, a[0], a[1], a[2], a[3], a[4], a[5]); };
    const auto text = [&](int i) { return reinterpret_cast<const char *>(a[i]); };
    switch (number) {
    case SYS_openat:
        return changes(int(a[2])) ? counted("openat", pathOf(int(a[0]), text(1)), call) : call();
    case SYS_renameat2:
    case SYS_renameat:
        return counted("renameat2", pathOf(int(a[2]), text(3)), call);
    case SYS_linkat:
        return counted("linkat", pathOf(int(a[2]), text(3)), call);
    case SYS_copy_file_range:
        return counted("copy_file_range", pathOf(int(a[2])), call);
    default:
        return call();
    }
}

EXPORTED ssize_t sendfile(int target, int source, off_t *offset, size_t size)
{
    static const auto next =
        reinterpret_cast<ssize_t (*)(int, int, off_t *, size_t)>(dlsym(RTLD_NEXT, "sendfile"));
    return countedWrite("sendfile", target, size,
                        [&](size_t count) { return next(target, source, offset, count); });
}
