// SPDX-License-Identifier: MIT
#pragma once

class CVXSWorkspace;
class DatasetLoader;
class LooseDatasets;
class RecentSequences;
class SequenceManager;

/// Who has the open sequences and datasets, and where they are shown. Menus get these, so that they need not
/// know the main window.
struct DatasetParts
{
    CVXSWorkspace *workspace = nullptr;
    SequenceManager *sequences = nullptr;
    LooseDatasets *looseDatasets = nullptr;
    DatasetLoader *datasetLoader = nullptr;
    RecentSequences *recentSequences = nullptr;
};
