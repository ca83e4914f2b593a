// SPDX-License-Identifier: MIT
#include "samples/Random.h"

#include <cmath>

namespace {

std::uint64_t rotl(std::uint64_t value, int by)
{
    return (value << by) | (value >> (64 - by));
}

} // namespace

Random::Random(std::uint64_t seed)
{
    for (std::uint64_t &word : m_state) {
        seed += 0x9e3779b97f4a7c15ull;
        std::uint64_t mixed = seed;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ull;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebull;
        word = mixed ^ (mixed >> 31);
    }
}

std::uint64_t Random::next()
{
    const std::uint64_t result = rotl(m_state[1] * 5, 7) * 9;
    const std::uint64_t shifted = m_state[1] << 17;
    m_state[2] ^= m_state[0];
    m_state[3] ^= m_state[1];
    m_state[1] ^= m_state[2];
    m_state[0] ^= m_state[3];
    m_state[2] ^= shifted;
    m_state[3] = rotl(m_state[3], 45);
    return result;
}

double Random::uniform()
{
    return double(next() >> 11) * 0x1.0p-53;
}

double Random::normal()
{
    if (m_hasSpare) {
        m_hasSpare = false;
        return m_spare;
    }
    double u = 0.0;
    double v = 0.0;
    double s = 0.0;
    do {
        u = 2.0 * uniform() - 1.0;
        v = 2.0 * uniform() - 1.0;
        s = u * u + v * v;
    } while (s >= 1.0 || s == 0.0);
    const double scale = std::sqrt(-2.0 * std::log(s) / s);
    m_spare = v * scale;
    m_hasSpare = true;
    return u * scale;
}

double Random::poisson(double mean)
{
    if (mean <= 0.0)
        return 0.0;
    if (mean < 10.0) {
        const double limit = std::exp(-mean);
        double product = uniform();
        double count = 0.0;
        while (product > limit) {
            product *= uniform();
            count += 1.0;
        }
        return count;
    }
    const double root = std::sqrt(mean);
    const double logMean = std::log(mean);
    const double b = 0.931 + 2.53 * root;
    const double a = -0.059 + 0.02483 * b;
    const double inverseAlpha = 1.1239 + 1.1328 / (b - 3.4);
    const double vr = 0.9277 - 3.6224 / (b - 2.0);
    for (;;) {
        const double u = uniform() - 0.5;
        const double v = uniform();
        const double us = 0.5 - std::fabs(u);
        const double k = std::floor((2.0 * a / us + b) * u + mean + 0.43);
        if (us >= 0.07 && v <= vr)
            return k;
        if (k < 0.0 || (us < 0.013 && v > us))
            continue;
        if (std::log(v) + std::log(inverseAlpha) - std::log(a / (us * us) + b) <=
            -mean + k * logMean - std::lgamma(k + 1.0))
            return k;
    }
}
