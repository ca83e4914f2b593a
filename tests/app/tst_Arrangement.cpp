// SPDX-License-Identifier: MIT
#include "app/PluginManager.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QDockWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>

/// Where the windows of the first result come to stand, with the real tool.
class tst_Arrangement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void sequenceToolAndResultStandSideBySide();
    void onASmallScreenEveryWindowIsInReach();
    void theToolPlacesItself();
    void aWindowThatTheUserMovedStays();
    void tilesLeaveNothingOutside_data();
    void tilesLeaveNothingOutside();

private:
    void start(const QSize &size);
    void openTool() { m_fixture->window->parts().plugins->plugins().first()->getAction()->trigger(); }
    void makeResult();
    QMdiSubWindow *frameOf(const QString &title) const;
    QMdiSubWindow *sequenceFrame() const { return frameOf("AB20260102030405_SEQ"); }
    QMdiSubWindow *toolFrame() const { return frameOf("Image Math Window"); }
    QMdiSubWindow *resultFrame() const { return frameOf("AB_M20260102030406"); }
    QRect room() const { return workspace()->viewport()->rect(); }
    CVXSWorkspace *workspace() const { return m_fixture->window->parts().workspace; }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<WorkspaceFixture> m_fixture;
};

void tst_Arrangement::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    m_fixture = std::make_unique<WorkspaceFixture>();
}

void tst_Arrangement::cleanup()
{
    m_fixture.reset();
}

/// The workspace in that size, with the tool and a sequence of two clicks.
void tst_Arrangement::start(const QSize &size)
{
    m_fixture->window->setGeometry(QRect(QPoint(), size));
    QVERIFY(QTest::qWaitForWindowExposed(m_fixture->window.get()));
    QTRY_COMPARE(m_fixture->window->size(), size);
    m_fixture->window->loadPlugins(QStringLiteral(VEXA_BINARY_DIR "/lib/vexa/plugins"));
    QVERIFY(m_fixture->window->openSequence(writeSequence(m_data->path(), "AB20260102030405_SEQ", "AB")));
    QVERIFY(sequenceFrame());
}

/// Until the panel beside it has taken its room.
void tst_Arrangement::makeResult()
{
    const int before = room().width();
    QTest::mouseClick(toolFrame()->findChild<QPushButton *>("m_pDisplayBtn"), Qt::LeftButton);
    QVERIFY(resultFrame());
    QVERIFY(m_fixture->window->findChild<QDockWidget *>("howMadePanel")->isVisible());
    QTRY_VERIFY(room().width() < before);
    QCoreApplication::processEvents();
}

QMdiSubWindow *tst_Arrangement::frameOf(const QString &title) const
{
    for (QMdiSubWindow *window : workspace()->subWindowList()) {
        if (window->windowTitle().startsWith(title))
            return window;
    }
    return nullptr;
}

void tst_Arrangement::sequenceToolAndResultStandSideBySide()
{
    start(QSize(1600, 1000));
    openTool();
    QVERIFY(!sequenceFrame()->geometry().intersects(toolFrame()->geometry()));
    makeResult();
    const QList<QMdiSubWindow *> windows = {sequenceFrame(), toolFrame(), resultFrame()};
    for (const QMdiSubWindow *window : windows) {
        QVERIFY2(room().contains(window->geometry()), qPrintable(window->windowTitle()));
        for (const QMdiSubWindow *other : windows)
            QVERIFY2(other == window || !other->geometry().intersects(window->geometry()),
                     qPrintable(window->windowTitle() + " and " + other->windowTitle()));
    }
    QVERIFY2(resultFrame()->width() >= 560 && resultFrame()->height() >= 480,
             "the result can be measured in");
}

void tst_Arrangement::onASmallScreenEveryWindowIsInReach()
{
    start(QSize(1280, 800));
    openTool();
    QVERIFY(!sequenceFrame()->geometry().intersects(toolFrame()->geometry()));
    makeResult();
    for (QMdiSubWindow *window : {sequenceFrame(), toolFrame(), resultFrame()}) {
        QVERIFY2(room().contains(window->geometry()), qPrintable(window->windowTitle()));
        // Its title bar can be taken by the mouse.
        int seen = 0;
        for (int x = 4; x < window->width(); ++x) {
            const QWidget *there = workspace()->viewport()->childAt(window->pos() + QPoint(x, 10));
            seen += there && (there == window || window->isAncestorOf(there)) ? 1 : 0;
        }
        QVERIFY2(seen > 100, qPrintable(window->windowTitle()));
    }
}

void tst_Arrangement::theToolPlacesItself()
{
    start(QSize(1600, 1000));
    openTool();
    QCOMPARE(toolFrame()->pos(), QPoint(0, 0));
    const QSize size = toolFrame()->size();
    makeResult();
    QCOMPARE(toolFrame()->geometry(), QRect(QPoint(0, 0), size));
}

void tst_Arrangement::aWindowThatTheUserMovedStays()
{
    start(QSize(1600, 1000));
    const QRect chosen(30, 40, 500, 400);
    sequenceFrame()->setGeometry(chosen);
    openTool();
    QVERIFY(toolFrame()->geometry().intersects(chosen));
    QCOMPARE(sequenceFrame()->geometry(), chosen);
}

void tst_Arrangement::tilesLeaveNothingOutside_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("fits");
    QTest::newRow("on a large screen") << QSize(1600, 1000) << true;
    QTest::newRow("on a small screen") << QSize(1280, 800) << true;
    QTest::newRow("on a screen that is too small") << QSize(900, 620) << false;
}

void tst_Arrangement::tilesLeaveNothingOutside()
{
    QFETCH(QSize, size);
    QFETCH(bool, fits);
    start(size);
    openTool();
    makeResult();
    auto *menu = m_fixture->window->findChild<QMenu *>("menuWindow");
    Q_EMIT menu->aboutToShow();
    for (QAction *action : menu->actions()) {
        if (action->text() == "&Tile")
            action->trigger();
    }
    const QList<QMdiSubWindow *> windows = {sequenceFrame(), toolFrame(), resultFrame()};
    for (const QMdiSubWindow *window : windows) {
        const QRect seen = window->geometry().intersected(room());
        if (fits)
            QCOMPARE(seen, window->geometry());
        else // one that needs more than there is begins at the edge
            QVERIFY(room().contains(window->pos()) && seen.width() > 100);
        for (const QMdiSubWindow *other : windows)
            QVERIFY(!fits || other == window || !other->geometry().intersects(window->geometry()));
    }
}

QTEST_MAIN(tst_Arrangement)
#include "tst_Arrangement.moc"
