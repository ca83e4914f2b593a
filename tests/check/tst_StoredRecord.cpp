// SPDX-License-Identifier: MIT
#include "check/StoredRecord.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <memory>

namespace {

const QString CLICK = QStringLiteral("AB20260102030406");
const QString FILE_NAME = QStringLiteral("luminescent.tif");

imagemath::ResultRecord madeRecord()
{
    imagemath::ResultRecord record;
    record.operation = "A - B * k";
    record.k = 0.1f;
    record.unit = "Radiance (Photons)";
    record.a.clickNumber = "AB20260102030506";
    record.b.clickNumber = "AB20260102030606";
    record.computed = "2026-01-02T03:04:05Z";
    return record;
}

QByteArray madeText()
{
    return imagemath::toJson(madeRecord());
}

} // namespace

/// What an image file tells of its making, and what is said when it tells nothing.
class tst_StoredRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_study.reset(); }
    void aRecordIsReadFromTheFile();
    void theRecordIsReadWithoutThePixels();
    void aRecordOfTheGreatestSizeIsRead();
    void withoutAFileThereIsNoRecord();
    void aFolderOfThatNameIsNoFile();
    void anUnreadableFileIsSaidWithTheReason_data();
    void anUnreadableFileIsSaidWithTheReason();
    void withoutADescriptionItDoesNotTell();
    void whatIsDamagedIsSaid_data();
    void whatIsDamagedIsSaid();

private:
    bool describe(const QByteArray &text) const;
    StoredRecord read() const { return StoredRecord::of(*m_dataset); }

    std::unique_ptr<TestStudy> m_study;
    const CVXSDataset *m_dataset = nullptr;
    QString m_file;
};

void tst_StoredRecord::init()
{
    m_study = std::make_unique<TestStudy>();
    m_dataset = m_study->add(ClickSpec::of(CLICK));
    QVERIFY(m_dataset);
    QVERIFY(m_study->save());
    m_file = m_dataset->getFolderPath() + FILE_NAME;
    QVERIFY(QFile::exists(m_file));
}

/// Writes the image file anew with that description.
bool tst_StoredRecord::describe(const QByteArray &text) const
{
    CILImage image = TestStudy::image(8, 8, [](int x, int y) { return float(x + y); });
    image.setDescription(text.toStdString());
    return image.saveTIFF(QFile::encodeName(m_file).constData()) == EIL_SUCCESS;
}

void tst_StoredRecord::aRecordIsReadFromTheFile()
{
    QVERIFY(describe(madeText()));
    const StoredRecord found = read();
    QVERIFY2(found.isThere(), qPrintable(found.problem));
    QCOMPARE(found.problem, QString());
    QCOMPARE(found.file, m_file);
    QCOMPARE(imagemath::toJson(found.record), madeText());
}

void tst_StoredRecord::theRecordIsReadWithoutThePixels()
{
    QVERIFY(describe(madeText()));
    // Of an image of this size no pixels are read.
    CILImage::setPixelLimit(1);
    CILImage pixels;
    QCOMPARE(pixels.loadTIFF(QFile::encodeName(m_file).constData()), EIL_FILE_TOO_LARGE);
    const StoredRecord found = read();
    CILImage::setPixelLimit(std::uint64_t(1) << 30);
    QVERIFY2(found.isThere(), qPrintable(found.problem));
}

void tst_StoredRecord::aRecordOfTheGreatestSizeIsRead()
{
    const QByteArray text = madeText();
    QVERIFY(describe(text + QByteArray(int(StoredRecord::MAX_BYTES) - text.size(), ' ')));
    const StoredRecord found = read();
    QVERIFY2(found.isThere(), qPrintable(found.problem));
}

void tst_StoredRecord::withoutAFileThereIsNoRecord()
{
    QVERIFY(QFile::remove(m_file));
    const LogCatcher log;
    const StoredRecord found = read();
    QVERIFY(!found.isThere());
    QCOMPARE(found.problem, "The image file is not there: " + m_file);
    QCOMPARE(found.file, m_file);
    QCOMPARE(log.entries().size(), 0);
}

void tst_StoredRecord::aFolderOfThatNameIsNoFile()
{
    QVERIFY(QFile::remove(m_file));
    QVERIFY(QDir().mkpath(m_file));
    QCOMPARE(read().problem, "The image file is not there: " + m_file);
}

void tst_StoredRecord::anUnreadableFileIsSaidWithTheReason_data()
{
    QTest::addColumn<QByteArray>("bytes");
    row("an empty file", QByteArray());
    row("a text", QByteArray("not a TIFF at all"));
    row("a TIFF that ends after its header", QByteArray("II*\0\x08\0\0\0", 8));
}

void tst_StoredRecord::anUnreadableFileIsSaidWithTheReason()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(writeFile(m_file, bytes));
    const StoredRecord found = read();
    QVERIFY(!found.isThere());
    // The reason of the image library names the file.
    const QString start = "The image file cannot be read: " + m_file + ": ";
    QVERIFY2(found.problem.startsWith(start) && found.problem.size() > start.size(),
             qPrintable(found.problem));
}

void tst_StoredRecord::withoutADescriptionItDoesNotTell()
{
    QVERIFY(describe(QByteArray()));
    const StoredRecord found = read();
    QVERIFY(!found.isThere());
    QCOMPARE(found.problem, QString("luminescent.tif does not tell how it was made."));
}

void tst_StoredRecord::whatIsDamagedIsSaid_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    const QByteArray good = madeText();
    const QByteArray tooLarge = good + QByteArray(int(StoredRecord::MAX_BYTES) + 1 - good.size(), ' ');
    row("a text that is no JSON", QByteArray("a note of the user"), "");
    row("a record that ends in the middle", good.left(good.size() / 2), "");
    row("a JSON object of something else", QByteArray("{\"camera\": \"on\"}"), "");
    row("a record of no operation", QByteArray(good).replace("A - B * k", ""), "it names no operation");
    row("a record larger than any", tooLarge, "it has 1048577 bytes, more than any record");
}

void tst_StoredRecord::whatIsDamagedIsSaid()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    QVERIFY(describe(text));
    const StoredRecord found = read();
    QVERIFY(!found.isThere());
    const QString start("What luminescent.tif tells of its making is damaged: ");
    QVERIFY2(found.problem.startsWith(start + reason) && found.problem.size() > start.size() + 1 &&
                 found.problem.endsWith('.'),
             qPrintable(found.problem));
    // Nothing of what was read in vain is left.
    QVERIFY(found.record.unit.isEmpty() && found.record.a.clickNumber.isEmpty());
}

QTEST_GUILESS_MAIN(tst_StoredRecord)
#include "tst_StoredRecord.moc"
