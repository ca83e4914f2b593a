// SPDX-License-Identifier: MIT
#include "math/ViewAnnotations.h"

#include <QtTest>

using namespace imagemath;

class tst_ViewAnnotations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unitLabels_data();
    void unitLabels();
    void operandLabels_data();
    void operandLabels();
    void anOperandWithoutImage();
    void border_data();
    void border();
    void places_data();
    void places();
};

void tst_ViewAnnotations::unitLabels_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("label");
    QTest::newRow("counts") << 0 << "Counts";
    QTest::newRow("radiance") << 1 << "Radiance (Photons)";
    QTest::newRow("radiant efficiency") << 2 << "Radiant Efficiency";
    QTest::newRow("efficiency") << 3 << "Efficiency";
}

void tst_ViewAnnotations::unitLabels()
{
    QFETCH(int, unit);
    QFETCH(QString, label);
    QCOMPARE(displayLabel(tag_edisplayunit(unit)), label);
}

void tst_ViewAnnotations::operandLabels_data()
{
    QTest::addColumn<bool>("transFluorescent");
    QTest::addColumn<int>("ownUnit");
    QTest::addColumn<int>("labelUnit");
    QTest::addColumn<QString>("label");
    const QStringList names{"Counts", "Radiance (Photons)", "Radiant Efficiency", "Efficiency"};
    for (bool trans : {false, true}) {
        for (int own = 0; own < 4; ++own) {
            for (int named = 0; named < 4; ++named) {
                QTest::newRow(qPrintable(QString("%1, own unit %2, named by unit %3")
                                             .arg(trans ? "transfluorescent" : "other")
                                             .arg(own)
                                             .arg(named)))
                    << trans << own << named
                    << (trans && own == 3 ? QString("NTF Efficiency") : names[named]);
            }
        }
    }
}

void tst_ViewAnnotations::operandLabels()
{
    QFETCH(bool, transFluorescent);
    QFETCH(int, ownUnit);
    QFETCH(int, labelUnit);
    QFETCH(QString, label);
    QCOMPARE(operandLabel(transFluorescent, tag_edisplayunit(ownUnit), tag_edisplayunit(labelUnit)), label);
}

void tst_ViewAnnotations::anOperandWithoutImage()
{
    QCOMPARE(noImageLabel(), QString("(No luminescent image)"));
}

void tst_ViewAnnotations::border_data()
{
    QTest::addColumn<float>("height");
    QTest::addColumn<int>("border");
    QTest::newRow("25 gives 2") << 25.0f << 2;
    QTest::newRow("9 gives none") << 9.0f << 0;
    QTest::newRow("10 gives 1") << 10.0f << 1;
    QTest::newRow("just below 10 gives none") << 9.999f << 0;
    QTest::newRow("29.99 gives 2, truncated") << 29.99f << 2;
    QTest::newRow("30 gives 3") << 30.0f << 3;
    QTest::newRow("nothing gives none") << 0.0f << 0;
    QTest::newRow("277.78 gives 27") << 277.78f << 27;
    QTest::newRow("truncation goes toward zero") << -25.0f << -2;
}

void tst_ViewAnnotations::border()
{
    QFETCH(float, height);
    QFETCH(int, border);
    QCOMPARE(ColumnLayout::borderFor(height), border);
}

void tst_ViewAnnotations::places_data()
{
    QTest::addColumn<float>("left");
    QTest::addColumn<float>("top");
    QTest::addColumn<float>("width");
    QTest::addColumn<float>("height");
    QTest::addColumn<int>("border");
    QTest::addColumn<double>("tagWidth");
    QTest::addColumn<double>("tagHeight");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("belowFirst");
    QTest::addColumn<double>("belowSecond");
    QTest::addColumn<double>("third");
    QTest::newRow("round numbers") << 10.0f << 20.0f << 100.0f << 50.0f << 5 << 40.0 << 12.0 << 45.0 << 76.0
                                   << 136.0 << 164.0;
    QTest::newRow("no border") << 0.0f << 0.0f << 30.0f << 9.0f << 0 << 10.0 << 3.0 << 10.0 << 10.0 << 19.0
                               << 21.0;
    QTest::newRow("a tag wider than the column starts left of it")
        << 0.0f << 0.0f << 30.0f << 20.0f << 2 << 134.0 << 40.0 << -50.0 << 23.0 << 47.0 << 40.0;
    QTest::newRow("halves are kept") << 0.0f << 0.0f << 31.0f << 20.0f << 2 << 10.0 << 3.0 << 12.5 << 23.0
                                     << 47.0 << 58.5;
    // 2^25 + 2 needs 25 bits: single precision would lose the 2.
    QTest::newRow("the left edge is taken in double precision")
        << 0.0f << 0.0f << 33554432.0f << 20.0f << 1 << 0.0 << 3.0 << 16777217.0 << 22.0 << 44.0 << 53.5;
    // 2^24 swallows every 1 that is added to it alone in single precision.
    QTest::newRow("the top edges are summed in single precision, left to right")
        << 0.0f << 16777216.0f << 30.0f << 1.0f << 1 << 10.0 << 3.0 << 11.0 << 16777216.0 << 16777220.0
        << 16777223.0;
    QTest::newRow("centring on the third is taken in double precision")
        << 0.0f << 16777216.0f << 30.0f << 2.0f << 1 << 10.0 << 1.5 << 11.0 << 16777220.0 << 16777224.0
        << 16777224.25;
}

void tst_ViewAnnotations::places()
{
    QFETCH(float, left);
    QFETCH(float, top);
    QFETCH(float, width);
    QFETCH(float, height);
    QFETCH(int, border);
    QFETCH(double, tagWidth);
    QFETCH(double, tagHeight);
    QFETCH(double, x);
    QFETCH(double, belowFirst);
    QFETCH(double, belowSecond);
    QFETCH(double, third);
    ColumnLayout layout;
    layout.left = left;
    layout.top = top;
    layout.width = width;
    layout.height = height;
    layout.border = border;
    const auto same = [](double value, double expected, const char *what) {
        if (value != expected)
            qWarning("%s is %.17g, expected %.17g", what, value, expected);
        return value == expected;
    };
    QVERIFY(same(layout.tagLeft(tagWidth), x, "left edge"));
    QVERIFY(same(double(layout.belowFirst()), belowFirst, "below the first"));
    QVERIFY(same(double(layout.belowSecond()), belowSecond, "below the second"));
    QVERIFY(same(layout.centredOnThird(tagHeight), third, "on the third"));
}

QTEST_GUILESS_MAIN(tst_ViewAnnotations)
#include "tst_ViewAnnotations.moc"
