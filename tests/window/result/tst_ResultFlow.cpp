// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/PixelCompare.h"
#include "tests/window/result/FlowFixture.h"

#include <cmath>

/// "Display Result For Measuring" from the press of the button to the loaded dataset.
class tst_ResultFlow : public FlowFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void theRequest();
    void theResultIsComplete();
    void theResultIsLoadedAndMarked();
    void theColourTableIsTheSequencesAtTheEnd();
    void theChosenPhotographIsKept_data();
    void theChosenPhotographIsKept();
    void theButtonIsEnabledAgain();
    void theActiveWindowIsRefreshed_data();
    void theActiveWindowIsRefreshed();
    void withoutAnActiveWindow();
    void aLoadThatFails();
    void operandsStayAsTheyAre();
    void theNextRunTakesTheNextLetter();
    void aLeftOverIsEmptiedAndUsed();

    void twoValidClicksAreNeeded_data();
    void twoValidClicksAreNeeded();
    void operandsThatCannotBeCombinedCannotBePressed();
    void theUnitIsThatOfThePixels_data();
    void theUnitIsThatOfThePixels();
    void clickInfoThatFails_data();
    void clickInfoThatFails();
    void analyzedClickInfoThatFails();

    void whereTheRecordsAreTakenFrom_data();
    void whereTheRecordsAreTakenFrom();
    void anOverviewThatWasNeverSavedIsSavedFirst();
    void aSequenceWithoutAFolderTouchesNothingOfTheCurrentOne();
};

void tst_ResultFlow::theRequest()
{
    press();
    QCOMPARE(failures(), QStringList());
    QCOMPARE(requests().size(), 1);
    const LoadReceiver::Request request = requests().first();
    QCOMPARE(request.path, m_bench->dataPath() + "/AB_M20260102030406//ClickInfo.txt");
    QVERIFY(request.flag);
    QVERIFY(!request.hasData);
    QCOMPARE(request.statusBefore, 0);
}

void tst_ResultFlow::theResultIsComplete()
{
    m_bench->choosePhotograph("B");
    press();
    QCOMPARE(QDir(m_bench->resultFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
             QStringList({"AnalyzedClickInfo.txt", "ClickInfo.txt", "luminescent.tif", "luminescentA.TIF",
                          "luminescentB.TIF", "photograph.tif"}));
    QCOMPARE(readFile(m_bench->resultFile("photograph.tif")),
             readFile(m_bench->folderOf(ResultBench::clickB()) + "photograph.tif"));
    // The analyzed record is that of A.
    QCOMPARE(recordtext::section(m_bench->resultFile("AnalyzedClickInfo.txt"), "User Input"),
             QStringList({"[User Input]: analysed input", "Experiment = mouse 12, analysed"}));
}

void tst_ResultFlow::theResultIsLoadedAndMarked()
{
    loadForReal();
    tag_simageadjust adjust;
    adjust.colorTable = VXS_CT_TERRAIN;
    sequence()->setImageAdjust(adjust);
    press();
    QCOMPARE(failures(), QStringList());
    CVXSDataset *result = CVXSDataset::getDataset(ResultBench::resultNumber());
    QVERIFY(result);
    QVERIFY(result->isModified());
    QVERIFY(result->isImageMathToBeSaved());
    QCOMPARE(result->getColorTable(), VXS_CT_TERRAIN);
    QCOMPARE(result->getDatasetType(), int(EDATASET_RESULT));
    QVERIFY(!result->isPartOfSequence());
    CILImage counts;
    QCOMPARE(result->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(0, 0), 75.0);
    QCOMPARE(counts.pixelAt(31, 31), 168.0);
    QCOMPARE(counts.binningFactor(), 4.0f);
    QCOMPARE(result->getFOVForImage(EIMAGE_LUMINESCENT), 12.5);
    // The operands got no marks.
    QVERIFY(!m_bench->datasetA()->isImageMathToBeSaved());
    QVERIFY(!m_bench->datasetB()->isImageMathToBeSaved());
}

void tst_ResultFlow::theColourTableIsTheSequencesAtTheEnd()
{
    std::unique_ptr<CVXSDataset> loaded;
    m_receiver->onRequest = [&loaded, this] {
        loaded.reset(CVXSDataset::open(m_bench->resultFolder(), nullptr, nullptr));
        QVERIFY(loaded && loaded->registerDataset());
        QCOMPARE(loaded->getColorTable(), VXS_CT_BLUEHOT); // as its record says
        tag_simageadjust adjust;
        adjust.colorTable = VXS_CT_GREEN;
        sequence()->setImageAdjust(adjust);
    };
    press();
    QVERIFY(loaded);
    QCOMPARE(loaded->getColorTable(), VXS_CT_GREEN);
    QVERIFY(loaded->isModified());
}

void tst_ResultFlow::theChosenPhotographIsKept_data()
{
    QTest::addColumn<QString>("from");
    QTest::newRow("of A") << "A";
    QTest::newRow("of B") << "B";
    QTest::newRow("none: the one before stays") << QString();
}

void tst_ResultFlow::theChosenPhotographIsKept()
{
    QFETCH(QString, from);
    window()->m_photoImage = pixelcompare::imageOf({1, 2, 3, 4}, 2, 2);
    m_bench->choosePhotograph(from);
    press();
    QCOMPARE(requests().size(), 1);
    if (from.isEmpty()) {
        QCOMPARE(pixelcompare::difference(window()->m_photoImage, {1, 2, 3, 4}, 2, 2), QString());
        return;
    }
    CVXSDataset *dataset = from == "A" ? m_bench->datasetA() : m_bench->datasetB();
    const CILImage *photograph = dataset->getCoreImage(EIMAGE_PHOTOGRAPH);
    QVERIFY(photograph);
    QCOMPARE(pixelcompare::difference(window()->m_photoImage, *photograph), QString());
}

void tst_ResultFlow::theButtonIsEnabledAgain()
{
    window()->m_pDisplayBtn->setEnabled(false);
    window()->onClickDisplayResultForMeasuring();
    QVERIFY(window()->m_pDisplayBtn->isEnabled());
    QCOMPARE(requests().size(), 1);
}

void tst_ResultFlow::theActiveWindowIsRefreshed_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("refreshes");
    QTest::newRow("after a load, also when nobody knows the dataset") << 0 << 1;
    QTest::newRow("not after a load that failed") << 1 << 0;
}

void tst_ResultFlow::theActiveWindowIsRefreshed()
{
    QFETCH(int, status);
    RecordingChild child(sequence());
    m_receiver->answer = ESTATUS(status);
    press();
    QCOMPARE(requests().size(), 1);
    QVERIFY(!CVXSDataset::getDataset(ResultBench::resultNumber()));
    QTEST(child.refreshes, "refreshes");
    QCOMPARE(child.saves, 0);
}

void tst_ResultFlow::withoutAnActiveWindow()
{
    CVXSChildWindow::setActiveChildWnd(nullptr);
    press();
    QCOMPARE(requests().size(), 1);
    QCOMPARE(failures(), QStringList());
}

void tst_ResultFlow::aLoadThatFails()
{
    RecordingChild child(sequence());
    // The dataset is known all the same; it gets no marks.
    std::unique_ptr<CVXSDataset> loaded;
    m_receiver->onRequest = [&loaded, this] {
        loaded.reset(CVXSDataset::open(m_bench->resultFolder(), nullptr, nullptr));
        QVERIFY(loaded && loaded->registerDataset());
    };
    m_receiver->answer = ESTATUS_BAD_IMAGE;
    press();
    QCOMPARE(failures(), QStringList{"Loading Failed"});
    QVERIFY(loaded);
    QVERIFY(!loaded->isModified());
    QVERIFY(!loaded->isImageMathToBeSaved());
    QCOMPARE(child.refreshes, 0);
    QCOMPARE(results(), QStringList{ResultBench::resultNumber()});
    QVERIFY(QFile::exists(m_bench->resultFile("AnalyzedClickInfo.txt")));
}

void tst_ResultFlow::operandsStayAsTheyAre()
{
    loadForReal();
    m_bench->choosePhotograph("A");
    const bool modifiedA = m_bench->datasetA()->isModified();
    const QMap<QString, QByteArray> before = recordtext::hashes(sequence()->getSequenceInfoPath());
    press();
    QVERIFY(CVXSDataset::getDataset(ResultBench::resultNumber()));
    QCOMPARE(recordtext::hashes(sequence()->getSequenceInfoPath()), before);
    QCOMPARE(m_bench->datasetA()->isModified(), modifiedA);
    QVERIFY(!QDir(tempFolder(ResultBench::clickA())).exists());
    QVERIFY(!QDir(tempFolder(ResultBench::clickB())).exists());
}

void tst_ResultFlow::theNextRunTakesTheNextLetter()
{
    loadForReal();
    press();
    const QMap<QString, QByteArray> first = recordtext::hashes(m_bench->resultFolder());
    QVERIFY(first.size() >= 5);
    press();
    press();
    QCOMPARE(results(), QStringList({"AB_M20260102030406", "AB_N20260102030406", "AB_O20260102030406"}));
    QCOMPARE(recordtext::hashes(m_bench->resultFolder()), first);
    for (const char *number : {"AB_M20260102030406", "AB_N20260102030406", "AB_O20260102030406"})
        QVERIFY(CVXSDataset::getDataset(QString::fromLatin1(number)));
    QCOMPARE(failures(), QStringList());
}

void tst_ResultFlow::aLeftOverIsEmptiedAndUsed()
{
    loadForReal();
    QVERIFY(QDir().mkpath(m_bench->resultFile("sub")));
    QVERIFY(writeFile(m_bench->resultFile("sub/notes.txt"), "kept"));
    QVERIFY(writeFile(m_bench->resultFile("photograph.tif"), "half a file"));
    press();
    QCOMPARE(failures(), QStringList());
    QVERIFY(CVXSDataset::getDataset(ResultBench::resultNumber()));
    QVERIFY(!QFile::exists(m_bench->resultFile("photograph.tif")));
    QCOMPARE(readFile(m_bench->resultFile("sub/notes.txt")), QByteArray("kept"));
}

void tst_ResultFlow::twoValidClicksAreNeeded_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::newRow("only list A has a current item") << ResultBench::clickA() << QString();
    QTest::newRow("only list B has a current item") << QString() << ResultBench::clickB();
    QTest::newRow("neither list has a current item") << QString() << QString();
    QTest::newRow("A is no click of the sequence") << "ZZ20260102030406" << ResultBench::clickB();
    QTest::newRow("B is no click of the sequence") << ResultBench::clickA() << "ZZ20260102030406";
}

void tst_ResultFlow::twoValidClicksAreNeeded()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    m_bench->bound().show();
    WindowProbe::selectQuietly(window()->m_pListBoxA, a);
    WindowProbe::selectQuietly(window()->m_pListBoxB, b);
    QVERIFY(window()->viewImage(0) && window()->viewImage(1) && window()->viewImage(2));
    window()->forgetCalls();
    press();
    for (int slot = 0; slot < 3; ++slot)
        QVERIFY(!window()->viewImage(slot));
    QVERIFY(!window()->m_pDisplayBtn->isEnabled());
    QCOMPARE(failures(), QStringList{"One or more dataset(s) is/are invalid..."});
    QCOMPARE(window()->m_pResultTag->getStringList(), QStringList{"Need two images."});
    QVERIFY(window()->m_pResultTag->isShown());
    QCOMPARE(window()->steps, QStringList({"settings", "refresh"}));
    QVERIFY(requests().isEmpty());
    QCOMPARE(results(), QStringList());
    // With two clicks there is a result again.
    window()->m_pListBoxA->setCurrentRow(1);
    window()->m_pListBoxB->setCurrentRow(0);
    window()->m_pListBoxA->setCurrentRow(0);
    window()->m_pListBoxB->setCurrentRow(1);
    QVERIFY(window()->m_pDisplayBtn->isEnabled());
    press();
    QCOMPARE(requests().size(), 1);
}

void tst_ResultFlow::operandsThatCannotBeCombinedCannotBePressed()
{
    m_bench->bound().show();
    ClickSpec other;
    other.clickNumber = QStringLiteral("AB20260102030608");
    other.fieldOfView = 20.0;
    QVERIFY(m_bench->bound().study().add(other));
    QVERIFY(m_bench->bound().study().save());
    window()->m_pListBoxB->setCurrentRow(2);
    QCOMPARE(window()->m_pListBoxB->currentItem()->text(), other.clickNumber);
    press();
    QVERIFY(requests().isEmpty());
    QCOMPARE(results(), QStringList());
    window()->m_pListBoxB->setCurrentRow(1);
    press();
    QCOMPARE(requests().size(), 1);
}

void tst_ResultFlow::theUnitIsThatOfThePixels_data()
{
    QTest::addColumn<QString>("window");
    QTest::newRow("changed while the window is shown") << "shown";
    QTest::newRow("changed while the window is minimised") << "minimised";
    QTest::newRow("changed while the window is hidden") << "hidden";
}

void tst_ResultFlow::theUnitIsThatOfThePixels()
{
    QFETCH(QString, window);
    m_bench->bound().show();
    CVXSMdiSubWindow *sub = m_bench->bound().subWindow();
    if (window == "hidden")
        sub->hideWindow();
    else if (window == "minimised")
        sub->showMinimized();
    QCoreApplication::processEvents();
    sequence()->setActiveUnit(EUNIT_RADIANCE);
    if (window == "hidden")
        sub->showWindow();
    else if (window == "minimised")
        sub->showNormal();
    QCoreApplication::processEvents();
    press();
    QCOMPARE(requests().size(), 1);
    QCOMPARE(
        recordtext::value(m_bench->resultFile("ClickInfo.txt"), "Graph Controls", "Intensity Calibration"),
        QString("Radiance (Photons)"));
    CILImage a;
    CILImage b;
    QCOMPARE(m_bench->datasetA()->getCalibratedLuminImage(EUNIT_RADIANCE, &a, "test"), ESTATUS_SUCCESS);
    QCOMPARE(m_bench->datasetB()->getCalibratedLuminImage(EUNIT_RADIANCE, &b, "test"), ESTATUS_SUCCESS);
    CILImage result;
    QCOMPARE(result.loadTIFF(QFile::encodeName(m_bench->resultFile("luminescent.tif")).constData()),
             EIL_SUCCESS);
    const double expected = a.pixelAt(5, 6) - 2.5 * b.pixelAt(5, 6);
    QVERIFY2(std::abs(result.pixelAt(5, 6) - expected) <= 1e-6 * expected,
             qPrintable(QString("%1, not %2").arg(result.pixelAt(5, 6)).arg(expected)));
}

void tst_ResultFlow::clickInfoThatFails_data()
{
    QTest::addColumn<QString>("reason");
    QTest::newRow("the user refuses the angles") << "angle";
    QTest::newRow("A's record is gone") << "A";
    QTest::newRow("B's record is gone") << "B";
    QTest::newRow("a file of the result folder cannot be removed") << "folder";
    QTest::newRow("the record cannot be saved") << "save";
}

void tst_ResultFlow::clickInfoThatFails()
{
    QFETCH(QString, reason);
    if (reason == "angle")
        QVERIFY(replaceInFile(m_bench->clickInfo(ResultBench::clickB()), "Angle = 0", "Angle = 1"));
    if (reason == "A" || reason == "B")
        QVERIFY(
            QFile::remove(m_bench->clickInfo(reason == "A" ? ResultBench::clickA() : ResultBench::clickB())));
    if (reason == "folder")
        QVERIFY(QFile::link(QStringLiteral("/proc/self/fdinfo"), m_bench->resultFolder().chopped(1)));
    if (reason == "save")
        QVERIFY(QDir().mkpath(m_bench->resultFile("ClickInfo.txt")));
    DialogAnswerer answerer({QMessageBox::No});
    RecordingChild child(sequence());
    press();
    QCOMPARE(failures().last(), QString("ClickInfo creation failed"));
    QVERIFY(requests().isEmpty());
    QCOMPARE(child.refreshes, 0);
    QCOMPARE(answerer.count(), reason == "angle" ? 1 : 0);
    QVERIFY(!QFile::exists(m_bench->resultFile("AnalyzedClickInfo.txt")));
    // The window is as it was: nothing says that the operands are wrong.
    QVERIFY(window()->m_pDisplayBtn->isEnabled());
    QVERIFY(window()->viewImage(2));
}

void tst_ResultFlow::analyzedClickInfoThatFails()
{
    window()->beforeAnalyzed = [this] { QVERIFY(QFile::remove(m_bench->resultFile("ClickInfo.txt"))); };
    RecordingChild child(sequence());
    press();
    QCOMPARE(failures(), QStringList{"Analyzed ClickInfo creation failed"});
    QVERIFY(requests().isEmpty());
    QCOMPARE(child.refreshes, 0);
    QVERIFY(QFile::exists(m_bench->resultFile("luminescent.tif")));
}

void tst_ResultFlow::whereTheRecordsAreTakenFrom_data()
{
    QTest::addColumn<bool>("overview");
    QTest::addColumn<bool>("savedForTheTool");
    QTest::addColumn<QString>("experiment");
    QTest::newRow("from the dataset's own folder") << false << false << "mouse elsewhere";
    QTest::newRow("of an overview, from the sequence's folder") << true << false << "mouse 12";
    QTest::newRow("of a sequence saved for the tool, from the sequence's folder")
        << false << true << "mouse 12";
}

void tst_ResultFlow::whereTheRecordsAreTakenFrom()
{
    QFETCH(bool, overview);
    QFETCH(bool, savedForTheTool);
    // A's own folder lies outside of the sequence's.
    QTemporaryDir other;
    const QString inSequence = m_bench->folderOf(ResultBench::clickA());
    const QString elsewhere = other.path() + "/" + ResultBench::clickA() + "/";
    QVERIFY(QDir().mkpath(elsewhere));
    for (const QString &name : QDir(inSequence).entryList(QDir::Files))
        QVERIFY(QFile::copy(inSequence + name, elsewhere + name));
    QVERIFY(replaceInFile(elsewhere + "ClickInfo.txt", "mouse 12", "mouse elsewhere"));
    QVERIFY(replaceInFile(elsewhere + "AnalyzedClickInfo.txt", "mouse 12, analysed",
                          "mouse elsewhere, analysed"));
    m_bench->datasetA()->setFolderPath(elsewhere);
    QCOMPARE(sequence()->getDatasetFolderPath(ResultBench::clickA()), elsewhere);
    sequence()->setTransIllumOverviewResultSequence(overview);
    window()->m_bSavedForImageMath = savedForTheTool;
    RecordingChild child(sequence());
    press();
    QCOMPARE(requests().size(), 1);
    QTEST(recordtext::value(m_bench->resultFile("ClickInfo.txt"), "User Input", "Experiment"), "experiment");
    QFETCH(QString, experiment);
    QCOMPARE(recordtext::value(m_bench->resultFile("AnalyzedClickInfo.txt"), "User Input", "Experiment"),
             experiment + ", analysed");
    QCOMPARE(child.saves, 0);
}

void tst_ResultFlow::anOverviewThatWasNeverSavedIsSavedFirst()
{
    // Bound without a sequence window, a sequence stays unsaved also after "Yes".
    BoundWindow bound(QStringLiteral("CD20260102030405_SEQ"));
    bound.addClick(QStringLiteral("CD20260102030406"), false, 100.0f);
    bound.addClick(QStringLiteral("CD20260102030507"), false, 40.0f);
    bound.sequence()->setTransIllumOverviewResultSequence(true);
    DialogAnswerer answerer({QMessageBox::Yes});
    QVERIFY(bound.bind());
    QCOMPARE(answerer.count(), 1);
    QVERIFY(bound.sequence()->getSequenceInfoPath().isEmpty());
    connectTo(bound.window(), m_receiver.get());
    RecordingChild child(bound.sequence());
    child.onSave = [&bound] { return bound.study().save() ? ESTATUS_SUCCESS : ESTATUS_FAILURE; };
    QVERIFY(GuiDriver(bound.window()).press("m_pDisplayBtn"));
    QCOMPARE(child.saves, 1);
    QCOMPARE(failures(), QStringList());
    QCOMPARE(requests().value(0).path, m_bench->dataPath() + "/CD_M20260102030406//ClickInfo.txt");
    // Saved once, it is not saved again.
    QVERIFY(GuiDriver(bound.window()).press("m_pDisplayBtn"));
    QCOMPARE(child.saves, 1);
}

void tst_ResultFlow::aSequenceWithoutAFolderTouchesNothingOfTheCurrentOne()
{
    BoundWindow bound(QStringLiteral("CD20260102030405_SEQ"));
    bound.addClick(QStringLiteral("CD20260102030406"), false, 100.0f);
    bound.addClick(QStringLiteral("CD20260102030507"), false, 40.0f);
    DialogAnswerer answerer({QMessageBox::Yes});
    QVERIFY(bound.bind()); // without a sequence window it stays unsaved
    QCOMPARE(bound.sequence()->getDatasetFolderPath(QStringLiteral("CD20260102030406")), QString());
    connectTo(bound.window(), m_receiver.get());
    QTemporaryDir current;
    const QString before = QDir::currentPath();
    QVERIFY(QDir(current.path()).mkdir("TempFolder"));
    QVERIFY(writeFile(current.path() + "/TempFolder/of the user.txt", "precious"));
    QVERIFY(QDir::setCurrent(current.path()));
    const RecordingChild child(bound.sequence());
    QVERIFY(GuiDriver(bound.window()).press("m_pDisplayBtn"));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(child.saves, 0); // only an overview is saved without being asked
    QCOMPARE(failures().last(), QString("ClickInfo creation failed"));
    QCOMPARE(recordtext::hashes(current.path()).keys(), QStringList{"TempFolder/of the user.txt"});
}

QTEST_MAIN(tst_ResultFlow)
#include "tst_ResultFlow.moc"
