// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

class BannerWidget;
class CVXSChildWindow;
class CVXSDataset;
class CVXSSequenceDataset;
class CVXSWorkspace;
class DatasetLoader;
class DisplayMenu;
class FileMenu;
class LogPane;
class LooseDatasets;
class PluginManager;
class RecentSequences;
class SequenceManager;
struct SLogEntry;

/// The workspace's window: it puts the parts together (area, banner, log pane, menus) and hands on what the
/// person asks.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Loads the tool plug-ins of that folder into the Tools menu.
    void loadPlugins(const QString &folder);
    /// Opens a sequence folder, or its SequenceInfo.txt. Null when that failed; the banner tells why.
    CVXSSequenceDataset *openSequence(const QString &path);
    /// The same for a dataset's folder, or its ClickInfo.txt.
    CVXSDataset *openDataset(const QString &path);
    /// Opens what lies there, sequence or dataset.
    void openPath(const QString &path);

    CVXSWorkspace *workspace() const { return m_workspace; }
    PluginManager *plugins() const { return m_plugins; }
    SequenceManager *sequences() const { return m_sequences; }
    LooseDatasets *looseDatasets() const { return m_loose; }
    DatasetLoader *datasetLoader() const { return m_loader; }
    RecentSequences *recentSequences() const { return m_recent; }
    BannerWidget *banner() const { return m_banner; }
    LogPane *logPane() const { return m_logPane; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeToolsMenu();
    void makeHelpMenu();
    void restoreWindow();

    void copy();
    void fillToolsMenu();
    void onLogged(const SLogEntry &entry);
    void onActiveChildChanged(CVXSChildWindow *window);

    CVXSWorkspace *m_workspace;
    BannerWidget *m_banner;
    LogPane *m_logPane;
    LooseDatasets *m_loose;
    DatasetLoader *m_loader;
    PluginManager *m_plugins;
    SequenceManager *m_sequences;
    RecentSequences *m_recent;
    FileMenu *m_fileMenu = nullptr;
    DisplayMenu *m_displayMenu = nullptr;
    QMenu *m_toolsMenu = nullptr;
    QAction *m_copyAction = nullptr;
};
