// SPDX-License-Identifier: MIT
// The bodies of BlockKernels, included once for each instruction set inside a namespace of its own. Only what
// the includer has included already may be used: a standard header's inline function compiled here for one
// processor could be the copy that the linker keeps for all.

#define IL_EACH _Pragma("GCC ivdep") for (std::size_t i = 0; i < n; ++i)

void scale(const float *in, float k, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] * k;
}

void scaleDouble(const float *in, double k, float *out, std::size_t n)
{
    IL_EACH out[i] = float(double(in[i]) * k);
}

void subtractValue(const float *in, float k, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] - k;
}

void subtractValueDouble(const float *in, double k, float *out, std::size_t n)
{
    IL_EACH out[i] = float(double(in[i]) - k);
}

void add(const float *a, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = a[i] + b[i];
}

void subtract(const float *a, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = a[i] - b[i];
}

void multiply(const float *a, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = a[i] * b[i];
}

void divide(const float *a, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = a[i] / b[i];
}

void scaleAdd(const float *in, float k, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] * k + b[i];
}

void scaleSubtract(const float *in, float k, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] * k - b[i];
}

void scaleSubtractFrom(const float *in, float k, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = b[i] - in[i] * k;
}

void scaleMultiply(const float *in, float k, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] * k * b[i];
}

void divideScale(const float *in, float k, const float *b, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] / b[i] * k;
}

typedef float V8 __attribute__((vector_size(32)));
typedef int I8 __attribute__((vector_size(32)));
typedef float V8Unaligned __attribute__((vector_size(32), aligned(4), may_alias));

// A compiler without fast-math does not vectorise a minimum on its own; four accumulators hide the latency.
template <bool WithCeiling>
inline __attribute__((always_inline)) void minMaxBody(const float *in, std::size_t n, float ceiling,
                                                      float *lo, float *hi)
{
    const float inf = __builtin_inff();
    float low = *lo;
    float high = *hi;
    std::size_t i = 0;
    if (n >= 32) {
        V8 l[4], h[4];
        const V8 infinity = {inf, inf, inf, inf, inf, inf, inf, inf};
        for (int j = 0; j < 4; ++j) {
            l[j] = infinity;
            h[j] = -infinity;
        }
        for (; i + 32 <= n; i += 32) {
            for (int j = 0; j < 4; ++j) {
                const V8 v = *reinterpret_cast<const V8Unaligned *>(in + i + 8 * std::size_t(j));
                I8 take = ((I8)v & 0x7fffffff) < 0x7f800000;
                if (WithCeiling)
                    take &= v < ceiling;
                const V8 forLow = take ? v : infinity;
                const V8 forHigh = take ? v : -infinity;
                l[j] = forLow < l[j] ? forLow : l[j];
                h[j] = forHigh > h[j] ? forHigh : h[j];
            }
        }
        for (int j = 0; j < 4; ++j) {
            for (int e = 0; e < 8; ++e) {
                low = l[j][e] < low ? l[j][e] : low;
                high = h[j][e] > high ? h[j][e] : high;
            }
        }
    }
    for (; i < n; ++i) {
        const float v = in[i];
        if (!(__builtin_fabsf(v) < inf) || (WithCeiling && !(v < ceiling)))
            continue;
        low = v < low ? v : low;
        high = v > high ? v : high;
    }
    *lo = low;
    *hi = high;
}

void minMax(const float *in, std::size_t n, float *lo, float *hi)
{
    minMaxBody<false>(in, n, 0.0f, lo, hi);
}

void minMaxBelow(const float *in, std::size_t n, float ceiling, float *lo, float *hi)
{
    minMaxBody<true>(in, n, ceiling, lo, hi);
}

std::size_t countFrom(const float *in, std::size_t n, float level, float ceiling)
{
    const float inf = __builtin_inff();
    std::uint32_t count = 0; // blocks are short
    for (std::size_t i = 0; i < n; ++i)
        count +=
            std::uint32_t(int(in[i] >= level) & int(in[i] < ceiling) & int(in[i] < inf) & int(in[i] > -inf));
    return count;
}

void classify(const float *in, float lo, float scale, std::uint8_t *out, std::size_t n)
{
    IL_EACH
    {
        const int c = int((in[i] - lo) * scale);
        out[i] = std::uint8_t(c > 255 ? 255 : c);
    }
}

void fromUint8(const std::uint8_t *in, float *out, std::size_t n)
{
    IL_EACH out[i] = float(in[i]);
}

void fromUint16(const std::uint16_t *in, float *out, std::size_t n)
{
    IL_EACH out[i] = float(in[i]);
}

void above(const float *in, float t, float *out, std::size_t n)
{
    IL_EACH out[i] = in[i] > t ? 1.0f : 0.0f;
}

void aboveBytes(const float *in, float t, std::uint8_t *out, std::size_t n)
{
    IL_EACH out[i] = in[i] > t ? 1 : 0;
}

void aboveUint8(const std::uint8_t *in, int t, std::uint8_t *out, std::size_t n)
{
    const std::uint8_t level = std::uint8_t(t);
    IL_EACH out[i] = in[i] > level ? 1 : 0;
}

void aboveUint16(const std::uint16_t *in, int t, std::uint8_t *out, std::size_t n)
{
    const std::uint16_t level = std::uint16_t(t);
    IL_EACH out[i] = in[i] > level ? 1 : 0;
}

void minMaxUint16(const std::uint16_t *in, std::size_t n, std::uint16_t *lo, std::uint16_t *hi)
{
    std::uint16_t low = *lo, high = *hi;
    for (std::size_t i = 0; i < n; ++i) {
        low = in[i] < low ? in[i] : low;
        high = in[i] > high ? in[i] : high;
    }
    *lo = low;
    *hi = high;
}

void minMaxUint8(const std::uint8_t *in, std::size_t n, std::uint8_t *lo, std::uint8_t *hi)
{
    std::uint8_t low = *lo, high = *hi;
    for (std::size_t i = 0; i < n; ++i) {
        low = in[i] < low ? in[i] : low;
        high = in[i] > high ? in[i] : high;
    }
    *lo = low;
    *hi = high;
}

void minBytes(const std::uint8_t *a, const std::uint8_t *b, const std::uint8_t *c, std::uint8_t *out,
              std::size_t n)
{
    IL_EACH
    {
        const std::uint8_t m = a[i] < b[i] ? a[i] : b[i];
        out[i] = m < c[i] ? m : c[i];
    }
}

void maxBytes(const std::uint8_t *a, const std::uint8_t *b, const std::uint8_t *c, std::uint8_t *out,
              std::size_t n)
{
    IL_EACH
    {
        const std::uint8_t m = a[i] > b[i] ? a[i] : b[i];
        out[i] = m > c[i] ? m : c[i];
    }
}

void mean2x2Bytes(const std::uint8_t *row0, const std::uint8_t *row1, float *out, std::size_t n)
{
    IL_EACH
    {
        const int sum = row0[2 * i] + row0[2 * i + 1] + row1[2 * i] + row1[2 * i + 1];
        out[i] = float(sum) * 0.25f;
    }
}

void stream(const float *src, float *dst, std::size_t n)
{
    std::size_t i = 0;
#ifdef __SSE2__
    for (; i + 16 <= n; i += 16) {
        _mm_stream_ps(dst + i, _mm_loadu_ps(src + i));
        _mm_stream_ps(dst + i + 4, _mm_loadu_ps(src + i + 4));
        _mm_stream_ps(dst + i + 8, _mm_loadu_ps(src + i + 8));
        _mm_stream_ps(dst + i + 12, _mm_loadu_ps(src + i + 12));
    }
#endif
    for (; i < n; ++i)
        dst[i] = src[i];
}

void streamFence()
{
#ifdef __SSE2__
    _mm_sfence();
#endif
}

#undef IL_EACH

const BlockKernels kernels = {
    scale,       scaleDouble, subtractValue, subtractValueDouble, add,           subtract,    multiply,
    divide,      scaleAdd,    scaleSubtract, scaleSubtractFrom,   scaleMultiply, divideScale, minMax,
    minMaxBelow, countFrom,   classify,      fromUint8,           fromUint16,    above,       aboveBytes,
    aboveUint8,  aboveUint16, minMaxUint16,  minMaxUint8,         minBytes,      maxBytes,    mean2x2Bytes,
    stream,      streamFence};
