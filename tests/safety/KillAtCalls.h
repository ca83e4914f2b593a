// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <string>

/// What the replaced calls of the preloaded library share.
namespace killat {

enum class When { BEFORE, HALF, AFTER };

std::string pathOf(int folder, const char *path);
std::string pathOf(int file);

/// The number of a call on that path; 0 for a path that is not watched.
long numberOf(const char *call, const std::string &path);
bool isTheEnd(long number, When when);
[[noreturn]] void die();

/// Which open files were written to: only closing those counts.
void noteWritten(int file, bool written);
bool isWritten(int file);

/// Runs a call between the two places where the program may be killed.
template <typename Call>
auto counted(const char *name, const std::string &path, Call call)
{
    const long number = numberOf(name, path);
    if (isTheEnd(number, When::BEFORE))
        die();
    const auto result = call();
    const int error = errno;
    if (isTheEnd(number, When::AFTER))
        die();
    errno = error;
    return result;
}

} // namespace killat
