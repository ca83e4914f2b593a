// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <memory>
#include <QList>
#include <QObject>
#include <QStringList>

class CVXSDataset;

/// A sequence: a list of click numbers and the datasets of those that could be opened, in a folder
/// `<sequence ID>/` with SequenceInfo.txt and one folder a dataset, or in memory as long as it was never saved.
/// It owns its datasets and registers them for CVXSDataset::getDataset().
class VXAPI_EXPORT CVXSSequenceDataset : public QObject
{
    Q_OBJECT

public:
    /// An empty sequence in memory, registered under its ID. `intendedFolder` is where save() without a folder will
    /// put it: the folder that holds sequences (the sequence's own folder is made in it).
    explicit CVXSSequenceDataset(const QString &id, QObject *parent = nullptr);
    ~CVXSSequenceDataset() override;

    /// The open sequence of that ID, or null.
    static CVXSSequenceDataset *getSequenceDataset(const QString &id);
    static QList<CVXSSequenceDataset *> openSequences();
    /// Opens a sequence folder (or its SequenceInfo.txt). A dataset that cannot be opened leaves its click number in the
    /// list with a null dataset, a log line of level 3, and a line in `warnings`. Null on failure, with status and
    /// "file: reason". A sequence that is open already is answered as it is.
    static CVXSSequenceDataset *open(const QString &folder, ESTATUS *status, QString *error, QStringList *warnings = nullptr);

    QString getSequenceID() const;
    /// Click numbers in the sequence's order; positions match operator[].
    QStringList getClickNumbers() const;
    /// The datasets that are there, in the same order, without nulls.
    QList<CVXSDataset *> getDatasets() const;
    CVXSDataset *getDataset(const QString &clickNumber) const;
    /// The dataset at a position; null when it could not be opened or the position does not exist.
    CVXSDataset *operator[](unsigned index) const;
    /// True when the click number belongs to the sequence and its dataset is there. The flag is set to the answer.
    bool isAssociatedClick(const QString &clickNumber, bool *associated) const;

    /// The sequence's folder, ending in "/"; empty while the sequence was never saved.
    QString getSequenceInfoPath() const;
    /// The folder of a dataset, ending in "/": its own when it has one, else the one that it will have in the sequence's
    /// folder; empty for a click number that is not a safe file name.
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

    /// Appends (or inserts) a dataset, takes ownership and registers it; false when its click number is taken or not
    /// a safe file name. Emits updateOnChangeSequence().
    bool addDataset(CVXSDataset *dataset, int position = -1);
    /// Takes a dataset out and deletes it. Emits datasetAboutToBeRemoved() before and updateOnChangeSequence() after.
    bool removeDataset(const QString &clickNumber);

    /// Writes the sequence: into `parentFolder`/<ID>/ when it was never saved (with an empty text: into the program-data
    /// path's "sequences"), else into its own folder. Datasets of type 2 are written too; SequenceInfo.txt last.
    ESTATUS save(const QString &parentFolder = QString());
    QString lastError() const;

Q_SIGNALS:
    void updateOnChangeSequence();
    void datasetAboutToBeRemoved(CVXSDataset *dataset);
    void displayChanged();

private:
    class Private;
    std::unique_ptr<Private> d;
};
