// SPDX-License-Identifier: MIT
#include "host/vximage/kernels/BlockKernels.h"
#include "tests/host/vximage/ImageMaker.h"

#include <atomic>
#include <cmath>
#include <functional>
#include <QtTest>
#include <thread>

using il::BlockKernels;

namespace {

const float INF = std::numeric_limits<float>::infinity();
const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const float DENORMAL = std::numeric_limits<float>::denorm_min();

/// Around the widths of the registers (8 floats, four of them at once) and a block of the evaluation.
const std::size_t LENGTHS[] = {0, 1, 7, 8, 9, 31, 32, 33, 511, 512, 513};
const float FACTORS[] = {1.7f, -0.0f, 0.0f, 3e38f, INF, DENORMAL, NOT_A_NUMBER};
const double DOUBLE_FACTORS[] = {0.1, -1.0 / 3.0, 1e-300, 1e30};
const unsigned SEEDS[] = {1, 2, 3, 4};
constexpr std::size_t GUARD = 8; // pixels behind the last one, which no kernel may touch

/// What is different, or nothing. The sentence of the row says of which kernel.
using Difference = QString;

/// Sign and payload of a NaN are left open by IEEE 754 where two operands are NaN; everything else is told
/// apart.
template <typename T>
bool sameBits(T a, T b)
{
    if constexpr (std::is_same_v<T, float>) {
        if (std::isnan(a) && std::isnan(b))
            return true;
    }
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <typename T>
Difference told(std::size_t i, std::size_t n, T found, T expected)
{
    return QString("pixel %1 of %2 is %3, the plain loop gives %4")
        .arg(i)
        .arg(n)
        .arg(double(found), 0, 'g', 9)
        .arg(double(expected), 0, 'g', 9);
}

template <typename T>
std::vector<T> inputs(std::size_t n, unsigned seed)
{
    if constexpr (std::is_same_v<T, float>) {
        return maker::awkward(n, seed);
    } else {
        std::mt19937 engine(seed);
        std::vector<T> all(n);
        for (T &v : all)
            v = engine() % 8 == 0 ? T(engine() % 2 ? 0 : -1) : T(engine());
        return all;
    }
}

template <typename D, typename Plain>
Difference firstDifference(const D *found, std::size_t n, const Plain &plain)
{
    for (std::size_t i = 0; i < n; ++i) {
        if (!sameBits(found[i], plain(i)))
            return told(i, n, found[i], plain(i));
    }
    return {};
}

/// run(a, b, c, out) against plain(a[i], b[i], c[i]), also from pixels that start on no border of a register,
/// and into the pixels of an input.
template <typename S, typename D, typename Run, typename Plain>
Difference eachPixel(std::size_t n, const Run &run, const Plain &plain)
{
    for (const unsigned seed : SEEDS) {
        for (const std::size_t start : {0, 1}) {
            const std::vector<S> a = inputs<S>(n + start, seed), b = inputs<S>(n + start, seed + 10),
                                 c = inputs<S>(n + start, seed + 20);
            const auto expected = [&](std::size_t i) {
                return D(plain(a[start + i], b[start + i], c[start + i]));
            };
            std::vector<D> out(n + GUARD, D(77));
            run(a.data() + start, b.data() + start, c.data() + start, out.data());
            Difference found = firstDifference(out.data(), n, expected);
            if (found.isEmpty() && std::count(out.end() - GUARD, out.end(), D(77)) != std::ptrdiff_t(GUARD))
                found = QString("something was written behind the last of %1 pixels").arg(n);
            if constexpr (std::is_same_v<S, D>) {
                std::vector<S> first = a, second = b;
                run(first.data() + start, b.data() + start, c.data() + start, first.data() + start);
                run(a.data() + start, second.data() + start, c.data() + start, second.data() + start);
                for (const std::vector<S> &target : {first, second}) {
                    if (found.isEmpty())
                        found = firstDifference(target.data() + start, n, expected);
                }
            }
            if (!found.isEmpty())
                return found;
        }
    }
    return {};
}

template <typename Values, typename Check>
Difference forAll(const Values &values, const Check &check)
{
    for (const auto value : values) {
        const Difference found = check(value);
        if (!found.isEmpty())
            return found + QString(", with %1").arg(double(value));
    }
    return {};
}

using Check = std::function<Difference(const BlockKernels &, std::size_t n)>;

template <typename Plain>
Check unary(BlockKernels::Unary BlockKernels::*kernel, Plain plain)
{
    return [=](const BlockKernels &k, std::size_t n) {
        return forAll(FACTORS, [&](float f) {
            return eachPixel<float, float>(
                n, [&](auto a, auto, auto, auto out) { (k.*kernel)(a, f, out, n); },
                [&](float a, float, float) { return plain(a, f); });
        });
    };
}

template <typename Plain>
Check unaryDouble(BlockKernels::UnaryDouble BlockKernels::*kernel, Plain plain)
{
    return [=](const BlockKernels &k, std::size_t n) {
        return forAll(DOUBLE_FACTORS, [&](double f) {
            return eachPixel<float, float>(
                n, [&](auto a, auto, auto, auto out) { (k.*kernel)(a, f, out, n); },
                [&](float a, float, float) { return float(plain(double(a), f)); });
        });
    };
}

template <typename Plain>
Check binary(BlockKernels::Binary BlockKernels::*kernel, Plain plain)
{
    return [=](const BlockKernels &k, std::size_t n) {
        return eachPixel<float, float>(
            n, [&](auto a, auto b, auto, auto out) { (k.*kernel)(a, b, out, n); },
            [&](float a, float b, float) { return plain(a, b); });
    };
}

template <typename Plain>
Check ternary(BlockKernels::Ternary BlockKernels::*kernel, Plain plain)
{
    return [=](const BlockKernels &k, std::size_t n) {
        return forAll(FACTORS, [&](float f) {
            return eachPixel<float, float>(
                n, [&](auto a, auto b, auto, auto out) { (k.*kernel)(a, f, b, out, n); },
                [&](float a, float b, float) { return plain(a, f, b); });
        });
    };
}

/// A kernel that compares pixels of type S with a level of type T and writes 0 or 1.
template <typename S, typename D, typename T>
Check comparison(void (*BlockKernels::*kernel)(const S *, T, D *, std::size_t), std::vector<T> levels)
{
    return [=](const BlockKernels &k, std::size_t n) {
        return forAll(levels, [&](T t) {
            return eachPixel<S, D>(
                n, [&](auto a, auto, auto, auto out) { (k.*kernel)(a, t, out, n); },
                [&](S a, S, S) { return a > S(t) ? 1 : 0; });
        });
    };
}

template <typename S>
Check conversion(void (*BlockKernels::*kernel)(const S *, float *, std::size_t))
{
    return [=](const BlockKernels &k, std::size_t n) {
        return eachPixel<S, float>(
            n, [&](auto a, auto, auto, auto out) { (k.*kernel)(a, out, n); }, [](S a, S, S) { return a; });
    };
}

template <typename Plain>
Check ofThree(void (*BlockKernels::*kernel)(const std::uint8_t *, const std::uint8_t *, const std::uint8_t *,
                                            std::uint8_t *, std::size_t),
              Plain plain)
{
    return [=](const BlockKernels &k, std::size_t n) {
        return eachPixel<std::uint8_t, std::uint8_t>(
            n, [&](auto a, auto b, auto c, auto out) { (k.*kernel)(a, b, c, out, n); }, plain);
    };
}

/// run(values, n, &lo, &hi) against the extremes of the values for which counts(v) holds, from several
/// beginnings.
template <typename T, typename Run, typename Counts>
Difference extremes(const std::vector<T> &values, T largest, const Run &run, const Counts &counts)
{
    const std::pair<T, T> beginnings[] = {{largest, std::numeric_limits<T>::lowest()}, {T(3), T(5)}};
    for (const auto &[begin, end] : beginnings) {
        T lo = begin, hi = end, expectedLo = begin, expectedHi = end;
        for (const T v : values) {
            if (counts(v)) {
                expectedLo = std::min(expectedLo, v);
                expectedHi = std::max(expectedHi, v);
            }
        }
        run(values.data(), values.size(), &lo, &hi);
        // Equal, not of the same bits: which of two zeros comes first depends on the width of the registers.
        if (!(lo == expectedLo && hi == expectedHi))
            return QString("%1 to %2 instead of %3 to %4")
                .arg(double(lo))
                .arg(double(hi))
                .arg(double(expectedLo))
                .arg(double(expectedHi));
    }
    return {};
}

/// Floats for statistics: awkward ones, awkward ones without large numbers, and none that is finite.
std::vector<std::vector<float>> populations(std::size_t n)
{
    std::vector<std::vector<float>> all;
    for (const unsigned seed : SEEDS) {
        all.push_back(maker::awkward(n, seed));
        std::vector<float> small = all.back();
        for (float &v : small)
            v = std::isfinite(v) ? std::fmod(v, 1.0f) : v;
        all.push_back(small);
    }
    all.push_back(std::vector<float>(n, NOT_A_NUMBER));
    all.push_back(std::vector<float>(n, INF));
    all.push_back(std::vector<float>(n, -INF));
    return all;
}

Difference checkMinMax(const BlockKernels &k, std::size_t n)
{
    for (const std::vector<float> &values : populations(n)) {
        const Difference found = extremes(values, INF, k.minMax, [](float v) { return std::isfinite(v); });
        if (!found.isEmpty())
            return found;
    }
    return {};
}

Difference checkMinMaxBelow(const BlockKernels &k, std::size_t n)
{
    // The largest float is a pixel of some populations: at the ceiling, not below it.
    const float largest = std::numeric_limits<float>::max();
    return forAll(std::vector<float>{0.25f, 100.0f, largest, -INF, INF, NOT_A_NUMBER}, [&](float ceiling) {
        for (const std::vector<float> &values : populations(n)) {
            const auto run = [&](const float *in, std::size_t count, float *lo, float *hi) {
                k.minMaxBelow(in, count, ceiling, lo, hi);
            };
            const Difference found =
                extremes(values, INF, run, [&](float v) { return std::isfinite(v) && v < ceiling; });
            if (!found.isEmpty())
                return found;
        }
        return Difference();
    });
}

template <typename T>
Check integerExtremes(void (*BlockKernels::*kernel)(const T *, std::size_t, T *, T *))
{
    return [=](const BlockKernels &k, std::size_t n) {
        for (const unsigned seed : SEEDS) {
            std::vector<T> values = inputs<T>(n, seed);
            for (T &v : values)
                v = T(v / seed + seed); // the extremes of the type in one population only
            const Difference found =
                extremes(values, std::numeric_limits<T>::max(), k.*kernel, [](T) { return true; });
            if (!found.isEmpty())
                return found;
        }
        return Difference();
    };
}

Difference checkCountFrom(const BlockKernels &k, std::size_t n)
{
    const std::pair<float, float> limits[] = {
        {10.0f, 5000.0f}, {-INF, INF}, {-0.0f, DENORMAL}, {INF, INF}, {NOT_A_NUMBER, INF}};
    for (const auto &[level, ceiling] : limits) {
        for (const std::vector<float> &values : populations(n)) {
            std::size_t expected = 0;
            for (const float v : values)
                expected += std::isfinite(v) && v >= level && v < ceiling ? 1 : 0;
            const std::size_t found = k.countFrom(values.data(), n, level, ceiling);
            if (found != expected)
                return QString("%1 instead of %2").arg(found).arg(expected);
        }
    }
    return {};
}

Difference checkClassify(const BlockKernels &k, std::size_t n)
{
    const std::pair<float, float> ranges[] = {
        {0.0f, 1.0f}, {-5.0f, 60000.0f}, {0.0f, 1e-36f}, {-1e37f, 1e37f}};
    for (const auto &[lo, hi] : ranges) {
        const float scale = 256.0f / (hi - lo);
        std::mt19937 engine(9);
        std::uniform_real_distribution<float> between(lo, hi);
        std::vector<float> in(n);
        for (std::size_t i = 0; i < n; ++i)
            in[i] = i % 5 == 0 ? lo : i % 5 == 1 ? hi : i % 5 == 2 ? std::max(lo, -0.0f) : between(engine);
        std::vector<std::uint8_t> out(n + GUARD, 77);
        k.classify(in.data(), lo, scale, out.data(), n);
        const Difference found = firstDifference(out.data(), n, [&, first = lo](std::size_t i) {
            const float place = (in[i] - first) * scale;
            return std::uint8_t(std::min(255, int(place)));
        });
        if (!found.isEmpty())
            return found;
        if (std::count(out.end() - GUARD, out.end(), 77) != std::ptrdiff_t(GUARD))
            return "something was written behind the last pixel";
    }
    return {};
}

Difference checkMean2x2(const BlockKernels &k, std::size_t n)
{
    for (const unsigned seed : SEEDS) {
        const auto row0 = inputs<std::uint8_t>(2 * n, seed), row1 = inputs<std::uint8_t>(2 * n, seed + 10);
        std::vector<float> out(n + GUARD, 77.0f);
        k.mean2x2Bytes(row0.data(), row1.data(), out.data(), n);
        const Difference found = firstDifference(out.data(), n, [&](std::size_t i) {
            return float(row0[2 * i] + row0[2 * i + 1] + row1[2 * i] + row1[2 * i + 1]) / 4.0f;
        });
        if (!found.isEmpty())
            return found;
        if (std::count(out.end() - GUARD, out.end(), 77.0f) != std::ptrdiff_t(GUARD))
            return "something was written behind the last pixel";
    }
    return {};
}

/// Into aligned memory, as images have it. A copy keeps every bit, those of a NaN too.
Difference checkStream(const BlockKernels &k, std::size_t n)
{
    alignas(64) float target[1024];
    std::fill(std::begin(target), std::end(target), 77.0f);
    const std::vector<float> from = maker::awkward(n + 1, 3);
    k.stream(from.data() + 1, target, n);
    k.streamFence();
    if (n > 0 && std::memcmp(target, from.data() + 1, n * sizeof(float)) != 0)
        return QString("not all of %1 pixels were copied").arg(n);
    return target[n] == 77.0f ? Difference() : "something was written behind the last pixel";
}

/// What was streamed before the fence is there for a thread that hears of it afterwards.
Difference checkStreamFence(const BlockKernels &k, std::size_t n)
{
    alignas(64) static float target[1024];
    std::fill(std::begin(target), std::end(target), 0.0f);
    const std::vector<float> from = maker::awkward(n, 5);
    std::atomic<bool> done{false};
    bool isThere = false;
    std::thread reader([&] {
        while (!done.load(std::memory_order_acquire))
            std::this_thread::yield();
        isThere = n == 0 || std::memcmp(target, from.data(), n * sizeof(float)) == 0;
    });
    k.stream(from.data(), target, n);
    k.streamFence();
    done.store(true, std::memory_order_release);
    reader.join();
    return isThere ? Difference() : QString("another thread does not see all of %1 pixels").arg(n);
}

struct Kernel
{
    const char *sentence;
    Check check;
};

std::vector<Kernel> arithmeticKernels()
{
    using K = BlockKernels;
    return {
        {"scale multiplies by k", unary(&K::scale, [](float a, float k) { return a * k; })},
        {"scaleDouble multiplies in double precision",
         unaryDouble(&K::scaleDouble, [](double a, double k) { return a * k; })},
        {"subtractValue subtracts k", unary(&K::subtractValue, [](float a, float k) { return a - k; })},
        {"subtractValueDouble subtracts in double precision",
         unaryDouble(&K::subtractValueDouble, [](double a, double k) { return a - k; })},
        {"add adds", binary(&K::add, [](float a, float b) { return a + b; })},
        {"subtract subtracts", binary(&K::subtract, [](float a, float b) { return a - b; })},
        {"multiply multiplies", binary(&K::multiply, [](float a, float b) { return a * b; })},
        {"divide divides", binary(&K::divide, [](float a, float b) { return a / b; })},
        {"scaleAdd rounds the product before it adds",
         ternary(&K::scaleAdd, [](float a, float k, float b) { return a * k + b; })},
        {"scaleSubtract rounds the product before it subtracts b",
         ternary(&K::scaleSubtract, [](float a, float k, float b) { return a * k - b; })},
        {"scaleSubtractFrom rounds the product before it is subtracted from b",
         ternary(&K::scaleSubtractFrom, [](float a, float k, float b) { return b - a * k; })},
        {"scaleMultiply rounds the first product before the second",
         ternary(&K::scaleMultiply, [](float a, float k, float b) { return a * k * b; })},
        {"divideScale rounds the quotient before it multiplies",
         ternary(&K::divideScale, [](float a, float k, float b) { return a / b * k; })},
    };
}

std::vector<Kernel> otherKernels()
{
    using K = BlockKernels;
    const std::vector<float> levels{1.7f, 0.0f, -0.0f, DENORMAL, INF, -INF, NOT_A_NUMBER};
    return {
        {"minMax finds the extremes of the finite pixels", checkMinMax},
        {"minMaxBelow leaves out what is not below the ceiling", checkMinMaxBelow},
        {"countFrom counts from the level to below the ceiling", checkCountFrom},
        {"classify puts the largest value into the last class", checkClassify},
        {"fromUint8 converts every byte", conversion(&K::fromUint8)},
        {"fromUint16 converts every 16-bit integer", conversion(&K::fromUint16)},
        {"above excludes a pixel equal to the threshold", comparison(&K::above, levels)},
        {"aboveBytes excludes a pixel equal to the threshold", comparison(&K::aboveBytes, levels)},
        {"aboveUint8 compares without a sign",
         comparison(&K::aboveUint8, std::vector<int>{0, 1, 127, 128, 254, 255})},
        {"aboveUint16 compares without a sign",
         comparison(&K::aboveUint16, std::vector<int>{0, 1, 255, 32767, 32768, 65534, 65535})},
        {"minMaxUint16 finds the extremes", integerExtremes(&K::minMaxUint16)},
        {"minMaxUint8 finds the extremes", integerExtremes(&K::minMaxUint8)},
        {"minBytes takes the smallest of three", ofThree(&K::minBytes,
                                                         [](auto a, auto b, auto c) {
                                                             return std::min({a, b, c});
                                                         })},
        {"maxBytes takes the largest of three", ofThree(&K::maxBytes,
                                                        [](auto a, auto b, auto c) {
                                                            return std::max({a, b, c});
                                                        })},
        {"mean2x2Bytes has exact quarters", checkMean2x2},
        {"stream copies every bit", checkStream},
        {"streamFence shows the copy to other threads", checkStreamFence},
    };
}

const std::vector<Kernel> &kernels()
{
    static const std::vector<Kernel> all = [] {
        std::vector<Kernel> list = arithmeticKernels();
        for (const Kernel &kernel : otherKernels())
            list.push_back(kernel);
        return list;
    }();
    return all;
}

} // namespace

/// Every kernel in both forms against a plain loop, bit for bit.
class tst_BlockKernels : public QObject
{
    Q_OBJECT

private slots:
    void equalsThePlainLoop_data()
    {
        QTest::addColumn<int>("kernel");
        QTest::addColumn<bool>("wide");
        for (const bool wide : {false, true}) {
            for (std::size_t i = 0; i < kernels().size(); ++i) {
                const QString sentence =
                    QString(kernels()[i].sentence) + (wide ? ", in the form for AVX2" : ", in the base form");
                QTest::newRow(qPrintable(sentence)) << int(i) << wide;
            }
        }
    }
    void equalsThePlainLoop()
    {
        QFETCH(int, kernel);
        QFETCH(bool, wide);
        const BlockKernels *form = wide ? il::avx2BlockKernels() : &il::baseBlockKernels();
        if (!form)
            QSKIP("this processor has no AVX2");
        for (const std::size_t n : LENGTHS) {
            const Difference found = kernels()[std::size_t(kernel)].check(*form, n);
            QVERIFY2(found.isEmpty(), qPrintable(QString("%1 pixels: %2").arg(n).arg(found)));
        }
    }

    void everyKernelIsInTheList() { QCOMPARE(kernels().size() * sizeof(void (*)()), sizeof(BlockKernels)); }
};

QTEST_APPLESS_MAIN(tst_BlockKernels)
#include "tst_BlockKernels.moc"
