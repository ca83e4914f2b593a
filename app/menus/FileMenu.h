// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class CVXSChildWindow;
class MainWindow;
class QAction;
class QMenu;

/// The File menu: opens, saves and closes sequences and datasets.
class FileMenu : public QObject
{
    Q_OBJECT

public:
    /// Adds its actions to the menu.
    FileMenu(QMenu *menu, MainWindow *window);

    /// The window that "Save" and the like are about; null: none.
    void setActiveChild(CVXSChildWindow *window);

private:
    void addOpening(QMenu *menu);
    void addSaving(QMenu *menu);
    void chooseSequence();
    void chooseDataset();
    void openRecent(const QString &folder);
    void importImages();
    void save();
    void saveDatasetAs();
    void chooseResultFolder();

    MainWindow *m_window;
    QPointer<CVXSChildWindow> m_active;
    QAction *m_save = nullptr;
    QAction *m_saveAs = nullptr;
    QAction *m_close = nullptr;
};
