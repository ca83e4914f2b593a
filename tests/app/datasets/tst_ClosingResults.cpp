// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetLoader.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/WorkspaceFixture.h"

#include <functional>
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

CROIBase square()
{
    return CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 2.0, 2.0));
}

void closeWindowOf(const CVXSDataset *dataset)
{
    CVXSImageWindow::getImageWindow(dataset)->subWindow()->close();
    QCoreApplication::processEvents(); // the question comes after the event
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(CVXSDataset *)>)

class tst_ClosingResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void closingAnUnsavedResultAsks_data();
    void closingAnUnsavedResultAsks();
    void whatWasNotChangedClosesWithoutAsking_data();
    void whatWasNotChangedClosesWithoutAsking();
    void whatWouldBeLostIsNamed_data();
    void whatWouldBeLostIsNamed();
    void whatWasUndoneIsNotAskedAbout();
    void saveKeepsTheChanges();
    void saveAsCopiesTheWholeFolder();
    void aDiscardedResultCanBeOpenedAgain();
    void aSaveThatFailsKeepsItOpen();
    void quittingAsksOnceForAll_data();
    void quittingAsksOnceForAll();
    void quittingStaysWhenSomethingIsNotSaved();
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

void tst_ClosingResults::whatWasNotChangedClosesWithoutAsking_data()
{
    QTest::addColumn<bool>("marked");
    QTest::addColumn<bool>("byQuitting");
    QTest::newRow("a result that was opened") << false << false;
    QTest::newRow("a result that the tool has just made") << true << false;
    QTest::newRow("a result that the tool has just made, by quitting") << true << true;
}

void tst_ClosingResults::whatWasNotChangedClosesWithoutAsking()
{
    QFETCH(bool, marked);
    QFETCH(bool, byQuitting);
    WorkspaceFixture fixture;
    QPointer<CVXSDataset> dataset = fixture.window->openDataset(writeResult());
    QVERIFY(dataset);
    dataset->setModified(marked); // as the tool does, whose files lie there all the same
    dataset->setImageMathToBeSaved(marked);
    const DialogAnswerer user;
    if (byQuitting)
        QVERIFY(fixture.window->close());
    else
        closeWindowOf(dataset);
    QCOMPARE(user.count(), 0);
    QVERIFY(dataset.isNull());
    QVERIFY(CVXSDataset::getDataset(CLICK));
}

void tst_ClosingResults::whatWouldBeLostIsNamed_data()
{
    using Change = std::function<void(CVXSDataset *)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const char *words, const Change &change) {
        QTest::newRow(name) << change << QString(words);
    };
    row("an ROI", "not saved: ROIs.", [](CVXSDataset *dataset) { dataset->roiManager()->addROI(square()); });
    row("the colours", "not saved: colors.",
        [](CVXSDataset *dataset) { dataset->setColorTable(VXS_CT_RED); });
    row("pixels", "not saved: pixels.", [](CVXSDataset *dataset) {
        static_cast<float *>(dataset->getCoreImage(EIMAGE_LUMINESCENT)->get_data())[0] = 7.0f;
    });
    row("a value of the record", "not saved: values of ClickInfo.", [](CVXSDataset *dataset) {
        (*dataset->getClickInfo())[clickinfo::SECTION_LUMINESCENT]->setValue("Note", QString("mouse 3"));
    });
    row("ROIs and colours", "not saved: ROIs, colors.", [](CVXSDataset *dataset) {
        dataset->roiManager()->addROI(square());
        dataset->setColorTable(VXS_CT_RED);
    });
    row("its files, which are gone", "its files are not there",
        [](CVXSDataset *dataset) { QFile::remove(dataset->getFolderPath() + "ClickInfo.txt"); });
    row("its last file, which is gone", "its files are not there",
        [](CVXSDataset *dataset) { QFile::remove(dataset->getFolderPath() + "AnalyzedClickInfo.txt"); });
    row("its image file, which is gone", "not saved: pixels.",
        [](CVXSDataset *dataset) { QFile::remove(dataset->getFolderPath() + "luminescent.tif"); });
}

void tst_ClosingResults::whatWouldBeLostIsNamed()
{
    QFETCH(std::function<void(CVXSDataset *)>, change);
    QFETCH(QString, words);
    WorkspaceFixture fixture;
    CVXSDataset *dataset = fixture.window->openDataset(writeResult());
    QVERIFY(dataset);
    change(dataset);
    QVERIFY(LooseDatasets::needsSaving(dataset));
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    closeWindowOf(dataset);
    QVERIFY(user.shown(0).closed);
    QVERIFY2(user.shown(0).text.contains(words), qPrintable(user.shown(0).text));
}

void tst_ClosingResults::whatWasUndoneIsNotAskedAbout()
{
    WorkspaceFixture fixture;
    CVXSDataset *dataset = fixture.window->openDataset(writeResult());
    const VXS_COLORTABLE_TYPES before = dataset->getColorTable();
    dataset->setColorTable(VXS_CT_RED);
    dataset->setColorTable(before);
    dataset->roiManager()->addROI(square());
    dataset->roiManager()->selectLastCreatedROI();
    dataset->roiManager()->removeROIObject();
    QVERIFY(dataset->isModified());
    const DialogAnswerer user;
    closeWindowOf(dataset);
    QCOMPARE(user.count(), 0);
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
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

void tst_ClosingResults::quittingAsksOnceForAll_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("saved");
    QTest::newRow("Save All saves them and closes") << "&Save All" << true << true;
    QTest::newRow("Discard All closes") << "&Discard All" << true << false;
    QTest::newRow("Cancel keeps all of them") << "Cancel" << false << false;
    QTest::newRow("Escape keeps all of them") << "" << false << false;
}

void tst_ClosingResults::quittingAsksOnceForAll()
{
    QFETCH(QString, answer);
    QFETCH(bool, closed);
    QFETCH(bool, saved);
    QTemporaryDir place;
    WorkspaceFixture fixture;
    const QString unchanged = QStringLiteral("AB_O20260102030405");
    const QString sequenceId = QStringLiteral("AB20260102030405_SEQ");
    const QString folder = writeResult();
    QPointer<CVXSDataset> one = loadResult(fixture.window.get(), folder);
    QPointer<CVXSDataset> other = loadResult(fixture.window.get(), writeResult("AB_N20260102030405"));
    QPointer<CVXSDataset> third = fixture.window->openDataset(writeResult(unchanged));
    third->setModified(true);
    third->setImageMathToBeSaved(true);
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(place.path(), sequenceId, "AB"));
    QVERIFY(one && other && third && sequence);
    sequence->getDatasets().first()->roiManager()->addROI(square());
    {
        const DialogAnswerer user({DialogAnswer::press(answer)});
        QCOMPARE(fixture.window->close(), closed);
        QCOMPARE(user.count(), 1);
        QVERIFY(user.shown(0).closed);
        QCOMPARE(user.shown(0).buttons, (QStringList{"&Save All", "&Discard All", "Cancel"}));
        QCOMPARE(user.shown(0).defaultButton, QString("&Save All"));
        const QString text = user.shown(0).text;
        for (const QString &line :
             {"Result " + CLICK + ": colors", QString("Result AB_N20260102030405: colors"),
              "Sequence " + sequenceId + ": ROIs"})
            QVERIFY2(text.contains(line), qPrintable(text));
        QVERIFY2(!text.contains(unchanged), "it loses nothing");
    }
    QCOMPARE(one.isNull() && other.isNull() && third.isNull(), closed);
    QCOMPARE(CVXSSequenceDataset::getSequenceDataset(sequenceId) == nullptr, closed);
    QCOMPARE(readFile(folder + "ClickInfo.txt").contains(CILPalette::tableName(VXS_CT_RED)), saved);
    QCOMPARE(readFile(place.path() + "/" + sequenceId + "/AB20260102030406/AnalyzedClickInfo.txt")
                 .contains("rectangle"),
             saved);
    if (!closed) {
        QVERIFY(CVXSImageWindow::getImageWindow(one) && CVXSImageWindow::getImageWindow(third));
        const DialogAnswerer user({DialogAnswer::press("&Discard All")});
        QVERIFY(fixture.window->close());
        QCOMPARE(user.count(), 1);
    }
}

void tst_ClosingResults::quittingStaysWhenSomethingIsNotSaved()
{
    WorkspaceFixture fixture;
    const QString folder = writeResult();
    QPointer<CVXSDataset> one = loadResult(fixture.window.get(), folder);
    QPointer<CVXSDataset> other = loadResult(fixture.window.get(), writeResult("AB_N20260102030405"));
    QVERIFY(QFile::remove(folder + "AnalyzedClickInfo.txt")); // a folder in the way stops every user
    QVERIFY(QDir(folder).mkpath("AnalyzedClickInfo.txt/in the way"));
    {
        const DialogAnswerer user({DialogAnswer::press("&Save All"), DialogAnswer::press("OK")});
        QVERIFY(!fixture.window->close());
        QCOMPARE(user.count(), 2);
        QVERIFY2(user.shown(1).text.contains(folder + "AnalyzedClickInfo.txt"),
                 qPrintable(user.shown(1).text));
    }
    QVERIFY(one && other);
    QVERIFY(LooseDatasets::needsSaving(one));
    const DialogAnswerer user({DialogAnswer::press("&Discard All")});
    fixture.window->close();
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
