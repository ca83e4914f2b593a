// SPDX-License-Identifier: MIT
// The window's computation: what it decides, says and shows, and in which order.
#include "math/Formula.h"
#include "tests/support/LogCatcher.h"
#include "tests/window/calculation/CalculationStudy.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

using namespace calculation;

namespace {

// Looks at the display button when the first image is put into the view list.
class ButtonWatch : public WindowProbe
{
public:
    bool wasEnabled = false;
    int images = 0;

    void setViewImage(int slot, CILImage *image) override
    {
        if (image && images++ == 0)
            wasEnabled = m_pDisplayBtn->isEnabled();
        WindowProbe::setViewImage(slot, image);
    }
};

} // namespace

class tst_Calculation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        QVERIFY(m_study.save());
    }
    void theFormOffersTheFormulas();
    void orderOfASuccessfulRun_data();
    void orderOfASuccessfulRun();
    void outcomes_data();
    void outcomes();
    void theOneSidedRunFetchesTheImageThatIsThere_data();
    void theOneSidedRunFetchesTheImageThatIsThere();
    void everyRunStartsFromEmptySlotsAndHiddenTags();
    void theButtonIsEnabledAsSoonAsBothClicksAreValid_data();
    void theButtonIsEnabledAsSoonAsBothClicksAreValid();
    void theIndexChoosesTheFormula_data();
    void theIndexChoosesTheFormula();
    void anIndexOutsideTheFormulas_data();
    void anIndexOutsideTheFormulas();
    void refreshIsOffExactlyDuringTheSignals();
    void signalsAreEmittedOnce_data();
    void signalsAreEmittedOnce();
    void unequalGridsGiveAnEmptyResult();
    void realWidgetsRunTheComputation();

private:
    TestStudy m_study;
};

void tst_Calculation::theFormOffersTheFormulas()
{
    WindowProbe window;
    QCOMPARE(window.m_pOperationCB->count(), int(imagemath::formulas().size()));
    for (int i = 0; i < window.m_pOperationCB->count(); ++i)
        QCOMPARE(window.m_pOperationCB->itemText(i),
                 QString::fromLatin1(imagemath::formulas().at(std::size_t(i)).text));
}

void tst_Calculation::orderOfASuccessfulRun_data()
{
    QTest::addColumn<bool>("bound");
    QTest::addColumn<QString>("clickB");
    QTest::newRow("with a view") << true << B;
    QTest::newRow("with a view, B coarser") << true << COARSE;
    QTest::newRow("without a view") << false << B;
    QTest::newRow("without a view, B coarser") << false << COARSE;
    QTest::newRow("the same click twice") << true << A;
}

void tst_Calculation::orderOfASuccessfulRun()
{
    QFETCH(bool, bound);
    QFETCH(QString, clickB);
    WindowProbe window;
    if (bound)
        QVERIFY(window.bind(m_study));
    QCOMPARE(window.m_pView != nullptr, bound);
    window.select(m_study.sequence(), A, clickB);
    window.m_pDisplayBtn->setEnabled(false);
    window.m_bCannotCombine = true;
    window.m_messages = QStringList("left over");
    LogCatcher log;
    QCOMPARE(window.computed(), RUN);
    QCOMPARE(window.tagsShownAtFirstImage, 0);
    QCOMPARE(window.slotsAtRangeAB, (QStringList{"A", "B"}));
    QCOMPARE(window.slotsAtRangeResult, (QStringList{"A", "B", "R"}));
    QVERIFY(!window.m_bCannotCombine);
    QCOMPARE(window.m_messages, QStringList());
    QVERIFY(window.m_pDisplayBtn->isEnabled());
    QCOMPARE(log.toolFailures(), QStringList());
    QVERIFY(!window.m_pResultTag->isShown());
    QCOMPARE(window.m_pTagA->isShown(), bound);
    if (clickB == A)
        QCOMPARE(difference(window.m_imageB, window.m_imageA), QString());
}

void tst_Calculation::outcomes_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("shown");
    struct Row
    {
        const char *name;
        QString a, b;
        QStringList lines, shown;
    };
    const QStringList none, a("A"), b("B"), both{"A", "B"}, all{"A", "B", "R"}, needTwo(NEED_TWO),
        fov{CANNOT, FOV}, sizes{CANNOT, SIZES};
    const Row rows[] = {
        {"two images of one grid", A, B, none, all},
        {"identical clicks", A, A, none, all},
        {"A finer than B", A, COARSE, none, all},
        {"B finer than A", COARSE, A, none, all},
        {"fields of view differ in the last bit", A, OTHER_FIELD, fov, both},
        {"B's field of view is not recorded", A, NAN_FIELD, fov, both},
        {"a click against itself without a recorded field of view", NAN_FIELD, NAN_FIELD, fov, both},
        {"physical sizes differ", A, OTHER_SIZE, sizes, both},
        {"only A has a luminescent image", A, PHOTO_ONLY, needTwo, a},
        {"only B has a luminescent image", PHOTO_ONLY, B, needTwo, b},
        {"neither has a luminescent image", PHOTO_ONLY, PHOTO_ONLY_2, needTwo, none},
    };
    for (const Row &row : rows)
        QTest::newRow(row.name) << row.a << row.b << row.lines << row.shown;
}

void tst_Calculation::outcomes()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    QFETCH(QStringList, lines);
    QFETCH(QStringList, shown);
    const bool possible = lines.isEmpty();
    for (bool bound : {true, false}) {
        WindowProbe window;
        if (bound)
            QVERIFY(window.bind(m_study));
        window.select(m_study.sequence(), clickA, clickB);
        const Earlier earlier(window);
        window.m_bCannotCombine = possible;
        window.m_pDisplayBtn->setEnabled(!possible);
        LogCatcher log;
        QStringList steps;
        if (shown.contains("A"))
            steps << "slot 0 takes A";
        if (shown.contains("B"))
            steps << "slot 1 takes B";
        steps << "range of A and B";
        if (possible)
            steps += QStringList{"slot 2 takes result", "range of result"};
        if (possible || bound)
            steps += QStringList{"settings", "refresh"};
        QCOMPARE(window.computed(), steps);
        QCOMPARE(window.filledSlots(), shown);
        QCOMPARE(window.m_bCannotCombine, !possible);
        QCOMPARE(window.m_messages, lines);
        QCOMPARE(window.m_pDisplayBtn->isEnabled(), possible);
        QCOMPARE(log.toolFailures(), QStringList());
        QVERIFY(window.m_bRefreshEnabled);
        QCOMPARE(earlier.isStill(window), !possible);
        if (!possible) {
            QCOMPARE(window.m_pColorbarResult->palette.getImageMin(), 0.0);
            QCOMPARE(window.m_pColorbarResult->palette.getImageMax(), 0.0);
        }
        QCOMPARE(window.m_pResultTag->isShown(), bound && !possible);
        if (bound && !possible)
            QCOMPARE(window.m_pResultTag->getStringList(), lines);
        if (bound) {
            QCOMPARE(window.m_pView->imageAt(0), shown.contains("A") ? &window.m_imageA : nullptr);
            QCOMPARE(window.m_pView->imageAt(1), shown.contains("B") ? &window.m_imageB : nullptr);
            QCOMPARE(window.m_pView->imageAt(2), shown.contains("R") ? &window.m_resultImage : nullptr);
        }
    }
}

void tst_Calculation::theOneSidedRunFetchesTheImageThatIsThere_data()
{
    QTest::addColumn<bool>("sideA");
    QTest::newRow("A") << true;
    QTest::newRow("B") << false;
}

void tst_Calculation::theOneSidedRunFetchesTheImageThatIsThere()
{
    QFETCH(bool, sideA);
    WindowProbe window;
    window.select(m_study.sequence(), COARSE, COARSE);
    window.calculateResultImage();
    const CILImage earlierA = window.m_imageA, earlierB = window.m_imageB;
    window.select(m_study.sequence(), sideA ? B : PHOTO_ONLY, sideA ? PHOTO_ONLY : B);
    window.calculateResultImage();
    CILImage fresh;
    m_study.sequence()->getDataset(B)->getCalibratedLuminImage(EUNIT_COUNTS, &fresh, "test");
    // The side without an image keeps what it held, out of sight.
    QCOMPARE(difference(window.m_imageA, sideA ? fresh : earlierA), QString());
    QCOMPARE(difference(window.m_imageB, sideA ? earlierB : fresh), QString());
    QCOMPARE(window.filledSlots(), QStringList(sideA ? "A" : "B"));
}

void tst_Calculation::everyRunStartsFromEmptySlotsAndHiddenTags()
{
    WindowProbe window; // without a view nothing shows the tags again
    window.select(m_study.sequence(), A, B);
    window.calculateResultImage();
    for (const QString &clickB : {B, PHOTO_ONLY, OTHER_FIELD, UNKNOWN}) {
        window.setViewImage(2, &window.m_resultImage);
        for (CVXSTextTag *tag : {window.m_pResultTag.get(), window.m_pTagA.get(), window.m_pTagB.get()})
            tag->show(true);
        window.select(m_study.sequence(), A, clickB);
        window.calculateResultImage();
        QCOMPARE(window.shownTags(), 0);
        QCOMPARE(window.filledSlots().contains("R"), clickB == B);
    }
}

void tst_Calculation::theButtonIsEnabledAsSoonAsBothClicksAreValid_data()
{
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<bool>("isEnabledInTheEnd");
    QTest::newRow("two images that can be combined") << B << true;
    QTest::newRow("fields of view differ: in between only") << OTHER_FIELD << false;
    QTest::newRow("B has no image: in between only") << PHOTO_ONLY << false;
}

void tst_Calculation::theButtonIsEnabledAsSoonAsBothClicksAreValid()
{
    QFETCH(QString, clickB);
    ButtonWatch window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, clickB);
    window.m_pDisplayBtn->setEnabled(false);
    window.images = 0;
    window.calculateResultImage();
    QVERIFY(window.images > 0);
    QVERIFY(window.wasEnabled);
    QTEST(window.m_pDisplayBtn->isEnabled(), "isEnabledInTheEnd");
}

void tst_Calculation::theIndexChoosesTheFormula_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(imagemath::formulas().size()); ++i)
        QTest::addRow("entry %d under the text of another formula", i) << i;
}

void tst_Calculation::theIndexChoosesTheFormula()
{
    QFETCH(int, index);
    const int count = int(imagemath::formulas().size());
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.m_kValue = 2.5f;
    window.select(m_study.sequence(), A, B);
    window.m_pOperationCB->setCurrentIndex(index);
    window.computed();
    const CILImage expected = window.m_resultImage;
    window.m_pOperationCB->setItemText(index, window.m_pOperationCB->itemText((index + 1) % count));
    window.computed();
    QCOMPARE(difference(window.m_resultImage, expected), QString());
    window.m_pOperationCB->setCurrentIndex((index + 1) % count);
    window.computed();
    QVERIFY(!difference(window.m_resultImage, expected).isEmpty());
}

void tst_Calculation::anIndexOutsideTheFormulas_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("nothing chosen") << -1;
    QTest::newRow("a sixth entry") << 5;
}

void tst_Calculation::anIndexOutsideTheFormulas()
{
    QFETCH(int, index);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, B);
    const Earlier earlier(window);
    window.m_pOperationCB->addItem("A ^ B");
    window.m_pOperationCB->setCurrentIndex(index);
    QCOMPARE(window.m_pOperationCB->currentIndex(), index);
    QCOMPARE(window.computed(), RUN);
    QCOMPARE(difference(window.m_resultImage, {1, 2, 3, 4, 5, 6}, 3, 2), QString());
    QCOMPARE(window.m_pView->imageAt(2), &window.m_resultImage);
    QVERIFY(window.m_pDisplayBtn->isEnabled());
}

void tst_Calculation::refreshIsOffExactlyDuringTheSignals()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, B);
    window.computed();
    QCOMPARE(window.refreshEnabled, (QVector<bool>{false, false}));
    QVERIFY(window.m_bRefreshEnabled);
    window.select(m_study.sequence(), A, OTHER_FIELD);
    window.computed();
    QCOMPARE(window.refreshEnabled, QVector<bool>{false});
    QVERIFY(window.m_bRefreshEnabled);
    // Between the two, and afterwards, the slots refresh the view themselves.
    window.steps.clear();
    window.onChangeColorRangeAB();
    QCOMPARE(window.steps, (QStringList{"range of A and B", "settings", "refresh"}));
}

void tst_Calculation::signalsAreEmittedOnce_data()
{
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<int>("rangesAB");
    QTest::addColumn<int>("rangesResult");
    QTest::newRow("a result") << B << 1 << 1;
    QTest::newRow("fields of view differ") << OTHER_FIELD << 1 << 0;
    QTest::newRow("sizes differ") << OTHER_SIZE << 1 << 0;
    QTest::newRow("one image") << PHOTO_ONLY << 1 << 0;
    QTest::newRow("invalid click") << UNKNOWN << 0 << 0;
}

void tst_Calculation::signalsAreEmittedOnce()
{
    QFETCH(QString, clickB);
    QFETCH(int, rangesAB);
    QFETCH(int, rangesResult);
    WindowProbe window;
    window.select(m_study.sequence(), A, clickB);
    QSignalSpy ab(&window, &CVXSImageMathWnd::colorRangeABChanged),
        result(&window, &CVXSImageMathWnd::colorRangeResultChanged);
    window.calculateResultImage();
    QCOMPARE(ab.count(), rangesAB);
    QCOMPARE(result.count(), rangesResult);
}

void tst_Calculation::unequalGridsGiveAnEmptyResult()
{
    for (bool aIsFiner : {true, false}) {
        for (int index = 0; index < 5; ++index) {
            WindowProbe window;
            window.select(m_study.sequence(), aIsFiner ? A : BINNING_6, aIsFiner ? BINNING_6 : A);
            window.m_pOperationCB->setCurrentIndex(index);
            const Earlier earlier(window);
            const LogCatcher log;
            QCOMPARE(window.computed(), RUN);
            QVERIFY(window.m_resultImage.isEmpty());
            QVERIFY(!window.m_bCannotCombine);
            QVERIFY(window.m_pDisplayBtn->isEnabled());
            QCOMPARE(log.toolFailures().size(), 1);
            QVERIFY(log.toolFailures().first().startsWith("The result has no pixels: "));
            QCOMPARE((aIsFiner ? window.m_imageA : window.m_imageB).getWidth(), 48u);
            QCOMPARE((aIsFiner ? window.m_imageB : window.m_imageA).getWidth(), 32u);
        }
    }
}

void tst_Calculation::realWidgetsRunTheComputation()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.m_pOperationCB->currentIndex(), 1);
    for (int index : {2, 3, 4, 3, 2, 1, 0}) {
        window.steps.clear();
        QTest::keyClick(window.m_pOperationCB,
                        index > window.m_pOperationCB->currentIndex() ? Qt::Key_Down : Qt::Key_Up);
        QCOMPARE(window.m_pOperationCB->currentIndex(), index);
        QCOMPARE(window.steps, RUN);
    }
    // The first run of the keys set 0: A + B * k with the stored k of 1.
    QCOMPARE(window.m_kValue, 1.0f);
    QCOMPARE(window.m_resultImage.pixelAt(5, 7),
             window.m_imageA.pixelAt(5, 7) + window.m_imageB.pixelAt(5, 7));
    window.steps.clear();
    window.m_pListBoxB->setCurrentRow(window.m_pListBoxB->findItems(COARSE, Qt::MatchExactly).isEmpty() ? -1
                                                                                                        : 2);
    QCOMPARE(window.m_pListBoxB->currentItem()->text(), COARSE);
    QCOMPARE(window.steps, RUN);
    QCOMPARE(window.m_resultImage.getWidth(), 24u);
}

QTEST_MAIN(tst_Calculation)
#include "tst_Calculation.moc"
