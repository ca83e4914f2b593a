// SPDX-License-Identifier: MIT
#include "app/ApplicationSetup.h"
#include "host/vximage/CILImage.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/safety/FailureBench.h"
#include "tests/safety/OwnMounts.h"
#include "tests/safety/SafetyStudy.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace safetystudy;

namespace {

OwnMounts s_mounts;

constexpr qint64 PAGE = 4096; // what the small file system gives away at once
constexpr qint64 ROOM = 4 << 20;
const QString RESULT = QStringLiteral("AB_M20260102030406");

qint64 pagesOf(const QString &file)
{
    return (QFileInfo(file).size() + PAGE - 1) / PAGE;
}

/// A file that leaves only so many pages of a file system free.
class Filler
{
public:
    explicit Filler(const QString &folder) : m_file(folder + QStringLiteral("/filler")) {}
    ~Filler() { m_file.remove(); }
    bool leave(qint64 pages)
    {
        const auto freePages = [this] {
            struct statvfs info;
            return statvfs(QFile::encodeName(QFileInfo(m_file).path()).constData(), &info) == 0
                       ? qint64(info.f_bavail) * qint64(info.f_frsize) / PAGE
                       : -1;
        };
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return false;
        const QByteArray page(PAGE, 'x');
        while (freePages() > pages) {
            if (m_file.write(page) != PAGE)
                return false;
        }
        m_file.close();
        return freePages() == pages;
    }

private:
    QFile m_file;
};

bool isSamePixels(const QString &a, const QString &b)
{
    CILImage images[2];
    if (images[0].loadTIFF(QFile::encodeName(a).constData()) != EIL_SUCCESS ||
        images[1].loadTIFF(QFile::encodeName(b).constData()) != EIL_SUCCESS ||
        images[0].pixelCount() != images[1].pixelCount() || images[0].isEmpty())
        return false;
    const CILImage &left = images[0];
    const CILImage &right = images[1];
    return memcmp(left.get_data(), right.get_data(), left.pixelCount() * sizeof(float)) == 0;
}

} // namespace

/// The disk fills up while a result is written: a small file system of the test's own, filled to the page.
class tst_FullDisk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theFirstFileThatDoesNotFit_data();
    void theFirstFileThatDoesNotFit();
    void noRoomForTheCopyOfAnOperandInMemory();
    void theOldFileStaysWhenTheNewOneDoesNotFit_data();
    void theOldFileStaysWhenTheNewOneDoesNotFit();

private:
    /// Pages that stay free so that everything before `file` is written and it is not.
    static qint64 pagesBefore(const QString &file, const QString &reference);

    std::unique_ptr<QTemporaryDir> m_place;
};

void tst_FullDisk::init()
{
    if (!s_mounts.isEntered())
        QSKIP(qPrintable(
            QStringLiteral("a small disk to fill cannot be made without the right to mount one: %1")
                .arg(s_mounts.why())));
    m_place = std::make_unique<QTemporaryDir>();
    QVERIFY2(s_mounts.mountSmall(m_place->path(), ROOM), qPrintable(s_mounts.why()));
}

void tst_FullDisk::cleanup()
{
    if (!m_place)
        return;
    QVERIFY(OwnMounts::unmount(m_place->path()));
    m_place.reset();
}

qint64 tst_FullDisk::pagesBefore(const QString &file, const QString &reference)
{
    qint64 pages = 1 - 1; // that of the lock, and one too few
    for (const char *name : {"ClickInfo.txt", "luminescentA.TIF", "luminescentB.TIF", "luminescent.tif",
                             "photograph.tif", "AnalyzedClickInfo.txt"}) {
        pages += pagesOf(reference + QString::fromLatin1(name));
        if (file == QLatin1String(name))
            return pages;
    }
    return -1;
}

void tst_FullDisk::theFirstFileThatDoesNotFit_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("fineClick"); // four times as many pixels as the others
    QTest::addColumn<QString>("message");   // of the flow; null when the result is made all the same
    const QString creation = "ClickInfo creation failed";
    const QString loading = "Loading Failed";
    row("ClickInfo.txt: no image is written", "ClickInfo.txt", "", creation);
    row("luminescentA.TIF, nor the images after it", "luminescentA.TIF", "", loading);
    QTest::newRow("luminescentA.TIF, but everything after it") << "luminescentA.TIF" << CLICK_A << QString();
    row("luminescentB.TIF, nor the image after it", "luminescentB.TIF", "", loading);
    QTest::newRow("luminescentB.TIF, but everything after it") << "luminescentB.TIF" << CLICK_B << QString();
    row("luminescent.tif: the host refuses a result without pixels", "luminescent.tif", "", loading);
    row("photograph.tif: the host refuses a result without the photograph it speaks of", "photograph.tif", "",
        loading);
    row("AnalyzedClickInfo.txt: the host refuses a result that is not finished", "AnalyzedClickInfo.txt", "",
        loading);
}

void tst_FullDisk::theFirstFileThatDoesNotFit()
{
    QFETCH(QString, file);
    QFETCH(QString, fineClick);
    QFETCH(QString, message);
    QList<ClickSpec> clicks = {specOf(CLICK_A), specOf(CLICK_B)};
    for (ClickSpec &click : clicks) {
        if (click.clickNumber != fineClick)
            continue;
        click.width *= 2;
        click.height *= 2;
        click.binning /= 2;
    }
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start(clicks, "B"), qPrintable(bench.lastError()));
    const auto operands = hashesBelow(bench.folder().study());

    // What the result is when there is room, and then out of the way.
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(bench.tool().result()->getClickNumber(), RESULT);
    QTemporaryDir elsewhere;
    const QString reference = elsewhere.path() + "/reference/";
    QVERIFY(copyTree(bench.resultFolder(RESULT), reference));
    QVERIFY2(bench.tool().closeResult(), qPrintable(bench.tool().why()));
    QVERIFY(QDir(bench.resultFolder(RESULT)).removeRecursively());
    CVXSDataset::registerStoredDatasets(bench.folder().data());
    QVERIFY(!CVXSDataset::getDataset(RESULT));

    {
        Filler filler(m_place->path());
        QVERIFY(filler.leave(pagesBefore(file, reference)));
        QCOMPARE(bench.press(), message.isNull());
        const QString path = bench.resultFolder(RESULT) + file;
        QVERIFY2(bench.isLogged({path, "No space left on device"}), qPrintable(bench.failures().join('\n')));
        QVERIFY(!QFileInfo::exists(path));
        QVERIFY2(message.isNull() || bench.failures().contains(message),
                 qPrintable(bench.failures().join('\n')));
        // Whatever is there is whole, and nothing else is.
        const auto left = hashesBelow(bench.resultFolder(RESULT));
        for (auto it = left.begin(); it != left.end(); ++it) {
            const QString whole = reference + it.key();
            QVERIFY2(QFileInfo::exists(whole), qPrintable(it.key() + " is left over"));
            QCOMPARE(QFileInfo(bench.resultFolder(RESULT) + it.key()).size(), QFileInfo(whole).size());
        }
        QCOMPARE(knownResults().contains(RESULT), message.isNull());
        QCOMPARE(CVXSDataset::getDataset(RESULT) != nullptr, message.isNull());
    }

    // With room the same window makes it, under the name that no dataset has.
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    const QString click = bench.tool().result()->getClickNumber();
    QCOMPARE(click, message.isNull() ? QString("AB_N20260102030406") : RESULT);
    QCOMPARE(hashesBelow(bench.resultFolder(click)).keys(), hashesBelow(reference).keys());
    for (const char *name : {"luminescent.tif", "luminescentA.TIF", "luminescentB.TIF", "photograph.tif"})
        QVERIFY2(isSamePixels(bench.resultFolder(click) + name, reference + name), name);
    QCOMPARE(hashesBelow(bench.folder().study()), operands);
}

void tst_FullDisk::noRoomForTheCopyOfAnOperandInMemory()
{
    FailureBench bench(m_place->path());
    QVERIFY2(bench.start({specOf(CLICK_A), specOf(CLICK_B)}, "A"), qPrintable(bench.lastError()));
    QVERIFY(addInMemory(bench.tool().sequence(), MEMORY_B));
    QVERIFY2(bench.tool().select(CLICK_A, MEMORY_B), qPrintable(bench.tool().why()));
    const auto operands = hashesBelow(bench.folder().study());
    const QString copy = bench.clickFolder(MEMORY_B) + "TempFolder/" + MEMORY_B + '/';
    {
        Filler filler(m_place->path());
        QVERIFY(filler.leave(0));
        QVERIFY(!bench.press());
        QVERIFY2(bench.isLogged({copy, "No space left on device"}), qPrintable(bench.failures().join('\n')));
        QVERIFY(bench.failures().contains("ClickInfo creation failed"));
        QVERIFY(!CVXSDataset::getDataset(RESULT));
        QVERIFY(!QFileInfo::exists(bench.resultFolder(RESULT)));
        QCOMPARE(QDir(copy).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }
    QVERIFY2(bench.press(), qPrintable(bench.lastError()));
    QCOMPARE(bench.tool().result()->getClickNumber(), RESULT);
    QCOMPARE(firstFaultOfResult(bench.resultFolder(RESULT), true), QString());
    QCOMPARE(firstHarm(operands, hashesBelow(bench.folder().study())), QString());
    QVERIFY(!QFileInfo::exists(bench.clickFolder(MEMORY_B) + "TempFolder"));
}

void tst_FullDisk::theOldFileStaysWhenTheNewOneDoesNotFit_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("pages");
    QTest::newRow("a record that waits in a buffer until the end") << 100 << 0;
    QTest::newRow("a record of three pages, two of which fit") << 9000 << 2;
    QTest::newRow("a record larger than any buffer, half of which fits") << 100000 << 12;
}

void tst_FullDisk::theOldFileStaysWhenTheNewOneDoesNotFit()
{
    QFETCH(int, length);
    QFETCH(int, pages);
    const QString path = m_place->path() + "/AnalyzedClickInfo.txt";
    CPLClickInfo info;
    auto *section = new CPLSection;
    section->setSectionKey("ROIs");
    section->addKeyValue("ROI", "the old one");
    info.addSection(section);
    QCOMPARE(info.saveClickInfo(path), ESTATUS_SUCCESS);
    const auto before = hashesBelow(m_place->path());

    section->setValue("ROI", QString(length, 'n'));
    {
        Filler filler(m_place->path());
        QVERIFY(filler.leave(pages));
        QVERIFY(info.saveClickInfo(path) != ESTATUS_SUCCESS);
        QCOMPARE(info.lastError(), path + ": No space left on device");
    }
    QCOMPARE(hashesBelow(m_place->path()), before);
    QCOMPARE(info.saveClickInfo(path), ESTATUS_SUCCESS);
}

int main(int argc, char **argv)
{
    s_mounts.enter();
    ApplicationSetup::beforeApplication();
    QApplication application(argc, argv);
    ApplicationSetup::afterApplication();
    tst_FullDisk test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_FullDisk.moc"
