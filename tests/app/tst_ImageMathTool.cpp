// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/PluginManager.h"
#include "app/SequenceManager.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/CVXSWorkspace.h"
#include "tests/app/WorkspaceFixture.h"

#include <QAction>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>

namespace {

const QString WINDOW = QStringLiteral("Image Math Window");
const QString TOOLS = QStringLiteral(VEXA_BINARY_DIR "/lib/vexa/plugins");

} // namespace

/// The workspace with the real tool, met through the plug-in loader alone.
class tst_ImageMathTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isReachableInTheToolsMenu();
    void opensOnTheActiveSequence();
    void closingTheSequenceTakesTheWindowAlong_data();
    void closingTheSequenceTakesTheWindowAlong();
    void closingAnotherSequenceLeavesItAlone();

private:
    QAction *action() const;
    QWidget *toolWindow() const { return m_fixture->window->workspace()->findChild<QWidget *>(WINDOW); }

    QTemporaryDir m_data;
    std::unique_ptr<WorkspaceFixture> m_fixture;
    QString m_folder;
    QString m_other;
};

void tst_ImageMathTool::init()
{
    if (m_folder.isEmpty()) {
        m_folder = writeSequence(m_data.path(), "AB20260102030405_SEQ", "AB");
        m_other = writeSequence(m_data.path(), "CD20260102030405_SEQ", "CD");
    }
    m_fixture = std::make_unique<WorkspaceFixture>();
    m_fixture->window->loadPlugins(TOOLS);
    QVERIFY(!m_fixture->window->banner()->isVisible());
    QVERIFY(action());
}

void tst_ImageMathTool::cleanup()
{
    m_fixture.reset();
}

QAction *tst_ImageMathTool::action() const
{
    for (QAction *entry : m_fixture->window->findChild<QMenu *>("menuTools")->actions()) {
        if (entry->text() == "Image Math")
            return entry;
    }
    return nullptr;
}

void tst_ImageMathTool::isReachableInTheToolsMenu()
{
    QVERIFY(!action()->isEnabled());
    CVXSSequenceDataset *sequence = m_fixture->window->openSequence(m_folder);
    QVERIFY(sequence);
    QVERIFY(action()->isEnabled() && action()->isVisible());
    m_fixture->window->workspace()->showDataset((*sequence)[0]);
    QVERIFY(action()->isEnabled());
    QVERIFY(m_fixture->window->sequences()->closeAll());
    QVERIFY(!action()->isEnabled());
}

void tst_ImageMathTool::opensOnTheActiveSequence()
{
    QVERIFY(m_fixture->window->openSequence(m_folder));
    action()->trigger();
    QVERIFY(toolWindow());
    QVERIFY(toolWindow()->isVisible());
    int clicks = 0;
    for (const QListWidget *list : toolWindow()->findChildren<QListWidget *>()) {
        QVERIFY(list->count() >= 2);
        QCOMPARE(list->item(0)->text(), QString("AB20260102030406"));
        ++clicks;
    }
    QCOMPARE(clicks, 2);
    // A second time there is still one window.
    action()->trigger();
    QCOMPARE(m_fixture->window->workspace()->findChildren<QWidget *>(WINDOW).size(), 1);
}

void tst_ImageMathTool::closingTheSequenceTakesTheWindowAlong_data()
{
    QTest::addColumn<bool>("closedBefore");
    QTest::newRow("while the tool is shown") << false;
    QTest::newRow("after the person closed the tool") << true;
}

void tst_ImageMathTool::closingTheSequenceTakesTheWindowAlong()
{
    QFETCH(bool, closedBefore);
    CVXSSequenceDataset *sequence = m_fixture->window->openSequence(m_folder);
    action()->trigger();
    QPointer<QWidget> first = toolWindow();
    QVERIFY(first);
    if (closedBefore) {
        qobject_cast<QMdiSubWindow *>(first->parentWidget())->close();
        QTRY_VERIFY(!first || !first->isVisible());
    }
    QVERIFY(m_fixture->window->sequences()->close(sequence));
    QVERIFY(first.isNull());
    // And it starts on the same sequence opened anew, and on another one.
    for (const QString &folder : {m_folder, m_other}) {
        QVERIFY(m_fixture->window->openSequence(folder));
        action()->trigger();
        QVERIFY(toolWindow());
        QVERIFY(toolWindow()->isVisible());
        QVERIFY(toolWindow()->findChild<QListWidget *>()->count() >= 2);
    }
}

void tst_ImageMathTool::closingAnotherSequenceLeavesItAlone()
{
    CVXSSequenceDataset *other = m_fixture->window->openSequence(m_other);
    QVERIFY(m_fixture->window->openSequence(m_folder));
    action()->trigger();
    QPointer<QWidget> shown = toolWindow();
    QVERIFY(m_fixture->window->sequences()->close(other));
    QVERIFY(shown);
    QVERIFY(shown->isVisible());
}

QTEST_MAIN(tst_ImageMathTool)
#include "tst_ImageMathTool.moc"
