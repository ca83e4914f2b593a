// SPDX-License-Identifier: MIT
#include "display/KText.h"
#include "tests/support/Rows.h"

#include <cmath>
#include <limits>
#include <QLocale>
#include <QtTest>

class tst_KText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void read_data();
    void read();
    void clamped_data();
    void clamped();
    void format_data();
    void format();
    void aTextReadBackIsFormattedTheSame_data();
    void aTextReadBackIsFormattedTheSame();
    void exact_data();
    void exact();
    void compactExponent_data();
    void compactExponent();
    void numbersDoNotDependOnTheUsersLocale();
};

void tst_KText::read_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("value");
    QTest::newRow("a whole number") << "10" << 10.0f;
    QTest::newRow("decimals") << "1.25" << 1.25f;
    QTest::newRow("e-notation") << "5.00e-1" << 0.5f;
    QTest::newRow("e-notation with capital E and plus") << "1.5E+3" << 1500.0f;
    QTest::newRow("a negative number") << "-0.5" << -0.5f;
    QTest::newRow("rounded to single precision") << "0.1" << 0.1f;
    QTest::newRow("nothing at all reads as 0") << "" << 0.0f;
    QTest::newRow("letters read as 0") << "abc" << 0.0f;
    QTest::newRow("a number with letters after it reads as 0") << "1.5x" << 0.0f;
    QTest::newRow("a decimal comma is not a number and reads as 0") << "1,5" << 0.0f;
    QTest::newRow("an exponent without digits reads as 0") << "1e" << 0.0f;
}

void tst_KText::read()
{
    QFETCH(QString, text);
    QFETCH(float, value);
    QVERIFY2(ktext::read(text) == value, qPrintable(QString::number(double(ktext::read(text)))));
}

void tst_KText::clamped_data()
{
    QTest::addColumn<float>("v");
    QTest::addColumn<float>("expected");
    const float inf = std::numeric_limits<float>::infinity();
    QTest::newRow("inside the bounds nothing changes") << 3.5f << 3.5f;
    QTest::newRow("the upper bound itself") << 1.0e12f << 1.0e12f;
    QTest::newRow("above the upper bound") << 2.0e15f << 1.0e12f;
    QTest::newRow("the next float above the upper bound") << std::nextafter(1.0e12f, inf) << 1.0e12f;
    QTest::newRow("the next float below the upper bound")
        << std::nextafter(1.0e12f, 0.0f) << std::nextafter(1.0e12f, 0.0f);
    QTest::newRow("the lower bound itself") << -1.0e12f << -1.0e12f;
    QTest::newRow("below the lower bound") << -2.0e15f << -1.0e12f;
    QTest::newRow("infinity") << inf << 1.0e12f;
    QTest::newRow("minus infinity") << -inf << -1.0e12f;
    QTest::newRow("zero") << 0.0f << 0.0f;
}

void tst_KText::clamped()
{
    QFETCH(float, v);
    QFETCH(float, expected);
    const float result = ktext::clamped(v, ktext::MINIMUM, ktext::MAXIMUM);
    QVERIFY2(result == expected, qPrintable(QString::number(double(result))));
}

void tst_KText::format_data()
{
    QTest::addColumn<float>("v");
    QTest::addColumn<QString>("text");
    QTest::newRow("10 is the largest plain number") << 10.0f << "10.00";
    QTest::newRow("the next float above 10") << std::nextafter(10.0f, 11.0f) << "1.00e1";
    QTest::newRow("10.001") << 10.001f << "1.00e1";
    QTest::newRow("11") << 11.0f << "1.10e1";
    QTest::newRow("9.999 keeps the plain form though it rounds to 10") << 9.999f << "10.00";
    QTest::newRow("1 is the smallest plain number") << 1.0f << "1.00";
    QTest::newRow("the next float below 1 has no exponent left") << std::nextafter(1.0f, 0.0f) << "1.00";
    QTest::newRow("0.9999 rounds to 1 and has no exponent left") << 0.9999f << "1.00";
    QTest::newRow("0.99 keeps its exponent") << 0.99f << "9.90e-1";
    QTest::newRow("0.5") << 0.5f << "5.00e-1";
    QTest::newRow("0 has no exponent") << 0.0f << "0.00";
    QTest::newRow("-0.5") << -0.5f << "-5.00e-1";
    QTest::newRow("-1") << -1.0f << "-1.00";
    QTest::newRow("the next float above -1") << std::nextafter(-1.0f, 0.0f) << "-1.00";
    QTest::newRow("-10") << -10.0f << "-10.00";
    QTest::newRow("the next float below -10") << std::nextafter(-10.0f, -11.0f) << "-1.00e1";
    QTest::newRow("2.5") << 2.5f << "2.50";
    QTest::newRow("halves are those of the float, not of the decimal") << 1.115f << "1.12";
    QTest::newRow("a leading zero of the exponent is not kept") << 1.23e5f << "1.23e5";
    QTest::newRow("an exponent of two digits") << 1.0e12f << "1.00e12";
    QTest::newRow("a negative exponent of two digits") << 1.5e-12f << "1.50e-12";
    QTest::newRow("an exponent that ends in zero") << 2.0e10f << "2.00e10";
    QTest::newRow("99.999 rounds up to the next power") << 99.999f << "1.00e2";
}

void tst_KText::format()
{
    QFETCH(float, v);
    QFETCH(QString, text);
    QCOMPARE(ktext::format(v), text);
}

void tst_KText::aTextReadBackIsFormattedTheSame_data()
{
    QTest::addColumn<float>("v");
    for (const float v :
         {0.0f, 1.0f, -1.0f, 0.123456f, 9.87654f, -9.87654f, 12345.678f, -0.00012f, 3.3e11f, 1.7f})
        QTest::newRow(qPrintable(QString::number(double(v)))) << v;
}

void tst_KText::aTextReadBackIsFormattedTheSame()
{
    QFETCH(float, v);
    const QString once = ktext::format(v);
    QCOMPARE(ktext::format(ktext::read(once)), once);
}

void tst_KText::exact_data()
{
    QTest::addColumn<float>("v");
    QTest::addColumn<QString>("text");
    row("a typed k has its own text", 1.25f, "1.25");
    row("with an exponent too", 0.5f, "5.00e-1");
    row("a k from an ROI keeps its digits", 1.24709f, "1.24709");
    row("a large one", 123456.0f, "123456");
    row("infinity", std::numeric_limits<float>::infinity(), "inf");
}

void tst_KText::exact()
{
    QFETCH(float, v);
    QFETCH(QString, text);
    QCOMPARE(ktext::exact(v), text);
}

void tst_KText::compactExponent_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("compact");
    row("plus and leading zero go", "1.23e+05", "1.23e5");
    row("minus stays, leading zero goes", "5.00e-01", "5.00e-1");
    row("an exponent of zero goes", "0.00e+00", "0.00");
    row("a negative exponent of zero goes with its sign", "1.00e-00", "1.00");
    row("a capital E becomes small", "1.00E+10", "1.00e10");
    row("zeros inside and at the end stay", "1.00e+100", "1.00e100");
    row("many leading zeros go", "1e+0007", "1e7");
    row("a negative number keeps its sign", "-1.23e-07", "-1.23e-7");
    row("no sign, leading zero", "4e05", "4e5");
    row("already compact", "1.23e5", "1.23e5");
    row("no exponent at all", "12.00", "12.00");
    row("nothing after the e", "12e", "12");
    row("only a sign after the e", "12e+", "12");
    row("only the first sign is one", "1e+-05", "1e-05");
    row("only the first e divides", "1e05e06", "1e5e06");
    row("an empty text", "", "");
}

void tst_KText::compactExponent()
{
    QFETCH(QString, text);
    QFETCH(QString, compact);
    QString changed = text;
    ktext::compactExponent(changed);
    QCOMPARE(changed, compact);
}

void tst_KText::numbersDoNotDependOnTheUsersLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(ktext::format(1.5f), QStringLiteral("1.50"));
    QCOMPARE(ktext::format(0.5f), QStringLiteral("5.00e-1"));
    QCOMPARE(ktext::read(QStringLiteral("1.5")), 1.5f);
    QCOMPARE(ktext::read(QStringLiteral("1,5")), 0.0f);
}

QTEST_APPLESS_MAIN(tst_KText)
#include "tst_KText.moc"
