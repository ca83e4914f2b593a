// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

/// Random numbers that are the same on every machine for a seed; the standard library's distributions are
/// not.
class Random
{
public:
    explicit Random(std::uint64_t seed);

    /// Uniform in [0, 1).
    double uniform();
    /// Standard normal (G. Marsaglia's polar method).
    double normal();
    /// Poisson of that mean, 0 or more: products of uniforms up to 10, above it the transformed rejection
    /// PTRS (W. Hoermann, Insurance: Mathematics and Economics 12, 39-45, 1993).
    double poisson(double mean);

private:
    std::uint64_t next();

    std::array<std::uint64_t, 4> m_state; ///< xoshiro256** (D. Blackman, S. Vigna), seeded by splitmix64
    double m_spare = 0.0;
    bool m_hasSpare = false;
};
