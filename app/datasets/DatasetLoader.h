// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

#include <QObject>

class CVXSDataset;
class CVXSWorkspace;
class LooseDatasets;
struct downloaded_save_data;

/// Loads datasets that belong to no open sequence, as the user or a tool asks for it: reads, registers and
/// shows them. LooseDatasets has them from then on.
class DatasetLoader : public QObject
{
    Q_OBJECT

public:
    explicit DatasetLoader(CVXSWorkspace *workspace, LooseDatasets *loose, QObject *parent = nullptr);

    /// Loads the dataset of a ClickInfo.txt or its folder. One that is open already is shown, and nothing is
    /// added; another open dataset of the same click number is a failure. Failures are logged with file and
    /// reason. `loaded` (may be null) receives the dataset, null on failure.
    ESTATUS load(const QString &path, CVXSDataset **loaded = nullptr);

public Q_SLOTS:
    /// The same for CVXToolPluginBase::signalLoadFile; the status is written before it returns.
    void onLoadFile(const QString &path, bool flag, ESTATUS *status, downloaded_save_data *downloadData);

private:
    ESTATUS open(const QString &path, CVXSDataset **opened);

    CVXSWorkspace *m_workspace;
    LooseDatasets *m_loose;
};
