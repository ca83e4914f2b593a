// SPDX-License-Identifier: MIT
#include "host/vximage/CSLComposite.h"

#include "host/vximage/base/Messages.h"
#include "host/vximage/base/Parallel.h"
#include "host/vximage/kernels/BlockKernels.h"
#include "host/vximage/kernels/Conversion.h"
#include "host/vximage/PixelStore.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <mutex>
#include <new>

namespace {

constexpr int CLASSES = 256;
constexpr std::size_t BLOCK_PIXELS = 4096;
using Histogram = std::array<std::uint64_t, CLASSES>;

/// Counts the classes of a block. Neighbouring pixels are often of one class; four tables keep their
/// increments apart.
class ClassCounter
{
public:
    void count(const std::uint8_t *classes, std::size_t n)
    {
        std::size_t i = 0;
        for (; i + 4 <= n; i += 4) {
            ++m_tables[0][classes[i]];
            ++m_tables[1][classes[i + 1]];
            ++m_tables[2][classes[i + 2]];
            ++m_tables[3][classes[i + 3]];
        }
        for (; i < n; ++i)
            ++m_tables[0][classes[i]];
    }

    void addTo(Histogram &sum) const
    {
        for (const auto &table : m_tables) {
            for (std::size_t c = 0; c < CLASSES; ++c)
                sum[c] += table[c];
        }
    }

private:
    std::array<std::array<std::uint64_t, CLASSES>, 4> m_tables{};
};

/// The classes of the finite pixels between lo and hi.
Histogram histogramOf(const void *pixels, VXSDataTypes type, std::size_t n, float lo, float hi)
{
    const il::BlockKernels &kernels = il::blockKernels();
    // In double, because the range of a float image may be beyond float; halved for the same reason.
    const double halfRange = double(hi) / 2 - double(lo) / 2;
    const float scale = float(CLASSES / 2 / halfRange);
    const bool plain = std::isfinite(hi - lo) && std::isfinite(scale);
    const std::size_t bytes = il::bytesPerPixel(type);
    Histogram sum{};
    std::mutex mutex;
    il::parallelFor(n, BLOCK_PIXELS, 2 * bytes, [&](std::size_t begin, std::size_t end) {
        alignas(64) float values[BLOCK_PIXELS];
        alignas(64) std::uint8_t classes[BLOCK_PIXELS];
        ClassCounter counter;
        for (std::size_t i = begin; i < end; i += BLOCK_PIXELS) {
            std::size_t count = std::min(BLOCK_PIXELS, end - i);
            const float *from = values;
            if (type == VXS_FLOAT)
                from = static_cast<const float *>(pixels) + i;
            else
                il::toFloat(static_cast<const char *>(pixels) + i * bytes, type, values, count);
            if (!il::isSmallInteger(
                    type)) { // the only types that need not be looked at for what is not finite
                std::size_t kept = 0;
                for (std::size_t j = 0; j < count; ++j) {
                    const float v = from[j];
                    values[kept] = v;
                    kept += std::isfinite(v) ? 1 : 0;
                }
                count = kept;
                from = values;
            }
            if (plain) {
                kernels.classify(from, lo, scale, classes, count);
            } else {
                for (std::size_t j = 0; j < count; ++j) {
                    const double c = (double(from[j]) / 2 - double(lo) / 2) / halfRange * CLASSES;
                    classes[j] = std::uint8_t(std::clamp(c, 0.0, double(CLASSES - 1)));
                }
            }
            counter.count(classes, count);
        }
        std::lock_guard<std::mutex> lock(mutex);
        counter.addTo(sum);
    });
    return sum;
}

/// The border between the two groups of classes whose means differ most, weighed by their sizes, in classes.
/// Where several borders do equally well (there are no pixels between them), the middle of them.
double otsuBorder(const Histogram &histogram)
{
    double total = 0.0;
    double totalSum = 0.0;
    for (std::size_t c = 0; c < CLASSES; ++c) {
        total += double(histogram[c]);
        totalSum += double(c) * double(histogram[c]);
    }
    double below = 0.0;
    double belowSum = 0.0;
    double best = -1.0;
    std::size_t firstBest = 0;
    std::size_t lastBest = 0;
    for (std::size_t c = 0; c + 1 < CLASSES; ++c) {
        below += double(histogram[c]);
        belowSum += double(c) * double(histogram[c]);
        const double above = total - below;
        if (below == 0.0 || above == 0.0)
            continue;
        const double difference = belowSum / below - (totalSum - belowSum) / above;
        const double variance = below * above * difference * difference;
        if (variance > best) {
            best = variance;
            firstBest = c;
        }
        if (variance == best)
            lastBest = c;
    }
    return double(firstBest + lastBest) / 2 + 1.0;
}

float otsuPercentage(il::PixelStore &store)
{
    const il::Statistics statistics = store.statistics();
    if (!statistics.hasFinite || !(statistics.min < statistics.max))
        return 0.0f;
    const Histogram histogram =
        histogramOf(store.data(), store.type(), store.count(), statistics.min, statistics.max);
    return float(otsuBorder(histogram) * 100.0 / CLASSES);
}

} // namespace

float CSLComposite::AutomaticThresholdOtsu(const CILImage *image) const
{
    if (!image || image->isEmpty())
        return 0.0f;
    try {
        const il::StorePtr store = il::PixelStore::readable(il::PixelStore::of(*image));
        if (const auto known = store->rememberedOtsu())
            return *known;
        const float percentage = otsuPercentage(*store);
        store->rememberOtsu(percentage);
        return percentage;
    } catch (const std::bad_alloc &) {
        il::message(il::MESSAGE_ERROR, "There is not enough memory to find an automatic threshold.");
        return 0.0f;
    }
}
