// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/host/vxutils/UnprivilegedUser.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

class tst_Preference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void versionAndName();
    void kIsOneUntilOneIsStored();
    void kIsStoredLetterForLetter_data();
    void kIsStoredLetterForLetter();
    void kKnowsItsSequence();
    void everythingLiesInTheProfileFolder();
    void programDataPathIsMadeOnFirstUse();
    void anotherProgramDataPathIsRemembered();
    void refusedProgramDataPaths_data();
    void refusedProgramDataPaths();
    void aDefaultPathOutsideLatin1IsTold();
    void aReadOnlyFolderIsRefused();
    void marksASequenceAsLoading();
    void iconHasEverySize();

private:
    std::unique_ptr<QTemporaryDir> m_profile;
};

void tst_Preference::init()
{
    m_profile = std::make_unique<QTemporaryDir>();
    qputenv("VEXA_PROFILE_DIR", QFile::encodeName(m_profile->path()));
}

void tst_Preference::versionAndName()
{
    QCOMPARE(CVXPreference::getAppVersion(), QString("1.1.0"));
    QCOMPARE(CVXUtilityFns::getAppName(), QString("Vexa"));
}

void tst_Preference::kIsOneUntilOneIsStored()
{
    QCOMPARE(CVXUtilityFns::getkValue(), QString("1.00"));
}

void tst_Preference::kIsStoredLetterForLetter_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a number") << "1.70";
    QTest::newRow("a compact exponent") << "1.5e-7";
    QTest::newRow("a comma is not a list") << "1,5";
    QTest::newRow("blanks stay") << " 2 ";
    QTest::newRow("an empty text is a stored one") << "";
}

void tst_Preference::kIsStoredLetterForLetter()
{
    QFETCH(QString, text);
    CVXUtilityFns::setkValue(text);
    QCOMPARE(CVXUtilityFns::getkValue(), text);
}

void tst_Preference::kKnowsItsSequence()
{
    QCOMPARE(CVXUtilityFns::getkOrigin(), QString());
    CVXUtilityFns::setkValue("3");
    CVXUtilityFns::setkOrigin("AB20260102030405_SEQ");
    QCOMPARE(CVXUtilityFns::getkOrigin(), QString("AB20260102030405_SEQ"));
    QCOMPARE(CVXUtilityFns::getkValue(), QString("3"));
    // Who stores another one and says nothing of it must not leave the old one standing.
    CVXUtilityFns::setkValue("4");
    QCOMPARE(CVXUtilityFns::getkOrigin(), QString());
}

void tst_Preference::everythingLiesInTheProfileFolder()
{
    CVXUtilityFns::setkValue("3");
    QTRY_VERIFY(QFileInfo::exists(m_profile->filePath("settings.ini")));
    QCOMPARE(CVXPreference::settings()->fileName(), m_profile->filePath("settings.ini"));
}

void tst_Preference::programDataPathIsMadeOnFirstUse()
{
    QVERIFY(!QFileInfo::exists(m_profile->filePath("data")));
    QCOMPARE(CVXPreference::getProgramDataPath(), m_profile->filePath("data"));
    QVERIFY(QFileInfo(m_profile->filePath("data")).isDir());
}

void tst_Preference::anotherProgramDataPathIsRemembered()
{
    // Latin-1 has these letters.
    const QString path = m_profile->filePath(QString::fromUtf8("Übersicht/Mäuse"));
    QString why;
    QVERIFY2(CVXPreference::setProgramDataPath(path + "/", &why), qPrintable(why));
    QCOMPARE(CVXPreference::getProgramDataPath(), path);
    QVERIFY(QFileInfo(path).isDir());
}

void tst_Preference::refusedProgramDataPaths_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("letters outside Latin-1") << QString::fromUtf8("данные") << "Latin-1";
    QTest::newRow("a letter outside the basic plane") << QString::fromUtf8("🐭") << "Latin-1";
    QTest::newRow("the euro sign is not in Latin-1") << QString::fromUtf8("€") << "Latin-1";
    QTest::newRow("a file is in the way") << "settings.ini/below"
                                          << "cannot be created";
}

void tst_Preference::refusedProgramDataPaths()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    CVXUtilityFns::setkValue("1"); // makes settings.ini
    const QString before = CVXPreference::getProgramDataPath();
    QString why;
    QVERIFY(!CVXPreference::setProgramDataPath(m_profile->filePath(name), &why));
    QVERIFY2(why.contains(reason), qPrintable(why));
    QVERIFY2(why.contains(name), qPrintable(why));
    QVERIFY(!QFileInfo::exists(m_profile->filePath(name)));
    QCOMPARE(CVXPreference::getProgramDataPath(), before);

    QVERIFY(!CVXPreference::setProgramDataPath(QString(), &why));
    QVERIFY(!why.isEmpty());
    QVERIFY(!CVXPreference::setProgramDataPath(QString(), nullptr));
}

void tst_Preference::aDefaultPathOutsideLatin1IsTold()
{
    // Nobody chose it, so there is nothing to refuse; but no image could be written there.
    const QString profile = m_profile->filePath(QString::fromUtf8("мышь"));
    qputenv("VEXA_PROFILE_DIR", QFile::encodeName(profile));
    getLogObject()->clear();
    QCOMPARE(CVXPreference::getProgramDataPath(), profile + "/data");
    QCOMPARE(CVXPreference::getProgramDataPath(), profile + "/data");
    const QVector<LogEntry> entries = getLogObject()->entries();
    QCOMPARE(entries.size(), 1); // once, however often the tool asks
    QCOMPARE(entries.first().level, long(ELOG_FAILURE));
    QVERIFY2(entries.first().detail.contains(profile) && entries.first().detail.contains("Latin-1"),
             qPrintable(entries.first().detail));
    // Another folder puts it right.
    QString why;
    QVERIFY2(CVXPreference::setProgramDataPath(m_profile->filePath("results"), &why), qPrintable(why));
    QCOMPARE(CVXPreference::getProgramDataPath(), m_profile->filePath("results"));
    QCOMPARE(getLogObject()->entries().size(), 1);
}

void tst_Preference::aReadOnlyFolderIsRefused()
{
    QVERIFY(QDir().mkpath(m_profile->filePath("locked")));
    QCOMPARE(chmod(QFile::encodeName(m_profile->path()).constData(), 0755), 0);
    QCOMPARE(chmod(QFile::encodeName(m_profile->filePath("locked")).constData(), 0555), 0);
    const QString locked = m_profile->filePath("locked");
    QVERIFY(holdsForUnprivilegedUser([locked] {
        QString why;
        return !CVXPreference::setProgramDataPath(locked, &why) && why.contains("cannot be written");
    }));
    QVERIFY(holdsForUnprivilegedUser([locked] {
        QString why;
        return !CVXPreference::setProgramDataPath(locked + "/below", &why) &&
               why.contains("cannot be created");
    }));
}

void tst_Preference::marksASequenceAsLoading()
{
    // Only the address counts.
    const int places[2] = {};
    const auto *one = reinterpret_cast<const CVXSSequenceDataset *>(&places[0]);
    const auto *other = reinterpret_cast<const CVXSSequenceDataset *>(&places[1]);
    QVERIFY(!CVXPreference::isSequenceLoading(one));
    CVXPreference::setSequenceLoading(one, true);
    QVERIFY(CVXPreference::isSequenceLoading(one));
    QVERIFY(!CVXPreference::isSequenceLoading(other));
    CVXPreference::setSequenceLoading(one, false);
    QVERIFY(!CVXPreference::isSequenceLoading(one));
}

void tst_Preference::iconHasEverySize()
{
    const QIcon icon = CVXUtilityFns::appIcon();
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
        const QImage image = icon.pixmap(size, size).toImage();
        QCOMPARE(image.size(), QSize(size, size));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0); // rounded corners
        QCOMPARE(image.pixelColor(size / 2, size / 2).alpha(), 255);
    }
}

QTEST_MAIN(tst_Preference)
#include "tst_Preference.moc"
