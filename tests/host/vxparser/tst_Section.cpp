// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"

#include <QTest>

class tst_Section : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void addKeyValueAlwaysAppends();
    void getValueAnswersWithTheLastPair();
    void setValueChangesTheLastPair();
    void setValueAppendsAMissingKey();
    void keysAreComparedExactly();
    void aRecordKeepsItsSectionsInOrder();
    void aRecordFreesItsSections();
};

void tst_Section::startsEmpty()
{
    CPLSection section;
    QCOMPARE(section.count(), 0);
    QString name("left over");
    section.getSectionName(&name, false);
    QVERIFY(name.isNull());
    QStringList keys{"left over"};
    section.getKeyList(&keys);
    QVERIFY(keys.isEmpty());
    QString value("untouched");
    QCOMPARE(section.getValue("key", &value), ESTATUS_KEY_NOT_FOUND);
    QCOMPARE(value, QString("untouched"));
    QCOMPARE(section.getValue("key", nullptr), ESTATUS_KEY_NOT_FOUND);
}

void tst_Section::addKeyValueAlwaysAppends()
{
    CPLSection section;
    section.addKeyValue("a", "1");
    section.addKeyValue("b", "2");
    section.addKeyValue("a", "3");
    QCOMPARE(section.count(), 3);
    QStringList keys;
    QStringList values;
    section.getKeyList(&keys);
    section.getValueList(&values);
    QCOMPARE(keys, (QStringList{"a", "b", "a"}));
    QCOMPARE(values, (QStringList{"1", "2", "3"}));
}

void tst_Section::getValueAnswersWithTheLastPair()
{
    CPLSection section;
    section.addKeyValue("a", "1");
    section.addKeyValue("a", "2");
    QString value;
    QCOMPARE(section.getValue("a", &value), ESTATUS_SUCCESS);
    QCOMPARE(value, QString("2"));
}

void tst_Section::setValueChangesTheLastPair()
{
    CPLSection section;
    section.addKeyValue("a", "1");
    section.addKeyValue("a", "2");
    section.addKeyValue("b", "3");
    section.setValue("a", -7);
    section.setValue("b", QString("text"));
    QStringList values;
    section.getValueList(&values);
    QCOMPARE(values, (QStringList{"1", "-7", "text"}));
}

void tst_Section::setValueAppendsAMissingKey()
{
    CPLSection section;
    section.setValue("a", 1234567);
    QString value;
    QCOMPARE(section.getValue("a", &value), ESTATUS_SUCCESS);
    QCOMPARE(value, QString("1234567"));
}

void tst_Section::keysAreComparedExactly()
{
    CPLSection section;
    section.addKeyValue("Key", "1");
    QCOMPARE(section.getValue("key", nullptr), ESTATUS_KEY_NOT_FOUND);
    QCOMPARE(section.getValue("Key ", nullptr), ESTATUS_KEY_NOT_FOUND);
}

void tst_Section::aRecordKeepsItsSectionsInOrder()
{
    CPLClickInfo record;
    int count = -1;
    record.getSectionCount(&count);
    QCOMPARE(count, 0);
    QVERIFY(!record["missing"]);

    auto *first = new CPLSection;
    first->setSectionKey("twice");
    auto *second = new CPLSection;
    second->setSectionKey("twice");
    record.addSection(first);
    record.addSection(second);
    record.addSection(nullptr);
    record.getSectionCount(&count);
    QCOMPARE(count, 2);
    QCOMPARE(record["twice"], first);
    QCOMPARE(record.sectionAt(1), second);
    QVERIFY(!record.sectionAt(2));
    QVERIFY(!record.sectionAt(-1));
    QVERIFY(!record["Twice"]);
}

// A text that only we hold is detached; a section that still lives holds it too.
void tst_Section::aRecordFreesItsSections()
{
    QString key = QStringLiteral("key of %1").arg(1);
    QString name = QStringLiteral("name of %1").arg(2);
    QString value = QStringLiteral("value of %1").arg(3);
    const auto areOurs = [&] { return key.isDetached() && name.isDetached() && value.isDetached(); };
    {
        CPLClickInfo record;
        for (int i = 0; i < 2; ++i) {
            auto *section = new CPLSection;
            section->setSectionKey(key);
            section->setSectionName(name);
            section->addKeyValue("key", value);
            record.addSection(section);
        }
        QVERIFY(!areOurs());
    }
    QVERIFY(areOurs());
}

QTEST_GUILESS_MAIN(tst_Section)
#include "tst_Section.moc"
