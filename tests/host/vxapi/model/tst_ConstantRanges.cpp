// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "tests/support/Rows.h"

#include <limits>
#include <QtTest>

using namespace clickinfo;

class tst_ConstantRanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatARangeHolds_data();
    void whatARangeHolds();
};

void tst_ConstantRanges::whatARangeHolds_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("number");
    QTest::addColumn<bool>("holds");
    const double smallest = std::numeric_limits<double>::denorm_min();
    const double aboveOne = 1.0 + std::numeric_limits<double>::epsilon();
    row("no exposure time", QString(KEY_EXPOSURE), 0.0, false);
    row("the shortest exposure time", QString(KEY_EXPOSURE), smallest, true);
    row("a negative gain", QString(KEY_GAIN), -1.0, false);
    row("a gain of any size", QString(KEY_GAIN), 1e300, true);
    row("a gain that is no number", QString(KEY_GAIN), std::numeric_limits<double>::quiet_NaN(), false);
    row("every photon is seen", QString(KEY_QUANTUM_EFFICIENCY), 1.0, true);
    row("more than every photon", QString(KEY_QUANTUM_EFFICIENCY), aboveOne, false);
    row("no photon is seen", QString(KEY_QUANTUM_EFFICIENCY), 0.0, false);
    row("all light passes", QString(KEY_TRANSMISSION), 1.0, true);
    row("more light than came", QString(KEY_TRANSMISSION), aboveOne, false);
    row("binning 1", QString(KEY_BINNING), 1.0, true);
    row("binning below 1", QString(KEY_BINNING), 0.999, false);
    row("a field of view", QString(KEY_FOV), 12.5, true);
    row("no offset", QString(KEY_OFFSET), 0.0, true);
    row("an offset below 0", QString(KEY_OFFSET), -1.0, false);
    row("an offset that no camera has", QString(KEY_OFFSET), 1e30, false);
    row("no field of view", QString(KEY_FOV), 0.0, false);
}

void tst_ConstantRanges::whatARangeHolds()
{
    QFETCH(QString, key);
    QFETCH(double, number);
    QFETCH(bool, holds);
    const QByteArray name = key.toLatin1();
    const ConstantRange range = constantRange(QLatin1String(name));
    QCOMPARE(range.holds(number), holds);
    QVERIFY2(range.requirement().endsWith(range.text()), qPrintable(range.requirement()));
}

QTEST_APPLESS_MAIN(tst_ConstantRanges)
#include "tst_ConstantRanges.moc"
