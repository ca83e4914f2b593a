// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWidget>

class CROIBase;
class CRoiMeasInfo;
class CVXSDataset;
class MeasurementTableModel;
class QKeyEvent;
class QTableView;
class RoiMeasurer;

/// The measurement table of a dataset, with copying and saving. What is selected in it is selected in the
/// picture, and the other way round; a grid's cells stand for the grid.
///
///     auto *measurer = new RoiMeasurer(dataset, window);             // measures anew what changed
///     auto *pane = new MeasurementPane(dataset, measurer, window);   // shows the records
///     connect(measurer, &RoiMeasurer::measured, status, &QLabel::setText);
///     if (!pane->saveTable(path, &error))                            // "file: reason"
///         CVXSErrorHandler::errorMessage(window, ESTATUS_FILE_NOT_WRITABLE, error);
///
/// Numbers are shown with 6 significant digits and copied or saved exactly, always in the C locale.
class VXAPI_EXPORT MeasurementPane : public QWidget
{
    Q_OBJECT

public:
    MeasurementPane(CVXSDataset *dataset, RoiMeasurer *measurer, QWidget *parent = nullptr);

    /// Puts the selected rows, or all when none is, on the system's clipboard: for a spreadsheet as text, for
    /// a picture as the ROIs that they tell of.
    void copySelected() { copy(true); }
    /// Writes the whole table as CSV (UTF-8), the file as a whole or not at all. False with
    /// "file: reason".
    bool saveTable(const QString &path, QString *error);

Q_SIGNALS:
    /// The user asks it of the selected ROIs, with the keys of the picture.
    void deleteRequested();
    void renameRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    bool takeKey(const QKeyEvent &event, bool isPressed);
    void readRecords();
    void showSelection();
    void takeSelection();
    QVector<CRoiMeasInfo> selectedRecords() const;
    QSet<CROIBase *> roisOfSelectedRows() const;
    /// The ROIs that the records tell of; a cell stands for its grid.
    QList<CROIBase *> roisOf(const QVector<CRoiMeasInfo> &records) const;
    void copy(bool selectedOnly);
    void askAndSave();

    QPointer<CVXSDataset> m_dataset;
    RoiMeasurer *m_measurer;
    MeasurementTableModel *m_model;
    QTableView *m_table = nullptr;
    QTimer m_readTimer;
    bool m_isSelecting = false; ///< the selection is being carried over
};
