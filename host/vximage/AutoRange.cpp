// SPDX-License-Identifier: MIT
#include "host/vximage/AutoRange.h"

#include "host/vximage/base/Messages.h"
#include "host/vximage/base/Parallel.h"
#include "host/vximage/kernels/BlockKernels.h"
#include "host/vximage/kernels/Conversion.h"
#include "host/vximage/PixelStore.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <new>
#include <optional>
#include <vector>

namespace {

constexpr double SHARE_BELOW = 0.9995;        // of the pixels, below the upper limit
constexpr double LOW_SHARE_OF_MAXIMUM = 0.05; // lower limit as a share of the largest value
constexpr std::size_t BLOCK_PIXELS = 2048;    // floats that stay in the first-level cache
constexpr std::size_t GROUP_PIXELS = 32;      // pixels that are skipped together when none of them is bright
constexpr std::size_t SAMPLES = 16384;        // enough to guess where the brightest few per thousand begin
constexpr double SHARE_OF_SAMPLES = 0.997;
constexpr float POSITIVE_INFINITY = std::numeric_limits<float>::infinity();

/// Walks over the pixels of an image as floats.
class FloatReader
{
public:
    explicit FloatReader(il::PixelStore &store)
        : m_pixels(store.data()), m_type(store.type()), m_count(store.count())
    {
    }

    std::size_t count() const { return m_count; }

    /// f(values, n) for each block of [begin, end).
    template <typename F>
    void forBlocks(std::size_t begin, std::size_t end, F &&f) const
    {
        alignas(64) float scratch[BLOCK_PIXELS];
        for (std::size_t i = begin; i < end; i += BLOCK_PIXELS) {
            const std::size_t n = std::min(BLOCK_PIXELS, end - i);
            if (m_type == VXS_FLOAT) {
                f(static_cast<const float *>(m_pixels) + i, n);
            } else {
                il::toFloat(at(i), m_type, scratch, n);
                f(scratch, n);
            }
        }
    }

    /// body(begin, end) on several threads.
    template <typename F>
    void inParallel(F &&body) const
    {
        il::parallelFor(m_count, BLOCK_PIXELS, il::bytesPerPixel(m_type), body);
    }

    float value(std::size_t i) const
    {
        float v;
        il::toFloat(at(i), m_type, &v, 1);
        return v;
    }

private:
    const char *at(std::size_t i) const
    {
        return static_cast<const char *>(m_pixels) + i * il::bytesPerPixel(m_type);
    }

    const void *m_pixels;
    VXSDataTypes m_type;
    std::size_t m_count;
};

/// The pixels that count: finite, below the ceiling; their extremes and a histogram grid between these.
struct Population
{
    float ceiling = POSITIVE_INFINITY;
    float lo = POSITIVE_INFINITY;
    float hi = -POSITIVE_INFINITY;
    int bins = 1;

    bool isEmpty() const { return lo > hi; }
    bool holds(float v) const { return v >= lo && v <= hi; }
    int bin(float v) const
    {
        const double share = (double(v) - double(lo)) / (double(hi) - double(lo));
        return std::min(bins - 1, int(share * bins));
    }
    double upperEdge(int bin) const
    {
        return bin + 1 >= bins ? double(hi) : double(lo) + (double(hi) - double(lo)) * (bin + 1) / bins;
    }
};

Population populationBelow(const FloatReader &reader, float ceiling, int bins)
{
    Population p;
    p.ceiling = ceiling;
    p.bins = bins;
    std::mutex mutex;
    reader.inParallel([&](std::size_t begin, std::size_t end) {
        float lo = POSITIVE_INFINITY;
        float hi = -POSITIVE_INFINITY;
        reader.forBlocks(begin, end, [&](const float *v, std::size_t n) {
            il::blockKernels().minMaxBelow(v, n, ceiling, &lo, &hi);
        });
        std::lock_guard<std::mutex> lock(mutex);
        p.lo = std::min(p.lo, lo);
        p.hi = std::max(p.hi, hi);
    });
    return p;
}

/// A value that few pixels reach, from a sample of them: with it the histogram need only be made of the rest.
float guessBrightLevel(const FloatReader &reader, const Population &p)
{
    const std::size_t step =
        std::max<std::size_t>(1, reader.count() / SAMPLES) | 1; // odd: not one column only
    std::vector<float> sample;
    sample.reserve(reader.count() / step + 1);
    for (std::size_t i = 0; i < reader.count(); i += step) {
        const float v = reader.value(i);
        if (p.holds(v))
            sample.push_back(v);
    }
    if (sample.empty())
        return p.lo;
    const auto at = sample.begin() + std::ptrdiff_t(double(sample.size() - 1) * SHARE_OF_SAMPLES);
    std::nth_element(sample.begin(), at, sample.end());
    return *at;
}

struct BrightPixels
{
    std::size_t population = 0;        ///< all that count
    std::vector<std::uint32_t> perBin; ///< of those at or above the level
};

BrightPixels countBright(const FloatReader &reader, const Population &p, float level)
{
    BrightPixels result;
    result.perBin.resize(std::size_t(p.bins));
    const il::BlockKernels &kernels = il::blockKernels();
    std::mutex mutex;
    reader.inParallel([&](std::size_t begin, std::size_t end) {
        std::size_t population = 0;
        reader.forBlocks(begin, end, [&](const float *v, std::size_t n) {
            population += kernels.countFrom(v, n, p.lo, p.ceiling);
            float found[BLOCK_PIXELS];
            std::size_t count = 0;
            for (std::size_t g = 0; g < n; g += GROUP_PIXELS) {
                const std::size_t size = std::min(GROUP_PIXELS, n - g);
                if (kernels.countFrom(v + g, size, level, p.ceiling) == 0)
                    continue;
                for (std::size_t i = g; i < g + size; ++i) {
                    found[count] = v[i];
                    count += v[i] >= level && p.holds(v[i]) ? 1 : 0;
                }
            }
            if (count == 0)
                return;
            std::lock_guard<std::mutex> lock(mutex);
            for (std::size_t i = 0; i < count; ++i)
                ++result.perBin[std::size_t(p.bin(found[i]))];
        });
        std::lock_guard<std::mutex> lock(mutex);
        result.population += population;
    });
    return result;
}

/// The lowest bin with at least the share of all pixels in it and below; none when it may lie below the bin
/// of `level`.
std::optional<int> binOfShare(const BrightPixels &bright, const Population &p, float level)
{
    const double allowedAbove =
        double(bright.population) - std::ceil(double(bright.population) * SHARE_BELOW);
    const int lowest = p.bin(level);
    std::size_t above = 0;
    for (int b = p.bins - 1; b >= lowest; --b) {
        const std::size_t next = above + bright.perBin[std::size_t(b)];
        if (double(next) > allowedAbove)
            return b;
        above = next;
    }
    if (lowest == 0)
        return 0;
    return std::nullopt;
}

double levelOfShare(const FloatReader &reader, const Population &p)
{
    const float guess = guessBrightLevel(reader, p);
    if (const auto bin = binOfShare(countBright(reader, p, guess), p, guess))
        return p.upperEdge(*bin);
    const auto bin = binOfShare(countBright(reader, p, p.lo), p, p.lo);
    return p.upperEdge(bin.value_or(0));
}

il::PixelStore::AutoRange rangeOf(il::PixelStore &store, double ceiling, int count)
{
    const FloatReader reader(store);
    const int bins = std::clamp(count, 1, 1 << 24);
    // A pixel is a float: it is below the ceiling when it is below the next float at or above it.
    float floatCeiling = float(ceiling);
    if (double(floatCeiling) < ceiling)
        floatCeiling = std::nextafter(floatCeiling, POSITIVE_INFINITY);
    Population p = populationBelow(reader, floatCeiling, bins);
    if (p.isEmpty())
        p = populationBelow(reader, POSITIVE_INFINITY, bins);
    if (p.isEmpty())
        return {ceiling, count, false, 0.0, 0.0};
    if (p.lo == p.hi)
        return {ceiling, count, true, double(p.lo), double(p.hi)};
    const double high = levelOfShare(reader, p);
    double low = std::max(LOW_SHARE_OF_MAXIMUM * double(p.hi), double(p.lo));
    if (low >= high) // a few pixels far brighter than all others, or all below 0
        low = double(p.lo);
    return {ceiling, count, true, low, high};
}

} // namespace

bool ilAutoRange(const CILImage &image, double ceiling, int count, double *low, double *high)
{
    if (image.isEmpty())
        return false;
    try {
        const il::StorePtr store = il::PixelStore::readable(il::PixelStore::of(image));
        auto range = store->rememberedAutoRange(ceiling, count);
        if (!range) {
            range = rangeOf(*store, ceiling, count);
            store->rememberAutoRange(*range);
        }
        if (range->found) {
            *low = range->low;
            *high = range->high;
        }
        return range->found;
    } catch (const std::bad_alloc &) {
        il::message(il::MESSAGE_ERROR, "There is not enough memory to find an automatic range.");
        return false;
    }
}
