// SPDX-License-Identifier: MIT
#include "host/vximage/Resampling.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/kernels/BlockKernels.h"
#include "host/vximage/kernels/Conversion.h"
#include "host/vximage/kernels/ResamplingAxis.h"

#include <algorithm>
#include <type_traits>
#include <vector>

namespace il {
namespace {

/// What the family shares: the old pixels, the two axes, the new pixels.
template <typename S, typename D>
struct Job
{
    const S *in;
    std::size_t inWidth;
    D *out;
    const ResamplingAxis &x;
    const ResamplingAxis &y;
    double added = 1.0; ///< what a mean becomes a sum with: the pixels that are added up; 1 for means

    const S *inRow(std::size_t row) const { return in + row * inWidth; }
    D *outRow(std::size_t row) const { return out + row * x.size(); }

    /// f(row) for all new rows; several threads, each with a row of accumulators of its own.
    template <typename A, typename F>
    void forRows(std::size_t accumulators, F &&f) const
    {
        // The memory is taken here, because nothing may be thrown on the other threads.
        const std::size_t bands = std::min<std::size_t>(y.size(), 16);
        std::vector<A> memory(accumulators * bands);
        const std::size_t cost =
            inWidth * sizeof(S) * std::max<std::size_t>(1, y.count(0)) + x.size() * sizeof(D);
        parallelFor(bands, 1, cost * y.size() / bands, [&](std::size_t begin, std::size_t end) {
            for (std::size_t band = begin; band < end; ++band) {
                const std::size_t last = y.size() * (band + 1) / bands;
                for (std::size_t row = y.size() * band / bands; row < last; ++row)
                    f(std::uint32_t(row), memory.data() + band * accumulators);
            }
        });
    }
};

template <typename S, typename D>
void pickPixels(const Job<S, D> &job)
{
    const std::uint32_t *columns = job.x.firsts().data();
    job.template forRows<char>(0, [&](std::uint32_t row, char *) {
        const S *in = job.inRow(job.y.first(row));
        D *out = job.outRow(row);
        if (job.x.box() == 1) {
            for (std::size_t i = 0; i < job.x.size(); ++i)
                out[i] = D(in[i]);
        } else {
            for (std::size_t i = 0; i < job.x.size(); ++i)
                out[i] = D(in[columns[i]]);
        }
    });
}

/// Plain means or sums over fx x fy pixels; A holds the sums.
template <typename A, typename S, typename D>
void boxMeans(const Job<S, D> &job)
{
    const std::size_t fx = job.x.box();
    const std::size_t fy = job.y.box();
    const std::size_t used = fx * job.x.size();
    const double pixels = double(fx) * double(fy) / job.added;
    // The reciprocal of a power of two is exact.
    const bool powerOfTwo = pixels == 1.0 || ((fx & (fx - 1)) == 0 && (fy & (fy - 1)) == 0);
    const double reciprocal = 1.0 / pixels;
    job.template forRows<A>(used, [&](std::uint32_t row, A *sums) {
        const S *first = job.inRow(job.y.first(row));
        for (std::size_t i = 0; i < used; ++i)
            sums[i] = A(first[i]);
        for (std::size_t k = 1; k < fy; ++k) {
            const S *in = first + k * job.inWidth;
            for (std::size_t i = 0; i < used; ++i)
                sums[i] = A(sums[i] + A(in[i]));
        }
        D *out = job.outRow(row);
        const auto scaled = [&](auto sum) {
            return powerOfTwo ? double(sum) * reciprocal : double(sum) / pixels;
        };
        if (fx == 2) {
            for (std::size_t i = 0; i < job.x.size(); ++i)
                out[i] = roundedTo<D>(scaled(A(sums[2 * i] + sums[2 * i + 1])));
            return;
        }
        for (std::size_t i = 0; i < job.x.size(); ++i) {
            A sum = sums[fx * i];
            for (std::size_t k = 1; k < fx; ++k)
                sum = A(sum + sums[fx * i + k]);
            out[i] = roundedTo<D>(scaled(sum));
        }
    });
}

/// Any weights, first down the columns, then along the row.
template <typename S, typename D>
void weightedMeans(const Job<S, D> &job)
{
    job.template forRows<double>(job.inWidth, [&](std::uint32_t row, double *sums) {
        const double *wy = job.y.weights(row);
        const S *first = job.inRow(job.y.first(row));
        for (std::size_t i = 0; i < job.inWidth; ++i)
            sums[i] = wy[0] * double(first[i]);
        for (std::size_t k = 1; k < job.y.count(row); ++k) {
            const S *in = first + k * job.inWidth;
            for (std::size_t i = 0; i < job.inWidth; ++i)
                sums[i] += wy[k] * double(in[i]);
        }
        D *out = job.outRow(row);
        for (std::uint32_t i = 0; i < job.x.size(); ++i) {
            const double *wx = job.x.weights(i);
            const double *from = sums + job.x.first(i);
            double sum = wx[0] * from[0];
            for (std::uint32_t k = 1; k < job.x.count(i); ++k)
                sum += wx[k] * from[k];
            out[i] = roundedTo<D>(sum * job.added);
        }
    });
}

/// The photograph's mask on the grid of an image of half its size: the case that the user waits for.
void halveMask(const Job<std::uint8_t, float> &job)
{
    job.template forRows<char>(0, [&](std::uint32_t row, char *) {
        const std::uint8_t *in = job.inRow(2 * std::size_t(row));
        blockKernels().mean2x2Bytes(in, in + job.inWidth, job.outRow(row), job.x.size());
    });
}

template <typename S, typename D>
void run(const Job<S, D> &job)
{
    if (job.x.isPicked() && job.y.isPicked())
        return pickPixels(job);
    if (job.x.box() == 0 || job.y.box() == 0)
        return weightedMeans(job);
    if constexpr (std::is_same_v<S, std::uint8_t> && std::is_same_v<D, float>) {
        if (job.x.box() == 2 && job.y.box() == 2 && job.added == 1.0)
            return halveMask(job);
    }
    const std::uint64_t pixels = std::uint64_t(job.x.box()) * job.y.box();
    if constexpr (std::is_same_v<S, std::uint8_t> || std::is_same_v<S, std::uint16_t>) {
        if (pixels <= 65536)
            return boxMeans<std::uint32_t>(job);
    }
    boxMeans<double>(job);
}

} // namespace

bool isKnownResampleMode(int mode)
{
    return mode == IL_RESAMPLE_AREA || mode == IL_RESAMPLE_BINNING || mode == IL_RESAMPLE_NEAREST_MASK;
}

std::uint32_t pixelsAddedUp(std::uint32_t oldSize, std::uint32_t newSize)
{
    return newSize == 0 || newSize > oldSize ? 1 : oldSize / newSize;
}

StorePtr resample(PixelStore &source, const Resampling &wanted)
{
    const ResamplingAxis x(source.width(), wanted.width, wanted.mode);
    const ResamplingAxis y(source.height(), wanted.height, wanted.mode);
    const double added = wanted.addsUp ? double(pixelsAddedUp(source.width(), wanted.width)) *
                                             pixelsAddedUp(source.height(), wanted.height)
                                       : 1.0;
    StorePtr result = PixelStore::allocate(wanted.type, wanted.width, wanted.height);
    const void *in = source.data();
    void *out = result->data();
    withPixelType(source.type(), [&](auto tag) {
        const auto *pixels = static_cast<decltype(tag)>(in);
        using S = std::remove_const_t<std::remove_pointer_t<decltype(tag)>>;
        if (wanted.type == VXS_FLOAT)
            run(Job<S, float>{pixels, source.width(), static_cast<float *>(out), x, y, added});
        else
            run(Job<S, S>{pixels, source.width(), static_cast<S *>(out), x, y, added});
    });
    return result;
}

} // namespace il
