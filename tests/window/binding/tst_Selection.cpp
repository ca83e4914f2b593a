// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/BoundWindow.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/LogCatcher.h"

#include <QTranslator>
#include <QtTest>

/// Choosing clicks in the lists of a bound window, and what of it survives a change of language.
class tst_Selection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void selectingComputes_data();
    void selectingComputes();
    void theSameClickTwice();
    void withoutACurrentRowNothingHappens_data();
    void withoutACurrentRowNothingHappens();
    void aClickOfNoSequenceIsRefused_data();
    void aClickOfNoSequenceIsRefused();
    void aValidSelectionAfterARefusedOne();
    void aClosedSequenceIsRefused();
    void photographChoiceFollowsTheSelection();
    void theChosenPhotographStaysWhileItIsOffered();
    void languageChangeKeepsWhatIsBound_data();
    void languageChangeKeepsWhatIsBound();
    void anotherLanguageIsShownAtOnce();
    void twoWindowsOnOneSequence();
};

void tst_Selection::init()
{
    CVXUtilityFns::setkValue(QStringLiteral("1.00"));
}

void tst_Selection::selectingComputes_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("by the program") << "program";
    QTest::newRow("by the mouse") << "mouse";
    QTest::newRow("by the keyboard") << "keyboard";
}

void tst_Selection::selectingComputes()
{
    QFETCH(QString, how);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 40.0f, 10.0f}));
    bound.window()->forgetCalls();
    QListWidget *list = bound.window()->m_pListBoxB;
    if (how == QLatin1String("program")) {
        list->setCurrentRow(2);
    } else if (how == QLatin1String("mouse")) {
        QVERIFY(GuiDriver(bound.window()).pickRow(list, 2));
    } else {
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
    }
    QCOMPARE(list->currentRow(), 2);
    QCOMPARE(bound.window()->computations, 1);
    QCOMPARE(bound.window()->computationsWithoutView, 0);
    QCOMPARE(bound.window()->m_pDatasetA, bound.sequence()->getDataset(QStringLiteral("A1")));
    QCOMPARE(bound.window()->m_pDatasetB, bound.sequence()->getDataset(QStringLiteral("A3")));
    QCOMPARE(bound.window()->m_resultImage.getMax(), 90.0f);
    QCOMPARE(bound.window()->m_pView->imageAt(1)->getMin(), 10.0f);
    QVERIFY(bound.window()->m_pDisplayBtn->isEnabled());
}

void tst_Selection::theSameClickTwice()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 40.0f}));
    bound.window()->m_pListBoxB->setCurrentRow(0);
    QCOMPARE(bound.window()->m_pDatasetA, bound.window()->m_pDatasetB);
    QCOMPARE(bound.window()->m_resultImage.getMax(), 0.0f);
    QVERIFY(!bound.window()->m_bCannotCombine);
}

void tst_Selection::withoutACurrentRowNothingHappens_data()
{
    QTest::addColumn<bool>("listA");
    QTest::newRow("in list A") << true;
    QTest::newRow("in list B") << false;
}

void tst_Selection::withoutACurrentRowNothingHappens()
{
    QFETCH(bool, listA);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    QListWidget *list = listA ? bound.window()->m_pListBoxA : bound.window()->m_pListBoxB;
    list->setCurrentRow(-1);
    bound.window()->forgetCalls();
    const LogCatcher log;
    bound.window()->onSelectClickNumberFromList();
    QCOMPARE(bound.window()->computations, 0);
    QCOMPARE(bound.window()->steps, QStringList{});
    QVERIFY(log.entries().isEmpty());
    QVERIFY(bound.window()->m_pDisplayBtn->isEnabled());
}

void tst_Selection::aClickOfNoSequenceIsRefused_data()
{
    QTest::addColumn<bool>("inA");
    QTest::addColumn<bool>("inB");
    QTest::newRow("in list A") << true << false;
    QTest::newRow("in list B") << false << true;
    QTest::newRow("in both lists") << true << true;
}

void tst_Selection::aClickOfNoSequenceIsRefused()
{
    QFETCH(bool, inA);
    QFETCH(bool, inB);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    if (inA)
        bound.window()->m_pListBoxA->item(0)->setText(QStringLiteral("XX20250101010101"));
    if (inB)
        bound.window()->m_pListBoxB->item(1)->setText(QStringLiteral("XX20250101010101"));
    bound.window()->forgetCalls();
    const LogCatcher log;
    bound.window()->onSelectClickNumberFromList();

    QCOMPARE(bound.window()->computations, 0);
    for (int slot = 0; slot < 3; ++slot) {
        QVERIFY(!bound.window()->viewImage(slot));
        QVERIFY(!bound.window()->m_pView->imageAt(slot));
    }
    QVERIFY(!bound.window()->m_pDisplayBtn->isEnabled());
    QCOMPARE(log.entries().size(), 1);
    const LogEntry entry = log.entries().first();
    QCOMPARE(entry.message, QStringLiteral("One or more dataset(s) is/are invalid..."));
    QCOMPARE(entry.detail, QString());
    QCOMPARE(entry.number, 0);
    QCOMPARE(entry.stamp, QStringLiteral("18:26:27"));
    QCOMPARE(entry.level, long(ELOG_FAILURE));
    QCOMPARE(bound.window()->m_pResultTag->getStringList(), QStringList{"Need two images."});
    QCOMPARE(bound.window()->m_messages, QStringList{"Need two images."});
    QVERIFY2(bound.window()->m_pResultTag->isShown(), "the user sees why");
    QCOMPARE(bound.window()->steps, (QStringList{"settings", "refresh"}));
    QCOMPARE(bound.window()->m_pTagA->getStringList(), QStringList{"(No luminescent image)"});
    QVERIFY2(!bound.window()->m_bCannotCombine, "the flag is the computation's");
}

void tst_Selection::aValidSelectionAfterARefusedOne()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 40.0f}));
    bound.window()->m_pListBoxA->item(0)->setText(QStringLiteral("XX20250101010101"));
    bound.window()->onSelectClickNumberFromList();
    QVERIFY(!bound.window()->m_pDisplayBtn->isEnabled());
    bound.window()->m_pListBoxA->item(0)->setText(QStringLiteral("A1"));
    bound.window()->onSelectClickNumberFromList();
    QVERIFY(bound.window()->m_pDisplayBtn->isEnabled());
    QVERIFY(!bound.window()->m_pResultTag->isShown());
    QVERIFY(bound.window()->m_messages.isEmpty());
    QVERIFY(bound.window()->m_pView->imageAt(2));
    QCOMPARE(bound.window()->m_pView->imageAt(2)->getMax(), 60.0f);
}

void tst_Selection::aClosedSequenceIsRefused()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    bound.study().close();
    const LogCatcher log;
    bound.window()->m_pListBoxB->setCurrentRow(0);
    QCOMPARE(log.toolEntries().size(), 1);
    QCOMPARE(log.toolEntries().first().message, QStringLiteral("One or more dataset(s) is/are invalid..."));
    QVERIFY(!bound.window()->m_pDisplayBtn->isEnabled());
    QVERIFY(!bound.window()->m_pView->imageAt(2));
    bound.window()->updateImageMathWindow();
    QCOMPARE(bound.listA(), (QStringList{"A1", "A2"}));
    QCOMPARE(bound.window()->getSequenceID(), QStringLiteral("AB20260102030405_SEQ"));
}

void tst_Selection::theChosenPhotographStaysWhileItIsOffered()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), true);
    bound.addClick(QStringLiteral("A2"), true);
    bound.addClick(QStringLiteral("A3"), true);
    bound.addClick(QStringLiteral("A4"), false);
    QVERIFY(bound.saveAndBind());
    bound.show();
    QComboBox *choice = bound.window()->m_pPhotoFromCB;
    QCOMPARE(choice->currentText(), QStringLiteral("A"));
    choice->setCurrentIndex(1);
    bound.window()->m_pListBoxB->setCurrentRow(2);
    QCOMPARE(choice->currentText(), QStringLiteral("B"));
    bound.sequence()->setActiveUnit(EUNIT_RADIANCE);
    QCOMPARE(choice->currentText(), QStringLiteral("B"));
    bound.window()->m_pListBoxB->setCurrentRow(3); // has none
    QCOMPARE(choice->currentText(), QStringLiteral("A"));
}

void tst_Selection::photographChoiceFollowsTheSelection()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), false);
    bound.addClick(QStringLiteral("A2"), false);
    bound.addClick(QStringLiteral("A3"), true);
    QVERIFY(bound.saveAndBind());
    bound.show();
    QComboBox *choice = bound.window()->m_pPhotoFromCB;
    QVERIFY(!choice->isEnabled());
    bound.window()->m_pListBoxB->setCurrentRow(2);
    QVERIFY(choice->isEnabled());
    QVERIFY(bound.window()->m_pWithPhotoChkBox->isEnabled());
    QCOMPARE(BoundWindow::itemsOf(choice), QStringList{"B"});
    bound.window()->m_pListBoxA->setCurrentRow(2);
    QCOMPARE(BoundWindow::itemsOf(choice), (QStringList{"A", "B"}));
    bound.window()->m_pListBoxB->setCurrentRow(0);
    QCOMPARE(BoundWindow::itemsOf(choice), QStringList{"A"});
    bound.window()->m_pListBoxA->setCurrentRow(1);
    QVERIFY(!choice->isEnabled());
    QVERIFY(!bound.window()->m_pWithPhotoChkBox->isEnabled());
}

void tst_Selection::languageChangeKeepsWhatIsBound_data()
{
    QTest::addColumn<bool>("photographA");
    QTest::addColumn<bool>("photographB");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("with both photographs") << true << true << QStringList{"A", "B"};
    QTest::newRow("with the photograph of A") << true << false << QStringList{"A"};
    QTest::newRow("with the photograph of B") << false << true << QStringList{"B"};
}

void tst_Selection::languageChangeKeepsWhatIsBound()
{
    QFETCH(bool, photographA);
    QFETCH(bool, photographB);
    QFETCH(QStringList, items);
    CVXUtilityFns::setkValue(QStringLiteral("2.50"));
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), photographA);
    bound.addClick(QStringLiteral("A2"), photographB);
    QVERIFY(bound.saveAndBind());
    bound.show();
    QComboBox *choice = bound.window()->m_pPhotoFromCB;
    choice->setCurrentIndex(choice->count() - 1);
    const QString chosen = choice->currentText();
    bound.window()->m_pDisplayBtn->setText(QStringLiteral("old"));
    const int computations = bound.window()->computations;
    bound.window()->languageChange();
    QCOMPARE(bound.window()->m_pDisplayBtn->text(), QStringLiteral("Display Result For Measuring"));
    QCOMPARE(bound.window()->m_pSeqTitle->text(), QStringLiteral("<b>Sequence: AB20260102030405_SEQ</b>"));
    QCOMPARE(bound.window()->m_pKLineEdit->text(), QStringLiteral("2.50"));
    QCOMPARE(bound.window()->m_kValue, 2.5f);
    QCOMPARE(BoundWindow::itemsOf(choice), items);
    QCOMPARE(choice->currentText(), chosen);
    QVERIFY(choice->isEnabled());
    QCOMPARE(bound.window()->computations, computations);
    QCOMPARE(bound.listA(), (QStringList{"A1", "A2"}));
}

void tst_Selection::anotherLanguageIsShownAtOnce()
{
    // Every text of the form in brackets.
    class Brackets : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *text, const char *, int) const override
        {
            return qstrcmp(context, "CVXSImageMathWnd") == 0 ? QStringLiteral("[%1]").arg(QLatin1String(text))
                                                             : QString();
        }
    };
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), true);
    bound.addClick(QStringLiteral("A2"), true);
    QVERIFY(bound.saveAndBind());
    bound.show();
    bound.window()->setWindowTitle(QStringLiteral("Image Math Window")); // as the launcher does
    bound.window()->m_pPhotoFromCB->setCurrentIndex(1);
    Brackets brackets;
    QVERIFY(QCoreApplication::installTranslator(&brackets));
    QCoreApplication::processEvents();
    QCOMPARE(bound.window()->m_pDisplayBtn->text(), QStringLiteral("[Display Result For Measuring]"));
    QCOMPARE(bound.window()->windowTitle(), QStringLiteral("Image Math Window"));
    QCOMPARE(BoundWindow::itemsOf(bound.window()->m_pPhotoFromCB), (QStringList{"[A]", "[B]"}));
    QCOMPARE(bound.window()->m_pPhotoFromCB->currentIndex(), 1);
    // A choice that is filled anew is in that language too.
    bound.window()->m_pListBoxA->setCurrentRow(1);
    QCOMPARE(BoundWindow::itemsOf(bound.window()->m_pPhotoFromCB), (QStringList{"[A]", "[B]"}));
    QVERIFY(QCoreApplication::removeTranslator(&brackets));
    QCoreApplication::processEvents();
    QCOMPARE(BoundWindow::itemsOf(bound.window()->m_pPhotoFromCB), (QStringList{"A", "B"}));
}

void tst_Selection::twoWindowsOnOneSequence()
{
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 40.0f}));
    WindowProbe second;
    QVERIFY(second.bindToSequence(bound.sequence()->getSequenceID()));
    second.m_pListBoxA->setCurrentRow(1);
    QCOMPARE(second.m_resultImage.getMax(), 0.0f);
    QCOMPARE(bound.window()->m_resultImage.getMax(), 60.0f);
    QCOMPARE(bound.window()->computations, 1);
}

QTEST_MAIN(tst_Selection)
#include "tst_Selection.moc"
