// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

#include <QObject>

class CVXSDataset;
class CVXSWorkspace;
struct downloaded_save_data;

/// Loads datasets that belong to no open sequence, as tools ask for it: reads, registers, and shows them.
/// They stay open (and so known by their click numbers) until the application ends, also when their windows
/// are closed.
class DatasetLoader : public QObject
{
    Q_OBJECT

public:
    explicit DatasetLoader(CVXSWorkspace *workspace, QObject *parent = nullptr);

    /// Loads the dataset of a ClickInfo.txt or its folder. One that is open already is shown, and nothing is
    /// added; another open dataset of the same click number is a failure. Failures are logged with file and
    /// reason.
    ESTATUS load(const QString &path);

public Q_SLOTS:
    /// The same for CVXToolPluginBase::signalLoadFile; the status is written before it returns.
    void onLoadFile(const QString &path, bool flag, ESTATUS *status, downloaded_save_data *downloadData);

private:
    ESTATUS open(const QString &path);
    ESTATUS loadNew(CVXSDataset *dataset);

    CVXSWorkspace *m_workspace;
};
