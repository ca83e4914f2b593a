// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLSection.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <cmath>
#include <memory>
#include <QtTest>
#include <random>

#include <sys/stat.h>

using SharedRoi = std::shared_ptr<CROIBase>;
Q_DECLARE_METATYPE(SharedRoi)

namespace {

const QString CLICK = QStringLiteral("AB20260102030405");

CROIBase named(const QString &name, EROISHAPE shape = EROI_RECTANGLE, EROIKIND kind = EROI_MEASUREMENT)
{
    CROIBase roi(shape, kind, QRectF(2.5, 3.0, 1.25, 1.0));
    roi.setName(name);
    return roi;
}

CROIBase outlined(const QString &name, EROISHAPE shape, const QPolygonF &corners)
{
    CROIBase roi(shape, EROI_MEASUREMENT, corners);
    roi.setName(name);
    return roi;
}

QPolygonF wildOutline(int corners)
{
    QPolygonF outline;
    std::mt19937_64 random(11);
    for (int i = 0; i < corners; ++i) {
        const double x = std::ldexp(double(random()), -61);
        outline.append({x, std::ldexp(double(random()), -40 - int(random() % 60))});
    }
    return outline;
}

bool isSame(const CROIBase &a, const CROIBase &b)
{
    const QRectF boxA = a.boundingBox(), boxB = b.boundingBox();
    const QPolygonF cornersA = a.outline(), cornersB = b.outline();
    return a.name() == b.name() && a.shape() == b.shape() && a.kind() == b.kind() && a.rows() == b.rows() &&
           a.columns() == b.columns() && boxA.x() == boxB.x() && boxA.y() == boxB.y() &&
           boxA.width() == boxB.width() && boxA.height() == boxB.height() &&
           std::equal(cornersA.cbegin(), cornersA.cend(), cornersB.cbegin(), cornersB.cend(),
                      [](const QPointF &p, const QPointF &q) { return p.x() == q.x() && p.y() == q.y(); });
}

std::unique_ptr<CVXSDataset> opened(const QString &folder)
{
    return std::unique_ptr<CVXSDataset>(CVXSDataset::open(folder, nullptr, nullptr));
}

QStringList namesOf(const std::unique_ptr<CVXSDataset> &dataset)
{
    QStringList names;
    for (const CROIBase *roi : dataset->roiManager()->rois())
        names += roi->name();
    return names;
}

} // namespace

class tst_RoiSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void roundTrip_data();
    void roundTrip();
    void theWrittenText();
    void damagedEntries_data();
    void damagedEntries();
    void anythingThatIsReadComesBack();
    void damagedEntriesStayInTheFile();
    void readingDoesNotModify();
    void otherSectionsStay();
    void withoutAChangeTheFileStays();
    void aChangeTakenBackLeavesTheFile();
    void aFlagTakenBackDoesNotLoseAChange();
    void removedRoisAreGone();
    void savedElsewhere();
    void aFolderThatComesLater();
    void aFileThatWentAwayIsWrittenAgain();
    void aDamagedFileIsLeftAlone();
    void aFailureOfTheLastFile();
    void aReadOnlyFolderKeepsTheOldFile();

private:
    QString path(const QString &name = QStringLiteral("AnalyzedClickInfo.txt")) const
    {
        return m_folder->filePath("a/" + name);
    }
    QString folder() const { return m_folder->filePath("a"); }
    bool write(const QByteArray &entries) const
    {
        return writeFile(path(), "[ClickNumber]: " + CLICK.toUtf8() + "\n\n[ROIs]\n" + entries);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_RoiSaving::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    CVXSDataset dataset(CLICK);
    dataset.setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int x, int) { return float(x); }));
    QCOMPARE(dataset.saveDatasetAs(folder()), ESTATUS_SUCCESS);
}

void tst_RoiSaving::roundTrip_data()
{
    QTest::addColumn<SharedRoi>("roi");
    const auto row = [](const char *name, const CROIBase &roi) {
        QTest::newRow(name) << std::make_shared<CROIBase>(roi);
    };
    for (const EROIKIND kind : {EROI_MEASUREMENT, EROI_BACKGROUND}) {
        const QByteArray name = kind == EROI_MEASUREMENT ? "a measurement " : "a background ";
        row(name + "rectangle", named("ROI 1", EROI_RECTANGLE, kind));
        row(name + "ellipse", named("ROI 1", EROI_ELLIPSE, kind));
        CROIBase grid(kind, QRectF(0.1, 0.2, 0.7, 1.0 / 3.0), 7, 13);
        grid.setName("Grid 1");
        row(name + "grid", grid);
    }
    row("a polygon", outlined("P", EROI_POLYGON, QPolygonF({{0.1, 0.2}, {1.0 / 3.0, 0.3}, {0.7, 9.0}})));
    row("a free-hand outline of every kind of number", outlined("F", EROI_FREEHAND, wildOutline(2000)));
    row("an outline of the most corners", outlined("F", EROI_FREEHAND, wildOutline(CROIBase::MAX_CORNERS)));
    CROIBase edges(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(-1e-7 / 3.0, 1e15 / 3.0, 1e5 / 3.0, 1e9 / 7.0));
    edges.setName("Edges");
    row("numbers with an exponent", edges);
    row("a name with the signs of the syntax", named("a=b; [c]: d, #e\\n \\"));
    row("a name that begins like a comment", named("# left"));
    row("a name that begins like a section", named("[ROIs]"));
    row("a name with a line break and blanks", named(" line 1\nline 2\t"));
    row("a name beyond Latin", named(QStringLiteral(u"\u816b\u7624 \U0001F401 \u00c4\u00b5")));
    row("a name like a field", named("measurement ellipse; left 1"));
}

void tst_RoiSaving::roundTrip()
{
    QFETCH(SharedRoi, roi);
    {
        const auto dataset = opened(folder());
        QVERIFY(dataset->roiManager()->addROI(*roi));
        QVERIFY(dataset->roiManager()->addROI(named("Behind it")));
        QVERIFY(isSame(*dataset->roiManager()->rois().first(), *roi));
        QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
        QVERIFY(!dataset->isModified() && !dataset->roiManager()->isModified());
    }
    LogCatcher log;
    const auto dataset = opened(folder());
    QCOMPARE(namesOf(dataset), QStringList({roi->name(), "Behind it"}));
    QVERIFY(isSame(*dataset->roiManager()->rois().first(), *roi));
    QVERIFY(log.failures().isEmpty());
}

void tst_RoiSaving::theWrittenText()
{
    const auto dataset = opened(folder());
    CROIManager *manager = dataset->roiManager();
    manager->addROI(named("Tumor", EROI_ELLIPSE));
    manager->addROI(named("Bkg 1", EROI_RECTANGLE, EROI_BACKGROUND));
    manager->addROI(outlined("Paw", EROI_POLYGON, QPolygonF({{1, 1}, {2.5, 1}, {2, 3.125}})));
    CROIBase grid(EROI_MEASUREMENT, QRectF(1, 1, 8, 5), 8, 12);
    grid.setName("Wells");
    manager->addROI(grid);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); // numbers are the same everywhere
    const ESTATUS status = dataset->saveDatasetAs(folder());
    QLocale::setDefault(before);
    QCOMPARE(status, ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()),
             QByteArray("[ClickNumber]: AB20260102030405\n\n[ROIs]\n"
                        "Tumor = measurement ellipse; left 2.5; top 3; width 1.25; height 1\n"
                        "Bkg 1 = background rectangle; left 2.5; top 3; width 1.25; height 1\n"
                        "Paw = measurement polygon; corners 1 1, 2.5 1, 2 3.125\n"
                        "Wells = measurement grid; left 1; top 1; width 8; height 5; rows 8; columns 12\n"));
}

void tst_RoiSaving::damagedEntries_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *entry, const char *reason) {
        QTest::newRow(name) << QByteArray("Bad = ").append(entry) << QString::fromUtf8(reason);
    };
    row("nothing", "", "\"\" is no kind or shape of an ROI");
    row("an unknown kind", "tumour ellipse; left 1; top 1; width 1; height 1",
        "\"tumour\" is no kind or shape of an ROI");
    row("an unknown shape", "measurement sphere; left 1; top 1; width 1; height 1",
        "\"sphere\" is no kind or shape of an ROI");
    row("no shape", "measurement; left 1; top 1; width 1; height 1", "\"\" is no kind or shape of an ROI");
    row("a missing field", "measurement ellipse; left 1; top 1; width 1", "it has no \"height\"");
    row("a field twice", "measurement ellipse; left 1; left 2; top 1; width 1; height 1",
        "\"left\" stands twice");
    row("an unknown field", "measurement ellipse; left 1; top 1; width 1; height 1; angle 30",
        "\"angle\" means nothing here");
    row("rows of an ellipse", "measurement ellipse; left 1; top 1; width 1; height 1; rows 3",
        "\"rows\" means nothing here");
    row("not a number", "measurement ellipse; left 1x; top 1; width 1; height 1",
        "\"1x\" is not a finite number");
    row("a comma in a number", "measurement ellipse; left 1,5; top 1; width 1; height 1",
        "\"1,5\" is not a finite number");
    row("a number without end", "measurement ellipse; left inf; top 1; width 1; height 1",
        "\"inf\" is not a finite number");
    row("no number", "measurement ellipse; left nan; top 1; width 1; height 1",
        "\"nan\" is not a finite number");
    row("a number too large", "measurement ellipse; left 1e400; top 1; width 1; height 1",
        "\"1e400\" is not a finite number");
    row("a negative width", "measurement ellipse; left 1; top 1; width -1; height 1",
        "its width or height is not above 0");
    row("no height", "measurement ellipse; left 1; top 1; width 1; height 0",
        "its width or height is not above 0");
    row("a grid without rows", "measurement grid; left 1; top 1; width 1; height 1; columns 3",
        "it has no \"rows\"");
    row("a grid of no rows", "measurement grid; left 1; top 1; width 1; height 1; rows 0; columns 3",
        "\"rows 0\" is not a whole number of 1 or more");
    row("a grid of half a column", "measurement grid; left 1; top 1; width 1; height 1; rows 1; columns 2.5",
        "\"columns 2.5\" is not a whole number of 1 or more");
    row("a grid without end",
        "measurement grid; left 1; top 1; width 1; height 1; rows 2000000000; columns 2000000000",
        "it has more than 10000 cells");
    row("two corners", "measurement polygon; corners 1 1, 2 2", "it has no area");
    row("half a corner", "measurement polygon; corners 1 1, 2, 3 1", "\"2\" is not a corner \"x y\"");
    row("corners on a line", "measurement free-hand; corners 1 1, 2 2, 3 3", "it has no area");
    row("a corner that is no number", "measurement polygon; corners 1 1, 2 b, 3 1",
        "\"b\" is not a finite number");
    QTest::newRow("no name") << QByteArray(" = measurement ellipse; left 1; top 1; width 1; height 1")
                             << QStringLiteral("it has no name");
    QTest::newRow("a name that is taken")
        << QByteArray("good 1 = measurement ellipse; left 1; top 1; width 1; height 1")
        << QStringLiteral("another ROI has that name, or a cell of it");
    QTest::newRow("the name of a cell")
        << QByteArray("Wells [1, 2] = measurement ellipse; left 1; top 1; width 1; height 1")
        << QStringLiteral("another ROI has that name, or a cell of it");
}

void tst_RoiSaving::damagedEntries()
{
    QFETCH(QByteArray, entry);
    QFETCH(QString, reason);
    QVERIFY(write("Good 1 = background ellipse; left 1; top 1; width 1; height 1\n"
                  "Wells = measurement grid; left 1; top 1; width 1; height 1; rows 1; columns 2\n" +
                  entry + "\nGood 2 =   measurement\trectangle ;height 1;  width 1;top 1;left 1\n"));
    LogCatcher log;
    const auto dataset = opened(folder());
    QCOMPARE(namesOf(dataset), QStringList({"Good 1", "Wells", "Good 2"}));
    const QString name = QString::fromUtf8(entry).section('=', 0, 0).trimmed();
    QCOMPARE(log.failures(),
             QStringList(QStringLiteral("%1: ROI \"%2\" is left out: %3").arg(path(), name, reason)));
    QVERIFY(!dataset->isModified());
}

// Entries with a character changed, lost or doubled somewhere.
void tst_RoiSaving::anythingThatIsReadComesBack()
{
    const QStringList entries = {"measurement ellipse; left 2.5; top 3; width 1.25; height 1",
                                 "background polygon; corners 1 1, 2.5 1, 2 3.125",
                                 "measurement grid; left -1; top 1e3; width 8; height 5; rows 8; columns 12"};
    const QString signs = ";, -.0123456789eEinfax=";
    std::mt19937 random(5);
    int accepted = 0;
    for (int i = 0; i < 6000; ++i) {
        QString text = entries[i % entries.size()];
        for (int change = int(random() % 3); change >= 0; --change) {
            const int at = int(random() % unsigned(text.size()));
            const QString sign = signs.mid(int(random() % unsigned(signs.size())), 1);
            text.replace(at, int(random() % 2), random() % 3 ? sign : QString());
        }
        CPLSection section;
        section.addKeyValue("Tumor", text);
        CROIManager manager(nullptr);
        manager.readSection(&section);
        CPLSection written;
        manager.writeSection(&written);
        CROIManager again(nullptr);
        again.readSection(&written);
        QCOMPARE(again.rois().size(), manager.rois().size());
        QCOMPARE(written.count(), 1);
        if (manager.rois().isEmpty())
            continue;
        ++accepted;
        QVERIFY2(isSame(*again.rois().first(), *manager.rois().first()), qPrintable(text));
        QVERIFY2(manager.rois().first()->complaint().isNull(), qPrintable(text));
    }
    QVERIFY2(accepted > 600 && accepted < 5400, qPrintable(QString::number(accepted)));
}

void tst_RoiSaving::damagedEntriesStayInTheFile()
{
    QVERIFY(write("Later = measurement torus; radius 3\n"
                  "Good = background ellipse; left 1; top 1; width 1; height 1\n"));
    const auto dataset = opened(folder());
    dataset->roiManager()->addROI(named("New"));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()),
             QByteArray("[ClickNumber]: AB20260102030405\n\n[ROIs]\n"
                        "Good = background ellipse; left 1; top 1; width 1; height 1\n"
                        "New = measurement rectangle; left 2.5; top 3; width 1.25; height 1\n"
                        "Later = measurement torus; radius 3\n"));
}

void tst_RoiSaving::readingDoesNotModify()
{
    QVERIFY(write("Good = background ellipse; left 1; top 1; width 1; height 1\n"));
    const auto dataset = opened(folder());
    QCOMPARE(namesOf(dataset), QStringList("Good"));
    QVERIFY(!dataset->isModified() && !dataset->roiManager()->isModified());
    dataset->roiManager()->selectLastCreatedROI(); // it was not made now
    QVERIFY(!dataset->roiManager()->selectedROI());
}

void tst_RoiSaving::otherSectionsStay()
{
    QVERIFY(writeFile(path(),
                      "[User Input]: of the analyst\nStrain = nude\nStrain = twice\n\n"
                      "[ROIs]: a name\nOld = measurement ellipse; left 1; top 1; width 1; height 1\n\n"
                      "[Measurements]\nk\\=1 = \\s\n\n[ROIs]\nOf = somebody else\n"));
    const auto dataset = opened(folder());
    QCOMPARE(namesOf(dataset), QStringList("Old"));
    QVERIFY(dataset->roiManager()->renameROI(dataset->roiManager()->rois().first(), "New"));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()),
             QByteArray("[User Input]: of the analyst\nStrain = nude\nStrain = twice\n\n"
                        "[ROIs]: a name\nNew = measurement ellipse; left 1; top 1; width 1; height 1\n\n"
                        "[Measurements]\nk\\=1 = \\s\n\n[ROIs]\nOf = somebody else\n"));
}

void tst_RoiSaving::withoutAChangeTheFileStays()
{
    // As the user writes it.
    QVERIFY(write("# mine\nOld=measurement ellipse;left 1.00;top 1;width 1;height 1\r\nBad = x\n"));
    const QByteArray before = readFile(path());
    const auto dataset = opened(folder());
    QCOMPARE(namesOf(dataset), QStringList("Old"));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()), before);
    QCOMPARE(dataset->saveDatasetAs(m_folder->filePath("b")), ESTATUS_SUCCESS);
    QCOMPARE(readFile(m_folder->filePath("b/AnalyzedClickInfo.txt")), before);
}

void tst_RoiSaving::aChangeTakenBackLeavesTheFile()
{
    QVERIFY(write("# mine\nOld=measurement ellipse;left 1.00;top 1;width 1;height 1\n"));
    const QByteArray before = readFile(path());
    const auto dataset = opened(folder());
    CROIManager *manager = dataset->roiManager();
    manager->selectROI(manager->rois().first(), false);
    QVERIFY(manager->copyROIObject() && manager->pasteROIObject(false));
    manager->selectLastCreatedROI();
    QVERIFY(manager->removeROIObject());
    dataset->setModified(false);
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()), before);
}

void tst_RoiSaving::aFlagTakenBackDoesNotLoseAChange()
{
    const auto dataset = opened(folder());
    dataset->roiManager()->addROI(named("Pasted and left behind"));
    dataset->setModified(false);
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(namesOf(opened(folder())), QStringList("Pasted and left behind"));
}

void tst_RoiSaving::removedRoisAreGone()
{
    QVERIFY(write("Old = measurement ellipse; left 1; top 1; width 1; height 1\n"));
    const auto dataset = opened(folder());
    dataset->roiManager()->selectROI(dataset->roiManager()->rois().first(), false);
    QVERIFY(dataset->roiManager()->removeROIObject());
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()), QByteArray("[ClickNumber]: AB20260102030405\n\n[ROIs]\n"));
    QVERIFY(opened(folder())->roiManager()->rois().isEmpty());
}

void tst_RoiSaving::savedElsewhere()
{
    QVERIFY(write("Old = measurement ellipse; left 1; top 1; width 1; height 1\n"));
    const QByteArray before = readFile(path());
    const auto dataset = opened(folder());
    dataset->roiManager()->addROI(named("New"));
    QCOMPARE(dataset->saveDatasetAs(m_folder->filePath("b")), ESTATUS_SUCCESS);
    QCOMPARE(readFile(path()), before);
    QCOMPARE(namesOf(opened(m_folder->filePath("b"))), QStringList({"Old", "New"}));
    dataset->roiManager()->addROI(named("Newest"));
    QCOMPARE(dataset->saveDatasetAs(m_folder->filePath("b")), ESTATUS_SUCCESS);
    QCOMPARE(namesOf(opened(m_folder->filePath("b"))), QStringList({"Old", "New", "Newest"}));
}

void tst_RoiSaving::aFolderThatComesLater()
{
    QVERIFY(write("Old = measurement ellipse; left 1; top 1; width 1; height 1\n"));
    // Untouched: the folder's ROIs are its own.
    CVXSDataset untouched(CLICK);
    QVERIFY(untouched.roiManager()->rois().isEmpty());
    untouched.setFolderPath(folder());
    QCOMPARE(untouched.roiManager()->rois().size(), 1);
    // Drawn in memory: they are not given up for those of the folder.
    const auto drawn = std::make_unique<CVXSDataset>(CLICK);
    drawn->setCoreImage(EIMAGE_LUMINESCENT, TestStudy::image(8, 8, [](int, int) { return 1.0f; }));
    drawn->roiManager()->addROI(named("Drawn"));
    drawn->roiManager()->markSaved();
    drawn->setFolderPath(folder());
    QCOMPARE(namesOf(drawn), QStringList("Drawn"));
    QCOMPARE(drawn->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(namesOf(opened(folder())), QStringList("Drawn"));
}

void tst_RoiSaving::aFileThatWentAwayIsWrittenAgain()
{
    QVERIFY(write("Old = measurement ellipse; left 1; top 1; width 1; height 1\n"));
    const auto dataset = opened(folder());
    QCOMPARE(namesOf(dataset), QStringList("Old"));
    QVERIFY(QFile::remove(path()));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(namesOf(opened(folder())), QStringList("Old"));
}

void tst_RoiSaving::aDamagedFileIsLeftAlone()
{
    const QByteArray damaged = "[ROIs]\nOld = measurement ellipse\nno pair\n";
    QVERIFY(writeFile(path(), damaged));
    const auto dataset = opened(folder());
    LogCatcher log;
    QVERIFY(dataset->roiManager()->rois().isEmpty());
    QCOMPARE(log.failures().size(), 1);
    QVERIFY(log.failures().first().startsWith(path() + ": line 3: "));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS); // nothing of it is to be written
    QVERIFY(dataset->roiManager()->addROI(named("New")));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_BAD_SYNTAX);
    QVERIFY2(dataset->lastError().startsWith(path() + ": line 3: "), qPrintable(dataset->lastError()));
    QCOMPARE(readFile(path()), damaged);
    QVERIFY(dataset->isModified() && dataset->roiManager()->isModified());
    // Once it was put right, nothing is lost.
    QVERIFY(write(QByteArray()));
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(namesOf(opened(folder())), QStringList("New"));
}

void tst_RoiSaving::aFailureOfTheLastFile()
{
    QVERIFY(write("Old = measurement ellipse; left 1; top 1; width 1; height 1\n"));
    const QByteArray before = readFile(path());
    const auto dataset = opened(folder());
    dataset->roiManager()->addROI(named("New"));
    const QString inTheWay = m_folder->filePath("b/AnalyzedClickInfo.txt");
    QVERIFY(QDir().mkpath(inTheWay));
    QCOMPARE(dataset->saveDatasetAs(m_folder->filePath("b")), ESTATUS_FILE_NOT_WRITABLE);
    QVERIFY(dataset->lastError().startsWith(inTheWay + ": "));
    QVERIFY(QFileInfo(inTheWay).isDir());
    QCOMPARE(readFile(path()), before);
    QVERIFY(dataset->isModified() && dataset->roiManager()->isModified());
    QCOMPARE(dataset->saveDatasetAs(folder()), ESTATUS_SUCCESS);
    QCOMPARE(namesOf(opened(folder())), QStringList({"Old", "New"}));
}

void tst_RoiSaving::aReadOnlyFolderKeepsTheOldFile()
{
    QVERIFY(write("Old = measurement ellipse; left 1; top 1; width 1; height 1\n"));
    const QByteArray before = readFile(path());
    QCOMPARE(chmod(qPrintable(m_folder->path()), 0755), 0);
    for (const QString &file : filesOf(folder()))
        QCOMPARE(chmod(qPrintable(path(file)), 0644), 0);
    QCOMPARE(chmod(qPrintable(folder()), 0555), 0);
    QVERIFY(holdsForUnprivilegedUser([&] {
        const auto dataset = opened(folder());
        dataset->roiManager()->addROI(named("New"));
        LogCatcher log;
        return dataset->saveDatasetAs(folder()) == ESTATUS_FILE_NOT_WRITABLE &&
               dataset->roiManager()->isModified() && dataset->isModified() && !log.failures().isEmpty();
    }));
    QCOMPARE(chmod(qPrintable(path()), 0000), 0);
    QVERIFY(holdsForUnprivilegedUser([&] {
        LogCatcher log;
        const auto dataset = opened(folder());
        return dataset->roiManager()->rois().isEmpty() && log.failures().size() == 1 &&
               log.failures().first().startsWith(path() + ": ");
    }));
    QCOMPARE(chmod(qPrintable(path()), 0644), 0);
    QCOMPARE(readFile(path()), before);
    QCOMPARE(chmod(qPrintable(folder()), 0755), 0);
}

QTEST_GUILESS_MAIN(tst_RoiSaving)
#include "tst_RoiSaving.moc"
