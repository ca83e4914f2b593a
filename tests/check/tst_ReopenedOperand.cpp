// SPDX-License-Identifier: MIT
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/Files.h"
#include "tests/support/ResultCheckFixture.h"

#include <QDir>

using namespace resultcheck;
using Verdict = ResultCheck::Verdict;

/// Where the operands of a result are found when it is computed again, and that they are left alone.
class tst_ReopenedOperand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ResultCheckFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void aMissingOperandIsNamedWithItsSequence();
    void anOperandIsFoundWhereItLies_data();
    void anOperandIsFoundWhereItLies();
    void aRenamedOperandIsFoundByItsImages();
    void anOperandsImageMayHaveAnotherName();
    void aResultOfAnUnsavedOperandIsTheSame();
    void aResultOfAResultIsTheSame();
    void changesInMemoryAreTold();
    void aClickNumberThatIsAPathIsRefused();
    void openDatasetsStayAsTheyAre();

private:
    ResultCheck check(const CVXSDataset *result) const { return m_fixture->check(result); }
    CVXSDataset *plainResult() const { return m_fixture->makePlainResult(); }
    bool closeSequence() const { return m_fixture->workspace.window->parts().sequences->closeAll(); }

    std::unique_ptr<ResultCheckFixture> m_fixture;
};

void tst_ReopenedOperand::aMissingOperandIsNamedWithItsSequence()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(closeSequence());
    QVERIFY(QDir(m_fixture->folder + A).removeRecursively());
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::NotFound, told(outcome).constData());
    QCOMPARE(outcome.lines,
             QStringList{QString("Operand A: %1 is not open and not among the recent sequences: "
                                 "open the sequence %2 and check again.")
                             .arg(A, ResultCheckFixture::SEQUENCE)});
    QCOMPARE(outcome.level(), 2L);
    m_fixture->workspace.window->parts().recentSequences->clear();
    QCOMPARE(check(result).lines.size(), 2);
}

void tst_ReopenedOperand::anOperandIsFoundWhereItLies_data()
{
    QTest::addColumn<QString>("moveTo"); // under the program-data path; empty: it stays
    QTest::addColumn<bool>("isRecent");
    QTest::newRow("in a recent sequence") << QString() << true;
    QTest::newRow("in the sequences of the program data") << QString("/sequences/") << false;
    QTest::newRow("in a sequence directly under the program data") << QString("/") << false;
}

void tst_ReopenedOperand::anOperandIsFoundWhereItLies()
{
    QFETCH(QString, moveTo);
    QFETCH(bool, isRecent);
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(closeSequence());
    QVERIFY(!CVXSDataset::getDataset(A));
    if (!isRecent)
        m_fixture->workspace.window->parts().recentSequences->clear();
    if (!moveTo.isEmpty()) {
        QVERIFY(check(result).verdict == Verdict::NotFound);
        const QString parent = CVXPreference::getProgramDataPath() + moveTo;
        QVERIFY(QDir().mkpath(parent));
        QVERIFY(QDir().rename(m_fixture->folder, parent + ResultCheckFixture::SEQUENCE));
    }
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY(!CVXSDataset::getDataset(A));
}

void tst_ReopenedOperand::aRenamedOperandIsFoundByItsImages()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(closeSequence());
    QVERIFY(replaceEverywhereInFile(m_fixture->fileOf(B, "ClickInfo.txt"), B, "AB20990101000000"));
    QVERIFY(QDir().rename(m_fixture->folder + B, m_fixture->folder + "AB20990101000000"));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY2(anyLine(outcome, QString("%1 was renamed: its images are those of AB20990101000000").arg(B)),
             told(outcome).constData());
    // Renamed and changed, it is another image.
    QVERIFY(ResultCheckFixture::setPixel(m_fixture->folder + "AB20990101000000/luminescent.tif", 0, 1.0f));
    QVERIFY(check(result).verdict == Verdict::NotFound);
}

// The result's ClickInfo goes on naming the operand's file, but its own is luminescent.tif.
void tst_ReopenedOperand::anOperandsImageMayHaveAnotherName()
{
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    QVERIFY(closeSequence());
    const QString path = m_fixture->fileOf(A, clickinfo::FILE_CLICK_INFO);
    CPLClickInfo info;
    QCOMPARE(info.loadClickInfo(path, false), ESTATUS_SUCCESS);
    info[clickinfo::SECTION_LUMINESCENT]->setSectionName(QStringLiteral("signal.tif"));
    QCOMPARE(info.saveClickInfo(path), ESTATUS_SUCCESS);
    QVERIFY(
        QFile::rename(m_fixture->fileOf(A, clickinfo::FILE_LUMINESCENT), m_fixture->fileOf(A, "signal.tif")));
    QVERIFY(m_fixture->openAgain());
    const CVXSDataset *result = m_fixture->makeResult(1, QStringLiteral("0.37"));
    QVERIFY(result);
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
}

void tst_ReopenedOperand::aResultOfAnUnsavedOperandIsTheSame()
{
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    CVXSDataset *unsaved = nullptr;
    {
        TestStudy other("CD20260102030405_SEQ");
        ClickSpec spec = withFlatField(clickB());
        spec.clickNumber = "AB20260102030608";
        const CVXSDataset *made = other.add(spec);
        QVERIFY(made);
        unsaved = new CVXSDataset("AB20260102030699");
        QCOMPARE(unsaved->getClickInfo()->fromText(
                     made->getClickInfo()->toText().replace("AB20260102030608", "AB20260102030699"), nullptr),
                 ESTATUS_SUCCESS);
        for (tag_eimagetype type : {EIMAGE_LUMINESCENT, EIMAGE_FLATFIELD})
            unsaved->setCoreImage(type, *made->getCoreImage(type));
    }
    QVERIFY(m_fixture->sequence->addDataset(unsaved));
    QCOMPARE(unsaved->getDatasetType(), int(EDATASET_IN_MEMORY));
    const CVXSDataset *result = m_fixture->makeResult(1, "2", EUNIT_RADIANCE, false, 0, 2);
    QVERIFY(result);
    QCOMPARE(recordOf(result).b.files.size(), 2);
    const ResultCheck inMemory = check(result);
    QVERIFY2(inMemory.verdict == Verdict::Same, told(inMemory).constData());
    QVERIFY2(anyLine(inMemory, "as it is in memory"), told(inMemory).constData());
    QCOMPARE(unsaved->getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(unsaved->isModified());
    // Saving it writes the same bytes.
    QCOMPARE(m_fixture->sequence->save(), ESTATUS_SUCCESS);
    QCOMPARE(unsaved->getDatasetType(), int(EDATASET_ACQUIRED));
    const ResultCheck onDisk = check(result);
    QVERIFY2(onDisk.verdict == Verdict::Same && !anyLine(onDisk, "in memory"), told(onDisk).constData());
}

void tst_ReopenedOperand::aResultOfAResultIsTheSame()
{
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    const CVXSDataset *first = m_fixture->makeResult(1, "0.37", EUNIT_RADIANCE);
    QVERIFY(first);
    QCOMPARE(m_fixture->sequence->save(), ESTATUS_SUCCESS); // its unit is another one now
    QVERIFY(closeSequence());
    // The user takes a copy of the first result into the sequence, under a name of its own.
    const QString copy = "AB20260102030999";
    const QString folder = m_fixture->folder + copy + '/';
    QVERIFY(QDir().mkpath(folder));
    for (const QString &file : QDir(first->getFolderPath()).entryList(QDir::Files))
        QVERIFY(QFile::copy(first->getFolderPath() + file, folder + file));
    QVERIFY(replaceEverywhereInFile(folder + "ClickInfo.txt",
                                    "[ClickNumber]: " + first->getClickNumber().toUtf8(),
                                    "[ClickNumber]: " + copy.toUtf8()));
    const QByteArray last = QByteArray("Click = ") + B + "\n";
    QVERIFY(replaceEverywhereInFile(m_fixture->folder + "SequenceInfo.txt", last,
                                    last + "Click = " + copy.toUtf8() + "\n"));
    QVERIFY(m_fixture->openAgain());
    QCOMPARE(m_fixture->sequence->getDataset(copy)->getDatasetType(), int(EDATASET_RESULT));

    const CVXSDataset *second = m_fixture->makeResult(3, "12", EUNIT_RADIANCE, false, 2, 1);
    QVERIFY(second);
    QCOMPARE(recordOf(second).a.clickNumber, copy);
    const ResultCheck outcome = check(second);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY(ResultCheckFixture::setPixel(folder + "luminescent.tif", 3, 5.0f));
    const ResultCheck changed = check(second);
    QVERIFY2(changed.verdict == Verdict::DifferentAsChanged, told(changed).constData());
    QVERIFY2(changed.headline.contains("1 of 1024 pixels differ"), told(changed).constData());
}

void tst_ReopenedOperand::changesInMemoryAreTold()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    m_fixture->sequence->getDataset(A)->setModified(true);
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY2(
        anyLine(outcome, QString("%1 has changes that are not saved; its files on disk were taken.").arg(A)),
        told(outcome).constData());
    m_fixture->sequence->getDataset(A)->setModified(false);
}

void tst_ReopenedOperand::aClickNumberThatIsAPathIsRefused()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = recordOf(result);
    record.a.clickNumber = QString("../%1/%2").arg(ResultCheckFixture::SEQUENCE, A);
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::NotFound, told(outcome).constData());
    QVERIFY2(anyLine(outcome, "is not a click number"), told(outcome).constData());
}

void tst_ReopenedOperand::openDatasetsStayAsTheyAre()
{
    QVERIFY(m_fixture->open({withFlatField(clickA()), clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(1, "2", EUNIT_RADIANCE);
    QVERIFY(result);
    CVXSDataset *a = m_fixture->sequence->getDataset(A);
    a->doFlatFieldCorrection(false);
    const int windows = m_fixture->workspace.window->parts().workspace->subWindowList().size();
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY(!a->isLuminFlatFieldCorrected());
    QVERIFY(!a->isModified());
    QCOMPARE(CVXSDataset::getDataset(A), a);
    QCOMPARE(m_fixture->workspace.window->parts().workspace->subWindowList().size(), windows);
}

QTEST_MAIN(tst_ReopenedOperand)
#include "tst_ReopenedOperand.moc"
