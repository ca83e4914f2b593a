// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/ViewFixture.h"

#include <QtTest>

namespace {

class SmallChild : public CVXSChildWindow
{
public:
    bool isSequenceWindow() const override { return false; }
    CVXSSequenceDataset *getSequenceDataset() const override { return nullptr; }
    CVXSDataset *getDataset() const override { return nullptr; }
    ESTATUS saveSequence() override { return ESTATUS_SUCCESS; }
    void refreshAfterDatasetAdded() override {}
};

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

CVXSSequenceDataset *makeSequence(const QString &prefix, QObject *parent)
{
    auto *sequence = new CVXSSequenceDataset(prefix + QStringLiteral("_SEQ"), parent);
    for (int i = 0; i < 2; ++i) {
        auto *dataset = new CVXSDataset(prefix + QString::number(i));
        dataset->setCoreImage(EIMAGE_LUMINESCENT, spots(16, 16));
        sequence->addDataset(dataset);
    }
    return sequence;
}

} // namespace

class tst_Workspace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<CVXSChildWindow *>(); }

    void theNewestWorkspaceIsTheInstance()
    {
        QCOMPARE(CVXSWorkspace::instance(), nullptr);
        {
            CVXSWorkspace first;
            QCOMPARE(CVXSWorkspace::instance(), &first);
            {
                CVXSWorkspace second;
                QCOMPARE(CVXSWorkspace::instance(), &second);
            }
            QCOMPARE(CVXSWorkspace::instance(), &first);
        }
        QCOMPARE(CVXSWorkspace::instance(), nullptr);
    }

    void theActiveChildIsTheLastOneThatWasActive_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::newRow("a workspace on the screen") << true;
        QTest::newRow("a workspace that is not shown yet") << false;
    }
    void theActiveChildIsTheLastOneThatWasActive()
    {
        QFETCH(bool, shown);
        CVXSWorkspace workspace;
        workspace.resize(900, 700);
        if (shown) {
            workspace.show();
            QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        }
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
        QSignalSpy spy(&workspace, &CVXSWorkspace::activeChildChanged);
        auto *first = new SmallChild;
        auto *second = new SmallChild;
        CVXSMdiSubWindow *firstSub = workspace.addChildWindow(first);
        QCOMPARE(first->subWindow(), firstSub);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), first);
        CVXSMdiSubWindow *secondSub = workspace.addChildWindow(second);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), second);
        QCOMPARE(spy.count(), 2);

        // A tool's window leaves the child window the active one, and tells nobody.
        CVXSMdiSubWindow *tool = workspace.addToolWidget(new QWidget);
        tool->showWindow();
        settle();
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), second);
        QCOMPARE(spy.count(), 2);

        if (shown) {
            firstSub->showWindow();
            QCOMPARE(CVXSChildWindow::getActiveChildWnd(), first);
            QCOMPARE(spy.count(), 3);
            secondSub->showWindow();
        }
        tool->showWindow();
        settle();
        secondSub->close();
        settle();
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), first);
        QCOMPARE(spy.last().at(0).value<CVXSChildWindow *>(), first);
        firstSub->close();
        settle();
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
        QCOMPARE(spy.last().at(0).value<CVXSChildWindow *>(), nullptr);
        QVERIFY(tool->isVisibleTo(&workspace));
    }

    void aClosedChildWindowIsDestroyed()
    {
        CVXSWorkspace workspace;
        workspace.show();
        QPointer<SmallChild> child = new SmallChild;
        QPointer<CVXSMdiSubWindow> subWindow = workspace.addChildWindow(child);
        subWindow->close();
        settle();
        QVERIFY(!child);
        QVERIFY(!subWindow);
    }

    void aToolsSubWindowIsHiddenUntilShown()
    {
        CVXSWorkspace workspace;
        workspace.resize(600, 400);
        auto *tool = new QWidget;
        CVXSMdiSubWindow *subWindow = workspace.addToolWidget(tool);
        workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        QVERIFY(!subWindow->isVisible());
        QCOMPARE(tool->parentWidget(), subWindow);
        QVERIFY(!subWindow->testAttribute(Qt::WA_DeleteOnClose));
        subWindow->showWindow();
        QVERIFY(subWindow->isVisible() && tool->isVisible());
        QCOMPARE(workspace.activeSubWindow(), subWindow);
        subWindow->showMinimized();
        subWindow->showWindow();
        QVERIFY(!subWindow->isMinimized() && tool->isVisible());
        subWindow->hideWindow();
        QVERIFY(!subWindow->isVisible() && !tool->isVisible());
        subWindow->showWindow();
        QVERIFY(subWindow->isVisible() && tool->isVisible());
    }

    void aPositionIsKeptInsideTheWorkspace_data()
    {
        QTest::addColumn<QPoint>("wanted");
        QTest::addColumn<QPoint>("got");
        QTest::newRow("inside") << QPoint(40, 30) << QPoint(40, 30);
        QTest::newRow("above and left of it") << QPoint(-40, -30) << QPoint(0, 0);
        QTest::newRow("far to the right") << QPoint(5000, 30) << QPoint(-1, 30);
        QTest::newRow("far below") << QPoint(40, 5000) << QPoint(40, -1);
    }
    void aPositionIsKeptInsideTheWorkspace()
    {
        QFETCH(QPoint, wanted);
        QFETCH(QPoint, got);
        CVXSWorkspace workspace;
        workspace.resize(600, 400);
        workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        CVXSMdiSubWindow *subWindow = workspace.addToolWidget(new QWidget);
        subWindow->showWindow();
        subWindow->setWindowPosition(wanted);
        QVERIFY(workspace.viewport()->rect().contains(subWindow->pos()));
        if (got.x() >= 0)
            QCOMPARE(subWindow->x(), got.x());
        if (got.y() >= 0)
            QCOMPARE(subWindow->y(), got.y());
    }

    void aSequenceOrDatasetHasOneWindow()
    {
        QObject owner;
        CVXSSequenceDataset *sequence = makeSequence(QStringLiteral("WS1"), &owner);
        CVXSWorkspace workspace;
        workspace.resize(900, 700);
        workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        CVXSSequenceWindow *sequenceWindow = workspace.showSequence(sequence);
        QVERIFY(sequenceWindow);
        QCOMPARE(CVXSSequenceWindow::getSequenceWindow(sequence), sequenceWindow);
        CVXSImageWindow *imageWindow = workspace.showDataset(sequence->getDatasets().first());
        QVERIFY(imageWindow);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), imageWindow);
        QCOMPARE(workspace.showSequence(sequence), sequenceWindow);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), sequenceWindow);
        QCOMPARE(workspace.showDataset(sequence->getDatasets().first()), imageWindow);
        QCOMPARE(workspace.subWindowList().size(), 2);
        QCOMPARE(workspace.showDataset(nullptr), nullptr);
        QCOMPARE(workspace.showSequence(nullptr), nullptr);

        Q_EMIT sequenceWindow->datasetActivated(QStringLiteral("WS11"));
        QCOMPARE(CVXSChildWindow::getActiveChildWnd()->getDataset(),
                 sequence->getDataset(QStringLiteral("WS11")));
        QCOMPARE(workspace.subWindowList().size(), 3);
    }

    void windowsOfASequenceThatIsClosedGo()
    {
        auto *sequence = makeSequence(QStringLiteral("WS2"), nullptr);
        CVXSWorkspace workspace;
        workspace.show();
        QPointer<CVXSSequenceWindow> sequenceWindow = workspace.showSequence(sequence);
        QPointer<CVXSImageWindow> imageWindow = workspace.showDataset(sequence->getDatasets().first());
        delete sequence;
        settle();
        QVERIFY(!sequenceWindow);
        QVERIFY(!imageWindow);
        QCOMPARE(workspace.subWindowList().size(), 0);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
    }

    void aWorkspaceTakesItsWindowsAlong()
    {
        QPointer<SmallChild> child = new SmallChild;
        QPointer<QWidget> tool = new QWidget;
        {
            CVXSWorkspace workspace;
            workspace.show();
            workspace.addChildWindow(child);
            workspace.addToolWidget(tool)->showWindow();
        }
        QVERIFY(!child && !tool);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
    }
};

QTEST_MAIN(tst_Workspace)
#include "tst_Workspace.moc"
