// SPDX-License-Identifier: MIT
#include "check/PixelDifference.h"
#include "tests/support/PixelCompare.h"
#include "tests/support/Rows.h"

#include <cstring>
#include <limits>

using namespace pixelcompare;

namespace {

constexpr float INF = std::numeric_limits<float>::infinity();

float floatOf(std::uint32_t bits)
{
    float value = 0.0f;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

const float QUIET_NAN = floatOf(0x7fc00000);
const float OTHER_NAN = floatOf(0xffc12345);

CILImage lineOf(const Pixels &pixels)
{
    return imageOf(pixels, std::uint32_t(pixels.size()), 1);
}

} // namespace

/// How two images differ, and the sentence that says it.
class tst_PixelDifference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onePixel_data();
    void onePixel();
    void aDifferenceReadsTheSameEitherWayRound();
    void theLargestDifferenceIsThatOfAllPixels();
    void aDifferenceBeyondFloatIsTold();
    void ofAnotherShapeNoPixelIsCompared_data();
    void ofAnotherShapeNoPixelIsCompared();
    void sentence_data();
    void sentence();
    void theSentenceEndsInTheUnit_data();
    void theSentenceEndsInTheUnit();
};

void tst_PixelDifference::onePixel_data()
{
    QTest::addColumn<float>("stored");
    QTest::addColumn<float>("computed");
    QTest::addColumn<int>("different");
    QTest::addColumn<int>("oneFinite");
    QTest::addColumn<double>("largest");
    const float next = std::nextafter(1.0f, 2.0f);
    row("the same bits are the same", 0.1f, 0.1f, 0, 0, 0.0);
    row("the same infinity is the same", INF, INF, 0, 0, 0.0);
    row("not a number is the same whatever its payload and sign", QUIET_NAN, OTHER_NAN, 0, 0, 0.0);
    row("one step of float differs", 1.0f, next, 1, 0, double(next) - 1.0);
    row("0 and -0 differ, by nothing", 0.0f, -0.0f, 1, 0, 0.0);
    row("a number and not a number differ", 1.0f, QUIET_NAN, 1, 1, 0.0);
    row("a number and an infinity differ", -INF, 1.0f, 1, 1, 0.0);
    row("unlike infinities differ", INF, -INF, 1, 1, 0.0);
    row("an infinity and not a number differ", INF, QUIET_NAN, 1, 1, 0.0);
}

void tst_PixelDifference::onePixel()
{
    QFETCH(float, stored);
    QFETCH(float, computed);
    QFETCH(int, different);
    const auto difference = PixelDifference::compare(lineOf({5.0f, stored}), lineOf({5.0f, computed}));
    QCOMPARE(difference.shape, QString());
    QCOMPARE(int(difference.count), 2);
    QCOMPARE(int(difference.different), different);
    QTEST(int(difference.oneFinite), "oneFinite");
    QTEST(difference.largest, "largest");
    QCOMPARE(difference.areSame(), different == 0);
}

void tst_PixelDifference::aDifferenceReadsTheSameEitherWayRound()
{
    const CILImage a = lineOf({1.0f, 4.0f, INF, 0.0f});
    const CILImage b = lineOf({3.5f, 4.0f, 1.0f, -0.0f});
    const QString text = PixelDifference::compare(a, b).text(EUNIT_COUNTS);
    QCOMPARE(PixelDifference::compare(b, a).text(EUNIT_COUNTS), text);
    QVERIFY2(text.startsWith("3 of 4 pixels differ, by at most 2.5 "), qPrintable(text));
}

void tst_PixelDifference::theLargestDifferenceIsThatOfAllPixels()
{
    const CILImage a = imageOf({1, 2, 3, 4, 5, 6}, 3, 2);
    const CILImage b = imageOf({1, 2.5f, 3, -4, 5, 7}, 3, 2);
    const auto difference = PixelDifference::compare(a, b);
    QCOMPARE(int(difference.count), 6);
    QCOMPARE(int(difference.different), 3);
    QCOMPARE(difference.largest, 8.0);
}

void tst_PixelDifference::aDifferenceBeyondFloatIsTold()
{
    const float most = std::numeric_limits<float>::max();
    const auto difference = PixelDifference::compare(lineOf({most}), lineOf({-most}));
    QCOMPARE(int(difference.oneFinite), 0);
    QCOMPARE(difference.largest, 2.0 * double(most));
}

void tst_PixelDifference::ofAnotherShapeNoPixelIsCompared_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("storedType");
    QTest::addColumn<int>("computedType");
    QTest::addColumn<QString>("text");
    const int number = int(VXS_FLOAT);
    const QString notFloat("its pixels are not 32-bit float.");
    row("as many pixels in another shape", 3, 2, number, number,
        "it has 2 x 3 pixels, computed again 3 x 2.");
    row("wider", 3, 3, number, number, "it has 2 x 3 pixels, computed again 3 x 3.");
    row("higher", 2, 4, number, number, "it has 2 x 3 pixels, computed again 2 x 4.");
    row("stored pixels of another type", 2, 3, int(VXS_DOUBLE), number, notFloat);
    row("computed pixels of another type", 2, 3, number, int(VXS_DOUBLE), notFloat);
    row("the same other type", 2, 3, int(VXS_DOUBLE), int(VXS_DOUBLE), notFloat);
}

void tst_PixelDifference::ofAnotherShapeNoPixelIsCompared()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, storedType);
    QFETCH(int, computedType);
    QFETCH(QString, text);
    CILImage stored;
    CILImage computed;
    QCOMPARE(stored.InitWithType(VXSDataTypes(storedType), 2, 3), EIL_SUCCESS);
    QCOMPARE(computed.InitWithType(VXSDataTypes(computedType), std::uint32_t(width), std::uint32_t(height)),
             EIL_SUCCESS);
    const auto difference = PixelDifference::compare(stored, computed);
    QVERIFY(!difference.areSame());
    QCOMPARE(difference.shape, text);
    QCOMPARE(difference.text(EUNIT_RADIANCE), text);
    QCOMPARE(int(difference.different), 0);
}

void tst_PixelDifference::sentence_data()
{
    QTest::addColumn<int>("different");
    QTest::addColumn<int>("oneFinite");
    QTest::addColumn<double>("largest");
    QTest::addColumn<QString>("text");
    row("all pixels are finite", 3, 0, 2.5, "3 of 1024 pixels differ, by at most 2.5 [counts].");
    row("no pixel is finite in both", 3, 3, 0.0, "3 of 1024 pixels differ, all between a number and none.");
    row("some pixels are finite in one only", 3, 1, 2.5,
        "3 of 1024 pixels differ, by at most 2.5 [counts], and 1 of them between a number and none.");
    row("a difference is told with six digits", 1, 0, 1.0 / 3.0,
        "1 of 1024 pixels differ, by at most 0.333333 [counts].");
    row("a small difference is told with an exponent", 1, 0, 1.25e-9,
        "1 of 1024 pixels differ, by at most 1.25e-09 [counts].");
    row("0 and -0 differ by 0", 1, 0, 0.0, "1 of 1024 pixels differ, by at most 0 [counts].");
}

void tst_PixelDifference::sentence()
{
    QFETCH(int, different);
    QFETCH(int, oneFinite);
    QFETCH(double, largest);
    PixelDifference difference;
    difference.count = 1024;
    difference.different = std::size_t(different);
    difference.oneFinite = std::size_t(oneFinite);
    difference.largest = largest;
    QTEST(difference.text(EUNIT_COUNTS), "text");
}

void tst_PixelDifference::theSentenceEndsInTheUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("end");
    row("counts", int(EUNIT_COUNTS), "by at most 2.5 [counts].");
    row("radiance", int(EUNIT_RADIANCE), "by at most 2.5 [p/s/cm²/sr].");
    row("radiant efficiency", int(EUNIT_RADIANT_EFFICIENCY), "by at most 2.5 [(p/s/cm²/sr)/(µW/cm²)].");
    row("efficiency has no unit", int(EUNIT_EFFICIENCY), "by at most 2.5.");
}

void tst_PixelDifference::theSentenceEndsInTheUnit()
{
    QFETCH(int, unit);
    QFETCH(QString, end);
    const auto difference = PixelDifference::compare(lineOf({1.0f}), lineOf({3.5f}));
    QCOMPARE(difference.text(tag_edisplayunit(unit)), "1 of 1 pixels differ, " + end);
}

QTEST_GUILESS_MAIN(tst_PixelDifference)
#include "tst_PixelDifference.moc"
