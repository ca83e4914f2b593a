// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

/// For as long as it lives the process respects permissions: root, who does not, becomes a user without
/// rights. isOn() is false when that was refused.
class UserSwitch
{
public:
    UserSwitch() : m_wasRoot(geteuid() == 0)
    {
        m_isOn = !m_wasRoot || (setegid(NOBODY) == 0 && seteuid(NOBODY) == 0);
    }
    ~UserSwitch()
    {
        if (m_wasRoot && (seteuid(0) != 0 || setegid(0) != 0))
            _exit(99); // everything after this would be tested as somebody else
    }
    UserSwitch(const UserSwitch &) = delete;
    UserSwitch &operator=(const UserSwitch &) = delete;
    bool isOn() const { return m_isOn; }

private:
    static constexpr unsigned NOBODY = 65534;
    bool m_wasRoot;
    bool m_isOn = false;
};
