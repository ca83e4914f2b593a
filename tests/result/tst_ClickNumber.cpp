// SPDX-License-Identifier: MIT
#include "result/ClickNumber.h"

#include <climits>
#include <QtTest>
#include <set>

namespace {

const QString STAMP = QStringLiteral("20200101120000");

/// The letter suffixes of 1 to 103, all that differ, written out without the tool's rule: one letter behind
/// no, one, two or three "Z", each row closed by the next "Z".
QStringList suffixes()
{
    QStringList all;
    for (const QString &start : {QString(), QStringLiteral("Z"), QStringLiteral("ZZ"), QStringLiteral("ZZZ")})
        for (char letter = 'A'; letter <= 'Z'; ++letter)
            all << start + QLatin1Char(letter);
    all.removeLast(); // four "Z" are never made
    return all;
}

/// The suffixes from one to another, both included.
QStringList suffixes(const QString &first, const QString &last)
{
    const QStringList all = suffixes();
    return all.mid(all.indexOf(first), all.indexOf(last) - all.indexOf(first) + 1);
}

/// The click number of a result when these are taken.
QString numberFor(const QString &clickNumber, const QStringList &taken)
{
    return clicknumber::forResult(clickNumber,
                                  [&taken](const QString &name) { return taken.contains(name); });
}

QStringList clicks(const QStringList &letters)
{
    QStringList names;
    for (const QString &letter : letters)
        names << QStringLiteral("ZB_") + letter + STAMP;
    return names;
}

} // namespace

/// Click numbers taken apart, and the click number of a new result.
class tst_ClickNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stem_data();
    void stem();
    void initials_data();
    void initials();
    void valueOfASuffix_data();
    void valueOfASuffix();
    void charactersWithoutALatin1CodeHaveSomeValue();
    void suffixOfAValue_data();
    void suffixOfAValue();
    void everyValueUpTo103HasASuffixOfItsOwn();
    void resultNumber_data();
    void resultNumber();
    void lettersOutsideOfLatin1StayReadable();
    void theSearchEndsWhenEverySuffixIsTaken_data();
    void theSearchEndsWhenEverySuffixIsTaken();
};

void tst_ClickNumber::stem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stem");
    const auto row = [](const char *title, const char *name, const char *stem) {
        QTest::newRow(title) << QString::fromUtf8(name) << QString::fromUtf8(stem);
    };
    row("a sequence's name is its own stem", "ZB20031215152405_SEQ", "ZB20031215152405_SEQ");
    row("what follows _SEQ goes", "ZB20031215152405_SEQ_2", "ZB20031215152405_SEQ");
    row("the first of two _SEQ ends it", "ZB_SEQ2003_SEQ", "ZB_SEQ");
    row("_SEQ alone", "_SEQ", "_SEQ");
    row("letters after the stamp go", "ZB20031215152405abc", "ZB20031215152405");
    row("a number that ends in a digit", "ZB20031215152405", "ZB20031215152405");
    row("a result's number", "ZB_M20031215152405", "ZB_M20031215152405");
    row("the last digit counts, not the first", "a1b2c", "a1b2");
    row("letters only", "abc", "");
    row("nothing", "", "");
    row("one digit", "7", "7");
    row("_seq in small letters is no mark", "ZB2003_seq", "ZB2003");
    row("half of the mark is none", "ZB2003_SE", "ZB2003");
    row("a mark before the digits ends it there", "ZB_SEQUENCE2003", "ZB_SEQ");
    row("blanks in front belong to it", " ZB2003 ", " ZB2003");
    row("digits of other scripts are no digits", "ZB٣٤", "");
    row("digits of other scripts behind the stamp go", "ZB2003٣", "ZB2003");
    row("letters of other scripts", "Жук2003ж", "Жук2003");
}

void tst_ClickNumber::stem()
{
    QFETCH(QString, name);
    QTEST(clicknumber::stem(name), "stem");
}

void tst_ClickNumber::initials_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("initials");
    const auto row = [](const char *title, const char *name, const char *initials) {
        QTest::newRow(title) << QString::fromUtf8(name) << QString::fromUtf8(initials);
    };
    row("before the stamp", "ZB20031215152405", "ZB");
    row("before the result's letters", "ZB_M20031215152405", "ZB");
    row("none before an underscore", "_X1", "");
    row("none before a digit", "1AB", "");
    row("the whole name without digit and underscore", "abc", "abc");
    row("of nothing", "", "");
    row("an underscore alone", "_", "");
    row("zero ends them", "A0", "A");
    row("nine ends them", "A9", "A");
    row("blanks and hyphens belong to them", "Z B-C1", "Z B-C");
    row("letters of other scripts", "Жук2003", "Жук");
    row("digits of other scripts belong to them", "ZB٣1", "ZB٣");
}

void tst_ClickNumber::initials()
{
    QFETCH(QString, name);
    QTEST(clicknumber::initials(name), "initials");
}

void tst_ClickNumber::valueOfASuffix_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("value");
    const auto row = [](const char *title, const char *name, int value) {
        QTest::newRow(title) << QString::fromUtf8(name) << value;
    };
    row("A", "A", 1);
    row("M", "M", 13);
    row("Z", "Z", 26);
    row("the sum of ZA", "ZA", 27);
    row("AZ is no other than ZA", "AZ", 27);
    row("ZZ", "ZZ", 52);
    row("ZZZ", "ZZZ", 78);
    row("ZZZA", "ZZZA", 79);
    row("nothing", "", 0);
    row("a name that ends in a digit", "ZB20031215152405", 0);
    row("a sequence's name", "ZB2003_SEQ", 0);
    row("the letters behind a stamp", "ZB2003C", 3);
    row("a small letter", "a", 1);
    row("small letters behind a stamp", "ZB2003abc", 6);
    row("small and capital letters", "zZ", 52);
    row("an underscore has its code", "_", 31);
    row("a hyphen counts negative", "-", -19);
    row("a blank counts negative", "A ", -31);
    row("a digit counts negative", "X_SEQ7", -9);
    row("an underscore and a digit", "X_SEQ_2", 17);
    row("a small letter with an accent has the code of the capital one", "é", 137);
    row("a capital letter with an accent", "É", 137);
}

void tst_ClickNumber::valueOfASuffix()
{
    QFETCH(QString, name);
    QTEST(clicknumber::suffixValue(name), "value");
}

void tst_ClickNumber::charactersWithoutALatin1CodeHaveSomeValue()
{
    // Which one is nobody's concern; it must be the same each time and a sum as well.
    const int one = clicknumber::suffixValue(QStringLiteral("Ж"));
    QCOMPARE(clicknumber::suffixValue(QStringLiteral("Ж")), one);
    QCOMPARE(clicknumber::suffixValue(QStringLiteral("ЖЖ")), 2 * one);
    QCOMPARE(clicknumber::suffixValue(QStringLiteral("ЖB")), one + 2);
}

void tst_ClickNumber::suffixOfAValue_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("suffix");
    const auto row = [](int n, const char *suffix) {
        QTest::addRow("%d", n) << n << QString::fromLatin1(suffix);
    };
    row(0, "");
    row(-1, "");
    row(-26, "");
    row(INT_MIN, "");
    row(1, "A");
    row(2, "B");
    row(13, "M");
    row(25, "Y");
    row(26, "Z");
    row(27, "ZA");
    row(51, "ZY");
    row(52, "ZZ");
    row(53, "ZZA");
    row(77, "ZZY");
    row(78, "ZZZ");
    row(79, "ZZZA");
    row(103, "ZZZY");
    row(104, "ZZZ");
    row(105, "ZZZA");
    row(130, "ZZZ");
    row(131, "ZZZA");
    row(1000000, "ZZZN");
    row(INT_MAX, "ZZZW");
}

void tst_ClickNumber::suffixOfAValue()
{
    QFETCH(int, n);
    QTEST(clicknumber::suffixOfValue(n), "suffix");
}

void tst_ClickNumber::everyValueUpTo103HasASuffixOfItsOwn()
{
    const QStringList expected = suffixes();
    QCOMPARE(expected.size(), 103);
    QCOMPARE(std::set<QString>(expected.begin(), expected.end()).size(), std::size_t(103));
    for (int n = 1; n <= 103; ++n) {
        QCOMPARE(clicknumber::suffixOfValue(n), expected.at(n - 1));
        QCOMPARE(clicknumber::suffixValue(expected.at(n - 1)), n);
    }
}

void tst_ClickNumber::resultNumber_data()
{
    QTest::addColumn<QString>("clickNumber");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *title, const char *clickNumber, const QStringList &taken,
                        const char *result) {
        QTest::newRow(title) << QString::fromUtf8(clickNumber) << taken << QString::fromUtf8(result);
    };
    row("of an acquisition", "ZB20200101120000", {}, "ZB_M20200101120000");
    row("the operand itself is in nobody's way", "ZB20200101120000", {"ZB20200101120000"},
        "ZB_M20200101120000");
    row("the first letter is taken", "ZB20200101120000", clicks({"M"}), "ZB_N20200101120000");
    row("a later letter is taken", "ZB20200101120000", clicks({"N"}), "ZB_M20200101120000");
    row("the first gap is used", "ZB20200101120000", clicks({"M", "N", "P"}), "ZB_O20200101120000");
    row("earlier letters are never used", "ZB20200101120000", clicks(suffixes("M", "Z")),
        "ZB_ZA20200101120000");
    row("the last of all suffixes", "ZB20200101120000", clicks(suffixes("M", "ZZZX")),
        "ZB_ZZZY20200101120000");
    row("another stamp's result is in nobody's way", "ZB20200101120000", {"ZB_M20200101120001"},
        "ZB_M20200101120000");
    row("other initials' result is in nobody's way", "ZB20200101120000", {"ZC_M20200101120000"},
        "ZB_M20200101120000");
    row("of a result the next letter", "ZB_M20200101120000", {}, "ZB_N20200101120000");
    row("of a result whose next letter is taken", "ZB_M20200101120000", clicks({"M", "N"}),
        "ZB_O20200101120000");
    row("of a result Z", "ZB_Z20200101120000", {}, "ZB_ZA20200101120000");
    row("of a result ZZ", "ZB_ZZ20200101120000", {}, "ZB_ZZA20200101120000");
    row("of a result ZZZ", "ZB_ZZZ20200101120000", {}, "ZB_ZZZA20200101120000");
    row("of a result ZZZA", "ZB_ZZZA20200101120000", {}, "ZB_ZZZB20200101120000");
    row("of a result AZ, whose letters are a sum", "ZB_AZ20200101120000", {}, "ZB_ZB20200101120000");
    row("of a result with a small letter", "ZB_m20200101120000", {}, "ZB_N20200101120000");
    row("of a result with an accented letter", "ZB_é20200101120000", {}, "ZB_ZZZH20200101120000");
    row("of a result with a hyphen that takes the letters below A", "ZB_M-20200101120000", {},
        "ZB_20200101120000");
    row("of a result without letters", "ZB_20200101120000", {}, "ZB_A20200101120000");
    row("of a result with two underscores", "ZB__M20200101120000", {}, "ZB_A_M20200101120000");
    row("of a result with letters twice", "ZB_Z_X20200101120000", {}, "ZB_ZA_X20200101120000");
    row("blanks at both ends and letters behind go", " ZB20200101120000xy ", {}, "ZB_M20200101120000");
    row("other white space goes as well", "\t\n ZB20200101120000\r\n", {}, "ZB_M20200101120000");
    row("small initials stay small", "zb20200101120000", {}, "zb_M20200101120000");
    row("a sequence's name", "ZB20031215152405_SEQ", {}, "ZB_M20031215152405_SEQ");
    row("a result's sequence name", "ZB_M20031215152405_SEQ", {}, "ZB_N20031215152405_SEQ");
    row("without initials", "20200101120000", {}, "_M20200101120000");
    row("a result without initials", "_M20200101120000", {}, "_N20200101120000");
    row("letters only", "ZB", {}, "_M");
    row("nothing", "", {}, "_M");
    row("blanks", "  ", {}, "_M");
    row("letters only, twice", "ZB", {"_M"}, "_N");
    row("_SEQ alone is read as the letters SEQ", "_SEQ", {}, "_ZP");
    row("initials and _SEQ alone", "ZB_SEQ", {}, "ZB_ZP");
    row("initials of another script", "ЖЖ20200101120000", {}, "ЖЖ_M20200101120000");
    row("beyond ZZZA .. ZZZY the suffix ZZZ comes again", "ZB_ZZZ20200101120000",
        clicks(suffixes("ZZZA", "ZZZY")), "ZB_ZZZ20200101120000");
    row("a search that starts in a later round goes on in the next one", "ZB_é20200101120000",
        clicks(suffixes("ZZZB", "ZZZY")), "ZB_ZZZ20200101120000");
}

void tst_ClickNumber::resultNumber()
{
    QFETCH(QString, clickNumber);
    QFETCH(QStringList, taken);
    QFETCH(QString, result);
    QCOMPARE(numberFor(clickNumber, taken), result);
}

void tst_ClickNumber::lettersOutsideOfLatin1StayReadable()
{
    const QString made = numberFor(QStringLiteral("ZB_Ж20200101120000"), {});
    QVERIFY2(made.startsWith(QStringLiteral("ZB_")) && made.endsWith(STAMP), qPrintable(made));
    const QString letters = made.mid(3, made.size() - 3 - STAMP.size());
    QVERIFY2(letters.isEmpty() || suffixes().contains(letters), qPrintable(made));
}

void tst_ClickNumber::theSearchEndsWhenEverySuffixIsTaken_data()
{
    QTest::addColumn<QString>("clickNumber");
    QTest::addColumn<QStringList>("taken");
    QTest::newRow("from M on") << QStringLiteral("ZB20200101120000") << suffixes("M", "ZZZY");
    QTest::newRow("from N on, of the result M")
        << QStringLiteral("ZB_M20200101120000") << suffixes("M", "ZZZY");
    QTest::newRow("from ZZZA on, the operand ZZZ among them")
        << QStringLiteral("ZB_ZZZ20200101120000") << suffixes("ZZZ", "ZZZY");
    QTest::newRow("from a later round on") << QStringLiteral("ZB_é20200101120000") << suffixes("ZZZ", "ZZZY");
}

void tst_ClickNumber::theSearchEndsWhenEverySuffixIsTaken()
{
    QFETCH(QString, clickNumber);
    QFETCH(QStringList, taken);
    const QStringList names = clicks(taken);
    QStringList asked;
    const QString none = clicknumber::forResult(clickNumber, [&](const QString &name) {
        asked << name;
        return names.contains(name);
    });
    QVERIFY2(none.isNull(), qPrintable(none));
    QCOMPARE(asked.removeDuplicates(), 0);
    QVERIFY2(asked.size() <= names.size(), "nothing is asked for but the suffixes that there are");
}

QTEST_APPLESS_MAIN(tst_ClickNumber)
#include "tst_ClickNumber.moc"
