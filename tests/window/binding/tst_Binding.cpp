// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/deleteFolderTree.h"
#include "tests/support/BoundWindow.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/LogCatcher.h"

#include <algorithm>
#include <QtTest>

namespace {

// Saves as it is told, and counts how often it was asked.
class SavingWindow : public CVXSSequenceWindow
{
public:
    SavingWindow(CVXSSequenceDataset *sequence, ESTATUS status)
        : CVXSSequenceWindow(sequence), m_status(status)
    {
    }
    ESTATUS saveSequence() override
    {
        ++asked;
        return m_status;
    }
    int asked = 0;

private:
    ESTATUS m_status;
};

const QString SAVE_QUESTION = QStringLiteral("This sequence need to be saved to the disk before using 'Image "
                                             "Math Tool' on it.\nDo you want to save and continue?");

} // namespace

/// What binding to a sequence asks, fills in and selects.
class tst_Binding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void title();
    void sequenceID();
    void aSavedSequenceIsNotAskedAbout();
    void anUnsavedSequence_data();
    void anUnsavedSequence();
    void everyAnswerButNoGoesOn();
    void changesOfTheSequenceReachTheWindow();
    void aSequenceWithoutAWindowIsWatchedToo();
    void storedK_data();
    void storedK();
    void listFilter_data();
    void listFilter();
    void clicksWithoutADatasetAreLeftOut();
    void theListsKeepTheSequencesOrder();
    void selectionAndOperation();
    void theFirstComputationRunsWithoutAView();
    void oneListedClickComputesNothing();
    void noListedClickComputesNothing();
    void photographChoiceAtBinding_data();
    void photographChoiceAtBinding();
    void photographChoiceNeedsBothRows();
};

void tst_Binding::init()
{
    CVXUtilityFns::setkValue(QStringLiteral("1.00"));
}

void tst_Binding::title()
{
    BoundWindow bound(QStringLiteral("ZZ20270809101112_SEQ"));
    bound.addClick(QStringLiteral("ZZ1"));
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.window()->m_pSeqTitle->text(), QStringLiteral("<b>Sequence: ZZ20270809101112_SEQ</b>"));
    QCOMPARE(bound.window()->m_pSeqTitle->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
}

void tst_Binding::sequenceID()
{
    BoundWindow bound(QStringLiteral("ZZ20270809101112_SEQ"));
    bound.addClick(QStringLiteral("ZZ1"));
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.window()->getSequenceID(), QStringLiteral("ZZ20270809101112_SEQ"));
}

void tst_Binding::aSavedSequenceIsNotAskedAbout()
{
    DialogAnswerer boxes;
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    QCOMPARE(boxes.count(), 0);
    QVERIFY(!bound.window()->m_bSavedForImageMath);
}

void tst_Binding::anUnsavedSequence_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("hasWindow");
    QTest::addColumn<int>("saveStatus");
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("savedFlag");
    const int yes = QMessageBox::Yes;
    const int no = QMessageBox::No;
    QTest::newRow("No fails the binding") << no << true << 0 << false << false;
    QTest::newRow("No fails without a sequence window as well") << no << false << 0 << false << false;
    QTest::newRow("Escape is No") << DialogAnswer::ESCAPE_KEY << true << 0 << false << false;
    QTest::newRow("Yes and a good save") << yes << true << int(ESTATUS_SUCCESS) << true << true;
    QTest::newRow("Yes and a save that fails") << yes << true << int(ESTATUS_FAILURE) << false << false;
    QTest::newRow("Yes and a folder that cannot be written")
        << yes << true << int(ESTATUS_FILE_NOT_WRITABLE) << false << false;
    QTest::newRow("Yes without a sequence window goes on unsaved") << yes << false << 0 << true << false;
}

void tst_Binding::anUnsavedSequence()
{
    QFETCH(int, answer);
    QFETCH(bool, hasWindow);
    QFETCH(int, saveStatus);
    QFETCH(bool, bound);
    QFETCH(bool, savedFlag);
    BoundWindow fixture;
    fixture.addClick(QStringLiteral("A1"));
    fixture.addClick(QStringLiteral("A2"));
    SavingWindow *saving = nullptr;
    if (hasWindow) {
        saving = new SavingWindow(fixture.sequence(), ESTATUS(saveStatus));
        fixture.workspace()->addChildWindow(saving);
    }
    DialogAnswerer boxes({answer});
    QCOMPARE(fixture.bind(), bound);
    QCOMPARE(boxes.count(), 1);
    const DialogAnswerer::Shown box = boxes.shown().first();
    QCOMPARE(box.title, CVXUtilityFns::getAppName());
    QCOMPARE(box.text, SAVE_QUESTION);
    QCOMPARE(box.icon, QMessageBox::Warning);
    QVERIFY(!box.hasParent);
    QList<int> buttons = box.standardButtons;
    std::sort(buttons.begin(), buttons.end());
    QCOMPARE(buttons, (QList<int>{0x4000, 0x10000}));
    if (saving)
        QCOMPARE(saving->asked, answer == int(QMessageBox::Yes) ? 1 : 0);
    QCOMPARE(fixture.window()->m_bSavedForImageMath, savedFlag);
    QCOMPARE(bool(fixture.window()->m_pView), bound);
    QCOMPARE(fixture.listA().size(), bound ? 2 : 0);
    QCOMPARE(fixture.window()->computations, bound ? 1 : 0);
}

// Closed by a program, the box has no answer.
void tst_Binding::everyAnswerButNoGoesOn()
{
    BoundWindow fixture;
    fixture.addClick(QStringLiteral("A1"));
    fixture.addClick(QStringLiteral("A2"));
    auto *saving = new SavingWindow(fixture.sequence(), ESTATUS_SUCCESS);
    fixture.workspace()->addChildWindow(saving);
    const DialogAnswerer user({DialogAnswer::call([](QDialog *dialog) { dialog->done(0); })});
    QVERIFY(fixture.bind());
    QCOMPARE(user.count(), 1);
    QCOMPARE(saving->asked, 1);
    QVERIFY(fixture.window()->m_bSavedForImageMath);
}

void tst_Binding::changesOfTheSequenceReachTheWindow()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    bound.addClick(QStringLiteral("A2"));
    QVERIFY(bound.study().save());
    CVXSSequenceWindow *shown = bound.workspace()->showSequence(bound.sequence());
    QVERIFY(bound.bind());
    bound.window()->forgetCalls();
    emit bound.sequence()->updateOnChangeSequence();
    QCOMPARE(bound.window()->calls.value("updateImageMathWindow"), 1);
    emit shown->signalUpdateMeasurmentsCombobox(QStringLiteral("A1"));
    QCOMPARE(bound.window()->calls.value("updateImageMathWindow"), 2);
}

void tst_Binding::aSequenceWithoutAWindowIsWatchedToo()
{
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    bound.window()->forgetCalls();
    emit bound.sequence()->updateOnChangeSequence();
    QCOMPARE(bound.window()->calls.value("updateImageMathWindow"), 1);
}

void tst_Binding::storedK_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<float>("k");
    QTest::newRow("the text of a fresh profile") << "1.00" << 1.0f;
    QTest::newRow("a small number") << "5.00e-1" << 0.5f;
    QTest::newRow("a large number") << "1.23e5" << 1.23e5f;
    QTest::newRow("a negative number") << "-2.50" << -2.5f;
    QTest::newRow("a number in another form is shown as it is stored") << "2.5000" << 2.5f;
    QTest::newRow("a number beyond the bounds is not clamped here") << "2e15" << 2e15f;
    QTest::newRow("a decimal comma reads as 0") << "1,5" << 0.0f;
    QTest::newRow("a word reads as 0") << "many" << 0.0f;
}

void tst_Binding::storedK()
{
    QFETCH(QString, stored);
    QFETCH(float, k);
    CVXUtilityFns::setkValue(stored);
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    QCOMPARE(bound.window()->m_pKLineEdit->text(), stored);
    QVERIFY(bound.window()->m_kValue == k);
    QCOMPARE(CVXUtilityFns::getkValue(), stored);
    // The first computation used it: A and B hold the same pixels, the largest of them 100 + 31 + 62.
    const float a = 193.0f;
    const float b = 100.0f;
    const float atA = a - k * a;
    const float atB = b - k * b;
    QCOMPARE(bound.window()->m_resultImage.getMax(), std::max(atA, atB));
}

void tst_Binding::listFilter_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("listed");
    QTest::newRow("luminescence is listed") << QString(clickinfo::KIND_LUMINESCENT) << true;
    QTest::newRow("fluorescence is listed") << QString(clickinfo::KIND_FLUORESCENT) << true;
    QTest::newRow("transfluorescence is listed") << QString(clickinfo::KIND_TRANSFLUORESCENT) << true;
    QTest::newRow("transillumination is listed") << QString(clickinfo::KIND_TRANSILLUMINATION) << true;
    QTest::newRow("a photograph alone is not") << "photograph" << false;
    QTest::newRow("an X-ray image alone is not") << "xray" << false;
}

void tst_Binding::listFilter()
{
    QFETCH(QString, kind);
    QFETCH(bool, listed);
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    if (kind == QLatin1String("photograph")) {
        bound.addPhotographOnly(QStringLiteral("A2"));
    } else if (kind == QLatin1String("xray")) {
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("A2");
        spec.counts = nullptr;
        CVXSDataset *dataset = bound.study().add(spec);
        dataset->setCoreImage(EIMAGE_XRAY,
                              TestStudy::image(16, 16, [](int x, int y) { return float(x * y); }));
    } else {
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("A2");
        spec.kind = kind;
        bound.study().add(spec);
    }
    bound.addClick(QStringLiteral("A3"));
    QVERIFY(bound.saveAndBind());
    const QStringList expected = listed ? QStringList{"A1", "A2", "A3"} : QStringList{"A1", "A3"};
    QCOMPARE(bound.listA(), expected);
    QCOMPARE(bound.listB(), expected);
}

void tst_Binding::clicksWithoutADatasetAreLeftOut()
{
    TestStudy study(QStringLiteral("LO20260102030405_SEQ"));
    for (const QString &number : {QStringLiteral("L1"), QStringLiteral("L2"), QStringLiteral("L3")}) {
        ClickSpec spec;
        spec.clickNumber = number;
        QVERIFY(study.add(spec));
    }
    QVERIFY(study.save());
    const QString folder = study.sequence()->getSequenceInfoPath();
    const QString lost = study.sequence()->getDatasetFolderPath(QStringLiteral("L2"));
    study.close();
    QVERIFY(deleteFolderTree(QDir(lost)));
    ESTATUS status = ESTATUS_FAILURE;
    QString error;
    const std::unique_ptr<CVXSSequenceDataset> sequence(CVXSSequenceDataset::open(folder, &status, &error));
    QVERIFY2(sequence, qPrintable(error));
    WindowProbe window;
    QVERIFY(window.bindToSequence(sequence->getSequenceID()));
    QCOMPARE(BoundWindow::textsOf(window.m_pListBoxA), (QStringList{"L1", "L3"}));
    QCOMPARE(BoundWindow::textsOf(window.m_pListBoxB), (QStringList{"L1", "L3"}));
}

void tst_Binding::theListsKeepTheSequencesOrder()
{
    BoundWindow bound;
    for (const QString &number : {QStringLiteral("Z9"), QStringLiteral("A1"), QStringLiteral("M5")})
        bound.addClick(number);
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.listA(), (QStringList{"Z9", "A1", "M5"}));
    QCOMPARE(bound.listB(), (QStringList{"Z9", "A1", "M5"}));
}

void tst_Binding::selectionAndOperation()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    bound.addClick(QStringLiteral("A2"));
    bound.addClick(QStringLiteral("A3"));
    bound.window()->m_pOperationCB->setCurrentIndex(4);
    bound.window()->m_pWithPhotoChkBox->setChecked(false);
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.window()->m_pListBoxA->currentRow(), 0);
    QCOMPARE(bound.window()->m_pListBoxB->currentRow(), 1);
    QVERIFY(bound.window()->m_pListBoxA->item(0)->isSelected());
    QVERIFY(bound.window()->m_pListBoxB->item(1)->isSelected());
    QCOMPARE(bound.window()->m_pOperationCB->currentIndex(), 1);
    QVERIFY(bound.window()->m_pWithPhotoChkBox->isChecked());
    QCOMPARE(bound.window()->m_pDatasetA, bound.sequence()->getDataset(QStringLiteral("A1")));
    QCOMPARE(bound.window()->m_pDatasetB, bound.sequence()->getDataset(QStringLiteral("A2")));
    QVERIFY(bound.window()->m_pDisplayBtn->isEnabled());
}

void tst_Binding::theFirstComputationRunsWithoutAView()
{
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 40.0f}));
    QCOMPARE(bound.window()->computations, 1);
    QCOMPARE(bound.window()->computationsWithoutView, 1);
    // A - 1.00 * B
    QCOMPARE(bound.window()->m_resultImage.getMin(), 60.0f);
    QCOMPARE(bound.window()->m_resultImage.getMax(), 60.0f);
    for (int slot = 0; slot < 3; ++slot)
        QVERIFY(bound.window()->viewImage(slot));
}

void tst_Binding::oneListedClickComputesNothing()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    bound.addPhotographOnly(QStringLiteral("A2"));
    const LogCatcher log;
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.listA(), QStringList{"A1"});
    QCOMPARE(bound.listB(), QStringList{"A1"});
    QCOMPARE(bound.window()->m_pListBoxA->currentRow(), 0);
    QCOMPARE(bound.window()->m_pListBoxB->currentRow(), -1);
    QCOMPARE(bound.window()->computations, 0);
    QVERIFY(log.toolEntries().isEmpty());
    QVERIFY(bound.window()->m_pView);
    QVERIFY(!bound.window()->m_pDatasetA);
}

void tst_Binding::noListedClickComputesNothing()
{
    BoundWindow bound;
    bound.addPhotographOnly(QStringLiteral("A1"));
    bound.addPhotographOnly(QStringLiteral("A2"));
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.listA(), QStringList{});
    QCOMPARE(bound.listB(), QStringList{});
    QCOMPARE(bound.window()->computations, 0);
    QVERIFY(bound.window()->m_pView);
    bound.show();
    QVERIFY(bound.window()->isVisible());
}

void tst_Binding::photographChoiceAtBinding_data()
{
    QTest::addColumn<bool>("photographA");
    QTest::addColumn<bool>("photographB");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("both have a photograph") << true << true << true << QStringList{"A", "B"};
    QTest::newRow("only A has one") << true << false << true << QStringList{"A"};
    QTest::newRow("only B has one") << false << true << true << QStringList{"B"};
    QTest::newRow("neither has one") << false << false << false << QStringList{};
}

void tst_Binding::photographChoiceAtBinding()
{
    QFETCH(bool, photographA);
    QFETCH(bool, photographB);
    QFETCH(bool, enabled);
    QFETCH(QStringList, items);
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), photographA);
    bound.addClick(QStringLiteral("A2"), photographB);
    bound.window()->m_pPhotoFromCB->setEnabled(!enabled);
    bound.window()->m_pWithPhotoChkBox->setEnabled(!enabled);
    QVERIFY(bound.saveAndBind());
    QCOMPARE(bound.window()->m_pWithPhotoChkBox->isEnabled(), enabled);
    QCOMPARE(bound.window()->m_pPhotoFromCB->isEnabled(), enabled);
    if (enabled)
        QCOMPARE(BoundWindow::itemsOf(bound.window()->m_pPhotoFromCB), items);
    QVERIFY(bound.window()->photographChoices >= 1);
}

void tst_Binding::photographChoiceNeedsBothRows()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), true);
    bound.addClick(QStringLiteral("A2"), true);
    QVERIFY(bound.saveAndBind());
    bound.window()->m_pPhotoFromCB->clear();
    bound.window()->m_pPhotoFromCB->setEnabled(false);
    bound.window()->m_pListBoxB->setCurrentRow(-1);
    bound.window()->updatePhotographChoice();
    QCOMPARE(bound.window()->m_pPhotoFromCB->count(), 0);
    QVERIFY(!bound.window()->m_pPhotoFromCB->isEnabled());
}

QTEST_MAIN(tst_Binding)
#include "tst_Binding.moc"
