// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/host/vxapi/model/StoredDataset.h"
#include "tests/host/vxutils/UnprivilegedUser.h"
#include "tests/support/FileOpenings.h"
#include "tests/support/Files.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <QPointer>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace storeddataset;

namespace {

QStringList registeredFolders()
{
    QStringList names;
    const QList<StoredDataset> all = StoredDatasets::instance().list();
    for (const StoredDataset &stored : all)
        names += QDir(stored.folder).dirName();
    return names;
}

} // namespace

class tst_StoredDatasets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aStoredDatasetIsOpenedWhenAskedFor();
    void askingAgainGivesTheSameObject();
    void registeringAgainKeepsWhatIsOpened();
    void resultsAreTold();
    void whatIsNoDatasetIsNoError();
    void whatIsIncompleteIsNotKnown_data();
    void whatIsIncompleteIsNotKnown();
    void whatBecomesCompleteIsKnown();
    void whatAnotherWorkspaceWritesIsKnown();
    void whatVanishedIsForgotten();
    void whatBecameIncompleteIsForgotten_data();
    void whatBecameIncompleteIsForgotten();
    void whatChangedIsReadAnew();
    void anotherFolderReplacesTheFirst();
    void theNameOfTheFolderIsTakenToo();
    void theClickNumberAnswersBeforeTheFolder();
    void aCopyUnderAnotherNameDoesNotHideTheOriginal();
    void aSequenceMayOpenAStoredClickNumber();
    void anOpenDatasetWinsAndGivesWayAgain();
    void theStoredObjectItselfMayBeRegistered();
    void aFolderThatMayNotBeReadIsSkipped();
    void whatDidNotChangeIsNotReadAgain();

private:
    QString root() const { return m_root->path(); }
    void registerRoot() const { CVXSDataset::registerStoredDatasets(root()); }

    std::unique_ptr<QTemporaryDir> m_root;
};

void tst_StoredDatasets::init()
{
    m_root = std::make_unique<QTemporaryDir>();
}

void tst_StoredDatasets::cleanup()
{
    CVXSDataset::registerStoredDatasets(QString());
    QCOMPARE(registeredFolders(), QStringList());
    m_root.reset();
}

void tst_StoredDatasets::aStoredDatasetIsOpenedWhenAskedFor()
{
    const QString folder = writeDataset(root(), CLICK);
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    registerRoot();
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
    CVXSDataset *dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY(dataset);
    QCOMPARE(dataset->getClickNumber(), CLICK);
    QCOMPARE(dataset->getFolderPath(), folder);
    QCOMPARE(dataset->getDatasetType(), int(EDATASET_ACQUIRED));
    QVERIFY(dataset->getCoreImage(EIMAGE_LUMINESCENT));
    QCOMPARE(dataset->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(3, 4), 7.0);
    QVERIFY(!CVXSDataset::getOpenDataset(CLICK));
    QVERIFY(!CVXSDataset::getDataset("AB_N20260102030405"));
}

void tst_StoredDatasets::askingAgainGivesTheSameObject()
{
    QVERIFY(!writeDataset(root(), CLICK).isEmpty());
    registerRoot();
    CVXSDataset *dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY(dataset);
    QCOMPARE(CVXSDataset::getDataset(CLICK), dataset);
}

void tst_StoredDatasets::registeringAgainKeepsWhatIsOpened()
{
    QVERIFY(!writeDataset(root(), CLICK).isEmpty());
    registerRoot();
    QPointer<CVXSDataset> dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY(!writeDataset(root(), "AB_N20260102030405").isEmpty());
    registerRoot();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(dataset);
    QCOMPARE(CVXSDataset::getDataset(CLICK), dataset.data());
    QVERIFY(CVXSDataset::getDataset("AB_N20260102030405"));
}

void tst_StoredDatasets::resultsAreTold()
{
    const QString acquired = writeDataset(root(), "AB20260102030405");
    const QString result = writeDataset(root(), CLICK, QString(), true);
    registerRoot();
    const QList<StoredDataset> all = StoredDatasets::instance().list();
    QCOMPARE(all.size(), 2);
    QCOMPARE(all[0].folder, acquired);
    QVERIFY(!all[0].isResult);
    QCOMPARE(all[1].folder, result);
    QCOMPARE(all[1].clickNumber, CLICK);
    QVERIFY(all[1].isResult);
    QCOMPARE(all[1].written, QFileInfo(result + "AnalyzedClickInfo.txt").lastModified());
}

void tst_StoredDatasets::whatIsNoDatasetIsNoError()
{
    QVERIFY(!writeDataset(root(), CLICK).isEmpty());
    // Sequences are saved beside the results; datasets in them are theirs.
    QVERIFY(!writeDataset(root() + "/sequences/AB20260102030405_SEQ", "AB20260102030406").isEmpty());
    QVERIFY(QDir(root()).mkdir("empty"));
    QVERIFY(writeFile(root() + "/a file", "text"));
    QVERIFY(QDir(root()).mkpath("pipes"));
    QCOMPARE(mkfifo(QFile::encodeName(root() + "/pipes/ClickInfo.txt").constData(), 0644), 0);
    const LogCatcher log;
    registerRoot();
    QCOMPARE(registeredFolders(), QStringList{CLICK});
    QVERIFY(!CVXSDataset::getDataset("AB20260102030406"));
    QVERIFY(!CVXSDataset::getDataset("sequences"));
    CVXSDataset::registerStoredDatasets(root() + "/not there");
    QCOMPARE(registeredFolders(), QStringList());
    QVERIFY2(log.failures().isEmpty(), qPrintable(log.failures().join('\n')));
}

void tst_StoredDatasets::whatIsIncompleteIsNotKnown_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("how");
    row("no ClickInfo.txt", "ClickInfo.txt", "removed");
    row("a broken ClickInfo.txt", "ClickInfo.txt", "broken");
    row("no AnalyzedClickInfo.txt, which is written last", "AnalyzedClickInfo.txt", "removed");
    row("a broken AnalyzedClickInfo.txt", "AnalyzedClickInfo.txt", "broken");
    row("no luminescent image", "luminescent.tif", "removed");
    row("no photograph though a section calls for it", "photograph.tif", "removed");
    row("an image that is no TIFF", "luminescent.tif", "broken");
    row("an image that was cut", "photograph.tif", "cut");
    row("an empty image file", "photograph.tif", "empty");
}

namespace {

bool damage(const QString &path, const QString &how)
{
    if (how == "removed")
        return QFile::remove(path);
    if (how == "broken")
        return writeFile(path, "[a]\nnonsense\n");
    if (how == "empty")
        return writeFile(path, "");
    QFile file(path);
    return how == "cut" && file.resize(file.size() / 2);
}

} // namespace

void tst_StoredDatasets::whatIsIncompleteIsNotKnown()
{
    QFETCH(QString, file);
    QFETCH(QString, how);
    const QString folder = writeDataset(root(), CLICK);
    QVERIFY(damage(folder + file, how));
    const LogCatcher log;
    registerRoot();
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QCOMPARE(registeredFolders(), QStringList());
    // A left-over of an earlier day is no failure of today.
    QVERIFY2(log.failures().isEmpty(), qPrintable(log.failures().join('\n')));
}

void tst_StoredDatasets::whatBecomesCompleteIsKnown()
{
    const QString last = writeDataset(root(), CLICK) + "AnalyzedClickInfo.txt";
    QVERIFY(QFile::rename(last, root() + "/aside"));
    registerRoot();
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QVERIFY(QFile::rename(root() + "/aside", last));
    QVERIFY(CVXSDataset::getDataset(CLICK));
}

void tst_StoredDatasets::whatAnotherWorkspaceWritesIsKnown()
{
    registerRoot();
    const QString folder = writeDataset(root(), CLICK);
    CVXSDataset *dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY2(dataset, "a result of this name would be written over it");
    QCOMPARE(dataset->getFolderPath(), folder);
    // Names that would leave the folder are none.
    QTemporaryDir outside;
    QVERIFY(!writeDataset(outside.path(), "AB1").isEmpty());
    for (const QString &name : {QString(), QString("."), QString(".."),
                                "../" + QDir(outside.path()).dirName() + "/AB1", outside.filePath("AB1")})
        QVERIFY2(!CVXSDataset::getDataset(name), qPrintable(name));
}

void tst_StoredDatasets::whatVanishedIsForgotten()
{
    const QString folder = writeDataset(root(), CLICK);
    registerRoot();
    QPointer<CVXSDataset> dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY(dataset);
    QVERIFY(QDir(folder).removeRecursively());
    const LogCatcher log;
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QVERIFY2(dataset, "it goes when whoever holds it has come to an end");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(dataset.isNull());
    QCOMPARE(registeredFolders(), QStringList());
    QVERIFY(log.failures().isEmpty());
}

void tst_StoredDatasets::whatBecameIncompleteIsForgotten_data()
{
    whatIsIncompleteIsNotKnown_data();
}

void tst_StoredDatasets::whatBecameIncompleteIsForgotten()
{
    QFETCH(QString, file);
    QFETCH(QString, how);
    const QString folder = writeDataset(root(), CLICK);
    registerRoot();
    QVERIFY(CVXSDataset::getDataset(CLICK));
    QVERIFY(damage(folder + file, how));
    const LogCatcher log;
    QVERIFY(!CVXSDataset::getDataset(CLICK));
    QCOMPARE(registeredFolders(), QStringList());
    QVERIFY2(log.failures().isEmpty(), qPrintable(log.failures().join('\n')));
}

void tst_StoredDatasets::whatChangedIsReadAnew()
{
    const QString folder = writeDataset(root(), CLICK);
    registerRoot();
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getDatasetType(), int(EDATASET_ACQUIRED));
    QVERIFY(QDir(folder).removeRecursively());
    QCOMPARE(writeDataset(root(), CLICK, QString(), true), folder);
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getDatasetType(), int(EDATASET_RESULT));
}

void tst_StoredDatasets::anotherFolderReplacesTheFirst()
{
    QTemporaryDir other;
    const QString folder = writeDataset(root(), CLICK);
    QVERIFY(!writeDataset(other.path(), "AB_N20260102030405").isEmpty());
    const QString otherFolder = writeDataset(other.path(), CLICK);
    registerRoot();
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getFolderPath(), folder);
    CVXSDataset::registerStoredDatasets(other.path());
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getFolderPath(), otherFolder);
    registerRoot();
    QVERIFY(!CVXSDataset::getDataset("AB_N20260102030405"));
}

void tst_StoredDatasets::theNameOfTheFolderIsTakenToo()
{
    const QString name = QStringLiteral("AB_N20260102030405");
    QVERIFY(!writeDataset(root(), CLICK, name).isEmpty());
    registerRoot();
    QVERIFY(CVXSDataset::getDataset(CLICK));
    CVXSDataset *dataset = CVXSDataset::getDataset(name);
    QVERIFY2(dataset, "a result of this name would be written into that folder");
    QCOMPARE(dataset, CVXSDataset::getDataset(CLICK));
}

void tst_StoredDatasets::theClickNumberAnswersBeforeTheFolder()
{
    const QString other = QStringLiteral("AB_N20260102030405");
    QVERIFY(!writeDataset(root(), other, CLICK).isEmpty()); // the names are crossed
    const QString folder = writeDataset(root(), CLICK, other);
    registerRoot();
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getClickNumber(), CLICK);
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getFolderPath(), folder);
    QCOMPARE(CVXSDataset::getDataset(other)->getClickNumber(), other);
}

void tst_StoredDatasets::aCopyUnderAnotherNameDoesNotHideTheOriginal()
{
    QVERIFY(!writeDataset(root(), CLICK, "AA copy").isEmpty());
    const QString folder = writeDataset(root(), CLICK);
    QVERIFY(!writeDataset(root(), CLICK, "ZZ copy").isEmpty());
    registerRoot();
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getFolderPath(), folder);
    QVERIFY(QDir(folder).removeRecursively());
    QCOMPARE(CVXSDataset::getDataset(CLICK)->getFolderPath(), root() + "/AA copy/");
}

void tst_StoredDatasets::aSequenceMayOpenAStoredClickNumber()
{
    const QString id = QStringLiteral("AB20260102030405_SEQ");
    QTemporaryDir data;
    {
        CVXSSequenceDataset sequence(id);
        auto *dataset = new CVXSDataset(CLICK);
        dataset->setCoreImage(EIMAGE_LUMINESCENT, ramp());
        QVERIFY(sequence.addDataset(dataset));
        QCOMPARE(sequence.save(data.path()), ESTATUS_SUCCESS);
    }
    const QString stored = writeDataset(root(), CLICK);
    registerRoot();
    QPointer<CVXSDataset> before = CVXSDataset::getDataset(CLICK);
    QVERIFY(before);
    ESTATUS status = ESTATUS_FAILURE;
    QStringList warnings;
    const std::unique_ptr<CVXSSequenceDataset> sequence(
        CVXSSequenceDataset::open(data.filePath(id), &status, nullptr, &warnings));
    QVERIFY(sequence);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    CVXSDataset *open = sequence->getDataset(CLICK);
    QVERIFY(open);
    QCOMPARE(CVXSDataset::getDataset(CLICK), open);
    QVERIFY(open->getFolderPath() != stored);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(before.isNull());
}

void tst_StoredDatasets::anOpenDatasetWinsAndGivesWayAgain()
{
    const QString folder = writeDataset(root(), CLICK);
    registerRoot();
    auto open = std::make_unique<CVXSDataset>(CLICK);
    QVERIFY(open->registerDataset());
    QCOMPARE(CVXSDataset::getDataset(CLICK), open.get());
    open.reset();
    CVXSDataset *stored = CVXSDataset::getDataset(CLICK);
    QVERIFY(stored);
    QCOMPARE(stored->getFolderPath(), folder);
    // An open dataset of that very folder is the one that its name stands for.
    QVERIFY(!writeDataset(root(), "AB20260102030499", "another name").isEmpty());
    registerRoot();
    open.reset(CVXSDataset::open(root() + "/another name", nullptr, nullptr));
    QVERIFY(open->registerDataset());
    QCOMPARE(CVXSDataset::getDataset("another name"), open.get());
}

void tst_StoredDatasets::theStoredObjectItselfMayBeRegistered()
{
    QVERIFY(!writeDataset(root(), CLICK).isEmpty());
    registerRoot();
    QPointer<CVXSDataset> dataset = CVXSDataset::getDataset(CLICK);
    QVERIFY(dataset->registerDataset());
    QCOMPARE(CVXSDataset::getOpenDataset(CLICK), dataset.data());
    CVXSDataset::registerStoredDatasets(QString());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY2(dataset, "it belongs to who registered it");
    delete dataset;
    QVERIFY(!CVXSDataset::getDataset(CLICK));
}

void tst_StoredDatasets::aFolderThatMayNotBeReadIsSkipped()
{
    QVERIFY(!writeDataset(root(), CLICK).isEmpty());
    const QString locked = writeDataset(root(), "AB_N20260102030405");
    QCOMPARE(chmod(QFile::encodeName(root()).constData(), 0755), 0);
    QCOMPARE(chmod(QFile::encodeName(locked).constData(), 0000), 0);
    const QString path = root();
    QVERIFY(holdsForUnprivilegedUser([path] {
        const LogCatcher log;
        CVXSDataset::registerStoredDatasets(path);
        return registeredFolders() == QStringList{CLICK} && log.failures().isEmpty();
    }));
    QCOMPARE(chmod(QFile::encodeName(locked).constData(), 0755), 0);
}

void tst_StoredDatasets::whatDidNotChangeIsNotReadAgain()
{
    constexpr int COUNT = 12;
    const QString first = writeDataset(root(), "AB20260102000000");
    for (int i = 1; i < COUNT; ++i) {
        const QString folder = root() + QString("/AB%1/").arg(20260102000000LL + i);
        QVERIFY(QDir().mkpath(folder));
        for (const QString &file : filesOf(first)) {
            if (file != "ClickInfo.txt")
                QCOMPARE(link(QFile::encodeName(first + file).constData(),
                              QFile::encodeName(folder + file).constData()),
                         0);
        }
        QByteArray record = readFile(first + "ClickInfo.txt");
        QVERIFY(
            writeFile(folder + "ClickInfo.txt",
                      record.replace("AB20260102000000", "AB" + QByteArray::number(20260102000000LL + i))));
    }
    FileOpenings openings;
    for (const QString &name : QDir(root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        QVERIFY(openings.watch(root() + '/' + name));
    registerRoot();
    QCOMPARE(registeredFolders().size(), COUNT);
    QCOMPARE(openings.take().filter("/ClickInfo.txt").size(), COUNT);
    registerRoot();
    QCOMPARE(registeredFolders().size(), COUNT);
    QCOMPARE(openings.take(), QStringList());
}

QTEST_GUILESS_MAIN(tst_StoredDatasets)
#include "tst_StoredDatasets.moc"
