// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"

#include <QPointer>
#include <QVector>

class CPLClickInfo;

/// The inside of a sequence.
class CVXSSequenceDataset::Private
{
public:
    struct Entry
    {
        QString clickNumber;
        QPointer<CVXSDataset> dataset; ///< null when it could not be opened
    };

    explicit Private(CVXSSequenceDataset *sequence, const QString &sequenceId) : q(sequence), id(sequenceId)
    {
    }

    int indexOf(const QString &clickNumber) const;
    QString plannedFolder(const QString &clickNumber) const;
    void adopt(CVXSDataset *dataset);
    void announceDisplay(bool hasChanged);

    void readInfo(const CPLClickInfo &info);
    void writeInfo(CPLClickInfo *info) const;
    void listClicks(const CPLClickInfo &info);
    CVXSDataset *openClick(const QString &clickNumber, QString *reason) const;
    void warn(const QString &clickNumber, const QString &reason, QStringList *warnings) const;

    ESTATUS fail(ESTATUS status, const QString &error);
    ESTATUS saveDatasets(const QString &target);
    ESTATUS writeCopy(const QString &target, QString *error);
    ESTATUS copyOtherFiles(const QString &target, QString *error) const;
    void noteMembership(int index) const;
    void settleIn(const QString &target);

    CVXSSequenceDataset *q;
    QString id;
    QString folder; ///< ends in "/"; empty while never saved
    QString lastError;
    QVector<Entry> entries;
    /// Of a sequence that is being opened; null otherwise.
    struct Opening
    {
        explicit Opening(const CVXSSequenceDataset *sequence);
        ~Opening();
        Opening(const Opening &) = delete;
        Opening &operator=(const Opening &) = delete;

        const CVXSSequenceDataset *sequence;
        int next = 0; ///< position of the click that is loaded next
        QStringList listedTwice;
    };
    std::unique_ptr<Opening> opening;
    bool isModified = false; ///< apart from the datasets

    tag_edisplayunit activeUnit = EUNIT_COUNTS;
    bool hasActiveUnit = false; ///< chosen, stored, or taken from the first dataset
    tag_simageadjust adjust;
    CVXSToolInfo toolInfo;
    bool isTransIllumOverview = false;
    bool is3DSceneOnly = false;
};
