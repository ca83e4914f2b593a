// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "app/PluginManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QApplication>
#include <QDir>
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
    void closingAnotherSequenceLeavesItAlone_data();
    void closingAnotherSequenceLeavesItAlone();
    void aSequenceSavedForItIsARecentOne();
    void waitsForASequenceThatIsBeingLoaded_data();
    void waitsForASequenceThatIsBeingLoaded();

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

void tst_ImageMathTool::closingAnotherSequenceLeavesItAlone_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("while the tool is shown") << false;
    QTest::newRow("after the user closed the tool") << true;
}

void tst_ImageMathTool::closingAnotherSequenceLeavesItAlone()
{
    QFETCH(bool, hidden);
    CVXSSequenceDataset *other = m_fixture->window->openSequence(m_other);
    QVERIFY(m_fixture->window->openSequence(m_folder));
    action()->trigger();
    QPointer<QWidget> shown = toolWindow();
    if (hidden) {
        qobject_cast<QMdiSubWindow *>(shown->parentWidget())->close();
        QTRY_VERIFY(!shown->isVisible());
    }
    QVERIFY(m_fixture->window->parts().sequences->close(other));
    QVERIFY(shown);
    QCOMPARE(shown->isVisible(), !hidden);
}

void tst_ImageMathTool::aSequenceSavedForItIsARecentOne()
{
    auto *sequence = new CVXSSequenceDataset("XY20260102030405_SEQ");
    for (const char *click : {"XY20260102030406", "XY20260102030507"}) {
        auto *dataset = new CVXSDataset(click);
        dataset->setCoreImage(EIMAGE_LUMINESCENT,
                              TestStudy::image(8, 8, [](int x, int) { return float(x); }));
        QVERIFY(sequence->addDataset(dataset));
    }
    m_fixture->window->parts().sequences->add(sequence);
    const RecentSequences *recent = m_fixture->window->parts().recentSequences;
    QVERIFY(recent->folders().isEmpty());
    const DialogAnswerer user({QMessageBox::Yes});
    action()->trigger();
    QCOMPARE(user.count(), 1);
    QVERIFY(toolWindow() && toolWindow()->isVisible());
    QVERIFY(!sequence->getSequenceInfoPath().isEmpty());
    QCOMPARE(recent->folders(), QStringList{QDir::cleanPath(sequence->getSequenceInfoPath())});
}

void tst_ImageMathTool::waitsForASequenceThatIsBeingLoaded_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("opened from the list of recent ones") << "recent";
    QTest::newRow("named on the command line") << "path";
}

void tst_ImageMathTool::waitsForASequenceThatIsBeingLoaded()
{
    QFETCH(QString, way);
    const SequenceManager *sequences = m_fixture->window->parts().sequences;
    if (way == "recent")
        Q_EMIT m_fixture->window->parts().recentSequences->chosen(m_folder);
    else
        m_fixture->window->openPath(m_folder);
    // Its window is there at once, and the tool is offered.
    QCOMPARE(sequences->sequences().size(), 1);
    CVXSSequenceDataset *sequence = sequences->sequences().first();
    QVERIFY(CVXSSequenceWindow::getSequenceWindow(sequence));
    QVERIFY(CVXPreference::isSequenceLoading(sequence));
    QCOMPARE(sequence->getClickNumbers().size(), 2);
    QVERIFY(sequence->getDatasets().isEmpty());
    QVERIFY(action()->isEnabled());
    {
        const DialogAnswerer user({DialogAnswer::press("OK")});
        action()->trigger();
        QCOMPARE(user.count(), 1);
        QCOMPARE(user.shown(0).title, CVXUtilityFns::getAppName());
        QCOMPARE(user.shown(0).text,
                 QString("This sequence dataset is being loaded and therefore not ready for "
                         "'Image Math'. Please try again when the dataset is fully loaded."));
        QVERIFY(!toolWindow());
    }
    QTRY_VERIFY(!CVXPreference::isSequenceLoading(sequence));
    QCOMPARE(sequence->getDatasets().size(), 2);
    action()->trigger();
    QVERIFY(toolWindow());
    QVERIFY(toolWindow()->isVisible());
    QCOMPARE(toolWindow()->findChild<QListWidget *>()->count(), 2);
}

QTEST_MAIN(tst_ImageMathTool)
#include "tst_ImageMathTool.moc"
