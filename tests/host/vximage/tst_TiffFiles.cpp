// SPDX-License-Identifier: MIT
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <functional>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/stat.h>
#include <tiffio.h>

namespace {

/// A TIFF by the library itself: the tags that matter, and pixels in strips or tiles.
struct Recipe
{
    uint32_t width = 37, height = 29;
    int bits = 16, samples = 1, format = SAMPLEFORMAT_UINT, photometric = PHOTOMETRIC_MINISBLACK;
    int compression = COMPRESSION_NONE, predictor = 0, tile = 0;
    const char *mode = "w";
    int pages = 1;
    /// Of each page, one after the other; what is not given is a page.
    QVector<uint32_t> subfileTypes = {};
    QByteArray description = {};
};

/// Pixel i as the bytes of that type.
void put(std::vector<char> &bytes, const Recipe &r, size_t i)
{
    const int v = int(i * 7 % 120) - (r.format == SAMPLEFORMAT_INT ? 60 : 0);
    const auto store = [&](auto value) {
        const char *p = reinterpret_cast<const char *>(&value);
        bytes.insert(bytes.end(), p, p + sizeof value);
    };
    if (r.format == SAMPLEFORMAT_IEEEFP) {
        if (r.bits == 32)
            store(float(v) + 0.25f);
        else
            store(double(v) + 0.25);
    } else if (r.bits == 8) {
        store(uint8_t(v));
    } else if (r.bits == 16) {
        store(uint16_t(v));
    } else {
        store(uint32_t(v));
    }
}

double expectedPixel(const Recipe &r, size_t i)
{
    const int v = int(i * 7 % 120) - (r.format == SAMPLEFORMAT_INT ? 60 : 0);
    if (r.format == SAMPLEFORMAT_IEEEFP)
        return v + 0.25;
    if (r.photometric == PHOTOMETRIC_MINISWHITE)
        return r.format == SAMPLEFORMAT_INT ? -1 - v : std::ldexp(1.0, r.bits) - 1 - v;
    return v;
}

bool make(const QString &path, const Recipe &r)
{
    TIFF *tiff = TIFFOpen(QFile::encodeName(path), r.mode);
    if (!tiff)
        return false;
    bool good = true;
    for (int page = 0; page < r.pages; ++page) {
        if (page < r.subfileTypes.size())
            TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, r.subfileTypes.at(page));
        if (!r.description.isEmpty())
            TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION, r.description.constData());
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, r.width);
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, r.height);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, r.bits);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, r.samples);
        TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, r.format);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, r.photometric);
        TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, r.compression);
        if (r.predictor)
            TIFFSetField(tiff, TIFFTAG_PREDICTOR, r.predictor);
        if (r.tile) {
            TIFFSetField(tiff, TIFFTAG_TILEWIDTH, r.tile);
            TIFFSetField(tiff, TIFFTAG_TILELENGTH, r.tile);
            for (uint32_t y = 0; y < r.height; y += uint32_t(r.tile)) {
                for (uint32_t x = 0; x < r.width; x += uint32_t(r.tile)) {
                    std::vector<char> bytes;
                    for (uint32_t j = 0; j < uint32_t(r.tile); ++j) {
                        for (uint32_t i = 0; i < uint32_t(r.tile); ++i)
                            put(bytes, r, size_t(y + j) * r.width + x + i);
                    }
                    good &= TIFFWriteTile(tiff, bytes.data(), x, y, 0, 0) > 0;
                }
            }
        } else {
            TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 5);
            for (uint32_t y = 0; y < r.height; ++y) {
                std::vector<char> bytes;
                for (uint32_t x = 0; x < r.width * uint32_t(r.samples); ++x)
                    put(bytes, r, size_t(y) * r.width * size_t(r.samples) + x + size_t(page));
                good &= TIFFWriteScanline(tiff, bytes.data(), y, 0) > 0;
            }
        }
        good &= TIFFWriteDirectory(tiff) == 1;
    }
    TIFFClose(tiff);
    return good;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile::remove(path); // some file systems wait for the disk when a file is written over
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

std::string run(const QString &program, const QStringList &arguments, bool *ran)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    *ran = process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
    return process.readAll().toStdString();
}

/// A classic TIFF header with one directory of these values and nothing after it.
QByteArray header(quint32 width, quint32 height)
{
    QByteArray bytes("II*\0\x08\0\0\0", 8);
    const auto u16 = [&](int v) { bytes.append(char(v & 0xff)).append(char(v >> 8)); };
    const auto u32 = [&](quint32 v) {
        for (int i = 0; i < 4; ++i)
            bytes.append(char(v >> (8 * i) & 0xff));
    };
    struct Entry
    {
        int tag;
        quint32 value;
    };
    const Entry entries[] = {{256, width}, {257, height}, {258, 16},     {259, 1},  {262, 1},
                             {273, 8},     {277, 1},      {278, height}, {279, 100}};
    u16(int(sizeof entries / sizeof *entries));
    for (const Entry &e : entries) {
        u16(e.tag);
        u16(4);
        u32(1);
        u32(e.value);
    }
    u32(0);
    return bytes + QByteArray(200, 'x');
}

} // namespace

class tst_TiffFiles : public QObject
{
    Q_OBJECT
    QTemporaryDir m_folder;
    QString path(const char *name) const { return m_folder.filePath(name); }

private slots:
    void readsWhatOthersWrite_data()
    {
        QTest::addColumn<int>("index");
        for (size_t i = 0; i < recipes().size(); ++i)
            QTest::newRow(recipes()[i].first) << int(i);
    }
    void readsWhatOthersWrite()
    {
        QFETCH(int, index);
        const Recipe &r = recipes()[size_t(index)].second;
        if (!TIFFIsCODECConfigured(uint16_t(r.compression)))
            QSKIP("this compression is not built into the library");
        const QString file = path("in.tif");
        QVERIFY(make(file, r));
        CILImage image;
        QVERIFY2(image.loadTIFF(QFile::encodeName(file)) == EIL_SUCCESS, CILImage::lastError().c_str());
        QCOMPARE(image.getWidth(), r.width);
        QCOMPARE(image.getHeight(), r.height);
        const std::vector<double> found = maker::values(image);
        for (size_t i = 0; i < found.size(); ++i)
            QCOMPARE(found[i], expectedPixel(r, i));
        const bool isInt = r.format == SAMPLEFORMAT_INT;
        const VXSDataTypes type = r.format == SAMPLEFORMAT_IEEEFP ? (r.bits == 32 ? VXS_FLOAT : VXS_DOUBLE)
                                  : isInt                         ? (r.bits == 32 ? VXS_DOUBLE : VXS_FLOAT)
                                  : r.bits == 8                   ? VXS_UINT8
                                  : r.bits == 16                  ? VXS_UINT16
                                                                  : VXS_UINT32;
        QCOMPARE(image.getType(), type);
    }
    static const std::vector<std::pair<const char *, Recipe>> &recipes()
    {
        static const auto all = [] {
            std::vector<std::pair<const char *, Recipe>> list;
            const auto add = [&](const char *name, const std::function<void(Recipe &)> &change) {
                Recipe r;
                change(r);
                list.emplace_back(name, r);
            };
            add("16-bit strips", [](Recipe &) {});
            add("8-bit", [](Recipe &r) { r.bits = 8; });
            add("32-bit", [](Recipe &r) { r.bits = 32; });
            add("signed 8-bit", [](Recipe &r) { r.bits = 8, r.format = SAMPLEFORMAT_INT; });
            add("signed 16-bit", [](Recipe &r) { r.format = SAMPLEFORMAT_INT; });
            add("signed 32-bit", [](Recipe &r) { r.bits = 32, r.format = SAMPLEFORMAT_INT; });
            add("float", [](Recipe &r) { r.bits = 32, r.format = SAMPLEFORMAT_IEEEFP; });
            add("double", [](Recipe &r) { r.bits = 64, r.format = SAMPLEFORMAT_IEEEFP; });
            add("big-endian 16-bit", [](Recipe &r) { r.mode = "wb"; });
            add("big-endian float",
                [](Recipe &r) { r.mode = "wb", r.bits = 32, r.format = SAMPLEFORMAT_IEEEFP; });
            add("little-endian", [](Recipe &r) { r.mode = "wl"; });
            add("BigTIFF", [](Recipe &r) { r.mode = "w8"; });
            add("tiles", [](Recipe &r) { r.tile = 16; });
            add("one tile larger than the image", [](Recipe &r) { r.tile = 256; });
            add("big-endian float tiles, deflate", [](Recipe &r) {
                r.mode = "wb", r.bits = 32, r.format = SAMPLEFORMAT_IEEEFP, r.tile = 32,
                r.compression = COMPRESSION_ADOBE_DEFLATE;
            });
            add("LZW with predictor",
                [](Recipe &r) { r.compression = COMPRESSION_LZW, r.predictor = PREDICTOR_HORIZONTAL; });
            add("deflate", [](Recipe &r) { r.compression = COMPRESSION_ADOBE_DEFLATE; });
            add("deflate, float with predictor", [](Recipe &r) {
                r.compression = COMPRESSION_ADOBE_DEFLATE, r.bits = 32, r.format = SAMPLEFORMAT_IEEEFP,
                r.predictor = PREDICTOR_FLOATINGPOINT;
            });
            add("PackBits", [](Recipe &r) { r.compression = COMPRESSION_PACKBITS; });
            add("zstd", [](Recipe &r) { r.compression = COMPRESSION_ZSTD; });
            add("LZMA", [](Recipe &r) { r.compression = COMPRESSION_LZMA; });
            add("white is zero, 8-bit",
                [](Recipe &r) { r.bits = 8, r.photometric = PHOTOMETRIC_MINISWHITE; });
            add("white is zero, 16-bit", [](Recipe &r) { r.photometric = PHOTOMETRIC_MINISWHITE; });
            add("white is zero, signed",
                [](Recipe &r) { r.format = SAMPLEFORMAT_INT, r.photometric = PHOTOMETRIC_MINISWHITE; });
            add("the first of three pages", [](Recipe &r) { r.pages = 3; });
            add("1 x 1", [](Recipe &r) { r.width = r.height = 1; });
            return list;
        }();
        return all;
    }

    void everyTypeComesBack()
    {
        for (const VXSDataTypes type : {VXS_UINT8, VXS_MASK, VXS_UINT16, VXS_UINT32, VXS_FLOAT, VXS_DOUBLE}) {
            CILImage image = maker::random(type, 301, 1205, type == VXS_MASK ? 1 : 255, 3);
            image.setDescription("{\"k\": \"1.70\", \"\xc3\xa4\": 1}");
            QCOMPARE(image.saveAsTIFF(QFile::encodeName(path("out.tif"))), 0L);
            CILImage back;
            QCOMPARE(back.loadTIFF(QFile::encodeName(path("out.tif"))), EIL_SUCCESS);
            QCOMPARE(maker::values(back), maker::values(image));
            QCOMPARE(back.description(), image.description());
            QCOMPARE(back.getType(), type == VXS_MASK ? VXS_UINT8 : type == VXS_DOUBLE ? VXS_FLOAT : type);
        }
        QCOMPARE(QDir(m_folder.path()).entryList({"*part-*"}, QDir::Files | QDir::Hidden).size(), 0);
    }

    void infinitiesAndNaNComeBackBitForBit()
    {
        const std::vector<float> pixels = maker::awkward(35, 6);
        const CILImage image = maker::floats(7, 5, pixels);
        QCOMPARE(image.saveAsTIFF(QFile::encodeName(path("awkward.tif"))), 0L);
        CILImage back;
        QCOMPARE(back.loadTIFF(QFile::encodeName(path("awkward.tif"))), EIL_SUCCESS);
        QCOMPARE(std::memcmp(static_cast<const CILImage &>(back).get_data(), pixels.data(), 35 * 4), 0);
    }

    void tiffinfoReadsIt()
    {
        const QString tool = QStandardPaths::findExecutable("tiffinfo");
        if (tool.isEmpty())
            QSKIP("tiffinfo is not installed");
        CILImage image = maker::random(VXS_FLOAT, 301, 205, 255, 3);
        image.setDescription("told");
        QCOMPARE(image.saveAsTIFF(QFile::encodeName(path("info.tif"))), 0L);
        bool ran = false;
        const std::string said = run(tool, {"-D", path("info.tif")}, &ran);
        QVERIFY2(ran, said.c_str());
        for (const char *part :
             {"Image Width: 301 Image Length: 205", "Bits/Sample: 32", "IEEE floating point", "min-is-black",
              "ImageDescription: told", "Compression Scheme: None"})
            QVERIFY2(said.find(part) != std::string::npos, (std::string(part) + " not in " + said).c_str());
        QVERIFY2(said.find("rror") == std::string::npos && said.find("arning") == std::string::npos,
                 said.c_str());
        QVERIFY(said.find("TIFF Directory") == said.rfind("TIFF Directory")); // one page
    }

    void tifffileReadsIt()
    {
        bool ran = false;
        run("/usr/bin/python3", {"-c", "import tifffile"}, &ran);
        if (!ran)
            QSKIP("Python's tifffile is not installed");
        const CILImage image = maker::random(VXS_FLOAT, 301, 205, 255, 3);
        QCOMPARE(image.saveAsTIFF(QFile::encodeName(path("py.tif"))), 0L);
        double sum = 0;
        for (const double v : maker::values(image))
            sum += v;
        const std::string said = run("/usr/bin/python3",
                                     {"-c",
                                      "import sys, tifffile\n"
                                      "a = tifffile.imread(sys.argv[1])\n"
                                      "print(a.dtype, a.shape, int(a.sum(dtype='f8')), int(a[7, 11]))\n",
                                      path("py.tif")},
                                     &ran);
        const QString expected =
            QString("float32 (205, 301) %1 %2\n").arg(qint64(sum)).arg(int(image.pixelAt(11, 7)));
        QCOMPARE(QString::fromStdString(said), expected);
    }

    void badFilesAreRefusedWithNameAndReason_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("reason");
        Recipe r;
        QVERIFY(make(path("good.tif"), r));
        const QByteArray good = maker::contents(path("good.tif"));
        QTest::newRow("empty file") << QByteArray() << int(EIL_FILE_DAMAGED) << QByteArray("not a TIFF");
        QTest::newRow("text") << QByteArray("hello, world, this is no image") << int(EIL_FILE_DAMAGED)
                              << QByteArray("not a TIFF");
        QTest::newRow("only the first bytes")
            << good.left(6) << int(EIL_FILE_DAMAGED) << QByteArray("damaged");
        QTest::newRow("pixels without a directory")
            << good.left(good.size() / 2) << int(EIL_FILE_DAMAGED) << QByteArray("damaged");
        QTest::newRow("100,000 x 100,000")
            << header(100000, 100000) << int(EIL_FILE_TOO_LARGE) << QByteArray("100000 x 100000");
        QTest::newRow("within the limit but more than the file holds")
            << header(20000, 20000) << int(EIL_FILE_DAMAGED) << QByteArray("20000 x 20000");
        QTest::newRow("no width") << header(0, 10) << int(EIL_FILE_DAMAGED) << QByteArray("damaged");
        Recipe rgb;
        rgb.bits = 8;
        rgb.samples = 3;
        rgb.photometric = PHOTOMETRIC_RGB;
        QVERIFY(make(path("rgb.tif"), rgb));
        QTest::newRow("colours") << maker::contents(path("rgb.tif")) << int(EIL_FILE_NOT_GREY)
                                 << QByteArray("not a grey image");
        for (int seed = 1; seed < 6; ++seed) {
            QByteArray noise = good.left(8);
            for (int i = 0; i < 4000; ++i)
                noise.append(char((i * 2654435761u * unsigned(seed)) >> 13));
            QTest::newRow(qPrintable(QString("random bytes after the header, %1").arg(seed)))
                << noise << int(EIL_FILE_DAMAGED) << QByteArray("damaged");
        }
    }
    void badFilesAreRefusedWithNameAndReason()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, status);
        QFETCH(QByteArray, reason);
        write(path("bad.tif"), bytes);
        CILImage image = maker::floats(2, 1, {1, 2});
        const std::uint64_t id = image.contentId();
        const int found = image.loadTIFF(QFile::encodeName(path("bad.tif")));
        const QByteArray said = QByteArray::fromStdString(CILImage::lastError());
        QVERIFY2(found == status, said);
        QVERIFY2(said.startsWith(QFile::encodeName(path("bad.tif")) + ": "), said);
        QVERIFY2(said.contains(reason), said);
        QCOMPARE(image.contentId(), id);
    }

    void anotherFormatIsCalledByItsName_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("words");
        const QByteArray otherwise("not a TIFF file; only grey TIFF images can be read");
        const auto row = [](const char *name, const QByteArray &start, const QByteArray &words) {
            QTest::newRow(name) << start << words;
        };
        row("PNG", "\x89PNG\r\n\x1a\n",
            "not a TIFF file but a PNG picture; only grey TIFF images can be read");
        row("JPEG", "\xff\xd8\xff\xe0", "but a JPEG picture; only grey");
        row("JPEG 2000", QByteArray("\0\0\0\x0cjP  \r\n", 10), "but a JPEG 2000 picture");
        row("GIF", "GIF89a", "but a GIF picture");
        row("BMP", "BM", "but a BMP picture");
        row("WebP", "RIFF....WEBP", "but a WebP picture");
        row("DICOM", QByteArray(128, '\0') + "DICM", "but a DICOM image");
        row("FITS", "SIMPLE  =                    T", "but a FITS image");
        row("HDF5", "\x89HDF\r\n", "but an HDF5 file");
        row("PDF", "%PDF-1.7", "but a PDF document");
        row("ZIP", "PK\x03\x04", "but a ZIP archive");
        row("DICOM's letters at the start alone", "DICM", otherwise);
        row("half a signature", "\x89PN", otherwise);
        row("nothing that is known", "hello, world", otherwise);
    }
    void anotherFormatIsCalledByItsName()
    {
        QFETCH(QByteArray, start);
        QFETCH(QByteArray, words);
        // Whatever the file is called.
        write(path("picture.tif"), start);
        CILImage image;
        QCOMPARE(image.loadTIFF(QFile::encodeName(path("picture.tif"))), EIL_FILE_DAMAGED);
        const QByteArray said = QByteArray::fromStdString(CILImage::lastError());
        QVERIFY2(said.contains(words), said);
        QVERIFY2(!said.contains("magic"), said);
    }

    void pagesAreCounted_data()
    {
        QTest::addColumn<int>("pages");
        QTest::addColumn<QVector<uint32_t>>("subfileTypes");
        QTest::addColumn<QByteArray>("description");
        QTest::addColumn<uint>("counted");
        const auto row = [](const char *name, int pages, const QVector<uint32_t> &types,
                            const QByteArray &description, uint counted) {
            QTest::newRow(name) << pages << types << description << counted;
        };
        row("one", 1, {}, "", 1);
        row("three", 3, {}, "", 3);
        row("pages that say so", 2, {FILETYPE_PAGE, FILETYPE_PAGE}, "", 2);
        row("a small copy and a mask are no pages", 3, {0, FILETYPE_REDUCEDIMAGE, FILETYPE_MASK}, "", 1);
        row("two channels by an OME description", 2, {}, "<OME><Pixels SizeC=\"2\"/></OME>", 2);
        row("a description of more images than the file has room for", 1, {}, "ImageJ=1.53\nimages=3000\n",
            1);
        row("a description of another program", 1, {}, "images=2\n", 1);
        row("no image at all is no stack", 1, {}, "ImageJ=1.53\nimages=0\n", 1);
    }
    void pagesAreCounted()
    {
        QFETCH(uint, counted);
        Recipe r;
        QFETCH(int, pages);
        r.pages = pages;
        QFETCH(QVector<uint32_t>, subfileTypes);
        r.subfileTypes = subfileTypes;
        QFETCH(QByteArray, description);
        r.description = description;
        QVERIFY(make(path("pages.tif"), r));
        uint found = 0;
        QCOMPARE(CILImage::countPages(QFile::encodeName(path("pages.tif")), &found), EIL_SUCCESS);
        QCOMPARE(found, counted);
    }

    void imagesBehindTheFirstWithoutDirectoriesAreCounted()
    {
        Recipe r;
        r.description = "ImageJ=1.53\nimages=4\nslices=4\n";
        QVERIFY(make(path("stack.tif"), r));
        // What follows is three more images of that size.
        const QByteArray more(3 * int(r.width * r.height) * r.bits / 8, 'x');
        write(path("stack.tif"), maker::contents(path("stack.tif")) + more);
        uint found = 0;
        QCOMPARE(CILImage::countPages(QFile::encodeName(path("stack.tif")), &found), EIL_SUCCESS);
        QCOMPARE(found, 4u);
    }

    void pagesOfWhatIsNoTiffAreNotCounted()
    {
        write(path("text.tif"), "no pixels");
        uint found = 7;
        QCOMPARE(CILImage::countPages(QFile::encodeName(path("text.tif")), &found), EIL_FILE_DAMAGED);
        QCOMPARE(CILImage::countPages(QFile::encodeName(path("absent.tif")), &found), EIL_FILE_NOT_FOUND);
        QCOMPARE(found, 7u);
    }

    void pagesThatLeadRoundEnd()
    {
        Recipe r;
        r.pages = 2;
        QVERIFY(make(path("round.tif"), r));
        QByteArray bytes = maker::contents(path("round.tif"));
        const auto u16 = [&bytes](int at) { return uchar(bytes[at]) | uchar(bytes[at + 1]) << 8; };
        const auto u32 = [&u16](int at) { return u16(at) | u16(at + 2) << 16; };
        const auto next = [&u16](int directory) { return directory + 2 + 12 * u16(directory); };
        QVERIFY(bytes.startsWith(QByteArray("II*\0", 4)));
        const int first = u32(4);
        const int second = u32(next(first));
        bytes.replace(next(second), 4, bytes.mid(4, 4)); // back to the first
        write(path("round.tif"), bytes);
        uint found = 0;
        QCOMPARE(CILImage::countPages(QFile::encodeName(path("round.tif")), &found), EIL_SUCCESS);
        QCOMPARE(found, 2u);
    }

    void aTruncatedFileIsRefusedWhereverItEnds()
    {
        Recipe r;
        r.compression = COMPRESSION_ADOBE_DEFLATE;
        QVERIFY(make(path("whole.tif"), r));
        const QByteArray whole = maker::contents(path("whole.tif"));
        for (int size = 0; size < whole.size() - 12; size += 5) {
            write(path("cut.tif"), whole.left(size));
            CILImage image;
            QVERIFY2(image.loadTIFF(QFile::encodeName(path("cut.tif"))) != EIL_SUCCESS,
                     qPrintable(QString::number(size)));
            QVERIFY(image.isEmpty());
        }
    }

    void aFileWithWrongBytesNeverCrashes()
    {
        Recipe r;
        r.tile = 16;
        r.compression = COMPRESSION_LZW;
        QVERIFY(make(path("whole.tif"), r));
        const QByteArray whole = maker::contents(path("whole.tif"));
        int refused = 0;
        for (int i = 0; i < whole.size(); ++i) {
            QByteArray bytes = whole;
            bytes[i] = char(bytes[i] ^ char(0xff));
            write(path("flip.tif"), bytes);
            CILImage image;
            if (image.loadTIFF(QFile::encodeName(path("flip.tif"))) != EIL_SUCCESS)
                ++refused;
            else
                QVERIFY(!image.isEmpty());
        }
        QVERIFY(refused > 10);
    }

    void theLimitIsCheckedBeforeMemoryIsTaken()
    {
        Recipe r;
        QVERIFY(make(path("limit.tif"), r));
        CILImage image;
        CILImage::setPixelLimit(r.width * r.height - 1);
        const EILSTATUS over = image.loadTIFF(QFile::encodeName(path("limit.tif")));
        CILImage::setPixelLimit(r.width * r.height);
        const EILSTATUS at = image.loadTIFF(QFile::encodeName(path("limit.tif")));
        CILImage::setPixelLimit(std::uint64_t(1) << 30);
        QCOMPARE(over, EIL_FILE_TOO_LARGE);
        QCOMPARE(at, EIL_SUCCESS);
    }

    void whatIsNoFileIsRefused()
    {
        CILImage image;
        QCOMPARE(image.loadTIFF(QFile::encodeName(path("absent.tif"))), EIL_FILE_NOT_FOUND);
        QCOMPARE(image.loadTIFF(QFile::encodeName(m_folder.path())), EIL_FILE_NOT_READABLE);
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe")), 0600), 0);
        QCOMPARE(image.loadTIFF(QFile::encodeName(path("pipe"))), EIL_FILE_NOT_READABLE);
        QCOMPARE(image.loadTIFF(nullptr), EIL_FILE_NOT_FOUND);
        QCOMPARE(image.loadTIFF(""), EIL_FILE_NOT_FOUND);
        QCOMPARE(image.saveAsTIFF(QFile::encodeName(path("empty.tif"))), long(EIL_BAD_SIZE));
        QVERIFY(!QFile::exists(path("empty.tif")));
        const CILImage pixel = maker::floats(1, 1, {1});
        QCOMPARE(pixel.saveAsTIFF(QFile::encodeName(path("no/such/folder.tif"))),
                 long(EIL_FILE_NOT_WRITABLE));
        QVERIFY(CILImage::lastError().find("no/such/folder.tif: ") != std::string::npos);
        QVERIFY(QDir(m_folder.path()).mkdir("taken.tif"));
        QCOMPARE(pixel.saveAsTIFF(QFile::encodeName(path("taken.tif"))), long(EIL_FILE_NOT_WRITABLE));
    }

    void aFileWithoutADescriptionTakesTheOldOneAway()
    {
        const QByteArray file = QFile::encodeName(m_folder.path()) + "/plain.tif";
        QCOMPARE(maker::floats(1, 1, {3}).saveTIFF(file), EIL_SUCCESS);
        CILImage image;
        image.setDescription("of another image");
        QCOMPARE(image.loadTIFF(file), EIL_SUCCESS);
        QCOMPARE(image.description(), std::string());
    }
};

QTEST_APPLESS_MAIN(tst_TiffFiles)
#include "tst_TiffFiles.moc"
