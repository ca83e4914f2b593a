// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"

#include <QTest>

namespace {

/// A text as UTF-16 units, so that a failure shows what differs.
QString spelled(const QString &text)
{
    if (text.isNull())
        return "null";
    QString out("'");
    for (QChar c : text)
        out += c.unicode() > 0x20 && c.unicode() < 0x7f
                   ? QString(c)
                   : QString("<%1>").arg(uint(c.unicode()), 4, 16, QChar('0'));
    return out + "'";
}

QString nameOf(const CPLSection *section)
{
    QString name("not set");
    section->getSectionName(&name, false);
    return name;
}

} // namespace

class tst_ClickInfoSyntax : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesWhatAPersonReads();
    void escapes_data();
    void escapes();
    void nullAndEmptyNamesDiffer();
    void readsWhatPeopleWrite_data();
    void readsWhatPeopleWrite();
    void brokenLines_data();
    void brokenLines();
    void brokenTextLeavesAnEmptyRecord();
};

void tst_ClickInfoSyntax::writesWhatAPersonReads()
{
    CPLClickInfo record;
    auto *click = new CPLSection;
    click->setSectionKey("ClickNumber");
    click->setSectionName("ABC20240131093000");
    click->addKeyValue("Sequence ID", "ABC20240131093000_SEQ");
    record.addSection(click);
    auto *image = new CPLSection;
    image->setSectionKey("luminescent image");
    image->addKeyValue("Formula", "A = B * k [counts]");
    image->addKeyValue("Comment", QString::fromUtf8("Mäuse: 3 × 5\nsecond line "));
    image->addKeyValue("a=b", "");
    record.addSection(image);
    QCOMPARE(record.toText(), QByteArray("[ClickNumber]: ABC20240131093000\n"
                                         "Sequence ID = ABC20240131093000_SEQ\n"
                                         "\n"
                                         "[luminescent image]\n"
                                         "Formula = A = B * k [counts]\n"
                                         "Comment = M\xc3\xa4use: 3 \xc3\x97 5\\nsecond line\\s\n"
                                         "a\\=b =\n"));
    QCOMPARE(CPLClickInfo().toText(), QByteArray());
}

void tst_ClickInfoSyntax::escapes_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QString("");
    QTest::newRow("the two letters that stand for null") << "\\N";
    QTest::newRow("one blank") << " ";
    QTest::newRow("two blanks") << "  ";
    QTest::newRow("blanks at both ends") << "  a b  ";
    QTest::newRow("tabs") << "\ta\tb\t";
    QTest::newRow("line breaks of every kind") << "\na\r\nb\rc\n";
    QTest::newRow("equals signs") << "=a==b=";
    QTest::newRow("brackets") << "[a]]b[";
    QTest::newRow("like a section with a name") << "[a]: b";
    QTest::newRow("like a comment") << "# a";
    QTest::newRow("colons") << ": a:";
    QTest::newRow("backslashes") << "\\\\a\\";
    QTest::newRow("a text that looks like an escape") << "\\u0041\\n";
    QTest::newRow("NUL") << QString("a") + QChar(0) + "b";
    QTest::newRow("controls") << QString("\x01\x1f\x7f") + QChar(0x85) + QChar(0x9f);
    QTest::newRow("byte order marks") << QString(QChar(0xfeff)) + "a" + QChar(0xfeff) + QChar(0xfffe);
    QTest::newRow("line separators") << QString(QChar(0x2028)) + QChar(0x2029);
    QTest::newRow("blanks other than the space")
        << QString(QChar(0xa0)) + QChar(0x3000) + "a" + QChar(0x2003);
    QTest::newRow("direction marks") << QString(QChar(0x202e)) + "abc" + QChar(0x200f);
    QTest::newRow("a lone high surrogate") << QString("a") + QChar(0xd800) + "b";
    QTest::newRow("a lone low surrogate") << QString("a") + QChar(0xdfff) + "b";
    QTest::newRow("surrogates in the wrong order") << QString(QChar(0xdc00)) + QChar(0xd800);
    QTest::newRow("a high surrogate before a pair") << QString(QChar(0xd83d)) + QString::fromUtf8("🐭");
    QTest::newRow("letters outside the basic plane") << QString::fromUtf8("🐭𝛼");
    QTest::newRow("noncharacters") << QString(QChar(0xffff)) + QChar(0xfdd0) + QChar(0xd83f) + QChar(0xdffe);
    QTest::newRow("combining marks keep their form") << QString::fromUtf8("a\xcc\x88 \xc3\xa4");
}

void tst_ClickInfoSyntax::escapes()
{
    QFETCH(QString, text);
    CPLClickInfo record;
    auto *section = new CPLSection;
    section->setSectionKey(text);
    section->setSectionName(text);
    section->addKeyValue(text, text);
    section->addKeyValue("after", "");
    record.addSection(section);
    const QByteArray bytes = record.toText();
    QCOMPARE(bytes.count('\n'), 3);

    CPLClickInfo back;
    QString error;
    QVERIFY2(back.fromText(bytes, &error) == ESTATUS_SUCCESS, qPrintable(error));
    int count = 0;
    back.getSectionCount(&count);
    QCOMPARE(count, 1);
    const CPLSection *read = back.sectionAt(0);
    QCOMPARE(spelled(read->getSectionKey()), spelled(text));
    QCOMPARE(spelled(nameOf(read)), spelled(text));
    QStringList keys;
    QStringList values;
    read->getKeyList(&keys);
    read->getValueList(&values);
    QCOMPARE(keys.size(), 2);
    QCOMPARE(spelled(keys[0]), spelled(text));
    QCOMPARE(spelled(values[0]), spelled(text));
    QCOMPARE(spelled(keys[1]), spelled("after"));
    QCOMPARE(spelled(values[1]), spelled(""));
}

void tst_ClickInfoSyntax::nullAndEmptyNamesDiffer()
{
    CPLClickInfo record;
    for (int i = 0; i < 2; ++i) {
        auto *section = new CPLSection;
        section->setSectionKey("key");
        if (i == 1)
            section->setSectionName("");
        record.addSection(section);
    }
    QCOMPARE(record.toText(), QByteArray("[key]\n\n[key]:\n"));
    CPLClickInfo back;
    QCOMPARE(back.fromText(record.toText(), nullptr), ESTATUS_SUCCESS);
    QVERIFY(nameOf(back.sectionAt(0)).isNull());
    QVERIFY(!nameOf(back.sectionAt(1)).isNull());
    QCOMPARE(nameOf(back.sectionAt(1)), QString(""));
}

void tst_ClickInfoSyntax::readsWhatPeopleWrite_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("line feeds") << QByteArray("[s]: name\nkey = value\n");
    QTest::newRow("carriage returns before the line feeds") << QByteArray("[s]: name\r\nkey = value\r\n");
    QTest::newRow("no line break at the end") << QByteArray("[s]: name\nkey = value");
    QTest::newRow("a byte order mark in front") << QByteArray("\xef\xbb\xbf[s]: name\nkey = value\n");
    QTest::newRow("no blanks around the marks") << QByteArray("[s]:name\nkey=value\n");
    QTest::newRow("blanks everywhere") << QByteArray("  [ s ] :\tname  \n\tkey \t=  value \t\n");
    QTest::newRow("comments and empty lines")
        << QByteArray("# about\n\n[s]: name\n  # more\n \t\nkey = value\n\n");
    QTest::newRow("codes that were not needed") << QByteArray("[s]: n\\u0061me\nk\\u0065y = va\\u006Cue\n");
}

void tst_ClickInfoSyntax::readsWhatPeopleWrite()
{
    QFETCH(QByteArray, bytes);
    CPLClickInfo record;
    QString error;
    QVERIFY2(record.fromText(bytes, &error) == ESTATUS_SUCCESS, qPrintable(error));
    int count = 0;
    record.getSectionCount(&count);
    QCOMPARE(count, 1);
    QVERIFY(record["s"]);
    QCOMPARE(nameOf(record["s"]), QString("name"));
    QCOMPARE(record["s"]->count(), 1);
    QString value;
    QCOMPARE(record["s"]->getValue("key", &value), ESTATUS_SUCCESS);
    QCOMPARE(value, QString("value"));
}

void tst_ClickInfoSyntax::brokenLines_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a pair before the first section")
        << QByteArray("a = b\n") << 1 << "before the first section";
    QTest::newRow("a line without an equals sign")
        << QByteArray("[s]\na = b\nnonsense\n") << 3 << "key = value";
    QTest::newRow("comments and empty lines are counted")
        << QByteArray("# one\n\n[s]\n\n# five\nnonsense\n") << 6 << "key = value";
    QTest::newRow("carriage returns do not change the count")
        << QByteArray("# one\r\n\r\n[s]\r\nnonsense\r\n") << 4 << "key = value";
    QTest::newRow("the last line without a line break") << QByteArray("[s]\na = b\nx") << 3 << "key = value";
    QTest::newRow("a section without its closing bracket") << QByteArray("[s]\n[t\n") << 2 << "\"]\"";
    QTest::newRow("a closing bracket that is escaped") << QByteArray("[s\\]\n") << 1 << "\"]\"";
    QTest::newRow("text after a section") << QByteArray("[s] name\n") << 1 << "may follow";
    QTest::newRow("an escape that does not exist") << QByteArray("[s]\na = \\q\n") << 2 << "\\q";
    QTest::newRow("null inside a text") << QByteArray("[s]\na = x\\N\n") << 2 << "\\N";
    QTest::newRow("a code of three digits") << QByteArray("[s]\na = \\u123\n") << 2 << "hexadecimal";
    QTest::newRow("a code with a sign") << QByteArray("[s]\na = \\u+123\n") << 2 << "hexadecimal";
    QTest::newRow("a code of letters that are no digits")
        << QByteArray("[s]\na = \\u12g4\n") << 2 << "hexadecimal";
    QTest::newRow("a backslash at the end") << QByteArray("[s]\na = b\\\n") << 2 << "middle of an escape";
    QTest::newRow("an equals sign that is escaped only") << QByteArray("[s]\na\\=b\n") << 2 << "key = value";
    QTest::newRow("a carriage return in the middle")
        << QByteArray("[s]\na = b\rc\n") << 2 << "control character";
    QTest::newRow("NUL") << QByteArray("[s]\na = b\0c\n", 11) << 2 << "control character";
    QTest::newRow("an escape character of a terminal")
        << QByteArray("[s]\na = \x1b[0m\n") << 2 << "control character";
    QTest::newRow("a byte that is not UTF-8") << QByteArray("[s]\na = \xff\n") << 2 << "UTF-8";
    QTest::newRow("Latin-1") << QByteArray("[s]\nok = ok\na = M\xe4use\n") << 3 << "UTF-8";
    QTest::newRow("a cut UTF-8 letter at the end") << QByteArray("[s]\na = \xf0\x9f\x90") << 2 << "UTF-8";
    QTest::newRow("an overlong UTF-8 letter") << QByteArray("[s]\na = \xc0\xaf\n") << 2 << "UTF-8";
    QTest::newRow("a surrogate in UTF-8") << QByteArray("[s]\na = \xed\xa0\x80\n") << 2 << "UTF-8";
    QTest::newRow("bytes of an image") << QByteArray("II*\0\x08\0\0\0", 8) << 1 << "";
}

void tst_ClickInfoSyntax::brokenLines()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, line);
    QFETCH(QString, reason);
    CPLClickInfo record;
    QString error;
    QCOMPARE(record.fromText(bytes, &error), ESTATUS_BAD_SYNTAX);
    QVERIFY2(error.startsWith(QString("line %1: ").arg(line)), qPrintable(error));
    QVERIFY2(error.contains(reason), qPrintable(error));
    int count = -1;
    record.getSectionCount(&count);
    QCOMPARE(count, 0);
}

void tst_ClickInfoSyntax::brokenTextLeavesAnEmptyRecord()
{
    CPLClickInfo record;
    QCOMPARE(record.fromText("[s]\na = b\n", nullptr), ESTATUS_SUCCESS);
    QVERIFY(record["s"]);
    QCOMPARE(record.fromText("[t]\nbroken\n", nullptr), ESTATUS_BAD_SYNTAX);
    QVERIFY(!record["s"]);
    QVERIFY(!record["t"]);
}

QTEST_GUILESS_MAIN(tst_ClickInfoSyntax)
#include "tst_ClickInfoSyntax.moc"
