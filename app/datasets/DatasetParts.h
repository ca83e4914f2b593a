// SPDX-License-Identifier: MIT
#pragma once

class CVXSWorkspace;
class DatasetLoader;
class LooseDatasets;
class RecentSequences;
class SequenceManager;

/// Who has the open sequences and datasets, and where they are shown. Menus get these, so that they need not
/// know the main window.
///
///     CVXSSequenceDataset *sequence = parts.sequences->open(folder);  // null: told in the log
///     ESTATUS status = parts.datasetLoader->load(otherFolder);        // one that is in no sequence
///     if (isReadyToQuit(window, parts))                               // asks about what is not saved
///         parts.sequences->closeAllUnasked();
///
/// SequenceManager owns the sequences, LooseDatasets every other dataset; both are told in OpenedItems.
/// DatasetSaving asks where something is to be saved.
struct DatasetParts
{
    CVXSWorkspace *workspace = nullptr;
    SequenceManager *sequences = nullptr;
    LooseDatasets *looseDatasets = nullptr;
    DatasetLoader *datasetLoader = nullptr;
    RecentSequences *recentSequences = nullptr;
};
