// SPDX-License-Identifier: MIT
#include "host/vximage/kernels/Conversion.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/kernels/BlockKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace il {
namespace {

constexpr std::size_t GRAIN = 4096;

template <typename S, typename D>
void convertPixels(const S *in, D *out, std::size_t n)
{
    if constexpr (std::is_same_v<S, D>) {
        std::memcpy(out, in, n * sizeof(S));
    } else if constexpr (std::is_floating_point_v<D>) {
        for (std::size_t i = 0; i < n; ++i)
            out[i] = D(in[i]);
    } else if constexpr (std::is_integral_v<S>) {
        if constexpr (sizeof(S) <= sizeof(D)) {
            for (std::size_t i = 0; i < n; ++i)
                out[i] = D(in[i]);
        } else {
            for (std::size_t i = 0; i < n; ++i)
                out[i] = D(std::min(in[i], S(std::numeric_limits<D>::max())));
        }
    } else {
        for (std::size_t i = 0; i < n; ++i)
            out[i] = roundedTo<D>(double(in[i]));
    }
}

template <typename S>
void toMask(const S *in, std::uint8_t *out, std::size_t n)
{
    for (std::size_t i = 0; i < n; ++i)
        out[i] = in[i] != S(0) ? 1 : 0;
}

} // namespace

template <typename T>
T roundedTo(double value)
{
    if constexpr (std::is_floating_point_v<T>) {
        return T(value);
    } else {
        if (!(value > 0.0)) // NaN too
            return 0;
        if (value >= double(std::numeric_limits<T>::max()))
            return std::numeric_limits<T>::max();
        return T(std::nearbyint(value));
    }
}

template std::uint8_t roundedTo<std::uint8_t>(double);
template std::uint16_t roundedTo<std::uint16_t>(double);
template std::uint32_t roundedTo<std::uint32_t>(double);
template float roundedTo<float>(double);
template double roundedTo<double>(double);

void toFloat(const void *in, VXSDataTypes type, float *out, std::size_t n)
{
    if (isByte(type))
        blockKernels().fromUint8(static_cast<const std::uint8_t *>(in), out, n);
    else if (type == VXS_UINT16)
        blockKernels().fromUint16(static_cast<const std::uint16_t *>(in), out, n);
    else
        withPixelType(type, [&](auto tag) { convertPixels(static_cast<decltype(tag)>(in), out, n); });
}

void convert(const void *in, VXSDataTypes from, void *out, VXSDataTypes to, std::size_t n)
{
    withPixelType(from, [&](auto source) {
        withPixelType(to, [&](auto target) {
            using D = std::remove_const_t<std::remove_pointer_t<decltype(target)>>;
            const auto *s = static_cast<decltype(source)>(in);
            auto *d = static_cast<D *>(out);
            parallelFor(n, GRAIN, sizeof *s + sizeof *d, [&](std::size_t begin, std::size_t end) {
                if constexpr (std::is_same_v<D, std::uint8_t>) {
                    if (to == VXS_MASK)
                        return toMask(s + begin, d + begin, end - begin);
                }
                convertPixels(s + begin, d + begin, end - begin);
            });
        });
    });
}

} // namespace il
