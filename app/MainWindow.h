// SPDX-License-Identifier: MIT
#pragma once

#include "app/WorkspaceParts.h"

#include <QMainWindow>

class CVXSChildWindow;
class CVXSDataset;
class CVXSSequenceDataset;
class DisplayMenu;
class FileMenu;
struct LogEntry;

/// The workspace's window: it puts the parts together (area, banner, log pane, menus) and hands on what the
/// user asks.
///
///     MainWindow window;
///     window.loadPlugins(PluginManager::defaultFolder());
///     window.show();
///     if (CVXSSequenceDataset *sequence = window.openSequence(folder)) // null: the banner tells why
///         window.parts().workspace->showDataset(sequence->getDatasets().first());
///
/// Its rooms: datasets/ has what is open and how it is opened, saved and closed; import/ makes sequences of
/// plain images; provenance/ tells how a result was made; menus/ offers all that and gets only the parts that
/// it uses.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Loads the tool plug-ins of that folder into the Tools menu.
    void loadPlugins(const QString &folder);
    /// Opens a sequence folder, or its SequenceInfo.txt, completely. Null when that failed; the banner tells why.
    CVXSSequenceDataset *openSequence(const QString &path);
    /// The same for a dataset's folder, or its ClickInfo.txt.
    CVXSDataset *openDataset(const QString &path);
    /// Opens what lies there, sequence or dataset; a sequence is loaded in the event loop.
    void openPath(const QString &path);

    /// What the window is put together of; all of it goes with the window.
    const WorkspaceParts &parts() const { return m_parts; }

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeParts();
    void arrange();
    void connectParts();
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeToolsMenu();
    void makeHelpMenu();
    void makeWelcome();
    void restoreWindow();

    void showTitle();
    void fillToolsMenu();
    void onLogged(const LogEntry &entry);
    void onActiveChildChanged(CVXSChildWindow *window);

    WorkspaceParts m_parts;
    FileMenu *m_fileMenu = nullptr;
    DisplayMenu *m_displayMenu = nullptr;
    QMenu *m_toolsMenu = nullptr;
};
