// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXSLog.h"
#include "math/Computation.h"
#include "math/Formula.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace imagemath;

namespace {

const QString A = QStringLiteral("AB20260102030405");
const QString B = QStringLiteral("AB20260102030406");

ClickSpec specOf(const QString &click, float counts)
{
    ClickSpec spec;
    spec.clickNumber = click;
    spec.counts = [counts](int x, int) { return counts + float(x); };
    return spec;
}

} // namespace

class tst_Computation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyFormulaGivesItsResultAndItsRecord_data();
    void everyFormulaGivesItsResultAndItsRecord();
    void whatCannotBeCombinedLeavesTheResult_data();
    void whatCannotBeCombinedLeavesTheResult();
    void withoutAFormulaTheOperandsAreStillPrepared();
    void theCallerSeesTheOperandsFirst();
    void aCallerWhoRefusesLeavesTheResult();
    void theFinerOperandIsBinnedDown();
    void binnedCountsAddUpAndGiveTheSamePhotons_data();
    void binnedCountsAddUpAndGiveTheSamePhotons();
    void theOffsetThatAddsUpIsTold_data();
    void theOffsetThatAddsUpIsTold();
    void theThresholdIsOfCountsThatAddUp();
    void byTheRulesOf10CountsAreAveraged();
    void eachOperandIsSeenBeforeTheNextAndBeforeItIsBinned();
    void whoSeesAProblemMayEndIt();
    void correctionsForAComparison_data();
    void correctionsForAComparison();
    void correctionsAreSwitchedAsAsked();
    void theRecordTellsTheCorrectionsOfTheComputation();
    void aCorrectionThatCannotBeHadIsAProblem();
    void anOperandThatCannotBeCalibratedIsEmpty();
    void whyThereAreNoPixelsIsSaid_data();
    void whyThereAreNoPixelsIsSaid();
    void missingCountsAreAProblemOfTheThresholdedRatioAlone();
    void anUnreadablePhotographMasksNothing();
    void whatHasToBeKnownStandsInOutcomeAndRecord();
    void nothingIsSaidOfAPairThatGivesNoResult();
    void theFieldOfTheMaskIsToldWhereOneIsUsed_data();
    void theFieldOfTheMaskIsToldWhereOneIsUsed();
    void saturatedPixelsAreCountedBeforeAnyCorrectionAndBinning();
    void theRoiOfKGoesIntoTheRecord();

private:
    using OperandsReady = std::function<bool(const Outcome &)>;
    Outcome compute(const QString &formula, const OperandsReady &ready = {});
    void add(const ClickSpec &a, const ClickSpec &b);

    std::unique_ptr<TestStudy> m_study;
    Request m_request;
    CILImage m_a;
    CILImage m_b;
    CILImage m_result;
    TissueMaskMemo m_masks;
};

void tst_Computation::init()
{
    m_study = std::make_unique<TestStudy>();
    m_request = Request();
    m_request.k = 2.0f;
    m_a = m_b = CILImage();
    m_result = TestStudy::image(3, 1, [](int x, int) { return float(x); });
}

void tst_Computation::cleanup()
{
    m_study.reset();
}

void tst_Computation::add(const ClickSpec &a, const ClickSpec &b)
{
    m_request.a.dataset = m_study->add(a);
    m_request.b.dataset = m_study->add(b);
}

Outcome tst_Computation::compute(const QString &formula, const OperandsReady &ready)
{
    m_request.formula = formulaNamed(formula);
    Steps steps;
    steps.operandsReady = ready;
    return imagemath::compute(m_request, {m_a, m_b, m_result}, m_masks, steps);
}

void tst_Computation::everyFormulaGivesItsResultAndItsRecord_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<float>("pixel"); // of A = 300 and B = 100, k = 2
    QTest::addColumn<QString>("masked");
    QTest::newRow("sum") << "A + B * k" << 500.0f << QString();
    QTest::newRow("difference") << "A - B * k" << 100.0f << QString();
    QTest::newRow("product") << "A * B * k" << 60000.0f << QString();
    QTest::newRow("quotient") << "(A / B) * k" << 6.0f << QString();
    QTest::newRow("thresholded ratio, inside of the tissue") << "A/B if Counts(B)>k" << 300.0f << B;
}

void tst_Computation::everyFormulaGivesItsResultAndItsRecord()
{
    QFETCH(QString, formula);
    QFETCH(float, pixel);
    QFETCH(QString, masked);
    ClickSpec b = specOf(B, 100.0f);
    b.photograph = [](int x, int) { return x < 32 ? 200.0f : 10.0f; };
    b.luminescentKeys.insert(clickinfo::KEY_FLUORESCENCE_LEVEL, "High");
    add(specOf(A, 300.0f), b);

    const Outcome made = compute(formula);
    QCOMPARE(made.combination, Combination::Possible);
    QCOMPARE(made.problems, QStringList());
    QCOMPARE(int(m_result.getType()), int(VXS_FLOAT));
    QCOMPARE(int(m_result.getWidth()), 32);
    QCOMPARE(m_result.pixelAt(0, 16), double(pixel));

    QCOMPARE(made.record.operation, formula);
    QCOMPARE(made.record.k, 2.0f);
    QCOMPARE(made.record.unit, unitKey(EUNIT_COUNTS));
    QCOMPARE(made.record.a.clickNumber, A);
    QCOMPARE(made.record.b.clickNumber, B);
    QCOMPARE(made.record.a.sequenceId, m_study->sequence()->getSequenceID());
    QCOMPARE(made.record.maskPhotograph.clickNumber, masked);
    QVERIFY(QDateTime::fromString(made.record.computed, Qt::ISODate).isValid());
}

void tst_Computation::whatCannotBeCombinedLeavesTheResult_data()
{
    QTest::addColumn<bool>("hasA");
    QTest::addColumn<bool>("hasB");
    QTest::addColumn<double>("fieldOfView");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("combination");
    QTest::newRow("no image A") << false << true << 12.5 << 32 << int(Combination::MissingImage);
    QTest::newRow("no image B") << true << false << 12.5 << 32 << int(Combination::MissingImage);
    QTest::newRow("no image at all") << false << false << 12.5 << 32 << int(Combination::MissingImage);
    QTest::newRow("another field of view")
        << true << true << 12.6 << 32 << int(Combination::DifferentFieldOfView);
    QTest::newRow("another size") << true << true << 12.5 << 16 << int(Combination::DifferentSize);
}

void tst_Computation::whatCannotBeCombinedLeavesTheResult()
{
    QFETCH(bool, hasA);
    QFETCH(bool, hasB);
    QFETCH(double, fieldOfView);
    QFETCH(int, height);
    QFETCH(int, combination);
    ClickSpec b = specOf(B, 100.0f);
    b.fieldOfView = fieldOfView;
    b.height = height;
    add(specOf(A, 300.0f), b);
    if (!hasA)
        m_request.a.dataset = nullptr;
    if (!hasB)
        m_request.b.dataset = nullptr;
    const std::uint64_t before = m_result.contentId();

    const Outcome made = compute("A - B * k");
    QCOMPARE(int(made.combination), combination);
    QVERIFY(!messageOf(made.combination).isEmpty());
    QCOMPARE(m_result.contentId(), before);
    QVERIFY(made.record.isEmpty());
    QVERIFY(made.record.a.clickNumber.isEmpty());
    // What is there is still shown.
    QCOMPARE(!m_a.isEmpty(), hasA);
    QCOMPARE(!m_b.isEmpty(), hasB);
}

void tst_Computation::withoutAFormulaTheOperandsAreStillPrepared()
{
    add(specOf(A, 300.0f), specOf(B, 100.0f));
    const std::uint64_t before = m_result.contentId();
    const Outcome made = compute("A ^ B");
    QCOMPARE(made.combination, Combination::Possible);
    QCOMPARE(m_a.pixelAt(1, 0), 301.0);
    QCOMPARE(m_b.pixelAt(1, 0), 101.0);
    QCOMPARE(m_result.contentId(), before);
    QVERIFY(made.record.isEmpty());
    QCOMPARE(made.record.a.clickNumber, A);
}

void tst_Computation::theCallerSeesTheOperandsFirst()
{
    add(specOf(A, 300.0f), specOf(B, 100.0f));
    const std::uint64_t before = m_result.contentId();
    int calls = 0;
    const Outcome made = compute("A + B * k", [&](const Outcome &prepared) {
        ++calls;
        return prepared.combination == Combination::Possible && prepared.record.b.clickNumber == B &&
               prepared.record.isEmpty() && !m_a.isEmpty() && !m_b.isEmpty() &&
               m_result.contentId() == before;
    });
    QCOMPARE(calls, 1);
    QCOMPARE(made.record.operation, QString("A + B * k"));
    QCOMPARE(m_result.pixelAt(0, 0), 500.0);
}

void tst_Computation::aCallerWhoRefusesLeavesTheResult()
{
    add(specOf(A, 300.0f), specOf(B, 100.0f));
    const std::uint64_t before = m_result.contentId();
    const Outcome made = compute("A + B * k", [](const Outcome &) { return false; });
    QCOMPARE(m_result.contentId(), before);
    QVERIFY(made.record.isEmpty());
}

void tst_Computation::theFinerOperandIsBinnedDown()
{
    ClickSpec b = specOf(B, 100.0f);
    b.width = b.height = 16;
    b.binning = 8.0f;
    add(specOf(A, 300.0f), b);
    compute("A - B * k");
    QCOMPARE(int(m_result.getWidth()), 16);
    QCOMPARE(m_result.binningFactor(), 8.0f);
    QCOMPARE(m_a.binningFactor(), 8.0f);
}

void tst_Computation::binnedCountsAddUpAndGiveTheSamePhotons_data()
{
    QTest::addColumn<bool>("isAFine");
    QTest::addColumn<QString>("formula");
    for (const bool isAFine : {true, false})
        for (const char *formula : {"A + B * k", "A - B * k"})
            QTest::addRow("%s, %s is binned down", formula, isAFine ? "A" : "B") << isAFine << formula;
}

// The camera adds up what it bins: at binning 8 a pixel has the counts of four at binning 4. Counts that are
// converted afterwards are the radiance that is computed at once.
void tst_Computation::binnedCountsAddUpAndGiveTheSamePhotons()
{
    QFETCH(bool, isAFine);
    QFETCH(QString, formula);
    ClickSpec fine = specOf(isAFine ? A : B, 0.0f);
    fine.counts = [](int x, int y) { return float(50 + x + y * y); };
    ClickSpec coarse = specOf(isAFine ? B : A, 0.0f);
    coarse.width = coarse.height = 16;
    coarse.binning = 8.0f;
    coarse.counts = [&fine](int x, int y) {
        return fine.counts(2 * x, 2 * y) + fine.counts(2 * x + 1, 2 * y) + fine.counts(2 * x, 2 * y + 1) +
               fine.counts(2 * x + 1, 2 * y + 1);
    };
    add(isAFine ? fine : coarse, isAFine ? coarse : fine);
    m_request.k = 1.0f;
    const Outcome inCounts = compute(formula);
    const CILImage counts = m_result;
    for (unsigned i = 0; i < counts.pixelCount(); ++i)
        QCOMPARE(m_a.pixelAt(i % 16, i / 16), m_b.pixelAt(i % 16, i / 16));
    QVERIFY(counts.valuesAddUp());
    QCOMPARE(inCounts.record.binning, 8.0);
    QCOMPARE(counts.pixelsAdded(), isAFine ? 4.0 : 1.0); // as of the left operand
    // As a result is calibrated: by its own binning.
    CVXSDataset result(QStringLiteral("AB20260102030407"));
    result.getClickInfo()->fromText(m_request.a.dataset->getClickInfo()->toText(), nullptr);
    result.setCoreImage(EIMAGE_LUMINESCENT, counts);
    CILImage converted;
    QCOMPARE(result.getCalibratedLuminImage(EUNIT_RADIANCE, &converted, "test"), ESTATUS_SUCCESS);

    m_request.unit = EUNIT_RADIANCE;
    compute(formula);
    QVERIFY(!m_result.valuesAddUp());
    for (unsigned i = 0; i < counts.pixelCount(); ++i) {
        const double computed = m_result.pixelAt(i % 16, i / 16);
        QVERIFY2(std::abs(converted.pixelAt(i % 16, i / 16) - computed) <= 4e-7 * m_a.pixelAt(i % 16, i / 16),
                 qPrintable(QString::number(computed)));
    }
}

void tst_Computation::theOffsetThatAddsUpIsTold_data()
{
    QTest::addColumn<bool>("hasBackground");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("counts without a background image") << false << int(EUNIT_COUNTS) << true;
    QTest::newRow("counts less their background") << true << int(EUNIT_COUNTS) << false;
    QTest::newRow("radiance is averaged") << false << int(EUNIT_RADIANCE) << false;
}

void tst_Computation::theOffsetThatAddsUpIsTold()
{
    QFETCH(bool, hasBackground);
    QFETCH(int, unit);
    QFETCH(bool, isTold);
    ClickSpec b = specOf(B, 100.0f);
    b.width = b.height = 16;
    b.binning = 8.0f;
    add(specOf(A, 300.0f), b);
    if (hasBackground)
        m_request.a.dataset->setCoreImage(EIMAGE_BACKGROUND,
                                          TestStudy::image(32, 32, [](int, int) { return 100.0f; }));
    m_request.a.corrections = correctionsOf(*m_request.a.dataset);
    m_request.unit = tag_edisplayunit(unit);
    const Outcome made = compute("A - B * k");
    const QStringList told = textsOf(made.notes).filter("offset adds up");
    QCOMPARE(told.size(), isTold ? 1 : 0);
    QCOMPARE(made.record.notes, textsOf(made.notes));
    if (isTold)
        QVERIFY2(told.first().startsWith("A was binned from 4 to 8 ") && told.first().contains("to 4 times"),
                 qPrintable(told.first()));
}

void tst_Computation::theThresholdIsOfCountsThatAddUp()
{
    ClickSpec a = specOf(A, 0.0f);
    a.width = a.height = 16;
    a.binning = 8.0f;
    a.counts = [](int, int) { return 40.0f; };
    ClickSpec b = specOf(B, 0.0f);
    b.counts = [](int x, int) { return x < 16 ? 2.0f : 3.0f; }; // 8 and 12 at binning 8
    add(a, b);
    m_request.k = 10.0f;
    compute("A/B if Counts(B)>k");
    QCOMPARE(m_result.pixelAt(7, 3), 0.0);
    QCOMPARE(m_result.pixelAt(8, 3), double(40.0f / 12.0f * 10.0f));
}

void tst_Computation::byTheRulesOf10CountsAreAveraged()
{
    ClickSpec b = specOf(B, 100.0f);
    b.width = b.height = 16;
    b.binning = 8.0f;
    add(specOf(A, 300.0f), b);
    m_request.a.dataset->setCalibrationRules(ECALIBRATION_1_0);
    m_request.b.dataset->setCalibrationRules(ECALIBRATION_1_0);
    const Outcome made = compute("A - B * k");
    QCOMPARE(m_a.pixelAt(0, 0), 300.5);
    QCOMPARE(textsOf(made.notes).filter("offset"), QStringList());
}

void tst_Computation::eachOperandIsSeenBeforeTheNextAndBeforeItIsBinned()
{
    ClickSpec b = specOf(B, 100.0f);
    b.width = b.height = 16;
    b.binning = 8.0f;
    add(specOf(A, 300.0f), b);
    m_request.formula = formulaNamed("A - B * k");
    QStringList seen;
    Steps steps;
    steps.operandFetched = [&](const Outcome &, const CILImage &image) {
        seen << QString("%1 %2, B %3")
                    .arg(&image == &m_a ? "A" : "B")
                    .arg(image.getWidth())
                    .arg(m_b.getWidth());
        return true;
    };
    steps.operandsReady = [&](const Outcome &) {
        seen << QString("both, A %1").arg(m_a.getWidth());
        return true;
    };
    imagemath::compute(m_request, {m_a, m_b, m_result}, m_masks, steps);
    QCOMPARE(seen, (QStringList{"A 32, B 0", "B 16, B 16", "both, A 16"}));
}

void tst_Computation::whoSeesAProblemMayEndIt()
{
    ClickSpec a = specOf(A, 300.0f);
    a.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, QString());
    add(a, specOf(B, 100.0f));
    m_request.unit = EUNIT_RADIANCE;
    m_request.formula = formulaNamed("A - B * k");
    bool isReady = false;
    Steps steps;
    steps.operandFetched = [](const Outcome &so, const CILImage &) { return so.problems.isEmpty(); };
    steps.operandsReady = [&](const Outcome &) { return isReady = true; };
    const Outcome made = imagemath::compute(m_request, {m_a, m_b, m_result}, m_masks, steps);
    QCOMPARE(made.problems.size(), 1);
    QVERIFY(m_b.isEmpty() && !isReady);
}

void tst_Computation::correctionsForAComparison_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("already");
    QTest::addColumn<bool>("hasFlatField");
    QTest::addColumn<bool>("corrected");
    for (int unit = 0; unit < 4; ++unit) {
        QTest::newRow(qPrintable(QString("unit %1, not corrected").arg(unit)))
            << unit << false << true << (unit == 1);
        QTest::newRow(qPrintable(QString("unit %1, corrected already").arg(unit)))
            << unit << true << true << true;
        QTest::newRow(qPrintable(QString("unit %1, no flat field there").arg(unit)))
            << unit << false << false << false;
    }
}

void tst_Computation::correctionsForAComparison()
{
    QFETCH(int, unit);
    QFETCH(bool, already);
    QFETCH(bool, hasFlatField);
    QFETCH(bool, corrected);
    ClickSpec a = specOf(A, 300.0f);
    if (hasFlatField)
        a.flatField = [](int x, int) { return x < 16 ? 1.0f : 0.5f; };
    add(a, specOf(B, 100.0f));
    CVXSDataset *dataset = m_request.a.dataset;
    dataset->setUnit(tag_edisplayunit(unit));
    dataset->doFlatFieldCorrection(already);
    QCOMPARE(dataset->isLuminFlatFieldCorrected(), already);
    QSignalSpy changed(dataset, &CVXSDataset::calibrationChanged);
    m_request.a.corrections = correctionsFor(*dataset);
    bool correctedForIt = !corrected;
    compute("A - B * k", [&](const Outcome &) {
        correctedForIt = dataset->isLuminFlatFieldCorrected();
        return true;
    });
    QCOMPARE(correctedForIt, corrected);
    QCOMPARE(dataset->isLuminFlatFieldCorrected(), already); // handed back
    QCOMPARE(changed.count(), corrected != already ? 2 : 0);
}

void tst_Computation::correctionsAreSwitchedAsAsked()
{
    ClickSpec a = specOf(A, 300.0f);
    a.flatField = [](int x, int) { return x < 16 ? 1.0f : 0.5f; };
    add(a, specOf(B, 100.0f));
    m_request.a.corrections.flatField = true;
    compute("A - B * k");
    QCOMPARE(m_a.pixelAt(20, 0), 640.0); // (300 + 20) / 0.5
    m_request.a.corrections.flatField = false;
    compute("A - B * k");
    QCOMPARE(m_a.pixelAt(20, 0), 320.0);
}

void tst_Computation::theRecordTellsTheCorrectionsOfTheComputation()
{
    ClickSpec a = specOf(A, 300.0f);
    a.flatField = [](int, int) { return 1.0f; };
    add(a, specOf(B, 100.0f));
    m_request.a.corrections.flatField = true;
    const Outcome made = compute("A - B * k", [this](const Outcome &) {
        m_request.a.dataset->doFlatFieldCorrection(false); // as who hands it back where it is shown
        return true;
    });
    QVERIFY(made.record.a.flatFieldCorrected);
    QVERIFY(!made.record.b.flatFieldCorrected);
}

void tst_Computation::aCorrectionThatCannotBeHadIsAProblem()
{
    add(specOf(A, 300.0f), specOf(B, 100.0f));
    m_request.b.corrections.flatField = true;
    const Outcome made = compute("A - B * k");
    QCOMPARE(made.problems.size(), 1);
    QVERIFY2(made.problems.first().startsWith(B), qPrintable(made.problems.first()));
    QCOMPARE(m_result.pixelAt(0, 0), 100.0); // computed with what there is
}

void tst_Computation::anOperandThatCannotBeCalibratedIsEmpty()
{
    ClickSpec b = specOf(B, 100.0f);
    b.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, QString());
    add(specOf(A, 300.0f), b);
    compute("A - B * k");
    QVERIFY(!m_b.isEmpty());
    m_request.unit = EUNIT_RADIANCE;
    const Outcome made = compute("A - B * k");
    QVERIFY(m_b.isEmpty()); // not the counts of the time before
    QCOMPARE(made.problems.size(), 1);
    QVERIFY2(made.problems.first().contains(clickinfo::KEY_EXPOSURE), qPrintable(made.problems.first()));
    QCOMPARE(made.combination, Combination::DifferentSize);
}

void tst_Computation::whyThereAreNoPixelsIsSaid_data()
{
    QTest::addColumn<bool>("exposedA");
    QTest::addColumn<bool>("exposedB");
    QTest::addColumn<float>("binningB");
    QTest::addColumn<QString>("result");
    QTest::newRow("nothing is missing") << true << true << 4.0f << QString();
    QTest::newRow("A's exposure") << false << true << 4.0f << QStringLiteral("A has no pixels.");
    QTest::newRow("B's exposure") << true << false << 4.0f << QStringLiteral("B has no pixels.");
    QTest::newRow("both exposures") << false << false << 4.0f << QStringLiteral("A and B have no pixels.");
    QTest::newRow("a common grid")
        << true << true << 6.0f
        << QString::fromUtf8(
               "One binning is no multiple of the other: A has 48 × 48 pixels, binned by 4, and "
               "B has 32 × 32, binned by 6.");
}

void tst_Computation::whyThereAreNoPixelsIsSaid()
{
    QFETCH(bool, exposedA);
    QFETCH(bool, exposedB);
    QFETCH(float, binningB);
    QFETCH(QString, result);
    ClickSpec a = specOf(A, 300.0f);
    ClickSpec b = specOf(B, 100.0f);
    a.width = a.height = 48;
    b.width = b.height = int(192.0f / binningB);
    b.binning = binningB;
    if (!exposedA)
        a.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, QString());
    if (!exposedB)
        b.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, QString());
    add(a, b);
    m_request.unit = EUNIT_RADIANCE;
    const Outcome made = compute("A - B * k");
    QCOMPARE(made.empty.result, result);
    QCOMPARE(made.empty.a.contains(clickinfo::KEY_EXPOSURE), !exposedA);
    QCOMPARE(made.empty.b.contains(clickinfo::KEY_EXPOSURE), !exposedB);
    QCOMPARE(made.empty.a.isEmpty(), exposedA);
    QCOMPARE(made.empty.b.isEmpty(), exposedB);
    QCOMPARE(m_result.isEmpty(), exposedA == exposedB && !result.isEmpty());
}

void tst_Computation::missingCountsAreAProblemOfTheThresholdedRatioAlone()
{
    // A result in efficiency has no way back to counts.
    add(specOf(A, 300.0f), specOf(B, 100.0f));
    CPLClickInfo *info = m_request.b.dataset->getClickInfo();
    clickinfo::ensureSection(info, clickinfo::SECTION_LUMINESCENT)
        ->setValue(clickinfo::KEY_MATH_OPERATION, QString("A - B * k"));
    clickinfo::ensureSection(info, clickinfo::SECTION_GRAPH_CONTROLS)
        ->setValue(clickinfo::KEY_INTENSITY_CALIBRATION, unitKey(EUNIT_EFFICIENCY));
    m_request.a.dataset = m_request.b.dataset;
    m_request.unit = EUNIT_EFFICIENCY;
    QCOMPARE(compute("A + B * k").problems, QStringList());
    QCOMPARE(m_result.pixelAt(0, 0), 300.0);
    QCOMPARE(compute("A/B if Counts(B)>k").problems.size(), 1);
}

void tst_Computation::anUnreadablePhotographMasksNothing()
{
    ClickSpec b = specOf(B, 100.0f);
    b.photograph = [](int x, int) { return x < 32 ? 200.0f : 10.0f; };
    add(specOf(A, 300.0f), b);
    QVERIFY(m_study->save());
    const QString folder = m_study->sequence()->getSequenceInfoPath();
    m_study->close();
    QFile photograph(folder + B + "/photograph.tif");
    QVERIFY(photograph.open(QIODevice::WriteOnly)); // cut to nothing
    photograph.close();
    const std::unique_ptr<CVXSSequenceDataset> again(CVXSSequenceDataset::open(folder, nullptr, nullptr));
    QVERIFY(again);
    m_request.a.dataset = again->getDataset(A);
    m_request.b.dataset = again->getDataset(B);
    getLogObject()->clear();
    const Outcome made = compute("A/B if Counts(B)>k");
    QCOMPARE(m_result.pixelAt(31, 0), double(331.0f / 131.0f * 10.0f));
    QVERIFY(made.record.maskPhotograph.clickNumber.isEmpty());
    QCOMPARE(getLogObject()->entries().last().message,
             QString("The photograph of %1 cannot be read; the result has no tissue mask").arg(B));
}

void tst_Computation::whatHasToBeKnownStandsInOutcomeAndRecord()
{
    ClickSpec a = specOf(A, 64990.0f); // 22 columns of 32 from 65000 on
    a.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, "1");
    ClickSpec b = specOf(B, 100.0f);
    b.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, "10");
    add(a, b);
    const Outcome made = compute("A - B * k");
    QCOMPARE(textsOf(made.notes),
             QStringList({"A was exposed 1 s, B 10 s; the unit is counts",
                          "704 of 1024 pixels of A are saturated (65000 counts or more)"}));
    QCOMPARE(made.record.notes, textsOf(made.notes));
    QCOMPARE(made.record.a.saturatedPixels, qint64(704));
    QCOMPARE(made.record.a.pixels, qint64(1024));
    QCOMPARE(made.record.a.saturationCeiling, 65000.0);
    QCOMPARE(made.record.b.saturatedPixels, qint64(0));
    QCOMPARE(made.problems, QStringList());
    // In radiance the settings are reckoned with; what the camera did not see is lost.
    m_request.unit = EUNIT_RADIANCE;
    QCOMPARE(textsOf(compute("A - B * k").notes),
             QStringList("704 of 1024 pixels of A are saturated (65000 counts or more)"));
}

void tst_Computation::nothingIsSaidOfAPairThatGivesNoResult()
{
    ClickSpec a = specOf(A, 64990.0f);
    a.fieldOfView = 13.0;
    add(a, specOf(B, 100.0f));
    const Outcome made = compute("A - B * k");
    QCOMPARE(made.combination, Combination::DifferentFieldOfView);
    QVERIFY(made.notes.isEmpty());
}

void tst_Computation::theFieldOfTheMaskIsToldWhereOneIsUsed_data()
{
    QTest::addColumn<QString>("formula");
    QTest::addColumn<double>("field"); // of the photograph [cm]; the image's is 12.5
    QTest::addColumn<bool>("isTold");
    QTest::newRow("a mask of another field") << "A/B if Counts(B)>k" << 25.0 << true;
    QTest::newRow("a mask of the same field") << "A/B if Counts(B)>k" << 12.5 << false;
    QTest::newRow("a formula without mask") << "(A / B) * k" << 25.0 << false;
}

void tst_Computation::theFieldOfTheMaskIsToldWhereOneIsUsed()
{
    QFETCH(QString, formula);
    QFETCH(double, field);
    QFETCH(bool, isTold);
    ClickSpec b = specOf(B, 100.0f);
    b.photograph = [](int x, int) { return x < 32 ? 200.0f : 10.0f; };
    add(specOf(A, 300.0f), b);
    clickinfo::ensureSection(m_request.b.dataset->getClickInfo(), clickinfo::SECTION_PHOTOGRAPH)
        ->setValue(clickinfo::KEY_FOV, clickinfo::textOfNumber(field));
    const Outcome made = compute(formula);
    const QString text(
        "The photograph of B shows 25 x 25 cm, its image 12.5 x 12.5 cm; the tissue mask takes both "
        "for the same field");
    QCOMPARE(textsOf(made.notes), isTold ? QStringList(text) : QStringList());
    QCOMPARE(made.record.notes, textsOf(made.notes));
    // The mask itself stays as it is: the left half of the photograph over the left half of the image.
    if (isTold) {
        QVERIFY(m_result.pixelAt(0, 16) > 0.0);
        QCOMPARE(m_result.pixelAt(31, 16), 0.0);
    }
}

void tst_Computation::saturatedPixelsAreCountedBeforeAnyCorrectionAndBinning()
{
    ClickSpec a = specOf(A, 64990.0f);
    a.width = a.height = 64; // 54 columns of 64 from 65000 on
    a.binning = 2.0f;
    a.flatField = [](int, int) { return 2.0f; };
    add(a, specOf(B, 100.0f));
    m_request.a.dataset->setCoreImage(EIMAGE_BACKGROUND,
                                      TestStudy::image(64, 64, [](int, int) { return 500.0f; }));
    m_request.a.corrections = {true, true};
    QCOMPARE(textsOf(compute("A - B * k").notes).filter("saturated"),
             QStringList("3456 of 4096 pixels of A are saturated (65000 counts or more)"));
}

void tst_Computation::theRoiOfKGoesIntoTheRecord()
{
    add(specOf(A, 300.0f), specOf(B, 100.0f));
    QVERIFY(!compute("A - B * k").record.roiOfK);
    RoiOfK roi;
    roi.name = "Bkg 1";
    roi.unit = unitKey(EUNIT_COUNTS);
    roi.inA = {A, 5.0, 7};
    roi.inB = {B, 4.0, 0};
    m_request.roiOfK = roi;
    const Outcome made = compute("A - B * k");
    QVERIFY(made.record.roiOfK);
    QCOMPARE(made.record.roiOfK->name, QString("Bkg 1"));
    QCOMPARE(textsOf(made.notes),
             QStringList("k is from the ROI \"Bkg 1\", where 7 pixels of A are saturated"));
}

QTEST_GUILESS_MAIN(tst_Computation)
#include "tst_Computation.moc"
