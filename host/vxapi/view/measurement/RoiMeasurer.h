// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class CVXSDataset;

/// Measures a dataset's ROIs again whenever they, its unit or its pixels changed or a record of them was
/// marked out of date: once the code that changes them is through, so that what is changed and put back at
/// once is measured once.
class VXAPI_EXPORT RoiMeasurer : public QObject
{
    Q_OBJECT

public:
    explicit RoiMeasurer(CVXSDataset *dataset, QObject *parent = nullptr);
    void measureLater() { m_timer.start(); }
    /// Measures what is waiting to be measured, before someone takes the numbers away.
    void measureIfPending();

Q_SIGNALS:
    /// ROIs were measured. `problem` says why not, for the user; empty when they were.
    void measured(const QString &problem);

private:
    void recordsChanged(const QString &clickNumber);
    void measure();

    QPointer<CVXSDataset> m_dataset;
    QTimer m_timer;
};
