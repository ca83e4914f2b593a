// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/window/result/ExpectedRecord.h"
#include "tests/window/result/ResultBench.h"

#include <QDir>
#include <QtTest>
#include <sys/stat.h>

/// The result's folder, the images in it, and what stops a result from being written.
class tst_ResultFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeBench(QStringLiteral("data")); }
    void cleanup() { m_bench.reset(); }

    void imagesOfAResult_data();
    void imagesOfAResult();
    void anOperandsImageThatIsMissingIsLeftOut_data();
    void anOperandsImageThatIsMissingIsLeftOut();
    void withoutAPathOfBItsImageIsLeftOut();
    void resultImageIsTheComputedOne();
    void aDataFolderInLatin1();
    void operandsStayAsTheyAre();

    void folderIsEmptiedOfFilesOnly();
    void withoutAResultNumberNothingIsEmptied();
    void aFileThatCannotBeRemovedStopsTheRun();
    void filesAreRemovedInTheOrderOfTheirNames();
    void aFileInPlaceOfTheFolder();
    void aRecordThatCannotBeSavedEndsWithoutImages();
    void withEverySuffixTakenNothingIsPrepared();

    void anAngleThatIsRefusedWritesNothing_data();
    void anAngleThatIsRefusedWritesNothing();
    void operandAThatCannotBeLoaded_data();
    void operandAThatCannotBeLoaded();
    void operandBThatCannotBeLoadedLeavesThePhotographOfA_data();
    void operandBThatCannotBeLoadedLeavesThePhotographOfA();

private:
    void makeBench(const QString &dataFolder);
    QStringList entries(const QString &folder) const;
    QString operandFile(const QString &click, const char *name) const
    {
        return m_bench->folderOf(click) + QLatin1String(name);
    }

    std::unique_ptr<ResultBench> m_bench;
};

void tst_ResultFiles::makeBench(const QString &dataFolder)
{
    m_bench.reset();
    m_bench = std::make_unique<ResultBench>(dataFolder);
    QVERIFY(m_bench->make());
    m_bench->choosePhotograph(QString());
}

QStringList tst_ResultFiles::entries(const QString &folder) const
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

void tst_ResultFiles::imagesOfAResult_data()
{
    QTest::addColumn<QString>("from");
    QTest::newRow("without a photograph") << "";
    QTest::newRow("with A's photograph") << "A";
    QTest::newRow("with B's photograph") << "B";
}

void tst_ResultFiles::imagesOfAResult()
{
    QFETCH(QString, from);
    m_bench->choosePhotograph(from);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QStringList expected{"ClickInfo.txt", "luminescent.tif", "luminescentA.TIF", "luminescentB.TIF"};
    if (!from.isEmpty())
        expected << "photograph.tif";
    QCOMPARE(entries(m_bench->resultFolder()), expected);
    QCOMPARE(readFile(m_bench->resultFile("luminescentA.TIF")),
             readFile(operandFile(ResultBench::clickA(), "luminescent.tif")));
    QCOMPARE(readFile(m_bench->resultFile("luminescentB.TIF")),
             readFile(operandFile(ResultBench::clickB(), "luminescent.tif")));
    QVERIFY(readFile(operandFile(ResultBench::clickA(), "photograph.tif")) !=
            readFile(operandFile(ResultBench::clickB(), "photograph.tif")));
    if (!from.isEmpty())
        QCOMPARE(readFile(m_bench->resultFile("photograph.tif")),
                 readFile(operandFile(from == "A" ? ResultBench::clickA() : ResultBench::clickB(),
                                      "photograph.tif")));
}

void tst_ResultFiles::anOperandsImageThatIsMissingIsLeftOut_data()
{
    QTest::addColumn<bool>("ofA");
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<QString>("leftOut");
    QTest::newRow("A's luminescent image") << true << QByteArray("luminescent.tif") << "luminescentA.TIF";
    QTest::newRow("B's luminescent image") << false << QByteArray("luminescent.tif") << "luminescentB.TIF";
    QTest::newRow("A's photograph") << true << QByteArray("photograph.tif") << "photograph.tif";
}

void tst_ResultFiles::anOperandsImageThatIsMissingIsLeftOut()
{
    QFETCH(bool, ofA);
    QFETCH(QByteArray, missing);
    QFETCH(QString, leftOut);
    m_bench->choosePhotograph("A");
    QVERIFY(QFile::remove(operandFile(ofA ? ResultBench::clickA() : ResultBench::clickB(), missing)));
    LogCatcher log;
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QStringList expected{"ClickInfo.txt", "luminescent.tif", "luminescentA.TIF", "luminescentB.TIF",
                         "photograph.tif"};
    expected.removeOne(leftOut);
    QCOMPARE(entries(m_bench->resultFolder()), expected);
    QCOMPARE(log.toolEntries().size(), 0);
}

void tst_ResultFiles::withoutAPathOfBItsImageIsLeftOut()
{
    m_bench->window()->agreesToAngles = true; // there is no angle of B
    m_bench->choosePhotograph("B");
    QCOMPARE(m_bench->window()->writeResultClickInfo(m_bench->clickInfo(ResultBench::clickA()), QString()),
             ESTATUS_SUCCESS);
    QCOMPARE(entries(m_bench->resultFolder()),
             QStringList({"ClickInfo.txt", "luminescent.tif", "luminescentA.TIF"}));
    // Its record cannot be read either: the section keeps A's content.
    QCOMPARE(recordtext::section(m_bench->resultFile("ClickInfo.txt"), "photographic image").mid(1),
             expectedrecord::photographPairs("A"));
}

void tst_ResultFiles::resultImageIsTheComputedOne()
{
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    CILImage loaded;
    QCOMPARE(loaded.loadTIFF(QFile::encodeName(m_bench->resultFile("luminescent.tif")).constData()),
             EIL_SUCCESS);
    QCOMPARE(loaded.getType(), VXS_FLOAT);
    QCOMPARE(loaded.getWidth(), 32u);
    QCOMPARE(loaded.getHeight(), 32u);
    for (std::uint32_t y = 0; y < 32; ++y)
        for (std::uint32_t x = 0; x < 32; ++x)
            QCOMPARE(loaded.pixelAt(x, y), 75.0 + double(x) + 2.0 * double(y));
}

void tst_ResultFiles::aDataFolderInLatin1()
{
    makeBench(QStringLiteral("données"));
    m_bench->choosePhotograph("A");
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(entries(m_bench->resultFolder()),
             QStringList({"ClickInfo.txt", "luminescent.tif", "luminescentA.TIF", "luminescentB.TIF",
                          "photograph.tif"}));
    CILImage loaded;
    QCOMPARE(loaded.loadTIFF(QFile::encodeName(m_bench->resultFile("luminescent.tif")).constData()),
             EIL_SUCCESS);
    QCOMPARE(loaded.pixelAt(31, 31), 168.0);
}

void tst_ResultFiles::operandsStayAsTheyAre()
{
    m_bench->choosePhotograph("B");
    const QString sequence = m_bench->bound().sequence()->getSequenceInfoPath();
    const QMap<QString, QByteArray> before = recordtext::hashes(sequence);
    QVERIFY(before.size() >= 9);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::hashes(sequence), before);
}

void tst_ResultFiles::folderIsEmptiedOfFilesOnly()
{
    const QString folder = m_bench->resultFolder();
    const QString elsewhere = m_bench->dataPath() + "/linked.txt";
    QVERIFY(QDir().mkpath(folder + "sub"));
    QVERIFY(writeFile(folder + "AnalyzedClickInfo.txt", "left over"));
    QVERIFY(writeFile(folder + "photograph.tif", "left over"));
    QVERIFY(writeFile(folder + "sub/notes.txt", "kept"));
    QVERIFY(writeFile(elsewhere, "kept"));
    QVERIFY(QFile::link(elsewhere, folder + "link.txt"));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(entries(folder), QStringList({"ClickInfo.txt", "luminescent.tif", "luminescentA.TIF",
                                           "luminescentB.TIF", "sub"}));
    QCOMPARE(readFile(folder + "sub/notes.txt"), QByteArray("kept"));
    QCOMPARE(readFile(elsewhere), QByteArray("kept"));
}

void tst_ResultFiles::withoutAResultNumberNothingIsEmptied()
{
    QVERIFY(writeFile(m_bench->dataPath() + "/notes.txt", "kept"));
    QCOMPARE(m_bench->window()->prepareResultFolder(), ESTATUS_SUCCESS);
    QCOMPARE(entries(m_bench->dataPath()), QStringList{"notes.txt"});
}

void tst_ResultFiles::aFileThatCannotBeRemovedStopsTheRun()
{
    // Files of the process table are listed like others, and nobody can remove them.
    QString folder = m_bench->resultFolder();
    folder.chop(1);
    QVERIFY(QFile::link(QStringLiteral("/proc/self/fdinfo"), folder));
    QVERIFY(!QDir(folder).entryList(QDir::Files).isEmpty());
    QCOMPARE(int(m_bench->writeRecord()), 31);
    QCOMPARE(entries(m_bench->dataPath()), QStringList{ResultBench::resultNumber()});
}

void tst_ResultFiles::filesAreRemovedInTheOrderOfTheirNames()
{
    if (::geteuid() != 0)
        QSKIP("only root can give a folder files of two owners");
    // In a sticky folder of another user, only the owner of a file can remove it.
    const QString folder = m_bench->resultFolder();
    QVERIFY(QDir().mkpath(folder));
    for (const char *name : {"a.txt", "b.txt", "c.txt"}) {
        QVERIFY(writeFile(folder + QLatin1String(name), "left over"));
        const QByteArray path = QFile::encodeName(folder + QLatin1String(name));
        if (qstrcmp(name, "b.txt") != 0)
            QCOMPARE(::chown(path.constData(), 65534, 65534), 0);
    }
    QCOMPARE(::chmod(QFile::encodeName(folder).constData(), 01777), 0);
    const auto open = [](const QString &path) {
        return ::chmod(QFile::encodeName(path).constData(), 0777) == 0;
    };
    QVERIFY(open(m_bench->dataPath()) && open(m_bench->dataPath() + "/.."));
    const QString sequence = m_bench->bound().sequence()->getSequenceInfoPath();
    QVERIFY(open(sequence) && open(sequence + ".."));
    const QString profile = QFile::decodeName(qgetenv("VEXA_PROFILE_DIR"));
    QVERIFY(!profile.isEmpty() && open(profile));
    QVERIFY(!QFile::exists(profile + "/settings.ini") || open(profile + "/settings.ini"));
    QVERIFY(holdsForUnprivilegedUser([this] { return int(m_bench->writeRecord()) == 31; }));
    QCOMPARE(entries(folder), QStringList({"b.txt", "c.txt"}));
}

void tst_ResultFiles::aFileInPlaceOfTheFolder()
{
    QString folder = m_bench->resultFolder();
    folder.chop(1);
    QVERIFY(writeFile(folder, "somebody's file"));
    QVERIFY(m_bench->writeRecord() != ESTATUS_SUCCESS);
    QCOMPARE(readFile(folder), QByteArray("somebody's file"));
    QCOMPARE(entries(m_bench->dataPath()), QStringList{ResultBench::resultNumber()});
}

void tst_ResultFiles::aRecordThatCannotBeSavedEndsWithoutImages()
{
    // A sub-folder stays when the folder is emptied, and no file can take its place.
    QVERIFY(QDir().mkpath(m_bench->resultFile("ClickInfo.txt")));
    LogCatcher log;
    QCOMPARE(m_bench->writeRecord(), ESTATUS_FILE_NOT_WRITABLE);
    QCOMPARE(entries(m_bench->resultFolder()), QStringList{"ClickInfo.txt"});
    QVERIFY(entries(m_bench->resultFile("ClickInfo.txt")).isEmpty());
    QVERIFY(!log.entries().isEmpty());
}

void tst_ResultFiles::withEverySuffixTakenNothingIsPrepared()
{
    std::vector<std::unique_ptr<CVXSDataset>> taken;
    for (int n = 13; n <= 103; ++n) {
        taken.push_back(std::make_unique<CVXSDataset>("AB_" + m_bench->window()->letterSuffixFromValue(n) +
                                                      "20260102030406"));
        QVERIFY(taken.back()->registerDataset());
    }
    LogCatcher log;
    QCOMPARE(int(m_bench->writeRecord()), 31);
    QCOMPARE(entries(m_bench->dataPath()), QStringList());
    int failures = 0;
    for (const LogEntry &line : log.entries())
        failures += line.level == ELOG_FAILURE;
    QVERIFY(failures >= 1);
    // With one of them closed there is a name again.
    taken.pop_back();
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(entries(m_bench->dataPath()), QStringList{"AB_ZZZY20260102030406"});
}

void tst_ResultFiles::anAngleThatIsRefusedWritesNothing_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("status");
    QTest::newRow("No") << int(QMessageBox::No) << 46;
    QTest::newRow("Yes") << int(QMessageBox::Yes) << 0;
}

void tst_ResultFiles::anAngleThatIsRefusedWritesNothing()
{
    QFETCH(int, answer);
    QFETCH(int, status);
    QVERIFY(
        replaceInFile(m_bench->clickInfo(ResultBench::clickB()), "Imaging Angle = 0", "Imaging Angle = 90"));
    DialogAnswerer answerer({answer});
    QCOMPARE(int(m_bench->writeRecord()), status);
    QCOMPARE(answerer.count(), 1);
    QCOMPARE(entries(m_bench->dataPath()).isEmpty(), status != 0);
}

void tst_ResultFiles::operandAThatCannotBeLoaded_data()
{
    QTest::addColumn<QByteArray>("text"); // null: no file
    QTest::addColumn<bool>("anglesCompared");
    QTest::addColumn<int>("status");
    QTest::newRow("no file") << QByteArray() << false << int(ESTATUS_FILE_NOT_FOUND);
    QTest::newRow("bad syntax") << QByteArray("not a record\n") << false << int(ESTATUS_BAD_SYNTAX);
    QTest::newRow("not UTF-8") << QByteArray("[luminescent image]\nA = \xff\n") << false
                               << int(ESTATUS_BAD_SYNTAX);
    QTest::newRow("without a file the comparison of angles stops it") << QByteArray() << true << 46;
    QTest::newRow("with bad syntax as well") << QByteArray("not a record\n") << true << 46;
}

void tst_ResultFiles::operandAThatCannotBeLoaded()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, anglesCompared);
    QFETCH(int, status);
    const QString path = m_bench->clickInfo(ResultBench::clickA());
    QVERIFY(QFile::remove(path));
    QVERIFY(text.isNull() || writeFile(path, text));
    m_bench->window()->agreesToAngles = !anglesCompared;
    DialogAnswerer answerer;
    QCOMPARE(int(m_bench->writeRecord()), status);
    QCOMPARE(answerer.count(), 0);
    QCOMPARE(entries(m_bench->dataPath()), QStringList());
}

void tst_ResultFiles::operandBThatCannotBeLoadedLeavesThePhotographOfA_data()
{
    QTest::addColumn<QByteArray>("text"); // null: no file
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("bad syntax") << QByteArray("[photographic image]: broken\nnot a pair\n");
}

void tst_ResultFiles::operandBThatCannotBeLoadedLeavesThePhotographOfA()
{
    QFETCH(QByteArray, text);
    const QString path = m_bench->clickInfo(ResultBench::clickB());
    QVERIFY(QFile::remove(path));
    QVERIFY(text.isNull() || writeFile(path, text));
    m_bench->window()->agreesToAngles = true;
    m_bench->choosePhotograph("B");
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const QString file = m_bench->resultFile("ClickInfo.txt");
    QCOMPARE(recordtext::section(file, "photographic image"),
             QStringList{"[photographic image]: photograph.tif"} + expectedrecord::photographPairs("A"));
    // The choice is B's all the same.
    QCOMPARE(recordtext::value(file, "luminescent image", "Image Math Photo ClickNumber"),
             ResultBench::clickB());
    QCOMPARE(readFile(m_bench->resultFile("photograph.tif")),
             readFile(operandFile(ResultBench::clickB(), "photograph.tif")));
}

QTEST_MAIN(tst_ResultFiles)
#include "tst_ResultFiles.moc"
