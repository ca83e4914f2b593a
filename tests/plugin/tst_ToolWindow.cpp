// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/DialogAnswerer.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QtTest>

namespace {

// Keeps a widget hidden while its parent is shown.
class KeepHidden : public QObject
{
public:
    explicit KeepHidden(QWidget *widget) : m_widget(widget) { widget->installEventFilter(this); }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            m_widget->hide();
        return false;
    }

private:
    QWidget *m_widget;
};

} // namespace

// The host's end of a load request: notes it and answers with a status.
class LoadHost : public QObject
{
    Q_OBJECT

public:
    LoadHost(QObject *plugin, ESTATUS answer) : m_answer(answer)
    {
        connected = bool(
            connect(plugin, SIGNAL(signalLoadFile(QString, bool, ESTATUS *, downloaded_save_data *)), this,
                    SLOT(load(QString, bool, ESTATUS *, downloaded_save_data *)), Qt::DirectConnection));
    }

    bool connected = false;
    int calls = 0;
    QString path;
    bool flag = false;
    ESTATUS *status = nullptr;
    bool hasData = true;

public Q_SLOTS:
    void load(QString aPath, bool aFlag, ESTATUS *aStatus, downloaded_save_data *data)
    {
        ++calls;
        path = aPath;
        flag = aFlag;
        status = aStatus;
        hasData = data != nullptr;
        *aStatus = m_answer;
    }

private:
    ESTATUS m_answer;
};

/// The window in the plug-in's hands after its launch: its sequence goes, it is copied, its load requests are
/// relayed.
class tst_ToolWindow : public PluginFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void removingTheSequence_data();
    void removingTheSequence();
    void removingTheSequenceHidesAMinimisedWindowOutOfSight();
    void removingASequenceWithoutAWindowIsHarmless();
    void aWindowClosedByTheUserKeepsTheShownFlag();
    void copyToClipboard_data();
    void copyToClipboard();
    void copyWithoutAWindowIsIgnored();
    void theLoadRequestIsRelayed_data();
    void theLoadRequestIsRelayed();
    void theRelaySlot_data();
    void theRelaySlot();
    void noRelayBeforeTheFirstLaunchSucceeds();
    void everyLaunchThatFindsTheWindowHiddenAddsARelay();
    void launchingAVisibleWindowAddsNoRelay();
    void resetForgetsTheWindow();
    void destructionTakesTheWindowAlong_data();
    void destructionTakesTheWindowAlong();
};

void tst_ToolWindow::removingTheSequence_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("own");
    QTest::addColumn<bool>("hides");
    QTest::newRow("the window's own sequence hides the shown window") << "shown" << true << true;
    QTest::newRow("the window's own sequence hides the minimised window") << "minimised" << true << true;
    QTest::newRow("another sequence leaves the shown window") << "shown" << false << false;
    QTest::newRow("another sequence leaves the minimised window") << "minimised" << false << false;
}

void tst_ToolWindow::removingTheSequence()
{
    QFETCH(QString, state);
    QFETCH(bool, own);
    QFETCH(bool, hides);
    makeStudy(m_second, QStringLiteral("CD20260102030405_SEQ"), QStringLiteral("CD2026010203040"));
    QVERIFY(launchAndShow());
    QPointer<QWidget> before = window();
    if (state == QLatin1String("minimised")) {
        sub()->showMinimized();
        QVERIFY(sub()->isMinimized());
    }
    CVXSSequenceDataset *removed = own ? m_study->sequence() : m_second->sequence();
    QVERIFY(QMetaObject::invokeMethod(m_plugin, "onSignalSequenceRemoved", Qt::DirectConnection,
                                      QArgument<CVXSSequenceDataset *>("CVXSSequenceDataset*", removed)));
    QVERIFY(before);
    QCOMPARE(window(), before.data());
    QCOMPARE(sub()->isVisible(), !hides);
    QCOMPARE(m_plugin->isToolWindowShown(), !hides);
    QCOMPARE(boundID(window()), QStringLiteral("AB20260102030405_SEQ"));
}

// While the whole workspace is hidden no window in it is visible, but a minimised one would come back with it.
void tst_ToolWindow::removingTheSequenceHidesAMinimisedWindowOutOfSight()
{
    QVERIFY(launchAndShow());
    sub()->showMinimized();
    m_workspace->hide();
    QVERIFY(!sub()->isVisible());
    QVERIFY(sub()->isMinimized());
    m_plugin->onSignalSequenceRemoved(m_study->sequence());
    QVERIFY(!m_plugin->isToolWindowShown());
    m_workspace->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_workspace.get()));
    QVERIFY(!sub()->isVisible());
}

void tst_ToolWindow::removingASequenceWithoutAWindowIsHarmless()
{
    m_plugin->onSignalSequenceRemoved(m_study->sequence());
    QVERIFY(windows().isEmpty());
    QVERIFY(!m_plugin->isToolWindowShown());
}

void tst_ToolWindow::aWindowClosedByTheUserKeepsTheShownFlag()
{
    QVERIFY(launchAndShow());
    window()->close();
    QVERIFY(!sub()->isVisible());
    m_plugin->onSignalSequenceRemoved(m_study->sequence());
    QVERIFY(m_plugin->isToolWindowShown());
    QVERIFY(!sub()->isVisible());
}

void tst_ToolWindow::copyToClipboard_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("copies");
    QTest::newRow("the window's name") << "Image Math Window" << true;
    QTest::newRow("the window's name in capitals") << "IMAGE MATH WINDOW" << true;
    QTest::newRow("the window's name in small letters") << "image math window" << true;
    QTest::newRow("the tool's name") << "Image Math" << false;
    QTest::newRow("the window's name with a blank after it") << "Image Math Window " << false;
    QTest::newRow("the name of another window") << "Sequence Window" << false;
    QTest::newRow("an empty name") << "" << false;
}

void tst_ToolWindow::copyToClipboard()
{
    QFETCH(QString, name);
    QFETCH(bool, copies);
    QVERIFY(launchAndShow());
    QClipboard *clipboard = QApplication::clipboard();
    clipboard->setText(QStringLiteral("before"));
    QVERIFY(QMetaObject::invokeMethod(m_plugin, "onSignalCopyToClipboard", Qt::DirectConnection,
                                      Q_ARG(QString, name)));
    if (!copies) {
        QCOMPARE(clipboard->text(), QStringLiteral("before"));
        return;
    }
    auto *view = window()->findChild<CVXSMultiImageView *>(QStringLiteral("Image Math View"));
    QVERIFY(view);
    QImage expected;
    view->getImage(expected);
    QVERIFY(!expected.isNull());
    const QImage copied = clipboard->image(QClipboard::Clipboard);
    QCOMPARE(copied.size(), expected.size());
    QCOMPARE(copied.convertToFormat(QImage::Format_RGB32), expected.convertToFormat(QImage::Format_RGB32));
}

void tst_ToolWindow::copyWithoutAWindowIsIgnored()
{
    QClipboard *clipboard = QApplication::clipboard();
    clipboard->setText(QStringLiteral("before"));
    m_plugin->onSignalCopyToClipboard(windowName());
    m_plugin->onSignalCopyToClipboard(QString());
    QCOMPARE(clipboard->text(), QStringLiteral("before"));
}

void tst_ToolWindow::theLoadRequestIsRelayed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<bool>("shortForm");
    QTest::newRow("with a set flag") << "/data/AB20260102030406/ClickInfo.txt" << true << false;
    QTest::newRow("with a clear flag") << "/data/other/ClickInfo.txt" << false << false;
    QTest::newRow("in the form without download data") << "/data/short/ClickInfo.txt" << true << true;
}

void tst_ToolWindow::theLoadRequestIsRelayed()
{
    QFETCH(QString, path);
    QFETCH(bool, flag);
    QFETCH(bool, shortForm);
    QVERIFY(launchAndShow());
    LoadHost host(m_plugin, ESTATUS_BAD_SYNTAX);
    QVERIFY(host.connected);
    host.flag = !flag;
    int record = 0;
    ESTATUS status = ESTATUS_SUCCESS;
    if (shortForm)
        QVERIFY(QMetaObject::invokeMethod(window(), "signalLoadImageMathReuslt", Qt::DirectConnection,
                                          Q_ARG(QString, path), Q_ARG(bool, flag),
                                          QArgument<ESTATUS *>("ESTATUS*", &status)));
    else
        QVERIFY(
            requestLoad(window(), path, flag, &status, reinterpret_cast<downloaded_save_data *>(&record)));
    QCOMPARE(host.calls, 1);
    QCOMPARE(host.path, path);
    QCOMPARE(host.flag, flag);
    QCOMPARE(host.status, &status);
    QCOMPARE(status, ESTATUS_BAD_SYNTAX);
    QVERIFY2(!host.hasData, "the host always receives null");
}

void tst_ToolWindow::theRelaySlot_data()
{
    QTest::addColumn<bool>("shortForm");
    QTest::newRow("with download data") << false;
    QTest::newRow("without download data") << true;
}

void tst_ToolWindow::theRelaySlot()
{
    QFETCH(bool, shortForm);
    LoadHost host(m_plugin, ESTATUS_NO_IMAGE);
    QVERIFY(host.connected);
    int record = 0;
    auto *data = reinterpret_cast<downloaded_save_data *>(&record);
    ESTATUS status = ESTATUS_SUCCESS;
    const QString path = QStringLiteral("/data/x/ClickInfo.txt");
    if (shortForm)
        QVERIFY(QMetaObject::invokeMethod(m_plugin, "onSignalLoadImageMathResult", Qt::DirectConnection,
                                          Q_ARG(QString, path), Q_ARG(bool, true),
                                          QArgument<ESTATUS *>("ESTATUS*", &status)));
    else
        QVERIFY(QMetaObject::invokeMethod(m_plugin, "onSignalLoadImageMathResult", Qt::DirectConnection,
                                          Q_ARG(QString, path), Q_ARG(bool, true),
                                          QArgument<ESTATUS *>("ESTATUS*", &status),
                                          QArgument<downloaded_save_data *>("downloaded_save_data*", data)));
    QCOMPARE(host.calls, 1);
    QCOMPARE(host.path, path);
    QVERIFY(host.flag);
    QCOMPARE(status, ESTATUS_NO_IMAGE);
    QVERIFY(!host.hasData);
}

void tst_ToolWindow::noRelayBeforeTheFirstLaunchSucceeds()
{
    showUnsavedSequence();
    DialogAnswerer boxes({int(QMessageBox::No)});
    QVERIFY(!m_plugin->launchTool());
    const LoadHost host(m_plugin, ESTATUS_FAILURE);
    ESTATUS status = ESTATUS_SUCCESS;
    QVERIFY(requestLoad(window(), QStringLiteral("/data/x/ClickInfo.txt"), true, &status, nullptr));
    QCOMPARE(host.calls, 0);
    QCOMPARE(status, ESTATUS_SUCCESS);
}

void tst_ToolWindow::everyLaunchThatFindsTheWindowHiddenAddsARelay()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    const KeepHidden keeper(window());
    window()->hide();
    QVERIFY(sub()->isVisible());
    LoadHost host(m_plugin, ESTATUS_SUCCESS);
    ESTATUS status = ESTATUS_SUCCESS;
    for (int relays = 1; relays <= 4; ++relays) {
        host.calls = 0;
        QVERIFY(requestLoad(window(), QStringLiteral("/data/x/ClickInfo.txt"), true, &status, nullptr));
        QCOMPARE(host.calls, relays);
        m_workspace->showSequence(m_study->sequence());
        QVERIFY(m_plugin->launchTool());
        QCOMPARE(window(), first.data());
        QVERIFY(!window()->isVisible());
    }
}

void tst_ToolWindow::launchingAVisibleWindowAddsNoRelay()
{
    QVERIFY(launchAndShow());
    const LoadHost host(m_plugin, ESTATUS_SUCCESS);
    for (int i = 0; i < 3; ++i) {
        m_workspace->showSequence(m_study->sequence());
        QVERIFY(m_plugin->launchTool());
    }
    ESTATUS status = ESTATUS_FAILURE;
    QVERIFY(requestLoad(window(), QStringLiteral("/data/x/ClickInfo.txt"), true, &status, nullptr));
    QCOMPARE(host.calls, 1);
    QCOMPARE(status, ESTATUS_SUCCESS);
}

void tst_ToolWindow::resetForgetsTheWindow()
{
    QVERIFY(launchAndShow());
    QPointer<QWidget> first = window();
    m_plugin->resetWindow();
    QVERIFY(!m_plugin->isToolWindowShown());
    QVERIFY2(first, "nothing is deleted");
    QVERIFY(first->isVisible());
    // The window is no longer the plug-in's.
    QApplication::clipboard()->setText(QStringLiteral("before"));
    m_plugin->onSignalCopyToClipboard(windowName());
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
    m_plugin->onSignalSequenceRemoved(m_study->sequence());
    QVERIFY(first->isVisible());
    m_workspace->showSequence(m_study->sequence());
    QVERIFY(m_plugin->launchTool());
    QVERIFY(first);
    QCOMPARE(windows().size(), 2);
    QVERIFY(m_plugin->isToolWindowShown());
}

void tst_ToolWindow::destructionTakesTheWindowAlong_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("a shown window") << "shown";
    QTest::newRow("a launched window that was not shown yet") << "launched";
    QTest::newRow("a hidden window") << "hidden";
    QTest::newRow("no window") << "none";
    QTest::newRow("a forgotten window stays") << "forgotten";
}

void tst_ToolWindow::destructionTakesTheWindowAlong()
{
    QFETCH(QString, state);
    if (state == QLatin1String("launched")) {
        m_workspace->showSequence(m_study->sequence());
        QVERIFY(m_plugin->launchTool());
    } else if (state != QLatin1String("none")) {
        QVERIFY(launchAndShow());
    }
    if (state == QLatin1String("hidden"))
        window()->close();
    if (state == QLatin1String("forgotten"))
        m_plugin->resetWindow();
    QPointer<QWidget> before = window();
    QPointer<QWidget> beforeSub = sub();
    QPointer<QAction> action = m_plugin->getAction();
    delete m_loader.instance();
    QVERIFY(!action);
    QCOMPARE(bool(before), state == QLatin1String("forgotten"));
    QCOMPARE(bool(beforeSub), state == QLatin1String("forgotten"));
}

QTEST_MAIN(tst_ToolWindow)
#include "tst_ToolWindow.moc"
