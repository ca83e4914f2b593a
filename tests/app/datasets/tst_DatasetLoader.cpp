// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetLoader.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/WorkspaceFixture.h"

#include <QDir>
#include <QPointer>

namespace {

const QString CLICK = QStringLiteral("AB20260102030406");

/// Writes a dataset folder of its own; empty when that failed.
QString writeDataset(const QString &parentFolder, const QString &clickNumber)
{
    CVXSDataset dataset(clickNumber);
    dataset.setCoreImage(EIMAGE_LUMINESCENT,
                         TestStudy::image(16, 16, [](int x, int y) { return float(x * y); }));
    const QString folder = parentFolder + QLatin1Char('/') + clickNumber + QLatin1Char('/');
    return dataset.saveDatasetAs(folder) == ESTATUS_SUCCESS ? folder : QString();
}

ESTATUS load(MainWindow *window, const QString &path)
{
    ESTATUS status = ESTATUS(40); // neither success nor a failure that anyone writes
    window->parts().datasetLoader->onLoadFile(path, true, &status, nullptr);
    return status;
}

} // namespace

class tst_DatasetLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensADataset_data();
    void opensADataset();
    void loadingTwiceAddsNothing();
    void aClosedOneIsLoadedAgain();
    void aResultOfTheProgramDataFolderStaysKnown();
    void whatIsOnlyRegisteredIsOpened();
    void aDatasetOfAnOpenSequenceIsShown();
    void sameClickNumberElsewhereIsRefused();
    void folderThatIsNotComplete_data();
    void folderThatIsNotComplete();
};

void tst_DatasetLoader::opensADataset_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("by its ClickInfo.txt") << "ClickInfo.txt";
    QTest::newRow("by a path with a doubled separator") << "/ClickInfo.txt";
    QTest::newRow("by its folder") << "";
}

void tst_DatasetLoader::opensADataset()
{
    QFETCH(QString, ending);
    QTemporaryDir dir;
    const QString folder = writeDataset(dir.path(), CLICK);
    QVERIFY(!folder.isEmpty());
    WorkspaceFixture fixture;
    QCOMPARE(load(fixture.window.get(), folder + ending), ESTATUS_SUCCESS);
    CVXSDataset *dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY(dataset);
    QCOMPARE(QDir(dataset->getFolderPath()).canonicalPath(), QDir(folder).canonicalPath());
    CVXSImageWindow *image = CVXSImageWindow::getImageWindow(dataset);
    QVERIFY(image);
    QVERIFY(image->isVisible());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), image);
}

void tst_DatasetLoader::loadingTwiceAddsNothing()
{
    QTemporaryDir dir;
    const QString path = writeDataset(dir.path(), CLICK) + "ClickInfo.txt";
    WorkspaceFixture fixture;
    QCOMPARE(load(fixture.window.get(), path), ESTATUS_SUCCESS);
    CVXSDataset *dataset = CVXSDataset::getDataset(CLICK);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(load(fixture.window.get(), path), ESTATUS_SUCCESS);
    QCOMPARE(CVXSDataset::getDataset(CLICK), dataset);
    QCOMPARE(fixture.window->parts().workspace->subWindowList().size(), 1);
    QCOMPARE(fixture.window->parts().looseDatasets->datasets().size(), 1);
    // The same folder by another name.
    QVERIFY(QFile::link(dir.filePath(CLICK), dir.filePath("link")));
    QCOMPARE(load(fixture.window.get(), dir.filePath("link/ClickInfo.txt")), ESTATUS_SUCCESS);
    QCOMPARE(fixture.window->parts().workspace->subWindowList().size(), 1);
}

void tst_DatasetLoader::aClosedOneIsLoadedAgain()
{
    QTemporaryDir dir;
    const QString path = writeDataset(dir.path(), CLICK) + "ClickInfo.txt";
    WorkspaceFixture fixture;
    QCOMPARE(load(fixture.window.get(), path), ESTATUS_SUCCESS);
    QPointer<CVXSDataset> dataset = CVXSDataset::getDataset(CLICK);
    QPointer<CVXSImageWindow> image = CVXSImageWindow::getImageWindow(dataset);
    image->subWindow()->close();
    QTRY_VERIFY(image.isNull());
    QVERIFY(dataset.isNull());
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QCOMPARE(load(fixture.window.get(), path), ESTATUS_SUCCESS);
    QVERIFY(CVXSImageWindow::getImageWindow(CVXSDataset::getDataset(CLICK)));
}

void tst_DatasetLoader::aResultOfTheProgramDataFolderStaysKnown()
{
    WorkspaceFixture fixture;
    // Written after the start, as a tool does it.
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    const QString folder = writeDataset(CVXPreference::getProgramDataPath(), CLICK);
    QCOMPARE(load(fixture.window.get(), folder + "/ClickInfo.txt"), ESTATUS_SUCCESS);
    CVXSDataset *dataset = CVXSDataset::getOpenDataset(CLICK);
    QVERIFY(dataset);
    CVXSImageWindow::getImageWindow(dataset)->subWindow()->close();
    QTRY_VERIFY(!CVXSDataset::getOpenDataset(CLICK));
    // Its click number stays taken, also for the next start.
    QVERIFY(CVXSDataset::getDataset(CLICK));
    fixture.window = std::make_unique<MainWindow>();
    QVERIFY(CVXSDataset::getDataset(CLICK));
}

void tst_DatasetLoader::whatIsOnlyRegisteredIsOpened()
{
    WorkspaceFixture fixture;
    const QString folder = writeDataset(CVXPreference::getProgramDataPath(), CLICK);
    fixture.window = std::make_unique<MainWindow>(); // the next start
    fixture.window->show();
    QPointer<CVXSDataset> stored = CVXSDataset::getDataset(CLICK);
    QVERIFY(stored);
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
    QVERIFY(fixture.window->parts().workspace->subWindowList().isEmpty());
    QCOMPARE(load(fixture.window.get(), folder + "ClickInfo.txt"), ESTATUS_SUCCESS);
    CVXSDataset *opened = CVXSDataset::getOpenDataset(CLICK);
    QVERIFY(opened);
    QCOMPARE(fixture.window->parts().looseDatasets->datasets(), QList<CVXSDataset *>{opened});
    QVERIFY(CVXSImageWindow::getImageWindow(opened)->isVisible());
    QTRY_VERIFY(stored.isNull());
}

void tst_DatasetLoader::aDatasetOfAnOpenSequenceIsShown()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(dir.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY(sequence);
    QCOMPARE(load(fixture.window.get(), sequence->getDatasetFolderPath(CLICK) + "ClickInfo.txt"),
             ESTATUS_SUCCESS);
    QVERIFY(CVXSImageWindow::getImageWindow(sequence->getDataset(CLICK)));
    QVERIFY(fixture.window->parts().looseDatasets->datasets().isEmpty());
}

void tst_DatasetLoader::sameClickNumberElsewhereIsRefused()
{
    QTemporaryDir dir;
    QTemporaryDir otherDir;
    const QString path = writeDataset(dir.path(), CLICK);
    const QString other = writeDataset(otherDir.path(), CLICK);
    WorkspaceFixture fixture;
    QCOMPARE(load(fixture.window.get(), path), ESTATUS_SUCCESS);
    QCOMPARE(load(fixture.window.get(), other), ESTATUS_FAILURE);
    QVERIFY(fixture.log.hasFailure({QDir(other).canonicalPath(), CLICK, "open already"}));
    QCOMPARE(fixture.window->parts().workspace->subWindowList().size(), 1);
}

void tst_DatasetLoader::folderThatIsNotComplete_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no ClickInfo.txt") << "ClickInfo.txt" << QByteArray();
    QTest::newRow("a broken line in ClickInfo.txt") << "ClickInfo.txt" << QByteArray("[a]\nnonsense\n");
    QTest::newRow("no AnalyzedClickInfo.txt") << "AnalyzedClickInfo.txt" << QByteArray();
    QTest::newRow("no image") << "luminescent.tif" << QByteArray();
    QTest::newRow("an image of random bytes") << "luminescent.tif" << QByteArray("these are no pixels");
    QTest::newRow("an image that was cut") << "luminescent.tif" << QByteArray("cut");
}

void tst_DatasetLoader::folderThatIsNotComplete()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    const QString folder = writeDataset(dir.path(), CLICK);
    QVERIFY(!folder.isEmpty());
    QFile damaged(folder + file);
    QVERIFY(damaged.exists());
    if (content == "cut") {
        QVERIFY(damaged.open(QIODevice::ReadWrite));
        QVERIFY(damaged.resize(damaged.size() / 2));
    } else if (content.isEmpty()) {
        QVERIFY(damaged.remove());
    } else {
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        QCOMPARE(damaged.write(content), qint64(content.size()));
    }
    damaged.close();
    WorkspaceFixture fixture;
    const ESTATUS status = load(fixture.window.get(), folder + "ClickInfo.txt");
    QVERIFY(status != ESTATUS_SUCCESS && int(status) != 40);
    QVERIFY(fixture.log.hasFailure({file}));
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QVERIFY(fixture.window->parts().workspace->subWindowList().isEmpty());
    QVERIFY(fixture.window->parts().looseDatasets->datasets().isEmpty());
}

QTEST_MAIN(tst_DatasetLoader)
#include "tst_DatasetLoader.moc"
