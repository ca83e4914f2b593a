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
    void aNumberThatIsNoUnitHasNoKey();
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

void tst_Units::aNumberThatIsNoUnitHasNoKey()
{
    QVERIFY(unitKey(EUNIT_COUNT).isEmpty());
}

QTEST_GUILESS_MAIN(tst_Units)
#include "tst_Units.moc"
