// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/PairNotes.h"
#include "math/ResultRecord.h"
#include "math/RoiOfK.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <memory>
#include <QtTest>

using namespace clickinfo;
using imagemath::Note;

Q_DECLARE_METATYPE(tag_edisplayunit)

namespace {

const QString A = QStringLiteral("AB20260102030405");
const QString B = QStringLiteral("AB20260102030406");
constexpr float BRIGHT = 65000.0f;

/// 8 x 4 pixels, of which the first `saturated` have 65000 counts and the others one less.
ClickSpec specOf(const QString &click, int saturated = 0)
{
    ClickSpec spec = ClickSpec::of(click);
    spec.width = 8;
    spec.height = 4;
    spec.counts = [saturated](int x, int y) { return y * 8 + x < saturated ? BRIGHT : BRIGHT - 1.0f; };
    return spec;
}

} // namespace

/// What is said beside a result that its number cannot tell.
class tst_PairNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_study.reset(); }
    void saturatedPixels_data();
    void saturatedPixels();
    void aResultHasNoCeiling();
    void settings_data();
    void settings();
    void severalDifferencesAreOneSentence();
    void otherUnitsKnowTheSettings_data();
    void otherUnitsKnowTheSettings();
    void onlyOneOfTheTwoIsCorrected_data();
    void onlyOneOfTheTwoIsCorrected();
    void theMasksField_data();
    void theMasksField();
    void saturatedPixelsInTheRoiOfK_data();
    void anRoiOfAnotherPairOrUnit();
    void aRatioWithSomethingElse();
    void saturatedPixelsInTheRoiOfK();

private:
    void add(const ClickSpec &a, const ClickSpec &b)
    {
        m_study = std::make_unique<TestStudy>();
        m_a = m_study->add(a);
        m_b = m_study->add(b);
        QVERIFY(m_a && m_b);
    }

    std::unique_ptr<TestStudy> m_study;
    CVXSDataset *m_a = nullptr;
    CVXSDataset *m_b = nullptr;
};

void tst_PairNotes::saturatedPixels_data()
{
    QTest::addColumn<int>("inA");
    QTest::addColumn<int>("inB");
    QTest::addColumn<QStringList>("texts");
    const QString ofA = QStringLiteral("16 of 32 pixels of A are saturated (65000 counts or more)");
    const QString ofB = QStringLiteral("1 of 32 pixels of B are saturated (65000 counts or more)");
    row("none", 0, 0, QStringList());
    row("half of A", 16, 0, QStringList(ofA));
    row("a single pixel of B", 0, 1, QStringList(ofB));
    row("both", 16, 1, QStringList({ofA, ofB}));
}

void tst_PairNotes::saturatedPixels()
{
    QFETCH(int, inA);
    QFETCH(int, inB);
    QFETCH(QStringList, texts);
    add(specOf(A, inA), specOf(B, inB));
    const imagemath::Notes notes = imagemath::saturationNotes(*m_a, *m_b);
    QCOMPARE(imagemath::textsOf(notes), texts);
    for (const Note &note : notes)
        QCOMPARE(note.kind, Note::Kind::Saturation);
}

void tst_PairNotes::aResultHasNoCeiling()
{
    ClickSpec result = specOf(A, 16);
    result.luminescentKeys.insert(KEY_MATH_OPERATION, "A * B * k");
    add(result, specOf(B));
    QVERIFY(imagemath::saturationNotes(*m_a, *m_b).isEmpty());
}

void tst_PairNotes::settings_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("ofA");
    QTest::addColumn<QString>("ofB");
    QTest::addColumn<QString>("text"); // before "; the unit is counts"; empty: nothing is said
    row("exposure", QString(KEY_EXPOSURE), "1", "10", "A was exposed 1 s, B 10 s");
    row("f-number", QString(KEY_FNUMBER), "1.2", "4", "A has f-number 1.2, B 4");
    row("gain", QString(KEY_GAIN), "2", "0.5", "A has 2 electrons per count, B 0.5");
    row("transmission", QString(KEY_TRANSMISSION), "0.5", "0.25", "A has a transmission of 0.5, B of 0.25");
    row("excitation filter", QString(KEY_EXCITATION_FILTER), "430", "465",
        "A has excitation filter 430, B 465");
    row("emission filter by name", QString(KEY_EMISSION_FILTER), "GFP", "Open",
        "A has emission filter GFP, B Open");
    row("the same", QString(KEY_EXPOSURE), "10", "10", "");
    row("the same number in other letters", QString(KEY_EXPOSURE), "10.0", "1e1", "");
    row("the same filter", QString(KEY_EMISSION_FILTER), "GFP", "GFP", "");
    row("recorded of A alone", QString(KEY_EXPOSURE), "10", QString(), "");
    row("recorded of B alone", QString(KEY_EMISSION_FILTER), QString(), "600", "");
    row("the imaging angle is asked for elsewhere", QString(KEY_IMAGING_ANGLE), "0", "90", "");
}

void tst_PairNotes::settings()
{
    QFETCH(QString, key);
    QFETCH(QString, ofA);
    QFETCH(QString, ofB);
    QFETCH(QString, text);
    ClickSpec a = specOf(A);
    ClickSpec b = specOf(B);
    (key == KEY_GAIN ? a.cameraKeys : a.luminescentKeys).insert(key, ofA);
    (key == KEY_GAIN ? b.cameraKeys : b.luminescentKeys).insert(key, ofB);
    add(a, b);
    const imagemath::Notes notes = imagemath::settingsNotes(*m_a, *m_b, EUNIT_COUNTS);
    QCOMPARE(imagemath::textsOf(notes),
             text.isEmpty() ? QStringList() : QStringList(text + "; the unit is counts"));
}

void tst_PairNotes::severalDifferencesAreOneSentence()
{
    ClickSpec a = specOf(A);
    ClickSpec b = specOf(B);
    for (const auto &key : {KEY_EXPOSURE, KEY_FNUMBER, KEY_EXCITATION_FILTER}) {
        a.luminescentKeys.insert(key, "1");
        b.luminescentKeys.insert(key, "2");
    }
    add(a, b);
    QCOMPARE(
        imagemath::textsOf(imagemath::settingsNotes(*m_a, *m_b, EUNIT_COUNTS)),
        QStringList("A was exposed 1 s, B 2 s; A has f-number 1, B 2; A has excitation filter 1, B 2; the "
                    "unit is counts"));
}

void tst_PairNotes::otherUnitsKnowTheSettings_data()
{
    QTest::addColumn<tag_edisplayunit>("unit");
    row("radiance", EUNIT_RADIANCE);
    row("radiant efficiency", EUNIT_RADIANT_EFFICIENCY);
    row("efficiency", EUNIT_EFFICIENCY);
}

void tst_PairNotes::otherUnitsKnowTheSettings()
{
    QFETCH(tag_edisplayunit, unit);
    ClickSpec a = specOf(A);
    a.luminescentKeys.insert(KEY_EXPOSURE, "1");
    add(a, specOf(B));
    QVERIFY(imagemath::settingsNotes(*m_a, *m_b, unit).isEmpty());
    QVERIFY(!imagemath::settingsNotes(*m_a, *m_b, EUNIT_COUNTS).isEmpty());
}

void tst_PairNotes::onlyOneOfTheTwoIsCorrected_data()
{
    QTest::addColumn<bool>("flatA");
    QTest::addColumn<bool>("flatB");
    QTest::addColumn<bool>("backgroundA");
    QTest::addColumn<bool>("backgroundB");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QStringList>("notes");
    const QString flatA = "A is corrected for the flat field, B is not";
    const QString flatB = "B is corrected for the flat field, A is not";
    const QString backgroundA = "A has its background subtracted, B has not";
    const QString backgroundB = "B has its background subtracted, A has not";
    const int counts = EUNIT_COUNTS;
    row("neither", false, false, false, false, counts, QStringList());
    row("both", true, true, true, true, counts, QStringList());
    row("the flat field of A", true, false, false, false, counts, QStringList{flatA});
    row("the flat field of B, in radiance", false, true, true, true, int(EUNIT_RADIANCE), QStringList{flatB});
    row("a flat field cancels out of efficiency", true, false, false, false, int(EUNIT_EFFICIENCY),
        QStringList());
    row("the background of A", false, false, true, false, counts, QStringList{backgroundA});
    row("the background of B, and the flat field of A", true, false, false, true, counts,
        QStringList{flatA, backgroundB});
}

void tst_PairNotes::onlyOneOfTheTwoIsCorrected()
{
    QFETCH(bool, flatA);
    QFETCH(bool, flatB);
    QFETCH(bool, backgroundA);
    QFETCH(bool, backgroundB);
    QFETCH(int, unit);
    QFETCH(QStringList, notes);
    imagemath::OperandRecord a;
    imagemath::OperandRecord b;
    a.flatFieldCorrected = flatA;
    b.flatFieldCorrected = flatB;
    a.backgroundSubtracted = backgroundA;
    b.backgroundSubtracted = backgroundB;
    QCOMPARE(imagemath::textsOf(imagemath::correctionNotes(a, b, tag_edisplayunit(unit))), notes);
}

void tst_PairNotes::theMasksField_data()
{
    QTest::addColumn<double>("fieldOfPhotograph"); // [cm]; the image's is 12.5 x 6.25
    QTest::addColumn<int>("heightOfPhotograph");   // of 64 pixels across
    QTest::addColumn<QString>("shows");            // empty: nothing is said
    row("the same field", 12.5, 32, "");
    row("as good as the same", 12.5000001, 32, "");
    row("twice as wide", 25.0, 32, "25 x 12.5");
    row("a part of it", 6.25, 32, "6.25 x 3.125");
    row("as wide, and higher", 12.5, 64, "12.5 x 12.5");
    row("not recorded", std::nan(""), 32, "");
}

void tst_PairNotes::theMasksField()
{
    QFETCH(double, fieldOfPhotograph);
    QFETCH(int, heightOfPhotograph);
    QFETCH(QString, shows);
    add(specOf(A), specOf(B));
    m_b->setCoreImage(EIMAGE_PHOTOGRAPH,
                      TestStudy::image(64, heightOfPhotograph, [](int x, int) { return float(x); }));
    if (!std::isnan(fieldOfPhotograph))
        ensureSection(m_b->getClickInfo(), SECTION_PHOTOGRAPH)
            ->setValue(KEY_FOV, textOfNumber(fieldOfPhotograph));
    const imagemath::Notes notes = imagemath::maskFieldNotes(*m_b, *m_b->getCoreImage(EIMAGE_PHOTOGRAPH));
    QCOMPARE(imagemath::textsOf(notes),
             shows.isEmpty()
                 ? QStringList()
                 : QStringList(QString("The photograph of B shows %1 cm, its image 12.5 x 6.25 cm; the "
                                       "tissue mask takes both for the same field")
                                   .arg(shows)));
    if (!notes.isEmpty())
        QCOMPARE(notes.first().kind, Note::Kind::MaskField);
}

void tst_PairNotes::anRoiOfAnotherPairOrUnit()
{
    imagemath::RoiOfK roi;
    roi.name = "Back";
    roi.unit = unitKey(EUNIT_COUNTS);
    roi.inA = {"A1", 5.0, 7};
    roi.inB = {"B1", 4.0, 0};
    imagemath::OperandRecord a;
    imagemath::OperandRecord b;
    a.clickNumber = "A1";
    b.clickNumber = "B1";
    const auto notes = [&](tag_edisplayunit unit) {
        return imagemath::textsOf(imagemath::roiNotes(roi, a, b, unit));
    };
    QCOMPARE(notes(EUNIT_COUNTS),
             QStringList("k is from the ROI \"Back\", where 7 pixels of A are saturated"));
    QCOMPARE(notes(EUNIT_RADIANCE), QStringList("k is from the ROI \"Back\" in another unit, counts"));
    std::swap(a, b);
    QCOMPARE(notes(EUNIT_COUNTS), QStringList("k is from the ROI \"Back\" of another pair, A1 and B1"));
}

void tst_PairNotes::aRatioWithSomethingElse()
{
    const auto notes = [this] {
        return imagemath::textsOf(imagemath::valuesNotes(*m_a, *m_b, EUNIT_COUNTS));
    };
    const auto become = [](CVXSDataset *dataset, const char *operation) {
        clickinfo::ensureSection(dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT)
            ->setValue(clickinfo::KEY_MATH_OPERATION, QString(operation));
    };
    add(specOf(A), specOf(B));
    QCOMPARE(notes(), QStringList());
    become(m_a, "(A / B) * k");
    QCOMPARE(notes(), QStringList("A and B are of different kinds: ratio and counts"));
    become(m_b, "A * B * k");
    QCOMPARE(notes(), QStringList("A and B are of different kinds: ratio and product"));
    become(m_b, "A/B if Counts(B)>k");
    QCOMPARE(notes(), QStringList());
}

void tst_PairNotes::saturatedPixelsInTheRoiOfK_data()
{
    QTest::addColumn<int>("inA");
    QTest::addColumn<int>("inB");
    QTest::addColumn<QString>("text");
    row("none", 0, 0, "");
    row("of results, which have no ceiling", -1, -1, "");
    row("in A", 12, 0, "k is from the ROI \"Bkg 1\", where 12 pixels of A are saturated");
    row("in B, and A is a result", -1, 3, "k is from the ROI \"Bkg 1\", where 3 pixels of B are saturated");
    row("in both", 12, 3, "k is from the ROI \"Bkg 1\", where 12 pixels of A, 3 pixels of B are saturated");
}

void tst_PairNotes::saturatedPixelsInTheRoiOfK()
{
    QFETCH(int, inA);
    QFETCH(int, inB);
    QFETCH(QString, text);
    imagemath::RoiOfK roi;
    roi.unit = unitKey(EUNIT_COUNTS);
    roi.name = QStringLiteral("Bkg 1");
    roi.inA.saturatedPixels = inA;
    roi.inB.saturatedPixels = inB;
    QCOMPARE(imagemath::textsOf(imagemath::roiNotes(roi, {}, {}, EUNIT_COUNTS)),
             text.isEmpty() ? QStringList() : QStringList(text));
}

QTEST_GUILESS_MAIN(tst_PairNotes)
#include "tst_PairNotes.moc"
