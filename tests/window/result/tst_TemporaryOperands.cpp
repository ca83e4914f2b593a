// SPDX-License-Identifier: MIT
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/window/result/FlowFixture.h"

namespace {

const QString CLICK_C = QStringLiteral("AB20260102030608");
const QString CLICK_D = QStringLiteral("AB20260102030709");

} // namespace

/// Operands that lie only in memory: their copies on disk while a result is made of them.
class tst_TemporaryOperands : public FlowFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { tearDown(); }

    void copiesAreThereWhileTheResultIsWritten_data();
    void copiesAreThereWhileTheResultIsWritten();
    void bothFoldersGoAlsoWhenOneOperandNeededThem_data();
    void bothFoldersGoAlsoWhenOneOperandNeededThem();
    void withOperandsOnDiskNothingIsMadeOrDeleted();
    void copiesStayOnAFailure_data();
    void copiesStayOnAFailure();
    void copiesAreGoneBeforeTheLoad();
    void whatIsOnlyInMemoryIsStillToBeSaved();

private:
    /// Adds a click to the saved sequence, in memory only.
    CVXSDataset *addInMemory(const QString &click, float counts);
    void select(const QString &a, const QString &b);

    CVXSDataset *m_c = nullptr;
    CVXSDataset *m_d = nullptr;
};

void tst_TemporaryOperands::init()
{
    setUp();
    m_bench->bound().show();
    m_c = addInMemory(CLICK_C, 1000.0f);
    m_d = addInMemory(CLICK_D, 400.0f);
    QVERIFY(m_c && m_d);
    QCOMPARE(m_c->getDatasetType(), int(EDATASET_IN_MEMORY));
    QCOMPARE(m_d->getDatasetType(), int(EDATASET_IN_MEMORY));
    QCOMPARE(m_bench->datasetA()->getDatasetType(), int(EDATASET_ACQUIRED));
    m_bench->choosePhotograph(QString());
}

CVXSDataset *tst_TemporaryOperands::addInMemory(const QString &click, float counts)
{
    ClickSpec spec;
    spec.clickNumber = click;
    spec.counts = [counts](int x, int) { return counts + float(x); };
    spec.photograph = [](int x, int y) { return float(x + y); };
    spec.luminescentKeys.insert("Imaging Angle", "0");
    return m_bench->bound().study().add(spec);
}

void tst_TemporaryOperands::select(const QString &a, const QString &b)
{
    const auto choose = [](QListWidget *list, const QString &text) {
        const auto items = list->findItems(text, Qt::MatchExactly);
        QCOMPARE(items.size(), 1);
        list->setCurrentItem(items.first());
    };
    choose(window()->m_pListBoxA, a);
    choose(window()->m_pListBoxB, b);
    QVERIFY(window()->m_pDatasetA && window()->m_pDatasetB);
    QVERIFY(window()->viewImage(2));
    m_bench->choosePhotograph(QString());
}

void tst_TemporaryOperands::copiesAreThereWhileTheResultIsWritten_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::newRow("A in memory") << CLICK_C << ResultBench::clickB();
    QTest::newRow("B in memory") << ResultBench::clickA() << CLICK_D;
    QTest::newRow("both in memory") << CLICK_C << CLICK_D;
    QTest::newRow("the same click twice") << CLICK_C << CLICK_C;
}

void tst_TemporaryOperands::copiesAreThereWhileTheResultIsWritten()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    select(a, b);
    m_bench->choosePhotograph("A");
    QStringList during;
    window()->beforeAnalyzed = [&] {
        for (const QString &click : {CLICK_C, CLICK_D}) {
            const QDir copy(tempFolder(click) + "/" + click);
            if (copy.exists("ClickInfo.txt") && copy.exists("AnalyzedClickInfo.txt") &&
                copy.exists("luminescent.tif") && copy.exists("photograph.tif"))
                during << click;
        }
        QVERIFY(!QDir(tempFolder(ResultBench::clickA())).exists());
        QVERIFY(!QDir(tempFolder(ResultBench::clickB())).exists());
    };
    press();
    QCOMPARE(failures(), QStringList());
    QCOMPARE(requests().size(), 1);
    QCOMPARE(during.contains(CLICK_C), a == CLICK_C);
    QCOMPARE(during.contains(CLICK_D), b == CLICK_D);
    // The result has images and records of what lay in memory.
    const QString folder = m_bench->dataPath() + "/AB_M" + a.mid(2) + "/";
    QCOMPARE(QDir(folder).entryList(QDir::Files, QDir::Name),
             QStringList({"AnalyzedClickInfo.txt", "ClickInfo.txt", "luminescent.tif", "luminescentA.TIF",
                          "luminescentB.TIF", "photograph.tif"}));
    CILImage copyA;
    QCOMPARE(copyA.loadTIFF(QFile::encodeName(folder + "luminescentA.TIF").constData()), EIL_SUCCESS);
    QCOMPARE(copyA.pixelAt(1, 0), a == CLICK_C ? 1001.0 : 101.0);
    CILImage copyB;
    QCOMPARE(copyB.loadTIFF(QFile::encodeName(folder + "luminescentB.TIF").constData()), EIL_SUCCESS);
    QCOMPARE(copyB.pixelAt(1, 0), b == CLICK_C ? 1001.0 : b == CLICK_D ? 401.0 : 10.0);
    QCOMPARE(recordtext::headings(folder + "AnalyzedClickInfo.txt").size(), 10);
    // And the operands are where they were.
    QCOMPARE(m_c->getDatasetType(), int(EDATASET_IN_MEMORY));
    QCOMPARE(m_d->getDatasetType(), int(EDATASET_IN_MEMORY));
    QCOMPARE(m_c->getFolderPath(), QString());
    QCOMPARE(m_d->getFolderPath(), QString());
}

void tst_TemporaryOperands::bothFoldersGoAlsoWhenOneOperandNeededThem_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::newRow("only B in memory") << ResultBench::clickA() << CLICK_D;
    QTest::newRow("only A in memory") << CLICK_C << ResultBench::clickB();
    QTest::newRow("both in memory") << CLICK_C << CLICK_D;
}

void tst_TemporaryOperands::bothFoldersGoAlsoWhenOneOperandNeededThem()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    select(a, b);
    for (const QString &click : {a, b}) {
        QVERIFY(QDir().mkpath(tempFolder(click) + "/sub"));
        QVERIFY(writeFile(tempFolder(click) + "/sub/left over.txt", "left over"));
    }
    press();
    QCOMPARE(failures(), QStringList());
    QVERIFY(!QDir(tempFolder(a)).exists());
    QVERIFY(!QDir(tempFolder(b)).exists());
}

void tst_TemporaryOperands::withOperandsOnDiskNothingIsMadeOrDeleted()
{
    select(ResultBench::clickA(), ResultBench::clickB());
    const QString left = tempFolder(ResultBench::clickA());
    QVERIFY(QDir().mkpath(left));
    QVERIFY(writeFile(left + "/left over.txt", "left over"));
    press();
    QCOMPARE(requests().size(), 1);
    QCOMPARE(QDir(left).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"left over.txt"});
    QVERIFY(!QDir(tempFolder(ResultBench::clickB())).exists());
}

void tst_TemporaryOperands::copiesStayOnAFailure_data()
{
    QTest::addColumn<bool>("analyzed");
    QTest::addColumn<QString>("message");
    QTest::newRow("of the record") << false << "ClickInfo creation failed";
    QTest::newRow("of the analyzed record") << true << "Analyzed ClickInfo creation failed";
}

void tst_TemporaryOperands::copiesStayOnAFailure()
{
    QFETCH(bool, analyzed);
    QFETCH(QString, message);
    select(CLICK_C, CLICK_D);
    const QString folder = m_bench->dataPath() + "/AB_M" + CLICK_C.mid(2) + "/";
    if (analyzed)
        window()->beforeAnalyzed = [&] { QVERIFY(QFile::remove(folder + "ClickInfo.txt")); };
    else
        QVERIFY(QDir().mkpath(folder + "ClickInfo.txt"));
    press();
    QCOMPARE(failures().last(), message);
    QVERIFY(requests().isEmpty());
    QVERIFY(QFile::exists(tempFolder(CLICK_C) + "/" + CLICK_C + "/ClickInfo.txt"));
    QVERIFY(QFile::exists(tempFolder(CLICK_D) + "/" + CLICK_D + "/ClickInfo.txt"));
    QCOMPARE(m_c->getDatasetType(), int(EDATASET_IN_MEMORY));
    // The next run, without a failure, takes them along.
    window()->beforeAnalyzed = nullptr;
    QDir(folder).removeRecursively();
    press();
    QCOMPARE(requests().size(), 1);
    QVERIFY(!QDir(tempFolder(CLICK_C)).exists());
    QVERIFY(!QDir(tempFolder(CLICK_D)).exists());
}

void tst_TemporaryOperands::copiesAreGoneBeforeTheLoad()
{
    select(CLICK_C, CLICK_D);
    m_receiver->answer = ESTATUS_FAILURE;
    bool gone = false;
    m_receiver->onRequest = [&] {
        gone = !QDir(tempFolder(CLICK_C)).exists() && !QDir(tempFolder(CLICK_D)).exists();
    };
    press();
    QVERIFY(gone);
    QCOMPARE(failures(), QStringList{"Loading Failed"});
    QVERIFY(QFile::exists(m_bench->dataPath() + "/AB_M" + CLICK_C.mid(2) + "/AnalyzedClickInfo.txt"));
}

void tst_TemporaryOperands::whatIsOnlyInMemoryIsStillToBeSaved()
{
    select(CLICK_C, CLICK_D);
    const bool modified = m_c->isModified();
    press();
    QCOMPARE(requests().size(), 1);
    QCOMPARE(m_c->isModified(), modified);
    QVERIFY(m_bench->bound().study().save());
    const QString folder = sequence()->getSequenceInfoPath() + CLICK_C + "/";
    QCOMPARE(m_c->getFolderPath(), folder);
    QCOMPARE(m_c->getDatasetType(), int(EDATASET_ACQUIRED));
    QVERIFY(QFile::exists(folder + "ClickInfo.txt"));
    CILImage saved;
    QCOMPARE(saved.loadTIFF(QFile::encodeName(folder + "luminescent.tif").constData()), EIL_SUCCESS);
    QCOMPARE(saved.pixelAt(5, 5), 1005.0);
    QVERIFY(QFile::exists(folder + "photograph.tif"));
    QVERIFY(!QDir(tempFolder(CLICK_C)).exists());
}

QTEST_MAIN(tst_TemporaryOperands)
#include "tst_TemporaryOperands.moc"
