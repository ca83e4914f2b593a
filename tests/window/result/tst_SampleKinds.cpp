// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "samples/SampleStudy.h"
#include "tests/support/GuiDriver.h"
#include "tests/window/result/FlowFixture.h"
#include "window/CVXSImageMathWnd.h"

#include <QTemporaryDir>

using namespace samplestudy;

/// Results made of the kinds of datasets of the sample study that are no acquisitions on disk.
class tst_SampleKinds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aResultIsMade_data();
    void aResultIsMade();

private:
    QTemporaryDir m_study;
    QTemporaryDir m_data;
};

void tst_SampleKinds::initTestCase()
{
    QString error;
    QVERIFY2(make(m_study.path(), 1, &error) == ESTATUS_SUCCESS, qPrintable(error));
    QVERIFY(CVXPreference::setProgramDataPath(m_data.path(), nullptr));
    CVXSDataset::registerStoredDatasets(m_data.path());
}

void tst_SampleKinds::aResultIsMade_data()
{
    QTest::addColumn<QString>("sequenceFolder");
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QString>("inMemory");
    QTest::addColumn<int>("unit");
    const QString study = SEQUENCE_ID;
    const QString overview = OVERVIEW_FOLDER + QStringLiteral("/") + OVERVIEW_ID;
    const QString none;
    const QString unsaved = UNSAVED;
    QTest::newRow("of an overview, in efficiency")
        << overview << QString(OVERVIEW_A) << QString(OVERVIEW_B) << none << int(EUNIT_EFFICIENCY);
    QTest::newRow("of an overview, in counts")
        << overview << QString(OVERVIEW_B) << QString(OVERVIEW_A) << none << int(EUNIT_COUNTS);
    QTest::newRow("of a click that is only in memory, as A")
        << study << unsaved << QString(FLUORESCENCE_B) << unsaved << int(EUNIT_COUNTS);
    QTest::newRow("of a click that is only in memory, as B")
        << study << QString(FLUORESCENCE_A) << unsaved << unsaved << int(EUNIT_RADIANCE);
}

void tst_SampleKinds::aResultIsMade()
{
    QFETCH(QString, sequenceFolder);
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QString, inMemory);
    QFETCH(int, unit);
    QString error;
    const std::unique_ptr<CVXSSequenceDataset> sequence(
        CVXSSequenceDataset::open(m_study.filePath(sequenceFolder), nullptr, &error));
    QVERIFY2(sequence, qPrintable(error));
    if (!inMemory.isEmpty())
        QVERIFY(sequence->addDataset(unsavedClick(1).release()));
    sequence->setActiveUnit(tag_edisplayunit(unit));
    CVXSImageMathWnd window;
    QVERIFY(window.bindToSequence(sequence->getSequenceID()));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    LoadReceiver receiver;
    QVERIFY(connect(&window,
                    SIGNAL(signalLoadImageMathReuslt(QString, bool, ESTATUS *, downloaded_save_data *)),
                    &receiver, SLOT(onLoadFile(QString, bool, ESTATUS *, downloaded_save_data *))));
    const LogCatcher log;
    GuiDriver user(&window);
    QVERIFY2(user.pick("m_pListBoxA", a) && user.pick("m_pListBoxB", b) && user.press("m_pDisplayBtn"),
             qPrintable(user.why()));
    QCOMPARE(log.failures(), QStringList());
    QCOMPARE(receiver.requests.size(), 1);

    const QString folder = receiver.requests.first().path.section(QLatin1Char('/'), 0, -2);
    const std::unique_ptr<CVXSDataset> result(CVXSDataset::open(folder, nullptr, &error));
    QVERIFY2(result, qPrintable(error));
    QVERIFY2(result->checkComplete(&error) == ESTATUS_SUCCESS, qPrintable(error));
    QCOMPARE(result->getDatasetType(), int(EDATASET_RESULT));
    QCOMPARE(int(result->getUnit()), unit);
    CILImage pixels;
    QCOMPARE(result->getCalibratedLuminImage(tag_edisplayunit(unit), &pixels, QStringLiteral("test")),
             ESTATUS_SUCCESS);
    QVERIFY(pixels.getMax() > 0.0f);
    if (!inMemory.isEmpty()) {
        // It is in memory still, and nothing of it is left in its place.
        QCOMPARE(sequence->getDataset(inMemory)->getDatasetType(), int(EDATASET_IN_MEMORY));
        const QDir place(sequence->getDatasetFolderPath(inMemory));
        QCOMPARE(place.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }
}

QTEST_MAIN(tst_SampleKinds)
#include "tst_SampleKinds.moc"
