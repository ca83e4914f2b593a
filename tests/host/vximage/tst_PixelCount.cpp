// SPDX-License-Identifier: MIT
#include "host/vximage/PixelCount.h"
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <limits>
#include <QtTest>

class tst_PixelCount : public QObject
{
    Q_OBJECT

private slots:
    void equalsTheDefinition_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<double>("level");
        for (const auto &[type, name] : {std::pair{VXS_UINT8, "8 bit"},
                                         {VXS_UINT16, "16 bit"},
                                         {VXS_UINT32, "32 bit"},
                                         {VXS_FLOAT, "float"},
                                         {VXS_DOUBLE, "double"}}) {
            for (const double level : {-1.0, 0.0, 17.0, 17.5, 200.0, 1e9})
                QTest::addRow("%s from %g on", name, level) << int(type) << level;
        }
    }
    void equalsTheDefinition()
    {
        QFETCH(int, type);
        QFETCH(double, level);
        // Odd, and large enough for several threads.
        const CILImage image = maker::random(VXSDataTypes(type), 801, 707, 255, 3);
        std::size_t expected = 0;
        for (const double value : maker::values(image))
            expected += std::size_t(value >= level);
        QCOMPARE(ilCountAtOrAbove(image, level), expected);
    }

    void aPixelExactlyAtTheLevelCounts()
    {
        QCOMPARE(ilCountAtOrAbove(maker::floats(3, 1, {64999, 65000, 65001}), 65000.0), std::size_t(2));
    }

    void whatIsNotFiniteDoesNotCount()
    {
        const float inf = std::numeric_limits<float>::infinity();
        const float nan = std::numeric_limits<float>::quiet_NaN();
        QCOMPARE(ilCountAtOrAbove(maker::floats(4, 1, {inf, nan, -inf, 7}), 5.0), std::size_t(1));
    }

    void aLevelThatIsNoNumberCountsNothing()
    {
        QCOMPARE(ilCountAtOrAbove(maker::floats(2, 1, {1, 2}), std::nan("")), std::size_t(0));
        QCOMPARE(ilCountAtOrAbove(CILImage(), 0.0), std::size_t(0));
    }
};

QTEST_APPLESS_MAIN(tst_PixelCount)
#include "tst_PixelCount.moc"
