// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/support/TestStudy.h"

#include <QtTest>

#include <functional>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

} // namespace

using Change = std::function<void(CVXSSequenceDataset *)>;
Q_DECLARE_METATYPE(Change)

/// What makes closing a sequence lose something.
class tst_SequenceChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewSequenceIsModified();
    void changes_data();
    void changes();
    void aFailedSaveLeavesItModified();
};

void tst_SequenceChanges::aNewSequenceIsModified()
{
    TestStudy study(ID);
    QVERIFY(study.sequence()->isModified());
    QVERIFY(study.add(ClickSpec::of("AB1")));
    QVERIFY(study.save());
    QVERIFY(!study.sequence()->isModified());
}

void tst_SequenceChanges::changes_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("modified");
    const auto row = [](const char *name, const Change &change, bool modified) {
        QTest::newRow(name) << change << modified;
    };
    row(
        "nothing", [](CVXSSequenceDataset *) {}, false);
    row(
        "another unit", [](CVXSSequenceDataset *s) { s->setActiveUnit(EUNIT_RADIANCE); }, true);
    row(
        "the unit that it has", [](CVXSSequenceDataset *s) { s->setActiveUnit(s->getActiveUnit()); }, false);
    row(
        "no unit at all", [](CVXSSequenceDataset *s) { s->setActiveUnit(EUNIT_COUNT); }, false);
    const auto adjust = [](void (*edit)(tag_simageadjust *)) {
        return [edit](CVXSSequenceDataset *s) {
            tag_simageadjust changed = s->getImageAdjust();
            edit(&changed);
            s->setImageAdjust(changed);
        };
    };
    row("another colour table", adjust([](tag_simageadjust *a) { a->colorTable = VXS_CT_RED; }), true);
    row("reversed colours", adjust([](tag_simageadjust *a) { a->reverse = true; }), true);
    row("a logarithmic scale", adjust([](tag_simageadjust *a) { a->logScale = true; }), true);
    row("the colours that it has", adjust([](tag_simageadjust *) {}), false);
    const auto tool = [](void (*edit)(CVXSToolInfo *)) {
        return [edit](CVXSSequenceDataset *s) {
            CVXSToolInfo changed = s->getToolInfo();
            edit(&changed);
            s->setToolInfo(changed);
        };
    };
    row("brightness", tool([](CVXSToolInfo *t) { t->brightness = 7; }), true);
    row("gamma", tool([](CVXSToolInfo *t) { t->gamma = 0.5f; }), true);
    row("reversed in the tools' record", tool([](CVXSToolInfo *t) { t->reversed = true; }), true);
    row("the tools' record that it has", tool([](CVXSToolInfo *) {}), false);
    row(
        "marked as an overview", [](CVXSSequenceDataset *s) { s->setTransIllumOverviewResultSequence(true); },
        true);
    row(
        "marked as a 3D scene", [](CVXSSequenceDataset *s) { s->set3DSceneOnly(true); }, true);
    row(
        "a dataset more", [](CVXSSequenceDataset *s) { s->addDataset(new CVXSDataset("AB9")); }, true);
    row(
        "a dataset less", [](CVXSSequenceDataset *s) { s->removeDataset("AB1"); }, true);
    row(
        "a changed dataset", [](CVXSSequenceDataset *s) { s->getDatasets().last()->setModified(true); },
        true);
}

void tst_SequenceChanges::changes()
{
    QFETCH(Change, change);
    QFETCH(bool, modified);
    TestStudy study(ID);
    QVERIFY(study.add(ClickSpec::of("AB1")));
    QVERIFY(study.add(ClickSpec::of("AB2")));
    QVERIFY(study.save());
    const QString folder = study.sequence()->getSequenceInfoPath();
    study.close();
    const std::unique_ptr<CVXSSequenceDataset> sequence(CVXSSequenceDataset::open(folder, nullptr, nullptr));
    QVERIFY(sequence);
    QVERIFY(!sequence->isModified());
    change(sequence.get());
    QCOMPARE(sequence->isModified(), modified);
    QCOMPARE(sequence->save(), ESTATUS_SUCCESS);
    QVERIFY(!sequence->isModified());
}

void tst_SequenceChanges::aFailedSaveLeavesItModified()
{
    TestStudy study(ID);
    QVERIFY(study.add(ClickSpec::of("AB1")));
    QVERIFY(study.save());
    study.sequence()->setActiveUnit(EUNIT_RADIANCE);
    const QString folder = study.sequence()->getSequenceInfoPath();
    QVERIFY(QFile::remove(folder + "SequenceInfo.txt"));
    QVERIFY(QDir(folder).mkpath("SequenceInfo.txt/in the way"));
    QVERIFY(study.sequence()->save() != ESTATUS_SUCCESS);
    QVERIFY(study.sequence()->isModified());
}

QTEST_GUILESS_MAIN(tst_SequenceChanges)
#include "tst_SequenceChanges.moc"
