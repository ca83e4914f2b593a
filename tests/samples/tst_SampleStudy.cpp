// SPDX-License-Identifier: MIT
#include "samples/SampleStudy.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/Formula.h"
#include "math/OperandPreparation.h"
#include "math/ResultRecord.h"
#include "math/TissueMask.h"
#include "samples/Camera.h"
#include "samples/Phantom.h"
#include "tests/support/PixelCompare.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

using namespace samplestudy;

/// The study holds what it promises, byte for byte and by numbers.
class tst_SampleStudy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aSeedGivesTheSameBytes();
    void everyClickIsThere_data();
    void everyClickIsThere();
    void theNoteIsTheLastPairOfItsSection();
    void keysThatTellClicksApart_data();
    void keysThatTellClicksApart();
    void everyUnitIsThere_data();
    void everyUnitIsThere();
    void pairsAreWhatTheyAreFor_data();
    void pairsAreWhatTheyAreFor();
    void thePairOfTwoBinningsGivesTheSamePhotons();
    void theMainJobLeavesNoiseAlone_data();
    void theMainJobLeavesNoiseAlone();
    void everyKindOfDatasetIsThere_data();
    void everyKindOfDatasetIsThere();
    void theUnsavedClickHasAPlaceAndNoFiles();
    void theOverviewIsMarkedAndCanBeCombined();
    void theResultIsOfTheMainJob();
    void theCameraFilesGiveTheirKAboveTheOffsetOnly();
    void aFolderThatCannotBeMadeIsTold();

private:
    QByteArray hashOf(const QString &folder) const;
    CVXSDataset *dataset(const QString &click) const { return m_sequence->getDataset(click); }
    CILImage calibrated(const QString &click, tag_edisplayunit unit) const;

    QTemporaryDir m_folder;
    std::unique_ptr<CVXSSequenceDataset> m_sequence;
};

void tst_SampleStudy::initTestCase()
{
    QString error;
    QCOMPARE(make(m_folder.path(), 1, &error), ESTATUS_SUCCESS);
    ESTATUS status = ESTATUS_FAILURE;
    QStringList warnings;
    m_sequence.reset(CVXSSequenceDataset::open(m_folder.filePath(SEQUENCE_ID), &status, &error, &warnings));
    QVERIFY2(m_sequence, qPrintable(error));
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
}

QByteArray tst_SampleStudy::hashOf(const QString &folder) const
{
    QStringList files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next().mid(folder.size()));
    files.sort();
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &name : files) {
        QFile file(folder + name);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        hash.addData(name.toUtf8());
        hash.addData(file.readAll());
    }
    return files.size() > 60 ? hash.result() : QByteArray();
}

CILImage tst_SampleStudy::calibrated(const QString &click, tag_edisplayunit unit) const
{
    CILImage image;
    dataset(click)->getCalibratedLuminImage(unit, &image, QStringLiteral("tst_SampleStudy"));
    return image;
}

void tst_SampleStudy::aSeedGivesTheSameBytes()
{
    QTemporaryDir again;
    QTemporaryDir other;
    // A click number is open once only, so the first study is closed while others are made.
    m_sequence.reset();
    QString error;
    QCOMPARE(make(again.path(), 1, &error), ESTATUS_SUCCESS);
    QCOMPARE(make(other.path(), 2, &error), ESTATUS_SUCCESS);
    QVERIFY(!hashOf(m_folder.path()).isEmpty());
    QCOMPARE(hashOf(again.path()), hashOf(m_folder.path()));
    QVERIFY(hashOf(other.path()) != hashOf(m_folder.path()));
    ESTATUS status = ESTATUS_FAILURE;
    m_sequence.reset(CVXSSequenceDataset::open(m_folder.filePath(SEQUENCE_ID), &status, &error));
    QVERIFY2(m_sequence, qPrintable(error));
}

void tst_SampleStudy::everyClickIsThere_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("luminescent");
    QTest::addColumn<bool>("fluorescent");
    QTest::addColumn<bool>("photograph");
    QTest::newRow(FLUORESCENCE_A.data()) << 0 << false << true << true;
    QTest::newRow(FLUORESCENCE_B.data()) << 1 << false << true << true;
    QTest::newRow(LUMINESCENCE_BIN4.data()) << 2 << true << false << true;
    QTest::newRow(LUMINESCENCE_BIN8.data()) << 3 << true << false << true;
    QTest::newRow(LUMINESCENCE_FIELD.data()) << 4 << true << false << true;
    QTest::newRow(LUMINESCENCE_SIZE.data()) << 5 << true << false << true;
    QTest::newRow(RATIO_A.data()) << 6 << false << true << true;
    QTest::newRow(RATIO_B_HIGH.data()) << 7 << false << true << true;
    QTest::newRow(RATIO_B_LOW.data()) << 8 << false << true << true;
    QTest::newRow(RATIO_B_NO_PHOTO.data()) << 9 << false << true << false;
    QTest::newRow(PHOTOGRAPH_ONLY.data()) << 10 << false << false << true;
    QTest::newRow(TRANSILLUMINATION.data()) << 11 << false << true << true;
    QTest::newRow(OTHER_ANGLE.data()) << 12 << false << true << true;
}

void tst_SampleStudy::everyClickIsThere()
{
    QFETCH(int, position);
    QFETCH(bool, luminescent);
    QFETCH(bool, fluorescent);
    QFETCH(bool, photograph);
    const QString click = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(m_sequence->getClickNumbers().value(position), click);
    const CVXSDataset *found = (*m_sequence)[unsigned(position)];
    QVERIFY(found);
    QCOMPARE(found->isLuminescentDataset(), luminescent);
    QCOMPARE(found->isFluorescentDataset(), fluorescent);
    QCOMPARE(found->getImageList()->isPresent(EIMAGE_PHOTOGRAPH), photograph);
    QCOMPARE(found->getImageList()->isPresent(EIMAGE_LUMINESCENT), luminescent || fluorescent);
    if (photograph)
        QVERIFY(found->getCoreImage(EIMAGE_PHOTOGRAPH));
    if (luminescent || fluorescent) {
        const CILImage *core = found->getCoreImage(EIMAGE_LUMINESCENT);
        QVERIFY(core);
        QCOMPARE(int(core->getType()), int(VXS_UINT16));
        if (photograph)
            QCOMPARE(found->getCoreImage(EIMAGE_PHOTOGRAPH)->getWidth(), 2 * core->getWidth());
    }
}

// What a tool puts before the note is what a reader of the section finds.
void tst_SampleStudy::theNoteIsTheLastPairOfItsSection()
{
    int notes = 0;
    for (const CVXSDataset *found : m_sequence->getDatasets()) {
        for (const QLatin1String key : {clickinfo::SECTION_LUMINESCENT, clickinfo::SECTION_PHOTOGRAPH}) {
            const CPLSection *section = (*found->getClickInfo())[key];
            if (!section)
                continue;
            QStringList keys;
            section->getKeyList(&keys);
            QVERIFY2(keys.last() == clickinfo::KEY_NOTE, qPrintable(found->getClickNumber()));
            QCOMPARE(keys.count(clickinfo::KEY_NOTE), 1);
            ++notes;
        }
    }
    QCOMPARE(notes, 12 + 12); // all clicks but one have each of the two images
}

void tst_SampleStudy::keysThatTellClicksApart_data()
{
    QTest::addColumn<QString>("click");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const QString level = clickinfo::KEY_FLUORESCENCE_LEVEL;
    const QString angle = clickinfo::KEY_IMAGING_ANGLE;
    QTest::newRow("a ratio's B of high level") << QString(RATIO_B_HIGH) << level << "High";
    QTest::newRow("the same of low level") << QString(RATIO_B_LOW) << level << "Low";
    QTest::newRow("the fluorescence pair from above") << QString(FLUORESCENCE_A) << angle << "0";
    QTest::newRow("the other angle") << QString(OTHER_ANGLE) << angle << "90";
}

void tst_SampleStudy::keysThatTellClicksApart()
{
    QFETCH(QString, click);
    QFETCH(QString, key);
    QString found;
    const CPLClickInfo &info = *dataset(click)->getClickInfo();
    info[clickinfo::SECTION_LUMINESCENT]->getValue(key, &found);
    QTEST(found, "value");
}

void tst_SampleStudy::everyUnitIsThere_data()
{
    QTest::addColumn<QString>("click");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("canBeGiven");
    QTest::newRow("luminescence in radiance") << QString(LUMINESCENCE_BIN4) << int(EUNIT_RADIANCE) << true;
    QTest::newRow("fluorescence in radiant efficiency")
        << QString(FLUORESCENCE_A) << int(EUNIT_RADIANT_EFFICIENCY) << true;
    QTest::newRow("transillumination in efficiency")
        << QString(TRANSILLUMINATION) << int(EUNIT_EFFICIENCY) << true;
    QTest::newRow("luminescence has no irradiance")
        << QString(LUMINESCENCE_BIN4) << int(EUNIT_RADIANT_EFFICIENCY) << false;
    QTest::newRow("fluorescence has no excitation reference")
        << QString(FLUORESCENCE_A) << int(EUNIT_EFFICIENCY) << false;
}

void tst_SampleStudy::everyUnitIsThere()
{
    QFETCH(QString, click);
    QFETCH(int, unit);
    QFETCH(bool, canBeGiven);
    const CILImage image = calibrated(click, tag_edisplayunit(unit));
    QCOMPARE(!image.isEmpty(), canBeGiven);
    QCOMPARE(image.getMax() > 0.0f, canBeGiven);
}

void tst_SampleStudy::pairsAreWhatTheyAreFor_data()
{
    using imagemath::Combination;
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("combination");
    QTest::newRow("the fluorescence pair lies on one grid")
        << QString(FLUORESCENCE_A) << QString(FLUORESCENCE_B) << int(Combination::Possible);
    QTest::newRow("binning 4 and 8 can be combined")
        << QString(LUMINESCENCE_BIN4) << QString(LUMINESCENCE_BIN8) << int(Combination::Possible);
    QTest::newRow("the other field of view cannot be combined")
        << QString(LUMINESCENCE_BIN4) << QString(LUMINESCENCE_FIELD)
        << int(Combination::DifferentFieldOfView);
    QTest::newRow("the other size cannot be combined")
        << QString(LUMINESCENCE_BIN4) << QString(LUMINESCENCE_SIZE) << int(Combination::DifferentSize);
}

void tst_SampleStudy::pairsAreWhatTheyAreFor()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, combination);
    const CILImage imageA = calibrated(a, EUNIT_COUNTS);
    const CILImage imageB = calibrated(b, EUNIT_COUNTS);
    QVERIFY(!imageA.isEmpty() && !imageB.isEmpty());
    QCOMPARE(int(imagemath::compareOperands(dataset(a)->getFOVForImage(EIMAGE_LUMINESCENT), imageA,
                                            dataset(b)->getFOVForImage(EIMAGE_LUMINESCENT), imageB)),
             combination);
}

// One scene, taken at binning 4 and 8: the binned A is B but for the noise.
void tst_SampleStudy::thePairOfTwoBinningsGivesTheSamePhotons()
{
    const auto total = [](const CILImage &image) {
        double sum = 0.0;
        for (std::size_t i = 0; i < image.pixelCount(); ++i)
            sum += double(image.pixels<float>()[i]);
        return sum;
    };
    for (const tag_edisplayunit unit : {EUNIT_COUNTS, EUNIT_RADIANCE}) {
        CILImage a = calibrated(LUMINESCENCE_BIN4, unit);
        CILImage b = calibrated(LUMINESCENCE_BIN8, unit);
        CILImage counts = calibrated(LUMINESCENCE_BIN8, EUNIT_COUNTS);
        const double before = total(a);
        imagemath::reconcileBinning(a, b, counts);
        QCOMPARE(a.getWidth(), 256u);
        QVERIFY2(std::abs(total(a) / total(b) - 1.0) < 0.005,
                 qPrintable(QString::number(total(a) / total(b))));
        QVERIFY(std::abs(total(a) / before - (unit == EUNIT_COUNTS ? 1.0 : 0.25)) < 1e-6);
    }
}

void tst_SampleStudy::theMainJobLeavesNoiseAlone_data()
{
    QTest::addColumn<double>("k");
    QTest::addColumn<bool>("noiseAlone");
    QTest::newRow("the true k leaves the reporter and noise") << TRUE_K << true;
    QTest::newRow("a k that is 1 % off is found out") << TRUE_K * 1.01 << false;
}

// Residual = A - k B - reporter. With the true k its mean over N pixels is within 5 standard errors of zero,
// and the mean of its squares, each divided by that pixel's variance, within 5 standard errors of 1 (a normal
// variable's square has variance 2).
void tst_SampleStudy::theMainJobLeavesNoiseAlone()
{
    QFETCH(double, k);
    QFETCH(bool, noiseAlone);
    const CILImage a = calibrated(FLUORESCENCE_A, EUNIT_COUNTS);
    const CILImage b = calibrated(FLUORESCENCE_B, EUNIT_COUNTS);
    CILImage result;
    imagemath::formulaAt(1)->evaluate({a, b, b, float(k)}, result);
    CILImage truthA;
    CILImage truthB;
    CILImage reporter;
    QCOMPARE(truthA.loadTIFF(QFile::encodeName(m_folder.filePath(TRUTH_A)).constData()), EIL_SUCCESS);
    QCOMPARE(truthB.loadTIFF(QFile::encodeName(m_folder.filePath(TRUTH_B)).constData()), EIL_SUCCESS);
    QCOMPARE(reporter.loadTIFF(QFile::encodeName(m_folder.filePath(TRUTH_REPORTER)).constData()),
             EIL_SUCCESS);
    QCOMPARE(result.pixelCount(), reporter.pixelCount());

    const CILImage &found = result;
    double sum = 0.0;
    double variances = 0.0;
    double squares = 0.0;
    const std::size_t count = found.pixelCount();
    for (std::size_t i = 0; i < count; ++i) {
        const double residual = double(found.pixels<float>()[i]) -
                                double(static_cast<const CILImage &>(reporter).pixels<float>()[i]);
        const double variance =
            Camera::variance(double(static_cast<const CILImage &>(truthA).pixels<float>()[i])) +
            k * k * Camera::variance(double(static_cast<const CILImage &>(truthB).pixels<float>()[i]));
        sum += residual;
        variances += variance;
        squares += residual * residual / variance;
    }
    const double mean = sum / double(count);
    const double meanBound = 5.0 * std::sqrt(variances) / double(count);
    const double spread = squares / double(count);
    const double spreadBound = 5.0 * std::sqrt(2.0 / double(count));
    qInfo("mean residual %.4f counts (bound %.4f), mean square over variance %.5f (bound 1 +- %.5f)", mean,
          meanBound, spread, spreadBound);
    QCOMPARE(std::fabs(mean) < meanBound && std::fabs(spread - 1.0) < spreadBound, noiseAlone);

    if (noiseAlone) {
        CPLClickInfo truth;
        QCOMPARE(truth.loadClickInfo(m_folder.filePath(TRUTH_FILE), false), ESTATUS_SUCCESS);
        QString recorded;
        QVERIFY(truth[SECTION_MAIN_JOB]);
        QCOMPARE(truth[SECTION_MAIN_JOB]->getValue(KEY_TRUE_K, &recorded), ESTATUS_SUCCESS);
        QCOMPARE(recorded.toDouble(), TRUE_K);
        QCOMPARE(truth[SECTION_MAIN_JOB]->getValue(KEY_MEAN_VARIANCE, &recorded), ESTATUS_SUCCESS);
        QVERIFY(std::fabs(recorded.toDouble() / (variances / double(count)) - 1.0) < 1e-6);
    }
}

void tst_SampleStudy::everyKindOfDatasetIsThere_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("type");
    QTest::newRow("an acquisition") << SEQUENCE_ID + QStringLiteral("/") + FLUORESCENCE_A
                                    << int(EDATASET_ACQUIRED);
    QTest::newRow("a result") << RESULT_FOLDER + QStringLiteral("/") + RESULT << int(EDATASET_RESULT);
    QTest::newRow("one of an overview")
        << OVERVIEW_FOLDER + QStringLiteral("/") + OVERVIEW_ID + QStringLiteral("/") + OVERVIEW_A
        << int(EDATASET_ACQUIRED);
    QTest::newRow("one only in memory") << QString() << int(EDATASET_IN_MEMORY);
}

void tst_SampleStudy::everyKindOfDatasetIsThere()
{
    QFETCH(QString, folder);
    QString error;
    const std::unique_ptr<CVXSDataset> found(
        folder.isNull() ? unsavedClick(1).release()
                        : CVXSDataset::open(m_folder.filePath(folder), nullptr, &error));
    QVERIFY2(found, qPrintable(error));
    QTEST(found->getDatasetType(), "type");
    if (!folder.isNull())
        QVERIFY2(found->checkComplete(&error) == ESTATUS_SUCCESS, qPrintable(error));
}

void tst_SampleStudy::theUnsavedClickHasAPlaceAndNoFiles()
{
    QVERIFY(m_sequence->addDataset(unsavedClick(1).release()));
    CVXSDataset *unsaved = dataset(UNSAVED);
    QVERIFY(unsaved);
    QCOMPARE(unsaved->getDatasetType(), int(EDATASET_IN_MEMORY));
    const QString place = m_sequence->getDatasetFolderPath(UNSAVED);
    QCOMPARE(place, m_sequence->getSequenceInfoPath() + UNSAVED + QLatin1Char('/'));
    QVERIFY(!QFile::exists(place + clickinfo::FILE_CLICK_INFO));
    QString sequenceId;
    (*unsaved->getClickInfo())[clickinfo::SECTION_CLICK_NUMBER]->getValue(clickinfo::KEY_SEQUENCE_ID,
                                                                          &sequenceId);
    QCOMPARE(sequenceId, QString(SEQUENCE_ID));
    // It lies on the grid of the clicks that it can be combined with.
    QCOMPARE(int(imagemath::compareOperands(unsaved->getFOVForImage(EIMAGE_LUMINESCENT),
                                            calibrated(UNSAVED, EUNIT_COUNTS),
                                            dataset(FLUORESCENCE_B)->getFOVForImage(EIMAGE_LUMINESCENT),
                                            calibrated(FLUORESCENCE_B, EUNIT_COUNTS))),
             int(imagemath::Combination::Possible));
    QVERIFY(m_sequence->removeDataset(UNSAVED));
}

void tst_SampleStudy::theOverviewIsMarkedAndCanBeCombined()
{
    QVERIFY(!m_sequence->isTransIllumOverviewResultSequence());
    QString error;
    const std::unique_ptr<CVXSSequenceDataset> overview(CVXSSequenceDataset::open(
        m_folder.filePath(OVERVIEW_FOLDER + QStringLiteral("/") + OVERVIEW_ID), nullptr, &error));
    QVERIFY2(overview, qPrintable(error));
    QVERIFY(overview->isTransIllumOverviewResultSequence());
    QCOMPARE(overview->getActiveUnit(), EUNIT_EFFICIENCY);
    QCOMPARE(overview->getClickNumbers(), (QStringList{OVERVIEW_A, OVERVIEW_B}));
    CILImage images[2];
    int i = 0;
    for (const CVXSDataset *one : overview->getDatasets()) {
        QVERIFY(one->isTransIlluminationDataset());
        QCOMPARE(
            one->getCalibratedLuminImage(EUNIT_EFFICIENCY, &images[i], QStringLiteral("tst_SampleStudy")),
            ESTATUS_SUCCESS);
        // Beside the animal nothing is lost; under it only some per cent come through.
        const double beside = images[i].pixelAt(20, 128);
        const double through = images[i].pixelAt(128, 100);
        QVERIFY2(std::fabs(beside - 1.0) < 0.15, qPrintable(QString::number(beside)));
        QVERIFY2(through < 0.25, qPrintable(QString::number(through)));
        ++i;
    }
    QVERIFY(images[0].pixelAt(128, 130) > 1.5 * images[1].pixelAt(128, 130));
    QCOMPARE(int(imagemath::compareOperands(12.5, images[0], 12.5, images[1])),
             int(imagemath::Combination::Possible));
}

void tst_SampleStudy::theResultIsOfTheMainJob()
{
    const QString folder = m_folder.filePath(RESULT_FOLDER + QStringLiteral("/") + RESULT);
    QString error;
    const std::unique_ptr<CVXSDataset> result(CVXSDataset::open(folder, nullptr, &error));
    QVERIFY2(result, qPrintable(error));
    const CILImage *image = result->getCoreImage(EIMAGE_LUMINESCENT);
    QVERIFY(image);
    CILImage expected;
    const CILImage a = calibrated(FLUORESCENCE_A, EUNIT_COUNTS);
    const CILImage b = calibrated(FLUORESCENCE_B, EUNIT_COUNTS);
    imagemath::formulaAt(1)->evaluate({a, b, b, float(TRUE_K)}, expected);
    QCOMPARE(pixelcompare::difference(*image, expected), QString());
    std::string description;
    QCOMPARE(CILImage::loadDescription(
                 QFile::encodeName(folder + QStringLiteral("/luminescent.tif")).constData(), &description),
             EIL_SUCCESS);
    imagemath::ResultRecord record;
    QVERIFY2(imagemath::fromJson(QByteArray::fromStdString(description), &record, &error), qPrintable(error));
    QCOMPARE(record.a.clickNumber, QString(FLUORESCENCE_A));
    QCOMPARE(record.b.clickNumber, QString(FLUORESCENCE_B));
    QCOMPARE(record.k, float(TRUE_K));
}

// Where there is no reporter, what both files have above the offset differs by k alone.
void tst_SampleStudy::theCameraFilesGiveTheirKAboveTheOffsetOnly()
{
    const auto loaded = [this](QLatin1String name) {
        CILImage image;
        image.loadTIFF(QFile::encodeName(m_folder.filePath(CAMERA_FILES_FOLDER + QStringLiteral("/") + name))
                           .constData());
        return image;
    };
    const CILImage a = loaded(CAMERA_FILE_A);
    const CILImage b = loaded(CAMERA_FILE_B);
    const CILImage dark = loaded(CAMERA_FILE_DARK);
    for (const CILImage &image : {a, b, dark}) {
        QCOMPARE(int(image.getType()), int(VXS_UINT16));
        QCOMPARE(image.getWidth(), 512u);
        QCOMPARE(image.getHeight(), 512u);
    }
    const Camera camera;
    double sumA = 0.0, sumB = 0.0, sumDark = 0.0;
    int count = 0;
    for (int row = 0; row < 512; ++row) {
        for (int column = 0; column < 512; ++column) {
            double x = 0.0, y = 0.0;
            camera.position(column, row, &x, &y);
            if (phantom::autofluorescence(x, y) < 0.2 || phantom::reporter(x, y) > 1e-4)
                continue;
            sumA += a.pixelAt(column, row);
            sumB += b.pixelAt(column, row);
            sumDark += dark.pixelAt(column, row);
            ++count;
        }
    }
    QVERIFY2(count > 1000, qPrintable(QString::number(count)));
    QVERIFY(std::fabs(sumDark / count - Camera::OFFSET) < 0.5);
    const double k = (sumA - sumDark) / (sumB - sumDark);
    QVERIFY2(std::fabs(k - CAMERA_FILES_K) < 0.01, qPrintable(QString::number(k)));
    QVERIFY2(sumA / sumB < CAMERA_FILES_K - 0.05, "with the offset left in k is wrong");
}

void tst_SampleStudy::aFolderThatCannotBeMadeIsTold()
{
    const QString file = m_folder.filePath(TRUTH_FILE);
    QString error;
    QVERIFY(make(file + QStringLiteral("/inside"), 1, &error) != ESTATUS_SUCCESS);
    QVERIFY2(error.contains(file), qPrintable(error));
}

QTEST_GUILESS_MAIN(tst_SampleStudy)
#include "tst_SampleStudy.moc"
