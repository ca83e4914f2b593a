// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/BoundWindow.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"

#include <QLocale>
#include <QtTest>

/// The constant k as the user types it.
class tst_ConstantK : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void typing_data();
    void typing();
    void typingWithAGermanLocale_data();
    void typingWithAGermanLocale();
    void theResultFollowsK_data();
    void theResultFollowsK();
    void anEqualNumberStopsEverything_data();
    void anEqualNumberStopsEverything();
    void whatIsNotANumberReadsAsZero_data();
    void whatIsNotANumberReadsAsZero();
    void leavingTheFieldTakesTheNumber();
    void leavingTheFieldAfterReturnComputesNothing();
    void halfANumberGoesBackToK_data();
    void halfANumberGoesBackToK();
    void lookingIntoAnotherWindowLeavesHalfANumber();
    void aKOfAnotherSequenceIsToldOnce();
    void aKOfThisSequenceIsNotTold();
    void everyChangeComputesOnce();
    void theTextIsStoredBeforeTheComputation();
    void theNextWindowStartsWithTheStoredText();
    void aNumberOutsideTheFieldsRangeIsNotTaken();
    void compactExponentOfTheWindow_data();
    void compactExponentOfTheWindow();

private:
    void makeBound();
    void type(const QString &text, Qt::Key end = Qt::Key_Return);
    WindowProbe *window() const { return m_bound->window(); }

    std::unique_ptr<BoundWindow> m_bound;
};

void tst_ConstantK::init()
{
    CVXUtilityFns::setkValue(QStringLiteral("7.00"));
    makeBound();
}

void tst_ConstantK::cleanup()
{
    m_bound.reset();
    QLocale::setDefault(QLocale::c());
}

void tst_ConstantK::makeBound()
{
    m_bound = std::make_unique<BoundWindow>();
    m_bound->addClick(QStringLiteral("A1"), false, 100.0f);
    m_bound->addClick(QStringLiteral("A2"), false, 40.0f);
    QVERIFY(m_bound->saveAndBind());
    m_bound->show();
    window()->forgetCalls();
}

void tst_ConstantK::type(const QString &text, Qt::Key end)
{
    GuiDriver user(window());
    QVERIFY(user.type("m_pKLineEdit", text));
    QCOMPARE(window()->m_pKLineEdit->text(), text);
    QTest::keyClick(window()->m_pKLineEdit, end);
}

void tst_ConstantK::typing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("k");
    row("10 stays plain", "10", "10.00", 10.0f);
    row("just above 10 the value is rounded to what is seen", "10.001", "1.00e1", 10.0f);
    row("-10 stays plain", "-10", "-10.00", -10.0f);
    row("just below -10", "-10.001", "-1.00e1", -10.0f);
    row("9.999 is plain and rounds to 10", "9.999", "10.00", 10.0f);
    row("1 stays plain", "1", "1.00", 1.0f);
    row("-1 stays plain", "-1", "-1.00", -1.0f);
    row("0.9999 rounds to 1 without an exponent", "0.9999", "1.00", 1.0f);
    row("0.5", "0.5", "5.00e-1", 0.5f);
    row("-0.5", "-0.5", "-5.00e-1", -0.5f);
    row("0 has no exponent", "0", "0.00", 0.0f);
    row("11", "11", "1.10e1", 11.0f);
    row("three digits are kept", "123456", "1.23e5", 1.23e5f);
    row("two decimals are kept", "2.346", "2.35", 2.35f);
    row("halves are those of the single-precision number", "1.115", "1.12", 1.12f);
    row("far above the bound", "2e15", "1.00e12", 1.0e12f);
    row("far below the bound", "-2e15", "-1.00e12", -1.0e12f);
    row("the bound itself", "1e12", "1.00e12", 1.0e12f);
    row("the largest number of the field", "1e37", "1.00e12", 1.0e12f);
    row("the smallest number of the field", "-1e37", "-1.00e12", -1.0e12f);
    row("a very small number", "1.5e-12", "1.50e-12", 1.5e-12f);
    row("what the field itself shows", "5.00e-1", "5.00e-1", 0.5f);
    row("a capital E", "1.5E3", "1.50e3", 1500.0f);
}

void tst_ConstantK::typing()
{
    QFETCH(QString, typed);
    QFETCH(QString, text);
    QFETCH(float, k);
    type(typed);
    QCOMPARE(window()->m_pKLineEdit->text(), text);
    QVERIFY2(window()->m_kValue == k, qPrintable(QString::number(double(window()->m_kValue), 'g', 9)));
    QCOMPARE(CVXUtilityFns::getkValue(), text);
    // Return reaches the slot twice; the second time nothing is left to do.
    QCOMPARE(window()->calls.value("onChangeValueK"), 2);
    QCOMPARE(window()->computations, 1);
}

void tst_ConstantK::typingWithAGermanLocale_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("k");
    row("a point is typed and shown", "2.346", "2.35", 2.35f);
    row("in e-notation as well", "1.5e-1", "1.50e-1", 0.15f);
    row("a whole number gets a point", "3", "3.00", 3.0f);
    row("a large number gets no group separator", "1234567", "1.23e6", 1.23e6f);
}

void tst_ConstantK::typingWithAGermanLocale()
{
    m_bound.reset();
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    makeBound();
    typing();
}

void tst_ConstantK::theResultFollowsK_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<float>("first"); // of the result's left top pixel: 100 - k * 40
    QTest::newRow("2") << "2" << 20.0f;
    QTest::newRow("0") << "0" << 100.0f;
    QTest::newRow("-0.5") << "-0.5" << 120.0f;
    QTest::newRow("10.001 computes with the 10 that is seen") << "10.001" << -300.0f;
}

void tst_ConstantK::theResultFollowsK()
{
    QFETCH(QString, typed);
    QFETCH(float, first);
    type(typed);
    QCOMPARE(float(window()->m_resultImage.pixelAt(0, 0)), first);
    QVERIFY(window()->m_bRefreshEnabled);
}

void tst_ConstantK::anEqualNumberStopsEverything_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("the same text") << "7.00";
    QTest::newRow("another text of the same number is not reformatted") << "7";
    QTest::newRow("nor one in e-notation") << "0.7e1";
    QTest::newRow("nor one that is equal in single precision only") << "7.00000001";
}

void tst_ConstantK::anEqualNumberStopsEverything()
{
    QFETCH(QString, typed);
    CVXUtilityFns::setkValue(QStringLiteral("stored elsewhere"));
    type(typed);
    QCOMPARE(window()->calls.value("onChangeValueK"), 2);
    QCOMPARE(window()->m_pKLineEdit->text(), typed);
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->computations, 0);
    QCOMPARE(CVXUtilityFns::getkValue(), QStringLiteral("stored elsewhere"));
}

void tst_ConstantK::whatIsNotANumberReadsAsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a word") << "abc";
    QTest::newRow("nothing") << "";
    QTest::newRow("a decimal comma") << "1,5";
    QTest::newRow("a lone sign") << "-";
    QTest::newRow("half an exponent") << "2e";
    QTest::newRow("what the computer calls no number") << "nan";
    QTest::newRow("the same with a sign") << "-nan";
}

void tst_ConstantK::whatIsNotANumberReadsAsZero()
{
    QFETCH(QString, text);
    // The field lets nobody type these; a program can still set them.
    window()->m_pKLineEdit->setText(text);
    window()->onChangeValueK();
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("0.00"));
    QCOMPARE(window()->m_kValue, 0.0f);
    QCOMPARE(CVXUtilityFns::getkValue(), QStringLiteral("0.00"));
    QCOMPARE(window()->computations, 1);
    // With k at 0 already it is the same number, and stays as it is.
    window()->m_pKLineEdit->setText(text);
    window()->onChangeValueK();
    QCOMPARE(window()->m_pKLineEdit->text(), text);
    QCOMPARE(window()->computations, 1);
}

void tst_ConstantK::leavingTheFieldTakesTheNumber()
{
    QApplication::setActiveWindow(window()->window());
    type(QStringLiteral("2.5"), Qt::Key_Tab);
    QVERIFY(!window()->m_pKLineEdit->hasFocus());
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("2.50"));
    QCOMPARE(window()->m_kValue, 2.5f);
    QCOMPARE(window()->computations, 1);
}

void tst_ConstantK::leavingTheFieldAfterReturnComputesNothing()
{
    QApplication::setActiveWindow(window()->window());
    type(QStringLiteral("2.5"));
    QVERIFY(window()->m_pKLineEdit->hasFocus());
    QTest::keyClick(window()->m_pKLineEdit, Qt::Key_Tab);
    QVERIFY(!window()->m_pKLineEdit->hasFocus());
    QCOMPARE(window()->computations, 1);
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("2.50"));
}

void tst_ConstantK::halfANumberGoesBackToK_data()
{
    QTest::addColumn<QString>("typed");
    row("a lone minus", "-");
    row("nothing", "");
    row("an exponent to come", "2e");
}

void tst_ConstantK::halfANumberGoesBackToK()
{
    QFETCH(QString, typed);
    QApplication::setActiveWindow(window()->window());
    type(typed, Qt::Key_Tab);
    QVERIFY(!window()->m_pKLineEdit->hasFocus());
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("7.00"));
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->computations, 0);
    QCOMPARE(CVXUtilityFns::getkValue(), QStringLiteral("7.00"));
    // Also after another k.
    type(QStringLiteral("0.5"));
    type(typed, Qt::Key_Tab);
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("5.00e-1"));
    QCOMPARE(window()->m_kValue, 0.5f);
}

void tst_ConstantK::lookingIntoAnotherWindowLeavesHalfANumber()
{
    for (const Qt::FocusReason reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        GuiDriver(window()).type("m_pKLineEdit", "-");
        QFocusEvent leaving(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(window()->m_pKLineEdit, &leaving);
        QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("-"));
    }
}

void tst_ConstantK::aKOfAnotherSequenceIsToldOnce()
{
    type(QStringLiteral("1.25"));
    const QString first = window()->getSequenceID();
    m_bound.reset();
    const LogCatcher log;
    QSignalSpy told(getLogObject(), &CVXSLog::told);
    m_bound = std::make_unique<BoundWindow>(QStringLiteral("AB20260203030405_SEQ"));
    QVERIFY(m_bound->showClicks({100.0f, 40.0f}));
    const QString line =
        QString("k = 1.25 was typed in the sequence %1 and stands here now. Type another one if it "
                "does not fit.")
            .arg(first);
    QCOMPARE(log.toolMessages(), QStringList(line));
    QCOMPARE(int(log.toolEntries().first().level), int(ELOG_INFORMATION));
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.first().first().toString(), line);
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("1.25"));
    // A k that is typed here is this sequence's from then on.
    type(QStringLiteral("2"));
    m_bound->subWindow()->hide();
    m_bound->show();
    QCOMPARE(told.size(), 1);
    QCOMPARE(CVXUtilityFns::getkOrigin(), QStringLiteral("AB20260203030405_SEQ"));
}

void tst_ConstantK::aKOfThisSequenceIsNotTold()
{
    QSignalSpy told(getLogObject(), &CVXSLog::told);
    m_bound.reset();
    makeBound(); // with a k of which nobody knows where it is from
    type(QStringLiteral("0.125"));
    m_bound.reset();
    makeBound();
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("1.25e-1"));
    QCOMPARE(told.size(), 0);
}

void tst_ConstantK::everyChangeComputesOnce()
{
    const QStringList numbers{"1", "2", "3", "0.25", "-4", "1e6"};
    for (int i = 0; i < numbers.size(); ++i) {
        type(numbers.at(i));
        QCOMPARE(window()->computations, i + 1);
    }
}

// Whoever follows the computation finds the k that it is made with.
void tst_ConstantK::theTextIsStoredBeforeTheComputation()
{
    QString stored;
    connect(window(), &CVXSImageMathWnd::colorRangeABChanged, this,
            [&stored] { stored = CVXUtilityFns::getkValue(); });
    type(QStringLiteral("2.5"));
    QCOMPARE(stored, QStringLiteral("2.50"));
}

void tst_ConstantK::theNextWindowStartsWithTheStoredText()
{
    type(QStringLiteral("0.125"));
    QCOMPARE(CVXUtilityFns::getkValue(), QStringLiteral("1.25e-1"));
    m_bound.reset();
    makeBound();
    QCOMPARE(window()->m_pKLineEdit->text(), QStringLiteral("1.25e-1"));
    QCOMPARE(window()->m_kValue, 0.125f);
    // What is shown is what counts: Return changes nothing.
    QTest::keyClick(window()->m_pKLineEdit, Qt::Key_Return);
    QCOMPARE(window()->computations, 0);
}

void tst_ConstantK::aNumberOutsideTheFieldsRangeIsNotTaken()
{
    type(QStringLiteral("1e38"));
    QCOMPARE(window()->m_kValue, 7.0f);
    QCOMPARE(window()->computations, 0);
    QCOMPARE(CVXUtilityFns::getkValue(), QStringLiteral("7.00"));
}

void tst_ConstantK::compactExponentOfTheWindow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("compact");
    row("plus and leading zero go", "1.23e+05", "1.23e5");
    row("minus stays", "5.00e-01", "5.00e-1");
    row("an exponent of zero goes", "0.00e+00", "0.00");
    row("no exponent", "10.00", "10.00");
}

void tst_ConstantK::compactExponentOfTheWindow()
{
    QFETCH(QString, text);
    QFETCH(QString, compact);
    window()->compactExponent(text);
    QCOMPARE(text, compact);
}

QTEST_MAIN(tst_ConstantK)
#include "tst_ConstantK.moc"
