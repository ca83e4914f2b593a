// SPDX-License-Identifier: MIT
#include "result/NoteText.h"
#include "tests/support/Rows.h"

#include <QtTest>

namespace {

/// A row of UTF-8 texts; a null one is QString().
template <typename... Texts>
void texts(const char *name, Texts... values)
{
    row(name, QString(values)...);
}

} // namespace

/// The entries of a note text: a key, "=", a value and ";", one after another.
class tst_NoteText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void appending_data();
    void appending();
    void removing_data();
    void removing();
    void replacing_data();
    void replacing();
    void aNoteOfOneMegabyteIsEditedInItsLastEntries();
};

void tst_NoteText::appending_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("after");
    texts("to an empty note", "", "A", "1", "A=1;");
    texts("behind the last entry", "A=1;", "B", "2", "A=1;B=2;");
    texts("an empty value", "A=1;", "Folder On Disk", "", "A=1;Folder On Disk=;");
    texts("a key that is there already is not looked for", "A=1;", "A", "2", "A=1;A=2;");
    texts("behind an entry that lacks its semicolon nothing is put between", "A=1", "B", "2", "A=1B=2;");
    texts("a value with signs of the syntax stays as it is", "", "k", "a=b;c", "k=a=b;c;");
    texts("texts outside of Latin-1", "", "Заметка", "µ→∞", "Заметка=µ→∞;");
    texts("an operation's text", "", "Image Math Operation", "A/B if Counts(B)>k",
          "Image Math Operation=A/B if Counts(B)>k;");
    texts("to a note that is null", QString(), "A", "1", "A=1;");
}

void tst_NoteText::appending()
{
    QFETCH(QString, note);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, after);
    notetext::append(note, key, value);
    QCOMPARE(note, after);
}

void tst_NoteText::removing_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("after");
    texts("an entry in the middle", "A=1;Sequence ID=X;B=2;", "Sequence ID", "A=1;B=2;");
    texts("the first entry", "Sequence ID=X;B=2;", "Sequence ID", "B=2;");
    texts("the last entry", "A=1;Sequence ID=X;", "Sequence ID", "A=1;");
    texts("the only entry", "Sequence ID=X;", "Sequence ID", "");
    texts("an entry with an empty value", "A=1;Sequence ID=;B=2;", "Sequence ID", "A=1;B=2;");
    texts("only the first of two entries of that key", "A=1;B=2;A=3;", "A", "B=2;A=3;");
    texts("a key that is not there", "A=1;B=2;", "Sequence ID", "A=1;B=2;");
    texts("a key in other letters' case is not there", "sequence id=X;", "Sequence ID", "sequence id=X;");
    texts("nothing from an empty note", "", "A", "");
    texts("a last entry without semicolon stays", "A=1;Sequence ID=X", "Sequence ID", "A=1;Sequence ID=X");
    texts("the only entry without semicolon stays", "Sequence ID=X", "Sequence ID", "Sequence ID=X");
    texts("an entry before a last one without semicolon", "A=1;B=2", "A", "B=2");
    texts("an entry that lacks its own semicolon goes with the next one", "A=1 B=2;C=3;", "A", "C=3;");
    texts("an entry that lacks its equals sign", "A=1;B;C=3;", "B", "A=1;C=3;");
    texts("a key that ends an earlier key is found there", "Sequence ID=X;ID=2;", "ID", "Sequence ID=2;");
    texts("a key that begins an earlier key is found there", "Binning Factor=4;Binning=2;", "Binning",
          "Binning=2;");
    texts("a key inside an earlier value is found there", "A=xB;B=2;", "B", "A=xB=2;");
    texts("a key inside its own value is found at its own place", "B=xBx;C=3;", "B", "C=3;");
    texts("texts outside of Latin-1", "Заметка=µ;Б=∞;", "Заметка", "Б=∞;");
    QTest::newRow("nothing from a note that is null") << QString() << "A" << QString();
}

void tst_NoteText::removing()
{
    QFETCH(QString, note);
    QFETCH(QString, key);
    QFETCH(QString, after);
    notetext::remove(note, key);
    QCOMPARE(note, after);
}

void tst_NoteText::replacing_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("after");
    texts("the first entry", "Binning Factor=4;C=5;", "Binning Factor", "2", "Binning Factor=2;C=5;");
    texts("an entry in the middle", "A=1;B=2;C=3;", "B", "longer", "A=1;B=longer;C=3;");
    texts("the last entry", "A=1;B=2;", "B", "9", "A=1;B=9;");
    texts("an empty value gets one", "A=;B=2;", "A", "1", "A=1;B=2;");
    texts("a value becomes empty", "A=1;B=2;", "A", "", "A=;B=2;");
    texts("only the first of two entries of that key", "A=1;A=2;", "A", "9", "A=9;A=2;");
    texts("a value with an equals sign goes whole", "A=1=2;B=3;", "A", "9", "A=9;B=3;");
    texts("a key that is not there", "A=1;", "B", "2", "A=1;");
    texts("a key in other letters' case is not there", "binning factor=4;", "Binning Factor", "2",
          "binning factor=4;");
    texts("nothing in an empty note", "", "A", "1", "");
    texts("an entry without semicolon stays", "A=1", "A", "2", "A=1");
    texts("a last entry without semicolon stays", "A=1;B=2", "B", "9", "A=1;B=2");
    texts("an entry without equals sign stays", "A=1;B;", "B", "2", "A=1;B;");
    texts("an entry without either sign stays", "A=1;B", "B", "2", "A=1;B");
    texts("the next entry's equals sign is not the entry's own", "A;B=2;", "A", "9", "A;B=2;");
    texts("an entry that lacks its own semicolon reaches to the next one", "A=1B=2;C=3;", "A", "9",
          "A=9;C=3;");
    texts("a key that ends an earlier key is found there", "Binning Factor=4;Factor=5;", "Factor", "2",
          "Binning Factor=2;Factor=5;");
    texts("a key inside an earlier value is an entry without equals sign", "A=B;B=2;", "B", "9", "A=B;B=2;");
    texts("texts outside of Latin-1", "Заметка=µ;", "Заметка", "∞", "Заметка=∞;");
    texts("nothing in a note that is null", QString(), "A", "1", QString());
}

void tst_NoteText::replacing()
{
    QFETCH(QString, note);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, after);
    notetext::replace(note, key, value);
    QCOMPARE(note, after);
}

void tst_NoteText::aNoteOfOneMegabyteIsEditedInItsLastEntries()
{
    const QString filling = QStringLiteral("Filling=0123456789;").repeated(55000);
    QVERIFY(filling.size() > 1000000);
    QString note = filling + QStringLiteral("Sequence ID=X;Binning Factor=4;");
    notetext::remove(note, QStringLiteral("Sequence ID"));
    notetext::replace(note, QStringLiteral("Binning Factor"), QStringLiteral("2"));
    notetext::append(note, QStringLiteral("Saturated"), QStringLiteral("0"));
    QCOMPARE(note, filling + QStringLiteral("Binning Factor=2;Saturated=0;"));
}

QTEST_APPLESS_MAIN(tst_NoteText)
#include "tst_NoteText.moc"
