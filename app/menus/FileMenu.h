// SPDX-License-Identifier: MIT
#pragma once

#include "app/datasets/DatasetParts.h"

#include <QObject>
#include <QPointer>

class CVXSChildWindow;
class QAction;
class QMenu;
class QWidget;

/// The File menu: opens, saves and closes sequences and datasets.
///
///     auto *fileMenu = new FileMenu(menuBar()->addMenu(tr("&File")), parts, mainWindow);
///     connect(workspace, &CVXSWorkspace::activeChildChanged, fileMenu, &FileMenu::setActiveChild);
///
/// Each menu is a class that fills a menu it is given, and is told which window is active. What fails is in
/// the log (and so in the banner) or shown in a box.
class FileMenu : public QObject
{
    Q_OBJECT

public:
    /// Adds its actions to the menu. `window` is the one that dialogs stand above and that "Quit" closes; it
    /// owns the parts and outlives this.
    FileMenu(QMenu *menu, const DatasetParts &parts, QWidget *window);

    /// The window that "Save" and the like are about; null: none.
    void setActiveChild(CVXSChildWindow *window);
    /// Opens the dialog that imports images, with these files in it, and shows the sequence that it makes.
    void importImages(const QStringList &files);

Q_SIGNALS:
    /// The window in front is to be printed.
    void printWanted();

private:
    void addOpening(QMenu *menu);
    void addSaving(QMenu *menu);
    void chooseSequence();
    void chooseDataset();
    void openRecent(const QString &folder);
    void save();
    void saveDatasetAs();
    void chooseResultFolder();

    DatasetParts m_parts;
    QWidget *m_window;
    QPointer<CVXSChildWindow> m_active;
    QAction *m_save = nullptr;
    QAction *m_saveSequenceAs = nullptr;
    QAction *m_saveAs = nullptr;
    QAction *m_close = nullptr;
    QAction *m_print = nullptr;
};
