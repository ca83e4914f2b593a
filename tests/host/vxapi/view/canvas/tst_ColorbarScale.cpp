// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/ColorbarScale.h"
#include "host/vximage/CILPalette.h"

#include <limits>
#include <QtTest>

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double INF = std::numeric_limits<double>::infinity();

ColorbarScale scaleOf(double low, double high, bool logarithmic, double length = 200.0)
{
    CILPalette palette;
    palette.SetColorTable(VXS_CT_RAINBOW, low, high, 0, 0);
    palette.setLogScale(logarithmic ? 1 : 0);
    return ColorbarScale::of(palette, length, 14.0);
}

QStringList labels(const ColorbarScale &scale)
{
    QStringList list;
    for (const BarTick &tick : scale.ticks) {
        if (!tick.label.isEmpty())
            list.append(tick.label);
    }
    return list;
}

} // namespace

class tst_ColorbarScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void labels_data()
    {
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        QTest::addColumn<bool>("logarithmic");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QString>("header");
        const QString none;
        QTest::newRow("0 to 1") << 0.0 << 1.0 << false
                                << QStringList({"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}) << none;
        QTest::newRow("limits in the wrong order stand in the right one")
            << 1.0 << 0.0 << false << QStringList({"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}) << none;
        QTest::newRow("a round number that would touch a limit gives way")
            << 37.0 << 1030.0 << false << QStringList({"37", "200", "400", "600", "800", "1030"}) << none;
        QTest::newRow("a large range shares one power of ten")
            << 0.0 << 5.0e8 << false << QStringList({"0", "1", "2", "3", "4", "5"}) << QStringLiteral("×10⁸");
        QTest::newRow("a small range shares one power of ten")
            << 0.0 << 2.0e-6 << false << QStringList({"0.0", "0.5", "1.0", "1.5", "2.0"})
            << QStringLiteral("×10⁻⁶");
        QTest::newRow("negative to positive")
            << -100.0 << 100.0 << false << QStringList({"-100", "-50", "0", "50", "100"}) << none;
        QTest::newRow("equal limits are one number") << 7.0 << 7.0 << false << QStringList({"7"}) << none;
        QTest::newRow("both limits 0") << 0.0 << 0.0 << false << QStringList({"0"}) << none;
        QTest::newRow("a limit that is not a number") << NaN << 7.0 << false << QStringList({"n/a"}) << none;
        QTest::newRow("an infinite limit") << 0.0 << INF << false << QStringList({"n/a"}) << none;
        QTest::newRow("decades") << 1.0 << 1000.0 << true << QStringList({"1", "10", "100", "1000"}) << none;
        QTest::newRow("large decades")
            << 1.0e5 << 1.0e8 << true << QStringList({"10⁵", "10⁶", "10⁷", "10⁸"}) << none;
        QTest::newRow("a lower limit of 0 on a log scale is the palette's 1/10000")
            << 0.0 << 1000.0 << true << QStringList({"0.1", "1", "10", "100", "1000"}) << none;
        QTest::newRow("less than two decades have 2 and 5 too")
            << 1.0 << 10.0 << true << QStringList({"1", "2", "5", "10"}) << none;
    }
    void labels()
    {
        QFETCH(double, low);
        QFETCH(double, high);
        QFETCH(bool, logarithmic);
        QFETCH(QStringList, expected);
        QFETCH(QString, header);
        const ColorbarScale scale = scaleOf(low, high, logarithmic);
        QCOMPARE(::labels(scale), expected);
        QCOMPARE(scale.header, header);
    }

    void everythingIsReadable_data()
    {
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        const QVector<double> numbers = {0.0,    1.0e-38, 3.0e-7, 0.5,    37.2,    255.0, 65535.0,
                                         1.0e10, 3.4e38,  -1.0,   -4.2e5, -3.4e38, 1e308, -1e308};
        for (const double low : numbers) {
            for (const double high : numbers)
                QTest::newRow(qPrintable(QStringLiteral("%1 to %2").arg(low).arg(high))) << low << high;
        }
        QTest::newRow("a narrow range far from 0") << 65000.0 << 65000.5;
        QTest::newRow("neighbouring doubles") << 1.0 << std::nextafter(1.0, 2.0);
        QTest::newRow("denormals") << 0.0 << std::numeric_limits<double>::denorm_min();
    }
    void everythingIsReadable()
    {
        QFETCH(double, low);
        QFETCH(double, high);
        for (const bool logarithmic : {false, true}) {
            for (const double length : {10.0, 60.0, 200.0, 1500.0}) {
                const ColorbarScale scale = scaleOf(low, high, logarithmic, length);
                double last = -INF;
                int numbered = 0;
                for (const BarTick &tick : scale.ticks) {
                    QVERIFY(tick.position >= 0.0 && tick.position <= 1.0);
                    if (tick.label.isEmpty())
                        continue;
                    ++numbered;
                    QVERIFY2(tick.label.size() <= 14, qPrintable(tick.label));
                    QVERIFY2((tick.position - last) * length >= 14.0 - 1e-6, "labels overlap");
                    last = tick.position;
                }
                QVERIFY(numbered >= 1);
                QVERIFY(numbered <= 20 || length > 200.0);
                const double least = std::max(1e-300, 1e-10 * std::max(std::abs(low), std::abs(high)));
                if (length >= 60.0 && std::abs(high - low) > least)
                    QVERIFY(numbered >= 2);
            }
        }
    }
};

QTEST_APPLESS_MAIN(tst_ColorbarScale)
#include "tst_ColorbarScale.moc"
