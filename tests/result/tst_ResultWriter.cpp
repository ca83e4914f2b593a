// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "math/Computation.h"
#include "math/Formula.h"
#include "result/ResultWriter.h"
#include "tests/support/TestStudy.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using resultwriter::PhotographSource;
using resultwriter::Written;

namespace {

const QString A = QStringLiteral("AB20260102030406");
const QString B = QStringLiteral("AB20260102030507");
const QString RESULT = QStringLiteral("AB_M20260102030406");

bool damage(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("no record") > 0;
}

} // namespace

class tst_ResultWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aCompleteDatasetComesOut();
    void theNextResultGetsTheNextName();
    void aFailureLeavesNothing_data();
    void aFailureLeavesNothing();
    void otherAnglesAreRefusedUnlessAllowed();
    void aFolderWithSomethingElseStays();
    void aNameThatIsFinishedMeanwhileIsLeftAlone();

private:
    QString fileOf(const QString &click, const QString &name) const;
    resultwriter::Request request(PhotographSource photograph) const;
    QStringList folders() const;

    std::unique_ptr<TestStudy> m_study;
    std::unique_ptr<QTemporaryDir> m_data;
};

void tst_ResultWriter::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    QVERIFY(CVXPreference::setProgramDataPath(m_data->path(), nullptr));
    CVXSDataset::registerStoredDatasets(m_data->path());
    m_study = std::make_unique<TestStudy>();
    for (const QString &click : {A, B}) {
        ClickSpec spec;
        spec.clickNumber = click;
        spec.photograph = [](int x, int) { return x < 32 ? 200.0f : 10.0f; };
        QVERIFY(m_study->add(spec));
    }
    QVERIFY(m_study->save());
}

void tst_ResultWriter::cleanup()
{
    CVXSDataset::registerStoredDatasets(QString());
    m_study.reset();
    m_data.reset();
}

QString tst_ResultWriter::fileOf(const QString &click, const QString &name) const
{
    return m_study->sequence()->getDatasetFolderPath(click) + name;
}

resultwriter::Request tst_ResultWriter::request(PhotographSource photograph) const
{
    CVXSDataset *a = m_study->sequence()->getDataset(A);
    CVXSDataset *b = m_study->sequence()->getDataset(B);
    imagemath::Request computation{{a, imagemath::correctionsFor(*a)}, {b, imagemath::correctionsFor(*b)}};
    computation.formula = imagemath::formulaNamed("A - B * k");
    computation.k = 0.5f;
    resultwriter::Request made;
    CILImage imageA;
    CILImage imageB;
    imagemath::TissueMaskMemo masks;
    made.record = imagemath::compute(computation, {imageA, imageB, made.image}, masks).record;
    made.a = {A, fileOf(A, "ClickInfo.txt"), a};
    made.b = {B, fileOf(B, "ClickInfo.txt"), b};
    made.operation = QStringLiteral("A - B * k");
    made.k = QStringLiteral("5.00e-1");
    made.photograph = photograph;
    made.display = resultclickinfo::displayFactsOf(made.image, EUNIT_COUNTS, VXS_CT_RAINBOW, a, nullptr);
    return made;
}

QStringList tst_ResultWriter::folders() const
{
    return QDir(m_data->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

void tst_ResultWriter::aCompleteDatasetComesOut()
{
    ProgramDataPlace place;
    const Written written = resultwriter::write(request(PhotographSource::B), place);
    QVERIFY2(written.status == ESTATUS_SUCCESS, qPrintable(written.reason));
    QCOMPARE(written.clickNumber, RESULT);
    QCOMPARE(written.folder, m_data->path() + '/' + RESULT + '/');
    const std::unique_ptr<CVXSDataset> result(CVXSDataset::open(written.folder, nullptr, nullptr));
    QVERIFY(result);
    QString error;
    QVERIFY2(result->checkComplete(&error) == ESTATUS_SUCCESS, qPrintable(error));
    QCOMPARE(result->getDatasetType(), int(EDATASET_RESULT));
    QCOMPARE(result->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(3, 4), 0.5 * (100 + 3 + 2 * 4));
    QVERIFY(result->getCoreImage(EIMAGE_PHOTOGRAPH));
    // Nothing of the lock stays.
    QCOMPARE(QDir(written.folder).entryList(QDir::Hidden | QDir::Files).size(), 6);
}

void tst_ResultWriter::theNextResultGetsTheNextName()
{
    ProgramDataPlace place;
    QCOMPARE(resultwriter::write(request(PhotographSource::None), place).clickNumber, RESULT);
    QCOMPARE(resultwriter::write(request(PhotographSource::None), place).clickNumber,
             QString("AB_N20260102030406"));
    QCOMPARE(folders().size(), 2);
}

void tst_ResultWriter::aFailureLeavesNothing_data()
{
    QTest::addColumn<QString>("click");
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isDamaged"); // else it is gone
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("named");
    QTest::newRow("A's ClickInfo.txt is gone")
        << A << "ClickInfo.txt" << false << int(ESTATUS_IMAGING_ANGLES) << "ClickInfo.txt";
    QTest::newRow("B's ClickInfo.txt is damaged")
        << B << "ClickInfo.txt" << true << int(ESTATUS_IMAGING_ANGLES) << "ClickInfo.txt";
    QTest::newRow("A's image is gone")
        << A << "luminescent.tif" << false << int(ESTATUS_NOT_COMPLETE) << A + "/luminescent.tif";
    QTest::newRow("B's image is gone")
        << B << "luminescent.tif" << false << int(ESTATUS_NOT_COMPLETE) << B + "/luminescent.tif";
    QTest::newRow("the photograph is gone")
        << B << "photograph.tif" << false << int(ESTATUS_NOT_COMPLETE) << B + "/photograph.tif";
}

void tst_ResultWriter::aFailureLeavesNothing()
{
    QFETCH(QString, click);
    QFETCH(QString, file);
    QFETCH(bool, isDamaged);
    QFETCH(int, status);
    QFETCH(QString, named);
    const resultwriter::Request wanted = request(PhotographSource::B);
    if (isDamaged)
        QVERIFY(damage(fileOf(click, file)));
    else
        QVERIFY(QFile::remove(fileOf(click, file)));
    ProgramDataPlace place;
    const Written written = resultwriter::write(wanted, place);
    QCOMPARE(int(written.status), status);
    QVERIFY2(written.reason.contains(named), qPrintable(written.reason));
    QCOMPARE(folders(), QStringList());
}

void tst_ResultWriter::otherAnglesAreRefusedUnlessAllowed()
{
    resultwriter::Request wanted = request(PhotographSource::None);
    CPLClickInfo info;
    QCOMPARE(info.loadClickInfo(wanted.b.clickInfoPath, false), ESTATUS_SUCCESS);
    info[clickinfo::SECTION_LUMINESCENT]->setValue(clickinfo::KEY_IMAGING_ANGLE, QString("90"));
    QCOMPARE(info.saveClickInfo(wanted.b.clickInfoPath), ESTATUS_SUCCESS);
    ProgramDataPlace place;
    const Written refused = resultwriter::write(wanted, place);
    QCOMPARE(refused.status, ESTATUS_IMAGING_ANGLES);
    QVERIFY2(refused.reason.contains(A) && refused.reason.contains(B), qPrintable(refused.reason));
    QCOMPARE(folders(), QStringList());
    wanted.mayAnglesDiffer = true;
    QCOMPARE(resultwriter::write(wanted, place).status, ESTATUS_SUCCESS);
}

// What lies in a sub-folder is nobody's result, and stays whatever comes of the writing.
void tst_ResultWriter::aFolderWithSomethingElseStays()
{
    QVERIFY(QDir(m_data->path()).mkpath(RESULT + "/kept"));
    const resultwriter::Request wanted = request(PhotographSource::None);
    QVERIFY(QFile::remove(fileOf(B, "luminescent.tif")));
    ProgramDataPlace place;
    QVERIFY(resultwriter::write(wanted, place).status != ESTATUS_SUCCESS);
    QCOMPARE(QDir(m_data->filePath(RESULT)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"kept"});
}

// Another program has finished a result of the chosen name: the name is not free any more.
void tst_ResultWriter::aNameThatIsFinishedMeanwhileIsLeftAlone()
{
    class OtherFinishes : public ProgramDataPlace
    {
    public:
        QString clickNumberFor(const QString &clickA) override
        {
            if (++calls == 2) { // the name is chosen, and now asked for again under the lock
                ProgramDataPlace other;
                resultwriter::writeClickInfo(theirs, other, nullptr);
                resultwriter::writeAnalyzedClickInfo(
                    theirs, {ESTATUS_SUCCESS, {}, RESULT, folderOf(RESULT) + '/'}, QString(), QString());
            }
            return ProgramDataPlace::clickNumberFor(clickA);
        }
        resultwriter::Request theirs;
        int calls = 0;
    };
    OtherFinishes place;
    place.theirs = request(PhotographSource::None);
    const Written written = resultwriter::write(request(PhotographSource::None), place);
    QVERIFY2(written.status == ESTATUS_SUCCESS, qPrintable(written.reason));
    QCOMPARE(written.clickNumber, QString("AB_N20260102030406"));
    QCOMPARE(folders(), (QStringList{RESULT, "AB_N20260102030406"}));
}

QTEST_GUILESS_MAIN(tst_ResultWriter)
#include "tst_ResultWriter.moc"
