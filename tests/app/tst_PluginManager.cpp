// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/datasets/SequenceManager.h"
#include "app/PluginManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QPointer>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");
const QString PLUGINS = QStringLiteral(VEXA_BINARY_DIR "/tests/plugins/");

QStringList takeCalls(QObject *tool)
{
    const QStringList calls = tool->property("calls").toStringList();
    tool->setProperty("calls", QStringList());
    return calls;
}

QStringList toolsMenuTexts(MainWindow *window)
{
    auto *menu = window->findChild<QMenu *>("menuTools");
    Q_EMIT menu->aboutToShow();
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible())
            texts.append(action->text());
    }
    return texts;
}

} // namespace

class tst_PluginManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void garbageIsToldAndLeftOut_data();
    void garbageIsToldAndLeftOut();
    void aPluginThatIsNoToolIsTold();
    void aMissingFolderIsTold();
    void otherFilesAreNotLookedAt();
    void theActionIsInTheToolsMenu();
    void toldOfWhatIsActive();
    void toldOfWhatOpensAndCloses();
    void launchShowsTheWindow();
    void failedLaunchShowsNothing();
    void copyReachesTheToolsWindow();
    void hiddenWindowGoesWithTheSequence();
    void visibleWindowStays();
    void hiddenWindowOfAnotherSequenceStays();
    void loadRequestsAreAnswered();
    void theToolGoesWithTheMainWindow();

private:
    void loadTool();

    QTemporaryDir m_data;
    QString m_folder;
    std::unique_ptr<WorkspaceFixture> m_fixture;
    MainWindow *m_window = nullptr;
    QPointer<CVXToolPluginBase> m_tool;
};

void tst_PluginManager::initTestCase()
{
    m_folder = writeSequence(m_data.path(), ID, "AB");
    QVERIFY(!m_folder.isEmpty());
}

void tst_PluginManager::init()
{
    m_fixture = std::make_unique<WorkspaceFixture>();
    m_window = m_fixture->window.get();
}

void tst_PluginManager::cleanup()
{
    m_fixture.reset();
}

void tst_PluginManager::loadTool()
{
    m_window->loadPlugins(PLUGINS + "recording");
    QCOMPARE(m_window->parts().plugins->plugins().size(), 1);
    m_tool = m_window->parts().plugins->plugins().first();
}

void tst_PluginManager::garbageIsToldAndLeftOut_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("a text") << QByteArray("this is no library\n");
    QTest::newRow("the beginning of a library") << QByteArray("\x7f"
                                                              "ELF\x02\x01\x01",
                                                              7) +
                                                       QByteArray(200, '\0');
}

void tst_PluginManager::garbageIsToldAndLeftOut()
{
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    QFile file(dir.filePath("libgarbage.so"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
    file.close();
    m_window->loadPlugins(dir.path());
    QVERIFY(m_window->parts().plugins->plugins().isEmpty());
    const QString told = m_window->parts().banner->text();
    QVERIFY(m_window->parts().banner->isVisible());
    const QString before = dir.filePath("libgarbage.so") + ": ";
    QVERIFY2(told.contains(before), qPrintable(told));
    QVERIFY2(told.section(before, 1).size() > 10, qPrintable(told)); // the reason
    // The workspace goes on, with the tools that do load.
    loadTool();
    QVERIFY(m_window->openSequence(m_folder));
}

void tst_PluginManager::aPluginThatIsNoToolIsTold()
{
    m_window->loadPlugins(PLUGINS + "none");
    QVERIFY(m_window->parts().plugins->plugins().isEmpty());
    QVERIFY2(m_window->parts().banner->text().contains("no_tool") &&
                 m_window->parts().banner->text().contains("not a tool"),
             qPrintable(m_window->parts().banner->text()));
}

void tst_PluginManager::aMissingFolderIsTold()
{
    m_window->loadPlugins(m_data.filePath("missing"));
    QVERIFY2(m_window->parts().banner->text().contains(m_data.filePath("missing")),
             qPrintable(m_window->parts().banner->text()));
}

void tst_PluginManager::otherFilesAreNotLookedAt()
{
    QTemporaryDir dir;
    QFile file(dir.filePath("readme.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    m_window->loadPlugins(dir.path());
    QVERIFY(!m_window->parts().banner->isVisible());
}

void tst_PluginManager::theActionIsInTheToolsMenu()
{
    QCOMPARE(toolsMenuTexts(m_window), QStringList{"No tools are installed"});
    loadTool();
    QCOMPARE(toolsMenuTexts(m_window), QStringList{"No tool fits the active window"});
    QVERIFY(m_window->openSequence(m_folder));
    QCOMPARE(toolsMenuTexts(m_window), QStringList{"Recorder"});
    QVERIFY(m_tool->getAction()->isEnabled());
    // Loading the same library again adds nothing.
    m_window->loadPlugins(PLUGINS + "recording");
    QCOMPARE(toolsMenuTexts(m_window), QStringList{"Recorder"});
}

void tst_PluginManager::toldOfWhatIsActive()
{
    loadTool();
    QCOMPARE(takeCalls(m_tool), QStringList{"dataset none"});
    CVXSSequenceDataset *sequence = m_window->openSequence(m_folder);
    // Added first: what the tool makes of the active window has the last word on its action.
    QCOMPARE(takeCalls(m_tool), (QStringList{"added " + ID, "sequence " + ID}));
    m_window->parts().workspace->showDataset(sequence->getDatasets().first());
    QCOMPARE(takeCalls(m_tool), QStringList{"dataset AB20260102030406"});
    m_window->parts().workspace->showSequence(sequence);
    QCOMPARE(takeCalls(m_tool), QStringList{"sequence " + ID});
    m_window->openSequence(m_folder); // open already
    QCOMPARE(takeCalls(m_tool), QStringList());
}

void tst_PluginManager::toldOfWhatOpensAndCloses()
{
    loadTool();
    CVXSSequenceDataset *sequence = m_window->openSequence(m_folder);
    takeCalls(m_tool);
    QVERIFY(m_window->parts().sequences->close(sequence));
    QCOMPARE(takeCalls(m_tool),
             (QStringList{"dataset removed AB20260102030406", "dataset removed AB20260102030507",
                          "removed " + ID, "dataset none"}));
    QVERIFY(!m_tool->getAction()->isEnabled());
}

void tst_PluginManager::launchShowsTheWindow()
{
    loadTool();
    QVERIFY(m_window->openSequence(m_folder));
    takeCalls(m_tool);
    m_tool->getAction()->trigger();
    QCOMPARE(takeCalls(m_tool), (QStringList{"launch", "show window"}));
    QCOMPARE(m_window->parts().workspace->subWindowList().size(), 2);
    // The tool's window does not become the active child window.
    QVERIFY(CVXSChildWindow::getActiveChildWnd()->isSequenceWindow());
}

void tst_PluginManager::failedLaunchShowsNothing()
{
    loadTool();
    QVERIFY(m_window->openSequence(m_folder));
    takeCalls(m_tool);
    m_tool->setProperty("launchFails", true);
    m_tool->getAction()->trigger();
    QCOMPARE(takeCalls(m_tool), QStringList{"launch"});
}

void tst_PluginManager::copyReachesTheToolsWindow()
{
    loadTool();
    QVERIFY(m_window->openSequence(m_folder));
    m_tool->getAction()->trigger();
    for (QMdiSubWindow *window : m_window->parts().workspace->subWindowList()) {
        if (window->widget()->objectName() == "Recorder Window")
            m_window->parts().workspace->setActiveSubWindow(window);
    }
    takeCalls(m_tool);
    m_window->findChild<QAction *>("actionCopy")->trigger();
    QCOMPARE(takeCalls(m_tool), QStringList{"copy Recorder Window"});
}

void tst_PluginManager::hiddenWindowGoesWithTheSequence()
{
    loadTool();
    m_tool->setProperty("hidesOnRemoval", true);
    CVXSSequenceDataset *sequence = m_window->openSequence(m_folder);
    m_tool->getAction()->trigger();
    QPointer<QWidget> toolWindow = m_window->parts().workspace->findChild<QWidget *>("Recorder Window");
    QVERIFY(toolWindow);
    QVERIFY(toolWindow->isVisible());
    takeCalls(m_tool);
    QVERIFY(m_window->parts().sequences->close(sequence));
    QVERIFY(toolWindow.isNull());
    QVERIFY(m_window->parts().workspace->subWindowList().isEmpty());
    const QStringList calls = takeCalls(m_tool);
    QVERIFY2(calls.indexOf("removed " + ID) >= 0 && calls.indexOf("removed " + ID) < calls.indexOf("reset"),
             qPrintable(calls.join(", ")));
    // It starts again on the sequence opened anew.
    QVERIFY(m_window->openSequence(m_folder));
    m_tool->getAction()->trigger();
    QVERIFY(m_window->parts().workspace->findChild<QWidget *>("Recorder Window")->isVisible());
}

void tst_PluginManager::visibleWindowStays()
{
    loadTool();
    CVXSSequenceDataset *sequence = m_window->openSequence(m_folder);
    m_tool->getAction()->trigger();
    QPointer<QWidget> toolWindow = m_window->parts().workspace->findChild<QWidget *>("Recorder Window");
    takeCalls(m_tool);
    QVERIFY(m_window->parts().sequences->close(sequence));
    QVERIFY(toolWindow);
    QVERIFY(!takeCalls(m_tool).contains("reset"));
}

void tst_PluginManager::hiddenWindowOfAnotherSequenceStays()
{
    loadTool();
    const QString otherFolder = writeSequence(m_data.path(), "CD20260102030405_SEQ", "CD");
    CVXSSequenceDataset *sequence = m_window->openSequence(m_folder);
    m_tool->getAction()->trigger();
    QPointer<QWidget> toolWindow = m_window->parts().workspace->findChild<QWidget *>("Recorder Window");
    QVERIFY(toolWindow);
    CVXSSequenceDataset *other = m_window->openSequence(otherFolder);
    QVERIFY(other);
    toolWindow->parentWidget()->hide();
    takeCalls(m_tool);
    QVERIFY(m_window->parts().sequences->close(other));
    QVERIFY2(toolWindow, "its own sequence is open");
    QVERIFY(!takeCalls(m_tool).contains("reset"));
    QVERIFY(m_window->parts().sequences->close(sequence));
    QVERIFY(toolWindow.isNull());
    // Launched on both, it may point to either.
    sequence = m_window->openSequence(m_folder);
    m_tool->getAction()->trigger();
    other = m_window->openSequence(otherFolder);
    m_tool->getAction()->trigger();
    toolWindow = m_window->parts().workspace->findChild<QWidget *>("Recorder Window");
    toolWindow->parentWidget()->hide();
    QVERIFY(m_window->parts().sequences->close(sequence));
    QVERIFY(toolWindow.isNull());
}

void tst_PluginManager::loadRequestsAreAnswered()
{
    loadTool();
    QTemporaryDir dir;
    {
        CVXSDataset dataset("XY20260102030406");
        dataset.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int x, int) { return float(x); }));
        QCOMPARE(dataset.saveDatasetAs(dir.filePath("XY20260102030406")), ESTATUS_SUCCESS);
    }
    m_tool->setProperty("load", dir.filePath("XY20260102030406") + "//ClickInfo.txt");
    QCOMPARE(m_tool->property("loadStatus").toInt(), 0);
    QVERIFY(CVXSImageWindow::getImageWindow(CVXSDataset::getDataset("XY20260102030406")));
    m_tool->setProperty("load", dir.filePath("missing/ClickInfo.txt"));
    QCOMPARE(m_tool->property("loadStatus").toInt(), int(ESTATUS_FILE_NOT_FOUND));
    QVERIFY(m_window->parts().banner->isVisible());
}

void tst_PluginManager::theToolGoesWithTheMainWindow()
{
    loadTool();
    QVERIFY(m_window->openSequence(m_folder));
    m_tool->getAction()->trigger();
    m_fixture.reset();
    QVERIFY(m_tool.isNull());
    QVERIFY(!CVXSSequenceDataset::getSequenceDataset(ID));
    // The next main window gets a fresh one.
    init();
    loadTool();
    QCOMPARE(takeCalls(m_tool), QStringList{"dataset none"});
}

QTEST_MAIN(tst_PluginManager)
#include "tst_PluginManager.moc"
