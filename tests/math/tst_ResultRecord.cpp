// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "math/ResultRecord.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using imagemath::ResultRecord;

namespace {

ResultRecord fullRecord()
{
    ResultRecord record;
    record.operation = "A/B if Counts(B)>k";
    record.k = 0.1f;
    record.unit = "Radiance (Photons)";
    record.binning = 2.5;
    record.a.clickNumber = "AB20260102030406";
    record.a.sequenceId = "AB20260102030405_SEQ";
    record.a.flatFieldCorrected = true;
    record.a.files = {{"luminescent.tif", QString(64, 'a')}, {"flatfield.tif", QString(64, 'b')}};
    record.a.constants = {{"luminescent image/Exposure Time", "60"},
                          {"Camera System Info/Magnification", ""}};
    record.b.clickNumber = QString::fromUtf8("ÄÖ\u4e2d\U0001F42D \"q\"\\\n<b>");
    record.b.backgroundSubtracted = true;
    record.b.fluorescenceBackgroundSubtracted = true;
    record.photograph = {"AB20260102030406", {"photograph.tif", QString(64, 'c')}};
    record.maskPhotograph = {"AB20260102030507", {"photograph.tif", QString(64, 'd')}};
    record.a.saturatedPixels = 512;
    record.a.pixels = 1024;
    record.a.saturationCeiling = 65000.0;
    imagemath::RoiOfK roi;
    roi.name = "Bkg \"1\"";
    roi.shape = "background rectangle; left 2; top 3; width 5; height 4";
    roi.clickNumber = "AB20260102030406";
    roi.unit = "Radiance (Photons)";
    roi.inA = {"AB20260102030406", 1.0 / 3.0, 12};
    roi.inB = {"AB20260102030507", 3.6e15 / 7.0, -1};
    record.roiOfK = roi;
    record.notes = QStringList{"A was exposed 1 s, B 10 s; the unit is counts", "another one"};
    record.computed = "2026-01-02T03:04:05Z";
    record.version = "1.0.0(Jan  2 2026)";
    return record;
}

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// The record's JSON with one member of "image math" changed; null takes it away.
QByteArray changed(const QString &path, const QJsonValue &value)
{
    QJsonObject whole = QJsonDocument::fromJson(imagemath::toJson(fullRecord())).object();
    QJsonObject made = whole.value("image math").toObject();
    const QStringList way = path.split('/');
    const auto put = [&value](QJsonObject *object, const QString &name) {
        if (value.isUndefined())
            object->remove(name);
        else
            object->insert(name, value);
    };
    if (way.size() == 2) {
        QJsonObject inner = made.value(way.first()).toObject();
        put(&inner, way.last());
        made.insert(way.first(), inner);
    } else {
        put(&made, path);
    }
    whole.insert("image math", made);
    return QJsonDocument(whole).toJson();
}

void compare(const imagemath::OperandRecord &got, const imagemath::OperandRecord &expected)
{
    QCOMPARE(got.clickNumber, expected.clickNumber);
    QCOMPARE(got.sequenceId, expected.sequenceId);
    QCOMPARE(got.flatFieldCorrected, expected.flatFieldCorrected);
    QCOMPARE(got.backgroundSubtracted, expected.backgroundSubtracted);
    QCOMPARE(got.fluorescenceBackgroundSubtracted, expected.fluorescenceBackgroundSubtracted);
    QCOMPARE(got.constants, expected.constants);
    QCOMPARE(got.saturatedPixels, expected.saturatedPixels);
    QCOMPARE(got.pixels, expected.pixels);
    QCOMPARE(got.saturationCeiling, expected.saturationCeiling);
    QCOMPARE(got.files.size(), expected.files.size());
    for (int i = 0; i < got.files.size(); ++i) {
        QCOMPARE(got.files.at(i).name, expected.files.at(i).name);
        QCOMPARE(got.files.at(i).sha256, expected.files.at(i).sha256);
    }
}

void compare(const imagemath::RoiOfK::Total &got, const imagemath::RoiOfK::Total &expected)
{
    QCOMPARE(got.clickNumber, expected.clickNumber);
    QVERIFY(got.value == expected.value); // to the last bit: k is checked by it
    QCOMPARE(got.saturatedPixels, expected.saturatedPixels);
}

void compare(const imagemath::PhotographRecord &got, const imagemath::PhotographRecord &expected)
{
    QCOMPARE(got.clickNumber, expected.clickNumber);
    QCOMPARE(got.file.name, expected.file.name);
    QCOMPARE(got.file.sha256, expected.file.sha256);
}

} // namespace

class tst_ResultRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingComesBack();
    void earlierRecordsTellLess();
    void kComesBackToTheLastBit_data();
    void kComesBackToTheLastBit();
    void theHexadecimalOfKCounts();
    void photographsAreThereOnlyWhenThereWereAny();
    void whatIsNotKnownIsPassedOver();
    void whatIsNoRecordIsRefusedWithAReason_data();
    void whatIsNoRecordIsRefusedWithAReason();
    void aRefusalLeavesTheRecordAlone();
    void theRulesAreThoseOfTheVersion_data();
    void theRulesAreThoseOfTheVersion();
    void theRecordOfADatasetNamesItsConstants();
    void theImageFilesOfADatasetAreHashed();
    void theHashIsThatOfTheBytes_data();
    void theHashIsThatOfTheBytes();
};

void tst_ResultRecord::everythingComesBack()
{
    const ResultRecord record = fullRecord();
    ResultRecord back;
    QString reason = "old";
    QVERIFY2(imagemath::fromJson(imagemath::toJson(record), &back, &reason), qPrintable(reason));
    QVERIFY(reason.isEmpty());
    QCOMPARE(back.operation, record.operation);
    QCOMPARE(bitsOf(back.k), bitsOf(record.k));
    QCOMPARE(back.unit, record.unit);
    QCOMPARE(back.binning, record.binning);
    compare(back.a, record.a);
    compare(back.b, record.b);
    compare(back.photograph, record.photograph);
    compare(back.maskPhotograph, record.maskPhotograph);
    QCOMPARE(back.computed, record.computed);
    QCOMPARE(back.version, record.version);
    QVERIFY(back.roiOfK);
    QCOMPARE(back.roiOfK->name, record.roiOfK->name);
    QCOMPARE(back.roiOfK->shape, record.roiOfK->shape);
    QCOMPARE(back.roiOfK->clickNumber, record.roiOfK->clickNumber);
    QCOMPARE(back.roiOfK->unit, record.roiOfK->unit);
    compare(back.roiOfK->inA, record.roiOfK->inA);
    compare(back.roiOfK->inB, record.roiOfK->inB);
    QCOMPARE(back.notes, record.notes);
    QCOMPARE(imagemath::toJson(back), imagemath::toJson(record));
}

void tst_ResultRecord::earlierRecordsTellLess()
{
    QJsonObject whole = QJsonDocument::fromJson(imagemath::toJson(fullRecord())).object();
    QJsonObject made = whole.value("image math").toObject();
    QJsonObject a = made.value("A").toObject();
    for (const char *name : {"saturated pixels", "pixels", "saturation ceiling"})
        a.remove(name);
    made.insert("A", a);
    made.remove("k from ROI");
    made.remove("notes");
    ResultRecord record;
    QString reason;
    QVERIFY2(imagemath::fromJson(QJsonDocument(QJsonObject{{"image math", made}}).toJson(), &record, &reason),
             qPrintable(reason));
    QCOMPARE(record.operation, fullRecord().operation);
    QVERIFY(!record.roiOfK);
    QVERIFY(record.notes.isEmpty());
    QCOMPARE(record.a.saturatedPixels, qint64(-1));
}

void tst_ResultRecord::kComesBackToTheLastBit_data()
{
    QTest::addColumn<float>("k");
    QTest::addColumn<QString>("decimal");
    QTest::newRow("0") << 0.0f << "0";
    QTest::newRow("-0") << -0.0f << "-0";
    QTest::newRow("0.1") << 0.1f << "0.1";
    QTest::newRow("the float after 0.1") << std::nextafter(0.1f, 1.0f) << "0.10000001";
    QTest::newRow("1e12") << 1e12f << "1e+12";
    QTest::newRow("a third, negative") << -1.0f / 3.0f << "-0.33333334";
    QTest::newRow("the smallest denormal") << std::numeric_limits<float>::denorm_min() << "1e-45";
    QTest::newRow("the largest denormal")
        << std::nextafter(std::numeric_limits<float>::min(), 0.0f) << "1.1754942e-38";
    QTest::newRow("the largest") << std::numeric_limits<float>::max() << "3.4028235e+38";
    QTest::newRow("an infinity") << -std::numeric_limits<float>::infinity() << "-inf";
}

void tst_ResultRecord::kComesBackToTheLastBit()
{
    QFETCH(float, k);
    QFETCH(QString, decimal);
    ResultRecord record = fullRecord();
    record.k = k;
    const QByteArray json = imagemath::toJson(record);
    const QJsonObject made = QJsonDocument::fromJson(json).object().value("image math").toObject();
    QCOMPARE(made.value("k").toString(), decimal);
    ResultRecord back;
    QString reason;
    QVERIFY2(imagemath::fromJson(json, &back, &reason), qPrintable(reason));
    QCOMPARE(bitsOf(back.k), bitsOf(k));
}

void tst_ResultRecord::theHexadecimalOfKCounts()
{
    ResultRecord back;
    QString reason;
    QVERIFY(imagemath::fromJson(changed("k", "5"), &back, &reason));
    QCOMPARE(back.k, 0.1f);
    QVERIFY(imagemath::fromJson(changed("k hexadecimal", "-0x1.8p+1"), &back, &reason));
    QCOMPARE(back.k, -3.0f);
}

void tst_ResultRecord::photographsAreThereOnlyWhenThereWereAny()
{
    ResultRecord record = fullRecord();
    record.photograph = record.maskPhotograph = imagemath::PhotographRecord();
    const QByteArray json = imagemath::toJson(record);
    QVERIFY(!json.contains("photograph"));
    ResultRecord back = fullRecord();
    QString reason;
    QVERIFY(imagemath::fromJson(json, &back, &reason));
    QVERIFY(back.photograph.clickNumber.isEmpty() && back.maskPhotograph.clickNumber.isEmpty());
}

void tst_ResultRecord::whatIsNotKnownIsPassedOver()
{
    ResultRecord back;
    QString reason;
    QVERIFY2(imagemath::fromJson(changed("colour", QJsonObject{{"k", 7}}), &back, &reason),
             qPrintable(reason));
    QVERIFY2(imagemath::fromJson(changed("A/mood", QJsonValue(true)), &back, &reason), qPrintable(reason));
    compare(back.a, fullRecord().a);
}

void tst_ResultRecord::whatIsNoRecordIsRefusedWithAReason_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");
    const QString other = "\"%1\" is missing or of another type";
    const QJsonValue none(QJsonValue::Undefined);
    const QByteArray whole = imagemath::toJson(fullRecord());
    QTest::newRow("nothing") << QByteArray() << "illegal value";
    QTest::newRow("text") << QByteArray("ImageJ=1.53t") << "illegal value";
    QTest::newRow("half of it") << whole.left(whole.size() / 2) << QString();
    QTest::newRow("bytes that are not UTF-8") << QByteArray("{\"image math\": \"\xff\xfe\"}") << QString();
    QTest::newRow("an array") << QByteArray("[]") << other.arg("image math");
    QTest::newRow("another object") << QByteArray("{}") << other.arg("image math");
    QTest::newRow("a text in its place")
        << QByteArray("{\"image math\": \"A + B\"}") << other.arg("image math");
    QTest::newRow("arrays ten thousand deep") << QByteArray(10000, '[') << "too deeply nested document";
    for (const QString name : {"operation", "k hexadecimal", "unit", "A", "B", "computed", "version"})
        QTest::newRow(qPrintable("without " + name)) << changed(name, none) << other.arg(name);
    QTest::newRow("k as a number") << changed("k hexadecimal", 1.5) << other.arg("k hexadecimal");
    for (const QString k : {"", "-", "0x", "--0x1p+0", "0x1p+0 ", "0x1.8p+999", "1,5", "k"})
        QTest::newRow(qPrintable(QString("k is \"%1\"").arg(k)))
            << changed("k hexadecimal", k) << other.arg("k hexadecimal");
    QTest::newRow("the binning is a text") << changed("binning", "2.5") << other.arg("binning");
    QTest::newRow("the binning is 0") << changed("binning", 0.0) << other.arg("binning");
    QTest::newRow("A is a text") << changed("A", "AB20260102030406") << other.arg("A");
    QTest::newRow("a flag is a text")
        << changed("A/flat field corrected", "yes") << other.arg("A/flat field corrected");
    QTest::newRow("files are no list") << changed("B/files", "luminescent.tif") << other.arg("B/files");
    QTest::newRow("a file is a text") << changed("A/files", QJsonArray{"x"}) << other.arg("A/files/name");
    QTest::newRow("a constant is a number")
        << changed("A/constants", QJsonObject{{"x/y", 60}}) << other.arg("A/constants/x/y");
    for (const QString path : {"k from ROI/name", "k from ROI/shape", "k from ROI/click number",
                               "k from ROI/unit", "A/saturation ceiling"})
        QTest::newRow(qPrintable("without " + path)) << changed(path, none) << other.arg(path);
    QTest::newRow("the total of an ROI is a text")
        << changed("k from ROI/B", QJsonObject{{"click number", "B"}, {"total", "7"}})
        << other.arg("k from ROI/B/total");
    QTest::newRow("a count of pixels is a text")
        << changed("A/saturated pixels", "many") << other.arg("A/saturated pixels");
    QTest::newRow("a note is a number") << changed("notes", QJsonArray{1}) << other.arg("notes");
    QTest::newRow("the photograph is a text") << changed("photograph", "B") << other.arg("photograph");
}

void tst_ResultRecord::whatIsNoRecordIsRefusedWithAReason()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, reason);
    ResultRecord record;
    QString told;
    QVERIFY(!imagemath::fromJson(json, &record, &told));
    QVERIFY(!told.isEmpty());
    if (!reason.isEmpty())
        QCOMPARE(told, reason);
}

void tst_ResultRecord::aRefusalLeavesTheRecordAlone()
{
    ResultRecord record = fullRecord();
    QString reason;
    QVERIFY(!imagemath::fromJson(changed("B", 1), &record, &reason));
    QCOMPARE(imagemath::toJson(record), imagemath::toJson(fullRecord()));
    QVERIFY(!fullRecord().isEmpty() && ResultRecord().isEmpty());
}

void tst_ResultRecord::theRulesAreThoseOfTheVersion_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("rules");
    QTest::newRow("the first") << "1.0.0(Jan  2 2026)" << int(ECALIBRATION_1_0);
    QTest::newRow("a mended first") << "1.0.12(Jan  2 2026)" << int(ECALIBRATION_1_0);
    QTest::newRow("the second") << "1.1.0(Jan  2 2026)" << int(ECALIBRATION_NOW);
    QTest::newRow("the tenth") << "1.10.0(Jan  2 2026)" << int(ECALIBRATION_NOW);
    QTest::newRow("none") << "" << int(ECALIBRATION_NOW);
}

void tst_ResultRecord::theRulesAreThoseOfTheVersion()
{
    QFETCH(QString, version);
    QFETCH(int, rules);
    imagemath::ResultRecord record;
    record.version = version;
    QCOMPARE(int(imagemath::rulesOf(record)), rules);
}

void tst_ResultRecord::theRecordOfADatasetNamesItsConstants()
{
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030406";
    spec.flatField = [](int, int) { return 2.0f; };
    spec.luminescentKeys = {{"Exposure Time", "0.125"}, {"f Number", QString()}, {"Emission Filter", "600"}};
    CVXSDataset *dataset = study.add(spec);
    QVERIFY(dataset);
    dataset->doFlatFieldCorrection(true);
    const imagemath::OperandRecord record = imagemath::recordOf(*dataset);
    QCOMPARE(record.clickNumber, spec.clickNumber);
    QCOMPARE(record.sequenceId, study.sequence()->getSequenceID());
    QVERIFY(record.flatFieldCorrected);
    QVERIFY(!record.backgroundSubtracted);
    QVERIFY(record.files.isEmpty());
    QCOMPARE(record.constants.value("luminescent image/Exposure Time"), QString("0.125"));
    QCOMPARE(record.constants.value("Camera System Info/Pixel Pitch"), QString("13.5"));
    QVERIFY(!record.constants.contains("luminescent image/f Number"));
    QVERIFY(!record.constants.contains("luminescent image/Emission Filter"));
    QVERIFY(!record.constants.contains("Graph Controls/Intensity Calibration"));
}

void tst_ResultRecord::theImageFilesOfADatasetAreHashed()
{
    TestStudy study;
    ClickSpec spec;
    spec.clickNumber = "AB20260102030406";
    spec.photograph = [](int x, int) { return float(x); };
    spec.flatField = [](int, int) { return 2.0f; };
    const CVXSDataset *dataset = study.add(spec);
    QVERIFY(dataset && study.save());
    QStringList names;
    for (const imagemath::FileRecord &file : imagemath::imageFilesOf(*dataset, dataset->getFolderPath())) {
        names += file.name;
        QCOMPARE(file.sha256, imagemath::sha256OfFile(dataset->getFolderPath() + file.name));
        QCOMPARE(file.sha256.size(), 64);
    }
    names.sort();
    QCOMPARE(names, (QStringList{"flatfield.tif", "luminescent.tif", "photograph.tif"}));
    QVERIFY(QFile::remove(dataset->getFolderPath() + "photograph.tif"));
    QCOMPARE(imagemath::imageFilesOf(*dataset, dataset->getFolderPath()).size(), 2);
}

void tst_ResultRecord::theHashIsThatOfTheBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("sha256");
    // The examples of FIPS 180-4.
    QTest::newRow("nothing") << QByteArray("")
                             << "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
    QTest::newRow("abc") << QByteArray("abc")
                         << "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    QTest::newRow("a million a") << QByteArray(1000000, 'a')
                                 << "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0";
}

void tst_ResultRecord::theHashIsThatOfTheBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, sha256);
    QTemporaryDir folder;
    QFile file(folder.filePath("bytes"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    QCOMPARE(imagemath::sha256OfFile(file.fileName()), sha256);
    QCOMPARE(imagemath::sha256OfFile(folder.filePath("none")), QString());
}

QTEST_GUILESS_MAIN(tst_ResultRecord)
#include "tst_ResultRecord.moc"
