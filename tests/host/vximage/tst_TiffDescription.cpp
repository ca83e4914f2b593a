// SPDX-License-Identifier: MIT
#include "tests/host/vximage/ImageMaker.h"

#include <QtTest>

namespace {

/// A file with that description; 64 x 64 pixels.
QString written(const QTemporaryDir &folder, const std::string &description)
{
    CILImage image = maker::floats(64, 64, std::vector<float>(64 * 64, 1.5f));
    image.setDescription(description);
    const QString path = folder.filePath("image.tif");
    return image.saveTIFF(QFile::encodeName(path).constData()) == EIL_SUCCESS ? path : QString();
}

EILSTATUS read(const QString &path, std::string *description)
{
    return CILImage::loadDescription(QFile::encodeName(path).constData(), description);
}

} // namespace

class tst_TiffDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsReadAsItWasWritten_data();
    void itIsReadAsItWasWritten();
    void itIsReadWithoutThePixels();
    void whatIsNoTiffIsRefused_data();
    void whatIsNoTiffIsRefused();
};

void tst_TiffDescription::itIsReadAsItWasWritten_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("UTF-8") << QByteArray("{\"k\": \"\xc3\xa4\"}\n");
    QTest::newRow("3 MB") << QByteArray(3000000, 'x');
}

void tst_TiffDescription::itIsReadAsItWasWritten()
{
    QFETCH(QByteArray, description);
    const QTemporaryDir folder;
    const QString path = written(folder, description.toStdString());
    QVERIFY(!path.isEmpty());
    std::string back = "of another file";
    QCOMPARE(read(path, &back), EIL_SUCCESS);
    QVERIFY(QByteArray::fromStdString(back) == description);
    CILImage image;
    QCOMPARE(image.loadTIFF(QFile::encodeName(path).constData()), EIL_SUCCESS);
    QVERIFY(image.description() == back);
}

void tst_TiffDescription::itIsReadWithoutThePixels()
{
    const QTemporaryDir folder;
    const QString path = written(folder, "told");
    CILImage::setPixelLimit(100);
    std::string back;
    CILImage image;
    const EILSTATUS status = read(path, &back);
    const EILSTATUS whole = image.loadTIFF(QFile::encodeName(path).constData());
    CILImage::setPixelLimit(std::uint64_t(1) << 30);
    QCOMPARE(whole, EIL_FILE_TOO_LARGE);
    QCOMPARE(status, EIL_SUCCESS);
    QCOMPARE(back, std::string("told"));
}

void tst_TiffDescription::whatIsNoTiffIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("status");
    QTest::newRow("a file that is not there") << "none.tif" << QByteArray() << int(EIL_FILE_NOT_FOUND);
    QTest::newRow("an empty file") << "image.tif" << QByteArray("") << int(EIL_FILE_DAMAGED);
    QTest::newRow("text") << "image.tif" << QByteArray("{\"image math\": {}}") << int(EIL_FILE_DAMAGED);
    QTest::newRow("a header that points behind the end")
        << "image.tif" << QByteArray("II*\0\xff\xff\xff\x7f", 8) << int(EIL_FILE_DAMAGED);
    QTest::newRow("a folder") << "" << QByteArray() << int(EIL_FILE_NOT_READABLE);
}

void tst_TiffDescription::whatIsNoTiffIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(int, status);
    const QTemporaryDir folder;
    const QString path = name.isEmpty() ? folder.path() : folder.filePath(name);
    if (name == "image.tif") {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    std::string description = "as it was";
    QCOMPARE(int(read(path, &description)), status);
    QCOMPARE(description, std::string("as it was"));
    QVERIFY(QString::fromStdString(CILImage::lastError()).startsWith(path + ": "));
    QVERIFY(CILImage::loadDescription(nullptr, &description) != EIL_SUCCESS);
}

QTEST_GUILESS_MAIN(tst_TiffDescription)
#include "tst_TiffDescription.moc"
