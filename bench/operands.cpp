// SPDX-License-Identifier: MIT
#include "bench/operands.h"

#include <memory>

namespace {

/// Values without a pattern that a processor could learn, from `low` on, `span` wide.
CILImage noise(std::uint32_t size, float low, float span, std::uint32_t seed)
{
    CILImage filled;
    filled.InitWithType(VXS_FLOAT, size, size);
    auto *p = static_cast<float *>(filled.get_data());
    for (std::size_t i = 0; i < filled.pixelCount(); ++i) {
        seed = seed * 1664525u + 1013904223u;
        p[i] = low + span * float(seed >> 8) / 16777216.0f;
    }
    return CILImage(filled); // a copy has no pointer into it
}

} // namespace

Operands::Operands(std::uint32_t size)
    : a(noise(size, 100.0f, 60000.0f, 1)),
      b(noise(size, 50.0f, 9000.0f, 2)),
      counts(noise(size, 0.0f, 3.4f, 3)),
      tissue(noise(size, 0.0f, 1.0f, 4))
{
}

const Operands &operands(std::uint32_t size)
{
    static std::unique_ptr<Operands> kept;
    if (!kept || kept->a.getWidth() != size) {
        kept.reset();
        kept = std::make_unique<Operands>(size);
    }
    return *kept;
}

CILImage photograph(std::uint32_t size)
{
    CILImage filled;
    filled.InitWithType(VXS_UINT16, size, size);
    auto *p = static_cast<std::uint16_t *>(filled.get_data());
    std::uint32_t seed = 7;
    for (std::uint32_t y = 0; y < size; ++y) {
        for (std::uint32_t x = 0; x < size; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const double dx = double(x) / size - 0.5, dy = double(y) / size - 0.5;
            const std::uint32_t level = dx * dx * 6 + dy * dy < 0.16 ? 22000 : 3000;
            *p++ = std::uint16_t(level + (seed >> 20));
        }
    }
    return CILImage(filled);
}

float *target(CILImage &image, std::uint32_t size)
{
    image.InitWithType(VXS_FLOAT, size, size);
    return static_cast<float *>(image.get_data());
}
