// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/support/Files.h"
#include "tests/window/result/ExpectedRecord.h"
#include "tests/window/result/ResultBench.h"

#include <QDir>
#include <QtTest>

/// What the result's AnalyzedClickInfo.txt says, and the status that tells of the last file read.
class tst_AnalyzedClickInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bench.reset(); }

    void theWholeRecord_data();
    void theWholeRecord();
    void bothOperandsBearTheUnitOfB_data();
    void bothOperandsBearTheUnitOfB();
    void aMissingSectionOfA_data();
    void aMissingSectionOfA();
    void withoutTheAnalyzedRecordOfA_data();
    void withoutTheAnalyzedRecordOfA();
    void anOperandWhoseRecordCannotBeRead_data();
    void anOperandWhoseRecordCannotBeRead();
    void anOperandWithoutALuminescentSection_data();
    void anOperandWithoutALuminescentSection();
    void withoutTheResultsOwnRecord_data();
    void withoutTheResultsOwnRecord();
    void aNameOfTheResultsOwnSectionCountsWhenThereIsOne();
    void aSaveThatFailsIsNotTold();

private:
    QString file() const { return m_bench->resultFile("AnalyzedClickInfo.txt"); }
    QString sourceA() const { return m_bench->clickInfo(ResultBench::clickA()); }
    QString sourceB() const { return m_bench->clickInfo(ResultBench::clickB()); }
    QString analyzedOfA() const { return m_bench->analyzed(ResultBench::clickA()); }
    /// The section as it stands in the expected record.
    static QStringList expected(const QString &key, const QString &from = QStringLiteral("A"));

    std::unique_ptr<ResultBench> m_bench;
};

void tst_AnalyzedClickInfo::init()
{
    m_bench = std::make_unique<ResultBench>();
    QVERIFY(m_bench->make());
    CVXSToolInfo info;
    info.reversed = true;
    info.brightness = -3;
    info.gamma = 1.5f;
    m_bench->datasetA()->setToolInfo(info);
    info.reversed = false;
    info.brightness = 12;
    info.gamma = 0.75f;
    m_bench->datasetB()->setToolInfo(info);
    CILPalette palette = m_bench->window()->m_resultImage.getPalette();
    palette.SetImageMinMax(12.5, 150.25);
    m_bench->window()->m_resultImage.setPalette(palette);
    m_bench->datasetA()->setUnit(EUNIT_COUNTS);
    m_bench->datasetB()->setUnit(EUNIT_RADIANCE);
    m_bench->choosePhotograph("A");
}

QStringList tst_AnalyzedClickInfo::expected(const QString &key, const QString &from)
{
    const QStringList lines = expectedrecord::analyzed(from);
    QStringList found;
    for (const QString &line : lines) {
        if (found.isEmpty() ? line.startsWith('[' + key + ']') : !line.isEmpty())
            found << line;
        else if (!found.isEmpty())
            break;
    }
    return found;
}

void tst_AnalyzedClickInfo::theWholeRecord_data()
{
    QTest::addColumn<QString>("from");
    QTest::newRow("without a photograph") << "";
    QTest::newRow("with A's photograph") << "A";
    QTest::newRow("with B's photograph") << "B";
}

void tst_AnalyzedClickInfo::theWholeRecord()
{
    QFETCH(QString, from);
    m_bench->choosePhotograph(from);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    recordtext::compare(recordtext::lines(file()), expectedrecord::analyzed(from));
}

void tst_AnalyzedClickInfo::bothOperandsBearTheUnitOfB_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("name");
    QTest::newRow("counts") << 0 << "counts";
    QTest::newRow("radiance") << 1 << "Radiance (Photons)";
    QTest::newRow("radiant efficiency") << 2 << "Radiant Efficiency";
    QTest::newRow("efficiency") << 3 << "efficiency";
}

void tst_AnalyzedClickInfo::bothOperandsBearTheUnitOfB()
{
    QFETCH(int, unit);
    QFETCH(QString, name);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    m_bench->datasetA()->setUnit(tag_edisplayunit((unit + 1) % EUNIT_COUNT));
    m_bench->datasetB()->setUnit(tag_edisplayunit(unit));
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), "luminescent A image").last(), "Intensity Calibration = " + name);
    QCOMPARE(recordtext::section(file(), "luminescent B image").last(), "Intensity Calibration = " + name);
}

void tst_AnalyzedClickInfo::aMissingSectionOfA_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QStringList>("section");
    QTest::newRow("ClickNumber") << QByteArray("ClickNumber")
                                 << QStringList{"[ClickNumber]: AB_M20260102030406",
                                                "Vexa Version = (this build)", "Folder On Disk ="};
    QTest::newRow("User Input") << QByteArray("User Input") << QStringList{"[User Input]"};
    QTest::newRow("Analysis User Input")
        << QByteArray("Analysis User Input") << QStringList{"[Analysis User Input]"};
    QTest::newRow("User Label Name Set")
        << QByteArray("User Label Name Set") << QStringList{"[User Label Name Set]"};
    QTest::newRow("ROIs") << QByteArray("ROIs") << QStringList{"[ROIs]"};
    for (const char *key :
         {"photographic image", "luminescent image", "luminescent A image", "luminescent B image"})
        QTest::newRow(key) << QByteArray(key) << expected(QString::fromLatin1(key));
    QTest::newRow("Graph Controls") << QByteArray("Graph Controls")
                                    << QStringList{"[Graph Controls]"} + expectedrecord::graphPairs("A");
}

void tst_AnalyzedClickInfo::aMissingSectionOfA()
{
    QFETCH(QByteArray, key);
    QFETCH(QStringList, section);
    QVERIFY(recordtext::removeSection(analyzedOfA(), key));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), QString::fromLatin1(key)), section);
    QCOMPARE(recordtext::headings(file()),
             QStringList({"ClickNumber", "User Input", "Analysis User Input", "photographic image",
                          "User Label Name Set", "luminescent image", "luminescent A image",
                          "luminescent B image", "Graph Controls", "ROIs"}));
}

void tst_AnalyzedClickInfo::withoutTheAnalyzedRecordOfA_data()
{
    QTest::addColumn<QByteArray>("text"); // null: no file
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("bad syntax") << QByteArray("not a record\n");
}

void tst_AnalyzedClickInfo::withoutTheAnalyzedRecordOfA()
{
    QFETCH(QByteArray, text);
    QVERIFY(QFile::remove(analyzedOfA()));
    QVERIFY(text.isNull() || writeFile(analyzedOfA(), text));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    QStringList lines{"[ClickNumber]: AB_M20260102030406",
                      "Vexa Version = (this build)",
                      "Folder On Disk =",
                      "",
                      "[User Input]",
                      "",
                      "[Analysis User Input]",
                      ""};
    lines += expected("photographic image") + QStringList{"", "[User Label Name Set]", ""};
    lines += expected("luminescent image") + QStringList{""};
    lines += expected("luminescent A image") + QStringList{""};
    lines += expected("luminescent B image") + QStringList{"", "[Graph Controls]"};
    lines += expectedrecord::graphPairs("A") + QStringList{"", "[ROIs]", ""};
    recordtext::compare(recordtext::lines(file()), lines);
}

void tst_AnalyzedClickInfo::anOperandWhoseRecordCannotBeRead_data()
{
    QTest::addColumn<bool>("ofA");
    QTest::addColumn<QByteArray>("text"); // null: no file
    QTest::newRow("A's is gone") << true << QByteArray();
    QTest::newRow("A's has bad syntax") << true << QByteArray("not a record\n");
    QTest::newRow("B's is gone") << false << QByteArray();
    QTest::newRow("B's has bad syntax") << false << QByteArray("not a record\n");
}

void tst_AnalyzedClickInfo::anOperandWhoseRecordCannotBeRead()
{
    QFETCH(bool, ofA);
    QFETCH(QByteArray, text);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const QString path = ofA ? sourceA() : sourceB();
    QVERIFY(QFile::remove(path));
    QVERIFY(text.isNull() || writeFile(path, text));
    // The last file read is the result's own record, and that can be read.
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    const QString letter = ofA ? "A" : "B";
    QCOMPARE(recordtext::section(file(), "luminescent " + letter + " image"),
             QStringList({"[luminescent " + letter + " image]: luminescent" + letter + ".TIF",
                          "Old = operand " + letter, "Intensity Calibration = Radiance (Photons)"}));
    const QString other = ofA ? "B" : "A";
    QCOMPARE(recordtext::section(file(), "luminescent " + other + " image"),
             expected("luminescent " + other + " image"));
}

void tst_AnalyzedClickInfo::anOperandWithoutALuminescentSection_data()
{
    QTest::addColumn<bool>("ofA");
    QTest::newRow("A") << true;
    QTest::newRow("B") << false;
}

void tst_AnalyzedClickInfo::anOperandWithoutALuminescentSection()
{
    QFETCH(bool, ofA);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QVERIFY(recordtext::removeSection(ofA ? sourceA() : sourceB(), "luminescent image"));
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    const QString letter = ofA ? "A" : "B";
    QCOMPARE(recordtext::section(file(), "luminescent " + letter + " image"),
             QStringList({"[luminescent " + letter + " image]: luminescent" + letter + ".TIF",
                          "Old = operand " + letter, "Intensity Calibration = Radiance (Photons)"}));
}

void tst_AnalyzedClickInfo::withoutTheResultsOwnRecord_data()
{
    QTest::addColumn<QByteArray>("text"); // null: no file
    QTest::addColumn<int>("status");
    QTest::newRow("it is gone") << QByteArray() << int(ESTATUS_FILE_NOT_FOUND);
    QTest::newRow("it is damaged") << QByteArray("not a record\n") << int(ESTATUS_BAD_SYNTAX);
}

void tst_AnalyzedClickInfo::withoutTheResultsOwnRecord()
{
    QFETCH(QByteArray, text);
    QFETCH(int, status);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QVERIFY(QFile::remove(m_bench->resultFile("ClickInfo.txt")));
    QVERIFY(text.isNull() || writeFile(m_bench->resultFile("ClickInfo.txt"), text));
    QCOMPARE(int(m_bench->writeAnalyzed()), status);
    // Written all the same, from what A's analyzed record holds.
    QStringList lines = expectedrecord::analyzed(QString()).mid(0, 12);
    lines += QStringList{"[photographic image]: old photograph.tif", "Old = photograph",           "",
                         "[User Label Name Set]: analysed labels",   "Label 1 = Animal, analysed", "",
                         "[luminescent image]: old luminescent.tif", "Old = luminescent",          ""} +
             expected("luminescent A image") + QStringList{""} + expected("luminescent B image") +
             QStringList{"", "[Graph Controls]: old graph", "Old = graph", "", "[ROIs]: regions of A", ""};
    recordtext::compare(recordtext::lines(file()), lines);
}

void tst_AnalyzedClickInfo::aNameOfTheResultsOwnSectionCountsWhenThereIsOne()
{
    QVERIFY(replaceInFile(sourceA(), "[luminescent image]: luminescent.tif", "[luminescent image]"));
    QVERIFY(replaceInFile(sourceA(), "[photographic image]: photograph.tif", "[photographic image]:"));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), "luminescent image").first(),
             QString("[luminescent image]: old luminescent.tif"));
    QCOMPARE(recordtext::section(file(), "photographic image").first(), QString("[photographic image]:"));
}

void tst_AnalyzedClickInfo::aSaveThatFailsIsNotTold()
{
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QVERIFY(QDir().mkpath(file())); // a folder in the file's place
    QCOMPARE(m_bench->writeAnalyzed(), ESTATUS_SUCCESS);
    QVERIFY(QDir(file()).exists());
}

QTEST_MAIN(tst_AnalyzedClickInfo)
#include "tst_AnalyzedClickInfo.moc"
