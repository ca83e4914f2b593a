// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/Files.h"
#include "tests/support/Rows.h"
#include "tests/window/result/ExpectedRecord.h"
#include "tests/window/result/ResultBench.h"

#include <QLocale>
#include <QtTest>

/// What the result's ClickInfo.txt says, written by a bound window from records on disk.
class tst_ResultClickInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theWholeRecord_data();
    void theWholeRecord();
    void photographNeedsBothTheCheckBoxAndTheChoice_data();
    void photographNeedsBothTheCheckBoxAndTheChoice();
    void whatTheWidgetsShowIsWritten_data();
    void whatTheWidgetsShowIsWritten();
    void correctionsAreThoseOfA_data();
    void correctionsAreThoseOfA();
    void luminescentSection_data();
    void luminescentSection();
    void binningFactorIsTruncated_data();
    void binningFactorIsTruncated();
    void photographSection_data();
    void photographSection();
    void photographOfBTakesItsNameFromB_data();
    void photographOfBTakesItsNameFromB();
    void aMissingSectionIsThereAndEmpty_data();
    void aMissingSectionIsThereAndEmpty();
    void keysOfTheSequenceGoInAnyCase();
    void limitsThatTheUserGaveAnOperandAreNotTheResults();
    void otherTextsComeBackUnchanged_data();
    void otherTextsComeBackUnchanged();
    void aNoteOfOneMegabyte();

private:
    QString file() const { return m_bench->resultFile("ClickInfo.txt"); }
    QString sourceA() const { return m_bench->clickInfo(ResultBench::clickA()); }
    QString sourceB() const { return m_bench->clickInfo(ResultBench::clickB()); }
    static QStringList between(const QStringList &lines, const QString &first, const QString &last);

    std::unique_ptr<ResultBench> m_bench;
};

void tst_ResultClickInfo::init()
{
    m_bench = std::make_unique<ResultBench>();
    QVERIFY(m_bench->make());
    CVXSToolInfo info;
    info.reversed = true;
    info.logarithmic = false;
    info.brightness = -3;
    info.gamma = 1.5f;
    m_bench->datasetA()->setToolInfo(info);
    info.reversed = false;
    info.logarithmic = true;
    info.brightness = 12;
    info.gamma = 0.75f;
    m_bench->datasetB()->setToolInfo(info);
    CILPalette palette = m_bench->window()->m_resultImage.getPalette();
    palette.SetImageMinMax(12.5, 150.25);
    m_bench->window()->m_resultImage.setPalette(palette);
    m_bench->choosePhotograph(QString());
}

void tst_ResultClickInfo::cleanup()
{
    m_bench.reset();
    QLocale::setDefault(QLocale::c());
}

// The lines from the first that begins with `first` to the next that begins with `last`, both included.
QStringList tst_ResultClickInfo::between(const QStringList &lines, const QString &first, const QString &last)
{
    QStringList found;
    for (const QString &line : lines) {
        if (found.isEmpty() && !line.startsWith(first))
            continue;
        found << line;
        if (line.startsWith(last))
            break;
    }
    return found;
}

void tst_ResultClickInfo::theWholeRecord_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<bool>("german");
    QTest::newRow("without a photograph") << "" << false;
    QTest::newRow("with A's photograph") << "A" << false;
    QTest::newRow("with B's photograph") << "B" << false;
    QTest::newRow("with B's photograph where the user writes a decimal comma") << "B" << true;
}

void tst_ResultClickInfo::theWholeRecord()
{
    QFETCH(QString, from);
    QFETCH(bool, german);
    if (german)
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    m_bench->choosePhotograph(from);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    recordtext::compare(recordtext::lines(file()), expectedrecord::clickInfo(from));
    // Written a second time it is the same, number included: nobody has opened the first one.
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::lines(file()), expectedrecord::clickInfo(from));
}

void tst_ResultClickInfo::photographNeedsBothTheCheckBoxAndTheChoice_data()
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("choiceEnabled");
    QTest::addColumn<bool>("written");
    QTest::newRow("both") << true << true << true;
    QTest::newRow("not checked") << false << true << false;
    QTest::newRow("checked, but no choice") << true << false << false;
    QTest::newRow("neither") << false << false << false;
}

void tst_ResultClickInfo::photographNeedsBothTheCheckBoxAndTheChoice()
{
    QFETCH(bool, checked);
    QFETCH(bool, choiceEnabled);
    m_bench->window()->m_pWithPhotoChkBox->setChecked(checked);
    m_bench->window()->m_pPhotoFromCB->setEnabled(choiceEnabled);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const QStringList lines = recordtext::lines(file());
    QTEST(recordtext::headings(file()).contains("photographic image"), "written");
    QTEST(lines.contains("Image Math Photo ClickNumber = AB20260102030406"), "written");
    QTEST(lines.filter("Image Math Photo ClickNumber=").size() == 1, "written");
    QTEST(lines.contains("Brightness = -3"), "written");
    QTEST(lines.contains("Gamma = 1.500000"), "written");
}

void tst_ResultClickInfo::whatTheWidgetsShowIsWritten_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("operationText");
    QTest::addColumn<QString>("k");
    row("sum", 0, "A + B * k", "1.00");
    row("difference", 1, "A - B * k", "-3.00e-2");
    row("product", 2, "A * B * k", "1.00e12");
    row("ratio", 3, "(A / B) * k", "0.00");
    row("thresholded ratio", 4, "A/B if Counts(B)>k", "12345.678");
    row("k that was typed and not taken yet", 1, "A - B * k", "7");
    row("no k", 1, "A - B * k", "");
}

void tst_ResultClickInfo::whatTheWidgetsShowIsWritten()
{
    QFETCH(int, operation);
    QFETCH(QString, operationText);
    QFETCH(QString, k);
    m_bench->window()->m_pOperationCB->setCurrentIndex(operation);
    m_bench->window()->m_pKLineEdit->setText(k);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::value(file(), "luminescent image", "Image Math Operation"), operationText);
    QVERIFY(
        recordtext::lines(file()).contains(k.isEmpty() ? QString("Image Math k =") : "Image Math k = " + k));
    const QString note = recordtext::value(file(), "luminescent image", "Igor Wave Note");
    QVERIFY2(note.contains(";Image Math Operation=" + operationText + ";Image Math k=" + k + ";"),
             qPrintable(note));
}

void tst_ResultClickInfo::correctionsAreThoseOfA_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("flatField");
    QTest::addColumn<QStringList>("flags");
    QTest::newRow("none") << QByteArray() << false << QStringList{"0", "0", "0"};
    QTest::newRow("background") << QByteArray("Background Corrected") << false << QStringList{"1", "0", "0"};
    QTest::newRow("flat field") << QByteArray() << true << QStringList{"0", "1", "0"};
    QTest::newRow("fluorescence background")
        << QByteArray("FL Background Corrected") << false << QStringList{"0", "0", "1"};
}

void tst_ResultClickInfo::correctionsAreThoseOfA()
{
    QFETCH(QByteArray, stored);
    QFETCH(bool, flatField);
    QFETCH(QStringList, flags);
    // What the datasets know, not what the files say.
    if (!stored.isEmpty())
        (*m_bench->datasetA()->getClickInfo())[QStringLiteral("luminescent image")]->setValue(
            QString::fromLatin1(stored), QString("1"));
    m_bench->datasetA()->doFlatFieldCorrection(flatField);
    (*m_bench->datasetB()->getClickInfo())[QStringLiteral("luminescent image")]->setValue(
        "Background Corrected", QString("1"));
    QCOMPARE(m_bench->datasetA()->isLuminFlatFieldCorrected(), flatField);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(between(recordtext::section(file(), "luminescent image"), "Background", "FL Background"),
             QStringList({"Background Corrected = " + flags.at(0), "Flat Field Corrected = " + flags.at(1),
                          "FL Background Corrected = " + flags.at(2)}));
    const QString note = recordtext::value(file(), "luminescent image", "Igor Wave Note");
    QVERIFY2(note.contains(";CCD Corrected=1;Background Corrected=" + flags.at(0) +
                           ";Flat Field Corrected=" + flags.at(1) + ";Image Math Operation="),
             qPrintable(note));
    QVERIFY(!note.contains("FL Background"));
}

void tst_ResultClickInfo::luminescentSection_data()
{
    QTest::addColumn<QString>("source"); // pairs
    QTest::addColumn<QStringList>("expected");
    const auto block = [](const QString &date) {
        return QStringList{QStringLiteral("Acquisition Date =") + (date.isEmpty() ? date : " " + date),
                           "Saturated = 0"} +
               expectedrecord::pairsOfTheOperation(QString());
    };
    const QString appended = expectedrecord::noteOfTheOperation(QString());
    const QStringList dated = block("D");

    row("without a note the block stands behind the last pair",
        "Acquisition Date = D\nBinning Factor = 9\nLast = 1",
        QStringList{"Acquisition Date = D", "Binning Factor = 4", "Last = 1"} + dated);
    row("without a note a date anywhere is the block's", "Binning Factor = 9\nLast = 1\nAcquisition Date = D",
        QStringList{"Binning Factor = 4", "Last = 1", "Acquisition Date = D"} + dated);
    row("a date behind the note comes too late",
        "Binning Factor = 9\nIgor Wave Note = N=1;\nAcquisition Date = D",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = N=1;" + appended, "Acquisition Date = D"});
    row("of two dates before the note the last one counts",
        "Acquisition Date = C\nAcquisition Date = D\nBinning Factor = 9\nIgor Wave Note = N=1;",
        QStringList{"Acquisition Date = C", "Acquisition Date = D", "Binning Factor = 4"} + dated +
            QStringList{"Igor Wave Note = N=1;" + appended});
    row("keys in other letters' case are found and stay as they are",
        "ACQUISITION DATE = D\nBinning Factor = 9\nigor wave note = N=1;Sequence ID=X;",
        QStringList{"ACQUISITION DATE = D", "Binning Factor = 4"} + dated +
            QStringList{"igor wave note = N=1;" + appended});
    row("the note's binning factor becomes the result's",
        "Binning Factor = 9\nIgor Wave Note = A=1;Sequence ID=X;Binning Factor=9;",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = A=1;Binning Factor=4;" + appended});
    row("a note without the entries only grows", "Binning Factor = 9\nIgor Wave Note = A=1;",
        QStringList{"Binning Factor = 4"} + block("") + QStringList{"Igor Wave Note = A=1;" + appended});
    QTest::newRow("an empty note") << "Binning Factor = 9\nIgor Wave Note ="
                                   << QStringList{"Binning Factor = 4"} + block("") +
                                          QStringList{"Igor Wave Note = " + appended};
    row("of an entry that the note has twice the first goes",
        "Binning Factor = 9\nIgor Wave Note = Sequence ID=X;A=1;Sequence ID=Y;",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = A=1;Sequence ID=Y;" + appended});
    row("a note that ends without semicolon keeps its last entry",
        "Binning Factor = 9\nIgor Wave Note = A=1;Sequence ID=X",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = A=1;Sequence ID=X" + appended});
    row("entries of the operation that the note has already stay before the new ones",
        "Binning Factor = 9\nIgor Wave Note = Saturated=1;Image Math k=8;",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = Saturated=1;Image Math k=8;" + appended});
    row("pairs of the operation that the section has already stay before the new ones",
        "Binning Factor = 9\nImage Math k = 8\nSaturated = 1\nIgor Wave Note = N=1;",
        QStringList{"Binning Factor = 4", "Image Math k = 8", "Saturated = 1"} + block("") +
            QStringList{"Igor Wave Note = N=1;" + appended});
    row("a section without a binning factor gets one at its end", "Igor Wave Note = N=1;",
        block("") + QStringList{"Igor Wave Note = N=1;" + appended, "Binning Factor = 4"});
    row("of two binning factors the last one is changed",
        "Binning Factor = 8\nBinning Factor = 9\nIgor Wave Note = N=1;",
        QStringList{"Binning Factor = 8", "Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = N=1;" + appended});
    row("a binning factor in other letters' case is another key", "binning factor = 9\nIgor Wave Note = N=1;",
        QStringList{"binning factor = 9"} + block("") +
            QStringList{"Igor Wave Note = N=1;" + appended, "Binning Factor = 4"});
    row("pairs behind the note stay behind it", "Binning Factor = 9\nIgor Wave Note = N=1;\nLast = 1",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = N=1;" + appended, "Last = 1"});
    row("before each of two notes stands a block",
        "Binning Factor = 9\nIgor Wave Note = N=1;\nAcquisition Date = D\nIgor Wave Note = N=2;",
        QStringList{"Binning Factor = 4"} + block("") +
            QStringList{"Igor Wave Note = N=1;" + appended, "Acquisition Date = D"} + dated +
            QStringList{"Igor Wave Note = N=2;" + appended});
    QTest::newRow("an empty section") << "" << block("") + QStringList{"Binning Factor = 4"};
}

void tst_ResultClickInfo::luminescentSection()
{
    QFETCH(QString, source);
    QFETCH(QStringList, expected);
    QVERIFY(recordtext::removeSection(sourceA(), "luminescent image"));
    QVERIFY(writeFile(sourceA(), readFile(sourceA()) + "\n[luminescent image]: luminescent.tif\n" +
                                     source.toUtf8() + "\n"));
    // Without the same angle in B, or none, the user would be asked.
    m_bench->window()->agreesToAngles = true;
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    recordtext::compare(recordtext::section(file(), "luminescent image"),
                        QStringList{"[luminescent image]: luminescent.tif"} + expected);
}

void tst_ResultClickInfo::binningFactorIsTruncated_data()
{
    QTest::addColumn<float>("factor");
    QTest::addColumn<QString>("written");
    QTest::newRow("2") << 2.0f << "2";
    QTest::newRow("2.9") << 2.9f << "2";
    QTest::newRow("1") << 1.0f << "1";
    QTest::newRow("16") << 16.0f << "16";
    QTest::newRow("0.5") << 0.5f << "0";
}

void tst_ResultClickInfo::binningFactorIsTruncated()
{
    QFETCH(float, factor);
    QFETCH(QString, written);
    m_bench->window()->m_resultImage.setBinningFactor(factor);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::value(file(), "luminescent image", "Binning Factor"), written);
    const QString note = recordtext::value(file(), "luminescent image", "Igor Wave Note");
    QVERIFY2(note.startsWith("A=1;Binning Factor=" + written + ";Z=26;"), qPrintable(note));
}

void tst_ResultClickInfo::photographSection_data()
{
    QTest::addColumn<QString>("source"); // pairs
    QTest::addColumn<QStringList>("expected");
    const QString appended = QStringLiteral("Folder On Disk=;CCD Corrected=1;isRotated=0;");
    row("without a note nothing is added", "Acquisition Date = D\nLast = 1",
        QStringList{"Acquisition Date = D", "Last = 1"});
    row("without a date of its own it is empty, whatever the luminescent image's is", "Igor Wave Note = P=1;",
        QStringList{"Acquisition Date =", "CCD Corrected = 1", "isRotated = 0",
                    "Igor Wave Note = P=1;" + appended});
    row("a date behind the note comes too late", "Igor Wave Note = P=1;\nAcquisition Date = D",
        QStringList{"Acquisition Date =", "CCD Corrected = 1", "isRotated = 0",
                    "Igor Wave Note = P=1;" + appended, "Acquisition Date = D"});
    row("keys in other letters' case are found",
        "acquisition date = D\nIGOR WAVE NOTE = ClickNumber Index=3;P=1;",
        QStringList{"acquisition date = D", "Acquisition Date = D", "CCD Corrected = 1", "isRotated = 0",
                    "IGOR WAVE NOTE = P=1;" + appended});
    row("its binning factor is its own", "Binning Factor = 9\nIgor Wave Note = Binning Factor=9;",
        QStringList{"Binning Factor = 9", "Acquisition Date =", "CCD Corrected = 1", "isRotated = 0",
                    "Igor Wave Note = Binning Factor=9;" + appended});
    QTest::newRow("an empty section") << "" << QStringList();
}

void tst_ResultClickInfo::photographSection()
{
    QFETCH(QString, source);
    QFETCH(QStringList, expected);
    for (const QString &from : {QStringLiteral("A"), QStringLiteral("B")}) {
        const QString path = from == QLatin1String("A") ? sourceA() : sourceB();
        QVERIFY(recordtext::removeSection(path, "photographic image"));
        QVERIFY(writeFile(path, readFile(path) + "\n[photographic image]: photograph.tif\n" +
                                    source.toUtf8() + "\n"));
        m_bench->choosePhotograph(from);
        QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
        recordtext::compare(recordtext::section(file(), "photographic image"),
                            QStringList{"[photographic image]: photograph.tif"} + expected);
    }
}

void tst_ResultClickInfo::photographOfBTakesItsNameFromB_data()
{
    QTest::addColumn<QByteArray>("headingA");
    QTest::addColumn<QByteArray>("headingB"); // empty: no such section
    QTest::addColumn<QString>("heading");
    QTest::addColumn<bool>("pairsOfB");
    const QByteArray key("[photographic image]");
    row("B's name", key + ": of A", key + ": of B", "[photographic image]: of B", true);
    row("an empty name of B is a name", key + ": of A", key + ":", "[photographic image]:", true);
    QTest::newRow("without a name in B, A's stays")
        << key + ": of A" << key << "[photographic image]: of A" << true;
    QTest::newRow("without a name in either there is none") << key << key << "[photographic image]" << true;
    QTest::newRow("without the section in B it is empty and A's name stays")
        << key + ": of A" << QByteArray() << "[photographic image]: of A" << false;
}

void tst_ResultClickInfo::photographOfBTakesItsNameFromB()
{
    QFETCH(QByteArray, headingA);
    QFETCH(QByteArray, headingB);
    QFETCH(QString, heading);
    QFETCH(bool, pairsOfB);
    QVERIFY(replaceInFile(sourceA(), "[photographic image]: photograph.tif", headingA));
    if (headingB.isEmpty())
        QVERIFY(recordtext::removeSection(sourceB(), "photographic image"));
    else
        QVERIFY(replaceInFile(sourceB(), "[photographic image]: photograph.tif", headingB));
    m_bench->choosePhotograph("B");
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), "photographic image"),
             QStringList{heading} + (pairsOfB ? expectedrecord::photographPairs("B") : QStringList()));
}

void tst_ResultClickInfo::aMissingSectionIsThereAndEmpty_data()
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
    QTest::newRow("Camera System Info")
        << QByteArray("Camera System Info") << QStringList{"[Camera System Info]"};
    QTest::newRow("photographic image")
        << QByteArray("photographic image") << QStringList{"[photographic image]"};
    QTest::newRow("Graph Controls") << QByteArray("Graph Controls")
                                    << QStringList{"[Graph Controls]"} +
                                           expectedrecord::graphPairs("A").mid(3);
    QTest::newRow("luminescent image")
        << QByteArray("luminescent image")
        << QStringList{"[luminescent image]", "Acquisition Date =", "Saturated = 0"} +
               expectedrecord::pairsOfTheOperation("A") + QStringList{"Binning Factor = 4"};
}

void tst_ResultClickInfo::aMissingSectionIsThereAndEmpty()
{
    QFETCH(QByteArray, key);
    QFETCH(QStringList, section);
    QVERIFY(recordtext::removeSection(sourceA(), key));
    m_bench->window()->agreesToAngles = true; // without a luminescent section there is no angle to compare
    m_bench->choosePhotograph("A");
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), QString::fromLatin1(key)), section);
    QCOMPARE(
        recordtext::headings(file()),
        QStringList({"ClickNumber", "User Input", "Analysis User Input", "luminescent image",
                     "User Label Name Set", "photographic image", "Camera System Info", "Graph Controls"}));
}

void tst_ResultClickInfo::keysOfTheSequenceGoInAnyCase()
{
    QVERIFY(replaceInFile(sourceA(), "Group = 7\nClickNumber Index = 0\n",
                          "sequence id = X\nCLICKNUMBER INDEX = 3\nclicknumber index = 4\nGroup = 7\n"));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), "ClickNumber"), expectedrecord::clickInfo(QString()).mid(0, 5));
}

void tst_ResultClickInfo::limitsThatTheUserGaveAnOperandAreNotTheResults()
{
    QTemporaryDir folder;
    CVXSDataset dataset(QStringLiteral("limits"));
    dataset.setColorLimits({ELIMITS_MANUAL, 1.0, 2.0, EUNIT_COUNTS});
    QCOMPARE(dataset.saveDatasetAs(folder.path()), ESTATUS_SUCCESS);
    const QByteArray limits = readFile(folder.filePath("ClickInfo.txt"));
    QVERIFY(writeFile(sourceA(), readFile(sourceA()) + '\n' + limits.mid(limits.indexOf("[Color Limits]"))));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const std::unique_ptr<CVXSDataset> a(
        CVXSDataset::open(m_bench->folderOf(ResultBench::clickA()), nullptr, nullptr));
    const std::unique_ptr<CVXSDataset> result(CVXSDataset::open(m_bench->resultFolder(), nullptr, nullptr));
    QVERIFY(a && a->getColorLimits());
    QVERIFY(result && !result->getColorLimits());
}

void tst_ResultClickInfo::otherTextsComeBackUnchanged_data()
{
    QTest::addColumn<QByteArray>("pair");
    QTest::newRow("repeated keys") << QByteArray("Comment = one\nComment = two\nComment = one");
    QTest::newRow("a null value") << QByteArray("Comment = \\N");
    QTest::newRow("blanks at both ends") << QByteArray("Comment = \\s both \\s");
    QTest::newRow("several lines") << QByteArray("Comment = first\\nsecond\\r\\n\\tthird");
    QTest::newRow("signs of the syntax") << QByteArray("\\[a\\=b] = c = d # e \\\\ f");
    QTest::newRow("texts outside of Latin-1") << QByteArray("Заметка = µ→∞ 🐁");
}

void tst_ResultClickInfo::otherTextsComeBackUnchanged()
{
    QFETCH(QByteArray, pair);
    QVERIFY(replaceInFile(sourceA(), "Experiment = mouse 12\nComment =", pair));
    QVERIFY(replaceInFile(sourceA(), "Label 1 = Animal", pair));
    QVERIFY(replaceInFile(sourceA(), "Group = 7", pair));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const QStringList pairs = QString::fromUtf8(pair).split("\n");
    QCOMPARE(recordtext::section(file(), "User Input").mid(1), pairs);
    QCOMPARE(recordtext::section(file(), "User Label Name Set").mid(1), pairs);
    QCOMPARE(recordtext::section(file(), "ClickNumber").mid(1, pairs.size()), pairs);
}

void tst_ResultClickInfo::aNoteOfOneMegabyte()
{
    const QByteArray filling = QByteArray("Filling=0123456789;").repeated(55000);
    QVERIFY(replaceInFile(sourceA(), "Igor Wave Note = A=1;", "Igor Wave Note = " + filling + "A=1;"));
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const QString expected = QString::fromLatin1(filling) + "A=1;Binning Factor=4;Z=26;" +
                             expectedrecord::noteOfTheOperation(QString());
    QVERIFY(recordtext::value(file(), "luminescent image", "Igor Wave Note") == expected);
}

QTEST_MAIN(tst_ResultClickInfo)
#include "tst_ResultClickInfo.moc"
