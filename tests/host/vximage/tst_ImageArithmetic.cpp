// SPDX-License-Identifier: MIT
// The numbers are those of a plain loop of separately rounded single-precision steps, bit for bit.
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <functional>
#include <QtTest>

namespace {

using Loop = std::function<float(float a, float b, float counts, float tissue)>;
using Images = std::function<CILImage(const CILImage &a, const CILImage &b, const CILImage &counts,
                                      const CILImage &tissue)>;

// The compiler may neither keep more precision nor join two steps.
float step(float v)
{
    volatile float rounded = v;
    return rounded;
}

struct Case
{
    const char *name;
    Images images;
    Loop loop;
};

const float FACTOR = 1.7f;

const std::vector<Case> &cases()
{
    using I = const CILImage &;
    static const std::vector<Case> all = {
        {"A + B * k",
         [](I a, I b, I, I) {
             CILImage r = b;
             r *= double(FACTOR);
             r += a;
             return r;
         },
         [](float a, float b, float, float) { return step(step(b * FACTOR) + a); }},
        {"A - B * k",
         [](I a, I b, I, I) {
             CILImage r = b;
             r *= double(FACTOR);
             r = a - r;
             return r;
         },
         [](float a, float b, float, float) { return step(a - step(b * FACTOR)); }},
        {"A * B * k",
         [](I a, I b, I, I) {
             CILImage r = b;
             r *= double(FACTOR);
             r *= a;
             return r;
         },
         [](float a, float b, float, float) { return step(step(b * FACTOR) * a); }},
        {"(A / B) * k",
         [](I a, I b, I, I) {
             CILImage r = a;
             r /= b;
             r *= double(FACTOR);
             return r;
         },
         [](float a, float b, float, float) { return step(step(a / b) * FACTOR); }},
        {"A/B where counts are above k, with a tissue mask",
         [](I a, I b, I counts, I tissue) {
             CILImage mask;
             counts.Threshold(FACTOR, mask);
             CILImage r = a * mask;
             r /= b;
             r *= 100.0;
             r *= tissue;
             return r;
         },
         [](float a, float b, float counts, float tissue) {
             return step(step(step(step(a * (counts > FACTOR ? 1.0f : 0.0f)) / b) * 100.0f) * tissue);
         }},
        {"the same with the mask's bytes written first",
         [](I a, I b, I counts, I tissue) {
             CILImage mask;
             counts.Threshold(FACTOR, mask);
             static_cast<const CILImage &>(mask).get_data();
             CILImage r = a * mask;
             r /= b;
             r *= tissue;
             return r;
         },
         [](float a, float b, float counts, float tissue) {
             return step(step(step(a * (counts > FACTOR ? 1.0f : 0.0f)) / b) * tissue);
         }},
        {"B * k - A",
         [](I a, I b, I, I) {
             CILImage r = b;
             r *= double(FACTOR);
             r -= a;
             return r;
         },
         [](float a, float b, float, float) { return step(step(b * FACTOR) - a); }},
        {"a factor that is no float is applied in double precision",
         [](I a, I, I, I) {
             CILImage r = a;
             r *= 0.1;
             r -= 0.3;
             return r;
         },
         [](float a, float, float, float) {
             return step(float(double(step(float(double(a) * 0.1))) - 0.3));
         }},
        {"an image with itself",
         [](I a, I, I, I) {
             CILImage r = a;
             r *= 2.0;
             r -= r;
             r += a;
             r *= r;
             return r;
         },
         [](float a, float, float, float) {
             const float twice = step(a * 2.0f);
             const float v = step(step(twice - twice) + a);
             return step(v * v);
         }},
        {"more steps than wait at a time",
         [](I a, I b, I, I) {
             CILImage r = a;
             for (int i = 0; i < 11; ++i) {
                 r *= 0.5;
                 r += b;
             }
             return r;
         },
         [](float a, float b, float, float) {
             for (int i = 0; i < 11; ++i)
                 a = step(step(a * 0.5f) + b);
             return a;
         }},
        {"what waits on both sides",
         [](I a, I b, I, I) {
             CILImage x = a;
             x *= 3.0;
             CILImage y = b;
             y *= 5.0;
             return x - y;
         },
         [](float a, float b, float, float) { return step(step(a * 3.0f) - step(b * 5.0f)); }},
        {"a result that is copied before it is read",
         [](I a, I b, I, I) {
             CILImage x = a;
             x *= 3.0;
             CILImage y = x;
             y += b;
             x -= b;
             return x * y;
         },
         [](float a, float b, float, float) {
             const float v = step(a * 3.0f);
             return step(step(v - b) * step(v + b));
         }},
    };
    return all;
}

std::uint32_t bits(float v)
{
    std::uint32_t b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

} // namespace

class tst_ImageArithmetic : public QObject
{
    Q_OBJECT

private slots:
    void equalsAPlainLoopBitForBit_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<uint>("width");
        QTest::addColumn<uint>("height");
        for (size_t i = 0; i < cases().size(); ++i) {
            const QByteArray name(cases()[i].name);
            QTest::newRow(name + ", 1 x 1") << int(i) << 1u << 1u;
            QTest::newRow(name + ", odd") << int(i) << 37u << 3u;
            QTest::newRow(name + ", on several threads") << int(i) << 1023u << 517u;
            QTest::newRow(name + ", one row") << int(i) << 5001u << 1u;
        }
        QTest::newRow("A - B * k, larger than the caches") << 1 << 2600u << 2500u;
        QTest::newRow("the ratio, larger than the caches") << 4 << 2600u << 2500u;
    }
    void equalsAPlainLoopBitForBit()
    {
        QFETCH(int, number);
        QFETCH(uint, width);
        QFETCH(uint, height);
        const Case &tried = cases()[size_t(number)];
        const size_t n = size_t(width) * height;
        const std::vector<float> a = maker::awkward(n, 1), b = maker::awkward(n, 2), c = maker::awkward(n, 3),
                                 t = maker::awkward(n, 4);
        const CILImage ia = maker::floats(width, height, a), ib = maker::floats(width, height, b);
        const CILImage ic = maker::floats(width, height, c), it = maker::floats(width, height, t);
        const CILImage result = tried.images(ia, ib, ic, it);
        const CILImage limitsFirst = tried.images(ia, ib, ic, it);
        float lo = std::numeric_limits<float>::infinity(), hi = -lo;
        const float max = limitsFirst.getMax();
        const auto *r = result.pixels<float>();
        const auto *l = limitsFirst.pixels<float>();
        for (size_t i = 0; i < n; ++i) {
            const float expected = tried.loop(a[i], b[i], c[i], t[i]);
            const bool same = std::isnan(expected)
                                  ? std::isnan(r[i]) && std::isnan(l[i])
                                  : bits(r[i]) == bits(expected) && bits(l[i]) == bits(expected);
            if (!same)
                QFAIL(qPrintable(
                    QString("pixel %1: %2 instead of %3").arg(i).arg(double(r[i])).arg(double(expected))));
            if (std::isfinite(expected)) {
                lo = std::min(lo, expected);
                hi = std::max(hi, expected);
            }
        }
        QCOMPARE(max, lo <= hi ? hi : 0.0f);
        QCOMPARE(limitsFirst.getMin(), lo <= hi ? lo : 0.0f);
        // The operands are what they were.
        for (size_t i = 0; i < n; ++i)
            QVERIFY(bits(ia.pixels<float>()[i]) == bits(a[i]) && bits(ib.pixels<float>()[i]) == bits(b[i]));
    }

    void memoryOfAPassingOperandMayBeUsedAgain()
    {
        const std::vector<float> a = maker::awkward(600 * 500, 5), b = maker::awkward(600 * 500, 6);
        CILImage r = maker::floats(600, 500, a);
        {
            const CILImage passing = maker::floats(600, 500, b);
            r *= 3.0;
            r += passing;
            r /= passing;
        }
        for (size_t i = 0; i < a.size(); ++i) {
            const float expected = step(step(step(a[i] * 3.0f) + b[i]) / b[i]);
            const float found = float(r.pixelAt(std::uint32_t(i % 600), std::uint32_t(i / 600)));
            QVERIFY(std::isnan(expected) ? std::isnan(found) : bits(found) == bits(expected));
        }
    }

    void operandsOfEveryTypeAreConverted()
    {
        for (const VXSDataTypes type : {VXS_UINT8, VXS_MASK, VXS_UINT16, VXS_UINT32, VXS_DOUBLE}) {
            const CILImage a = maker::random(type, 401, 303, 200, 7);
            const CILImage b = maker::random(type, 401, 303, 200, 8);
            CILImage sum = a;
            sum += b;
            QCOMPARE(sum.getType(), VXS_FLOAT);
            const auto va = maker::values(a), vb = maker::values(b), vs = maker::values(sum);
            for (size_t i = 0; i < vs.size(); ++i)
                QCOMPARE(vs[i], double(float(va[i]) + float(vb[i])));
            QCOMPARE(a.getType(), type);
        }
    }

    void divisionIsThatOfIEEE()
    {
        CILImage r = maker::floats(3, 1, {1, -1, 0});
        r /= maker::floats(3, 1, {0, 0, 0});
        QVERIFY(std::isinf(r.pixelAt(0, 0)) && r.pixelAt(0, 0) > 0);
        QVERIFY(std::isinf(r.pixelAt(1, 0)) && r.pixelAt(1, 0) < 0);
        QVERIFY(std::isnan(r.pixelAt(2, 0)));
    }

    void unequalSizesLeaveTheTargetEmptyWithOneMessage_data()
    {
        QTest::addColumn<int>("operation");
        const char *names[] = {"+=", "-=", "*=", "/=", "minus", "times", "minus what waits"};
        for (int i = 0; i < 7; ++i)
            QTest::newRow(names[i]) << i;
    }
    void unequalSizesLeaveTheTargetEmptyWithOneMessage()
    {
        QFETCH(int, operation);
        std::vector<std::string> messages;
        CILImage::setMessageHandler([&](int, const std::string &text) { messages.push_back(text); });
        CILImage a = maker::floats(2, 2, {1, 2, 3, 4});
        CILImage b = maker::floats(4, 1, {1, 2, 3, 4});
        CILImage waits = b;
        waits *= 2.0;
        CILImage result = a;
        switch (operation) {
        case 0:
            result += b;
            break;
        case 1:
            result -= b;
            break;
        case 2:
            result *= b;
            break;
        case 3:
            result /= b;
            break;
        case 4:
            result = a - b;
            break;
        case 5:
            result = a * b;
            break;
        default:
            result = a - waits;
        }
        CILImage::setMessageHandler(nullptr);
        QVERIFY(result.isEmpty());
        QCOMPARE(messages.size(), size_t(1));
        QVERIFY(messages[0].find("2 x 2") != std::string::npos &&
                messages[0].find("4 x 1") != std::string::npos);
        QCOMPARE(a.getWidth(), 2u);
    }

    void resultsCarryTheLeftOperandsBinningAndPalette()
    {
        CILImage a = maker::floats(1, 1, {2}), b = maker::floats(1, 1, {3});
        CILPalette red;
        red.SetColorTable(VXS_CT_RED, 0, 1, 0, 0);
        a.setPalette(red);
        a.setBinningFactor(4);
        b.setBinningFactor(8);
        CILImage waits = b;
        waits *= 2.0;
        for (const CILImage &r : {a - b, a * b, a - waits}) {
            QCOMPARE(r.binningFactor(), 4.0f);
            QVERIFY(r.getPalette() == red);
        }
    }

    void emptyImagesStayEmptyWithoutAMessage()
    {
        bool said = false;
        CILImage::setMessageHandler([&](int, const std::string &) { said = true; });
        CILImage a, b;
        a += b;
        a *= 2.0;
        const CILImage c = a - b;
        CILImage::setMessageHandler(nullptr);
        QVERIFY(a.isEmpty() && c.isEmpty() && !said);
    }
};

QTEST_APPLESS_MAIN(tst_ImageArithmetic)
#include "tst_ImageArithmetic.moc"
