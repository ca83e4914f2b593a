// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/BoundWindow.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/PaintCounter.h"
#include "tests/support/Rows.h"

#include <QApplication>
#include <QtTest>

namespace {

} // namespace

/// What the window does when its sequence changes, and when it is closed.
class tst_SequenceRefresh : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aHiddenWindowKeepsItsLists_data();
    void aHiddenWindowKeepsItsLists();
    void theFilesOfImportedClicksAreInTheTooltips();
    void emptyListsStayEmpty();
    void aChangeOfTheSequenceComputesOnce_data();
    void aChangeOfTheSequenceComputesOnce();
    void theDatasetOfAGoesWithoutAFailure();
    void anotherUnitIsComputedAndNamed();
    void otherColoursReachTheImages();
    void anAddedDatasetIsListed_data();
    void anAddedDatasetIsListed();
    void filteredDatasetsAppear();
    void theSelectionFollowsItsClick_data();
    void theSelectionFollowsItsClick();
    void aNameThatOnlyBeginsTheSameIsNotTheSame();
    void nothingSelectedStaysHarmless();
    void theResultFollowsAFallenBackSelection();

    void closingOnlyHides_data();
    void closingOnlyHides();
    void aClosedWindowIsShownAgainAsItWas();
    void resizingChangesOnlyTheSize();
    void refreshRepaintsTheView();
    void refreshWithoutAViewIsHarmless();
};

void tst_SequenceRefresh::init()
{
    CVXUtilityFns::setkValue(QStringLiteral("1.00"));
}

void tst_SequenceRefresh::aHiddenWindowKeepsItsLists_data()
{
    QTest::addColumn<bool>("visible");
    QTest::newRow("a hidden window is not brought up to date") << false;
    QTest::newRow("a visible window is") << true;
}

void tst_SequenceRefresh::aHiddenWindowKeepsItsLists()
{
    QFETCH(bool, visible);
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    if (visible)
        bound.show();
    QCOMPARE(bound.window()->isVisible(), visible);
    bound.addClick(QStringLiteral("A3"));
    const QStringList expected = visible ? QStringList{"A1", "A2", "A3"} : QStringList{"A1", "A2"};
    QCOMPARE(bound.listA(), expected);
    QCOMPARE(bound.listB(), expected);
}

void tst_SequenceRefresh::theFilesOfImportedClicksAreInTheTooltips()
{
    using namespace clickinfo;
    BoundWindow bound;
    const auto nameSource = [](CVXSDataset *dataset, const QString &file) {
        ensureSection(dataset->getClickInfo(), SECTION_LUMINESCENT)->setValue(KEY_IMPORTED_FROM, file);
    };
    nameSource(bound.addClick("A1"), "mouse <b>640</b>.tif");
    bound.addClick("A2");
    QVERIFY(bound.saveAndBind());
    bound.show();
    const auto toolTips = [&bound] {
        QStringList all;
        for (const QListWidget *list : {bound.window()->m_pListBoxA, bound.window()->m_pListBoxB}) {
            for (int row = 0; row < list->count(); ++row)
                all += list->item(row)->toolTip();
        }
        return all;
    };
    const QString first = "<qt>mouse &lt;b&gt;640&lt;/b&gt;.tif</qt>"; // shown as it stands
    QCOMPARE(toolTips(), (QStringList{first, "", first, ""}));
    QCOMPARE(bound.listA(), (QStringList{"A1", "A2"}));
    // After the lists were filled anew as well.
    nameSource(bound.addClick("A3"), "third.tif");
    bound.window()->updateImageMathWindow();
    const QString third = "<qt>third.tif</qt>";
    QCOMPARE(toolTips(), (QStringList{first, "", third, first, "", third}));
}

void tst_SequenceRefresh::emptyListsStayEmpty()
{
    BoundWindow bound;
    bound.addPhotographOnly(QStringLiteral("A1"));
    QVERIFY(bound.saveAndBind());
    bound.show();
    bound.addClick(QStringLiteral("A2"));
    QCOMPARE(bound.listA(), QStringList{});
    QCOMPARE(bound.listB(), QStringList{});
}

void tst_SequenceRefresh::anAddedDatasetIsListed_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QStringList>("lists");
    QTest::newRow("at the end") << -1 << QStringList{"A1", "A2", "N1"};
    QTest::newRow("at the beginning") << 0 << QStringList{"N1", "A1", "A2"};
    QTest::newRow("in the middle") << 1 << QStringList{"A1", "N1", "A2"};
}

void tst_SequenceRefresh::anAddedDatasetIsListed()
{
    QFETCH(int, position);
    QFETCH(QStringList, lists);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    auto *added = new CVXSDataset(QStringLiteral("N1"));
    QVERIFY(bound.sequence()->addDataset(added, position));
    QCOMPARE(bound.listA(), lists);
    QCOMPARE(bound.listB(), lists);
    QCOMPARE(bound.window()->m_pListBoxA->currentItem()->text(), QStringLiteral("A1"));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QStringLiteral("A2"));
}

void tst_SequenceRefresh::filteredDatasetsAppear()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    bound.addPhotographOnly(QStringLiteral("P1"));
    bound.addClick(QStringLiteral("A2"));
    QVERIFY(bound.saveAndBind());
    bound.show();
    QCOMPARE(bound.listA(), (QStringList{"A1", "A2"}));
    bound.addClick(QStringLiteral("A3"));
    QCOMPARE(bound.listA(), (QStringList{"A1", "P1", "A2", "A3"}));
    QCOMPARE(bound.listB(), (QStringList{"A1", "P1", "A2", "A3"}));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QStringLiteral("A2"));
}

void tst_SequenceRefresh::theSelectionFollowsItsClick_data()
{
    QTest::addColumn<int>("rowA");
    QTest::addColumn<int>("rowB");
    QTest::addColumn<QStringList>("removed");
    QTest::addColumn<QString>("textA");
    QTest::addColumn<QString>("textB");
    row("clicks that stay keep the selection", 1, 3, QStringList{"C1"}, "C2", "C4");
    row("a removed click in the middle falls back to its row", 1, 3, QStringList{"C2"}, "C3", "C4");
    row("a removed last click falls back to the last row", 0, 3, QStringList{"C4"}, "C1", "C3");
    row("each list on its own", 3, 0, QStringList{"C4"}, "C3", "C1");
    row("the same click in both lists", 3, 3, QStringList{"C4"}, "C3", "C3");
    row("all but the first", 2, 3, QStringList{"C2", "C3", "C4"}, "C1", "C1");
    row("the first one", 0, 1, QStringList{"C1"}, "C2", "C2");
}

void tst_SequenceRefresh::theSelectionFollowsItsClick()
{
    QFETCH(int, rowA);
    QFETCH(int, rowB);
    QFETCH(QStringList, removed);
    QFETCH(QString, textA);
    QFETCH(QString, textB);
    BoundWindow bound;
    for (const QString &number :
         {QStringLiteral("C1"), QStringLiteral("C2"), QStringLiteral("C3"), QStringLiteral("C4")})
        bound.addClick(number);
    QVERIFY(bound.saveAndBind());
    bound.show();
    bound.window()->m_pListBoxA->setCurrentRow(rowA);
    bound.window()->m_pListBoxB->setCurrentRow(rowB);
    for (const QString &number : removed)
        QVERIFY(bound.sequence()->removeDataset(number));
    QVERIFY(bound.window()->m_pListBoxA->currentItem());
    QVERIFY(bound.window()->m_pListBoxB->currentItem());
    QCOMPARE(bound.window()->m_pListBoxA->currentItem()->text(), textA);
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), textB);
    QCOMPARE(bound.listA(), bound.sequence()->getClickNumbers());
    QCOMPARE(bound.listB(), bound.sequence()->getClickNumbers());
}

void tst_SequenceRefresh::aNameThatOnlyBeginsTheSameIsNotTheSame()
{
    BoundWindow bound;
    for (const QString &number :
         {QStringLiteral("C1"), QStringLiteral("C2"), QStringLiteral("C21"), QStringLiteral("c2")})
        bound.addClick(number);
    QVERIFY(bound.saveAndBind());
    bound.show();
    bound.window()->m_pListBoxA->setCurrentRow(0);
    bound.window()->m_pListBoxB->setCurrentRow(1);
    QVERIFY(bound.sequence()->addDataset(new CVXSDataset(QStringLiteral("C0")), 0));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QStringLiteral("C2"));
    QCOMPARE(bound.window()->m_pListBoxB->currentRow(), 2);
    bound.window()->m_pListBoxB->setCurrentRow(0);
    QVERIFY(bound.sequence()->removeDataset(QStringLiteral("C0")));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QStringLiteral("C1"));
    bound.window()->m_pListBoxB->setCurrentRow(1);
    QVERIFY(bound.sequence()->addDataset(new CVXSDataset(QStringLiteral("D0")), 2));
    QVERIFY(bound.sequence()->removeDataset(QStringLiteral("C2")));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QStringLiteral("D0"));
}

void tst_SequenceRefresh::nothingSelectedStaysHarmless()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    bound.window()->m_pListBoxA->setCurrentRow(-1);
    bound.window()->m_pListBoxB->setCurrentRow(-1);
    bound.addClick(QStringLiteral("A3"));
    QCOMPARE(bound.listA(), (QStringList{"A1", "A2", "A3"}));
    QCOMPARE(bound.listB(), (QStringList{"A1", "A2", "A3"}));
}

void tst_SequenceRefresh::theResultFollowsAFallenBackSelection()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 40.0f, 10.0f}));
    QCOMPARE(bound.window()->m_resultImage.getMax(), 60.0f);
    QVERIFY(bound.sequence()->removeDataset(QStringLiteral("A2")));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QStringLiteral("A3"));
    QCOMPARE(bound.window()->m_resultImage.getMax(), 90.0f);
    QCOMPARE(bound.window()->m_pDatasetB, bound.sequence()->getDataset(QStringLiteral("A3")));
}

// --- close, resize, repaint ---

void tst_SequenceRefresh::closingOnlyHides_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("by the window's own close") << "window";
    QTest::newRow("by a close event") << "event";
}

void tst_SequenceRefresh::closingOnlyHides()
{
    QFETCH(QString, how);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    QVERIFY(bound.subWindow()->isVisible());
    QPointer<WindowProbe> guard = bound.window();
    if (how == QLatin1String("window")) {
        QVERIFY(!bound.window()->close());
    } else {
        QCloseEvent event;
        event.accept();
        bound.window()->closeEvent(&event);
        QVERIFY(!event.isAccepted());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QVERIFY(guard);
    QVERIFY(!bound.subWindow()->isVisible());
    QVERIFY(bound.workspace()->subWindowList().contains(bound.subWindow()));
    QCOMPARE(bound.window()->getSequenceID(), QStringLiteral("AB20260102030405_SEQ"));
}

void tst_SequenceRefresh::aClosedWindowIsShownAgainAsItWas()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 40.0f, 10.0f}));
    bound.window()->m_pListBoxB->setCurrentRow(2);
    for (int i = 0; i < 3; ++i) {
        bound.window()->close();
        QVERIFY(!bound.window()->isVisible());
        bound.subWindow()->showWindow();
        QVERIFY(bound.window()->isVisible());
    }
    QCOMPARE(bound.window()->m_pListBoxB->currentRow(), 2);
    QCOMPARE(bound.window()->m_resultImage.getMax(), 90.0f);
    QVERIFY(bound.window()->m_pView->imageAt(2));
}

void tst_SequenceRefresh::resizingChangesOnlyTheSize()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    const QSize before = bound.window()->size();
    const VXSRECT bar = bound.window()->m_pColorbarAB->rect;
    bound.window()->forgetCalls();
    bound.subWindow()->resize(bound.subWindow()->size() + QSize(120, 80));
    QCoreApplication::processEvents();
    QCOMPARE(bound.window()->size(), before + QSize(120, 80));
    QCOMPARE(bound.window()->calls, (QMap<QByteArray, int>{}));
    QCOMPARE(bound.window()->computations, 0);
    QCOMPARE(bound.window()->m_pColorbarAB->rect.top, bar.top);
}

void tst_SequenceRefresh::aChangeOfTheSequenceComputesOnce_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("table");
    row("another unit", int(EUNIT_RADIANCE), int(VXS_CT_RAINBOW));
    row("other colours", int(EUNIT_COUNTS), int(VXS_CT_YELLOWHOT));
}

void tst_SequenceRefresh::aChangeOfTheSequenceComputesOnce()
{
    QFETCH(int, unit);
    QFETCH(int, table);
    BoundWindow bound;
    for (const char *number : {"A1", "A2", "A3"})
        bound.addClick(QString::fromLatin1(number));
    bound.workspace()->showSequence(bound.sequence()); // whose window announces changes as well
    QVERIFY(bound.saveAndBind());
    bound.show();
    bound.window()->m_pListBoxA->setCurrentRow(1);
    bound.window()->m_pListBoxB->setCurrentRow(2);
    bound.window()->forgetCalls();
    bound.sequence()->setActiveUnit(tag_edisplayunit(unit));
    tag_simageadjust adjust = bound.sequence()->getImageAdjust();
    adjust.colorTable = VXS_COLORTABLE_TYPES(table);
    bound.sequence()->setImageAdjust(adjust);
    QCOMPARE(bound.window()->computations, 1);
    bound.addClick(QStringLiteral("A4"));
    QCOMPARE(bound.window()->computations, 2);
    bound.sequence()->removeDataset(QStringLiteral("A1"));
    QCOMPARE(bound.window()->computations, 3);
    QCOMPARE(bound.window()->m_pListBoxA->currentItem()->text(), QString("A2"));
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), QString("A3"));
}

void tst_SequenceRefresh::theDatasetOfAGoesWithoutAFailure()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 50.0f, 20.0f}));
    bound.window()->forgetCalls();
    const LogCatcher log;
    QVERIFY(bound.sequence()->removeDataset(QStringLiteral("A1")));
    QVERIFY2(log.failures().isEmpty(), qPrintable(log.failures().join('\n')));
    QCOMPARE(bound.listA(), (QStringList{"A2", "A3"}));
    QCOMPARE(bound.window()->m_pListBoxA->currentRow(), 0);
    QCOMPARE(bound.window()->computations, 1);
    QCOMPARE(bound.window()->m_resultImage.getMax(), 50.0f - 50.0f);
}

void tst_SequenceRefresh::anotherUnitIsComputedAndNamed()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 50.0f}));
    const auto view = [&bound](int slot) { return bound.window()->viewImage(slot); };
    QCOMPARE(view(CVXSImageMathWnd::SLOT_A)->getMin(), 100.0f);
    QCOMPARE(bound.window()->m_pTagA->getStringList(), QStringList(QStringLiteral("Counts")));
    bound.sequence()->setActiveUnit(EUNIT_RADIANCE);
    CILImage radiance;
    QCOMPARE(bound.sequence()
                 ->getDataset(QStringLiteral("A1"))
                 ->getCalibratedLuminImage(EUNIT_RADIANCE, &radiance, QString()),
             ESTATUS_SUCCESS);
    QVERIFY(radiance.getMin() != 100.0f);
    QCOMPARE(view(CVXSImageMathWnd::SLOT_A)->getMin(), radiance.getMin());
    QCOMPARE(bound.window()->m_pTagA->getStringList(), QStringList(QStringLiteral("Radiance (Photons)")));
}

void tst_SequenceRefresh::otherColoursReachTheImages()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 50.0f}));
    tag_simageadjust adjust = bound.sequence()->getImageAdjust();
    adjust.colorTable = VXS_CT_YELLOWHOT;
    bound.sequence()->setImageAdjust(adjust);
    for (int slot : {CVXSImageMathWnd::SLOT_A, CVXSImageMathWnd::SLOT_B, CVXSImageMathWnd::SLOT_RESULT})
        QCOMPARE(int(bound.window()->viewImage(slot)->getPalette().getColorTableType()),
                 int(VXS_CT_YELLOWHOT));
}

void tst_SequenceRefresh::refreshRepaintsTheView()
{
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    PaintCounter paints(bound.window()->m_pView);
    bound.show();
    QTRY_VERIFY(paints.count > 0);
    QVERIFY(paints.comesToRest());
    bound.window()->refreshImages();
    QTRY_VERIFY(paints.count > 0);
}

void tst_SequenceRefresh::refreshWithoutAViewIsHarmless()
{
    BoundWindow bound;
    bound.subWindow()->showWindow();
    bound.window()->refreshImages();
    bound.window()->doSettings();
    bound.window()->updateImageMathWindow();
    QVERIFY(!bound.window()->m_pView);
    QVERIFY(bound.window()->m_pTagA->getStringList().isEmpty());
}

QTEST_MAIN(tst_SequenceRefresh)
#include "tst_SequenceRefresh.moc"
