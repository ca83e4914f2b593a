// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <memory>
#include <QList>
#include <QObject>
#include <QStringList>

class CVXSDataset;

/// A sequence: a list of click numbers and the datasets of those that could be opened, in a folder
/// `<sequence ID>/` with SequenceInfo.txt and one folder a dataset, or in memory as long as it was never
/// saved. It owns its datasets and registers them for CVXSDataset::getDataset().
class VXAPI_EXPORT CVXSSequenceDataset : public QObject
{
    Q_OBJECT

public:
    /// An empty sequence in memory, registered under its ID.
    explicit CVXSSequenceDataset(const QString &id, QObject *parent = nullptr);
    ~CVXSSequenceDataset() override;

    /// The open sequence of that ID, or null.
    static CVXSSequenceDataset *getSequenceDataset(const QString &id);
    static QList<CVXSSequenceDataset *> openSequences();
    /// Opens a sequence folder (or its SequenceInfo.txt). A dataset that cannot be opened leaves its click
    /// number in the list with a null dataset, a log line of level 3, and a line in `warnings`. Null on
    /// failure, with status and "file: reason" (the caller tells the user). A sequence that is open already
    /// is answered as it is; another one of the same ID is a failure. A click number listed twice is there
    /// once. Opening counts as loading (CVXPreference::isSequenceLoading()) until it returns.
    static CVXSSequenceDataset *open(const QString &folder, ESTATUS *status, QString *error,
                                     QStringList *warnings = nullptr);
    /// The same, except that a sequence that was not open yet has its click numbers only: loadNext() brings
    /// their datasets one by one. Until then it counts as loading.
    static CVXSSequenceDataset *beginOpening(const QString &folder, ESTATUS *status, QString *error);
    /// Loads the next dataset of a sequence that is being opened; false when there was none left to load.
    /// Emits datasetLoaded() for each, and loaded() after the last.
    bool loadNext(QStringList *warnings = nullptr);
    bool isLoading() const;

    QString getSequenceID() const;
    /// Click numbers in the sequence's order; positions match operator[].
    QStringList getClickNumbers() const;
    /// The datasets that are there, in the same order, without nulls.
    QList<CVXSDataset *> getDatasets() const;
    CVXSDataset *getDataset(const QString &clickNumber) const;
    /// The dataset at a position; null when it could not be opened or the position does not exist.
    CVXSDataset *operator[](unsigned index) const;
    /// True when the click number belongs to the sequence and its dataset is there. The flag is set to the
    /// answer.
    bool isAssociatedClick(const QString &clickNumber, bool *associated) const;

    /// The sequence's folder, ending in "/"; empty while the sequence was never saved.
    QString getSequenceInfoPath() const;
    /// The folder of a dataset, ending in "/": its own when it has one, else the one that it will have in the
    /// sequence's folder; empty for a click number that is not a safe file name.
    QString getDatasetFolderPath(const QString &clickNumber) const;

    tag_edisplayunit getActiveUnit() const;
    /// Sets the unit of the sequence and of every dataset in it.
    void setActiveUnit(tag_edisplayunit unit);
    const tag_simageadjust &getImageAdjust() const;
    void setImageAdjust(const tag_simageadjust &adjust);
    const CVXSToolInfo &getToolInfo() const;
    void setToolInfo(const CVXSToolInfo &info);
    bool isTransIllumOverviewResultSequence() const;
    void setTransIllumOverviewResultSequence(bool on);
    bool is3DSceneOnly() const;
    void set3DSceneOnly(bool on);

    /// Appends (or inserts) a dataset, takes ownership and registers it; false when its click number is taken
    /// or not a safe file name. Emits updateOnChangeSequence().
    bool addDataset(CVXSDataset *dataset, int position = -1);
    /// To be called after the user changed a correction of one of its datasets, which those who computed with
    /// it have to know; a computation that switches one on and back tells nobody. Emits
    /// updateOnChangeSequence().
    void announceCorrections();
    /// Takes a dataset out and deletes it. Emits datasetAboutToBeRemoved() before and
    /// updateOnChangeSequence() after.
    bool removeDataset(const QString &clickNumber);

    /// Writes the sequence: into `parentFolder`/<ID>/ when it was never saved (with an empty text: into the
    /// program-data path's "sequences"), else into its own folder. Datasets that were changed or do not lie
    /// in the sequence's folder yet are written too; SequenceInfo.txt last. A folder that holds another
    /// sequence is refused. A failure gives status, lastError() "file: reason" and a log line of level 3;
    /// SequenceInfo.txt is then as it was.
    ESTATUS save(const QString &parentFolder = QString());
    /// Writes all of it into `parentFolder`/<ID>/, which must not exist or be empty, unless it is the sequence's
    /// own; the sequence lies there from then on. Files and folders that are none of its datasets' go along.
    /// A failure (as with save()) leaves it and every dataset where they were, and nothing in that folder.
    ESTATUS saveAs(const QString &parentFolder);
    QString lastError() const;

    /// Whether closing it would lose something: it was never saved, or since it was opened or saved its unit,
    /// its colours or its list of datasets changed, or one of its datasets was changed or has no files yet.
    bool isModified() const;
    /// The part of that which is not its datasets': unit, colours, and which datasets there are.
    bool hasOwnChanges() const;

Q_SIGNALS:
    /// Datasets were added or removed, or the unit or the colours in which they are shown changed, or the user
    /// changed a correction of one of them.
    void updateOnChangeSequence();
    void datasetAboutToBeRemoved(CVXSDataset *dataset);
    void displayChanged();
    /// A dataset came, or turned out not to be there, while the sequence is being opened.
    void datasetLoaded(const QString &clickNumber);
    /// The sequence is there completely.
    void loaded();
    /// It lies in that folder now, as it is.
    void saved(const QString &folder);

private:
    class Private;
    std::unique_ptr<Private> d;
};
