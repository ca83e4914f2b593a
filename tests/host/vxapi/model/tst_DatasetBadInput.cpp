// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

QByteArray tiffOf(const CILImage &image)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("image.tif");
    image.saveAsTIFF(QFile::encodeName(path).constData());
    return readFile(path);
}

QByteArray goodTiff()
{
    return tiffOf(TestStudy::image(64, 64, [](int x, int y) { return float(x * y); }));
}

void put16(QByteArray *bytes, int value)
{
    bytes->append(char(value & 0xff)).append(char(value >> 8 & 0xff));
}

void put32(QByteArray *bytes, quint32 value)
{
    put16(bytes, int(value & 0xffff));
    put16(bytes, int(value >> 16));
}

/// A little-endian TIFF of one directory and one strip of 64 zeros, written by hand.
QByteArray handMadeTiff(quint32 width, quint32 height, int samples, int photometric)
{
    const struct
    {
        int tag, type;
        quint32 value;
    } entries[] = {{256, 4, width},
                   {257, 4, height},
                   {258, 3, 8},
                   {259, 3, 1},
                   {262, 3, quint32(photometric)},
                   {273, 4, 8},
                   {277, 3, quint32(samples)},
                   {278, 4, height},
                   {279, 4, 64}};
    QByteArray bytes("II*\0", 4);
    put32(&bytes, 8 + 64);
    bytes.append(64, '\0');
    put16(&bytes, int(std::size(entries)));
    for (const auto &entry : entries) {
        put16(&bytes, entry.tag);
        put16(&bytes, entry.type);
        put32(&bytes, 1);
        put32(&bytes, entry.value);
    }
    put32(&bytes, 0);
    return bytes;
}

} // namespace

class tst_DatasetBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenImage_data();
    void brokenImage();
    void aBrokenFlatFieldLeavesTheImageUsable();
    void aBrokenBackgroundIsNotPassedOver();
    void unreadableImage();
    void imageNameThatLeavesTheFolder_data();
    void imageNameThatLeavesTheFolder();
    void clickNumberThatLeavesTheFolder_data();
    void clickNumberThatLeavesTheFolder();
    void clickInfo_data();
    void clickInfo();
    void anEmptyImageIsNotSet();
    void badBinningIsTakenAsOne();
    void anImageFileThatIsNotThereIsTold_data();
    void anImageFileThatIsNotThereIsTold();
};

void tst_DatasetBadInput::brokenImage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a truncated file") << goodTiff().left(goodTiff().size() / 2);
    QTest::newRow("the first eight bytes alone") << goodTiff().left(8);
    QTest::newRow("random bytes") << QByteArray("\x93\x11\xfe\x07 this was never an image \x01\x02\x03", 33);
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("an RGB image") << handMadeTiff(4, 4, 3, 2);
    QTest::newRow("100,000 x 100,000 pixels") << handMadeTiff(100000, 100000, 1, 1);
    QTest::newRow("a width of 0") << handMadeTiff(0, 4, 1, 1);
    QTest::newRow("a text") << QByteArray("[luminescent image]\n");
}

void tst_DatasetBadInput::brokenImage()
{
    QFETCH(QByteArray, bytes);
    QTemporaryDir folder;
    const QString file = folder.filePath("luminescent.tif");
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                      "[ClickNumber]: AB1\n[luminescent image]\nBinning Factor = 4\n"
                      "[photographic image]\n"));
    QVERIFY(writeFile(file, bytes));
    QVERIFY(writeFile(folder.filePath("photograph.tif"), goodTiff()));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);

    LogCatcher log;
    QVERIFY(!dataset->getCoreImage(EIMAGE_LUMINESCENT));
    QCOMPARE(log.failures().size(), 1);
    const QString line = log.failures().constFirst();
    QVERIFY2(line.contains(file + ": "), qPrintable(line));
    QVERIFY2(line.startsWith("AB1"), qPrintable(line));
    QVERIFY(dataset->lastError().startsWith(file + ": "));
    QVERIFY(dataset->lastError().size() > file.size() + 4); // a reason, too

    // Told once, and not read again: a file that has become whole meanwhile does not appear by itself.
    QVERIFY(writeFile(file, goodTiff()));
    QVERIFY(!dataset->getCoreImage(EIMAGE_LUMINESCENT));
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(dataset->getImageList()->isPresent(EIMAGE_LUMINESCENT));

    CILImage target = TestStudy::image(2, 2, [](int, int) { return 1.0f; });
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_BAD_IMAGE);
    QVERIFY(target.isEmpty());
    QVERIFY(log.failures().constLast().contains(file));
    // The rest is usable.
    QVERIFY(dataset->getCoreImage(EIMAGE_PHOTOGRAPH));
}

void tst_DatasetBadInput::aBrokenFlatFieldLeavesTheImageUsable()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                      "[luminescent image]\nBinning Factor = 4\n[flat field image]\n"));
    QVERIFY(writeFile(folder.filePath("luminescent.tif"), goodTiff()));
    QVERIFY(writeFile(folder.filePath("flatfield.tif"), "broken"));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    LogCatcher log;
    dataset->doFlatFieldCorrection(true);
    QVERIFY(!dataset->isLuminFlatFieldCorrected());
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().constFirst().contains("flatfield.tif"));
    CILImage target;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_SUCCESS);
    QCOMPARE(target.getWidth(), 64u);
}

void tst_DatasetBadInput::aBrokenBackgroundIsNotPassedOver()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                      "[luminescent image]\nBinning Factor = 4\n[background image]\n"));
    QVERIFY(writeFile(folder.filePath("luminescent.tif"), goodTiff()));
    QVERIFY(writeFile(folder.filePath("background.tif"), "broken"));
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    CILImage target;
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_BAD_IMAGE);
    QVERIFY(target.isEmpty());
    QVERIFY(dataset->lastError().contains("background.tif"));
    dataset->doBackgroundSubtraction(false);
    QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_SUCCESS);
}

void tst_DatasetBadInput::unreadableImage()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"), "[luminescent image]\nBinning Factor = 4\n"));
    const QString file = folder.filePath("luminescent.tif");
    QVERIFY(writeFile(file, goodTiff()));
    QCOMPARE(chmod(qPrintable(folder.path()), 0755), 0);
    QCOMPARE(chmod(qPrintable(file), 0), 0);
    QVERIFY(holdsForUnprivilegedUser([&] {
        const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
        return dataset && !dataset->getCoreImage(EIMAGE_LUMINESCENT) && dataset->lastError().startsWith(file);
    }));
}

void tst_DatasetBadInput::imageNameThatLeavesTheFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the folder above") << "../outside.tif";
    QTest::newRow("further down and up") << "a/../../outside.tif";
    QTest::newRow("an absolute path") << "/etc/passwd";
    QTest::newRow("a backslash") << "..\\\\outside.tif"; // one, escaped
    QTest::newRow("a drive") << "C:outside.tif";
    QTest::newRow("a folder below") << "sub/inside.tif";
    QTest::newRow("two points alone") << "..";
}

void tst_DatasetBadInput::imageNameThatLeavesTheFolder()
{
    QFETCH(QString, name);
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath("AB1/sub"));
    QVERIFY(QDir(folder.path()).mkpath("AB1/a"));
    for (const char *file : {"outside.tif", "AB1/sub/inside.tif", "AB1/photograph.tif"})
        QVERIFY(writeFile(folder.filePath(file), goodTiff()));
    QVERIFY(writeFile(folder.filePath("AB1/ClickInfo.txt"),
                      "[luminescent image]: " + name.toUtf8() + "\n[photographic image]\n"));
    LogCatcher log;
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.filePath("AB1"), nullptr, nullptr));
    QVERIFY(dataset);
    QVERIFY(!dataset->getImageList()->isPresent(EIMAGE_LUMINESCENT));
    QVERIFY(!dataset->getCoreImage(EIMAGE_LUMINESCENT));
    QVERIFY(dataset->getCoreImage(EIMAGE_PHOTOGRAPH));
    QCOMPARE(log.failures().size(), 1);
    const QString line = log.failures().constFirst();
    QVERIFY2(line.contains(folder.filePath("AB1/ClickInfo.txt")), qPrintable(line));
    QVERIFY2(line.contains(name.replace("\\\\", "\\")), qPrintable(line));
}

void tst_DatasetBadInput::clickNumberThatLeavesTheFolder_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("the folder above") << "../AB1";
    QTest::newRow("two points inside") << "AB..1";
    QTest::newRow("a separator") << "AB/1";
    QTest::newRow("an absolute path") << "/AB1";
    QTest::newRow("an empty name") << "";
}

void tst_DatasetBadInput::clickNumberThatLeavesTheFolder()
{
    QFETCH(QString, number);
    QTemporaryDir folder;
    const QString file = folder.filePath("ClickInfo.txt");
    QVERIFY(writeFile(file, "[ClickNumber]: " + number.toUtf8() + "\n"));
    ESTATUS status = ESTATUS_SUCCESS;
    QString error;
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), &status, &error));
    QVERIFY(!dataset);
    QCOMPARE(status, ESTATUS_BAD_NAME);
    QVERIFY2(error.startsWith(file + ": ") && error.contains("\"" + number + "\""), qPrintable(error));
}

void tst_DatasetBadInput::clickInfo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a line that is no pair")
        << QByteArray("[ClickNumber]: AB1\n\nno pair\n") << int(ESTATUS_BAD_SYNTAX) << "line 3";
    QTest::newRow("a pair before any section")
        << QByteArray("a = b\n") << int(ESTATUS_BAD_SYNTAX) << "line 1";
    QTest::newRow("bytes that are no text")
        << QByteArray("[ClickNumber]\nkey = \xff\xfe\n") << int(ESTATUS_BAD_SYNTAX) << "line 2";
    QTest::newRow("no such file") << QByteArray() << int(ESTATUS_FILE_NOT_FOUND) << "no such file";
}

void tst_DatasetBadInput::clickInfo()
{
    QFETCH(QByteArray, text);
    QFETCH(int, status);
    QFETCH(QString, reason);
    QTemporaryDir folder;
    const QString file = folder.filePath("ClickInfo.txt");
    if (!text.isNull())
        QVERIFY(writeFile(file, text));
    ESTATUS is = ESTATUS_SUCCESS;
    QString error;
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), &is, &error));
    QVERIFY(!dataset);
    QCOMPARE(int(is), status);
    QVERIFY2(error.startsWith(file + ": ") && error.contains(reason), qPrintable(error));
}

void tst_DatasetBadInput::anEmptyImageIsNotSet()
{
    CVXSDataset dataset("AB1");
    LogCatcher log;
    dataset.setCoreImage(EIMAGE_LUMINESCENT, CILImage());
    QVERIFY(!dataset.getImageList()->isPresent(EIMAGE_LUMINESCENT));
    QCOMPARE(log.failures().size(), 1);
}

void tst_DatasetBadInput::badBinningIsTakenAsOne()
{
    for (const char *value : {"", "0", "none", "-2", "0.5"}) {
        QTemporaryDir folder;
        QVERIFY(writeFile(folder.filePath("ClickInfo.txt"),
                          QByteArray("[luminescent image]\nBinning Factor = ") + value + "\n"));
        QVERIFY(writeFile(folder.filePath("luminescent.tif"), goodTiff()));
        LogCatcher log;
        const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
        QVERIFY(dataset);
        QCOMPARE(log.failures().size(), 1);
        QVERIFY(log.failures().constFirst().contains("Binning Factor"));
        QVERIFY(log.failures().constFirst().contains(folder.filePath("ClickInfo.txt")));
        QCOMPARE(log.ofLevel(2).size(), 1);
        QVERIFY(log.ofLevel(2).constFirst().contains("Field of View"));
        QVERIFY(log.ofLevel(2).constFirst().contains(folder.filePath("ClickInfo.txt")));
        CILImage target;
        QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_COUNTS, &target, "test"), ESTATUS_SUCCESS);
        QCOMPARE(target.binningFactor(), 1.0f);
        QCOMPARE(dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &target, "test"), ESTATUS_BAD_VALUE);
    }
}

void tst_DatasetBadInput::anImageFileThatIsNotThereIsTold_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("type");
    QTest::newRow("of the luminescent image")
        << QByteArray("luminescent image") << "luminescent.tif" << int(EIMAGE_LUMINESCENT);
    QTest::newRow("of the photograph")
        << QByteArray("photographic image") << "photograph.tif" << int(EIMAGE_PHOTOGRAPH);
    QTest::newRow("of the flat field")
        << QByteArray("flat field image") << "flatfield.tif" << int(EIMAGE_FLATFIELD);
}

void tst_DatasetBadInput::anImageFileThatIsNotThereIsTold()
{
    QFETCH(QByteArray, section);
    QFETCH(QString, file);
    QFETCH(int, type);
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("ClickInfo.txt"), "[" + section + "]\n"));
    LogCatcher log;
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder.path(), nullptr, nullptr));
    QVERIFY(dataset);
    QVERIFY(!dataset->getImageList()->isPresent(tag_eimagetype(type)));
    QCOMPARE(log.failures().size(), 1);
    QVERIFY2(log.failures().constFirst().contains(folder.path()) &&
                 log.failures().constFirst().contains(file),
             qPrintable(log.failures().constFirst()));
}

QTEST_GUILESS_MAIN(tst_DatasetBadInput)
#include "tst_DatasetBadInput.moc"
