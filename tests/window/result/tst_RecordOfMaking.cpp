// SPDX-License-Identifier: MIT
// The record of its making that a result's TIFF carries, and what must not come into it.
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/ResultRecord.h"
#include "tests/support/Rows.h"
#include "tests/window/result/FlowFixture.h"

#include <cmath>
#include <QAction>
#include <QCryptographicHash>
#include <sys/stat.h>

using imagemath::FileRecord;
using imagemath::ResultRecord;

namespace {

QString hashOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("unreadable");
    return QString::fromLatin1(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256).toHex());
}

QStringList textsOf(const QVector<FileRecord> &files)
{
    QStringList texts;
    for (const FileRecord &file : files)
        texts << file.name + QLatin1Char(' ') + file.sha256;
    return texts;
}

bool replaceFile(const QString &path, const CILImage &image)
{
    return QFile::remove(path) && image.saveTIFF(QFile::encodeName(path).constData()) == EIL_SUCCESS;
}

} // namespace

class tst_RecordOfMaking : public FlowFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void aResultTellsItsMaking_data();
    void aResultTellsItsMaking();
    void theThresholdedRatioTellsItsMask();
    void kIsTheOneThatWasUsed();
    void kIsExact();
    void anImageThatIsNotOfTheOperandsHasNoRecord();
    void theRoiThatGaveKIsTold_data();
    void theRoiThatGaveKIsTold();
    void anOutlineOfManyCornersLeavesTheRecordReadable();
    void anotherKIsNotOfTheRoi_data();
    void anotherKIsNotOfTheRoi();
    void saturatedPixelsInTheRoiAreTold();
    void whatStoodBesideTheResultIsTold();
    void theCorrectionIsThatOfTheComputation();
    void aFileThatWasChangedAfterReadingIsNotHashed();
    void aPipeInPlaceOfAFileIsNotWaitedFor();
    void anOperandImageOfAnotherNameGivesAResultThatLoads();
    void aPhotographOfAnotherNameComesAlong();
    void ofTwoFilesTheOneOfTheUsualNameIsCopied();

private:
    void openWithOtherNames();
    ResultRecord record() const
    {
        std::string description;
        const QByteArray path = QFile::encodeName(m_bench->resultFile("luminescent.tif"));
        ResultRecord read;
        QString reason;
        if (CILImage::loadDescription(path.constData(), &description) != EIL_SUCCESS ||
            !imagemath::fromJson(QByteArray::fromStdString(description), &read, &reason))
            qWarning("%s %s", CILImage::lastError().c_str(), qPrintable(reason));
        return read;
    }
    /// Draws that ROI of 5 x 4 cm in a click, which has 13 x 10 pixels in it (the field is 12.5 cm), and takes
    /// k from it.
    void takeKFromRoi(CVXSDataset *source, EROISHAPE shape = EROI_RECTANGLE)
    {
        CROIBase roi(shape, EROI_BACKGROUND, QRectF(2.0, 3.0, 5.0, 4.0));
        roi.setName("Back");
        QVERIFY(source->roiManager()->addROI(roi));
        window()->computeKFromROI(source->getClickNumber(), "Back");
    }
    void giveB(float counts)
    {
        CILImage image = TestStudy::image(32, 32, [counts](int, int) { return counts; });
        image.setBinningFactor(4.0f);
        m_bench->datasetB()->setCoreImage(EIMAGE_LUMINESCENT, image);
    }
    QString fileOf(const QString &click, const char *name) const
    {
        return m_bench->folderOf(click) + QLatin1String(name);
    }
};

void tst_RecordOfMaking::aResultTellsItsMaking_data()
{
    QTest::addColumn<QString>("photograph");
    QTest::newRow("without photograph") << QString();
    QTest::newRow("with the photograph of A") << "A";
    QTest::newRow("with the photograph of B") << "B";
}

void tst_RecordOfMaking::aResultTellsItsMaking()
{
    QFETCH(QString, photograph);
    m_bench->choosePhotograph(photograph);
    press();
    const ResultRecord made = record();
    const QString a = ResultBench::clickA(), b = ResultBench::clickB();
    QCOMPARE(made.operation, QStringLiteral("A - B * k"));
    QCOMPARE(made.k, 2.5f);
    QCOMPARE(made.unit, QStringLiteral("counts"));
    QCOMPARE(made.a.clickNumber, a);
    QCOMPARE(made.b.clickNumber, b);
    QCOMPARE(made.a.sequenceId, sequence()->getSequenceID());
    for (const QString &click : {a, b}) {
        QStringList expected;
        QStringList names{"luminescent.tif", "photograph.tif"};
        if (click == a)
            names << "flatfield.tif";
        for (const QString &name : qAsConst(names))
            expected << name + " " + hashOf(fileOf(click, name.toLatin1().constData()));
        QCOMPARE(textsOf(click == a ? made.a.files : made.b.files), expected);
    }
    QVERIFY(made.maskPhotograph.clickNumber.isEmpty());
    QCOMPARE(made.photograph.clickNumber, photograph.isEmpty() ? QString() : photograph == "A" ? a : b);
    if (!photograph.isEmpty())
        QCOMPARE(made.photograph.file.sha256, hashOf(m_bench->resultFile("photograph.tif")));
    QVERIFY2(made.version.startsWith("1.1.0("), qPrintable(made.version));
    const QDateTime computed = QDateTime::fromString(made.computed, Qt::ISODate);
    QVERIFY2(qAbs(computed.secsTo(QDateTime::currentDateTimeUtc())) < 600, qPrintable(made.computed));
}

void tst_RecordOfMaking::theThresholdedRatioTellsItsMask()
{
    window()->m_pOperationCB->setCurrentIndex(4);
    window()->onChangeMathOperation(4);
    press();
    const ResultRecord made = record();
    QCOMPARE(made.maskPhotograph.clickNumber, ResultBench::clickB());
    QCOMPARE(made.maskPhotograph.file.sha256, hashOf(fileOf(ResultBench::clickB(), "photograph.tif")));
}

// The field may show another text: "_none_" writes 1 and goes on with the k there was.
void tst_RecordOfMaking::kIsTheOneThatWasUsed()
{
    window()->m_pKLineEdit->setText(QStringLiteral("1"));
    press();
    QCOMPARE(record().k, 2.5f);
    QVERIFY(m_bench->writeRecord() == ESTATUS_SUCCESS);
}

void tst_RecordOfMaking::kIsExact()
{
    const float third = 1.0f / 3.0f; // more digits than the field shows
    window()->m_kValue = third;
    window()->calculateResultImage();
    press();
    QVERIFY2(record().k == third, qPrintable(QString::number(double(record().k), 'g', 9)));
}

// Where the operands cannot be combined the image before them is kept; how that one was made is not known any
// more.
void tst_RecordOfMaking::anImageThatIsNotOfTheOperandsHasNoRecord()
{
    m_bench->bound().show();
    ClickSpec other = ClickSpec::of(QStringLiteral("AB20260102030608"));
    other.fieldOfView = 20.0;
    QVERIFY(m_bench->bound().study().add(other));
    QVERIFY(m_bench->bound().study().save());
    m_bench->choosePhotograph(QString());
    window()->m_pListBoxB->setCurrentRow(2);
    QVERIFY(window()->m_bCannotCombine);
    QVERIFY(!window()->m_resultImage.isEmpty());
    window()->agreesToAngles = true;
    window()->onClickDisplayResultForMeasuring();
    QCOMPARE(requests().size(), 1);
    std::string description;
    const QByteArray path = QFile::encodeName(m_bench->resultFile("luminescent.tif"));
    QCOMPARE(CILImage::loadDescription(path.constData(), &description), EIL_SUCCESS);
    QCOMPARE(QString::fromStdString(description), QString());
}

void tst_RecordOfMaking::theRoiThatGaveKIsTold_data()
{
    QTest::addColumn<bool>("isOfA");
    QTest::addColumn<int>("unit");
    row("an ROI of A in counts", true, int(EUNIT_COUNTS));
    row("an ROI of B in counts", false, int(EUNIT_COUNTS));
    row("an ROI of A in radiance", true, int(EUNIT_RADIANCE));
}

void tst_RecordOfMaking::theRoiThatGaveKIsTold()
{
    QFETCH(bool, isOfA);
    QFETCH(int, unit);
    sequence()->setActiveUnit(tag_edisplayunit(unit));
    CVXSDataset *source = isOfA ? m_bench->datasetA() : m_bench->datasetB();
    takeKFromRoi(source);
    const float k = window()->m_kValue;
    press();
    const ResultRecord made = record();
    QVERIFY(made.roiOfK);
    QCOMPARE(made.k, k);
    QVERIFY(made.roiOfK->k() == k);
    QCOMPARE(made.roiOfK->name, QString("Back"));
    QCOMPARE(made.roiOfK->shape, QString("background rectangle; left 2; top 3; width 5; height 4"));
    QCOMPARE(made.roiOfK->clickNumber, source->getClickNumber());
    QCOMPARE(made.roiOfK->unit, unitKey(tag_edisplayunit(unit)));
    QCOMPARE(made.roiOfK->inA.clickNumber, ResultBench::clickA());
    QCOMPARE(made.roiOfK->inB.clickNumber, ResultBench::clickB());
    QCOMPARE(made.roiOfK->inA.saturatedPixels, qint64(0));
    if (unit == EUNIT_COUNTS)
        QCOMPARE(made.roiOfK->inB.value, 13 * 10 * 10.0); // B has 10 counts everywhere
}

void tst_RecordOfMaking::anOutlineOfManyCornersLeavesTheRecordReadable()
{
    QVector<QPointF> circle;
    constexpr int CORNERS = 90000;
    for (int i = 0; i < CORNERS; ++i)
        circle.append(
            {6.0 + 3.0 * std::cos(2.0 * M_PI * i / CORNERS), 6.0 + 3.0 * std::sin(2.0 * M_PI * i / CORNERS)});
    CROIBase roi(EROI_FREEHAND, EROI_MEASUREMENT, circle);
    roi.setName("Back");
    QVERIFY(m_bench->datasetA()->roiManager()->addROI(roi));
    window()->computeKFromROI(ResultBench::clickA(), "Back");
    press();
    const ResultRecord made = record();
    QVERIFY(made.roiOfK);
    QVERIFY(imagemath::toJson(made).size() < 100000);
    QVERIFY2(made.roiOfK->shape.startsWith("outline of 90000 corners in a measurement rectangle; left 3"),
             qPrintable(made.roiOfK->shape.left(200)));
}

void tst_RecordOfMaking::anotherKIsNotOfTheRoi_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<bool>("isOfRoi");
    row("the k of the ROI, computed with again", "again", true);
    row("\"_none_\" of the menu, which only writes into the field", "menu", true);
    row("another k is typed", "typed", false);
    row("the field is left, which rounds", "left", false);
    row("an ROI without counts in the other click gives 1", "zero", false);
    row("no ROI gives 1", "none", false);
}

void tst_RecordOfMaking::anotherKIsNotOfTheRoi()
{
    QFETCH(QString, what);
    QFETCH(bool, isOfRoi);
    giveB(7.0f); // k gets more than three digits
    takeKFromRoi(m_bench->datasetA());
    QVERIFY(window()->m_pKLineEdit->text().size() > 5);
    if (what == "again")
        window()->calculateResultImage();
    if (what == "menu") {
        QAction none("_none_");
        window()->onSelectROIFromMenu(&none);
    }
    if (what == "typed")
        QVERIFY(GuiDriver(window()).type("m_pKLineEdit", "3", Qt::Key_Return));
    if (what == "left")
        window()->onChangeValueK();
    if (what == "zero") {
        giveB(0.0f);
        window()->computeKFromROI(ResultBench::clickA(), "Back");
        QCOMPARE(window()->m_kValue, 1.0f);
    }
    if (what == "none")
        window()->computeKFromROI(ResultBench::clickA(), "_none_");
    press();
    QCOMPARE(bool(record().roiOfK), isOfRoi);
    QCOMPARE(record().k, window()->m_kValue);
}

void tst_RecordOfMaking::saturatedPixelsInTheRoiAreTold()
{
    // 13 columns of the ROI's pixels begin with 5, of which 3 are bright.
    CILImage bright = TestStudy::image(32, 32, [](int x, int) { return x < 8 ? 65535.0f : 100.0f; });
    bright.setBinningFactor(4.0f);
    m_bench->datasetA()->setCoreImage(EIMAGE_LUMINESCENT, bright);
    const LogCatcher log;
    takeKFromRoi(m_bench->datasetA());
    const QString note("k is from the ROI \"Back\", where 30 pixels of A are saturated");
    QCOMPARE(log.ofLevel(ELOG_WARNING).filter(note).size(), 1);
    press();
    const ResultRecord made = record();
    QVERIFY(made.roiOfK);
    QCOMPARE(made.roiOfK->inA.saturatedPixels, qint64(30));
    QCOMPARE(made.roiOfK->inB.saturatedPixels, qint64(0));
    QCOMPARE(made.a.saturatedPixels, qint64(8 * 32));
    QVERIFY2(made.notes.contains(note), qPrintable(made.notes.join('\n')));
}

void tst_RecordOfMaking::whatStoodBesideTheResultIsTold()
{
    clickinfo::ensureSection(m_bench->datasetA()->getClickInfo(), clickinfo::SECTION_LUMINESCENT)
        ->setValue(clickinfo::KEY_EXPOSURE, QString("1"));
    window()->calculateResultImage();
    press();
    QCOMPARE(record().notes, window()->m_pView->notes());
    QCOMPARE(record().notes.filter("A was exposed 1 s, B 60 s").size(), 1);
}

void tst_RecordOfMaking::theCorrectionIsThatOfTheComputation()
{
    m_bench->datasetA()->setCoreImage(EIMAGE_FLATFIELD,
                                      TestStudy::image(32, 32, [](int, int) { return 2.0f; }));
    m_bench->datasetA()->doFlatFieldCorrection(true);
    window()->calculateResultImage();
    m_bench->datasetA()->doFlatFieldCorrection(false);
    press();
    QVERIFY(record().a.flatFieldCorrected);
    QVERIFY(!record().b.flatFieldCorrected);
}

void tst_RecordOfMaking::aFileThatWasChangedAfterReadingIsNotHashed()
{
    const QString path = fileOf(ResultBench::clickA(), "luminescent.tif");
    QVERIFY(m_bench->datasetA()->getCoreImage(EIMAGE_LUMINESCENT));
    // Written long after the one that was read.
    QVERIFY(replaceFile(path, TestStudy::image(32, 32, [](int, int) { return 7.0f; })));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(!m_bench->datasetA()->isImageFileAsRead(EIMAGE_LUMINESCENT));
    QVERIFY(m_bench->datasetA()->isImageFileAsRead(EIMAGE_PHOTOGRAPH));
    press();
    const ResultRecord made = record();
    QCOMPARE(made.a.files.size(), 2);
    QVERIFY(textsOf(made.a.files).filter("luminescent.tif").isEmpty());
    QCOMPARE(made.b.files.size(), 2);
    const QStringList told = failures().filter(path);
    QCOMPARE(told.size(), 1);
}

void tst_RecordOfMaking::aPipeInPlaceOfAFileIsNotWaitedFor()
{
    const QString path = fileOf(ResultBench::clickA(), "photograph.tif");
    QVERIFY(QFile::remove(path));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    m_bench->choosePhotograph(QStringLiteral("A"));
    press(); // comes back
    QCOMPARE(record().a.files.size(), 2);
    QVERIFY(textsOf(record().a.files).filter("photograph.tif").isEmpty());
    QVERIFY(!QFileInfo::exists(m_bench->resultFile("photograph.tif")));
}

void tst_RecordOfMaking::anOperandImageOfAnotherNameGivesAResultThatLoads()
{
    loadForReal();
    CPLClickInfo info;
    const QString path = m_bench->clickInfo(ResultBench::clickA());
    QCOMPARE(info.loadClickInfo(path, false), ESTATUS_SUCCESS);
    info["luminescent image"]->setSectionName(QStringLiteral("raw.tif"));
    QCOMPARE(info.saveClickInfo(path), ESTATUS_SUCCESS);
    press();
    CVXSDataset *result = CVXSDataset::getDataset(ResultBench::resultNumber());
    QVERIFY2(result, qPrintable(failures().join('\n')));
    const CILImage *image = result->getCoreImage(EIMAGE_LUMINESCENT);
    QVERIFY(image);
    QCOMPARE(image->getMin(), 75.0f);
    QCOMPARE(image->getMax(), 168.0f);
}

// Of operand A, as somebody else named its files, opened anew: NAME-raw.tif.
void tst_RecordOfMaking::openWithOtherNames()
{
    const QString a = ResultBench::clickA();
    for (const char *name : {"luminescent", "photograph"})
        QVERIFY(QFile::rename(fileOf(a, qPrintable(QString(name) + ".tif")),
                              fileOf(a, qPrintable(QString(name) + "-raw.tif"))));
    CPLClickInfo &info = *m_bench->datasetA()->getClickInfo();
    info["luminescent image"]->setSectionName(QStringLiteral("luminescent-raw.tif"));
    info["photographic image"]->setSectionName(QStringLiteral("photograph-raw.tif"));
    QCOMPARE(info.saveClickInfo(m_bench->clickInfo(a)), ESTATUS_SUCCESS);
    const QString folder = m_bench->folderOf(a);
    m_bench->bound().show(); // so that it follows the sequence
    QVERIFY(sequence()->removeDataset(a));
    CVXSDataset *again = CVXSDataset::open(folder, nullptr, nullptr);
    QVERIFY(again);
    QVERIFY(sequence()->addDataset(again, 0));
    window()->m_pListBoxA->setCurrentRow(0);
    window()->m_pListBoxB->setCurrentRow(1);
    m_bench->choosePhotograph(QStringLiteral("A"));
    window()->agreesToAngles = true; // the bench's record of B says one
}

void tst_RecordOfMaking::aPhotographOfAnotherNameComesAlong()
{
    openWithOtherNames();
    loadForReal();
    press();
    const QString a = ResultBench::clickA();
    QVERIFY2(CVXSDataset::getDataset(ResultBench::resultNumber()), qPrintable(failures().join('\n')));
    QCOMPARE(hashOf(m_bench->resultFile("photograph.tif")), hashOf(fileOf(a, "photograph-raw.tif")));
    QCOMPARE(hashOf(m_bench->resultFile("luminescentA.TIF")), hashOf(fileOf(a, "luminescent-raw.tif")));
    QCOMPARE(record().photograph.file.sha256, hashOf(fileOf(a, "photograph-raw.tif")));
}

void tst_RecordOfMaking::ofTwoFilesTheOneOfTheUsualNameIsCopied()
{
    openWithOtherNames();
    const QString a = ResultBench::clickA();
    const auto usual = [](int x, int y) { return float(x * y); };
    for (const char *name : {"luminescent.tif", "photograph.tif"})
        QCOMPARE(TestStudy::image(32, 32, usual).saveTIFF(QFile::encodeName(fileOf(a, name)).constData()),
                 EIL_SUCCESS);
    press();
    QCOMPARE(requests().size(), 1);
    QCOMPARE(hashOf(m_bench->resultFile("luminescentA.TIF")), hashOf(fileOf(a, "luminescent.tif")));
    QCOMPARE(hashOf(m_bench->resultFile("photograph.tif")), hashOf(fileOf(a, "photograph.tif")));
    QVERIFY(hashOf(fileOf(a, "luminescent.tif")) != hashOf(fileOf(a, "luminescent-raw.tif")));
}

QTEST_MAIN(tst_RecordOfMaking)
#include "tst_RecordOfMaking.moc"
