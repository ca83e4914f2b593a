// SPDX-License-Identifier: MIT
#include "app/RecentSequences.h"
#include "app/ResultCheck.h"
#include "app/SequenceManager.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "math/ResultRecord.h"
#include "tests/app/ResultCheckFixture.h"

#include <cmath>
#include <limits>
#include <QDir>

using Verdict = ResultCheck::Verdict;

Q_DECLARE_METATYPE(ClickSpec)
Q_DECLARE_METATYPE(tag_edisplayunit)
Q_DECLARE_METATYPE(ResultCheck::Verdict)

namespace {

constexpr auto A = ResultCheckFixture::CLICK_A;
constexpr auto B = ResultCheckFixture::CLICK_B;

ClickSpec clickA()
{
    return ResultCheckFixture::clickOf(A);
}

ClickSpec clickB()
{
    return ResultCheckFixture::clickOf(B);
}

ClickSpec withFlatField(ClickSpec spec)
{
    spec.flatField = [](int x, int y) { return 0.7f + 0.01f * float(x + y); };
    return spec;
}

ClickSpec withPhotograph(ClickSpec spec)
{
    spec.photograph = [](int x, int y) { return x * x + y * y < 900 ? 200.0f : 10.0f; };
    return spec;
}

/// A pixel of 0 in B makes an infinity of a ratio, and a NaN where A is 0 too.
ClickSpec withZeros(ClickSpec spec)
{
    const auto counts = spec.counts;
    spec.counts = [counts](int x, int y) { return y == 0 && x < 2 ? 0.0f : counts(x, y); };
    return spec;
}

QString resultFile(const CVXSDataset *result)
{
    return result->getFolderPath() + QStringLiteral("luminescent.tif");
}

imagemath::ResultRecord recordOf(const CVXSDataset *result)
{
    std::string text;
    imagemath::ResultRecord record;
    QString reason;
    CILImage::loadDescription(QFile::encodeName(resultFile(result)).constData(), &text);
    if (!imagemath::fromJson(QByteArray::fromStdString(text), &record, &reason))
        qWarning("no record: %s", qPrintable(reason));
    return record;
}

bool anyLine(const ResultCheck &check, const QString &text)
{
    return !check.lines.filter(text).isEmpty();
}

QByteArray told(const ResultCheck &check)
{
    return (check.headline + QLatin1Char('\n') + check.lines.join(QLatin1Char('\n'))).toUtf8();
}

} // namespace

/// Results of the real tool, computed again after something happened to them or to their operands.
class tst_ResultCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ResultCheckFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void anUntouchedResultIsTheSame_data();
    void anUntouchedResultIsTheSame();
    void pixelsThatAreNoNumbersAreComparedToo();
    void openDatasetsStayAsTheyAre();
    void aChangedOperandIsNamed();
    void aChangedConstantIsNamed_data();
    void aChangedConstantIsNamed();
    void aMissingFileIsNamed();
    void aFileThatWasNotThereIsNamed();
    void aMissingOperandIsNamedWithItsSequence();
    void anOperandIsFoundWhereItLies_data();
    void anOperandIsFoundWhereItLies();
    void aRenamedOperandIsFoundByItsImages();
    void aTamperedPixelIsFound_data();
    void aTamperedPixelIsFound();
    void aConstantKOffByTheLastBitIsFound();
    void aResultWithoutUsableRecordIsNotChecked_data();
    void aResultWithoutUsableRecordIsNotChecked();
    void aResultOfAnUnsavedOperandIsTheSame();
    void changesInMemoryAreTold();
    void aPhotographThatWasExchangedIsTold();
    void aClickInfoThatSaysSomethingElseIsTold();
    void aResultThatCannotBeReadIsTold();
    void aClickNumberThatIsAPathIsRefused();

private:
    ResultCheck check(const CVXSDataset *result) const
    {
        return ResultCheck::of(*result, m_fixture->workspace.window->recentSequences()->folders());
    }
    bool closeSequence() const { return m_fixture->workspace.window->sequences()->closeAll(); }
    /// A - B * k of the two plain clicks.
    CVXSDataset *plainResult(const QString &k = "0.37") const
    {
        return m_fixture->open({clickA(), clickB()}) ? m_fixture->makeResult(1, k) : nullptr;
    }

    std::unique_ptr<ResultCheckFixture> m_fixture;
};

void tst_ResultCheck::anUntouchedResultIsTheSame_data()
{
    QTest::addColumn<ClickSpec>("a");
    QTest::addColumn<ClickSpec>("b");
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("k");
    QTest::addColumn<tag_edisplayunit>("unit");
    QTest::addColumn<int>("rowB");
    for (int formula = 0; formula < 5; ++formula) {
        const QString k = formula == 4 ? "300" : "0.37";
        for (tag_edisplayunit unit : {EUNIT_COUNTS, EUNIT_RADIANCE, EUNIT_RADIANT_EFFICIENCY})
            QTest::addRow("formula %d in %s", formula, qPrintable(unitKey(unit)))
                << clickA() << clickB() << formula << k << unit << 1;
    }
    QTest::newRow("a flat field on both in radiance")
        << withFlatField(clickA()) << withFlatField(clickB()) << 3 << "1e7" << EUNIT_RADIANCE << 1;
    QTest::newRow("a flat field on A alone")
        << withFlatField(clickA()) << clickB() << 0 << "-2.5" << EUNIT_RADIANCE << 1;
    ClickSpec fine = clickA();
    fine.binning = 2.0f;
    fine.width = fine.height = 64;
    QTest::newRow("A binned less than B") << fine << clickB() << 3 << "0.1" << EUNIT_COUNTS << 1;
    ClickSpec fineB = clickB();
    fineB.width = fineB.height = 128;
    fineB.binning = 1.0f;
    QTest::newRow("B binned less than A, thresholded")
        << clickA() << withPhotograph(fineB) << 4 << "900" << EUNIT_RADIANCE << 1;
    QTest::newRow("a tissue mask") << clickA() << withPhotograph(clickB()) << 4 << "260" << EUNIT_COUNTS << 1;
    QTest::newRow("pixels that are infinite")
        << clickA() << withZeros(clickB()) << 3 << "1" << EUNIT_COUNTS << 1;
    QTest::newRow("pixels that are NaN")
        << withZeros(clickA()) << withZeros(clickB()) << 3 << "1" << EUNIT_COUNTS << 1;
    QTest::newRow("A combined with itself") << clickA() << clickB() << 3 << "7" << EUNIT_RADIANCE << 0;
    QTest::newRow("k = 0") << clickA() << clickB() << 2 << "0" << EUNIT_COUNTS << 1;
}

void tst_ResultCheck::anUntouchedResultIsTheSame()
{
    QFETCH(ClickSpec, a);
    QFETCH(ClickSpec, b);
    QFETCH(int, operation);
    QFETCH(QString, k);
    QFETCH(tag_edisplayunit, unit);
    QFETCH(int, rowB);
    QVERIFY(m_fixture->open({a, b}));
    const CVXSDataset *result = m_fixture->makeResult(operation, k, unit, false, 0, rowB);
    QVERIFY(result);
    QCOMPARE(recordOf(result).unit, unitKey(unit));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QCOMPARE(outcome.level(), 1L);
}

void tst_ResultCheck::pixelsThatAreNoNumbersAreComparedToo()
{
    QVERIFY(m_fixture->open({withZeros(clickA()), withZeros(clickB())}));
    const CVXSDataset *result = m_fixture->makeResult(3, "1");
    QVERIFY(result);
    CILImage stored;
    QCOMPARE(stored.loadTIFF(QFile::encodeName(resultFile(result)).constData()), EIL_SUCCESS);
    QVERIFY(std::isnan(stored.pixelAt(0, 0)));
    QVERIFY(ResultCheckFixture::setPixel(resultFile(result), 0, 5.0f));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Different, told(outcome).constData());
    QVERIFY2(outcome.headline.contains("1 of 1024 pixels differ, all between a number and none"),
             told(outcome).constData());
}

void tst_ResultCheck::openDatasetsStayAsTheyAre()
{
    QVERIFY(m_fixture->open({withFlatField(clickA()), clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(1, "2", EUNIT_RADIANCE);
    QVERIFY(result);
    CVXSDataset *a = m_fixture->sequence->getDataset(A);
    a->doFlatFieldCorrection(false);
    const int windows = m_fixture->workspace.window->workspace()->subWindowList().size();
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY(!a->isLuminFlatFieldCorrected());
    QVERIFY(!a->isModified());
    QCOMPARE(CVXSDataset::getDataset(A), a);
    QCOMPARE(m_fixture->workspace.window->workspace()->subWindowList().size(), windows);
}

void tst_ResultCheck::aChangedOperandIsNamed()
{
    const CVXSDataset *result = plainResult("2");
    QVERIFY(result);
    CILImage operand;
    const QString file = m_fixture->fileOf(B, "luminescent.tif");
    QCOMPARE(operand.loadTIFF(QFile::encodeName(file).constData()), EIL_SUCCESS);
    QVERIFY(ResultCheckFixture::setPixel(file, 33, float(operand.pixelAt(1, 1)) + 8.0f));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::DifferentAsChanged, told(outcome).constData());
    QVERIFY2(outcome.headline.contains("1 of 1024 pixels differ, by 16 (counts) at most"),
             told(outcome).constData());
    QCOMPARE(outcome.lines.first(), QString("luminescent.tif of B (%1) changed since.").arg(B));
    QVERIFY2(outcome.lines.filter("changed since").size() == 1, told(outcome).constData());
    QCOMPARE(outcome.level(), 2L);
}

void tst_ResultCheck::aChangedConstantIsNamed_data()
{
    QTest::addColumn<tag_edisplayunit>("unit");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("line");
    QTest::addColumn<Verdict>("verdict");
    const QString name = QString("\"Exposure Time\" (luminescent image) of A (%1) ").arg(A);
    QTest::newRow("one that radiance depends on")
        << EUNIT_RADIANCE << QByteArray("Exposure Time = 60") << QByteArray("Exposure Time = 61")
        << name + "is 61 now; then it was 60." << Verdict::DifferentAsChanged;
    QTest::newRow("one that counts do not depend on")
        << EUNIT_COUNTS << QByteArray("Exposure Time = 60") << QByteArray("Exposure Time = 61")
        << name + "is 61 now; then it was 60." << Verdict::SameThoughChanged;
    QTest::newRow("one that is gone")
        << EUNIT_COUNTS << QByteArray("Exposure Time = 60\n") << QByteArray()
        << name + "is not there any more; then it was 60." << Verdict::SameThoughChanged;
    QTest::newRow("one that is gone and needed")
        << EUNIT_RADIANCE << QByteArray("Exposure Time = 60\n") << QByteArray()
        << name + "is not there any more; then it was 60." << Verdict::Failed;
    QTest::newRow("one that is new")
        << EUNIT_COUNTS << QByteArray("Exposure Time = 60\n")
        << QByteArray("Exposure Time = 60\nFluorescence level string = High\n")
        << QString("\"Fluorescence level string\" (luminescent image) of A (%1) is High now; then it was not "
                   "there.")
               .arg(A)
        << Verdict::SameThoughChanged;
}

void tst_ResultCheck::aChangedConstantIsNamed()
{
    QFETCH(tag_edisplayunit, unit);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, line);
    QFETCH(Verdict, verdict);
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(1, "0.5", unit);
    QVERIFY(result);
    QVERIFY(ResultCheckFixture::edit(m_fixture->fileOf(A, "ClickInfo.txt"), from, to));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == verdict, told(outcome).constData());
    QVERIFY2(outcome.lines.contains(line), told(outcome).constData());
    if (verdict == Verdict::Failed)
        QVERIFY2(outcome.lines.first().contains("Exposure Time") && outcome.level() == 3,
                 told(outcome).constData());
}

void tst_ResultCheck::aMissingFileIsNamed()
{
    QVERIFY(m_fixture->open({withFlatField(clickA()), clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(1, "2", EUNIT_RADIANCE);
    QVERIFY(result);
    QVERIFY(QFile::remove(m_fixture->fileOf(A, "flatfield.tif")));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Failed, told(outcome).constData());
    QVERIFY2(outcome.lines.contains(QString("flatfield.tif of A (%1) is missing or cannot be read.").arg(A)),
             told(outcome).constData());
    QVERIFY2(outcome.lines.first().contains(A), told(outcome).constData());
}

void tst_ResultCheck::aFileThatWasNotThereIsNamed()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(QFile::copy(m_fixture->fileOf(B, "luminescent.tif"), m_fixture->fileOf(B, "background.tif")));
    QFile info(m_fixture->fileOf(B, "ClickInfo.txt"));
    QVERIFY(info.open(QIODevice::Append));
    info.write("\n[background image]: background.tif\n");
    info.close();
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.lines.contains(QString("background.tif of B (%1) was not there then.").arg(B)),
             told(outcome).constData());
    // The record says that no background was subtracted.
    QVERIFY2(outcome.verdict == Verdict::SameThoughChanged, told(outcome).constData());
}

void tst_ResultCheck::aMissingOperandIsNamedWithItsSequence()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(closeSequence());
    QVERIFY(QDir(m_fixture->folder + A).removeRecursively());
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::NotFound, told(outcome).constData());
    QCOMPARE(outcome.lines,
             QStringList{QString("Operand A %1 is not open and not among the recent sequences: "
                                 "open the sequence %2 and check again.")
                             .arg(A, ResultCheckFixture::SEQUENCE)});
    QCOMPARE(outcome.level(), 2L);
    m_fixture->workspace.window->recentSequences()->clear();
    QCOMPARE(check(result).lines.size(), 2);
}

void tst_ResultCheck::anOperandIsFoundWhereItLies_data()
{
    QTest::addColumn<QString>("moveTo"); // under the program-data path; empty: it stays
    QTest::addColumn<bool>("isRecent");
    QTest::newRow("in a recent sequence") << QString() << true;
    QTest::newRow("in the sequences of the program data") << QString("/sequences/") << false;
    QTest::newRow("in a sequence directly under the program data") << QString("/") << false;
}

void tst_ResultCheck::anOperandIsFoundWhereItLies()
{
    QFETCH(QString, moveTo);
    QFETCH(bool, isRecent);
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(closeSequence());
    QVERIFY(!CVXSDataset::getDataset(A));
    if (!isRecent)
        m_fixture->workspace.window->recentSequences()->clear();
    if (!moveTo.isEmpty()) {
        QVERIFY(check(result).verdict == Verdict::NotFound);
        const QString parent = CVXPreference::getProgramDataPath() + moveTo;
        QVERIFY(QDir().mkpath(parent));
        QVERIFY(QDir().rename(m_fixture->folder, parent + ResultCheckFixture::SEQUENCE));
    }
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY(!CVXSDataset::getDataset(A));
}

void tst_ResultCheck::aRenamedOperandIsFoundByItsImages()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(closeSequence());
    QVERIFY(ResultCheckFixture::edit(m_fixture->fileOf(B, "ClickInfo.txt"), B, "AB20990101000000"));
    QVERIFY(QDir().rename(m_fixture->folder + B, m_fixture->folder + "AB20990101000000"));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY2(anyLine(outcome, QString("%1 was renamed: its images are those of AB20990101000000").arg(B)),
             told(outcome).constData());
    // Renamed and changed, it is another image.
    QVERIFY(ResultCheckFixture::setPixel(m_fixture->folder + "AB20990101000000/luminescent.tif", 0, 1.0f));
    QVERIFY(check(result).verdict == Verdict::NotFound);
}

void tst_ResultCheck::aTamperedPixelIsFound_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("k");
    QTest::addColumn<float>("towards");
    QTest::newRow("by the last bit") << 1 << "0.37" << std::numeric_limits<float>::infinity();
    QTest::newRow("by the sign of a zero") << 2 << "0" << -1.0f;
}

void tst_ResultCheck::aTamperedPixelIsFound()
{
    QFETCH(int, operation);
    QFETCH(QString, k);
    QFETCH(float, towards);
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(operation, k);
    QVERIFY(result);
    CILImage stored;
    QCOMPARE(stored.loadTIFF(QFile::encodeName(resultFile(result)).constData()), EIL_SUCCESS);
    const auto before = float(stored.pixelAt(5, 3));
    const float after = before == 0.0f ? std::copysign(0.0f, towards) : std::nextafter(before, towards);
    QVERIFY(ResultCheckFixture::setPixel(resultFile(result), 3 * 32 + 5, after));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Different, told(outcome).constData());
    const QString most = QString::number(std::abs(double(after) - double(before)), 'g', 6);
    QVERIFY2(outcome.headline.contains(QString("1 of 1024 pixels differ, by %1 (counts) at most.").arg(most)),
             told(outcome).constData());
}

void tst_ResultCheck::aConstantKOffByTheLastBitIsFound()
{
    const CVXSDataset *result = plainResult("0.37");
    QVERIFY(result);
    imagemath::ResultRecord record = recordOf(result);
    QCOMPARE(record.k, 0.37f);
    record.k = std::nextafter(record.k, 1.0f);
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Different, told(outcome).constData());
    record.k = 0.37f;
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    QVERIFY(check(result).verdict == Verdict::Same);
}

void tst_ResultCheck::aResultWithoutUsableRecordIsNotChecked_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no description") << QByteArray() << "luminescent.tif does not tell how it was made.";
    QTest::newRow("text of another program") << QByteArray("ImageJ=1.53t\nunit=cm") << "is damaged";
    QTest::newRow("JSON that breaks off")
        << QByteArray("{\"image math\": {\"operation\": \"A") << "is damaged";
    QTest::newRow("JSON of another kind")
        << QByteArray("[1, 2]") << "\"image math\" is missing or of another type";
    QTest::newRow("a description of 3 MB")
        << QByteArray("{\"image math\": \"") + QByteArray(3000000, 'x') + "\"}"
        << "it has 3000018 bytes, more than any record";
}

void tst_ResultCheck::aResultWithoutUsableRecordIsNotChecked()
{
    QFETCH(QByteArray, description);
    QFETCH(QString, reason);
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(ResultCheckFixture::setDescription(result, description));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::NotFound, told(outcome).constData());
    QVERIFY2(outcome.lines.size() == 1 && outcome.lines.first().contains(reason), told(outcome).constData());
}

void tst_ResultCheck::aResultOfAnUnsavedOperandIsTheSame()
{
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    CVXSDataset *unsaved = nullptr;
    {
        TestStudy other("CD20260102030405_SEQ");
        ClickSpec spec = withFlatField(clickB());
        spec.clickNumber = "AB20260102030608";
        const CVXSDataset *made = other.add(spec);
        QVERIFY(made);
        unsaved = new CVXSDataset("AB20260102030699");
        QCOMPARE(unsaved->getClickInfo()->fromText(
                     made->getClickInfo()->toText().replace("AB20260102030608", "AB20260102030699"), nullptr),
                 ESTATUS_SUCCESS);
        for (tag_eimagetype type : {EIMAGE_LUMINESCENT, EIMAGE_FLATFIELD})
            unsaved->setCoreImage(type, *made->getCoreImage(type));
    }
    QVERIFY(m_fixture->sequence->addDataset(unsaved));
    QCOMPARE(unsaved->getDatasetType(), 2);
    const CVXSDataset *result = m_fixture->makeResult(1, "2", EUNIT_RADIANCE, false, 0, 2);
    QVERIFY(result);
    QCOMPARE(recordOf(result).b.files.size(), 2);
    const ResultCheck inMemory = check(result);
    QVERIFY2(inMemory.verdict == Verdict::Same, told(inMemory).constData());
    QVERIFY2(anyLine(inMemory, "as it is in memory"), told(inMemory).constData());
    QCOMPARE(unsaved->getDatasetType(), 2);
    QVERIFY(unsaved->isModified());
    // Saving it writes the same bytes.
    QCOMPARE(m_fixture->sequence->save(), ESTATUS_SUCCESS);
    QCOMPARE(unsaved->getDatasetType(), 0);
    const ResultCheck onDisk = check(result);
    QVERIFY2(onDisk.verdict == Verdict::Same && !anyLine(onDisk, "in memory"), told(onDisk).constData());
}

void tst_ResultCheck::changesInMemoryAreTold()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    m_fixture->sequence->getDataset(A)->setModified(true);
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
    QVERIFY2(
        anyLine(outcome, QString("%1 has changes that are not saved; its files on disk were taken.").arg(A)),
        told(outcome).constData());
    m_fixture->sequence->getDataset(A)->setModified(false);
}

void tst_ResultCheck::aPhotographThatWasExchangedIsTold()
{
    QVERIFY(m_fixture->open({clickA(), withPhotograph(clickB())}));
    const CVXSDataset *result = m_fixture->makeResult(1, "2", EUNIT_COUNTS, true);
    QVERIFY(result);
    QVERIFY(!recordOf(result).photograph.clickNumber.isEmpty());
    QVERIFY(check(result).verdict == Verdict::Same);
    QVERIFY(ResultCheckFixture::setPixel(result->getFolderPath() + "photograph.tif", 0, 77.0f));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::SameThoughChanged, told(outcome).constData());
    QVERIFY2(anyLine(outcome,
                     QString("photograph.tif of the result is not the recorded photograph of %1.").arg(B)),
             told(outcome).constData());
}

void tst_ResultCheck::aClickInfoThatSaysSomethingElseIsTold()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QVERIFY(ResultCheckFixture::edit(result->getFolderPath() + "ClickInfo.txt",
                                     "Intensity Calibration = counts",
                                     "Intensity Calibration = Radiance (Photons)"));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::SameThoughChanged, told(outcome).constData());
    QVERIFY2(anyLine(outcome, "says \"Intensity Calibration\" = Radiance (Photons); the record says counts."),
             told(outcome).constData());
}

void tst_ResultCheck::aResultThatCannotBeReadIsTold()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    QFile file(resultFile(result));
    QVERIFY(file.resize(file.size() / 2));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict != Verdict::Same && outcome.verdict != Verdict::Different,
             told(outcome).constData());
    QVERIFY2(anyLine(outcome, "luminescent.tif"), told(outcome).constData());
    QVERIFY(QFile::remove(result->getFolderPath() + "ClickInfo.txt"));
    QVERIFY(check(result).verdict == Verdict::Failed);
}

void tst_ResultCheck::aClickNumberThatIsAPathIsRefused()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = recordOf(result);
    record.a.clickNumber = QString("../%1/%2").arg(ResultCheckFixture::SEQUENCE, A);
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::NotFound, told(outcome).constData());
    QVERIFY2(anyLine(outcome, "is not a click number"), told(outcome).constData());
}

QTEST_MAIN(tst_ResultCheck)
#include "tst_ResultCheck.moc"
