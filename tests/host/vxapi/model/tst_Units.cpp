// SPDX-License-Identifier: MIT
#include "host/vxapi/model/VXTypes.h"

#include <QtTest>

class tst_Units : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keyOfUnit_data();
    void keyOfUnit();
    void thereIsNoOtherUnit_data();
    void thereIsNoOtherUnit();
    void aNumberThatIsNoUnitHasNoName();
    void namesForTheUser_data();
    void namesForTheUser();
};

void tst_Units::keyOfUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("key");
    QTest::newRow("counts, in small letters") << 0 << "counts";
    QTest::newRow("radiance") << 1 << "Radiance (Photons)";
    QTest::newRow("radiant efficiency") << 2 << "Radiant Efficiency";
    QTest::newRow("efficiency, in small letters") << 3 << "efficiency";
}

void tst_Units::keyOfUnit()
{
    QFETCH(int, unit);
    QFETCH(QString, key);
    QCOMPARE(unitKey(tag_edisplayunit(unit)), key);
    for (const QString &text : {key, key.toUpper(), key.toLower()}) {
        tag_edisplayunit found = EUNIT_COUNT;
        QVERIFY(unitOfKey(text, &found));
        QCOMPARE(int(found), unit);
    }
}

void tst_Units::thereIsNoOtherUnit_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("a null text") << QString();
    QTest::newRow("an empty text") << "";
    QTest::newRow("a blank after the key") << "counts ";
    QTest::newRow("the first word of a key") << "Radiance";
}

void tst_Units::thereIsNoOtherUnit()
{
    QFETCH(QString, key);
    tag_edisplayunit found = EUNIT_RADIANCE;
    QVERIFY(!unitOfKey(key, &found));
    QCOMPARE(int(found), int(EUNIT_RADIANCE)); // untouched
}

void tst_Units::aNumberThatIsNoUnitHasNoName()
{
    for (int number : {int(EUNIT_COUNT), 1000, -1}) {
        const auto unit = tag_edisplayunit(number);
        QCOMPARE(unitKey(unit) + unitLabel(unit) + unitSuffix(unit) + unitText(unit) + unitTotalText(unit),
                 QString());
    }
}

void tst_Units::namesForTheUser_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("total");
    QTest::newRow("counts, whose symbol tells nothing more") << 0 << "Counts"
                                                             << " [counts]"
                                                             << "Counts"
                                                             << "Total counts";
    QTest::newRow("radiance, whose total is a flux") << 1 << "Radiance (Photons)"
                                                     << " [p/s/cm²/sr]"
                                                     << "Radiance (Photons) [p/s/cm²/sr]"
                                                     << "Total flux [p/s]";
    QTest::newRow("radiant efficiency") << 2 << "Radiant Efficiency"
                                        << " [(p/s/cm²/sr)/(µW/cm²)]"
                                        << "Radiant Efficiency [(p/s/cm²/sr)/(µW/cm²)]"
                                        << "Total radiant efficiency [(p/s)/(µW/cm²)]";
    QTest::newRow("efficiency, a plain number") << 3 << "Efficiency"
                                                << ""
                                                << "Efficiency"
                                                << "Total efficiency [cm²]";
}

void tst_Units::namesForTheUser()
{
    QFETCH(int, unit);
    const auto code = tag_edisplayunit(unit);
    QTEST(unitLabel(code), "label");
    QTEST(unitSuffix(code), "suffix");
    QTEST(unitText(code), "text");
    QTEST(unitTotalText(code), "total");
}

QTEST_GUILESS_MAIN(tst_Units)
#include "tst_Units.moc"
