// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/deleteFolderTree.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/DialogAnswerer.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QtTest>

namespace {

// A child window that is neither the host's sequence window nor its image window.
class PlainChildWindow : public CVXSChildWindow
{
public:
    explicit PlainChildWindow(bool isSequence) : m_isSequence(isSequence) {}
    bool isSequenceWindow() const override { return m_isSequence; }
    CVXSSequenceDataset *getSequenceDataset() const override { return nullptr; }
    CVXSDataset *getDataset() const override { return nullptr; }
    ESTATUS saveSequence() override { return ESTATUS_FAILURE; }
    void refreshAfterDatasetAdded() override {}

private:
    bool m_isSequence;
};

// What the tool's window was like before, and when, it was handed to the workspace.
class WrapWatcher : public QObject
{
public:
    WrapWatcher() { qApp->installEventFilter(this); }

    bool wrapped = false;
    Qt::WindowFlags flags; ///< when its title was set, as a window of its own
    bool hadParent = true;
    QString title; ///< when it got its parent
    QString objectName;
    QSize frameSize;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (wrapped || qstrcmp(watched->metaObject()->className(), "CVXSImageMathWnd") != 0)
            return false;
        auto *widget = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::WindowTitleChange) {
            flags = widget->windowFlags();
            hadParent = widget->parentWidget() != nullptr;
        } else if (event->type() == QEvent::ParentChange) {
            wrapped = true;
            title = widget->windowTitle();
            objectName = widget->objectName();
            frameSize = widget->frameGeometry().size();
        }
        return false;
    }
};

// Which events of two types reach a widget, in their order.
class EventOrder : public QObject
{
public:
    EventOrder(QWidget *widget, const QList<QEvent::Type> &types) : m_types(types)
    {
        widget->installEventFilter(this);
    }
    QList<QEvent::Type> seen;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (m_types.contains(event->type()) && !seen.contains(event->type()))
            seen << event->type();
        return false;
    }

private:
    QList<QEvent::Type> m_types;
};

} // namespace

/// What happens when the user chooses the action.
class tst_Launcher : public PluginFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void launchWithoutAChildWindowFails();
    void launchWithoutASequenceDoesNothing_data();
    void launchWithoutASequenceDoesNothing();
    void launchWhileTheSequenceLoadsIsRefused();
    void tooFewDatasetsAreRefused_data();
    void tooFewDatasetsAreRefused();
    void aClickWithoutADatasetDoesNotCount();
    void launchFindsTheSequence_data();
    void launchFindsTheSequence();
    void launchDoesNotShowTheWindow();
    void theWindowIsPreparedBeforeItIsWrapped();
    void theSubWindowTakesTheWindowsGeometry();
    void theSubWindowIsPlacedAtTheWindowsCorner();
    void theFirstPictureIsThereAfterTheLaunch();
    void launchingTwiceActivatesTheWindow();
    void launchingAgainActivatesTheApplicationsWindow();
    void launchingAgainGivesTheKeyboardToTheWindow();
    void launchingAgainRaisesTheWindowBeforeItIsRestored();
    void launchingAgainSetsTheShownFlag();
    void launchingRestoresAMinimisedWindow();
    void aHiddenWindowOfTheSameSequenceIsReplaced();
    void anotherSequenceReplacesTheWindowAtItsPosition();
    void aRefusedLaunchLeavesTheOldWindow();
    void aWindowDestroyedByTheHostIsMadeAnew();
    void aFailedBindingLeavesTheWindowHidden();
    void aFailedBindingIsTriedAgain();
    void anUnsavedSequenceIsSavedOnRequest();
};

void tst_Launcher::launchWithoutAChildWindowFails()
{
    DialogAnswerer boxes;
    CVXSChildWindow::setActiveChildWnd(nullptr);
    QVERIFY(!m_plugin->launchTool());
    QCOMPARE(boxes.count(), 0);
    QVERIFY(windows().isEmpty());
    QVERIFY(!m_plugin->isToolWindowShown());
}

void tst_Launcher::launchWithoutASequenceDoesNothing_data()
{
    QTest::addColumn<QString>("which");
    QTest::newRow("an image window of a dataset in no sequence") << "single";
    QTest::newRow("a child window without a dataset") << "no dataset";
    QTest::newRow("a sequence window without a sequence") << "no sequence";
}

void tst_Launcher::launchWithoutASequenceDoesNothing()
{
    QFETCH(QString, which);
    DialogAnswerer boxes;
    auto single = std::make_unique<CVXSDataset>(QStringLiteral("SG20260102030409"));
    single->setCoreImage(EIMAGE_LUMINESCENT,
                         TestStudy::image(8, 8, [](int x, int y) { return float(x + y); }));
    CVXSChildWindow *child = nullptr;
    if (which == QLatin1String("single"))
        child = m_workspace->showDataset(single.get());
    else {
        child = new PlainChildWindow(which == QLatin1String("no sequence"));
        m_workspace->addChildWindow(child);
    }
    CVXSChildWindow::setActiveChildWnd(child);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), child);
    QVERIFY(m_plugin->launchTool());
    QCOMPARE(boxes.count(), 0);
    QVERIFY(windows().isEmpty());
    QVERIFY(!m_plugin->isToolWindowShown());
    m_workspace.reset();
}

void tst_Launcher::launchWhileTheSequenceLoadsIsRefused()
{
    m_workspace->showSequence(m_study->sequence());
    CVXPreference::setSequenceLoading(m_study->sequence(), true);
    DialogAnswerer boxes({DialogAnswer::FIRST_BUTTON});
    const bool launched = m_plugin->launchTool();
    CVXPreference::setSequenceLoading(m_study->sequence(), false);
    QVERIFY(!launched);
    QCOMPARE(boxes.count(), 1);
    const DialogAnswerer::Shown box = boxes.shown().first();
    QCOMPARE(box.title, CVXUtilityFns::getAppName());
    QCOMPARE(box.text,
             QStringLiteral("This sequence dataset is being loaded and therefore not ready for 'Image Math'. "
                            "Please try again when the dataset is fully loaded."));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons.size(), 1);
    QVERIFY(!box.hasParent);
    QVERIFY(windows().isEmpty());
    QVERIFY(!m_plugin->isToolWindowShown());
    // Once it is loaded nothing stands in the way.
    QVERIFY(m_plugin->launchTool());
}

void tst_Launcher::tooFewDatasetsAreRefused_data()
{
    QTest::addColumn<int>("datasets");
    QTest::addColumn<bool>("refused");
    QTest::newRow("a sequence of none") << 0 << true;
    QTest::newRow("a sequence of one") << 1 << true;
    QTest::newRow("two are enough") << 2 << false;
}

void tst_Launcher::tooFewDatasetsAreRefused()
{
    QFETCH(int, datasets);
    QFETCH(bool, refused);
    m_second = std::make_unique<TestStudy>(QStringLiteral("FW20260102030405_SEQ"));
    for (int i = 0; i < datasets; ++i)
        QVERIFY(m_second->add(ClickSpec::of(QStringLiteral("FW2026010203040%1").arg(i))));
    QVERIFY(m_second->save());
    m_workspace->showSequence(m_second->sequence());
    DialogAnswerer boxes({DialogAnswer::FIRST_BUTTON});
    QCOMPARE(m_plugin->launchTool(), !refused);
    QCOMPARE(boxes.count(), refused ? 1 : 0);
    QCOMPARE(windows().isEmpty(), refused);
    QCOMPARE(m_plugin->isToolWindowShown(), !refused);
    if (!refused)
        return;
    const DialogAnswerer::Shown box = boxes.shown().first();
    QCOMPARE(box.title, CVXUtilityFns::getAppName());
    QCOMPARE(box.text, QStringLiteral("FW20260102030405_SEQ contains only one image.\n"
                                      "Need at least two image sets to use Image Math.\n"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QStringList{"&OK"});
    QVERIFY(!box.hasParent);
}

void tst_Launcher::aClickWithoutADatasetDoesNotCount()
{
    const QString id = m_study->sequence()->getSequenceID();
    const QString folder = m_study->sequence()->getSequenceInfoPath();
    const QStringList clicks = m_study->sequence()->getClickNumbers();
    const QString lost = m_study->sequence()->getDatasetFolderPath(clicks.at(1));
    m_study->close();
    QVERIFY(deleteFolderTree(QDir(lost)));
    ESTATUS status = ESTATUS_FAILURE;
    QString error;
    const std::unique_ptr<CVXSSequenceDataset> sequence(CVXSSequenceDataset::open(folder, &status, &error));
    QVERIFY2(sequence, qPrintable(error));
    QCOMPARE(sequence->getClickNumbers(), clicks);
    QVERIFY(!(*sequence)[1]);

    m_workspace->showSequence(sequence.get());
    DialogAnswerer boxes({DialogAnswer::FIRST_BUTTON});
    QVERIFY(!m_plugin->launchTool());
    QCOMPARE(boxes.count(), 1);
    QVERIFY2(boxes.shown().first().text.startsWith(id + QStringLiteral(" contains only one image.\n")),
             qPrintable(boxes.shown().first().text));
    QVERIFY(windows().isEmpty());
    m_workspace.reset();
}

void tst_Launcher::launchFindsTheSequence_data()
{
    QTest::addColumn<bool>("fromImageWindow");
    QTest::newRow("of the active sequence window") << false;
    QTest::newRow("of the active image window's dataset") << true;
}

void tst_Launcher::launchFindsTheSequence()
{
    QFETCH(bool, fromImageWindow);
    makeStudy(m_second, QStringLiteral("CD20260102030405_SEQ"), QStringLiteral("CD2026010203040"));
    m_workspace->showSequence(m_study->sequence());
    CVXSChildWindow *child = nullptr;
    if (fromImageWindow)
        child = m_workspace->showDataset(m_second->sequence()->getDatasets().at(1));
    else
        child = m_workspace->showSequence(m_second->sequence());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), child);
    DialogAnswerer boxes;
    QVERIFY(m_plugin->launchTool());
    QCOMPARE(boxes.count(), 0);
    QCOMPARE(windows().size(), 1);
    QCOMPARE(boundID(window()), QStringLiteral("CD20260102030405_SEQ"));
    QVERIFY(m_plugin->isToolWindowShown());
}

void tst_Launcher::launchDoesNotShowTheWindow()
{
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_plugin->launchTool());
    QVERIFY(m_plugin->isToolWindowShown());
    QVERIFY(sub());
    QVERIFY(m_workspace->subWindowList().contains(sub()));
    QVERIFY(!sub()->isVisible());
    m_plugin->showToolWindow();
    QVERIFY(sub()->isVisible());
    QVERIFY(window()->isVisible());
}

void tst_Launcher::theWindowIsPreparedBeforeItIsWrapped()
{
    m_workspace->showSequence(m_study->sequence());
    const WrapWatcher seen;
    QVERIFY(m_plugin->launchTool());
    QVERIFY(seen.wrapped);
    QVERIFY(!seen.hadParent);
    QCOMPARE(seen.title, windowName());
    QCOMPARE(seen.objectName, windowName());
    const Qt::WindowFlags expected = Qt::Window | Qt::WindowMinimizeButtonHint |
                                     Qt::WindowMaximizeButtonHint | Qt::WindowTitleHint |
                                     Qt::WindowSystemMenuHint;
    QCOMPARE(seen.flags & ~Qt::WindowFlags(Qt::CustomizeWindowHint | Qt::WindowFullscreenButtonHint),
             expected);
    QCOMPARE(window()->windowTitle(), windowName());
    QCOMPARE(window()->objectName(), windowName());
}

void tst_Launcher::theSubWindowTakesTheWindowsGeometry()
{
    m_workspace->showSequence(m_study->sequence());
    const WrapWatcher seen;
    QVERIFY(m_plugin->launchTool());
    QVERIFY(seen.wrapped);
    QVERIFY(sub());
    QCOMPARE(seen.frameSize, QSize(511, 491));
    QCOMPARE(sub()->size(), seen.frameSize + QSize(15, 40));
}

void tst_Launcher::theSubWindowIsPlacedAtTheWindowsCorner()
{
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_plugin->launchTool());
    QVERIFY(sub());
    QCOMPARE(sub()->pos(), window()->frameGeometry().topLeft());
}

void tst_Launcher::theFirstPictureIsThereAfterTheLaunch()
{
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_plugin->launchTool());
    auto *view = window()->findChild<CVXSMultiImageView *>(QStringLiteral("Image Math View"));
    QVERIFY(view);
    for (int slot = 0; slot < 3; ++slot) {
        CILImage *image = view->imageAt(slot);
        QVERIFY(image);
        QCOMPARE(image->getWidth(), 32u);
        QCOMPARE(image->getHeight(), 32u);
    }
    // Both clicks hold the same pixels and k is 1.
    QCOMPARE(view->imageAt(2)->getMax(), 0.0f);
    QCOMPARE(view->imageAt(0)->getMax(), view->imageAt(1)->getMax());
}

void tst_Launcher::launchingTwiceActivatesTheWindow()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    QPointer<CVXSMdiSubWindow> firstSub = sub();
    const QPoint place(120, 90);
    sub()->move(place);
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_workspace->activeSubWindow() != firstSub);
    QVERIFY(m_plugin->launchTool());
    QCoreApplication::processEvents();
    QCOMPARE(windows().size(), 1);
    QCOMPARE(window(), first.data());
    QCOMPARE(sub(), firstSub.data());
    QCOMPARE(m_workspace->activeSubWindow(), static_cast<QMdiSubWindow *>(firstSub));
    QCOMPARE(m_workspace->subWindowList(QMdiArea::StackingOrder).last(),
             static_cast<QMdiSubWindow *>(firstSub));
    QCOMPARE(sub()->pos(), place);
    QVERIFY(m_plugin->isToolWindowShown());
    QWidget *focus = QApplication::focusWidget();
    QVERIFY(focus && (focus == firstSub || firstSub->isAncestorOf(focus)));
}

void tst_Launcher::launchingAgainActivatesTheApplicationsWindow()
{
    QVERIFY(launchAndShow());
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &other);
    QVERIFY(m_plugin->launchTool());
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(m_workspace.get()));
}

// The window is the active one already, while the user types somewhere beside the workspace's windows.
void tst_Launcher::launchingAgainGivesTheKeyboardToTheWindow()
{
    QVERIFY(launchAndShow());
    QLineEdit field(m_workspace.get());
    field.show();
    m_workspace->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(m_workspace.get()));
    field.setFocus();
    QVERIFY(field.hasFocus());
    QCOMPARE(m_workspace->activeSubWindow(), static_cast<QMdiSubWindow *>(sub()));
    QVERIFY(m_plugin->launchTool());
    const QWidget *focus = QApplication::focusWidget();
    QVERIFY(focus && (focus == sub() || sub()->isAncestorOf(focus)));
}

void tst_Launcher::launchingAgainRaisesTheWindowBeforeItIsRestored()
{
    QVERIFY(launchAndShow());
    sub()->showMinimized();
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_workspace->subWindowList(QMdiArea::StackingOrder).last() != sub());
    const EventOrder order(sub(), {QEvent::ZOrderChange, QEvent::WindowStateChange});
    QVERIFY(m_plugin->launchTool());
    QCOMPARE(order.seen, (QList<QEvent::Type>{QEvent::ZOrderChange, QEvent::WindowStateChange}));
}

// The host may show the window again that went with its sequence, without a launch.
void tst_Launcher::launchingAgainSetsTheShownFlag()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    m_plugin->onSignalSequenceRemoved(m_study->sequence());
    m_plugin->showToolWindow();
    QVERIFY(sub()->isVisible());
    QVERIFY(!m_plugin->isToolWindowShown());
    QVERIFY(m_plugin->launchTool());
    QCOMPARE(window(), first.data());
    QVERIFY(m_plugin->isToolWindowShown());
}

void tst_Launcher::launchingRestoresAMinimisedWindow()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    sub()->showMinimized();
    QVERIFY(sub()->isMinimized());
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_plugin->launchTool());
    m_plugin->showToolWindow();
    QCOMPARE(window(), first.data());
    QVERIFY(!sub()->isMinimized());
    QVERIFY(window()->isVisible());
}

void tst_Launcher::aHiddenWindowOfTheSameSequenceIsReplaced()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    QPointer<QWidget> firstSub = sub();
    window()->close();
    QVERIFY(!sub()->isVisible());
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_plugin->launchTool());
    QVERIFY(!first);
    QVERIFY(!firstSub);
    QCOMPARE(windows().size(), 1);
    QCOMPARE(boundID(window()), m_study->sequence()->getSequenceID());
    m_plugin->showToolWindow();
    QVERIFY(window()->isVisible());
}

void tst_Launcher::anotherSequenceReplacesTheWindowAtItsPosition()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    QPointer<QWidget> firstSub = sub();
    const QPoint place(230, 140);
    sub()->move(place);
    QCOMPARE(sub()->pos(), place);
    makeStudy(m_second, QStringLiteral("CD20260102030405_SEQ"), QStringLiteral("CD2026010203040"));
    m_workspace->showSequence(m_second->sequence());
    QVERIFY(m_plugin->launchTool());
    QVERIFY(!first);
    QVERIFY(!firstSub);
    QCOMPARE(windows().size(), 1);
    QCOMPARE(boundID(window()), QStringLiteral("CD20260102030405_SEQ"));
    QVERIFY(m_plugin->isToolWindowShown());
    m_plugin->showToolWindow();
    QCoreApplication::processEvents();
    QVERIFY(window()->isVisible());
    QCOMPARE(sub()->pos(), place);
}

void tst_Launcher::aRefusedLaunchLeavesTheOldWindow()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    m_second = std::make_unique<TestStudy>(QStringLiteral("FW20260102030405_SEQ"));
    QVERIFY(m_second->add(ClickSpec::of(QStringLiteral("FW20260102030401"))));
    QVERIFY(m_second->save());
    m_workspace->showSequence(m_second->sequence());
    DialogAnswerer boxes({DialogAnswer::FIRST_BUTTON});
    QVERIFY(!m_plugin->launchTool());
    QCOMPARE(boxes.count(), 1);
    QVERIFY(first && first->isVisible());
    QCOMPARE(boundID(window()), m_study->sequence()->getSequenceID());
    QVERIFY(m_plugin->isToolWindowShown());
}

void tst_Launcher::aWindowDestroyedByTheHostIsMadeAnew()
{
    QVERIFY(launchAndShow());
    delete sub();
    QVERIFY(windows().isEmpty());
    m_plugin->onSignalSequenceRemoved(m_study->sequence());
    m_plugin->onSignalCopyToClipboard(windowName());
    QVERIFY(launchAndShow());
    QCOMPARE(boundID(window()), m_study->sequence()->getSequenceID());
}

void tst_Launcher::aFailedBindingLeavesTheWindowHidden()
{
    showUnsavedSequence();
    DialogAnswerer boxes({int(QMessageBox::No)});
    QVERIFY(!m_plugin->launchTool());
    QCOMPARE(boxes.count(), 1);
    QVERIFY(!m_plugin->isToolWindowShown());
    QCOMPARE(windows().size(), 1);
    QVERIFY(sub());
    QVERIFY(!sub()->isVisible());
    QVERIFY(!window()->isVisible());
}

void tst_Launcher::aFailedBindingIsTriedAgain()
{
    showUnsavedSequence();
    {
        DialogAnswerer no({int(QMessageBox::No)});
        QVERIFY(!m_plugin->launchTool());
    }
    QPointer<QWidget> first = window();
    QVERIFY(m_second->save());
    DialogAnswerer none;
    QVERIFY(m_plugin->launchTool());
    QCOMPARE(none.count(), 0);
    QVERIFY(!first);
    QCOMPARE(windows().size(), 1);
    QCOMPARE(window()->findChild<QListWidget *>(QStringLiteral("m_pListBoxA"))->count(), 2);
    QVERIFY(m_plugin->isToolWindowShown());
}

void tst_Launcher::anUnsavedSequenceIsSavedOnRequest()
{
    showUnsavedSequence();
    DialogAnswerer boxes({int(QMessageBox::Yes)});
    QVERIFY(m_plugin->launchTool());
    QCOMPARE(boxes.count(), 1);
    QVERIFY(!m_second->sequence()->getSequenceInfoPath().isEmpty());
    QVERIFY(m_plugin->isToolWindowShown());
}

QTEST_MAIN(tst_Launcher)
#include "tst_Launcher.moc"
