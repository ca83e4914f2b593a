// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/WorkspaceFixture.h"
#include "tests/window/result/RecordText.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>

namespace {

const QString TOOLS = QStringLiteral(VEXA_BINARY_DIR "/lib/vexa/plugins");

} // namespace

/// Results made in the real workspace with the real plug-in, with the keyboard and the mouse, over several
/// starts.
class tst_ResultInWorkspace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aResultIsShownAndCanBeMeasured();
    void theNextStartMakesTheNextResult();
    void aResultThatWasClosedKeepsItsName();
    void aResultOfAnotherWorkspaceKeepsItsName();
    void aResultWhoseFilesAreDamagedIsALeftOver();
    void aResultCanBeAnOperandsNeighbour();
    void aTypedKIsTakenWhenTheButtonIsPressed();
    void launchedAgainTheToolStillMakesOneResult();

private:
    void start();
    void openTool();
    void restart();
    void typeK(const QString &text);
    void press();
    QWidget *tool() const;
    template <typename T>
    T *widget(const char *name) const
    {
        return tool()->findChild<T *>(QString::fromLatin1(name));
    }
    QString dataPath() const { return CVXPreference::getProgramDataPath(); }
    QString folder(const char *number) const
    {
        return dataPath() + QLatin1Char('/') + QLatin1String(number) + QLatin1Char('/');
    }
    QStringList results() const
    {
        return QDir(dataPath()).entryList({"AB_*"}, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }

    QTemporaryDir m_data;
    QString m_sequence;
    std::unique_ptr<WorkspaceFixture> m_fixture;
};

void tst_ResultInWorkspace::init()
{
    if (m_sequence.isEmpty())
        m_sequence = writeSequence(m_data.path(), "AB20260102030405_SEQ", "AB");
    QVERIFY(!m_sequence.isEmpty());
    m_fixture = std::make_unique<WorkspaceFixture>();
    start();
}

void tst_ResultInWorkspace::cleanup()
{
    m_fixture.reset();
}

void tst_ResultInWorkspace::start()
{
    m_fixture->window->loadPlugins(TOOLS);
    QVERIFY(m_fixture->window->openSequence(m_sequence));
    openTool();
}

void tst_ResultInWorkspace::openTool()
{
    QVERIFY(GuiDriver(m_fixture->window.get()).chooseFromMenu("menuTools", "Image Math"));
    QVERIFY(tool());
    QVERIFY(tool()->isVisible());
}

void tst_ResultInWorkspace::restart()
{
    m_fixture->window.reset();
    QVERIFY(!CVXSDataset::getOpenDataset("AB_M20260102030406"));
    m_fixture->window = std::make_unique<MainWindow>();
    m_fixture->window->show();
    start();
}

QWidget *tst_ResultInWorkspace::tool() const
{
    return m_fixture->window->parts().workspace->findChild<QWidget *>(QStringLiteral("Image Math Window"));
}

void tst_ResultInWorkspace::typeK(const QString &text)
{
    QVERIFY(GuiDriver(tool()).type("m_pKLineEdit", text, Qt::Key_Return));
}

void tst_ResultInWorkspace::press()
{
    QVERIFY(GuiDriver(tool()).press("m_pDisplayBtn"));
    QVERIFY2(m_fixture->window->parts().banner->isHidden(), "the banner tells of a failure");
}

void tst_ResultInWorkspace::aResultIsShownAndCanBeMeasured()
{
    typeK("0.25");
    press();
    CVXSDataset *result = CVXSDataset::getOpenDataset("AB_M20260102030406");
    QVERIFY(result);
    QVERIFY(CVXSImageWindow::getImageWindow(result));
    QVERIFY(CVXSImageWindow::getImageWindow(result)->isVisible());
    QVERIFY(result->isModified());
    QVERIFY(result->isImageMathToBeSaved());
    // A and B hold the same counts: 100 + x + 2 y - 0.25 of it.
    CILImage counts;
    QCOMPARE(result->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(0, 0), 75.0);
    QCOMPARE(counts.pixelAt(10, 20), 112.5);
    QCOMPARE(recordtext::value(folder("AB_M20260102030406") + "ClickInfo.txt", "luminescent image",
                               "Image Math k"),
             QString("2.50e-1"));
    // Only B has a photograph.
    QCOMPARE(recordtext::value(folder("AB_M20260102030406") + "ClickInfo.txt", "luminescent image",
                               "Image Math Photo ClickNumber"),
             QString("AB20260102030507"));
    QVERIFY(result->getCoreImage(EIMAGE_PHOTOGRAPH));
    QCOMPARE(result->getCoreImage(EIMAGE_PHOTOGRAPH)->pixelAt(3, 4), 7.0);
    CROIManager *rois = result->roiManager();
    QVERIFY(rois->addROI(CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(0.0, 0.0, 12.5, 12.5))));
    QCOMPARE(result->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
    const auto records = CRoiMeasurementManager::getRoiMeasurementManager()->getRoiMeasInfoList();
    QCOMPARE(records.size(), 1);
    // 0.75 times the sum of 100 + x + 2 y over 32 x 32 pixels.
    QCOMPARE(records.first()->primaryROIStatistic(), 0.75 * (100.0 * 1024 + 496.0 * 32 + 2.0 * 496.0 * 32));
}

void tst_ResultInWorkspace::theNextStartMakesTheNextResult()
{
    typeK("2");
    press();
    QCOMPARE(results(), QStringList{"AB_M20260102030406"});
    const auto first = recordtext::hashes(folder("AB_M20260102030406"));
    const auto operands = recordtext::hashes(m_sequence);
    restart();
    typeK("3");
    press();
    QCOMPARE(results(), QStringList({"AB_M20260102030406", "AB_N20260102030406"}));
    QCOMPARE(recordtext::hashes(folder("AB_M20260102030406")), first);
    restart();
    press();
    QCOMPARE(results(), QStringList({"AB_M20260102030406", "AB_N20260102030406", "AB_O20260102030406"}));
    QCOMPARE(recordtext::hashes(folder("AB_M20260102030406")), first);
    QCOMPARE(recordtext::hashes(m_sequence), operands);
    // All of them are known, and say what they are.
    const QStringList ks{"2.00", "3.00", "3.00"};
    for (int i = 0; i < 3; ++i) {
        CVXSDataset *result = CVXSDataset::getDataset(results().at(i));
        QVERIFY(result);
        CILImage counts;
        QCOMPARE(result->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
        QCOMPARE(counts.pixelAt(0, 0), 100.0 - 100.0 * ks.at(i).toDouble());
        QCOMPARE(recordtext::value(dataPath() + "/" + results().at(i) + "/ClickInfo.txt", "luminescent image",
                                   "Image Math k"),
                 ks.at(i));
    }
}

void tst_ResultInWorkspace::aResultThatWasClosedKeepsItsName()
{
    press();
    CVXSDataset *result = CVXSDataset::getOpenDataset("AB_M20260102030406");
    QVERIFY(result);
    DialogAnswerer answerer({DialogAnswer::FIRST_BUTTON});
    auto *sub = qobject_cast<QMdiSubWindow *>(CVXSImageWindow::getImageWindow(result)->parentWidget());
    QVERIFY(sub);
    sub->close();
    QTRY_VERIFY(!CVXSDataset::getOpenDataset("AB_M20260102030406"));
    QCOMPARE(answerer.count(), 0); // its files are on disk, and nothing in it changed
    const auto first = recordtext::hashes(folder("AB_M20260102030406"));
    press();
    QCOMPARE(results(), QStringList({"AB_M20260102030406", "AB_N20260102030406"}));
    QCOMPARE(recordtext::hashes(folder("AB_M20260102030406")), first);
}

void tst_ResultInWorkspace::aResultOfAnotherWorkspaceKeepsItsName()
{
    press();
    // Another workspace on the same folder made the next one meanwhile.
    const QString made = folder("AB_N20260102030406");
    QVERIFY(QDir().mkpath(made));
    for (const QString &name : QDir(folder("AB_M20260102030406")).entryList(QDir::Files))
        QVERIFY(QFile::copy(folder("AB_M20260102030406") + name, made + name));
    for (const char *name : {"ClickInfo.txt", "AnalyzedClickInfo.txt"})
        QVERIFY(replaceInFile(made + name, "[ClickNumber]: AB_M", "[ClickNumber]: AB_N"));
    const auto others = recordtext::hashes(made);
    press();
    QCOMPARE(results(), QStringList({"AB_M20260102030406", "AB_N20260102030406", "AB_O20260102030406"}));
    QCOMPARE(recordtext::hashes(made), others);
}

void tst_ResultInWorkspace::aResultWhoseFilesAreDamagedIsALeftOver()
{
    press();
    m_fixture->window.reset();
    QVERIFY(QFile::remove(folder("AB_M20260102030406") + "AnalyzedClickInfo.txt"));
    m_fixture->window = std::make_unique<MainWindow>();
    m_fixture->window->show();
    start();
    QVERIFY(!CVXSDataset::getDataset("AB_M20260102030406"));
    press();
    QCOMPARE(results(), QStringList{"AB_M20260102030406"});
    QVERIFY(QFile::exists(folder("AB_M20260102030406") + "AnalyzedClickInfo.txt"));
    QVERIFY(CVXSDataset::getOpenDataset("AB_M20260102030406"));
}

void tst_ResultInWorkspace::aResultCanBeAnOperandsNeighbour()
{
    // The loaded result is the active window then; the tool goes on with its own sequence.
    press();
    widget<QListWidget>("m_pListBoxA")->setCurrentRow(1);
    widget<QListWidget>("m_pListBoxB")->setCurrentRow(0);
    press();
    QCOMPARE(results(), QStringList({"AB_M20260102030406", "AB_M20260102030507"}));
    QCOMPARE(recordtext::value(folder("AB_M20260102030507") + "ClickInfo.txt", "luminescent image",
                               "Image Math A ClickNumber"),
             QString("AB20260102030507"));
}

void tst_ResultInWorkspace::aTypedKIsTakenWhenTheButtonIsPressed()
{
    QApplication::setActiveWindow(m_fixture->window.get());
    auto *field = widget<QLineEdit>("m_pKLineEdit");
    field->setFocus();
    QVERIFY(field->hasFocus());
    field->selectAll();
    QTest::keyClicks(field, "0.25"); // and no Return
    press();
    QCOMPARE(field->text(), QString("2.50e-1"));
    CVXSDataset *result = CVXSDataset::getOpenDataset("AB_M20260102030406");
    QVERIFY(result);
    QCOMPARE(result->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(0, 0), 75.0);
    QCOMPARE(recordtext::value(folder("AB_M20260102030406") + "ClickInfo.txt", "luminescent image",
                               "Image Math k"),
             QString("2.50e-1"));
}

void tst_ResultInWorkspace::launchedAgainTheToolStillMakesOneResult()
{
    for (int i = 0; i < 2; ++i) {
        qobject_cast<QMdiSubWindow *>(tool()->parentWidget())->close();
        QTRY_VERIFY(!tool()->isVisible());
        openTool();
    }
    press();
    QCOMPARE(results(), QStringList{"AB_M20260102030406"});
    int windows = 0;
    for (const QMdiSubWindow *sub : m_fixture->window->parts().workspace->subWindowList())
        windows += qobject_cast<CVXSImageWindow *>(sub->widget()) != nullptr;
    QCOMPARE(windows, 1);
}

QTEST_MAIN(tst_ResultInWorkspace)
#include "tst_ResultInWorkspace.moc"
