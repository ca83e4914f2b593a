// SPDX-License-Identifier: MIT
// Preloaded into a program, this numbers the calls that change something in the file system below some
// folders, and kills the program with SIGKILL at one of them. Environment:
//   KILL_AT_FOLDERS  the folders, absolute, separated by ":"
//   KILL_AT_TRACE    a file that gets a line "number call path" a call (outside of the folders)
//   KILL_AT          the number of the call to be killed at; 0 or nothing: only count
//   KILL_AT_WHEN     "before" the call, "half" way through what a write is asked to write, or "after" it
#include "tests/safety/KillAtCalls.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace killat {

namespace {

struct Plan
{
    std::vector<std::string> folders;
    long at = 0;
    When when = When::AFTER;
    int trace = -1;
};

// Past the replaced call, which asks for the plan itself.
int openTrace(const char *path)
{
    const auto next = reinterpret_cast<int (*)(const char *, int, ...)>(dlsym(RTLD_NEXT, "open"));
    return next(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
}

Plan readPlan()
{
    Plan plan;
    const char *folders = std::getenv("KILL_AT_FOLDERS");
    std::string rest = folders ? folders : "";
    while (!rest.empty()) {
        const std::size_t end = rest.find(':');
        plan.folders.push_back(rest.substr(0, end));
        rest = end == std::string::npos ? std::string() : rest.substr(end + 1);
    }
    const char *at = std::getenv("KILL_AT");
    plan.at = at ? std::strtol(at, nullptr, 10) : 0;
    const std::string when = std::getenv("KILL_AT_WHEN") ? std::getenv("KILL_AT_WHEN") : "after";
    plan.when = when == "before" ? When::BEFORE : when == "half" ? When::HALF : When::AFTER;
    if (const char *trace = std::getenv("KILL_AT_TRACE"))
        plan.trace = openTrace(trace);
    return plan;
}

const Plan &plan()
{
    // Never destroyed: files are still closed while the program ends.
    static const auto *read = new Plan(readPlan());
    return *read;
}

std::string linkOf(const std::string &link)
{
    char target[PATH_MAX];
    const ssize_t length = readlink(link.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, std::size_t(length)) : std::string();
}

std::atomic<long> s_count{0};
constexpr int MOST_FILES = 4096;
std::atomic<bool> s_isWritten[MOST_FILES];

} // namespace

std::string pathOf(int folder, const char *path)
{
    if (!path)
        return std::string();
    if (path[0] == '/')
        return path;
    const std::string base = folder == AT_FDCWD ? linkOf("/proc/self/cwd") : pathOf(folder);
    return base + '/' + path;
}

std::string pathOf(int file)
{
    return linkOf("/proc/self/fd/" + std::to_string(file));
}

long numberOf(const char *call, const std::string &path)
{
    const int before = errno;
    bool isBelow = false;
    for (const std::string &folder : plan().folders) {
        const bool isSame = path.compare(0, folder.size(), folder) == 0;
        isBelow = isBelow || (isSame && (path.size() == folder.size() || path[folder.size()] == '/'));
    }
    long number = 0;
    if (isBelow) {
        number = ++s_count;
        if (plan().trace >= 0) {
            const std::string line = std::to_string(number) + ' ' + call + ' ' + path + '\n';
            (void)syscall(SYS_write, plan().trace, line.data(), line.size());
        }
    }
    errno = before;
    return number;
}

bool isTheEnd(long number, When when)
{
    return number > 0 && number == plan().at && when == plan().when;
}

void die()
{
    (void)syscall(SYS_kill, getpid(), SIGKILL);
    for (;;)
        pause();
}

void noteWritten(int file, bool written)
{
    if (file >= 0 && file < MOST_FILES)
        s_isWritten[file] = written;
}

bool isWritten(int file)
{
    return file >= 0 && file < MOST_FILES && s_isWritten[file];
}

} // namespace killat
