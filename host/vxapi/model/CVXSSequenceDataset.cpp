// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSSequenceDataset.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/CVXSSequenceDataset_p.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <algorithm>

using namespace clickinfo;

namespace {

// Never destroyed: sequences may die after the objects of this file do.
QList<CVXSSequenceDataset *> &registry()
{
    static auto *sequences = new QList<CVXSSequenceDataset *>;
    return *sequences;
}

} // namespace

CVXSSequenceDataset::CVXSSequenceDataset(const QString &id, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>(this, id))
{
    registry().append(this);
}

CVXSSequenceDataset::~CVXSSequenceDataset()
{
    registry().removeAll(this);
    for (const Private::Entry &entry : qAsConst(d->entries))
        delete entry.dataset.data();
}

CVXSSequenceDataset *CVXSSequenceDataset::getSequenceDataset(const QString &id)
{
    for (CVXSSequenceDataset *sequence : qAsConst(registry())) {
        if (sequence->d->id == id)
            return sequence;
    }
    return nullptr;
}

QList<CVXSSequenceDataset *> CVXSSequenceDataset::openSequences()
{
    return registry();
}

QString CVXSSequenceDataset::getSequenceID() const
{
    return d->id;
}

QStringList CVXSSequenceDataset::getClickNumbers() const
{
    QStringList numbers;
    for (const Private::Entry &entry : qAsConst(d->entries))
        numbers += entry.clickNumber;
    return numbers;
}

QList<CVXSDataset *> CVXSSequenceDataset::getDatasets() const
{
    QList<CVXSDataset *> datasets;
    for (const Private::Entry &entry : qAsConst(d->entries)) {
        if (entry.dataset)
            datasets += entry.dataset;
    }
    return datasets;
}

CVXSDataset *CVXSSequenceDataset::getDataset(const QString &clickNumber) const
{
    const int index = d->indexOf(clickNumber);
    return index < 0 ? nullptr : d->entries.at(index).dataset.data();
}

CVXSDataset *CVXSSequenceDataset::operator[](unsigned index) const
{
    return index < unsigned(d->entries.size()) ? d->entries.at(int(index)).dataset.data() : nullptr;
}

bool CVXSSequenceDataset::isAssociatedClick(const QString &clickNumber, bool *associated) const
{
    const bool answer = getDataset(clickNumber) != nullptr;
    if (associated)
        *associated = answer;
    return answer;
}

QString CVXSSequenceDataset::getSequenceInfoPath() const
{
    return d->folder;
}

QString CVXSSequenceDataset::getDatasetFolderPath(const QString &clickNumber) const
{
    const CVXSDataset *dataset = getDataset(clickNumber);
    const QString own = dataset ? dataset->getFolderPath() : QString();
    return own.isEmpty() ? d->plannedFolder(clickNumber) : own;
}

bool CVXSSequenceDataset::isModified() const
{
    const QList<CVXSDataset *> datasets = getDatasets();
    return d->isModified || d->folder.isEmpty() ||
           std::any_of(datasets.begin(), datasets.end(), [](const CVXSDataset *dataset) {
               return dataset->isModified() || dataset->getDatasetType() == EDATASET_IN_MEMORY;
           });
}

bool CVXSSequenceDataset::hasOwnChanges() const
{
    return d->isModified;
}

QString CVXSSequenceDataset::lastError() const
{
    return d->lastError;
}

// --- display ---

tag_edisplayunit CVXSSequenceDataset::getActiveUnit() const
{
    return d->activeUnit;
}

void CVXSSequenceDataset::setActiveUnit(tag_edisplayunit unit)
{
    if (unit < EUNIT_COUNTS || unit >= EUNIT_COUNT)
        return;
    const bool hasChanged = unit != d->activeUnit;
    d->isModified = d->isModified || hasChanged;
    d->activeUnit = unit;
    d->hasActiveUnit = true;
    const QList<CVXSDataset *> datasets = getDatasets();
    for (CVXSDataset *dataset : datasets)
        dataset->setUnit(unit);
    d->announceDisplay(hasChanged);
}

const tag_simageadjust &CVXSSequenceDataset::getImageAdjust() const
{
    return d->adjust;
}

// Reversed and log scale stand in both records; they are one setting.
void CVXSSequenceDataset::setImageAdjust(const tag_simageadjust &adjust)
{
    const bool hasChanged = adjust.colorTable != d->adjust.colorTable ||
                            adjust.reverse != d->adjust.reverse || adjust.logScale != d->adjust.logScale;
    d->isModified = d->isModified || hasChanged;
    d->adjust = adjust;
    d->toolInfo.reversed = adjust.reverse;
    d->toolInfo.logarithmic = adjust.logScale;
    d->announceDisplay(hasChanged);
}

const CVXSToolInfo &CVXSSequenceDataset::getToolInfo() const
{
    return d->toolInfo;
}

void CVXSSequenceDataset::setToolInfo(const CVXSToolInfo &info)
{
    const bool hasChanged =
        info.reversed != d->toolInfo.reversed || info.logarithmic != d->toolInfo.logarithmic;
    d->isModified = d->isModified || hasChanged || info.brightness != d->toolInfo.brightness ||
                    info.gamma != d->toolInfo.gamma;
    d->toolInfo = info;
    d->adjust.reverse = info.reversed;
    d->adjust.logScale = info.logarithmic;
    d->announceDisplay(hasChanged);
}

bool CVXSSequenceDataset::isTransIllumOverviewResultSequence() const
{
    return d->isTransIllumOverview;
}

void CVXSSequenceDataset::setTransIllumOverviewResultSequence(bool on)
{
    d->isModified = d->isModified || on != d->isTransIllumOverview;
    d->isTransIllumOverview = on;
}

bool CVXSSequenceDataset::is3DSceneOnly() const
{
    return d->is3DSceneOnly;
}

void CVXSSequenceDataset::set3DSceneOnly(bool on)
{
    d->isModified = d->isModified || on != d->is3DSceneOnly;
    d->is3DSceneOnly = on;
}

// --- adding and removing ---

bool CVXSSequenceDataset::addDataset(CVXSDataset *dataset, int position)
{
    if (!dataset)
        return false;
    const QString clickNumber = dataset->getClickNumber();
    const QString who = d->id + QStringLiteral(": ") + clickNumber + QStringLiteral(": ");
    QString reason;
    if (!CVXUtilityFns::isSafeFileName(clickNumber))
        reason = tr("a click number has to be a plain file name");
    else if (d->indexOf(clickNumber) >= 0)
        reason = tr("this click number is in the sequence already");
    else if (dataset->isPartOfSequence() || !dataset->registerDataset())
        reason = tr("a dataset of this click number is open already");
    if (!reason.isEmpty()) {
        d->lastError = who + reason;
        vxLog(ELOG_FAILURE, d->lastError);
        return false;
    }
    const int end = d->entries.size();
    const int place = position < 0 ? end : std::min(position, end);
    d->entries.insert(place, {clickNumber, dataset});
    if (d->opening && place < d->opening->next)
        ++d->opening->next;
    d->adopt(dataset);
    d->isModified = true;
    Q_EMIT updateOnChangeSequence();
    return true;
}

void CVXSSequenceDataset::announceCorrections()
{
    Q_EMIT updateOnChangeSequence();
}

bool CVXSSequenceDataset::removeDataset(const QString &clickNumber)
{
    const int index = d->indexOf(clickNumber);
    if (index < 0)
        return false;
    const QPointer<CVXSDataset> dataset = d->entries.at(index).dataset;
    if (dataset)
        Q_EMIT datasetAboutToBeRemoved(dataset);
    d->entries.remove(index);
    if (d->opening && index < d->opening->next)
        --d->opening->next;
    d->isModified = true;
    delete dataset.data();
    Q_EMIT updateOnChangeSequence();
    return true;
}

int CVXSSequenceDataset::Private::indexOf(const QString &clickNumber) const
{
    for (int i = 0; i < entries.size(); ++i) {
        if (entries.at(i).clickNumber == clickNumber)
            return i;
    }
    return -1;
}

QString CVXSSequenceDataset::Private::plannedFolder(const QString &clickNumber) const
{
    if (folder.isEmpty() || !CVXUtilityFns::isSafeFileName(clickNumber))
        return QString();
    return folder + clickNumber + QLatin1Char('/');
}

void CVXSSequenceDataset::Private::adopt(CVXSDataset *dataset)
{
    dataset->setParent(q);
    dataset->d->sequence = q;
    // One unit for all: the one that was set or stored, else that of the dataset that comes first.
    if (!hasActiveUnit) {
        activeUnit = dataset->getUnit();
        hasActiveUnit = true;
    }
    dataset->setUnit(activeUnit);
}

// A tool computes in the sequence's unit and paints with its colours, so a change of either is one of the
// sequence.
void CVXSSequenceDataset::Private::announceDisplay(bool hasChanged)
{
    Q_EMIT q->displayChanged();
    if (hasChanged)
        Q_EMIT q->updateOnChangeSequence();
}
