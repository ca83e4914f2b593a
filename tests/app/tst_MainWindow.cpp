// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "app/LogPane.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/Rows.h"
#include "tests/support/WorkspaceFixture.h"

#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QTimer>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

QAction *action(MainWindow *window, const char *name)
{
    auto *found = window->findChild<QAction *>(name);
    if (!found)
        qFatal("no action %s", name);
    return found;
}

/// Drags the paths over the window and drops them; false when the window does not take them.
bool drop(QWidget *window, const QStringList &paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent dropped(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &dropped);
    return true;
}

} // namespace

class tst_MainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void startsWithNothingToActOn();
    void opensAFolder_data();
    void opensAFolder();
    void openingTwiceShowsOneWindow();
    void opensThroughTheMenu();
    void opensWhatIsDropped();
    void droppedImagesAreImported_data();
    void droppedImagesAreImported();
    void doesNotTakeOtherDrops();
    void foldersThatAreNoSequence_data();
    void foldersThatAreNoSequence();
    void aMissingDatasetLeavesTheOthers();
    void activatingAClickShowsItsImage();
    void titleTellsTheActiveSequence();
    void aMaximisedWindowLeavesTheTitle();
    void recentSequencesAreRemembered();
    void aRecentSequenceThatIsGoneIsForgotten();
    void bannerShowsFailuresOnly();
    void bannerShowsWhatTheUserIsToldToo();
    void bannerOpensTheLog();
    void windowMenuListsAndArranges();
    void theKeyOfCloseClosesTheActiveWindow();
    void closingAWindowActivatesTheOneBefore();
    void geometryIsRemembered();
    void aWindowFromALargerScreenFitsThisOne();
    void aboutBoxOpens();
    void menusHaveEverything();

private:
    QTemporaryDir m_data;
    QString m_folder;
};

void tst_MainWindow::initTestCase()
{
    m_folder = writeSequence(m_data.path(), ID, "AB");
    QVERIFY(!m_folder.isEmpty());
}

void tst_MainWindow::startsWithNothingToActOn()
{
    WorkspaceFixture fixture;
    QCOMPARE(fixture.window->windowTitle(), QString("Vexa"));
    QVERIFY(!fixture.window->windowIcon().isNull());
    QVERIFY(!action(fixture.window.get(), "actionSaveSequence")->isEnabled());
    QVERIFY(!action(fixture.window.get(), "actionClose")->isEnabled());
    QVERIFY(!fixture.window->parts().banner->isVisible());
}

void tst_MainWindow::opensAFolder_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("with a slash at the end") << "/";
    QTest::newRow("without a slash at the end") << "";
    QTest::newRow("by its SequenceInfo.txt") << "/SequenceInfo.txt";
}

void tst_MainWindow::opensAFolder()
{
    QFETCH(QString, ending);
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_data.filePath(ID) + ending);
    QVERIFY(sequence);
    QCOMPARE(sequence->getSequenceID(), ID);
    QCOMPARE(fixture.window->parts().sequences->sequences(), QList<CVXSSequenceDataset *>{sequence});
    CVXSSequenceWindow *shown = CVXSSequenceWindow::getSequenceWindow(sequence);
    QVERIFY(shown);
    QVERIFY(shown->isVisible());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), shown);
    QVERIFY(!fixture.window->parts().banner->isVisible());
}

void tst_MainWindow::openingTwiceShowsOneWindow()
{
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_folder);
    QVERIFY(sequence);
    QCOMPARE(fixture.window->openSequence(m_folder), sequence);
    QCOMPARE(fixture.window->parts().workspace->subWindowList().size(), 1);
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), 1);
}

void tst_MainWindow::opensThroughTheMenu()
{
    WorkspaceFixture fixture;
    const DialogAnswerer user({DialogAnswer::choose(m_data.filePath(ID))});
    action(fixture.window.get(), "actionOpenSequence")->trigger();
    QVERIFY(user.shown(0).closed);
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), 1);
    QCOMPARE(fixture.window->parts().sequences->sequences().first()->getSequenceID(), ID);
}

void tst_MainWindow::opensWhatIsDropped()
{
    const QString other = writeSequence(m_data.path(), "CD20260102030405_SEQ", "CD");
    QVERIFY(!other.isEmpty());
    WorkspaceFixture fixture;
    QVERIFY(drop(fixture.window.get(), {m_folder, other + "SequenceInfo.txt"}));
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), 2);
    QCOMPARE(fixture.window->parts().sequences->sequences().last()->getSequenceID(),
             QString("CD20260102030405_SEQ"));
}

void tst_MainWindow::droppedImagesAreImported_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("listed");
    QTest::addColumn<int>("sequences");
    const QStringList both = {"one.tif", "TWO.TIFF"};
    row("one", QStringList{"one.tif"}, QStringList{"one.tif"}, 0);
    row("several, whatever the case of their endings", both, both, 0);
    row("among other files", QStringList{"note.txt", "one.tif"}, QStringList{"one.tif"}, 0);
    row("and a sequence, which is opened", QStringList{ID, "one.tif"}, QStringList{"one.tif"}, 1);
}

void tst_MainWindow::droppedImagesAreImported()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, listed);
    QFETCH(int, sequences);
    const CILImage image = TestStudy::image(8, 8, [](int x, int y) { return float(x + y); });
    QStringList paths;
    for (const QString &name : names) {
        const QString path = m_data.filePath(name);
        if (name.endsWith(".txt"))
            QVERIFY(writeFile(path, "text"));
        else if (name != ID)
            QCOMPARE(image.saveTIFF(QFile::encodeName(path).constData()), EIL_SUCCESS);
        paths += path;
    }
    WorkspaceFixture fixture;
    QStringList found;
    const DialogAnswerer user({DialogAnswer::call([&found](QDialog *dialog) {
        const auto *table = dialog->findChild<QTableWidget *>("importTable");
        for (int row = 0; table && row < table->rowCount(); ++row)
            found += table->item(row, 0)->text();
        dialog->reject();
    })});
    QVERIFY(drop(fixture.window.get(), paths));
    // Whoever they were dragged from is not kept waiting by the dialog.
    QCOMPARE(user.count(), 0);
    QTRY_COMPARE(user.count(), 1);
    QCOMPARE(user.shown(0).className, QString("ImportDialog"));
    QTRY_VERIFY(user.shown(0).closed);
    QCOMPARE(found, listed);
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), sequences);
}

void tst_MainWindow::doesNotTakeOtherDrops()
{
    WorkspaceFixture fixture;
    const CVXSSequenceDataset *none = nullptr;
    QVERIFY(!drop(fixture.window.get(), {m_folder + "AB20260102030406/AnalyzedClickInfo.txt"}));
    QVERIFY(!drop(fixture.window.get(), {m_data.filePath("missing.tif")}));
    QVERIFY(!drop(fixture.window.get(), {m_data.filePath("missing")}));
    QVERIFY(!drop(fixture.window.get(), {}));
    QCOMPARE(CVXSSequenceDataset::getSequenceDataset(ID), none);
}

void tst_MainWindow::foldersThatAreNoSequence_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("sequenceInfo");
    QTest::newRow("a folder without SequenceInfo.txt") << "empty" << QByteArray();
    QTest::newRow("a folder that does not exist") << "missing" << QByteArray();
    row("a SequenceInfo.txt with a broken line", "broken", QByteArray("[Sequence]: X_SEQ\nnonsense\n"));
    QTest::newRow("a SequenceInfo.txt of something else") << "other" << QByteArray("[Something]\na = b\n");
    row("a SequenceInfo.txt of random bytes", "random", QByteArray("\x89PNG\r\n\x1a\n\0\0\xff", 11));
}

void tst_MainWindow::foldersThatAreNoSequence()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, sequenceInfo);
    QTemporaryDir dir;
    const QString folder = dir.filePath(name);
    if (name != "missing")
        QVERIFY(QDir().mkpath(folder));
    if (!sequenceInfo.isEmpty()) {
        QFile file(folder + "/SequenceInfo.txt");
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(sequenceInfo), qint64(sequenceInfo.size()));
    }
    WorkspaceFixture fixture;
    QVERIFY(!fixture.window->openSequence(folder));
    BannerWidget *banner = fixture.window->parts().banner;
    QVERIFY(banner->isVisible());
    QVERIFY2(banner->text().contains(folder), qPrintable(banner->text()));
    // More than the name: what stands behind the colon is the reason.
    const QString reason = banner->text().section(folder, -1).section(": ", 1);
    QVERIFY2(reason.size() > 10, qPrintable(banner->text()));
    // The rest stays usable.
    QVERIFY(fixture.window->openSequence(m_folder));
}

void tst_MainWindow::aMissingDatasetLeavesTheOthers()
{
    QTemporaryDir dir;
    const QString folder = writeSequence(dir.path(), "EF20260102030405_SEQ", "EF");
    QVERIFY(QDir(folder + "EF20260102030406").removeRecursively());
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(folder);
    QVERIFY(sequence);
    QCOMPARE(sequence->getClickNumbers().size(), 2);
    QCOMPARE(sequence->getDatasets().size(), 1);
    QVERIFY(fixture.window->parts().banner->isVisible());
    QVERIFY2(fixture.window->parts().banner->text().contains("EF20260102030406"),
             qPrintable(fixture.window->parts().banner->text()));
}

void tst_MainWindow::activatingAClickShowsItsImage()
{
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_folder);
    QVERIFY(sequence);
    Q_EMIT CVXSSequenceWindow::getSequenceWindow(sequence)->datasetActivated("AB20260102030507");
    CVXSImageWindow *image = CVXSImageWindow::getImageWindow(sequence->getDataset("AB20260102030507"));
    QVERIFY(image);
    QVERIFY(image->isVisible());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), image);
    // The image belongs to the sequence, which can be saved from here.
    QVERIFY(action(fixture.window.get(), "actionSaveSequence")->isEnabled());
    QCOMPARE(fixture.window->windowTitle(), "AB20260102030507, " + ID + " - Vexa");
}

void tst_MainWindow::aMaximisedWindowLeavesTheTitle()
{
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_folder);
    CVXSWorkspace *workspace = fixture.window->parts().workspace;
    const auto titleIs = [&fixture](const QString &title) {
        return fixture.window->windowTitle() == title && fixture.window->windowHandle()->title() == title;
    };
    workspace->currentSubWindow()->showMaximized();
    QTRY_VERIFY2(titleIs(ID + " - Vexa"), qPrintable(fixture.window->windowTitle()));
    workspace->showDataset(sequence->getDatasets().first());
    QTRY_VERIFY2(titleIs("AB20260102030406, " + ID + " - Vexa"), qPrintable(fixture.window->windowTitle()));
    workspace->currentSubWindow()->showNormal();
    QTRY_VERIFY2(titleIs("AB20260102030406, " + ID + " - Vexa"), qPrintable(fixture.window->windowTitle()));
}

void tst_MainWindow::titleTellsTheActiveSequence()
{
    const QString other = writeSequence(m_data.path(), "GH20260102030405_SEQ", "GH");
    WorkspaceFixture fixture;
    CVXSSequenceDataset *first = fixture.window->openSequence(m_folder);
    QCOMPARE(fixture.window->windowTitle(), ID + " - Vexa");
    CVXSSequenceDataset *second = fixture.window->openSequence(other);
    QVERIFY(first && second);
    QCOMPARE(fixture.window->windowTitle(), QString("GH20260102030405_SEQ - Vexa"));
    fixture.window->parts().workspace->showSequence(first);
    QCOMPARE(fixture.window->windowTitle(), ID + " - Vexa");
    QVERIFY(fixture.window->parts().sequences->closeAll());
    QCOMPARE(fixture.window->windowTitle(), QString("Vexa"));
}

void tst_MainWindow::recentSequencesAreRemembered()
{
    WorkspaceFixture fixture;
    QVERIFY(fixture.window->openSequence(m_folder));
    QVERIFY(!fixture.window->openSequence(m_data.path()));
    fixture.window = std::make_unique<MainWindow>(); // the next start, with the same profile
    fixture.window->show();
    QCOMPARE(fixture.window->parts().recentSequences->folders(), QStringList{m_data.filePath(ID)});
    auto *menu = fixture.window->findChild<QMenu *>("menuRecent");
    Q_EMIT menu->aboutToShow();
    QCOMPARE(menu->actions().first()->text(), m_data.filePath(ID));
    menu->actions().first()->trigger();
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), 1);
}

void tst_MainWindow::aRecentSequenceThatIsGoneIsForgotten()
{
    WorkspaceFixture fixture;
    fixture.window->parts().recentSequences->add(m_data.filePath("gone"));
    fixture.window->parts().recentSequences->add(m_data.path()); // is there, but no sequence
    for (const QString &folder : fixture.window->parts().recentSequences->folders())
        Q_EMIT fixture.window->parts().recentSequences->chosen(folder);
    QVERIFY(fixture.window->parts().banner->isVisible());
    QCOMPARE(fixture.window->parts().recentSequences->folders(), QStringList{QDir::cleanPath(m_data.path())});
}

void tst_MainWindow::bannerShowsFailuresOnly()
{
    WorkspaceFixture fixture;
    for (long level : {0L, 1L, 2L})
        vxLog(ELOGLEVEL(level), "not for the banner");
    QVERIFY(!fixture.window->parts().banner->isVisible());
    vxLog(ELOG_FAILURE, "A tool failed", "file.tif");
    QVERIFY(fixture.window->parts().banner->isVisible());
    QCOMPARE(fixture.window->parts().banner->text(), QString("A tool failed: file.tif"));
    QVERIFY(GuiDriver(fixture.window.get()).press("bannerDismiss"));
    QVERIFY(!fixture.window->parts().banner->isVisible());
    QVERIFY(fixture.window->parts().logPane->text().contains("A tool failed"));
}

void tst_MainWindow::bannerShowsWhatTheUserIsToldToo()
{
    WorkspaceFixture fixture;
    getLogObject()->tell("k = 2 is of another study", "stamp");
    QVERIFY(fixture.window->parts().banner->isVisible());
    QCOMPARE(fixture.window->parts().banner->text(), QString("k = 2 is of another study"));
    QCOMPARE(fixture.log.failures(), QStringList());
}

void tst_MainWindow::bannerOpensTheLog()
{
    WorkspaceFixture fixture;
    QVERIFY(!fixture.window->parts().logPane->isVisible());
    vxLog(ELOG_FAILURE, "A tool failed");
    QVERIFY(GuiDriver(fixture.window.get()).press("bannerShowLog"));
    QVERIFY(fixture.window->parts().logPane->isVisible());
    action(fixture.window.get(), "actionLogPane")->trigger();
    QVERIFY(!fixture.window->parts().logPane->isVisible());
}

void tst_MainWindow::windowMenuListsAndArranges()
{
    WorkspaceFixture fixture;
    auto *menu = fixture.window->findChild<QMenu *>("menuWindow");
    Q_EMIT menu->aboutToShow();
    QVERIFY(!menu->actions().first()->isEnabled());
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_folder);
    QVERIFY(sequence);
    CVXSImageWindow *image =
        fixture.window->parts().workspace->showDataset(sequence->getDataset("AB20260102030406"));
    fixture.window->parts().workspace->addToolWidget(new QWidget); // hidden: not listed
    Q_EMIT menu->aboutToShow();
    QStringList texts;
    for (QAction *entry : menu->actions())
        texts.append(entry->text());
    QCOMPARE(texts, (QStringList{"&Cascade", "&Tile", "", "&1 " + ID, "&2 AB20260102030406"}));
    QVERIFY(menu->actions()[4]->isChecked());
    menu->actions()[3]->trigger();
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), CVXSSequenceWindow::getSequenceWindow(sequence));

    menu->actions()[1]->trigger(); // tiled windows do not cover each other
    const QRect one = image->subWindow()->geometry();
    const QRect other = CVXSSequenceWindow::getSequenceWindow(sequence)->subWindow()->geometry();
    QVERIFY(!one.intersects(other));
    menu->actions()[0]->trigger();
    QVERIFY(image->subWindow()->geometry().intersects(
        CVXSSequenceWindow::getSequenceWindow(sequence)->subWindow()->geometry()));
}

void tst_MainWindow::theKeyOfCloseClosesTheActiveWindow()
{
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_folder);
    QVERIFY(sequence);
    QPointer<CVXSImageWindow> image =
        fixture.window->parts().workspace->showDataset(sequence->getDataset("AB20260102030406"));
    QVERIFY(QTest::qWaitForWindowExposed(fixture.window.get()));
    fixture.window->activateWindow(); // there is no window manager that would do it
    QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
    // Keys go to what has the focus inside of the sub-window.
    auto *field = image->findChild<QLineEdit *>();
    QVERIFY(field);
    field->setFocus();
    QTest::keySequence(field, QKeySequence(QKeySequence::Close));
    QTRY_VERIFY(!image);
    QVERIFY(CVXSSequenceWindow::getSequenceWindow(sequence));
}

void tst_MainWindow::closingAWindowActivatesTheOneBefore()
{
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(m_folder);
    QVERIFY(sequence);
    CVXSWorkspace *workspace = fixture.window->parts().workspace;
    CVXSImageWindow *first = workspace->showDataset(sequence->getDataset("AB20260102030406"));
    CVXSImageWindow *second = workspace->showDataset(sequence->getDataset("AB20260102030507"));
    QVERIFY(QTest::qWaitForWindowExposed(fixture.window.get()));
    QTRY_COMPARE(workspace->activeSubWindow(), second->subWindow());
    second->subWindow()->close();
    QTRY_COMPARE(workspace->activeSubWindow(), first->subWindow());
}

void tst_MainWindow::geometryIsRemembered()
{
    WorkspaceFixture fixture;
    fixture.window->resize(901, 702);
    QCoreApplication::processEvents();
    fixture.window->parts().logPane->show();
    QVERIFY(fixture.window->close());
    fixture.window = std::make_unique<MainWindow>();
    QCOMPARE(fixture.window->size(), QSize(901, 702));
    QVERIFY(!fixture.window->parts().logPane->isHidden());
}

void tst_MainWindow::aWindowFromALargerScreenFitsThisOne()
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    WorkspaceFixture fixture;
    fixture.window->setGeometry(QRect(room.topLeft() + QPoint(40, 60), room.size() + QSize(300, 200)));
    QCoreApplication::processEvents();
    QVERIFY(fixture.window->close());
    fixture.window = std::make_unique<MainWindow>();
    QVERIFY(room.contains(fixture.window->geometry()));
}

void tst_MainWindow::aboutBoxOpens()
{
    WorkspaceFixture fixture;
    const DialogAnswerer user({DialogAnswer::press("OK", Qt::Key_Escape)});
    action(fixture.window.get(), "actionAbout")->trigger();
    QVERIFY(user.shown(0).closed);
    QVERIFY(user.shown(0).text.contains("1.1.0"));
}

void tst_MainWindow::menusHaveEverything()
{
    WorkspaceFixture fixture;
    QStringList menus;
    for (QAction *entry : fixture.window->menuBar()->actions())
        menus.append(entry->text().remove('&'));
    QCOMPARE(menus, (QStringList{"File", "Edit", "View", "Tools", "Window", "Help"}));
    QCOMPARE(action(fixture.window.get(), "actionWhatsThis")->shortcut(),
             QKeySequence(Qt::SHIFT + Qt::Key_F1));
    QStringList file;
    for (QAction *entry : fixture.window->findChild<QMenu *>("menuFile")->actions())
        file.append(entry->text().remove('&'));
    file.removeAll(QString()); // lines between groups
    QCOMPARE(file, (QStringList{"Open Sequence...", "Open Recent", "Open Dataset...", "Open Earlier Result",
                                "Import Images...", "Save", "Save Sequence As...", "Save Dataset As...",
                                "Print...", "Close", "Folder for Results...", "Quit"}));
    QCOMPARE(action(fixture.window.get(), "actionSaveDatasetAs")->shortcut(),
             QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_S));
    QCOMPARE(action(fixture.window.get(), "actionQuit")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_Q));
}

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
