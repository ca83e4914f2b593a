// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"
#include "plugin/CVXImageMathPlugin.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/LogCatcher.h"

#include <QAction>
#include <QtTest>

namespace {

class ToolWithoutAction : public CVXImageMathPlugin
{
public:
    int getToolKind() override { return 5; }
};

/// In a workspace that takes no windows.
class ToolWithoutPlace : public CVXImageMathPlugin
{
public:
    void signalAddWidgetToWorkspace(QWidget *widget) override
    {
        if (refuses)
            delete widget;
        else
            CVXImageMathPlugin::signalAddWidgetToWorkspace(widget);
    }
    bool refuses = true;
};

} // namespace

/// The plug-in where a derived one answers some of its questions otherwise.
class tst_DerivedPlugin : public PluginFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void aToolOfKind5HasNoAction();
    void aWindowThatCouldNotBeMadeIsTold();
    void aWindowThatCouldNotBeReplacedIsTold();
};

void tst_DerivedPlugin::aToolOfKind5HasNoAction()
{
    ToolWithoutAction tool;
    QVERIFY(!tool.getAction());
    QVERIFY(tool.findChildren<QAction *>().isEmpty());
    // Nor does it get one when its validity is set.
    tool.onSignalSequenceAdded(m_study->sequence());
    tool.onSignalDatasetChanged(nullptr);
    QVERIFY(!tool.getAction());
}

void tst_DerivedPlugin::aWindowThatCouldNotBeMadeIsTold()
{
    ToolWithoutPlace tool;
    m_workspace->showSequence(m_study->sequence());
    const LogCatcher log;
    const DialogAnswerer user({DialogAnswer::FIRST_BUTTON});
    QVERIFY(!tool.launchTool());
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.shown(0).title, CVXUtilityFns::getAppName());
    QCOMPARE(user.shown(0).text, statusText(ESTATUS_TOOL_WINDOW));
    QVERIFY(!user.shown(0).hasParent);
    QCOMPARE(log.entries().size(), 1);
    QCOMPARE(log.entries().first().number, 34);
    QCOMPARE(log.entries().first().detail, QString());
    QVERIFY(!tool.isToolWindowShown());
    QVERIFY(windows().isEmpty());
}

void tst_DerivedPlugin::aWindowThatCouldNotBeReplacedIsTold()
{
    ToolWithoutPlace tool;
    tool.refuses = false;
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(tool.launchTool());
    tool.showToolWindow();
    makeStudy(m_second, QStringLiteral("CD20260102030405_SEQ"), QStringLiteral("CD2026010203040"));
    m_workspace->showSequence(m_second->sequence());
    tool.refuses = true;
    const DialogAnswerer user({DialogAnswer::FIRST_BUTTON});
    QVERIFY(!tool.launchTool());
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.shown(0).text, statusText(ESTATUS_TOOL_WINDOW));
    QVERIFY(!tool.isToolWindowShown());
    QVERIFY(windows().isEmpty());
    // Where there is a place again the next launch makes it.
    tool.refuses = false;
    QVERIFY(tool.launchTool());
    QCOMPARE(boundID(window()), QStringLiteral("CD20260102030405_SEQ"));
}

QTEST_MAIN(tst_DerivedPlugin)
#include "tst_DerivedPlugin.moc"
