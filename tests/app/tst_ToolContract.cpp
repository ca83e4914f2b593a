// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"
#include "app/PluginManager.h"
#include "app/Printing.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPrinter>
#include <QTabWidget>

namespace {

const QString PLUGINS = QStringLiteral(VEXA_BINARY_DIR "/tests/plugins/complete");
const char *const SWITCHES[] = {"VEXA_TEST_TOOL_KIND", "VEXA_TEST_TOOL_MODULE", "VEXA_TEST_TOOL_HIDDEN",
                                "VEXA_TEST_TOOL_NO_PAGE"};

/// A workspace with a sequence and the tool that overrides everything.
class ContractFixture : public WorkspaceFixture
{
public:
    ContractFixture()
    {
        CVXSSequenceDataset *sequence =
            window->openSequence(writeSequence(m_folder.path(), "AB20260102030405_SEQ", "AB"));
        QVERIFY(sequence);
        image = window->parts().workspace->showDataset(sequence->getDatasets().first());
        other = sequence->getDatasets().last();
        window->loadPlugins(PLUGINS);
        const QList<CVXToolPluginBase *> all = window->parts().plugins->plugins();
        tool = all.isEmpty() ? nullptr : all.first();
        GuiDriver::settle();
    }
    QStringList takeCalls() const
    {
        const QStringList calls = tool->property("calls").toStringList();
        tool->setProperty("calls", QStringList());
        return calls;
    }
    QAction *action(const char *name) const { return window->findChild<QAction *>(QLatin1String(name)); }
    QStringList entries() const
    {
        auto *menu = window->findChild<QMenu *>("menuTools");
        Q_EMIT menu->aboutToShow();
        QStringList texts;
        for (const QAction *entry : menu->actions()) {
            if (entry->isVisible())
                texts.append(entry->text());
        }
        return texts;
    }
    CROIManager *rois() const { return image->getDataset()->roiManager(); }

    CVXSImageWindow *image = nullptr;
    CVXSDataset *other = nullptr;
    CVXToolPluginBase *tool = nullptr;

private:
    QTemporaryDir m_folder;
};

} // namespace

/// What the workspace asks a tool and tells it, by a tool that overrides all of it.
class tst_ToolContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        for (const char *name : SWITCHES)
            qunsetenv(name);
    }

    void theActionHasTheToolsIcon()
    {
        const ContractFixture f;
        QVERIFY(f.tool);
        QVERIFY(!f.tool->getAction()->icon().isNull());
        QCOMPARE(f.entries(), QStringList("Complete"));
        f.tool->getAction()->trigger();
        QVERIFY(f.takeCalls().contains("launch"));
    }

    void aToolOfKind5HasNoActionAndHearsOfEverything()
    {
        qputenv("VEXA_TEST_TOOL_KIND", "5");
        const ContractFixture f;
        QVERIFY(f.tool);
        QCOMPARE(f.entries(), QStringList("No tools are installed"));
        QCOMPARE(f.tool->property("actionsAskedFor").toInt(), 0);
        f.takeCalls();
        f.rois()->addROI(CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 2.0, 2.0)));
        QCOMPARE(f.takeCalls(), QStringList("list"));
    }

    void aToolWithoutItsBaseModuleIsNotOffered()
    {
        qputenv("VEXA_TEST_TOOL_MODULE", "spectral unmixing");
        const ContractFixture f;
        QVERIFY(!f.tool);
        QCOMPARE(f.entries(), QStringList("No tools are installed"));
        QCOMPARE(f.log.ofLevel(ELOG_WARNING),
                 QStringList(
                     "The tool Complete is not offered: its base module \"spectral unmixing\" is missing"));
    }

    void theActionIsHiddenUntilTheToolShowsIt()
    {
        qputenv("VEXA_TEST_TOOL_HIDDEN", "1");
        const ContractFixture f;
        QCOMPARE(f.entries(), QStringList("No tool fits the active window"));
        f.tool->updateValidity(f.tool->getAction(), true, true);
        QCOMPARE(f.entries(), QStringList("Complete"));
    }

    void theToolHearsOfTheRoisOfTheActiveDataset_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("added") << "add" << QStringList("list");
        QTest::newRow("moved") << "move" << QStringList("modified Tumor");
        QTest::newRow("of another kind") << "kind" << QStringList("modified Tumor");
        QTest::newRow("renamed") << "rename" << QStringList("list");
        QTest::newRow("removed") << "remove" << QStringList({"deleted", "list"});
        QTest::newRow("selected") << "select" << QStringList();
        QTest::newRow("of another dataset") << "other" << QStringList();
    }
    void theToolHearsOfTheRoisOfTheActiveDataset()
    {
        QFETCH(QString, change);
        QFETCH(QStringList, calls);
        const ContractFixture f;
        CROIBase box(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 2.0, 2.0));
        box.setName(QStringLiteral("Tumor"));
        CROIBase *roi = f.rois()->addROI(box);
        f.rois()->selectROI(roi, false);
        f.takeCalls();
        if (change == "add")
            f.rois()->addROI(box);
        else if (change == "move")
            f.rois()->moveROI(roi, QPointF(0.5, 0.0));
        else if (change == "kind")
            f.rois()->setROIKind(roi, EROI_BACKGROUND);
        else if (change == "rename")
            f.rois()->renameROI(roi, QStringLiteral("Paw"));
        else if (change == "remove")
            f.rois()->removeROIObject();
        else if (change == "select")
            f.rois()->selectROI(nullptr, false);
        else
            f.other->roiManager()->addROI(box);
        QCOMPARE(f.takeCalls(), calls);
    }

    void theToolFollowsTheActiveWindow()
    {
        const ContractFixture f;
        f.window->parts().workspace->showDataset(f.other);
        f.takeCalls();
        const CROIBase box(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 2.0, 2.0));
        f.rois()->addROI(box);
        QCOMPARE(f.takeCalls(), QStringList());
        f.other->roiManager()->addROI(box);
        QCOMPARE(f.takeCalls(), QStringList("list"));
    }

    void theMenuIsAnnouncedBeforeItIsFilled()
    {
        const ContractFixture f;
        f.takeCalls();
        f.entries();
        QCOMPARE(f.takeCalls(), QStringList("menu menuTools"));
    }

    void thePreferencesHaveAPageForTheTool()
    {
        const ContractFixture f;
        QVERIFY(f.takeCalls().contains("advanced off"));
        QStringList pages;
        const DialogAnswerer user({DialogAnswer::call([&](QDialog *dialog) {
            auto *tabs = dialog->findChild<QTabWidget *>("PreferencesPages");
            QVERIFY(tabs);
            for (int i = 0; i < tabs->count(); ++i)
                pages.append(tabs->tabText(i));
            QVERIFY(dialog->findChild<QWidget *>("CompletePage"));
            QVERIFY(!tabs->tabIcon(1).isNull());
            dialog->findChild<QCheckBox *>("AdvancedOptions")->click();
            dialog->reject();
        })});
        f.action("actionPreferences")->trigger();
        QCOMPARE(user.count(), 1);
        QCOMPARE(pages, QStringList({"Tools", "Complete"}));
        QCOMPARE(f.takeCalls(), QStringList("advanced on"));
        QVERIFY(PluginManager::areAdvancedOptionsOn());
    }

    void aPageThatIsPromisedAndMissingIsTold()
    {
        qputenv("VEXA_TEST_TOOL_NO_PAGE", "1");
        const ContractFixture f;
        QStringList pages;
        const DialogAnswerer user({DialogAnswer::call([&](QDialog *dialog) {
            auto *tabs = dialog->findChild<QTabWidget *>("PreferencesPages");
            for (int i = 0; i < tabs->count(); ++i)
                pages.append(tabs->tabText(i));
            dialog->reject();
        })});
        f.action("actionPreferences")->trigger();
        QCOMPARE(pages, QStringList("Tools"));
        QCOMPARE(f.log.ofLevel(ELOG_WARNING),
                 QStringList("The tool Complete gave no page for its preferences"));
    }

    void printingAsksForAPrinter_data()
    {
        QTest::addColumn<bool>("ofATool");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("an image window") << false << QStringList();
        QTest::newRow("a tool's window") << true << QStringList({"printing", "printed"});
    }
    void printingAsksForAPrinter()
    {
        QFETCH(bool, ofATool);
        QFETCH(QStringList, calls);
        const ContractFixture f;
        QVERIFY(f.action("actionPrint")->isEnabled());
        if (ofATool) {
            auto *toolWindow = new QWidget;
            toolWindow->resize(200, 100);
            f.tool->signalAddWidgetToWorkspace(toolWindow);
            toolWindow->parentWidget()->show();
            f.window->parts().workspace->setActiveSubWindow(
                qobject_cast<QMdiSubWindow *>(toolWindow->parentWidget()));
        }
        f.takeCalls();
        const DialogAnswerer user({DialogAnswer::ESCAPE_KEY});
        f.action("actionPrint")->trigger();
        QCOMPARE(user.count(), 1);
        QCOMPARE(user.shown(0).objectName, QStringLiteral("PrintDialog"));
        QCOMPARE(f.takeCalls(), calls);
    }

    void theImageIsOnThePage()
    {
        QTemporaryDir folder;
        const auto printed = [&folder](const QImage &image) {
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(folder.filePath(QStringLiteral("page.pdf")));
            return Printing::printImage(&printer, image) ? readFile(folder.filePath("page.pdf"))
                                                         : QByteArray();
        };
        QImage image(60, 40, QImage::Format_RGB32);
        image.fill(Qt::red);
        const QByteArray page = printed(image);
        QVERIFY(page.startsWith("%PDF") && page.contains("/Width 60") && page.contains("/Height 40"));
        const LogCatcher log;
        QCOMPARE(printed(QImage()), QByteArray());
        QCOMPARE(log.failures(), QStringList("Nothing was printed: the window has no picture"));
    }
};

QTEST_MAIN(tst_ToolContract)
#include "tst_ToolContract.moc"
