// SPDX-License-Identifier: MIT
#include "host/vximage/BlockKernels.h"
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <QtTest>

using il::BlockKernels;

/// Both forms of every kernel give the same bits.
class tst_BlockKernels : public QObject
{
    Q_OBJECT

    const BlockKernels &m_base = il::baseBlockKernels();
    const BlockKernels *m_wide = il::avx2BlockKernels();

    static bool same(const std::vector<float> &a, const std::vector<float> &b)
    {
        for (size_t i = 0; i < a.size(); ++i) {
            if (std::memcmp(&a[i], &b[i], sizeof(float)) != 0 && !(std::isnan(a[i]) && std::isnan(b[i])))
                return false;
        }
        return true;
    }

private slots:
    void init()
    {
        if (!m_wide)
            QSKIP("this processor has only the base form");
    }

    void arithmetic_data()
    {
        QTest::addColumn<int>("n");
        for (const int n : {1, 7, 8, 31, 33, 100, 2048})
            QTest::newRow(qPrintable(QString("%1 pixels").arg(n))) << n;
    }
    void arithmetic()
    {
        QFETCH(int, n);
        const size_t size = size_t(n);
        const std::vector<float> a = maker::awkward(size, 1), b = maker::awkward(size, 2);
        const auto check = [&](auto run) {
            std::vector<float> narrow(size), wide(size);
            run(m_base, narrow.data());
            run(*m_wide, wide.data());
            QVERIFY(same(narrow, wide));
        };
        check([&](const BlockKernels &k, float *o) { k.scale(a.data(), 1.7f, o, size); });
        check([&](const BlockKernels &k, float *o) { k.scaleDouble(a.data(), 0.1, o, size); });
        check([&](const BlockKernels &k, float *o) { k.subtractValue(a.data(), 1.7f, o, size); });
        check([&](const BlockKernels &k, float *o) { k.subtractValueDouble(a.data(), 0.1, o, size); });
        check([&](const BlockKernels &k, float *o) { k.above(a.data(), 0.0f, o, size); });
        check([&](const BlockKernels &k, float *o) { k.stream(a.data(), o, 0); });
        for (const auto op :
             {&BlockKernels::add, &BlockKernels::subtract, &BlockKernels::multiply, &BlockKernels::divide})
            check([&](const BlockKernels &k, float *o) { (k.*op)(a.data(), b.data(), o, size); });
        for (const auto op :
             {&BlockKernels::scaleAdd, &BlockKernels::scaleSubtract, &BlockKernels::scaleSubtractFrom,
              &BlockKernels::scaleMultiply, &BlockKernels::divideScale})
            check([&](const BlockKernels &k, float *o) { (k.*op)(a.data(), 1.7f, b.data(), o, size); });
        for (const auto op : {&BlockKernels::minMax}) {
            check([&](const BlockKernels &k, float *o) {
                float lo = 1e30f, hi = -1e30f;
                (k.*op)(a.data(), size, &lo, &hi);
                o[0] = lo + hi;
            });
        }
        QCOMPARE(m_base.countFrom(a.data(), size, 10.0f, 5000.0f),
                 m_wide->countFrom(a.data(), size, 10.0f, 5000.0f));
        size_t plain = 0;
        for (const float v : a)
            plain += v >= 10.0f && v < 5000.0f ? 1 : 0;
        QCOMPARE(m_base.countFrom(a.data(), size, 10.0f, 5000.0f), plain);
    }
};

QTEST_APPLESS_MAIN(tst_BlockKernels)
#include "tst_BlockKernels.moc"
