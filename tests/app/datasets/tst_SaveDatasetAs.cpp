// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetSaving.h"
#include "app/datasets/LooseDatasets.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/Rows.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>

#include <sys/stat.h>

namespace {

const QString CLICK = QStringLiteral("AB_M20260102030405");

QString writeDataset(const QString &folder, const QString &clickNumber = CLICK)
{
    CVXSDataset dataset(clickNumber);
    dataset.setCoreImage(EIMAGE_LUMINESCENT,
                         TestStudy::image(8, 8, [](int x, int y) { return float(x * y); }));
    dataset.setCoreImage(EIMAGE_PHOTOGRAPH, TestStudy::image(8, 8, [](int x, int) { return float(x); }));
    return dataset.saveDatasetAs(folder) == ESTATUS_SUCCESS ? folder : QString();
}

} // namespace

/// Where a dataset may be saved, and what happens where it may not.
class tst_SaveDatasetAs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void targets_data();
    void targets();
    void itsOwnFolderIsSavingInPlace();
    void aRefusalIsToldAndNothingChanges();
    void aFailureLeavesNothingBehind_data();
    void aFailureLeavesNothingBehind();
    void aPlaceThatMayNotBeWritten();
};

void tst_SaveDatasetAs::targets_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("target"); // empty: refused
    QTest::addColumn<QString>("reason");
    const QString own = "/" + CLICK;
    row("an empty folder gets one in it", "/empty", "/empty" + own, "");
    row("a folder of other things gets one in it", "/full", "/full" + own, "");
    row("a folder that is not there yet", "/new", "/new" + own, "");
    row("an empty folder of the click number is meant itself", "/byname" + own, "/byname" + own, "");
    row("a folder that holds another dataset", "/other dataset", "", "holds another dataset, other dataset");
    row("a folder in which that click number lies already", "/copies", "",
        "another dataset of the click number " + CLICK);
    row("the folder of a copy itself", "/copies" + own, "", "another dataset of the click number " + CLICK);
    row("a folder in which other files lie under that name", "/taken", "", "other files in this folder");
    row("a folder in which a file has that name", "/file", "", "other files in this folder");
}

void tst_SaveDatasetAs::targets()
{
    QFETCH(QString, chosen);
    QFETCH(QString, target);
    QFETCH(QString, reason);
    QTemporaryDir dir;
    const QString root = dir.path();
    for (const char *folder :
         {"/empty", "/full", "/byname/AB_M20260102030405", "/taken/AB_M20260102030405", "/file"})
        QVERIFY(QDir().mkpath(root + folder));
    QVERIFY(writeFile(root + "/full/letter.txt", "text"));
    QVERIFY(writeFile(root + "/taken/" + CLICK + "/luminescent.tif", "left over"));
    QVERIFY(writeFile(root + "/file/" + CLICK, "a file"));
    QVERIFY(!writeDataset(root + "/other dataset", "AB20260102030406").isEmpty());
    QVERIFY(!writeDataset(root + "/copies/" + CLICK).isEmpty());
    const std::unique_ptr<CVXSDataset> dataset(
        CVXSDataset::open(writeDataset(root + "/own/" + CLICK), nullptr, nullptr));
    QVERIFY(dataset);
    QString refusal;
    QCOMPARE(saving::targetFolder(*dataset, root + chosen, &refusal),
             target.isEmpty() ? QString() : root + target);
    QCOMPARE(refusal.isEmpty(), !target.isEmpty());
    QVERIFY2(refusal.contains(reason), qPrintable(refusal));
    if (target.isEmpty())
        QVERIFY2(refusal.startsWith(root + chosen), qPrintable(refusal));
}

void tst_SaveDatasetAs::itsOwnFolderIsSavingInPlace()
{
    QTemporaryDir dir;
    const QString folder = writeDataset(dir.filePath(CLICK));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder, nullptr, nullptr));
    QVERIFY(dataset);
    QString refusal;
    QCOMPARE(saving::targetFolder(*dataset, folder, &refusal), folder);
    QCOMPARE(saving::targetFolder(*dataset, dir.path(), &refusal), folder);
    QVERIFY(refusal.isEmpty());
}

void tst_SaveDatasetAs::aRefusalIsToldAndNothingChanges()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    const QString other = writeDataset(dir.filePath("other"), "AB20260102030406");
    const QByteArray before = readFile(other + "/ClickInfo.txt");
    CVXSDataset *dataset = fixture.window->openDataset(writeDataset(dir.filePath("own/" + CLICK)));
    QVERIFY(dataset);
    const QString folder = dataset->getFolderPath();
    dataset->setColorTable(VXS_CT_RED);
    const DialogAnswerer user({DialogAnswer::choose(other), DialogAnswer::press("OK")});
    fixture.window->findChild<QAction *>("actionSaveDatasetAs")->trigger();
    QVERIFY(user.shown(0).closed && user.shown(1).closed);
    QVERIFY2(user.shown(1).text.contains(other), qPrintable(user.shown(1).text));
    QCOMPARE(readFile(other + "/ClickInfo.txt"), before);
    QCOMPARE(QDir(other).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList());
    QVERIFY(dataset->isModified());
    QCOMPARE(dataset->getFolderPath(), folder);
}

void tst_SaveDatasetAs::aFailureLeavesNothingBehind_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("a new folder goes again") << false;
    QTest::newRow("an empty folder that was there stays, empty") << true;
}

void tst_SaveDatasetAs::aFailureLeavesNothingBehind()
{
    QFETCH(bool, exists);
    QTemporaryDir dir;
    QTemporaryDir place;
    WorkspaceFixture fixture;
    const QString folder = writeDataset(dir.filePath(CLICK));
    CVXSDataset *dataset = CVXSDataset::open(folder, nullptr, nullptr);
    QVERIFY(dataset && dataset->registerDataset());
    QVERIFY(QFile::remove(folder + "/photograph.tif")); // before anybody read it
    fixture.window->parts().looseDatasets->add(dataset);
    dataset->setColorTable(VXS_CT_RED);
    if (exists)
        QVERIFY(QDir().mkpath(place.filePath(CLICK)));
    const DialogAnswerer user({DialogAnswer::choose(place.path()), DialogAnswer::press("OK")});
    fixture.window->findChild<QAction *>("actionSaveDatasetAs")->trigger();
    QVERIFY(user.shown(0).closed && user.shown(1).closed);
    QVERIFY2(user.shown(1).text.contains("photograph.tif"), qPrintable(user.shown(1).text));
    QCOMPARE(QFileInfo::exists(place.filePath(CLICK)), exists);
    QVERIFY(QDir(place.filePath(CLICK)).isEmpty() || !exists);
    QVERIFY(dataset->isModified());
    QCOMPARE(dataset->getFolderPath(), folder + "/");
    QCOMPARE(fixture.window->parts().looseDatasets->datasets(), QList<CVXSDataset *>{dataset});
}

void tst_SaveDatasetAs::aPlaceThatMayNotBeWritten()
{
    QTemporaryDir dir;
    const std::unique_ptr<CVXSDataset> dataset(
        CVXSDataset::open(writeDataset(dir.filePath(CLICK)), nullptr, nullptr));
    QVERIFY(dataset);
    QCOMPARE(chmod(QFile::encodeName(dir.path()).constData(), 0755), 0);
    const QString place = dir.filePath("locked");
    QVERIFY(QDir().mkpath(place));
    QCOMPARE(chmod(QFile::encodeName(place).constData(), 0555), 0);
    const LogCatcher log;
    QVERIFY(holdsForUnprivilegedUser([&] {
        return dataset->saveCopy(place + "/" + CLICK) == ESTATUS_FILE_NOT_WRITABLE &&
               dataset->lastError().startsWith(place + "/" + CLICK + "/: ") &&
               log.hasFailure({"No copy", CLICK, place});
    }));
    QVERIFY(QDir(place).isEmpty());
}

QTEST_MAIN(tst_SaveDatasetAs)
#include "tst_SaveDatasetAs.moc"
