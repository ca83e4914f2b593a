// SPDX-License-Identifier: MIT
#include "host/vxapi/model/StoredDatasets.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/DatasetCompleteness.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QDir>
#include <QFileInfo>

void CVXSDataset::registerStoredDatasets(const QString &folder)
{
    StoredDatasets::instance().registerFolder(folder);
}

bool StoredDatasets::Stamp::operator==(const Stamp &other) const
{
    return folder == other.folder && clickInfo == other.clickInfo && size == other.size;
}

StoredDatasets &StoredDatasets::instance()
{
    // Never destroyed: datasets may die after the objects of this file do.
    static auto *datasets = new StoredDatasets;
    return *datasets;
}

StoredDatasets::Stamp StoredDatasets::stampOf(const QString &folder)
{
    const QFileInfo clickInfo(folder + clickinfo::FILE_CLICK_INFO);
    return {QFileInfo(folder).lastModified(), clickInfo.lastModified(), clickInfo.size()};
}

bool StoredDatasets::read(const QString &folder, Entry *entry)
{
    entry->about.folder = folder;
    entry->stamp = stampOf(folder); // before the reading, so that what changes meanwhile is seen
    datasetfiles::FolderContent content;
    QString reason;
    if (datasetfiles::checkFiles(folder, &content, &reason) != ESTATUS_SUCCESS ||
        !CVXUtilityFns::isSafeFileName(content.clickNumber))
        return false;
    const QFileInfo last(folder + clickinfo::FILE_ANALYZED_CLICK_INFO);
    entry->about.clickNumber = content.clickNumber;
    entry->about.isResult = content.isResult;
    entry->about.written = last.lastModified();
    return true;
}

void StoredDatasets::drop(Entry *entry)
{
    // Later: who asked for it may stand in the middle of using it.
    if (entry->opened)
        entry->opened->deleteLater();
    entry->opened.clear();
}

void StoredDatasets::registerFolder(const QString &folder)
{
    m_root = datasetfiles::folderPath(folder);
    QMap<QString, Entry> found;
    const QStringList names =
        m_root.isEmpty()
            ? QStringList()
            : QDir(m_root).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString &name : names) {
        const QString path = m_root + name + QLatin1Char('/');
        const auto known = m_entries.find(name);
        const bool isKnown = known != m_entries.end() && known->about.folder == path;
        Entry entry;
        if (isKnown && known->stamp == stampOf(path))
            entry = *known;
        else if (!read(path, &entry))
            continue;
        found.insert(name, entry);
        if (isKnown && entry.opened)
            known->opened.clear(); // it goes on
    }
    for (Entry &entry : m_entries)
        drop(&entry);
    m_entries = found;
}

void StoredDatasets::noticeFolder(const QString &name)
{
    if (m_root.isEmpty() || m_entries.contains(name) || !CVXUtilityFns::isSafeFileName(name))
        return;
    Entry entry;
    if (read(m_root + name + QLatin1Char('/'), &entry))
        m_entries.insert(name, entry);
}

CVXSDataset *StoredDatasets::find(const QString &name)
{
    noticeFolder(name);
    QStringList folders;
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        if (entry->about.clickNumber == name)
            folders += entry.key();
    }
    // Of copies of a dataset, the one in the folder of its own name.
    if (folders.removeOne(name))
        folders.prepend(name);
    else if (m_entries.contains(name))
        folders.append(name);
    for (const QString &folder : qAsConst(folders)) {
        if (CVXSDataset *dataset = open(folder))
            return dataset;
    }
    return nullptr;
}

CVXSDataset *StoredDatasets::open(const QString &folderName)
{
    Entry &entry = m_entries[folderName];
    Entry now;
    const bool isComplete = read(entry.about.folder, &now);
    if (isComplete && entry.opened && now.stamp == entry.stamp)
        return entry.opened;
    drop(&entry);
    if (!isComplete) {
        m_entries.remove(folderName);
        return nullptr;
    }
    entry = now;
    CVXSDataset *elsewhere = CVXSDataset::getOpenDataset(entry.about.clickNumber);
    if (elsewhere && datasetfiles::isSame(elsewhere->getFolderPath(), entry.about.folder))
        return elsewhere;
    entry.opened = CVXSDataset::open(entry.about.folder, nullptr, nullptr);
    return entry.opened;
}

QList<StoredDataset> StoredDatasets::list() const
{
    QList<StoredDataset> all;
    for (const Entry &entry : m_entries)
        all += entry.about;
    return all;
}

void StoredDatasets::giveWayTo(const CVXSDataset *opened)
{
    for (Entry &entry : m_entries) {
        if (!entry.opened)
            continue;
        if (entry.opened == opened)
            entry.opened.clear(); // it is its new owner's
        else if (entry.about.clickNumber == opened->getClickNumber())
            drop(&entry);
    }
}
