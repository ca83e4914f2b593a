// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetLoader.h"
#include "app/datasets/SequenceManager.h"
#include "app/menus/DisplayMenu.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QMenu>

namespace {

QAction *entry(MainWindow *window, const char *menu, const QString &text)
{
    for (QAction *action : window->findChild<QMenu *>(menu)->actions()) {
        if (action->text() == text)
            return action;
    }
    qFatal("no entry %s", qPrintable(text));
}

} // namespace

class tst_DisplayMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isDisabledWithoutAnImage();
    void offersEveryUnitAndTable();
    void unitOfTheSequence();
    void colorsOfTheSequence();
    void unitsThatCannotBeShownAreNotOffered();
    void aRatioHasNoUnitToChoose();
    void constantsThatAreEnteredAreNoticed();
    void theColoursThatAreThereChangeNothing();
    void marksFollowChangesOfOthers();
    void datasetOfItsOwn();
};

void tst_DisplayMenu::isDisabledWithoutAnImage()
{
    WorkspaceFixture fixture;
    QVERIFY(!entry(fixture.window.get(), "menuUnit", "Counts")->isEnabled());
    QVERIFY(!entry(fixture.window.get(), "menuColorTable", "Grays")->isEnabled());
    QVERIFY(!fixture.window->findChild<QAction *>("actionReversed")->isEnabled());
    QVERIFY(!fixture.window->findChild<QAction *>("actionLogScale")->isEnabled());
}

void tst_DisplayMenu::offersEveryUnitAndTable()
{
    WorkspaceFixture fixture;
    QStringList units;
    for (QAction *action : fixture.window->findChild<QMenu *>("menuUnit")->actions())
        units.append(action->text());
    QCOMPARE(units, (QStringList{"Counts", "Radiance (Photons)", "Radiant Efficiency", "Efficiency"}));
    QCOMPARE(fixture.window->findChild<QMenu *>("menuColorTable")->actions().size(), int(VXS_CT_COUNT));
}

void tst_DisplayMenu::unitOfTheSequence()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(dir.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY(sequence);
    QAction *radiance = entry(fixture.window.get(), "menuUnit", "Radiance (Photons)");
    radiance->trigger();
    QCOMPARE(sequence->getActiveUnit(), EUNIT_RADIANCE);
    for (CVXSDataset *dataset : sequence->getDatasets())
        QCOMPARE(dataset->getUnit(), EUNIT_RADIANCE);
    QVERIFY(radiance->isChecked());
    // From an image's window too it is the sequence's.
    fixture.window->parts().workspace->showDataset(sequence->getDatasets().first());
    entry(fixture.window.get(), "menuUnit", "Counts")->trigger();
    QCOMPARE(sequence->getActiveUnit(), EUNIT_COUNTS);
    QVERIFY(!radiance->isChecked());
}

void tst_DisplayMenu::unitsThatCannotBeShownAreNotOffered()
{
    TestStudy study;
    const QMap<QString, QString> withoutExposure = {{clickinfo::KEY_EXPOSURE, QString()}};
    ClickSpec poor = ClickSpec::of("AB20260102030406");
    poor.luminescentKeys = withoutExposure;
    QVERIFY(study.add(poor));
    ClickSpec photograph = ClickSpec::of("AB20260102030407");
    photograph.counts = nullptr;
    photograph.photograph = [](int x, int y) { return float(x + y); };
    QVERIFY(study.add(photograph));
    QVERIFY(study.save());
    const QString folder = study.sequence()->getSequenceInfoPath();
    study.close();
    WorkspaceFixture fixture;
    // As the user opens it: the datasets come one by one.
    CVXSSequenceDataset *sequence = fixture.window->parts().sequences->open(folder);
    QTRY_VERIFY(!sequence->isLoading());
    const auto unit = [&fixture](const QString &text) {
        return entry(fixture.window.get(), "menuUnit", text);
    };
    QVERIFY(unit("Counts")->isEnabled());
    QVERIFY(unit("Counts")->toolTip().isEmpty() || unit("Counts")->toolTip() == "Counts");
    QVERIFY(fixture.window->findChild<QMenu *>("menuUnit")->toolTipsVisible());
    for (const char *text : {"Radiance (Photons)", "Radiant Efficiency"}) {
        QVERIFY2(!unit(text)->isEnabled(), text);
        const QString why = unit(text)->toolTip();
        QVERIFY2(why.contains("Exposure Time") && why.contains("ClickInfo.txt"), qPrintable(why));
        QVERIFY2(!why.contains("Pixel Pitch"), qPrintable(why));
    }
    QVERIFY(!unit("Efficiency")->isEnabled());
    QVERIFY2(unit("Efficiency")->toolTip().contains("excitation reference"),
             qPrintable(unit("Efficiency")->toolTip()));

    // One that can be shown is enough; the tooltip names the others.
    ClickSpec rich = ClickSpec::of("AB20260102030408");
    TestStudy more("CD20260102030405_SEQ");
    QVERIFY(more.add(rich));
    poor.clickNumber = "AB20260102030409";
    QVERIFY(more.add(poor));
    fixture.window->parts().workspace->showSequence(more.sequence());
    QVERIFY(unit("Radiance (Photons)")->isEnabled());
    const QString remark = unit("Radiance (Photons)")->toolTip();
    QVERIFY2(remark.contains("AB20260102030409 cannot be shown in it: ") &&
                 !remark.contains("AB20260102030408"),
             qPrintable(remark));
    fixture.window->parts().workspace->showSequence(sequence);
    QVERIFY(!unit("Radiance (Photons)")->isEnabled());
}

void tst_DisplayMenu::aRatioHasNoUnitToChoose()
{
    WorkspaceFixture fixture;
    CVXSDataset ratio("AB_M20260102030405");
    ratio.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int x, int y) { return float(x + y); }));
    using namespace clickinfo;
    ensureSection(ratio.getClickInfo(), SECTION_LUMINESCENT)->setValue(KEY_MATH_OPERATION, "(A / B) * k");
    ensureSection(ratio.getClickInfo(), SECTION_GRAPH_CONTROLS)
        ->setValue(KEY_INTENSITY_CALIBRATION, unitKey(EUNIT_COUNTS));
    QVERIFY(ratio.getShownUnit() >= EUNIT_COUNT);
    fixture.window->parts().workspace->showDataset(&ratio);
    for (QAction *action : fixture.window->findChild<QMenu *>("menuUnit")->actions())
        QVERIFY2(!action->isEnabled(), qPrintable(action->text()));
}

void tst_DisplayMenu::constantsThatAreEnteredAreNoticed()
{
    TestStudy study;
    ClickSpec poor = ClickSpec::of("AB20260102030406");
    poor.luminescentKeys = {{clickinfo::KEY_EXPOSURE, QString()}};
    CVXSDataset *dataset = study.add(poor);
    WorkspaceFixture fixture;
    fixture.window->parts().workspace->showSequence(study.sequence());
    QAction *radiance = entry(fixture.window.get(), "menuUnit", "Radiance (Photons)");
    QVERIFY(!radiance->isEnabled());
    clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT)
        ->setValue(clickinfo::KEY_EXPOSURE, "60");
    auto *view = fixture.window->findChild<QMenu *>("menuView");
    view->popup(fixture.window->mapToGlobal(QPoint(20, 20)));
    view->hide();
    QVERIFY(radiance->isEnabled());
}

void tst_DisplayMenu::theColoursThatAreThereChangeNothing()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(dir.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY(sequence);
    const QString present = QString::fromLatin1(CILPalette::tableName(sequence->getImageAdjust().colorTable));
    entry(fixture.window.get(), "menuColorTable", present)->trigger();
    QVERIFY(!sequence->isModified());
    for (const CVXSDataset *dataset : sequence->getDatasets())
        QVERIFY2(!dataset->isModified(), qPrintable(dataset->getClickNumber()));
    entry(fixture.window.get(), "menuColorTable", "BlueHot")->trigger();
    QVERIFY(sequence->isModified() && sequence->getDatasets().first()->isModified());
}

void tst_DisplayMenu::colorsOfTheSequence()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(dir.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY(sequence);
    entry(fixture.window.get(), "menuColorTable", "Grays")->trigger();
    fixture.window->findChild<QAction *>("actionReversed")->trigger();
    fixture.window->findChild<QAction *>("actionLogScale")->trigger();
    QCOMPARE(sequence->getImageAdjust().colorTable, VXS_CT_GRAYS);
    QVERIFY(sequence->getImageAdjust().reverse);
    QVERIFY(sequence->getImageAdjust().logScale);
    QVERIFY(sequence->getToolInfo().reversed);
    QVERIFY(sequence->getToolInfo().logarithmic);
    for (CVXSDataset *dataset : sequence->getDatasets()) {
        QCOMPARE(dataset->getColorTable(), VXS_CT_GRAYS);
        QVERIFY(dataset->getToolInfo().reversed);
        QVERIFY(dataset->getToolInfo().logarithmic);
    }
    fixture.window->findChild<QAction *>("actionReversed")->trigger();
    QVERIFY(!sequence->getImageAdjust().reverse);
    QVERIFY(sequence->getImageAdjust().logScale);
    QCOMPARE(sequence->getImageAdjust().colorTable, VXS_CT_GRAYS);
}

void tst_DisplayMenu::marksFollowChangesOfOthers()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence =
        fixture.window->openSequence(writeSequence(dir.path(), "AB20260102030405_SEQ", "AB"));
    QVERIFY(sequence);
    sequence->setActiveUnit(EUNIT_RADIANCE);
    Q_EMIT fixture.window->findChild<QMenu *>("menuView")->aboutToShow();
    QVERIFY(entry(fixture.window.get(), "menuUnit", "Radiance (Photons)")->isChecked());
    QVERIFY(!entry(fixture.window.get(), "menuUnit", "Counts")->isChecked());
}

void tst_DisplayMenu::datasetOfItsOwn()
{
    QTemporaryDir dir;
    CVXSDataset written("AB20260102030406");
    written.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int x, int) { return float(x); }));
    QCOMPARE(written.saveDatasetAs(dir.filePath("AB20260102030406")), ESTATUS_SUCCESS);
    WorkspaceFixture fixture;
    QCOMPARE(fixture.window->parts().datasetLoader->load(dir.filePath("AB20260102030406")), ESTATUS_SUCCESS);
    CVXSDataset *dataset = CVXSDataset::getDataset("AB20260102030406");
    QVERIFY(dataset);
    entry(fixture.window.get(), "menuUnit", "Radiant Efficiency")->trigger();
    QCOMPARE(dataset->getUnit(), EUNIT_RADIANT_EFFICIENCY);
    entry(fixture.window.get(), "menuColorTable", "Grays")->trigger();
    QCOMPARE(dataset->getColorTable(), VXS_CT_GRAYS);
}

QTEST_MAIN(tst_DisplayMenu)
#include "tst_DisplayMenu.moc"
