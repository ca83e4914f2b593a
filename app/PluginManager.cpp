// SPDX-License-Identifier: MIT
#include "app/PluginManager.h"

#include "app/datasets/DatasetLoader.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QMdiSubWindow>
#include <QPluginLoader>
#include <QSettings>

#include <algorithm>

namespace {

constexpr char KEY_ADVANCED[] = "Tools/advancedOptions";

} // namespace

PluginManager::PluginManager(CVXSWorkspace *workspace, DatasetLoader *loader, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_loader(loader)
{
    connect(workspace, &CVXSWorkspace::activeChildChanged, this, &PluginManager::activeChildChanged);
    tellOfRois();
}

void PluginManager::tellOfRois()
{
    connect(&m_rois, &ToolRois::modified, this, [this](const QString &name) {
        const QList<CVXToolPluginBase *> all = plugins();
        for (CVXToolPluginBase *plugin : all)
            plugin->onSignalROIModified(name);
    });
    connect(&m_rois, &ToolRois::deleted, this, [this] {
        const QList<CVXToolPluginBase *> all = plugins();
        for (CVXToolPluginBase *plugin : all)
            plugin->onSignalROIDeleted();
    });
    connect(&m_rois, &ToolRois::listChanged, this, [this] {
        const QList<CVXToolPluginBase *> all = plugins();
        for (CVXToolPluginBase *plugin : all)
            plugin->onSignalupdateROIList();
    });
}

PluginManager::~PluginManager()
{
    for (const Tool &tool : m_tools)
        delete tool.object;
}

QString PluginManager::defaultFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/vexa/plugins"));
}

void PluginManager::loadFolder(const QString &folder)
{
    const QDir dir(folder);
    if (!dir.exists()) {
        vxLog(ELOG_FAILURE, tr("No tools were loaded. %1: there is no such folder").arg(folder));
        return;
    }
    const QStringList names = dir.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        if (QLibrary::isLibrary(name))
            load(dir.absoluteFilePath(name));
    }
}

bool PluginManager::load(const QString &file)
{
    QPluginLoader loader(file);
    // A symbol that is missing has to be told here, not to end the program when it is first called.
    loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    QObject *object = loader.instance();
    if (!object) {
        vxLog(ELOG_FAILURE, tr("A tool could not be loaded. %1: %2").arg(file, loader.errorString()));
        return false;
    }
    auto *plugin = qobject_cast<CVXToolPluginBase *>(object);
    if (!plugin) {
        vxLog(ELOG_FAILURE,
              tr("A tool could not be loaded. %1: it is a plug-in, but not a tool for this workspace")
                  .arg(file));
        loader.unload();
        return false;
    }
    if (plugins().contains(plugin))
        return true;
    if (!plugin->isBaseModuleAvailable()) {
        vxLog(ELOG_WARNING,
              tr("The tool %1 is not offered: its base module \"%2\" is missing")
                  .arg(plugin->getToolName(), plugin->getBaseModuleName()),
              file);
        loader.unload();
        return false;
    }

    Tool tool;
    tool.object = object;
    tool.plugin = plugin;
    m_tools.append(tool);
    // By signature, because the record behind the last argument is opaque; direct, because the tool reads the
    // status next.
    connect(plugin, SIGNAL(signalLoadFile(QString, bool, ESTATUS *, downloaded_save_data *)), m_loader,
            SLOT(onLoadFile(QString, bool, ESTATUS *, downloaded_save_data *)), Qt::DirectConnection);
    addAction(plugin);
    plugin->onAdvancedOptionChanged(areAdvancedOptionsOn());
    activeChildChanged(CVXSChildWindow::getActiveChildWnd());
    vxLog(ELOG_INFORMATION, tr("Tool loaded: %1").arg(plugin->getToolName()), file);
    Q_EMIT pluginsChanged();
    return true;
}

/// A tool without a menu entry is never asked for one.
QAction *PluginManager::actionOf(CVXToolPluginBase *plugin)
{
    constexpr int KIND_WITHOUT_ACTION = 5;
    return plugin->getToolKind() == KIND_WITHOUT_ACTION ? nullptr : plugin->getAction();
}

void PluginManager::addAction(CVXToolPluginBase *plugin)
{
    QAction *action = actionOf(plugin);
    if (!action)
        return;
    if (action->icon().isNull())
        action->setIcon(plugin->getIcon());
    // Until the tool itself says whether it fits what is active.
    action->setVisible(plugin->defaultVisibilityForPluggin());
    connect(action, &QAction::triggered, this, [this, plugin] { launch(plugin); });
}

QList<CVXToolPluginBase *> PluginManager::plugins() const
{
    QList<CVXToolPluginBase *> list;
    for (const Tool &tool : m_tools) {
        if (tool.object)
            list.append(tool.plugin);
    }
    return list;
}

QList<QAction *> PluginManager::menuActions() const
{
    QList<CVXToolPluginBase *> sorted = plugins();
    std::stable_sort(sorted.begin(), sorted.end(), [](CVXToolPluginBase *one, CVXToolPluginBase *other) {
        return one->getToolGroupName() < other->getToolGroupName();
    });
    QList<QAction *> actions;
    QString group;
    for (CVXToolPluginBase *plugin : sorted) {
        QAction *action = actionOf(plugin);
        if (!action)
            continue;
        if (!actions.isEmpty() && plugin->getToolGroupName() != group)
            actions.append(nullptr);
        group = plugin->getToolGroupName();
        actions.append(action);
    }
    return actions;
}

void PluginManager::activeChildChanged(CVXSChildWindow *window)
{
    m_rois.follow(window ? window->getDataset() : nullptr);
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all) {
        if (window && window->isSequenceWindow())
            plugin->onSignalSequenceChanged(window->getSequenceDataset());
        else
            plugin->onSignalDatasetChanged(window ? window->getDataset() : nullptr);
    }
}

void PluginManager::sequenceAdded(CVXSSequenceDataset *sequence)
{
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all)
        plugin->onSignalSequenceAdded(sequence);
}

void PluginManager::sequenceRemoved(CVXSSequenceDataset *sequence)
{
    const QList<CVXSDataset *> datasets = sequence->getDatasets();
    for (Tool &tool : m_tools) {
        if (!tool.object)
            continue;
        for (CVXSDataset *dataset : datasets)
            tool.plugin->onSignalDatasetRemoved(dataset);
        tool.plugin->onSignalSequenceRemoved(sequence);
        discardHiddenWindows(&tool, sequence);
    }
}

void PluginManager::datasetRemoved(CVXSDataset *dataset)
{
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all)
        plugin->onSignalDatasetRemoved(dataset);
}

void PluginManager::copyToClipboard(const QString &objectName)
{
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all)
        plugin->onSignalCopyToClipboard(objectName);
}

void PluginManager::preparePrinting(bool on)
{
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all)
        plugin->onSignalGetPrintPixmap(on);
}

void PluginManager::menuAboutToShow(const QString &objectName)
{
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all)
        plugin->onSignalUpdatePluginMenu(objectName);
}

bool PluginManager::areAdvancedOptionsOn()
{
    return CVXPreference::settings()->value(KEY_ADVANCED, false).toBool();
}

void PluginManager::setAdvancedOptions(bool on)
{
    if (on == areAdvancedOptionsOn())
        return;
    CVXPreference::settings()->setValue(KEY_ADVANCED, on);
    const QList<CVXToolPluginBase *> all = plugins();
    for (CVXToolPluginBase *plugin : all)
        plugin->onAdvancedOptionChanged(on);
}

void PluginManager::launch(CVXToolPluginBase *plugin)
{
    const QPointer<CVXSSequenceDataset> sequence =
        SequenceManager::sequenceOf(CVXSChildWindow::getActiveChildWnd());
    // Guarded: a new window may come to lie where one was that the tool deletes.
    QList<QPointer<QMdiSubWindow>> before;
    for (QMdiSubWindow *window : m_workspace->subWindowList())
        before.append(window);
    const bool launched = plugin->launchTool();
    if (launched && plugin->isToolWindowShown())
        plugin->showToolWindow();
    for (Tool &tool : m_tools) {
        if (tool.plugin != plugin)
            continue;
        const QList<QMdiSubWindow *> after = m_workspace->subWindowList();
        for (QMdiSubWindow *window : after) {
            if (before.contains(QPointer<QMdiSubWindow>(window)) ||
                qobject_cast<CVXSChildWindow *>(window->widget()))
                continue;
            tool.windows.append(ToolWindow{window, {}});
            if (window->isVisible())
                m_workspace->makeRoomFor(window);
        }
        for (ToolWindow &window : tool.windows) {
            // One that was there already may have been taken for this sequence.
            const bool isNew = window.frame && !before.contains(window.frame);
            if (sequence && window.frame && (isNew || window.frame->isVisible()) &&
                !window.sequences.contains(sequence.data()))
                window.sequences.append(sequence.data());
        }
    }
}

/// A tool's window that is hidden may still point to a sequence that is about to go: the tool hides its
/// window for a removed sequence and keeps it, and the user may have closed it before. It is made anew at
/// the next launch.
void PluginManager::discardHiddenWindows(Tool *tool, const CVXSSequenceDataset *gone)
{
    bool discarded = false;
    QList<ToolWindow> kept;
    for (ToolWindow &window : tool->windows) {
        const bool mayPointToIt = window.sequences.removeAll(gone) > 0;
        if (window.frame && mayPointToIt && !window.frame->isVisible()) {
            delete window.frame;
            discarded = true;
        } else if (window.frame) {
            kept.append(window);
        }
    }
    tool->windows = kept;
    if (discarded)
        tool->plugin->resetWindow();
}
