// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <QtTest>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

/// A folder with a sequence of AB1 and AB2 that nobody has open.
class ClosedStudy
{
public:
    ClosedStudy() : m_study(ID)
    {
        for (const char *number : {"AB1", "AB2"}) {
            ClickSpec spec;
            spec.clickNumber = number;
            m_study.add(spec);
        }
        m_saved = m_study.save();
        m_study.close();
    }
    bool isSaved() const { return m_saved; }
    QString folder() const { return m_study.folder() + "/" + ID + "/"; }
    QString file(const QString &name) const { return folder() + name; }

private:
    TestStudy m_study;
    bool m_saved = false;
};

/// Opens it and remembers what was told.
struct Opened
{
    explicit Opened(const QString &folder)
        : sequence(CVXSSequenceDataset::open(folder, &status, &error, &warnings))
    {
    }

    ESTATUS status = ESTATUS_NO_RANGE;
    QString error;
    QStringList warnings;
    LogCatcher log;
    std::unique_ptr<CVXSSequenceDataset> sequence;
};

} // namespace

class tst_SequenceBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void notASequence_data();
    void notASequence();
    void damagedSequenceInfo();
    void unsafeSequenceId();
    void oneClickIsUnusable_data();
    void oneClickIsUnusable();
    void unsafeClickNumberTouchesNothingOutside();
    void aClickListedTwiceIsThereOnce();
    void aClickThatIsOpenElsewhere();
    void anotherSequenceOfTheSameId();
    void noClicksAtAll();
    void unusableSettingsAreLeftAtTheirDefaults();
};

void tst_SequenceBadInput::notASequence_data()
{
    QTest::addColumn<QString>("make");
    QTest::addColumn<int>("status");
    QTest::newRow("a folder that is not there") << "nothing" << int(ESTATUS_FILE_NOT_FOUND);
    QTest::newRow("a folder without SequenceInfo.txt") << "folder" << int(ESTATUS_NOT_SEQUENCE);
    QTest::newRow("SequenceInfo.txt without its section") << "section" << int(ESTATUS_NOT_SEQUENCE);
}

void tst_SequenceBadInput::notASequence()
{
    QFETCH(QString, make);
    QFETCH(int, status);
    QTemporaryDir folder;
    const QString path = folder.filePath("study");
    if (make != "nothing")
        QVERIFY(QDir().mkdir(path));
    if (make == "section")
        QVERIFY(writeFile(path + "/SequenceInfo.txt", "[Other]: thing\n"));
    const Opened opened(path);
    QVERIFY(!opened.sequence);
    QCOMPARE(int(opened.status), status);
    QVERIFY2(opened.error.startsWith(path) && opened.error.contains(": "), qPrintable(opened.error));
    QVERIFY(CVXSSequenceDataset::openSequences().isEmpty());
}

void tst_SequenceBadInput::damagedSequenceInfo()
{
    const ClosedStudy study;
    QVERIFY(study.isSaved());
    QVERIFY(writeFile(study.file("SequenceInfo.txt"), "[Sequence]: X\nbroken\n"));
    const Opened opened(study.folder());
    QVERIFY(!opened.sequence);
    QCOMPARE(opened.status, ESTATUS_BAD_SYNTAX);
    QVERIFY(opened.error.startsWith(study.file("SequenceInfo.txt") + ": line 2"));
}

void tst_SequenceBadInput::unsafeSequenceId()
{
    const ClosedStudy study;
    QVERIFY(
        replaceInFile(study.file("SequenceInfo.txt"), "[Sequence]: " + ID.toUtf8(), "[Sequence]: ../other"));
    const Opened opened(study.folder());
    QVERIFY(!opened.sequence);
    QCOMPARE(opened.status, ESTATUS_BAD_NAME);
    QVERIFY(opened.error.startsWith(study.file("SequenceInfo.txt")) && opened.error.contains("\"../other\""));
}

void tst_SequenceBadInput::oneClickIsUnusable_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QString>("says");
    row("its folder is gone", "gone", "AB2/: ");
    row("a ClickInfo with broken lines", "syntax", "AB2/ClickInfo.txt: line 2");
    row("no ClickInfo", "missing", "AB2/ClickInfo.txt: ");
    row("the ClickInfo of another click", "other", "\"AB7\"");
    row("its own click number is unsafe", "unsafe", "\"../AB2\"");
}

void tst_SequenceBadInput::oneClickIsUnusable()
{
    QFETCH(QString, damage);
    QFETCH(QString, says);
    const ClosedStudy study;
    const QString info = study.file("AB2/ClickInfo.txt");
    if (damage == "gone")
        QVERIFY(QDir(study.file("AB2")).removeRecursively());
    else if (damage == "syntax")
        QVERIFY(writeFile(info, "[ClickNumber]: AB2\nbroken\n"));
    else if (damage == "missing")
        QVERIFY(QFile::remove(info));
    else
        QVERIFY(replaceInFile(info, "[ClickNumber]: AB2",
                              damage == "other" ? "[ClickNumber]: AB7" : "[ClickNumber]: ../AB2"));

    const Opened opened(study.folder());
    QVERIFY(opened.sequence);
    QCOMPARE(opened.status, ESTATUS_SUCCESS);
    QCOMPARE(opened.sequence->getClickNumbers(), QStringList({"AB1", "AB2"}));
    QVERIFY(!(*opened.sequence)[1]);
    QVERIFY(!opened.sequence->isAssociatedClick("AB2", nullptr));
    QCOMPARE(opened.warnings.size(), 1);
    QVERIFY2(opened.warnings.constFirst().startsWith("AB2: "), qPrintable(opened.warnings.constFirst()));
    QVERIFY2(opened.warnings.constFirst().contains(says), qPrintable(opened.warnings.constFirst()));
    QVERIFY(opened.log.failures().contains(opened.warnings.constFirst()));
    // The rest is usable.
    CILImage image;
    QCOMPARE((*opened.sequence)[0]->getCalibratedLuminImage(EUNIT_RADIANCE, &image, "test"), ESTATUS_SUCCESS);
    QCOMPARE(image.getWidth(), 32u);
}

void tst_SequenceBadInput::unsafeClickNumberTouchesNothingOutside()
{
    const ClosedStudy study;
    // A real dataset outside the sequence's folder, where the number would lead.
    QVERIFY(QDir(study.folder()).rename("AB2", "../AB2"));
    QVERIFY(replaceInFile(study.file("SequenceInfo.txt"), "Click = AB2", "Click = ../AB2"));
    const Opened opened(study.folder());
    QVERIFY(opened.sequence);
    QVERIFY(!(*opened.sequence)[1]);
    QCOMPARE(opened.sequence->getDatasets().size(), 1);
    QVERIFY(opened.sequence->getDatasetFolderPath("../AB2").isEmpty());
    QCOMPARE(opened.warnings.size(), 1);
    QVERIFY(opened.warnings.constFirst().contains(study.file("SequenceInfo.txt")));
    QVERIFY(opened.warnings.constFirst().contains("\"../AB2\""));
    QVERIFY(!CVXSDataset::getDataset("AB2"));
}

void tst_SequenceBadInput::aClickListedTwiceIsThereOnce()
{
    const ClosedStudy study;
    QVERIFY(replaceInFile(study.file("SequenceInfo.txt"), "Click = AB2", "Click = AB1\nClick = AB2"));
    const Opened opened(study.folder());
    QVERIFY(opened.sequence);
    QCOMPARE(opened.sequence->getClickNumbers(), QStringList({"AB1", "AB2"}));
    QCOMPARE(opened.sequence->getDatasets().size(), 2);
    QCOMPARE(opened.warnings.size(), 1);
    QVERIFY(opened.warnings.constFirst().startsWith("AB1: " + study.file("SequenceInfo.txt")));
}

void tst_SequenceBadInput::aClickThatIsOpenElsewhere()
{
    const ClosedStudy study;
    CVXSDataset elsewhere("AB1");
    QVERIFY(elsewhere.registerDataset());
    const Opened opened(study.folder());
    QVERIFY(opened.sequence);
    QVERIFY(!(*opened.sequence)[0]);
    QVERIFY((*opened.sequence)[1]);
    QCOMPARE(opened.warnings.size(), 1);
    QCOMPARE(CVXSDataset::getDataset("AB1"), &elsewhere);
}

void tst_SequenceBadInput::anotherSequenceOfTheSameId()
{
    const ClosedStudy study;
    const TestStudy unsaved(ID);
    const Opened opened(study.folder());
    QVERIFY(!opened.sequence);
    QVERIFY(opened.status != ESTATUS_SUCCESS);
    QVERIFY(opened.error.startsWith(study.file("SequenceInfo.txt")) && opened.error.contains(ID));
    QCOMPARE(CVXSSequenceDataset::openSequences().size(), 1);
}

void tst_SequenceBadInput::noClicksAtAll()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("SequenceInfo.txt"), "[Sequence]: " + ID.toUtf8() + "\n"));
    const Opened opened(folder.path());
    QVERIFY(opened.sequence);
    QVERIFY(opened.sequence->getClickNumbers().isEmpty());
    QVERIFY(!(*opened.sequence)[0]);
}

void tst_SequenceBadInput::unusableSettingsAreLeftAtTheirDefaults()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(
        folder.filePath("SequenceInfo.txt"),
        "[Sequence]: " + ID.toUtf8() +
            "\nActive Unit = lux\nColor Table = Mauve\nReversed = yes\nBrightness = much\nGamma = -1\n"));
    LogCatcher log;
    const Opened opened(folder.path());
    QVERIFY(opened.sequence);
    QCOMPARE(opened.sequence->getActiveUnit(), EUNIT_COUNTS);
    QCOMPARE(log.failures().size(), 1);
    QVERIFY2(log.failures().constFirst().contains(folder.filePath("SequenceInfo.txt")) &&
                 log.failures().constFirst().contains("lux"),
             qPrintable(log.failures().constFirst()));
    QCOMPARE(opened.sequence->getImageAdjust().colorTable, VXS_CT_RAINBOW);
    QVERIFY(!opened.sequence->getToolInfo().reversed);
    QCOMPARE(opened.sequence->getToolInfo().brightness, 0);
    QCOMPARE(opened.sequence->getToolInfo().gamma, 1.0f);
}

QTEST_GUILESS_MAIN(tst_SequenceBadInput)
#include "tst_SequenceBadInput.moc"
