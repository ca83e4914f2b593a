// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/LogPane.h"
#include "host/vxutils/CVXSLog.h"
#include "tests/support/GuiDriver.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

void press(QWidget *widget, const char *button)
{
    QVERIFY(GuiDriver(widget).press(button));
}

} // namespace

class tst_Banner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isHiddenUntilThereIsSomethingToTell();
    void showsTheNewestAndCountsTheOthers();
    void theSameFailureIsCountedOnce();
    void dismissStartsAfresh();
    void markupIsShownAsText();
    void logIsAskedFor();
    void logPaneShowsWhatWasAndWhatComes();
    void logPaneWritesOneLineAnEntry();
};

void tst_Banner::isHiddenUntilThereIsSomethingToTell()
{
    QWidget window;
    BannerWidget banner(&window);
    window.show();
    QVERIFY(!banner.isVisible());
    QVERIFY(banner.text().isEmpty());
    banner.tell("first");
    QVERIFY(banner.isVisible());
}

void tst_Banner::showsTheNewestAndCountsTheOthers()
{
    QWidget window;
    BannerWidget banner(&window);
    window.show();
    auto *label = banner.findChild<QLabel *>("bannerText");
    auto *more = banner.findChild<QLabel *>("bannerMore");
    banner.tell("first");
    QCOMPARE(label->text(), QString("first"));
    QVERIFY(!more->isVisible());
    banner.tell("second");
    banner.tell("third");
    QCOMPARE(label->text(), QString("third"));
    QCOMPARE(banner.moreCount(), 2);
    QVERIFY(more->isVisible());
    QVERIFY2(more->text().contains("2"), qPrintable(more->text()));
}

void tst_Banner::theSameFailureIsCountedOnce()
{
    BannerWidget banner;
    banner.tell("a.txt: line 3");
    banner.tell("a.txt: line 3");
    banner.tell("The sequence could not be opened. a.txt: line 3");
    QCOMPARE(banner.moreCount(), 0);
    QCOMPARE(banner.text(), QString("The sequence could not be opened. a.txt: line 3"));
    banner.tell("a.txt: line 4");
    QCOMPARE(banner.moreCount(), 1);
}

void tst_Banner::dismissStartsAfresh()
{
    QWidget window;
    BannerWidget banner(&window);
    window.show();
    banner.tell("first");
    banner.tell("second");
    press(&banner, "bannerDismiss");
    QVERIFY(!banner.isVisible());
    QCOMPARE(banner.moreCount(), 0);
    banner.tell("third");
    QVERIFY(banner.isVisible());
    QCOMPARE(banner.moreCount(), 0);
}

void tst_Banner::markupIsShownAsText()
{
    BannerWidget banner;
    banner.tell("<b>not bold</b>");
    QCOMPARE(banner.findChild<QLabel *>("bannerText")->textFormat(), Qt::PlainText);
}

void tst_Banner::logIsAskedFor()
{
    QWidget window;
    BannerWidget banner(&window);
    window.show();
    banner.tell("first");
    QSignalSpy spy(&banner, &BannerWidget::showLogRequested);
    press(&banner, "bannerShowLog");
    QCOMPARE(spy.size(), 1);
    QVERIFY(banner.isVisible());
}

void tst_Banner::logPaneShowsWhatWasAndWhatComes()
{
    CVXSLog log;
    log.log("before", QString(), 0, "10:00:00", 1, false);
    LogPane pane(&log);
    log.log("after", "file.txt", 5, "10:00:01", 3, false);
    const QStringList lines = pane.text().split('\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].contains("10:00:00") && lines[0].contains("before"), qPrintable(lines[0]));
    QVERIFY2(lines[1].contains("Failure") && lines[1].contains("after") && lines[1].contains("file.txt") &&
                 lines[1].contains("status 5"),
             qPrintable(lines[1]));
}

void tst_Banner::logPaneWritesOneLineAnEntry()
{
    CVXSLog log;
    LogPane pane(&log);
    log.log("two\nlines", "<i>and</i>\nmarkup", 0, QString(), 2, false);
    QCOMPARE(pane.text().count('\n'), 0);
    QVERIFY(pane.text().contains("<i>and</i>"));
}

QTEST_MAIN(tst_Banner)
#include "tst_Banner.moc"
