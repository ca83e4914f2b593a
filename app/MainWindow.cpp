// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"

#include "app/BannerWidget.h"
#include "app/datasets/ClosingQuestion.h"
#include "app/datasets/DatasetLoader.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceDrop.h"
#include "app/datasets/SequenceManager.h"
#include "app/help/WelcomePage.h"
#include "app/import/ImageDrop.h"
#include "app/LogPane.h"
#include "app/menus/DisplayMenu.h"
#include "app/menus/EditMenu.h"
#include "app/menus/FileMenu.h"
#include "app/menus/HelpMenu.h"
#include "app/menus/newAction.h"
#include "app/menus/WindowMenu.h"
#include "app/PluginManager.h"
#include "app/PreferencesDialog.h"
#include "app/Printing.h"
#include "app/provenance/HowMadePanel.h"
#include "app/ScreenFit.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxapi/view/windows/DatasetText.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr char KEY_GEOMETRY[] = "MainWindow/geometry";
constexpr char KEY_STATE[] = "MainWindow/state";
constexpr int STATE_VERSION = 1;

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent)
{
    setWindowIcon(CVXUtilityFns::appIcon());
    setAcceptDrops(true);
    makeParts();
    arrange();
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeToolsMenu();
    QMenu *windowMenu = menuBar()->addMenu(tr("&Window"));
    windowMenu->setObjectName(QStringLiteral("menuWindow"));
    new WindowMenu(windowMenu, m_parts.workspace, this);
    makeHelpMenu();
    makeWelcome();
    connectParts();
    onActiveChildChanged(nullptr);
    restoreWindow();
    CVXSDataset::registerStoredDatasets(CVXPreference::getProgramDataPath());
}

void MainWindow::makeParts()
{
    m_parts.workspace = new CVXSWorkspace;
    m_parts.banner = new BannerWidget;
    m_parts.logPane = new LogPane(getLogObject(), this);
    m_parts.looseDatasets = new LooseDatasets(m_parts.workspace, this);
    m_parts.datasetLoader = new DatasetLoader(m_parts.workspace, m_parts.looseDatasets, this);
    m_parts.plugins = new PluginManager(m_parts.workspace, m_parts.datasetLoader, this);
    m_parts.sequences = new SequenceManager(m_parts.workspace, this);
    m_parts.recentSequences = new RecentSequences(this);
}

void MainWindow::arrange()
{
    auto *center = new QWidget(this);
    auto *layout = new QVBoxLayout(center);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_parts.banner);
    layout->addWidget(m_parts.workspace, 1);
    setCentralWidget(center);
    addDockWidget(Qt::BottomDockWidgetArea, m_parts.logPane);
    m_parts.logPane->hide();
}

void MainWindow::connectParts()
{
    connect(getLogObject(), &CVXSLog::logged, this, &MainWindow::onLogged);
    connect(getLogObject(), &CVXSLog::told, m_parts.banner, &BannerWidget::tell);
    connect(m_parts.banner, &BannerWidget::showLogRequested, m_parts.logPane, [this] {
        m_parts.logPane->show();
        m_parts.logPane->raise();
    });
    connect(m_parts.sequences, &SequenceManager::opened, m_parts.recentSequences, &RecentSequences::add);
    connect(m_parts.sequences, &SequenceManager::added, m_parts.plugins, &PluginManager::sequenceAdded);
    connect(m_parts.sequences, &SequenceManager::aboutToBeRemoved, m_parts.plugins,
            &PluginManager::sequenceRemoved);
    connect(m_parts.looseDatasets, &LooseDatasets::aboutToBeRemoved, m_parts.plugins,
            &PluginManager::datasetRemoved);
    connect(m_parts.workspace, &CVXSWorkspace::activeChildChanged, this, &MainWindow::onActiveChildChanged);
}

MainWindow::~MainWindow()
{
    // The menu only shows the plug-ins' actions, and what is logged from here on nobody reads any more.
    getLogObject()->disconnect(this);
    m_parts.workspace->disconnect(this);
    delete m_parts.sequences;
    delete m_parts.looseDatasets;
    delete m_parts.plugins;
    delete m_parts.workspace;
}

void MainWindow::makeFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    menu->setObjectName(QStringLiteral("menuFile"));
    m_fileMenu = new FileMenu(menu, m_parts, this);
    auto *printing = new Printing(m_parts.workspace, m_parts.plugins, this);
    connect(m_fileMenu, &FileMenu::printWanted, printing, &Printing::print);
}

void MainWindow::makeEditMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Edit"));
    menu->setObjectName(QStringLiteral("menuEdit"));
    connect(new EditMenu(menu, m_parts.workspace, this), &EditMenu::toolCopyWanted, m_parts.plugins,
            &PluginManager::copyToClipboard);
    menu->addSeparator();
    connect(newAction(menu, tr("P&references..."), "actionPreferences"), &QAction::triggered, this,
            [this] { PreferencesDialog(m_parts.plugins, this).exec(); });
}

void MainWindow::makeViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    menu->setObjectName(QStringLiteral("menuView"));
    m_displayMenu = new DisplayMenu(menu, this);
    menu->addSeparator();
    QAction *log = m_parts.logPane->toggleViewAction();
    log->setObjectName(QStringLiteral("actionLogPane"));
    log->setText(tr("Log &Pane"));
    menu->addAction(log);

    auto *howMade = new HowMadePanel(m_parts.recentSequences, this);
    addDockWidget(Qt::RightDockWidgetArea, howMade);
    howMade->hide();
    menu->addAction(howMade->toggleViewAction());
    connect(m_parts.workspace, &CVXSWorkspace::activeChildChanged, howMade, &HowMadePanel::setActiveChild);
}

void MainWindow::makeToolsMenu()
{
    m_toolsMenu = menuBar()->addMenu(tr("&Tools"));
    m_toolsMenu->setObjectName(QStringLiteral("menuTools"));
    connect(m_parts.plugins, &PluginManager::pluginsChanged, this, &MainWindow::fillToolsMenu);
    connect(m_toolsMenu, &QMenu::aboutToShow, this, [this] {
        m_parts.plugins->menuAboutToShow(m_toolsMenu->objectName());
        fillToolsMenu();
    });
    fillToolsMenu();
}

void MainWindow::makeHelpMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Help"));
    menu->setObjectName(QStringLiteral("menuHelp"));
    new HelpMenu(menu, m_parts.sequences, this);
}

// What can be done, in the place of the windows that are not there yet.
void MainWindow::makeWelcome()
{
    auto *page = new WelcomePage(m_parts.workspace, m_parts.recentSequences);
    const auto add = [this, page](const char *action, const QString &title, const QString &description) {
        page->addChoice(findChild<QAction *>(QLatin1String(action)), title, description);
    };
    add("actionOpenSequence", tr("Open a sequence"), tr("A folder of images with their descriptions"));
    add("actionImportImages", tr("Import images"), tr("Make a sequence of TIFF files from a camera"));
    add("actionSampleStudy", tr("Open the sample study"), tr("Simulated images to try everything with"));
    add("actionGuide", tr("Read the guide"), tr("Image Math step by step, with pictures"));
}

void MainWindow::restoreWindow()
{
    const auto settings = CVXPreference::settings();
    if (!restoreGeometry(settings->value(KEY_GEOMETRY).toByteArray()))
        resize(1280, 860);
    keepOnScreen(this);
    restoreState(settings->value(KEY_STATE).toByteArray(), STATE_VERSION);
}

void MainWindow::loadPlugins(const QString &folder)
{
    m_parts.plugins->loadFolder(folder);
}

CVXSSequenceDataset *MainWindow::openSequence(const QString &path)
{
    return m_parts.sequences->openCompletely(path);
}

CVXSDataset *MainWindow::openDataset(const QString &path)
{
    CVXSDataset *dataset = nullptr;
    m_parts.datasetLoader->load(path, &dataset);
    return dataset;
}

void MainWindow::openPath(const QString &path)
{
    const QFileInfo info(path);
    const QDir folder(info.isDir() ? path : info.absolutePath());
    const bool isDataset = info.isDir() ? folder.exists(clickinfo::FILE_CLICK_INFO) &&
                                              !folder.exists(clickinfo::FILE_SEQUENCE_INFO)
                                        : info.fileName() == clickinfo::FILE_CLICK_INFO;
    if (isDataset)
        openDataset(path);
    else
        m_parts.sequences->open(path);
}

void MainWindow::fillToolsMenu()
{
    m_toolsMenu->clear();
    const QList<QAction *> actions = m_parts.plugins->menuActions();
    bool anyVisible = false;
    for (QAction *action : actions) {
        if (!action) {
            m_toolsMenu->addSeparator();
            continue;
        }
        m_toolsMenu->addAction(action);
        anyVisible = anyVisible || action->isVisible();
    }
    // A menu without an entry would not open, and look broken.
    if (!anyVisible)
        m_toolsMenu
            ->addAction(actions.isEmpty() ? tr("No tools are installed")
                                          : tr("No tool fits the active window"))
            ->setEnabled(false);
}

void MainWindow::onLogged(const LogEntry &entry)
{
    if (entry.level >= ELOG_FAILURE)
        m_parts.banner->tell(entry.detail.isEmpty() ? entry.message
                                                    : entry.message + QLatin1String(": ") + entry.detail);
}

void MainWindow::onActiveChildChanged(CVXSChildWindow *window)
{
    showTitle();
    m_displayMenu->setActiveChild(window);
    m_fileMenu->setActiveChild(window);
}

// What is active, and the application once at the end: the system would add it to any other title.
void MainWindow::showTitle()
{
    const CVXSChildWindow *window = CVXSChildWindow::getActiveChildWnd();
    const CVXSSequenceDataset *sequence = SequenceManager::sequenceOf(window);
    QStringList names;
    if (window && window->getDataset())
        names += clickAndSourceText(*window->getDataset());
    if (sequence)
        names += sequence->getSequenceID();
    const QString application = CVXUtilityFns::getAppName();
    const QString title =
        names.isEmpty() ? application : tr("%1 - %2").arg(names.join(QStringLiteral(", ")), application);
    if (windowTitle() != title)
        setWindowTitle(title);
}

bool MainWindow::event(QEvent *event)
{
    // A maximised sub-window would put its title behind ours.
    if (event->type() == QEvent::WindowTitleChange && m_displayMenu)
        showTitle();
    return QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // Everything is asked for before the first thing goes, so that "Cancel" leaves all as it was.
    if (!isReadyToQuit(this, m_parts)) {
        event->ignore();
        return;
    }
    m_parts.sequences->closeAllUnasked();
    m_parts.looseDatasets->closeAllUnasked();
    const auto settings = CVXPreference::settings();
    settings->setValue(KEY_GEOMETRY, saveGeometry());
    settings->setValue(KEY_STATE, saveState(STATE_VERSION));
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedSequences(event->mimeData()).isEmpty() || !droppedImages(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QStringList paths = droppedSequences(event->mimeData());
    const QStringList images = droppedImages(event->mimeData());
    if (paths.isEmpty() && images.isEmpty())
        return;
    event->acceptProposedAction();
    for (const QString &path : paths)
        openPath(path);
    // Afterwards: whoever the files were dragged from waits until this returns, and a dialog would keep it.
    if (!images.isEmpty())
        QTimer::singleShot(0, this, [this, images] { m_fileMenu->importImages(images); });
}
