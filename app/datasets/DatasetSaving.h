// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class CVXSDataset;
class CVXSSequenceDataset;
class QWidget;
struct UnsavedContent;

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

/// Saves a sequence where it lies; asks for a place when it was never saved. Where it cannot be written, the
/// user is offered another place.
bool saveSequence(QWidget *parent, CVXSSequenceDataset *sequence);
/// Asks for a folder, in which the sequence gets one of its ID with all that it has; it lies there from then
/// on.
bool saveSequenceElsewhere(QWidget *parent, CVXSSequenceDataset *sequence);

/// "ROIs, colors": what would be lost, for the user; empty when nothing would.
QString lossText(const UnsavedContent &unsaved);

} // namespace saving
