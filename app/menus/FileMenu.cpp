// SPDX-License-Identifier: MIT
#include "app/menus/FileMenu.h"

#include "app/datasets/DatasetLoader.h"
#include "app/datasets/DatasetSaving.h"
#include "app/datasets/EarlierResults.h"
#include "app/datasets/FolderChoice.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "app/import/ImportDialog.h"
#include "app/menus/newAction.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSErrorHandler.h"
#include "host/vxutils/CVXSLog.h"

#include <QDir>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMenu>

FileMenu::FileMenu(QMenu *menu, const DatasetParts &parts, QWidget *window)
    : QObject(window), m_parts(parts), m_window(window)
{
    addOpening(menu);
    menu->addSeparator();
    addSaving(menu);
    menu->addSeparator();
    connect(newAction(menu, tr("&Folder for Results..."), "actionResultFolder"), &QAction::triggered, this,
            &FileMenu::chooseResultFolder);
    menu->addSeparator();
    connect(newAction(menu, tr("&Quit"), "actionQuit", QKeySequence(Qt::CTRL + Qt::Key_Q)),
            &QAction::triggered, window, &QWidget::close);
}

void FileMenu::addOpening(QMenu *menu)
{
    connect(newAction(menu, tr("&Open Sequence..."), "actionOpenSequence", QKeySequence::Open),
            &QAction::triggered, this, &FileMenu::chooseSequence);
    QMenu *recent = menu->addMenu(tr("Open &Recent"));
    recent->setObjectName(QStringLiteral("menuRecent"));
    m_parts.recentSequences->attach(recent);
    connect(m_parts.recentSequences, &RecentSequences::chosen, this, &FileMenu::openRecent);
    connect(newAction(menu, tr("Open &Dataset..."), "actionOpenDataset"), &QAction::triggered, this,
            &FileMenu::chooseDataset);
    QMenu *results = menu->addMenu(tr("Open &Earlier Result"));
    results->setObjectName(QStringLiteral("menuEarlierResults"));
    auto *earlier = new EarlierResults(results, this);
    connect(earlier, &EarlierResults::chosen, this,
            [this](const QString &folder) { m_parts.datasetLoader->load(folder); });
    connect(earlier, &EarlierResults::othersWanted, this, &FileMenu::chooseDataset);
    connect(newAction(menu, tr("&Import Images..."), "actionImportImages"), &QAction::triggered, this,
            [this] { importImages({}); });
}

void FileMenu::addSaving(QMenu *menu)
{
    m_save = newAction(menu, tr("&Save"), "actionSaveSequence", QKeySequence::Save);
    connect(m_save, &QAction::triggered, this, &FileMenu::save);
    m_saveSequenceAs = newAction(menu, tr("Save Se&quence As..."), "actionSaveSequenceAs");
    connect(m_saveSequenceAs, &QAction::triggered, this, [this] {
        if (CVXSSequenceDataset *sequence = SequenceManager::sequenceOf(m_active))
            m_parts.sequences->saveElsewhere(sequence);
    });
    m_saveAs = newAction(menu, tr("Save Dataset &As..."), "actionSaveDatasetAs",
                         QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_S));
    connect(m_saveAs, &QAction::triggered, this, &FileMenu::saveDatasetAs);
    m_print = newAction(menu, tr("&Print..."), "actionPrint", QKeySequence::Print);
    connect(m_print, &QAction::triggered, this, &FileMenu::printWanted);
    m_close = newAction(menu, tr("&Close"), "actionClose", QKeySequence::Close);
    connect(m_close, &QAction::triggered, this, [this] {
        if (QMdiSubWindow *window = m_parts.workspace->currentSubWindow())
            window->close();
    });
}

void FileMenu::setActiveChild(CVXSChildWindow *window)
{
    m_active = window;
    m_save->setEnabled(SequenceManager::sequenceOf(window) || m_parts.looseDatasets->datasetOf(window));
    m_saveSequenceAs->setEnabled(SequenceManager::sequenceOf(window));
    m_saveAs->setEnabled(window && window->getDataset());
    m_close->setEnabled(window);
    m_print->setEnabled(window);
}

void FileMenu::chooseSequence()
{
    const QString folder =
        chooseFolder(m_window, tr("Open Sequence"), "MainWindow/sequenceFolder", QString(), REMEMBER_PARENT);
    if (!folder.isEmpty())
        m_parts.sequences->open(folder);
}

void FileMenu::chooseDataset()
{
    const QString folder = chooseFolder(m_window, tr("Open Dataset"), "MainWindow/datasetFolder",
                                        CVXPreference::getProgramDataPath(), REMEMBER_PARENT);
    if (!folder.isEmpty())
        m_parts.datasetLoader->load(folder);
}

void FileMenu::openRecent(const QString &folder)
{
    // One that is gone is told and not offered again; one that is only damaged may be repaired.
    if (!m_parts.sequences->open(folder) && !QFileInfo::exists(folder))
        m_parts.recentSequences->remove(folder);
}

void FileMenu::importImages(const QStringList &files)
{
    ImportDialog dialog(m_window);
    dialog.addImages(files);
    if (dialog.exec() == QDialog::Accepted)
        m_parts.sequences->add(dialog.takeSequence().release());
}

void FileMenu::save()
{
    if (CVXSDataset *dataset = m_parts.looseDatasets->datasetOf(m_active))
        saving::saveDataset(m_window, dataset);
    else if (CVXSSequenceDataset *sequence = SequenceManager::sequenceOf(m_active))
        m_parts.sequences->save(sequence);
}

void FileMenu::saveDatasetAs()
{
    CVXSDataset *dataset = m_active ? m_active->getDataset() : nullptr;
    if (dataset && saving::saveDatasetElsewhere(m_window, dataset))
        CVXSDataset::registerStoredDatasets(CVXPreference::getProgramDataPath());
}

// What lies in the former folder stays there, and can be opened from there.
void FileMenu::chooseResultFolder()
{
    const QString folder =
        chooseFolder(m_window, tr("Folder for Results"), nullptr, CVXPreference::getProgramDataPath());
    if (folder.isEmpty())
        return;
    QString why;
    if (!CVXPreference::setProgramDataPath(folder, &why)) {
        CVXSErrorHandler::errorMessage(m_window, ESTATUS_FILE_NOT_WRITABLE, why);
        return;
    }
    CVXSDataset::registerStoredDatasets(CVXPreference::getProgramDataPath());
    vxLog(ELOG_INFORMATION, tr("Results are stored in %1").arg(folder));
}
