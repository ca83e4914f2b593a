// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class CVXSDataset;
class CVXSSequenceDataset;
class QWidget;

/// Saving by the user: asks where it has to, and tells what failed. True when everything is saved.
namespace saving {

/// Saves a dataset in its own folder; one that has none, elsewhere.
bool saveDataset(QWidget *parent, CVXSDataset *dataset);
/// Asks for a folder, in which the dataset gets one of its click number. A dataset of a sequence stays where
/// it is, and this is a copy; another one lies in the new folder from here on. A folder that holds another
/// dataset, or any other files, is refused.
bool saveDatasetElsewhere(QWidget *parent, CVXSDataset *dataset);
/// The folder that a dataset gets there, or why it cannot ("folder: reason"), with an empty answer.
QString targetFolder(const CVXSDataset &dataset, const QString &chosen, QString *refusal);

/// Saves a sequence where it lies; asks for a place when it was never saved.
bool saveSequence(QWidget *parent, CVXSSequenceDataset *sequence);

} // namespace saving
