// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"
#include "result/ResultFolderLock.h"
#include "tests/safety/FailureBench.h"
#include "tests/safety/SafetyStudy.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/TestStudy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace failing;
using namespace safetystudy;

/// What stops a result or stands in its way, beside files that fail: questions, selections, other workspaces.
class tst_FailingFlows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_place = std::make_unique<QTemporaryDir>(); }
    void cleanup() { m_place.reset(); }
    void aDeclinedImagingAngleStopsTheFlow();
    void aListWithoutACurrentItemNeedsTwoImages();
    void aNoteOfAMegabyteIsKept();
    void aPictureThatCannotBeCalibratedIsNoResult();
    void aResultOfAResultOfAResult();
    void aFolderThatAnotherWritesIntoIsLeftAlone();
    void twoWorkspacesAtTheSameMomentMakeTwoResults();

private:
    std::unique_ptr<QTemporaryDir> m_place;
};

void tst_FailingFlows::aDeclinedImagingAngleStopsTheFlow()
{
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, "A"), qPrintable(bench.lastError()));
    QVERIFY(setLuminescent(bench, CLICK_B, "Imaging Angle", "90"));
    const auto operands = hashesBelow(bench.folder().study());
    {
        const DialogAnswerer user({QMessageBox::No});
        QVERIFY(!bench.press());
        QCOMPARE(user.count(), 1);
        QCOMPARE(user.shown().first().text,
                 QString("The two datasets have different imaging angles. Do you want to continue?"));
    }
    QCOMPARE(bench.failures(), QStringList{CLICK_INFO_FAILED});
    QVERIFY(noResultFolder(bench));
    {
        const DialogAnswerer user({QMessageBox::Yes});
        QVERIFY2(bench.press(), qPrintable(bench.lastError()));
        QCOMPARE(user.count(), 1);
    }
    QCOMPARE(bench.tool().result()->getClickNumber(), M);
    QCOMPARE(firstFaultOfResult(bench.resultFolder(M), true), QString());
    QCOMPARE(hashesBelow(bench.folder().study()), operands);
}

void tst_FailingFlows::aListWithoutACurrentItemNeedsTwoImages()
{
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, QString()), qPrintable(bench.lastError()));
    QListWidget *list = bench.tool().listB();
    {
        const QSignalBlocker quiet(list);
        list->setCurrentItem(nullptr);
    }
    QVERIFY(!bench.press());
    QVERIFY(bench.failures().contains("One or more dataset(s) is/are invalid..."));
    QVERIFY(!bench.tool().button("m_pDisplayBtn")->isEnabled());
    QVERIFY(noResultFolder(bench));
    QVERIFY2(bench.tool().select(CLICK_A, CLICK_B), qPrintable(bench.tool().why()));
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(firstFaultOfResult(bench.resultFolder(M), false), QString());
}

void tst_FailingFlows::aNoteOfAMegabyteIsKept()
{
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, "A"), qPrintable(bench.lastError()));
    QString note = "Sequence ID=X;Binning Factor=9;";
    while (note.size() < (1 << 20))
        note += QString("Remark %1=the mouse slept;").arg(note.size());
    QVERIFY(setLuminescent(bench, CLICK_A, "Igor Wave Note", note));
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(firstFaultOfResult(bench.resultFolder(M), true), QString());
    CPLClickInfo info;
    QCOMPARE(info.loadClickInfo(bench.resultFolder(M) + "ClickInfo.txt", false), ESTATUS_SUCCESS);
    QString kept;
    info["luminescent image"]->getValue("Igor Wave Note", &kept);
    QVERIFY(kept.startsWith("Binning Factor=4;" + note.mid(note.indexOf("Remark"))));
}

void tst_FailingFlows::aPictureThatCannotBeCalibratedIsNoResult()
{
    QList<ClickSpec> clicks = {specOf(CLICK_A), specOf(CLICK_B)};
    for (ClickSpec &click : clicks) {
        for (const QLatin1String key : {clickinfo::KEY_GAIN, clickinfo::KEY_QUANTUM_EFFICIENCY})
            click.cameraKeys.insert(key, QString());
    }
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start(clicks, QString()), qPrintable(bench.lastError()));
    bench.tool().sequence()->setActiveUnit(EUNIT_RADIANCE);
    QVERIFY2(bench.tool().select(CLICK_B, CLICK_A), qPrintable(bench.tool().why()));
    QVERIFY2(bench.tool().select(CLICK_A, CLICK_B), qPrintable(bench.tool().why()));
    QVERIFY(!bench.press());
    QVERIFY2(bench.isLogged({"The result has no pixels: A and B have no pixels.", clickinfo::KEY_GAIN}),
             qPrintable(bench.failures().join('\n')));
    QVERIFY(!QDir().exists(bench.resultFolder(M)));
    QVERIFY(!CVXSDataset::getDataset(M));
    QCOMPARE(knownResults(), QStringList());

    bench.tool().sequence()->setActiveUnit(EUNIT_COUNTS);
    QVERIFY2(bench.tool().select(CLICK_B, CLICK_A), qPrintable(bench.tool().why()));
    QVERIFY2(bench.tool().select(CLICK_A, CLICK_B), qPrintable(bench.tool().why()));
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(bench.tool().result()->getClickNumber(), M);
    QCOMPARE(firstFaultOfResult(bench.resultFolder(M), false), QString());
}

void tst_FailingFlows::aResultOfAResultOfAResult()
{
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, QString()), qPrintable(bench.lastError()));
    const auto operands = hashesBelow(bench.folder().study());
    QString operand = CLICK_A;
    QStringList made;
    for (int times = 1; times <= 3; ++times) {
        QVERIFY2(bench.tool().select(operand, CLICK_B), qPrintable(bench.tool().why()));
        QVERIFY2(bench.press(), qPrintable(bench.lastError()));
        const QString click = bench.tool().result()->getClickNumber();
        const QString folder = bench.resultFolder(click);
        made += click;
        // A - B - B - B, and the copies of the operands as they were taken.
        QString why;
        QVERIFY2(hasPixels(
                     folder + "luminescent.tif",
                     [times](int x, int y) { return countsA(x, y) - float(times) * countsB(x, y); }, &why),
                 qPrintable(why));
        QVERIFY2(hasPixels(
                     folder + "luminescentA.TIF",
                     [times](int x, int y) { return countsA(x, y) - float(times - 1) * countsB(x, y); },
                     &why),
                 qPrintable(why));
        CPLClickInfo info;
        QCOMPARE(info.loadClickInfo(folder + "ClickInfo.txt", false), ESTATUS_SUCCESS);
        QString from;
        info["luminescent image"]->getValue("Image Math A ClickNumber", &from);
        QCOMPARE(from, operand);
        // The user opens it in the sequence.
        QVERIFY2(bench.tool().closeResult(), qPrintable(bench.tool().why()));
        auto *dataset = CVXSDataset::open(folder, nullptr, nullptr);
        QVERIFY(dataset && bench.tool().sequence()->addDataset(dataset));
        QCoreApplication::processEvents();
        operand = click;
    }
    QCOMPARE(made, (QStringList{M, N, "AB_O20260102030406"}));
    QCOMPARE(hashesBelow(bench.folder().study()), operands);
    CVXSDataset::registerStoredDatasets(bench.folder().data());
    QCOMPARE(knownResults(), made);
}

void tst_FailingFlows::aFolderThatAnotherWritesIntoIsLeftAlone()
{
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, "A"), qPrintable(bench.lastError()));
    const QString half = bench.resultFolder(M) + "luminescentA.TIF";
    QVERIFY(QDir().mkpath(bench.resultFolder(M)) && writeFile(half, "half of a result"));
    const auto before = hashesBelow(bench.resultFolder(M));
    {
        ResultFolderLock other;
        QVERIFY(other.take(bench.resultFolder(M), 0));
        QVERIFY(!bench.press());
        QVERIFY2(bench.isLogged({M, "another workspace is writing"}),
                 qPrintable(bench.failures().join('\n')));
        QVERIFY(bench.failures().contains(CLICK_INFO_FAILED));
        QCOMPARE(firstHarm(before, hashesBelow(bench.resultFolder(M))), QString());
    }
    // Nobody's any more: neither that of a program that is gone nor one that does not say whose it is.
    QVERIFY(writeFile(bench.resultFolder(M) + ".writing", ""));
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(bench.tool().result()->getClickNumber(), M);
    QCOMPARE(firstFaultOfResult(bench.resultFolder(M), true), QString());
}

void tst_FailingFlows::twoWorkspacesAtTheSameMomentMakeTwoResults()
{
    const FlowFolder folder(m_place->path());
    QVERIFY(folder.make());
    for (int round = 0; round < 5; ++round) {
        const QStringList arguments = {CLICK_A, CLICK_B};
        const QList<FlowRun> both = folder.makeResultsAtOnce({arguments, arguments});
        QVERIFY2(both.at(0).isFinished, qPrintable(both.at(0).output));
        QVERIFY2(both.at(1).isFinished, qPrintable(both.at(1).output));
        QVERIFY2(both.at(0).resultClick != both.at(1).resultClick, qPrintable(both.at(0).resultClick));
        for (const FlowRun &run : both)
            QCOMPARE(firstFaultOfResult(run.resultFolder, false), QString());
    }
    QCOMPARE(folder.look().known.size(), 10);
}

QTEST_MAIN(tst_FailingFlows)
#include "tst_FailingFlows.moc"
