// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLSection.h"
#include "result/ResultClickInfo.h"
#include "result/ResultImages.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

using namespace resultclickinfo;

/// A section of these "key=value" pairs; the first "=" divides.
CPLSection sectionOf(const QStringList &pairs)
{
    CPLSection section;
    for (const QString &pair : pairs)
        section.addKeyValue(pair.section('=', 0, 0), pair.section('=', 1));
    return section;
}

QStringList pairsOf(const CPLSection &section)
{
    QStringList keys, values, pairs;
    section.getKeyList(&keys);
    section.getValueList(&values);
    for (int i = 0; i < keys.size(); ++i)
        pairs << keys.at(i) + '=' + values.at(i);
    return pairs;
}

ResultFacts facts()
{
    ResultFacts facts;
    facts.versionText = "1.0.0(today)";
    facts.operation = "A - B * k";
    facts.k = "2.50";
    facts.clickA = "ZB1";
    facts.clickB = "ZB2";
    facts.isFlatFieldCorrected = true;
    facts.binning = 4;
    return facts;
}

DisplayFacts display()
{
    DisplayFacts display;
    display.unitName = "counts";
    display.colorTable = "Rainbow";
    display.colorMin = 1.5;
    display.colorMax = 200.0;
    display.rawMin = -3.0;
    display.rawMax = 1e6;
    return display;
}

/// What the operation adds to the luminescent section.
QStringList block(const QString &date)
{
    return {"Acquisition Date=" + date,
            "Saturated=0",
            "CCD Corrected=1",
            "Background Corrected=0",
            "Flat Field Corrected=1",
            "FL Background Corrected=0",
            "Image Math Operation=A - B * k",
            "Image Math k=2.50",
            "Image Math A ClickNumber=ZB1",
            "Image Math B ClickNumber=ZB2"};
}

const QString NOTE = QStringLiteral(
    "Folder On Disk=;Saturated=0;CCD Corrected=1;Background Corrected=0;Flat Field Corrected=1;"
    "Image Math Operation=A - B * k;Image Math k=2.50;Image Math A ClickNumber=ZB1;"
    "Image Math B ClickNumber=ZB2;");

} // namespace

/// The sections of a result's records, made from sections in memory.
class tst_ResultSections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysOfTheSections();
    void versionTextHoldsTheBuildDate();
    void pairsAreCopiedInOrder();
    void aSourceThatIsNullHasNoPairs_data();
    void aSourceThatIsNullHasNoPairs();
    void aNameIsTakenOverWhenThereIsOne();
    void clickNumber_data();
    void clickNumber();
    void luminescent_data();
    void luminescent();
    void theCorrectionsOfA_data();
    void theCorrectionsOfA();
    void aPhotographIsNamed();
    void photograph_data();
    void photograph();
    void graphControls_data();
    void graphControls();
    void theAnalyzedClickNumberKeepsItsSequence();
    void anImageFileIsCopiedByteForByte_data();
    void anImageFileIsCopiedByteForByte();
    void whatCannotBeCopiedIsLogged();
};

void tst_ResultSections::keysOfTheSections()
{
    QCOMPARE(sectionKeys(), (QStringList{"ClickNumber", "User Input", "Analysis User Input",
                                         "luminescent image", "User Label Name Set", "photographic image",
                                         "Camera System Info", "Graph Controls"}));
    QCOMPARE(analyzedSectionKeys(),
             (QStringList{"ClickNumber", "User Input", "Analysis User Input", "photographic image",
                          "User Label Name Set", "luminescent image", "luminescent A image",
                          "luminescent B image", "Graph Controls", "ROIs"}));
}

void tst_ResultSections::versionTextHoldsTheBuildDate()
{
    const QString text = versionText();
    QVERIFY2(QRegularExpression(R"(^1\.1\.0\([A-Z][a-z]{2} [ \d]\d \d{4}\)$)").match(text).hasMatch(),
             qPrintable(text));
}

void tst_ResultSections::pairsAreCopiedInOrder()
{
    const QStringList pairs{"B=2", "A=1", "B=3", "empty="};
    const CPLSection source = sectionOf(pairs);
    CPLSection target = sectionOf({"A=0"});
    copyPairs(target, &source);
    QCOMPARE(pairsOf(target), QStringList{"A=0"} + pairs);
}

void tst_ResultSections::aSourceThatIsNullHasNoPairs_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QStringList>("pairs");
    row("pairs copied from nothing", "pairs", QStringList());
    row("a click number's section from nothing", "click number",
        QStringList{"Vexa Version=1.0.0(today)", "Folder On Disk="});
    row("a luminescent section from nothing", "luminescent", block("") + QStringList{"Binning Factor=4"});
    row("a photograph's section from nothing", "photograph", QStringList());
    row("an analyzed click number's section from nothing", "analyzed",
        QStringList{"Vexa Version=1.0.0(today)", "Folder On Disk="});
}

void tst_ResultSections::aSourceThatIsNullHasNoPairs()
{
    QFETCH(QString, section);
    CPLSection target;
    if (section == "pairs")
        copyPairs(target, nullptr);
    else if (section == "click number")
        fillClickNumber(target, nullptr, facts());
    else if (section == "luminescent")
        fillLuminescent(target, nullptr, facts());
    else if (section == "photograph")
        fillPhotograph(target, nullptr);
    else
        fillAnalyzedClickNumber(target, nullptr, facts());
    QTEST(pairsOf(target), "pairs");
}

void tst_ResultSections::aNameIsTakenOverWhenThereIsOne()
{
    CPLSection source, target;
    target.setSectionName("own");
    QString name;
    const CPLSection *const sources[] = {nullptr, &source};
    for (const CPLSection *from : sources) {
        copyName(target, from);
        target.getSectionName(&name, false);
        QCOMPARE(name, QString("own"));
    }
    source.setSectionName("the operand's");
    copyName(target, &source);
    target.getSectionName(&name, false);
    QCOMPARE(name, QString("the operand's"));
}

void tst_ResultSections::clickNumber_data()
{
    QTest::addColumn<QStringList>("source");
    QTest::addColumn<QStringList>("pairs");
    const QStringList added{"Vexa Version=1.0.0(today)", "Folder On Disk="};
    row("other pairs stay, in order", QStringList{"Group=7", "Animal=3"},
        QStringList{"Group=7", "Animal=3"} + added);
    row("the sequence and the place in it go", QStringList{"Sequence ID=S", "Group=7", "ClickNumber Index=2"},
        QStringList{"Group=7"} + added);
    row("they go in any case", QStringList{"SEQUENCE ID=S", "clicknumber index=2"}, added);
    row("each of two of them goes", QStringList{"Sequence ID=S", "Sequence ID=T"}, added);
    row("an earlier version stays before the new one", QStringList{"Vexa Version=0.9"},
        QStringList{"Vexa Version=0.9"} + added);
}

void tst_ResultSections::clickNumber()
{
    QFETCH(QStringList, source);
    const CPLSection from = sectionOf(source);
    CPLSection target;
    fillClickNumber(target, &from, facts());
    QTEST(pairsOf(target), "pairs");
}

void tst_ResultSections::luminescent_data()
{
    QTest::addColumn<QStringList>("source");
    QTest::addColumn<QStringList>("pairs");
    row("without a note the block stands behind the last pair", QStringList{"Acquisition Date=D", "Last=1"},
        QStringList{"Acquisition Date=D", "Last=1"} + block("D") + QStringList{"Binning Factor=4"});
    row("the block stands before the note, which grows",
        QStringList{"Acquisition Date=D", "Igor Wave Note=N=1;"},
        QStringList{"Acquisition Date=D"} + block("D") +
            QStringList{"Igor Wave Note=N=1;" + NOTE, "Binning Factor=4"});
    row("a date behind the note comes too late", QStringList{"Igor Wave Note=", "Acquisition Date=D"},
        block("") + QStringList{"Igor Wave Note=" + NOTE, "Acquisition Date=D", "Binning Factor=4"});
    row("of two dates before the note the last one counts",
        QStringList{"Acquisition Date=C", "acquisition date=D", "igor wave note="},
        QStringList{"Acquisition Date=C", "acquisition date=D"} + block("D") +
            QStringList{"igor wave note=" + NOTE, "Binning Factor=4"});
    row("before each of two notes stands a block", QStringList{"Igor Wave Note=N=1;", "Igor Wave Note=N=2;"},
        block("") + QStringList{"Igor Wave Note=N=1;" + NOTE} + block("") +
            QStringList{"Igor Wave Note=N=2;" + NOTE, "Binning Factor=4"});
    row("the note leaves its sequence and takes the result's binning",
        QStringList{"Igor Wave Note=Sequence ID=S;Binning Factor=9;ClickNumber Index=2;"},
        block("") + QStringList{"Igor Wave Note=Binning Factor=4;" + NOTE, "Binning Factor=4"});
    row("the section's last binning factor becomes the result's",
        QStringList{"Binning Factor=8", "Binning Factor=9"},
        QStringList{"Binning Factor=8", "Binning Factor=4"} + block(""));
}

void tst_ResultSections::luminescent()
{
    QFETCH(QStringList, source);
    const CPLSection from = sectionOf(source);
    CPLSection target;
    fillLuminescent(target, &from, facts());
    QTEST(pairsOf(target), "pairs");
}

void tst_ResultSections::theCorrectionsOfA_data()
{
    QTest::addColumn<bool>("background");
    QTest::addColumn<bool>("flatField");
    QTest::addColumn<bool>("fluorescence");
    row("none", false, false, false);
    row("of the background", true, false, false);
    row("of the flat field", false, true, false);
    row("of the fluorescence background", false, false, true);
}

void tst_ResultSections::theCorrectionsOfA()
{
    QFETCH(bool, background);
    QFETCH(bool, flatField);
    QFETCH(bool, fluorescence);
    ResultFacts told = facts();
    told.isBackgroundSubtracted = background;
    told.isFlatFieldCorrected = flatField;
    told.isFluorescenceBackgroundSubtracted = fluorescence;
    const CPLSection from = sectionOf({"Igor Wave Note="});
    CPLSection target;
    fillLuminescent(target, &from, told);
    const QStringList pairs = pairsOf(target);
    const auto flag = [](bool on) { return QString::number(int(on)); };
    QVERIFY(pairs.contains("Background Corrected=" + flag(background)));
    QVERIFY(pairs.contains("Flat Field Corrected=" + flag(flatField)));
    QVERIFY(pairs.contains("FL Background Corrected=" + flag(fluorescence)));
    const QString note = pairs.filter("Igor Wave Note=").value(0);
    QVERIFY2(note.contains(";Background Corrected=" + flag(background) +
                           ";Flat Field Corrected=" + flag(flatField) + ";Image Math"),
             qPrintable(note));
}

void tst_ResultSections::aPhotographIsNamed()
{
    ResultFacts told = facts();
    told.clickPhotograph = "ZB2";
    const CPLSection from = sectionOf({"Igor Wave Note=N=1;"});
    CPLSection target;
    fillLuminescent(target, &from, told);
    QCOMPARE(pairsOf(target),
             (block("") + QStringList{"Image Math Photo ClickNumber=ZB2",
                                      "Igor Wave Note=N=1;" + NOTE + "Image Math Photo ClickNumber=ZB2;",
                                      "Binning Factor=4"}));
}

void tst_ResultSections::photograph_data()
{
    QTest::addColumn<QStringList>("source");
    QTest::addColumn<QStringList>("pairs");
    row("without a note nothing is added", QStringList{"Acquisition Date=D", "P=1"},
        QStringList{"Acquisition Date=D", "P=1"});
    row("before the note comes the date, and the note grows",
        QStringList{"Acquisition Date=D", "Igor Wave Note=P=1;Sequence ID=S;", "Last=1"},
        QStringList{"Acquisition Date=D", "Acquisition Date=D", "CCD Corrected=1", "isRotated=0",
                    "Igor Wave Note=P=1;Folder On Disk=;CCD Corrected=1;isRotated=0;", "Last=1"});
    row("a note without a date before it", QStringList{"Igor Wave Note="},
        QStringList{"Acquisition Date=", "CCD Corrected=1", "isRotated=0",
                    "Igor Wave Note=Folder On Disk=;CCD Corrected=1;isRotated=0;"});
}

void tst_ResultSections::photograph()
{
    QFETCH(QStringList, source);
    const CPLSection from = sectionOf(source);
    CPLSection target;
    fillPhotograph(target, &from);
    QTEST(pairsOf(target), "pairs");
}

void tst_ResultSections::graphControls_data()
{
    QTest::addColumn<bool>("hasOperandA");
    QTest::addColumn<bool>("hasPhotograph");
    QTest::addColumn<QStringList>("added");
    const QStringList limits{"Color Table Min=1.500000", "Color Table Max=200.000000",
                             "Raw Color Table Min=-3.000000", "Raw Color Table Max=1000000.000000"};
    const QStringList unit{"Intensity Calibration=counts"}, table{"Color Table=Rainbow"};
    row("of the result alone", false, false, unit + limits + table);
    row("A's direction and scale", true, false,
        unit + QStringList{"Reversed=1", "Color Table=Rainbow", "ColorTableIsLog=0"} + limits + table);
    row("the photograph's tone", false, true,
        unit + limits + QStringList{"Brightness=-3", "Gamma=1.500000"} + table);
}

void tst_ResultSections::graphControls()
{
    QFETCH(bool, hasOperandA);
    QFETCH(bool, hasPhotograph);
    QFETCH(QStringList, added);
    DisplayFacts shown = display();
    shown.hasOperandA = hasOperandA;
    shown.reversed = true;
    shown.hasPhotograph = hasPhotograph;
    shown.brightness = -3;
    shown.gamma = 1.5;
    const CPLSection from = sectionOf({"Color Table=Grays", "Window=3"});
    CPLSection target;
    fillGraphControls(target, &from, shown);
    QCOMPARE(pairsOf(target), (QStringList{"Color Table=Grays", "Window=3"} + added));
}

void tst_ResultSections::theAnalyzedClickNumberKeepsItsSequence()
{
    const CPLSection from = sectionOf({"Sequence ID=S", "ClickNumber Index=2"});
    CPLSection target;
    fillAnalyzedClickNumber(target, &from, facts());
    QCOMPARE(pairsOf(target), (QStringList{"Sequence ID=S", "ClickNumber Index=2",
                                           "Vexa Version=1.0.0(today)", "Folder On Disk="}));
}

void tst_ResultSections::anImageFileIsCopiedByteForByte_data()
{
    QTest::addColumn<bool>("isThere");
    row("over what lies there", true);
    row("to a new file", false);
}

void tst_ResultSections::anImageFileIsCopiedByteForByte()
{
    QFETCH(bool, isThere);
    const QTemporaryDir folder;
    const QByteArray bytes("pixels\0and\r\nmore", 16);
    QVERIFY(writeFile(folder.filePath("from.tif"), bytes));
    if (isThere)
        QVERIFY(writeFile(folder.filePath("to.tif"), "an older file, which is longer than the new one"));
    const LogCatcher log;
    resultimages::copyFile(folder.filePath("from.tif"), folder.filePath("to.tif"));
    QCOMPARE(readFile(folder.filePath("to.tif")), bytes);
    QVERIFY(log.entries().isEmpty());
}

void tst_ResultSections::whatCannotBeCopiedIsLogged()
{
    const QTemporaryDir folder;
    const LogCatcher log;
    resultimages::copyFile(folder.filePath("missing.tif"), folder.filePath("to.tif"));
    QVERIFY2(log.entries().isEmpty(), "a source that is not there is nobody's mistake");
    QVERIFY(!QFile::exists(folder.filePath("to.tif")));
    QVERIFY(writeFile(folder.filePath("from.tif"), "pixels"));
    const QString target = folder.filePath("no such folder/to.tif");
    resultimages::copyFile(folder.filePath("from.tif"), target);
    QCOMPARE(log.failures().size(), 1);
    QVERIFY2(log.failures().first().startsWith(target + ": "), qPrintable(log.failures().first()));
}

QTEST_APPLESS_MAIN(tst_ResultSections)
#include "tst_ResultSections.moc"
