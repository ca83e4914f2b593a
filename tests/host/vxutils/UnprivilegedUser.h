// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

/// Runs a check in a child process as a user who has to respect permissions (root ignores them). True when
/// the check returned true. The check must not use what only the parent may reach, and must not end the
/// process.
inline bool holdsForUnprivilegedUser(const std::function<bool()> &check)
{
    constexpr uid_t NOBODY = 65534;
    const pid_t child = fork();
    if (child < 0)
        return false;
    if (child == 0) {
        if (geteuid() == 0 && (setgid(NOBODY) != 0 || setuid(NOBODY) != 0))
            _exit(2);
        _exit(check() ? 0 : 1); // without the parent's clean-up
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
