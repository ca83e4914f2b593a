// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

ClickSpec click(const QString &number)
{
    ClickSpec spec;
    spec.clickNumber = number;
    spec.photograph = [](int x, int y) { return float(x + y); };
    return spec;
}

} // namespace

class tst_SequenceSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingIsOnDisk();
    void whatWasSavedIsOpenedAgain();
    void openingTwiceIsOpeningOnce();
    void withoutAStoredUnitTheFirstDatasetsUnitIsThatOfAll();
    void savingAgainWritesOnlyWhatChanged();
    void aNewDatasetHasAPlaceBeforeItHasFiles();
    void aDatasetFromElsewhereIsTakenIn();
    void withoutFolderItGoesUnderTheProgramData();
    void anotherSequenceIsNotOverwritten();
    void anUnsafeIdIsRefused();
    void aReadOnlyFolderLeavesTheOldSequence();
    void aClickThatCouldNotBeOpenedStaysListed();
};

void tst_SequenceSaving::everythingIsOnDisk()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    ClickSpec second = click("AB2");
    second.photograph = nullptr;
    second.flatField = [](int, int) { return 1.0f; };
    study.add(second);
    QVERIFY(study.save());
    const QString folder = study.folder() + "/" + ID + "/";
    QCOMPARE(study.sequence()->getSequenceInfoPath(), folder);
    QCOMPARE(study.sequence()->getDatasetFolderPath("AB1"), folder + "AB1/");
    QCOMPARE(study.sequence()->getDatasetFolderPath("not there"), folder + "not there/");
    QCOMPARE(filesOf(folder), QStringList("SequenceInfo.txt"));
    QCOMPARE(filesOf(folder + "AB1"),
             QStringList({"AnalyzedClickInfo.txt", "ClickInfo.txt", "luminescent.tif", "photograph.tif"}));
    QCOMPARE(filesOf(folder + "AB2"),
             QStringList({"AnalyzedClickInfo.txt", "ClickInfo.txt", "flatfield.tif", "luminescent.tif"}));
    const CVXSDataset *dataset = study.sequence()->getDataset("AB2");
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_ACQUIRED));
    QVERIFY(!dataset->isModified());
    CPLClickInfo info;
    QCOMPARE(info.loadClickInfo(folder + "AB2/ClickInfo.txt", false), ESTATUS_SUCCESS);
    QCOMPARE(clickinfo::textOf(info, clickinfo::SECTION_CLICK_NUMBER, clickinfo::KEY_SEQUENCE_ID), ID);
    QCOMPARE(clickinfo::textOf(info, clickinfo::SECTION_CLICK_NUMBER, clickinfo::KEY_CLICK_INDEX),
             QString("1"));
    QCOMPARE(clickinfo::textOf(info, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_BINNING), QString("4"));
}

void tst_SequenceSaving::whatWasSavedIsOpenedAgain()
{
    TestStudy study(ID);
    study.add(click("AB2"));
    study.add(click("AB1"));
    study.sequence()->setActiveUnit(EUNIT_RADIANT_EFFICIENCY);
    tag_simageadjust adjust;
    adjust.colorTable = VXS_CT_BLUEHOT;
    study.sequence()->setImageAdjust(adjust);
    CVXSToolInfo info;
    info.reversed = true;
    info.logarithmic = true;
    info.brightness = 7;
    info.gamma = 0.1f;
    study.sequence()->setToolInfo(info);
    study.sequence()->setTransIllumOverviewResultSequence(true);
    study.sequence()->set3DSceneOnly(true);
    QVERIFY(study.save());
    study.close();

    for (const QString &path : {study.folder() + "/" + ID, study.folder() + "/" + ID + "/SequenceInfo.txt"}) {
        QStringList warnings;
        QString error;
        const std::unique_ptr<CVXSSequenceDataset> sequence(
            CVXSSequenceDataset::open(path, nullptr, &error, &warnings));
        QVERIFY2(sequence, qPrintable(error));
        QVERIFY(warnings.isEmpty());
        QCOMPARE(sequence->getSequenceID(), ID);
        QCOMPARE(sequence->getSequenceInfoPath(), study.folder() + "/" + ID + "/");
        QCOMPARE(sequence->getClickNumbers(), QStringList({"AB2", "AB1"}));
        QCOMPARE(sequence->getActiveUnit(), EUNIT_RADIANT_EFFICIENCY);
        QCOMPARE((*sequence)[1]->getUnit(), EUNIT_RADIANT_EFFICIENCY);
        QCOMPARE((*sequence)[1]->getSequenceDataset(), sequence.get());
        QCOMPARE(CVXSDataset::getDataset("AB1"), (*sequence)[1]);
        QCOMPARE(sequence->getImageAdjust().colorTable, VXS_CT_BLUEHOT);
        QVERIFY(sequence->getImageAdjust().reverse);
        QVERIFY(sequence->getImageAdjust().logScale);
        QVERIFY(sequence->getToolInfo().reversed);
        QVERIFY(sequence->getToolInfo().logarithmic);
        QCOMPARE(sequence->getToolInfo().brightness, 7);
        QCOMPARE(sequence->getToolInfo().gamma, 0.1f);
        QVERIFY(sequence->isTransIllumOverviewResultSequence());
        QVERIFY(sequence->is3DSceneOnly());
        QVERIFY(!CVXPreference::isSequenceLoading(sequence.get()));
        QCOMPARE((*sequence)[0]->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(3, 4), 111.0);
    }
}

void tst_SequenceSaving::openingTwiceIsOpeningOnce()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    QVERIFY(study.save());
    ESTATUS status = ESTATUS_FAILURE;
    QCOMPARE(CVXSSequenceDataset::open(study.folder() + "/" + ID, &status, nullptr), study.sequence());
    QCOMPARE(status, ESTATUS_SUCCESS);
    QCOMPARE(CVXSSequenceDataset::openSequences().size(), 1);
}

void tst_SequenceSaving::withoutAStoredUnitTheFirstDatasetsUnitIsThatOfAll()
{
    TestStudy study(ID);
    CVXSDataset *dataset = study.add(click("AB1"));
    clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_GRAPH_CONTROLS)
        ->setValue(clickinfo::KEY_INTENSITY_CALIBRATION, "Radiance (Photons)");
    study.add(click("AB2"));
    QVERIFY(study.save());
    study.close();
    QVERIFY(replaceInFile(study.folder() + "/" + ID + "/SequenceInfo.txt", "Active Unit = counts\n", ""));
    const std::unique_ptr<CVXSSequenceDataset> sequence(
        CVXSSequenceDataset::open(study.folder() + "/" + ID, nullptr, nullptr));
    QVERIFY(sequence);
    QCOMPARE(sequence->getActiveUnit(), EUNIT_RADIANCE);
    QCOMPARE((*sequence)[0]->getUnit(), EUNIT_RADIANCE);
    QCOMPARE((*sequence)[1]->getUnit(), EUNIT_RADIANCE);
}

void tst_SequenceSaving::savingAgainWritesOnlyWhatChanged()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    CVXSDataset *changed = study.add(click("AB2"));
    QVERIFY(study.save());
    const QString folder = study.folder() + "/" + ID + "/";
    const QByteArray mark = "# a user's remark\n";
    for (const char *number : {"AB1", "AB2"}) {
        const QString file = folder + number + "/ClickInfo.txt";
        QVERIFY(writeFile(file, mark + readFile(file)));
    }
    changed->setColorTable(VXS_CT_GREEN);
    QCOMPARE(study.sequence()->save("/nowhere/at/all"), ESTATUS_SUCCESS); // it has its folder
    QVERIFY(readFile(folder + "AB1/ClickInfo.txt").startsWith(mark));
    QVERIFY(readFile(folder + "AB2/ClickInfo.txt").contains("Color Table = Green"));
    QVERIFY(!changed->isModified());
}

void tst_SequenceSaving::aNewDatasetHasAPlaceBeforeItHasFiles()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    QVERIFY(study.save());
    const CVXSDataset *added = study.add(click("AB2"));
    const QString folder = study.folder() + "/" + ID + "/AB2/";
    QCOMPARE(added->getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(added->getFolderPath().isEmpty());
    QCOMPARE(study.sequence()->getDatasetFolderPath("AB2"), folder);
    QVERIFY(!QDir(folder).exists());
    QVERIFY(study.save());
    QCOMPARE(added->getDatasetType(), int(EDATASET_ACQUIRED));
    QCOMPARE(added->getFolderPath(), folder);
}

void tst_SequenceSaving::aDatasetFromElsewhereIsTakenIn()
{
    QTemporaryDir elsewhere;
    {
        CVXSDataset dataset("AB1");
        dataset.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(3, 3, [](int, int) { return 8.0f; }));
        QCOMPARE(dataset.saveDatasetAs(elsewhere.path()), ESTATUS_SUCCESS);
    }
    TestStudy study(ID);
    CVXSDataset *dataset = CVXSDataset::open(elsewhere.path(), nullptr, nullptr);
    QVERIFY(dataset && study.sequence()->addDataset(dataset));
    QCOMPARE(study.sequence()->getDatasetFolderPath("AB1"), elsewhere.path() + "/");
    QVERIFY(study.save());
    const QString folder = study.folder() + "/" + ID + "/AB1/";
    QCOMPARE(dataset->getFolderPath(), folder);
    QCOMPARE(readFile(folder + "luminescent.tif"), readFile(elsewhere.filePath("luminescent.tif")));
}

void tst_SequenceSaving::withoutFolderItGoesUnderTheProgramData()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    QCOMPARE(study.sequence()->save(), ESTATUS_SUCCESS);
    QCOMPARE(study.sequence()->getSequenceInfoPath(),
             CVXPreference::getProgramDataPath() + "/sequences/" + ID + "/");
    QVERIFY(QFile::exists(study.sequence()->getSequenceInfoPath() + "SequenceInfo.txt"));
}

void tst_SequenceSaving::anotherSequenceIsNotOverwritten()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    QVERIFY(study.save());
    study.close();
    CVXSSequenceDataset other(ID);
    auto *dataset = new CVXSDataset("AB1");
    QVERIFY(other.addDataset(dataset));
    const QByteArray before = readFile(study.folder() + "/" + ID + "/AB1/ClickInfo.txt");
    LogCatcher log;
    QVERIFY(other.save(study.folder()) != ESTATUS_SUCCESS);
    QVERIFY(other.lastError().startsWith(study.folder() + "/" + ID + "/SequenceInfo.txt: "));
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(other.getSequenceInfoPath().isEmpty());
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_IN_MEMORY));
    QCOMPARE(readFile(study.folder() + "/" + ID + "/AB1/ClickInfo.txt"), before);
}

void tst_SequenceSaving::anUnsafeIdIsRefused()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("inside"));
    CVXSSequenceDataset sequence("../outside");
    QCOMPARE(sequence.save(folder.filePath("inside")), ESTATUS_BAD_NAME);
    QVERIFY(sequence.lastError().contains("../outside"));
    QVERIFY(!QFile::exists(folder.filePath("outside")));
}

void tst_SequenceSaving::aReadOnlyFolderLeavesTheOldSequence()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    QVERIFY(study.save());
    study.close();
    const QString folder = study.folder() + "/" + ID;
    const QByteArray before = readFile(folder + "/SequenceInfo.txt");
    QCOMPARE(chmod(qPrintable(study.folder()), 0755), 0);
    QCOMPARE(chmod(qPrintable(folder + "/SequenceInfo.txt"), 0644), 0);
    QCOMPARE(chmod(qPrintable(folder), 0555), 0);
    QVERIFY(holdsForUnprivilegedUser([&] {
        CVXSSequenceDataset *sequence = CVXSSequenceDataset::open(folder, nullptr, nullptr);
        if (!sequence)
            return false;
        sequence->setActiveUnit(EUNIT_RADIANCE);
        if (sequence->save() != ESTATUS_FILE_NOT_WRITABLE ||
            !sequence->lastError().startsWith(folder + "/SequenceInfo.txt: "))
            return false;
        // Nor is there a place for a dataset.
        auto *dataset = new CVXSDataset("AB2");
        return sequence->addDataset(dataset) && sequence->save() == ESTATUS_FILE_NOT_WRITABLE &&
               sequence->lastError().startsWith(folder + "/AB2") &&
               dataset->getDatasetType() == EDATASET_IN_MEMORY;
    }));
    QCOMPARE(readFile(folder + "/SequenceInfo.txt"), before);
    QCOMPARE(chmod(qPrintable(folder), 0755), 0);
}

void tst_SequenceSaving::aClickThatCouldNotBeOpenedStaysListed()
{
    TestStudy study(ID);
    study.add(click("AB1"));
    study.add(click("AB2"));
    QVERIFY(study.save());
    study.close();
    const QString folder = study.folder() + "/" + ID;
    QVERIFY(QDir(folder).rename("AB1", "moved"));
    const std::unique_ptr<CVXSSequenceDataset> sequence(CVXSSequenceDataset::open(folder, nullptr, nullptr));
    QVERIFY(sequence && !(*sequence)[0]);
    QCOMPARE(sequence->save(), ESTATUS_SUCCESS);
    QVERIFY(readFile(folder + "/SequenceInfo.txt").contains("Click = AB1\nClick = AB2\n"));
}

QTEST_GUILESS_MAIN(tst_SequenceSaving)
#include "tst_SequenceSaving.moc"
