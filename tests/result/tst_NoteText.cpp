// SPDX-License-Identifier: MIT
#include "tests/window/WatchedWnd.h"

#include <QtTest>

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
    void aNoteOfOneMegabyteIsEditedAtOnce();

private:
    WatchedWnd m_window;
};

void tst_NoteText::appending_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const char *note, const char *key, const char *value,
                        const char *after) {
        QTest::newRow(name) << QString::fromUtf8(note) << QString::fromUtf8(key) << QString::fromUtf8(value)
                            << QString::fromUtf8(after);
    };
    row("to an empty note", "", "A", "1", "A=1;");
    row("behind the last entry", "A=1;", "B", "2", "A=1;B=2;");
    row("an empty value", "A=1;", "Folder On Disk", "", "A=1;Folder On Disk=;");
    row("a key that is there already is not looked for", "A=1;", "A", "2", "A=1;A=2;");
    row("behind an entry that lacks its semicolon nothing is put between", "A=1", "B", "2", "A=1B=2;");
    row("a value with signs of the syntax stays as it is", "", "k", "a=b;c", "k=a=b;c;");
    row("texts outside of Latin-1", "", "Заметка", "µ→∞", "Заметка=µ→∞;");
    row("an operation's text", "", "Image Math Operation", "A/B if Counts(B)>k",
        "Image Math Operation=A/B if Counts(B)>k;");
    QTest::newRow("to a note that is null") << QString() << "A"
                                            << "1"
                                            << "A=1;";
}

void tst_NoteText::appending()
{
    QFETCH(QString, note);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, after);
    m_window.appendNoteEntry(note, key, value);
    QCOMPARE(note, after);
}

void tst_NoteText::removing_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const char *note, const char *key, const char *after) {
        QTest::newRow(name) << QString::fromUtf8(note) << QString::fromUtf8(key) << QString::fromUtf8(after);
    };
    row("an entry in the middle", "A=1;Sequence ID=X;B=2;", "Sequence ID", "A=1;B=2;");
    row("the first entry", "Sequence ID=X;B=2;", "Sequence ID", "B=2;");
    row("the last entry", "A=1;Sequence ID=X;", "Sequence ID", "A=1;");
    row("the only entry", "Sequence ID=X;", "Sequence ID", "");
    row("an entry with an empty value", "A=1;Sequence ID=;B=2;", "Sequence ID", "A=1;B=2;");
    row("only the first of two entries of that key", "A=1;B=2;A=3;", "A", "B=2;A=3;");
    row("a key that is not there", "A=1;B=2;", "Sequence ID", "A=1;B=2;");
    row("a key in other letters' case is not there", "sequence id=X;", "Sequence ID", "sequence id=X;");
    row("nothing from an empty note", "", "A", "");
    row("a last entry without semicolon stays", "A=1;Sequence ID=X", "Sequence ID", "A=1;Sequence ID=X");
    row("the only entry without semicolon stays", "Sequence ID=X", "Sequence ID", "Sequence ID=X");
    row("an entry before a last one without semicolon", "A=1;B=2", "A", "B=2");
    row("an entry that lacks its own semicolon goes with the next one", "A=1 B=2;C=3;", "A", "C=3;");
    row("an entry that lacks its equals sign", "A=1;B;C=3;", "B", "A=1;C=3;");
    row("a key that ends an earlier key is found there", "Sequence ID=X;ID=2;", "ID", "Sequence ID=2;");
    row("a key that begins an earlier key is found there", "Binning Factor=4;Binning=2;", "Binning",
        "Binning=2;");
    row("a key inside an earlier value is found there", "A=xB;B=2;", "B", "A=xB=2;");
    row("a key inside its own value is found at its own place", "B=xBx;C=3;", "B", "C=3;");
    row("texts outside of Latin-1", "Заметка=µ;Б=∞;", "Заметка", "Б=∞;");
    QTest::newRow("nothing from a note that is null") << QString() << "A" << QString();
}

void tst_NoteText::removing()
{
    QFETCH(QString, note);
    QFETCH(QString, key);
    QFETCH(QString, after);
    m_window.removeNoteEntry(note, key);
    QCOMPARE(note, after);
}

void tst_NoteText::replacing_data()
{
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const char *note, const char *key, const char *value,
                        const char *after) {
        QTest::newRow(name) << QString::fromUtf8(note) << QString::fromUtf8(key) << QString::fromUtf8(value)
                            << QString::fromUtf8(after);
    };
    row("the first entry", "Binning Factor=4;C=5;", "Binning Factor", "2", "Binning Factor=2;C=5;");
    row("an entry in the middle", "A=1;B=2;C=3;", "B", "longer", "A=1;B=longer;C=3;");
    row("the last entry", "A=1;B=2;", "B", "9", "A=1;B=9;");
    row("an empty value gets one", "A=;B=2;", "A", "1", "A=1;B=2;");
    row("a value becomes empty", "A=1;B=2;", "A", "", "A=;B=2;");
    row("only the first of two entries of that key", "A=1;A=2;", "A", "9", "A=9;A=2;");
    row("a value with an equals sign goes whole", "A=1=2;B=3;", "A", "9", "A=9;B=3;");
    row("a key that is not there", "A=1;", "B", "2", "A=1;");
    row("a key in other letters' case is not there", "binning factor=4;", "Binning Factor", "2",
        "binning factor=4;");
    row("nothing in an empty note", "", "A", "1", "");
    row("an entry without semicolon stays", "A=1", "A", "2", "A=1");
    row("a last entry without semicolon stays", "A=1;B=2", "B", "9", "A=1;B=2");
    row("an entry without equals sign stays", "A=1;B;", "B", "2", "A=1;B;");
    row("an entry without either sign stays", "A=1;B", "B", "2", "A=1;B");
    row("the next entry's equals sign is not the entry's own", "A;B=2;", "A", "9", "A;B=2;");
    row("an entry that lacks its own semicolon reaches to the next one", "A=1B=2;C=3;", "A", "9", "A=9;C=3;");
    row("a key that ends an earlier key is found there", "Binning Factor=4;Factor=5;", "Factor", "2",
        "Binning Factor=2;Factor=5;");
    row("a key inside an earlier value is an entry without equals sign", "A=B;B=2;", "B", "9", "A=B;B=2;");
    row("texts outside of Latin-1", "Заметка=µ;", "Заметка", "∞", "Заметка=∞;");
    QTest::newRow("nothing in a note that is null") << QString() << "A"
                                                    << "1" << QString();
}

void tst_NoteText::replacing()
{
    QFETCH(QString, note);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, after);
    m_window.replaceNoteEntry(note, key, value);
    QCOMPARE(note, after);
}

void tst_NoteText::aNoteOfOneMegabyteIsEditedAtOnce()
{
    const QString filling = QStringLiteral("Filling=0123456789;").repeated(55000);
    QVERIFY(filling.size() > 1000000);
    QString note = filling + QStringLiteral("Sequence ID=X;Binning Factor=4;");
    QElapsedTimer clock;
    clock.start();
    m_window.removeNoteEntry(note, QStringLiteral("Sequence ID"));
    m_window.replaceNoteEntry(note, QStringLiteral("Binning Factor"), QStringLiteral("2"));
    m_window.appendNoteEntry(note, QStringLiteral("Saturated"), QStringLiteral("0"));
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(note, filling + QStringLiteral("Binning Factor=2;Saturated=0;"));
}

QTEST_MAIN(tst_NoteText)
#include "tst_NoteText.moc"
