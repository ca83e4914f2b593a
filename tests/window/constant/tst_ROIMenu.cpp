// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/window/constant/RoiStudy.h"

namespace {

const QRectF BOX(2.0, 3.0, 5.0, 4.0); // [cm]

} // namespace

/// The pop-up menu of ROIs: what it offers, and "_none_".
class tst_ROIMenu : public RoiStudy
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_bound.reset(); }

    void backgroundsComeBeforeMeasurements();
    void gridsForMeasurementAreLeftOut();
    void itIsBuiltAnewEachTime();
    void withoutTwoCurrentItemsItStaysAsItIs_data();
    void withoutTwoCurrentItemsItStaysAsItIs();
    void oneSubmenu_data();
    void oneSubmenu();
    void anEmptyText_data();
    void anEmptyText();
    void kindsOfClicks_data();
    void kindsOfClicks();

    void noneInTheMenu_data();
    void noneInTheMenu();
    void afterNoneReturnTakesWhatIsShown();
    void theClickIsFoundByTheSubmenusTitle_data();
    void theClickIsFoundByTheSubmenusTitle();
    void whereBothClicksFitBsIsTaken();
    void aThemeMayMarkAKeyInTheTitle();
    void noneInTheComputation_data();
    void noneInTheComputation();
    void withoutTwoCurrentRowsNothingIsComputed();
};

void tst_ROIMenu::backgroundsComeBeforeMeasurements()
{
    makeDefault();
    QVERIFY(addBox("A1", "Zebra", BOX));
    QVERIFY(addBox("A1", "Back", BOX, EROI_BACKGROUND));
    QVERIFY(addBox("A1", "Ant", BOX));
    QVERIFY(addBox("A1", "Ground", BOX, EROI_BACKGROUND));
    QVERIFY(addBox("A2", "Of B", BOX));
    QCOMPARE(menuTexts(), QStringList({"A1: Back, Ground, Zebra, Ant", "A2: Of B"}));
}

void tst_ROIMenu::gridsForMeasurementAreLeftOut()
{
    makeDefault();
    CROIBase grid(EROI_MEASUREMENT, BOX, 2, 3);
    grid.setName("Plate");
    QVERIFY(rois("A1")->addROI(grid));
    QCOMPARE(menuTexts(), QStringList({"A1: _none_", "A2: _none_"}));
    QVERIFY(addBox("A1", "Tumor", BOX));
    QCOMPARE(menuTexts(), QStringList({"A1: Tumor", "A2: _none_"}));
    CROIBase ground(EROI_BACKGROUND, BOX, 2, 2);
    ground.setName("Ground");
    QVERIFY(rois("A1")->addROI(ground));
    QCOMPARE(menuTexts(), QStringList({"A1: Ground, Tumor", "A2: _none_"}));
}

void tst_ROIMenu::itIsBuiltAnewEachTime()
{
    makeDefault();
    QCOMPARE(menuTexts(), QStringList({"A1: _none_", "A2: _none_"}));
    CROIBase *roi = addBox("A2", "Tumor", BOX);
    QVERIFY(roi);
    QCOMPARE(menuTexts(), QStringList({"A1: _none_", "A2: Tumor"}));
    QVERIFY(rois("A2")->renameROI(roi, "Renamed"));
    QCOMPARE(menuTexts(), QStringList({"A1: _none_", "A2: Renamed"}));
    window()->m_pListBoxA->setCurrentRow(1);
    window()->m_pListBoxB->setCurrentRow(0);
    QCOMPARE(menuTexts(), QStringList({"A2: Renamed", "A1: _none_"}));
    // Shown often, one choice still computes once.
    window()->forgetCalls();
    choose("A2", "Renamed");
    QCOMPARE(window()->computations, 1);
    QCOMPARE(window()->calls.value("onShowROIListPopupMenu"), 1);
}

void tst_ROIMenu::withoutTwoCurrentItemsItStaysAsItIs_data()
{
    QTest::addColumn<bool>("listA");
    QTest::addColumn<bool>("listB");
    QTest::newRow("list A has none") << false << true;
    QTest::newRow("list B has none") << true << false;
    QTest::newRow("neither has one") << false << false;
}

void tst_ROIMenu::withoutTwoCurrentItemsItStaysAsItIs()
{
    QFETCH(bool, listA);
    QFETCH(bool, listB);
    makeDefault();
    QVERIFY(addBox("A1", "Tumor", BOX));
    QCOMPARE(menuTexts(), QStringList({"A1: Tumor", "A2: _none_"}));
    if (!listA)
        window()->m_pListBoxA->setCurrentRow(-1);
    if (!listB)
        window()->m_pListBoxB->setCurrentRow(-1);
    QVERIFY(addBox("A1", "Later", BOX));
    QCOMPARE(menuTexts(), QStringList({"A1: Tumor", "A2: _none_"}));
}

void tst_ROIMenu::oneSubmenu_data()
{
    QTest::addColumn<QString>("other"); // beside A1
    QTest::addColumn<int>("rowA");
    QTest::addColumn<int>("rowB");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("the same click") << "A2" << 0 << 0 << QStringList{"A1"};
    QTest::newRow("the same click, B's") << "A2" << 1 << 1 << QStringList{"A2"};
    QTest::newRow("B's text lies in A's") << "A10" << 1 << 0 << QStringList{"A10"};
    QTest::newRow("A's text lies in B's") << "A10" << 0 << 1 << QStringList{"A1", "A10"};
    QTest::newRow("letters in another case differ") << "a1x" << 1 << 0 << QStringList{"a1x", "A1"};
}

void tst_ROIMenu::oneSubmenu()
{
    QFETCH(QString, other);
    QFETCH(int, rowA);
    QFETCH(int, rowB);
    make({click("A1", countsOfA), click(other, countsOfB)});
    window()->m_pListBoxA->setCurrentRow(rowA);
    window()->m_pListBoxB->setCurrentRow(rowB);
    QStringList titles;
    for (const QAction *entry : shownMenu()->actions())
        titles << entry->text();
    QTEST(titles, "titles");
}

void tst_ROIMenu::anEmptyText_data()
{
    QTest::addColumn<QString>("textA");
    QTest::addColumn<QString>("textB");
    QTest::addColumn<QStringList>("titles");
    row("of A: B's submenu alone", "", "A2", QStringList{"A2"});
    row("of B lies in every text of A: A's submenu alone", "A1", "", QStringList{"A1"});
    row("of both: none", "", "", QStringList());
}

void tst_ROIMenu::anEmptyText()
{
    QFETCH(QString, textA);
    QFETCH(QString, textB);
    makeDefault();
    window()->m_pListBoxA->currentItem()->setText(textA);
    window()->m_pListBoxB->currentItem()->setText(textB);
    QStringList titles;
    for (const QAction *entry : shownMenu()->actions())
        titles << entry->text();
    QTEST(titles, "titles");
}

void tst_ROIMenu::kindsOfClicks_data()
{
    QTest::addColumn<QByteArray>("kind"); // empty: a photograph only
    QTest::addColumn<QString>("texts");
    QTest::newRow("luminescent") << QByteArray("luminescent") << "A3: Tumor";
    QTest::newRow("fluorescent") << QByteArray("fluorescent") << "A3: Tumor";
    QTest::newRow("transfluorescent") << QByteArray("transfluorescent") << "A3: Tumor";
    QTest::newRow("transillumination") << QByteArray("transillumination") << "A3: Tumor";
    QTest::newRow("a photograph only has none to offer") << QByteArray() << "A3: _none_";
}

void tst_ROIMenu::kindsOfClicks()
{
    QFETCH(QByteArray, kind);
    ClickSpec third = click("A3", countsOfA);
    third.kind = QString::fromLatin1(kind);
    if (kind.isEmpty()) {
        third.counts = nullptr;
        third.photograph = [](int x, int y) { return float(x + y); };
    }
    make({click("A1", countsOfA), click("A2", countsOfB), third});
    QVERIFY(addBox("A3", "Tumor", BOX));
    m_bound->show();
    window()->updateImageMathWindow(); // from now on the lists hold every click
    window()->m_pListBoxA->setCurrentRow(2);
    QCOMPARE(window()->m_pListBoxA->currentItem()->text(), QString("A3"));
    QTEST(menuTexts().value(0), "texts");
}

void tst_ROIMenu::noneInTheMenu_data()
{
    QTest::addColumn<QString>("name"); // of an ROI; empty: there is none
    QTest::addColumn<QString>("item");
    row("without an ROI", "", "_none_");
    row("an ROI of that name", "_none_", "_none_");
    row("an ROI of that name in other letters' case", "_NONE_", "_NONE_");
}

void tst_ROIMenu::noneInTheMenu()
{
    QFETCH(QString, name);
    QFETCH(QString, item);
    makeDefault();
    if (!name.isEmpty())
        QVERIFY(addBox("A1", name, BOX));
    window()->forgetCalls();
    LogCatcher log;
    choose("A1", item);
    QCOMPARE(window()->m_pKLineEdit->text(), QString("1"));
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->m_resultImage.pixelAt(0, 0), 100.0 - 7.0 * 40.0);
    QCOMPARE(window()->computations, 1);
    QCOMPARE(window()->calls.value("onChangeValueK"), 0);
    QCOMPARE(CVXUtilityFns::getkValue(), QString("7.00"));
    QCOMPARE(log.toolEntries().size(), 1);
    const LogEntry line = log.toolEntries().first();
    QCOMPARE(line.message, QString("There was no ROI selected to compute 'k' - setting 'k' to '1.0'"));
    QCOMPARE(line.detail, QString());
    QCOMPARE(line.number, 0);
    QCOMPARE(line.level, long(ELOG_WARNING));
}

void tst_ROIMenu::afterNoneReturnTakesWhatIsShown()
{
    makeDefault();
    choose("A2", "_none_");
    QCOMPARE(window()->m_kValue, 7.0f);
    window()->m_pKLineEdit->setFocus();
    QTest::keyClick(window()->m_pKLineEdit, Qt::Key_Return);
    QCOMPARE(window()->m_kValue, 1.0f);
    QCOMPARE(window()->m_pKLineEdit->text(), QString("1.00"));
    QCOMPARE(CVXUtilityFns::getkValue(), QString("1.00"));
}

void tst_ROIMenu::theClickIsFoundByTheSubmenusTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("isFound");
    row("A's click", "Ab1", true);
    row("A's click in other letters' case", "aB1", true);
    row("B's click", "cD2", true);
    row("B's click in other letters' case", "Cd2", true);
    row("a part of A's click", "Ab", false);
    row("another text", "EF3", false);
}

void tst_ROIMenu::theClickIsFoundByTheSubmenusTitle()
{
    QFETCH(QString, title);
    QFETCH(bool, isFound);
    make({click("Ab1", countsOfA), click("cD2", countsOfB)});
    QVERIFY(addBox("Ab1", "Tumor", BOX));
    QVERIFY(addBox("cD2", "Tumor", BOX));
    // A click of the sequence is offered by its own text; another tool may offer it as it likes.
    QMenu submenu(title);
    window()->onSelectROIFromMenu(submenu.addAction("Tumor"));
    QCOMPARE(window()->computations, isFound ? 1 : 0);
    if (isFound)
        QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
}

void tst_ROIMenu::whereBothClicksFitBsIsTaken()
{
    const QRectF other(9.0, 9.0, 4.0, 4.0); // [cm]
    make({click("ab1", countsOfA), click("AB1", countsOfB)});
    QVERIFY(addBox("ab1", "Tumor", BOX));
    QVERIFY(addBox("AB1", "Tumor", other));
    choose("ab1", "Tumor");
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, other) / sum(countsOfB, other)));
}

void tst_ROIMenu::aThemeMayMarkAKeyInTheTitle()
{
    makeDefault();
    QVERIFY(addBox("A2", "Tumor", BOX));
    QMenu *submenu = shownMenu()->actions().at(1)->menu();
    submenu->setTitle("A&2");
    submenu->actions().first()->setText("&Tumor");
    submenu->actions().first()->trigger();
    QCOMPARE(window()->computations, 1);
    QVERIFY(isClose(window()->m_kValue, sum(countsOfA, BOX) / sum(countsOfB, BOX)));
}

void tst_ROIMenu::noneInTheComputation_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<float>("k");
    QTest::newRow("_none_ sets k to 1") << "_none_" << 1.0f;
    QTest::newRow("in other letters' case it is a name of an ROI") << "_NONE_" << 7.0f;
}

void tst_ROIMenu::noneInTheComputation()
{
    QFETCH(QString, name);
    QFETCH(float, k);
    makeDefault();
    LogCatcher log;
    window()->computeKFromROI("A1", name);
    QCOMPARE(window()->m_kValue, k);
    QCOMPARE(window()->m_pKLineEdit->text(), k == 1.0f ? QString("1") : QString("7.00"));
    QCOMPARE(window()->computations, k == 1.0f ? 1 : 0);
    QCOMPARE(CVXUtilityFns::getkValue(), QString("7.00"));
    QCOMPARE(log.toolEntries().size(), 0);
}

void tst_ROIMenu::withoutTwoCurrentRowsNothingIsComputed()
{
    makeDefault();
    QVERIFY(addBox("A1", "Tumor", BOX));
    const QSignalBlocker quiet(window()->m_pListBoxB);
    window()->m_pListBoxB->setCurrentRow(-1);
    for (const char *name : {"Tumor", "_none_"}) {
        window()->computeKFromROI("A1", QString::fromLatin1(name));
        QCOMPARE(window()->m_kValue, 7.0f);
        QCOMPARE(window()->m_pKLineEdit->text(), QString("7.00"));
        QCOMPARE(window()->computations, 0);
    }
    QCOMPARE(names(rois("A1")), QStringList{"Tumor"});
    QCOMPARE(names(rois("A2")), QStringList());
}

QTEST_MAIN(tst_ROIMenu)
#include "tst_ROIMenu.moc"
