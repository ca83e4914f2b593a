// SPDX-License-Identifier: MIT
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QLabel>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");
const QString CLICK = QStringLiteral("AB20260102030406");

/// A folder in the way of a file stops every user, root too.
bool obstruct(const QString &file)
{
    return QFile::remove(file) && QDir().mkpath(file + "/in the way");
}

} // namespace

/// Saving sequences by the user, where it works and where it does not.
class tst_SavingSequences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFailedSaveNamesFileAndReason_data();
    void aFailedSaveNamesFileAndReason();
    void whereItCannotBeWrittenAnotherPlaceIsOffered();
    void closingOffersAnotherPlace();
    void theMenuSavesTheSequenceElsewhere();
    void allThatLiesInTheFolderGoesAlong();
    void otherFilesAreNotOverwritten();
    void aFailureLeavesEverythingWhereItWas();
    void theTitleNoLongerSaysThatItIsNotSaved();

private:
    CVXSSequenceDataset *openWithRoi();
    QAction *action(const char *name) const { return m_fixture->window->findChild<QAction *>(name); }
    bool hasRoi(const QString &folder) const
    {
        return readFile(folder + CLICK + "/AnalyzedClickInfo.txt").contains("rectangle");
    }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<QTemporaryDir> m_place;
    QString m_folder; ///< ends in "/"
    std::unique_ptr<WorkspaceFixture> m_fixture;
};

void tst_SavingSequences::init()
{
    m_fixture.reset();
    m_data = std::make_unique<QTemporaryDir>();
    m_place = std::make_unique<QTemporaryDir>();
    m_folder = writeSequence(m_data->path(), ID, "AB");
    QVERIFY(!m_folder.isEmpty());
    m_fixture = std::make_unique<WorkspaceFixture>();
}

/// The sequence, opened and with an ROI in its first click.
CVXSSequenceDataset *tst_SavingSequences::openWithRoi()
{
    CVXSSequenceDataset *sequence = m_fixture->window->openSequence(m_folder);
    if (sequence)
        sequence->getDataset(CLICK)->roiManager()->addROI(
            CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 2.0, 2.0)));
    return sequence;
}

void tst_SavingSequences::aFailedSaveNamesFileAndReason_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("of the sequence") << "SequenceInfo.txt";
    QTest::newRow("of one of its datasets") << CLICK + "/AnalyzedClickInfo.txt";
}

void tst_SavingSequences::aFailedSaveNamesFileAndReason()
{
    QFETCH(QString, file);
    QVERIFY(openWithRoi());
    QVERIFY(obstruct(m_folder + file));
    const DialogAnswerer user({DialogAnswer::press("Cancel"), DialogAnswer::press("&Discard")});
    action("actionSaveSequence")->trigger();
    QCOMPARE(user.count(), 1);
    const QString text = user.shown(0).text;
    QVERIFY2(text.contains(m_folder + file + ": "), qPrintable(text));
    QVERIFY2(text.contains("directory", Qt::CaseInsensitive), qPrintable(text)); // the system's reason
    QCOMPARE(user.shown(0).buttons, (QStringList{"Save &As...", "Cancel"}));
    QVERIFY(m_fixture->window->close());
}

void tst_SavingSequences::whereItCannotBeWrittenAnotherPlaceIsOffered()
{
    CVXSSequenceDataset *sequence = openWithRoi();
    QVERIFY(obstruct(m_folder + "SequenceInfo.txt"));
    QVERIFY(obstruct(m_folder + CLICK + "/AnalyzedClickInfo.txt"));
    const QMap<QString, QByteArray> before = hashesBelow(m_folder);
    {
        const DialogAnswerer user(
            {DialogAnswer::press("Save &As..."), DialogAnswer::choose(m_place->path())});
        action("actionSaveSequence")->trigger();
        QCOMPARE(user.count(), 2);
    }
    const QString copy = m_place->path() + "/" + ID + "/";
    QCOMPARE(sequence->getSequenceInfoPath(), copy);
    QVERIFY(hasRoi(copy));
    QCOMPARE(hashesBelow(m_folder), before);
    QCOMPARE(m_fixture->window->parts().recentSequences->folders().first() + "/", copy);
    const DialogAnswerer nobody;
    QVERIFY(m_fixture->window->parts().sequences->close(sequence));
    QCOMPARE(nobody.count(), 0);
    sequence = m_fixture->window->openSequence(copy);
    QVERIFY(sequence);
    QCOMPARE(sequence->getDatasets().size(), 2);
    QCOMPARE(sequence->getDataset(CLICK)->roiManager()->rois().size(), 1);
}

void tst_SavingSequences::closingOffersAnotherPlace()
{
    CVXSSequenceDataset *sequence = openWithRoi();
    const DialogAnswerer user({DialogAnswer::press("Save &As..."), DialogAnswer::choose(m_place->path())});
    QVERIFY(m_fixture->window->parts().sequences->close(sequence));
    QCOMPARE(user.shown(0).buttons, (QStringList{"&Save", "Save &As...", "&Discard", "Cancel"}));
    QVERIFY2(user.shown(0).text.contains(ID + " has changes that are not saved: ROIs."),
             qPrintable(user.shown(0).text));
    QVERIFY(hasRoi(m_place->path() + "/" + ID + "/"));
    QVERIFY(!hasRoi(m_folder));
}

void tst_SavingSequences::theMenuSavesTheSequenceElsewhere()
{
    QVERIFY(!action("actionSaveSequenceAs")->isEnabled());
    CVXSSequenceDataset *sequence = openWithRoi();
    QVERIFY(action("actionSaveSequenceAs")->isEnabled());
    const QByteArray pixels = readFile(m_folder + CLICK + "/luminescent.tif");
    const DialogAnswerer user({DialogAnswer::choose(m_place->path())});
    action("actionSaveSequenceAs")->trigger();
    const QString copy = m_place->path() + "/" + ID + "/";
    QCOMPARE(sequence->getSequenceInfoPath(), copy);
    QCOMPARE(sequence->getDataset(CLICK)->getFolderPath(), copy + CLICK + "/");
    QVERIFY(!sequence->isModified());
    QVERIFY(hasRoi(copy) && !hasRoi(m_folder));
    QCOMPARE(readFile(copy + CLICK + "/luminescent.tif"), pixels);
}

void tst_SavingSequences::allThatLiesInTheFolderGoesAlong()
{
    // A click that cannot be opened, and what the user put there.
    QVERIFY(writeFile(m_folder + "AB20260102030507/ClickInfo.txt", "[damaged"));
    QVERIFY(QDir(m_folder).mkpath("notes/of today"));
    QVERIFY(writeFile(m_folder + "notes/of today/read me.txt", "mouse 3"));
    QVERIFY(writeFile(m_folder + "protocol.txt", "two minutes"));
    CVXSSequenceDataset *sequence = openWithRoi();
    QCOMPARE(sequence->getDatasets().size(), 1);
    QCOMPARE(sequence->saveAs(m_place->path()), ESTATUS_SUCCESS);
    const QString copy = m_place->path() + "/" + ID + "/";
    QCOMPARE(readFile(copy + "notes/of today/read me.txt"), QByteArray("mouse 3"));
    QCOMPARE(readFile(copy + "protocol.txt"), QByteArray("two minutes"));
    QCOMPARE(readFile(copy + "AB20260102030507/ClickInfo.txt"), QByteArray("[damaged"));
    QVERIFY(readFile(copy + "SequenceInfo.txt").contains("AB20260102030507"));
}

void tst_SavingSequences::otherFilesAreNotOverwritten()
{
    CVXSSequenceDataset *sequence = openWithRoi();
    const QString target = m_place->path() + "/" + ID;
    QVERIFY(QDir().mkpath(target) && writeFile(target + "/thesis.txt", "the only copy"));
    QVERIFY(sequence->saveAs(m_place->path()) != ESTATUS_SUCCESS);
    QVERIFY2(sequence->lastError().contains(target + "/: there are other files"),
             qPrintable(sequence->lastError()));
    QCOMPARE(filesOf(target), QStringList{"thesis.txt"});
    QCOMPARE(sequence->getSequenceInfoPath(), m_folder);
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    QVERIFY(m_fixture->window->close());
}

void tst_SavingSequences::aFailureLeavesEverythingWhereItWas()
{
    CVXSSequenceDataset *sequence = openWithRoi();
    // The last of its datasets cannot be written: its image is gone and was never read.
    QVERIFY(QFile::remove(m_folder + "AB20260102030507/photograph.tif"));
    QVERIFY(sequence->saveAs(m_place->path()) != ESTATUS_SUCCESS);
    QVERIFY2(sequence->lastError().contains("AB20260102030507/photograph.tif"),
             qPrintable(sequence->lastError()));
    QVERIFY2(QDir(m_place->path()).isEmpty(), "what was half written is taken away");
    QCOMPARE(sequence->getSequenceInfoPath(), m_folder);
    QCOMPARE(sequence->getDataset(CLICK)->getFolderPath(), m_folder + CLICK + "/");
    QVERIFY2(sequence->getDataset(CLICK)->unsavedContent().rois, "its ROI is still to be saved");
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    QVERIFY(m_fixture->window->close());
}

void tst_SavingSequences::theTitleNoLongerSaysThatItIsNotSaved()
{
    auto *sequence = new CVXSSequenceDataset("XY20260102030405_SEQ");
    auto *dataset = new CVXSDataset("XY20260102030406");
    dataset->setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int x, int) { return float(x); }));
    sequence->addDataset(dataset);
    m_fixture->window->parts().sequences->add(sequence);
    const auto *title = CVXSSequenceWindow::getSequenceWindow(sequence)->findChild<QLabel *>("SequenceTitle");
    QVERIFY(title->text().contains("not saved yet"));
    const DialogAnswerer user({DialogAnswer::choose(m_place->path())});
    action("actionSaveSequence")->trigger();
    QVERIFY2(!title->text().contains("not saved yet"), qPrintable(title->text()));
}

QTEST_MAIN(tst_SavingSequences)
#include "tst_SavingSequences.moc"
