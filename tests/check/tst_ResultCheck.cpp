// SPDX-License-Identifier: MIT
#include "tests/support/Files.h"
#include "tests/support/ResultCheckFixture.h"
#include "tests/support/Rows.h"

#include <cmath>
#include <limits>

using namespace resultcheck;
using Verdict = ResultCheck::Verdict;

Q_DECLARE_METATYPE(ClickSpec)
Q_DECLARE_METATYPE(tag_edisplayunit)
Q_DECLARE_METATYPE(tag_eimagetype)
Q_DECLARE_METATYPE(ResultCheck::Verdict)

/// Results of the real tool, computed again after something happened to them or to their operands.
class tst_ResultCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ResultCheckFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void anUntouchedResultIsTheSame_data();
    void anUntouchedResultIsTheSame();
    void anUntouchedResultOfCompanionImagesIsTheSame_data();
    void anUntouchedResultOfCompanionImagesIsTheSame();
    void pixelsThatAreNoNumbersAreComparedToo();
    void aChangedOperandIsNamed();
    void aChangedConstantIsNamed_data();
    void aChangedConstantIsNamed();
    void aMissingFileIsNamed();
    void aFileThatWasNotThereIsNamed();
    void aTamperedPixelIsFound_data();
    void aTamperedPixelIsFound();
    void aConstantKOffByTheLastBitIsFound();
    void aResultWithoutUsableRecordIsNotChecked_data();
    void aResultWithoutUsableRecordIsNotChecked();
    void aPhotographThatWasExchangedIsTold();
    void aClickInfoThatSaysSomethingElseIsTold();
    void anEarlierRecordIsCheckedAsWell();
    void anRoiThatGivesAnotherKIsTold();
    void aResultThatCannotBeReadIsTold();
    void aRecordOfAnySizeIsToldInFewLines();
    void aResultOfVersion10IsComputedByItsRules();

private:
    ResultCheck check(const CVXSDataset *result) const { return m_fixture->check(result); }
    CVXSDataset *plainResult(const QString &k = "0.37") const { return m_fixture->makePlainResult(k); }

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

void tst_ResultCheck::anUntouchedResultOfCompanionImagesIsTheSame_data()
{
    QTest::addColumn<tag_eimagetype>("type");
    QTest::addColumn<tag_edisplayunit>("unit");
    QTest::newRow("a background that is subtracted") << EIMAGE_BACKGROUND << EUNIT_RADIANCE;
    QTest::newRow("an excitation reference under efficiency") << EIMAGE_EXCITATION << EUNIT_EFFICIENCY;
}

void tst_ResultCheck::anUntouchedResultOfCompanionImagesIsTheSame()
{
    QFETCH(tag_eimagetype, type);
    QFETCH(tag_edisplayunit, unit);
    QVERIFY(m_fixture->open({clickA(), clickB()}));
    for (const char *click : {A, B})
        m_fixture->sequence->getDataset(click)->setCoreImage(
            type, TestStudy::image(32, 32, [](int x, int y) { return 3.3f + 0.1f * float(x + y); }));
    QCOMPARE(m_fixture->sequence->save(), ESTATUS_SUCCESS);
    const CVXSDataset *result = m_fixture->makeResult(3, "0.7", unit);
    QVERIFY(result);
    QCOMPARE(recordOf(result).a.backgroundSubtracted, type == EIMAGE_BACKGROUND);
    QCOMPARE(recordOf(result).a.files.size(), 2);
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
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
    QVERIFY2(outcome.headline.contains("1 of 1024 pixels differ, by at most 16 [counts]."),
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
    QVERIFY(replaceEverywhereInFile(m_fixture->fileOf(A, "ClickInfo.txt"), from, to));
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

void tst_ResultCheck::aTamperedPixelIsFound_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("k");
    QTest::addColumn<float>("towards");
    QTest::addColumn<QString>("unit");
    QTest::newRow("by the last bit") << 1 << "0.37" << std::numeric_limits<float>::infinity() << "counts";
    QTest::newRow("by the sign of a zero") << 2 << "0" << -1.0f << "product";
}

void tst_ResultCheck::aTamperedPixelIsFound()
{
    QFETCH(int, operation);
    QFETCH(QString, k);
    QFETCH(float, towards);
    QFETCH(QString, unit);
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
    QVERIFY2(
        outcome.headline.contains(QString("1 of 1024 pixels differ, by at most %1 [%2].").arg(most, unit)),
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
    row("a description of 3 MB", QByteArray("{\"image math\": \"") + QByteArray(3000000, 'x') + "\"}",
        "it has 3000018 bytes, more than any record");
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
    QVERIFY(replaceEverywhereInFile(result->getFolderPath() + "ClickInfo.txt",
                                    "Intensity Calibration = counts",
                                    "Intensity Calibration = Radiance (Photons)"));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::SameThoughChanged, told(outcome).constData());
    QVERIFY2(anyLine(outcome, "says \"Intensity Calibration\" = Radiance (Photons); the record says counts."),
             told(outcome).constData());
}

void tst_ResultCheck::anEarlierRecordIsCheckedAsWell()
{
    ClickSpec a = clickA();
    a.luminescentKeys.insert("Exposure Time", "1");
    QVERIFY(m_fixture->open({a, clickB()}));
    const CVXSDataset *result = m_fixture->makeResult(1, "0.37");
    QVERIFY(result);
    imagemath::ResultRecord record = recordOf(result);
    QCOMPARE(record.notes.size(), 1);
    QCOMPARE(record.a.saturatedPixels, qint64(0));
    record.notes.clear();
    record.a.saturatedPixels = record.b.saturatedPixels = -1;
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    QVERIFY(!imagemath::toJson(recordOf(result)).contains("saturated"));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::Same, told(outcome).constData());
}

void tst_ResultCheck::anRoiThatGivesAnotherKIsTold()
{
    const CVXSDataset *result = plainResult("0.5");
    QVERIFY(result);
    imagemath::ResultRecord record = recordOf(result);
    imagemath::RoiOfK roi;
    roi.name = "Back";
    roi.unit = "counts";
    roi.inA = {A, 500.0, 0};
    roi.inB = {B, 1000.0, 0};
    record.roiOfK = roi;
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    QVERIFY2(check(result).verdict == Verdict::Same, told(check(result)).constData());
    record.roiOfK->inB.value = 1250.0;
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::SameThoughChanged, told(outcome).constData());
    QVERIFY(outcome.lines.contains(
        "k is recorded as 0.5, but the totals of the ROI \"Back\" that it is said to be "
        "of give 0.4."));
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

void tst_ResultCheck::aRecordOfAnySizeIsToldInFewLines()
{
    const CVXSDataset *result = plainResult();
    QVERIFY(result);
    imagemath::ResultRecord record = recordOf(result);
    for (int i = 0; i < 1000; ++i)
        record.a.files.append({QString("file%1.tif").arg(i), QString(64, '0')});
    record.a.constants.insert("luminescent image/" + QString(100000, 'x'), "1");
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    const ResultCheck outcome = check(result);
    QVERIFY2(outcome.verdict == Verdict::SameThoughChanged, outcome.headline.toUtf8().constData());
    QCOMPARE(outcome.lines.size(), 41);
    QCOMPARE(outcome.lines.first(), QString("file0.tif of A (%1) is missing or cannot be read.").arg(A));
    QCOMPARE(outcome.lines.last(), QString("And 963 more."));
    record.a.files.resize(1);
    QVERIFY(ResultCheckFixture::setDescription(result, imagemath::toJson(record)));
    QVERIFY(check(result).lines.join(QString()).size() < 3000);
}

// Version 1.0 took the mean of counts where it binned, and a flat field's own scale.
void tst_ResultCheck::aResultOfVersion10IsComputedByItsRules()
{
    ClickSpec fine = withFlatField(clickA());
    fine.binning = 2.0f;
    fine.width = fine.height = 64;
    QVERIFY(m_fixture->open({fine, clickB()}));
    m_fixture->sequence->getDataset(A)->doFlatFieldCorrection(true);
    const CVXSDataset *result = m_fixture->makeResult(1, "0.5");
    QVERIFY(result);
    QVERIFY(check(result).verdict == Verdict::Same);

    CILImage a = TestStudy::image(64, 64, fine.counts);
    a /= TestStudy::image(64, 64, fine.flatField);
    a.downSample(32, 32, IL_RESAMPLE_BINNING);
    CILImage b = TestStudy::image(32, 32, clickB().counts);
    b *= 0.5;
    imagemath::ResultRecord record = recordOf(result);
    QCOMPARE(record.binning, 4.0);
    for (const char *version : {"1.0.0(Aug 12 2025)", "1.0.7(Aug 12 2025)", "1.1.0(Aug 12 2026)"}) {
        const bool isOf10 = QByteArray(version).startsWith("1.0.");
        record.version = version;
        record.binning = isOf10 ? 0.0 : 4.0;
        QVERIFY(ResultCheckFixture::rewrite(resultFile(result), [&](CILImage &image) {
            image = a - b;
            image.setDescription(imagemath::toJson(record).toStdString());
        }));
        const ResultCheck outcome = check(result);
        QVERIFY2(outcome.verdict == (isOf10 ? Verdict::Same : Verdict::Different), told(outcome).constData());
        QVERIFY2(anyLine(outcome, "made by version " + record.version) == isOf10, told(outcome).constData());
    }
}

QTEST_MAIN(tst_ResultCheck)
#include "tst_ResultCheck.moc"
