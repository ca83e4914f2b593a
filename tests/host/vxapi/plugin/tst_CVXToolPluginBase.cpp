// SPDX-License-Identifier: MIT
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/VirtualPlace.h"

#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QtTest>

namespace {

/// A tool as small as one can be.
class SmallTool : public CVXToolPluginBase
{
public:
    int getToolKind() override { return 0; }
    QAction *getAction() override { return m_pAction; }
    QIcon getIcon() override { return QIcon(); }
    QString getToolName() override { return QStringLiteral("Small"); }
    QString getToolGroupName() override { return QStringLiteral("Tests"); }
    void resetWindow() override {}
    void showToolWindow() override {}
    bool launchTool() override { return true; }
    bool isToolWindowShown() override { return m_bToolWindowShown; }
    void signalAddWidgetToWorkspace(QWidget *widget) override { addWidgetToWorkspace(widget); }
    void updateValidity(QAction *action, bool enabled, bool visible) override
    {
        updateToolPluginValidity(action, enabled, visible);
    }
    void onSignalDatasetChanged(CVXSDataset *) override {}
    void onSignalSequenceChanged(CVXSSequenceDataset *) override {}
    void onSignalDatasetRemoved(CVXSDataset *) override {}
    void onSignalSequenceAdded(CVXSSequenceDataset *) override {}
    void onSignalSequenceRemoved(CVXSSequenceDataset *) override {}
    void onSignalROIModified(QString) override {}
    void onSignalROIDeleted() override {}
    void onSignalupdateROIList() override {}
    void onSignalCopyToClipboard(QString) override {}
};

/// A tool's window: the user can only hide it.
class HidingWindow : public QWidget
{
protected:
    void closeEvent(QCloseEvent *event) override
    {
        static_cast<CVXSMdiSubWindow *>(parentWidget())->hideWindow();
        event->ignore();
    }
};

} // namespace

class tst_CVXToolPluginBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFreshToolIsNotShownAndHasNoAction()
    {
        SmallTool tool;
        QVERIFY(!tool.isToolWindowShown());
        QCOMPARE(tool.getAction(), nullptr);
        QVERIFY(tool.isBaseModuleAvailable());
        QVERIFY(tool.defaultVisibilityForPluggin());
        QVERIFY(!tool.hasPreferenceWidget());
        QCOMPARE(tool.getPreferenceWidget(), nullptr);
        QCOMPARE(tool.getBaseModuleName(), QString());
    }

    // A plug-in of another build calls an operation, and is called, by its place.
    void theOperationsStandInTheirOrder()
    {
        using T = CVXToolPluginBase;
        const QVector<std::ptrdiff_t> places{placeOf(&T::getToolKind),
                                             placeOf(&T::getAction),
                                             placeOf(&T::getIcon),
                                             placeOf(&T::getToolName),
                                             placeOf(&T::getToolGroupName),
                                             placeOf(&T::resetWindow),
                                             placeOf(&T::showToolWindow),
                                             placeOf(&T::launchTool),
                                             placeOf(&T::isToolWindowShown),
                                             placeOf(&T::signalAddWidgetToWorkspace),
                                             placeOf(&T::updateValidity),
                                             placeOf(&T::getBaseModuleName),
                                             placeOf(&T::isBaseModuleAvailable),
                                             placeOf(&T::defaultVisibilityForPluggin),
                                             placeOf(&T::hasPreferenceWidget),
                                             placeOf(&T::getPreferenceWidget),
                                             placeOf(&T::onSignalDatasetChanged),
                                             placeOf(&T::onSignalSequenceChanged),
                                             placeOf(&T::onSignalDatasetRemoved),
                                             placeOf(&T::onSignalSequenceAdded),
                                             placeOf(&T::onSignalSequenceRemoved),
                                             placeOf(&T::onSignalROIModified),
                                             placeOf(&T::onSignalROIDeleted),
                                             placeOf(&T::onSignalupdateROIList),
                                             placeOf(&T::onAdvancedOptionChanged),
                                             placeOf(&T::onSignalCopyToClipboard),
                                             placeOf(&T::onSignalGetPrintPixmap),
                                             placeOf(&T::onSignalUpdatePluginMenu)};
        for (int i = 1; i < places.size(); ++i)
            QVERIFY2(places[i] > places[i - 1], qPrintable(QString("operation %1").arg(i)));
        // Those of QObject come before them, and nothing in between.
        QCOMPARE(places[10], places[0] + 10);
        QVERIFY(places[0] > placeOf(&QObject::eventFilter));
    }

    void validity_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("visible");
        QTest::newRow("enabled and visible") << true << true;
        QTest::newRow("enabled, hidden") << true << false;
        QTest::newRow("disabled, visible") << false << true;
        QTest::newRow("disabled and hidden") << false << false;
    }
    void validity()
    {
        QFETCH(bool, enabled);
        QFETCH(bool, visible);
        SmallTool tool;
        QAction action(QStringLiteral("Small"));
        action.setEnabled(!enabled);
        action.setVisible(!visible);
        tool.updateValidity(&action, enabled, visible);
        // A hidden action is not enabled for anybody who asks, but must come back so.
        QCOMPARE(action.isVisible(), visible);
        action.setVisible(true);
        QCOMPARE(action.isEnabled(), enabled);
        tool.updateValidity(nullptr, enabled, visible); // a tool without an action
    }

    void withoutAWorkspaceAFailureIsLogged()
    {
        SmallTool tool;
        QWidget window;
        const LogCatcher log;
        tool.signalAddWidgetToWorkspace(&window);
        QCOMPARE(log.entries().size(), 1);
        QCOMPARE(log.failures().size(), 1);
        QCOMPARE(window.parentWidget(), nullptr);
    }

    void aToolsWindowIsWrappedHiddenAndSurvivesItsClosing()
    {
        CVXSWorkspace workspace;
        workspace.resize(800, 600);
        workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&workspace));
        SmallTool tool;
        QPointer<HidingWindow> window = new HidingWindow;
        window->setWindowFlags(Qt::Window | Qt::WindowTitleHint);
        tool.signalAddWidgetToWorkspace(window);
        QPointer<CVXSMdiSubWindow> subWindow = qobject_cast<CVXSMdiSubWindow *>(window->parentWidget());
        QVERIFY(subWindow);
        QVERIFY(!subWindow->isVisible());
        QVERIFY(!window->isVisible());
        subWindow->showWindow();
        QVERIFY(subWindow->isVisible());
        QVERIFY(window->isVisible());
        for (int round = 0; round < 2; ++round) {
            QVERIFY(!subWindow->close());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
            QVERIFY(window && subWindow);
            QVERIFY(!subWindow->isVisible());
            subWindow->showWindow();
            QVERIFY(window->isVisible());
        }
        delete subWindow.data();
        QVERIFY(!window);
    }
};

QTEST_MAIN(tst_CVXToolPluginBase)
#include "tst_CVXToolPluginBase.moc"
