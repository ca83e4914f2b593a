// SPDX-License-Identifier: MIT
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QPointer>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

/// A sequence in memory of one click.
CVXSSequenceDataset *newSequence(const QString &id = ID)
{
    auto *sequence = new CVXSSequenceDataset(id);
    auto *dataset = new CVXSDataset(id.left(2) + QStringLiteral("20260102030406"));
    dataset->setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int x, int) { return float(x); }));
    sequence->addDataset(dataset);
    return sequence;
}

} // namespace

class tst_ClosingSequences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savedOneClosesWithoutAsking_data();
    void savedOneClosesWithoutAsking();
    void closingAnImageWindowKeepsTheSequence();
    void neverSavedOneAsks_data();
    void neverSavedOneAsks();
    void changedOneAsks_data();
    void changedOneAsks();
    void aMarkAloneLosesNothing();
    void closingTheMainWindowAsksOnceForAll();
    void quittingDiscardsNothingUnasked();
};

void tst_ClosingSequences::savedOneClosesWithoutAsking_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("by the sub-window's own button") << "sub-window";
    QTest::newRow("by File > Close") << "action";
    QTest::newRow("by the manager") << "manager";
}

void tst_ClosingSequences::savedOneClosesWithoutAsking()
{
    QFETCH(QString, way);
    QTemporaryDir dir;
    const QString folder = writeSequence(dir.path(), ID, "AB");
    WorkspaceFixture fixture;
    QPointer<CVXSSequenceDataset> sequence = fixture.window->openSequence(folder);
    QVERIFY(sequence);
    QPointer<CVXSDataset> dataset = sequence->getDatasets().first();
    QPointer<CVXSImageWindow> image = fixture.window->parts().workspace->showDataset(dataset);
    QPointer<CVXSSequenceWindow> window = fixture.window->parts().workspace->showSequence(sequence);
    if (way == "sub-window")
        window->subWindow()->close();
    else if (way == "action")
        fixture.window->findChild<QAction *>("actionClose")->trigger();
    else
        QVERIFY(fixture.window->parts().sequences->close(sequence));
    QTRY_VERIFY(sequence.isNull());
    QVERIFY(dataset.isNull());
    QVERIFY(image.isNull());
    QVERIFY(window.isNull());
    QVERIFY(fixture.window->parts().workspace->subWindowList().isEmpty());
    QVERIFY(fixture.window->parts().sequences->sequences().isEmpty());
    QVERIFY(!CVXSSequenceDataset::getSequenceDataset(ID));
    QVERIFY(!CVXSChildWindow::getActiveChildWnd());
    // It opens again like new.
    QVERIFY(fixture.window->openSequence(folder));
}

void tst_ClosingSequences::closingAnImageWindowKeepsTheSequence()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(writeSequence(dir.path(), ID, "AB"));
    QVERIFY(sequence);
    QPointer<CVXSImageWindow> image =
        fixture.window->parts().workspace->showDataset(sequence->getDatasets().first());
    image->subWindow()->close();
    QTRY_VERIFY(image.isNull());
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), 1);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), CVXSSequenceWindow::getSequenceWindow(sequence));
}

void tst_ClosingSequences::neverSavedOneAsks_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("saved");
    QTest::addColumn<bool>("placed");
    QTest::newRow("Save asks where, writes it and closes") << "&Save" << 0 << true << true << true;
    QTest::newRow("Save without a place keeps it") << "&Save" << 0 << false << false << false;
    QTest::newRow("Discard closes") << "&Discard" << 0 << true << false << true;
    QTest::newRow("Cancel keeps it") << "Cancel" << 0 << false << false << true;
    QTest::newRow("Escape keeps it") << "" << int(Qt::Key_Escape) << false << false << true;
}

void tst_ClosingSequences::neverSavedOneAsks()
{
    QFETCH(QString, answer);
    QFETCH(int, key);
    QFETCH(bool, closed);
    QFETCH(bool, saved);
    QFETCH(bool, placed);
    QTemporaryDir place;
    WorkspaceFixture fixture;
    QPointer<CVXSSequenceDataset> sequence = newSequence();
    fixture.window->parts().sequences->add(sequence);
    {
        const DialogAnswerer user(
            {DialogAnswer::press(answer, key), DialogAnswer::choose(placed ? place.path() : QString())});
        QCOMPARE(fixture.window->parts().sequences->close(sequence), closed);
        QCOMPARE(user.count(), answer == "&Save" ? 2 : 1);
        if (user.count() == 2)
            QCOMPARE(user.shown(1).startFolder, CVXPreference::getProgramDataPath() + "/sequences");
        QVERIFY(user.shown(0).closed);
        QVERIFY2(user.shown(0).text.contains(ID), qPrintable(user.shown(0).text));
    }
    QCOMPARE(sequence.isNull(), closed);
    QCOMPARE(QFile::exists(place.filePath(ID + "/SequenceInfo.txt")), saved);
}

void tst_ClosingSequences::changedOneAsks_data()
{
    QTest::addColumn<QString>("change");
    QTest::newRow("a dataset in it") << "dataset";
    QTest::newRow("the unit alone") << "unit";
    QTest::newRow("the colours alone") << "colours";
}

void tst_ClosingSequences::aMarkAloneLosesNothing()
{
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(writeSequence(dir.path(), ID, "AB"));
    sequence->getDatasets().last()->setModified(true);
    const DialogAnswerer user;
    QVERIFY(fixture.window->parts().sequences->close(sequence));
    QCOMPARE(user.count(), 0);
}

void tst_ClosingSequences::changedOneAsks()
{
    QFETCH(QString, change);
    QTemporaryDir dir;
    WorkspaceFixture fixture;
    CVXSSequenceDataset *sequence = fixture.window->openSequence(writeSequence(dir.path(), ID, "AB"));
    QVERIFY(sequence);
    if (change == "dataset") {
        sequence->getDatasets().last()->setColorTable(VXS_CT_RED);
    } else {
        QAction *picked = fixture.window->findChild<QAction *>("actionReversed");
        if (change == "unit")
            picked = fixture.window->findChild<QMenu *>("menuUnit")->actions().at(EUNIT_RADIANCE);
        QVERIFY(picked);
        picked->trigger();
    }
    const DialogAnswerer user({DialogAnswer::press("&Discard")});
    QVERIFY(fixture.window->parts().sequences->close(sequence));
    QVERIFY(user.shown(0).closed);
}

void tst_ClosingSequences::closingTheMainWindowAsksOnceForAll()
{
    WorkspaceFixture fixture;
    QPointer<CVXSSequenceDataset> one = newSequence();
    QPointer<CVXSSequenceDataset> other = newSequence("CD20260102030405_SEQ");
    fixture.window->parts().sequences->add(one);
    fixture.window->parts().sequences->add(other);
    const DialogAnswerer user({DialogAnswer::press("Cancel")});
    QVERIFY(!fixture.window->close());
    QCOMPARE(user.count(), 1);
    QVERIFY(user.shown(0).closed);
    QVERIFY2(user.shown(0).text.contains("Sequence " + ID + ": all of it, for it was never saved"),
             qPrintable(user.shown(0).text));
    QVERIFY(user.shown(0).text.contains("Sequence CD20260102030405_SEQ: "));
    QVERIFY(fixture.window->isVisible());
    QVERIFY(one);
    QVERIFY(other);
    const DialogAnswerer then({DialogAnswer::press("&Discard All")});
    QVERIFY(fixture.window->close());
}

void tst_ClosingSequences::quittingDiscardsNothingUnasked()
{
    WorkspaceFixture fixture;
    fixture.window->parts().sequences->add(newSequence());
    const DialogAnswerer user({DialogAnswer::press("&Save"), DialogAnswer::choose(fixture.profile())});
    fixture.window->findChild<QAction *>("actionQuit")->trigger();
    QVERIFY(user.shown(0).closed);
    QVERIFY(!fixture.window->isVisible());
    QVERIFY(QFile::exists(fixture.profile() + "/" + ID + "/SequenceInfo.txt"));
    // It can be opened again without looking for it.
    QCOMPARE(fixture.window->parts().recentSequences->folders(), QStringList{fixture.profile() + "/" + ID});
}

QTEST_MAIN(tst_ClosingSequences)
#include "tst_ClosingSequences.moc"
