// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"

#include <QTest>

class tst_FileNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void safety_data();
    void safety();
};

void tst_FileNames::safety_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("safe");
    QTest::newRow("a click number is safe") << "ABC20240131093000" << true;
    QTest::newRow("a file name with a suffix is safe") << "luminescent.tif" << true;
    QTest::newRow("a blank inside is safe") << "my image.tif" << true;
    QTest::newRow("letters of any script are safe") << QString::fromUtf8("Mäuse_测试_🐭") << true;
    QTest::newRow("a hidden file is safe") << ".hidden" << true;
    QTest::newRow("255 bytes are safe") << QString(255, 'x') << true;
    QTest::newRow("256 bytes fit no file system") << QString(256, 'x') << false;
    QTest::newRow("255 letters of two bytes fit no file system") << QString(255, QChar(0xe4)) << false;
    QTest::newRow("a null name is refused") << QString() << false;
    QTest::newRow("an empty name is refused") << QString("") << false;
    QTest::newRow("the folder itself is refused") << "." << false;
    QTest::newRow("the parent folder is refused") << ".." << false;
    QTest::newRow("a way up is refused") << "../other" << false;
    QTest::newRow("a way up by backslash is refused") << "..\\other" << false;
    QTest::newRow("two dots inside are refused") << "a..b" << false;
    QTest::newRow("an absolute path is refused") << "/etc/passwd" << false;
    QTest::newRow("a separator inside is refused") << "a/b" << false;
    QTest::newRow("a separator at the end is refused") << "a/" << false;
    QTest::newRow("a backslash is refused") << "a\\b" << false;
    QTest::newRow("a drive is refused") << "C:" << false;
    QTest::newRow("a drive with a name is refused") << "C:name" << false;
    QTest::newRow("a leading blank is refused") << " a" << false;
    QTest::newRow("a trailing blank is refused") << "a " << false;
    QTest::newRow("a trailing no-break space is refused") << QString("a") + QChar(0xa0) << false;
    QTest::newRow("only a blank is refused") << " " << false;
    QTest::newRow("NUL inside is refused") << QString("a") + QChar(0) + QString("b") << false;
    QTest::newRow("NUL at the end is refused") << QString("a") + QChar(0) << false;
    QTest::newRow("a line break is refused") << "a\nb" << false;
    QTest::newRow("a tab is refused") << "a\tb" << false;
    QTest::newRow("DEL is refused") << QString("a") + QChar(0x7f) << false;
    QTest::newRow("a C1 control is refused") << QString("a") + QChar(0x85) + QString("b") << false;
    QTest::newRow("a line separator is refused") << QString("a") + QChar(0x2028) + QString("b") << false;
    QTest::newRow("a lone high surrogate is refused") << QString("a") + QChar(0xd83d) << false;
    QTest::newRow("a lone low surrogate is refused") << QString(QChar(0xdc2d)) + QString("a") << false;
}

void tst_FileNames::safety()
{
    QFETCH(QString, name);
    QFETCH(bool, safe);
    QCOMPARE(CVXUtilityFns::isSafeFileName(name), safe);
}

QTEST_GUILESS_MAIN(tst_FileNames)
#include "tst_FileNames.moc"
