// SPDX-License-Identifier: MIT
#include "host/vximage/CILPalette.h"
#include "tests/support/Rows.h"

#include <cmath>
#include <limits>

#include <QtTest>

class tst_CILPalette : public QObject
{
    Q_OBJECT

private slots:
    void position_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<bool>("log");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("expected");
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("below") << 10.0 << 20.0 << false << 9.0 << 0.0;
        QTest::newRow("at the lower limit") << 10.0 << 20.0 << false << 10.0 << 0.0;
        QTest::newRow("between") << 10.0 << 20.0 << false << 12.5 << 0.25;
        QTest::newRow("above") << 10.0 << 20.0 << false << 21.0 << 1.0;
        QTest::newRow("limits in the wrong order") << 20.0 << 10.0 << false << 12.5 << 0.25;
        QTest::newRow("equal limits, below") << 5.0 << 5.0 << false << 4.0 << 0.0;
        QTest::newRow("equal limits, equal") << 5.0 << 5.0 << false << 5.0 << 0.5;
        QTest::newRow("equal limits, above") << 5.0 << 5.0 << false << 6.0 << 1.0;
        QTest::newRow("log") << 1.0 << 10000.0 << true << 100.0 << 0.5;
        QTest::newRow("log without a positive lower limit takes a ten-thousandth")
            << 0.0 << 10000.0 << true << 100.0 << 0.5;
        QTest::newRow("log of a negative value") << 1.0 << 10000.0 << true << -3.0 << 0.0;
        QTest::newRow("log without a positive limit is linear") << -2.0 << -1.0 << true << -1.5 << 0.5;
        QTest::newRow("a range larger than double") << -1.7e308 << 1.7e308 << false << 0.0 << 0.5;
        QTest::newRow("a NaN has no place") << 0.0 << 1.0 << false << std::nan("") << std::nan("");
        QTest::newRow("nor has an infinity") << 0.0 << 1.0 << false << inf << std::nan("");
    }
    void position()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(bool, log);
        QFETCH(double, value);
        QFETCH(double, expected);
        CILPalette palette;
        palette.SetColorTable(VXS_CT_GRAYS, min, max, 0, 0);
        palette.setLogScale(log ? 1 : 0);
        const double found = palette.position(value);
        QVERIFY(std::isnan(expected) ? std::isnan(found) : std::abs(found - expected) < 1e-12);
        palette.setReversed(1); // the position knows nothing of it
        QVERIFY(std::isnan(expected) || std::abs(palette.position(value) - expected) < 1e-12);
        QCOMPARE(palette.color(value) == CILPalette::notFiniteColor(), std::isnan(expected));
    }

    void shownLimits_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<bool>("log");
        QTest::addColumn<double>("lower");
        QTest::addColumn<double>("upper");
        QTest::addColumn<bool>("isLogarithmic");
        row("linear limits are shown as they are", -2.0, 5.0, false, -2.0, 5.0, false);
        row("the lower one comes first", 5.0, -2.0, false, -2.0, 5.0, false);
        row("positive limits of a log scale stay", 3.0, 30.0, true, 3.0, 30.0, true);
        row("a zero gives way to a ten-thousandth of the upper limit", 0.0, 10000.0, true, 1.0, 10000.0,
            true);
        row("so does a negative one", -7.0, 10000.0, true, 1.0, 10000.0, true);
        row("no logarithm without a positive limit", -7.0, 0.0, true, -7.0, 0.0, false);
    }
    void shownLimits()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(bool, log);
        CILPalette palette;
        palette.SetColorTable(VXS_CT_GRAYS, min, max, 0, 0);
        palette.setLogScale(log ? 1 : 0);
        QTEST(palette.shownLimits().lower, "lower");
        QTEST(palette.shownLimits().upper, "upper");
        QTEST(palette.shownLimits().isLogarithmic, "isLogarithmic");
    }

    void colorsRunFromEndToEndAndBackWhenReversed()
    {
        for (int code = 0; code < VXS_CT_COUNT; ++code) {
            CILPalette palette;
            palette.SetColorTable(VXS_COLORTABLE_TYPES(code), 0, 255, 0, 0);
            const auto table = palette.table();
            for (int v = 0; v < 256; ++v)
                QCOMPARE(palette.color(v), table[size_t(v)]);
            palette.setReversed(1);
            for (int v = 0; v < 256; ++v)
                QCOMPARE(palette.color(v), table[size_t(255 - v)]);
            QCOMPARE(palette.table()[0], table[255]);
            QVERIFY(table[0] != table[255]);
        }
    }

    void noTableHoldsTheColourOfWhatIsNotFinite()
    {
        const auto nan = CILPalette::notFiniteColor();
        for (int code = 0; code < VXS_CT_COUNT; ++code) {
            CILPalette palette;
            palette.SetColorTable(VXS_COLORTABLE_TYPES(code), 0, 1, 0, 0);
            for (const auto rgb : palette.table()) {
                QCOMPARE(rgb >> 24, 0xffu);
                int distance = 0;
                for (const int shift : {0, 8, 16})
                    distance += std::abs(int((rgb >> shift) & 0xff) - int((nan >> shift) & 0xff));
                QVERIFY2(distance > 60, CILPalette::tableName(VXS_COLORTABLE_TYPES(code)));
            }
        }
    }

    void greysAreGreyAndBrighten()
    {
        CILPalette palette;
        palette.SetColorTable(VXS_CT_GRAYS, 0, 1, 0, 0);
        const auto table = palette.table();
        for (size_t i = 0; i < 256; ++i)
            QCOMPARE(table[i], 0xff000000u | unsigned(i) * 0x010101u);
    }

    void namesGoBothWays()
    {
        for (int code = 0; code < VXS_CT_COUNT; ++code) {
            const char *name = CILPalette::tableName(VXS_COLORTABLE_TYPES(code));
            QVERIFY(name);
            QCOMPARE(int(CILPalette::tableOfName(name, VXS_CT_COUNT)), code);
            QCOMPARE(int(CILPalette::tableOfName(QByteArray(name).toUpper(), VXS_CT_COUNT)), code);
        }
        QCOMPARE(CILPalette::tableName(VXS_CT_BLUEREDGREEN), "BlueRedGreen");
        QVERIFY(!CILPalette::tableName(VXS_CT_COUNT));
        QCOMPARE(int(CILPalette::tableOfName("Grey", VXS_CT_BLUE)), int(VXS_CT_BLUE));
        QCOMPARE(int(CILPalette::tableOfName("", VXS_CT_BLUE)), int(VXS_CT_BLUE));
        QCOMPARE(int(CILPalette::tableOfName(nullptr, VXS_CT_BLUE)), int(VXS_CT_BLUE));
    }

    void settersChangeWhatTheySay()
    {
        CILPalette p;
        p.SetColorTable(VXS_CT_RED, 1, 2, 1, 0);
        p.setLogScale(1);
        QVERIFY(p.isReversed() && p.isLogScale());
        p.setColorTableType(VXS_CT_BLUE, 3, 4);
        QVERIFY(p.isReversed() && p.isLogScale());
        QCOMPARE(p.getColorTableType(), VXS_CT_BLUE);
        QCOMPARE(p.getImageMin(), 3.0);
        CILPalette q = p;
        QVERIFY(q == p);
        q.SetImageMinMax(3, 5);
        QVERIFY(q != p);
        QCOMPARE(q.getImageMax(), 5.0);
        q.SetColorTable(VXS_CT_BLUE, 3, 4, 0, 0);
        QVERIFY(!q.isReversed() && q.isLogScale());
    }
};

QTEST_APPLESS_MAIN(tst_CILPalette)
#include "tst_CILPalette.moc"
