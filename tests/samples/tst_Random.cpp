// SPDX-License-Identifier: MIT
#include "samples/Random.h"

#include <cmath>
#include <QtTest>

/// The distributions have the moments that they are named for, and a seed gives the same numbers everywhere.
class tst_Random : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSeedGivesTheSameNumbers();
    void uniformHasItsMoments();
    void normalHasItsMoments();
    void poissonHasItsMoments_data();
    void poissonHasItsMoments();
};

namespace {

struct Moments
{
    double mean = 0.0;
    double variance = 0.0;
};

constexpr int COUNT = 200000;

template <typename Draw>
Moments moments(Draw draw)
{
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < COUNT; ++i) {
        const double value = draw();
        sum += value;
        squares += value * value;
    }
    Moments result;
    result.mean = sum / COUNT;
    result.variance = squares / COUNT - result.mean * result.mean;
    return result;
}

} // namespace

void tst_Random::aSeedGivesTheSameNumbers()
{
    Random one(42);
    Random two(42);
    Random other(43);
    int different = 0;
    for (int i = 0; i < 1000; ++i) {
        const double a = one.normal() + one.poisson(50.0);
        QCOMPARE(two.normal() + two.poisson(50.0), a);
        different += other.normal() + other.poisson(50.0) != a ? 1 : 0;
    }
    QVERIFY(different > 990);
}

void tst_Random::uniformHasItsMoments()
{
    Random random(1);
    const Moments found = moments([&random] { return random.uniform(); });
    QVERIFY(std::fabs(found.mean - 0.5) < 5.0 * std::sqrt(1.0 / 12.0 / COUNT));
    QVERIFY(std::fabs(found.variance * 12.0 - 1.0) < 0.02);
}

void tst_Random::normalHasItsMoments()
{
    Random random(2);
    const Moments found = moments([&random] { return random.normal(); });
    QVERIFY(std::fabs(found.mean) < 5.0 / std::sqrt(double(COUNT)));
    QVERIFY(std::fabs(found.variance - 1.0) < 5.0 * std::sqrt(2.0 / COUNT));
}

void tst_Random::poissonHasItsMoments_data()
{
    QTest::addColumn<double>("mean");
    QTest::newRow("a mean of zero") << 0.0;
    QTest::newRow("a mean below one") << 0.3;
    QTest::newRow("a mean just below the change of method") << 9.99;
    QTest::newRow("a mean just above the change of method") << 10.01;
    QTest::newRow("a mean of camera counts") << 12345.6;
}

void tst_Random::poissonHasItsMoments()
{
    QFETCH(double, mean);
    Random random(3);
    const Moments found = moments([&random, mean] { return random.poisson(mean); });
    QVERIFY2(std::fabs(found.mean - mean) <= 5.0 * std::sqrt(mean / COUNT),
             qPrintable(QString::number(found.mean)));
    // The variance of a Poisson sample's variance is (mean + 2 mean^2) / n.
    QVERIFY2(std::fabs(found.variance - mean) <= 5.0 * std::sqrt((mean + 2.0 * mean * mean) / COUNT),
             qPrintable(QString::number(found.variance)));
}

QTEST_APPLESS_MAIN(tst_Random)
#include "tst_Random.moc"
