// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>

/// The place of a virtual operation in its class's table, counted from the table's first entry.
///
///     QCOMPARE(placeOf(&Tool::getAction), placeOf(&Tool::getToolKind) + 1);
///
/// A pointer to a virtual member holds the offset in the table (plus one on processors that mark it so), as
/// the C++ ABI of all compilers of this system but those of Windows writes down.
template <typename Member>
std::ptrdiff_t placeOf(Member member)
{
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof member == sizeof words, "another ABI");
    std::memcpy(words, &member, sizeof words);
    return words[0] / std::ptrdiff_t(sizeof(void *));
}
