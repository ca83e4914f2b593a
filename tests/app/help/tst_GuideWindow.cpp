// SPDX-License-Identifier: MIT
#include "app/help/GuideText.h"
#include "app/help/GuideWindow.h"
#include "tests/support/Files.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QRegularExpression>
#include <QTextBrowser>

namespace {

QString htmlOf(const QString &page)
{
    return guide::toHtml(readFile(guide::folder() + "/" + page + ".md"));
}

/// What stands in a pattern's first bracket, everywhere in the text.
QStringList allOf(const QString &text, const QString &pattern)
{
    QStringList found;
    for (auto it = QRegularExpression(pattern).globalMatch(text); it.hasNext();)
        found += it.next().captured(1);
    return found;
}

} // namespace

/// The user's guide in the program.
class tst_GuideWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePagesAreThoseOfTheRepository_data();
    void thePagesAreThoseOfTheRepository();
    void everyPageIsShownWithItsPictures_data();
    void everyPageIsShownWithItsPictures();
    void everyLinkLeadsSomewhere_data();
    void everyLinkLeadsSomewhere();
    void aLinkOpensTheOtherPageAndBackReturns();
    void markdownBecomesHtml_data();
    void markdownBecomesHtml();
    void theHelpMenuShowsIt_data();
    void theHelpMenuShowsIt();
    void aPageThatIsNotThereIsTold();
};

void tst_GuideWindow::thePagesAreThoseOfTheRepository_data()
{
    QTest::addColumn<QString>("page");
    QTest::newRow("image-math") << "image-math";
    QTest::newRow("workspace") << "workspace";
}

void tst_GuideWindow::thePagesAreThoseOfTheRepository()
{
    QFETCH(QString, page);
    QCOMPARE(readFile(guide::folder() + "/" + page + ".md"),
             readFile(VEXA_SOURCE_DIR "/docs/" + page + ".md"));
}

void tst_GuideWindow::everyPageIsShownWithItsPictures_data()
{
    thePagesAreThoseOfTheRepository_data();
}

void tst_GuideWindow::everyPageIsShownWithItsPictures()
{
    QFETCH(QString, page);
    WorkspaceFixture fixture;
    GuideWindow window(fixture.window.get());
    QVERIFY(window.showPage(page));
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto *browser = window.findChild<QTextBrowser *>("guideBrowser");
    const QString text = browser->toPlainText();
    const QString title =
        allOf(QString::fromUtf8(readFile(guide::folder() + "/" + page + ".md")), "(?m)^# (.*)$").value(0);
    QVERIFY2(!title.isEmpty() && text.contains(title), qPrintable(text.left(200)));
    QVERIFY2(!text.contains("**") && !text.contains("|---"), "no Markdown is left");
    const QStringList pictures = allOf(htmlOf(page), "<img src=\"([^\"]*)\"");
    QVERIFY(pictures.size() >= 2);
    for (const QString &picture : pictures) {
        const QImage image = browser->loadResource(QTextDocument::ImageResource, picture).value<QImage>();
        QVERIFY2(!image.isNull() && image.width() <= browser->width(), qPrintable(picture));
    }
}

void tst_GuideWindow::everyLinkLeadsSomewhere_data()
{
    thePagesAreThoseOfTheRepository_data();
}

void tst_GuideWindow::everyLinkLeadsSomewhere()
{
    QFETCH(QString, page);
    const QStringList links = allOf(htmlOf(page), "href=\"([^\"]*)\"");
    QVERIFY(!links.isEmpty());
    for (const QString &link : links) {
        const QString file = link.section('#', 0, 0);
        const QString anchor = link.section('#', 1);
        QVERIFY2(file.isEmpty() || file.endsWith(".html"), qPrintable(link));
        const QString target = htmlOf(file.isEmpty() ? page : file.section('.', 0, 0));
        QVERIFY2(target.contains("<h1>"), qPrintable(link));
        QVERIFY2(anchor.isEmpty() || target.contains("<a name=\"" + anchor + "\">"), qPrintable(link));
    }
}

void tst_GuideWindow::aLinkOpensTheOtherPageAndBackReturns()
{
    WorkspaceFixture fixture;
    GuideWindow window(fixture.window.get());
    QVERIFY(window.showPage("image-math"));
    auto *browser = window.findChild<QTextBrowser *>("guideBrowser");
    const QString first = browser->toPlainText();
    browser->setSource(QUrl("workspace.html#where-results-lie"));
    QVERIFY(browser->toPlainText().contains("Where results lie"));
    QVERIFY(browser->toPlainText() != first);
    browser->backward();
    QCOMPARE(browser->toPlainText(), first);
}

void tst_GuideWindow::markdownBecomesHtml_data()
{
    QTest::addColumn<QByteArray>("markdown");
    QTest::addColumn<QString>("html");
    const auto row = [](const char *name, const char *markdown, const char *html) {
        QTest::newRow(name) << QByteArray(markdown) << QString::fromUtf8(html);
    };
    row("a heading can be linked to", "## Where results lie\n",
        "<h2><a name=\"where-results-lie\"></a>Where results lie</h2>");
    row("punctuation is not in the name", "## How this was made, and Check\n",
        "name=\"how-this-was-made-and-check\"");
    row("markup in a heading", "### `k` from *ROIs*\n", "name=\"k-from-rois\"");
    row("a link to another page", "[there](workspace.md#units)\n", "href=\"workspace.html#units\"");
    row("a link to another site stays", "[there](https://example.org/a.md)\n",
        "href=\"https://example.org/a.md\"");
    row("a table has lines", "| a | b |\n|---|---|\n| 1 | 2 |\n", "<table border=\"1\"");
    row("letters beyond ASCII", "µW/cm²\n", "µW/cm²");
}

void tst_GuideWindow::markdownBecomesHtml()
{
    QFETCH(QByteArray, markdown);
    QFETCH(QString, html);
    QVERIFY2(guide::toHtml(markdown).contains(html), qPrintable(guide::toHtml(markdown)));
}

void tst_GuideWindow::theHelpMenuShowsIt_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("words");
    QTest::newRow("the tool's page") << "actionGuide"
                                     << "Image Math";
    QTest::newRow("the workspace's page") << "actionGuideWorkspace"
                                          << "The workspace: the user's guide";
}

void tst_GuideWindow::theHelpMenuShowsIt()
{
    QFETCH(QString, action);
    QFETCH(QString, words);
    WorkspaceFixture fixture;
    fixture.window->findChild<QAction *>(action)->trigger();
    fixture.window->findChild<QAction *>(action)->trigger();
    QCOMPARE(fixture.window->findChildren<GuideWindow *>().size(), 1);
    const auto *browser = fixture.window->findChild<QTextBrowser *>("guideBrowser");
    QVERIFY(browser->isVisible());
    QVERIFY(browser->toPlainText().startsWith(words));
    QCOMPARE(fixture.window->findChild<QAction *>("actionGuide")->shortcut(), QKeySequence(Qt::Key_F1));
}

void tst_GuideWindow::aPageThatIsNotThereIsTold()
{
    WorkspaceFixture fixture;
    GuideWindow window(fixture.window.get());
    QVERIFY(!window.showPage("no-such-page"));
    QVERIFY(!window.isVisible());
    QVERIFY(fixture.log.hasFailure({"no-such-page.md: there is no such file"}));
}

QTEST_MAIN(tst_GuideWindow)
#include "tst_GuideWindow.moc"
