// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "app/datasets/EarlierResults.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/ResultSources.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "math/ResultRecord.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QMimeData>

#include <utime.h>

namespace {

const QString CLICK = QStringLiteral("AB_M20260102030405");
/// How the list tells the making of what writeStored() writes.
const QString SOURCE =
    QStringLiteral("    A - B * k, k = 1.25e0    A: AB20260102030406, B: AB20260102030507");

/// A dataset in the program-data folder; `minute` is when its last file was written.
QString writeStored(const QString &clickNumber, bool isResult = true, int minute = 0)
{
    CVXSDataset dataset(clickNumber);
    dataset.setCoreImage(EIMAGE_LUMINESCENT,
                         TestStudy::image(8, 8, [](int x, int y) { return float(x * y); }));
    if (isResult) {
        CPLSection *section = (*dataset.getClickInfo())[clickinfo::SECTION_LUMINESCENT];
        section->setValue(clickinfo::KEY_MATH_OPERATION, QStringLiteral("A - B * k"));
        section->setValue(clickinfo::KEY_MATH_K, QStringLiteral("1.25e0"));
        section->setValue(clickinfo::KEY_MATH_A, QStringLiteral("AB20260102030406"));
        section->setValue(clickinfo::KEY_MATH_B, QStringLiteral("AB20260102030507"));
    }
    const QString folder = CVXPreference::getProgramDataPath() + "/" + clickNumber + "/";
    if (dataset.saveDatasetAs(folder) != ESTATUS_SUCCESS)
        return QString();
    const time_t time = QDateTime(QDate(2026, 11, 21), QTime(12, minute)).toSecsSinceEpoch();
    const utimbuf times = {time, time};
    utime(QFile::encodeName(folder + "AnalyzedClickInfo.txt").constData(), &times);
    return folder;
}

/// What the menu of earlier results offers when it is shown.
QMenu *shownResults(const WorkspaceFixture &fixture)
{
    auto *menu = fixture.window->findChild<QMenu *>("menuEarlierResults");
    menu->popup(fixture.window->mapToGlobal(QPoint(20, 20)));
    QCoreApplication::processEvents();
    menu->hide();
    return menu;
}

QStringList textsOf(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts += action->text();
    return texts;
}

} // namespace

class tst_OpenDataset : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paths_data();
    void paths();
    void aDroppedDatasetIsOpened();
    void theMenuAsksForAFolder();
    void theMenuTellsWhatIsNoDataset();
    void withoutResultsTheMenuSaysSo();
    void resultsAreOfferedNewestFirst();
    void filesThatAResultCameFromAreNamed();
    void anOperandThatWasComputedComesFromNoFile();
    void theOrderIsThatOfTheirMaking();
    void theListIsThatOfNow();
    void onlySoManyAreOffered();
    void everythingClosedAndOpenedTheNextDay();
    void anOpenResultComesToTheFront();
    void aResultOfASequenceThatIsOpenElsewhereIsRefused();
    void anotherFolderForResults();
    void aFolderThatLatin1CannotNameIsRefused();
};

void tst_OpenDataset::paths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("datasets");
    QTest::addColumn<int>("sequences");
    QTest::newRow("a dataset's folder") << "/AB20260102030405_SEQ/AB20260102030406" << 1 << 0;
    QTest::newRow("a dataset's folder with a slash") << "/AB20260102030405_SEQ/AB20260102030406/" << 1 << 0;
    QTest::newRow("its ClickInfo.txt") << "/AB20260102030405_SEQ//AB20260102030406//ClickInfo.txt" << 1 << 0;
    QTest::newRow("a sequence's folder") << "/AB20260102030405_SEQ" << 0 << 1;
    QTest::newRow("its SequenceInfo.txt") << "/AB20260102030405_SEQ/SequenceInfo.txt" << 0 << 1;
    QTest::newRow("nothing") << "/gone" << 0 << 0;
    QTest::newRow("a ClickInfo.txt that is gone") << "/gone/ClickInfo.txt" << 0 << 0;
    QTest::newRow("an image") << "/AB20260102030405_SEQ/AB20260102030406/luminescent.tif" << 0 << 0;
}

void tst_OpenDataset::paths()
{
    QFETCH(QString, path);
    QFETCH(int, datasets);
    QFETCH(int, sequences);
    QTemporaryDir dir;
    QVERIFY(!writeSequence(dir.path(), "AB20260102030405_SEQ", "AB").isEmpty());
    WorkspaceFixture fixture;
    fixture.window->openPath(dir.path() + path);
    QCOMPARE(fixture.window->parts().looseDatasets->datasets().size(), datasets);
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), sequences);
    QCOMPARE(fixture.window->parts().banner->isVisible(), datasets + sequences == 0);
    if (datasets + sequences == 0)
        QVERIFY2(fixture.window->parts().banner->text().contains(dir.path()),
                 qPrintable(fixture.window->parts().banner->text()));
}

void tst_OpenDataset::aDroppedDatasetIsOpened()
{
    WorkspaceFixture fixture;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(writeStored(CLICK) + "ClickInfo.txt")});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(fixture.window.get(), &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(fixture.window.get(), &drop);
    QVERIFY(drop.isAccepted());
    QVERIFY(CVXSDataset::getOpenDataset(CLICK));
}

void tst_OpenDataset::theMenuAsksForAFolder()
{
    WorkspaceFixture fixture;
    const QString folder = writeStored(CLICK);
    const DialogAnswerer user({DialogAnswer::choose(folder)});
    fixture.window->findChild<QAction *>("actionOpenDataset")->trigger();
    QVERIFY(user.shown(0).closed);
    QCOMPARE(user.shown(0).startFolder, CVXPreference::getProgramDataPath());
    CVXSDataset *dataset = CVXSDataset::getOpenDataset(CLICK);
    QVERIFY(dataset);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), CVXSImageWindow::getImageWindow(dataset));
    QCOMPARE(fixture.window->windowTitle(), CLICK + " - Vexa");
    // Nothing chosen, nothing done.
    const DialogAnswerer other({DialogAnswer::choose(QString())});
    fixture.window->findChild<QAction *>("actionOpenDataset")->trigger();
    QVERIFY(other.shown(0).closed);
    QCOMPARE(fixture.window->parts().looseDatasets->datasets().size(), 1);
}

void tst_OpenDataset::theMenuTellsWhatIsNoDataset()
{
    WorkspaceFixture fixture;
    const QString folder = fixture.profile() + "/no dataset";
    QVERIFY(QDir().mkpath(folder));
    const DialogAnswerer user({DialogAnswer::choose(folder)});
    fixture.window->findChild<QAction *>("actionOpenDataset")->trigger();
    QVERIFY(fixture.window->parts().banner->isVisible());
    QVERIFY2(fixture.window->parts().banner->text().contains(folder),
             qPrintable(fixture.window->parts().banner->text()));
}

void tst_OpenDataset::withoutResultsTheMenuSaysSo()
{
    WorkspaceFixture fixture;
    QVERIFY(!writeStored("AB20260102030405", false).isEmpty());
    const QMenu *menu = shownResults(fixture);
    QCOMPARE(textsOf(menu), QStringList{"None yet"});
    QVERIFY(!menu->actions().first()->isEnabled());
}

void tst_OpenDataset::resultsAreOfferedNewestFirst()
{
    WorkspaceFixture fixture;
    QVERIFY(!writeStored("AB_M20260102030405", true, 20).isEmpty());
    QVERIFY(!writeStored("AB_N20260102030405", true, 30).isEmpty());
    QVERIFY(!writeStored("AB_O20260102030405", true, 10).isEmpty());
    QVERIFY(!writeStored("AB20260102030405", false, 40).isEmpty());
    const QMenu *menu = shownResults(fixture);
    QCOMPARE(textsOf(menu), (QStringList{"AB_N20260102030405" + SOURCE + "\t2026-11-21 12:30",
                                         "AB_M20260102030405" + SOURCE + "\t2026-11-21 12:20",
                                         "AB_O20260102030405" + SOURCE + "\t2026-11-21 12:10"}));
    menu->actions().at(1)->trigger();
    QVERIFY(CVXSDataset::getOpenDataset("AB_M20260102030405"));
}

void tst_OpenDataset::filesThatAResultCameFromAreNamed()
{
    WorkspaceFixture fixture;
    using namespace clickinfo;
    const auto withSources = [](const QString &folder, const QString &a, const QString &b) {
        CPLClickInfo info;
        if (info.loadClickInfo(folder + FILE_ANALYZED_CLICK_INFO, false) != ESTATUS_SUCCESS)
            return false;
        if (!a.isNull())
            ensureSection(&info, SECTION_LUMINESCENT_A)->setValue(KEY_IMPORTED_FROM, a);
        if (!b.isNull())
            ensureSection(&info, SECTION_LUMINESCENT_B)->setValue(KEY_IMPORTED_FROM, b);
        return info.saveClickInfo(folder + FILE_ANALYZED_CLICK_INFO) == ESTATUS_SUCCESS;
    };
    const QString longName = QString("b").repeated(300) + ".tif";
    QVERIFY(withSources(writeStored("AB_M20260102030405"), "day 14.tif", "R&D.tif"));
    QVERIFY(withSources(writeStored("AB_N20260102030405"), QString(), longName));
    const QStringList texts = textsOf(shownResults(fixture));
    QCOMPARE(texts.size(), 2);
    const int first = texts.first().startsWith("AB_M") ? 0 : 1;
    QVERIFY2(texts.at(first).contains("    day 14.tif, R&&D.tif\t"), qPrintable(texts.at(first)));
    QVERIFY2(texts.at(1 - first).contains(".tif\t") && texts.at(1 - first).size() < 300,
             qPrintable(texts.at(1 - first)));
}

// Its record has the keys of the operand that it was computed from.
void tst_OpenDataset::anOperandThatWasComputedComesFromNoFile()
{
    using namespace clickinfo;
    QTemporaryDir folder;
    CPLClickInfo info;
    for (const QLatin1String section : {SECTION_LUMINESCENT_A, SECTION_LUMINESCENT_B})
        ensureSection(&info, section)->setValue(KEY_IMPORTED_FROM, QString("of ") + section);
    ensureSection(&info, SECTION_LUMINESCENT_A)->setValue(KEY_MATH_OPERATION, "A + B * k");
    QCOMPARE(info.saveClickInfo(folder.filePath(FILE_ANALYZED_CLICK_INFO)), ESTATUS_SUCCESS);
    const ResultSources sources = ResultSources::of(folder.path() + "/");
    QVERIFY2(sources.a.isEmpty(), qPrintable(sources.a));
    QCOMPARE(sources.b, QString("of luminescent B image"));
    QCOMPARE(sources.text(), sources.b);
    QVERIFY(ResultSources::of(QString()).text().isEmpty());
    QVERIFY(ResultSources::of(folder.filePath("gone/")).text().isEmpty());
}

void tst_OpenDataset::theOrderIsThatOfTheirMaking()
{
    WorkspaceFixture fixture;
    imagemath::ResultRecord record;
    record.operation = "A + B * k";
    record.k = 0.1f;
    record.a.clickNumber = "CD20260102030406";
    record.b.clickNumber = "CD20260102030507";
    for (const auto &[number, computed] :
         {std::pair<const char *, const char *>{"AB_M20260102030405", "2026-11-20T10:00:00Z"},
          {"AB_N20260102030405", "2026-11-20T09:00:00Z"}}) {
        record.computed = QString::fromLatin1(computed);
        // The one that was computed first is saved last.
        const QString folder = writeStored(number, true, QString(number).contains("_N") ? 50 : 10);
        QVERIFY(!folder.isEmpty());
        CILImage image;
        const QByteArray file = QFile::encodeName(folder + "luminescent.tif");
        QCOMPARE(int(image.loadTIFF(file.constData())), int(EIL_SUCCESS));
        image.setDescription(imagemath::toJson(record).toStdString());
        QCOMPARE(int(image.saveTIFF(file.constData())), int(EIL_SUCCESS));
    }
    QStringList texts = textsOf(shownResults(fixture));
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts.first().startsWith("AB_M20260102030405    A + B * k, k = 0.1    A: CD20260102030406, B: "
                                      "CD20260102030507\t2026-11-20"),
             qPrintable(texts.first()));
    // Saving one anew makes it no newer.
    fixture.window->openDataset(CVXPreference::getProgramDataPath() + "/AB_N20260102030405");
    fixture.window->findChild<QAction *>("actionSaveSequence")->trigger();
    QCOMPARE(textsOf(shownResults(fixture)), texts);
}

void tst_OpenDataset::theListIsThatOfNow()
{
    WorkspaceFixture fixture;
    QCOMPARE(textsOf(shownResults(fixture)), QStringList{"None yet"});
    const QString folder = writeStored(CLICK); // by another program, say
    QCOMPARE(shownResults(fixture)->actions().size(), 1);
    QVERIFY(textsOf(shownResults(fixture)).first().startsWith(CLICK));
    QVERIFY(QDir(folder).removeRecursively());
    QCOMPARE(textsOf(shownResults(fixture)), QStringList{"None yet"});
}

void tst_OpenDataset::onlySoManyAreOffered()
{
    WorkspaceFixture fixture;
    for (int i = 0; i < EarlierResults::MAX_COUNT + 2; ++i)
        QVERIFY(!writeStored(QString("AB_M202601020304%1").arg(i, 2, 10, QChar('0')), true, i).isEmpty());
    const QMenu *menu = shownResults(fixture);
    QCOMPARE(menu->actions().size(), EarlierResults::MAX_COUNT + 2); // with a line, and one for the others
    QVERIFY(menu->actions().first()->text().startsWith("AB_M20260102030416"));
    QVERIFY(menu->actions().at(EarlierResults::MAX_COUNT - 1)->text().startsWith("AB_M20260102030402"));
    const DialogAnswerer user(
        {DialogAnswer::choose(CVXPreference::getProgramDataPath() + "/AB_M20260102030400")});
    menu->actions().last()->trigger();
    QVERIFY(user.shown(0).closed);
    QVERIFY(CVXSDataset::getOpenDataset("AB_M20260102030400"));
}

void tst_OpenDataset::everythingClosedAndOpenedTheNextDay()
{
    WorkspaceFixture fixture;
    QVERIFY(!writeStored(CLICK).isEmpty());
    fixture.window = std::make_unique<MainWindow>();
    fixture.window->show();
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
    shownResults(fixture)->actions().first()->trigger();
    CVXSDataset *dataset = CVXSDataset::getOpenDataset(CLICK);
    QVERIFY(dataset);
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_RESULT));
    QVERIFY(!dataset->isPartOfSequence());
    QVERIFY(CVXSImageWindow::getImageWindow(dataset)->isVisible());
}

void tst_OpenDataset::anOpenResultComesToTheFront()
{
    WorkspaceFixture fixture;
    CVXSDataset *dataset = fixture.window->openDataset(writeStored(CLICK));
    QVERIFY(dataset);
    QVERIFY(fixture.window->openDataset(writeStored("AB_N20260102030405")));
    QVERIFY(CVXSChildWindow::getActiveChildWnd() != CVXSImageWindow::getImageWindow(dataset));
    QCOMPARE(fixture.window->openDataset(dataset->getFolderPath()), dataset);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), CVXSImageWindow::getImageWindow(dataset));
    QCOMPARE(fixture.window->parts().workspace->subWindowList().size(), 2);
}

void tst_OpenDataset::aResultOfASequenceThatIsOpenElsewhereIsRefused()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    const QString stored = writeStored("AB20260102030406");
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(dir.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY2(sequence && sequence->getDataset("AB20260102030406"),
             "a stored dataset never stands in the way of a sequence");
    QVERIFY(!fixture.window->openDataset(stored));
    QVERIFY(fixture.log.hasFailure({"AB20260102030406", "open already", sequence->getSequenceInfoPath()}));
}

void tst_OpenDataset::anotherFolderForResults()
{
    QTemporaryDir other;
    WorkspaceFixture fixture;
    QVERIFY(!writeStored(CLICK).isEmpty());
    QCOMPARE(shownResults(fixture)->actions().size(), 1);
    const DialogAnswerer user({DialogAnswer::choose(other.path())});
    fixture.window->findChild<QAction *>("actionResultFolder")->trigger();
    QVERIFY(user.shown(0).closed);
    QCOMPARE(CVXPreference::getProgramDataPath(), other.path());
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QCOMPARE(textsOf(shownResults(fixture)), QStringList{"None yet"});
}

void tst_OpenDataset::aFolderThatLatin1CannotNameIsRefused()
{
    WorkspaceFixture fixture;
    const QString before = CVXPreference::getProgramDataPath();
    const QString folder = fixture.profile() + "/" + QString::fromUtf8("мыши");
    QVERIFY(QDir().mkpath(folder));
    const DialogAnswerer user({DialogAnswer::choose(folder), DialogAnswer::press("OK")});
    fixture.window->findChild<QAction *>("actionResultFolder")->trigger();
    QVERIFY(user.shown(0).closed && user.shown(1).closed);
    QVERIFY2(user.shown(1).text.contains(folder) && user.shown(1).text.contains("Latin-1"),
             qPrintable(user.shown(1).text));
    QCOMPARE(CVXPreference::getProgramDataPath(), before);
}

QTEST_MAIN(tst_OpenDataset)
#include "tst_OpenDataset.moc"
