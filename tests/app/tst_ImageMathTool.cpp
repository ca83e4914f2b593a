// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/datasets/SequenceManager.h"
#include "app/PluginManager.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QWhatsThis>

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
    void itsControlsExplainThemselves_data();
    void itsControlsExplainThemselves();
    void closingTheSequenceTakesTheWindowAlong_data();
    void closingTheSequenceTakesTheWindowAlong();
    void closingAnotherSequenceLeavesItAlone();

private:
    QAction *action() const;
    QWidget *toolWindow() const { return m_fixture->window->parts().workspace->findChild<QWidget *>(WINDOW); }

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
    QVERIFY(!m_fixture->window->parts().banner->isVisible());
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
    m_fixture->window->parts().workspace->showDataset((*sequence)[0]);
    QVERIFY(action()->isEnabled());
    QVERIFY(m_fixture->window->parts().sequences->closeAll());
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
    QCOMPARE(m_fixture->window->parts().workspace->findChildren<QWidget *>(WINDOW).size(), 1);
}

void tst_ImageMathTool::itsControlsExplainThemselves_data()
{
    QTest::addColumn<bool>("byTitleBar");
    QTest::newRow("after Shift+F1") << false;
    QTest::newRow("after the title bar's help button") << true;
}

void tst_ImageMathTool::itsControlsExplainThemselves()
{
    QFETCH(bool, byTitleBar);
    QVERIFY(m_fixture->window->openSequence(m_folder));
    action()->trigger();
    QVERIFY(toolWindow());
    auto *k = toolWindow()->findChild<QLineEdit *>(QStringLiteral("m_pKLineEdit"));
    if (byTitleBar) {
        auto *sub = qobject_cast<QMdiSubWindow *>(toolWindow()->parentWidget());
        QStyleOptionTitleBar bar;
        bar.initFrom(sub);
        bar.subControls = QStyle::SC_All;
        bar.titleBarFlags = sub->windowFlags();
        const int height = sub->style()->pixelMetric(QStyle::PM_TitleBarHeight, &bar, sub);
        bar.rect = QRect(0, 0, sub->width(), height);
        const QRect help = sub->style()->subControlRect(QStyle::CC_TitleBar, &bar,
                                                        QStyle::SC_TitleBarContextHelpButton, sub);
        QVERIFY(!help.isEmpty());
        QMouseEvent over(QEvent::MouseMove, help.center(), sub->mapToGlobal(help.center()), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(sub, &over);
        QTest::mouseClick(sub, Qt::LeftButton, Qt::NoModifier, help.center());
        QVERIFY(QWhatsThis::inWhatsThisMode());
    } else {
        QTest::keyClick(k, Qt::Key_F1, Qt::ShiftModifier);
    }
    // In an active window Shift+F1 asks which control is meant, else the one with the focus explains itself
    // at once.
    if (QWhatsThis::inWhatsThisMode())
        QTest::mouseClick(k, Qt::LeftButton);
    const auto explanation = [] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && QByteArray(widget->metaObject()->className()) == "QWhatsThat")
                return widget;
        }
        return static_cast<QWidget *>(nullptr);
    };
    QTRY_VERIFY(explanation());
    QWhatsThis::hideText();
    QTRY_VERIFY(!explanation());
    QVERIFY(!QWhatsThis::inWhatsThisMode());
}

void tst_ImageMathTool::closingTheSequenceTakesTheWindowAlong_data()
{
    QTest::addColumn<bool>("closedBefore");
    QTest::newRow("while the tool is shown") << false;
    QTest::newRow("after the user closed the tool") << true;
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
    QVERIFY(m_fixture->window->parts().sequences->close(sequence));
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
    QVERIFY(m_fixture->window->parts().sequences->close(other));
    QVERIFY(shown);
    QVERIFY(shown->isVisible());
}

QTEST_MAIN(tst_ImageMathTool)
#include "tst_ImageMathTool.moc"
