// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetLoader.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QPointer>

namespace {

const QString CLICK = QStringLiteral("AB_M20260102030405");

/// A result in the program-data folder, as the tool leaves it: with a copy of an operand, and a sub-folder of
/// an earlier run. Returns its folder.
QString writeResult(const QString &clickNumber = CLICK)
{
    CVXSDataset dataset(clickNumber);
    dataset.setCoreImage(EIMAGE_LUMINESCENT,
                         TestStudy::image(16, 16, [](int x, int y) { return float(x * y); }));
    (*dataset.getClickInfo())[clickinfo::SECTION_LUMINESCENT]->setValue(clickinfo::KEY_MATH_OPERATION,
                                                                        QStringLiteral("A - B * k"));
    const QString folder = CVXPreference::getProgramDataPath() + "/" + clickNumber + "/";
    if (dataset.saveDatasetAs(folder) != ESTATUS_SUCCESS || !QDir(folder).mkpath("notes/of today") ||
        !writeFile(folder + "luminescentA.TIF", "operand") ||
        !writeFile(folder + "notes/of today/read me.txt", "mouse 3"))
        return QString();
    return folder;
}

/// Loads it as the tool does, with the marks that the tool sets.
CVXSDataset *loadResult(MainWindow *window, const QString &folder)
{
    ESTATUS status = ESTATUS_FAILURE;
    window->parts().datasetLoader->onLoadFile(folder + "/ClickInfo.txt", true, &status, nullptr);
    CVXSDataset *dataset = CVXSDataset::getOpenDataset(QDir(folder).dirName());
    if (status != ESTATUS_SUCCESS || !dataset)
        qFatal("the result cannot be loaded");
    dataset->setColorTable(VXS_CT_RED);
    dataset->setModified(true);
    dataset->setImageMathToBeSaved(true);
    return dataset;
}

void closeWindowOf(const CVXSDataset *dataset)
{
    CVXSImageWindow::getImageWindow(dataset)->subWindow()->close();
    QCoreApplication::processEvents(); // the question comes after the event
}

} // namespace

class tst_ClosingResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void closingAnUnsavedResultAsks_data();
    void closingAnUnsavedResultAsks();
    void whatWasNotChangedClosesWithoutAsking();
    void eitherMarkAsks_data();
    void eitherMarkAsks();
    void saveKeepsTheChanges();
    void saveAsCopiesTheWholeFolder();
    void aDiscardedResultCanBeOpenedAgain();
    void aSaveThatFailsKeepsItOpen();
    void quittingAsksForEveryResultFirst();
    void quittingSaves();
    void theMenuSavesTheActiveResult();
    void aDatasetOfASequenceIsSavedAsACopy();
    void closedResultsAreToldToNobodyTwice();
};

void tst_ClosingResults::cleanup()
{
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
}

void tst_ClosingResults::closingAnUnsavedResultAsks_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("closed");
    QTest::newRow("Save closes it") << "&Save" << 0 << true;
    QTest::newRow("Discard closes it") << "&Discard" << 0 << true;
    QTest::newRow("Cancel keeps it") << "Cancel" << 0 << false;
    QTest::newRow("Escape keeps it") << "" << int(Qt::Key_Escape) << false;
}

void tst_ClosingResults::closingAnUnsavedResultAsks()
{
    QFETCH(QString, answer);
    QFETCH(int, key);
    QFETCH(bool, closed);
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    QVERIFY(!folder.isEmpty());
    QPointer<CVXSDataset> dataset = loadResult(fixture.window.get(), folder);
    QPointer<CVXSImageWindow> window = CVXSImageWindow::getImageWindow(dataset);
    const DialogAnswerer user({DialogAnswer::press(answer, key)});
    closeWindowOf(dataset);
    QVERIFY(user.shown(0).closed);
    QCOMPARE(user.shown(0).buttons, (QStringList{"&Save", "Save &As...", "&Discard", "Cancel"}));
    QCOMPARE(user.shown(0).defaultButton, QString("&Save"));
    QVERIFY2(user.shown(0).text.contains(CLICK) && user.shown(0).text.contains(folder),
             qPrintable(user.shown(0).text));
    QCOMPARE(dataset.isNull(), closed);
    QCOMPARE(window.isNull(), closed);
    QCOMPARE(fixture.window->parts().workspace->subWindowList().isEmpty(), closed);
    QVERIFY(QFileInfo::exists(folder + "AnalyzedClickInfo.txt"));
    QVERIFY2(CVXSDataset::getDataset(CLICK), "its click number stays taken");
}

void tst_ClosingResults::whatWasNotChangedClosesWithoutAsking()
{
    WorkspaceFixture fixture;
    QPointer<CVXSDataset> dataset = fixture.window->openDataset(writeResult());
    QVERIFY(dataset);
    closeWindowOf(dataset);
    QVERIFY(dataset.isNull());
}

void tst_ClosingResults::eitherMarkAsks_data()
{
    QTest::addColumn<bool>("modified");
    QTest::addColumn<QString>("words");
    QTest::newRow("a change") << true << "has changes that are not saved";
    QTest::newRow("a result that is to be saved") << false << "You have not saved the result";
}

void tst_ClosingResults::eitherMarkAsks()
{
    QFETCH(bool, modified);
    QFETCH(QString, words);
    WorkspaceFixture fixture;
    CVXSDataset *dataset = fixture.window->openDataset(writeResult());
    QVERIFY(dataset);
    dataset->setModified(modified);
    dataset->setImageMathToBeSaved(!modified);
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    closeWindowOf(dataset);
    QVERIFY(user.shown(0).closed);
    QVERIFY2(user.shown(0).text.contains(words), qPrintable(user.shown(0).text));
}

void tst_ClosingResults::saveKeepsTheChanges()
{
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    CVXSDataset *dataset = loadResult(fixture.window.get(), folder);
    fixture.window->findChild<QAction *>("actionSaveSequence")->trigger();
    QVERIFY(!dataset->isModified());
    QVERIFY(!dataset->isImageMathToBeSaved());
    QCOMPARE(dataset->getFolderPath(), folder);
    closeWindowOf(dataset); // without a question
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
    CVXSDataset *again = fixture.window->openDataset(folder);
    QVERIFY(again);
    QCOMPARE(again->getColorTable(), VXS_CT_RED);
    QVERIFY(!LooseDatasets::needsSaving(again));
}

void tst_ClosingResults::saveAsCopiesTheWholeFolder()
{
    QTemporaryDir place;
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    QPointer<CVXSDataset> dataset = loadResult(fixture.window.get(), folder);
    const QByteArray before = readFile(folder + "ClickInfo.txt");
    const DialogAnswerer user({DialogAnswer::press("Save &As..."), DialogAnswer::choose(place.path())});
    closeWindowOf(dataset);
    QVERIFY(user.shown(0).closed);
    QVERIFY(user.shown(1).closed);
    QCOMPARE(user.shown(1).startFolder, CVXPreference::getProgramDataPath());
    QVERIFY(dataset.isNull());
    const QString copy = place.filePath(CLICK) + "/";
    QCOMPARE(filesOf(copy), filesOf(folder));
    QCOMPARE(readFile(copy + "luminescent.tif"), readFile(folder + "luminescent.tif"));
    QCOMPARE(readFile(copy + "luminescentA.TIF"), QByteArray("operand"));
    QCOMPARE(readFile(copy + "notes/of today/read me.txt"), QByteArray("mouse 3"));
    QCOMPARE(readFile(folder + "ClickInfo.txt"), before);
    QVERIFY(readFile(copy + "ClickInfo.txt") != before); // the colours
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getFolderPath(), folder);
}

void tst_ClosingResults::aDiscardedResultCanBeOpenedAgain()
{
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    const QByteArray before = readFile(folder + "ClickInfo.txt");
    CVXSDataset *dataset = loadResult(fixture.window.get(), folder);
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    closeWindowOf(dataset);
    QVERIFY(user.shown(0).closed);
    QCOMPARE(readFile(folder + "ClickInfo.txt"), before);
    CVXSDataset *again = fixture.window->openDataset(folder);
    QVERIFY(again);
    QVERIFY(again->getColorTable() != VXS_CT_RED);
}

void tst_ClosingResults::aSaveThatFailsKeepsItOpen()
{
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    QPointer<CVXSDataset> dataset = loadResult(fixture.window.get(), folder);
    // A folder in the way of the file stops every user.
    QVERIFY(QFile::remove(folder + "ClickInfo.txt"));
    QVERIFY(QDir(folder).mkpath("ClickInfo.txt/in the way"));
    const DialogAnswerer user({DialogAnswer::press("&Save"), DialogAnswer::press("OK")});
    closeWindowOf(dataset);
    QCOMPARE(user.count(), 2);
    QVERIFY(user.shown(0).closed && user.shown(1).closed);
    QVERIFY2(user.shown(1).text.contains(folder + "ClickInfo.txt"), qPrintable(user.shown(1).text));
    QVERIFY(dataset);
    QVERIFY(dataset->isModified() && dataset->isImageMathToBeSaved());
    QVERIFY(CVXSImageWindow::getImageWindow(dataset));
}

void tst_ClosingResults::quittingAsksForEveryResultFirst()
{
    WorkspaceFixture fixture;
    QPointer<CVXSDataset> one = loadResult(fixture.window.get(), writeResult());
    QPointer<CVXSDataset> other = loadResult(fixture.window.get(), writeResult("AB_N20260102030405"));
    const DialogAnswerer user({DialogAnswer::press("&Discard"), DialogAnswer::press("Cancel")});
    QVERIFY(!fixture.window->close());
    QCOMPARE(user.count(), 2);
    QVERIFY(user.shown(0).closed && user.shown(1).closed);
    QVERIFY(one && other);
    QVERIFY(CVXSImageWindow::getImageWindow(one) && CVXSImageWindow::getImageWindow(other));
}

void tst_ClosingResults::quittingSaves()
{
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    QPointer<CVXSDataset> dataset = loadResult(fixture.window.get(), folder);
    const DialogAnswerer user({DialogAnswer::press("&Save")});
    fixture.window->findChild<QAction *>("actionQuit")->trigger();
    QVERIFY(user.shown(0).closed);
    QVERIFY(!fixture.window->isVisible());
    QVERIFY(dataset.isNull());
    QVERIFY(readFile(folder + "ClickInfo.txt").contains(CILPalette::tableName(VXS_CT_RED)));
}

void tst_ClosingResults::theMenuSavesTheActiveResult()
{
    QTemporaryDir place;
    WorkspaceFixture fixture;
    auto *save = fixture.window->findChild<QAction *>("actionSaveSequence");
    auto *saveAs = fixture.window->findChild<QAction *>("actionSaveDatasetAs");
    QVERIFY(!save->isEnabled() && !saveAs->isEnabled());
    CVXSDataset *dataset = loadResult(fixture.window.get(), writeResult());
    QVERIFY(save->isEnabled() && saveAs->isEnabled());
    const DialogAnswerer where({DialogAnswer::choose(place.path())});
    saveAs->trigger();
    QVERIFY(where.shown(0).closed);
    QVERIFY(!LooseDatasets::needsSaving(dataset));
    QCOMPARE(dataset->getFolderPath(), place.filePath(CLICK) + "/");
    closeWindowOf(dataset);
    QVERIFY(!save->isEnabled() && !saveAs->isEnabled());
}

void tst_ClosingResults::aDatasetOfASequenceIsSavedAsACopy()
{
    QTemporaryDir place;
    WorkspaceFixture fixture;
    const QString click = QStringLiteral("AB20260102030406");
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(place.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY(sequence);
    CVXSDataset *dataset = sequence->getDataset(click);
    const QString folder = dataset->getFolderPath();
    dataset->setColorTable(VXS_CT_RED);
    fixture.window->parts().workspace->showDataset(dataset);
    const DialogAnswerer where({DialogAnswer::choose(place.path())});
    fixture.window->findChild<QAction *>("actionSaveDatasetAs")->trigger();
    QVERIFY(where.shown(0).closed);
    QVERIFY(readFile(place.filePath(click) + "/ClickInfo.txt").contains(CILPalette::tableName(VXS_CT_RED)));
    QCOMPARE(dataset->getFolderPath(), folder);
    QVERIFY2(dataset->isModified(), "its own files still have the old colours");
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    QVERIFY(fixture.window->parts().sequences->close(sequence));
    QVERIFY(user.shown(0).closed);
}

void tst_ClosingResults::closedResultsAreToldToNobodyTwice()
{
    WorkspaceFixture fixture;
    QStringList removed;
    connect(fixture.window->parts().looseDatasets, &LooseDatasets::aboutToBeRemoved,
            [&removed](const CVXSDataset *dataset) { removed += dataset->getClickNumber(); });
    CVXSDataset *dataset = fixture.window->openDataset(writeResult());
    CVXSImageWindow::getImageWindow(dataset)->subWindow()->close();
    CVXSImageWindow::getImageWindow(dataset)->subWindow()->close(); // before the first took effect
    QCoreApplication::processEvents();
    QCOMPARE(removed, QStringList{CLICK});
}

QTEST_MAIN(tst_ClosingResults)
#include "tst_ClosingResults.moc"
