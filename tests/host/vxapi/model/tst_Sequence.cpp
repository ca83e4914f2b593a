// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

} // namespace

class tst_Sequence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void registry();
    void orderOfClicks();
    void membership();
    void associatedClick_data();
    void associatedClick();
    void refusedDatasets_data();
    void refusedDatasets();
    void removing();
    void deletingASequenceDeletesItsDatasets();
    void aDatasetDeletedBySomeoneElseIsNull();
    void activeUnitIsThatOfEveryDataset();
    void displaySettingsAreOneSetting();
};

void tst_Sequence::registry()
{
    QVERIFY(!CVXSSequenceDataset::getSequenceDataset(ID));
    {
        const TestStudy study(ID);
        const TestStudy other("XY1_SEQ");
        QCOMPARE(CVXSSequenceDataset::getSequenceDataset(ID), study.sequence());
        QCOMPARE(CVXSSequenceDataset::openSequences(),
                 QList<CVXSSequenceDataset *>({study.sequence(), other.sequence()}));
        QVERIFY(!CVXPreference::isSequenceLoading(study.sequence()));
    }
    QVERIFY(!CVXSSequenceDataset::getSequenceDataset(ID));
    QVERIFY(CVXSSequenceDataset::openSequences().isEmpty());
}

void tst_Sequence::orderOfClicks()
{
    TestStudy study(ID);
    CVXSDataset *first = study.add(ClickSpec::of("AB1"));
    CVXSDataset *last = study.add(ClickSpec::of("AB2"));
    auto *between = new CVXSDataset("AB3");
    QSignalSpy changed(study.sequence(), &CVXSSequenceDataset::updateOnChangeSequence);
    QVERIFY(study.sequence()->addDataset(between, 1));
    QCOMPARE(changed.count(), 1);
    QVERIFY(study.sequence()->addDataset(new CVXSDataset("AB4"), 99)); // beyond the end: at the end
    const CVXSSequenceDataset &sequence = *study.sequence();
    QCOMPARE(sequence.getClickNumbers(), QStringList({"AB1", "AB3", "AB2", "AB4"}));
    QCOMPARE(sequence[0], first);
    QCOMPARE(sequence[1], between);
    QCOMPARE(sequence[2], last);
    QVERIFY(!sequence[4]);
    QVERIFY(!sequence[unsigned(-1)]);
    QCOMPARE(sequence.getDatasets().size(), 4);
    QCOMPARE(sequence.getDataset("AB3"), between);
    QVERIFY(!sequence.getDataset("AB9"));
}

void tst_Sequence::membership()
{
    TestStudy study(ID);
    CVXSDataset *dataset = study.add(ClickSpec::of("AB1"));
    QVERIFY(dataset->isPartOfSequence());
    QCOMPARE(dataset->getSequenceDataset(), study.sequence());
    QCOMPARE(CVXSDataset::getDataset("AB1"), dataset);
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_IN_MEMORY));
    QVERIFY(study.sequence()->getSequenceInfoPath().isEmpty());
    QVERIFY(study.sequence()->getDatasetFolderPath("AB1").isEmpty());
}

void tst_Sequence::associatedClick_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("isAssociated");
    QTest::newRow("a click of the sequence") << "AB1" << true;
    QTest::newRow("a click of another sequence") << "XY1" << false;
    QTest::newRow("an unknown click") << "AB7" << false;
    QTest::newRow("a null text") << QString() << false;
    QTest::newRow("other letters") << "ab1" << false;
}

void tst_Sequence::associatedClick()
{
    QFETCH(QString, number);
    QFETCH(bool, isAssociated);
    TestStudy study(ID);
    TestStudy other("XY1_SEQ");
    study.add(ClickSpec::of("AB1"));
    other.add(ClickSpec::of("XY1"));
    bool flag = !isAssociated;
    QCOMPARE(study.sequence()->isAssociatedClick(number, &flag), isAssociated);
    QCOMPARE(flag, isAssociated);
    QCOMPARE(study.sequence()->isAssociatedClick(number, nullptr), isAssociated);
}

void tst_Sequence::refusedDatasets_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("a click number of the sequence") << "AB1";
    QTest::newRow("a click number that is open elsewhere") << "XY1";
    QTest::newRow("a click number that leaves the folder") << "../AB2";
    QTest::newRow("an empty click number") << "";
}

void tst_Sequence::refusedDatasets()
{
    QFETCH(QString, number);
    TestStudy study(ID);
    TestStudy other("XY1_SEQ");
    study.add(ClickSpec::of("AB1"));
    other.add(ClickSpec::of("XY1"));
    CVXSDataset dataset(number);
    QSignalSpy changed(study.sequence(), &CVXSSequenceDataset::updateOnChangeSequence);
    LogCatcher log;
    QVERIFY(!study.sequence()->addDataset(&dataset));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(study.sequence()->getClickNumbers(), QStringList("AB1"));
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().constFirst().contains(number));
    QCOMPARE(study.sequence()->lastError(), log.failures().constFirst());
    QVERIFY(!dataset.parent());
    QVERIFY(!study.sequence()->addDataset(nullptr));
    // One that is in a sequence already stays there.
    QVERIFY(!study.sequence()->addDataset(other.sequence()->getDataset("XY1")));
}

void tst_Sequence::removing()
{
    TestStudy study(ID);
    const QPointer<CVXSDataset> first = study.add(ClickSpec::of("AB1"));
    study.add(ClickSpec::of("AB2"));
    QStringList seen;
    connect(study.sequence(), &CVXSSequenceDataset::datasetAboutToBeRemoved, this,
            [&](CVXSDataset *dataset) { seen += "about to remove " + dataset->getClickNumber(); });
    connect(study.sequence(), &CVXSSequenceDataset::updateOnChangeSequence, this,
            [&] { seen += study.sequence()->getClickNumbers().join(','); });
    QVERIFY(study.sequence()->removeDataset("AB1"));
    QCOMPARE(seen, QStringList({"about to remove AB1", "AB2"}));
    QVERIFY(!first);
    QVERIFY(!CVXSDataset::getDataset("AB1"));
    QVERIFY(!study.sequence()->removeDataset("AB1"));
}

void tst_Sequence::deletingASequenceDeletesItsDatasets()
{
    TestStudy study(ID);
    const QPointer<CVXSDataset> dataset = study.add(ClickSpec::of("AB1"));
    study.close();
    QVERIFY(!dataset);
    QVERIFY(!CVXSDataset::getDataset("AB1"));
}

void tst_Sequence::aDatasetDeletedBySomeoneElseIsNull()
{
    TestStudy study(ID);
    delete study.add(ClickSpec::of("AB1"));
    QVERIFY(!(*study.sequence())[0]);
    QVERIFY(study.sequence()->getDatasets().isEmpty());
    QVERIFY(!study.sequence()->isAssociatedClick("AB1", nullptr));
}

void tst_Sequence::activeUnitIsThatOfEveryDataset()
{
    TestStudy study(ID);
    CVXSDataset *before = study.add(ClickSpec::of("AB1"));
    before->setUnit(EUNIT_EFFICIENCY);
    QCOMPARE(study.sequence()->getActiveUnit(), EUNIT_COUNTS);
    QSignalSpy changed(study.sequence(), &CVXSSequenceDataset::displayChanged);
    study.sequence()->setActiveUnit(EUNIT_RADIANCE);
    QCOMPARE(changed.count(), 1);
    CVXSDataset *after = study.add(ClickSpec::of("AB2"));
    QCOMPARE(before->getUnit(), EUNIT_RADIANCE);
    QCOMPARE(after->getUnit(), EUNIT_RADIANCE);
    study.sequence()->setActiveUnit(EUNIT_COUNT);
    QCOMPARE(study.sequence()->getActiveUnit(), EUNIT_RADIANCE);
}

void tst_Sequence::displaySettingsAreOneSetting()
{
    TestStudy study(ID);
    QSignalSpy changed(study.sequence(), &CVXSSequenceDataset::displayChanged);
    tag_simageadjust adjust;
    adjust.colorTable = VXS_CT_TERRAIN;
    adjust.reverse = true;
    study.sequence()->setImageAdjust(adjust);
    QVERIFY(study.sequence()->getToolInfo().reversed);
    QVERIFY(!study.sequence()->getToolInfo().logarithmic);
    CVXSToolInfo info;
    info.logarithmic = true;
    study.sequence()->setToolInfo(info);
    QCOMPARE(study.sequence()->getImageAdjust().colorTable, VXS_CT_TERRAIN);
    QVERIFY(!study.sequence()->getImageAdjust().reverse);
    QVERIFY(study.sequence()->getImageAdjust().logScale);
    QCOMPARE(changed.count(), 2);
}

QTEST_GUILESS_MAIN(tst_Sequence)
#include "tst_Sequence.moc"
