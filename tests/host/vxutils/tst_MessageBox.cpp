// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXSErrorHandler.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Rows.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTest>

class tst_MessageBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void buttonTexts_data();
    void buttonTexts();
    void aBoxClosedWithoutAButtonAnswersTheEscapeButton_data();
    void aBoxClosedWithoutAButtonAnswersTheEscapeButton();
    void threeEmptyTextsGiveOneOk();
    void asManyButtonsAsTexts_data();
    void asManyButtonsAsTexts();
    void standardButtons_data();
    void standardButtons();
    void errorHandlerShowsAndLogs();
};

void tst_MessageBox::buttonTexts_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("defaultButton");
    QTest::addColumn<int>("escapeButton");
    QTest::addColumn<QString>("press");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<int>("answer");
    const QStringList three{"First", "Second", "Third"};
    QTest::newRow("the first button answers 0") << three << 0 << -1 << "First" << 0 << true << 0;
    QTest::newRow("the second button answers 1") << three << 0 << -1 << "Second" << 0 << true << 1;
    QTest::newRow("the third button answers 2") << three << 0 << -1 << "Third" << 0 << true << 2;
    QTest::newRow("Escape presses the escape button")
        << three << 0 << 2 << "" << int(Qt::Key_Escape) << true << 2;
    QTest::newRow("the escape button may be the first")
        << three << 1 << 0 << "" << int(Qt::Key_Escape) << true << 0;
    QTest::newRow("without an escape button Escape does not answer")
        << three << 0 << -1 << "" << int(Qt::Key_Escape) << false << 0;
    QTest::newRow("Return presses the default button")
        << three << 1 << -1 << "" << int(Qt::Key_Return) << true << 1;
    QTest::newRow("an empty text leaves its button out")
        << QStringList{"First", "", "Third"} << 0 << -1 << "Third" << 0 << true << 2;
    QTest::newRow("one button is also pressed by Escape")
        << QStringList{"&OK", "", ""} << 0 << -1 << "" << int(Qt::Key_Escape) << true << 0;
    QTest::newRow("an escape button that is left out is none")
        << QStringList{"First", "Second", ""} << 0 << 2 << "" << int(Qt::Key_Escape) << false << 0;
}

void tst_MessageBox::buttonTexts()
{
    QFETCH(QStringList, texts);
    QFETCH(int, defaultButton);
    QFETCH(int, escapeButton);
    QFETCH(QString, press);
    QFETCH(int, key);
    QFETCH(bool, closes);
    QFETCH(int, answer);

    QStringList shown = texts;
    shown.removeAll(QString(""));
    for (bool isWarning : {false, true}) {
        const DialogAnswerer user({DialogAnswer::press(press, key)});
        const auto ask =
            isWarning
                ? static_cast<int (*)(QWidget *, const QString &, const QString &, const QString &,
                                      const QString &, const QString &, int, int)>(&CVXSMessageBox::warning)
                : &CVXSMessageBox::information;
        const int result = ask(nullptr, "Title", "Text\nof two lines", texts[0], texts[1], texts[2],
                               defaultButton, escapeButton);
        const DialogAnswerer::Shown seen = user.shown(0);
        // Of a box that stays open, the first button is pressed in the end.
        QCOMPARE(seen.closed, closes);
        QCOMPARE(result, answer);
        QCOMPARE(seen.title, QString("Title"));
        QCOMPARE(seen.text, QString("Text\nof two lines"));
        QCOMPARE(seen.buttons, shown);
        QCOMPARE(seen.icon, isWarning ? QMessageBox::Warning : QMessageBox::Information);
        QVERIFY(seen.modal);
        QCOMPARE(seen.defaultButton, texts[defaultButton]);
    }
}

void tst_MessageBox::aBoxClosedWithoutAButtonAnswersTheEscapeButton_data()
{
    QTest::addColumn<QString>("third");
    QTest::addColumn<int>("escapeButton");
    row("with an escape button", "Third", 2);
    row("with an escape button that is left out", "", 2);
    row("without an escape button", "Third", -1);
}

void tst_MessageBox::aBoxClosedWithoutAButtonAnswersTheEscapeButton()
{
    QFETCH(QString, third);
    QFETCH(int, escapeButton);
    const DialogAnswerer user({DialogAnswer::call([](QDialog *box) { box->done(-1); })});
    QCOMPARE(CVXSMessageBox::warning(nullptr, "Title", "Text", "First", "Second", third, 0, escapeButton),
             escapeButton);
    QVERIFY(user.shown(0).closed);
}

void tst_MessageBox::threeEmptyTextsGiveOneOk()
{
    for (int key : {0, int(Qt::Key_Escape), int(Qt::Key_Return)}) {
        const DialogAnswerer user({DialogAnswer::press(key ? "" : "OK", key)});
        QCOMPARE(
            CVXSMessageBox::information(nullptr, "Title", "Text", QString(), QString(), QString(), 0, -1), 0);
        QVERIFY(user.shown(0).closed);
        QCOMPARE(user.shown(0).buttons, QStringList{"OK"});
    }
}

void tst_MessageBox::asManyButtonsAsTexts_data()
{
    QTest::addColumn<QString>("press");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("answer");
    QTest::newRow("the first") << "&Save" << 0 << 0;
    QTest::newRow("the second") << "Save &As..." << 0 << 1;
    QTest::newRow("the fourth") << "Cancel" << 0 << 3;
    QTest::newRow("Escape presses the escape button") << "" << int(Qt::Key_Escape) << 3;
    QTest::newRow("Return presses the default button") << "" << int(Qt::Key_Return) << 1;
}

void tst_MessageBox::asManyButtonsAsTexts()
{
    QFETCH(QString, press);
    QFETCH(int, key);
    const QStringList texts{"&Save", "Save &As...", "&Discard", "Cancel"};
    const DialogAnswerer user({DialogAnswer::press(press, key)});
    QTEST(CVXSMessageBox::warning(nullptr, "Title", "Text", texts, 1, 3), "answer");
    QVERIFY(user.shown(0).closed);
    QCOMPARE(user.shown(0).buttons, texts);
    QCOMPARE(user.shown(0).icon, QMessageBox::Warning);
    QCOMPARE(user.shown(0).defaultButton, texts[1]);
}

void tst_MessageBox::standardButtons_data()
{
    QTest::addColumn<bool>("isQuestion");
    QTest::addColumn<QList<int>>("buttons");
    QTest::addColumn<QString>("press");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("answer");
    const QList<int> yesNo{0x4000, 0x10000, 0};
    QTest::newRow("Yes answers 0x4000") << true << yesNo << "&Yes" << 0 << 0x4000;
    QTest::newRow("No answers 0x10000") << true << yesNo << "&No" << 0 << 0x10000;
    QTest::newRow("Escape means No") << true << yesNo << "" << int(Qt::Key_Escape) << 0x10000;
    QTest::newRow("Escape means Cancel when there is one")
        << true << QList<int>{0x4000, 0x10000, 0x400000} << "" << int(Qt::Key_Escape) << 0x400000;
    QTest::newRow("a warning answers alike") << false << yesNo << "&Yes" << 0 << 0x4000;
    QTest::newRow("no button at all gives OK") << false << QList<int>{0, 0, 0} << "OK" << 0 << 0x400;
}

void tst_MessageBox::standardButtons()
{
    QFETCH(bool, isQuestion);
    QFETCH(QList<int>, buttons);
    QFETCH(QString, press);
    QFETCH(int, key);
    QFETCH(int, answer);
    if (press == "OK")
        press = QMessageBox(QMessageBox::NoIcon, "", "", QMessageBox::Ok).button(QMessageBox::Ok)->text();
    const DialogAnswerer user({DialogAnswer::press(press, key)});
    const int result =
        isQuestion ? CVXSMessageBox::question(nullptr, "Title", "Text", buttons[0], buttons[1], buttons[2])
                   : CVXSMessageBox::warning(nullptr, "Title", "Text", buttons[0], buttons[1], buttons[2]);
    QVERIFY(user.shown(0).closed);
    QCOMPARE(result, answer);
    QCOMPARE(user.shown(0).icon, isQuestion ? QMessageBox::Question : QMessageBox::Warning);
    QVERIFY(user.shown(0).modal);
}

void tst_MessageBox::errorHandlerShowsAndLogs()
{
    QWidget parent;
    parent.show();
    const DialogAnswerer user({DialogAnswer::press("OK")});
    CVXSErrorHandler::errorMessage(&parent, ESTATUS_TOOL_WINDOW, "more about it");
    QVERIFY(user.shown(0).closed);
    QCOMPARE(user.shown(0).title, QString("Vexa"));
    QVERIFY(user.shown(0).text.contains(statusText(ESTATUS_TOOL_WINDOW)));
    QVERIFY(user.shown(0).text.contains("more about it"));
    const LogEntry entry = getLogObject()->entries().last();
    QCOMPARE(entry.level, long(ELOG_FAILURE));
    QCOMPARE(entry.number, 34);
    QCOMPARE(entry.message, statusText(ESTATUS_TOOL_WINDOW));
    QCOMPARE(entry.detail, QString("more about it"));
}

QTEST_MAIN(tst_MessageBox)
#include "tst_MessageBox.moc"
