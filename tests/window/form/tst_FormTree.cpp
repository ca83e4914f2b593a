// SPDX-License-Identifier: MIT
#include "tests/support/Rows.h"
#include "tests/window/form/FormFixture.h"

#include <cstdint>
#include <QFrame>
#include <QGridLayout>
#include <QtTest>

namespace {

using Policy = QSizePolicy::Policy;

QLayoutItem *itemHolding(QLayout *layout, const QString &name)
{
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        if ((item->widget() && item->widget()->objectName() == name) ||
            (item->layout() && item->layout()->objectName() == name))
            return item;
    }
    return nullptr;
}

int indexIn(QLayout *layout, QLayoutItem *item)
{
    for (int i = 0; i < layout->count(); ++i) {
        if (layout->itemAt(i) == item)
            return i;
    }
    return -1;
}

} // namespace

/// The widgets of the form, where they stand and in which order they are made.
class tst_FormTree : public FormFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void types_data();
    void types();
    void parents_data();
    void parents();
    void outerLayouts_data();
    void outerLayouts();
    void gridCells_data();
    void gridCells();
    void boxPlaces_data();
    void boxPlaces();
    void layoutsHoldNothingElse_data();
    void layoutsHoldNothingElse();
    void spacers_data();
    void spacers();
    void creationOrder();
    void orderAmongSiblings_data();
    void orderAmongSiblings();
};

void tst_FormTree::types_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("type");
    const auto row = [](const char *name, const char *type) {
        QTest::newRow(name) << QString::fromLatin1(name) << QByteArray(type);
    };
    row("gridLayout", "QGridLayout");
    row("gridLayout1", "QGridLayout");
    row("m_pGLFrame", "QFrame");
    row("m_pSeqTitle", "QLabel");
    row("vboxLayout", "QVBoxLayout");
    row("buttonGroup15", "QGroupBox");
    row("gridLayout2", "QGridLayout");
    row("m_pListALabel", "QLabel");
    row("m_pListBLabel", "QLabel");
    row("m_pListBoxA", "QListWidget");
    row("m_pListBoxB", "QListWidget");
    row("m_pColorRangeAB", "QGroupBox");
    row("gridLayout3", "QGridLayout");
    row("gridLayout4", "QGridLayout");
    row("m_pAutoABRadioBtn", "QRadioButton");
    row("m_pFullABRadioBtn", "QRadioButton");
    row("groupBox1", "QGroupBox");
    row("gridLayout5", "QGridLayout");
    row("vboxLayout1", "QVBoxLayout");
    row("m_pColorRangeResult", "QGroupBox");
    row("gridLayout6", "QGridLayout");
    row("hboxLayout", "QHBoxLayout");
    row("m_pFullResultRadioBtn", "QRadioButton");
    row("m_pAutoResultRadioBtn", "QRadioButton");
    row("m_pMinChkBox", "QCheckBox");
    row("gridLayout7", "QGridLayout");
    row("m_pResultLabel", "QLabel");
    row("m_pROIListButton", "QPushButton");
    row("hboxLayout1", "QHBoxLayout");
    row("m_pkLabel", "QLabel");
    row("hboxLayout2", "QHBoxLayout");
    row("m_pWithPhotoChkBox", "QCheckBox");
    row("m_pPhotoFromCB", "QComboBox");
    row("m_pOperationCB", "QComboBox");
    row("m_pKLineEdit", "QLineEdit");
    row("m_pDisplayBtn", "QPushButton");
}

void tst_FormTree::types()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, type);
    const QList<QObject *> found = m_window->findChildren<QObject *>(name);
    QCOMPARE(found.size(), 1);
    QCOMPARE(QByteArray(found.first()->metaObject()->className()), type);
}

void tst_FormTree::parents_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("parent");
    const auto row = [](const char *name, const char *parent) {
        const QByteArray title = QByteArray(name) + " in " + (*parent ? parent : "the window");
        QTest::newRow(title.constData()) << QString::fromLatin1(name) << QString::fromLatin1(parent);
    };
    row("m_pGLFrame", "");
    row("m_pSeqTitle", "");
    row("buttonGroup15", "");
    row("m_pListALabel", "buttonGroup15");
    row("m_pListBLabel", "buttonGroup15");
    row("m_pListBoxA", "buttonGroup15");
    row("m_pListBoxB", "buttonGroup15");
    row("m_pColorRangeAB", "");
    row("m_pAutoABRadioBtn", "m_pColorRangeAB");
    row("m_pFullABRadioBtn", "m_pColorRangeAB");
    row("groupBox1", "");
    row("m_pColorRangeResult", "groupBox1");
    row("m_pFullResultRadioBtn", "m_pColorRangeResult");
    row("m_pAutoResultRadioBtn", "m_pColorRangeResult");
    row("m_pMinChkBox", "m_pColorRangeResult");
    row("m_pResultLabel", "groupBox1");
    row("m_pROIListButton", "groupBox1");
    row("m_pkLabel", "groupBox1");
    row("m_pWithPhotoChkBox", "groupBox1");
    row("m_pPhotoFromCB", "groupBox1");
    row("m_pOperationCB", "groupBox1");
    row("m_pKLineEdit", "groupBox1");
    row("m_pDisplayBtn", "groupBox1");
}

void tst_FormTree::parents()
{
    QFETCH(QString, name);
    QFETCH(QString, parent);
    auto *widget = qobject_cast<QWidget *>(named(name));
    QVERIFY(widget);
    QCOMPARE(static_cast<QObject *>(widget->parentWidget()), named(parent));
}

void tst_FormTree::outerLayouts_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("layout");
    row("of the window", "", "gridLayout");
    row("of the lists' group", "buttonGroup15", "gridLayout2");
    row("of the colour scale of A and B", "m_pColorRangeAB", "gridLayout3");
    row("of the result group", "groupBox1", "gridLayout5");
    row("of the colour scale of the result", "m_pColorRangeResult", "gridLayout6");
}

void tst_FormTree::outerLayouts()
{
    QFETCH(QString, widget);
    QFETCH(QString, layout);
    auto *holder = qobject_cast<QWidget *>(named(widget));
    QVERIFY(holder && holder->layout());
    QCOMPARE(holder->layout()->objectName(), layout);
}

void tst_FormTree::gridCells_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("rowSpan");
    QTest::addColumn<int>("columnSpan");
    const auto row = [](const char *name, const char *layout, int r, int c, int rowSpan = 1,
                        int columnSpan = 1) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(layout) << r << c << rowSpan
                            << columnSpan;
    };
    row("gridLayout1", "gridLayout", 0, 0);
    row("m_pGLFrame", "gridLayout1", 1, 2);
    row("m_pSeqTitle", "gridLayout1", 0, 1, 1, 2);
    row("vboxLayout", "gridLayout1", 1, 0, 1, 2);
    row("m_pListALabel", "gridLayout2", 0, 0);
    row("m_pListBLabel", "gridLayout2", 2, 0);
    row("m_pListBoxA", "gridLayout2", 1, 0, 1, 3);
    row("m_pListBoxB", "gridLayout2", 3, 0, 1, 3);
    row("gridLayout4", "gridLayout3", 0, 0);
    row("m_pAutoABRadioBtn", "gridLayout4", 0, 1);
    row("m_pFullABRadioBtn", "gridLayout4", 0, 0);
    row("vboxLayout1", "gridLayout5", 0, 0);
    row("hboxLayout", "gridLayout6", 0, 0);
    row("m_pResultLabel", "gridLayout7", 0, 0);
    row("m_pROIListButton", "gridLayout7", 2, 1);
    row("hboxLayout1", "gridLayout7", 1, 0);
    row("hboxLayout2", "gridLayout7", 3, 0, 1, 2);
    row("m_pOperationCB", "gridLayout7", 0, 1);
    row("m_pKLineEdit", "gridLayout7", 1, 1);
}

void tst_FormTree::gridCells()
{
    QFETCH(QString, name);
    QFETCH(QString, layout);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(int, rowSpan);
    QFETCH(int, columnSpan);
    auto *grid = qobject_cast<QGridLayout *>(named(layout));
    QVERIFY(grid);
    QLayoutItem *item = itemHolding(grid, name);
    QVERIFY(item);
    int foundRow = -1, foundColumn = -1, foundRowSpan = -1, foundColumnSpan = -1;
    grid->getItemPosition(indexIn(grid, item), &foundRow, &foundColumn, &foundRowSpan, &foundColumnSpan);
    QCOMPARE(foundRow, row);
    QCOMPARE(foundColumn, column);
    QCOMPARE(foundRowSpan, rowSpan);
    QCOMPARE(foundColumnSpan, columnSpan);
}

void tst_FormTree::boxPlaces_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("index");
    const auto row = [](const char *name, const char *layout, int index) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(layout) << index;
    };
    row("buttonGroup15", "vboxLayout", 0);
    row("m_pColorRangeAB", "vboxLayout", 1);
    row("groupBox1", "vboxLayout", 2);
    row("m_pColorRangeResult", "vboxLayout1", 0);
    row("gridLayout7", "vboxLayout1", 1);
    row("m_pDisplayBtn", "vboxLayout1", 2);
    row("m_pFullResultRadioBtn", "hboxLayout", 0);
    row("m_pAutoResultRadioBtn", "hboxLayout", 1);
    row("m_pMinChkBox", "hboxLayout", 2);
    row("m_pkLabel", "hboxLayout1", 1);
    row("m_pWithPhotoChkBox", "hboxLayout2", 0);
    row("m_pPhotoFromCB", "hboxLayout2", 1);
}

void tst_FormTree::boxPlaces()
{
    QFETCH(QString, name);
    QFETCH(QString, layout);
    QFETCH(int, index);
    auto *box = qobject_cast<QBoxLayout *>(named(layout));
    QVERIFY(box);
    QCOMPARE(indexIn(box, itemHolding(box, name)), index);
}

void tst_FormTree::layoutsHoldNothingElse_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("count");
    const auto row = [](const char *layout, int count) {
        QTest::newRow(layout) << QString::fromLatin1(layout) << count;
    };
    row("gridLayout", 1);
    row("gridLayout1", 4);
    row("vboxLayout", 3);
    row("gridLayout2", 4);
    row("gridLayout3", 1);
    row("gridLayout4", 2);
    row("gridLayout5", 1);
    row("vboxLayout1", 3);
    row("gridLayout6", 1);
    row("hboxLayout", 3);
    row("gridLayout7", 7);
    row("hboxLayout1", 2);
    row("hboxLayout2", 2);
}

void tst_FormTree::layoutsHoldNothingElse()
{
    QFETCH(QString, layout);
    QFETCH(int, count);
    auto *found = qobject_cast<QLayout *>(named(layout));
    QVERIFY(found);
    QCOMPARE(found->count(), count);
}

void tst_FormTree::spacers_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column"); // -1: the first item of a box
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("horizontal");
    QTest::addColumn<int>("vertical");
    row("left of the title", "gridLayout1", 0, 0, QSize(205, 15), int(Policy::Fixed), int(Policy::Minimum));
    row("before the label of k", "hboxLayout1", 0, -1, QSize(21, 21), int(Policy::Expanding),
        int(Policy::Minimum));
    row("left of the button of regions", "gridLayout7", 2, 0, QSize(48, 20), int(Policy::Expanding),
        int(Policy::Minimum));
}

void tst_FormTree::spacers()
{
    QFETCH(QString, layout);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QSize, size);
    QFETCH(int, horizontal);
    QFETCH(int, vertical);
    auto *holder = qobject_cast<QLayout *>(named(layout));
    QVERIFY(holder);
    auto *grid = qobject_cast<QGridLayout *>(holder);
    QLayoutItem *item = column < 0 ? holder->itemAt(0) : grid->itemAtPosition(row, column);
    QVERIFY(item && item->spacerItem());
    QCOMPARE(item->spacerItem()->sizeHint(), size);
    QCOMPARE(int(item->spacerItem()->sizePolicy().horizontalPolicy()), horizontal);
    QCOMPARE(int(item->spacerItem()->sizePolicy().verticalPolicy()), vertical);
}

void tst_FormTree::creationOrder()
{
    // The form creates its members one after the other, in the order in which the class holds them.
    const Ui_CVXSImageMathWnd &ui = *m_window;
    const QVector<QPair<const char *, const void *>> members{
        {"gridLayout", &ui.gridLayout},
        {"gridLayout1", &ui.gridLayout1},
        {"m_pGLFrame", &ui.m_pGLFrame},
        {"m_pSeqTitle", &ui.m_pSeqTitle},
        {"vboxLayout", &ui.vboxLayout},
        {"buttonGroup15", &ui.buttonGroup15},
        {"gridLayout2", &ui.gridLayout2},
        {"m_pListALabel", &ui.m_pListALabel},
        {"m_pListBLabel", &ui.m_pListBLabel},
        {"m_pListBoxA", &ui.m_pListBoxA},
        {"m_pListBoxB", &ui.m_pListBoxB},
        {"m_pColorRangeAB", &ui.m_pColorRangeAB},
        {"gridLayout3", &ui.gridLayout3},
        {"gridLayout4", &ui.gridLayout4},
        {"m_pAutoABRadioBtn", &ui.m_pAutoABRadioBtn},
        {"m_pFullABRadioBtn", &ui.m_pFullABRadioBtn},
        {"groupBox1", &ui.groupBox1},
        {"gridLayout5", &ui.gridLayout5},
        {"vboxLayout1", &ui.vboxLayout1},
        {"m_pColorRangeResult", &ui.m_pColorRangeResult},
        {"gridLayout6", &ui.gridLayout6},
        {"hboxLayout", &ui.hboxLayout},
        {"m_pFullResultRadioBtn", &ui.m_pFullResultRadioBtn},
        {"m_pAutoResultRadioBtn", &ui.m_pAutoResultRadioBtn},
        {"m_pMinChkBox", &ui.m_pMinChkBox},
        {"gridLayout7", &ui.gridLayout7},
        {"m_pResultLabel", &ui.m_pResultLabel},
        {"m_pROIListButton", &ui.m_pROIListButton},
        {"hboxLayout1", &ui.hboxLayout1},
        {"m_pkLabel", &ui.m_pkLabel},
        {"hboxLayout2", &ui.hboxLayout2},
        {"m_pWithPhotoChkBox", &ui.m_pWithPhotoChkBox},
        {"m_pPhotoFromCB", &ui.m_pPhotoFromCB},
        {"m_pOperationCB", &ui.m_pOperationCB},
        {"m_pKLineEdit", &ui.m_pKLineEdit},
        {"m_pDisplayBtn", &ui.m_pDisplayBtn},
    };
    for (int i = 1; i < members.size(); ++i) {
        const QByteArray message = QByteArray(members.at(i).first) + " follows " + members.at(i - 1).first;
        QVERIFY2(reinterpret_cast<std::uintptr_t>(members.at(i - 1).second) <
                     reinterpret_cast<std::uintptr_t>(members.at(i).second),
                 message.constData());
    }
}

void tst_FormTree::orderAmongSiblings_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QStringList>("children");
    QTest::newRow("in the window") << ""
                                   << QStringList{"m_pGLFrame", "m_pSeqTitle", "buttonGroup15",
                                                  "m_pColorRangeAB", "groupBox1"};
    row("in the lists' group", "buttonGroup15",
        QStringList{"m_pListALabel", "m_pListBLabel", "m_pListBoxA", "m_pListBoxB"});
    row("in the colour scale of A and B", "m_pColorRangeAB",
        QStringList{"m_pAutoABRadioBtn", "m_pFullABRadioBtn"});
    row("in the result group", "groupBox1",
        QStringList{"m_pColorRangeResult", "m_pResultLabel", "m_pROIListButton", "m_pkLabel",
                    "m_pWithPhotoChkBox", "m_pPhotoFromCB", "m_pOperationCB", "m_pKLineEdit",
                    "m_pDisplayBtn"});
    row("in the colour scale of the result", "m_pColorRangeResult",
        QStringList{"m_pFullResultRadioBtn", "m_pAutoResultRadioBtn", "m_pMinChkBox"});
    QTest::newRow("in the frame, before a sequence is bound") << "m_pGLFrame" << QStringList{};
}

void tst_FormTree::orderAmongSiblings()
{
    QFETCH(QString, parent);
    QFETCH(QStringList, children);
    QStringList found;
    for (QObject *child : named(parent)->children()) {
        if (child->isWidgetType())
            found << child->objectName();
    }
    QCOMPARE(found, children);
}

QTEST_MAIN(tst_FormTree)
#include "tst_FormTree.moc"
