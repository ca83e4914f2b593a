// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"

#include "app/AboutBox.h"
#include "app/BannerWidget.h"
#include "app/DatasetLoader.h"
#include "app/DisplayMenu.h"
#include "app/LogPane.h"
#include "app/PluginManager.h"
#include "app/RecentSequences.h"
#include "app/SequenceDrop.h"
#include "app/SequenceManager.h"
#include "app/WindowMenu.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/CVXSChildWindow.h"
#include "host/vxapi/view/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QVBoxLayout>
#include <QWhatsThis>

namespace {

constexpr char KEY_GEOMETRY[] = "MainWindow/geometry";
constexpr char KEY_STATE[] = "MainWindow/state";
constexpr char KEY_FOLDER[] = "MainWindow/sequenceFolder";
constexpr int STATE_VERSION = 1;

QAction *newAction(QMenu *menu, const QString &text, const char *objectName,
                   const QKeySequence &shortcut = QKeySequence())
{
    QAction *action = menu->addAction(text);
    action->setObjectName(QString::fromLatin1(objectName));
    action->setShortcut(shortcut);
    return action;
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent),
      m_workspace(new CVXSWorkspace),
      m_banner(new BannerWidget),
      m_logPane(new LogPane(getLogObject(), this)),
      m_loader(new DatasetLoader(m_workspace, this)),
      m_plugins(new PluginManager(m_workspace, m_loader, this)),
      m_sequences(new SequenceManager(m_workspace, m_plugins, this)),
      m_recent(new RecentSequences(this))
{
    setWindowIcon(CVXUtilityFns::appIcon());
    setAcceptDrops(true);

    auto *center = new QWidget(this);
    auto *layout = new QVBoxLayout(center);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_banner);
    layout->addWidget(m_workspace, 1);
    setCentralWidget(center);
    addDockWidget(Qt::BottomDockWidgetArea, m_logPane);
    m_logPane->hide();

    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeToolsMenu();
    QMenu *windowMenu = menuBar()->addMenu(tr("&Window"));
    windowMenu->setObjectName(QStringLiteral("menuWindow"));
    new WindowMenu(windowMenu, m_workspace, this);
    makeHelpMenu();

    connect(getLogObject(), &CVXSLog::logged, this, &MainWindow::onLogged);
    connect(m_banner, &BannerWidget::showLogRequested, m_logPane, [this] {
        m_logPane->show();
        m_logPane->raise();
    });
    connect(m_sequences, &SequenceManager::opened, m_recent, &RecentSequences::add);
    connect(m_recent, &RecentSequences::chosen, this, &MainWindow::openRecent);
    connect(m_workspace, &CVXSWorkspace::activeChildChanged, this, &MainWindow::onActiveChildChanged);
    onActiveChildChanged(nullptr);
    restoreWindow();
    CVXSDataset::registerStoredDatasets(CVXPreference::getProgramDataPath());
}

MainWindow::~MainWindow()
{
    // The menu only shows the plug-ins' actions, and what is logged from here on nobody reads any more.
    getLogObject()->disconnect(this);
    m_workspace->disconnect(this);
    delete m_sequences;
    delete m_plugins;
    // Windows before the datasets that they show.
    delete m_workspace;
    delete m_loader;
}

void MainWindow::makeFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    menu->setObjectName(QStringLiteral("menuFile"));
    connect(newAction(menu, tr("&Open Sequence..."), "actionOpenSequence", QKeySequence::Open),
            &QAction::triggered, this, &MainWindow::chooseSequence);
    QMenu *recent = menu->addMenu(tr("Open &Recent"));
    recent->setObjectName(QStringLiteral("menuRecent"));
    m_recent->attach(recent);
    menu->addSeparator();
    m_saveAction = newAction(menu, tr("&Save Sequence"), "actionSaveSequence", QKeySequence::Save);
    connect(m_saveAction, &QAction::triggered, this, &MainWindow::saveSequence);
    m_closeAction = newAction(menu, tr("&Close"), "actionClose", QKeySequence::Close);
    connect(m_closeAction, &QAction::triggered, this, &MainWindow::closeSequence);
    menu->addSeparator();
    connect(newAction(menu, tr("&Quit"), "actionQuit", QKeySequence(Qt::CTRL + Qt::Key_Q)),
            &QAction::triggered, this, &QWidget::close);
}

void MainWindow::makeEditMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Edit"));
    menu->setObjectName(QStringLiteral("menuEdit"));
    m_copyAction = newAction(menu, tr("&Copy"), "actionCopy", QKeySequence::Copy);
    connect(m_copyAction, &QAction::triggered, this, &MainWindow::copy);
}

void MainWindow::makeViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    menu->setObjectName(QStringLiteral("menuView"));
    m_displayMenu = new DisplayMenu(menu, this);
    menu->addSeparator();
    QAction *log = m_logPane->toggleViewAction();
    log->setObjectName(QStringLiteral("actionLogPane"));
    log->setText(tr("Log &Pane"));
    menu->addAction(log);
}

void MainWindow::makeToolsMenu()
{
    m_toolsMenu = menuBar()->addMenu(tr("&Tools"));
    m_toolsMenu->setObjectName(QStringLiteral("menuTools"));
    connect(m_plugins, &PluginManager::pluginsChanged, this, &MainWindow::fillToolsMenu);
    connect(m_toolsMenu, &QMenu::aboutToShow, this, &MainWindow::fillToolsMenu);
    fillToolsMenu();
}

void MainWindow::makeHelpMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Help"));
    menu->setObjectName(QStringLiteral("menuHelp"));
    QAction *whatsThis = QWhatsThis::createAction(this); // Shift+F1
    whatsThis->setObjectName(QStringLiteral("actionWhatsThis"));
    menu->addAction(whatsThis);
    menu->addSeparator();
    connect(newAction(menu, tr("&About %1").arg(CVXUtilityFns::getAppName()), "actionAbout"),
            &QAction::triggered, this, [this] { showAboutBox(this); });
}

void MainWindow::restoreWindow()
{
    const auto settings = CVXPreference::settings();
    if (!restoreGeometry(settings->value(QLatin1String(KEY_GEOMETRY)).toByteArray()))
        resize(1280, 860);
    restoreState(settings->value(QLatin1String(KEY_STATE)).toByteArray(), STATE_VERSION);
}

void MainWindow::loadPlugins(const QString &folder)
{
    m_plugins->loadFolder(folder);
}

CVXSSequenceDataset *MainWindow::openSequence(const QString &path)
{
    return m_sequences->open(path);
}

void MainWindow::chooseSequence()
{
    const auto settings = CVXPreference::settings();
    const QString last = settings->value(QLatin1String(KEY_FOLDER)).toString();
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Open Sequence"), last);
    if (folder.isEmpty())
        return;
    settings->setValue(QLatin1String(KEY_FOLDER), QFileInfo(folder).absolutePath());
    openSequence(folder);
}

void MainWindow::openRecent(const QString &folder)
{
    // One that is gone is told and not offered again; one that is only damaged may be repaired.
    if (!openSequence(folder) && !QFileInfo::exists(folder))
        m_recent->remove(folder);
}

void MainWindow::saveSequence()
{
    if (CVXSChildWindow *window = CVXSChildWindow::getActiveChildWnd())
        window->saveSequence();
}

void MainWindow::closeSequence()
{
    if (QMdiSubWindow *window = m_workspace->currentSubWindow())
        window->close();
}

void MainWindow::copy()
{
    const QMdiSubWindow *window = m_workspace->currentSubWindow();
    if (!window || !window->widget())
        return;
    if (qobject_cast<CVXSChildWindow *>(window->widget()))
        QApplication::clipboard()->setPixmap(window->widget()->grab());
    else
        m_plugins->copyToClipboard(window->widget()->objectName());
}

void MainWindow::fillToolsMenu()
{
    m_toolsMenu->clear();
    const QList<QAction *> actions = m_plugins->menuActions();
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

void MainWindow::onLogged(const SLogEntry &entry)
{
    if (entry.level >= 3)
        m_banner->tell(entry.detail.isEmpty() ? entry.message
                                              : entry.message + QLatin1String(": ") + entry.detail);
}

void MainWindow::onActiveChildChanged(CVXSChildWindow *window)
{
    const CVXSSequenceDataset *sequence = SequenceManager::sequenceOf(window);
    QString name = sequence ? sequence->getSequenceID() : QString();
    if (!sequence && window && window->getDataset())
        name = window->getDataset()->getClickNumber();
    const QString application = CVXUtilityFns::getAppName();
    setWindowTitle(name.isEmpty() ? application : tr("%1 - %2").arg(name, application));
    m_displayMenu->setActiveChild(window);
    m_saveAction->setEnabled(sequence);
    m_closeAction->setEnabled(window);
    m_copyAction->setEnabled(window);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_sequences->closeAll()) {
        event->ignore();
        return;
    }
    const auto settings = CVXPreference::settings();
    settings->setValue(QLatin1String(KEY_GEOMETRY), saveGeometry());
    settings->setValue(QLatin1String(KEY_STATE), saveState(STATE_VERSION));
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedSequences(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QStringList paths = droppedSequences(event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    for (const QString &path : paths)
        openSequence(path);
}
