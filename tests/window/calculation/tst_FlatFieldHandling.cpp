// SPDX-License-Identifier: MIT
// Radiance is computed from flat-field corrected images, and the correction is handed back afterwards.
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "tests/support/BoundWindow.h"
#include "tests/support/PixelCompare.h"
#include "tests/support/WindowProbe.h"

#include <QLabel>
#include <QToolButton>
#include <QtTest>

using namespace pixelcompare;

namespace {

const QString A = "AB20260102030405", B = "AB20260102030406", OTHER_FIELD = "AB20260102030407",
              PHOTO_ONLY = "AB20260102030408", NO_FLAT = "AB20260102030409";

class WatchedImageWindow : public CVXSImageWindow
{
public:
    explicit WatchedImageWindow(CVXSDataset *dataset) : CVXSImageWindow(dataset) {}
    void switchFlatFieldCorrection(bool on) override
    {
        switched << on;
        CVXSImageWindow::switchFlatFieldCorrection(on);
    }
    QVector<bool> switched;
};

ClickSpec click(const QString &number)
{
    ClickSpec spec;
    spec.clickNumber = number;
    spec.flatField = [](int x, int y) { return 1.0f - 0.01f * float(x + y) / 2.0f; };
    return spec;
}

} // namespace

class tst_FlatFieldHandling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_study.reset(); }
    void handedBack_data();
    void handedBack();
    void eachDatasetByItsOwnUnit_data();
    void eachDatasetByItsOwnUnit();
    void theSameClickTwiceIsHandedBackOnce();
    void handedBackOnEveryWay_data();
    void handedBackOnEveryWay();
    void theInvalidExitSwitchesNothing();
    void withoutAFlatFieldNothingIsSwitched();
    void handedBackAfterTheColourRange();
    void aChangeMadeMeanwhile_data();
    void aChangeMadeMeanwhile();
    void whatTheUserSwitchesIsComputedAgain_data();
    void whatTheUserSwitchesIsComputedAgain();
    void theHandingBackIsNotAnnounced();
    void aFlatFieldThatDoesNotFitIsToldWhereItWasPressed();

private:
    CVXSDataset *dataset(const QString &number) const { return m_study->sequence()->getDataset(number); }
    CILImage calibrated(const QString &number, tag_edisplayunit unit) const
    {
        CILImage image;
        dataset(number)->getCalibratedLuminImage(unit, &image, "test");
        return image;
    }

    std::unique_ptr<TestStudy> m_study;
};

void tst_FlatFieldHandling::init()
{
    m_study = std::make_unique<TestStudy>();
    m_study->add(click(A));
    m_study->add(click(B));
    ClickSpec other = click(OTHER_FIELD);
    other.fieldOfView = 13.0;
    m_study->add(other);
    ClickSpec photograph = click(PHOTO_ONLY);
    photograph.counts = nullptr;
    photograph.flatField = nullptr;
    photograph.photograph = [](int x, int) { return float(x); };
    m_study->add(photograph);
    ClickSpec plain = click(NO_FLAT);
    plain.flatField = nullptr;
    m_study->add(plain);
}

void tst_FlatFieldHandling::handedBack_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("already");
    QTest::addColumn<bool>("hasWindow");
    QTest::addColumn<bool>("correctedForTheRun");
    QTest::addColumn<bool>("correctedAfter");
    QTest::addColumn<QVector<bool>>("switched");
    const QVector<bool> never;
    QTest::newRow("radiance, off before, image window open")
        << 1 << false << true << true << false << QVector<bool>{false};
    QTest::newRow("radiance, off before, no image window: on the dataset itself")
        << 1 << false << false << true << false << never;
    QTest::newRow("radiance, on before, image window open") << 1 << true << true << true << true << never;
    QTest::newRow("radiance, on before, no image window") << 1 << true << false << true << true << never;
    for (int unit : {0, 2}) {
        QTest::newRow(qPrintable(QString("unit %1, off before").arg(unit)))
            << unit << false << true << false << false << never;
        QTest::newRow(qPrintable(QString("unit %1, on before").arg(unit)))
            << unit << true << true << true << true << never;
    }
}

void tst_FlatFieldHandling::handedBack()
{
    QFETCH(int, unit);
    QFETCH(bool, already);
    QFETCH(bool, hasWindow);
    QFETCH(bool, correctedForTheRun);
    QFETCH(bool, correctedAfter);
    QFETCH(QVector<bool>, switched);
    m_study->sequence()->setActiveUnit(tag_edisplayunit(unit));
    CILImage wanted[2];
    for (int side = 0; side < 2; ++side) {
        CVXSDataset *operand = dataset(side ? B : A);
        operand->doFlatFieldCorrection(correctedForTheRun);
        wanted[side] = calibrated(side ? B : A, tag_edisplayunit(unit));
        operand->doFlatFieldCorrection(already);
        QCOMPARE(operand->isLuminFlatFieldCorrected(), already);
    }
    std::unique_ptr<WatchedImageWindow> windowA, windowB;
    if (hasWindow) {
        windowA = std::make_unique<WatchedImageWindow>(dataset(A));
        windowB = std::make_unique<WatchedImageWindow>(dataset(B));
    }
    WindowProbe window;
    window.select(m_study->sequence(), A, B);
    window.calculateResultImage();
    QCOMPARE(difference(window.m_imageA, wanted[0]), QString());
    QCOMPARE(difference(window.m_imageB, wanted[1]), QString());
    QCOMPARE(dataset(A)->isLuminFlatFieldCorrected(), correctedAfter);
    QCOMPARE(dataset(B)->isLuminFlatFieldCorrected(), correctedAfter);
    if (hasWindow) {
        QCOMPARE(windowA->switched, switched);
        QCOMPARE(windowB->switched, switched);
    }
}

void tst_FlatFieldHandling::eachDatasetByItsOwnUnit_data()
{
    QTest::addColumn<int>("unitA");
    QTest::addColumn<int>("unitB");
    QTest::newRow("only A in radiance") << 1 << 0;
    QTest::newRow("only B in radiance") << 0 << 1;
    QTest::newRow("both in radiance") << 1 << 1;
    QTest::newRow("neither in radiance") << 2 << 0;
}

void tst_FlatFieldHandling::eachDatasetByItsOwnUnit()
{
    QFETCH(int, unitA);
    QFETCH(int, unitB);
    m_study->sequence()->setActiveUnit(
        EUNIT_COUNTS); // what is shown does not decide; the dataset's unit does
    dataset(A)->setUnit(tag_edisplayunit(unitA));
    dataset(B)->setUnit(tag_edisplayunit(unitB));
    WatchedImageWindow windowA(dataset(A)), windowB(dataset(B));
    const CILImage plainA = calibrated(A, EUNIT_COUNTS), plainB = calibrated(B, EUNIT_COUNTS);
    WindowProbe window;
    window.select(m_study->sequence(), A, B);
    window.calculateResultImage();
    QCOMPARE(difference(window.m_imageA, plainA).isEmpty(), unitA != 1);
    QCOMPARE(difference(window.m_imageB, plainB).isEmpty(), unitB != 1);
    QCOMPARE(windowA.switched, unitA == 1 ? QVector<bool>{false} : QVector<bool>());
    QCOMPARE(windowB.switched, unitB == 1 ? QVector<bool>{false} : QVector<bool>());
    QVERIFY(!dataset(A)->isLuminFlatFieldCorrected());
    QVERIFY(!dataset(B)->isLuminFlatFieldCorrected());
}

void tst_FlatFieldHandling::theSameClickTwiceIsHandedBackOnce()
{
    m_study->sequence()->setActiveUnit(EUNIT_RADIANCE);
    WatchedImageWindow imageWindow(dataset(A));
    WindowProbe window;
    window.select(m_study->sequence(), A, A);
    window.calculateResultImage();
    QCOMPARE(imageWindow.switched, QVector<bool>{false});
    QVERIFY(!dataset(A)->isLuminFlatFieldCorrected());
    QCOMPARE(difference(window.m_imageA, window.m_imageB), QString());
}

void tst_FlatFieldHandling::handedBackOnEveryWay_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::newRow("a result") << A << B;
    QTest::newRow("fields of view differ") << A << OTHER_FIELD;
    QTest::newRow("only A has an image") << A << PHOTO_ONLY;
    QTest::newRow("only B has an image") << PHOTO_ONLY << A;
}

void tst_FlatFieldHandling::handedBackOnEveryWay()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    m_study->sequence()->setActiveUnit(EUNIT_RADIANCE);
    WatchedImageWindow imageWindow(dataset(A));
    WindowProbe window;
    window.select(m_study->sequence(), clickA, clickB);
    window.calculateResultImage();
    QCOMPARE(imageWindow.switched, QVector<bool>{false});
    QVERIFY(!dataset(A)->isLuminFlatFieldCorrected());
    const CILImage uncorrected = calibrated(A, EUNIT_RADIANCE);
    QVERIFY(!difference(clickA == A ? window.m_imageA : window.m_imageB, uncorrected).isEmpty());
}

void tst_FlatFieldHandling::theInvalidExitSwitchesNothing()
{
    m_study->sequence()->setActiveUnit(EUNIT_RADIANCE);
    WatchedImageWindow imageWindow(dataset(A));
    QSignalSpy changed(dataset(A), &CVXSDataset::calibrationChanged);
    WindowProbe window;
    window.select(m_study->sequence(), A, "AB20260102039999");
    window.calculateResultImage();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(imageWindow.switched, QVector<bool>());
}

void tst_FlatFieldHandling::withoutAFlatFieldNothingIsSwitched()
{
    m_study->sequence()->setActiveUnit(EUNIT_RADIANCE);
    WatchedImageWindow imageWindow(dataset(NO_FLAT));
    WindowProbe window;
    window.select(m_study->sequence(), NO_FLAT, NO_FLAT);
    window.calculateResultImage();
    QCOMPARE(imageWindow.switched, QVector<bool>());
    QVERIFY(!dataset(NO_FLAT)->isLuminFlatFieldCorrected());
    QCOMPARE(difference(window.m_imageA, calibrated(NO_FLAT, EUNIT_RADIANCE)), QString());
    QVERIFY(!window.m_bCannotCombine);
}

void tst_FlatFieldHandling::handedBackAfterTheColourRange()
{
    m_study->sequence()->setActiveUnit(EUNIT_RADIANCE);
    WatchedImageWindow imageWindow(dataset(A));
    WindowProbe window;
    window.select(m_study->sequence(), A, B);
    bool correctedAtRangeAB = false, correctedAtRangeResult = true;
    connect(&window, &CVXSImageMathWnd::colorRangeABChanged, &window,
            [&] { correctedAtRangeAB = dataset(A)->isLuminFlatFieldCorrected(); });
    connect(&window, &CVXSImageMathWnd::colorRangeResultChanged, &window,
            [&] { correctedAtRangeResult = dataset(A)->isLuminFlatFieldCorrected(); });
    window.calculateResultImage();
    QVERIFY(correctedAtRangeAB);
    QVERIFY(!correctedAtRangeResult);
}

void tst_FlatFieldHandling::aChangeMadeMeanwhile_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("before");
    QTest::addColumn<QVector<bool>>("switched");
    QTest::newRow("in radiance a correction switched off is switched on again")
        << 1 << true << QVector<bool>{true};
    QTest::newRow("in counts a correction switched on is left on") << 0 << false << QVector<bool>();
    QTest::newRow("in counts a correction switched off is left off") << 0 << true << QVector<bool>();
}

void tst_FlatFieldHandling::aChangeMadeMeanwhile()
{
    QFETCH(int, unit);
    QFETCH(bool, before);
    QFETCH(QVector<bool>, switched);
    m_study->sequence()->setActiveUnit(tag_edisplayunit(unit));
    for (const QString &number : {A, B})
        dataset(number)->doFlatFieldCorrection(before);
    WatchedImageWindow windowA(dataset(A)), windowB(dataset(B));
    WindowProbe window;
    window.select(m_study->sequence(), A, B);
    connect(&window, &CVXSImageMathWnd::colorRangeABChanged, &window, [&] {
        for (const QString &number : {A, B})
            dataset(number)->doFlatFieldCorrection(!before);
    });
    window.calculateResultImage();
    QCOMPARE(windowA.switched, switched);
    QCOMPARE(windowB.switched, switched);
}

void tst_FlatFieldHandling::whatTheUserSwitchesIsComputedAgain_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("before");
    QTest::newRow("A's flat field, on") << A << false;
    QTest::newRow("A's flat field, off") << A << true;
    QTest::newRow("B's flat field, on") << B << false;
}

void tst_FlatFieldHandling::whatTheUserSwitchesIsComputedAgain()
{
    QFETCH(QString, number);
    QFETCH(bool, before);
    m_study.reset();
    BoundWindow bound;
    bound.study().add(click(A));
    bound.study().add(click(B));
    QVERIFY(bound.saveAndBind());
    bound.show();
    CVXSDataset *switched = bound.sequence()->getDataset(number);
    switched->doFlatFieldCorrection(before);
    bound.window()->calculateResultImage();
    CVXSImageWindow imageWindow(switched);
    imageWindow.show();
    bound.window()->forgetCalls();
    QSignalSpy announced(bound.sequence(), &CVXSSequenceDataset::updateOnChangeSequence);
    auto *button = imageWindow.findChild<QToolButton *>(QStringLiteral("FlatFieldButton"));
    QVERIFY(button);
    QCOMPARE(button->isChecked(), before);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(switched->isLuminFlatFieldCorrected(), !before);
    QCOMPARE(announced.count(), 1);
    QCOMPARE(bound.window()->computations, 1);
    QCOMPARE(bound.window()->m_pListBoxA->currentItem()->text(), A);
    QCOMPARE(bound.window()->m_pListBoxB->currentItem()->text(), B);
    CILImage wanted;
    switched->getCalibratedLuminImage(EUNIT_COUNTS, &wanted, "test");
    QCOMPARE(difference(number == A ? bound.window()->m_imageA : bound.window()->m_imageB, wanted),
             QString());
    CILImage other;
    bound.sequence()->getDataset(number == A ? B : A)->getCalibratedLuminImage(EUNIT_COUNTS, &other, "test");
    QCOMPARE(difference(bound.window()->m_resultImage, number == A ? wanted - other : other - wanted),
             QString());
}

void tst_FlatFieldHandling::theHandingBackIsNotAnnounced()
{
    m_study->sequence()->setActiveUnit(EUNIT_RADIANCE);
    WatchedImageWindow imageWindow(dataset(A));
    WindowProbe window;
    window.select(m_study->sequence(), A, B);
    QSignalSpy announced(m_study->sequence(), &CVXSSequenceDataset::updateOnChangeSequence);
    window.calculateResultImage();
    QCOMPARE(imageWindow.switched, QVector<bool>{false});
    QCOMPARE(announced.count(), 0);
}

void tst_FlatFieldHandling::aFlatFieldThatDoesNotFitIsToldWhereItWasPressed()
{
    dataset(A)->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(8, 16, [](int, int) { return 1.0f; }));
    CVXSImageWindow imageWindow(dataset(A));
    imageWindow.show();
    QSignalSpy announced(m_study->sequence(), &CVXSSequenceDataset::updateOnChangeSequence);
    QTest::mouseClick(imageWindow.findChild<QToolButton *>(QStringLiteral("FlatFieldButton")),
                      Qt::LeftButton);
    QCOMPARE(announced.count(), 0);
    QCoreApplication::processEvents();
    const QString told = imageWindow.findChild<QLabel *>(QStringLiteral("RoiStatus"))->text();
    QVERIFY2(told.contains("8 x 16 pixels"), qPrintable(told));
}

QTEST_MAIN(tst_FlatFieldHandling)
#include "tst_FlatFieldHandling.moc"
