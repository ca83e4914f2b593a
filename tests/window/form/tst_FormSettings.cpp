// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/Rows.h"
#include "tests/window/form/FormFixture.h"

#include <cmath>
#include <QApplication>
#include <QGridLayout>
#include <QIcon>
#include <QImage>
#include <QtTest>

namespace {

using Policy = QSizePolicy::Policy;

} // namespace

/// Spacings, policies, limits, tab order and first states of the form.
class tst_FormSettings : public FormFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void spacings_data();
    void spacings();
    void margins_data();
    void margins();
    void sizePolicies_data();
    void sizePolicies();
    void alignmentsAndWrap_data();
    void alignmentsAndWrap();
    void listBoxes_data();
    void listBoxes();
    void listsFollowTheApplicationsFont_data();
    void listsFollowTheApplicationsFont();
    void theWindow();
    void theFrame();
    void comboBoxesTakeFocusByTabOnly_data();
    void comboBoxesTakeFocusByTabOnly();
    void tabOrder();
    void objectName_data();
    void objectName();
    void theGroupBoxIsEnabled();
    void initialStates();
    void theWindowCarriesTheApplicationIcon();
};

void tst_FormSettings::spacings_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("spacing");
    const auto row = [](const char *layout, int spacing) {
        QTest::newRow(layout) << QString::fromLatin1(layout) << spacing;
    };
    row("gridLayout", 6);
    row("gridLayout1", 0);
    row("vboxLayout", 3);
    row("gridLayout2", 6);
    row("gridLayout3", 2);
    row("gridLayout4", 6);
    row("gridLayout5", 0);
    row("vboxLayout1", 3);
    row("gridLayout6", 2);
    row("hboxLayout", 6);
    row("gridLayout7", 6);
    row("hboxLayout1", 6);
    row("hboxLayout2", 6);
}

void tst_FormSettings::spacings()
{
    QFETCH(QString, layout);
    QFETCH(int, spacing);
    auto *found = qobject_cast<QLayout *>(named(layout));
    QVERIFY(found);
    QCOMPARE(found->spacing(), spacing);
    if (auto *grid = qobject_cast<QGridLayout *>(found)) {
        QCOMPARE(grid->horizontalSpacing(), spacing);
        QCOMPARE(grid->verticalSpacing(), spacing);
    }
}

void tst_FormSettings::margins_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("margin");
    const auto row = [](const char *layout, int margin) {
        QTest::newRow(layout) << QString::fromLatin1(layout) << margin;
    };
    row("gridLayout", 2);
    row("gridLayout1", 0);
    row("gridLayout2", 0);
    row("gridLayout3", 4);
    row("gridLayout5", 3);
    row("gridLayout6", 4);
}

void tst_FormSettings::margins()
{
    QFETCH(QString, layout);
    QFETCH(int, margin);
    auto *found = qobject_cast<QLayout *>(named(layout));
    QVERIFY(found);
    QCOMPARE(found->contentsMargins(), QMargins(margin, margin, margin, margin));
}

void tst_FormSettings::sizePolicies_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<int>("horizontal");
    QTest::addColumn<int>("vertical");
    const auto row = [](const char *title, const char *widget, Policy horizontal, Policy vertical) {
        QTest::newRow(title) << QString::fromLatin1(widget) << int(horizontal) << int(vertical);
    };
    row("window", "", Policy::Preferred, Policy::Preferred);
    row("m_pGLFrame", "m_pGLFrame", Policy::MinimumExpanding, Policy::MinimumExpanding);
    row("m_pSeqTitle", "m_pSeqTitle", Policy::MinimumExpanding, Policy::Preferred);
    row("m_pListBoxA", "m_pListBoxA", Policy::Preferred, Policy::Expanding);
    row("m_pListBoxB", "m_pListBoxB", Policy::Preferred, Policy::Expanding);
    row("m_pWithPhotoChkBox", "m_pWithPhotoChkBox", Policy::Preferred, Policy::Fixed);
}

void tst_FormSettings::sizePolicies()
{
    QFETCH(QString, widget);
    QFETCH(int, horizontal);
    QFETCH(int, vertical);
    auto *found = qobject_cast<QWidget *>(named(widget));
    QVERIFY(found);
    QCOMPARE(int(found->sizePolicy().horizontalPolicy()), horizontal);
    QCOMPARE(int(found->sizePolicy().verticalPolicy()), vertical);
}

void tst_FormSettings::alignmentsAndWrap_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("alignment"); // -1: not fixed
    QTest::addColumn<bool>("wraps");
    const int leftCentred = int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("the title") << "m_pSeqTitle" << leftCentred << true;
    QTest::newRow("the label of list A") << "m_pListALabel" << leftCentred << true;
    QTest::newRow("the label of list B") << "m_pListBLabel" << -1 << false;
    QTest::newRow("the label of the result") << "m_pResultLabel" << -1 << false;
    QTest::newRow("the label of k") << "m_pkLabel" << int(Qt::AlignVCenter) << true;
}

void tst_FormSettings::alignmentsAndWrap()
{
    QFETCH(QString, label);
    QFETCH(int, alignment);
    QFETCH(bool, wraps);
    auto *found = m_window->findChild<QLabel *>(label);
    QVERIFY(found);
    QCOMPARE(found->wordWrap(), wraps);
    if (label == QLatin1String("m_pkLabel"))
        QVERIFY(found->alignment() & Qt::AlignVCenter);
    else if (alignment >= 0)
        QCOMPARE(int(found->alignment()), alignment);
}

void tst_FormSettings::listBoxes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasVariableHeight");
    QTest::newRow("list A") << "m_pListBoxA" << false;
    QTest::newRow("list B") << "m_pListBoxB" << true;
}

void tst_FormSettings::listBoxes()
{
    QFETCH(QString, name);
    QFETCH(bool, hasVariableHeight);
    auto *list = m_window->findChild<QListWidget *>(name);
    QVERIFY(list);
    QCOMPARE(list->minimumSize(), QSize(0, 90));
    QCOMPARE(list->maximumSize(), QSize(32767, 32767));
    QCOMPARE(list->font().pointSize(), 8);
    QCOMPARE(list->count(), 0);
    QCOMPARE(list->dynamicPropertyNames().contains("variableHeight"), hasVariableHeight);
    if (hasVariableHeight)
        QCOMPARE(list->property("variableHeight"), QVariant(false));
}

void tst_FormSettings::listsFollowTheApplicationsFont_data()
{
    QTest::addColumn<double>("factor"); // of the application's default size
    QTest::addColumn<double>("points");
    QTest::newRow("the default size") << 1.0 << 8.0;
    QTest::newRow("twice the size") << 2.0 << 16.0;
    QTest::newRow("half as large again") << 1.5 << 12.0;
    QTest::newRow("a smaller font") << 0.5 << 8.0;
}

void tst_FormSettings::listsFollowTheApplicationsFont()
{
    QFETCH(double, factor);
    QFETCH(double, points);
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPointSizeF(before.pointSizeF() * factor);
    CVXSImageMathWnd present; // changes with it, and one that is made afterwards has it from the start
    QApplication::setFont(font);
    CVXSImageMathWnd later;
    for (const CVXSImageMathWnd *window : {&present, &later}) {
        for (const char *name : {"m_pListBoxA", "m_pListBoxB"}) {
            const QFont list = window->findChild<QListWidget *>(QLatin1String(name))->font();
            QVERIFY2(std::abs(list.pointSizeF() - points) < 0.01, qPrintable(list.toString()));
            QCOMPARE(list.family(), font.family());
        }
    }
    QApplication::setFont(before);
    const QFont list = present.findChild<QListWidget *>(QStringLiteral("m_pListBoxA"))->font();
    QCOMPARE(list.pointSize(), 8);
}

void tst_FormSettings::theWindow()
{
    QCOMPARE(m_window->size(), QSize(511, 491));
    QCOMPARE(m_window->maximumSize(), QSize(32767, 32767));
}

void tst_FormSettings::theFrame()
{
    QCOMPARE(m_window->m_pGLFrame->frameShape(), QFrame::NoFrame);
    QCOMPARE(m_window->m_pGLFrame->frameShadow(), QFrame::Plain);
    QVERIFY(!m_window->m_pGLFrame->layout());
}

void tst_FormSettings::comboBoxesTakeFocusByTabOnly_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the photograph choice") << "m_pPhotoFromCB";
    QTest::newRow("the operation") << "m_pOperationCB";
}

void tst_FormSettings::comboBoxesTakeFocusByTabOnly()
{
    QFETCH(QString, name);
    auto *box = m_window->findChild<QComboBox *>(name);
    QVERIFY(box);
    QCOMPARE(box->focusPolicy(), Qt::TabFocus);
}

void tst_FormSettings::tabOrder()
{
    const QStringList expected{"m_pFullABRadioBtn",     "m_pAutoABRadioBtn", "m_pFullResultRadioBtn",
                               "m_pAutoResultRadioBtn", "m_pMinChkBox",      "m_pOperationCB",
                               "m_pKLineEdit",          "m_pDisplayBtn",     "m_pWithPhotoChkBox",
                               "m_pPhotoFromCB"};
    QStringList found;
    QWidget *widget = m_window->m_pFullABRadioBtn;
    do {
        if (widget->focusPolicy() & Qt::TabFocus)
            found << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != m_window->m_pFullABRadioBtn);
    QCOMPARE(found.mid(0, expected.size()), expected);
}

void tst_FormSettings::objectName_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    row("a window without a name gets the form's", "", "CVXSImageMathWnd");
    row("a window with a name keeps it", "Image Math Window 2", "Image Math Window 2");
}

void tst_FormSettings::objectName()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    // The name that the constructor is given is not used.
    QCOMPARE(m_window->objectName(), QStringLiteral("CVXSImageMathWnd"));
    // A plain widget has none of the window's slots: each connection is refused with a warning.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QWidget other;
    other.setObjectName(before);
    Ui_CVXSImageMathWnd form;
    form.setupUi(&other);
    qInstallMessageHandler(nullptr);
    QCOMPARE(other.objectName(), after);
}

void tst_FormSettings::theGroupBoxIsEnabled()
{
    QVERIFY(m_window->buttonGroup15->isEnabled());
}

void tst_FormSettings::initialStates()
{
    QVERIFY(m_window->m_pFullABRadioBtn->isChecked());
    QVERIFY(!m_window->m_pAutoABRadioBtn->isChecked());
    QVERIFY(m_window->m_pFullResultRadioBtn->isChecked());
    QVERIFY(!m_window->m_pAutoResultRadioBtn->isChecked());
    QVERIFY(!m_window->m_pMinChkBox->isChecked());
    QCOMPARE(m_window->m_pOperationCB->currentIndex(), 1);
    QCOMPARE(m_window->m_kMinimum, -1.0e12f);
    QCOMPARE(m_window->m_kMaximum, 1.0e12f);
    QVERIFY(m_window->m_bRefreshEnabled);
    QVERIFY(!m_window->m_bHandleClose);
    QVERIFY(!m_window->m_bSavedForImageMath);
    QVERIFY(!m_window->m_bCannotCombine);
    QVERIFY(!m_window->m_pDatasetA);
    QVERIFY(!m_window->m_pDatasetB);
    QVERIFY(!m_window->m_pView);
    QVERIFY(m_window->m_pColorbarAB);
    QVERIFY(m_window->m_pColorbarResult);
    QVERIFY(m_window->m_pResultTag);
    QVERIFY(m_window->m_pTagA);
    QVERIFY(m_window->m_pTagB);
    for (int slot = 0; slot < 3; ++slot)
        QVERIFY(!m_window->viewImage(slot));
    QCOMPARE(m_window->getSequenceID(), QString());
}

void tst_FormSettings::theWindowCarriesTheApplicationIcon()
{
    const QImage icon = m_window->windowIcon().pixmap(32, 32).toImage();
    QVERIFY(!icon.isNull());
    QCOMPARE(icon, CVXUtilityFns::appIcon().pixmap(32, 32).toImage());
}

QTEST_MAIN(tst_FormSettings)
#include "tst_FormSettings.moc"
