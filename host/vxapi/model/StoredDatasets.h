// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QString>

class CVXSDataset;

/// A dataset that lies complete in its folder.
struct StoredDataset
{
    QString folder; ///< ends in "/"
    QString clickNumber;
    bool isResult = false;
    QDateTime written; ///< when AnalyzedClickInfo.txt, the last of its files, was written
};

/// The datasets that lie complete directly under one folder, known by name before anyone opens them. Behind
/// CVXSDataset::registerStoredDatasets() and CVXSDataset::getDataset(); public for lists of them.
///
/// A name is taken by the click number and by the folder: a new result of that name would be written into the
/// folder. Where both occur, the click number answers first. A dataset that somebody opens otherwise is left
/// to that caller: the object that stood for the stored one goes (later, so hold it in a QPointer).
class VXAPI_EXPORT StoredDatasets
{
public:
    static StoredDatasets &instance();

    /// Takes notice of what lies under that folder now, and forgets everything else.
    void registerFolder(const QString &folder);
    /// The dataset of that click number, else in the folder of that name, opened when needed; null when there
    /// is none any more. A folder of that name that came since is noticed.
    CVXSDataset *find(const QString &name);
    /// In the order of their folders' names.
    QList<StoredDataset> list() const;

    /// An open dataset answers for its click number from now on.
    void giveWayTo(const CVXSDataset *opened);

private:
    /// When this is unchanged, so is the folder's content, but for a file that was changed in place.
    struct Stamp
    {
        QDateTime folder;
        QDateTime clickInfo;
        qint64 size = -1;
        bool operator==(const Stamp &other) const;
    };
    struct Entry
    {
        StoredDataset about;
        Stamp stamp;
        QPointer<CVXSDataset> opened;
    };
    StoredDatasets() = default;
    static Stamp stampOf(const QString &folder);
    /// False when nothing complete is there.
    static bool read(const QString &folder, Entry *entry);
    static void drop(Entry *entry);
    /// Another workspace may have written it since the last look.
    void noticeFolder(const QString &name);
    CVXSDataset *open(const QString &folderName);

    QString m_root;                 ///< ends in "/", or empty
    QMap<QString, Entry> m_entries; ///< by the folder's name
};
