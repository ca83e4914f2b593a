// SPDX-License-Identifier: MIT
#include "app/datasets/RecentSequences.h"

#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class tst_RecentSequences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void newestFirstWithoutRepetition();
    void keepsTen();
    void isRememberedForTheNextTime();
    void menuOffersThem();
    void ampersandsAreShown();
    void aLongPathIsShortened();
    void clears();

private:
    std::unique_ptr<QTemporaryDir> m_profile;
};

void tst_RecentSequences::init()
{
    m_profile = std::make_unique<QTemporaryDir>();
    qputenv("VEXA_PROFILE_DIR", QFile::encodeName(m_profile->path()));
}

void tst_RecentSequences::newestFirstWithoutRepetition()
{
    RecentSequences recent;
    recent.add("/data/a/");
    recent.add("/data/b");
    recent.add("/data/x/../a");
    QCOMPARE(recent.folders(), (QStringList{"/data/a", "/data/b"}));
    recent.remove("/data/a/");
    QCOMPARE(recent.folders(), QStringList{"/data/b"});
}

void tst_RecentSequences::keepsTen()
{
    RecentSequences recent;
    for (int i = 0; i < 15; ++i)
        recent.add(QString("/data/%1").arg(i));
    QCOMPARE(recent.folders().size(), 10);
    QCOMPARE(recent.folders().first(), QString("/data/14"));
    QCOMPARE(recent.folders().last(), QString("/data/5"));
}

void tst_RecentSequences::isRememberedForTheNextTime()
{
    RecentSequences().add(QString::fromUtf8("/data/Mäuse, eins"));
    QCOMPARE(RecentSequences().folders(), QStringList{QString::fromUtf8("/data/Mäuse, eins")});
}

void tst_RecentSequences::menuOffersThem()
{
    RecentSequences recent;
    QMenu menu;
    recent.attach(&menu);
    QCOMPARE(menu.actions().size(), 1);
    QVERIFY(!menu.actions().first()->isEnabled());
    recent.add("/data/a");
    recent.add("/data/b");
    Q_EMIT menu.aboutToShow();
    QSignalSpy spy(&recent, &RecentSequences::chosen);
    QCOMPARE(menu.actions().at(1)->text(), QString("/data/a"));
    menu.actions().at(1)->trigger();
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toString(), QString("/data/a"));
}

void tst_RecentSequences::ampersandsAreShown()
{
    RecentSequences recent;
    recent.add("/data/a&b");
    QMenu menu;
    recent.attach(&menu);
    QCOMPARE(menu.actions().first()->text(), QString("/data/a&&b"));
}

void tst_RecentSequences::aLongPathIsShortened()
{
    RecentSequences recent;
    const QString folder = "/data/" + QString("a-very-long-name-of-a-folder/").repeated(12) + "AB2026_SEQ";
    recent.add(folder);
    QMenu menu;
    recent.attach(&menu);
    QVERIFY2(menu.sizeHint().width() < 700, qPrintable(QString::number(menu.sizeHint().width())));
    const QAction *entry = menu.actions().first();
    QVERIFY2(entry->text().startsWith("/data/") && entry->text().endsWith("AB2026_SEQ"),
             qPrintable(entry->text()));
    QVERIFY(menu.toolTipsVisible());
    QCOMPARE(entry->toolTip(), folder);
    QSignalSpy spy(&recent, &RecentSequences::chosen);
    menu.actions().first()->trigger();
    QCOMPARE(spy.first().first().toString(), folder);
}

void tst_RecentSequences::clears()
{
    RecentSequences recent;
    recent.add("/data/a");
    QMenu menu;
    recent.attach(&menu);
    menu.actions().last()->trigger();
    QVERIFY(recent.folders().isEmpty());
    Q_EMIT menu.aboutToShow();
    QVERIFY(!menu.actions().first()->isEnabled());
}

QTEST_MAIN(tst_RecentSequences)
#include "tst_RecentSequences.moc"
