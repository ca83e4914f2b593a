// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/datasets/SequenceManager.h"
#include "app/provenance/HowMadePanel.h"
#include "app/provenance/WrappedText.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/ResultCheckFixture.h"
#include "tests/support/Rows.h"

#include <cmath>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScrollArea>
#include <QTextDocument>

using namespace resultcheck;

/// The panel in the workspace, with results of the real tool.
class tst_HowMadePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }
    void withoutAResultItSaysSo();
    void itComesWithAResult();
    void itDoesNotHideTheResult();
    void onceClosedItStaysAway();
    void itTellsHowTheResultWasMade();
    void itShowsWhatClickInfoMakesOfK_data();
    void itShowsWhatClickInfoMakesOfK();
    void hashesAreShortAndFullInTheToolTip();
    void theFilesOfImportedOperandsAreNamed();
    void itTellsWhatStoodBesideTheResult();
    void itTellsTheRoiOfK();
    void photographsAreNamed();
    void withoutARecordItTellsWhatClickInfoSays_data();
    void withoutARecordItTellsWhatClickInfoSays();
    void whatAFileSaysIsNoMarkup();
    void hugeTextsAreShortened();
    void copyTakesEverything();
    void checkShowsItsOutcome_data();
    void checkShowsItsOutcome();
    void aLongOutcomeScrolls();
    void anOutcomeStaysWithItsResult();
    void nothingIsCutOff();
    void aClosedResultLeavesThePanelEmpty();

private:
    HowMadePanel *panel() const { return m_fixture->workspace.window->findChild<HowMadePanel *>(); }
    QAction *action() const
    {
        return m_fixture->workspace.window->findChild<QAction *>("actionHowMadePanel");
    }
    QPushButton *button(const char *name) const { return panel()->findChild<QPushButton *>(name); }
    /// What is shown, names and values.
    QStringList texts() const
    {
        const auto *rows = panel()->findChild<QWidget *>("howMadeRows");
        QStringList all;
        for (const QLabel *label : rows->findChildren<QLabel *>())
            all += label->text();
        for (const WrappedText *value : rows->findChildren<WrappedText *>())
            all += value->text();
        return all;
    }
    /// The value beside the n-th label of that text; null when there is none.
    WrappedText *valueOf(const QString &name, int n = 0) const;
    QString textOf(const QString &name, int n = 0) const
    {
        const WrappedText *label = valueOf(name, n);
        return label ? label->text() : QStringLiteral("(no such row)");
    }
    bool isShown(const QString &text) const;
    QLabel *markLabel() const { return panel()->findChild<QLabel *>("outcomeMark"); }
    WrappedText *outcome(const char *name) const { return panel()->findChild<WrappedText *>(name); }
    /// Leaves the result's window and comes back, so that the panel reads again.
    void visitAgain(CVXSDataset *result) const
    {
        m_fixture->workspace.window->parts().workspace->showSequence(m_fixture->sequence);
        m_fixture->workspace.window->parts().workspace->showDataset(result);
    }

    std::unique_ptr<ResultCheckFixture> m_fixture;
};

void tst_HowMadePanel::init()
{
    m_fixture = std::make_unique<ResultCheckFixture>();
}

WrappedText *tst_HowMadePanel::valueOf(const QString &name, int n) const
{
    auto *grid = qobject_cast<QGridLayout *>(panel()->findChild<QWidget *>("howMadeRows")->layout());
    for (int row = 0; row < grid->rowCount(); ++row) {
        QLayoutItem *left = grid->itemAtPosition(row, 0);
        QLayoutItem *right = grid->itemAtPosition(row, 1);
        if (!left || !right || left == right)
            continue;
        const auto *label = qobject_cast<QLabel *>(left->widget());
        if (label->text() == name && n-- == 0)
            return qobject_cast<WrappedText *>(right->widget());
    }
    return nullptr;
}

bool tst_HowMadePanel::isShown(const QString &text) const
{
    return !texts().filter(text).isEmpty();
}

void tst_HowMadePanel::withoutAResultItSaysSo()
{
    QVERIFY(!panel()->isVisible());
    QVERIFY(m_fixture->workspace.window->findChild<QMenu *>("menuView")->actions().contains(action()));
    action()->trigger();
    QVERIFY(panel()->isVisible());
    QVERIFY(isShown("The active window shows no result of image math."));
    QVERIFY(!button("howMadeCheck")->isEnabled() && !button("howMadeCopy")->isEnabled());
    QVERIFY(panel()->text().isEmpty());
    // A dataset that is none changes nothing.
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    m_fixture->workspace.window->parts().workspace->showDataset(m_fixture->sequence->getDataset(A));
    QVERIFY(isShown("The active window shows no result of image math."));
    QVERIFY(!button("howMadeCheck")->isEnabled());
}

void tst_HowMadePanel::itComesWithAResult()
{
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    m_fixture->workspace.window->parts().workspace->showDataset(m_fixture->sequence->getDataset(A));
    QVERIFY(!panel()->isVisible());
    const CVXSDataset *result = m_fixture->makeResult(1, "2");
    QVERIFY(result);
    QVERIFY(panel()->isVisible());
    QCOMPARE(panel()->findChild<WrappedText *>("howMadeTitle")->text(), result->getClickNumber());
    QVERIFY(button("howMadeCheck")->isEnabled() && button("howMadeCopy")->isEnabled());
}

void tst_HowMadePanel::itDoesNotHideTheResult()
{
    QVERIFY(m_fixture->makePlainResult());
    const QMdiSubWindow *frame = m_fixture->workspace.window->parts().workspace->currentSubWindow();
    const QWidget *area = frame->parentWidget();
    QTRY_VERIFY(area->width() <= m_fixture->workspace.window->width() - panel()->width());
    QTRY_VERIFY2(frame->geometry().right() < area->width(),
                 qPrintable(QString("%1 of %2").arg(frame->geometry().right()).arg(area->width())));
}

void tst_HowMadePanel::onceClosedItStaysAway()
{
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    QVERIFY(m_fixture->makeResult(1, "2"));
    panel()->close();
    QVERIFY(m_fixture->makeResult(2, "2"));
    QVERIFY(!panel()->isVisible());
    action()->trigger();
    QVERIFY(panel()->isVisible());
    QCOMPARE(textOf("Operation"), QString("A * B * k"));
    QVERIFY(m_fixture->makeResult(0, "2"));
    QCOMPARE(textOf("Operation"), QString("A + B * k"));
    // The next start remembers it.
    action()->trigger();
    QVERIFY(!panel()->isVisible());
    MainWindow next;
    next.show();
    CVXSDataset *result = ResultCheckFixture::activeDataset();
    next.parts().workspace->showDataset(result);
    QVERIFY(!next.findChild<HowMadePanel *>()->isVisible());
}

void tst_HowMadePanel::itTellsHowTheResultWasMade()
{
    ClickSpec a = clickA();
    a.flatField = [](int, int) { return 2.0f; };
    QVERIFY(m_fixture->open({a, clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(3, "0.1", EUNIT_RADIANCE);
    QVERIFY(result);
    QCOMPARE(textOf("Operation"), QString("(A / B) * k"));
    QCOMPARE(textOf("k, exactly"), QString("0.1  =  0x1.99999ap-4"));
    QCOMPARE(textOf("Unit"), QString::fromUtf8("Radiance (Photons) [p/s/cm²/sr]"));
    const QString computed = resultcheck::recordOf(result).computed;
    QCOMPARE(textOf("Computed"), QString(computed).replace('T', ' ').replace("Z", " UTC"));
    QCOMPARE(textOf("Version"), resultcheck::recordOf(result).version);
    QCOMPARE(textOf("Click number", 0), QString(A));
    QCOMPARE(textOf("Click number", 1), QString(B));
    QCOMPARE(textOf("Sequence", 1), QString(ResultCheckFixture::SEQUENCE));
    QCOMPARE(textOf("Corrected for", 0), QString("flat field"));
    QCOMPARE(textOf("Corrected for", 1), QString("none"));
    QCOMPARE(textOf("Calibration", 0), QString("11 values of ClickInfo"));
    QVERIFY(valueOf("Calibration")->toolTip().contains("luminescent image/Exposure Time = 60<br>"));
    QCOMPARE(textOf("From"), QString("none"));
    for (const QString &name : {QString("Operation"), QString("Click number"), QString("luminescent.tif")})
        QVERIFY(valueOf(name)->textInteractionFlags() & Qt::TextSelectableByMouse);
}

void tst_HowMadePanel::itShowsWhatClickInfoMakesOfK_data()
{
    QTest::addColumn<bool>("isOther");
    QTest::newRow("not when it reads as the same number") << false;
    QTest::newRow("when it reads as another number") << true;
}

void tst_HowMadePanel::itShowsWhatClickInfoMakesOfK()
{
    QFETCH(bool, isOther);
    CVXSDataset *result = m_fixture->makePlainResult("0.37");
    QVERIFY(result);
    imagemath::ResultRecord record = resultcheck::recordOf(result);
    if (isOther)
        record.k = std::nextafter(record.k, 1.0f);
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    visitAgain(result);
    QCOMPARE(textOf("k, exactly"),
             QString(isOther ? "0.37000003  =  0x1.7ae14ap-2" : "0.37  =  0x1.7ae148p-2"));
    QCOMPARE(textOf("k in ClickInfo"), QString(isOther ? "3.70e-1" : "(no such row)"));
}

void tst_HowMadePanel::hashesAreShortAndFullInTheToolTip()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    const QString hash = imagemath::sha256OfFile(m_fixture->fileOf(B, "luminescent.tif"));
    QCOMPARE(textOf("luminescent.tif", 1), "SHA-256 " + hash.left(12) + QChar(0x2026));
    QVERIFY(valueOf("luminescent.tif", 1)->toolTip().contains(hash));
}

void tst_HowMadePanel::theFilesOfImportedOperandsAreNamed()
{
    ClickSpec a = clickA();
    a.luminescentKeys.insert(clickinfo::KEY_IMPORTED_FROM, "mouse <b>640</b>.tif");
    QVERIFY(m_fixture->open({a, clickB()}));
    CVXSDataset *result = m_fixture->makeResult(1, "0.5");
    QVERIFY(result);
    QCOMPARE(textOf("Imported from", 0), QString("mouse <b>640</b>.tif"));
    QCOMPARE(textOf("Imported from", 1), QString("(no such row)")); // B was not imported
    // A result has the keys of A, but was not imported.
    const CVXSImageWindow *window = CVXSImageWindow::getImageWindow(result);
    QCOMPARE(window->windowTitle(), result->getClickNumber());
    // Without a record of the making too.
    QVERIFY(ResultCheckFixture::setDescription(result, QByteArray()));
    visitAgain(result);
    QCOMPARE(textOf("Imported from", 0), QString("mouse <b>640</b>.tif"));
}

void tst_HowMadePanel::itTellsWhatStoodBesideTheResult()
{
    ClickSpec a = clickA();
    a.luminescentKeys.insert("Exposure Time", "1");
    a.counts = [](int x, int) { return x < 8 ? 65535.0f : 100.0f; };
    QVERIFY(m_fixture->open({a, clickB()}));
    QVERIFY(m_fixture->makeResult(1, "2"));
    QVERIFY(isShown("A was exposed 1 s, B 60 s; the unit is counts."));
    QVERIFY(isShown("256 of 1024 pixels of A are saturated (65000 counts or more)."));
    QCOMPARE(textOf("Saturated pixels", 0), QString("256 of 1024 (65000 counts or more)"));
    QCOMPARE(textOf("Saturated pixels", 1), QString("0 of 1024 (65000 counts or more)"));
    QCOMPARE(textOf("ROI"), QString("(no such row)"));
}

void tst_HowMadePanel::itTellsTheRoiOfK()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = resultcheck::recordOf(result);
    imagemath::RoiOfK roi;
    roi.name = "Back <b>1</b>";
    roi.shape = "background rectangle; left 6.8014705882352935; top 3; width 0.25; height 4.00001";
    roi.clickNumber = B;
    roi.unit = unitKey(EUNIT_RADIANCE);
    roi.inA = {A, 1234567.5, 3};
    roi.inB = {B, 1e6, -1};
    record.roiOfK = roi;
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    visitAgain(result);
    QVERIFY(isShown("k from an ROI"));
    QCOMPARE(textOf("ROI"), roi.name);
    QCOMPARE(textOf("Shape [cm]"), QString("background rectangle; left 6.8015; top 3; width 0.25; height 4.0000"));
    QCOMPARE(textOf("Drawn in"), QString(B));
    QCOMPARE(textOf("Total flux [p/s] in A"), QString("1234567.5 (%1)").arg(A));
    QCOMPARE(textOf("Total flux [p/s] in B"), QString("1e+06 (%1)").arg(B));
    QCOMPARE(textOf("Saturated pixels in A"), QString("3"));
    QCOMPARE(textOf("Saturated pixels in B"), QString("not recorded"));
}

void tst_HowMadePanel::photographsAreNamed()
{
    ClickSpec b = clickB();
    b.photograph = [](int x, int y) { return x * x + y * y < 900 ? 200.0f : 10.0f; };
    QVERIFY(m_fixture->open({clickA(), b}));
    QVERIFY(m_fixture->makeResult(4, "260", EUNIT_COUNTS, true));
    QVERIFY(isShown("Photograph under the result") && isShown("Photograph of the tissue mask"));
    QCOMPARE(textOf("From", 0), QString(B));
    QCOMPARE(textOf("From", 1), QString(B));
    QCOMPARE(textOf("photograph.tif", 1), textOf("photograph.tif", 2));
    QVERIFY(textOf("photograph.tif", 2).startsWith("SHA-256 "));
    QVERIFY(m_fixture->makeResult(1, "2"));
    QVERIFY(!isShown("Photograph of the tissue mask"));
    QCOMPARE(textOf("From"), QString("none"));
}

void tst_HowMadePanel::withoutARecordItTellsWhatClickInfoSays_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QString>("problem");
    QTest::newRow("no description") << QByteArray() << "luminescent.tif does not tell how it was made.";
    row("a damaged one", QByteArray("{\"image math\": {\"operation\": 3}}"),
        "What luminescent.tif tells of its making is damaged: \"operation\" is "
        "missing or of another type.");
    QTest::newRow("a huge one") << QByteArray(2000000, '{') << "it has 2000000 bytes, more than any record.";
}

void tst_HowMadePanel::withoutARecordItTellsWhatClickInfoSays()
{
    QFETCH(QByteArray, description);
    QFETCH(QString, problem);
    CVXSDataset *result = m_fixture->makePlainResult("0.37");
    QVERIFY(result);
    QVERIFY(ResultCheckFixture::setDescription(result, description));
    visitAgain(result);
    QVERIFY(isShown(problem));
    QCOMPARE(textOf("Operation"), QString("A - B * k"));
    QCOMPARE(textOf("k, as typed"), QString("3.70e-1"));
    QCOMPARE(textOf("A"), QString(A));
    QCOMPARE(textOf("B"), QString(B));
    QCOMPARE(textOf("Photograph"), QString("none"));
    QCOMPARE(textOf("Unit"), QString("Counts"));
    QCOMPARE(textOf("k, exactly"), QString("(no such row)"));
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QCOMPARE(outcome("outcomeHeadline")->text(), QString("The result could not be checked."));
}

void tst_HowMadePanel::whatAFileSaysIsNoMarkup()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = resultcheck::recordOf(result);
    record.a.clickNumber = "<img src=x><b>bold</b>";
    record.a.constants = {{"a/<b>", "<i>"}};
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    visitAgain(result);
    QCOMPARE(textOf("Click number"), record.a.clickNumber);
    QVERIFY(valueOf("Calibration")->toolTip().contains("a/&lt;b&gt; = &lt;i&gt;"));
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QVERIFY(outcome("outcomeLines")->text().contains(record.a.clickNumber));
}

void tst_HowMadePanel::hugeTextsAreShortened()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = resultcheck::recordOf(result);
    record.version = QString(100000, 'v');
    for (int i = 0; i < 2000; ++i)
        record.b.files.append({QString("file%1.tif").arg(i), "00"});
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    visitAgain(result);
    QVERIFY(textOf("Version").size() < 400);
    QVERIFY(texts().size() < 100);
    QVERIFY(panel()->text().contains(record.version));
}

void tst_HowMadePanel::copyTakesEverything()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QVERIFY(GuiDriver(panel()).press("howMadeCopy"));
    const QString copied = QApplication::clipboard()->text();
    for (const QString &part : {result->getClickNumber(), QString("Operation: A - B * k"),
                                QString("k, exactly: 0.37  =  0x1.7ae148p-2"), QString("Click number: ") + A,
                                QString("luminescent image/Exposure Time = 60"),
                                QString("luminescent.tif: SHA-256 ") +
                                    imagemath::sha256OfFile(m_fixture->fileOf(A, "luminescent.tif")),
                                QString("Computed again: the same to the last bit.")})
        QVERIFY2(copied.contains(part), qPrintable(part + " is not in\n" + copied));
}

void tst_HowMadePanel::checkShowsItsOutcome_data()
{
    QTest::addColumn<QString>("harm");
    QTest::addColumn<QChar>("mark");
    QTest::addColumn<QString>("headline");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("level");
    row("an untouched result", "none", QChar(0x2713), "Computed again: the same to the last bit.", "A is in ",
        int(ELOG_INFORMATION));
    row("a tampered pixel", "pixel", QChar(0x2717),
        "The result is not what its record gives: 1 of 1024 pixels differ", "The operands are as recorded",
        int(ELOG_WARNING));
    row("a changed operand", "operand", QChar(0x2717),
        "The operands are not what they were: 1 of 1024 pixels differ",
        QString("luminescent.tif of A (%1) changed since.").arg(A), int(ELOG_WARNING));
    row("a missing operand", "missing", QChar('!'), "An operand is missing; nothing was checked.",
        QString("open the sequence %1").arg(ResultCheckFixture::SEQUENCE), int(ELOG_WARNING));
    row("a result's file that is gone", "gone", QChar(0x2717), "The result could not be checked.",
        "ClickInfo.txt", int(ELOG_FAILURE));
}

void tst_HowMadePanel::checkShowsItsOutcome()
{
    QFETCH(QString, harm);
    QFETCH(QChar, mark);
    QFETCH(QString, headline);
    QFETCH(QString, line);
    QFETCH(int, level);
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    const QString folder = result->getFolderPath();
    if (harm == "pixel")
        QVERIFY(ResultCheckFixture::setPixel(folder + "luminescent.tif", 7, -1.0f));
    if (harm == "operand")
        QVERIFY(ResultCheckFixture::setPixel(m_fixture->fileOf(A, "luminescent.tif"), 7, -1.0f));
    if (harm == "missing")
        QVERIFY(m_fixture->workspace.window->parts().sequences->closeAll() &&
                QDir(m_fixture->folder).removeRecursively());
    if (harm == "gone")
        QVERIFY(QFile::remove(folder + "ClickInfo.txt"));
    QVERIFY(!markLabel()->isVisible());
    const LogCatcher log;
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QVERIFY(markLabel()->isVisible());
    QCOMPARE(markLabel()->text(), QString(mark));
    QVERIFY2(outcome("outcomeHeadline")->text().startsWith(headline),
             qPrintable(outcome("outcomeHeadline")->text()));
    QVERIFY2(outcome("outcomeLines")->text().contains(line), qPrintable(outcome("outcomeLines")->text()));
    QVERIFY(button("howMadeCheck")->isEnabled());
    QVERIFY(!QApplication::overrideCursor());
    const LogEntry told = log.entries().last();
    QCOMPARE(int(told.level), level);
    QVERIFY(told.message.contains(result->getClickNumber()) && told.message.contains(headline));
    QVERIFY(told.detail.contains(line));
    QCOMPARE(m_fixture->workspace.window->parts().banner->isVisible(), level == ELOG_FAILURE);
}

void tst_HowMadePanel::aLongOutcomeScrolls()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = resultcheck::recordOf(result);
    for (int i = 0; i < 100; ++i)
        record.a.files.append({QString("file%1.tif").arg(i), QString(64, '0')});
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    const QSize before = m_fixture->workspace.window->size();
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QCOMPARE(markLabel()->text(), QString("!"));
    QTRY_VERIFY(outcome("outcomeLines")->height() > 800);
    QVERIFY(panel()->minimumSizeHint().height() < 400);
    QCOMPARE(m_fixture->workspace.window->size(), before);
    QVERIFY(!markLabel()->visibleRegion().isEmpty());
}

void tst_HowMadePanel::anOutcomeStaysWithItsResult()
{
    CVXSDataset *first = m_fixture->makePlainResult();
    QVERIFY(first);
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QVERIFY(markLabel()->isVisible());
    QVERIFY(m_fixture->makeResult(2, "3"));
    QVERIFY(!markLabel()->isVisible());
    QVERIFY(!panel()->text().contains("Computed again"));
    // It is still true when its result is looked at again, whatever was active in between.
    m_fixture->workspace.window->parts().workspace->showSequence(m_fixture->sequence);
    m_fixture->workspace.window->parts().workspace->showDataset(first);
    QCOMPARE(textOf("Operation"), QString("A - B * k"));
    QVERIFY(markLabel()->isVisible());
    QCOMPARE(outcome("outcomeHeadline")->text(), QString("Computed again: the same to the last bit."));
    QVERIFY(panel()->text().contains("Computed again"));
}

void tst_HowMadePanel::nothingIsCutOff()
{
    CVXSDataset *result = m_fixture->makePlainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = resultcheck::recordOf(result);
    // As long as paths are: a word without a blank.
    record.a.clickNumber = "AB" + QString(120, '7');
    record.version = "/data/of/a/group/" + QString("with-a-long-name/").repeated(8);
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    visitAgain(result);
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    QVERIFY(markLabel()->isVisible());
    const auto *area = panel()->findChild<QScrollArea *>();
    // When the layout has come to rest.
    QTRY_COMPARE(area->widget()->height(), area->widget()->heightForWidth(area->widget()->width()));
    QVERIFY(area->widget()->width() <= area->viewport()->width());
    for (const WrappedText *text : panel()->findChildren<WrappedText *>()) {
        QVERIFY2(text->document()->size().width() <= text->viewport()->width() + 1 &&
                     text->document()->size().height() <= text->viewport()->height() + 1,
                 qPrintable(text->text()));
        QVERIFY2(text->mapTo(panel(), QPoint(text->width(), 0)).x() <= panel()->width(),
                 qPrintable(text->text()));
    }
    // Nor does one cover the other.
    const QList<QWidget *> shown = panel()
                                       ->findChild<QWidget *>("howMadeRows")
                                       ->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *one : shown) {
        for (const QWidget *other : shown)
            QVERIFY(one == other || !one->geometry().intersects(other->geometry()));
    }
    for (const QLabel *label : panel()->findChildren<QLabel *>())
        QVERIFY2(label->wordWrap() || label->width() >= label->sizeHint().width(), qPrintable(label->text()));
}

void tst_HowMadePanel::aClosedResultLeavesThePanelEmpty()
{
    QVERIFY(m_fixture->makePlainResult());
    QVERIFY(GuiDriver(panel()).press("howMadeCheck"));
    m_fixture->workspace.window->parts().workspace->showSequence(m_fixture->sequence);
    QVERIFY(isShown("The active window shows no result of image math."));
    QVERIFY(!markLabel()->isVisible());
    QVERIFY(!panel()->findChild<WrappedText *>("howMadeTitle")->isVisible());
    QVERIFY(panel()->isVisible());
}

QTEST_MAIN(tst_HowMadePanel)
#include "tst_HowMadePanel.moc"
