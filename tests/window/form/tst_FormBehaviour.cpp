// SPDX-License-Identifier: MIT
#include "tests/support/GuiDriver.h"
#include "tests/support/Rows.h"
#include "tests/window/form/FormFixture.h"

#include <QApplication>
#include <QDoubleValidator>
#include <QLocale>
#include <QMenu>
#include <QMetaMethod>
#include <QtTest>

/// What the form's widgets are connected to, and what the field of k takes.
class tst_FormBehaviour : public FormFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void connections_data();
    void connections();
    void aUserReachesTheSlots_data();
    void aUserReachesTheSlots();
    void returnReachesTheSlotTwice();
    void leavingTheFieldReachesTheSlotOnce();
    void theROIMenuAsksForItsContent();
    void photographCheckBoxEnablesTheChoice_data();
    void photographCheckBoxEnablesTheChoice();
    void kTakesFifteenCharacters();
    void aTypedCommaIsAPoint_data();
    void aTypedCommaIsAPoint();
    void validatorRange();
    void validator_data();
    void validator();
    void validatorIgnoresTheUsersLocale();
    void setHandleCloseStoresTheFlag();
};

void tst_FormBehaviour::connections_data()
{
    QTest::addColumn<QString>("sender");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("slot"); // empty: none
    const auto row = [](const char *sender, const char *signal, const QVariant &value, const char *slot) {
        const QByteArray title = QByteArray(*sender ? sender : "window") + " " + signal +
                                 (value.isValid() ? " " + value.toByteArray() : QByteArray()) +
                                 (*slot ? " reaches " : " reaches none") + slot;
        QTest::newRow(title.constData())
            << QString::fromLatin1(sender) << QByteArray(signal) << value << QByteArray(slot);
    };
    const QVariant none;
    row("", "colorRangeABChanged()", none, "onChangeColorRangeAB");
    row("", "colorRangeResultChanged()", none, "onChangeColorRangeResult");
    row("m_pDisplayBtn", "clicked()", none, "onClickDisplayResultForMeasuring");
    row("m_pKLineEdit", "returnPressed()", none, "onChangeValueK");
    row("m_pKLineEdit", "editingFinished()", none, "onChangeValueK");
    row("m_pOperationCB", "activated(int)", 0, "onChangeMathOperation");
    row("m_pOperationCB", "activated(int)", 4, "onChangeMathOperation");
    row("m_pWithPhotoChkBox", "stateChanged(int)", 0, "onChangeStatusOfWithPhotoFrom");
    row("m_pWithPhotoChkBox", "stateChanged(int)", 2, "onChangeStatusOfWithPhotoFrom");
    row("m_pMinChkBox", "toggled(bool)", true, "onChangeMinZeroStatus");
    row("m_pMinChkBox", "toggled(bool)", false, "onChangeMinZeroStatus");
    row("m_pAutoResultRadioBtn", "clicked()", none, "onChangeColorRangeResult");
    row("m_pFullResultRadioBtn", "clicked()", none, "onChangeColorRangeResult");
    row("m_pFullABRadioBtn", "clicked()", none, "onChangeColorRangeAB");
    row("m_pAutoABRadioBtn", "clicked()", none, "onChangeColorRangeAB");
    // What is deliberately not connected.
    row("m_pOperationCB", "currentIndexChanged(int)", 2, "");
    row("m_pPhotoFromCB", "activated(int)", 1, "");
    row("m_pROIListButton", "clicked()", none, "");
    row("m_pFullABRadioBtn", "toggled(bool)", true, "");
    row("m_pAutoResultRadioBtn", "toggled(bool)", true, "");
    row("m_pMinChkBox", "clicked()", none, "");
    row("m_pWithPhotoChkBox", "clicked()", none, "");
    row("m_pListBoxA", "itemSelectionChanged()", none, "");
    row("m_pListBoxB", "itemSelectionChanged()", none, "");
}

void tst_FormBehaviour::connections()
{
    QFETCH(QString, sender);
    QFETCH(QByteArray, signal);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, slot);
    QObject *object = named(sender);
    QVERIFY(object);
    const int index = object->metaObject()->indexOfSignal(signal);
    QVERIFY(index >= 0);
    const QMetaMethod method = object->metaObject()->method(index);
    if (value.type() == QVariant::Int)
        QVERIFY(method.invoke(object, Qt::DirectConnection, Q_ARG(int, value.toInt())));
    else if (value.type() == QVariant::Bool)
        QVERIFY(method.invoke(object, Qt::DirectConnection, Q_ARG(bool, value.toBool())));
    else
        QVERIFY(method.invoke(object, Qt::DirectConnection));
    QMap<QByteArray, int> expected;
    if (!slot.isEmpty())
        expected.insert(slot, 1);
    QCOMPARE(m_window->calls, expected);
    if (!slot.isEmpty())
        QCOMPARE(m_window->argument.value(slot), value);
}

void tst_FormBehaviour::aUserReachesTheSlots_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QVariant>("value");
    row("by the display button", "m_pDisplayBtn", QByteArray("onClickDisplayResultForMeasuring"), QVariant());
    row("by Auto of A and B", "m_pAutoABRadioBtn", QByteArray("onChangeColorRangeAB"), QVariant());
    row("by Full of A and B", "m_pFullABRadioBtn", QByteArray("onChangeColorRangeAB"), QVariant());
    row("by Auto of the result", "m_pAutoResultRadioBtn", QByteArray("onChangeColorRangeResult"), QVariant());
    row("by Full of the result", "m_pFullResultRadioBtn", QByteArray("onChangeColorRangeResult"), QVariant());
    QTest::newRow("by Min = 0") << "m_pMinChkBox" << QByteArray("onChangeMinZeroStatus") << QVariant(true);
    row("by the photograph check box", "m_pWithPhotoChkBox", QByteArray("onChangeStatusOfWithPhotoFrom"),
        QVariant(2));
}

void tst_FormBehaviour::aUserReachesTheSlots()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, slot);
    QFETCH(QVariant, value);
    auto *found = m_window->findChild<QAbstractButton *>(button);
    QVERIFY(found);
    if (button == QLatin1String("m_pWithPhotoChkBox"))
        found->setChecked(false);
    m_window->forgetCalls();
    found->setEnabled(true);
    found->click();
    QCOMPARE(m_window->calls, (QMap<QByteArray, int>{{slot, 1}}));
    QCOMPARE(m_window->argument.value(slot), value);
}

void tst_FormBehaviour::returnReachesTheSlotTwice()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    m_window->m_pKLineEdit->setFocus();
    m_window->forgetCalls();
    QTest::keyClick(m_window->m_pKLineEdit, Qt::Key_Return);
    QCOMPARE(m_window->calls.value("onChangeValueK"), 2);
}

void tst_FormBehaviour::leavingTheFieldReachesTheSlotOnce()
{
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->m_pKLineEdit->setFocus();
    QVERIFY(m_window->m_pKLineEdit->hasFocus());
    m_window->forgetCalls();
    QTest::keyClick(m_window->m_pKLineEdit, Qt::Key_Tab);
    QVERIFY(!m_window->m_pKLineEdit->hasFocus());
    QCOMPARE(m_window->calls.value("onChangeValueK"), 1);
}

void tst_FormBehaviour::theROIMenuAsksForItsContent()
{
    QMenu *menu = m_window->m_pROIListButton->menu();
    QVERIFY(menu);
    QCOMPARE(menu, m_window->m_pROIMenu.get());
    QVERIFY(!menu->parent());
    QVERIFY(QMetaObject::invokeMethod(menu, "aboutToShow", Qt::DirectConnection));
    QCOMPARE(m_window->calls, (QMap<QByteArray, int>{{"onShowROIListPopupMenu", 1}}));
}

void tst_FormBehaviour::photographCheckBoxEnablesTheChoice_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("unchecked disables") << 0 << false;
    QTest::newRow("checked enables") << 2 << true;
    QTest::newRow("partially checked enables") << 1 << true;
    QTest::newRow("any other number enables") << -1 << true;
}

void tst_FormBehaviour::photographCheckBoxEnablesTheChoice()
{
    QFETCH(int, state);
    QFETCH(bool, enabled);
    m_window->runSlots = true;
    for (const bool before : {false, true}) {
        m_window->m_pPhotoFromCB->setEnabled(before);
        m_window->onChangeStatusOfWithPhotoFrom(state);
        QCOMPARE(m_window->m_pPhotoFromCB->isEnabled(), enabled);
    }
}

void tst_FormBehaviour::kTakesFifteenCharacters()
{
    QCOMPARE(m_window->m_pKLineEdit->maxLength(), 15);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(GuiDriver(m_window.get()).type("m_pKLineEdit", QStringLiteral("1.2345678901234567")));
    QCOMPARE(m_window->m_pKLineEdit->text(), QStringLiteral("1.2345678901234"));
}

void tst_FormBehaviour::aTypedCommaIsAPoint_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    row("between digits", "1,25", "1.25");
    row("at the beginning", ",5", ".5");
    row("with an exponent", "-2,5e3", "-2.5e3");
    row("a second one is not taken", "1,000,5", "1.0005");
    row("a point stays one", "1.25", "1.25");
}

void tst_FormBehaviour::aTypedCommaIsAPoint()
{
    QFETCH(QString, typed);
    QFETCH(QString, text);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(GuiDriver(m_window.get()).type("m_pKLineEdit", typed));
    QCOMPARE(m_window->m_pKLineEdit->text(), text);
    QVERIFY(m_window->m_pKLineEdit->hasAcceptableInput());
}

void tst_FormBehaviour::validatorRange()
{
    const auto *validator = qobject_cast<const QDoubleValidator *>(m_window->m_pKLineEdit->validator());
    QVERIFY(validator);
    QCOMPARE(validator->bottom(), -1e37);
    QCOMPARE(validator->top(), 1e37);
    QCOMPARE(validator->decimals(), 15);
    QCOMPARE(validator->locale().language(), QLocale::C);
}

void tst_FormBehaviour::validator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("acceptable");
    QTest::newRow("a whole number") << "3" << true;
    QTest::newRow("a decimal point") << "1.5" << true;
    QTest::newRow("a negative number") << "-0.25" << true;
    QTest::newRow("e-notation") << "1.5e-3" << true;
    QTest::newRow("e-notation as the field shows it") << "1.00e12" << true;
    QTest::newRow("beyond the bounds of k, within the field's") << "2e15" << true;
    QTest::newRow("the largest") << "1e37" << true;
    QTest::newRow("the smallest") << "-1e37" << true;
    QTest::newRow("beyond the largest") << "1e38" << false;
    QTest::newRow("below the smallest") << "-1e38" << false;
    QTest::newRow("a decimal comma") << "1,5" << false;
    QTest::newRow("a group separator, which is not read as a number") << "1,000" << false;
    QTest::newRow("letters") << "abc" << false;
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("two points") << "1.2.3" << false;
}

void tst_FormBehaviour::validator()
{
    QFETCH(QString, text);
    QFETCH(bool, acceptable);
    m_window->m_pKLineEdit->setText(text);
    QCOMPARE(m_window->m_pKLineEdit->hasAcceptableInput(), acceptable);
}

void tst_FormBehaviour::validatorIgnoresTheUsersLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    WindowProbe german;
    german.m_pKLineEdit->setText(QStringLiteral("1.5"));
    QVERIFY(german.m_pKLineEdit->hasAcceptableInput());
    german.m_pKLineEdit->setText(QStringLiteral("1,5"));
    QVERIFY(!german.m_pKLineEdit->hasAcceptableInput());
}

void tst_FormBehaviour::setHandleCloseStoresTheFlag()
{
    m_window->setHandleClose(true);
    QVERIFY(m_window->m_bHandleClose);
    m_window->setHandleClose(false);
    QVERIFY(!m_window->m_bHandleClose);
}

QTEST_MAIN(tst_FormBehaviour)
#include "tst_FormBehaviour.moc"
